#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
#
# Whoever asks for the version or the options may have no display, whatever stands beside it. Nor does
# the program end by a crash where its window can't be shown: it says what is the matter. The manual
# page tells of the same options.
# usage: tests/app/program-questions.sh PROGRAM
set -u
program=$1
unset DISPLAY WAYLAND_DISPLAY
export QT_QPA_PLATFORM=none LC_ALL=C.UTF-8
failed=0

# says BEGINNING ARGUMENT...
says() {
    wanted=$1
    shift
    said=$("$program" "$@" 2>&1)
    code=$?
    case $code:$said in
    "0:$wanted"*) ;;
    *)
        echo "\"$*\" ends with $code: $said"
        failed=1
        ;;
    esac
}

for question in --version -v; do
    says "trivex " $question
    says "trivex " -platform offscreen $question
    says "trivex " $question -style fusion
    says "trivex " --no-such-option file.pem $question
done
for question in --help -h --help-all; do
    says "Usage: " $question
    says "Usage: " -platform offscreen $question
    says "Usage: " $question -style fusion
done

# complains CODE PART ARGUMENT...
complains() {
    wanted=$1:$2
    shift 2
    said=$(env -u QT_QPA_PLATFORM "$program" "$@" 2>&1)
    code=$?
    case $code:$said in
    "${wanted%%:*}:trivex: "*"${wanted#*:}"*) ;;
    *)
        echo "\"$*\" without a display ends with $code: $said"
        failed=1
        ;;
    esac
}

complains 1 "no display"
complains 1 "no display" file.pem
complains 1 "no display" -- --list
complains 2 no-such-option --no-such-option

options() {
    sed 's/\\-/-/g' | grep -oE -- '--[a-z]+(-[a-z]+)*' | grep -vx -e --help-all | sort -u
}
told=$("$program" --help | options)
written=$(options < "${0%/*}/../../packaging/trivex.1")
if [ "$told" != "$written" ]; then
    echo "--help and the manual page differ:" $told "or" $written
    failed=1
fi
exit $failed
