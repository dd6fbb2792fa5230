// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's image of the button table: its places and the texts that it is made from and gives back.
#include "store/schema/VarTastenbelegung.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

#include <set>

TEST(VarTastenbelegung, HatFuerJedesFeldEinenEigenenPlatz) {
    VarTastenbelegung bild;
    std::set<const std::string*> plaetze;
    for (int taste = 0; taste < 16; ++taste)
        for (int ebene = 0; ebene < 3; ++ebene)
            for (int feld = 0; feld < 5; ++feld) {
                EXPECT_EQ(bild.field(taste, ebene, feld), "");
                plaetze.insert(&bild.field(taste, ebene, feld));
            }
    EXPECT_EQ(plaetze.size(), 240U);
}

TEST(VarTastenbelegung, KeinIndexReichtDarueberHinaus) {
    VarTastenbelegung bild;
    for (const auto& [taste, ebene, feld] :
         {std::array{-1, 0, 0}, {16, 0, 0}, {0, -1, 0}, {0, 3, 0}, {0, 0, -1}, {0, 0, 5}}) {
        EXPECT_EQ(fehlernummer([&] { bild.field(taste, ebene, feld); }), 9);
        EXPECT_EQ(fehlernummer([&] { std::as_const(bild).field(taste, ebene, feld); }), 9);
    }
    EXPECT_EQ(fehlernummer([&] { bild.setzeBelegung(16, 0, "10,0,0-0-0"); }), 9);
    EXPECT_EQ(fehlernummer([&] { bild.belegung(0, 3); }), 9);
    EXPECT_EQ(bild, VarTastenbelegung());
}

TEST(VarTastenbelegung, ZerlegtEinenTextInFuenfFelderUndFuegtSieZusammen) {
    VarTastenbelegung bild;
    bild.setzeBelegung(2, 1, "1,65,0-100-2000");
    EXPECT_EQ(bild.field(2, 1, 0), "1");
    EXPECT_EQ(bild.field(2, 1, 1), "65");
    EXPECT_EQ(bild.field(2, 1, 2), "0");
    EXPECT_EQ(bild.field(2, 1, 3), "100");
    EXPECT_EQ(bild.field(2, 1, 4), "2000");
    EXPECT_EQ(bild.belegung(2, 1), "1,65,0-100-2000");
    EXPECT_EQ(bild.belegung(1, 2), ",,--");
}

TEST(VarTastenbelegung, LaesstJedesFeldWieEsIst) {
    for (const std::string text :
         {"10,0,0-0-0", ",,--", " 1 ,A, 0-x- 7", "99999999999,007,+1-0-ä", "1,\n,0-0-0"}) {
        VarTastenbelegung bild;
        bild.setzeBelegung(15, 2, text);
        EXPECT_EQ(bild.belegung(15, 2), text);
    }
}

TEST(VarTastenbelegung, NimmtNurTexteMitGenauFuenfFeldern) {
    VarTastenbelegung bild;
    bild.setzeBelegung(0, 0, "1,65,0-0-0");
    const VarTastenbelegung vorher = bild;
    for (const std::string text :
         {"", "1", "1,65", "1,65,", "1,65,0", "1,65,0-0", "1,65,0-0-0-0", "1,65,0-0-0,", "1,65,0-0-0,0", ",",
          ",,", ",,-", ",,---", ",,,--", "leer", "1,65,0--0-0", "1-2-3"}) {
        EXPECT_EQ(fehlernummer([&] { bild.setzeBelegung(0, 0, text); }), 9) << text;
        EXPECT_EQ(bild, vorher) << text;
    }
}

TEST(VarTastenbelegung, DerFehlerZeigtDenText) {
    VarTastenbelegung bild;
    try {
        bild.setzeBelegung(0, 0, "1,65");
        FAIL();
    } catch (const LaufzeitFehler& fehler) {
        EXPECT_STREQ(fehler.what(),
                     "Die Belegung „1,65“ hat nicht die Form „Art,Taste,Modus-Druckzeit-Pausenzeit“.");
    }
}
