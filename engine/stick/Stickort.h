// SPDX-License-Identifier: GPL-3.0-or-later
// Where a stick stands, and the field that holds it.
#pragma once

#include <cstdint>

/// Bounds of the field in which a stick stands, all inclusive.
struct FeldGrenzen {
    std::int32_t xMax = 0;
    std::int32_t xMin = 0;
    std::int32_t yMax = 0;
    std::int32_t yMin = 0;

    bool enthaeltX(std::int32_t x) const { return xMin <= x && x <= xMax; }
    bool enthaeltY(std::int32_t y) const { return yMin <= y && y <= yMax; }
    bool operator==(const FeldGrenzen&) const = default;
};

/// Position in the stick plane, 0 to 65535 each; small x is left, small y is up.
struct Stickposition {
    std::int32_t x = 0;
    std::int32_t y = 0;
    bool operator==(const Stickposition&) const = default;
};
