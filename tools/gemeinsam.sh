# SPDX-License-Identifier: GPL-3.0-or-later
# Sourced by the tools: the project's folder, and the installation of Debian packages.
set -euo pipefail
wurzel=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$wurzel"

# The packages of the named sections of tools/packages; where none is named of all but [wayland], a machine in a machine
# that only tests/wayland asks for.
pakete() { # SECTION...
    awk -v gewaehlt=" $* " '{ sub(/#.*/, "") } /^\[/ { teil = $0; gsub(/[][ ]/, "", teil); next }
        (gewaehlt == "  " && teil != "wayland") || index(gewaehlt, " " teil " ") { for (i = 1; i <= NF; i++) print $i }' tools/packages
}

# Installs what is missing of the named sections; asks sudo only when there is something to install.
pakete_installieren() { # SECTION...
    local fehlende=() paket
    for paket in $(pakete "$@"); do
        dpkg-query -W -f='${Status}' "$paket" 2>/dev/null | grep -q 'ok installed' || fehlende+=("$paket")
    done
    [ ${#fehlende[@]} -gt 0 ] || return 0
    echo "Installing: ${fehlende[*]}"
    local als=()
    [ "$(id -u)" -eq 0 ] || als=(sudo)
    "${als[@]}" apt-get update -qq
    "${als[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${fehlende[@]}" >/dev/null
}
