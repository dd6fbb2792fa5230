// SPDX-License-Identifier: GPL-3.0-or-later
// What a stick's actions leave in the mask of the timers, in the timers themselves and in what a stick
// remembers.
#include "tests/engine/stick/Sticklauf.h"

#include "engine/run/TimerUeberwachung.h"

#include <gtest/gtest.h>

namespace {

constexpr std::uint32_t bit(int n) {
    return 1U << n;
}

/// What the two sides remember.
std::array<std::string, AKTIONSSEITEN> texte(const std::array<Aktionszeiger, AKTIONSSEITEN>& aktionen) {
    return {aktionstext(aktionen[X_SEITE]), aktionstext(aktionen[Y_SEITE])};
}

constexpr Linienzeile MITTE{0, 0, 0, 0};
constexpr Linienzeile LINKS{20000, 0, 0, 0};
constexpr Linienzeile OBEN{0, 0, 20000, 0};
constexpr Linienzeile ECKE{20000, 0, 20000, 0};

class AktionslaufTest : public testing::TestWithParam<Stickseite> {
protected:
    void starten() {
        lauf.starten();
        mitte();
    }
    void mitte() { lauf.bewegen(MITTIG, MITTIG); }
    void links() { lauf.bewegen(NIEDRIG, MITTIG); }
    void oben() { lauf.bewegen(MITTIG, NIEDRIG); }
    void linksOben() { lauf.bewegen(NIEDRIG, NIEDRIG); }

    /// Enters the field of one side with an action, leaves it, and expects bits and timer of the table.
    void erwarteBits(const std::string& aktion, Aktionsseite seite, std::uint32_t id, std::uint32_t drin,
                     std::uint32_t danach) {
        lauf.aktion(seite == X_SEITE ? LINKS : OBEN, aktion);
        starten();
        EXPECT_EQ(lauf.maske(), 0U);
        seite == X_SEITE ? links() : oben();
        EXPECT_EQ(lauf.maske(), drin);
        EXPECT_TRUE(lauf.uhr.laeuft(id));
        mitte();
        EXPECT_EQ(lauf.maske(), danach);
        EXPECT_FALSE(lauf.uhr.laeuft(id));
    }

