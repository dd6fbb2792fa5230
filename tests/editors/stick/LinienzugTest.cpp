// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Linienzug.h"

#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

using richtung::LINKS;
using richtung::OBEN;
using richtung::RECHTS;
using richtung::UNTEN;

constexpr const char* NAMEN[] = {"Links", "Rechts", "Oben", "Unten"};

/// The controls of the form, and what it was asked to do, in words.
class Probeflaeche final : public Justierflaeche {
public:
    explicit Probeflaeche(Justierstand& stand) : stand_(stand) {}

    struct Linie {
        bool gezeigt = false;
        bool rot = false;
        double ort = 0;
    };
    Linie& linie(std::size_t d, int index) { return linien_[d][static_cast<std::size_t>(index)]; }
    const Linie& linie(std::size_t d, int index) const { return linien_[d][static_cast<std::size_t>(index)]; }

    bool linieGezeigt(std::size_t d, int index) const override { return linie(d, index).gezeigt; }
    double linienort(std::size_t d, int index) const override { return linie(d, index).ort; }
    bool linieRot(std::size_t d, int index) const override { return linie(d, index).rot; }
    void linieFaerben(std::size_t d, int index, bool rot) override { linie(d, index).rot = rot; }
    void PositionFestlegen(std::size_t d, int slot) override {
        const auto wert = stand_.ebene()[static_cast<std::size_t>(slot)][d];
        auto& eine = linie(d, slot - 1);
        eine.gezeigt = wert >= 1;
        eine.ort = wert >= 1 ? wert : 0;
    }

    bool RechteckBGezeigt() const override { return feldGewaehlt; }
    void BereichFestlegen() override {
        feldGewaehlt = !feldGewaehlt;
        taten.push_back("Bereich " + std::to_string(stand_.Klickposition.x) + "," +
                        std::to_string(stand_.Klickposition.y));
    }
    bool fraAktionGezeigt() const override { return tafelOffen; }
    void fraAktionVerbergen() override {
        tafelOffen = false;
        taten.emplace_back("Tafel zu");
    }
    void fraAktionOeffnen(double x, double y) override {
        tafelOffen = true;
        taten.push_back("Tafel auf " + std::to_string(static_cast<int>(x)) + "," +
                        std::to_string(static_cast<int>(y)));
    }
    void AktionSpeichern() override {
        if (aktionScheitert > 0) {
            tafelOffen = true;
            scheitern(aktionScheitert);
        }
        taten.emplace_back("Aktion speichern");
    }
    void Zeichnen() override {
        scheitern(zeichnenScheitert);
        taten.emplace_back("Zeichnen");
    }
    void tafelnSperren(bool gesperrt) override { tafelnGesperrt = gesperrt; }
    void tafelnZurueckstellen() override { ++zurueckgestellt; }
    void StickLinienSpeichern() override {
        scheitern(speichernScheitert);
        gespeichert = stand_.linien;
        taten.emplace_back("Linien speichern");
    }
    void StickLinieVerlegen(const Linientabelle& linien, std::size_t d, std::int32_t neu,
                            std::int32_t alt) override {
        scheitern(speichernScheitert);
        if (d == OBEN && obenScheitert)
            throw LaufzeitFehler(Fehlernummer::Gesperrt, "gesperrt");
        gespeichert = linien;
        taten.emplace_back("Linien speichern");
        taten.push_back("verschieben " + std::string(NAMEN[d]) + " " + std::to_string(alt) + " nach " +
                        std::to_string(neu));
    }
    bool StickLinieEntfernen(const Linientabelle& ohne, std::size_t d, std::int32_t linie) override {
        scheitern(loeschenScheitert);
        taten.push_back("Aktionen loeschen " + std::string(NAMEN[d]) + " " + std::to_string(linie));
        if (aktionBleibt)
            return false;
        scheitern(speichernScheitert);
        gespeichert = ohne;
        taten.emplace_back("Linien speichern");
        return true;
    }
    void melden(std::string_view text) override { taten.push_back("Box: " + std::string(text)); }

    std::vector<std::string> abholen() { return std::exchange(taten, {}); }

    bool feldGewaehlt = false;
    bool tafelOffen = false;
    bool tafelnGesperrt = false;
    bool aktionBleibt = false;
    int speichernScheitert = 0; ///< how many of the next calls fail
    int loeschenScheitert = 0;
    int aktionScheitert = 0;
    int zeichnenScheitert = 0;
    bool obenScheitert = false; ///< the actions of a line above never follow
    int zurueckgestellt = 0;
    Linientabelle gespeichert{};
    std::vector<std::string> taten;

private:
    static void scheitern(int& wieOft) {
        if (wieOft > 0 && wieOft--)
            throw LaufzeitFehler(Fehlernummer::Gesperrt, "gesperrt");
    }

    Justierstand& stand_;
    std::array<std::array<Linie, LINIENPLAETZE>, RICHTUNGEN> linien_{};
};

using Taten = std::vector<std::string>;

class LinienzugTest : public ::testing::Test {
protected:
    LinienzugTest() {
        linien(LINKS, {20000});
        linien(RECHTS, {45000});
        linien(OBEN, {21000});
        linien(UNTEN, {46000});
    }
    /// The lines of a direction from slot 1 on, on the layer that is shown.
    void linien(std::size_t d, const std::vector<std::int32_t>& werte) {
        for (int slot = 1; slot < LINIENPLAETZE; ++slot) {
            J(slot, d) =
                slot <= static_cast<int>(werte.size()) ? werte[static_cast<std::size_t>(slot - 1)] : 0;
            flaeche.PositionFestlegen(d, slot);
        }
        flaeche.gespeichert = stand.linien;
    }
    static std::vector<std::int32_t> reihe(std::int32_t erste, std::int32_t schritt, int anzahl) {
        std::vector<std::int32_t> werte;
        for (int i = 0; i < anzahl; ++i)
            werte.push_back(erste + i * schritt);
        return werte;
    }
    std::int32_t& J(int slot, std::size_t d) { return stand.ebene()[static_cast<std::size_t>(slot)][d]; }
    void links(double x, double y) { zug.gedrueckt(Maustaste::Links, x, y); }

    /// What is to be seen of a line: where its control stands, and whether it is red.
    using Bild = std::pair<double, bool>;
    Bild bild(std::size_t d, int slot) {
        return {flaeche.linie(d, slot - 1).ort, flaeche.linie(d, slot - 1).rot};
    }

    Justierstand stand;
    Probeflaeche flaeche{stand};
    Linienzug zug{stand, flaeche};
};

using Greif = Linienzug::Greifindizes;

// Far from every line of the fixture, in x and in y.
constexpr double FREI = 33000;

} // namespace

// --- a press on the plane ---

