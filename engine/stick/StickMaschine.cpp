#include "engine/stick/StickMaschine.h"

#include "base/LaufzeitFehler.h"
#include "engine/input/Entwackeln.h"
#include "engine/run/GobalVariable.h"
#include "engine/run/LaufAnzeige.h"

#include <utility>

namespace {

constexpr std::int32_t EBENENRAND = 65535; // the plane ends here

constexpr std::array<const char*, RICHTUNGEN> RICHTUNGSTEXTE{"Links", "Rechts", "Oben", "Unten"};

constexpr auto NICHT_DA = std::string_view::npos;

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

std::int32_t wertOder(const Linie& linie, std::int32_t rand) {
    return linie.endmarke() ? rand : linie.wert();
}

} // namespace

void StickMaschine::tabellenLaden(int ebene) {
    auto tabellen = datenbank_.tabellen(global_.DatenbankPfad, global_.SchemaName, art_.seite, ebene);
    ebene_ = ebene;
    StickLinien_ = std::move(tabellen.StickLinien);
    StickAktionen_ = std::move(tabellen.StickAktionen);
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
                                 RICHTUNGSTEXTE[richtung]);
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
        feld.schluessel = feld.xLinie + "0";
        feld.xSchluessel = feld.xLinie + "000";
    } else if (x > linien(richtung::RECHTS).front().wert()) {
        const auto& rechts = linien(richtung::RECHTS);
        const auto i = nachAussensteigend(rechts, x);
        feld.xZone = "Rechts";
        if (i + 1 == rechts.size())
            return; // on a line: bounds and keys stay as they are
        grenzen.xMin = rechts[i].wert();
        grenzen.xMax = wertOder(rechts[i + 1], EBENENRAND);
        feld.xLinie = rechts[i].text();
        feld.name.linien[richtung::RECHTS] = rechts[i].wert();
        feld.schluessel = "0" + feld.xLinie;
        feld.xSchluessel = "0" + feld.xLinie + "00";
    } else {
        feld.xZone = "Mitte";
        grenzen.xMax = linien(richtung::RECHTS).front().wert();
        grenzen.xMin = linien(richtung::LINKS).front().wert();
        feld.schluessel = "00";
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
        feld.schluessel += feld.yLinie + "0";
        feld.ySchluessel = "00" + feld.yLinie + "0";
    } else if (y > linien(richtung::UNTEN).front().wert()) {
        const auto& unten = linien(richtung::UNTEN);
        const auto i = nachAussensteigend(unten, y);
        feld.yZone = "Unten";
        if (i + 1 < unten.size()) {
            grenzen.yMin = feld.name.linien[richtung::UNTEN] = unten[i].wert();
            grenzen.yMax = wertOder(unten[i + 1], EBENENRAND);
        }
        // On a line too, unlike `Rechts`: the line is then the empty end mark.
        feld.yLinie = unten[i].text();
        feld.schluessel += "0" + feld.yLinie;
        feld.ySchluessel = "000" + feld.yLinie;
    } else {
        feld.yZone = "Mitte";
        feld.schluessel += "00";
        grenzen.yMax = linien(richtung::UNTEN).front().wert();
        grenzen.yMin = linien(richtung::OBEN).front().wert();
    }
}

// --- the action ---

// Finds the first place where the text stands; nothing is found in a layer without actions.
std::size_t StickMaschine::suchen(const std::string& text) const {
    return StickAktionen_.empty() ? NICHT_DA : StickAktionen_.find(text);
}

// The text between the first "+" behind `stelle` and the next ";".
std::string StickMaschine::AktionLesen(std::size_t stelle) const {
    if (stelle == NICHT_DA)
        return "";
    const auto plus = StickAktionen_.find('+', stelle);
    if (plus == NICHT_DA)
        return "";
    return StickAktionen_.substr(plus + 1, StickAktionen_.find(';', plus) - plus - 1);
}

void StickMaschine::aktionWechseln(const Laufdienste& dienste, const Feldort& feld) {
    // Not the whole key but its beginning is looked for: the first entry that begins with it counts.
    const auto stelle = suchen(";" + feld.schluessel);
    const auto eigene = AktionLesen(stelle);
    using Felder = std::array<Feldname, AKTIONSSEITEN>;
    const auto felder =
        stelle != NICHT_DA ? Felder{feld.name, feld.name} : Felder{feld.name.xBand(), feld.name.yBand()};
    const Stickaktion aktion(stand_, grenzen, art_, dienste, felder);
    aktion.AktionBeenden(eigene);

    const bool imXBand = !feld.xLinie.empty();
    const bool imYBand = !feld.yLinie.empty();
    stand_.DiagonalFlag = false;
    if (stelle != NICHT_DA) {
        // The action of a field of its own starts on the x side, also when it is a movement in y.
        if (imYBand && !imXBand)
            aktion.YAktionStarten(eigene);
        else
            aktion.XAktionStarten(eigene);
    } else if (imXBand && imYBand) {
        bandaktionenStarten(aktion, feld);
    }
}

void StickMaschine::bandaktionenStarten(const Stickaktion& aktion, const Feldort& feld) {
    const auto xStelle = suchen(";" + feld.xSchluessel);
    const auto yStelle = suchen(";" + feld.ySchluessel);
    const auto xAktion = AktionLesen(xStelle);
    stand_.DiagonalFlag = xStelle != NICHT_DA;
    if (yStelle == NICHT_DA) {
        if (stand_.DiagonalFlag)
            aktion.XAktionStarten(xAktion);
        stand_.DiagonalFlag = false;
    } else if (stand_.DiagonalFlag) {
        aktion.XYAktionStarten(xAktion, AktionLesen(yStelle));
    } else {
        aktion.YAktionStarten(AktionLesen(yStelle));
    }
}

void StickMaschine::aktionZeigen(LaufAnzeige& anzeige, const Feldort& feld) const {
    std::string erste;
    std::string zweite;
    if (const auto stelle = suchen(";" + feld.schluessel); stelle != NICHT_DA) {
        erste = AktionLesen(stelle);
    } else if (!feld.mitte()) {
        // Without the leading ";" the digits may also be found inside another entry: only what is shown
        // suffers.
        erste = AktionLesen(suchen(feld.xSchluessel));
        zweite = AktionLesen(suchen(feld.ySchluessel));
    }
    anzeige.Erg(art_.Erg[2], erste);
    anzeige.Erg(art_.Erg[3], zweite);
}
