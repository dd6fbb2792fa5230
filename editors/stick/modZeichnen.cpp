// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/modZeichnen.h"

#include "base/Rundung.h"
#include "editors/stick/Ebenenmass.h"
#include "formats/Stickaktion.h"
#include "store/schema/Stickanweisung.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

constexpr const char* LEERFELD = "3"; // as the editors write it; any other text takes its place on the plane

constexpr std::size_t OBEN_LINKS = 0;
constexpr std::size_t UNTEN_LINKS = 1;
constexpr std::size_t OBEN_RECHTS = 2;
constexpr std::size_t UNTEN_RECHTS = 3;

/// The symbol of an action; nothing for a type that has none.
std::optional<Feldsymbol> symbol(std::optional<Stickaktionsart> art, const Feldecken& ecken) {
    if (!art)
        return std::nullopt;
    switch (*art) {
    case Stickaktionsart::Mausbewegung:
        return KreisBlauZeichnen(ecken);
    case Stickaktionsart::Maustaste:
        return KreisGruenZeichnen(ecken);
    case Stickaktionsart::Tastatur:
        return RechteckZeichnen(ecken);
    case Stickaktionsart::Leerfeld:
        return std::nullopt;
    case Stickaktionsart::Sperrfeld:
        return KreuzZeichnen(ecken);
    case Stickaktionsart::AbsolutePosition:
        return KreisGelbZeichnen(ecken);
    }
    return std::nullopt;
}

double breite(const Feldecken& ecken) {
    return static_cast<double>(ecken[OBEN_RECHTS].x) - ecken[OBEN_LINKS].x;
}
double hoehe(const Feldecken& ecken) {
    return static_cast<double>(ecken[UNTEN_LINKS].y) - ecken[OBEN_LINKS].y;
}

Feldsymbol kreis(const Feldecken& ecken, std::int32_t farbe) {
    const double w = breite(ecken);
    const double h = hoehe(ecken);
    const Ebenenpunkt mitte{gerundet(ecken[OBEN_LINKS].x + w / 2), gerundet(ecken[OBEN_LINKS].y + h / 2)};
    return {Symbolkreis{mitte, gerundet(std::min(w, h) / 4)}, farbe};
}

// --- fields ---

/// What a field reaches from and to along one axis.
struct Strecke {
    std::int32_t von = 0;
    std::int32_t bis = 0;
};

[[noreturn]] void keineLinie(std::string_view richtungsname, std::int32_t wert) {
    throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                         "Eine Aktion liegt an der Linie " + std::to_string(wert) + " (" +
                             std::string(richtungsname) + "), die es nicht gibt.");
}

std::int32_t mittellinie(const Zonenlinien& linien, std::string_view richtungsname) {
    if (linien.empty())
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Der Stick hat in der Richtung " + std::string(richtungsname) + " keine Linie.");
    return linien.front();
}

using Zonenlinientafel = std::array<Zonenlinien, RICHTUNGEN>;

/// Draws rows of actions between the lines of their layer.
class Zeichner {
public:
    Zeichner(Zonenlinientafel linien, Zeichenflaeche& flaeche)
        : flaeche_(flaeche), linien_(std::move(linien)) {}

    void zeichnen(const Zonenzeile& zeile) {
        if (zeile.aktion != LEERFELD)
            FeldSymbolZeichnen(zeile);
    }

private:
    void FeldSymbolZeichnen(const Zonenzeile& zeile) {
        const auto x = waagrecht(zeile.waagrecht, zeile.wertWaagrecht);
        const auto y = senkrecht(zeile.senkrecht, zeile.wertSenkrecht);
        const Feldecken ecken{{{x.von, y.von}, {x.von, y.bis}, {x.bis, y.von}, {x.bis, y.bis}}};
        if (const auto eines = symbol(artImLauf(zeile.aktion), ecken))
            flaeche_.zeichnen(*eines);
    }

    Strecke waagrecht(std::string_view gruppe, std::int32_t wert) const {
        if (gruppe == "Mitte")
            return mitte(richtung::LINKS, richtung::RECHTS);
        const bool links = gruppe == "Links";
        const auto& liste = linien_[links ? richtung::LINKS : richtung::RECHTS];
        mittellinie(liste, gruppe);
        // The last entry takes what no earlier one has.
        const auto stelle = std::find(liste.begin(), liste.end() - 1, wert);
        return links ? nachVorn(liste, stelle) : nachHinten(liste, stelle);
    }