TEST_F(LinienzugTest, EinKlickNebenAlleLinienWaehltDasFeld) {
    links(30000.5, 31001.5);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Bereich 30000,31002"})) << "ties go to the even number";
    EXPECT_TRUE(flaeche.tafelnGesperrt) << "nothing was chosen yet when the panels were looked at";
    EXPECT_EQ(flaeche.zurueckgestellt, 1);

    links(30000, 30000);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Bereich 30000,30000"}));
    EXPECT_FALSE(flaeche.feldGewaehlt);
    EXPECT_FALSE(flaeche.tafelnGesperrt);
    EXPECT_EQ(flaeche.zurueckgestellt, 1);
}

TEST_F(LinienzugTest, NurWasNaeherAlsZweihundertLiegtTrifft) {
    for (const double ort : {19800.0, 20200.0}) {
        links(ort, FREI);
        EXPECT_EQ(zug.Greifindex(), Greif{}) << ort;
        flaeche.feldGewaehlt = false;
    }
    for (const double ort : {19800.5, 20199.5}) {
        Linienzug anderer(stand, flaeche);
        anderer.gedrueckt(Maustaste::Links, ort, FREI);
        EXPECT_EQ(anderer.Greifindex(), (Greif{1, 0, 0, 0})) << ort;
        flaeche.linieFaerben(LINKS, 0, false);
    }
}

TEST_F(LinienzugTest, AufnehmenFaerbtRotUndMerktDenOrt) {
    links(20100, FREI);
    EXPECT_EQ(bild(LINKS, 1), Bild(20000, true));
    EXPECT_EQ(zug.Greifindex(), (Greif{1, 0, 0, 0}));
    EXPECT_EQ(zug.Greifposition().x, 20000);
    EXPECT_EQ(flaeche.abholen(), Taten{}) << "a hit line is no click on a field";
    EXPECT_TRUE(flaeche.tafelnGesperrt);
    EXPECT_EQ(flaeche.zurueckgestellt, 1);
    EXPECT_TRUE(zug.haelt());
}

TEST_F(LinienzugTest, GreifindexStehtInEigenerReihenfolge) {
    links(FREI, 21000);
    EXPECT_EQ(zug.Greifindex(), (Greif{0, 1, 0, 0}));
    EXPECT_EQ(zug.Greifposition().y, 21000);
    links(45000, FREI);
    EXPECT_EQ(zug.Greifindex(), (Greif{0, 0, 1, 0}));
    links(FREI, 46000);
    EXPECT_EQ(zug.Greifindex(), (Greif{0, 0, 0, 1}));
}

TEST_F(LinienzugTest, AbsetzenSpeichertErstDieLinieUndZiehtDannDieAktionenNach) {
    links(20000, FREI);
    zug.bewegt(18000.4, FREI);
    links(18000.4, FREI);
    EXPECT_EQ(flaeche.abholen(),
              (Taten{"Linien speichern", "verschieben Links 20000 nach 18000", "Zeichnen"}));
    EXPECT_EQ(bild(LINKS, 1), Bild(18000, false));
    EXPECT_EQ(zug.Greifindex(), Greif{});
    EXPECT_FALSE(flaeche.tafelnGesperrt);
    EXPECT_FALSE(zug.haelt());
    EXPECT_EQ(flaeche.gespeichert, stand.linien);
}

TEST_F(LinienzugTest, AuchUnbewegtWirdAbgesetztUndGespeichert) {
    for (const auto& [x, y, tat] : std::vector<std::tuple<double, double, std::string>>{
             {20000, FREI, "verschieben Links 20000 nach 20000"},
             {45000, FREI, "verschieben Rechts 45000 nach 45000"},
             {FREI, 21000, "verschieben Oben 21000 nach 21000"},
             {FREI, 46000, "verschieben Unten 46000 nach 46000"}}) {
        links(x, y);
        links(x, y);
        EXPECT_EQ(flaeche.abholen(), (Taten{"Linien speichern", tat, "Zeichnen"}));
    }
}

TEST_F(LinienzugTest, AnEinerKreuzungKommenBeideLinienMit) {
    links(20100, 20900);
    EXPECT_EQ(zug.Greifindex(), (Greif{1, 1, 0, 0}));
    EXPECT_EQ(zug.Greifposition(), (Stickposition{20000, 21000}));
    zug.bewegt(19000, 22000);
    EXPECT_EQ(J(1, LINKS), 19000);
    EXPECT_EQ(J(1, OBEN), 22000);
    links(19000, 22000);
    EXPECT_EQ(flaeche.abholen(),
              (Taten{"Linien speichern", "verschieben Links 20000 nach 19000", "Linien speichern",
                     "verschieben Oben 21000 nach 22000", "Zeichnen"}));
    EXPECT_EQ(zug.Greifindex(), Greif{});
}

TEST_F(LinienzugTest, VonMehrerenNahenLinienBewegtSichDieLetzte) {
    linien(LINKS, {20000, 19900});
    links(19950, FREI);
    EXPECT_EQ(zug.Greifindex(), (Greif{2, 0, 0, 0}));
    EXPECT_EQ(bild(LINKS, 1), Bild(20000, true));
    EXPECT_EQ(bild(LINKS, 2), Bild(19900, true));
    EXPECT_EQ(zug.Greifposition().x, 19900);
}

TEST_F(LinienzugTest, GegenueberliegendeLinienSchliessenSichAus) {
    linien(LINKS, {32000});
    linien(RECHTS, {32100});
    linien(OBEN, {32000});
    linien(UNTEN, {32100});
    links(32050, 32050);
    EXPECT_EQ(zug.Greifindex(), (Greif{0, 0, 1, 1}));
    EXPECT_EQ(zug.Greifposition(), (Stickposition{32100, 32100}));
}

TEST_F(LinienzugTest, EineVerfehlteRoteLinieWirdSchwarzUndLiegtWiederAmAltenOrt) {
    links(20000, FREI);
    zug.bewegt(18000, FREI);
    links(FREI, FREI);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Bereich 33000,33000"}));
    EXPECT_EQ(bild(LINKS, 1), Bild(20000, false));
    zug.bewegt(10000, FREI);
    EXPECT_EQ(J(1, LINKS), 20000) << "it no longer follows";
    flaeche.feldGewaehlt = false;
    zug.pfeilGedrueckt(Maustaste::Links, RECHTS);
    EXPECT_EQ(flaeche.gespeichert[0][1][LINKS], 20000) << "where its actions are";
}

// It lies at its old place again, but the press that missed it does not pick it up there.
TEST_F(LinienzugTest, EinKlickAmAltenOrtNimmtDieVerfehlteLinieErstBeimNaechstenMalAuf) {
    linien(LINKS, {29659});
    links(29656, FREI);
    zug.bewegt(29567, FREI);
    zug.gedrueckt(Maustaste::Andere, 29567, FREI);
    flaeche.abholen();
    links(29823, FREI);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Bereich 29823,33000"}));
    EXPECT_EQ(bild(LINKS, 1), Bild(29659, false));
    EXPECT_EQ(zug.Greifindex(), Greif{});
    EXPECT_FALSE(zug.haelt());
    flaeche.feldGewaehlt = false;
    links(29823, FREI);
    EXPECT_EQ(bild(LINKS, 1), Bild(29659, true));
    EXPECT_EQ(zug.Greifindex(), (Greif{1, 0, 0, 0}));
}

