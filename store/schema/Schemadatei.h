// SPDX-License-Identifier: GPL-3.0-or-later
// The file NAME.schema that hands one `Schema` on: an SQLite database of its own kind (docs/FORMATE.md).
//
// It is written in memory and laid down in one replacement. One that is read comes from anywhere:
//
//   what a file may try                    what stops it
//   to be no file, or one without an end   a regular file only, opened without waiting; GROESSTE_SCHEMADATEI
//   a journal or a log beside it           it is read into memory once, where it has nothing beside it
//   triggers, views, computed columns      none is run: plain tables of known names are read, and an
//                                          authorizer refuses all but that
//   a read without an end, huge values     as for the database; SQLite's own limits
//   texts that are none of the formats     schemadatenPruefen
//   pictures                               are handed out as bytes; what decodes them has limits of its own
//
// Tables and columns that are not known are passed over.
#pragma once

#include "base/Stickseite.h"
#include "store/schema/Schemadaten.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Behind the name of a file of this kind.
inline constexpr std::string_view SCHEMAENDUNG = ".schema";
/// Six pictures of the largest screens with room to spare.
inline constexpr std::size_t GROESSTE_SCHEMADATEI = std::size_t{256} << 20;

/// A picture behind the plane of a stick, as a PNG.
struct Schemabild {
    int ebene = 0;
    Stickseite seite = Stickseite::Links;
    std::string png;

    bool operator==(const Schemabild&) const = default;
};

struct Schemapaket {
    std::string name;
    std::string programm; ///< that wrote it, with its version
    Schemadaten daten;
    std::vector<Schemabild> bilder; ///< one a layer and stick at most

    bool operator==(const Schemapaket&) const = default;
};

/// The content of a file. Throws LaufzeitFehler 13 for what no reader would take, pictures that are too large
/// included.
std::string schemadateiInhalt(const Schemapaket& paket);

/// Lays the file, whole or not at all. Throws as schemadateiInhalt, and 3043 where it can't be written.
void schemadateiSchreiben(const std::string& pfad, const Schemapaket& paket);

/// Reads a file; nothing of it is changed. Throws LaufzeitFehler with the reason: 3024 for no file, 3343 for
/// one of another kind or of a newer version, 3049 for one that is damaged, 13 for values that can't be
/// taken.
Schemapaket schemadateiLesen(const std::string& pfad);

/// The same for a file's content.
Schemapaket schemadateiAus(std::string_view inhalt);
