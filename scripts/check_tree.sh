#!/usr/bin/env bash
# The tree's own rules that a compiler does not check:
#  - formatting as .clang-format says (Debian's clang-format 14);
#  - no line of src/, host/, tools/ over 120 columns;
#  - who may include whom (docs/architecture.md, "Who may include whom").
# Prints every breach and exits 1 if there is one.
set -uo pipefail
cd "$(dirname "$0")/.."
fail=0

mapfile -t sources < <(git ls-files '*.cpp' '*.h' | grep -E '^(src|host|tools|tests|bench|fuzz|examples)/')

if command -v clang-format >/dev/null; then
  if ! clang-format --dry-run --Werror "${sources[@]}" 2>/tmp/zor-format.$$; then
    echo "Formatting differs from .clang-format (run: clang-format -i <file>):"
    grep -oE '^[^:]+:[0-9]+' /tmp/zor-format.$$ | sort -u | head -n 40
    fail=1
  fi
  rm -f /tmp/zor-format.$$
else
  echo "clang-format not installed: formatting not checked"
fi

long=$(git ls-files '*.cpp' '*.h' | grep -E '^(src|host|tools)/' | LC_ALL=C.UTF-8 xargs grep -nP '^.{121,}' | cut -d: -f1,2)
if [ -n "$long" ]; then
  echo "Lines over 120 columns:"; echo "$long"; fail=1
fi

# area -> areas its files may include (besides its own and the module base)
declare -A allowed=(
  [protocol]="" [log]="" [store]="" [telemetry]=""
  [commands]="protocol store log"
  [config]="store telemetry protocol"
)
base='module/(zor_cp1251|zor_language|zor_global|zor_host_link)\.h'
for area in "${!allowed[@]}"; do
  for f in $(git ls-files "src/$area/*.cpp" "src/$area/*.h"); do
    while IFS= read -r inc; do
      dep=${inc%%/*}
      [ "$dep" = "$area" ] && continue
      [[ "$inc" =~ ^$base$ ]] && continue
      # The console reaches the host through the module object, lpGlobalLib.
      [ "$area" = commands ] && [ "$inc" = module/zor_commands.h ] && continue
      [[ " ${allowed[$area]} " == *" $dep "* ]] && continue
      echo "$f includes \"$inc\": $area may not depend on $dep"; fail=1
    done < <(grep -oE '^#include "[a-z]+/[^"]+"' "$f" | sed -E 's/#include "(.*)"/\1/')
  done
done
for f in $(git ls-files 'src/module/zor_cp1251.*' 'src/module/zor_language.*' 'src/module/zor_global.*'); do
  if grep -nE '^#include "(commands|config|telemetry|store|protocol|log)/' "$f"; then
    echo "$f: the module's base files include no other area"; fail=1
  fi
done
for f in $(git ls-files 'host/core/*'); do
  if grep -nE '^#include <(QWidget|QMainWindow|QDialog|QtWidgets)' "$f"; then
    echo "$f: host/core has no windows"; fail=1
  fi
done
exit $fail
