// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/modZeichnen.h"
#include "store/schema/Zonenlesen.h"

#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

/// A surface that writes down what is drawn on it.
class Schreibflaeche : public Zeichenflaeche {
public:
    void loeschen() override { symbole.clear(); }
    void zeichnen(const Feldsymbol& symbol) override { symbole.push_back(symbol); }

    std::vector<Feldsymbol> symbole;
};

Feldsymbol kreis(std::int32_t x, std::int32_t y, std::int32_t radius, std::int32_t farbe) {
    return {Symbolkreis{{x, y}, radius}, farbe};
}
Feldsymbol rechteck(std::int32_t links, std::int32_t oben, std::int32_t rechts, std::int32_t unten) {
    return {Symbolrechteck{{links, oben}, {rechts, unten}}, 255};
}
/// A `Sperrfeld` shows its field, corner to corner: so tests read where a field lies.
Feldsymbol kreuz(std::int32_t links, std::int32_t oben, std::int32_t rechts, std::int32_t unten) {
    return {Symbolkreuz{{{{links, oben}, {rechts, unten}}}, {{{links, unten}, {rechts, oben}}}}, 255};
}

Feldecken ecken(std::int32_t links, std::int32_t oben, std::int32_t rechts, std::int32_t unten) {
    return {{{links, oben}, {links, unten}, {rechts, oben}, {rechts, unten}}};
}

using Symbole = std::vector<Feldsymbol>;

class Zeichnung : public ::testing::Test {
protected:
    /// Row `index` of the left stick: its four lines on layer 0.
    void linie(int index, int links, int rechts, int oben, int unten, const std::string& tabelle = "tblStick",
               const std::string& endung = "") {
        datenbank_.sql("INSERT INTO " + tabelle + " (Schemaname, \"index\") SELECT 'S', " +
                       std::to_string(index) + " WHERE NOT EXISTS (SELECT 1 FROM " + tabelle +
                       " WHERE Schemaname='S' AND \"index\"=" + std::to_string(index) + ")");
        datenbank_.sql("UPDATE " + tabelle + " SET Links" + endung + "=" + std::to_string(links) +
                       ", Rechts" + endung + "=" + std::to_string(rechts) + ", Oben" + endung + "=" +
                       std::to_string(oben) + ", Unten" + endung + "=" + std::to_string(unten) +
                       " WHERE Schemaname='S' AND \"index\"=" + std::to_string(index));
    }
    void aktion(int links, int rechts, int oben, int unten, const std::string& text, int ebene = 0,
                const std::string& tabelle = "tblStickAktion", const std::string& schema = "S") {
        datenbank_.sql("INSERT INTO " + tabelle + " VALUES ('" + schema + "'," + std::to_string(ebene) + "," +
                       std::to_string(links) + "," + std::to_string(rechts) + "," + std::to_string(oben) +
                       "," + std::to_string(unten) + ",'" + text + "')");
    }
    /// Two lines in each direction: 20000 and 10000, 40000 and 50000, 24000 and 12000, 44000 and 56000.
    void zweiLinien() {
        linie(1, 20000, 40000, 24000, 44000);
        linie(2, 10000, 50000, 12000, 56000);
    }
    const Symbole& gezeichnet(int ebene = 0, Stickseite seite = Stickseite::Links) {
        ZonenZeichnen(datenbank_.pfad(), seite, "S", ebene, flaeche_);
        return flaeche_.symbole;
    }
    int fehler() {
        return fehlernummer([this] { gezeichnet(); });
    }

    Testdatenbank datenbank_;
    Schreibflaeche flaeche_;
};

} // namespace

