// SPDX-License-Identifier: GPL-3.0-or-later
// A screen that shows what the test says, and delivers its picture when the test says.
#pragma once

#include "platform/Schirmaufnahme.h"

#include <utility>
#include <vector>

class ProbeSchirm final : public Schirmaufnahme {
public:
    bool da = true;              ///< whether pictures can be taken
    std::uint32_t farbe = 0;     ///< 0xRRGGBB, of the whole screen
    bool spaeter = false;        ///< pictures come at `liefern` only, though taken at once
    int aufnahmen = 0;           ///< how many were asked for
    int breite = 64, hoehe = 36; ///< of the screen

    void aufnehmen(Empfaenger empfaenger) override {
        ++aufnahmen;
        if (spaeter)
            ausstehend_.emplace_back(std::move(empfaenger), bild());
        else
            empfaenger(bild());
    }
    void liefern() {
        for (const auto& [empfaenger, eines] : std::exchange(ausstehend_, {}))
            empfaenger(eines);
    }

private:
    Schirmbild bild() const {
        if (!da)
            return {};
        auto punkte = std::make_shared<std::vector<std::uint32_t>>(
            static_cast<std::size_t>(breite) * static_cast<std::size_t>(hoehe), 0xff000000U | farbe);
        const auto* anfang = reinterpret_cast<const std::uint8_t*>(punkte->data());
        return {breite, hoehe, std::ptrdiff_t{4} * breite, {std::move(punkte), anfang}};
    }

    std::vector<std::pair<Empfaenger, Schirmbild>> ausstehend_;
};
