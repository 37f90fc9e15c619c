#!/usr/bin/env bash
# Installs what is missing, builds in a fresh build directory and runs the
# whole test suite with ctest.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
dir=${ZOR_BUILD_DIR:-build-test}
rm -rf "$dir"
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo ${ZOR_CMAKE_ARGS:-}
cmake --build "$dir" -j"$(nproc)"
cd "$dir"
ctest --output-on-failure -j"$(nproc)"
