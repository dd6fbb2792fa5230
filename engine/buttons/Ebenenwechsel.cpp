// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/buttons/Ebenenwechsel.h"

#include "engine/run/Fehlerort.h"

namespace {

using Zustand = Ebenenwechsel::Zustand;

constexpr int STANDART = 0;
constexpr int UMSCHALT_1 = 1;
constexpr int UMSCHALT_2 = 2;

constexpr std::int16_t FESTSTELLEN = 1; // mode of a shift key; any other is `Halten ---> Loslassen`

} // namespace

void Ebenenwechsel::TasteBelegen(std::span<const Belegung, SLOTS> belegungen) {
    for (int slot = 0; slot < TASTEN; ++slot) {
        const auto& taste = belegungen[static_cast<std::size_t>(slot)];
        if (const auto ebene = taste.umschalttaste())
            umschalttasten_[static_cast<std::size_t>(*ebene)] = {
                1U << slot, anOrt([&] { return slotname(slot, STANDART) + ": " + angefuehrt(taste.text()); },
                                  [&] { return taste.umschaltmodus() == FESTSTELLEN; })};
    }
}

std::optional<Ebenenwechsel::Schritt> Ebenenwechsel::nichtsGedrueckt() {
    switch (zustand_) {
    case Zustand::E1_GEHALTEN:
    case Zustand::E2_GEHALTEN:
        return Schritt{Zustand::GRUND, STANDART, true, 0};
    case Zustand::E1_FEST:
        zustand_ = Zustand::E1_GELOEST;
        break;
    case Zustand::E2_FEST:
        zustand_ = Zustand::E2_GELOEST;
        break;
    case Zustand::GRUND:
    case Zustand::E1_GELOEST:
    case Zustand::E2_GELOEST:
        break;
    }
    return std::nullopt;
}

std::optional<Ebenenwechsel::Schritt> Ebenenwechsel::gedrueckt(std::uint32_t wort) {
    if (istAllein(UMSCHALT_1, wort))
        return umschalttaste1();
    if (istAllein(UMSCHALT_2, wort))
        return umschalttaste2();
    return std::nullopt;
}

bool Ebenenwechsel::bleibt(std::uint32_t wort) const {
    auto danach = *this;
    const auto schritt = wort == 0 ? danach.nichtsGedrueckt() : danach.gedrueckt(wort);
    return !schritt && danach.zustand_ == zustand_;
}

int Ebenenwechsel::Ebene() const {
    switch (zustand_) {
    case Zustand::E1_GEHALTEN:
    case Zustand::E1_FEST:
    case Zustand::E1_GELOEST:
        return UMSCHALT_1;
    case Zustand::E2_GEHALTEN:
    case Zustand::E2_FEST:
    case Zustand::E2_GELOEST:
        return UMSCHALT_2;
    case Zustand::GRUND:
        break;
    }
    return STANDART;
}

bool Ebenenwechsel::istAllein(int ebene, std::uint32_t wort) const {
    const auto maske = umschalttasten_[static_cast<std::size_t>(ebene)].maske;
    return maske != 0 && wort == maske;
}

std::optional<Ebenenwechsel::Schritt> Ebenenwechsel::umschalttaste1() {
    if (Ebene() == UMSCHALT_1)
        zustand_ = Zustand::E1_GEHALTEN; // wipes the latch, in the second tick of the press that set it, too
    if (zustand_ != Zustand::GRUND)
        return std::nullopt;
    const auto& taste = umschalttasten_[UMSCHALT_1];
    return Schritt{taste.feststellen ? Zustand::E1_FEST : Zustand::E1_GEHALTEN, UMSCHALT_1, true,
                   taste.maske};
}

std::optional<Ebenenwechsel::Schritt> Ebenenwechsel::umschalttaste2() {
    if (zustand_ == Zustand::E2_GELOEST)
        zustand_ = Zustand::E2_GEHALTEN;
    if (zustand_ != Zustand::GRUND)
        return std::nullopt;
    const auto& taste = umschalttasten_[UMSCHALT_2];
    return Schritt{taste.feststellen ? Zustand::E2_FEST : Zustand::E2_GEHALTEN, UMSCHALT_2, false,
                   taste.maske};
}
