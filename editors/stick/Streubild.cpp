// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Streubild.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr std::array<QRgb, 10> STUETZFARBEN{0xff440154, 0xff482878, 0xff3e4989, 0xff31688e, 0xff26828e,
                                            0xff1f9e89, 0xff35b779, 0xff6dcd59, 0xffb4de2c, 0xfffde725};

constexpr double HELL = 0.5;
constexpr std::size_t GEMERKTE = 16384; ///< counts below have their colour looked up
constexpr int PROBEN = 64;              ///< places an axis by which a picture is light or dark

// The fixed quarters make a pixel a shift, a mask and an addition, all three colours at once: at 3840 by 2160
// there are eight million.
constexpr QRgb VIERTEL = 0x3f3f3f;

QRgb dreiViertel(QRgb farbe) {
    return qRgb(qRed(farbe) * 3 / 4, qGreen(farbe) * 3 / 4, qBlue(farbe) * 3 / 4);
}

/// Three quarters of each colour of the scale, made once: a cell only has to find its place on it.
const std::vector<QRgb>& skala() {
    constexpr int STUFEN = 1024;
    static const auto farben = [] {
        std::vector<QRgb> alle;
        for (int i = 0; i < STUFEN; ++i)
            alle.push_back(dreiViertel(streufarbe(double(i) / (STUFEN - 1))));
        return alle;
    }();
    return farben;
}

int erstesPixel(int zelle, int pixel, int zellen) {
    return static_cast<int>((static_cast<std::int64_t>(zelle) * pixel + zellen - 1) / zellen);
}

void streifenMischen(const QRgb* grund, QRgb* ziel, int pixel, QRgb farbe) {
    if (farbe == 0) {
        std::memcpy(ziel, grund, static_cast<std::size_t>(pixel) * sizeof(QRgb));
        return;
    }
    for (int i = 0; i < pixel; ++i)
        ziel[i] = farbe + ((grund[i] >> 2) & VIERTEL);
}

} // namespace

QRgb streufarbe(double wert) {
    const double ort = std::clamp(wert, 0.0, 1.0) * (STUETZFARBEN.size() - 1);
    const auto stelle = std::min(static_cast<std::size_t>(ort), STUETZFARBEN.size() - 2);
    const auto dazwischen = [&](int (*anteil)(QRgb)) {
        return static_cast<int>(std::lround(
            std::lerp(anteil(STUETZFARBEN[stelle]), anteil(STUETZFARBEN[stelle + 1]), ort - double(stelle))));
    };
    return qRgb(dazwischen(qRed), dazwischen(qGreen), dazwischen(qBlue));
}

bool istHell(const QImage& bild) {
    if (bild.isNull())
        return false;
    double summe = 0;
    for (int y = 0; y < PROBEN; ++y)
        for (int x = 0; x < PROBEN; ++x)
            summe += qGray(bild.pixel(x * bild.width() / PROBEN, y * bild.height() / PROBEN));
    return summe > HELL * 255 * PROBEN * PROBEN;
}

void Streubild::setzen(const std::vector<std::uint32_t>& takte, bool hellerGrund) {
    const auto meiste = takte.empty() ? 0 : *std::ranges::max_element(takte);
    leer_ = meiste == 0;
    farben_.fill(0);
    if (leer_)
        return;
    // From the first tick on there is a colour: the scale has its 0 at half a tick.
    const double ganz = std::log(2.0 * meiste + 1);
    const auto farbeVon = [&farben = skala(), ganz, hellerGrund](std::uint32_t anzahl) {
        const double wert = std::log(2.0 * anzahl + 1) / ganz;
        const auto stufe = (hellerGrund ? 1 - wert : wert) * static_cast<double>(farben.size() - 1);
        return farben[static_cast<std::size_t>(std::max(0.0, stufe) + 0.5)];
    };
    // Most cells share few small counts, and a logarithm costs more than all else.
    std::vector<QRgb> gemerkte(GEMERKTE);
    for (std::size_t i = 0; i < std::min(takte.size(), farben_.size()); ++i) {
        const auto anzahl = takte[i];
        if (anzahl == 0)
            continue;
        if (anzahl >= GEMERKTE)
            farben_[i] = farbeVon(anzahl);
        else if (farben_[i] = gemerkte[anzahl]; farben_[i] == 0)
            farben_[i] = gemerkte[anzahl] = farbeVon(anzahl);
    }
}

// Cells of a row with one colour are one strip, most of all those in which there is nothing.
void Streubild::mischen(const QImage& grund, QImage& ziel, const QRect& stelle) const {
    const auto teil = stelle & ziel.rect();
    for (int y = teil.top(); y <= teil.bottom(); ++y) {
        const auto* von = reinterpret_cast<const QRgb*>(grund.constScanLine(y));
        auto* nach = reinterpret_cast<QRgb*>(ziel.scanLine(y));
        const auto zeile = static_cast<std::size_t>(static_cast<std::int64_t>(y) * ZELLEN / ziel.height());
        const auto* farben = farben_.data() + zeile * ZELLEN;
        int x = teil.left();
        while (x <= teil.right()) {
            const auto zelle = static_cast<int>(static_cast<std::int64_t>(x) * ZELLEN / ziel.width());
            int naechste = zelle + 1;
            while (naechste < ZELLEN && farben[naechste] == farben[zelle])
                ++naechste;
            const int bis = std::min(erstesPixel(naechste, ziel.width(), ZELLEN), teil.right() + 1);
            streifenMischen(von + x, nach + x, bis - x, farben[zelle]);
            x = bis;
        }
    }
}