TEST_F(LinienzugTest, WoEineVerfehlteLinieWiederLiegtWirdEineAndereAufgenommen) {
    linien(LINKS, {30000, 29850});
    links(30150, FREI); // out of reach of the other one
    zug.bewegt(31000, FREI);
    links(29950, FREI);
    EXPECT_EQ(bild(LINKS, 1), Bild(30000, false));
    EXPECT_EQ(bild(LINKS, 2), Bild(29850, true)) << "which was at rest";
    EXPECT_EQ(zug.Greifindex(), (Greif{2, 0, 0, 0}));
}

TEST_F(LinienzugTest, NachEinerAnderenTasteLiegtDieRoteLinieBisZumNaechstenKlick) {
    links(20000, FREI);
    zug.bewegt(18000, FREI);
    zug.gedrueckt(Maustaste::Andere, 18000, FREI);
    zug.bewegt(15000, FREI);
    EXPECT_EQ(bild(LINKS, 1), Bild(18000, true));
    links(18000, FREI);
    EXPECT_EQ(flaeche.abholen(),
              (Taten{"Linien speichern", "verschieben Links 20000 nach 18000", "Zeichnen"}));
}

TEST_F(LinienzugTest, WerEineKreuzungAnEinerLinieVerfehltSetztNurDieAndereAb) {
    links(20000, 21000);
    zug.bewegt(18000, 23000);
    links(18000, 30000); // y is far off
    EXPECT_EQ(flaeche.abholen(),
              (Taten{"Linien speichern", "verschieben Links 20000 nach 18000", "Zeichnen"}));
    EXPECT_EQ(bild(OBEN, 1), Bild(21000, false));
    EXPECT_EQ(flaeche.gespeichert[0][1][OBEN], 21000);
    EXPECT_EQ(zug.Greifindex(), Greif{});
}

TEST_F(LinienzugTest, AmLinkenUndOberenRandTrifftKeinKlick) {
    linien(LINKS, {20000, 150});
    linien(OBEN, {21000, 150});
    links(200, 200);
    EXPECT_EQ(zug.Greifindex(), Greif{});
    flaeche.feldGewaehlt = false;
    links(200.5, 200);
    EXPECT_EQ(zug.Greifindex(), (Greif{2, 0, 0, 0}));
    links(200, 200.5);
    EXPECT_EQ(zug.Greifindex(), (Greif{0, 2, 0, 0})) << "and the x line, not tested, stays red";
    EXPECT_EQ(bild(LINKS, 2), Bild(150, true));
}

TEST_F(LinienzugTest, LeerePlaetzeTrifftNiemand) {
    links(201, 201);
    EXPECT_EQ(zug.Greifindex(), Greif{});
    EXPECT_EQ(flaeche.abholen(), (Taten{"Bereich 201,201"}));
}

TEST_F(LinienzugTest, DerNeunzehntePlatzIstDerLetzteDerTrifft) {
    linien(LINKS, reihe(30000, -1000, 19));
    links(12000, FREI);
    EXPECT_EQ(zug.Greifindex(), (Greif{19, 0, 0, 0}));
}

TEST_F(LinienzugTest, SolangeEinFeldGewaehltIstWirdKeineLinieAufgenommen) {
    flaeche.feldGewaehlt = true;
    links(20000, FREI);
    EXPECT_EQ(zug.Greifindex(), Greif{});
    EXPECT_EQ(bild(LINKS, 1), Bild(20000, false));
    EXPECT_EQ(flaeche.abholen(), (Taten{"Bereich 20000,33000"}));
    EXPECT_FALSE(flaeche.feldGewaehlt);
    EXPECT_FALSE(flaeche.tafelnGesperrt);
}

TEST_F(LinienzugTest, RechtsOeffnetDieTafelNurAufEinemGewaehltenFeld) {
    zug.gedrueckt(Maustaste::Rechts, 30000, 31000);
    EXPECT_EQ(flaeche.abholen(), Taten{});
    flaeche.feldGewaehlt = true;
    zug.gedrueckt(Maustaste::Rechts, 30000, 31000);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Tafel auf 30000,31000"}));
}

TEST_F(LinienzugTest, RechtsLaesstEineAufgenommeneLinieInDerHand) {
    links(20000, FREI);
    zug.gedrueckt(Maustaste::Rechts, FREI, FREI);
    EXPECT_EQ(zug.Greifindex(), (Greif{1, 0, 0, 0}));
}

TEST_F(LinienzugTest, EinKlickNebenDieTafelSchliesstSieUndSpeichert) {
    flaeche.feldGewaehlt = true;
    flaeche.tafelOffen = true;
    links(FREI, FREI);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Tafel zu", "Aktion speichern", "Zeichnen", "Bereich 33000,33000"}));
    EXPECT_FALSE(flaeche.feldGewaehlt);
}

TEST_F(LinienzugTest, EinKlickAufEineLinieSchliesstDieTafelAuch) {
    flaeche.tafelOffen = true; // over no field, as after a change of layer
    links(20000, FREI);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Tafel zu", "Aktion speichern"}));
    EXPECT_EQ(zug.Greifindex(), (Greif{1, 0, 0, 0}));
}

// The strips hold the choice of layer: free, they would let the action go to the field of another layer.
TEST_F(LinienzugTest, ScheitertDieAktionBleibtGesperrtWasDieTafelSperrt) {
    for (const auto taste : {Maustaste::Links, Maustaste::Andere}) {
        flaeche.feldGewaehlt = true;
        flaeche.tafelOffen = true;
        flaeche.tafelnGesperrt = true;
        flaeche.aktionScheitert = 1;
        EXPECT_EQ(fehlernummer([&] { zug.gedrueckt(taste, FREI, FREI); }), 3218);
        EXPECT_TRUE(flaeche.tafelnGesperrt);
        EXPECT_TRUE(flaeche.tafelOffen);
        EXPECT_TRUE(flaeche.feldGewaehlt);
        EXPECT_EQ(flaeche.abholen(), (Taten{"Tafel zu"}));
    }
    links(FREI, FREI);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Tafel zu", "Aktion speichern", "Zeichnen", "Bereich 33000,33000"}));
    EXPECT_FALSE(flaeche.tafelnGesperrt);
}

TEST_F(LinienzugTest, ScheitertNurDasZeichnenSperrtDasGewaehlteFeldWeiter) {
    flaeche.feldGewaehlt = true;
    flaeche.tafelOffen = true;
    flaeche.tafelnGesperrt = true;
    flaeche.zeichnenScheitert = 1;
    EXPECT_EQ(fehlernummer([&] { links(FREI, FREI); }), 3218);
    EXPECT_FALSE(flaeche.tafelOffen) << "the action is safe";
    EXPECT_TRUE(flaeche.feldGewaehlt);
    EXPECT_TRUE(flaeche.tafelnGesperrt);
}

