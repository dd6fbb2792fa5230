// SPDX-License-Identifier: GPL-3.0-or-later
// The symbols of a plane's fields: keeps them as they were drawn and paints them at any size.
#pragma once

#include "editors/stick/modZeichnen.h"

#include <QColor>
#include <QRect>
#include <QSizeF>

#include <list>
#include <map>
#include <vector>

class QPainter;

class Zonenbild final : public Zeichenflaeche {
public:
    void loeschen() override;
    void zeichnen(const Feldsymbol& symbol) override;

    /// What has been drawn since the last `loeschen`, in its order. What was drawn more than once, at the
    /// same place and in the same colour, counts once, the last time: any number of rows may hold the action
    /// of one field, and the picture of a thousand circles upon each other is that of one.
    std::vector<Feldsymbol> symbole() const { return {symbole_.begin(), symbole_.end()}; }

    /// Paints all symbols for a plane of `groesse`; plane unit v lies at v * size / 65535. Circles are round:
    /// the smaller of the two scales gives their radius.
    void malen(QPainter& maler, QSizeF groesse) const;
    /// What `malen` touches: a rectangle a symbol.
    std::vector<QRectF> flaechen(QSizeF groesse) const;

private:
    std::list<Feldsymbol> symbole_;
    std::map<Feldsymbol, std::list<Feldsymbol>::iterator> stellen_; ///< of each in the list
};

/// Paints one symbol for a plane of `groesse`, smoothed.
void symbolMalen(QPainter& maler, const Feldsymbol& symbol, QSizeF groesse);
/// What painting a symbol touches for a plane of `groesse`.
QRectF symbolumriss(const Feldsymbol& symbol, QSizeF groesse);
/// The symbols that make the difference between two pictures of them: those that only one of the two has, and
/// all of both where those that both have lie upon each other in another order.
std::vector<Feldsymbol> symbolunterschied(const std::vector<Feldsymbol>& eine,
                                          const std::vector<Feldsymbol>& andere);

/// The colour of a colour value: red in the lowest byte, then green, then blue.
QColor symbolfarbwert(std::int32_t farbe);
