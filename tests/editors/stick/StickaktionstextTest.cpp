// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Stickaktionstext.h"

#include <gtest/gtest.h>

namespace {

using enum Stickaktionsart;

/// The error that the reading of a text ends with; 0 for none.
int fehlerVon(std::string_view text) {
    const auto fehler = stickaktionLesen(text).fehler;
    return fehler ? fehler->zahl() : 0;
}
Stickaktionsbild bildVon(std::string_view text) {
    return stickaktionLesen(text).bild;
}

} // namespace

TEST(Stickaktionstext, JederTextDenDieTafelSchreibtKommtZurueckWieErIst) {
    for (const char* text :
         {"0,0,5,10",     "0,1,1,1", "0,2,,", "0,3,abc,-1", "1,0",           "1,1",         "1,2",
          "1,3,120",      "1,3,",    "1,4,7", "2,0,13,0,0", "2,1,65,50,0,0", "2,1,65,,0,0", "2,1,65,50,1,200",
          "2,1,65,50,1,", "3",       "4",     "5,0",        "5,1",           "5,2,1,3000"}) {
        EXPECT_EQ(stickaktionstext(bildVon(text)), text);
        EXPECT_EQ(fehlerVon(text), 0) << text;
    }
}

TEST(Stickaktionstext, EineBewegungNenntRichtungDannSchrittlaengeDannGeschwindigkeit) {
    const Stickaktionsbild erwartet{
        .art = Mausbewegung, .richtung = 2, .schrittlaenge = "5", .geschwindigkeit = "10"};
    EXPECT_EQ(bildVon("0,2,5,10"), erwartet);
}

TEST(Stickaktionstext, EinRadHatEinenScrollsprungUndEineMaustasteKeinen) {
    EXPECT_EQ(bildVon("1,3,12"), (Stickaktionsbild{.art = Maustaste, .maustaste = 3, .scrollsprung = "12"}));
    EXPECT_EQ(bildVon("1,2,12"), (Stickaktionsbild{.art = Maustaste, .maustaste = 2}));
    EXPECT_EQ(stickaktionstext({.art = Maustaste, .maustaste = 2, .scrollsprung = "12"}), "1,2");
}

TEST(Stickaktionstext, EineTasteNenntIhreZeitenNurWoSieWelcheHat) {
    EXPECT_EQ(bildVon("2,0,13,0,0"), (Stickaktionsbild{.art = Tastatur, .eigenschaft = 0, .taste = "13"}));
    EXPECT_EQ(bildVon("2,1,13,50,0,0"),
              (Stickaktionsbild{.art = Tastatur, .eigenschaft = 1, .taste = "13", .druckzeit = "50"}));
    EXPECT_EQ(bildVon("2,1,13,50,1,70"), (Stickaktionsbild{.art = Tastatur,
                                                           .eigenschaft = 1,
                                                           .taste = "13",
                                                           .druckzeit = "50",
                                                           .wiederholen = true,
                                                           .pausenzeit = "70"}));
}

TEST(Stickaktionstext, EineGehalteneTasteWirdOhneZeitenGeschriebenWasAuchGesetztIst) {
    EXPECT_EQ(stickaktionstext({.art = Tastatur,
                                .eigenschaft = 0,
                                .taste = "13",
                                .druckzeit = "50",
                                .wiederholen = true,
                                .pausenzeit = "70"}),
              "2,0,13,0,0");
}

TEST(Stickaktionstext, DieWiederholungWirdGelesenWelcheEigenschaftAuchGilt) {
    EXPECT_EQ(
        bildVon("2,0,13,50,1,70"),
        (Stickaktionsbild{
            .art = Tastatur, .eigenschaft = 0, .taste = "13", .wiederholen = true, .pausenzeit = "70"}));
}

TEST(Stickaktionstext, NurDieZahlEinsBedeutetEineWiederholung) {
    for (const char* text : {"2,1,13,5,,0", "2,1,13,5,abc,0", "2,1,13,5,2,0", "2,1,13,5,11,0"}) {
        EXPECT_FALSE(bildVon(text).wiederholen) << text;
        EXPECT_EQ(fehlerVon(text), 0) << text;
    }
    EXPECT_TRUE(bildVon("2,1,13,5, 1,7").wiederholen);
}

TEST(Stickaktionstext, EinEgoshooterIstJedePositionHinterDerZweiten) {
    const Stickaktionsbild erwartet{.art = AbsolutePosition, .position = 2, .egoX = 400, .egoY = 300};
    for (const char* text : {"5,2,400,300", "5,3,400,300", "5,,400,300", "5,x,400,300"})
        EXPECT_EQ(bildVon(text), erwartet) << text;
    EXPECT_EQ(bildVon("5,1,400,300"), (Stickaktionsbild{.art = AbsolutePosition, .position = 1}));
}

TEST(Stickaktionstext, EinInEinerBoxGetipptesKommaWirdEinTrenner) {
    const auto text = stickaktionstext({.art = Maustaste, .maustaste = 3, .scrollsprung = "3,4"});
    EXPECT_EQ(text, "1,3,3,4");
    EXPECT_EQ(bildVon(text).scrollsprung, "3");
    EXPECT_EQ(stickaktionstext({.art = Tastatur, .eigenschaft = 1, .taste = "65", .druckzeit = "5,1"}),
              "2,1,65,5,1,0,0");
    EXPECT_TRUE(bildVon("2,1,65,5,1,0,0").wiederholen);
}

