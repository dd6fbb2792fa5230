// SPDX-License-Identifier: GPL-3.0-or-later
// The number of a key, from the texts of the database to the record that is sent.
#pragma once

#include "base/LaufzeitFehler.h"

#include <cstdint>
#include <limits>
#include <string>

/// Virtual key code as Windows numbers them (winuser.h, VK_*), 1 to 254.
using VirtuelleTaste = std::uint16_t;

/// The number as a key code; throws LaufzeitFehler 6 where it does not fit 16 bits or is negative.
inline VirtuelleTaste tastencode(std::int32_t zahl) {
    if (zahl < 0 || zahl > std::numeric_limits<std::int16_t>::max())
        throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: Tastencode " + std::to_string(zahl));
    return static_cast<VirtuelleTaste>(zahl);
}
