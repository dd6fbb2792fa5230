// SPDX-License-Identifier: GPL-3.0-or-later
// The plane of a stick editor for assistive technology: a list of its fields, then what else lies on it.
#pragma once

#include <QRectF>
#include <QString>

/// The fields of a plane by number, row by row from the upper left.
class Feldliste {
public:
    Feldliste() = default;
    Feldliste(const Feldliste&) = delete;
    Feldliste& operator=(const Feldliste&) = delete;
    virtual ~Feldliste() = default;

    virtual int feldzahl() const = 0;
    /// Left, top, width and height in plane units.
    virtual QRectF feldplatz(int nummer) const = 0;
    /// What the field is and what the stick does there.
    virtual QString feldworte(int nummer) const = 0;
    /// The field at which the keyboard is, and the chosen one; -1 for none.
    virtual int markiertesFeld() const = 0;
    virtual int gewaehltesFeld() const = 0;
    /// Chooses the field; opens the panel of its action.
    virtual void feldWaehlen(int nummer) = 0;
    virtual void feldaktionOeffnen(int nummer) = 0;
};

/// Lets planes be found by assistive technology; once is enough, more does no harm.
void ebenenzugangEinrichten();
