#!/bin/bash
# zor-tool config with the serial interfaces set up: an RS-485 line with
# Modbus rows and an event, an RS-232 fuel sensor, and a Modbus value chosen
# for a user field of the record (its mask position on); normalize leaves the
# saved file as it is.
set -u
BIN=$1
TOOL="$BIN/zor-tool"
. "$(dirname "$0")/support/cli_checks.sh"

"$TOOL" config new -o "$WORK/new.xml" || fail "new: exit $?"
grep -q '^    <RS232 device="0" speed="9600" parity="None" stop="1" />$' "$WORK/new.xml" || fail "new: the RS-232 page"
grep -q '^    <RS485 device="0" speed="9600" parity="None" stop="1" />$' "$WORK/new.xml" || fail "new: the RS-485 page"

# The user field's suffix is the Russian caption of "2u", in Windows-1251.
SUFFIX=$(printf '2 \xe1\xe0\xe9\xf2\xe0, \xe1\xe5\xe7\xe7\xed\xe0\xea\xee\xe2\xee\xe5')
sed -e 's|^    <RS485 device="0" speed="9600" parity="None" stop="1" />$|    <RS485 device="2" speed="19200" parity="Even" stop="1">\
        <USRPRMS>\
            <MDBSPRM1 prm="2u" addr="5" reg="1a" cmd="3" ord="0" cycle="1000" save="0" />\
            <MDBSPRM2 prm="4f" addr="5" reg="1c" cmd="3" ord="1" cycle="1000" save="1" />\
            <MDBSEVNT1 prm="mb2" cond="2" step="0" low="10" high="90" hyst="0" />\
        </USRPRMS>\
    </RS485>|' \
    -e 's|^    <RS232 device="0" speed="9600" parity="None" stop="1" />$|    <RS232 device="1" speed="9600" parity="None" stop="1">\
        <FS1 use="1" type="2" address="3" thld="5" thldOff="0" filterMode="1" filterLength="5" filterLvl="7" />\
    </RS232>|' \
    -e "s|^        <USERPARAMS />\$|        <USERPARAMS>\\
            <FIELD223 prefix=\"MB\" mess=\"MB1,  5,  1a\" suffix=\"$SUFFIX\" />\\
        </USERPARAMS>|" -E -e 's/(mask="[01]{222})[01]/\11/' "$WORK/new.xml" > "$WORK/hand.xml"
grep -q 'MDBSEVNT1' "$WORK/hand.xml" || fail "the hand-made file lacks its Modbus rows"
grep -q 'FIELD223' "$WORK/hand.xml" || fail "the hand-made file lacks its user field"

"$TOOL" config normalize "$WORK/hand.xml" -o "$WORK/saved.xml" || fail "normalize: exit $?"
for line in '<MDBSPRM1 prm="2u" addr="5" reg="1a" cmd="3" ord="0" cycle="1000" save="0" />' \
            '<MDBSEVNT1 prm="mb2" cond="2" step="0" low="10" high="90" hyst="0" />' \
            '<FIELD223 prefix="MB" mess="MB1,  5,  1a" ' \
            '<FS1 use="1" type="2" address="3" '; do
    grep -qF "$line" "$WORK/saved.xml" || fail "saved file lacks: $line"
done
"$TOOL" config normalize "$WORK/saved.xml" -o "$WORK/again.xml" || fail "normalize again: exit $?"
cmp -s "$WORK/saved.xml" "$WORK/again.xml" || fail "normalize changed a saved file"

finish
