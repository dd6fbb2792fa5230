// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Systemplattform.h"

#include <QCoreApplication>

Systemplattform::Systemplattform()
    : wahl_(eingabeWaehlen(eingabeKandidaten(layout_)))
    , aufnahme_(schirmaufnahmeWaehlen())
    , gamepadXml_((QCoreApplication::applicationDirPath() + "/Gamepad.xml").toStdString()) {}
