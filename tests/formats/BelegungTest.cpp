// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Belegung.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

using Texte = std::vector<std::string>;

/// The fields after the texts were laid one over the other; "-" for one that none has filled.
Texte felderNach(std::initializer_list<std::string_view> texte) {
    Belegungsfelder felder;
    for (const auto text : texte)
        Belegung(text).legenUeber(felder);
    Texte gefuellt;
    for (const auto& feld : felder)
        gefuellt.push_back(feld.da() ? feld.text() : "-");
    return gefuellt;
}

Texte streng(std::string_view text) {
    const auto felder = belegungStrengLesen(text);
    return felder ? Texte(felder->begin(), felder->end()) : Texte{};
}

} // namespace

TEST(BelegungTest, EinLaufTeiltNurDasLetzteStueckAmStrich) {
    EXPECT_EQ(felderNach({"10,0,1-20-30"}), (Texte{"10", "0", "1", "20", "30"}));
    EXPECT_EQ(felderNach({"1-2,3-4,5-6"}), (Texte{"1-2", "3-4", "5", "6", "-"}));
    EXPECT_EQ(felderNach({"1,2,3,4,5"}), (Texte{"1", "2", "3", "4", "5"}));
    EXPECT_EQ(felderNach({",,--"}), (Texte{"", "", "", "", ""}));
}

TEST(BelegungTest, WasEinKurzerTextNichtSagtBleibt) {
    EXPECT_EQ(felderNach({"1,65,1-20-30", "2,66"}), (Texte{"2", "66", "1", "20", "30"}));
    EXPECT_EQ(felderNach({"1,65,1-20-30", "4,"}), (Texte{"4", "65", "1", "20", "30"}));
    EXPECT_EQ(felderNach({"1,65,1-20-30", ""}), (Texte{"1", "65", "1", "20", "30"}));
}

TEST(BelegungTest, SechsFelderSindFehler9UndFuenfDavonLiegen) {
    Belegungsfelder felder;
    EXPECT_EQ(fehlernummer([&] { Belegung("1,65,0-1-2-3").legenUeber(felder); }), 9);
    EXPECT_EQ(felder[belegungsfeld::PAUSENZEIT].text(), "2");
    EXPECT_EQ(fehlernummer([&] { Belegung("1,2,3,4,5,6,7").legenUeber(felder); }), 9);
    EXPECT_EQ(felder[belegungsfeld::PAUSENZEIT].text(), "5");
}

TEST(BelegungTest, DieUmschalttasteStehtImErstenZeichenIhrModusImFuenften) {
    EXPECT_EQ(Belegung("3,0,1-0-0").umschalttaste(), 1);
    EXPECT_EQ(Belegung("4,0,1-0-0").umschalttaste(), 2);
    EXPECT_EQ(Belegung("34").umschalttaste(), 1);
    EXPECT_EQ(Belegung(" 3,0,1-0-0").umschalttaste(), std::nullopt);
    EXPECT_EQ(Belegung("").umschalttaste(), std::nullopt);
    EXPECT_EQ(Belegung("3,0,1-0-0").umschaltmodus(), 1);
    EXPECT_EQ(fehlernummer([] { Belegung("3,10,1-0-0").umschaltmodus(); }), 13);
    EXPECT_EQ(fehlernummer([] { Belegung("3,0,").umschaltmodus(); }), 13);
}

TEST(BelegungTest, EinEditorLiestGenauFuenfFelder) {
    EXPECT_EQ(streng("1,65,0-20-30"), (Texte{"1", "65", "0", "20", "30"}));
    EXPECT_EQ(streng(",,--"), (Texte{"", "", "", "", ""}));
    for (const auto* text :
         {"", "1", "1,65", "1,65,0", "1,65,0-0", "1,65,0-0-0-0", "1,65,0-0-0,0", "1,2,3,4,5"})
        EXPECT_EQ(streng(text), Texte{}) << text;
}

TEST(BelegungTest, GeschriebenKommtSieWieder) {
    for (const auto* text : {"1,65,0-20-30", "10,0,0-0-0", ",,--", "x, y,z-0-"})
        EXPECT_EQ(belegungstext(*belegungStrengLesen(text)), text);
}

TEST(Belegung, NenntDenMausknopfAberKeinRad) {
    EXPECT_EQ(Belegung("5,0,0-0-0").mausknopf(), 0);
    EXPECT_EQ(Belegung("5,0,2-0-0").mausknopf(), 2);
    EXPECT_EQ(Belegung("05,0, 1").mausknopf(), 1);
    for (const auto* text :
         {"5,0,3-0-0", "5,0,4-0-0", "5,0,-1-0-0", "1,65,0-0-0", "5,0,x-0-0", "5,0", "5", ""})
        EXPECT_EQ(Belegung(text).mausknopf(), std::nullopt) << text;
}
