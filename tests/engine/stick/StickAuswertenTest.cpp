// SPDX-License-Identifier: GPL-3.0-or-later
// How the poll cycle treats the sticks: when they are evaluated, in which order, and what a change of layer
// does. An evaluation is seen by the zones that it shows.
#include "tests/engine/run/Probelauf.h"

#include <gtest/gtest.h>

namespace {

using Texte = std::vector<std::string>;

constexpr std::uint32_t UMSCHALT1 = 256;
constexpr std::uint32_t UMSCHALT2 = 512;

// Axis values of the base layer, whose lines are 20000 and 9000 inward, 45000 and 56000 outward.
constexpr std::uint32_t MITTE = 32767;
constexpr std::uint32_t INNERES_BAND = 15000;
constexpr std::uint32_t AUF_EINER_LINIE = 56000; // belongs to no band, so it stays out of its bounds
constexpr std::uint32_t GANZ_AUSSEN = 60000;

class StickAuswertenTest : public testing::Test {
protected:
    StickAuswertenTest() {
        lauf.mitSticks();
        Schemabau schema(lauf.datenbank);
        schema.ungeglaettet();
        for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
            schema
                .ebenenlinien(seite, 1,
                              {{{20000, 45000, 20000, 45000},
                                {21000, 46000, 21000, 46000},
                                {22000, 47000, 22000, 47000}}})
                .ebenenlinien(seite, 2, {{{9000, 56000, 9000, 56000}, {}, {}}})
                .sperre(seite, 0);
        schema.ergaenzen();
    }

    void sperren(const std::string& tabelle, int maske) const {
        lauf.datenbank.sql("UPDATE " + tabelle + " SET Links = " + std::to_string(maske) +
                           " WHERE \"index\" = 20");
    }
    void linksStellen(std::uint32_t x, std::uint32_t y) {
        lauf.pad.zustand.dwXpos = x;
        lauf.pad.zustand.dwYpos = y;
    }
    void rechtsStellen(std::uint32_t x, std::uint32_t y) {
        lauf.pad.zustand.dwZpos = x;
        lauf.pad.zustand.dwRpos = y;
    }
    /// Starts a run whose sticks have found their fields.
    void starten() {
        lauf.starten();
        lauf.takt();
        lauf.takt();
        lauf.anzeige.titel("");
        lauf.anzeige.abholen();
    }
    /// The evaluations since the last call: the stick, its x zone with the line, its y zone.
    Texte auswertungen() {
        Texte alle;
        for (const auto& text : lauf.anzeige.abholen()) {
            const auto zone = [&](std::string_view label) { return text.substr(label.size()); };
            if (text.starts_with("Erg(0) = "))
                alle.push_back("L " + zone("Erg(0) = "));
            else if (text.starts_with("Erg(5) = "))
                alle.push_back("R " + zone("Erg(5) = "));
            else if (text.starts_with("Erg(1) = ") || text.starts_with("Erg(6) = "))
                alle.back() += " | " + zone("Erg(n) = ");
        }
        return alle;
    }
    StickMaschine& links() { return lauf.zustand.linkerStick; }
    Stickposition position() { return lauf.zustand.gegeben.stick(Stickseite::Links).position; }

