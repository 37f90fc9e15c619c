#!/usr/bin/env bash
# zor-host from the command line: the scripted demo opens the console, gets
# both ICCIDs from the simulated terminal and prints the log; --screenshot
# saves a picture; a missing module or a dead serial port is a clear error
# with a non-zero exit code.
set -u
bin=$1
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
export QT_QPA_PLATFORM=offscreen
failed=0
check() { # description, command...
  local what=$1; shift
  if "$@"; then echo "ok   $what"; else echo "FAIL $what"; failed=1; fi
}

"$bin/zor-host" --demo >"$tmp/out" 2>"$tmp/err"; rc=$?
check "demo exits 0" test "$rc" = 0
check "demo prints the ICCID request row" grep -qF '| OUT | 9 | *?ICCID.3 | 2a3f4943434944203' "$tmp/out"
check "demo prints the ICCID reply row" grep -qF '| IN | 51 | *#ICCID.3,8970101234567890128,8970201234567890127..' "$tmp/out"
check "demo shows ICCID of SIM 1" grep -qx 'ICCID SIM 1: 8970101234567890128' "$tmp/out"
check "demo shows ICCID of SIM 2" grep -qx 'ICCID SIM 2: 8970201234567890127' "$tmp/out"
check "demo logs the connect row" grep -qF 'CONNECT' "$tmp/out"

"$bin/zor-host" --demo --language en >"$tmp/out" 2>/dev/null
check "english menu caption" grep -qx 'menu: Commands' "$tmp/out"

# The RAVEL layout asks the host for the GNSS dialect before it sends the
# coordinate system; an unknown dialect sends nothing.
"$bin/zor-host" --demo --ravel --dialect 1 >"$tmp/out" 2>/dev/null
check "dialect 1: coordinate system sent" grep -qF '| OUT | 18 | *!UC.GPS,PMTK330,0 |' "$tmp/out"
check "dialect 1: acknowledged" grep -qF '| IN | 20 | *@UC.GPS,PMTK330,0.. |' "$tmp/out"
check "ravel: rate acknowledged" grep -qF '*@UC.GPS,PMTK220,1000..' "$tmp/out"
"$bin/zor-host" --demo --ravel --dialect 2 >"$tmp/out" 2>/dev/null
check "unknown dialect: no coordinate system" sh -c "! grep -q 'PMTK330\|PQPZ90' '$tmp/out'"

"$bin/zor-host" --screenshot "$tmp/shot.png" >/dev/null 2>&1; rc=$?
check "screenshot exits 0" test "$rc" = 0
check "screenshot is a PNG" sh -c "head -c 8 '$tmp/shot.png' | od -An -tx1 | grep -q '89 50 4e 47'"

# zor-sim's help names every option it takes.
"$bin/zor-sim" --help >"$tmp/out" 2>&1; rc=$?
check "zor-sim --help exits 0" test "$rc" = 0
for option in --chunk --chunk-delay DEVICE --archive --version --mask --mask-hex -o --out --help; do
  check "zor-sim --help lists $option" grep -qF -- "$option" "$tmp/out"
done

"$bin/zor-host" --demo --library "$tmp/none.so" >/dev/null 2>"$tmp/err"; rc=$?
check "missing library exits non-zero" test "$rc" != 0
check "missing library is named" grep -qF "$tmp/none.so does not exist" "$tmp/err"

"$bin/zor-host" --demo --connect "serial:$tmp/no-such-tty" >/dev/null 2>"$tmp/err"; rc=$?
check "dead serial port fails the demo" test "$rc" != 0
check "dead serial port is named" grep -qF "$tmp/no-such-tty" "$tmp/err"

"$bin/zor-host" --demo --connect "modem" >/dev/null 2>"$tmp/err"; rc=$?
check "unknown link fails the demo" test "$rc" != 0
exit $failed
