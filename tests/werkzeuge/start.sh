#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# start.sh BUILD: tools/run in a folder that nothing has been built in, with stand-ins for the build and the program: where
# it starts, that the menu's entry starts the same, and that a second start keeps the user's files.
set -euo pipefail
wurzel=$(cd "$(dirname "$0")/../.." && pwd)
bau=$(realpath "$1")
ordner=$(mktemp -d)
trap 'rm -rf "$ordner"' EXIT
fehlschlag() { echo "FAILED: $*"; exit 1; }

baum="$ordner/ein Baum"
mkdir "$baum"
cp -r "$wurzel/tools" "$wurzel/assets" "$baum"
echo "# nothing to install" >"$baum/tools/packages"
# What is installed is what BUILD installs, but for the program, which says where it was started.
cat >"$baum/programm" <<'ENDE'
#!/bin/sh
echo "in $PWD with DISPLAY=$DISPLAY"
ENDE
chmod +x "$baum/programm"
cat >"$baum/tools/build" <<ENDE
#!/bin/sh
echo "\$@" >'$ordner/gebaut'
mkdir -p build/release
cat >build/release/cmake_install.cmake <<CMAKE
include("$bau/cmake_install.cmake")
file(COPY_FILE "$baum/programm" "\\\${CMAKE_INSTALL_PREFIX}/libexec/gamepad-konfic/gamepad-konfic")
CMAKE
ENDE
starten() { env -u WAYLAND_DISPLAY -u DISPLAY -u XDG_DATA_HOME HOME="$ordner/heim" "$@" "$baum/tools/run"; } # NAME=VALUE...

daten="$ordner/meine Daten"
[[ $(starten XDG_DATA_HOME="$daten" DISPLAY=:7) == *"in $daten/gamepad-konfic with DISPLAY=:7" ]] ||
    fehlschlag "it does not start in its folder below XDG_DATA_HOME"
[[ "$(cat "$ordner/gebaut")" == "release gamepad-konfic "* ]] || fehlschlag "it builds: $(cat "$ordner/gebaut")"
cmp "$daten/gamepad-konfic/Belegung.twk" "$bau/Belegung.twk" || fehlschlag "there is no database"

# The menu's entry, called as a desktop calls it.
eintrag="$daten/applications/gamepad-konfic.desktop"
desktop-file-validate "$eintrag"
befehl=$(sed -n 's/^Exec=//p' "$eintrag")
[[ $(cd / && env -u HOME XDG_DATA_HOME="$daten" DISPLAY=:8 sh -c "$befehl") == "in $daten/gamepad-konfic with DISPLAY=:8" ]] ||
    fehlschlag "the menu's entry starts $befehl"
[ -s "$(sed -n 's/^Icon=//p' "$eintrag")" ] || fehlschlag "the menu's entry has no icon"

echo meins >"$daten/gamepad-konfic/Belegung.twk"
starten XDG_DATA_HOME="$daten" DISPLAY=:7 >/dev/null
[ "$(cat "$daten/gamepad-konfic/Belegung.twk")" = meins ] || fehlschlag "the database was overwritten"

[[ $(starten DISPLAY=:7) == *"in $ordner/heim/.local/share/gamepad-konfic with DISPLAY=:7" ]] ||
    fehlschlag "without XDG_DATA_HOME it does not start below HOME"

[[ $(starten XDG_DATA_HOME=daten DISPLAY=:7) == *"lie in $ordner/heim/.local/share/gamepad-konfic"* ]] && [ ! -e "$baum/daten" ] ||
    fehlschlag "a relative XDG_DATA_HOME is no folder"

[[ $(starten XDG_DATA_HOME="$daten") == *"in $daten/gamepad-konfic with DISPLAY=:"[0-9]* ]] ||
    fehlschlag "without a display it does not start in a virtual one"