TEST(Stickaktionstext, EinLeererTextIstEinLeerfeld) {
    EXPECT_EQ(bildVon(""), Stickaktionsbild{});
    EXPECT_EQ(fehlerVon(""), 0);
    EXPECT_EQ(stickaktionstext(Stickaktionsbild{}), "3");
}

TEST(Stickaktionstext, WasNichtGesetztIstIstDieErsteWahl) {
    EXPECT_EQ(stickaktionstext({.art = Mausbewegung}), "0,0,,");
    EXPECT_EQ(stickaktionstext({.art = Maustaste}), "1,0");
    EXPECT_EQ(stickaktionstext({.art = Tastatur}), "2,0,,0,0");
    EXPECT_EQ(stickaktionstext({.art = AbsolutePosition}), "5,0");
}

TEST(Stickaktionstext, EineKurzeBewegungNenntOhneFehlerWasSieHat) {
    EXPECT_EQ(bildVon("0"), Stickaktionsbild{.art = Mausbewegung});
    EXPECT_EQ(bildVon("0,3"), (Stickaktionsbild{.art = Mausbewegung, .richtung = 3}));
    EXPECT_EQ(bildVon("0,3,5"), (Stickaktionsbild{.art = Mausbewegung, .richtung = 3, .schrittlaenge = "5"}));
    for (const char* text : {"0", "0,3", "0,3,5", "0,x,5,10", "0,4,5,10", "0,-1,5,10"})
        EXPECT_EQ(fehlerVon(text), 0) << text;
}

TEST(Stickaktionstext, EineBewegungInKeineRichtungLaesstNurDieRichtungOffen) {
    const Stickaktionsbild erwartet{.art = Mausbewegung, .schrittlaenge = "5", .geschwindigkeit = "10"};
    for (const char* text : {"0,4,5,10", "0,-1,5,10", "0,,5,10", "0,99999999999,5,10"})
        EXPECT_EQ(bildVon(text), erwartet) << text;
}

TEST(Stickaktionstext, EineArtDieEsNichtGibtLiestSichAlsLeerfeldUndSagtEs) {
    for (const char* text : {"6,1,2", "-1,0,5,10", "x", ",0,5,10", "0x", "99999999999"})
        EXPECT_EQ(bildVon(text), Stickaktionsbild{}) << text;
    EXPECT_EQ(fehlerVon("6"), 9);
    EXPECT_EQ(fehlerVon("-1"), 9);
    EXPECT_EQ(fehlerVon("x"), 13);
    EXPECT_EQ(fehlerVon(",0"), 13);
    EXPECT_EQ(fehlerVon("99999999999"), 6);
}

TEST(Stickaktionstext, EinFehlendesFeldBeendetDasLesenUndWasDavorKamGilt) {
    EXPECT_EQ(fehlerVon("1"), 9);
    EXPECT_EQ(fehlerVon("1,3"), 9);
    EXPECT_EQ(bildVon("1,3"), (Stickaktionsbild{.art = Maustaste, .maustaste = 3}));
    EXPECT_EQ(fehlerVon("1,5"), 9);
    EXPECT_EQ(fehlerVon("1,x"), 13);

    EXPECT_EQ(fehlerVon("2"), 9);
    EXPECT_EQ(fehlerVon("2,0"), 9);
    EXPECT_EQ(fehlerVon("2,2,13,0,0"), 9);
    EXPECT_EQ(fehlerVon("2,0,13,0"), 9);
    EXPECT_EQ(bildVon("2,0,13,0"), (Stickaktionsbild{.art = Tastatur, .eigenschaft = 0, .taste = "13"}));
    EXPECT_EQ(fehlerVon("2,1,13"), 9);
    EXPECT_EQ(fehlerVon("2,1,13,5,1"), 9);
    EXPECT_TRUE(bildVon("2,1,13,5,1").wiederholen);

    EXPECT_EQ(fehlerVon("5"), 9);
    EXPECT_EQ(fehlerVon("5,2"), 9);
    EXPECT_EQ(fehlerVon("5,2,7"), 9);
    EXPECT_EQ(fehlerVon("5,2,x,7"), 13);
    EXPECT_EQ(bildVon("5,2,7"), (Stickaktionsbild{.art = AbsolutePosition, .position = 2, .egoX = 7}));
}

TEST(Stickaktionstext, FelderHinterDemLetztenWerdenNichtGelesen) {
    EXPECT_EQ(bildVon("3,1,2"), Stickaktionsbild{});
    EXPECT_EQ(bildVon("4,1,2"), Stickaktionsbild{.art = Sperrfeld});
    EXPECT_EQ(bildVon("0,1,2,3,4"), bildVon("0,1,2,3"));
}

TEST(Stickaktionstext, EinTitelTraegtDieNummerDerTaste) {
    EXPECT_EQ(tastentitel("13", "Enter"), "Taste: 13 - Enter");
    EXPECT_EQ(tastennummer("Taste: 13 - Enter"), "13");
    EXPECT_EQ(tastennummer("Taste: 9999 - "), "9999");
    EXPECT_EQ(tastennummer("Taste: 109 - Num -"), "109");
    EXPECT_EQ(tastennummer("Taste:  - "), "");
    EXPECT_EQ(tastennummer("Taste: 13"), "13");
    EXPECT_THROW(tastennummer("Eigenschaft"), LaufzeitFehler);
}
