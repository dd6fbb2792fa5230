#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# starter.sh BUILD: what is installed where, and what the command lays into the user's folder, with a stand-in for the
# program that says where it was started and what it was told.
set -euo pipefail
bau=$(realpath "$1")
ordner=$(mktemp -d)
trap 'chmod -R u+w "$ordner"; rm -rf "$ordner"' EXIT
fehlschlag() { echo "FAILED: $*"; exit 1; }

# --- any prefix, also with a blank ---
praefix="$ordner/ein Präfix"
cmake --install "$bau" --prefix "$praefix" >/dev/null
for datei in bin/gamepad-konfic libexec/gamepad-konfic/gamepad-konfic share/gamepad-konfic/Belegung.twk \
    share/gamepad-konfic/Bilder/Joy2.bmp share/gamepad-konfic/Beschreibung/Startfenster.htm \
    share/gamepad-konfic/Beschreibung/Wayland.htm share/gamepad-konfic/Beschreibung/Tastwerk.png lib/udev/rules.d/70-gamepad-konfic.rules \
    share/man/man1/gamepad-konfic.1 share/man/de/man1/gamepad-konfic.1 share/applications/gamepad-konfic.desktop \
    share/metainfo/gamepad-konfic.metainfo.xml share/icons/hicolor/scalable/apps/gamepad-konfic.svg \
    share/icons/hicolor/16x16/apps/gamepad-konfic.png; do
    [ -s "$praefix/$datei" ] || fehlschlag "$datei is not installed"
done
befehl="$praefix/bin/gamepad-konfic"
version=$("$befehl" --version)
[[ $version == "Game-Pad-Konfic "[0-9]* ]] || fehlschlag "--version says: $version"
grep -q "<title>$version – Hilfe</title>" "$praefix/share/gamepad-konfic/Beschreibung/Startfenster.htm" ||
    fehlschlag "the help is of another version"
grep -q "release version=\"${version#* }\"" "$praefix/share/metainfo/gamepad-konfic.metainfo.xml" ||
    fehlschlag "the metainfo is of another version"
wurzel=$(cd "$(dirname "$0")/../.." && pwd)
grep -q "^## ${version#* }" "$wurzel/CHANGELOG.md" || fehlschlag "CHANGELOG.md does not know the version"
grep -q "^gamepad-konfic (${version#* })" "$wurzel/debian/changelog" || fehlschlag "the package is of another version"
[[ $("$befehl" --help) == Usage:* ]] || fehlschlag "--help does not help"
code=0
worte=$("$befehl" --nichts 2>&1) || code=$?
[ $code -eq 2 ] && [[ $worte == *'"--nichts"'* ]] || fehlschlag "an unknown word: $code, $worte"

# --- the user's folder ---
cat >"$praefix/libexec/gamepad-konfic/gamepad-konfic" <<'ENDE'
#!/bin/sh
echo "in $PWD; own ${GAMEPAD_KONFIC_ORDNER:-}; ${GAMEPAD_KONFIC_STARTFEHLER:-well}"
ENDE
mkdir "$ordner/anderswo"
starten() { (cd "$ordner/anderswo" && env -u HOME -u XDG_DATA_HOME "$@" "$befehl"); } # NAME=VALUE...
erwarten() { [ "$1" = "$2" ] || fehlschlag "$3: $1"; }

daten="$ordner/Meine Däten"
ziel="$daten/gamepad-konfic"
erwarten "$(starten XDG_DATA_HOME="$daten")" "in $ziel; own $ziel; well" "first start"
cmp -s "$ziel/Belegung.twk" "$praefix/share/gamepad-konfic/Belegung.twk" || fehlschlag "there is no database"
[ -w "$ziel/Belegung.twk" ] || fehlschlag "the database can't be written"
[ -s "$ziel/Bilder/Joy2.bmp" ] || fehlschlag "the picture of a stick is not there"
[ -s "$ziel/Beschreibung/Startfenster.htm" ] || fehlschlag "there is no help"
[ -L "$ziel/Beschreibung" ] || fehlschlag "the help does not come with the program"
[ -z "$(find "$daten" -name '*.neu.*')" ] || fehlschlag "litter is left"

erwarten "$(starten HOME="$ordner/heim")" \
    "in $ordner/heim/.local/share/gamepad-konfic; own $ordner/heim/.local/share/gamepad-konfic; well" "without XDG_DATA_HOME"

# What the user has made; a picture under a name of another case; the copy of the help that was laid once.
echo meins >"$ziel/Belegung.twk"
mv "$ziel/Bilder/Joy2.bmp" "$ziel/Bilder/JOY2.BMP"
rm "$ziel/Beschreibung"
mkdir "$ziel/Beschreibung"
echo "eine alte Hilfe" >"$ziel/Beschreibung/Startfenster.htm"
erwarten "$(starten XDG_DATA_HOME="$daten")" "in $ziel; own $ziel; well" "second start"
erwarten "$(cat "$ziel/Belegung.twk")" meins "the database was overwritten"
[ ! -e "$ziel/Bilder/Joy2.bmp" ] || fehlschlag "there are two pictures whose names differ by case only"
! grep -q "eine alte Hilfe" "$ziel/Beschreibung/Startfenster.htm" || fehlschlag "the help is an old one"
erwarten "$(cat "$ziel/Beschreibung.alt/Startfenster.htm")" "eine alte Hilfe" "the old help is gone"

# A link to a help that has gone, as after a move of the prefix.
ln -sfn /nirgendwo "$ziel/Beschreibung"
starten XDG_DATA_HOME="$daten" >/dev/null
[ -s "$ziel/Beschreibung/Startfenster.htm" ] || fehlschlag "the help leads nowhere"

# --- a portable folder ---
mkdir "$ordner/Stick"
echo meins >"$ordner/Stick/Belegung.twk"
erwarten "$(cd "$ordner/Stick" && "$befehl")" "in $ordner/Stick; own $ordner/Stick; well" "portable"
[ "$(ls "$ordner/Stick")" = Belegung.twk ] || fehlschlag "something was laid into a portable folder"

# --- what goes wrong is told, and leaves nothing half ---
[[ $(starten LANG=C) == *"Weder HOME noch XDG_DATA_HOME"* ]] || fehlschlag "without HOME"
echo >"$ordner/datei"
[[ $(starten XDG_DATA_HOME="$ordner/datei") == *"$ordner/datei/gamepad-konfic"*"kann nicht angelegt werden"* ]] ||
    fehlschlag "a folder that can't be made"
voll=$(ulimit -f 0; starten XDG_DATA_HOME="$ordner/voll" 2>/dev/null)
[[ $voll == *"kann nicht geschrieben werden"* ]] || fehlschlag "a full disk: $voll"
[ -z "$(find "$ordner/voll" -type f)" ] || fehlschlag "a full disk left half a file"
mv "$praefix/share/gamepad-konfic/Belegung.twk" "$ordner/weg"
[[ $(starten XDG_DATA_HOME="$ordner/neu") == *"share/gamepad-konfic/Belegung.twk“ fehlt"* ]] || fehlschlag "a missing template"
erwarten "$(starten XDG_DATA_HOME="$daten")" "in $ziel; own $ziel; well" "a folder that lacks nothing"
