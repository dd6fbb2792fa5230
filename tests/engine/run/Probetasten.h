// SPDX-License-Identifier: GPL-3.0-or-later
// The button engine on fakes, without a window around it.
#pragma once

#include "engine/buttons/GehalteneTasten.h"
#include "engine/buttons/TastenAktion.h"
#include "engine/buttons/Wiederholung.h"
#include "engine/output/XPTaste.h"
#include "engine/run/GegebenerStand.h"
#include "platform/probe/ProbeEingabe.h"
#include "platform/probe/ProbeUhr.h"
#include "tests/hilfen/ProbeAnzeige.h"

struct Probetasten {
    Tastenstand stand;
    GegebenerStand gegeben;
    Wiederholstand wiederholstand;
    GehalteneTasten gehaltene;
    ProbeUhr uhr;
    ProbeEingabe eingabe;
    ProbeAnzeige anzeige;
    XPTaste xpTaste{eingabe, [this] { wiederholung.WiederholungPruefen(); }};
    Wiederholung wiederholung{wiederholstand, gehaltene, xpTaste, uhr};
    TastenAktion aktion{stand, gegeben, gehaltene, wiederholung, xpTaste, uhr, anzeige};

    void warten(int ms) { uhr.vorUm(std::chrono::milliseconds{ms}); }
};