void PrintTo(const Feldsymbol& symbol, std::ostream* strom) {
    if (const auto* k = std::get_if<Symbolkreis>(&symbol.form))
        *strom << "circle " << k->mitte.x << "," << k->mitte.y << " r " << k->radius;
    if (const auto* r = std::get_if<Symbolrechteck>(&symbol.form))
        *strom << "box " << r->obenLinks.x << "," << r->obenLinks.y << " to " << r->untenRechts.x << ","
               << r->untenRechts.y;
    if (const auto* k = std::get_if<Symbolkreuz>(&symbol.form))
        *strom << "cross " << k->fallend[0].x << "," << k->fallend[0].y << " to " << k->fallend[1].x << ","
               << k->fallend[1].y << " and " << k->steigend[0].x << "," << k->steigend[0].y << " to "
               << k->steigend[1].x << "," << k->steigend[1].y;
    *strom << " colour " << symbol.farbe;
}

// --- symbols ---

TEST(Feldsymbole, DieDreiKreiseUnterscheidenSichNurInIhrerFarbe) {
    const auto feld = ecken(20000, 30000, 40000, 42000);
    EXPECT_EQ(KreisBlauZeichnen(feld), kreis(30000, 36000, 3000, 16711680));
    EXPECT_EQ(KreisGruenZeichnen(feld), kreis(30000, 36000, 3000, 32768));
    EXPECT_EQ(KreisGelbZeichnen(feld), kreis(30000, 36000, 3000, 131071));
}

TEST(Feldsymbole, EinKreisNimmtEinViertelDerKleinerenSeite) {
    EXPECT_EQ(KreisBlauZeichnen(ecken(0, 0, 8000, 4000)), kreis(4000, 2000, 1000, 16711680));
    EXPECT_EQ(KreisBlauZeichnen(ecken(0, 0, 4000, 8000)), kreis(2000, 4000, 1000, 16711680));
}

TEST(Feldsymbole, EinKreisRundetMitteUndRadiusHalbeZurGeraden) {
    EXPECT_EQ(KreisBlauZeichnen(ecken(0, 1, 5, 6)), kreis(2, 4, 1, 16711680));   // 2.5, 3.5, 1.25
    EXPECT_EQ(KreisBlauZeichnen(ecken(0, 0, 6, 6)), kreis(3, 3, 2, 16711680));   // 1.5
    EXPECT_EQ(KreisBlauZeichnen(ecken(0, 0, 10, 10)), kreis(5, 5, 2, 16711680)); // 2.5
    EXPECT_EQ(KreisBlauZeichnen(ecken(0, 0, 11, 11)), kreis(6, 6, 3, 16711680)); // 5.5, 2.75
    EXPECT_EQ(KreisBlauZeichnen(ecken(0, 0, 14, 14)), kreis(7, 7, 4, 16711680)); // 3.5
}

TEST(Feldsymbole, EinRechteckReichtVomErstenBisZumDrittenViertel) {
    EXPECT_EQ(RechteckZeichnen(ecken(20000, 30000, 40000, 42000)), rechteck(25000, 33000, 35000, 39000));
}

TEST(Feldsymbole, EinRechteckRundetDasViertelBevorEsDreimalGenommenWird) {
    // 10 / 4 = 2.5 gives 2 and 6, not 2 and 8; 6 / 4 = 1.5 gives 2 and 6, not 2 and 4.
    EXPECT_EQ(RechteckZeichnen(ecken(0, 0, 10, 6)), rechteck(2, 2, 6, 6));
    EXPECT_EQ(RechteckZeichnen(ecken(100, 200, 109, 211)), rechteck(102, 203, 106, 209));
}

TEST(Feldsymbole, EinKreuzGehtVonEckeZuEcke) {
    EXPECT_EQ(KreuzZeichnen(ecken(20000, 30000, 40000, 42000)), kreuz(20000, 30000, 40000, 42000));
}

TEST(Feldsymbole, SeitenUeberZweiunddreissigBitLaufenNichtUeber) {
    const auto feld = ecken(-2147483647, 0, 2147483647, 4);
    EXPECT_EQ(KreisBlauZeichnen(feld), kreis(0, 2, 1, 16711680));
    const auto gross = ecken(2147483647, 0, -2147483647, 4);
    EXPECT_EQ(fehlernummer([&] { RechteckZeichnen(gross); }), 0);
}

