// SPDX-License-Identifier: GPL-3.0-or-later
// What the engine of a stick shows of the field it has found: zones, lines and actions, on both sticks.
#include "tests/engine/stick/Sticklauf.h"

#include <gtest/gtest.h>

namespace {

using Texte = std::vector<std::string>;

class StickMaschineTest : public testing::TestWithParam<Stickseite> {
protected:
    /// Starts with the stick in the middle.
    void starten() {
        lauf.starten();
        lauf.bewegen(MITTIG, MITTIG);
        gezeigt();
    }
    /// What came on this stick's labels since the last call, by their roles: x zone, y zone, first and second
    /// action.
    Texte gezeigt() {
        const Texte labels = lauf.seitig(Texte{"Erg(0) = ", "Erg(1) = ", "Erg(3) = ", "Erg(4) = "},
                                         Texte{"Erg(5) = ", "Erg(6) = ", "Erg(7) = ", "Erg(8) = "});
        const Texte rollen{"x ", "y ", "a ", "b "};
        Texte texte;
        for (const auto& zeile : lauf.anzeige.abholen())
            for (std::size_t i = 0; i < labels.size(); ++i)
                if (zeile.starts_with(labels[i]))
                    texte.push_back(rollen[i] + zeile.substr(labels[i].size()));
        return texte;
    }
    Texte nach(std::uint32_t x, std::uint32_t y) {
        lauf.bewegen(x, y);
        return gezeigt();
    }

