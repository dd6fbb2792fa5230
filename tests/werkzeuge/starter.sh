#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# starter.sh BUILD: what is installed where, and what the command lays into the user's folder, with a stand-in for the
# program that says where it was started and what it was told.
set -euo pipefail
bau=$(realpath "$1")
ordner=$(mktemp -d)
trap 'chmod -R u+w "$ordner"; rm -rf "$ordner"' EXIT
fehlschlag() { echo "FAILED: $*"; exit 1; }

# --- any prefix, also with a blank and an apostrophe ---
praefix="$ordner/Müller's Präfix"
cmake --install "$bau" --prefix "$praefix" >/dev/null
for datei in bin/gamepad-konfic libexec/gamepad-konfic/{gamepad-konfic,tastenwaechter} share/gamepad-konfic/Belegung.twk \
    share/gamepad-konfic/tasten_nachtrag.sql share/gamepad-konfic/Bilder/Joy2.bmp share/gamepad-konfic/Beschreibung/Startfenster.htm \
    share/gamepad-konfic/Beschreibung/Tastwerk.png lib/udev/rules.d/70-gamepad-konfic.rules \
    share/man/man1/gamepad-konfic.1 share/man/de/man1/gamepad-konfic.1 share/applications/gamepad-konfic.desktop \
    share/metainfo/gamepad-konfic.metainfo.xml share/mime/packages/gamepad-konfic.xml share/icons/hicolor/scalable/apps/gamepad-konfic.svg \
    share/icons/hicolor/{16x16,32x32,48x48,128x128}/apps/gamepad-konfic.png; do
    [ -s "$praefix/$datei" ] || fehlschlag "$datei is not installed"
done
# What the menu's entry and the metainfo name is what is installed.
eintrag=$praefix/share/applications/gamepad-konfic.desktop
[ -x "$praefix/bin/$(sed -n 's/^Exec=\(.*\) %f$/\1/p' "$eintrag")" ] || fehlschlag "the menu's entry starts nothing"
typ=$(sed -n 's/^MimeType=\(.*\);$/\1/p' "$eintrag")
for datei in mime/packages/gamepad-konfic.xml metainfo/gamepad-konfic.metainfo.xml; do
    grep -qE "[\">]$typ[\"<]" "$praefix/share/$datei" || fehlschlag "$datei does not know $typ"
done
[ -s "$praefix/share/icons/hicolor/scalable/apps/$(sed -n 's/^Icon=//p' "$eintrag").svg" ] || fehlschlag "the menu's entry has no icon"
metainfo=$praefix/share/metainfo/gamepad-konfic.metainfo.xml
[ -s "$praefix/share/applications/$(sed -n 's|.*<launchable type="desktop-id">\(.*\)</launchable>|\1|p' "$metainfo")" ] ||
    fehlschlag "the metainfo leads to no menu's entry"
[ -s "$praefix/share/icons/hicolor/scalable/apps/$(sed -n 's|.*<icon type="stock">\(.*\)</icon>|\1|p' "$metainfo").svg" ] ||
    fehlschlag "the metainfo has no icon"
# Folders of their own, wherever they lie.
wurzel=$(cd "$(dirname "$0")/../.." && pwd)
cmake -S "$wurzel" -B "$ordner/bau" -G Ninja -DCMAKE_INSTALL_PREFIX="$ordner/p" -DCMAKE_INSTALL_DATADIR="$ordner/d" \
    -DCMAKE_INSTALL_LIBEXECDIR="$ordner/l/e" >"$ordner/worte" 2>&1 || fehlschlag "$(cat "$ordner/worte")"
for zeile in 'vorlagen=$hier/../../d/gamepad-konfic' 'programm=$hier/../../l/e/gamepad-konfic/gamepad-konfic'; do
    grep -qxF "$zeile" "$ordner/bau/einrichtung/launcher/gamepad-konfic" || fehlschlag "absolute folders: $zeile is missing"
