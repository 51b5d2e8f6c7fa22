#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
#
# Makes docs/screenshots anew: what the README and the manual show. With a directory, every page in
# every look is put there instead, to be looked at.
# usage: tests/app/screenshots.sh <build directory> [directory]
set -eu
build=${1:?usage: screenshots.sh <build directory> [directory]}
root=$(cd "$(dirname "$0")/../.." && pwd)
cmake --build "$build" --target trivex-screenshots
QML2_IMPORT_PATH=$build/qml
QCA_PLUGIN_PATH=$build/qca
export QML2_IMPORT_PATH QCA_PLUGIN_PATH
if [ $# -gt 1 ]; then
    exec "$build/tests/app/trivex-screenshots" "$2"
fi
taken=$(mktemp -d)
trap 'rm -rf "$taken"' EXIT
shown=$(grep -ohE '[a-z]+-[a-z-]+\.png' "$root/README.md" "$root"/docs/manual/*.html | sort -u)
for page in $(printf '%s\n' "$shown" | sed 's/^[a-z]*-//; s/\.png$//' | sort -u); do
    "$build/tests/app/trivex-screenshots" "$taken" "$page"
done
rm -f "$root"/docs/screenshots/*.png
for picture in $shown; do
    cp "$taken/$picture" "$root/docs/screenshots/$picture"
done