    Sticklauf lauf{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(, StickMaschineTest, BEIDE_STICKS, sticknameVon);

} // namespace

TEST_P(StickMaschineTest, DieErsteAuswertungZeigtDieMitte) {
    lauf.aktion({0, 0, 0, 0}, "3,m");
    lauf.starten();
    lauf.takt();
    EXPECT_EQ(gezeigt(), Texte{});
    lauf.takt();
    EXPECT_EQ(gezeigt(), (Texte{"x Mitte:  ", "y Mitte:  ", "a 3,m", "b "}));
}

TEST_P(StickMaschineTest, JedesDerNeunFelderHatSeineZonenUndSeinenSchluessel) {
    lauf.aktion({0, 0, 0, 0}, "3,Mitte");
    lauf.aktion({20000, 0, 0, 0}, "3,L");
    lauf.aktion({0, 45000, 0, 0}, "3,R");
    lauf.aktion({0, 0, 20000, 0}, "3,O");
    lauf.aktion({0, 0, 0, 45000}, "3,U");
    lauf.aktion({20000, 0, 20000, 0}, "3,LO");
    lauf.aktion({20000, 0, 0, 45000}, "3,LU");
    lauf.aktion({0, 45000, 20000, 0}, "3,RO");
    lauf.aktion({0, 45000, 0, 45000}, "3,RU");
    starten();
    EXPECT_EQ(nach(NIEDRIG, MITTIG), (Texte{"x Links:  20000", "y Mitte:  ", "a 3,L", "b "}));
    EXPECT_EQ(nach(HOCH, MITTIG), (Texte{"x Rechts:  45000", "y Mitte:  ", "a 3,R", "b "}));
    EXPECT_EQ(nach(MITTIG, NIEDRIG), (Texte{"x Mitte:  ", "y Oben:  20000", "a 3,O", "b "}));
    EXPECT_EQ(nach(MITTIG, HOCH), (Texte{"x Mitte:  ", "y Unten:  45000", "a 3,U", "b "}));
    EXPECT_EQ(nach(NIEDRIG, NIEDRIG), (Texte{"x Links:  20000", "y Oben:  20000", "a 3,LO", "b "}));
    EXPECT_EQ(nach(NIEDRIG, HOCH), (Texte{"x Links:  20000", "y Unten:  45000", "a 3,LU", "b "}));
    EXPECT_EQ(nach(HOCH, NIEDRIG), (Texte{"x Rechts:  45000", "y Oben:  20000", "a 3,RO", "b "}));
    EXPECT_EQ(nach(HOCH, HOCH), (Texte{"x Rechts:  45000", "y Unten:  45000", "a 3,RU", "b "}));
    EXPECT_EQ(nach(MITTIG, MITTIG), (Texte{"x Mitte:  ", "y Mitte:  ", "a 3,Mitte", "b "}));
}

TEST_P(StickMaschineTest, DieGrenzenSindDieLinienDesFeldes) {
    lauf.linien(2, AEUSSERE_LINIEN);
    starten();
    EXPECT_EQ(lauf.stick().grenzen, (FeldGrenzen{45000, 20000, 45000, 20000}));
    nach(NIEDRIG, HOCH);
    EXPECT_EQ(lauf.stick().grenzen, (FeldGrenzen{20000, 9000, 56000, 45000}));
    nach(HOCH, NIEDRIG);
    EXPECT_EQ(lauf.stick().grenzen, (FeldGrenzen{56000, 45000, 20000, 9000}));
    nach(8999, 56001);
    EXPECT_EQ(lauf.stick().grenzen, (FeldGrenzen{9000, 0, 65535, 56000}));
    nach(56001, 8999);
    EXPECT_EQ(lauf.stick().grenzen, (FeldGrenzen{65535, 56000, 9000, 0}));
}

TEST_P(StickMaschineTest, DieNaechstenBaenderHeissenNachIhrerInnerenLinie) {
    lauf.linien(2, AEUSSERE_LINIEN);
    starten();
    EXPECT_EQ(nach(8999, 56001), (Texte{"x Links:  9000", "y Unten:  56000", "a ", "b "}));
    EXPECT_EQ(nach(56001, 8999), (Texte{"x Rechts:  56000", "y Oben:  9000", "a ", "b "}));
}

TEST_P(StickMaschineTest, OhneEigeneAktionZeigtDieEckeDieDerBaender) {
    lauf.aktion({20000, 0, 0, 0}, "3,L");
    lauf.aktion({0, 0, 0, 45000}, "3,U");
    starten();
    EXPECT_EQ(nach(NIEDRIG, HOCH), (Texte{"x Links:  20000", "y Unten:  45000", "a 3,L", "b 3,U"}));
    EXPECT_EQ(nach(NIEDRIG, NIEDRIG), (Texte{"x Links:  20000", "y Oben:  20000", "a 3,L", "b "}));
    EXPECT_EQ(nach(HOCH, HOCH), (Texte{"x Rechts:  45000", "y Unten:  45000", "a ", "b 3,U"}));
    EXPECT_EQ(nach(HOCH, NIEDRIG), (Texte{"x Rechts:  45000", "y Oben:  20000", "a ", "b "}));
}

TEST_P(StickMaschineTest, InEinerMittelzoneOhneAktionIstNichtsZuSehen) {
    lauf.aktion({20000, 0, 20000, 0}, "3,LO");
    starten();
    EXPECT_EQ(nach(NIEDRIG, MITTIG), (Texte{"x Links:  20000", "y Mitte:  ", "a ", "b "}));
    EXPECT_EQ(nach(MITTIG, NIEDRIG), (Texte{"x Mitte:  ", "y Oben:  20000", "a ", "b "}));
    EXPECT_EQ(nach(MITTIG, MITTIG), (Texte{"x Mitte:  ", "y Mitte:  ", "a ", "b "}));
}

TEST_P(StickMaschineTest, DieBaenderWerdenMittenImSchluesselEinesAnderenGefunden) {
    // No field has these keys, but their digits end as those of the bands do.
    lauf.aktion({120000, 0, 0, 0}, "3,fremd");
    starten();
    EXPECT_EQ(nach(NIEDRIG, NIEDRIG), (Texte{"x Links:  20000", "y Oben:  20000", "a 3,fremd", "b "}));
    EXPECT_EQ(aktionstext(lauf.stand().AktionAlt[X_SEITE]), "") << "what is shown is not started";
}

TEST_P(StickMaschineTest, DieBaenderWerdenMittenInEinerAktionGefunden) {
    lauf.aktion({1, 0, 0, 0}, "3,00200000");
    lauf.aktion({2, 0, 0, 0}, "3,dahinter");
    starten();
    EXPECT_EQ(nach(HOCH, NIEDRIG), (Texte{"x Rechts:  45000", "y Oben:  20000", "a ", "b 3,dahinter"}));
    EXPECT_EQ(aktionstext(lauf.stand().AktionAlt[Y_SEITE]), "");
}

TEST_P(StickMaschineTest, DieAktionReichtVomErstenPlusBisZumStrichpunkt) {
    lauf.aktion({20000, 0, 0, 0}, "3,a+b");
    lauf.aktion({0, 45000, 0, 0}, "3,a;b");
    starten();
    EXPECT_EQ(nach(NIEDRIG, MITTIG).at(2), "a 3,a+b");
    EXPECT_EQ(nach(HOCH, MITTIG).at(2), "a 3,a");
}

TEST_P(StickMaschineTest, AufEinerInnerenLinieNachRechtsFehltNurDieLinie) {
    lauf.linien(2, AEUSSERE_LINIEN);
    starten();
    // Evaluated at each tick; nothing changes, so the actions are not shown again.
    EXPECT_EQ(nach(56000, MITTIG), (Texte{"x Rechts:  ", "y Mitte:  ", "x Rechts:  ", "y Mitte:  "}));
    EXPECT_EQ(lauf.stick().grenzen, (FeldGrenzen{45000, 20000, 45000, 20000}));
}

TEST_P(StickMaschineTest, AufEinerInnerenLinieNachUntenFehltNurDieLinie) {
    lauf.linien(2, AEUSSERE_LINIEN);
    starten();
    EXPECT_EQ(nach(MITTIG, 56000), (Texte{"x Mitte:  ", "y Unten:  ", "x Mitte:  ", "y Unten:  "}));
    EXPECT_EQ(lauf.stick().grenzen, (FeldGrenzen{45000, 20000, 45000, 20000}));
}

TEST_P(StickMaschineTest, AufEinerInnerenLinieNachLinksGiltDasAeusserste) {
    lauf.linien(2, {12000, 0, 12000, 0});
    lauf.linien(3, {6000, 0, 6000, 0});
    lauf.datenbank.sql("INSERT INTO " + lauf.seitig<std::string>("tblStick", "tblStickR") +
                       " (Schemaname, \"index\") VALUES ('S', 4)");
    starten();
    // In x outside of its bounds: evaluated at both ticks, changed at the first.
    EXPECT_EQ(nach(12000, MITTIG),
              (Texte{"x Links:  6000", "y Mitte:  ", "a ", "b ", "x Links:  6000", "y Mitte:  "}));
    EXPECT_EQ(lauf.stick().grenzen, (FeldGrenzen{6000, 0, 45000, 20000}));
    // In both: twice a tick.
    EXPECT_EQ(nach(12000, 12000).size(), 10U);
    EXPECT_EQ(lauf.stick().grenzen, (FeldGrenzen{6000, 0, 6000, 0}));
}

TEST_P(StickMaschineTest, ImFeldWirdNichtsGezeigt) {
    starten();
    nach(NIEDRIG, MITTIG);
    EXPECT_EQ(nach(NIEDRIG + 1, MITTIG + 1), Texte{});
}

TEST_P(StickMaschineTest, DieAndereSeiteBleibtWieSieIst) {
    starten();
    const auto& anderer =
        lauf.seitig<const StickMaschine*>(&lauf.zustand.rechterStick, &lauf.zustand.linkerStick)->grenzen;
    const auto vorher = anderer;
    nach(NIEDRIG, HOCH);
    EXPECT_EQ(anderer, vorher);
}
