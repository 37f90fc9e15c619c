#!/bin/bash
# zor-tool keeps nothing from the user: concurrent settings changes all land
# or are reported, characters the encoding lacks are refused unless --lossy,
# odd, short and long input is named on standard error, and the limits of
# input size and file size are said plainly.
set -u
BIN=$1
TOOL="$BIN/zor-tool"
. "$(dirname "$0")/support/cli_checks.sh"

# --- 20 sets on one file at the same moment ------------------------------
printf '<?xml version="1.0" encoding="windows-1251"?>\n<R>\n    <S />\n</R>\n' > "$WORK/c.xml"
pids=()
for i in $(seq 1 20); do
    "$TOOL" settings set "$WORK/c.xml" S "k$i" "$i" > /dev/null 2> "$WORK/set$i.err" &
    pids+=($!)
done
for i in $(seq 1 20); do
    wait "${pids[$((i - 1))]}"
    code=$?
    got=$("$TOOL" settings get "$WORK/c.xml" S "k$i" 2> /dev/null)
    if [ $code -eq 0 ]; then
        [ "$got" = "$i" ] || fail "set k$i reported success but the file has '$got'"
    else
        [ -s "$WORK/set$i.err" ] || fail "set k$i failed (exit $code) without a reason"
        [ -z "$got" ] || fail "set k$i failed but its value is in the file"
    fi
done
[ ! -e "$WORK/c.xml.lock" ] || fail "a lock file was left behind"

# --- characters the document's encoding cannot hold ----------------------
cp "$WORK/c.xml" "$WORK/before.xml"
"$TOOL" settings set "$WORK/c.xml" S name "α" > /dev/null 2> "$WORK/err.txt"
[ $? -eq 1 ] || fail "a Greek letter in a Windows-1251 document must exit 1"
grep -q 'U+03B1' "$WORK/err.txt" || fail "the refused character is not named: $(cat "$WORK/err.txt")"
cmp -s "$WORK/c.xml" "$WORK/before.xml" || fail "a refused set changed the file"
"$TOOL" settings set "$WORK/c.xml" S "zα" 1 > /dev/null 2>&1
[ $? -eq 1 ] || fail "a name the encoding cannot hold must exit 1"
"$TOOL" settings set "$WORK/c.xml" S "zα" 1 --lossy || fail "--lossy set exit $?"
"$TOOL" settings set "$WORK/c.xml" S "zα" 2 --lossy || fail "second --lossy set exit $?"
[ "$("$TOOL" settings get "$WORK/c.xml" S z_)" = "2" ] || fail "--lossy stores the name as the file holds it"
[ "$(grep -o 'z_=' "$WORK/c.xml" | wc -l)" -eq 1 ] || fail "repeating a --lossy set added a duplicate"

# --- comments are announced before normalize drops them ------------------
printf '<?xml version="1.0"?>\n<CONFIG>\n<!-- keep me -->\n</CONFIG>\n' > "$WORK/n.xml"
"$TOOL" config normalize "$WORK/n.xml" > /dev/null 2> "$WORK/err.txt" || fail "normalize exit $?"
grep -q "1 comment" "$WORK/err.txt" || fail "normalize dropped a comment unsaid: $(cat "$WORK/err.txt")"

# --- notes on odd, short and long records --------------------------------
"$TOOL" decode --protocol 3 --mask 1x0y --hex 01000000 > /dev/null 2> "$WORK/err.txt" || fail "odd mask exit $?"
grep -q 'positions 2, 4;' "$WORK/err.txt" || fail "odd mask positions not named: $(cat "$WORK/err.txt")"
"$TOOL" decode --protocol 3 --mask 1 --hex 0100000005 > /dev/null 2> "$WORK/err.txt" || fail "long record exit $?"
grep -q '1 bytes after the 4-byte record' "$WORK/err.txt" || fail "extra bytes not reported: $(cat "$WORK/err.txt")"
"$TOOL" decode --f8 --hex 00 > "$WORK/out.txt" 2> "$WORK/err.txt" || fail "short F8 exit $?"
grep -q 'F8 record is 1 bytes' "$WORK/err.txt" || fail "short F8 record not noted: $(cat "$WORK/err.txt")"
[ -s "$WORK/out.txt" ] || fail "a short F8 record is still decoded zero-filled"
"$TOOL" decode --protocol 3 --mask 1 --hex 01000000 2> "$WORK/err.txt" > /dev/null
[ ! -s "$WORK/err.txt" ] || fail "an exact record gave a note: $(cat "$WORK/err.txt")"

# --- standard input has the files' size cap -------------------------------
head -c $((257 * 1024 * 1024)) /dev/zero | "$TOOL" settings dump - > /dev/null 2> "$WORK/err.txt"
[ $? -eq 2 ] || fail "oversized standard input must exit 2"
grep -q '256 MiB' "$WORK/err.txt" || fail "the input cap is not named: $(cat "$WORK/err.txt")"

# --- a file size limit is "File too large", not a silent death -----------
head -c 20000 /dev/zero > "$WORK/rec.bin"
(ulimit -f 4; "$TOOL" csv --protocol 3 --mask 1 --in "$WORK/rec.bin" --out "$WORK/out.csv") 2> "$WORK/err.txt"
code=$?
[ $code -ne 0 ] && [ $code -lt 128 ] || fail "csv past the file size limit: exit $code"
grep -qi 'file too large' "$WORK/err.txt" || fail "file size limit not named: $(cat "$WORK/err.txt")"

# A full disk names itself (a small tmpfs, where user namespaces allow one).
mkdir "$WORK/full"
if unshare -rm true 2> /dev/null; then
    unshare -rm bash -c "mount -t tmpfs -o size=16k tmpfs '$WORK/full' &&
        '$TOOL' csv --protocol 3 --mask 1 --in '$WORK/rec.bin' --out '$WORK/full/out.csv'" 2> "$WORK/err.txt"
    [ $? -ne 0 ] || fail "csv onto a full disk reported success"
    grep -q 'No space left on device' "$WORK/err.txt" || fail "full disk not named: $(cat "$WORK/err.txt")"
fi

finish
