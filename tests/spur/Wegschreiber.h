// SPDX-License-Identifier: GPL-3.0-or-later
// Takes down where a stick is while a trace is played.
#pragma once

#include "engine/run/Streuzaehler.h"
#include "formats/Stickweg.h"

#include <algorithm>

class Wegschreiber final : public Streuhoerer {
public:
    explicit Wegschreiber(Stickseite seite) : seite_(seite) {}

    void takte(Stickseite seite, int ebene, const Stickposition& ort, std::uint64_t anzahl,
               bool folgt) override {
        if (seite != seite_)
            return;
        auto& weg = weg_[static_cast<std::size_t>(ebene)];
        const Wegstelle stelle{begrenzt(ort.x), begrenzt(ort.y), static_cast<std::uint32_t>(anzahl)};
        if (!folgt && !weg.empty())
            weg.push_back({});
        if (folgt && !weg.empty() && weg.back().x == stelle.x && weg.back().y == stelle.y)
            weg.back().takte += stelle.takte;
        else
            weg.push_back(stelle);
    }
    const Stickweg& weg() const { return weg_; }

private:
    static std::uint16_t begrenzt(std::int32_t wert) {
        return static_cast<std::uint16_t>(std::clamp(wert, 0, 65535));
    }

    const Stickseite seite_;
    Stickweg weg_;
};
