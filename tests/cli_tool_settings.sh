#!/bin/bash
# zor-tool settings: get / set / dump on a file written by the store, and a
# one-line refusal of files that are no settings document.
set -u
BIN=$1
DATA=$2
TOOL="$BIN/zor-tool"
. "$(dirname "$0")/support/cli_checks.sh"

cp "$DATA/store/settings.xml" "$WORK/cfg.xml"

[ "$("$TOOL" settings get "$WORK/cfg.xml" USRPRMS/MDBSPRM1 addr)" = "1" ] || fail "get addr before set"

"$TOOL" settings set "$WORK/cfg.xml" USRPRMS/MDBSPRM1 addr 7 2> "$WORK/err.txt" || fail "set exit code $?"
[ ! -s "$WORK/err.txt" ] || fail "set said: $(cat "$WORK/err.txt")"
sed 's/<MDBSPRM1 addr="1"/<MDBSPRM1 addr="7"/' "$DATA/store/settings.xml" > "$WORK/expected.xml"
cmp "$WORK/cfg.xml" "$WORK/expected.xml" || fail "set changed more than the one value"
[ "$("$TOOL" settings get "$WORK/cfg.xml" USRPRMS/MDBSPRM1 addr)" = "7" ] || fail "get addr after set"
# The same node named from below the root.
[ "$("$TOOL" settings get "$WORK/cfg.xml" DEEP/ROW n)" = "1" ] || fail "get below the root"
[ "$("$TOOL" settings get "$WORK/cfg.xml" SIM1RULES 'a b')" = "<x>" ] || fail "get decodes names and values"

"$TOOL" settings dump "$WORK/cfg.xml" > "$WORK/dump.txt" || fail "dump exit code"
grep -q '^        @addr = 7$' "$WORK/dump.txt" || fail "dump shows the new value"
grep -q '^    SIM1RULES$' "$WORK/dump.txt" || fail "dump shows the elements"

"$TOOL" settings get "$WORK/cfg.xml" USRPRMS/NOPE addr > /dev/null 2>&1
[ $? -eq 1 ] || fail "missing attribute must exit 1"

for bad in 'not xml at all' '<R a="1"><B>' '<!DOCTYPE R [<!ENTITY e "x">]><R/>'; do
    printf '%s' "$bad" > "$WORK/bad.xml"
    cp "$WORK/bad.xml" "$WORK/bad.orig"
    for args in "dump" "get USRPRMS a" "set USRPRMS a 1"; do
        # shellcheck disable=SC2086
        set -- $args
        cmd=$1; shift
        "$TOOL" settings "$cmd" "$WORK/bad.xml" "$@" > "$WORK/out.txt" 2> "$WORK/err.txt"
        code=$?
        [ $code -eq 1 ] || fail "bad document ($bad), $cmd: exit $code"
        [ "$(wc -l < "$WORK/err.txt")" -eq 1 ] || fail "bad document ($bad), $cmd: error is not one line"
        cmp -s "$WORK/bad.xml" "$WORK/bad.orig" || fail "bad document ($bad), $cmd: file changed"
    done
done

"$TOOL" settings get "$WORK/missing.xml" A a > /dev/null 2>&1
[ $? -eq 2 ] || fail "unreadable file must exit 2"
[ ! -e "$WORK/missing.xml" ] || fail "get created the missing file"

# Element text, deleting, paths and JSON.
cp "$DATA/store/settings.xml" "$WORK/cfg.xml"
[ "$("$TOOL" settings get --text "$WORK/cfg.xml" USRPRMS/RATIO)" = "0.250000" ] || fail "get --text"
"$TOOL" settings set --text "$WORK/cfg.xml" RATIO 0.5 || fail "set --text exit $?"
sed 's|<RATIO>0.250000</RATIO>|<RATIO>0.5</RATIO>|' "$DATA/store/settings.xml" > "$WORK/expected.xml"
cmp -s "$WORK/cfg.xml" "$WORK/expected.xml" || fail "set --text changed more than the text"
"$TOOL" settings del "$WORK/cfg.xml" MDBSPRM2 || fail "del element exit $?"
"$TOOL" settings del "$WORK/cfg.xml" MDBSPRM1 use || fail "del attribute exit $?"
grep -q 'MDBSPRM2' "$WORK/cfg.xml" && fail "del left the element"
grep -q '<MDBSPRM1 addr="1" type="4f" />' "$WORK/cfg.xml" || fail "del attribute"
"$TOOL" settings del "$WORK/cfg.xml" MDBSPRM1 nope 2>/dev/null; [ $? -eq 1 ] || fail "del of a missing attribute must exit 1"
[ "$("$TOOL" settings paths "$WORK/cfg.xml" | tr '\n' ' ')" = "USRPRMS USRPRMS/MDBSPRM1 USRPRMS/SIM1RULES USRPRMS/EMPTY USRPRMS/NOTE USRPRMS/RATIO USRPRMS/DEEP USRPRMS/DEEP/ROW USRPRMS/DEEP/ROW USRPRMS/COLOR " ] \
    || fail "paths: $("$TOOL" settings paths "$WORK/cfg.xml" | tr '\n' ' ')"
"$TOOL" settings dump --json "$WORK/cfg.xml" > "$WORK/dump.json" || fail "dump --json exit"
python3 -c 'import json,sys; d=json.load(open(sys.argv[1])); assert d["name"]=="USRPRMS" and d["children"][0]["attributes"][0]=={"name":"addr","value":"1"}' "$WORK/dump.json" \
    || fail "dump --json content"
[ "$("$TOOL" settings get - SIM1RULES 'a b' < "$DATA/store/settings.xml")" = "<x>" ] || fail "get from standard input"

# What would not read back is refused and the file stays as it was.
cp "$DATA/store/settings.xml" "$WORK/cfg.xml"
for args in "USRPRMS a?b 1" "USRPRMS/a[1] x 1" "RATIO/SUB y 2"; do
    # shellcheck disable=SC2086
    "$TOOL" settings set "$WORK/cfg.xml" $args 2> "$WORK/err.txt"
    code=$?
    [ $code -eq 1 ] || fail "set $args: exit $code"
    cmp -s "$WORK/cfg.xml" "$DATA/store/settings.xml" || fail "set $args changed the file"
    grep -q "not saved" "$WORK/err.txt" || fail "set $args: $(cat "$WORK/err.txt")"
done

# A UTF-8 document keeps its encoding ("тест" in UTF-8 bytes).
printf '<?xml version="1.0" encoding="UTF-8"?>\n<R a="\xd1\x82\xd0\xb5\xd1\x81\xd1\x82" />\n' > "$WORK/u.xml"
"$TOOL" settings set "$WORK/u.xml" R b 1 || fail "set on UTF-8 exit $?"
printf '<?xml version="1.0" encoding="UTF-8"?>\n<R a="\xd1\x82\xd0\xb5\xd1\x81\xd1\x82" b="1" />\n' > "$WORK/u.expected"
cmp -s "$WORK/u.xml" "$WORK/u.expected" || fail "UTF-8 document relabelled or changed"
[ "$("$TOOL" settings get "$WORK/u.xml" R a)" = "тест" ] || fail "UTF-8 value read"

# Comments cannot be kept: the change says so.
printf '<?xml version="1.0"?>\n<R>\n<!-- keep me -->\n<?pi x?>\n</R>\n' > "$WORK/c.xml"
"$TOOL" settings set "$WORK/c.xml" R a 1 2> "$WORK/err.txt" || fail "set with comment exit $?"
grep -q "2 comment" "$WORK/err.txt" || fail "dropped comment not told: $(cat "$WORK/err.txt")"

finish
