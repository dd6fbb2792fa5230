#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# installation.sh BUILD: what tools/install lays down, and that it never overwrites what is the user's.
set -euo pipefail
wurzel=$(cd "$(dirname "$0")/../.." && pwd)
bau=$1
ordner=$(mktemp -d)
trap 'rm -rf "$ordner"' EXIT
ziel="$ordner/ein Ordner"
fehlschlag() { echo "FAILED: $*"; exit 1; }

"$wurzel/tools/install" "$ziel" "$bau"
for datei in gamepad-konfic 70-gamepad-konfic.rules Belegung.twk Beschreibung/Startfenster.htm Bilder/Joy2.bmp; do
    [ -s "$ziel/$datei" ] || fehlschlag "$datei is missing after the first installation"
done
diff -r "$wurzel/assets/Beschreibung" "$ziel/Beschreibung" || fehlschlag "the help page or a picture of it is missing"
[ -d "$ziel/Bilder" ] || fehlschlag "Bilder is missing"
[ -x "$ziel/gamepad-konfic" ] || fehlschlag "the program can't be run"

# A database that an older version has laid gets the names of keys that are new, and keeps all else.
zeile() { sqlite3 "$ziel/Belegung.twk" "SELECT Keye FROM tblKeyCode WHERE Keyc = '$1'"; }
sqlite3 "$ziel/Belegung.twk" "DELETE FROM tblKeyCode WHERE Keyc IN ('250', '251'); INSERT INTO tblTastatur (Schemaname)
    VALUES ('S'); UPDATE tblKeyCode SET Keye = 'Zoom' WHERE Keyc = '9'"
"$wurzel/tools/install" "$ziel" "$bau"
[ "$(zeile 250)" = Abspielen ] || fehlschlag "a new key name is missing"
[ "$(zeile 9)/$(zeile 251)" = Zoom/ ] || fehlschlag "a name that the user has given is gone, or stands twice"
[ "$(sqlite3 "$ziel/Belegung.twk" "SELECT Schemaname FROM tblTastatur")" = S ] || fehlschlag "a Schema is gone"
cp "$ziel/Belegung.twk" "$ordner/vorher"
"$wurzel/tools/install" "$ziel" "$bau"
cmp "$ziel/Belegung.twk" "$ordner/vorher" || fehlschlag "a database that has all names was written"

# What the user has made or changed, and an old program.
echo meins >"$ziel/Belegung.twk"
echo meins >"$ziel/Beschreibung/Startfenster.htm"
echo meins >"$ziel/Bilder/S0L.bmp"
echo alt >"$ziel/gamepad-konfic"
mv "$ziel/Bilder/Joy2.bmp" "$ziel/Bilder/JOY2.BMP"
"$wurzel/tools/install" "$ziel" "$bau"
for datei in Belegung.twk Beschreibung/Startfenster.htm Bilder/S0L.bmp; do
    [ "$(cat "$ziel/$datei")" = meins ] || fehlschlag "$datei was overwritten"
done
cmp -s "$bau/gamepad-konfic" "$ziel/gamepad-konfic" || fehlschlag "the program was not renewed"
[ ! -e "$ziel/Bilder/Joy2.bmp" ] || fehlschlag "there are two pictures whose names differ by case only"
[ -z "$(find "$ziel" -name '*.neu.*')" ] || fehlschlag "litter is left"
