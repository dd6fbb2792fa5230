// SPDX-License-Identifier: GPL-3.0-or-later
// Colours made of a palette's, so that what is drawn by hand can be seen in each of them.
#pragma once

#include <QColor>

/// What a text and what a mark needs, by WCAG 2.
inline constexpr double TEXTKONTRAST = 4.5;
inline constexpr double MARKENKONTRAST = 3;

/// `b` laid over `a`: 0 gives `a`, 1 gives `b`.
QColor mischung(const QColor& a, const QColor& b, qreal anteil);
QColor durchscheinend(QColor farbe, qreal deckung);

/// Contrast of two colours, 1 to 21, by WCAG 2.
double kontrast(const QColor& a, const QColor& b);

/// `farbe` with as much of `schrift` as it takes to be seen on `grund`; `schrift` where nothing less is.
QColor abgehoben(const QColor& farbe, const QColor& grund, const QColor& schrift);

/// The mark on `grund` that takes least of `schrift` and is seen all the same; `schrift` where nothing less
/// is.
QColor umriss(const QColor& grund, const QColor& schrift);

/// `wunsch` where it can be read on `grund`, else black or white.
QColor lesbar(const QColor& grund, const QColor& wunsch);
