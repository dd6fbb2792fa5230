// The engine's state that outlasts a run: a second run in one process finds it as the first one left it.
#pragma once

#include "engine/Entwackeln.h"
#include "engine/GehalteneTasten.h"
#include "engine/GobalVariable.h"
#include "engine/Schubregler.h"
#include "engine/StickMaschine.h"
#include "engine/TastenAktion.h"
#include "engine/TimerUeberwachung.h"
#include "engine/Wiederholung.h"
#include "store/ZusatzFunktionen.h"

#include <array>
#include <string>
#include <utility>

struct Laufzustand {
    /// `gamepadXml` is the path of the axis assignment file.
    Laufzustand(Joystick& joystick, std::string gamepadXml)
        : achsen(joystick, std::move(gamepadXml), global.Schemaauswahl) {}
    Laufzustand(const Laufzustand&) = delete;
    Laufzustand& operator=(const Laufzustand&) = delete;

    GobalVariable global;
    GehalteneTasten gehaltene;
    Wiederholstand wiederholung;
    Tastenstand tasten;
    TimerUeberwachung timer;
    ZusatzFunktionen achsen;
    Entwackelstand entwackeln;
    Schubstand schub;
    Stickdatenbank stickdatenbank;
    StickMaschine linkerStick{LINKER_STICK_EIGENART, global, stickdatenbank};
    StickMaschine rechterStick{RECHTER_STICK_EIGENART, global, stickdatenbank};
    /// In the order in which they are evaluated.
    const std::array<Stick*, 2> sticks{&linkerStick, &rechterStick};
};
