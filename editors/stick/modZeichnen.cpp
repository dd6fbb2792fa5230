#include "editors/stick/modZeichnen.h"

#include "base/Rundung.h"
#include "editors/stick/Ebenenmass.h"
#include "engine/stick/StickTabellen.h"
#include "formats/Stickaktion.h"

#include <algorithm>
#include <optional>

namespace {

constexpr std::size_t LAENGSTE_LISTE = 20;
constexpr const char* LEERFELD = "3"; // as the editors write it; any other text takes its place on the plane

constexpr std::array<const char*, RICHTUNGEN> RICHTUNGSNAMEN{"Links", "Rechts", "Oben", "Unten"};

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

/// A number of the plane's tables. A foreign database may hold any; none of them wraps.
std::int32_t plangroesse(const Wert& wert) {
    return gerundet(static_cast<double>(alsZahl(wert)));
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

class Zeichner {
public:
    Zeichner(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene,
             Zeichenflaeche& flaeche)
        : datenbank_(datenbank)
        , zusatz_(tabellenzusatz(seite))
        , schemaName_(schemaName)
        , ebene_(ebene)
        , flaeche_(flaeche) {}

    void zeichnen() {
        linienLesen();
        for (const char* gruppe : {"Links", "Rechts"})
            gruppeZeichnen(gruppe, " AND (tblStickAktion" + zusatz_ + "." + gruppe +
                                       ")<> 0 ORDER BY tblStickAktion" + zusatz_ + "." + gruppe +
                                       ", tblStickAktion" + zusatz_ + ".Oben, tblStickAktion" + zusatz_ +
                                       ".Unten DESC;");
        gruppeZeichnen("Mitte", " AND (tblStickAktion" + zusatz_ + ".Links) = 0 And (tblStickAktion" +
                                    zusatz_ + ".Rechts) = 0 ORDER BY tblStickAktion" + zusatz_ +
                                    ".Oben, tblStickAktion" + zusatz_ + ".Unten DESC;");
    }

private:
    /// The action row that is being drawn: its band in y, the band's value, its band in x, the action.
    struct Zonenzeile {
        std::string_view senkrecht;
        std::int32_t wertSenkrecht = 0;
        std::string_view waagrecht;
        std::int32_t wertWaagrecht = 0;
        std::string aktion;
    };

    void linienLesen() {
        auto satz = datenbank_.OpenRecordset(
            anweisung("SELECT * FROM tblStick" + zusatz_ + " WHERE (tblStick" + zusatz_ + ".Schemaname)= '",
                      schemaName_, "' ORDER BY TBLSTICK" + zusatz_ + ".INDEX;"));
        for (std::size_t i = 0; i < RICHTUNGSNAMEN.size(); ++i)
            linien_[i] = LinienListeLesen(satz, RICHTUNGSNAMEN[i], ebene_);
    }

    void gruppeZeichnen(std::string_view gruppe, const std::string& bedingung) {
        const auto satzText = anweisung(
            "SELECT * FROM tblStickAktion" + zusatz_ + " WHERE (tblStickAktion" + zusatz_ + ".Schemaname)= '",
            schemaName_,
            "' AND (tblStickAktion" + zusatz_ + ".Umschalt)= " + std::to_string(ebene_) + bedingung);
        for (auto satz = datenbank_.OpenRecordset(satzText); !satz.get_EOF(); satz.MoveNext())
            if (auto zeile = zeileLesen(satz, gruppe); zeile.aktion != LEERFELD)
                FeldSymbolZeichnen(zeile);
    }

    static Zonenzeile zeileLesen(const Recordset& satz, std::string_view gruppe) {
        Zonenzeile zeile{"Mitte", 0, gruppe, 0, alsText(satz.get_Value("Aktion"))};
        if (const auto oben = plangroesse(satz.get_Value("Oben")); oben != 0) {
            zeile.senkrecht = "Oben";
            zeile.wertSenkrecht = oben;
        } else if (const auto unten = plangroesse(satz.get_Value("Unten")); unten != 0) {
            zeile.senkrecht = "Unten";
            zeile.wertSenkrecht = unten;
        }
        if (gruppe != "Mitte")
            zeile.wertWaagrecht = plangroesse(satz.get_Value(gruppe));
        return zeile;
    }

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
        return {mittellinie(linien_[vorn], RICHTUNGSNAMEN[vorn]),
                mittellinie(linien_[hinten], RICHTUNGSNAMEN[hinten])};
    }
    /// The band of a line to the left or above: out to the next line or to 0.
    static Strecke nachVorn(const Zonenlinien& liste, Zonenlinien::const_iterator stelle) {
        return {stelle + 1 == liste.end() ? 0 : stelle[1], *stelle};
    }
    /// The band of a line to the right or below: out to the next line or to the end of the plane.
    static Strecke nachHinten(const Zonenlinien& liste, Zonenlinien::const_iterator stelle) {
        return {*stelle, stelle + 1 == liste.end() ? EBENENENDE : stelle[1]};
    }

    Database& datenbank_;
    std::string zusatz_;
    const std::string& schemaName_;
    int ebene_;
    Zeichenflaeche& flaeche_;
    std::array<Zonenlinien, RICHTUNGEN> linien_; ///< `ZonenLinks`, `ZonenRechts`, `ZonenOben`, `ZonenUnten`
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

Zonenlinien LinienListeLesen(Recordset& satz, std::string_view richtungsname, int ebene) {
    Zonenlinien linien;
    if (satz.get_RecordCount() == 0)
        return linien;
    const auto spalte = std::string(richtungsname) + ebenenendung(ebene);
    for (satz.MoveFirst(); !satz.get_EOF() && linien.size() < LAENGSTE_LISTE; satz.MoveNext()) {
        if (alsZahl(satz.get_Value("index")) == ZEILEN_JE_STICK)
            continue;
        const auto linie = plangroesse(satz.get_Value(spalte));
        if (linie == 0)
            break;
        linien.push_back(linie);
    }
    return linien;
}

void ZonenZeichnen(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                   int ebene, Zeichenflaeche& flaeche) {
    flaeche.loeschen();
    Database datenbank = OpenDatabase(datenbankPfad);
    datenbank.inEinemLesezug([&] { Zeichner(datenbank, seite, schemaName, ebene, flaeche).zeichnen(); });
}
