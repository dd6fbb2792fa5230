// SPDX-License-Identifier: GPL-3.0-or-later
// The engine's window timers: their ids, and the end of all of them.
#pragma once

#include <array>
#include <cstdint>

class Zeitgeber;

/// Timer id of the pulse of a slot: "10" and the slot's digits read as a number, so 100 to 109 for slots 0 to
/// 9 and 1010 to 1015 for slots 10 to 15.
constexpr std::uint32_t slotTimerId(int slot) {
    return static_cast<std::uint32_t>(slot < 10 ? 100 + slot : 1000 + slot);
}

namespace timerid {

inline constexpr std::uint32_t LINKS_X_TASTE = 0;
inline constexpr std::uint32_t LINKS_Y_TASTE = 1;
inline constexpr std::uint32_t LINKS_X_MAUS = 2;
inline constexpr std::uint32_t LINKS_Y_MAUS = 3;
/// The same id as LINKS_Y_MAUS: each of the two replaces the other.
inline constexpr std::uint32_t RECHTS_X_TASTE = 3;
inline constexpr std::uint32_t RECHTS_Y_TASTE = 4;
inline constexpr std::uint32_t RECHTS_X_MAUS = 5;
inline constexpr std::uint32_t RECHTS_Y_MAUS = 6;
inline constexpr std::uint32_t UNBENUTZT = 15;
inline constexpr std::uint32_t SCHUBREGLER = 1111;
inline constexpr std::uint32_t RECHTS_ABSOLUT = 1313;
inline constexpr std::uint32_t LINKS_ABSOLUT = 1414;
inline constexpr std::uint32_t ENTWACKELN = 3939;

} // namespace timerid

/// Keeps the mask of the stick timers, and which use has each of them. It outlasts a run.
class TimerUeberwachung {
public:
    /// Sets bit n, 0 to 31, of `TimerMaske`.
    void TimerSetzen(int n) { TimerMaske_ |= 1U << n; }
    /// Clears bit n.
    void TimerLoeschen(int n) { TimerMaske_ &= ~(1U << n); }
    std::uint32_t TimerMaske() const { return TimerMaske_; }

    /// A stick timer, 0 to RECHTS_Y_MAUS, was set for use n: one of them has two uses.
    void vergeben(std::uint32_t id, int n) { verwendung_[id] = n; }
    /// The use for which it was set last.
    int verwendung(std::uint32_t id) const { return verwendung_[id]; }

private:
    std::uint32_t TimerMaske_ = 0;
    std::array<int, timerid::RECHTS_Y_MAUS + 1> verwendung_{};
};

/// Ids in the order in which AlleTimerBeenden goes through them. The last one is listed and skipped: whoever
/// ends the run has stopped the smoothing before.
inline constexpr std::array<std::uint32_t, 27> BEENDETE_TIMER{
    timerid::LINKS_X_TASTE, timerid::LINKS_Y_TASTE,  timerid::LINKS_X_MAUS,   timerid::UNBENUTZT,
    timerid::LINKS_ABSOLUT, timerid::LINKS_Y_MAUS,   timerid::RECHTS_Y_TASTE, timerid::RECHTS_X_MAUS,
    timerid::RECHTS_Y_MAUS, timerid::RECHTS_ABSOLUT, slotTimerId(0),          slotTimerId(1),
    slotTimerId(2),         slotTimerId(3),          slotTimerId(4),          slotTimerId(5),
    slotTimerId(6),         slotTimerId(7),          slotTimerId(8),          slotTimerId(9),
    slotTimerId(10),        slotTimerId(11),         slotTimerId(12),         slotTimerId(13),
    slotTimerId(14),        slotTimerId(15),         timerid::ENTWACKELN};

/// Kills the listed timers but the last. Masks and held keys stay as they are.
void AlleTimerBeenden(Zeitgeber& zeitgeber);
