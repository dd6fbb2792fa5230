// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Textpruefung.h"

#include <gtest/gtest.h>

TEST(TextpruefungTest, WasEineBelegungIst) {
    for (const auto* text : {"10,0,0-0-0", "1,65,1-20-30", "0,,0-0-0", "5,0,3-0-0", "4,0,1-0-0", "", "leer"})
        EXPECT_EQ(belegungsmangel(text), std::nullopt) << text;
    for (const auto* text : {"1", "1,65", "1,65,0-0", "1,65,0-0-0-0", "1,65,0-0-0,1", "6,0,0-0-0",
                             "-1,0,0-0-0", "9,0,0-0-0", "1,A,0-0-0", "1,65,0-0-99999999999", "1,65,0-0-0;x"})
        EXPECT_NE(belegungsmangel(text), std::nullopt) << text;
}

TEST(TextpruefungTest, WasDieAktionEinesFeldesIst) {
    for (const auto* text : {"", "0,2,5,10", "0,0,,", "1,0", "1,3,120", "1,2,7", "2,0,65,0,0",
                             "2,1,65,50,1,200", "3", "4", "5,0", "5,2,40,-30"})
        EXPECT_EQ(stickaktionsmangel(text), std::nullopt) << text;
    for (const auto* text :
         {"0", "0,4,5,10", "0,2,5", "0,2,5,10,1", "1,5", "1,3", "2,2,65,0,0", "2,1,65,50,1", "2,0,65", "3,1",
          "6", "12", "x", "3;00+4", "2,0,65,0,0;", "5,2", "5,2,4", "5,3,1,1", "0,2,99999999999,10"})
        EXPECT_NE(stickaktionsmangel(text), std::nullopt) << text;
}

TEST(TextpruefungTest, WasDerTextEinesSchubreglersIst) {
    for (const auto* text : {"", "4", "3/1-1-0-1(10,5,)/1-3-2-1(65,50,100)", "2/0-2-3", "20"})
        EXPECT_EQ(schubtextmangel(text), std::nullopt) << text;
    for (const auto* text : {"0", "21", "x", "3/1", "3/1-4-0-1(1,1,)", "3/1-0-0-1(1,1,)", "3/1-1-4-1(1,1,)",
                             "3/1-1-0-1(1)", "3/1-1-0-1(1,2,3)/1-1-0-1(1,2,3)", "3/1-1-0-1(1,-2,3)", "3;"})
        EXPECT_NE(schubtextmangel(text), std::nullopt) << text;
}

TEST(TextpruefungTest, WasEineAchseIst) {
    for (const auto* text : {"", "lx", "ly", "rx", "ry", "Z1", "Z2"})
        EXPECT_EQ(achsennamensmangel(text), std::nullopt) << text;
    for (const auto* text : {"LX", "lx ", "x", "Z3"})
        EXPECT_NE(achsennamensmangel(text), std::nullopt) << text;
}

TEST(TextpruefungTest, DerGrundNenntDenTextUndSchneidetKeinZeichenEntzwei) {
    EXPECT_EQ(belegungsmangel("1,65"), "„1,65“ ist keine Belegung");
    std::string lang = "a"; // so that the cut would fall inside an umlaut
    for (int i = 0; i < 600; ++i)
        lang += "ä";
    std::string anfang = "„a";
    for (int i = 0; i < 19; ++i)
        anfang += "ä";
    EXPECT_EQ(stickaktionsmangel(lang), anfang + "…“ ist keine Aktion eines Feldes");
    EXPECT_NE(belegungsmangel("1,65,0-0-" + std::string(2000, '0')), std::nullopt);
}