// --- lists of lines ---

TEST_F(Zeichnung, EineListeHatDieLinienVonDerErstenZeileBisZurErstenNull) {
    zweiLinien();
    linie(3, 0, 60000, 0, 0);
    linie(4, 5000, 61000, 0, 0);
    auto db = OpenDatabase(datenbank_.pfad());
    auto satz = db.OpenRecordset("SELECT * FROM tblStick ORDER BY tblStick.index;");
    EXPECT_EQ(LinienListeLesen(satz, "Links", 0), (Zonenlinien{20000, 10000}));
    EXPECT_EQ(LinienListeLesen(satz, "Rechts", 0), (Zonenlinien{40000, 50000, 60000, 61000}));
    EXPECT_EQ(LinienListeLesen(satz, "Oben", 0), (Zonenlinien{24000, 12000}));
    EXPECT_EQ(LinienListeLesen(satz, "Unten", 0), (Zonenlinien{44000, 56000}));
    EXPECT_EQ(LinienListeLesen(satz, "Links", 1), Zonenlinien{});
}

TEST_F(Zeichnung, EineListeEinerLeerenMengeIstLeer) {
    auto db = OpenDatabase(datenbank_.pfad());
    auto satz = db.OpenRecordset("SELECT * FROM tblStick ORDER BY tblStick.index;");
    EXPECT_EQ(LinienListeLesen(satz, "Links", 0), Zonenlinien{});
}

TEST_F(Zeichnung, ZeileZwanzigTraegtDieSperrenUndIstKeineLinie) {
    for (int i = 1; i <= 19; ++i)
        linie(i, 30000 - 1000 * i, 36000 + 1000 * i, 30000 - 1000 * i, 36000 + 1000 * i);
    linie(20, 5, 0, 0, 0);
    auto db = OpenDatabase(datenbank_.pfad());
    auto satz = db.OpenRecordset("SELECT * FROM tblStick ORDER BY tblStick.index;");
    const auto links = LinienListeLesen(satz, "Links", 0);
    EXPECT_EQ(links.size(), 19u);
    EXPECT_EQ(links.back(), 11000);
    EXPECT_EQ(LinienListeLesen(satz, "Rechts", 0).size(), 19u);
}

TEST_F(Zeichnung, EineListeBehaeltHoechstensZwanzigWerte) {
    for (int i = 1; i <= 23; ++i)
        linie(i, 30000 - 1000 * i, 0, 0, 0);
    auto db = OpenDatabase(datenbank_.pfad());
    auto satz = db.OpenRecordset("SELECT * FROM tblStick ORDER BY tblStick.index;");
    const auto links = LinienListeLesen(satz, "Links", 0);
    EXPECT_EQ(links.size(), 20u);
    EXPECT_EQ(links.back(), 9000); // row 21, as row 20 is none
}

// --- fields ---

TEST_F(Zeichnung, EinSchemaOhneAktionenGibtEineLeereEbene) {
    zweiLinien();
    flaeche_.symbole.push_back(kreuz(1, 2, 3, 4));
    EXPECT_EQ(gezeichnet(), Symbole{});
}

TEST_F(Zeichnung, EinSchemaOhneZeileGibtEineLeereEbeneUndLegtKeineZeilenAn) {
    EXPECT_EQ(gezeichnet(), Symbole{});
    EXPECT_EQ(datenbank_.zeilen("SELECT * FROM tblStick"), Tabellenbild{});
}

TEST_F(Zeichnung, DasMittelfeldLiegtZwischenDenErstenLinien) {
    zweiLinien();
    aktion(0, 0, 0, 0, "4");
    EXPECT_EQ(gezeichnet(), Symbole{kreuz(20000, 24000, 40000, 44000)});
}

