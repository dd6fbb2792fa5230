// SPDX-License-Identifier: GPL-3.0-or-later
// The table in Gamepad.xml: one row a `Schema`, in the XML form of a persisted ADO recordset ("XML
// Persistence Format" of Microsoft's ADO documentation).
//
// Reading is strict: what could not be written back unchanged is not read at all, so that a file of somebody
// else is never overwritten. Changes that the file notes as pending are taken as made; what is written has
// none.
#pragma once

#include "store/files/Xml.h"

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A column of the table as the program makes it, and how many characters it takes.
struct Gamepadgroesse {
    std::string_view spalte;
    std::size_t zeichen;
};
inline constexpr std::array<Gamepadgroesse, 8> GAMEPADSPALTEN{{{"Schema", 100},
                                                               {"dwXPos", 100},
                                                               {"dwYPos", 100},
                                                               {"dwZPos", 100},
                                                               {"dwRPos", 100},
                                                               {"dwUPos", 100},
                                                               {"dwVPos", 100},
                                                               {"Schubregler", 1000}}};

struct Gamepadspalte {
    std::string name;
    Xmlattribute attribute; ///< of s:AttributeType, all but the name
    Xmlattribute datentyp;  ///< of s:datatype; empty when there is none

    bool operator==(const Gamepadspalte&) const = default;
};

/// Value by column; a column that is not there is Null.
using Gamepadzeile = std::map<std::string, std::string, std::less<>>;

struct Gamepadtabelle {
    Xmlattribute zeilentyp; ///< of s:ElementType
    std::vector<Gamepadspalte> spalten;
    std::vector<Gamepadzeile> zeilen;

    bool hatSpalte(std::string_view name) const;
    bool operator==(const Gamepadtabelle&) const = default;
};

/// The table without rows.
Gamepadtabelle leereGamepadtabelle();

/// Whether the column takes the text: not longer than its size, and of characters that XML can hold. A column
/// that is none of GAMEPADSPALTEN has no size.
bool gamepadNimmt(std::string_view spalte, std::string_view text);

/// The table in a file's content; nothing when that is no such file, or not a whole one.
std::optional<Gamepadtabelle> gamepadAusXml(std::string_view xml);

/// The file's content for the table; nothing when XML cannot hold a name or a value, or when a row has a
/// value for a column that the table does not have.
std::optional<std::string> gamepadAlsXml(const Gamepadtabelle& tabelle);
