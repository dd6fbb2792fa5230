#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# beispiele.sh BUILD: the traces that the documents show can be played.
set -euo pipefail
cd "$(dirname "$0")/../.."
bau=$1
ordner=$(mktemp -d)
trap 'rm -rf "$ordner"' EXIT
# An indented block that has a line "    =" is a trace.
awk -v ziel="$ordner" '/^    / { block = block substr($0, 5) "\n"; if ($0 == "    =") spur = 1; next }
    { if (spur) print block > (ziel "/" ++n ".spur"); block = ""; spur = 0 }
    END { if (spur) print block > (ziel "/" ++n ".spur") }' CONTRIBUTING.md docs/*.md
"$bau/spur" --streng --mindestens 1 "$ordner"
