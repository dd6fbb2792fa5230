// SPDX-License-Identifier: GPL-3.0-or-later
// Where a window goes and how large it may be: rectangles in, a place or a size out.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include <vector>

/// The left upper corner of a window of `groesse`, its frame included, that is opened by `oeffner`: wholly
/// within `frei`, beside `oeffner`, clear of `andere` and near its opener, in this order of weight; where
/// there is no room for that it covers as little as possible. One that is larger than `frei` begins at its
/// left upper corner.
QPoint fensterplatz(const QRect& frei, QSize groesse, const QRect& oeffner, const std::vector<QRect>& andere);

/// The left upper corner of `fenster` once it is moved into `frei` by the shortest way.
QPoint hereingeholt(const QRect& frei, const QRect& fenster);

/// Whether the two are one size, give or take the pixel that a screen's scale may round away.
bool gleichGross(QSize eine, QSize andere);

/// As much area as `entwurf` has, in the shape of `schirm`; less of it where `platz` is smaller.
QSize schirmfoermig(QSize entwurf, QSize schirm, QSize platz);