    Sticklauf lauf{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(, AktionslaufTest, BEIDE_STICKS, sticknameVon);

} // namespace

// --- bits at start and stop ---

TEST_P(AktionslaufTest, TasteDerXSeite) {
    erwarteBits("2,1,65,100,0,0", X_SEITE, lauf.seitig(0U, 3U), lauf.seitig(bit(0), bit(5)), 0);
}

TEST_P(AktionslaufTest, TasteDerYSeite) {
    erwarteBits("2,1,65,100,0,0", Y_SEITE, lauf.seitig(1U, 4U), lauf.seitig(bit(1), bit(6)), 0);
}

TEST_P(AktionslaufTest, MausDerXSeite) {
    erwarteBits("0,0,5,20", X_SEITE, lauf.seitig(2U, 5U), lauf.seitig(bit(2), bit(7)), 0);
}

TEST_P(AktionslaufTest, MausDerYSeite) {
    erwarteBits("0,2,5,20", Y_SEITE, lauf.seitig(3U, 6U), lauf.seitig(bit(3), bit(8)), 0);
}

TEST_P(AktionslaufTest, BindenDerXSeiteLaesstLinksSeinBitStehen) {
    erwarteBits("5,1", X_SEITE, lauf.seitig(1414U, 1313U), lauf.seitig(bit(4), bit(9)),
                lauf.seitig(bit(4), 0U));
}

TEST_P(AktionslaufTest, BindenDerYSeiteLoeschtSeinBit) {
    erwarteBits("5,1", Y_SEITE, lauf.seitig(1414U, 1313U), lauf.seitig(bit(4), bit(9)), 0);
}

TEST_P(AktionslaufTest, EgoShooterDerXSeiteLaesstSeinBitStehen) {
    erwarteBits("5,2,4,5", X_SEITE, lauf.seitig(1414U, 1313U), bit(9), bit(9));
}

TEST_P(AktionslaufTest, EgoShooterDerYSeiteMitEinsAmEndeLoeschtDasBitVonBinden) {
    erwarteBits("5,2,4,1", Y_SEITE, lauf.seitig(1414U, 1313U), bit(9), lauf.seitig(bit(9), 0U));
}

TEST_P(AktionslaufTest, ReineTastenMaustastenUndZentrierenHabenKeinenZeitgeber) {
    lauf.aktion(LINKS, "2,0,65,0,0");
    lauf.aktion(OBEN, "1,0");
    lauf.aktion(ECKE, "5,0");
    starten();
    const auto laufende = lauf.uhr.laufende();
    for (const auto& [x, y] : {std::pair{NIEDRIG, MITTIG}, {MITTIG, NIEDRIG}, {NIEDRIG, NIEDRIG}}) {
        lauf.bewegen(x, y);
        EXPECT_EQ(lauf.maske(), 0U);
        EXPECT_EQ(lauf.uhr.laufende(), laufende);
    }
}

TEST_P(AktionslaufTest, DasTastenbitStehtInDerPauseUndFehltNachDemEinzigenDruck) {
    lauf.aktion(LINKS, "2,1,65,20,1,1000");
    lauf.aktion(OBEN, "2,1,65,20,0,0");
    starten();
    links();
    lauf.warten(100); // in the pause
    EXPECT_EQ(lauf.maske(), lauf.seitig(bit(0), bit(5)));
    oben();
    EXPECT_EQ(lauf.maske(), lauf.seitig(bit(1), bit(6)));
    lauf.warten(100);
    EXPECT_EQ(lauf.maske(), 0U);
    EXPECT_FALSE(lauf.uhr.laeuft(lauf.seitig(1U, 4U)));
    EXPECT_EQ(aktionstext(lauf.stand().TastenAktion[Y_SEITE]), "");
}

TEST_P(AktionslaufTest, DieDiagonaleSetztNurLinksDasBitDerXMaus) {
    lauf.aktion(LINKS, "0,0,5,20");
    lauf.aktion(OBEN, "0,2,7,20");
    starten();
    linksOben();
    EXPECT_EQ(lauf.maske(), lauf.seitig(bit(2), 0U));
    EXPECT_TRUE(lauf.uhr.laeuft(lauf.seitig(2U, 5U)));
    EXPECT_FALSE(lauf.uhr.laeuft(lauf.seitig(3U, 6U)));
    lauf.warten(50); // its ticks set it anew
    EXPECT_EQ(lauf.maske(), lauf.seitig(bit(2), 0U));
    mitte();
    EXPECT_EQ(lauf.maske(), 0U);
    EXPECT_FALSE(lauf.uhr.laeuft(lauf.seitig(2U, 5U)));
}

TEST_P(AktionslaufTest, SperrfeldLaesstDieMaskeStehen) {
    lauf.aktion(OBEN, "5,2,5,4");
    lauf.aktion(LINKS, "4");
    starten();
    oben();
    EXPECT_EQ(lauf.maske(), bit(9));
    // A corner whose x band alone has an action is no `Sperrfeld` itself: what runs is not ended before.
    lauf.bewegen(NIEDRIG, HOCH);
    EXPECT_FALSE(lauf.uhr.laeuft(lauf.seitig(1414U, 1313U)));
    EXPECT_EQ(lauf.maske(), bit(9));
}

TEST_P(AktionslaufTest, EinBetretenesSperrfeldBeendetDenEgoShooterDerYSeite) {
    lauf.aktion(OBEN, "5,2,5,4");
    lauf.aktion(LINKS, "4");
    starten();
    oben();
    links();
    EXPECT_FALSE(lauf.uhr.laeuft(lauf.seitig(1414U, 1313U)));
    EXPECT_EQ(lauf.maske(), lauf.seitig(bit(9), 0U)); // the bit of Im Feld binden is cleared
    EXPECT_EQ(aktionstext(lauf.stand().EgoDaten.aktion), "");
}

// --- the diagonal ---

TEST_P(AktionslaufTest, DiagonalFlagStehtNurWennBeideBaenderHandeln) {
    lauf.aktion(LINKS, "3");
    lauf.aktion(OBEN, "3");
    lauf.aktion({0, 45000, 0, 45000}, "3");
    starten();
    EXPECT_FALSE(lauf.stand().DiagonalFlag);
    linksOben();
    EXPECT_TRUE(lauf.stand().DiagonalFlag) << "whatever the actions are";
    links();
    EXPECT_FALSE(lauf.stand().DiagonalFlag);
    lauf.bewegen(NIEDRIG, HOCH);
    EXPECT_FALSE(lauf.stand().DiagonalFlag) << "x band alone";
    lauf.bewegen(HOCH, NIEDRIG);
    EXPECT_FALSE(lauf.stand().DiagonalFlag) << "y band alone";
    lauf.bewegen(HOCH, HOCH);
    EXPECT_FALSE(lauf.stand().DiagonalFlag) << "a field of its own";
}

TEST_P(AktionslaufTest, DiagonalFlagBleibtBisZumNaechstenFeldwechsel) {
    lauf.aktion(LINKS, "0,0,5,20");
    lauf.aktion(OBEN, "0,2,7,20");
    starten();
    linksOben();
    lauf.bewegen(NIEDRIG + 5, NIEDRIG + 5);
    EXPECT_TRUE(lauf.stand().DiagonalFlag);
    mitte();
    EXPECT_FALSE(lauf.stand().DiagonalFlag);
}

// --- what is remembered ---

TEST_P(AktionslaufTest, JedeSeiteMerktSichIhreLetzteAktion) {
    lauf.aktion(LINKS, "3,x");
    lauf.aktion(OBEN, "3,y");
    lauf.aktion(MITTE, "3,m");
    starten();
    EXPECT_EQ(texte(lauf.stand().AktionAlt), (std::array<std::string, 2>{"3,m", ""}));
    oben();
    EXPECT_EQ(texte(lauf.stand().AktionAlt), (std::array<std::string, 2>{"3,m", "3,y"}));
    links();
    EXPECT_EQ(texte(lauf.stand().AktionAlt), (std::array<std::string, 2>{"3,x", "3,y"}));
    lauf.bewegen(HOCH, MITTIG); // no action: nothing is started, nothing forgotten
    EXPECT_EQ(texte(lauf.stand().AktionAlt), (std::array<std::string, 2>{"3,x", "3,y"}));
    linksOben();
    EXPECT_EQ(texte(lauf.stand().AktionAlt), (std::array<std::string, 2>{"3,x", "3,y"}));
}

TEST_P(AktionslaufTest, DieMausaktionDerXSeiteLeertDieDerYSeite) {
    lauf.aktion(OBEN, "0,2,7,20");
    lauf.aktion(LINKS, "0,0,5,20");
    lauf.aktion(ECKE, "1,0");
    starten();
    oben();
    EXPECT_EQ(texte(lauf.stand().MausAktion), (std::array<std::string, 2>{"", "0,2,7,20"}));
    links();
    EXPECT_EQ(texte(lauf.stand().MausAktion), (std::array<std::string, 2>{"0,0,5,20", ""}));
    linksOben();
    EXPECT_EQ(texte(lauf.stand().MausAktion), (std::array<std::string, 2>{"1,0", ""}));
}

TEST_P(AktionslaufTest, DieTastenaktionBleibtWennDasFeldWaehrendDesDrucksVerlassenWird) {
    lauf.aktion(LINKS, "2,1,65,1000,1,1000");
    starten();
    links();
    mitte();
    EXPECT_EQ(aktionstext(lauf.stand().TastenAktion[X_SEITE]), "2,1,65,1000,1,1000");
}

TEST_P(AktionslaufTest, TastenStehenMitIhremSlotInDerUeberschrift) {
    lauf.aktion(LINKS, "2,0,65,0,0");
    lauf.aktion(OBEN, "2,1,66,1000,0,0");
    starten();
    lauf.anzeige.abholen();
    linksOben();
    mitte();
    auto gezeigt = lauf.anzeige.abholen();
    std::erase_if(gezeigt, [](const auto& text) { return !text.starts_with("Titel"); });
    EXPECT_EQ(gezeigt, lauf.seitig(std::vector<std::string>{"Titel = 17-65,", "Titel = 17-65,18-66,",
                                                            "Titel = 18-66,", "Titel = "},
                                   std::vector<std::string>{"Titel = 19-65,", "Titel = 19-65,20-66,",
                                                            "Titel = 20-66,", "Titel = "}));
}

// --- Ego Shooter ---

TEST_P(AktionslaufTest, EgoDatenSindBreiteHoeheUndKleinsteWerteDesFeldes) {
    lauf.linien(2, AEUSSERE_LINIEN);
    lauf.aktion({20000, 0, 0, 45000}, "5,2,4,5");
    starten();
    lauf.bewegen(NIEDRIG, HOCH);
    const auto& daten = lauf.stand().EgoDaten;
    EXPECT_EQ(daten.breite, 11000);
    EXPECT_EQ(daten.hoehe, 11000);
    EXPECT_EQ(daten.xMin, 9000);
    EXPECT_EQ(daten.yMin, 45000);
    EXPECT_EQ(aktionstext(daten.aktion), "5,2,4,5");
    EXPECT_EQ(lauf.gegeben().versatz[X_SEITE], 1000);
    EXPECT_EQ(lauf.gegeben().versatz[Y_SEITE], 10000);
}

TEST_P(AktionslaufTest, EgoStatusNenntDieAchsenAusserhalbDerMitte) {
    lauf.aktion(LINKS, "5,2,4,5");
    lauf.aktion(ECKE, "3");
    starten();
    links();
    EXPECT_EQ(lauf.stand().EgoStatus, 0) << "in its own field both work";
    lauf.bewegen(HOCH, MITTIG);
    EXPECT_EQ(lauf.stand().EgoStatus, 1);
    oben();
    EXPECT_EQ(lauf.stand().EgoStatus, 2);
    lauf.bewegen(HOCH, HOCH);
    EXPECT_EQ(lauf.stand().EgoStatus, 3);
    EXPECT_TRUE(lauf.uhr.laeuft(lauf.seitig(1414U, 1313U))) << "it rests, and its timer goes on";
    mitte();
    EXPECT_EQ(lauf.stand().EgoStatus, 0);
    EXPECT_FALSE(lauf.uhr.laeuft(lauf.seitig(1414U, 1313U)));
}

TEST_P(AktionslaufTest, EinEgoWegVonEinerMillionGehtInPortionenHinaus) {
    // From the middle of the field: half of the count.
    lauf.aktion(LINKS, "5,2,2000000,1");
    starten();
    lauf.eingabe.abholen();
    links();
    EXPECT_LE(lauf.eingabe.laengsterAufruf(), 1024U);
    const auto gesendet = lauf.eingabe.abholen();
    ASSERT_EQ(gesendet.size(), 1000000U + 1U); // x, and one step in y
    for (std::size_t i = 0; i < 1000000; ++i)
        ASSERT_TRUE(gesendet[i].mi.dx == 1 && gesendet[i].mi.dy == 0) << i;
    EXPECT_EQ(gesendet.back().mi.dy, 1);
    EXPECT_TRUE(lauf.fenster->pollt());
}

TEST_P(AktionslaufTest, EinLaengererEgoWegBeendetDenLauf) {
    lauf.aktion(LINKS, "5,2,2000002,1");
    starten();
    lauf.eingabe.abholen();
    links();
    EXPECT_EQ(lauf.eingabe.abholen().size(), 0U);
    EXPECT_FALSE(lauf.fenster->pollt());
    EXPECT_EQ(lauf.anzeige.abholen().back(), "Fehler = 6");
}

// The narrow field measures the way also after the stick has left it for a wide one: x 10 to 60000 in
// steps of a third is a way of 179970 counts, and the next entry makes it all at once.
TEST_P(AktionslaufTest, EinEgoWegUeberEinWeitesFeldHaeltDenLaufNichtAn) {
    lauf.linien(1, {5000, 45000, 20000, 45000});
    lauf.linien(2, {4000, 0, 0, 0});
    lauf.aktion({5000, 0, 0, 0}, "5,2,3000,50");
    starten();
    lauf.bewegen(4500, MITTIG);
    lauf.bewegen(MITTIG, NIEDRIG);
    for (std::uint32_t x = MITTIG; x < 60000; x += 500)
        lauf.bewegen(x, NIEDRIG);
    lauf.eingabe.abholen();
    lauf.bewegen(4500, MITTIG);
    EXPECT_TRUE(lauf.fenster->pollt());
    EXPECT_GT(lauf.eingabe.abholen().size(), 65535U);
}

// --- the records that go out ---

TEST_P(AktionslaufTest, EineBewegungNachRechtsIstEinMausdatensatz) {
    lauf.aktion(LINKS, "0,1,5,1000");
    starten();
    lauf.eingabe.abholen();
    links();
    const auto gesendet = lauf.eingabe.abholen();
    ASSERT_EQ(gesendet.size(), 1U);
    EXPECT_EQ(gesendet[0].type, INPUT_MOUSE);
    EXPECT_EQ(gesendet[0].mi.dx, 5);
    EXPECT_EQ(gesendet[0].mi.dy, 0);
    EXPECT_EQ(gesendet[0].mi.mouseData, 0U);
    EXPECT_EQ(gesendet[0].mi.dwFlags, 1U);
}

// To the left, up and down there is no difference, nor on the y side.
TEST_P(AktionslaufTest, NurDerLinkeStickSchicktDieBewegungNachRechtsDurchSendInput) {
    using enum ProbeEingabe::Eingang;
    lauf.aktion(LINKS, "0,1,5,20");
    lauf.aktion({0, 45000, 0, 0}, "0,0,5,1000");
    lauf.aktion(OBEN, "0,1,5,1000");
    starten();
    const auto eingaenge = [this] {
        auto alle = lauf.eingabe.eingaenge();
        lauf.eingabe.abholen();
        return alle;
    };
    using Eingaenge = std::vector<ProbeEingabe::Eingang>;
    eingaenge();
    links();
    EXPECT_EQ(eingaenge(), Eingaenge{lauf.seitig(SendInput, mouse_event)});
    lauf.warten(20);
    EXPECT_EQ(eingaenge(), Eingaenge{lauf.seitig(SendInput, mouse_event)}) << "by its timer";
    lauf.bewegen(HOCH, MITTIG);
    EXPECT_EQ(eingaenge(), Eingaenge{mouse_event});
    oben();
    EXPECT_EQ(eingaenge(), Eingaenge{mouse_event});
}

TEST_P(AktionslaufTest, EineUnbekannteRichtungBrauchtKeineWeiterenFelder) {
    lauf.aktion(LINKS, "0,4");
    lauf.aktion(OBEN, "0,4");
    starten();
    lauf.eingabe.abholen();
    links();
    oben();
    EXPECT_EQ(lauf.eingabe.abholen().size(), 0U);
    for (const std::uint32_t id : {2U, 3U, 5U, 6U})
        EXPECT_FALSE(lauf.uhr.laeuft(id)) << id;
    EXPECT_TRUE(lauf.fenster->pollt());
}

TEST_P(AktionslaufTest, DasEndeDesLaufsLaesstDieMaskeStehen) {
    lauf.aktion(LINKS, "0,0,5,20");
    starten();
    links();
    lauf.fenster->beenden();
    EXPECT_EQ(lauf.maske(), lauf.seitig(bit(2), bit(7)));
    EXPECT_EQ(lauf.uhr.laufende(), 0U);
}
