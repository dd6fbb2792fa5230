#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# ladefolge.sh BUILD: the loader looks for symbols of the program where most of them are.
set -euo pipefail
export LC_ALL=C
folge=$(readelf -dW "$1/gamepad-konfic" | sed -n 's/.*(NEEDED).*\[\(lib[^.]*\)\..*/\1/p' | head -3 | tr '\n' ' ')
[ "$folge" = "libc libQt6Core libQt6Gui " ] || {
    echo "FAILED: it looks into $folge first"
    exit 1
}