done

befehl="$praefix/bin/gamepad-konfic"
version=$("$befehl" --version)
[[ $version == "Game-Pad-Konfic "[0-9]* ]] || fehlschlag "--version says: $version"
grep -q "<title>$version – Hilfe</title>" "$praefix/share/gamepad-konfic/Beschreibung/Startfenster.htm" ||
    fehlschlag "the help is of another version"
grep -q "release version=\"${version#* }\"" "$praefix/share/metainfo/gamepad-konfic.metainfo.xml" ||
    fehlschlag "the metainfo is of another version"
for seite in man1 de/man1; do
    grep -q "\"$version\"" "$praefix/share/man/$seite/gamepad-konfic.1" || fehlschlag "the manual in $seite is of another version"
done
[ -z "$(grep -rlE '@[A-Z_]+@' "$praefix/bin" "$praefix/share" --include='*.xml' --include='*.1' --include='*.htm' \
    --include=gamepad-konfic)" ] || fehlschlag "a placeholder is left"
grep -qE "^## ${version#* }( |\$)" "$wurzel/CHANGELOG.md" || fehlschlag "CHANGELOG.md does not know the version"
grep -q "^gamepad-konfic (${version#* })" "$wurzel/debian/changelog" || fehlschlag "the package is of another version"
grep -q "_${version#* }_" "$wurzel/README.md" || fehlschlag "README.md installs another version"
[[ $("$befehl" --help) == Aufruf:* ]] || fehlschlag "--help does not help"
antwort() { # WORD WORD...: what the command says to the words, of which it does not know WORD
    local wort=$1 code=0 worte
    shift
    worte=$("$befehl" "$@" 2>&1 >"$ordner/worte") || code=$?
    [ $code -eq 2 ] && [ ! -s "$ordner/worte" ] && [[ $worte == *"Unbekanntes Wort „$wort“"*Aufruf:* ]] ||
        fehlschlag "an unknown word: $code, $worte"
}
antwort --nichts --nichts
antwort --x.schema --x.schema
antwort a.schema a.schema b.schema
antwort "" ""
antwort datei.twk --version datei.twk
antwort datei.twk datei.twk --help

# --- the user's folder ---
cat >"$praefix/libexec/gamepad-konfic/gamepad-konfic" <<'ENDE'
#!/bin/sh
echo "in $PWD; own ${GAMEPAD_KONFIC_ORDNER:-}; ${GAMEPAD_KONFIC_STARTFEHLER:-well}${1:+; file $1}"
ENDE
mkdir "$ordner/anderswo"
starten() { (cd "$ordner/anderswo" && env -u HOME -u XDG_DATA_HOME "$@" "$befehl"); } # NAME=VALUE...
erwarten() { [ "$1" = "$2" ] || fehlschlag "$3: $1"; }

daten="$ordner/Meine Däten"
chmod a-w "$praefix/share/gamepad-konfic/Belegung.twk" # as in a store of packages that nobody may write
ziel="$daten/gamepad-konfic"
erwarten "$(starten XDG_DATA_HOME="$daten")" "in $ziel; own $ziel; well" "first start"
cmp -s "$ziel/Belegung.twk" "$praefix/share/gamepad-konfic/Belegung.twk" || fehlschlag "there is no database"
[[ $(stat -c %A "$ziel/Belegung.twk") == -rw* ]] || fehlschlag "the database can't be written"
chmod u+w "$praefix/share/gamepad-konfic/Belegung.twk"
[ -s "$ziel/Bilder/Joy2.bmp" ] || fehlschlag "the picture of a stick is not there"
[ -s "$ziel/Beschreibung/Startfenster.htm" ] || fehlschlag "there is no help"
[ -L "$ziel/Beschreibung" ] || fehlschlag "the help does not come with the program"
[ -z "$(find "$daten" -name '*.neu.*')" ] || fehlschlag "litter is left"

