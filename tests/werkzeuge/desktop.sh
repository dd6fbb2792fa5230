#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# desktop.sh BUILD: the desktop's entry and the metainfo are well-formed.
set -euo pipefail
wurzel=$(cd "$(dirname "$0")/../.." && pwd)
desktop-file-validate "$wurzel/assets/desktop/gamepad-konfic.desktop"
appstreamcli validate --no-net --pedantic "$1/einrichtung/desktop/gamepad-konfic.metainfo.xml"
