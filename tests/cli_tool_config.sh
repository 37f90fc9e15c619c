#!/bin/bash
# zor-tool config: a new configuration from every form, normalize leaving a
# saved file byte for byte, diff per node and attribute with its exit codes,
# and files that do not load reported and left alone.
set -u
BIN=$1
TOOL="$BIN/zor-tool"
. "$(dirname "$0")/support/cli_checks.sh"
DECL='<?xml version="1.0" encoding="windows-1251"?>'

"$TOOL" config new -o "$WORK/new.xml" || fail "new: exit $?"
[ "$(head -n 1 "$WORK/new.xml")" = "$DECL" ] || fail "new: declaration line"
grep -q '^    <PROTOCOL page="PROTOCOL">$' "$WORK/new.xml" || fail "new: the field-set page"
grep -qE '^        <KITE format="30" mask="111[01]{252}" />$' "$WORK/new.xml" || fail "new: version 3 and a 255-character mask"
"$TOOL" config new -o "$WORK/two.xml" --sims 2 --can-variant bt --ble-slots 4 || fail "new with a profile: exit $?"
"$TOOL" config new -o "$WORK/bad.xml" --sims 3 2>/dev/null
[ $? -eq 2 ] || fail "new --sims 3 must exit 2"
[ ! -e "$WORK/bad.xml" ] || fail "new --sims 3 wrote a file"

# normalize of a saved file: the same bytes, in place and with -o.
cp "$WORK/new.xml" "$WORK/in.xml"
"$TOOL" config normalize "$WORK/in.xml" || fail "normalize in place: exit $?"
cmp -s "$WORK/in.xml" "$WORK/new.xml" || fail "normalize in place changed a saved file"
"$TOOL" config normalize "$WORK/new.xml" -o "$WORK/out.xml" || fail "normalize -o: exit $?"
cmp -s "$WORK/out.xml" "$WORK/new.xml" || fail "normalize -o changed a saved file"

# A hand-made file: the unknown version becomes 3, unknown nodes stay, and
# its normalized form is stable.
cat > "$WORK/hand.xml" <<XML
$DECL
<CONFIG>
    <PROTOCOL page="PROTOCOL">
        <KITE format="7" mask="1111" />
    </PROTOCOL>
    <KEEP me="1" />
</CONFIG>
XML
"$TOOL" config normalize "$WORK/hand.xml" -o "$WORK/hand1.xml" || fail "normalize hand-made: exit $?"
grep -qE '<KITE format="30" mask="1111[0]{251}" />' "$WORK/hand1.xml" || fail "normalize hand-made: format and mask"
grep -q '<KEEP me="1" />' "$WORK/hand1.xml" || fail "normalize dropped a node no form knows"
"$TOOL" config normalize "$WORK/hand1.xml" -o "$WORK/hand2.xml"
cmp -s "$WORK/hand1.xml" "$WORK/hand2.xml" || fail "normalize is not stable"

# An empty file is an empty document: it takes every form's defaults.
: > "$WORK/empty.xml"
"$TOOL" config normalize "$WORK/empty.xml" || fail "normalize of an empty file: exit $?"
cmp -s "$WORK/empty.xml" "$WORK/new.xml" || fail "an empty file does not normalize to the defaults"

# diff
"$TOOL" config diff "$WORK/new.xml" "$WORK/out.xml" > "$WORK/diff.txt"
[ $? -eq 0 ] || fail "diff of equal files must exit 0"
[ ! -s "$WORK/diff.txt" ] || fail "diff of equal files printed something"
cat > "$WORK/a.xml" <<XML
$DECL
<CONFIG>
    <PROTOCOL page="PROTOCOL">
        <KITE format="30" mask="111" />
    </PROTOCOL>
    <R n="1" />
    <R n="2" />
    <OLD a="1" />
</CONFIG>
XML
cat > "$WORK/b.xml" <<XML
$DECL
<CONFIG>
    <PROTOCOL page="PROTOCOL" v="2">
        <KITE format="10" mask="111" />
        <USERPARAMS />
    </PROTOCOL>
    <R n="1" />
</CONFIG>
XML
"$TOOL" config diff "$WORK/a.xml" "$WORK/b.xml" > "$WORK/diff.txt"
[ $? -eq 1 ] || fail "diff of different files must exit 1"
cat > "$WORK/expected.txt" <<'TXT'
+ CONFIG/PROTOCOL @v="2"
~ CONFIG/PROTOCOL/KITE @format: "30" -> "10"
+ CONFIG/PROTOCOL/USERPARAMS
- CONFIG/R[2] n="2"
- CONFIG/OLD a="1"
TXT
cmp -s "$WORK/diff.txt" "$WORK/expected.txt" || { fail "diff lines"; diff "$WORK/expected.txt" "$WORK/diff.txt"; }

# Files that do not load: one error line, exit 1, nothing written.
for bad in 'not xml at all' '<CONFIG><PROTOCOL>' '<CONFIG a="1>'; do
    printf '%s' "$bad" > "$WORK/broken.xml"
    cp "$WORK/broken.xml" "$WORK/broken.orig"
    "$TOOL" config normalize "$WORK/broken.xml" 2> "$WORK/err.txt"
    code=$?
    [ $code -eq 1 ] || fail "normalize of '$bad': exit $code"
    [ "$(wc -l < "$WORK/err.txt")" -eq 1 ] || fail "normalize of '$bad': error is not one line"
    cmp -s "$WORK/broken.xml" "$WORK/broken.orig" || fail "normalize of '$bad' changed the file"
    "$TOOL" config normalize "$WORK/broken.xml" -o "$WORK/never.xml" 2>/dev/null
    [ ! -e "$WORK/never.xml" ] || fail "normalize of '$bad' wrote its output"
    "$TOOL" config diff "$WORK/broken.xml" "$WORK/new.xml" > /dev/null 2>&1
    [ $? -eq 2 ] || fail "diff of '$bad' must exit 2"
done
"$TOOL" config normalize "$WORK/missing.xml" 2>/dev/null
[ $? -eq 1 ] || fail "normalize of a missing file must exit 1"
[ ! -e "$WORK/missing.xml" ] || fail "normalize created the missing file"

finish
