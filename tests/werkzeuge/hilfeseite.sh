#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# hilfeseite.sh BUILD: the help page stands by itself: its pictures lie beside it, its jumps and those of F1 have a
# target, nothing comes out of the net, and what it calls a caption is one: each text in „quotes“ is a whole literal of the forms, but for
# the mark of its shortcut and for blanks at its end.
set -euo pipefail
wurzel=$(cd "$(dirname "$0")/../.." && pwd)
ordner=$wurzel/assets/Beschreibung
seite=$ordner/Startfenster.htm
GROESSTES_BILD=81920 # bytes
fehlschlag() { echo "FAILED: $*"; exit 1; }

attribute() { grep -o " $1=\"[^\"]*\"" "$seite" | cut -d'"' -f2 | sort -u; } # NAME
# A caption may run over the end of a line of the page.
beschriftungen() {
    tr '\n' ' ' <"$seite" | tr -s ' ' | grep -o '„[^“]*“' | sed 's/^„//; s/“$//; s/&gt;/>/g; s/&lt;/</g; s/&amp;/\&/g' |
        sort -u
}
# The buttons of boxes are the toolkit's own; SpracheTest sees what it writes on them.
literale() { find "$wurzel/base" "$wurzel/editors" "$wurzel/tests/editors/common/SpracheTest.cpp" \( -name '*.h' -o -name '*.cpp' \) -exec cat {} + | grep -o '"[^"]*"' | sed 's/^"&\{0,1\}//; s/ *"$//'; }

! grep -qiE '<script|<link|<iframe|@import|url\(|https?:|//[a-z]' "$seite" || fehlschlag "it has a script or needs the net"

bilder=$(attribute src)
[ -n "$bilder" ] || fehlschlag "there is no picture on the page"
while IFS= read -r bild; do
    [ -s "$ordner/$bild" ] || fehlschlag "the picture $bild does not exist"
    [ "$(stat -c %s "$ordner/$bild")" -lt "$GROESSTES_BILD" ] || fehlschlag "the picture $bild is too large"
done <<<"$bilder"
# The page keeps room for a picture by the size that it names.
masse() { od -An -tu1 -j"$1" -N4 "$2" | awk '{ print (($1 * 256 + $2) * 256 + $3) * 256 + $4 }'; } # OFFSET FILE
while IFS='|' read -r bild breite hoehe; do
    [ "$breite $hoehe" = "$(masse 16 "$ordner/$bild") $(masse 20 "$ordner/$bild")" ] ||
        fehlschlag "the page says that $bild has $breite by $hoehe pixels"
done < <(grep -o '<img [^>]*>' "$seite" | sed 's/.* src="\([^"]*\)" width="\([^"]*\)" height="\([^"]*\)".*/\1|\2|\3/')
for datei in "$ordner"/*.png; do
    grep -qxF "$(basename "$datei")" <<<"$bilder" || fehlschlag "no place of the page shows $datei"
done

anker=$(attribute id)
while IFS= read -r ziel; do
    grep -qxF "${ziel#\#}" <<<"$anker" || fehlschlag "the jump $ziel has no target"
done < <(attribute href)

# F1 jumps by the anchors of one table.
kapitel=$(grep -oE '", "[^"]+"\}|KAPITEL_[A-Z_]+ = "[^"]+"' "$wurzel/editors/common/Hilfekapitel.h" | sed 's/.*"\([^"]*\)".*/\1/')
[ -n "$kapitel" ] || fehlschlag "F1 has no chapter"
while IFS= read -r ziel; do
    grep -qxF "$ziel" <<<"$anker" || fehlschlag "F1 opens the chapter $ziel, which the page doesn't have"
done <<<"$kapitel"

vorhandene=$(literale)
genannte=$(beschriftungen)
[ -n "$genannte" ] || fehlschlag "the page names no caption"
while IFS= read -r text; do
    grep -qxF -- "$text" <<<"$vorhandene" || fehlschlag "no form has the caption „$text“"
done <<<"$genannte"
