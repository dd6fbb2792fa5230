// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Systemplattform.h"

#include "app/Aufruf.h"

Systemplattform::Systemplattform()
    : wahl_(eingabeWaehlen(eingabeKandidaten(layout_)))
    , aufnahme_(schirmaufnahmeWaehlen())
    , gamepadXml_(eigenerOrdner() + "/Gamepad.xml") {}