TEST_F(LinienzugTest, UeberEinerTafelDieOffenBleibtWirdKeineLinieAufgenommen) {
    flaeche.tafelOffen = true; // over no field
    flaeche.aktionScheitert = 1;
    EXPECT_EQ(fehlernummer([&] { links(20000, FREI); }), 3218);
    EXPECT_FALSE(zug.haelt());
    EXPECT_TRUE(flaeche.tafelnGesperrt);
}

TEST_F(LinienzugTest, DieMittlereTasteSchliesstDieTafelUndLaesstDasFeld) {
    flaeche.feldGewaehlt = true;
    flaeche.tafelOffen = true;
    zug.gedrueckt(Maustaste::Andere, 1234, 4321);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Tafel zu", "Aktion speichern", "Zeichnen"}));
    EXPECT_EQ(stand.Klickposition, (Stickposition{1234, 4321}));
    EXPECT_TRUE(flaeche.feldGewaehlt);
}

TEST_F(LinienzugTest, EineRoteLinieJederRichtungGiltAlsGehalten) {
    for (const auto& [x, y] : {std::pair{20000.0, FREI}, {45000.0, FREI}, {FREI, 21000.0}, {FREI, 46000.0}}) {
        links(x, y);
        zug.gedrueckt(Maustaste::Andere, x, y);
        EXPECT_EQ(zug.Greifindex(), Greif{});
        EXPECT_TRUE(zug.haelt()) << x << "," << y;
        links(x, y);
        EXPECT_FALSE(zug.haelt());
    }
}

TEST_F(LinienzugTest, DieMittlereTasteLaesstEineLinieLosAberRot) {
    links(20000, FREI);
    zug.bewegt(19000, FREI);
    zug.gedrueckt(Maustaste::Andere, 19000, FREI);
    EXPECT_EQ(zug.Greifindex(), Greif{});
    EXPECT_TRUE(zug.haelt());
    zug.bewegt(15000, FREI);
    EXPECT_EQ(J(1, LINKS), 19000);
    flaeche.abholen();
    links(19000, FREI);
    EXPECT_EQ(flaeche.abholen(),
              (Taten{"Linien speichern", "verschieben Links 20000 nach 19000", "Zeichnen"}));
}

// --- limits of a move ---

namespace {

struct Zugfall {
    const char* was;
    std::size_t richtung;
    int slot;
    double ort;
    std::int32_t danach;
    bool amRand;
};
void PrintTo(const Zugfall& fall, std::ostream* strom) {
    *strom << fall.was << " at " << fall.ort;
}

class LinienzugGrenze : public LinienzugTest, public ::testing::WithParamInterface<Zugfall> {
protected:
    LinienzugGrenze() {
        linien(LINKS, {30000, 20000, 10000});
        linien(RECHTS, {36000, 46000, 56000});
        linien(OBEN, {30000, 20000, 10000});
        linien(UNTEN, {36000, 46000, 56000});
    }
    static bool inX(std::size_t d) { return d == LINKS || d == RECHTS; }
    void aufnehmen(std::size_t d, int slot) {
        const double ort = J(slot, d);
        inX(d) ? links(ort, 33000) : links(33000, ort);
    }
    void ziehen(std::size_t d, double ort) { inX(d) ? zug.bewegt(ort, 33000) : zug.bewegt(33000, ort); }
};

} // namespace

TEST_P(LinienzugGrenze, Stimmt) {
    const auto& fall = GetParam();
    aufnehmen(fall.richtung, fall.slot);
    ziehen(fall.richtung, fall.ort);
    EXPECT_EQ(J(fall.slot, fall.richtung), fall.danach);
    EXPECT_EQ(flaeche.linienort(fall.richtung, fall.slot - 1), fall.danach) << "shown where it is";
    EXPECT_EQ(zug.RandX(), inX(fall.richtung) && fall.amRand);
    EXPECT_EQ(zug.RandY(), !inX(fall.richtung) && fall.amRand);
    EXPECT_EQ(flaeche.abholen(), Taten{}) << "nothing is saved on the way";

    inX(fall.richtung) ? links(fall.danach, 33000) : links(33000, fall.danach);
    EXPECT_EQ(!flaeche.abholen().empty(), !fall.amRand) << "at a limit it can't be put down";
}

INSTANTIATE_TEST_SUITE_P(
    AlleGrenzen, LinienzugGrenze,
    ::testing::Values(Zugfall{"left, inner line", LINKS, 2, 29499, 29499, false},
                      Zugfall{"left, inner line", LINKS, 2, 29500, 29500, false},
                      Zugfall{"left, inner line", LINKS, 2, 29500.5, 29499, true},
                      Zugfall{"left, outer line", LINKS, 2, 10500, 10500, false},
                      Zugfall{"left, outer line", LINKS, 2, 10499.5, 10501, true},
                      Zugfall{"left, no outer line", LINKS, 3, 500, 500, false},
                      Zugfall{"left, no outer line", LINKS, 3, 499.5, 501, true},
                      Zugfall{"left, first against right", LINKS, 1, 35500, 35500, false},
                      Zugfall{"left, first against right", LINKS, 1, 35501, 35499, true},
                      Zugfall{"right, inner line", RECHTS, 2, 36500, 36500, false},
                      Zugfall{"right, inner line", RECHTS, 2, 36499.5, 36501, true},
                      Zugfall{"right, outer line", RECHTS, 2, 55500, 55500, false},
                      Zugfall{"right, outer line", RECHTS, 2, 55500.5, 55499, true},
                      Zugfall{"right, no outer line", RECHTS, 3, 65000, 65000, false},
                      Zugfall{"right, no outer line", RECHTS, 3, 65000.5, 64999, true},
                      Zugfall{"right, first against left", RECHTS, 1, 30500, 30500, false},
                      Zugfall{"right, first against left", RECHTS, 1, 30499, 30501, true},
                      Zugfall{"top, inner line", OBEN, 2, 29500, 29500, false},
                      Zugfall{"top, inner line", OBEN, 2, 29501, 29499, true},
                      Zugfall{"top, outer line", OBEN, 2, 10500, 10500, false},
                      Zugfall{"top, outer line", OBEN, 2, 10499, 10501, true},
                      Zugfall{"top, no outer line", OBEN, 3, 500, 500, false},
                      Zugfall{"top, no outer line", OBEN, 3, 499, 501, true},
                      Zugfall{"top, first against bottom", OBEN, 1, 35501, 35499, true},
                      Zugfall{"bottom, inner line", UNTEN, 2, 36500, 36500, false},
                      Zugfall{"bottom, inner line", UNTEN, 2, 36499, 36501, true},
                      Zugfall{"bottom, outer line", UNTEN, 2, 55500, 55500, false},
                      Zugfall{"bottom, outer line", UNTEN, 2, 55501, 55499, true},
                      Zugfall{"bottom, no outer line", UNTEN, 3, 64535, 64535, false},
                      Zugfall{"bottom, no outer line", UNTEN, 3, 64535.5, 56000, true},
                      Zugfall{"bottom, first against top", UNTEN, 1, 30499, 30501, true}));

