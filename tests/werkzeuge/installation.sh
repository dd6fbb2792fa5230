#!/usr/bin/env bash
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
