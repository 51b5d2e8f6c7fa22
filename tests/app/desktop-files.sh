#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
#
# What a desktop reads about the program: each file by the tool that knows its format, and the file
# types by what the database answers after taking them in.
# usage: tests/app/desktop-files.sh desktop|metainfo|types|icon
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
name=$root/packaging/org.trivex.Trivex
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

need() {
    for tool in "$@"; do
        command -v "$tool" > /dev/null || { echo "SKIP $tool is not installed"; exit 0; }
    done
}

desktop() {
    need desktop-file-validate
    # Hints count too: the validator ends well with them.
    said=$(desktop-file-validate "$name.desktop" 2>&1) || { echo "$said"; exit 1; }
    [ -z "$said" ] || { echo "$said"; exit 1; }
}

metainfo() {
    need appstreamcli xmllint
    xmllint --noout --nonet "$name.metainfo.xml"
    older=
    # Before 1.0 it does not know the element that 1.0 wants the developer in.
    ! appstreamcli --version | grep -q ' 0\.' || older=--override=unknown-tag=pedantic
    # shellcheck disable=SC2086
    appstreamcli validate --no-net --strict $older "$name.metainfo.xml"
}

install_types() {
    mkdir -p "$work/mime/packages"
    cp "$name.mime.xml" "$work/mime/packages/org.trivex.Trivex.xml"
    # It tells of what it does not understand, and goes on.
    said=$(XDG_DATA_DIRS=$work update-mime-database "$work/mime" 2>&1) || { echo "$said"; exit 1; }
    [ -z "$said" ] || { echo "$said"; exit 1; }
}

types() {
    need xmllint update-mime-database
    xmllint --noout --nonet "$name.mime.xml"
    install_types
    for glob in csr:application/x-trivex-pem-request p12:application/x-pkcs12 \
        pfx:application/x-pkcs12 crt:application/x-x509-ca-cert pem:application/x-x509-ca-cert; do
        grep -q ":${glob#*:}:\*\.${glob%%:*}\$" "$work/mime/globs2" \
            || { echo "*.${glob%%:*} is not ${glob#*:}"; exit 1; }
    done
}

icon() {
    need xmllint
    xmllint --noout --nonet "$name.svg"
    # A hint of the desktop entry to a picture that is not installed would show nothing.
    icon=$(sed -n 's/^Icon=//p' "$name.desktop")
    [ "$icon.svg" = "$(basename "$name.svg")" ] || { echo "no picture for $icon"; exit 1; }
}

case ${1:-} in
desktop | metainfo | types | icon) "$1" ;;
*) echo "usage: $0 desktop|metainfo|types|icon" >&2; exit 2 ;;
esac
