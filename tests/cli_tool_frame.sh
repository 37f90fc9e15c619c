#!/usr/bin/env bash
# zor-tool frame / unframe / crc8|crc16|crc32: outputs, exit codes and the
# one-line errors on stderr.
set -u
bin=$1
tool="$bin/zor-tool"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
failed=0

# expect DESCRIPTION EXIT-CODE STDOUT-PATTERN STDERR-PATTERN -- ARGS...
# Patterns are fixed strings ("" means: must be empty).
expect() {
  local what=$1 code=$2 outp=$3 errp=$4; shift 5
  "$tool" "$@" >"$tmp/out" 2>"$tmp/err"; local rc=$?
  local ok=1
  [ "$rc" = "$code" ] || ok=0
  if [ -z "$outp" ]; then [ ! -s "$tmp/out" ] || ok=0; else grep -qF -- "$outp" "$tmp/out" || ok=0; fi
  if [ -z "$errp" ]; then [ ! -s "$tmp/err" ] || ok=0; else grep -qF -- "$errp" "$tmp/err" || ok=0; fi
  if [ "$ok" = 1 ]; then echo "ok   $what"; else
    echo "FAIL $what (exit $rc)"; sed 's/^/  out: /' "$tmp/out"; sed 's/^/  err: /' "$tmp/err"; failed=1; fi
}

frame=405a4f520000000001000000030043462a3f56
expect "frame *?V" 0 "$frame" "" -- frame '*?V'
check_exact() { [ "$(cat "$tmp/out")" = "$1" ] && echo "ok   $2" || { echo "FAIL $2"; failed=1; }; }
check_exact "$frame" "frame output is exactly one line"
expect "frame with payload" 0 405a4f52000000000100000007005d5c2a215204030201 "" -- frame '*!R' --payload 04030201
expect "frame of malformed payload" 2 "" "malformed hex" -- frame '*!R' --payload 0z
expect "frame without text" 2 "" "zor-tool:" -- frame
expect "frame --help" 0 "--payload" "" -- frame --help

expect "crc32 of 1..9" 0 cbf43926 "" -- crc32 313233343536373839
check_exact cbf43926 "crc32 prints 8 digits and nothing else"
expect "crc16 of 1..9" 0 29b1 "" -- crc16 313233343536373839
expect "crc8 of nothing" 0 ff "" -- crc8 ""
expect "crc16 keeps leading zeros" 0 003e "" -- crc16 0e
expect "crc8 keeps leading zeros" 0 0a "" -- crc8 06
printf 123456789 >"$tmp/digits"
expect "crc32 of a file" 0 cbf43926 "" -- crc32 --file "$tmp/digits"
expect "crc32 odd hex" 2 "" "odd number" -- crc32 123
expect "crc32 non-hex" 2 "" "not a hex digit" -- crc32 12zz
expect "crc32 unreadable file" 2 "" "cannot read" -- crc32 --file "$tmp/missing"
expect "crc8 --help" 0 "--file" "" -- crc8 --help

expect "unframe good" 0 "text: *?V" "" -- unframe $frame
expect "unframe shows hex" 0 "hex: 2a3f56" "" -- unframe $frame
expect "unframe malformed" 2 "" "malformed hex" -- unframe 405
expect "unframe truncated header" 1 "" "truncated frame" -- unframe 405a4f52
expect "unframe signature" 1 "" "wrong signature" -- unframe 415a4f520000000001000000030043462a3f56
expect "unframe header checksum" 1 "" "bad header checksum" -- unframe 405a4f520000000001000000030043472a3f56
expect "unframe length past end" 1 "" "length past the end" -- unframe 405a4f520000000001000000030043462a3f
expect "unframe trailing bytes" 1 "text: *?V" "1 bytes after the data of frame 1, at offset 19" -- unframe ${frame}00
expect "unframe data checksum" 1 "" "bad data checksum" -- unframe 405a4f520000000001000000030043462a3f57
expect "unframe --help" 0 "HEX" "" -- unframe --help

# Pipes: "-" is standard input, as hex or as raw bytes.
pipe() { # DESCRIPTION EXPECTED-STDOUT COMMAND...
  local what=$1 want=$2; shift 2
  local got; got=$(bash -c "$*" 2>&1); local rc=$?
  if [ "$rc" = 0 ] && [ "$got" = "$want" ]; then echo "ok   $what"; else
    echo "FAIL $what (exit $rc)"; echo "$got" | sed 's/^/  got: /'; failed=1; fi
}
pipe "frame | unframe -" "$(printf 'text: *?V\nhex: 2a3f56')" "'$tool' frame '*?V' | '$tool' unframe -"
pipe "frame --raw | unframe -" "$(printf 'text: *?V\nhex: 2a3f56')" "'$tool' frame --raw '*?V' | '$tool' unframe -"
pipe "frame --raw is the bytes" "$frame" "'$tool' frame --raw '*?V' | od -An -tx1 -v | tr -d ' \n'"
pipe "two frames back to back" \
  "$(printf 'frame 1 at offset 0\ntext: *?V\nhex: 2a3f56\nframe 2 at offset 19\ntext: *?V\nhex: 2a3f56')" \
  "{ '$tool' frame --raw '*?V'; '$tool' frame --raw '*?V'; } | '$tool' unframe -"
pipe "crc32 of standard input" cbf43926 "printf 123456789 | '$tool' crc32 --file -"
pipe "hex from standard input" 29b1 "echo 31323334 35363738 39 | '$tool' crc16 -"
expect "hex with 0x and colons" 0 cbf43926 "" -- crc32 "0x31:0x32:33 34:35:36:37:38:39"
expect "a colon cutting a byte" 2 "" "malformed hex" -- crc32 3:1
if [ -w /dev/full ]; then
  "$tool" frame '*?V' >/dev/full 2>"$tmp/err"; rc=$?
  if [ $rc = 1 ] && grep -q "standard output" "$tmp/err"; then echo "ok   full standard output exits 1"; else
    echo "FAIL full standard output (exit $rc)"; failed=1; fi
fi
expect "--version of the program" 0 "zor-tool " "" -- --version
expect "--help-all works as --help" 0 "--payload" "" -- frame --help-all

exit $failed
