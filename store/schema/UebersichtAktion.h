// SPDX-License-Identifier: GPL-3.0-or-later
// Deletes, swaps and copies whole layers of a `Schema`.
//
// A layer is picked by an index of 0 to 8:
//
//     0 1 2   left stick        layer = index       tblStick, tblStickAktion
//     3 4 5   buttons, D-pad    layer = index - 3   tblTastatur, tblSteuerKreuz
//     6 7 8   right stick       layer = index - 6   tblStickR, tblStickAktionR
//
// Ebenenspalten tells which columns belong to a layer. The two sides of a swap or a copy may lie in two
// files. Either of them is all or nothing, also through a crash. All three throw LaufzeitFehler: 3021 where a
// row of the `Schema` is missing, 3075 for a name with an apostrophe, and what OpenDatabase throws.
// `schritt`, if there is one, gets what they have changed, so that it can be taken back; also where they
// throw then.
#pragma once

#include "store/schema/Schemaschritt.h"

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

inline constexpr std::size_t EBENENWAHLEN = 9;

/// A `Schema` in a database file.
struct Schemaort {
    std::string datenbankPfad;
    std::string schemaName;
};

/// A layer of a `Schema`.
struct Ebenenort {
    Schemaort schema;
    int index; ///< 0 to 8, else error 9
};

/// Whether an index of 0 to 8 picks a layer of the buttons and the D-pad.
constexpr bool istTastenebene(int index) {
    return index >= 3 && index <= 5;
}

/// Empties a layer. Of a stick the actions go at once; then `fragen` is called with the question whether the
/// lines shall go too, and on a yes they are those of a new stick. What was deleted by then stays deleted.
void LayerLoeschen(const Ebenenort& ort, const std::function<bool(std::string_view)>& fragen,
                   const Fortgang& weiter = {}, Schemaschritt* schritt = nullptr);

/// Swaps two layers, both of sticks or both of buttons (else error 9). `melden` tells of it at the end.
///
/// Actions of sticks keep the layer that they had, and in both directions they take the name of the second
/// side. A layer swapped with itself stays as it is. Throws 3021 when the two sticks have different numbers
/// of rows or none.
void LayerWechseln(const Ebenenort& erster, const Ebenenort& zweiter,
                   const std::function<void(std::string_view)>& melden, const Fortgang& weiter = {},
                   Schemaschritt* schritt = nullptr);

/// Copies the lines and the actions of a stick's layer to each layer k of a stick whose `ziele`[k] is set; a
/// layer of the buttons is not copied. The lines come from the left stick, also when the actions are those of
/// the right one. Throws 3021 when the source has no row of lines or a target fewer than the source.
void LayerKopieren(const Ebenenort& quelle, const Schemaort& ziel,
                   const std::array<bool, EBENENWAHLEN>& ziele, const Fortgang& weiter = {},
                   Schemaschritt* schritt = nullptr);
