#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
#
# Makes docs/screenshots anew: every page, light, dark, in Russian, and in narrower windows.
# usage: tests/app/screenshots.sh <build directory> [page]
set -eu
build=${1:?usage: screenshots.sh <build directory> [page]}
root=$(cd "$(dirname "$0")/../.." && pwd)
cmake --build "$build" --target trivex-screenshots
QML2_IMPORT_PATH=$build/qml QCA_PLUGIN_PATH=$build/qca \
    "$build/tests/app/trivex-screenshots" "$root/docs/screenshots" ${2:+"$2"}
