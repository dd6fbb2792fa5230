// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/stick/StickMaschine.h"

#include "base/LaufzeitFehler.h"
#include "engine/input/Entwackeln.h"
#include "engine/run/GobalVariable.h"
#include "engine/run/LaufAnzeige.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::int32_t STICKEBENENRAND = 65535; // the plane ends here

// Both searches give the line at which they stop, or the number of lines.
//
// Falling lists, `Links` and `Oben`: the last line always stops the search, so a position on an inner line
// belongs to the outermost band.
std::size_t nachInnenfallend(const Linienliste& linien, std::int32_t wert) {
    for (std::size_t i = 0; i + 1 < linien.size(); ++i)
        if (linien[i + 1].endmarke() || (linien[i].wert() > wert && wert > linien[i + 1].wert()))
            return i;
    return linien.size() - 1;
}

// Rising lists, `Rechts` and `Unten`: a position on an inner line belongs to no band.
std::size_t nachAussensteigend(const Linienliste& linien, std::int32_t wert) {
    for (std::size_t i = 0; i + 1 < linien.size(); ++i)
        if (linien[i].wert() < wert && (linien[i + 1].endmarke() || wert < linien[i + 1].wert()))
            return i;
    return linien.size() - 1;
}

// Band `i` of those that the lines bound on their inner side.
Bandlage bandlage(const Linienliste& linien, std::size_t i) {
    const auto ende = std::ranges::find_if(linien, [](const Linie& linie) { return linie.endmarke(); });
    return {static_cast<int>(i) + 1, static_cast<int>(ende - linien.begin())};
}

std::int32_t wertOder(const Linie& linie, std::int32_t rand) {
    return linie.endmarke() ? rand : linie.wert();
}

} // namespace

void StickMaschine::tabellenLaden(int ebene) {
    auto tabellen = datenbank_.tabellen(global_.DatenbankPfad, global_.SchemaName, art_.seite, ebene);
    ebene_ = ebene;
    StickLinien_ = std::move(tabellen.StickLinien);
    StickAktionen_ = Aktionsliste(std::move(tabellen.StickAktionen));
    StickSperre = tabellen.StickSperre;
}

Stickposition StickMaschine::lesen(const Laufdienste& dienste) const {
    return dienste.entwackeln.stickLesen(art_.seite);
}

void StickMaschine::auswerten(const Laufdienste& dienste, const Stickposition& wo) {
    const auto feld = anOrt([this] { return stickname(art_.seite, ebene_); }, [&] { return feldSuchen(wo); });
    stand_.xZone = feld.xZone;
    stand_.yZone = feld.yZone;
    dienste.anzeige.Erg(art_.Erg[0], stand_.xZone + ":  " + feld.xLinie);
    dienste.anzeige.Erg(art_.Erg[1], stand_.yZone + ":  " + feld.yLinie);

    if (std::exchange(grenzenAlt_, grenzen) == grenzen)
        return;
    aktionWechseln(dienste, feld);
    aktionZeigen(dienste.anzeige, feld);
}

// --- the field ---

const Linienliste& StickMaschine::linien(std::size_t richtung) const {
    const auto& liste = StickLinien_[richtung];
    if (liste.empty())
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             std::string("Index außerhalb des gültigen Bereichs: keine Linie ") +
                                 LINIENRICHTUNGEN[richtung]);
    return liste;
}

StickMaschine::Feldort StickMaschine::feldSuchen(const Stickposition& wo) {
    Feldort feld;
    feld.name.ebene = ebene_;
    xBandSuchen(wo.x, feld);
    yBandSuchen(wo.y, feld);
    return feld;
}

void StickMaschine::xBandSuchen(std::int32_t x, Feldort& feld) {
    if (x < linien(richtung::LINKS).front().wert()) {
        const auto& links = linien(richtung::LINKS);
        const auto i = nachInnenfallend(links, x);
        feld.xZone = "Links";
        grenzen.xMax = links[i].wert();
        grenzen.xMin = wertOder(links[i + 1], 0);
        feld.xLinie = links[i].text();
        feld.name.linien[richtung::LINKS] = links[i].wert();
        feld.name.baender[richtung::LINKS] = bandlage(links, i);
        feld.xHaelfte = haelfteLinksOderOben(feld.xLinie);
    } else if (x > linien(richtung::RECHTS).front().wert()) {
        const auto& rechts = linien(richtung::RECHTS);
        const auto i = nachAussensteigend(rechts, x);
        feld.xZone = "Rechts";
        if (i + 1 == rechts.size())
            return; // on a line: bounds and keys stay as they are
        grenzen.xMin = rechts[i].wert();
        grenzen.xMax = wertOder(rechts[i + 1], STICKEBENENRAND);
        feld.xLinie = rechts[i].text();
        feld.name.linien[richtung::RECHTS] = rechts[i].wert();
        feld.name.baender[richtung::RECHTS] = bandlage(rechts, i);
        feld.xHaelfte = haelfteRechtsOderUnten(feld.xLinie);
    } else {
        feld.xZone = "Mitte";
        grenzen.xMax = linien(richtung::RECHTS).front().wert();
        grenzen.xMin = linien(richtung::LINKS).front().wert();
        feld.xHaelfte = MITTELHAELFTE;
    }
}

