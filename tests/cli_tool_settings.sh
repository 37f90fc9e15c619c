#!/bin/bash
# zor-tool settings: get / set / dump on a file written by the store, and a
# one-line refusal of files that are no settings document.
set -u
BIN=$1
DATA=$2
TOOL="$BIN/zor-tool"
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
export LC_ALL=C
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

cp "$DATA/store/settings.xml" "$WORK/cfg.xml"

[ "$("$TOOL" settings get "$WORK/cfg.xml" USRPRMS/MDBSPRM1 addr)" = "1" ] || fail "get addr before set"

"$TOOL" settings set "$WORK/cfg.xml" USRPRMS/MDBSPRM1 addr 7 || fail "set exit code $?"
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

[ $failures -eq 0 ] && echo "all passed"
exit $failures
