#!/usr/bin/env bash
# zor-host's configuration window without a display: a picture of it on a
# new document.
set -u
bin=$1
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
export QT_QPA_PLATFORM=offscreen
"$bin/zor-host" --screenshot-config "$tmp/config.png" >/dev/null 2>&1; rc=$?
[ "$rc" = 0 ] || { echo "FAIL: --screenshot-config exits $rc"; exit 1; }
head -c 8 "$tmp/config.png" | od -An -tx1 | grep -q '89 50 4e 47' || { echo "FAIL: no PNG"; exit 1; }
echo "ok   configuration window picture"
