// SPDX-License-Identifier: GPL-3.0-or-later
// What tells the twin sticks apart, all of it: everything else is one code on two sets of data.
//
// The mask bits that do not match between start and stop, the shared timer id 3 and the two intervals of `Im
// Feld binden` are as they have always been; assignments in use were tuned with them.
#pragma once

#include "base/Spuren.h"
#include "base/Stickseite.h"
#include "engine/run/TimerUeberwachung.h"

#include <array>
#include <chrono>

/// Each stick has an x and a y side with timers and remembered texts of their own.
enum Aktionsseite : std::size_t { X_SEITE, Y_SEITE, AKTIONSSEITEN };

/// A window timer and its bit in `TimerMaske`.
struct Sticktimer {
    std::uint32_t id;
    int bit;
};

struct Stickeigenart {
    Stickseite seite;
    std::array<Sticktimer, AKTIONSSEITEN> taste; ///< press and pause of a timed key
    std::array<Sticktimer, AKTIONSSEITEN> maus;  ///< repeat of a mouse movement
    std::array<int, AKTIONSSEITEN> slot;         ///< slot number in `GehalteneTasten`

    std::uint32_t absolut; ///< timer id of `Im Feld binden` and `Ego Shooter`
    int bindenBit;         ///< set at its start, cleared at its tick and by the y side
    int bindenBitXEnde;    ///< cleared by the x side
    int egoBit;
    std::chrono::milliseconds bindenIntervall;

    bool rechtsMitSendInput; ///< a step to the right goes out through SendInput instead of mouse_event
    bool diagonaleMitBit;    ///< a diagonal sets the mask bit of its timer

    Stickspuren Erg;
};

inline constexpr std::chrono::milliseconds EGO_INTERVALL{4};

inline constexpr Stickeigenart LINKER_STICK_EIGENART{
    .seite = Stickseite::Links,
    .taste = {{{timerid::LINKS_X_TASTE, 0}, {timerid::LINKS_Y_TASTE, 1}}},
    .maus = {{{timerid::LINKS_X_MAUS, 2}, {timerid::LINKS_Y_MAUS, 3}}},
    .slot = {17, 18},
    .absolut = timerid::LINKS_ABSOLUT,
    .bindenBit = 4,
    .bindenBitXEnde = 9,
    .egoBit = 9,
    .bindenIntervall = std::chrono::milliseconds{2},
    .rechtsMitSendInput = true,
    .diagonaleMitBit = true,
    .Erg = stickspuren(Stickseite::Links),
};

inline constexpr Stickeigenart RECHTER_STICK_EIGENART{
    .seite = Stickseite::Rechts,
    .taste = {{{timerid::RECHTS_X_TASTE, 5}, {timerid::RECHTS_Y_TASTE, 6}}},
    .maus = {{{timerid::RECHTS_X_MAUS, 7}, {timerid::RECHTS_Y_MAUS, 8}}},
    .slot = {19, 20},
    .absolut = timerid::RECHTS_ABSOLUT,
    .bindenBit = 9,
    .bindenBitXEnde = 9,
    .egoBit = 9,
    .bindenIntervall = std::chrono::milliseconds{1},
    .rechtsMitSendInput = false,
    .diagonaleMitBit = false,
    .Erg = stickspuren(Stickseite::Rechts),
};