# A file of a Schema, from where the command is given, also with a name that a shell could take apart.
# A file manager gives one that it knows by its content, whatever its name.
for name in "Mein Schema.schema" 'a"$(b).SCHEMA' "$ordner/absolut.schema" "$ordner/Rennen.schema (1)"; do
    erwarten "$(cd "$ordner/anderswo" && env -u HOME XDG_DATA_HOME="$daten" "$befehl" "$name")" \
        "in $ziel; own $ziel; well; file $(cd "$ordner/anderswo" && realpath -m "$name")" "a file"
done

# A second copy that is started at the same time: what it has laid, and what has been saved there since, stays.
mkdir "$ordner/dazwischen"
cat >"$ordner/dazwischen/sync" <<ENDE
#!/bin/sh
case \$1 in *.twk.neu.*) echo meins >"\${1%/*}/Belegung.twk" ;; esac
exec $(command -v sync) "\$@"
ENDE
chmod +x "$ordner/dazwischen/sync"
starten PATH="$ordner/dazwischen:$PATH" XDG_DATA_HOME="$ordner/zugleich" >/dev/null
erwarten "$(cat "$ordner/zugleich/gamepad-konfic/Belegung.twk")" meins "what came meanwhile was overwritten"
[ -z "$(find "$ordner/zugleich" -name '*.neu.*')" ] || fehlschlag "litter is left beside what came meanwhile"

# The new folders, and those above them, are brought to the disk when all lies in them.
mkdir "$ordner/gesichert"
cat >"$ordner/gesichert/sync" <<ENDE
#!/bin/sh
for pfad; do
    [ ! -d "\$pfad" ] || [ ! -e "$ordner/weit/weg/gamepad-konfic/Belegung.twk" ] || echo "\$pfad" >>"$ordner/gesichert/worte"
done
exec $(command -v sync) "\$@"
ENDE
chmod +x "$ordner/gesichert/sync"
weit() { starten PATH="$ordner/gesichert:$PATH" XDG_DATA_HOME="$ordner/weit/weg" >/dev/null; }
weit
for pfad in weit/weg/gamepad-konfic/Bilder weit/weg/gamepad-konfic weit/weg weit .; do
    grep -qxF "$(realpath "$ordner/$pfad")" "$ordner/gesichert/worte" || fehlschlag "the folder $pfad is not on the disk"
done
rm "$ordner/gesichert/worte"
weit
[ ! -e "$ordner/gesichert/worte" ] || fehlschlag "each start waits for the disk"

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

# A copy of the help that comes back, as by an older program: the one that was put aside stays.
rm "$ziel/Beschreibung"
mkdir "$ziel/Beschreibung"
starten XDG_DATA_HOME="$daten" >/dev/null
[ -L "$ziel/Beschreibung" ] || fehlschlag "the help does not come with the program a second time"
[ "$(cat "$ziel"/Beschreibung.alt*/Startfenster.htm)" = "eine alte Hilfe" ] || fehlschlag "the help put aside first is gone"

# A link of the user's own; one to the help of another installation.
mkdir -p "$ordner/eigene Hilfe" "$ordner/früher/gamepad-konfic/Beschreibung"
ln -sfn "$ordner/eigene Hilfe" "$ziel/Beschreibung"
starten XDG_DATA_HOME="$daten" >/dev/null
erwarten "$(readlink "$ziel/Beschreibung")" "$ordner/eigene Hilfe" "the user's own link is gone"
ln -sfn "$ordner/früher/gamepad-konfic/Beschreibung" "$ziel/Beschreibung"
starten XDG_DATA_HOME="$daten" >/dev/null
[ -s "$ziel/Beschreibung/Startfenster.htm" ] || fehlschlag "the help is that of another installation"

# A link to a help that has gone, as after a move of the prefix.
ln -sfn /nirgendwo "$ziel/Beschreibung"
starten XDG_DATA_HOME="$daten" >/dev/null
[ -s "$ziel/Beschreibung/Startfenster.htm" ] || fehlschlag "the help leads nowhere"

