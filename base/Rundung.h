// SPDX-License-Identifier: GPL-3.0-or-later
// The one way in which the engine rounds.
#pragma once

#include "base/LaufzeitFehler.h"

#include <cmath>
#include <cstdint>
#include <limits>

/// The nearest whole number, ties to the even one. Throws LaufzeitFehler 6 for what does not fit 32 bits.
inline std::int32_t gerundet(double zahl) {
    const double ganz = std::nearbyint(zahl); // the default rounding mode is to nearest, ties to even
    if (!(std::abs(ganz) <= std::numeric_limits<std::int32_t>::max()))
        throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf");
    return static_cast<std::int32_t>(ganz);
}
