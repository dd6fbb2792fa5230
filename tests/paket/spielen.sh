#!/bin/bash
# SPDX-License-Identifier: GPL-3.0-or-later
# spielen.sh anlegen|nochmals: as an ordinary user of a display, starts the installed program with a virtual pad, makes a
# Schema with mouse and keyboard (or takes the one that is there), and plays it into another program's window.
set -euo pipefail
hier=$(dirname "$0")
fehlschlag() { echo "FAILED: $*"; exit 1; }
arbeit=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$arbeit"' EXIT
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1

warten() { # COMMAND...: until it succeeds
    local ende=$((SECONDS + 20))
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt $ende ] || return 1
        sleep 0.1
    done
}
fenster() { warten xdotool search --onlyvisible --name "^$1\$" || fehlschlag "there is no window \"$1\""; } # TITLE
klicken() { # WINDOW TEXT
    local ort
    ort=$("$hier/finden.py" "$1" "$2") || fehlschlag "nothing to click: $2"
    # shellcheck disable=SC2086
    xdotool mousemove $ort click 1
    sleep 0.3
}
schliessen() { # --name|--class TEXT
    xdotool search --onlyvisible "$1" "^$2\$" windowactivate --sync
    xdotool key alt+F4
}
pad() { echo "$1 1" >"$SPIELPAD"; sleep 0.2; echo "$1 0" >"$SPIELPAD"; sleep 0.2; } # BUTTON
Y=3 A=0

openbox 2>/dev/null &
export SPIELPAD=$arbeit/pad
mkfifo "$SPIELPAD"
LD_PRELOAD=$hier/vorspann.so gamepad-konfic &>"$arbeit/worte" &
programm=$!
fenster Game-Pad-Konfic
[ "$(id -u)" -ne 0 ] || fehlschlag "no ordinary user"
echo "$(id -un) runs $(readlink "/proc/$programm/exe") in $(readlink "/proc/$programm/cwd")"

if [ "$1" = anlegen ]; then
    klicken Game-Pad-Konfic "Schema neu"
    xdotool type Probe
    klicken Game-Pad-Konfic "Schema Speichern"
    klicken Game-Pad-Konfic "Button bearbeiten"
    fenster Tastwerk
    # The pad chooses its button.
    pad $Y
    klicken Tastwerk "Taste:"
    klicken Tastwerk "Mit Doppelklick Tabtaste bestätigen"
    xdotool key z
    pad $A
    klicken Tastwerk Maus
    klicken Tastwerk Speichern
    schliessen --name Tastwerk
fi

xev -name Spiel -geometry 300x300+900+600 -event keyboard -event button >"$arbeit/xev" &
fenster Spiel
klicken Game-Pad-Konfic "Schema starten"
fenster "Schema gestartet"
xdotool search --onlyvisible --name '^Spiel$' windowactivate --sync mousemove --window %1 150 150
sleep 0.5
pad $Y
pad $A
gekommen() { grep -q "keysym 0x7a, z" "$arbeit/xev" && grep -q "button 1" "$arbeit/xev"; }
warten gekommen || { cat "$arbeit/xev" "$arbeit/worte"; fehlschlag "what the pad does has not come"; }
# Pressed and let go, each once.
erwartet="KeyPress z,KeyRelease z,ButtonPress 1,ButtonRelease 1"
warten grep -q ButtonRelease "$arbeit/xev"
kam=$(awk '/^(Key|Button)(Press|Release) event/ { art = $1 }
    /keysym/ { sub(/\),.*/, ""); print art, $NF } / button [0-9]/ { match($0, /button [0-9]+/); print art, substr($0, RSTART + 7, RLENGTH - 7) }' \
    "$arbeit/xev" | paste -sd,)
echo "came in the other program: $kam"
[ "$kam" = "$erwartet" ] || fehlschlag "expected: $erwartet"
# The window of the run has the last action as its title.
schliessen --class gamepad-konfic
fenster Game-Pad-Konfic
kill -TERM $programm
code=0
wait $programm || code=$?
echo "the program ends with $code"
[ $code -eq 0 ] || fehlschlag "$(cat "$arbeit/worte")"
