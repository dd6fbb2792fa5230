#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# start.sh BUILD: tools/run, with stand-ins for the build and the program: where it installs, where it starts, and that
# a second start keeps the user's files.
set -euo pipefail
wurzel=$(cd "$(dirname "$0")/../.." && pwd)
ordner=$(mktemp -d)
trap 'rm -rf "$ordner"' EXIT
fehlschlag() { echo "FAILED: $*"; exit 1; }

baum="$ordner/ein Baum"
mkdir -p "$baum/build/release/Bilder"
cp -r "$wurzel/tools" "$wurzel/assets" "$baum"
echo "# nothing to install" >"$baum/tools/packages"
printf '#!/bin/sh\n' >"$baum/tools/build"
printf '#!/bin/sh\necho "in $PWD with DISPLAY=$DISPLAY"\n' >"$baum/build/release/gamepad-konfic"
chmod +x "$baum/build/release/gamepad-konfic"
echo leer >"$baum/build/release/Belegung.twk"
echo Stick >"$baum/build/release/Bilder/Joy2.bmp"
starten() { env -u WAYLAND_DISPLAY -u DISPLAY -u XDG_DATA_HOME HOME="$ordner/heim" "$@" "$baum/tools/run"; }

daten="$ordner/meine Daten"
[[ $(starten XDG_DATA_HOME="$daten" DISPLAY=:7) == *"in $daten/gamepad-konfic with DISPLAY=:7" ]] ||
    fehlschlag "it does not start in its folder below XDG_DATA_HOME"
[ "$(cat "$daten/gamepad-konfic/Belegung.twk")" = leer ] || fehlschlag "there is no database"
[ "$(cat "$daten/gamepad-konfic/Bilder/Joy2.bmp")" = Stick ] || fehlschlag "the picture of a stick is not there"
grep -qx "Path=$daten/gamepad-konfic" "$daten/applications/gamepad-konfic.desktop" ||
    fehlschlag "the desktop's entry does not start in the folder"

echo meins >"$daten/gamepad-konfic/Belegung.twk"
starten XDG_DATA_HOME="$daten" DISPLAY=:7 >/dev/null
[ "$(cat "$daten/gamepad-konfic/Belegung.twk")" = meins ] || fehlschlag "the database was overwritten"

[[ $(starten DISPLAY=:7) == *"in $ordner/heim/.local/share/gamepad-konfic with DISPLAY=:7" ]] ||
    fehlschlag "without XDG_DATA_HOME it does not start below HOME"

[[ $(starten XDG_DATA_HOME="$daten") == *"in $daten/gamepad-konfic with DISPLAY=:"[0-9]* ]] ||
    fehlschlag "without a display it does not start in a virtual one"
