#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# verlass.sh: each test that docs/VERLASS.md names exists and is built, and each promise there names one.
set -euo pipefail
cd "$(dirname "$0")/../.."
fehler=0
fehlschlag() { echo "FAILED: $*"; fehler=1; }

gebaut() { # SOURCE: whether a CMakeLists.txt names it, with or without its ending
    grep -rqwF --include=CMakeLists.txt "$(basename "$1" .cpp)" tests
}
test_gefunden() { # SUITE TEST
    local datei
    while IFS= read -r datei; do
        gebaut "$datei" && return
    done < <(grep -rlzP --include='*.cpp' "\n(TYPED_)?TEST(_[FP])?\($1,\s*$2\)" tests)
    return 1
}
bekannt() { # NAME: 0 for a test there is, 1 for one there is not, 2 for what is none
    case $1 in
    werkzeuge.*) [ -x "tests/werkzeuge/${1#*.}.sh" ] && grep -qw "${1#*.}" tests/werkzeuge/CMakeLists.txt ;;
    fuzz.*) [ -f "tests/fuzz/${1#*.}.cpp" ] && grep -qw "${1#*.}" tests/fuzz/CMakeLists.txt ;;
    *.spur) [ -f "tests/spuren/$1" ] ;;
    *) [[ $1 =~ ^([A-Z][A-Za-z0-9]+)\.([A-Z][A-Za-z0-9]+)$ ]] || return 2
        test_gefunden "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}" ;;
    esac
}
namen_in() { grep -o '`[^`]*`' <<<"$1" | tr -d '`' || true; } # LINE

anzahl=0
while IFS= read -r zeile; do
    spalte=${zeile##*| }
    [[ $zeile == "| "* ]] || spalte=$zeile
    gehalten=0
    while IFS= read -r name; do
        [ -n "$name" ] || continue
        code=0
        bekannt "$name" || code=$?
        case $code in
        0) gehalten=1 anzahl=$((anzahl + 1)) ;;
        1) case $name in Belegung.twk | Gamepad.xml) ;; *) fehlschlag "there is no test $name" ;; esac ;;
        *) [[ $zeile != "| "* ]] || fehlschlag "$name is no name of a test" ;;
        esac
    done < <(namen_in "$spalte")
    [[ $zeile != "| "* || $zeile == "| promise |"* || $gehalten -eq 1 ]] || fehlschlag "nothing holds: $zeile"
done <docs/VERLASS.md
[ $anzahl -gt 40 ] || fehlschlag "only $anzahl tests are named"
exit $fehler
