#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# layout.sh BUILD: tools/format finds and mends what is out of layout, also in a tree that is no git checkout, and
# leaves the build folder alone.
set -euo pipefail
wurzel=$(cd "$(dirname "$0")/../.." && pwd)
baum=$(mktemp -d)
trap 'rm -rf "$baum"' EXIT
fehlschlag() { echo "FAILED: $*"; exit 1; }

mkdir -p "$baum/store" "$baum/build"
cp -r "$wurzel/tools" "$wurzel/.clang-format" "$baum"
printf 'int  eins( );\n' | tee "$baum/store/ein Wert.h" >"$baum/build/Gemacht.h"

! "$baum/tools/format" --check 2>/dev/null || fehlschlag "it does not see what is out of layout"
"$baum/tools/format"
[ "$(cat "$baum/store/ein Wert.h")" = "int eins();" ] || fehlschlag "it does not mend the layout"
[ "$(cat "$baum/build/Gemacht.h")" = "int  eins( );" ] || fehlschlag "it touches the build folder"
"$baum/tools/format" --check || fehlschlag "it sees something where nothing is"
