// SPDX-License-Identifier: GPL-3.0-or-later
// The drawing of the pad: vector shapes in units of their own, and the one table that says where a label, a
// mark and the line between them lie.
#pragma once

#include "editors/common/Farben.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <array>

class QPainter;
class QPalette;

inline constexpr QSizeF ZEICHNUNG{560, 340};
inline constexpr int SCHILDZEILEN = 8; ///< labels on each side
inline constexpr qreal ZEILENABSTAND = ZEICHNUNG.height() / SCHILDZEILEN;

enum class Seite { links, rechts };

/// Where things of one button lie, in the drawing's units. `weg` leads from the label into the picture and
/// ends on the button; `marke` lights up there. Rounded corners of half the height make a circle.
struct Platz {
    int taste;
    Seite seite;
    int zeile; ///< of the column of labels on its side
    std::array<QPointF, 3> weg;
    QRectF marke;
    qreal rundung;
};

/// A column of labels from top to bottom, then the other. The sides mirror each other. Buttons 4 to 7 lie
/// where the pad has what it reports under these numbers, L 2, L 1, R 2 and R 1, whatever their labels say:
/// what lights up is what was pressed.
inline constexpr std::array<Platz, 2 * SCHILDZEILEN> PLAETZE{{
    {4, Seite::links, 0, {{{20, 21}, {70, 21}, {108, 34}}}, {98, 20, 68, 32}, 12},
    {5, Seite::links, 1, {{{20, 64}, {70, 64}, {100, 64}}}, {88, 54, 88, 20}, 9},
    {8, Seite::links, 2, {{{24, 106}, {42, 89}, {190, 89}}}, {216, 126, 40, 17}, 8.5},
    {12, Seite::links, 3, {{{32, 149}, {69, 112}, {117, 107}}}, {113, 98, 30, 38}, 6},
    {15, Seite::links, 4, {{{34, 191}, {79, 146}, {91, 134}}}, {84, 127, 38, 30}, 6},
    {14, Seite::links, 5, {{{50, 234}, {104, 180}, {117, 178}}}, {113, 148, 30, 38}, 6},
    {13, Seite::links, 6, {{{86, 276}, {156, 206}, {159, 152}}}, {134, 127, 38, 30}, 6},
    {10, Seite::links, 7, {{{100, 319}, {174, 245}, {200, 222}}}, {172, 168, 76, 76}, 38},
    {6, Seite::rechts, 0, {{{540, 21}, {490, 21}, {452, 34}}}, {394, 20, 68, 32}, 12},
    {7, Seite::rechts, 1, {{{540, 64}, {490, 64}, {460, 64}}}, {384, 54, 88, 20}, 9},
    {9, Seite::rechts, 2, {{{536, 106}, {518, 89}, {370, 89}}}, {304, 126, 40, 17}, 8.5},
    {0, Seite::rechts, 3, {{{528, 149}, {491, 112}, {446, 108}}}, {413, 85, 38, 38}, 19},
    {1, Seite::rechts, 4, {{{526, 191}, {489, 154}, {482, 147}}}, {451, 123, 38, 38}, 19},
    {2, Seite::rechts, 5, {{{510, 234}, {460, 184}, {446, 184}}}, {413, 161, 38, 38}, 19},
    {3, Seite::rechts, 6, {{{474, 276}, {404, 206}, {396, 156}}}, {375, 123, 38, 38}, 19},
    {11, Seite::rechts, 7, {{{460, 319}, {386, 245}, {360, 222}}}, {312, 168, 76, 76}, 38},
}};

/// The place of a button, 0 to 15.
const Platz& platz(int taste);

/// Draws the pad in its own units, in colours made of `palette`, with the lines from the labels to the
/// buttons.
void padZeichnen(QPainter& maler, const QPalette& palette);
