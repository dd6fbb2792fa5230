// SPDX-License-Identifier: GPL-3.0-or-later
// Steps of a stick's editor in the database: what the procedures of modSpeichern have taken down is taken
// back, or made again.
#pragma once

#include "base/Stickseite.h"
#include "store/db/Datenbank.h"
#include "store/schema/Linientabelle.h"

#include <cstdint>
#include <string>
#include <vector>

enum class Schrittrichtung { Zurueck, Wieder };

/// What has become of it.
struct Schrittergebnis {
    Sticklinien linien;               ///< as they are now
    std::vector<Zeilenumzug> umzuege; ///< what other steps must hear of (Zeilenschritt::umziehen)
};

/// One step in one direction, in one transaction; errors as Zeilenschritt::zuruecknehmen, whose `ueber` is
/// meant. Lines that can't be read roll it back, too.
Schrittergebnis StickSchrittWenden(const std::string& datenbankPfad, Stickseite seite,
                                   const std::string& schemaName, Zeilenschritt& schritt,
                                   Schrittrichtung richtung, std::int64_t ueber, const Fortgang& weiter);
