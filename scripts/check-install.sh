#!/usr/bin/env bash
# The installed product, as CI checks it after the test suite:
#  1. install a build (default build-test) to a staging prefix;
#  2. build examples/minimal-host against it with find_package and with
#     pkg-config, and run both;
#  3. move the staging tree and run zor-tool from the new place, with
#     captions from the installed language files;
#  4. run zor-host --demo from a read-only copy as user nobody with a fresh
#     HOME, twice, and check the command history is kept under that HOME;
#  5. build the Debian packages and run lintian (scripts/package.sh).
# ZOR_SKIP_PACKAGES=1 leaves step 5 out.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build-test}
ZOR_EXTRA_PACKAGES="desktop-file-utils appstream" bash scripts/deps.sh
export QT_QPA_PLATFORM=offscreen
work=$(mktemp -d)
trap 'chmod -R u+w "$work" 2>/dev/null; rm -rf "$work"' EXIT
chmod 755 "$work"
step() { echo "--- $*"; }
die() { echo "FAIL: $*" >&2; exit 1; }

step "install $build to a staging prefix"
targets=(ZOR_Commands zor-host zor-sim zor-tool)
cmake --build "$build" --target help | grep '^zor_manpages:' >/dev/null && targets+=(zor_manpages)
cmake --build "$build" -j"$(nproc)" --target "${targets[@]}" >/dev/null
cmake --install "$build" --prefix "$work/stage" >/dev/null
libdir=$(cd "$work/stage" && dirname "$(find . -name 'libZOR_Commands.so.1' | head -1)")
for f in bin/zor-host bin/zor-sim bin/zor-tool "$libdir/libZOR_Commands.so.1" \
         include/ZOR_Commands/store/cxmlworkdata.h include/ZOR_Commands/config/zor_form_config_can_param.h \
         "$libdir/cmake/ZOR_Commands/ZOR_CommandsConfigVersion.cmake" "$libdir/pkgconfig/zor-commands.pc" \
         share/zor-commands/Localization/Lang/zor_en.lang share/zor-commands/Localization/Temp/commands.xml \
         share/applications/zor-host.desktop share/man/man1/zor-tool.1; do
  [ -e "$work/stage/$f" ] || die "not installed: $f"
done
readelf -d "$work/stage/bin/zor-host" | grep -q 'RUNPATH.*\$ORIGIN' || die "zor-host has no \$ORIGIN RUNPATH"
desktop-file-validate "$work/stage/share/applications/zor-host.desktop"
appstreamcli validate --no-net "$work/stage/share/metainfo/"*.metainfo.xml >/dev/null
readelf -d "$work/stage/$libdir/libZOR_Commands.so.1" | grep -q 'SONAME.*libZOR_Commands.so.1' || die "soname"

step "examples/minimal-host with find_package"
cmake -S examples/minimal-host -B "$work/ex-cmake" -G Ninja -DCMAKE_PREFIX_PATH="$work/stage" >/dev/null
cmake --build "$work/ex-cmake" >/dev/null
"$work/ex-cmake/minimal-host" "$work/cmake.xml" | tee "$work/ex.out"
grep -q '^module: ZOR_Commands' "$work/ex.out" || die "the example did not load the module"
grep -q '<CONFIG' "$work/cmake.xml" || die "the example saved no settings document"

step "examples/minimal-host with pkg-config"
export PKG_CONFIG_PATH="$work/stage/$libdir/pkgconfig"
# shellcheck disable=SC2046
g++ -std=c++17 -fPIC -o "$work/ex-pc" examples/minimal-host/main.cpp \
  $(pkg-config --cflags --libs zor-commands) -Wl,-rpath,"$work/stage/$libdir"
unset PKG_CONFIG_PATH
"$work/ex-pc" "$work/pc.xml" >/dev/null
cmp -s "$work/cmake.xml" "$work/pc.xml" || die "the two builds of the example saved different documents"

step "the staging tree moved elsewhere"
mv "$work/stage" "$work/moved"
printf '\x2a\0\0\0' >"$work/record.bin"
out=$("$work/moved/bin/zor-tool" csv --version 3 --mask 1 --in "$work/record.bin" --lang en)
caption=$(sed -n 's/^tmikte_123=//p' "$work/moved/share/zor-commands/Localization/Lang/zor_en.lang")
[ -n "$caption" ] && grep -qF "$caption" <<<"$out" || die "zor-tool shows no installed caption: $out"
grep -q tmikte_123 <<<"$out" && die "zor-tool shows the caption key: $out"
"$work/moved/bin/zor-host" --help >/dev/null

step "read-only copy run by nobody with a fresh HOME"
if [ "$(id -u)" = 0 ]; then
  cp -a "$work/moved" "$work/ro"
  chmod -R a-w,a+rX "$work/ro"
  mkdir "$work/home"
  touch "$work/marker"
  chown nobody "$work/home"
  for run in 1 2; do
    runuser -u nobody -- env -i PATH=/usr/bin:/bin HOME="$work/home" QT_QPA_PLATFORM=offscreen \
      "$work/ro/bin/zor-host" --demo >"$work/demo$run.out" 2>&1 || { cat "$work/demo$run.out"; die "demo $run"; }
  done
  history=$work/home/.local/share/zor-commands/Localization/Temp/commands_history.txt
  [ -s "$history" ] || die "no command history under HOME"
  [ "$(stat -c %U "$history")" = nobody ] || die "history not owned by nobody"
  [ -z "$(find "$work/ro" -newer "$work/marker")" ] || die "the read-only copy was written"
  grep -q 'could not be saved' "$work/demo2.out" && die "a save failed: $(cat "$work/demo2.out")"
  # A HOME nobody may write to: the demo still runs and says what it could not keep.
  cp "$history" "$work/history.before"
  chmod -R a-w "$work/home"
  runuser -u nobody -- env -i PATH=/usr/bin:/bin HOME="$work/home" QT_QPA_PLATFORM=offscreen \
    "$work/ro/bin/zor-host" --demo --language en >"$work/demo3.out" 2>&1 || { cat "$work/demo3.out"; die "demo 3"; }
  grep -q 'The command history could not be saved' "$work/demo3.out" || die "an unsaved history was not told"
  cmp -s "$history" "$work/history.before" || die "the history under a read-only HOME changed"
else
  echo "(not root: skipped)"
fi

if [ "${ZOR_SKIP_PACKAGES:-0}" != 1 ]; then
  step "Debian packages"
  # The debug symbol packages only cost time here. The build's compile
  # lines go to a log, shown when the build fails.
  if ! DEB_BUILD_OPTIONS=noautodbgsym bash scripts/package.sh >"$work/package.log" 2>&1; then
    tail -60 "$work/package.log"
    die "the packages were not built, or lintian found errors"
  fi
  sed -n '/^=== lintian/,$p' "$work/package.log"
fi
echo "install checks passed"
