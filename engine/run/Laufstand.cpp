// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/run/Laufstand.h"

#include "engine/output/Druckbuch.h"

#include <algorithm>

namespace {

template <class Art, class Passt> bool hatWirkung(const std::vector<Haltung>& haltungen, const Passt& passt) {
    return std::ranges::any_of(haltungen, [&](const Haltung& eine) {
        const auto* wirkung = std::get_if<Art>(&eine.wirkung);
        return wirkung && passt(*wirkung);
    });
}

} // namespace

void ohneHalterAnhaengen(const Druckbuch& druckbuch, std::vector<Haltung>& haltungen) {
    for (const auto taste : druckbuch.gedrueckteTasten())
        if (!hatWirkung<Tastenwirkung>(haltungen, [&](const auto& eine) { return eine.taste == taste; }))
            haltungen.push_back({OhneHalter{}, Tastenwirkung{taste, false, druckbuch.druck(taste)}});
    for (int knopf = 0; knopf < Druckbuch::KNOEPFE; ++knopf)
        if (druckbuch.mausdruck(knopf) != 0 &&
            !hatWirkung<Mausknopfwirkung>(haltungen, [&](const auto& einer) { return einer.knopf == knopf; }))
            haltungen.push_back({OhneHalter{}, Mausknopfwirkung{knopf, druckbuch.mausdruck(knopf)}});
}
