// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Zustandstext.h"

#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

using Zeilen = std::vector<std::string>;

class ZustandstextTest : public ::testing::Test {
protected:
    ZustandstextTest() {
        Schemabau(datenbank_, "S").anlegen();
        linien_[1] = {20000, 45000, 21000, 46000};
        linien_[2] = {9000, 0, 0, 0};
        aktion("20000,0,0,0", "2,0,66,0,0");
        aktion("0,0,21000,0", "4");
        lesen();
    }
    void aktion(const std::string& anker, const std::string& text) {
        datenbank_.sql("INSERT INTO tblStickAktion VALUES ('S',0," + anker + ",'" + text + "');");
    }
    void lesen() {
        Database offen = OpenDatabase(datenbank_.pfad());
        auskunft_.lesen(offen, Stickseite::Links, "S", 0);
    }
    std::string worte(const Feldanker& anker) { return auskunft_.worte(linien_, anker); }
    Zeilen zeilen(const Ebenenlage& lage) { return zustandszeilen(lage, linien_, auskunft_); }

    Testdatenbank datenbank_;
    Linienebene linien_{};
    Feldauskunft auskunft_;
};

} // namespace

TEST_F(ZustandstextTest, EinFeldSagtWasDerStickDortTut) {
    EXPECT_EQ(worte({20000, 0, 0, 0}), "Tastatur: B, gehalten");
    EXPECT_EQ(worte({0, 0, 21000, 0}), "Sperrfeld");
    EXPECT_EQ(worte({0, 0, 0, 0}), "keine Aktion");
    EXPECT_EQ(worte({9000, 0, 0, 0}), "keine Aktion");
    EXPECT_EQ(worte({20000, 0, 21000, 0}),
              "gilt von Feld links: Tastatur: B, gehalten; von Feld oben: Sperrfeld");
    EXPECT_EQ(worte({20000, 0, 0, 46000}), "gilt von Feld links: Tastatur: B, gehalten");
    EXPECT_EQ(worte({0, 45000, 21000, 0}), "gilt von Feld oben: Sperrfeld");
}

TEST_F(ZustandstextTest, WieImLaufGiltDerErsteEintragDerSoBeginnt) {
    linien_[3] = {2, 0, 0, 0}; // its key "2000" is where that of the band of 20000 begins
    EXPECT_EQ(worte({2, 0, 0, 0}), "Tastatur: B, gehalten");
}

TEST_F(ZustandstextTest, OhneAktionenGibtEsKeineFalscheAuskunft) {
    auskunft_.vergessen();
    EXPECT_EQ(worte({20000, 0, 0, 0}), "Aktion konnte nicht gelesen werden");
}

TEST_F(ZustandstextTest, DieMausNenntFeldUndFolge) {
    EXPECT_EQ(
        zeilen({.maus = Stickposition{15000, 30000}, .klick = Klickfolge::Wahl}),
        (Zeilen{"Feld links – Tastatur: B, gehalten", "Klick wählt das Feld, danach Rechtsklick: Aktion"}));
    EXPECT_EQ(zeilen({.maus = Stickposition{33000, 30000}, .klick = Klickfolge::Abwahl}),
              (Zeilen{"Mittelfeld – keine Aktion", "Klick hebt die Wahl auf · Rechtsklick: Aktion"}));
    EXPECT_EQ(zeilen({}), Zeilen{});
}

TEST_F(ZustandstextTest, MitEinerLinieInDerHandSchweigenDieFelder) {
    EXPECT_EQ(zeilen({.maus = Stickposition{15000, 30000},
                      .klick = Klickfolge::Absetzen,
                      .stick = Feldanker{},
                      .linieInDerHand = true}),
              (Zeilen{"Linie aufgenommen – klicken setzt ab"}));
}

TEST_F(ZustandstextTest, EinPfeilSagtWasErTut) {
    EXPECT_EQ(zeilen({.pfeil = richtung::LINKS, .klick = Klickfolge::Wahl}), (Zeilen{pfeilhinweis(0)}));
    EXPECT_EQ(zeilen({.pfeil = richtung::LINKS, .feldGewaehlt = true}),
              (Zeilen{"Pfeil: erst die Wahl des Feldes aufheben"}));
}

TEST_F(ZustandstextTest, DieMarkeGehtDerMausVor) {
    EXPECT_EQ(
        zeilen({.maus = Stickposition{33000, 30000}, .marke = Gitterplatz{1, 1}, .klick = Klickfolge::Wahl}),
        (Zeilen{"Feld links – Tastatur: B, gehalten",
                "Eingabetaste wählt · Menütaste: Aktion · Umschalt+Pfeiltaste schiebt die Linie"}));
    EXPECT_EQ(zeilen({.marke = Gitterplatz{1, 1}, .markeGewaehlt = true, .feldGewaehlt = true})[1],
              "Eingabetaste: Aktion · Esc hebt die Wahl auf");
}

TEST_F(ZustandstextTest, MitDerTastaturGehtEineLinieInDerHandZurueck) {
    EXPECT_EQ(zeilen({.marke = Gitterplatz{1, 1}, .linieInDerHand = true}),
              (Zeilen{"Linie aufgenommen – Esc legt sie zurück"}));
}

TEST_F(ZustandstextTest, EinFeldWirdNichtZweimalErklaert) {
    EXPECT_EQ(zeilen({.marke = Gitterplatz{1, 1}, .stick = Feldanker{20000, 0, 0, 0}})[2],
              "Stick: in diesem Feld");
}

TEST_F(ZustandstextTest, DieOffeneTafelSagtWieSieZugeht) {
    EXPECT_EQ(zeilen({.tafelOffen = true, .feldGewaehlt = true}),
              (Zeilen{"Esc speichert und schließt die Tafel, außer in der Tastenbox"}));
    EXPECT_EQ(
        zeilen({.maus = Stickposition{33000, 30000}, .klick = Klickfolge::Tafel, .tafelOffen = true})[1],
        "Klick speichert die Aktion und schließt die Tafel");
}

TEST_F(ZustandstextTest, DerStickSperreUndTestlaufHabenIhreZeilen) {
    EXPECT_EQ(zeilen({.stick = Feldanker{20000, 0, 0, 0}, .gesperrt = true, .testlauf = true}),
              (Zeilen{"Stick: Feld links – Tastatur: B, gehalten", "„1 to 1“: Der Stick ruht in dieser Ebene",
                      "Test läuft – Änderungen gelten ab dem nächsten Ebenenwechsel oder Start"}));
}