TEST_F(Zeichnung, EinBandLinksReichtBisZurNaechstenLinieOderBisNull) {
    zweiLinien();
    aktion(20000, 0, 0, 0, "4");
    aktion(10000, 0, 0, 0, "4");
    EXPECT_EQ(gezeichnet(), (Symbole{kreuz(0, 24000, 10000, 44000), kreuz(10000, 24000, 20000, 44000)}));
}

TEST_F(Zeichnung, EinBandRechtsReichtBisZurNaechstenLinieOderZumEndeDerEbene) {
    zweiLinien();
    aktion(0, 40000, 0, 0, "4");
    aktion(0, 50000, 0, 0, "4");
    EXPECT_EQ(gezeichnet(), (Symbole{kreuz(40000, 24000, 50000, 44000), kreuz(50000, 24000, 65535, 44000)}));
}

TEST_F(Zeichnung, EinBandObenReichtBisZurNaechstenLinieOderBisNull) {
    zweiLinien();
    aktion(0, 0, 24000, 0, "4");
    aktion(0, 0, 12000, 0, "4");
    EXPECT_EQ(gezeichnet(), (Symbole{kreuz(20000, 0, 40000, 12000), kreuz(20000, 12000, 40000, 24000)}));
}

TEST_F(Zeichnung, EinBandUntenReichtBisZurNaechstenLinieOderZumEndeDerEbene) {
    zweiLinien();
    aktion(0, 0, 0, 44000, "4");
    aktion(0, 0, 0, 56000, "4");
    EXPECT_EQ(gezeichnet(), (Symbole{kreuz(20000, 56000, 40000, 65535), kreuz(20000, 44000, 40000, 56000)}));
}

TEST_F(Zeichnung, EinFeldIstDieKreuzungZweierBaender) {
    zweiLinien();
    aktion(10000, 0, 24000, 0, "4");
    aktion(0, 40000, 0, 56000, "4");
    EXPECT_EQ(gezeichnet(), (Symbole{kreuz(0, 12000, 10000, 24000), kreuz(40000, 56000, 50000, 65535)}));
}

TEST_F(Zeichnung, EineLinieInJederRichtungReichtBisAnDieRaender) {
    linie(1, 20000, 40000, 24000, 44000);
    aktion(20000, 0, 24000, 0, "4");
    aktion(0, 40000, 0, 44000, "4");
    EXPECT_EQ(gezeichnet(), (Symbole{kreuz(0, 0, 20000, 24000), kreuz(40000, 44000, 65535, 65535)}));
}

TEST_F(Zeichnung, EineZeileDerenSeitlicheLinieFortIstWirdImAeusserstenBandGezeichnet) {
    zweiLinien();
    aktion(19999, 0, 0, 0, "4");
    EXPECT_EQ(gezeichnet(), Symbole{kreuz(0, 24000, 10000, 44000)});
    datenbank_.sql("DELETE FROM tblStickAktion");
    aktion(0, 40001, 0, 0, "4");
    EXPECT_EQ(gezeichnet(), Symbole{kreuz(50000, 24000, 65535, 44000)});
}

TEST_F(Zeichnung, EineZeileDerenLinieObenOderUntenFortIstEndetMitFehler9) {
    zweiLinien();
    for (const int daneben : {23999, 24001, 1}) {
        aktion(0, 0, daneben, 0, "4");
        EXPECT_EQ(fehler(), 9) << daneben;
        datenbank_.sql("DELETE FROM tblStickAktion");
    }
    aktion(20000, 0, 0, 44001, "0,0,5,10");
    EXPECT_EQ(fehler(), 9);
}

TEST_F(Zeichnung, WasVorEinemFehlerGezeichnetWurdeBleibt) {
    zweiLinien();
    aktion(20000, 0, 0, 0, "4");
    aktion(0, 40000, 1, 0, "4");
    flaeche_.symbole.push_back(kreuz(1, 2, 3, 4));
    EXPECT_EQ(fehler(), 9);
    EXPECT_EQ(flaeche_.symbole, Symbole{kreuz(10000, 24000, 20000, 44000)});
}

