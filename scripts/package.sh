#!/usr/bin/env bash
# Builds the Debian packages of this source tree into build-pkg/ and checks
# them with lintian (an error fails the script):
#   libzor-commands1     the shared library
#   zor-commands-data    its language files and default lists
#   libzor-commands-dev  headers, CMake package, pkg-config module
#   zor-commands         zor-host, zor-sim, zor-tool, desktop entry, man pages
# The source is copied to build-pkg/src first, so the tree stays clean.
# ZOR_PKG_CMAKE_ARGS is passed to the package's cmake (for example
# -DCMAKE_CXX_COMPILER_LAUNCHER=ccache); DEB_BUILD_OPTIONS as usual
# (noautodbgsym leaves out the -dbgsym packages).
set -euo pipefail
cd "$(dirname "$0")/.."
ZOR_EXTRA_PACKAGES="debhelper dpkg-dev lintian desktop-file-utils appstream" bash scripts/deps.sh

out=build-pkg
version=$(dpkg-parsechangelog -S Version)
src=$out/src/zor-commands-$version
rm -rf "$out"
mkdir -p "$src"
if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
  # What git tracks plus new files it does not ignore, as they stand now.
  git ls-files -z --cached --others --exclude-standard |
    while IFS= read -r -d '' f; do [ -e "$f" ] && printf '%s\0' "$f"; done |
    tar --null -T - -cf - | tar -xf - -C "$src"
else
  tar --exclude='./build*' --exclude='./.git' -cf - . | tar -xf - -C "$src"
fi

export DEB_BUILD_OPTIONS="${DEB_BUILD_OPTIONS:+$DEB_BUILD_OPTIONS }parallel=$(nproc)"
(cd "$src" && dpkg-buildpackage -b -us -uc)
mv "$out"/src/*.deb "$out"/src/*.changes "$out"/src/*.buildinfo "$out"/
rm -rf "$out/src"

echo "=== lintian ==="
lintian --fail-on error --suppress-tags-from-file /dev/null "$out"/*.changes
echo "=== packages ==="
for deb in "$out"/*.deb; do
  printf '%-52s %8s bytes, installed %6s KiB\n' "$(basename "$deb")" "$(stat -c %s "$deb")" \
    "$(dpkg-deb -f "$deb" Installed-Size)"
done
