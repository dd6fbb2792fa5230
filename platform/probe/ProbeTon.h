// SPDX-License-Identifier: GPL-3.0-or-later
// A tone that is written down.
#pragma once

#include "platform/Tongeber.h"

#include <vector>

class ProbeTon final : public Tongeber {
public:
    struct Ton {
        std::uint32_t frequenz;
        std::uint32_t dauer;
        bool operator==(const Ton&) const = default;
    };

    void Beep(std::uint32_t frequenz, std::uint32_t dauer) override { toene.push_back({frequenz, dauer}); }

    std::vector<Ton> toene;
};
