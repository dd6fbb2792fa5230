// SPDX-License-Identifier: GPL-3.0-or-later
// What the slider editor asks of numbers: whether one fits the slider text, and where on the picture of the
// axis a field lies.
#pragma once

#include <cstdint>
#include <string_view>

/// What a number box of the editor holds.
enum class Zahlbefund {
    Gut,       ///< digits, of a value from 0 to SCHUBZAHL_MAX
    KeineZahl, ///< no number at all
    PasstNicht ///< a number, but with a sign, a comma or too many digits for the slider text
};
inline constexpr std::int32_t SCHUBZAHL_MAX = 2147483647;
/// Blanks around the text do not matter.
Zahlbefund zahlPruefen(std::string_view text);

/// Where in a picture of `breite` pixels the axis value `wert`, 0 to 65535, stands.
double schubstelle(std::int32_t wert, int breite);
/// Where line `linie`, from 1, of `linien` stands.
double linienstelle(int linie, int linien, int breite);
/// The field, from 1, in which `stelle` lies: the first whose line lies right of it.
int feldAnStelle(double stelle, int linien, int breite);
