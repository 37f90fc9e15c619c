# Sourced by the zor-tool shell tests: a scratch folder $WORK removed on
# exit, the C locale, and fail MESSAGE counting failed checks in $failures.
# The test ends with "finish": exit status 0 only when nothing failed.
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
export LC_ALL=C
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
finish() { [ $failures -eq 0 ] && echo "all passed"; exit $((failures > 0)); }
