#!/bin/bash
# zor-tool config with CAN selections and S6 devices: the hex texts of a saved
# file survive normalize under either CAN variant, a hand-made text is brought
# to its full digit count, and the S6 element keeps its layout.
set -u
BIN=$1
TOOL="$BIN/zor-tool"
. "$(dirname "$0")/support/cli_checks.sh"

"$TOOL" config new -o "$WORK/new.xml" || fail "new: exit $?"
Z20=00000000000000000000
grep -q "^    <CP sc=\"$Z20\" ac=\"${Z20}${Z20}0000000\" bc=\"${Z20}000000\" cmd=\"000\" />$" "$WORK/new.xml" \
    || fail "new: the CAN selection"
grep -q '^    <S6 outFS="4095">$' "$WORK/new.xml" || fail "new: the S6 element"
grep -q '^        <S6DUT8 address="0" filterMode="0" filterLength="5" filterLvl="5" />$' "$WORK/new.xml" \
    || fail "new: the eighth S6 sensor"

# SC 1-4 and 80, AC 1, BC 1 and 29, commands 2, 4, 5, 9, 10; sensor 3 at 77.
SC=f0000000000000000001
AC=8${Z20}${Z20}000000
BC=80000008000000000000000000
sed -e "s|<CP [^>]*/>|<CP sc=\"$SC\" ac=\"$AC\" bc=\"$BC\" cmd=\"a13\" />|" \
    -e 's|<S6DUT3 address="0"|<S6DUT3 address="77"|' "$WORK/new.xml" > "$WORK/saved.xml"
for variant in ext bt; do
    "$TOOL" config normalize "$WORK/saved.xml" -o "$WORK/$variant.xml" --can-variant $variant || fail "normalize $variant: exit $?"
    cmp -s "$WORK/saved.xml" "$WORK/$variant.xml" || fail "normalize --can-variant $variant changed a saved file"
done

# A short upper-case text and bits of numbers no list has.
sed -e "s|<CP [^>]*/>|<CP sc=\"F\" ac=\"4\" bc=\"zz\" cmd=\"fffff\" />|" "$WORK/new.xml" > "$WORK/hand.xml"
"$TOOL" config normalize "$WORK/hand.xml" || fail "normalize hand-made: exit $?"
grep -q "^    <CP sc=\"f0000000000000000000\" ac=\"${Z20}${Z20}0000000\" bc=\"${Z20}000000\" cmd=\"ff3\" />$" "$WORK/hand.xml" \
    || fail "normalize hand-made: full digit counts"

finish
