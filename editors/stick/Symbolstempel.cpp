// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Symbolstempel.h"

#include "editors/stick/Zonenbild.h"

#include <QPainter>
#include <QRegion>

#include <algorithm>
#include <utility>

namespace {

constexpr int KACHEL = 128; // device pixels: most symbols are one

bool istLeer(const QImage& bild) {
    for (int y = 0; y < bild.height(); ++y) {
        const auto* zeile = reinterpret_cast<const QRgb*>(bild.constScanLine(y));
        if (std::any_of(zeile, zeile + bild.width(), [](QRgb pixel) { return pixel != 0; }))
            return false;
    }
    return true;
}

} // namespace

Symbolstempel::Stempel Symbolstempel::gemalt(const Feldsymbol& symbol) const {
    const auto umriss = symbolumriss(symbol, groesse_);
    const QRect ebene({0, 0}, (QSizeF(groesse_) * dichte_).toSize());
    const auto platz =
        QRectF(umriss.topLeft() * dichte_, umriss.size() * dichte_).toAlignedRect().intersected(ebene);
    Stempel stempel{umriss.toAlignedRect(), {}};
    if (platz.isEmpty())
        return stempel;
    QImage ganzes(platz.size(), QImage::Format_ARGB32_Premultiplied);
    ganzes.fill(Qt::transparent);
    {
        QPainter maler(&ganzes);
        maler.translate(-platz.topLeft());
        maler.scale(dichte_, dichte_);
        symbolMalen(maler, symbol, groesse_);
    }
    for (int y = 0; y < platz.height(); y += KACHEL)
        for (int x = 0; x < platz.width(); x += KACHEL) {
            auto teil = ganzes.copy(QRect(x, y, KACHEL, KACHEL).intersected(ganzes.rect()));
            if (!istLeer(teil))
                stempel.kacheln.push_back({platz.topLeft() + QPoint(x, y), std::move(teil)});
        }
    return stempel;
}

void Symbolstempel::setzen(const std::vector<Feldsymbol>& symbole, QSize groesse, double dichte) {
    auto vorige = std::exchange(stempel_, {});
    if (groesse != groesse_ || dichte != dichte_)
        vorige.clear();
    groesse_ = groesse;
    dichte_ = dichte;
    reihe_.clear();
    for (const auto& symbol : symbole) {
        if (auto da = vorige.extract(symbol))
            stempel_.insert(std::move(da));
        else if (!stempel_.contains(symbol))
            stempel_.emplace(symbol, gemalt(symbol));
        reihe_.push_back(&stempel_.at(symbol));
    }
}

void Symbolstempel::legen(QPainter& maler, const QRegion& wo) const {
    for (const auto* stempel : reihe_)
        if (wo.intersects(stempel->flaeche))
            for (const auto& [ort, bild] : stempel->kacheln)
                maler.drawImage(QRectF(QPointF(ort) / dichte_, QSizeF(bild.size()) / dichte_), bild,
                                bild.rect());
}
