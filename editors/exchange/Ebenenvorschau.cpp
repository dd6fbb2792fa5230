// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/exchange/Ebenenvorschau.h"

#include "base/LaufzeitFehler.h"
#include "base/Rundung.h"
#include "editors/common/Farben.h"
#include "editors/exchange/Schemafund.h"
#include "editors/stick/Ebenenmass.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr QSize GROESSE(256, 192);

/// The lines of one direction, as the tables of lines have them: from the centre outward, up to the first 0.
Zonenlinien linienVon(const std::vector<Schemazeile>& zeilen, std::size_t spalte) {
    std::vector<Schemazeile> geordnet;
    std::ranges::copy_if(zeilen, std::back_inserter(geordnet),
                         [](const auto& zeile) { return alsZahl(zeile[0]) != SPERRZEILE; });
    std::ranges::sort(geordnet, {}, [](const auto& zeile) { return alsZahl(zeile[0]); });
    Zonenlinien linien;
    for (const auto& zeile : geordnet) {
        const auto linie = static_cast<std::int32_t>(alsZahl(zeile[spalte]));
        if (linie == 0)
            break;
        linien.push_back(linie);
    }
    return linien;
}

Zonenzeile zonenzeile(const Schemazeile& zeile) {
    const auto wert = [&](std::size_t richtung) {
        return static_cast<std::int32_t>(alsZahl(zeile[1 + richtung]));
    };
    Zonenzeile eine{"Mitte", 0, "Mitte", 0, alsText(zeile[1 + RICHTUNGEN])};
    for (const auto d : {richtung::UNTEN, richtung::OBEN})
        if (wert(d) != 0) {
            eine.senkrecht = LINIENRICHTUNGEN[d];
            eine.wertSenkrecht = wert(d);
        }
    for (const auto d : {richtung::RECHTS, richtung::LINKS})
        if (wert(d) != 0) {
            eine.waagrecht = LINIENRICHTUNGEN[d];
            eine.wertWaagrecht = wert(d);
        }
    return eine;
}

Zonenbestand bestandVon(const Schemadaten& daten, Stickseite seite, int ebene) {
    const bool links = seite == Stickseite::Links;
    const auto& linien = daten.zeilen[links ? schematabelle::STICK : schematabelle::STICK_R];
    const auto& aktionen = daten.zeilen[links ? schematabelle::STICKAKTION : schematabelle::STICKAKTION_R];
    Zonenbestand bestand;
    for (int d = 0; d < RICHTUNGEN; ++d)
        bestand.linien[static_cast<std::size_t>(d)] =
            linienVon(linien, static_cast<std::size_t>(LINIENSPALTEN.ordinal(ebene, d) - 1));
    for (const auto& zeile : aktionen)
        if (alsZahl(zeile[0]) == ebene)
            bestand.zeilen.push_back(zonenzeile(zeile));
    return bestand;
}

} // namespace

Ebenenvorschau::Ebenenvorschau(Stickseite seite) : seite_(seite) {
    setFixedSize(GROESSE);
}

void Ebenenvorschau::zeigen(const Schemafund& fund, int ebene) {
    const auto stelle = static_cast<std::size_t>(ebene) * 2 + (seite_ == Stickseite::Links ? 0 : 1);
    const auto bild = fund.vorschau.find(bildendungen()[stelle]);
    bild_ = bild == fund.vorschau.end()
                ? QImage()
                : bild->second.scaled(GROESSE * devicePixelRatioF(), Qt::IgnoreAspectRatio,
                                      Qt::SmoothTransformation);
    const auto bestand = bestandVon(fund.daten, seite_, ebene);
    senkrechte_ = waagrechte_ = {};
    for (const auto d : {richtung::LINKS, richtung::RECHTS})
        senkrechte_.insert(senkrechte_.end(), bestand.linien[d].begin(), bestand.linien[d].end());
    for (const auto d : {richtung::OBEN, richtung::UNTEN})
        waagrechte_.insert(waagrechte_.end(), bestand.linien[d].begin(), bestand.linien[d].end());
    symbole_.loeschen();
    try {
        ZonenZeichnen(bestand, symbole_);
    } catch (const LaufzeitFehler&) { // a field whose line has gone: what was drawn by then is shown
    }
    const auto felder = bestand.zeilen.size();
    setAccessibleName(seite_ == Stickseite::Links ? "Vorschau des linken Sticks"
                                                  : "Vorschau des rechten Sticks");
    setAccessibleDescription(
        QString("%1 Linien, %2 belegte Felder").arg(senkrechte_.size() + waagrechte_.size()).arg(felder));
    update();
}

void Ebenenvorschau::paintEvent(QPaintEvent*) {
    QPainter maler(this);
    const auto grund = palette().color(QPalette::Base);
    maler.fillRect(rect(), grund);
    if (!bild_.isNull())
        maler.drawImage(rect(), bild_);
    // On a picture of any colour, as the editor has them: black with a light edge.
    const auto linie = [&](const QLineF& strecke) {
        maler.setPen(QPen(QColor(255, 255, 255, 165), 3));
        maler.drawLine(strecke);
        maler.setPen(QPen(Qt::black, 1));
        maler.drawLine(strecke);
    };
    const auto x = [&](int wert) { return double(wert) * width() / EBENENENDE; };
    const auto y = [&](int wert) { return double(wert) * height() / EBENENENDE; };
    for (const int wert : senkrechte_)
        linie({x(wert), 0, x(wert), double(height())});
    for (const int wert : waagrechte_)
        linie({0, y(wert), double(width()), y(wert)});
    maler.setRenderHint(QPainter::Antialiasing);
    symbole_.malen(maler, QSizeF(size()));
    maler.setRenderHint(QPainter::Antialiasing, false);
    maler.setPen(umriss(palette().color(QPalette::Window), palette().color(QPalette::WindowText)));
    maler.drawRect(rect().adjusted(0, 0, -1, -1));
}
