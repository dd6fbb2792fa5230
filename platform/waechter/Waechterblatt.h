// SPDX-License-Identifier: GPL-3.0-or-later
// What the program and its watcher share: a sheet that lies in the memory of both and says what the program
// holds down in the X server, and a line between them, by which each sees the other die.
//
// A server throws away what a client has sent and it has not read yet when that client dies. So a place stays
// on the sheet for a while after its release has gone out.
//
// One writes, the program; it needs no lock, and what it has written stands there whatever kills it next.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <ctime>

struct Waechterblatt {
    /// Of this layout: another layout has another one.
    static constexpr std::uint64_t KENNUNG = 0x31'6B'70'67'68'63'61'77; // "wachgpk1"

    static constexpr std::size_t TASTEN = 256; ///< key codes of X
    static constexpr std::size_t KNOEPFE = 64; ///< buttons of X, behind the keys
    static constexpr std::size_t STELLEN = TASTEN + KNOEPFE;
    static constexpr std::size_t JE_WORT = 64;

    std::uint64_t kennung = KENNUNG;
    /// A window of the connection that presses: it goes when the server has done all that came by that one.
    /// 0 as long as nothing presses.
    std::atomic<std::uint32_t> fenster = 0;
    using Stellen = std::array<std::atomic<std::uint64_t>, STELLEN / JE_WORT>;
    /// A bit a place: set before the press can go out, cleared after the release has gone out.
    Stellen unten{};
    /// What was released of late, and when the last of it was.
    Stellen geloest{};
    std::atomic<std::int64_t> zuletzt = 0;

    /// So long a server may be behind, in milliseconds.
    static constexpr std::int64_t RUECKSTAND = 2000;
    /// Milliseconds of a clock that all processes have.
    static std::int64_t jetzt() {
        timespec zeit{};
        clock_gettime(CLOCK_MONOTONIC_COARSE, &zeit);
        return std::int64_t{zeit.tv_sec} * 1000 + zeit.tv_nsec / 1'000'000;
    }
};
static_assert(std::atomic<std::uint64_t>::is_always_lock_free);

/// The descriptors under which the watcher finds both.
inline constexpr int BLATTKANAL = 3;
inline constexpr int LEITUNGSKANAL = 4;

/// What goes over the line; its end is the death of the other one.
namespace leitungswort {
inline constexpr char BEREIT = 'b';   ///< the watcher has found the server
inline constexpr char STERBEND = 's'; ///< the program crashes, and may take a while for it
} // namespace leitungswort
