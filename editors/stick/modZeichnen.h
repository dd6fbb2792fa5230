// SPDX-License-Identifier: GPL-3.0-or-later
// Finds the symbols that mark on the plane of a stick which field carries which type of action.
//
// A drawing reads both tables of the stick anew and keeps nothing; what it finds goes symbol by symbol to the
// surface, so an error on the way leaves what has been drawn by then.
#pragma once

#include "base/Stickseite.h"
#include "store/schema/Linientabelle.h"
#include "store/schema/Zonenlesen.h"

#include <array>
#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

class Database;

/// A place of the plane, 0 to 65535 in both axes.
struct Ebenenpunkt {
    std::int32_t x = 0;
    std::int32_t y = 0;
    auto operator<=>(const Ebenenpunkt&) const = default;
};

struct Symbolkreis {
    Ebenenpunkt mitte;
    std::int32_t radius = 0;
    auto operator<=>(const Symbolkreis&) const = default;
};
/// An outline.
struct Symbolrechteck {
    Ebenenpunkt obenLinks;
    Ebenenpunkt untenRechts;
    auto operator<=>(const Symbolrechteck&) const = default;
};
/// Two lines, each from one of its ends to the other.
struct Symbolkreuz {
    std::array<Ebenenpunkt, 2> fallend;
    std::array<Ebenenpunkt, 2> steigend;
    auto operator<=>(const Symbolkreuz&) const = default;
};

/// Colour values hold red in the lowest byte, then green, then blue.
namespace symbolfarbe {
inline constexpr std::int32_t BLAU = 16711680;
inline constexpr std::int32_t GRUEN = 32768;
inline constexpr std::int32_t ROT = 255;
inline constexpr std::int32_t GELB = 131071;
} // namespace symbolfarbe

struct Feldsymbol {
    std::variant<Symbolkreis, Symbolrechteck, Symbolkreuz> form;
    std::int32_t farbe = 0;
    auto operator<=>(const Feldsymbol&) const = default;
};

/// What is drawn on. It keeps what it shows until the next `loeschen`.
class Zeichenflaeche {
public:
    Zeichenflaeche() = default;
    Zeichenflaeche(const Zeichenflaeche&) = delete;
    Zeichenflaeche& operator=(const Zeichenflaeche&) = delete;
    virtual ~Zeichenflaeche() = default;

    virtual void loeschen() = 0;
    virtual void zeichnen(const Feldsymbol& symbol) = 0;
};

/// The corners of a field: top left, bottom left, top right, bottom right.
using Feldecken = std::array<Ebenenpunkt, 4>;

// The symbols of the action types in a field. They throw LaufzeitFehler 6 for what does not fit 32 bits.
Feldsymbol KreisBlauZeichnen(const Feldecken& ecken);  ///< `Mausbewegung`
Feldsymbol KreisGruenZeichnen(const Feldecken& ecken); ///< `Maustaste drücken`
Feldsymbol RechteckZeichnen(const Feldecken& ecken);   ///< `Tastatur drücken`
Feldsymbol KreuzZeichnen(const Feldecken& ecken);      ///< `Sperrfeld`
Feldsymbol KreisGelbZeichnen(const Feldecken& ecken);  ///< `Absolute Position`

/// Clears `flaeche` and draws the symbols of a layer, 0 to 2, on it. The tables are those of `seite`.
///
/// A row whose line to the left or right has gone is drawn in the outermost band; one whose line above or
/// below has gone throws LaufzeitFehler 9, as does a direction without a line where a row needs one. Errors
/// of the store go through.
void ZonenZeichnen(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                   int ebene, Zeichenflaeche& flaeche);
/// The same on a database that is open, in a transaction of the caller's; clears nothing.
void ZonenZeichnen(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene,
                   Zeichenflaeche& flaeche);

/// The lines and the action rows of a layer that lies in no database.
struct Zonenbestand {
    std::array<Zonenlinien, RICHTUNGEN> linien;
    std::vector<Zonenzeile> zeilen;
};
/// The same for those; throws as it does. Clears nothing.
void ZonenZeichnen(const Zonenbestand& bestand, Zeichenflaeche& flaeche);
