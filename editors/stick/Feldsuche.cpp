// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Feldsuche.h"

namespace {

/// A band of one axis: where it begins, how far it reaches, and the inner line that names it.
template <class Zahl> struct Band {
    Zahl anfang = 0;
    Zahl laenge = 0;
    std::size_t richtung = 0;
    std::int32_t anker = 0;
};

// The walks end at the first line beyond the point or at the first empty slot; where the slots run out, the
// last one counts as the outermost line.

template <class Zahl> Band<Zahl> fallendesBand(const Linienebene& J, std::size_t d, Zahl ort) {
    std::size_t k = 2;
    while (k < J.size() && static_cast<Zahl>(J[k][d]) > ort)
        ++k;
    const Zahl anfang = k < J.size() ? static_cast<Zahl>(J[k][d]) : 0;
    const auto innen = J[k - 1][d];
    return {anfang, static_cast<Zahl>(innen) - anfang, d, innen};
}

template <class Zahl> Band<Zahl> steigendesBand(const Linienebene& J, std::size_t d, Zahl ort) {
    std::size_t k = 2;
    while (k < J.size() && J[k][d] != 0 && static_cast<Zahl>(J[k][d]) < ort)
        ++k;
    const bool begrenzt = k < J.size() && J[k][d] != 0;
    const Zahl ende = begrenzt ? static_cast<Zahl>(J[k][d]) : FELDENDE;
    const auto innen = J[k - 1][d];
    return {static_cast<Zahl>(innen), ende - static_cast<Zahl>(innen), d, innen};
}

/// The band at `ort` on the axis whose lines are `fallend` before the centre and `steigend` behind it.
template <class Zahl>
Band<Zahl> bandSuchen(const Linienebene& J, std::size_t fallend, std::size_t steigend, Zahl ort) {
    const auto anfang = static_cast<Zahl>(J[1][fallend]);
    const auto ende = static_cast<Zahl>(J[1][steigend]);
    if (ort < anfang)
        return fallendesBand(J, fallend, ort);
    if (ort >= ende)
        return steigendesBand(J, steigend, ort);
    return {anfang, ende - anfang, fallend, 0};
}

} // namespace

Stickfeld BereichFestlegen(const Linienebene& linien, std::int32_t x, std::int32_t y) {
    const auto quer = bandSuchen<std::int64_t>(linien, richtung::LINKS, richtung::RECHTS, x);
    const auto hoch = bandSuchen<std::int64_t>(linien, richtung::OBEN, richtung::UNTEN, y);
    Stickfeld feld{{quer.anfang, quer.laenge, hoch.anfang, hoch.laenge}};
    feld.anker[quer.richtung] = quer.anker;
    feld.anker[hoch.richtung] = hoch.anker;
    return feld;
}

Punktrechteck BereichFestlegen2(const Linienebene& linien, double x, double y) {
    const auto quer = bandSuchen<double>(linien, richtung::LINKS, richtung::RECHTS, x);
    const auto hoch = bandSuchen<double>(linien, richtung::OBEN, richtung::UNTEN, y);
    return {quer.anfang, quer.laenge, hoch.anfang, hoch.laenge};
}
