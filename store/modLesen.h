// Brings a `Schema` out of the database. Each procedure opens the database, does its work and closes it
// again.
#pragma once

#include "store/Datenbank.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

inline constexpr int EBENEN = 3;
inline constexpr int TASTEN = 12;        ///< slots 0 to 11
inline constexpr int SLOTS = TASTEN + 4; ///< slots 12 to 15 are the D-pad: Oben, Rechts, Unten, Links

/// The `Belegung` of a slot without action.
inline constexpr std::string_view LEERE_BELEGUNG = "10,0,0-0-0";

/// The run image: [layer][slot], each the whole `Belegung` text.
using Laufbild = std::array<std::array<std::string, SLOTS>, EBENEN>;

/// Reads the run image of a `Schema`. A column that is Null or empty gives LEERE_BELEGUNG. Throws
/// LaufzeitFehler, 3021 when the `Schema` has no row.
Laufbild TastenLaufLesen(const std::string& datenbankPfad, const std::string& schemaName);

/// The list of `Schema`s in stored order. Both arrays have one entry more than there are rows, the last one
/// empty.
struct Schemaliste {
    std::vector<std::string> SchemaNamen;
    std::vector<std::string> SchemaPfade;
};
Schemaliste SchemataLesen(const std::string& datenbankPfad);

/// Column `Funktion` of the `Schema`: which element of `Option1` was chosen last. Null counts as 0; nothing
/// when the `Schema` has no row.
std::optional<int> FunktionLesen(const std::string& datenbankPfad, const std::string& schemaName);

/// Lays the twenty rows of a stick for a `Schema` into `satz`, a set on tblStick or tblStickR, in one
/// transaction of `datenbank`; row 1 carries the four default lines on all layers. Closes `satz`, leaves
/// `datenbank` open.
void StickGrundzeilenAnlegen(Database& datenbank, Recordset& satz, const std::string& schemaName);
