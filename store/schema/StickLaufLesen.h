// SPDX-License-Identifier: GPL-3.0-or-later
// Brings what a run plays of a stick out of its two tables.
#pragma once

#include "base/Stickseite.h"
#include "store/db/Datenbank.h"
#include "store/schema/Stickanweisung.h"

#include <array>
#include <cstdint>
#include <string>

/// The tables of a stick for one layer.
struct Sticklaufbild {
    std::array<std::string, RICHTUNGEN> linien; ///< "line;line;" by direction, from the centre outward
    std::string aktionen;         ///< ";key+action;key+action;" or "" for a layer without actions
    std::int32_t StickSperre = 0; ///< bit n: the stick is not evaluated in layer n
    bool zeilenFehlen = false;    ///< a row that was looked for is missing; its default stands in for it
};

/// Reads the tables of a stick for a layer, 0 to 2; a row that is missing reads as that of a new stick.
/// Throws LaufzeitFehler of the store, 13 for a text where a number belongs, 6 for a `StickSperre` beyond 32
/// bits.
Sticklaufbild StickLaufLesen(Database& datenbank, const std::string& schemaName, Stickseite seite,
                             int Umschalt);

/// Reads the actions of a layer alone, in the order in which a run searches them.
std::string StickAktionenLesen(Database& datenbank, const std::string& schemaName, Stickseite seite,
                               int Umschalt);
