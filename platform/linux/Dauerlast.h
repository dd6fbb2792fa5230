// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a thread leaves hardly anything of its processor to others, also where it waits for an instant now
// and then: four parts of five of it, for so long that it is no single piece of work. It is asked after every
// ABSCHNITT of processor time that the thread has taken:
//
//   at rest or in play     |-- 30 ms --|               |-- 30 ms --| ...     seconds apart
//   a loop without end     |-- 30 --|-- 30 --|-- 30 --|-- 30 --|             120 ms: yes
//   short waits between    |--- 36 ---|--- 36 ---|--- 36 ---|--- 36 ---|     144 ms: yes
//   a fifth and more left  |---- 38 ----|---- 38 ----|---- 38 ----| ...      152 ms: no
//
// It may be asked in a signal handler.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>

class Dauerlast {
public:
    static constexpr std::chrono::milliseconds ABSCHNITT{30}; ///< processor time
    static constexpr std::size_t FOLGE = 4;
    /// In which so many of them are too many.
    static constexpr std::chrono::milliseconds SPANNE = FOLGE * ABSCHNITT * 5 / 4;

    /// One more ABSCHNITT is over, at `jetzt` by a clock that only goes on. Returns whether the last FOLGE of
    /// them are too many.
    bool abschnitt(std::chrono::nanoseconds jetzt) {
        auto& stelle = enden_[anzahl_ % FOLGE]; // the end of the one so many before
        const bool genug = anzahl_++ >= FOLGE;
        const bool zuviel = genug && jetzt - stelle <= SPANNE;
        stelle = jetzt;
        return zuviel;
    }

private:
    std::array<std::chrono::nanoseconds, FOLGE> enden_{};
    std::size_t anzahl_ = 0;
};