TEST_F(LinienzugGrenze, UntenBleibtDieLinieUndDerWertGehtInDenNulltenPlatzVonRechts) {
    aufnehmen(UNTEN, 3);
    ziehen(UNTEN, 64000);
    ziehen(UNTEN, 65000);
    EXPECT_EQ(J(3, UNTEN), 64000);
    EXPECT_EQ(J(0, RECHTS), 64534);
    EXPECT_TRUE(zug.RandY());
    EXPECT_FALSE(zug.RandX());
}

TEST_F(LinienzugGrenze, UntenSchreibtInEineMitAufgenommeneRechteLinie) {
    links(56000, 56000); // the crossing of both outermost lines
    ASSERT_EQ(zug.Greifindex(), (Greif{0, 0, 3, 3}));
    zug.bewegt(57000, 65000);
    EXPECT_EQ(J(3, UNTEN), 56000);
    EXPECT_EQ(J(3, RECHTS), 64534);
    EXPECT_EQ(J(0, RECHTS), 0);
    EXPECT_EQ(flaeche.linienort(RECHTS, 2), 57000) << "the right line was placed before that";
}

TEST_F(LinienzugGrenze, DerRandHaeltDieLinieBisDieMausZurueckkommt) {
    aufnehmen(LINKS, 2);
    ziehen(LINKS, 29900);
    EXPECT_TRUE(zug.RandX());
    for (const auto taste : {Maustaste::Links, Maustaste::Rechts, Maustaste::Andere})
        zug.gedrueckt(taste, 29499, 33000);
    EXPECT_EQ(zug.Greifindex(), (Greif{2, 0, 0, 0}));
    EXPECT_EQ(flaeche.abholen(), Taten{});
    ziehen(LINKS, 29000);
    EXPECT_FALSE(zug.RandX());
    links(29000, 33000);
    EXPECT_EQ(flaeche.abholen(),
              (Taten{"Linien speichern", "verschieben Links 20000 nach 29000", "Zeichnen"}));
}

TEST_F(LinienzugGrenze, DieNeunzehnteLinieHatNieEineAeussere) {
    linien(LINKS, reihe(30000, -1000, 19));
    aufnehmen(LINKS, 19);
    ziehen(LINKS, 499);
    EXPECT_EQ(J(19, LINKS), 501);
}

TEST_F(LinienzugGrenze, ObEineAeussereLinieDaIstSagtIhrControl) {
    J(3, LINKS) = 15000; // read anew from the store, not shown there yet
    aufnehmen(LINKS, 2);
    ziehen(LINKS, 15499);
    EXPECT_EQ(J(2, LINKS), 15501);
    flaeche.linie(LINKS, 2).gezeigt = false;
    ziehen(LINKS, 5000);
    EXPECT_EQ(J(2, LINKS), 5000);
}

TEST_F(LinienzugGrenze, OhneAufgenommeneLinieTutDieMausNichts) {
    const auto vorher = stand.linien;
    zug.bewegt(0, 0);
    zug.bewegt(65535, 65535);
    EXPECT_EQ(stand.linien, vorher);
}

TEST_F(LinienzugGrenze, JedeEbeneHatIhreLinien) {
    stand.EditorEbene = 2;
    linien(LINKS, {25000});
    linien(RECHTS, {45000});
    links(25000, FREI);
    zug.bewegt(24000, FREI);
    EXPECT_EQ(stand.linien[2][1][LINKS], 24000);
    EXPECT_EQ(stand.linien[0][1][LINKS], 30000);
}

TEST_F(LinienzugGrenze, FremdeWerteLaufenNichtUeber) {
    linien(LINKS, {30000});
    links(30000, FREI);
    J(1, RECHTS) = std::numeric_limits<std::int32_t>::min();
    zug.bewegt(20000, FREI);
    EXPECT_EQ(J(1, LINKS), std::numeric_limits<std::int32_t>::min());
    EXPECT_FALSE(flaeche.linie(LINKS, 0).gezeigt);
    EXPECT_TRUE(zug.haelt()) << "out of sight, but in the hand";
}

// --- arrows ---

namespace {
struct Neufall {
    std::size_t richtung;
    std::int32_t letzte;
    std::int32_t neu; // 0: no room
};
} // namespace

TEST_F(LinienzugTest, EinPfeilLegtDieNeueLinieTausendWeiterAussen) {
    for (const auto& fall : {Neufall{LINKS, 1501, 501}, Neufall{LINKS, 1500, 0}, Neufall{OBEN, 1501, 501},
                             Neufall{OBEN, 1500, 0}, Neufall{RECHTS, 64034, 65034}, Neufall{RECHTS, 64035, 0},
                             Neufall{UNTEN, 64034, 65034}, Neufall{UNTEN, 64035, 0}}) {
        linien(fall.richtung, {fall.letzte});
        zug.pfeilGedrueckt(Maustaste::Links, fall.richtung);
        EXPECT_EQ(J(2, fall.richtung), fall.neu) << NAMEN[fall.richtung] << fall.letzte;
        EXPECT_EQ(flaeche.linie(fall.richtung, 1).gezeigt, fall.neu != 0);
        EXPECT_EQ(flaeche.abholen(), fall.neu != 0
                                         ? (Taten{"Linien speichern", "Zeichnen"})
                                         : (Taten{"Box: Es kann keine neu Linie erstellt werden!"}));
    }
}

TEST_F(LinienzugTest, BeiNeunzehnLinienWandertDieLetzte) {
    linien(LINKS, reihe(30000, -1000, 18));
    zug.pfeilGedrueckt(Maustaste::Links, LINKS);
    EXPECT_EQ(J(19, LINKS), 12000);
    J(19, LINKS) = 7000;
    zug.pfeilGedrueckt(Maustaste::Links, LINKS);
    EXPECT_EQ(J(19, LINKS), 12000);
    EXPECT_EQ(J(20, LINKS), 0);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Linien speichern", "Zeichnen", "Linien speichern",
                                        "verschieben Links 7000 nach 12000", "Zeichnen"}));
}

TEST_F(LinienzugTest, FolgenIhrDieAktionenNichtWandertDieNeunzehnteNicht) {
    linien(OBEN, reihe(30000, -1000, 18));
    J(19, OBEN) = 7000;
    flaeche.speichernScheitert = 1;
    EXPECT_EQ(fehlernummer([&] { zug.pfeilGedrueckt(Maustaste::Links, OBEN); }), 3218);
    EXPECT_EQ(bild(OBEN, 19), Bild(7000, false));
    EXPECT_EQ(flaeche.abholen(), Taten{});
}

