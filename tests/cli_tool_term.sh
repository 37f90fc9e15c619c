#!/bin/bash
# zor-tool term against zor-sim on a pseudo-terminal: replies, --expect,
# scripts, the exchange log, replies in pieces, a port where nobody answers
# and the one-line port errors with exit code 2.
set -u
BIN=$1
DATA=$2
TOOL="$BIN/zor-tool"
. "$(dirname "$0")/support/cli_checks.sh"
pids=()
trap 'for p in "${pids[@]}"; do kill "$p" 2>/dev/null; done; rm -rf "$WORK"' EXIT

# Starts zor-sim with the given options on a new pty; sets $port.
start_sim() {
  "$BIN/zor-sim" "$@" > "$WORK/sim.out" &
  pids+=($!)
  port=
  for _ in $(seq 100); do
    port=$(head -n1 "$WORK/sim.out")
    [ -n "$port" ] && break
    sleep 0.05
  done
  [ -n "$port" ] || fail "zor-sim printed no pty"
}

# run EXIT-CODE ARGS...: zor-tool term ARGS, stdout in $WORK/out, stderr in $WORK/err.
run() {
  local want=$1; shift
  "$TOOL" term "$@" > "$WORK/out" 2> "$WORK/err"
  local rc=$?
  [ "$rc" = "$want" ] || fail "term $* exited $rc, not $want: $(cat "$WORK/err")"
}
out_is() { [ "$(cat "$WORK/out")" = "$1" ] || fail "$2: printed '$(cat "$WORK/out")'"; }
err_has() {
  grep -qF -- "$1" "$WORK/err" || fail "$2: said '$(cat "$WORK/err")'"
  [ "$(wc -l < "$WORK/err")" = 1 ] || fail "$2: more than one line on stderr"
}

start_sim
serial="serial:$port"
# The console's log shows a byte below 33 as a dot: the reply's blanks and its CR LF.
version='*#V.ZOR-SIM.3.5.8..'
run 0 --port "$serial" '*?V'
out_is "$version" "version reply"
run 0 --port simulator '*?V'
out_is "$version" "version reply of the simulator in process"
run 0 --port "$serial" '*?ICCID 3'
out_is '*#ICCID.3,8970101234567890128,8970201234567890127..' "ICCID reply"
# \20 is a blank; the terminal sees "*?PING 12".
run 0 --port "$serial" '*?PING\2012'
out_is '*#PING.12..' "escapes of the command line"
run 0 --port "$serial" --hex '*?V'
out_is "$(printf '*#V ZOR-SIM 3.5.8\r\n' | od -An -tx1 | tr -d ' \n')" "--hex"
run 0 --port "$serial" --json '*?V'
grep -qx '{"command":"\*?V","reply":"\*#V ZOR-SIM 3.5.8\\r\\n","ms":[0-9]*}' "$WORK/out" \
  || fail "--json printed $(cat "$WORK/out")"

run 0 --port "$serial" --expect '^\*#V ZOR-SIM' --expect ',8970201234567890127$' '*?V' '*?ICCID 2'
run 1 --port "$serial" --expect '^\*#V ZOR-SIM' --expect 'NOT THIS' '*?V' '*?IMEI'
err_has 'does not match' "failed --expect"
grep -qF '*#IMEI.356938035643809' "$WORK/err" || fail "failed --expect shows the reply"
run 2 --port "$serial" --expect a --expect b '*?V'
run 2 --port "$serial" --expect '(' '*?V'
err_has 'bad regular expression' "malformed --expect"

run 0 --port "$serial" --script "$DATA/term/provision.txt"
[ "$(wc -l < "$WORK/out")" = 5 ] || fail "provisioning script: $(cat "$WORK/out")"
grep -qF 'SMS:1,RATE:500' "$WORK/out" || fail "provisioning script set the values"
printf '*?V\n# a comment\n\nsleep 10\n*?IMEI\nexpect ^\\*#V\n' > "$WORK/bad.txt"
run 1 --port "$serial" --script "$WORK/bad.txt"
[ "$(wc -l < "$WORK/out")" = 2 ] || fail "a script runs up to the failing expect"
printf 'expect x\n*?V\n' > "$WORK/early.txt"
run 2 --port "$serial" --script "$WORK/early.txt"
err_has 'line 1: expect before any command' "expect before a command"

# The log is appended to, never started afresh.
echo "kept" > "$WORK/exchange.log"
run 0 --port "$serial" --log "$WORK/exchange.log" '*?V'
run 0 --port "$serial" --log "$WORK/exchange.log" '*?V'
"$TOOL" log "$WORK/exchange.log" > "$WORK/log.txt" || fail "zor-tool log exit code"
[ "$(head -n1 "$WORK/log.txt")" = kept ] || fail "--log kept what the file held"
[ "$(grep -c '^[0-9.]* [0-9:]*  OUT \*?V$' "$WORK/log.txt")" = 2 ] || fail "log shows both commands"
[ "$(grep -c '^[0-9.]* [0-9:]*  IN \*#V ZOR-SIM 3.5.8$' "$WORK/log.txt")" = 2 ] || fail "log shows both replies"
[ "$(grep -cx -- '--------------' "$WORK/log.txt")" = 4 ] || fail "log ends every entry"

# Two holders of one port: the second is told it is busy.
printf '*?V\nsleep 1500\n' > "$WORK/hold.txt"
"$TOOL" term --port "$serial" --script "$WORK/hold.txt" > /dev/null &
holder=$!
sleep 0.5
run 2 --port "$serial" '*?V'
err_has "port $port is busy" "busy port"
wait $holder
run 2 --port serial:/dev/no-such-tty '*?V'
err_has 'no such port: /dev/no-such-tty' "missing port"
run 2 --port bogus '*?V'
run 2 '*?V'
if [ "$(id -u)" = 0 ] && command -v setpriv > /dev/null \
  && setpriv --reuid=65534 --regid=65534 --clear-groups "$TOOL" --version > /dev/null 2>&1; then
  chmod 600 "$port"
  setpriv --reuid=65534 --regid=65534 --clear-groups "$TOOL" term --port "$serial" '*?V' > "$WORK/out" 2> "$WORK/err"
  [ $? = 2 ] || fail "forbidden port must exit 2"
  err_has 'dialout' "forbidden port"
else
  echo "skipped: the forbidden port needs root to act as another user"
fi

# Replies in 4-byte pieces 15 ms apart come out whole.
start_sim --chunk 4 --chunk-delay 15
run 0 --port "serial:$port" --json '*?ICCID 3' '*?V'
grep -qF '"reply":"*#ICCID 3,8970101234567890128,8970201234567890127\r\n"' "$WORK/out" \
  || fail "pieces joined: $(cat "$WORK/out")"
[ "$(wc -l < "$WORK/out")" = 2 ] || fail "one line per exchange for pieces"

# A socat pair with nobody on the far end: the reply times out.
if command -v socat > /dev/null; then
  socat pty,raw,echo=0,link="$WORK/near" pty,raw,echo=0,link="$WORK/far" &
  pids+=($!)
  for _ in $(seq 100); do [ -e "$WORK/near" ] && break; sleep 0.05; done
  run 1 --port "serial:$WORK/near" --timeout 300 '*?V'
  err_has 'no reply to *?V' "timeout"
else
  fail "socat is not installed (scripts/deps.sh installs it)"
fi
finish
