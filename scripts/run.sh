#!/usr/bin/env bash
# Installs what is missing, builds, and starts the reference host with the
# module loaded and the simulated terminal connected. Without a display it
# runs the scripted demo offscreen and prints the console log to stdout.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBUILD_TESTING=OFF -DZOR_BUILD_BENCH=OFF >/dev/null
cmake --build build -j"$(nproc)" --target zor-host zor-tool
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec build/bin/zor-host --connect simulator "$@"
else
  echo "No display: running the scripted demo offscreen."
  QT_QPA_PLATFORM=offscreen exec build/bin/zor-host --demo "$@"
fi
