// SPDX-License-Identifier: GPL-3.0-or-later
// Plays a scenario: a fresh database, a fresh engine on the virtual clock.
#pragma once

#include "tests/spur/Szenario.h"

#include <filesystem>

struct Spurergebnis {
    std::vector<Spurereignis> ereignisse;
    std::optional<int> fehler; ///< number of the error that stopped a run
    std::string fehlertext;
};

/// `leereDatenbank` is copied, never changed. Throws Szenariofehler for statements that fail and inputs that
/// make no sense where they stand.
Spurergebnis spielen(const Szenario& szenario, const std::filesystem::path& leereDatenbank);

/// What an error is that stopped a run and that the scenario does not name.
enum class UnerwarteterFehler {
    Gilt,   ///< no difference: the events decide
    Falsch, ///< a difference
};

/// The first difference between what came and what the scenario expects, "" if there is none.
std::string unterschied(const Szenario& szenario, const Spurergebnis& ergebnis,
                        UnerwarteterFehler unerwarteter = UnerwarteterFehler::Gilt);