TEST_F(Zeichnung, EineRichtungOhneLinieEndetMitFehler9WoEineZeileSieBraucht) {
    aktion(0, 0, 0, 0, "4");
    EXPECT_EQ(fehler(), 9);
    linie(1, 20000, 40000, 0, 44000);
    EXPECT_EQ(fehler(), 9);
    datenbank_.sql("DELETE FROM tblStickAktion");
    aktion(20000, 0, 0, 44000, "4");
    EXPECT_EQ(gezeichnet(), Symbole{kreuz(0, 44000, 20000, 65535)});
    linie(1, 0, 40000, 24000, 44000);
    EXPECT_EQ(fehler(), 9);
}

// --- choice of the symbol ---

TEST_F(Zeichnung, DasErsteZeichenDerAktionWaehltDasSymbol) {
    zweiLinien();
    const auto symbol = [this](const char* text) {
        datenbank_.sql("DELETE FROM tblStickAktion");
        aktion(0, 0, 0, 0, text);
        return gezeichnet();
    };
    EXPECT_EQ(symbol("0,0,5,10"), Symbole{kreis(30000, 34000, 5000, 16711680)});
    EXPECT_EQ(symbol("1,0"), Symbole{kreis(30000, 34000, 5000, 32768)});
    EXPECT_EQ(symbol("2,0,13,0,0"), Symbole{rechteck(25000, 29000, 35000, 39000)});
    EXPECT_EQ(symbol("3"), Symbole{});
    EXPECT_EQ(symbol("4"), Symbole{kreuz(20000, 24000, 40000, 44000)});
    EXPECT_EQ(symbol("5,1"), Symbole{kreis(30000, 34000, 5000, 131071)});
    for (const char* keins : {"", "6", "x", "3,1", " 0", "-1"})
        EXPECT_EQ(symbol(keins), Symbole{}) << keins;
}

TEST_F(Zeichnung, EinLeerfeldWirdNichtEinmalGesucht) {
    zweiLinien();
    aktion(0, 0, 1, 0, "3");
    EXPECT_EQ(gezeichnet(), Symbole{});
}

TEST_F(Zeichnung, EineAktionDieNullIstZeichnetNichts) {
    zweiLinien();
    datenbank_.sql("INSERT INTO tblStickAktion (Schemaname, Umschalt) VALUES ('S', 0)");
    EXPECT_EQ(gezeichnet(), Symbole{});
}

// --- order, layer, side, Schema ---

TEST_F(Zeichnung, ZeichnetLinksDannRechtsDannDieMitteJeInIhrerReihenfolge) {
    zweiLinien();
    aktion(0, 0, 0, 44000, "4");
    aktion(0, 0, 0, 56000, "4");
    aktion(0, 0, 24000, 0, "4");
    aktion(0, 0, 0, 0, "4");
    aktion(0, 50000, 0, 0, "4");
    aktion(0, 40000, 0, 0, "4");
    aktion(20000, 0, 24000, 0, "4");
    aktion(20000, 0, 12000, 0, "4");
    aktion(20000, 0, 0, 44000, "4");
    aktion(20000, 0, 0, 56000, "4");
    aktion(10000, 0, 0, 0, "4");
    EXPECT_EQ(gezeichnet(), (Symbole{
                                kreuz(0, 24000, 10000, 44000),
                                kreuz(10000, 56000, 20000, 65535),
                                kreuz(10000, 44000, 20000, 56000),
                                kreuz(10000, 0, 20000, 12000),
                                kreuz(10000, 12000, 20000, 24000),
                                kreuz(40000, 24000, 50000, 44000),
                                kreuz(50000, 24000, 65535, 44000),
                                kreuz(20000, 56000, 40000, 65535),
                                kreuz(20000, 44000, 40000, 56000),
                                kreuz(20000, 24000, 40000, 44000),
                                kreuz(20000, 12000, 40000, 24000),
                            }));
}