# The folder behind a link; a path that is not absolute counts as none.
mkdir "$ordner/Platte"
ln -s "$ordner/Platte" "$ordner/Verweis"
erwarten "$(starten XDG_DATA_HOME="$ordner/Verweis")" \
    "in $ordner/Verweis/gamepad-konfic; own $ordner/Verweis/gamepad-konfic; well" "a link as XDG_DATA_HOME"
[ -s "$ordner/Platte/gamepad-konfic/Belegung.twk" ] || fehlschlag "there is no database behind the link"
erwarten "$(starten XDG_DATA_HOME=daten HOME="$ordner/heim")" \
    "in $ordner/heim/.local/share/gamepad-konfic; own $ordner/heim/.local/share/gamepad-konfic; well" "a relative XDG_DATA_HOME"

[[ $(starten HOME=heim) == *"Weder HOME noch XDG_DATA_HOME"* ]] || fehlschlag "a relative HOME"
[ -z "$(ls -A "$ordner/anderswo")" ] || fehlschlag "a relative HOME lays something where the program is started"

# The user's folder and that of the pictures are links themselves: what lies behind them is found, whatever its case.
mkdir -p "$ordner/Regal/Fotos" "$ordner/verlegt"
echo meins >"$ordner/Regal/BELEGUNG.TWK"
echo meins >"$ordner/Regal/Fotos/JOY2.BMP"
ln -s "$ordner/Regal/Fotos" "$ordner/Regal/Bilder"
ln -s "$ordner/Regal" "$ordner/verlegt/gamepad-konfic"
erwarten "$(starten XDG_DATA_HOME="$ordner/verlegt")" \
    "in $ordner/verlegt/gamepad-konfic; own $ordner/verlegt/gamepad-konfic; well" "a link as the user's folder"
erwarten "$(ls "$ordner/Regal" "$ordner/Regal/Fotos" | grep -ic -e belegung -e joy2)" 2 "a link hides what lies behind it"

# Starts that were broken off leave a copy that was not whole yet: it goes. One that is being laid stays, and so does
# what only has such a name.
reste="$ordner/Reste/gamepad-konfic"
mkdir -p "$reste/Bilder/.Joy2.bmp.neu.3"
echo halb >"$reste/.Belegung.twk.neu.1"
echo halb >"$reste/Bilder/.Joy2.bmp.neu.2"
echo meins >"$reste/Belegung.twk.neu.4"
touch -d '1 hour ago' "$reste"/.Belegung.twk.neu.1 "$reste"/Bilder/.Joy2.bmp.neu.* "$reste"/Belegung.twk.neu.4
echo halb >"$reste/.Belegung.twk.neu.5"
starten XDG_DATA_HOME="$ordner/Reste" >/dev/null
erwarten "$(find "$reste" -name '*.neu.*' -printf '%f\n' | sort | paste -sd' ')" \
    ".Belegung.twk.neu.5 .Joy2.bmp.neu.3 Belegung.twk.neu.4" "what broken off starts have left"

# A session that names no folder with the commands of the system.
for pfad in /nirgendwo ''; do
    erwarten "$(cd "$ordner/anderswo" && XDG_DATA_HOME="$daten" PATH=$pfad "$befehl" 2>&1)" "in $ziel; own $ziel; well" "PATH=$pfad"
done

