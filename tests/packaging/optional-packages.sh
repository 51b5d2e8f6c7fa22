#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
#
# Installs the packages of the list on a system that lacks what the list calls optional, and on one
# that has it, with programs that only note what they are asked for.
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

stand_in() { printf '#!/bin/sh\n%s\n' "$2" > "$work/$1"; chmod +x "$work/$1"; }

stand_in dpkg-query 'exit 1'
stand_in id 'echo 0'
stand_in apt-get "case \"\$*\" in *install*) echo \"\$*\" > '$work/asked' ;; esac"

# asked_for <system>: the packages that apt is asked for.
asked_for() {
    (
        # shellcheck source=packaging/setup.sh
        . "$root/packaging/setup.sh"
        PATH="$work:$PATH"
        install_packages "$work/$1" run
    ) > "$work/said" 2>&1 || { cat "$work/said"; exit 1; }
    cat "$work/asked"
}

# It is mentioned by other packages there, as in Debian 13.
stand_in apt-cache 'case "$1 $2" in
"policy libengine-gost-openssl") printf "%s:\n  Installed: (none)\n  Candidate: (none)\n" "$2" ;;
esac'
new=$(asked_for new)
case "$new" in *gost*) echo "asked for what the system lacks: $new"; exit 1 ;; esac
case "$new" in *softhsm2*) ;; *) echo "did not ask for the rest: $new"; exit 1 ;; esac
grep -q 'no libengine-gost-openssl' "$work/said" || { echo "left it out silently"; exit 1; }

stand_in apt-cache 'printf "%s:\n  Installed: (none)\n  Candidate: 3.0.1-2\n" "$2"'
old=$(asked_for old)
case "$old" in *libengine-gost-openssl\ *) ;; *) echo "left out what there is: $old"; exit 1 ;; esac
