// SPDX-License-Identifier: GPL-3.0-or-later
// The engine's state that outlasts a run: a second run in one process finds it as the first one left it.
#pragma once

#include "engine/buttons/GehalteneTasten.h"
#include "engine/buttons/TastenAktion.h"
#include "engine/buttons/Wiederholung.h"
#include "engine/input/Achsen.h"
#include "engine/input/Entwackeln.h"
#include "engine/output/Druckbuch.h"
#include "engine/run/GegebenerStand.h"
#include "engine/run/GobalVariable.h"
#include "engine/slider/Schubregler.h"
#include "engine/stick/StickMaschine.h"
#include "store/files/Achsendatei.h"

#include <string>
#include <utility>
#include <vector>

struct Laufzustand {
    /// `gamepadXml` is the path of the axis assignment file.
    Laufzustand(Joystick& joystick, std::string gamepadXml)
        : achsendatei(std::move(gamepadXml), global.Schemaauswahl), achsen(joystick, achsendatei) {}
    Laufzustand(const Laufzustand&) = delete;
    Laufzustand& operator=(const Laufzustand&) = delete;

    GobalVariable global;
    GegebenerStand gegeben;
    Druckbuch druckbuch; ///< before what may still send when it dies
    GehalteneTasten gehaltene;
    Wiederholstand wiederholung;
    Tastenstand tasten;
    Achsendatei achsendatei;
    Achsen achsen;
    Entwackelstand entwackeln;
    Schubstand schub;
    Stickdatenbank stickdatenbank;
    StickMaschine linkerStick{LINKER_STICK_EIGENART, global, stickdatenbank};
    StickMaschine rechterStick{RECHTER_STICK_EIGENART, global, stickdatenbank};
    /// Those that a run evaluates, in this order.
    std::vector<StickMaschine*> sticks{&linkerStick, &rechterStick};
};
