// SPDX-License-Identifier: GPL-3.0-or-later
// Plays a scenario: a fresh database, a fresh engine on the virtual clock.
#pragma once

#include "engine/buttons/Wiederholung.h"
#include "engine/input/Entwackeln.h"
#include "engine/run/Streuzaehler.h"
#include "tests/spur/Szenario.h"

#include <filesystem>

/// How the run polls the pad.
enum class Pollart {
    Immer,
    Ruhend, ///< rests while nothing can change
};

struct Spurergebnis {
    std::vector<Spurereignis> ereignisse;
    std::vector<Spurereignis> anzeigen; ///< what the window is told, errors that stop a run too
    std::array<Achsenfilter, 4> filter; ///< of the axes, at the end, as the next
    Wiederholstand wiederholung;
    std::vector<Streulauf> streuung; ///< where the sticks were, by runs
    std::uint64_t ausgelassene = 0;  ///< calls of timers that rests have left out
    std::optional<int> fehler;       ///< number of the error that stopped a run
    std::string fehlertext;
};

/// `hoerer` hears where the sticks are. `leereDatenbank` is copied, never changed. Throws Szenariofehler for
/// statements that fail and inputs that make no sense where they stand; those for the window of a run that an
/// error has stopped do nothing.
Spurergebnis spielen(const Szenario& szenario, const std::filesystem::path& leereDatenbank,
                     Pollart pollart = Pollart::Immer, Streuhoerer* hoerer = nullptr);

/// The first difference between a run that always polls and one that rests, "" if there is none.
std::string ruheunterschied(const Spurergebnis& immer, const Spurergebnis& ruhend);

/// What an error is that stopped a run and that the scenario does not name.
enum class UnerwarteterFehler {
    Gilt,   ///< no difference: the events decide
    Falsch, ///< a difference
};

/// The first difference between what came and what the scenario expects, "" if there is none.
std::string unterschied(const Szenario& szenario, const Spurergebnis& ergebnis,
                        UnerwarteterFehler unerwarteter = UnerwarteterFehler::Gilt);
