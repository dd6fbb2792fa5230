#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# ohneBildschirm.sh BUILD: without a display the program says so and ends, whatever the environment claims.
set -euo pipefail
bau=$1
pruefen() { # ENVIRONMENT...
    local ausgabe code=0
    ausgabe=$(env -i "$@" timeout 20 "$bau/gamepad-konfic" 2>&1) || code=$?
    if [ $code -ne 1 ] || [[ $ausgabe != *"Kein Bildschirm erreichbar"* ]]; then
        echo "FAILED with $*: exit code $code, output: $ausgabe"
        exit 1
    fi
}
pruefen PATH="$PATH"
pruefen PATH="$PATH" DISPLAY=:59999
pruefen PATH="$PATH" QT_QPA_PLATFORM=xcb
pruefen PATH="$PATH" WAYLAND_DISPLAY=wayland-none XDG_RUNTIME_DIR=/nonexistent

# A server that runs for this program alone, and ends with its last client, is a display. The program shows a box in it
# until it is told to end; however long what it quotes is, the box fits.
ordner=$(mktemp -d)
exec {nummer}< <(exec Xvfb -displayfd 1 -terminate -screen 0 800x600x24 2>/dev/null)
server=$!
trap 'kill $server 2>/dev/null || true; rm -rf "$ordner"' EXIT
read -r -t 20 bildschirm <&"$nummer"
# Without a session's bus libdbus looks for one and loses the text in which it did; the leak checker would tell.
env -i ASAN_OPTIONS=detect_leaks=0 PATH="$PATH" HOME="$ordner" XDG_RUNTIME_DIR="$ordner" DISPLAY=":$bildschirm" GAMEPAD_KONFIC_STARTFEHLER="$(seq 1000)" \
    "$bau/gamepad-konfic" >"$ordner/worte" 2>&1 &
programm=$!
until grep -q libqxcb "/proc/$programm/maps" || ! kill -0 $programm 2>/dev/null; do :; done
hoehe=$(DISPLAY=":$bildschirm" timeout 20 xdotool search --sync --onlyvisible --name '^Game-Pad-Konfic$' getwindowgeometry --shell |
    sed -n 's/^HEIGHT=//p') || true
kill -TERM $programm 2>/dev/null || true
code=0
wait $programm || code=$?
[ $code -eq 1 ] && [ ! -s "$ordner/worte" ] ||
    { echo "FAILED on a server without other clients: exit code $code, output: $(cat "$ordner/worte")"; exit 1; }
[ "${hoehe:-600}" -lt 600 ] || { echo "FAILED: the box is ${hoehe:-no} high"; exit 1; }
