// SPDX-License-Identifier: GPL-3.0-or-later
// A record as the trace file that plays it again (docs/MITSCHNITT.md).
#pragma once

#include "platform/mitschnitt/Mitschnittband.h"

#include <optional>
#include <string>
#include <vector>

/// What stands at the head of the file for people.
struct Mitschnittkopf {
    std::string schema;
    std::string zeitpunkt; ///< of saving
    /// From when on it was played by something else than what the record tells.
    std::optional<Mitschnittband::Zeit> geaendertAb = {};
};

/// What the file of a record of this `Schema` begins with, whatever comes behind it.
std::string mitschnittkennung(const std::string& schema);

/// How far a played event may lie from its recorded time.
inline constexpr Mitschnittband::Zeit MITSCHNITTTOLERANZ{10};

/// The trace of the blocks, from the first exact one on; of no block "". `jetzt` is its end.
std::string mitschnitttext(const std::vector<Mitschnittband::Block>& bloecke, Mitschnittband::Zeit jetzt,
                           const Mitschnittkopf& kopf);
