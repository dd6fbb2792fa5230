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
