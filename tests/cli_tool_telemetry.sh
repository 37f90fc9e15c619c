#!/usr/bin/env bash
# zor-tool decode and csv: field lines of one record, CSV exports of record
# files, short and partial records, malformed field sets and usage errors
# with their exit codes, and a 100,000-record full-field-set export whose
# lines all have the same number of cells.
set -u
bin=$1
tool="$bin/zor-tool"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
export TZ=UTC
failed=0
check() { # description, command...
  local what=$1; shift
  if "$@"; then echo "ok   $what"; else echo "FAIL $what"; failed=1; fi
}
# run ARGS...: stdout to $tmp/out, stderr to $tmp/err, exit code to $rc.
run() { "$tool" "$@" >"$tmp/out" 2>"$tmp/err"; rc=$?; }
out_is() { printf '%s\n' "$1" | cmp -s - "$tmp/out"; }
ones() { printf '1%.0s' $(seq "$1"); }

# ---- decode --------------------------------------------------------------
run decode --version 3 --mask 1 --hex 2a000000
check "decode: record number" out_is '1;NumPage;42'
check "decode: exit 0" test "$rc" = 0

run decode --version 3 --mask 0101001 --hex '0102 05 63' --lang keys
check "decode: fields in order, State by its seven columns, GSM 99 unknown" \
  out_is $'2;Code;513\n4;State;1;0;1;0;0;0;0\n7;GSM;tmikte_027'

run decode --version 3 --mask 1x1 --hex 2a00000010000000
check "decode: a mask character other than 1 is absent" out_is $'1;NumPage;42\n3;Time;01.01.1970 0:00:16'

run decode --version 3 --mask-hex "a0$(printf '0%.0s' $(seq 62))" --hex 2a00000010000000
check "decode: --mask-hex gives the same fields" out_is $'1;NumPage;42\n3;Time;01.01.1970 0:00:16'

TZ=ZZZ-3 "$tool" decode --version 2 --mask 001 --hex 10000000 >"$tmp/out" 2>&1
check "decode: times follow TZ" out_is '3;Time;01.01.1970 3:00:16'
run decode --version 2 --mask 001 --hex 10000000 --utc-offset -19800
check "decode: --utc-offset shifts the times" out_is '3;Time;31.12.1969 18:30:16'

run decode --version 3 --mask 00000000011101 --hex '4f48ff01 b1b700fe f1ffffff 5a00 ffff' --lang keys
check "decode: coordinates, altitude toward zero, longer data ignored" \
  out_is $'10;Latitude;55 50.7407\'\n11;Longitude;-55 -50.7407\'\n12;Altitude;-1\n14;Course;90'

printf '\x2a\x00\x00\x00\x01\x00' >"$tmp/rec.bin"
run decode --version 1 --mask 11 --file "$tmp/rec.bin"
check "decode: --file" out_is $'1;NumPage;42\n2;Code;1'

run decode --version 1 --mask "$(ones 255)" --hex "$(head -c 146 /dev/zero | od -An -v -tx1 | tr -d ' \n')" --lang keys
check "decode v1: fields above 69 take no bytes" test "$rc" = 0
check "decode v1: last line is field 69" sh -c "tail -n 1 '$tmp/out' | grep -qx '69;CanSpeed;0 abbr_024'"
check "decode v1: 69 lines" test "$(wc -l <"$tmp/out")" = 69

# Short record: what fits, then how much was missing.
run decode --version 3 --mask 11 --hex 2a00000001
check "decode short: prints what decoded" out_is '1;NumPage;42'
check "decode short: exit 1" test "$rc" = 1
check "decode short: says how many bytes are missing" grep -q '1 bytes missing' "$tmp/err"

# F8: 100 bytes read as zero-filled to 128; version-1 fields.
run decode --f8 --hex "00 2a000000 $(head -c 95 /dev/zero | od -An -v -tx1 | tr -d ' \n')" --lang keys
check "decode --f8: exit 0" test "$rc" = 0
check "decode --f8: record number from bytes 1-4" grep -qx '1;NumPage;42' "$tmp/out"
check "decode --f8: zero-filled tail" grep -qx '68;CanTimeTO;0 abbr_023' "$tmp/out"
check "decode --f8: Module2 absent" sh -c "! grep -q '^6;' '$tmp/out'"

# Usage errors: exit 2.
for args in "--mask 1 --hex 00000000" \
            "--version 4 --mask 1 --hex 00000000" \
            "--version 3 --hex 00000000" \
            "--version 3 --mask 1" \
            "--version 3 --mask 1 --hex 00000000 --file $tmp/rec.bin" \
            "--version 3 --mask 1 --hex 0g000000" \
            "--version 3 --mask 1 --hex 000" \
            "--version 3 --mask-hex 80 --hex 00000000" \
            "--version 3 --mask-hex $(printf 'z%.0s' $(seq 64)) --hex 00000000" \
            "--version 3 --mask 1 --mask-hex $(printf '0%.0s' $(seq 64)) --hex 00" \
            "--version 3 --mask 1 --file $tmp/missing.bin" \
            "--version 3 --mask 1 --hex 00000000 --utc-offset east" \
            "--version 3 --mask 1 --hex 00000000 --bogus"; do
  run decode $args
  check "decode $args: exit 2 with a message" sh -c "test $rc = 2 && test -s '$tmp/err'"
