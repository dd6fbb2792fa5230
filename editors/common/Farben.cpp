// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Farben.h"

#include <algorithm>
#include <cmath>

namespace {

double leuchtdichte(const QColor& farbe) {
    const auto linear = [](double anteil) {
        return anteil <= 0.04045 ? anteil / 12.92 : std::pow((anteil + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(farbe.redF()) + 0.7152 * linear(farbe.greenF()) + 0.0722 * linear(farbe.blueF());
}

} // namespace

QColor mischung(const QColor& a, const QColor& b, qreal anteil) {
    const auto kanal = [anteil](float x, float y) {
        return static_cast<float>(x * (1 - anteil) + y * anteil);
    };
    return QColor::fromRgbF(kanal(a.redF(), b.redF()), kanal(a.greenF(), b.greenF()),
                            kanal(a.blueF(), b.blueF()));
}

QColor durchscheinend(QColor farbe, qreal deckung) {
    farbe.setAlphaF(static_cast<float>(deckung));
    return farbe;
}

double kontrast(const QColor& a, const QColor& b) {
    const auto [dunkler, heller] = std::minmax({leuchtdichte(a), leuchtdichte(b)});
    return (heller + 0.05) / (dunkler + 0.05);
}

QColor abgehoben(const QColor& farbe, const QColor& grund, const QColor& schrift) {
    constexpr double LUFT = 1.2; // edges are smoothed
    for (int zwanzigstel = 0; zwanzigstel < 20; ++zwanzigstel)
        if (const auto versuch = mischung(farbe, schrift, zwanzigstel / 20.0);
            kontrast(versuch, grund) >= MARKENKONTRAST * LUFT)
            return versuch;
    return schrift;
}

QColor umriss(const QColor& grund, const QColor& schrift) {
    return abgehoben(grund, grund, schrift);
}

QColor lesbar(const QColor& grund, const QColor& wunsch) {
    if (kontrast(grund, wunsch) >= TEXTKONTRAST)
        return wunsch;
    return kontrast(grund, Qt::white) > kontrast(grund, Qt::black) ? Qt::white : Qt::black;
}