# A home that is read-only: what is there is enough to start, and a picture that is missing is no obstacle.
[ "$(id -u)" -ne 0 ] || chmod 755 "$ordner"
als_benutzer() { # COMMAND...
    if [ "$(id -u)" -eq 0 ]; then
        setpriv --reuid=65534 --regid=65534 --clear-groups "$@"
    else
        "$@"
    fi
}
fest="$ordner/fest/gamepad-konfic"
mkdir -p "$fest/Bilder"
cp "$praefix/share/gamepad-konfic/Belegung.twk" "$fest"
sqlite3 "$fest/Belegung.twk" "DELETE FROM tblKeyCode WHERE Keyc = '250'"
chmod -R a-w,a+rX "$ordner/fest"
(! als_benutzer touch "$fest/da" 2>/dev/null) || fehlschlag "the read-only folder can be written"
erwarten "$(cd "$ordner/anderswo" && XDG_DATA_HOME="$ordner/fest" als_benutzer "$befehl" 2>&1)" "in $fest; own $fest; well" "a read-only home"

# --- key names that are new ---
# Nothing but the names changes, and a user's name stays, also where the code of another key wants it.
alt="$ordner/alt/gamepad-konfic"
datei="$alt/Belegung.twk"
vorlage="$praefix/share/gamepad-konfic/Belegung.twk"
frage() { sqlite3 -batch "$datei" "$1"; } # STATEMENT
tasten() { frage "SELECT Keyc || '=' || Keye FROM tblKeyCode WHERE Keyc IN ('9', '250', '251') ORDER BY Keyc" | paste -sd' '; }
lauf() { erwarten "$(starten XDG_DATA_HOME="$ordner/alt" 2>&1)" "in $alt; own $alt; well" "$1"; } # WHAT
veraltet() { # [STATEMENT]: an old database, as the one of a user
    rm -rf "$alt"
    mkdir -p "$alt"
    cp "$vorlage" "$datei"
    frage "DELETE FROM tblKeyCode WHERE Keyc IN ('250', '251'); INSERT INTO tblTastatur (Schemaname) VALUES ('S');
        UPDATE tblKeyCode SET Keye = 'Zoom' WHERE Keyc = '9'; ${1:-}"
    cp "$datei" "$ordner/vorher"
}
unveraendert() { cmp "$datei" "$ordner/vorher" || fehlschlag "$1"; } # WHAT

veraltet
lauf "an old database"
erwarten "$(tasten)" "250=Abspielen 9=Zoom" "the names of the keys"
erwarten "$(frage 'SELECT Schemaname FROM tblTastatur')" S "a Schema is gone"
cp "$datei" "$ordner/vorher"
lauf "a database that has all names"
unveraendert "a database that has all names was written"
[ "$(ls -A "$alt" | paste -sd' ')" = "Belegung.twk Beschreibung Bilder" ] || fehlschlag "litter is left: $(ls -A "$alt")"

# What the user has set sqlite3 to does not matter. It looks for that in the home of the account, whatever HOME says: a
# stand-in gives it a file where it is not told of another.
veraltet
mkdir "$ordner/sqlite"
echo '.output /dev/null' >"$ordner/sqlite/rc"
cat >"$ordner/sqlite/sqlite3" <<ENDE
#!/bin/sh
case " \$* " in *' -init '*) ;; *) set -- -init '$ordner/sqlite/rc' "\$@" ;; esac
exec $(command -v sqlite3) "\$@"
ENDE
chmod +x "$ordner/sqlite/sqlite3"
starten PATH="$ordner/sqlite:$PATH" XDG_DATA_HOME="$ordner/alt" >/dev/null
erwarten "$(tasten)" "250=Abspielen 9=Zoom" "the names beside a .sqliterc"

# A stamp of this program, and none, are written; one of a version to come, or of another program, is not.
sqlite3 "$vorlage" 'PRAGMA application_id = 0x47506B31; PRAGMA user_version = 1'
veraltet 'PRAGMA application_id = 0; PRAGMA user_version = 0'
lauf "a database without a stamp"
erwarten "$(tasten)" "250=Abspielen 9=Zoom" "the names in a database without a stamp"
veraltet
lauf "a database with the stamp"
erwarten "$(tasten)" "250=Abspielen 9=Zoom" "the names in a database with the stamp"
for stempel in 'user_version = 2' 'application_id = 7'; do
    veraltet "PRAGMA $stempel"
    lauf "a database with $stempel"
    unveraendert "a database with $stempel was written"
