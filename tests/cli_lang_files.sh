#!/usr/bin/env bash
# The joined language files: no key defined twice, the same keys in every
# language, and every caption key written literally in the sources present.
# Several areas add keys in parallel; this is where a clash shows.
set -u
bin=$1
src=$(cd "$(dirname "$0")/.." && pwd)
dir=$bin/Localization/Lang
fail=0
keys() { grep -v '^#' "$1" | grep '=' | cut -d= -f1; }
for lang in ru en; do
  dups=$(keys "$dir/zor_$lang.lang" | sort | uniq -d)
  if [ -n "$dups" ]; then
    echo "zor_$lang.lang defines these keys more than once:"; echo "$dups"; fail=1
  fi
done
only=$(comm -3 <(keys "$dir/zor_ru.lang" | sort -u) <(keys "$dir/zor_en.lang" | sort -u))
if [ -n "$only" ]; then
  echo "keys in one language only (left ru, right en):"; echo "$only"; fail=1
fi
pattern='"(mdln|wrd|abbr|tmikte|lst|cfg[a-z0-9]+)_[0-9]{3}"'
used=$(grep -rhE "$pattern" "$src/src" "$src/host" | grep -vE '^[[:space:]]*//' | grep -ohE "$pattern" | tr -d '"' | sort -u)
missing=$(comm -23 <(echo "$used") <(keys "$dir/zor_ru.lang" | sort -u))
if [ -n "$missing" ]; then
  echo "keys used in the sources without a caption:"; echo "$missing"; fail=1
fi
[ $fail = 0 ] && echo "language files: $(keys "$dir/zor_ru.lang" | wc -l) keys, consistent"
exit $fail
