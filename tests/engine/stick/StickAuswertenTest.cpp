// How the poll cycle treats the sticks: when they are evaluated, in which order, and what a change of layer
// does.
#include "tests/engine/run/Probelauf.h"
#include "tests/engine/stick/Probestick.h"

#include <gtest/gtest.h>

namespace {

using Texte = std::vector<std::string>;

constexpr std::uint32_t UMSCHALT1 = 256;
constexpr std::uint32_t UMSCHALT2 = 512;

class StickAuswertenTest : public testing::Test {
protected:
    StickAuswertenTest() { lauf.sticks = {&links, &rechts}; }

    /// Starts a run with both sticks inside their bounds.
    void starten() {
        for (auto* stick : {&links, &rechts}) {
            stick->ort = {100, 200};
            stick->grenzen = {150, 50, 250, 150};
        }
        lauf.starten();
        lauf.takt();
        lauf.anzeige.titel("");
        lauf.anzeige.abholen();
    }
    /// What the sticks were asked since the last call.
    Texte sticks() {
        auto alles = lauf.anzeige.abholen();
        std::erase_if(alles,
                      [](const auto& text) { return !text.starts_with("L ") && !text.starts_with("R "); });
        return alles;
    }

    Probelauf lauf{{"btn9", "3,0,0-0-0"}, {"btn10", "4,0,0-0-0"}};
    Probestick links{"L", lauf.anzeige.protokoll};
    Probestick rechts{"R", lauf.anzeige.protokoll};
};

TEST_F(StickAuswertenTest, InnerhalbDerGrenzenWirdNurGelesen) {
    starten();
    lauf.takt();
    EXPECT_EQ(sticks(), (Texte{"L lesen", "R lesen"}));
}

TEST_F(StickAuswertenTest, AusserhalbInXUndYWirdZweimalAusgewertetLinksVorRechts) {
    starten();
    links.ort = {300, 400};
    rechts.ort = {301, 401};
    lauf.takt();
    EXPECT_EQ(sticks(),
              (Texte{"L lesen", "L auswerten (300,400) in Ebene 0", "L auswerten (300,400) in Ebene 0",
                     "R lesen", "R auswerten (301,401) in Ebene 0", "R auswerten (301,401) in Ebene 0"}));
}

TEST_F(StickAuswertenTest, GrenzenDieDieErsteAuswertungSetztGeltenFuerDieZweite) {
    starten();
    links.ort = {300, 400};
    links.beimAuswerten = [](Probestick& stick, Stickposition&) { stick.grenzen = {400, 250, 500, 300}; };
    lauf.takt();
    EXPECT_EQ(sticks(), (Texte{"L lesen", "L auswerten (300,400) in Ebene 0", "R lesen"}));
}

TEST_F(StickAuswertenTest, NurInYAusserhalbWirdEinmalAusgewertet) {
    starten();
    rechts.ort = {100, 251};
    lauf.takt();
    EXPECT_EQ(sticks(), (Texte{"L lesen", "R lesen", "R auswerten (100,251) in Ebene 0"}));
}

TEST_F(StickAuswertenTest, DieGrenzenGehoerenZumFeld) {
    starten();
    struct Fall {
        Stickposition ort;
        bool drin;
    };
    for (const auto& fall :
         {Fall{{50, 200}, true}, Fall{{49, 200}, false}, Fall{{150, 200}, true}, Fall{{151, 200}, false},
          Fall{{100, 150}, true}, Fall{{100, 149}, false}, Fall{{100, 250}, true}, Fall{{100, 251}, false}}) {
        links.ort = fall.ort;
        lauf.takt();
        EXPECT_EQ(sticks().size(), fall.drin ? 2U : 3U) << fall.ort.x << ", " << fall.ort.y;
    }
}

TEST_F(StickAuswertenTest, GemerktWirdDiePositionAuchOhneAuswertung) {
    starten();
    links.ort = {101, 201};
    lauf.takt();
    EXPECT_EQ(links.position, (Stickposition{101, 201}));
}

TEST_F(StickAuswertenTest, EinGesperrterStickMerktSichNurSeinePosition) {
    starten();
    links.StickSperre = 1;
    links.ort = {300, 400};
    rechts.StickSperre = 2 + 4;
    rechts.ort = {301, 200};
    lauf.takt();
    EXPECT_EQ(sticks(), (Texte{"L lesen", "R lesen", "R auswerten (301,200) in Ebene 0"}));
    EXPECT_EQ(links.position, (Stickposition{300, 400}));
}

TEST_F(StickAuswertenTest, WasDieAuswertungAmOrtAendertBleibt) {
    starten();
    links.ort = {300, 200};
    links.beimAuswerten = [](Probestick&, Stickposition& wo) { wo = {7, 200}; };
    lauf.takt();
    EXPECT_EQ(links.position, (Stickposition{7, 200}));
}

TEST_F(StickAuswertenTest, DieZweiteAuswertungSiehtWasDieErsteAmOrtGeaendertHat) {
    starten();
    links.ort = {300, 400};
    links.beimAuswerten = [](Probestick&, Stickposition& wo) { wo.y += 1; };
    lauf.takt();
    EXPECT_EQ(sticks(), (Texte{"L lesen", "L auswerten (300,400) in Ebene 0",
                               "L auswerten (300,401) in Ebene 0", "R lesen"}));
    EXPECT_EQ(links.position, (Stickposition{300, 402}));
}

TEST_F(StickAuswertenTest, BeimLadenWirdNichtAusgewertet) {
    lauf.starten();
    EXPECT_EQ(sticks(), (Texte{"L laden 0", "R laden 0"}));
}

TEST_F(StickAuswertenTest, Umschalt1LoeschtDieGrenzenUndWertetErstInDerAltenEbeneAus) {
    starten();
    links.beimAuswerten = [](Probestick& stick, Stickposition&) {
        // The upper bounds are gone, the lower ones stand; nothing else sets them here.
        EXPECT_EQ(stick.grenzen, (FeldGrenzen{0, 50, 0, 150}));
    };
    lauf.takt(UMSCHALT1);
    EXPECT_EQ(sticks(),
              (Texte{"L laden 1", "R laden 1",                                                          //
                     "L lesen", "L auswerten (100,200) in Ebene 0", "L auswerten (100,200) in Ebene 0", //
                     "R lesen", "R auswerten (100,200) in Ebene 0", "R auswerten (100,200) in Ebene 0", //
                     "L lesen", "L auswerten (100,200) in Ebene 1", "L auswerten (100,200) in Ebene 1", //
                     "R lesen", "R auswerten (100,200) in Ebene 1", "R auswerten (100,200) in Ebene 1"}));
}

TEST_F(StickAuswertenTest, Umschalt1GiltDieSperreDerJeweiligenEbene) {
    starten();
    links.StickSperre = 1;
    rechts.StickSperre = 2;
    lauf.takt(UMSCHALT1);
    EXPECT_EQ(sticks(),
              (Texte{"L laden 1", "R laden 1",                                                          //
                     "L lesen",                                                                         //
                     "R lesen", "R auswerten (100,200) in Ebene 0", "R auswerten (100,200) in Ebene 0", //
                     "L lesen", "L auswerten (100,200) in Ebene 1", "L auswerten (100,200) in Ebene 1", //
                     "R lesen"}));
}

TEST_F(StickAuswertenTest, Umschalt2LaesstDieGrenzenStehen) {
    starten();
    lauf.takt(UMSCHALT2);
    EXPECT_EQ(sticks(), (Texte{"L laden 2", "R laden 2", "L lesen", "R lesen"}));
    EXPECT_EQ(links.grenzen, (FeldGrenzen{150, 50, 250, 150}));
    links.ort.x = 151;
    lauf.takt(UMSCHALT2);
    EXPECT_EQ(sticks(), (Texte{"L lesen", "L auswerten (151,200) in Ebene 2", "R lesen"}));
}

TEST_F(StickAuswertenTest, ZurueckInDieGrundebeneWertetErstInDerAltenAus) {
    for (const auto& [umschalttaste, alte] : {std::pair{UMSCHALT1, "1"}, std::pair{UMSCHALT2, "2"}}) {
        starten();
        lauf.takt(umschalttaste);
        links.grenzen = rechts.grenzen = {150, 50, 250, 150};
        sticks();
        lauf.takt(0);
        const auto ausgewertet = [](const std::string& stick, const std::string& ebene) {
            return stick + " auswerten (100,200) in Ebene " + ebene;
        };
        EXPECT_EQ(sticks(), (Texte{"L laden 0", "R laden 0",                                  //
                                   "L lesen", ausgewertet("L", alte), ausgewertet("L", alte), //
                                   "R lesen", ausgewertet("R", alte), ausgewertet("R", alte), //
                                   "L lesen", ausgewertet("L", "0"), ausgewertet("L", "0"),   //
                                   "R lesen", ausgewertet("R", "0"), ausgewertet("R", "0")}));
        lauf.fenster.reset();
    }
}

TEST_F(StickAuswertenTest, OhneEbenenwechselWirdBeiLosgelassenenTastenNichtGeladen) {
    starten();
    lauf.takt(4);
    lauf.takt(0);
    EXPECT_EQ(sticks(), (Texte{"L lesen", "R lesen", "L lesen", "R lesen"}));
    EXPECT_EQ(links.grenzen, (FeldGrenzen{150, 50, 250, 150}));
}

TEST_F(StickAuswertenTest, EineFestgestellteEbeneBleibtGeladen) {
    lauf.datenbank.sql("UPDATE tblTastatur SET btn10 = '4,0,1-0-0'");
    starten();
    lauf.takt(UMSCHALT2);
    lauf.takt(UMSCHALT2);
    lauf.takt(0);
    lauf.takt(0);
    sticks();
    links.ort.x = 49;
    lauf.takt(0);
    EXPECT_EQ(sticks(), (Texte{"L lesen", "L auswerten (49,200) in Ebene 2", "R lesen"}));
}

TEST_F(StickAuswertenTest, DieTastenDesTaktsKommenVorDenSticks) {
    lauf.datenbank.sql("UPDATE tblTastatur SET btn3 = '1,65,0-0-0'");
    starten();
    lauf.takt(4);
    EXPECT_EQ(lauf.anzeige.abholen(), (Texte{"Label1(0) = 4", "Titel = 2-65,", "L lesen", "R lesen"}));
}

TEST_F(StickAuswertenTest, GrenzenUndPositionUeberdauernDenLauf) {
    starten();
    lauf.fenster->beenden();
    lauf.starten();
    sticks();
    lauf.takt();
    EXPECT_EQ(sticks(), (Texte{"L lesen", "R lesen"}));
}

} // namespace