TEST_F(LinienzugTest, EinPfeilLegtZuerstZurueckWasInDerHandIst) {
    linien(LINKS, {20000, 15000});
    for (const auto taste : {Maustaste::Links, Maustaste::Rechts}) {
        links(15000, FREI);
        zug.bewegt(5000, FREI);
        zug.pfeilGedrueckt(taste, LINKS);
        EXPECT_EQ(bild(LINKS, 2), Bild(15000, false));
        EXPECT_EQ(flaeche.gespeichert[0][2][LINKS], 15000);
        EXPECT_FALSE(flaeche.tafelnGesperrt);
        zug.bewegt(3000, FREI);
        EXPECT_EQ(J(2, LINKS), 15000) << "it no longer follows";
    }
    EXPECT_EQ(flaeche.abholen(), (Taten{"Linien speichern", "Zeichnen", "Aktionen loeschen Links 14000",
                                        "Linien speichern", "Zeichnen"}));
}

TEST_F(LinienzugTest, WerDieLinieInDerHandEntferntFragtNachIhremAltenOrt) {
    linien(RECHTS, {45000, 46000, 47000});
    links(47000, FREI);
    zug.bewegt(60000, FREI);
    for (int i = 0; i < 2; ++i)
        zug.pfeilGedrueckt(Maustaste::Rechts, RECHTS);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Aktionen loeschen Rechts 47000", "Linien speichern", "Zeichnen",
                                        "Aktionen loeschen Rechts 46000", "Linien speichern", "Zeichnen"}));
    zug.bewegt(50000, FREI);
    EXPECT_EQ(J(3, RECHTS), 0) << "a line that is gone follows no mouse";
}

TEST_F(LinienzugTest, AnDerGrenzeLosgelassenIstDieEbeneWiederFrei) {
    links(20000, 21000);
    zug.bewegt(0, 0);
    EXPECT_TRUE(zug.RandX() && zug.RandY());
    zug.loslassen();
    EXPECT_FALSE(zug.RandX() || zug.RandY() || zug.haelt() || flaeche.tafelnGesperrt);
    EXPECT_EQ(bild(LINKS, 1), Bild(20000, false));
    EXPECT_EQ(bild(OBEN, 1), Bild(21000, false));
    EXPECT_EQ(flaeche.abholen(), Taten{});
    links(20000, FREI);
    EXPECT_EQ(zug.Greifindex(), (Greif{1, 0, 0, 0}));
}

TEST_F(LinienzugTest, EntfernenNimmtDieAeussersteLinie) {
    linien(RECHTS, {45000, 46000, 47000});
    for (const auto taste : {Maustaste::Rechts, Maustaste::Andere})
        zug.pfeilGedrueckt(taste, RECHTS);
    EXPECT_EQ(J(3, RECHTS), 0);
    EXPECT_EQ(J(2, RECHTS), 0);
    EXPECT_FALSE(flaeche.linie(RECHTS, 1).gezeigt);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Aktionen loeschen Rechts 47000", "Linien speichern", "Zeichnen",
                                        "Aktionen loeschen Rechts 46000", "Linien speichern", "Zeichnen"}));
}

TEST_F(LinienzugTest, EntfernenBeiNeunzehnUndBeiAchtzehnLinien) {
    linien(UNTEN, reihe(36000, 1000, 19));
    zug.pfeilGedrueckt(Maustaste::Rechts, UNTEN);
    EXPECT_EQ(J(19, UNTEN), 0);
    EXPECT_EQ(J(18, UNTEN), 53000);
    zug.pfeilGedrueckt(Maustaste::Rechts, UNTEN);
    EXPECT_EQ(J(18, UNTEN), 0);
    EXPECT_EQ(J(17, UNTEN), 52000);
}

TEST_F(LinienzugTest, DieMittellinieBleibt) {
    for (std::size_t d = 0; d < RICHTUNGEN; ++d)
        zug.pfeilGedrueckt(Maustaste::Rechts, d);
    const std::string box = "Box: Die Mittellinie kann nicht gelöscht werden!";
    EXPECT_EQ(flaeche.abholen(), (Taten{box, box, box, box}));
    EXPECT_EQ(J(1, LINKS), 20000);
}

TEST_F(LinienzugTest, EineLinieMitAktionenBleibt) {
    linien(LINKS, {20000, 10000});
    flaeche.aktionBleibt = true;
    zug.pfeilGedrueckt(Maustaste::Rechts, LINKS);
    EXPECT_EQ(flaeche.abholen(),
              (Taten{"Aktionen loeschen Links 10000",
                     "Box: Diese Linie ist mit Aktionen verbunden. Löschen Sie diese, bevor "
                     "Sie die Linie entfernen!",
                     "Linien speichern", "Zeichnen"}));
    EXPECT_EQ(J(2, LINKS), 10000);
    EXPECT_TRUE(flaeche.linie(LINKS, 1).gezeigt);
}

TEST_F(LinienzugTest, PfeileRuhenSolangeFeldOderTafelZuSehenIst) {
    for (bool* was : {&flaeche.feldGewaehlt, &flaeche.tafelOffen}) {
        *was = true;
        zug.pfeilGedrueckt(Maustaste::Links, LINKS);
        zug.pfeilGedrueckt(Maustaste::Rechts, LINKS);
        *was = false;
    }
    EXPECT_EQ(flaeche.abholen(), Taten{});
    EXPECT_EQ(J(2, LINKS), 0);
}

// --- a store that fails ---

TEST_F(LinienzugTest, ScheitertDasSpeichernBleibtDerAlteOrt) {
    links(20000, FREI);
    zug.bewegt(18000, FREI);
    flaeche.speichernScheitert = 1;
    EXPECT_EQ(fehlernummer([&] { links(18000, FREI); }), 3218);
    EXPECT_EQ(bild(LINKS, 1), Bild(20000, false));
    EXPECT_EQ(J(1, LINKS), 20000);
    EXPECT_EQ(flaeche.gespeichert[0][1][LINKS], 20000);
    EXPECT_FALSE(flaeche.tafelnGesperrt) << "the form stays usable";
    EXPECT_FALSE(zug.haelt());
}

TEST_F(LinienzugTest, ScheitertDasSpeichernHatJedeLinieIhrenEigenenAltenOrt) {
    linien(LINKS, {20000, 19900});
    links(19950, FREI);
    flaeche.speichernScheitert = 1;
    EXPECT_EQ(fehlernummer([&] { links(19950, FREI); }), 3218);
    EXPECT_EQ(bild(LINKS, 1), Bild(20000, false)) << "not where the one picked up last was";
    EXPECT_EQ(bild(LINKS, 2), Bild(19900, false));

    linien(LINKS, {32000});
    linien(RECHTS, {32100});
    links(32050, FREI);
    flaeche.speichernScheitert = 1;
    EXPECT_EQ(fehlernummer([&] { links(32050, FREI); }), 3218);
    EXPECT_EQ(bild(LINKS, 1), Bild(32000, false));
    EXPECT_EQ(flaeche.gespeichert[0][1][LINKS], 32000);
}

