// SPDX-License-Identifier: GPL-3.0-or-later
// State that is given but by which nothing in the program decides. It tells what the engine did last, and
// tests look at it. What of this kind dies with a run stands at the end of LaufFenster, what belongs to the
// forms at the end of GobalVariable.
#pragma once

#include "base/Stickseite.h"
#include "engine/run/TimerUeberwachung.h"
#include "engine/stick/Stickeigenart.h"
#include "engine/stick/Stickort.h"

#include <array>
#include <cstdint>

/// What outlasts a run.
struct GegebenerStand {
    TimerUeberwachung timer;      ///< `TimerMaske`
    std::uint32_t AktTimerId = 0; ///< timer id of the slot pressed last
    std::int16_t AktSlot = 0;     ///< slot pressed last

    struct Stick {
        Stickposition position; ///< last one handed through the poll cycle
        /// Last offset of the stick in the field of an `Ego Shooter`, by axis.
        std::array<std::int32_t, AKTIONSSEITEN> versatz{};
    };
    std::array<Stick, 2> sticks; ///< by Stickseite

    Stick& stick(Stickseite seite) { return sticks[static_cast<std::size_t>(seite)]; }
};
