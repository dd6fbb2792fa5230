// SPDX-License-Identifier: GPL-3.0-or-later
// A run on the fakes, for measuring: virtual clock, scripted pad, the database given by statements.
#pragma once

#include "engine/run/LaufFenster.h"
#include "platform/probe/ProbeEingabe.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeUhr.h"
#include "tests/hilfen/StummeAnzeige.h"
#include "tests/hilfen/Testdatenbank.h"

#include <chrono>
#include <string>

using Messuhr = std::chrono::steady_clock;
inline constexpr std::chrono::milliseconds TICK{5};

/// The `Schema` "S": its button Kreuz holds the key A, Select and Start are the shift keys.
struct Messlauf {
    explicit Messlauf(const std::string& sql = "")
        : eingabe([this](const INPUT&) { gesendet = Messuhr::now(); })
        , fenster({zustand, pad, eingabe, uhr, anzeige}) {
        datenbank.sql("INSERT INTO tblTastatur (Schemaname, btn3, btn9, btn10)"
                      " VALUES ('S', '1,65,0-0-0', '3,0,0-0-0', '4,0,0-0-0');"
                      "INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('S');" +
                      sql);
        zustand.global.DatenbankPfad = datenbank.pfad();
        zustand.global.SchemaName = zustand.global.Schemaauswahl = "S";
        fenster.laden();
    }

    Testdatenbank datenbank;
    ProbeUhr uhr;
    ProbeJoystick pad;
    Laufzustand zustand{pad, (datenbank.ordner() / "Gamepad.xml").string()};
    Messuhr::time_point gesendet;
    ProbeEingabe eingabe;
    StummeAnzeige anzeige;
    LaufFenster fenster;
};