TEST_F(LinienzugTest, DieNochGehalteneLinieDerKreuzungWirdAmAltenOrtGespeichert) {
    links(20000, 21000);
    zug.bewegt(18000, 23000);
    links(18000, 30000);
    EXPECT_EQ(flaeche.gespeichert[0][1][LINKS], 18000);
    EXPECT_EQ(flaeche.gespeichert[0][1][OBEN], 21000) << "where its actions are";

    links(18000, 21000);
    zug.bewegt(19000, 22000);
    flaeche.obenScheitert = true;
    EXPECT_EQ(fehlernummer([&] { links(19000, 22000); }), 3218);
    EXPECT_EQ(flaeche.gespeichert[0][1][LINKS], 19000);
    EXPECT_EQ(flaeche.gespeichert[0][1][OBEN], 21000);
}

TEST_F(LinienzugTest, ScheitertEineLinieDerKreuzungBleibenBeideAmAltenOrt) {
    links(20000, 21000);
    zug.bewegt(18000, 23000);
    flaeche.speichernScheitert = 1;
    EXPECT_EQ(fehlernummer([&] { links(18000, 23000); }), 3218);
    EXPECT_EQ(bild(LINKS, 1), Bild(20000, false));
    EXPECT_EQ(bild(OBEN, 1), Bild(21000, false));
    EXPECT_EQ(flaeche.gespeichert[0][1][LINKS], 20000);
    EXPECT_EQ(flaeche.gespeichert[0][1][OBEN], 21000);
    EXPECT_FALSE(zug.haelt());
    zug.bewegt(10000, 10000);
    EXPECT_EQ(J(1, OBEN), 21000);
}

TEST_F(LinienzugTest, ScheitertDieZweiteLinieDerKreuzungBleibtDieErsteAbgesetzt) {
    links(20000, 21000);
    zug.bewegt(18000, 23000);
    flaeche.obenScheitert = true;
    EXPECT_EQ(fehlernummer([&] { links(18000, 23000); }), 3218);
    EXPECT_EQ(bild(LINKS, 1), Bild(18000, false));
    EXPECT_EQ(bild(OBEN, 1), Bild(21000, false));
    EXPECT_EQ(flaeche.gespeichert, stand.linien);
    EXPECT_FALSE(zug.haelt());
}

TEST_F(LinienzugTest, ScheitertDasAbsetzenKommtAuchKeineNeueLinieInDieHand) {
    linien(OBEN, {21000});
    linien(LINKS, {20000, 15000});
    links(15000, FREI);
    zug.bewegt(14000, 21000);
    flaeche.speichernScheitert = 2;
    EXPECT_EQ(fehlernummer([&] { links(14000, 21000); }), 3218); // on the line above, too
    EXPECT_EQ(bild(LINKS, 2), Bild(15000, false));
    EXPECT_EQ(bild(OBEN, 1), Bild(21000, false));
    EXPECT_EQ(zug.Greifindex(), Greif{});
}

TEST_F(LinienzugTest, ScheitertEinPfeilBleibtAllesWieEsWar) {
    linien(LINKS, {20000, 10000});
    flaeche.speichernScheitert = 1;
    EXPECT_EQ(fehlernummer([&] { zug.pfeilGedrueckt(Maustaste::Links, LINKS); }), 3218);
    EXPECT_EQ(J(3, LINKS), 0);
    EXPECT_FALSE(flaeche.linie(LINKS, 2).gezeigt);

    flaeche.speichernScheitert = 1;
    EXPECT_EQ(fehlernummer([&] { zug.pfeilGedrueckt(Maustaste::Rechts, LINKS); }), 3218);
    EXPECT_EQ(J(2, LINKS), 10000);
    EXPECT_TRUE(flaeche.linie(LINKS, 1).gezeigt);

    flaeche.loeschenScheitert = 1;
    EXPECT_EQ(fehlernummer([&] { zug.pfeilGedrueckt(Maustaste::Rechts, LINKS); }), 3218);
    EXPECT_EQ(J(2, LINKS), 10000);
}

// --- what a press would do ---

// --- what is in the hand, and what would be ---

TEST_F(LinienzugTest, AufnehmbarIstWasEinDruckAufnaehme) {
    using Griffe = std::vector<Linienzug::Griff>;
    linien(RECHTS, {45000, 45150});
    EXPECT_EQ(zug.aufnehmbare(FREI, FREI), Griffe{});
    EXPECT_EQ(zug.aufnehmbare(20199, 45801), (Griffe{{LINKS, 1, 20000}, {UNTEN, 1, 46000}}));
    EXPECT_EQ(zug.aufnehmbare(20200, FREI), Griffe{}) << "too far";
    EXPECT_EQ(zug.aufnehmbare(45100, FREI), (Griffe{{RECHTS, 2, 45150}})) << "the outer one moves";
    linien(LINKS, {100});
    EXPECT_EQ(zug.aufnehmbare(150, FREI), Griffe{}) << "near the edge no line is hit";
    linien(OBEN, {});
    EXPECT_EQ(zug.aufnehmbare(FREI, 199), Griffe{}) << "0 is no line";
}

TEST_F(LinienzugTest, DieAbgelegtenLinienSindDieOhneDieHand) {
    const auto vorher = stand.ebene();
    zug.gedrueckt(Maustaste::Links, 20000, 21000);
    zug.bewegt(15000, 25000);
    EXPECT_EQ(J(1, LINKS), 15000);
    EXPECT_EQ(zug.griffe(), (std::vector<Linienzug::Griff>{{LINKS, 1, 20000}, {OBEN, 1, 21000}}));
    EXPECT_EQ(zug.abgelegte(), vorher);
    zug.gedrueckt(Maustaste::Links, 15000, 25000);
    EXPECT_TRUE(zug.griffe().empty());
    EXPECT_EQ(zug.abgelegte(), stand.ebene());
}

TEST_F(LinienzugTest, DieFolgeSagtWasEinKlickTut) {
    EXPECT_EQ(zug.folge(FREI, FREI), Klickfolge::Wahl);
    EXPECT_EQ(zug.folge(20100, FREI), Klickfolge::Aufnahme);
    EXPECT_EQ(zug.folge(FREI, 45801), Klickfolge::Aufnahme);
    EXPECT_EQ(zug.folge(19800, FREI), Klickfolge::Wahl) << "too far";
    links(20000, FREI);
    EXPECT_EQ(zug.folge(20199, FREI), Klickfolge::Absetzen);
    EXPECT_EQ(zug.folge(FREI, FREI), Klickfolge::Zuruecklegen);
    EXPECT_EQ(zug.folge(FREI, 21000), Klickfolge::Aufnahme) << "of another line";
    zug.bewegt(44800, FREI);
    EXPECT_EQ(zug.folge(44499, FREI), Klickfolge::Nichts) << "at its limit";
    zug.loslassen();
    links(FREI, FREI);
    EXPECT_EQ(zug.folge(20000, FREI), Klickfolge::Abwahl) << "lines rest while a field is chosen";
    zug.gedrueckt(Maustaste::Rechts, FREI, FREI);
    EXPECT_EQ(zug.folge(20000, FREI), Klickfolge::Tafel);
}

