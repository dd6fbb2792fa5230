// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Feldgitter.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<const char*, RICHTUNGEN> RICHTUNGSWORTE{"links", "rechts", "oben", "unten"};

} // namespace

Feldgitter::Feldgitter(const Linienebene& linien)
    : linien_(linien)
    , x_(achse(richtung::LINKS, richtung::RECHTS))
    , y_(achse(richtung::OBEN, richtung::UNTEN)) {}

// --- bands ---

Feldgitter::Achse Feldgitter::achse(std::size_t fallend, std::size_t steigend) const {
    return {fallend, steigend, linienzahl(fallend), linienzahl(steigend)};
}

int Feldgitter::linienzahl(std::size_t richtung) const {
    int slot = 0;
    while (slot < LETZTE_LINIENZEILE && linie(slot + 1, richtung) != 0)
        ++slot;
    return slot;
}

std::int32_t Feldgitter::linie(int slot, std::size_t richtung) const {
    return linien_[static_cast<std::size_t>(slot)][richtung];
}

// Behind the last line of a direction stands a 0, which is where the plane begins.
Feldgitter::Band Feldgitter::band(const Achse& achse, int stelle) const {
    if (stelle == achse.vorn)
        return {linie(1, achse.fallend), linie(1, achse.steigend), achse.fallend, 0};
    if (const int slot = achse.vorn - stelle; slot > 0)
        return {linie(slot + 1, achse.fallend), linie(slot, achse.fallend), achse.fallend,
                linie(slot, achse.fallend)};
    const int slot = stelle - achse.vorn;
    return {linie(slot, achse.steigend), slot == achse.hinten ? FELDENDE : linie(slot + 1, achse.steigend),
            achse.steigend, linie(slot, achse.steigend)};
}

std::string Feldgitter::bandname(const Achse& achse, int stelle) {
    const int slot = std::abs(stelle - achse.vorn);
    if (slot == 0)
        return "";
    const auto* wort = RICHTUNGSWORTE[stelle < achse.vorn ? achse.fallend : achse.steigend];
    std::string name = std::string(" ") + wort;
    if (slot > 1)
        name.append(" ").append(std::to_string(slot));
    return name;
}

int Feldgitter::stelle(const Achse& achse, const Feldanker& anker) const {
    for (int slot = 1; slot <= achse.vorn; ++slot)
        if (anker[achse.fallend] == linie(slot, achse.fallend))
            return achse.vorn - slot;
    for (int slot = 1; slot <= achse.hinten; ++slot)
        if (anker[achse.steigend] == linie(slot, achse.steigend))
            return achse.vorn + slot;
    return achse.vorn;
}

std::optional<Linienplatz> Feldgitter::linieBei(const Achse& achse, int stelle, int schritt) {
    const bool mitte = stelle == achse.vorn;
    const bool vorn = mitte ? schritt < 0 : stelle < achse.vorn;
    const int slot = mitte ? 1 : std::abs(stelle - achse.vorn);
    if (slot > (vorn ? achse.vorn : achse.hinten))
        return std::nullopt;
    return Linienplatz{vorn ? achse.fallend : achse.steigend, slot};
}

// --- fields ---

Gitterplatz Feldgitter::platz(const Feldanker& anker) const {
    return {stelle(x_, anker), stelle(y_, anker)};
}

Gitterplatz Feldgitter::begrenzt(const Gitterplatz& platz) const {
    return {std::clamp(platz.spalte, 0, spalten() - 1), std::clamp(platz.zeile, 0, zeilen() - 1)};
}

Stickfeld Feldgitter::feld(const Gitterplatz& platz) const {
    const auto quer = band(x_, platz.spalte);
    const auto hoch = band(y_, platz.zeile);
    Stickfeld feld{{quer.anfang, quer.ende - quer.anfang, hoch.anfang, hoch.ende - hoch.anfang}};
    feld.anker[quer.richtung] = quer.anker;
    feld.anker[hoch.richtung] = hoch.anker;
    return feld;
}

std::string Feldgitter::name(const Gitterplatz& platz) const {
    const auto worte = bandname(x_, platz.spalte) + bandname(y_, platz.zeile);
    return worte.empty() ? "Mittelfeld" : "Feld" + worte;
}

std::optional<Linienplatz> Feldgitter::linieBeiX(const Gitterplatz& platz, int schritt) const {
    return linieBei(x_, platz.spalte, schritt);
}

std::optional<Linienplatz> Feldgitter::linieBeiY(const Gitterplatz& platz, int schritt) const {
    return linieBei(y_, platz.zeile, schritt);
}
