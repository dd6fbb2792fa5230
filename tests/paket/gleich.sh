#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# gleich.sh: builds the package twice, in folders of different names, with files of another age, another umask, time zone
# and language, and without a compiler cache: the two must be the same byte for byte.
set -euo pipefail
wurzel=$(cd "$(dirname "$0")/../.." && pwd)
ordner=$(mktemp -d)
trap 'rm -rf "$ordner"' EXIT
export CCACHE_DISABLE=1
eins=$ordner/eins
zwei=$ordner/ein-anderer-und-laengerer-Ordner

abschreiben() { # FOLDER AGE UMASK
    umask "$3"
    mkdir "$1"
    find "$wurzel" -mindepth 1 -maxdepth 1 ! -name build ! -name .git -exec cp -r {} "$1" \;
    find "$1" -exec touch --no-dereference --date="$2" {} +
}
bauen() { # FOLDER UMASK
    umask "$2"
    "$1/tools/paket" >"$1.log" 2>&1 || { tail -30 "$1.log"; echo "FAILED: no package in $1"; exit 1; }
}
(abschreiben "$eins" 2001-01-01 022)
(abschreiben "$zwei" now 077)
(TZ=UTC LC_ALL=C.UTF-8 bauen "$eins" 022)
(TZ=Pacific/Auckland LC_ALL=C bauen "$zwei" 077)
fehler=0
for paket in "$eins"/build/paket/*.deb; do
    name=$(basename "$paket")
    cmp "$paket" "$zwei/build/paket/$name" || fehler=1
    sha256sum "$paket" | sed "s|$ordner/||"
done
exit $fehler