void StickMaschine::yBandSuchen(std::int32_t y, Feldort& feld) {
    if (y < linien(richtung::OBEN).front().wert()) {
        const auto& oben = linien(richtung::OBEN);
        const auto i = nachInnenfallend(oben, y);
        feld.yZone = "Oben";
        grenzen.yMax = oben[i].wert();
        grenzen.yMin = wertOder(oben[i + 1], 0);
        feld.yLinie = oben[i].text();
        feld.name.linien[richtung::OBEN] = oben[i].wert();
        feld.name.baender[richtung::OBEN] = bandlage(oben, i);
        feld.yHaelfte = haelfteLinksOderOben(feld.yLinie);
    } else if (y > linien(richtung::UNTEN).front().wert()) {
        const auto& unten = linien(richtung::UNTEN);
        const auto i = nachAussensteigend(unten, y);
        feld.yZone = "Unten";
        if (i + 1 < unten.size()) {
            grenzen.yMin = feld.name.linien[richtung::UNTEN] = unten[i].wert();
            grenzen.yMax = wertOder(unten[i + 1], STICKEBENENRAND);
            feld.name.baender[richtung::UNTEN] = bandlage(unten, i);
        }
        // On a line too, unlike `Rechts`: the line is then the empty end mark.
        feld.yLinie = unten[i].text();
        feld.yHaelfte = haelfteRechtsOderUnten(feld.yLinie);
    } else {
        feld.yZone = "Mitte";
        feld.yHaelfte = MITTELHAELFTE;
        grenzen.yMax = linien(richtung::UNTEN).front().wert();
        grenzen.yMin = linien(richtung::OBEN).front().wert();
    }
}

// --- the action ---

void StickMaschine::aktionWechseln(const Laufdienste& dienste, const Feldort& feld) {
    const bool imXBand = !feld.xLinie.empty();
    const bool imYBand = !feld.yLinie.empty();
    const auto aktionen = StickAktionen_.imFeld(feld.xHaelfte, imXBand, feld.yHaelfte, imYBand);
    const auto& eigene = aktionen.eigene;
    using Felder = std::array<Feldname, AKTIONSSEITEN>;
    const auto felder = eigene ? Felder{feld.name, feld.name} : Felder{feld.name.xBand(), feld.name.yBand()};
    const Aktionslauf lauf(stand_, grenzen, art_, dienste, felder);
    lauf.AktionBeenden(eigene);

    stand_.DiagonalFlag = false;
    if (eigene) {
        // The action of a field of its own starts on the x side, also when it is a movement in y.
        if (imYBand && !imXBand)
            lauf.YAktionStarten(eigene);
        else
            lauf.XAktionStarten(eigene);
    } else {
        bandaktionenStarten(lauf, aktionen.xBand, aktionen.yBand);
    }
}

void StickMaschine::bandaktionenStarten(const Aktionslauf& lauf, const Aktionszeiger& xAktion,
                                        const Aktionszeiger& yAktion) {
    stand_.DiagonalFlag = xAktion != nullptr;
    if (!yAktion) {
        if (xAktion)
            lauf.XAktionStarten(xAktion);
        stand_.DiagonalFlag = false;
    } else if (xAktion) {
        lauf.XYAktionStarten(xAktion, yAktion);
    } else {
        lauf.YAktionStarten(yAktion);
    }
}

void StickMaschine::aktionZeigen(LaufAnzeige& anzeige, const Feldort& feld) const {
    std::string erste;
    std::string zweite;
    if (const auto eigene = StickAktionen_.suchen(feld.schluessel())) {
        erste = eigene->text();
    } else if (!feld.mitte()) {
        erste = StickAktionen_.anzeigesuche(feld.xSchluessel());
        zweite = StickAktionen_.anzeigesuche(feld.ySchluessel());
    }
    anzeige.Erg(art_.Erg[2], erste);
    anzeige.Erg(art_.Erg[3], zweite);
}
