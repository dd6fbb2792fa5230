// SPDX-License-Identifier: GPL-3.0-or-later
// What an error that stops a run says: whoever made the slip in an editor finds it by stick, layer and field
// or by slot, and by the text.
#include "engine/run/Fehlerort.h"

#include "tests/engine/stick/Sticklauf.h"

#include <gtest/gtest.h>

namespace {

class Sticktextfehler : public testing::TestWithParam<Stickseite> {
protected:
    void starten() {
        lauf.starten();
        lauf.bewegen(MITTIG, MITTIG);
    }
    /// What stopped the run, "" if nothing did; without the name of the stick, which it must begin with.
    std::string fehler() const {
        const std::string name = lauf.seitig("Linker Stick, ", "Rechter Stick, ");
        const auto& text = lauf.anzeige.fehlertext;
        return text.starts_with(name) ? text.substr(name.size()) : text;
    }
    void ebene1(const std::string& text) const {
        Schemabau(lauf.datenbank).feld(GetParam(), {20000, 0, 0, 0}, text, 1).ergaenzen();
        lauf.datenbank.sql("UPDATE tblTastatur SET btn1 = '3,0,0-0-0'");
    }

    Sticklauf lauf{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(, Sticktextfehler, BEIDE_STICKS, sticknameVon);

} // namespace

TEST_P(Sticktextfehler, EinRadOhneMengeNenntFeldUndText) {
    lauf.aktion({20000, 0, 0, 0}, "1,3,");
    starten();
    lauf.bewegen(NIEDRIG, MITTIG);
    EXPECT_EQ(fehler(),
              "Ebene Standart, Feld Links 20000: \"1,3,\": Typen unverträglich: \"\" ist keine Zahl");
}

TEST_P(Sticktextfehler, DieEbeneIstDieDerTabellen) {
    ebene1("2,0");
    starten();
    lauf.takt(1);
    lauf.bewegen(NIEDRIG, MITTIG);
    EXPECT_EQ(fehler(), "Ebene Umschalt 1, Feld Links 20000: \"2,0\": Index außerhalb des gültigen Bereichs: "
                        "zu wenige Felder");
}

TEST_P(Sticktextfehler, EinFeldVonZweiBaendernNenntBeide) {
    lauf.aktion({0, 45000, 0, 45000}, "0,1,x,20");
    starten();
    lauf.bewegen(HOCH, HOCH);
    EXPECT_EQ(fehler(), "Ebene Standart, Feld Rechts 45000 Unten 45000: \"0,1,x,20\": Typen unverträglich: "
                        "\"x\" ist keine Zahl");
}

TEST_P(Sticktextfehler, DieAktionEinesBandesNenntDasBand) {
    struct Fall {
        const char* x;
        const char* y;
        const char* ort;
    };
    for (const auto& [x, y, ort] : {Fall{"0,0,x,20", "3", "Feld Links 20000: \"0,0,x,20\""},
                                    Fall{"3", "0,2,x,20", "Feld Oben 20000: \"0,2,x,20\""},
                                    Fall{"0,0,x,20", "0,2,5,20", "Feld Links 20000: \"0,0,x,20\""},
                                    Fall{"0,0,5,20", "0,2,x,20", "Feld Oben 20000: \"0,2,x,20\""},
                                    Fall{"0,0,5,x", "0,2,5,20", "Feld Links 20000: \"0,0,5,x\""}}) {
        Sticklauf einer(GetParam());
        einer.aktion({20000, 0, 0, 0}, x);
        einer.aktion({0, 0, 20000, 0}, y);
        einer.starten();
        einer.bewegen(MITTIG, MITTIG);
        einer.bewegen(NIEDRIG, NIEDRIG);
        EXPECT_NE(einer.anzeige.fehlertext.find(", Ebene Standart, " + std::string(ort) + ": Typen"),
                  std::string::npos)
            << einer.anzeige.fehlertext;
    }
}

TEST_P(Sticktextfehler, DasMittelfeldHeisstMitte) {
    lauf.aktion({0, 0, 0, 0}, "5,2,1,x");
    starten();
    EXPECT_EQ(fehler(), "Ebene Standart, Feld Mitte: \"5,2,1,x\": Typen unverträglich: \"x\" ist keine Zahl");
}

TEST_P(Sticktextfehler, EinZeitgeberNenntDasFeldFuerDasErGestelltWurde) {
    lauf.aktion({20000, 0, 0, 0}, "2,1,65,50");
    starten();
    lauf.bewegen(NIEDRIG, MITTIG);
    EXPECT_EQ(fehler(), "");
    lauf.warten(50);
    EXPECT_EQ(fehler(), "Ebene Standart, Feld Links 20000: \"2,1,65,50\": Index außerhalb des gültigen "
                        "Bereichs: zu wenige Felder");
}

TEST_P(Sticktextfehler, EinZeitgeberDerYSeiteNenntDerenBand) {
    lauf.aktion({20000, 0, 0, 0}, "3");
    lauf.aktion({0, 0, 20000, 0}, "2,1,65,50");
    starten();
    lauf.bewegen(NIEDRIG, NIEDRIG);
    EXPECT_EQ(fehler(), "");
    lauf.warten(50);
    EXPECT_EQ(fehler(), "Ebene Standart, Feld Oben 20000: \"2,1,65,50\": Index außerhalb des gültigen "
                        "Bereichs: zu wenige Felder");
}

TEST_P(Sticktextfehler, EinZuWeiterEgoShooterNenntDasFeldInDemErBegann) {
    lauf.aktion({20000, 0, 0, 0}, "5,2,1000000,1");
    starten();
    lauf.bewegen(NIEDRIG, MITTIG);
    lauf.bewegen(HOCH, MITTIG); // by its timer
    EXPECT_EQ(fehler(), "Ebene Standart, Feld Links 20000: \"5,2,1000000,1\": Überlauf: Ego Shooter mit "
                        "2250000 Schritten auf einmal");
}

TEST_P(Sticktextfehler, DasEndeEinerAktionNenntDasFeldDasVerlassenWird) {
    lauf.aktion({20000, 0, 0, 0}, "5,x,1,1");
    starten();
    lauf.bewegen(NIEDRIG, MITTIG);
    EXPECT_EQ(fehler(), "");
    lauf.bewegen(MITTIG, MITTIG);
    EXPECT_EQ(fehler(), "Ebene Standart, Feld Links 20000: \"5,x,1,1\": Typen unverträglich: \"x\" ist keine "
                        "Zahl");
}

TEST_P(Sticktextfehler, DasEndeEinesPaaresVonBandaktionenNenntDasBand) {
    lauf.aktion({20000, 0, 0, 0}, "5,x,1,1");
    lauf.aktion({0, 0, 20000, 0}, "3");
    starten();
    lauf.bewegen(NIEDRIG, NIEDRIG);
    EXPECT_EQ(fehler(), "");
    lauf.bewegen(MITTIG, MITTIG);
    EXPECT_EQ(fehler(), "Ebene Standart, Feld Links 20000: \"5,x,1,1\": Typen unverträglich: \"x\" ist keine "
                        "Zahl");
}

TEST_P(Sticktextfehler, EineRichtungOhneLinieNenntSieUndDieEbene) {
    lauf.linien(1, {20000, 0, 20000, 45000});
    lauf.starten();
    lauf.bewegen(MITTIG, MITTIG);
    EXPECT_EQ(fehler(), "Ebene Standart: Index außerhalb des gültigen Bereichs: keine Linie Rechts");
}

namespace {

std::string tastenfehler(Probelauf& lauf, std::uint32_t tasten) {
    lauf.starten();
    lauf.takt(tasten);
    return lauf.anzeige.fehlertext;
}

} // namespace

TEST(Belegungsfehler, NenntTasteEbeneUndText) {
    Probelauf lauf({{"btn5", "1,x,0-0-0"}});
    EXPECT_EQ(tastenfehler(lauf, 16),
              "Taste L 2, Ebene Standart: \"1,x,0-0-0\": Typen unverträglich: \"x\" ist keine Zahl");
}

TEST(Belegungsfehler, NenntDieEbeneDerTaste) {
    Probelauf lauf({{"btn1", "4,0,0-0-0"}, {"btn1003", "1,65,0-0-0-0-0"}});
    lauf.starten();
    lauf.takt(1);
    lauf.takt(5);
    EXPECT_EQ(lauf.anzeige.fehlertext,
              "Taste Kreuz, Ebene Umschalt 2: \"1,65,0-0-0-0-0\": Index außerhalb des "
              "gültigen Bereichs: zu viele Felder");
}

TEST(Belegungsfehler, NenntDieRichtungDesSteuerkreuzes) {
    Probelauf lauf;
    lauf.datenbank.sql("UPDATE tblSteuerKreuz SET Links = '1,65,y-0-0'");
    lauf.pad.zustand.dwPOV = 27000;
    EXPECT_EQ(tastenfehler(lauf, 0),
              "Steuerkreuz Links, Ebene Standart: \"1,65,y-0-0\": Typen unverträglich: \"y\" ist keine Zahl");
}

TEST(Belegungsfehler, EinImpulsNenntIhnAuchVonSeinemZeitgeberAus) {
    Probelauf lauf({{"btn3", "1,65,1-20-z"}});
    EXPECT_EQ(tastenfehler(lauf, 4), "");
    lauf.warten(20);
    EXPECT_EQ(lauf.anzeige.fehlertext,
              "Taste Kreuz, Ebene Standart: \"1,65,1-20-z\": Typen unverträglich: \"z\" ist keine Zahl");
}

TEST(Belegungsfehler, DasLoesenNenntIhnAuch) {
    Probelauf lauf({{"btn3", "5,0,9-0-0"}, {"btn103", "5,0,x-0-0"}, {"btn1", "3,0,0-0-0"}});
    lauf.starten();
    lauf.takt(4);
    EXPECT_EQ(lauf.anzeige.fehlertext, "");
    lauf.takt(0);
    EXPECT_EQ(lauf.anzeige.fehlertext, "");
    lauf.takt(1); // layer 1: its own text of the slot
    lauf.takt(5);
    EXPECT_EQ(lauf.anzeige.fehlertext,
              "Taste Kreuz, Ebene Umschalt 1: \"5,0,x-0-0\": Typen unverträglich: \"x\" ist keine Zahl");
}

TEST(Belegungsfehler, EineUmschalttasteOhneModusNenntIhnBeimStart) {
    Probelauf lauf({{"btn6", "3,0"}});
    try {
        lauf.starten();
        FAIL() << "the run has started";
    } catch (const LaufzeitFehler& fehler) {
        EXPECT_EQ(fehler.nummer(), Fehlernummer::FalscherTyp);
        EXPECT_STREQ(fehler.what(),
                     "Taste L 1, Ebene Standart: \"3,0\": Typen unverträglich: \"\" ist keine Zahl");
    }
}

TEST(Schubtextfehler, NenntDasFeldUndSeinenText) {
    struct Fall {
        const char* text;
        const char* fehler;
    };
    for (const auto& [text, meldung] :
         {Fall{"x/0-1-3-(,,)", "Schubregler, Anzahl der Felder: Typen unverträglich: \"x\" ist keine Zahl"},
          Fall{"40000", "Schubregler, Anzahl der Felder: Überlauf: \"40000\""},
          Fall{"3/0-1-3-(,,)/0",
               "Schubregler: \"0\": Index außerhalb des gültigen Bereichs: zu wenige Angaben"},
          Fall{"3/0-2-3-(,,)/0-2-2-0(65,,)",
               "Schubregler, Feld 2: \"0-2-2-0(65,,)\": Dieses Feld gibt es zweimal"},
          Fall{"3/0-2-3-(,,)/y-1-2-0(65,,)",
               "Schubregler, Feld 1: \"y-1-2-0(65,,)\": Typen unverträglich: \"y\" ist keine Zahl"}}) {
        Probelauf lauf;
        lauf.zustand.achsendatei.AchsenLaden(); // makes the row where there is none
        lauf.zustand.achsendatei.GamepadSchreiben(text);
        try {
            lauf.starten();
            ADD_FAILURE() << text;
        } catch (const LaufzeitFehler& fehler) {
            EXPECT_STREQ(fehler.what(), meldung);
        }
    }
}
