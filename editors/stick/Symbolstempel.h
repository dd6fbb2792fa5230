// SPDX-License-Identifier: GPL-3.0-or-later
// The symbols of a plane as pictures of a size, each painted once and then laid down: to paint one, smoothed,
// takes a hundred times what laying it down does.
#pragma once

#include "editors/stick/modZeichnen.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <map>
#include <vector>

class QPainter;
class QRegion;

class Symbolstempel {
public:
    /// The symbols that lie on a plane of `groesse`, which has `dichte` device pixels a pixel; later ones lie
    /// on earlier ones. What was there for the same size is not painted again.
    void setzen(const std::vector<Feldsymbol>& symbole, QSize groesse, double dichte);

    /// Lays down those that touch `wo`, pixels of the plane on which `maler` paints.
    void legen(QPainter& maler, const QRegion& wo) const;

private:
    /// A piece of a picture, in device pixels. The inside of a large symbol has none.
    struct Kachel {
        QPoint ort;
        QImage bild;
    };
    struct Stempel {
        QRect flaeche; ///< that it touches, in pixels
        std::vector<Kachel> kacheln;
    };
    Stempel gemalt(const Feldsymbol& symbol) const;

    QSize groesse_;
    double dichte_ = 1;
    std::map<Feldsymbol, Stempel> stempel_;
    std::vector<const Stempel*> reihe_;
};
