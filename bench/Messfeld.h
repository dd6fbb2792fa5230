// SPDX-License-Identifier: GPL-3.0-or-later
// What the latency probe shares with the processes that it measures: the state of a pad, which it moves and
// they have as a virtual one of SDL's, and what they tell of themselves. It lies in memory without a name.
#pragma once

#include <SDL.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>

struct Messfeld {
    std::array<std::atomic<Sint16>, SDL_CONTROLLER_AXIS_MAX> achsen{};
    std::array<std::atomic<Uint8>, SDL_CONTROLLER_BUTTON_MAX> tasten{};

    std::atomic<std::int64_t> abfragen = 0;    ///< how often the pad was read
    std::atomic<std::int64_t> gesendet = 0;    ///< when a key was sent last, ns of the steady clock
    std::atomic<std::int64_t> glaettungen = 0; ///< calls of the smoothing
    std::atomic<std::int64_t> takte = 0;       ///< calls of the tick

    void sendungMerken() { gesendet = std::chrono::steady_clock::now().time_since_epoch().count(); }
};
static_assert(std::atomic<std::int64_t>::is_always_lock_free, "processes share it");

/// A number of open memory for a new one, which children inherit. Throws std::system_error.
int messfeldAnlegen();
/// The one in this memory, for as long as the process lives. Throws std::system_error.
Messfeld& messfeld(int nummer);