done

# What somebody has laid into a database does not run: sqlite3 has functions that start commands.
falle="edit('x', 'touch \"$ordner/gelaufen\"; true')"
veraltet "CREATE TRIGGER falle AFTER INSERT ON tblKeyCode BEGIN UPDATE tblKeyCode SET Keye = $falle WHERE Keyc = '9'; END;
    CREATE VIEW pragma_application_id AS SELECT $falle AS application_id"
lauf "a database with a trap"
[ ! -e "$ordner/gelaufen" ] || fehlschlag "a command ran that stands in a database"
erwarten "$(tasten)" "250=Abspielen 9=Zoom" "the names in a database with a trap"
for tabelle in "VIEW tblKeyCode AS SELECT Keyc, Keye FROM alte; CREATE TRIGGER falle INSTEAD OF INSERT ON tblKeyCode
        BEGIN SELECT $falle; END" "TABLE tblKeyCode (Keyc, Keye, falle DEFAULT ($falle))"; do
    veraltet "ALTER TABLE tblKeyCode RENAME TO alte; CREATE $tabelle"
    lauf "a database with a trap for a table"
    [ ! -e "$ordner/gelaufen" ] || fehlschlag "a command ran that stands in $tabelle"
done

# Nor does it hold the start up by what it computes at each row: as it is, this one would take minutes.
veraltet "DELETE FROM tblKeyCode;
    CREATE INDEX falle ON tblKeyCode(length(replace(hex(zeroblob(100000000)), '0', substr(Keyc, 1, 1) || '0')))"
anfang=$(date +%s%N)
lauf "a database that computes without an end"
dauer=$((($(date +%s%N) - anfang) / 1000000))
[ $dauer -lt 10000 ] || fehlschlag "a database that computes holds the start up for $dauer ms"

# Under a name of another case, in a folder with an apostrophe.
mkdir "$ordner/heim's"
veraltet
mkdir -p "$ordner/heim's/.local/share/gamepad-konfic"
mv "$datei" "$ordner/heim's/.local/share/gamepad-konfic/BELEGUNG.TWK"
datei="$ordner/heim's/.local/share/gamepad-konfic/BELEGUNG.TWK"
starten HOME="$ordner/heim's" >/dev/null
erwarten "$(tasten)" "250=Abspielen 9=Zoom" "the names in a folder with an apostrophe"
datei="$alt/Belegung.twk"

# One that is held by somebody else is left alone, and the start does not wait for it.
veraltet
coproc HALTER { sqlite3 -batch "$datei"; }
halter=$HALTER_PID
echo "BEGIN EXCLUSIVE; SELECT 'gehalten';" >&"${HALTER[1]}"
read -r wort <&"${HALTER[0]}"
anfang=$(date +%s%N)
lauf "a locked database"
dauer=$((($(date +%s%N) - anfang) / 1000000))
[ "$wort" = gehalten ] && [ "$(dd if="$datei" status=none | cmp - "$ordner/vorher" && echo gleich)" = gleich ] ||
    fehlschlag "a locked database was written"
echo '.quit' >&"${HALTER[1]}"
wait "$halter"
[ $dauer -lt 2000 ] || fehlschlag "a locked database holds the start up for $dauer ms"

# No database at all: text, nothing, a folder, a link into the void.
for art in 'echo meins' ': ' 'mkdir' 'ln -s /nirgendwo'; do
    rm -rf "$alt"
    mkdir -p "$alt/Bilder"
    case $art in mkdir | ln*) $art "$datei" ;; *) $art >"$datei" ;; esac
    vorher=$(stat -c '%F %s' "$datei")
    lauf "no database ($art)"
    erwarten "$(stat -c '%F %s' "$datei")" "$vorher" "no database ($art)"
