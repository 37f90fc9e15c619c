#!/usr/bin/env bash
# Installs the Debian 12 packages the project needs (only what is missing).
set -euo pipefail
packages=(
  g++ cmake ninja-build pkg-config help2man
  qtbase5-dev qtbase5-dev-tools libqt5serialport5-dev qttranslations5-l10n
  libgtest-dev libbenchmark-dev zlib1g-dev
  xvfb xauth fonts-dejavu-core socat
)
if [ "${ZOR_WITH_CLANG:-0}" = 1 ]; then
  packages+=(clang libclang-rt-14-dev)
fi
# Extra packages a script needs beyond the build (coverage: gcovr).
if [ -n "${ZOR_EXTRA_PACKAGES:-}" ]; then
  read -r -a extra <<< "$ZOR_EXTRA_PACKAGES"
  packages+=("${extra[@]}")
fi
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  SUDO=""
  [ "$(id -u)" = 0 ] || SUDO=sudo
  echo "Installing: ${missing[*]}"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq "${missing[@]}"
fi
