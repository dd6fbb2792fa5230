// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Wahleingabe.h"

#include <utility>

Wahleingabe::Wahleingabe(std::vector<EingabeKandidat> kandidaten, Empfaenger beiWahl)
    : beiWahl_(std::move(beiWahl)), kandidaten_(std::move(kandidaten)), wahl_(eingabeWaehlen(kandidaten_)) {
    sagen();
}

std::uint32_t Wahleingabe::SendInput(std::span<const INPUT> ereignisse) {
    return wahl_.eingabe->SendInput(ereignisse);
}

std::uint32_t Wahleingabe::MapVirtualKeyA(std::uint32_t code, std::uint32_t art) {
    return wahl_.eingabe->MapVirtualKeyA(code, art);
}

// As many reasons as there are, so many candidates stand before the one that serves.
Eingabelage Wahleingabe::pruefen() {
    if (wahl_.reichweite != Reichweite::Alle) {
        auto bessere = eingabeWaehlen(std::span(kandidaten_).first(wahl_.gruende.size()));
        const bool andere = bessere.gruende != wahl_.gruende;
        if (bessere.name.empty()) // what serves goes on, but the reasons may be others now
            wahl_.gruende = std::move(bessere.gruende);
        else
            wahl_ = std::move(bessere);
        if (andere)
            sagen();
    }
    return {wahl_.reichweite, wahl_.gruende};
}

void Wahleingabe::sagen() const {
    if (beiWahl_)
        beiWahl_(wahl_);
}