done

# Without sqlite3 the program starts.
veraltet
mkdir "$ordner/befehle"
for name in basename chmod cp dirname find ln mkdir mv readlink rm sed sh sync; do
    ln -s "$(command -v $name)" "$ordner/befehle/$name"
done
erwarten "$(starten PATH="$ordner/befehle" XDG_DATA_HOME="$ordner/alt" 2>&1)" "in $alt; own $alt; well" "without sqlite3"
unveraendert "a database was written without sqlite3"

# --- a portable folder ---
mkdir "$ordner/Stick"
echo meins >"$ordner/Stick/Belegung.twk"
erwarten "$(cd "$ordner/Stick" && "$befehl")" "in $ordner/Stick; own $ordner/Stick; well" "portable"
[ "$(ls -A "$ordner/Stick")" = Belegung.twk ] || fehlschlag "something was laid into a portable folder"
veraltet
cp "$datei" "$ordner/Stick"
(cd "$ordner/Stick" && "$befehl" >/dev/null)
datei="$ordner/Stick/Belegung.twk"
erwarten "$(tasten)" "250=Abspielen 9=Zoom" "the names in a portable folder"
# Its name may end in a new line.
mkdir "$ordner/Zeile"$'\n'
cp "$ordner/Stick/Belegung.twk" "$ordner/Zeile"$'\n'
[[ $(cd "$ordner/Zeile"$'\n' && "$befehl") == *"; well" ]] || fehlschlag "a portable folder whose name ends in a new line"
# What only has the name of a database makes no portable folder.
mkdir -p "$ordner/Falle/Belegung.twk"
[[ $(cd "$ordner/Falle" && XDG_DATA_HOME="$daten" "$befehl") == "in $ziel;"* ]] || fehlschlag "a folder that is called Belegung.twk"

# --- what goes wrong is told, and leaves nothing half ---
[[ $(starten LANG=C) == *"Weder HOME noch XDG_DATA_HOME"* ]] || fehlschlag "without HOME"
echo >"$ordner/datei"
[[ $(starten XDG_DATA_HOME="$ordner/datei") == *"$ordner/datei/gamepad-konfic"*"kann nicht angelegt werden"* ]] ||
    fehlschlag "a folder that can't be made"
voll=$(ulimit -f 0; starten XDG_DATA_HOME="$ordner/voll" 2>/dev/null)
[[ $voll == *"kann nicht geschrieben werden"* ]] || fehlschlag "a full disk: $voll"
[ -z "$(find "$ordner/voll" -type f)" ] || fehlschlag "a full disk left half a file"
halb=$(ulimit -f 100; starten XDG_DATA_HOME="$ordner/halb" 2>/dev/null)
[[ $halb == *"kann nicht geschrieben werden"* ]] || fehlschlag "a disk without room for the picture: $halb"
[ -z "$(find "$ordner/halb" -type f)" ] || fehlschlag "a disk without room for the picture holds a database"
mv "$praefix/share/gamepad-konfic/Belegung.twk" "$ordner/weg"
[[ $(starten XDG_DATA_HOME="$ordner/neu") == *"share/gamepad-konfic/Belegung.twk“ fehlt"* ]] || fehlschlag "a missing template"
erwarten "$(starten XDG_DATA_HOME="$daten")" "in $ziel; own $ziel; well" "a folder that lacks nothing"
# A help that is missing where the program is installed takes the place of none.
mv "$praefix/share/gamepad-konfic/Beschreibung" "$ordner/weg.hilfe"
rm "$ziel/Beschreibung"
mkdir "$ziel/Beschreibung"
echo "eine alte Hilfe" >"$ziel/Beschreibung/Startfenster.htm"
starten XDG_DATA_HOME="$daten" >/dev/null
erwarten "$(cat "$ziel/Beschreibung/Startfenster.htm" 2>&1)" "eine alte Hilfe" "the only help there is"