done

# ---- csv -----------------------------------------------------------------
printf '\x01\x00\x00\x00\x05\x00\x02\x00\x00\x00\x06\x00' >"$tmp/two.bin"
run csv --version 3 --mask 11 --in "$tmp/two.bin" --lang keys
check "csv: header and two lines, exact bytes" \
  sh -c "printf 'tmikte_123;tmikte_124;\r\n=\"1\";=\"5\";\r\n=\"2\";=\"6\";\r\n' | cmp -s - '$tmp/out'"
check "csv: exit 0" test "$rc" = 0

run csv --version 3 --mask 11 --in "$tmp/two.bin" --out "$tmp/two.csv" --lang en
check "csv --out: stdout empty" test ! -s "$tmp/out"
check "csv --lang en: captions" sh -c "head -c 25 '$tmp/two.csv' | grep -q '^Record number;Event code;'"

cat "$tmp/two.bin" >"$tmp/partial.bin"; printf '\x03\x00\x00' >>"$tmp/partial.bin"
run csv --version 3 --mask 11 --in "$tmp/partial.bin" --out "$tmp/partial.csv" --lang keys
check "csv partial: exit 1" test "$rc" = 1
check "csv partial: byte offset reported" grep -q 'byte offset 12' "$tmp/err"
check "csv partial: complete records written" test "$(wc -l <"$tmp/partial.csv")" = 3

: >"$tmp/empty.bin"
run csv --version 3 --mask 0 --in "$tmp/empty.bin" --lang keys
check "csv empty field set, empty input: header only" sh -c "printf '\r\n' | cmp -s - '$tmp/out'"
run csv --version 3 --mask 0 --in "$tmp/two.bin"
check "csv empty field set, data: exit 1" test "$rc" = 1

for args in "--mask 1 --in $tmp/two.bin" \
            "--version 3 --in $tmp/two.bin" \
            "--version 3 --mask 1" \
            "--version 3 --mask 1 --in $tmp/missing.bin" \
            "--version 3 --mask-hex 0 --in $tmp/two.bin" \
            "--version 3 --mask 1 --in $tmp/two.bin --out $tmp/no/such/dir/x.csv"; do
  run csv $args
  check "csv $args: exit 2 with a message" sh -c "test $rc = 2 && test -s '$tmp/err'"
done

# A 100,000-record archive with every field: one line per record, every
# line with the header's number of cells and a CRLF end; progress on stderr.
head -c $((734 * 100000)) /dev/urandom >"$tmp/big.bin"
run csv --version 3 --mask "$(ones 255)" --in "$tmp/big.bin" --out "$tmp/big.csv" --lang keys
check "csv 100,000 records: exit 0" test "$rc" = 0
check "csv 100,000 records: progress on stderr" grep -q '100%' "$tmp/err"
check "csv 100,000 records: 100,001 lines" test "$(wc -l <"$tmp/big.csv")" = 100001
# The same archive through a pipe that delivers it in uneven pieces.
python3 -c 'import sys, time
d = open(sys.argv[1], "rb").read()
for i in range(0, 3 * 1000003, 1000003):
    sys.stdout.buffer.write(d[i:i + 1000003]); sys.stdout.flush(); time.sleep(0.05)' "$tmp/big.bin" 2>/dev/null |
  "$tool" csv --version 3 --mask "$(ones 255)" --in - --lang keys >"$tmp/piped.csv" 2>"$tmp/err"
check "csv from a slow pipe: the same lines as from the file" \
  sh -c "head -n 4088 '$tmp/big.csv' | cmp -s - '$tmp/piped.csv'"
run decode --protocol 3 --mask 1 --hex 2a000000 --json
check "decode --protocol --json" python3 -c 'import json,sys; assert json.load(open(sys.argv[1])) == [{"number": 1, "name": "NumPage", "text": "42"}]' "$tmp/out"
printf '\x2a\x00\x00\x00' | "$tool" decode --protocol 3 --mask 1 --file - >"$tmp/out" 2>&1
check "decode from standard input" out_is '1;NumPage;42'

# ---- log -------------------------------------------------------------------
# A sent "*?V" frame, made by hand: Windows-1251 "Записано", CR line ends.
printf '23.11.2026 07:30:00:123  \xc7\xe0\xef\xe8\xf1\xe0\xed\xee\r405a4f5200000000\r*?V\r\r--------------\r' >"$tmp/x.log"
run log "$tmp/x.log"
check "log: CR line ends become lines" out_is "$(printf '23.11.2026 07:30:00:123  \xc7\xe0\xef\xe8\xf1\xe0\xed\xee\n405a4f5200000000\n*?V\n\n--------------')"
run log "$tmp/missing.log"
check "log: unreadable file exits 2" test "$rc" = 2

check "csv 100,000 records: CRLF on every line" test "$(grep -c $'\r$' "$tmp/big.csv")" = 100001
check "csv 100,000 records: equal cell count on every line" \
  test "$(awk -F';' '{print NF}' "$tmp/big.csv" | sort -u | wc -l)" = 1

exit $failed
