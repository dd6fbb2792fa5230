// SPDX-License-Identifier: GPL-3.0-or-later
// The symbols of a plane's fields: keeps them as they were drawn and paints them at any size.
#pragma once

#include "editors/stick/modZeichnen.h"

#include <QColor>
#include <QRect>
#include <QSizeF>

#include <vector>

class QPainter;

class Zonenbild final : public Zeichenflaeche {
public:
    void loeschen() override { symbole_.clear(); }
    void zeichnen(const Feldsymbol& symbol) override { symbole_.push_back(symbol); }

    /// What has been drawn since the last `loeschen`, in its order.
    const std::vector<Feldsymbol>& symbole() const { return symbole_; }

    /// Paints all symbols for a plane of `groesse`; plane unit v lies at v * size / 65535. Circles are round:
    /// the smaller of the two scales gives their radius.
    void malen(QPainter& maler, QSizeF groesse) const;
    /// What `malen` touches: a rectangle a symbol.
    std::vector<QRectF> flaechen(QSizeF groesse) const;

private:
    std::vector<Feldsymbol> symbole_;
};

/// The colour of a colour value: red in the lowest byte, then green, then blue.
QColor symbolfarbwert(std::int32_t farbe);
