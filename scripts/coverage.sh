#!/usr/bin/env bash
# Line and branch coverage of the library's areas under the whole test
# suite: a gcov build in build-cov, the suite, then one summary per area.
#   bash scripts/coverage.sh            # store telemetry protocol log commands
#   bash scripts/coverage.sh config     # or the areas named
set -euo pipefail
cd "$(dirname "$0")/.."
ZOR_EXTRA_PACKAGES="gcovr" bash scripts/deps.sh
dir=build-cov
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DZOR_COVERAGE=ON -DZOR_BUILD_BENCH=OFF >/dev/null
cmake --build "$dir" -j"$(nproc)"
find "$dir" -name '*.gcda' -delete
(cd "$dir" && ctest -j"$(nproc)" --output-on-failure)
areas=("$@")
[ ${#areas[@]} -gt 0 ] || areas=(store telemetry protocol log commands)
printf '%-12s %8s %8s\n' area lines branches
for area in "${areas[@]}"; do
  # Branches of exception paths the project never takes (no exceptions)
  # would only dilute the figure.
  gcovr -r . --object-directory "$dir" --filter "src/$area/" --exclude-throw-branches \
        --exclude-unreachable-branches --print-summary -o /dev/null 2>/dev/null |
    awk -v a="$area" '/^lines:/ {l=$2} /^branches:/ {b=$2} END {printf "%-12s %8s %8s\n", a, l, b}'
done