    Strecke senkrecht(std::string_view band, std::int32_t wert) const {
        if (band == "Mitte")
            return mitte(richtung::OBEN, richtung::UNTEN);
        const bool oben = band == "Oben";
        const auto& liste = linien_[oben ? richtung::OBEN : richtung::UNTEN];
        const auto stelle = std::ranges::find(liste, wert);
        if (stelle == liste.end())
            keineLinie(band, wert);
        return oben ? nachVorn(liste, stelle) : nachHinten(liste, stelle);
    }

    Strecke mitte(std::size_t vorn, std::size_t hinten) const {
        return {mittellinie(linien_[vorn], LINIENRICHTUNGEN[vorn]),
                mittellinie(linien_[hinten], LINIENRICHTUNGEN[hinten])};
    }
    /// The band of a line to the left or above: out to the next line or to 0.
    static Strecke nachVorn(const Zonenlinien& liste, Zonenlinien::const_iterator stelle) {
        return {stelle + 1 == liste.end() ? 0 : stelle[1], *stelle};
    }
    /// The band of a line to the right or below: out to the next line or to the end of the plane.
    static Strecke nachHinten(const Zonenlinien& liste, Zonenlinien::const_iterator stelle) {
        return {*stelle, stelle + 1 == liste.end() ? EBENENENDE : stelle[1]};
    }

    Zeichenflaeche& flaeche_;
    const Zonenlinientafel linien_; ///< `ZonenLinks`, `ZonenRechts`, `ZonenOben`, `ZonenUnten`
};

} // namespace

Feldsymbol KreisBlauZeichnen(const Feldecken& ecken) {
    return kreis(ecken, symbolfarbe::BLAU);
}
Feldsymbol KreisGruenZeichnen(const Feldecken& ecken) {
    return kreis(ecken, symbolfarbe::GRUEN);
}
Feldsymbol KreisGelbZeichnen(const Feldecken& ecken) {
    return kreis(ecken, symbolfarbe::GELB);
}

Feldsymbol RechteckZeichnen(const Feldecken& ecken) {
    // The quarters are rounded, not the corners.
    const double viertelX = gerundet(breite(ecken) / 4);
    const double viertelY = gerundet(hoehe(ecken) / 4);
    const auto ecke = [&](int viertel) {
        return Ebenenpunkt{gerundet(ecken[OBEN_LINKS].x + viertel * viertelX),
                           gerundet(ecken[OBEN_LINKS].y + viertel * viertelY)};
    };
    return {Symbolrechteck{ecke(1), ecke(3)}, symbolfarbe::ROT};
}

Feldsymbol KreuzZeichnen(const Feldecken& ecken) {
    return {Symbolkreuz{{ecken[OBEN_LINKS], ecken[UNTEN_RECHTS]}, {ecken[UNTEN_LINKS], ecken[OBEN_RECHTS]}},
            symbolfarbe::ROT};
}

void ZonenZeichnen(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                   int ebene, Zeichenflaeche& flaeche) {
    flaeche.loeschen();
    Database datenbank = OpenDatabase(datenbankPfad);
    datenbank.inEinemLesezug([&] { ZonenZeichnen(datenbank, seite, schemaName, ebene, flaeche); });
}

void ZonenZeichnen(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene,
                   Zeichenflaeche& flaeche) {
    Zonenlinientafel linien;
    auto satz = linienzeilen(datenbank, seite, schemaName);
    for (std::size_t i = 0; i < linien.size(); ++i)
        linien[i] = LinienListeLesen(satz, LINIENRICHTUNGEN[i], ebene);
    Zeichner zeichner(std::move(linien), flaeche);
    for (const char* gruppe : {"Links", "Rechts", "Mitte"})
        ZonenzeilenLesen(datenbank, seite, schemaName, ebene, gruppe,
                         [&](const Zonenzeile& zeile) { zeichner.zeichnen(zeile); });
}

void ZonenZeichnen(const Zonenbestand& bestand, Zeichenflaeche& flaeche) {
    Zeichner zeichner(bestand.linien, flaeche);
    for (const auto& zeile : bestand.zeilen)
        zeichner.zeichnen(zeile);
}
