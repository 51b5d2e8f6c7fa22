# shellcheck shell=sh
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
#
# What ./run and ./test share. Sourced with `root` set to the repository's directory.

say() { printf '%s\n' "$*"; }
fail() { printf '%s\n' "$*" >&2; exit 1; }

# The package names of the groups given.
package_names() {
    for group in "$@"; do
        awk -v group="[$group]" '
            /^#/ || NF == 0 { next }
            /^\[/ { wanted = ($0 == group); next }
            wanted { print $1 }' "$root/packaging/debian-packages.txt"
    done
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null 2>&1; then
        sudo "$@"
    else
        fail "Not root, and sudo is not installed: $*"
    fi
}

is_installed() {
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Of the packages given those to ask apt for: what is optional only where its lists have it.
wanted_packages() {
    for package in "$@"; do
        name=${package%\?}
        # A name that is only mentioned by other packages has no candidate.
        if [ "$name" = "$package" ] \
            || LC_ALL=C apt-cache policy "$name" | grep -q 'Candidate: [^(]'; then
            printf '%s\n' "$name"
        else
            say "This system has no $name: what needs it is left out." >&2
        fi
    done
}

# install_packages <stamp directory> <group>...: looks once for each state of the list.
install_packages() {
    stamps=$1
    shift
    mkdir -p "$stamps"
    stamp="$stamps/packages-$(printf '%s' "$*" | tr ' ' '-')"
    now=$(cksum < "$root/packaging/debian-packages.txt")
    [ "$(cat "$stamp" 2>/dev/null)" != "$now" ] || return 0
    command -v dpkg-query >/dev/null 2>&1 \
        || fail "This is not a Debian system. Needed are: $(package_names "$@" | tr -d '?' | tr '\n' ' ')"
    missing=
    for package in $(package_names "$@"); do
        is_installed "${package%\?}" || missing="$missing $package"
    done
    if [ -n "$missing" ]; then
        # With the default answers: nobody may be there to ask.
        as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq update
        # shellcheck disable=SC2086
        missing=$(wanted_packages $missing | tr '\n' ' ')
        say "Installing: $missing"
        # shellcheck disable=SC2086
        as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -y --no-install-recommends \
            -o Dpkg::Use-Pty=0 install $missing >"$stamps/install.log" 2>&1 \
            || { tail -n 20 "$stamps/install.log" >&2; fail "Packages could not be installed."; }
    fi
    printf '%s\n' "$now" > "$stamp"
}

# Names and files are UTF-8; the "C" locale would turn them into question marks.
use_utf8() {
    case "$(locale charmap 2>/dev/null)" in
    UTF-8) ;;
    *) LC_ALL=C.UTF-8; export LC_ALL ;;
    esac
}

# configure_build <directory> <cmake options>...: again only when the options change.
configure_build() {
    build=$1
    shift
    launcher=
    if command -v ccache >/dev/null 2>&1; then
        launcher="-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache"
    fi
    options="$* $launcher"
    if [ ! -f "$build/build.ninja" ] || [ "$(cat "$build/.options" 2>/dev/null)" != "$options" ]; then
        mkdir -p "$build"
        # shellcheck disable=SC2086
        cmake -S "$root" -B "$build" -G Ninja -DTRIVEX_TRANSLATIONS_DIR="$build/translations" \
            $launcher "$@" >"$build/configure.log" 2>&1 \
            || { cat "$build/configure.log" >&2; fail "The build could not be configured."; }
        printf '%s\n' "$options" > "$build/.options"
    fi
}

# Shows the last lines of a build only when it fails; `-v` in the environment is not needed.
run_build() {
    build=$1
    shift
    if ! cmake --build "$build" "$@" >"$build/build.log" 2>&1; then
        grep -aE 'FAILED|error:|Error' "$build/build.log" | tail -n 40 >&2
        tail -n 20 "$build/build.log" >&2
        fail "The build failed; all of it is in $build/build.log."
    fi
}

# Plugins, QML modules and catalogues of a build tree.
use_build() {
    QCA_PLUGIN_PATH="$1/qca"
    QML2_IMPORT_PATH="$1/qml"
    export QCA_PLUGIN_PATH QML2_IMPORT_PATH
}

# A software token of the user's own for this program, made on first use. SoftHSM is pointed at it
# by the environment alone: neither the system's nor the user's configuration is read or changed.
use_private_token() {
    data="${XDG_DATA_HOME:-$HOME/.local/share}/trivex/softhsm"
    SOFTHSM2_CONF="$data/softhsm2.conf"
    export SOFTHSM2_CONF
    [ ! -f "$data/.ready" ] || return 0
    pin="${TRIVEX_TOKEN_PIN:-1234}"
    (umask 077; mkdir -p "$data/tokens")
    printf 'directories.tokendir = %s/tokens\nobjectstore.backend = file\nlog.level = ERROR\n' \
        "$data" > "$SOFTHSM2_CONF"
    # An earlier start may have been stopped after the token was made.
    if ! softhsm2-util --show-slots 2>/dev/null | grep -q 'Label: *Trivex *$'; then
        softhsm2-util --init-token --free --label "Trivex" --pin "$pin" --so-pin "$pin" >/dev/null \
            || fail "The software token could not be made in $data."
        say "A software token \"Trivex\" was made in $data."
        [ -n "${TRIVEX_TOKEN_PIN:-}" ] || say "Its PIN is $pin; to change it:" \
            "SOFTHSM2_CONF=$SOFTHSM2_CONF pkcs11-tool --module /usr/lib/softhsm/libsofthsm2.so --login --change-pin"
    fi
    : > "$data/.ready"
}
