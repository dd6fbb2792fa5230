// The picture of a plane's symbols: keeps them as they were drawn and paints them at any size.
//
// It is transparent but for the symbols, so that the form lays it over its background and under its lines.
#pragma once

#include "editors/modZeichnen.h"

#include <QColor>
#include <QImage>
#include <QSize>

#include <vector>

class Zonenbild final : public Zeichenflaeche {
public:
    void loeschen() override;
    void zeichnen(const Feldsymbol& symbol) override;

    /// What has been drawn since the last `loeschen`, in its order.
    const std::vector<Feldsymbol>& symbole() const { return symbole_; }

    /// The picture for a plane of `groesse` pixels, `dichte` device pixels each; plane unit v lies at pixel
    /// v * size / 65535. It is painted anew only when the symbols or the size have changed.
    const QImage& bild(QSize groesse, qreal dichte = 1) const;

private:
    std::vector<Feldsymbol> symbole_;
    mutable QImage bild_; // kept from painting to painting: a new one costs more than the symbols
    mutable bool veraltet_ = false;
};

/// The colour of a colour value: red in the lowest byte, then green, then blue.
QColor symbolfarbwert(std::int32_t farbe);
