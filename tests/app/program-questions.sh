#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
#
# Whoever asks for the version or the options may have no display, whatever stands beside it.
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
exit $failed
