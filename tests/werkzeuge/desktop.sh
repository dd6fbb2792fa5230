#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# desktop.sh BUILD: the desktop's entry and the metainfo are well-formed, and the latter tells what the newest release brings.
set -euo pipefail
wurzel=$(cd "$(dirname "$0")/../.." && pwd)
desktop-file-validate "$wurzel/assets/desktop/gamepad-konfic.desktop"
appstreamcli validate --no-net --pedantic --strict "$1/einrichtung/desktop/gamepad-konfic.metainfo.xml"
metainfo=$(cat "$1/einrichtung/desktop/gamepad-konfic.metainfo.xml")
[[ $metainfo =~ \<release\ version=[^/]*\>[[:space:]]*\<description\> ]] || { echo "FAILED: no release notes"; exit 1; }
