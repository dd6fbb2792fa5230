// SPDX-License-Identifier: GPL-3.0-or-later
// What an installation holds, from its first evening to what years of play leave: the database, Gamepad.xml
// and the pictures, all laid past the store.
#pragma once

#include "tests/hilfen/Testdatenbank.h"

#include <cstddef>
#include <string>

struct Bestand {
    int schemata = 1;
    int aktionszeilen = 8;         ///< of BESTANDSSCHEMA's left stick
    std::size_t schubzeichen = 60; ///< of its slider text; 20 fields need about 500
    int bilder = 6;                ///< files in `Bilder`; the first ones are those of BESTANDSSCHEMA
};
inline constexpr Bestand ERSTER_ABEND{};
inline constexpr Bestand NACH_JAHREN{500, 2000, 1000, 3000};

/// The `Schema` that has the rows and the slider text. It is the last one, the others have a few rows each.
inline constexpr const char* BESTANDSSCHEMA = "S";

/// Fields of a plane with all of its lines: more rows go on to the next layer, and then to fields that have
/// one.
inline constexpr int FELDER_EINER_EBENE = 39 * 39;

/// Lays it into the database, which is empty, and into its folder.
void bestandLegen(const Testdatenbank& datenbank, const Bestand& bestand);

/// Statements that give BESTANDSSCHEMA's left stick so many rows of the same action on one field of layer 0:
/// the middle one, which is as wide as the plane where `gross`, else a few thousandths of it.
std::string zeilenEinesFelds(int anzahl, bool gross);
