#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
#
# with-token.sh COMMAND...: runs a command for a new user who has a software token, the one of the
# tour, with keys and certificates on it, and is in the folder with the tour's files. The token comes
# by TRIVEX_PKCS11_MODULES, unless TRIVEX_SYSTEM_MODULES is set: then by the system's p11-kit.
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
for tool in openssl softhsm2-util pkcs11-tool; do
    command -v "$tool" >/dev/null || { echo "SKIP $tool is not installed"; exit 0; }
done
# shellcheck source=tour/environment.sh
. "$root/tour/environment.sh"
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT

HOME="$directory/home"
XDG_DATA_HOME="$HOME/.local/share"
XDG_CONFIG_HOME="$HOME/.config"
XDG_CACHE_HOME="$HOME/.cache"
XDG_RUNTIME_DIR="$directory/runtime"
QT_QPA_PLATFORM=offscreen
QT_QUICK_BACKEND=software
LC_ALL=C.UTF-8
export HOME XDG_DATA_HOME XDG_CONFIG_HOME XDG_CACHE_HOME XDG_RUNTIME_DIR
export QT_QPA_PLATFORM QT_QUICK_BACKEND LC_ALL
mkdir -p "$XDG_DATA_HOME" "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME"
(umask 077; mkdir -p "$XDG_RUNTIME_DIR")

# shellcheck source=tour/fixtures.sh
. "$root/tour/fixtures.sh"
SOFTHSM2_CONF="$directory/softhsm2.conf"
TRIVEX_TOUR_TOKEN="Trivex Tour"
TRIVEX_TOUR_PIN=87124653
TRIVEX_TOUR_SOFTHSM=$(find_softhsm)
TRIVEX_TOUR_MODULE="$directory/libtoken.so"
export SOFTHSM2_CONF TRIVEX_TOUR_PIN
if [ -z "${TRIVEX_SYSTEM_MODULES:-}" ]; then
    TRIVEX_PKCS11_MODULES="$TRIVEX_TOUR_SOFTHSM"
    export TRIVEX_PKCS11_MODULES
fi
make_fixtures >"$directory/fixtures.log" 2>&1 || { cat "$directory/fixtures.log"; exit 1; }
cd "$directory"
# In the background, so that being told to end reaches the command, and what it used is removed.
"$@" &
child=$!
trap 'kill "$child" 2>/dev/null; wait "$child" || true; exit 143' TERM INT
wait "$child"
