// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of a run on fakes, for fuzzers that go past its window: whatever a text holds, an orderly error
// is all that may come of it.
#pragma once

#include "base/LaufzeitFehler.h"
#include "engine/buttons/GehalteneTasten.h"
#include "engine/buttons/TastenAktion.h"
#include "engine/buttons/Wiederholung.h"
#include "engine/input/Achsen.h"
#include "engine/input/Entwackeln.h"
#include "engine/output/XPTaste.h"
#include "engine/run/GegebenerStand.h"
#include "engine/run/GesicherterZeitgeber.h"
#include "engine/run/Laufdienste.h"
#include "platform/probe/ProbeEingabe.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeUhr.h"
#include "store/files/Achsendatei.h"
#include "tests/hilfen/StummeAnzeige.h"
#include "tests/hilfen/Testdatenbank.h"

#include <fstream>
#include <string>

struct Fuzzlauf {
    explicit Fuzzlauf(const std::string& gamepadXml = "") : achsendatei(gamepadXml, schema) {}

    /// Does what may end in an error, and lets time pass.
    template <class Arbeit> void versuchen(Arbeit&& arbeit) {
        try {
            arbeit();
        } catch (const LaufzeitFehler&) {
        }
        vergehen();
    }
    void vergehen() {
        uhr.vorUm(std::chrono::milliseconds{50});
        eingabe.abholen();
    }

    const std::string schema = "S";
    ProbeUhr uhr;
    ProbeJoystick pad;
    ProbeEingabe eingabe;
    StummeAnzeige anzeige;
    Achsendatei achsendatei;
    Achsen achsen{pad, achsendatei};
    Reglerwerte regler;
    Tastenstand tasten;
    Wiederholstand wiederholstand;
    GehalteneTasten gehaltene;
    GegebenerStand gegeben;
    Entwackelstand entwackelstand;
    GesicherterZeitgeber zeitgeber{uhr, [](const LaufzeitFehler&) {}};
    XPTaste xpTaste{eingabe, [this] { wiederholung.WiederholungPruefen(); }};
    Wiederholung wiederholung{wiederholstand, gehaltene, xpTaste, zeitgeber};
    TastenAktion aktion{tasten, gegeben, gehaltene, wiederholung, xpTaste, zeitgeber, anzeige};
    Entwackeln entwackeln{entwackelstand, achsen, regler, zeitgeber, anzeige};
    Laufdienste dienste{zeitgeber, eingabe, xpTaste, aktion, gehaltene, gegeben, entwackeln, anzeige};
};
