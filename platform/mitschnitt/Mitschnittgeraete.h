// SPDX-License-Identifier: GPL-3.0-or-later
// What a run is given in the place of the pad, the injection and the clock, so that it is recorded.
#pragma once

#include "platform/mitschnitt/MitgeschnitteneEingabe.h"
#include "platform/mitschnitt/MitgeschnittenerJoystick.h"
#include "platform/mitschnitt/MitgeschnittenerZeitgeber.h"
#include "platform/mitschnitt/Mitschnittband.h"

struct Mitschnittgeraete {
    Mitschnittgeraete(Joystick& joystick, Eingabe& injektion, Zeitgeber& zeitgeber,
                      Mitschnittband::Grenzen grenzen = {})
        : band(grenzen), uhr(zeitgeber, band), pad(joystick, uhr, band), eingabe(injektion, uhr, band) {}

    Mitschnittband band;
    MitgeschnittenerZeitgeber uhr;
    MitgeschnittenerJoystick pad;
    MitgeschnitteneEingabe eingabe;
};