TEST_F(LinienzugTest, AmRandTrifftAuchDieFolgeKeineLinie) {
    linien(LINKS, {20000, 150});
    EXPECT_EQ(zug.folge(200, FREI), Klickfolge::Wahl);
    EXPECT_EQ(zug.folge(201, FREI), Klickfolge::Aufnahme);
}

// --- by the keyboard ---

TEST_F(LinienzugTest, EinFeldWirdAuchAnEinerLinieGewaehlt) {
    zug.feldWaehlen(20000, 21000);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Bereich 20000,21000"}));
    EXPECT_TRUE(flaeche.feldGewaehlt);
    EXPECT_TRUE(flaeche.tafelnGesperrt) << "as after a click";
    EXPECT_FALSE(zug.haelt());

    flaeche.tafelOffen = true;
    zug.feldWaehlen(20000, 21000);
    EXPECT_EQ(flaeche.abholen(), (Taten{"Tafel zu", "Aktion speichern", "Zeichnen", "Bereich 20000,21000"}));
    EXPECT_FALSE(flaeche.feldGewaehlt);
    EXPECT_FALSE(flaeche.tafelnGesperrt);
}

TEST_F(LinienzugTest, WerEinFeldWaehltLegtZuerstZurueckWasErHaelt) {
    links(20000, FREI);
    zug.bewegt(44800, FREI);
    ASSERT_TRUE(zug.RandX());
    zug.feldWaehlen(FREI, FREI);
    EXPECT_EQ(bild(LINKS, 1), Bild(20000, false));
    EXPECT_FALSE(zug.haelt());
    EXPECT_TRUE(flaeche.feldGewaehlt);
}

TEST_F(LinienzugTest, EinSchrittVerschiebtUndSpeichertInEinem) {
    EXPECT_TRUE(zug.schieben(LINKS, 1, -250));
    EXPECT_EQ(bild(LINKS, 1), Bild(19750, false));
    EXPECT_EQ(flaeche.abholen(),
              (Taten{"Linien speichern", "verschieben Links 20000 nach 19750", "Zeichnen"}));
    EXPECT_EQ(flaeche.gespeichert, stand.linien);
}

TEST_F(LinienzugTest, EinSchrittEndetVorDerNaechstenLinie) {
    linien(LINKS, {20000, 19000});
    linien(RECHTS, {45000, 46000});
    EXPECT_TRUE(zug.schieben(LINKS, 2, 600));
    EXPECT_EQ(J(2, LINKS), 20000 - 501);
    EXPECT_FALSE(zug.schieben(LINKS, 2, 250)) << "it lies at its limit";
    EXPECT_TRUE(zug.schieben(RECHTS, 1, 600));
    EXPECT_EQ(J(1, RECHTS), 46000 - 501);
    linien(RECHTS, {20600});
    linien(LINKS, {20000});
    EXPECT_TRUE(zug.schieben(RECHTS, 1, -250)) << "the first line keeps clear of the opposite one";
    EXPECT_EQ(J(1, RECHTS), 20501);
}

TEST_F(LinienzugTest, EinSchrittEndetAmRandDerEbene) {
    linien(LINKS, {600});
    linien(RECHTS, {64900});
    linien(OBEN, {600});
    linien(UNTEN, {64400});
    for (std::size_t d = 0; d < RICHTUNGEN; ++d)
        EXPECT_TRUE(zug.schieben(d, 1, d == LINKS || d == OBEN ? -250 : 250));
    EXPECT_EQ(J(1, LINKS), 501);
    EXPECT_EQ(J(1, RECHTS), 64999);
    EXPECT_EQ(J(1, OBEN), 501);
    EXPECT_EQ(J(1, UNTEN), 64534);
    EXPECT_EQ(J(0, RECHTS), 0);
    flaeche.abholen();
    EXPECT_FALSE(zug.schieben(UNTEN, 1, 250));
    EXPECT_EQ(flaeche.abholen(), Taten{}) << "nothing to save";
}

TEST_F(LinienzugTest, EineLinieJenseitsDesRandesGehtNurHerein) {
    linien(RECHTS, {65500});
    EXPECT_FALSE(zug.schieben(RECHTS, 1, 250));
    EXPECT_EQ(J(1, RECHTS), 65500);
    EXPECT_TRUE(zug.schieben(RECHTS, 1, -250));
    EXPECT_EQ(J(1, RECHTS), 65250);
}

TEST_F(LinienzugTest, MitGewaehltemFeldRuhenDieLinien) {
    links(FREI, FREI);
    EXPECT_FALSE(zug.schieben(LINKS, 1, 250));
    EXPECT_EQ(J(1, LINKS), 20000);
}

TEST_F(LinienzugTest, EinSchrittDerNichtGespeichertWirdGehtZurueck) {
    flaeche.speichernScheitert = 1;
    EXPECT_EQ(fehlernummer([&] { zug.schieben(OBEN, 1, 250); }), 3218);
    EXPECT_EQ(bild(OBEN, 1), Bild(21000, false));
}

// --- where the action panel goes ---

TEST(Aktionstafelplatz, FolgtDemKlick) {
    EXPECT_EQ(aktionstafelplatz(30000, 33000, 20000, 30000), (Tafelplatz{20000, 33000}));
    EXPECT_EQ(aktionstafelplatz(30000, 33000.5, 20000, 30000), (Tafelplatz{20000, 3000.5}));
    EXPECT_EQ(aktionstafelplatz(11999, 0, 20000, 30000), (Tafelplatz{0, 0}));
    EXPECT_EQ(aktionstafelplatz(12000, 0, 20000, 30000), (Tafelplatz{2000, 0}));
    EXPECT_EQ(aktionstafelplatz(55000, 0, 20000, 30000), (Tafelplatz{45000, 0}));
    EXPECT_EQ(aktionstafelplatz(55001, 0, 20000, 30000), (Tafelplatz{45535, 0}));
}

TEST(Aktionstafelplatz, BleibtAufDerEbene) {
    EXPECT_EQ(aktionstafelplatz(12000, 0, 30000, 30000), (Tafelplatz{0, 0}));
    EXPECT_EQ(aktionstafelplatz(55000, 33000, 30000, 40000), (Tafelplatz{35535, 25535}));
    EXPECT_EQ(aktionstafelplatz(30000, 33001, 10000, 40000), (Tafelplatz{25000, 0}));
    EXPECT_EQ(aktionstafelplatz(30000, 100, 70000, 70000), (Tafelplatz{0, 0})) << "larger than the plane";
}
