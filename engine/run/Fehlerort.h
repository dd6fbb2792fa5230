// SPDX-License-Identifier: GPL-3.0-or-later
// Where an error lies that stops a run, in the words of the editors: whoever made a slip there is to find it.
#pragma once

#include "base/LaufzeitFehler.h"
#include "base/Stickseite.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

/// Which of the bands in a direction, counted from the centre, and of how many; 0 of 0 for none.
struct Bandlage {
    int nummer = 0;
    int anzahl = 0;

    bool operator==(const Bandlage&) const = default;
};

/// A field of a stick: the layer, and the inner lines of its bands to the left, right, up and down, 0 for
/// none.
struct Feldname {
    int ebene = 0;
    std::array<std::int32_t, 4> linien{};
    std::array<Bandlage, 4> baender{}; ///< the same bands by their place

    /// The field that is the whole x band; the whole y band.
    Feldname xBand() const {
        return {ebene, {linien[0], linien[1], 0, 0}, {baender[0], baender[1], Bandlage{}, Bandlage{}}};
    }
    Feldname yBand() const {
        return {ebene, {0, 0, linien[2], linien[3]}, {Bandlage{}, Bandlage{}, baender[2], baender[3]}};
    }

    bool operator==(const Feldname&) const = default;
};

/// "Ebene Umschalt 1"
std::string ebenenname(int ebene);
/// "Linker Stick, Ebene Standart"
std::string stickname(Stickseite seite, int ebene);
/// "Linker Stick, Ebene Standart, Feld Links 20000 Oben 9000"; the centre is "Feld Mitte".
std::string feldname(Stickseite seite, const Feldname& feld);
/// "Taste L 2, Ebene Standart", "Steuerkreuz Oben, Ebene Umschalt 2"
std::string slotname(int slot, int ebene);

/// The text between quotation marks, as all messages show one.
std::string angefuehrt(std::string_view text);

/// Runs a step. The text of an error that comes out begins with what `ort` gives, which is only asked then.
template <class Ort, class Schritt> decltype(auto) anOrt(const Ort& ort, Schritt&& schritt) {
    try {
        return schritt();
    } catch (const LaufzeitFehler& fehler) {
        throw LaufzeitFehler(fehler.nummer(), ort() + ": " + fehler.what());
    }
}
