// SPDX-License-Identifier: GPL-3.0-or-later
// A run of the `Schema` "S" on fakes: fresh database, virtual clock, scripted pad. Without the sticks, until
// a test takes them in.
#pragma once

#include "engine/run/LaufFenster.h"
#include "platform/probe/ProbeEingabe.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeUhr.h"
#include "tests/hilfen/ProbeAnzeige.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/Testdatenbank.h"

#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

class Probelauf {
public:
    /// Lays the rows of the `Schema`, with the given columns of tblTastatur.
    Probelauf(std::initializer_list<std::pair<std::string, std::string>> tasten = {}) {
        zustand.sticks.clear();
        Schemabau schema(datenbank);
        for (const auto& [spalte, wert] : tasten)
            schema.spalte(spalte, wert);
        schema.anlegen();
        zustand.global.DatenbankPfad = datenbank.pfad();
        zustand.global.SchemaName = zustand.global.Schemaauswahl = "S";
    }

    void mitSticks() { zustand.sticks = {&zustand.linkerStick, &zustand.rechterStick}; }
    LaufFenster& fensterOeffnen() {
        fenster = std::make_unique<LaufFenster>(Laufumgebung{zustand, pad, eingabe, uhr, anzeige});
        return *fenster;
    }
    LaufFenster& starten() {
        fensterOeffnen().laden();
        return *fenster;
    }
    void warten(int ms) { uhr.vorUm(std::chrono::milliseconds{ms}); }
    void takt() { warten(5); }
    /// Sets the pad's buttons and lets one tick see them.
    void takt(std::uint32_t tasten) {
        pad.zustand.dwButtons = tasten;
        takt();
    }

    Testdatenbank datenbank;
    ProbeUhr uhr;
    ProbeJoystick pad;
    Laufzustand zustand{pad, (datenbank.ordner() / "Gamepad.xml").string()};
    ProbeEingabe eingabe;
    ProbeAnzeige anzeige;
    std::unique_ptr<LaufFenster> fenster;
};
