// SPDX-License-Identifier: GPL-3.0-or-later
// A whole `Schema` as values, apart from the place that it comes from and the one that it goes to: its rows
// in the eight tables and its row of the axis file. Its pictures go their own way, as they are large.
#pragma once

#include "store/db/Datenbank.h"
#include "store/db/Tabelle.h"
#include "store/files/Gamepadtabelle.h"
#include "store/schema/Ebenenspalten.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A table that holds rows of a `Schema`.
struct Schematabelle {
    std::string_view name;
    std::vector<Spalte> spalten; ///< behind Schemaname, in physical order
    std::size_t meisteZeilen;    ///< that a `Schema` has
};

/// Places in SCHEMATABELLEN.
namespace schematabelle {
inline constexpr std::size_t TASTATUR = 0;
inline constexpr std::size_t STEUERKREUZ = 1;
inline constexpr std::size_t STICK = 2;
inline constexpr std::size_t STICK_R = 3;
inline constexpr std::size_t STICKAKTION = 4;
inline constexpr std::size_t STICKAKTION_R = 5;
inline constexpr std::size_t SENSIBLE = 6;
inline constexpr std::size_t SENSIBLE_R = 7;
inline constexpr std::size_t ANZAHL = 8;
} // namespace schematabelle

const std::array<Schematabelle, schematabelle::ANZAHL>& schematabellen();

/// Values of a row by column, Schemaname left out.
using Schemazeile = std::vector<Wert>;

struct Schemadaten {
    std::array<std::vector<Schemazeile>, schematabelle::ANZAHL> zeilen; ///< in stored order
    std::optional<Gamepadzeile> achsen; ///< columns of GAMEPADSPALTEN but the name; nothing for no row

    bool operator==(const Schemadaten&) const = default;
};

/// The rows of a `Schema` in a database; the axes are left out. Throws LaufzeitFehler: 3021 where there is no
/// such `Schema`, 3075 for a name with an apostrophe.
Schemadaten schemadatenLesen(Database& datenbank, const std::string& schemaName);

/// Lays the rows under a name. Throws LaufzeitFehler: 3022 where it is given already.
void schemadatenAnlegen(Database& datenbank, const std::string& schemaName, const Schemadaten& daten);

/// Gives all rows of a `Schema` another name. Throws LaufzeitFehler as the other two.
void schemazeilenUmbenennen(Database& datenbank, const std::string& alt, const std::string& neu);

/// Throws LaufzeitFehler 13 with a German text that says where, unless each value is one that this program
/// stores: numbers in their width, texts that their formats take, rows no more than there may be.
void schemadatenPruefen(const Schemadaten& daten);

/// The layers on which a button, a direction of the D-pad or a field of a stick does something.
std::array<bool, EBENEN> benutzteEbenen(const Schemadaten& daten);
