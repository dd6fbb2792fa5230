// SPDX-License-Identifier: GPL-3.0-or-later
// The walk over what outlasts a run, as far as anything that comes out hangs on it. Not in it are a slider's
// key that is down for a time, which hangs on a timer, and what only tells.
#pragma once

#include "engine/run/Laufzustand.h"

/// Whether the walk has everything: nothing that outlasts a run hangs on a timer.
inline bool istBegehbar(const Laufzustand& zustand) {
    return zustand.schub.Druckenden.empty();
}

template <class Gang> void prozesszustandBegehen(Laufzustand& zustand, Gang& gang) {
    zustand.gehaltene.begehen(gang);
    gang("wiederholung.plaetze", zustand.wiederholung.WiederholSlots);
    gang("wiederholung.text", zustand.wiederholung.GehaltenTextAlt);
    auto& tasten = zustand.tasten;
    gang("tasten.felder", tasten.Felder);
    gang("tasten.zaehler", tasten.Zaehler);
    gang("tasten.druecken", tasten.DrueckMaske);
    gang("tasten.pausen", tasten.PausenMaske);
    zustand.achsen.begehen(gang);
    for (std::size_t i = 0; i < zustand.entwackeln.filter.size(); ++i)
        zustand.entwackeln.filter[i].begehen(gang, "filter" + std::to_string(i));
    auto& schub = zustand.schub;
    std::vector<Schubangaben> angaben;
    if (schub.SchubParameter)
        angaben.push_back(*schub.SchubParameter);
    gang("schub.angaben", angaben);
    if (!angaben.empty())
        schub.SchubParameter = angaben.front();
    gang("schub.feld", schub.SchubParameterFeld);
    gang("schub.pause", schub.SchubPause);
    zustand.linkerStick.begehen(gang, "links");
    zustand.rechterStick.begehen(gang, "rechts");
}
