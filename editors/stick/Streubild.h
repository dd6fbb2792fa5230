// SPDX-License-Identifier: GPL-3.0-or-later
// The picture of where a stick was: a colour for each cell in which it was at all, laid over the picture of
// the plane, of which a quarter shines through.
//
// The colours are those of "viridis" (Smith and van der Walt, CC0): they grow lighter without a step back, so
// that those who see no red or no green, or print it in grey, tell them apart all the same. The scale is
// logarithmic. What was visited most differs most from what lies behind: it is yellow on a dark picture and
// dark violet on a light one.
#pragma once

#include <QImage>
#include <QRect>
#include <QRgb>

#include <array>
#include <cstdint>
#include <vector>

/// The colour of a value from 0, dark, to 1, light.
QRgb streufarbe(double wert);

/// Whether a picture is light on the whole; one that is null is not.
bool istHell(const QImage& bild);

class Streubild {
public:
    /// Ticks in each cell, row by row, as Streudaten has them, for a light or a dark picture; none: empty.
    void setzen(const std::vector<std::uint32_t>& takte, bool hellerGrund);
    bool leer() const { return leer_; }

    /// Lays `grund` and the cells on it into `ziel`, within `stelle`. Both are RGB32 of one size, over which
    /// the cells are spread.
    void mischen(const QImage& grund, QImage& ziel, const QRect& stelle) const;

private:
    static constexpr int ZELLEN = 256;

    bool leer_ = true;
    std::array<QRgb, ZELLEN * ZELLEN> farben_{}; ///< three quarters of each; 0 for nothing
};
