// SPDX-License-Identifier: GPL-3.0-or-later
// Plays the inputs of a trace by a run that is recorded, on a clock that now and then comes late.
#pragma once

#include "platform/mitschnitt/Mitschnittband.h"
#include "tests/spur/Szenario.h"

#include <cstdint>
#include <filesystem>

struct Aufnahmeart {
    std::uint32_t saat = 0; ///< of the stalls
    int stockungen = 0; ///< of a thousand milliseconds how many are stood through; of as many settings of a
                        ///< timer one counts later
    Mitschnittband::Grenzen grenzen;
};

struct Aufnahmeergebnis {
    std::string text;           ///< the record
    std::size_t ereignisse = 0; ///< that went out, all in all
};

Aufnahmeergebnis aufnehmen(const Szenario& szenario, const std::filesystem::path& leereDatenbank,
                           const Aufnahmeart& art);