TEST_F(Zeichnung, EineEbeneHatIhreEigenenLinienUndAktionen) {
    linie(1, 20000, 40000, 24000, 44000);
    linie(1, 21000, 41000, 25000, 45000, "tblStick", "2");
    linie(1, 22000, 42000, 26000, 46000, "tblStick", "3");
    for (int ebene = 0; ebene < 3; ++ebene)
        aktion(0, 0, 0, 0, "4", ebene);
    aktion(22000, 0, 0, 0, "4", 2);
    EXPECT_EQ(gezeichnet(0), Symbole{kreuz(20000, 24000, 40000, 44000)});
    EXPECT_EQ(gezeichnet(1), Symbole{kreuz(21000, 25000, 41000, 45000)});
    EXPECT_EQ(gezeichnet(2), (Symbole{kreuz(0, 26000, 22000, 46000), kreuz(22000, 26000, 42000, 46000)}));
}

TEST_F(Zeichnung, DerRechteStickHatEigeneTabellen) {
    linie(1, 20000, 40000, 24000, 44000);
    linie(1, 1000, 2000, 3000, 4000, "tblStickR");
    aktion(0, 0, 0, 0, "4");
    aktion(0, 0, 0, 0, "4", 0, "tblStickAktionR");
    aktion(0, 2000, 0, 0, "4", 0, "tblStickAktionR");
    EXPECT_EQ(gezeichnet(0, Stickseite::Links), Symbole{kreuz(20000, 24000, 40000, 44000)});
    EXPECT_EQ(gezeichnet(0, Stickseite::Rechts),
              (Symbole{kreuz(2000, 3000, 65535, 4000), kreuz(1000, 3000, 2000, 4000)}));
}

TEST_F(Zeichnung, AndereSchemataWerdenNichtGezeichnet) {
    zweiLinien();
    aktion(0, 0, 0, 0, "4", 0, "tblStickAktion", "s");
    aktion(0, 0, 0, 0, "4", 0, "tblStickAktion", "S2");
    EXPECT_EQ(gezeichnet(), Symbole{});
}

TEST_F(Zeichnung, ZeilenMitBeidenRichtungenEinerAchseWerdenInBeidenGruppenGezeichnet) {
    zweiLinien();
    aktion(20000, 40000, 24000, 44000, "4"); // above goes before below
    EXPECT_EQ(gezeichnet(), (Symbole{kreuz(10000, 12000, 20000, 24000), kreuz(40000, 12000, 50000, 24000)}));
}

TEST_F(Zeichnung, EineZeichnungBeginntMitLeererEbeneAuchWennDerSpeicherScheitert) {
    flaeche_.symbole.push_back(kreuz(1, 2, 3, 4));
    EXPECT_EQ(fehlernummer([this] {
                  ZonenZeichnen(datenbank_.pfad() + ".fehlt", Stickseite::Links, "S", 0, flaeche_);
              }),
              3024);
    EXPECT_EQ(flaeche_.symbole, Symbole{});
    EXPECT_EQ(
        fehlernummer([this] { ZonenZeichnen(datenbank_.pfad(), Stickseite::Links, "O'S", 0, flaeche_); }),
        3075);
}

TEST_F(Zeichnung, EineLinieUeberZweiunddreissigBitIstEinUeberlauf) {
    linie(1, 20000, 40000, 24000, 44000);
    datenbank_.sql("UPDATE tblStick SET Links=4294967297");
    EXPECT_EQ(fehler(), 6);
}

TEST_F(Zeichnung, EineZeichnungAendertNichts) {
    zweiLinien();
    aktion(0, 0, 0, 0, "4");
    const auto vorher = datenbank_.inhalt();
    gezeichnet();
    EXPECT_EQ(datenbank_.inhalt(), vorher);
}
