#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# ordner.sh: a folder includes only what docs/ARCHITEKTUR.md lets it use, no two units include each other, and statement
# texts stand in store/ only.
set -euo pipefail
cd "$(dirname "$0")/../.."
fehler=0
fehlschlag() { echo "FAILED: $*"; fehler=1; }

# FOLDER: what it may include, besides itself.
declare -A darf=(
    [base]=""
    [formats]="base"
    [platform]="base"
    [store]="base formats"
    [engine]="base formats store platform"
    [editors]="base formats store platform engine"
    [app]="base formats store platform engine editors"
)

einheiten() { # lines "UNIT UNIT": the first includes the second
    local ordner
    for ordner in "${!darf[@]}"; do
        grep -roP --include='*.h' --include='*.cpp' '^#include "\K[^"]+' "$ordner"
    done | sed -E 's/\.(h|cpp):/ /; s/\.(h|cpp)$//' | awk '$1 != $2' | sort -u
}

kanten=$(einheiten)
[ "$(wc -l <<<"$kanten")" -gt 100 ] || fehlschlag "hardly an include was found"
while read -r von nach; do
    oben=${von%%/*} unten=${nach%%/*}
    [ "$oben" = "$unten" ] || [[ " ${darf[$oben]} " == *" $unten "* ]] || fehlschlag "$von includes $nach"
    [[ $nach != platform/linux/* && $nach != platform/probe/* ]] || [[ $von == platform/* || $von == app/* ]] ||
        fehlschlag "$von includes $nach, not its interface"
done <<<"$kanten"

kreise=$(tsort <<<"$kanten" 2>&1 >/dev/null | sed 's/^tsort: //') || true
[ -z "$kreise" ] || fehlschlag "units include each other: $kreise"

! grep -rniE --include='*.h' --include='*.cpp' '"(select|insert|update|delete|create table|drop|attach|pragma) ' base formats platform engine editors app ||
    fehlschlag "a statement text stands outside store/"
! grep -rlE --include='*.h' --include='*.cpp' '#include <Q' base formats store engine platform/*.h platform/probe || fehlschlag "Qt below the editors"
exit $fehler
