#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# probe.sh NEW.deb OLD.deb [FOLDER]: the life of the package in a fresh minimal Debian 12: installed, played as an ordinary
# user under Xvfb with a virtual pad, removed, purged; the older one installed, played, upgraded, played again.
# Needs root, debootstrap and the network. The system is made below /tmp and removed; FOLDER is a minimal one that is there
# and is copied.
set -euo pipefail
[ $# -ge 2 ] || { sed -n 3,6p "$0"; exit 2; }
neu=$(realpath "$1")
alt=$(realpath "$2")
vorlage=${3:-}
wurzel=$(cd "$(dirname "$0")/../.." && pwd)
fehlschlag() { echo "FAILED: $*"; exit 1; }

# In a room of its own: with it go its mounts and whatever a session has left running in there.
if [ -z "${PROBE_SYSTEM:-}" ]; then
    PROBE_SYSTEM=$(mktemp -d /tmp/paketprobe.XXXXXX)
    export PROBE_SYSTEM
    trap 'rm -rf --one-file-system "$PROBE_SYSTEM"' EXIT
    chmod 755 "$PROBE_SYSTEM"
    unshare --mount --pid --fork --kill-child "$0" "$neu" "$alt" "$vorlage"
    exit
fi
system=$PROBE_SYSTEM

echo "== a minimal Debian 12"
if [ -n "$vorlage" ]; then
    cp -a "$vorlage/." "$system"
else
    debootstrap --variant=minbase bookworm "$system" http://deb.debian.org/debian >/dev/null
fi
cp /etc/resolv.conf "$system/etc/resolv.conf"
# Behind a proxy, the way out is the host's.
grep -rli proxy /etc/apt/apt.conf.d | xargs -r cp -t "$system/etc/apt/apt.conf.d" || true
mount -t proc proc "$system/proc"
mount --bind /dev "$system/dev"
mount --bind /dev/pts "$system/dev/pts"
mountpoint -q "$system/dev/shm" || mount -t tmpfs tmpfs "$system/dev/shm"
im() { chroot "$system" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; } # COMMAND...
leise() { "$@" >"$system/tmp/ausgabe" 2>&1 || { tail -30 "$system/tmp/ausgabe"; fehlschlag "$*"; }; } # COMMAND...
leise im apt-get update
echo "$(im dpkg-query -W | wc -l) packages, version $(cat "$system/etc/debian_version")"
pakete() { im dpkg-query -W -f '${Package}\n' | sort; }

# What only the proof needs: a display with a window manager, hands, and an eye that finds what has to be clicked.
leise im apt-get install -y --no-install-recommends xvfb xauth xdotool x11-utils openbox dbus at-spi2-core python3-gi \
    gir1.2-atspi-2.0
mkdir "$system/opt/probe"
# shellcheck disable=SC2046
g++ -std=c++20 -Wall -Wextra -Werror -O1 -shared -fPIC -I "$wurzel" $(pkg-config --cflags sdl2) \
    -o "$system/opt/probe/vorspann.so" "$wurzel/tests/paket/Vorspann.cpp" "$wurzel/tests/ablauf/Spielpad.cpp" \
    $(pkg-config --libs sdl2)
cp "$wurzel/tests/paket/spielen.sh" "$wurzel/tests/paket/finden.py" "$system/opt/probe"
cp "$neu" "$system/opt/probe/neu.deb"
cp "$alt" "$system/opt/probe/alt.deb"

benutzer() { leise im useradd --create-home --shell /bin/bash "$1"; } # NAME
als() { # NAME COMMAND...
    local name=$1
    shift
    im runuser -u "$name" -- env HOME="/home/$name" USER="$name" "$@"
}
spielen() { # NAME anlegen|nochmals
    (cd / && als "$1" sh -c 'cd && exec "$@"' sh timeout 300 xvfb-run -a -s "-screen 0 1400x1000x24" \
        dbus-run-session -- /opt/probe/spielen.sh "$2" 2> >(grep -v "^dbus-daemon\|^SpiRegistry" >&2)) || fehlschlag "$1 can't play"
}
daten() { echo "$system/home/$1/.local/share/gamepad-konfic"; } # NAME
inhalt() { (cd "$(daten "$1")" && find . -type f -exec sha256sum {} + | sort); } # NAME
fehlt_alles() { # everything of the package outside of /home and what dpkg itself keeps
    local rest
    rest=$(cd "$system" && find etc usr var lib bin opt -xdev \( -name '*gamepad-konfic*' -o -name '*gamepad_konfic*' \) \
        -not -path 'var/lib/dpkg/*' -not -path 'var/log/*' -not -path 'var/cache/*')
    [ -z "$rest" ] || fehlschlag "left after $1: $rest"
}
version() { im dpkg-query -W -f '${Version} ${db:Status-Abbrev}' gamepad-konfic 2>/dev/null || echo "not installed"; echo; }

echo "== install $(dpkg-deb -f "$neu" Version)"
pakete >"$system/tmp/vorher"
leise im apt-get install -y /opt/probe/neu.deb
echo "with $(pakete | comm -13 "$system/tmp/vorher" - | wc -l) packages: $(version)"
[ "$(im gamepad-konfic --version)" = "Game-Pad-Konfic $(dpkg-deb -f "$neu" Version)" ] || fehlschlag "another version"
im dpkg -L gamepad-konfic | grep -E '^/usr/(bin|libexec|lib|share/(applications|metainfo))/' | paste -sd' '
[ -z "$(im dpkg --verify gamepad-konfic)" ] || fehlschlag "files differ from the package's"

echo "== play"
benutzer anna
spielen anna anlegen
im sqlite3 -readonly "/home/anna/.local/share/gamepad-konfic/Belegung.twk" \
    "SELECT Schemaname || ': ' || btn1 || '; ' || btn3 FROM tblTastatur"
inhalt anna >"$system/tmp/anna"

echo "== remove"
leise im apt-get remove -y gamepad-konfic
version
fehlt_alles "removal"
inhalt anna | cmp - "$system/tmp/anna" || fehlschlag "removal has touched the user's files"
leise im apt-get purge -y gamepad-konfic
echo "purged: $(version)"
fehlt_alles "purge"
inhalt anna | cmp - "$system/tmp/anna" || fehlschlag "purge has touched the user's files"
echo "the user's files are as they were: $(wc -l <"$system/tmp/anna")"

echo "== upgrade from $(dpkg-deb -f "$alt" Version)"
leise im apt-get install -y --allow-downgrades /opt/probe/alt.deb
version
benutzer emil
spielen emil anlegen
inhalt emil >"$system/tmp/emil"
leise im apt-get install -y /opt/probe/neu.deb
version
[[ $(version) == "$(dpkg-deb -f "$neu" Version) ii"* ]] || fehlschlag "not upgraded"
inhalt emil | cmp - "$system/tmp/emil" || fehlschlag "the upgrade has touched the user's files"
spielen emil nochmals
# A run keeps where its controls stood; else nothing has changed.
im sqlite3 -readonly "/home/emil/.local/share/gamepad-konfic/Belegung.twk" \
    "SELECT Schemaname || ': ' || btn1 || '; ' || btn3 FROM tblTastatur"
grep -o '<title>.*</title>' "$(daten emil)/Beschreibung/Startfenster.htm" 2>/dev/null ||
    im grep -o '<title>.*</title>' /home/emil/.local/share/gamepad-konfic/Beschreibung/Startfenster.htm
# The one who played before the removal finds all as it was.
spielen anna nochmals
leise im apt-get purge -y gamepad-konfic
fehlt_alles "purge"
[ -s "$(daten emil)/Belegung.twk" ] || fehlschlag "purge has touched the user's files"
echo "all well"
