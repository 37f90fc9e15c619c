#!/usr/bin/env bash
# Golden telemetry records (tests/data/telemetry, written by make_golden.py
# from the field rules): every decoded line and every CSV cell must be the
# expected one; "?" cells are not checked.
set -u
bin=$1
data=$2/telemetry
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
export TZ=UTC
failed=0
# same EXPECTED ACTUAL: same number of lines, cells equal unless expected "?".
same() {
  awk -F';' 'NR == FNR { want[FNR] = $0; n = FNR; next }
    { got[FNR] = $0; m = FNR }
    END {
      if (n != m) { print "  " n " lines expected, " m " decoded"; bad = 1 }
      for (i = 1; i <= n; i++) {
        a = split(want[i], w, ";"); b = split(got[i], g, ";")
        ok = a == b
        for (j = 1; ok && j <= a; j++) if (w[j] != "?" && w[j] != g[j]) ok = 0
        if (!ok) { print "  want: " want[i]; print "  got:  " got[i]; bad = 1 }
      }
      exit bad }' "$1" "$2"
}
while read -r name version mask hex; do
  "$bin/zor-tool" decode --version "$version" --mask "$mask" --hex "$hex" --lang keys >"$tmp/$name" 2>&1
  if same "$data/$name.keys" "$tmp/$name"; then echo "ok   decode $name"; else echo "FAIL decode $name"; failed=1; fi
done <"$data/cases.txt"
for name in archive:3 archive_v1:1 archive_v2:2; do
  v=${name#*:}; name=${name%:*}
  "$bin/zor-tool" csv --version "$v" --mask "$(printf '1%.0s' $(seq 255))" --in "$data/$name.bin" --lang keys >"$tmp/$name.csv" 2>&1
  if same "$data/$name.csv" "$tmp/$name.csv"; then echo "ok   csv $name"; else echo "FAIL csv $name"; failed=1; fi
done
exit $failed
