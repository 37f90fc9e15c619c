#!/bin/bash
# zor-tool config check: faults planted at known lines are reported one line
# each, in document order, with what the forms keep and why; every golden
# configuration is clean; a foreign or empty document is not a configuration;
# a document that does not parse exits 2; the file is never written.
set -u
BIN=$1
DATA=$2
TOOL="$BIN/zor-tool"
. "$(dirname "$0")/support/cli_checks.sh"
DECL='<?xml version="1.0" encoding="windows-1251"?>'

# Golden configurations: what "config new" writes under each profile, and the
# hand-made documents of the server page, checked under their profile.
for profile in "" "--sims 2" "--can-variant bt --ble-slots 4" "--sims 2 --can-variant bt --ble-slots 32"; do
    # shellcheck disable=SC2086
    "$TOOL" config new -o "$WORK/golden.xml" $profile || fail "new $profile: exit $?"
    # shellcheck disable=SC2086
    out=$("$TOOL" config check "$WORK/golden.xml" $profile)
    rc=$?
    [ $rc -eq 0 ] && [ -z "$out" ] || fail "new $profile is not clean (exit $rc): $out"
done
"$TOOL" config check "$DATA/config/srvalg_defaults_one_sim.xml" > "$WORK/out.txt" \
    || fail "srvalg one SIM: $(cat "$WORK/out.txt")"
"$TOOL" config check "$DATA/config/srvalg_two_sims.xml" --sims 2 > "$WORK/out.txt" \
    || fail "srvalg two SIMs: $(cat "$WORK/out.txt")"

# Planted faults. The rules: the ping period is 15..3600 seconds, flags are
# 0 or 1, the parity codes are None, Even and Odd, a record holds at most 512
# bytes (every field selected is far more), user parameters must be offered
# by a page in their slot's width (a 4-byte type does not fit a 2-byte
# slot), and nodes or attributes no form reads are named.
ONES=$(printf '1%.0s' $(seq 255))
cat > "$WORK/plant.xml" <<XML
$DECL
<CONFIG>
    <PROTOCOL page="PROTOCOL">
        <KITE format="30" mask="$ONES" />
        <USERPARAMS>
            <FIELD207 prefix="XX" mess="nothing" suffix="" />
            <FIELD223 prefix="MB" mess="MB1" suffix="4u" />
        </USERPARAMS>
    </PROTOCOL>
    <RULES pingTimer="99999" telAddPing="2" noPriorMsg="1" grpTimer="12abc" />

    <RS232 device="0" speed="9600" parity="Weird" stop="1" bogus="x" />
    <JUNK a="1" />
</CONFIG>
XML
cp "$WORK/plant.xml" "$WORK/before.xml"
"$TOOL" config check "$WORK/plant.xml" > "$WORK/out.txt"
[ $? -eq 1 ] || fail "planted faults must exit 1"
F="$WORK/plant.xml"
MASK_LINE="^$F:4: CONFIG/PROTOCOL/KITE/mask: \"1\{255\}\" -> \"[01]\{255\}\": "
MASK_LINE+="the record takes [0-9]* bytes, over the terminal's limit of 512$"
sed -n 1p "$WORK/out.txt" | grep -q "$MASK_LINE" \
    || fail "record over 512 bytes: $(sed -n 1p "$WORK/out.txt" | cut -c1-120)"
sed 1d "$WORK/out.txt" > "$WORK/rest.txt"
cat > "$WORK/expected.txt" <<TXT
$F:6: CONFIG/PROTOCOL/USERPARAMS/FIELD207/mess: "nothing" -> "nothing": no page offers this value in 1 bytes (field 207)
$F:7: CONFIG/PROTOCOL/USERPARAMS/FIELD223: a value of 4 bytes does not fit the 2-byte slot of field 223
$F:10: CONFIG/RULES/pingTimer: "99999" -> "3600": out of range 15..3600
$F:10: CONFIG/RULES/telAddPing: "2" -> "1": not 0 or 1
$F:10: CONFIG/RULES/grpTimer: "12abc" -> "12": not a whole number
$F:12: CONFIG/RS232/parity: "Weird" -> "None": unknown code (known: None, Even, Odd)
$F:12: CONFIG/RS232/bogus: "x" -> "": no form reads this attribute
$F:13: CONFIG/JUNK: no form reads this node
TXT
diff "$WORK/expected.txt" "$WORK/rest.txt" > "$WORK/diff.txt" || fail "planted faults: $(cat "$WORK/diff.txt")"
cmp -s "$WORK/plant.xml" "$WORK/before.xml" || fail "check wrote the file"

# Not a configuration: another top element, or no element at all.
printf '%s\n<USRPRMS>\n    <A b="1" />\n</USRPRMS>\n' "$DECL" > "$WORK/foreign.xml"
out=$("$TOOL" config check "$WORK/foreign.xml")
[ $? -eq 1 ] || fail "foreign document must exit 1"
[ "$out" = "$WORK/foreign.xml:2: USRPRMS: not a configuration: the top element is not CONFIG" ] || fail "foreign: $out"
: > "$WORK/empty.xml"
out=$("$TOOL" config check "$WORK/empty.xml")
[ $? -eq 1 ] || fail "empty file must exit 1"
[ "$out" = "$WORK/empty.xml:1: CONFIG: not a configuration: the file holds no element" ] || fail "empty: $out"
[ ! -s "$WORK/empty.xml" ] || fail "check wrote the empty file"

# A document that does not parse: exit 2, the parser's reason, no report.
printf '<CONFIG><A></CONFIG>' > "$WORK/broken.xml"
"$TOOL" config check "$WORK/broken.xml" > "$WORK/out.txt" 2> "$WORK/err.txt"
[ $? -eq 2 ] || fail "broken document must exit 2"
[ ! -s "$WORK/out.txt" ] || fail "broken document: a report on standard output"
grep -q "line 1, column" "$WORK/err.txt" || fail "broken document: no reason ($(cat "$WORK/err.txt"))"
"$TOOL" config check "$WORK/missing.xml" 2>/dev/null
[ $? -eq 2 ] || fail "missing file must exit 2"
[ ! -e "$WORK/missing.xml" ] || fail "check created a missing file"

# The settings sheet of the same file: each value as its page shows it, the
# ones that differ from the defaults marked.
"$TOOL" config sheet "$WORK/plant.xml" -o "$WORK/sheet.txt" || fail "sheet: exit $?"
grep -q '^  \* .*: 3600 ' "$WORK/sheet.txt" || fail "sheet: the clamped ping period, marked"
grep -q '^  \* .*: 19200$' "$WORK/sheet.txt" && fail "sheet: a speed the file does not set"
"$TOOL" config sheet "$WORK/plant.xml" -o "$WORK/sheet.pdf" || fail "sheet as PDF: exit $?"
[ "$(head -c 4 "$WORK/sheet.pdf")" = "%PDF" ] || fail "sheet as PDF: not a PDF"
"$TOOL" config sheet "$WORK/plant.xml" -o "$WORK/sheet.doc" --format doc 2>/dev/null
[ $? -eq 2 ] || fail "sheet --format doc must exit 2"

finish
