// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/Stickaktion.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

using namespace stickaktion;

TEST(StickaktionTest, JedeArtHatIhreFelder) {
    const auto bewegung = Stickaktion("0,2,5,10");
    EXPECT_EQ(bewegung.als<Mausbewegung>()->richtung.zahl(), 2);
    EXPECT_EQ(bewegung.als<Mausbewegung>()->schritt.zahl(), 5);
    EXPECT_EQ(bewegung.als<Mausbewegung>()->intervall.zahl(), 10);
    const auto rad = Stickaktion("1,3,120");
    EXPECT_EQ(rad.als<Maustaste>()->knopf.zahl(), 3);
    EXPECT_EQ(rad.als<Maustaste>()->scrollsprung.zahl(), 120);
    const auto taste = Stickaktion("2,1,65,50,7,200");
    EXPECT_EQ(taste.als<Tastatur>()->eigenschaft.zahl(), 1);
    EXPECT_EQ(taste.als<Tastatur>()->taste.zahl(), 65);
    EXPECT_EQ(taste.als<Tastatur>()->druckzeit.zahl(), 50);
    EXPECT_EQ(taste.als<Tastatur>()->wiederholen.zahl(), 7);
    EXPECT_EQ(taste.als<Tastatur>()->pausenzeit.zahl(), 200);
    EXPECT_TRUE(Stickaktion("3").ist<Leerfeld>());
    EXPECT_TRUE(Stickaktion("4").ist<Sperrfeld>());
    const auto position = Stickaktion("5,2,40,30");
    EXPECT_EQ(position.als<AbsolutePosition>()->position.zahl(), 2);
    EXPECT_EQ(position.als<AbsolutePosition>()->egoX.zahl(), 40);
    EXPECT_EQ(position.als<AbsolutePosition>()->egoY.zahl(), 30);
}

TEST(StickaktionTest, DieArtenStehenInDerReiheIhrerNummern) {
    for (int art = 0; art < STICKAKTIONSARTEN; ++art) {
        const auto nummer = std::to_string(art);
        EXPECT_EQ(artImLauf(nummer), static_cast<Stickaktionsart>(art));
        EXPECT_EQ(artImEditor(nummer), static_cast<Stickaktionsart>(art));
        EXPECT_EQ(Stickaktion(nummer).inhalt().index(), static_cast<std::size_t>(art));
    }
}

TEST(StickaktionTest, EinLaufGehtNachDemErstenZeichen) {
    EXPECT_EQ(artImLauf("12"), Stickaktionsart::Maustaste);
    EXPECT_EQ(artImLauf("5x,1"), Stickaktionsart::AbsolutePosition);
    for (const auto* text : {"", "6", "9", "x", " 2,0,65", "-1", ",", "/", ":"})
        EXPECT_EQ(artImLauf(text), std::nullopt) << text;
    EXPECT_TRUE(Stickaktion("x").ist<stickaktion::Leerfeld>());
    EXPECT_EQ(Stickaktion("x").text(), "x");
}

TEST(StickaktionTest, EinEditorGehtNachDemErstenFeld) {
    EXPECT_EQ(artImEditor(" 2 ,0,65"), Stickaktionsart::Tastatur);
    EXPECT_EQ(artImEditor(""), Stickaktionsart::Leerfeld);
    EXPECT_EQ(fehlernummer([] { artImEditor("12"); }), 9);
    EXPECT_EQ(fehlernummer([] { artImEditor("-1"); }), 9);
    EXPECT_EQ(fehlernummer([] { artImEditor("x"); }), 13);
    EXPECT_EQ(fehlernummer([] { artImEditor("99999999999"); }), 6);
}

TEST(StickaktionTest, EinFehlendesFeldIstErstEinFehlerWoEsVerlangtWird) {
    const auto aktion = Stickaktion("0,1");
    const auto& bewegung = *aktion.als<Mausbewegung>();
    EXPECT_EQ(verlangt(bewegung.richtung).zahl(), 1);
    EXPECT_EQ(fehlernummer([&] { verlangt(bewegung.schritt); }), 9);
    EXPECT_EQ(fehlernummer([&] { verlangt(Stickaktion("0,1,,").als<Mausbewegung>()->schritt); }), 0);
}

TEST(StickaktionTest, DieStelleEinesFeldsZaehltDieArtMit) {
    EXPECT_EQ(stelle(&Mausbewegung::richtung), 1U);
    EXPECT_EQ(stelle(&Tastatur::pausenzeit), 5U);
}

TEST(StickaktionTest, DasDritteZeichenUndDasLetzteHaengenNichtAnFeldern) {
    EXPECT_EQ(Stickaktion("5,1").drittesZeichen().ziffer(), 1);
    EXPECT_EQ(Stickaktion("5x1").drittesZeichen().ziffer(), 1);
    EXPECT_EQ(Stickaktion("5,12").drittesZeichen().ziffer(), 1);
    EXPECT_EQ(Stickaktion("5, 1").drittesZeichen().text(), " ");
    EXPECT_EQ(Stickaktion("5,").drittesZeichen().text(), "");
    EXPECT_EQ(Stickaktion("").drittesZeichen().text(), "");
    EXPECT_TRUE(Stickaktion("5,2,4,21").endetAufEins());
    EXPECT_FALSE(Stickaktion("5,1,").endetAufEins());
    EXPECT_FALSE(Stickaktion("").endetAufEins());
}

TEST(StickaktionTest, GeschriebenWirdBisZumErstenFeldDasFehlt) {
    for (const auto* text : {"0,2,5,10", "0,,x, 1", "1,0", "1,3,120", "2,0,65,0,0", "2,1,65,50,1,200", "3",
                             "4", "5,1", "5,2,40,30"})
        EXPECT_EQ(stickaktionSchreiben(Stickaktion(text).inhalt()), text);
    EXPECT_EQ(stickaktionSchreiben(Stickaktion("0,1,2,3,4").inhalt()), "0,1,2,3")
        << "nothing behind the last";
    EXPECT_EQ(stickaktionSchreiben(Maustaste{Feld(2), {}}), "1,2");
    EXPECT_EQ(stickaktionSchreiben(Tastatur{Feld(0), {}, Feld(50), {}, {}}), "2,0");
}

TEST(StickaktionTest, EinLeerfeldIstNurDieZifferDrei) {
    for (const auto* text : {"3", " 3", "3  ", "  3 "})
        EXPECT_TRUE(istNurLeerfeld(text)) << text;
    for (const auto* text : {"", " ", "3,", "03", "33", "0,0,0,3", "3.0", "\t3"})
        EXPECT_FALSE(istNurLeerfeld(text)) << text;
}

TEST(StickaktionTest, KeineAktionHatKeinenText) {
    EXPECT_EQ(aktionstext(nullptr), "");
    EXPECT_EQ(aktionstext(std::make_shared<const Stickaktion>("4,x")), "4,x");
}