    Probelauf lauf{{"btn9", "3,0,0-0-0"}, {"btn10", "4,0,0-0-0"}};
};

const std::string IN_DER_MITTE = "Mitte:   | Mitte:  ";

TEST_F(StickAuswertenTest, InnerhalbDerGrenzenWirdNurGelesen) {
    starten();
    linksStellen(MITTE + 1, MITTE - 1);
    lauf.takt();
    EXPECT_EQ(auswertungen(), Texte{});
    EXPECT_EQ(position(), (Stickposition{MITTE + 1, MITTE - 1}));
}

TEST_F(StickAuswertenTest, AusserhalbInXUndYWirdZweimalAusgewertetLinksVorRechts) {
    starten();
    linksStellen(AUF_EINER_LINIE, AUF_EINER_LINIE);
    rechtsStellen(AUF_EINER_LINIE, AUF_EINER_LINIE);
    lauf.takt();
    EXPECT_EQ(auswertungen(), (Texte{"L Rechts:   | Unten:  ", "L Rechts:   | Unten:  ",
                                     "R Rechts:   | Unten:  ", "R Rechts:   | Unten:  "}));
}

TEST_F(StickAuswertenTest, GrenzenDieDieErsteAuswertungSetztGeltenFuerDieZweite) {
    starten();
    linksStellen(GANZ_AUSSEN, GANZ_AUSSEN);
    lauf.takt();
    EXPECT_EQ(auswertungen(), (Texte{"L Rechts:  56000 | Unten:  56000"}));
}

TEST_F(StickAuswertenTest, NurInYAusserhalbWirdEinmalAusgewertet) {
    starten();
    rechtsStellen(MITTE, AUF_EINER_LINIE);
    lauf.takt();
    EXPECT_EQ(auswertungen(), (Texte{"R Mitte:   | Unten:  "}));
}

TEST_F(StickAuswertenTest, DieGrenzenGehoerenZumFeld) {
    starten();
    struct Fall {
        std::uint32_t x;
        std::uint32_t y;
        bool drin;
    };
    for (const auto& fall : {Fall{20000, MITTE, true}, Fall{19999, MITTE, false}, Fall{45000, MITTE, true},
                             Fall{45001, MITTE, false}, Fall{MITTE, 20000, true}, Fall{MITTE, 19999, false},
                             Fall{MITTE, 45000, true}, Fall{MITTE, 45001, false}}) {
        linksStellen(MITTE, MITTE);
        lauf.takt();
        auswertungen();
        linksStellen(fall.x, fall.y);
        lauf.takt();
        EXPECT_EQ(auswertungen().size(), fall.drin ? 0U : 1U) << fall.x << ", " << fall.y;
    }
}

TEST_F(StickAuswertenTest, EinGesperrterStickMerktSichNurSeinePosition) {
    sperren("tblStick", 1);
    sperren("tblStickR", 2 + 4);
    starten();
    linksStellen(GANZ_AUSSEN, MITTE);
    rechtsStellen(GANZ_AUSSEN, MITTE);
    lauf.takt();
    EXPECT_EQ(auswertungen(), (Texte{"R Rechts:  56000 | Mitte:  "}));
    EXPECT_EQ(position(), (Stickposition{GANZ_AUSSEN, MITTE}));
}

TEST_F(StickAuswertenTest, BeimLadenWirdNichtAusgewertet) {
    lauf.starten();
    EXPECT_EQ(auswertungen(), Texte{});
    EXPECT_EQ(links().grenzen, FeldGrenzen{});
}

TEST_F(StickAuswertenTest, Umschalt1LoeschtDieGrenzenUndWertetNeuAus) {
    linksStellen(INNERES_BAND, MITTE);
    starten();
    lauf.takt(UMSCHALT1);
    EXPECT_EQ(auswertungen(), (Texte{"L Links:  21000 | Mitte:  ", "R " + IN_DER_MITTE}));
    EXPECT_EQ(links().grenzen, (FeldGrenzen{21000, 0, 46000, 21000}));
}

// A stick that is locked in the new layer is evaluated before it is entered, one that is locked in the old
// one after that.
TEST_F(StickAuswertenTest, Umschalt1WertetNochUnterDenSperrenDerAltenEbeneAus) {
    linksStellen(INNERES_BAND, MITTE);
    sperren("tblStick", 1);
    sperren("tblStickR", 2);
    starten();
    lauf.takt(UMSCHALT1);
    EXPECT_EQ(auswertungen(), (Texte{"R " + IN_DER_MITTE, "L Links:  21000 | Mitte:  "}));
}

TEST_F(StickAuswertenTest, Umschalt2LaesstDieGrenzenStehen) {
    linksStellen(INNERES_BAND, MITTE);
    starten();
    lauf.takt(UMSCHALT2);
    EXPECT_EQ(auswertungen(), Texte{});
    EXPECT_EQ(links().grenzen, (FeldGrenzen{20000, 9000, 45000, 20000}));
    linksStellen(8999, MITTE);
    lauf.takt(UMSCHALT2);
    EXPECT_EQ(auswertungen(), (Texte{"L Links:  22000 | Mitte:  "}));
}

TEST_F(StickAuswertenTest, ZurueckInDieGrundebeneWertetNochUnterDenSperrenDerAltenAus) {
    linksStellen(INNERES_BAND, MITTE);
    for (const auto& [umschalttaste, sperre] : {std::pair{UMSCHALT1, 2}, std::pair{UMSCHALT2, 4}}) {
        sperren("tblStick", 0);
        starten();
        lauf.takt(umschalttaste);
        auswertungen();
        lauf.takt(0);
        EXPECT_EQ(auswertungen(), (Texte{"L Links:  20000 | Mitte:  ", "R " + IN_DER_MITTE})) << sperre;

        sperren("tblStick", sperre);
        lauf.takt(umschalttaste);
        auswertungen();
        lauf.takt(0);
        // The lock is that of the tables, which are the new ones already; the layer is the old one.
        EXPECT_EQ(auswertungen(), (Texte{"R " + IN_DER_MITTE, "L Links:  20000 | Mitte:  "})) << sperre;
        lauf.fenster.reset();
    }
}

TEST_F(StickAuswertenTest, OhneEbenenwechselBleibenDieGrenzenBeiLosgelassenenTasten) {
    starten();
    lauf.takt(4);
    lauf.takt(0);
    EXPECT_EQ(auswertungen(), Texte{});
    EXPECT_EQ(links().grenzen, (FeldGrenzen{45000, 20000, 45000, 20000}));
}

TEST_F(StickAuswertenTest, EineFestgestellteEbeneBleibtGeladen) {
    lauf.datenbank.sql("UPDATE tblTastatur SET btn10 = '4,0,1-0-0'");
    starten();
    lauf.takt(UMSCHALT2);
    lauf.takt(UMSCHALT2);
    lauf.takt(0);
    lauf.takt(0);
    auswertungen();
    linksStellen(19999, MITTE);
    lauf.takt(0);
    EXPECT_EQ(auswertungen(), (Texte{"L Links:  22000 | Mitte:  "}));
}

TEST_F(StickAuswertenTest, DieTastenDesTaktsKommenVorDenSticks) {
    lauf.datenbank.sql("UPDATE tblTastatur SET btn3 = '1,65,0-0-0'");
    starten();
    linksStellen(GANZ_AUSSEN, MITTE);
    lauf.takt(4);
    auto gezeigt = lauf.anzeige.abholen();
    ASSERT_GE(gezeigt.size(), 3U);
    gezeigt.resize(3);
    EXPECT_EQ(gezeigt, (Texte{"Label1(0) = 4", "Titel = 2-65,", "Erg(0) = Rechts:  56000"}));
}

TEST_F(StickAuswertenTest, GrenzenUndPositionUeberdauernDenLauf) {
    linksStellen(INNERES_BAND, MITTE);
    starten();
    lauf.fenster->beenden();
    lauf.starten();
    EXPECT_EQ(links().grenzen, (FeldGrenzen{20000, 9000, 45000, 20000}));
    EXPECT_EQ(position(), (Stickposition{INNERES_BAND, MITTE}));
    lauf.takt();
    EXPECT_EQ(auswertungen(), Texte{});
}

} // namespace
