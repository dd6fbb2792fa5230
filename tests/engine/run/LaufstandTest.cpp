// SPDX-License-Identifier: GPL-3.0-or-later
// What a run says it holds, and for whom: buttons and D-pad, sticks, slider, and what nobody holds any more.
#include "engine/run/Laufstand.h"

#include "store/files/Achsendatei.h"
#include "tests/engine/stick/Sticklauf.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace {

using Texte = std::vector<std::string>;

template <class... Faelle> struct Je : Faelle... { using Faelle::operator()...; };
template <class... Faelle> Je(Faelle...) -> Je<Faelle...>;

// "Links 2/3 Oben 1/1": number and count of the bands; "Mitte" without one.
std::string feldtext(const Feldname& feld) {
    constexpr std::array<const char*, 4> NAMEN{"Links", "Rechts", "Oben", "Unten"};
    std::string text;
    for (std::size_t i = 0; i < NAMEN.size(); ++i)
        if (const auto& band = feld.baender[i]; band.nummer != 0)
            text += (text.empty() ? "" : " ") + std::string(NAMEN[i]) + " " + std::to_string(band.nummer) +
                    "/" + std::to_string(band.anzahl);
    return text.empty() ? "Mitte" : text;
}

std::string haltungstext(const Haltung& haltung) {
    const auto halter =
        std::visit(Je{[](const OhneHalter&) { return std::string("niemand"); },
                      [](const Padhalter& pad) {
                          return "Slot " + std::to_string(pad.slot) + (pad.gedrueckt ? "" : " los");
                      },
                      [](const Stickhalter& stick) {
                          return "Stick " + (stick.feld ? feldtext(*stick.feld) : "ohne Feld");
                      },
                      [](const Schubhalter& schub) { return "Schub " + std::to_string(schub.feld); }},
                   haltung.halter);
    const auto wirkung = std::visit(
        Je{[](const Tastenwirkung& taste) {
               return std::to_string(taste.taste) + (taste.imTakt ? " im Takt" : "");
           },
           [](const Mausknopfwirkung& knopf) { return "Mausknopf " + std::to_string(knopf.knopf); },
           [](const Bewegungswirkung& bewegung) { return "Bewegung " + std::to_string(bewegung.richtung); },
           [](const Absolutwirkung& absolut) { return std::string(absolut.egoShooter ? "Ego" : "Binden"); }},
        haltung.wirkung);
    return halter + ": " + wirkung;
}

Texte texte(const Probelauf& lauf) {
    Texte alle;
    for (const auto& haltung : lauf.fenster->stand().haltungen)
        alle.push_back(haltungstext(haltung));
    return alle;
}

constexpr std::uint32_t KREUZ = 1U << 2;
constexpr std::uint32_t KREIS = 1U << 1;

} // namespace

// --- buttons ---

TEST(Laufstand, OhneDruckIstNichtsGehaltenUndDieEbeneIstDieUnterste) {
    Probelauf lauf{{"btn3", "1,65,0-0-0"}};
    lauf.starten();
    lauf.takt();
    EXPECT_EQ(lauf.fenster->stand(), (Laufstand{0, {}}));
}

TEST(Laufstand, NenntDieEbeneSolangeSieGilt) {
    Probelauf lauf{{"btn1", "3,0,0-0-0"}, {"btn2", "4,0,1-0-0"}};
    lauf.starten();
    lauf.takt(1);
    EXPECT_EQ(lauf.fenster->stand().ebene, 1);
    lauf.warten(1000);
    EXPECT_EQ(lauf.fenster->stand().ebene, 1);
    lauf.takt(0);
    EXPECT_EQ(lauf.fenster->stand().ebene, 0);
    lauf.takt(2);
    lauf.takt(0); // latched
    EXPECT_EQ(lauf.fenster->stand().ebene, 2);
}

TEST(Laufstand, EineTasteGehoertIhremButtonBisErLosgelassenIst) {
    Probelauf lauf{{"btn3", "1,65,0-0-0"}, {"btn2", "1,66,0-0-0"}};
    lauf.starten();
    lauf.takt(KREUZ);
    EXPECT_EQ(texte(lauf), Texte{"Slot 2: 65"});
    lauf.takt(KREUZ | KREIS);
    EXPECT_EQ(texte(lauf), (Texte{"Slot 1: 66", "Slot 2: 65"}));
    lauf.takt(KREIS);
    EXPECT_EQ(texte(lauf), Texte{"Slot 1: 66"});
    lauf.takt(0);
    EXPECT_EQ(texte(lauf), Texte{});
}

TEST(Laufstand, JederDruckIstEinEigener) {
    Probelauf lauf{{"btn3", "1,65,0-0-0"}};
    lauf.starten();
    lauf.takt(KREUZ);
    const auto erster = lauf.fenster->stand();
    lauf.warten(500);
    EXPECT_EQ(lauf.fenster->stand(), erster);
    lauf.takt(0);
    lauf.takt(KREUZ);
    EXPECT_NE(lauf.fenster->stand(), erster);
    EXPECT_EQ(texte(lauf), Texte{"Slot 2: 65"});
}

TEST(Laufstand, EineTasteImTaktBleibtInIhrerPauseUndIstImmerDieselbe) {
    Probelauf lauf{{"btn3", "1,65,1-50-100"}};
    lauf.starten();
    lauf.takt(KREUZ);
    const auto erster = lauf.fenster->stand();
    EXPECT_EQ(texte(lauf), Texte{"Slot 2: 65 im Takt"});
    for (int i = 0; i < 60; ++i) {
        lauf.takt();
        ASSERT_EQ(lauf.fenster->stand(), erster) << i;
    }
    lauf.takt(0);
    EXPECT_EQ(texte(lauf), Texte{});
}

TEST(Laufstand, DerZaehlerHaeltSeineZiffer) {
    Probelauf lauf{{"btn3", "0,0,0-0-0"}};
    lauf.starten();
    lauf.takt(KREUZ);
    EXPECT_EQ(texte(lauf), Texte{"Slot 2: 49"});
}

TEST(Laufstand, RichtungenDesSteuerkreuzes) {
    Probelauf lauf;
    Schemabau(lauf.datenbank, "T").taste(12, "1,38,0-0-0").taste(13, "1,39,0-0-0").anlegen();
    lauf.zustand.global.SchemaName = "T";
    lauf.starten();
    lauf.pad.zustand.dwPOV = 4500;
    lauf.takt();
    EXPECT_EQ(texte(lauf), (Texte{"Slot 12: 38", "Slot 13: 39"}));
    lauf.pad.zustand.dwPOV = 9000;
    lauf.takt();
    EXPECT_EQ(texte(lauf), Texte{"Slot 13: 39"});
    lauf.pad.zustand.dwPOV = JOY_POVCENTERED;
    lauf.takt();
    EXPECT_EQ(texte(lauf), Texte{});
}

TEST(Laufstand, EinMausknopfGehoertSeinemButtonEinRadschrittNiemandem) {
    Probelauf lauf{{"btn3", "5,0,1-0-0"}, {"btn2", "5,0,3-0-0"}};
    lauf.starten();
    lauf.takt(KREUZ | KREIS);
    EXPECT_EQ(texte(lauf), Texte{"Slot 2: Mausknopf 1"});
    lauf.takt(KREIS);
    EXPECT_EQ(texte(lauf), Texte{});
}

TEST(Laufstand, OhnePadGiltDerLetzteStand) {
    Probelauf lauf{{"btn3", "1,65,0-0-0"}};
    lauf.starten();
    lauf.takt(KREUZ);
    lauf.pad.da = false;
    lauf.warten(500);
    EXPECT_EQ(texte(lauf), Texte{"Slot 2: 65"});
}

// --- what nobody holds ---

TEST(Laufstand, EineTasteAusDemLetztenLaufHatEinenLosgelassenenButton) {
    Probelauf lauf{{"btn3", "1,65,0-0-0"}};
    lauf.starten();
    lauf.takt(KREUZ);
    lauf.fenster->beenden();
    lauf.pad.zustand.dwButtons = 0;
    lauf.starten();
    lauf.takt();
    EXPECT_EQ(texte(lauf), Texte{"Slot 2 los: 65"});
    lauf.takt(KREUZ);
    EXPECT_EQ(texte(lauf), Texte{"Slot 2: 65"});
    lauf.takt(0);
    EXPECT_EQ(texte(lauf), Texte{});
}

TEST(Laufstand, EinTaktDenDasEndeEinesLaufsTrifftIstKeinerMehr) {
    Probelauf lauf{{"btn3", "1,65,1-50-100"}};
    lauf.starten();
    lauf.takt(KREUZ);
    lauf.fenster->beenden();
    lauf.pad.zustand.dwButtons = 0;
    lauf.starten();
    lauf.takt();
    EXPECT_EQ(texte(lauf), Texte{"Slot 2 los: 65"});
}

TEST(Laufstand, EinMausknopfAusDemLetztenLaufBleibtBeiNiemandem) {
    Probelauf lauf{{"btn3", "5,0,0-0-0"}};
    lauf.starten();
    lauf.takt(KREUZ);
    lauf.fenster->beenden();
    lauf.pad.zustand.dwButtons = 0;
    lauf.starten();
    lauf.takt();
    EXPECT_EQ(texte(lauf), Texte{"niemand: Mausknopf 0"});
}

// --- sticks ---

namespace {

class StickstandTest : public testing::TestWithParam<Stickseite> {
protected:
    void starten() {
        lauf.starten();
        lauf.bewegen(MITTIG, MITTIG);
    }
    Texte stand() { return texte(lauf); }
    Sticklauf lauf{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(, StickstandTest, BEIDE_STICKS, sticknameVon);

constexpr Linienzeile LINKS{20000, 0, 0, 0};
constexpr Linienzeile RECHTS{0, 45000, 0, 0};
constexpr Linienzeile OBEN{0, 0, 20000, 0};
constexpr Linienzeile UNTEN{0, 0, 0, 45000};

} // namespace

TEST_P(StickstandTest, NenntSeiteUndFeldEinerGehaltenenTaste) {
    lauf.aktion(OBEN, "2,0,87,0,0");
    starten();
    EXPECT_EQ(stand(), Texte{});
    lauf.bewegen(MITTIG, NIEDRIG);
    EXPECT_EQ(stand(), Texte{"Stick Oben 1/1: 87"});
    EXPECT_EQ(std::get<Stickhalter>(lauf.fenster->stand().haltungen.at(0).halter).seite, GetParam());
    lauf.bewegen(MITTIG, MITTIG);
    EXPECT_EQ(stand(), Texte{});
}

TEST_P(StickstandTest, ZaehltDieBaenderJederRichtungVonDerMitteAus) {
    lauf.linien(2, AEUSSERE_LINIEN);
    for (const auto& feld : {Linienzeile{9000, 0, 0, 0}, {0, 56000, 0, 0}, {0, 0, 9000, 0}, {0, 0, 0, 56000}})
        lauf.aktion(feld, "2,0,87,0,0");
    for (const auto& feld : {LINKS, RECHTS, OBEN, UNTEN})
        lauf.aktion(feld, "2,0,83,0,0");
    starten();
    Texte alle;
    for (const auto& [x, y] : {std::pair{5000U, MITTIG},
                               {60000U, MITTIG},
                               {MITTIG, 5000U},
                               {MITTIG, 60000U},
                               {15000U, MITTIG},
                               {50000U, MITTIG},
                               {MITTIG, 15000U},
                               {MITTIG, 50000U}}) {
        lauf.bewegen(x, y);
        for (const auto& eine : stand())
            alle.push_back(eine);
        lauf.bewegen(MITTIG, MITTIG);
    }
    EXPECT_EQ(alle, (Texte{"Stick Links 2/2: 87", "Stick Rechts 2/2: 87", "Stick Oben 2/2: 87",
                           "Stick Unten 2/2: 87", "Stick Links 1/2: 83", "Stick Rechts 1/2: 83",
                           "Stick Oben 1/2: 83", "Stick Unten 1/2: 83"}));
}

TEST_P(StickstandTest, ZweiBaenderHaltenJedesDasSeine) {
    lauf.aktion(LINKS, "2,0,65,0,0");
    lauf.aktion(OBEN, "2,0,87,0,0");
    starten();
    lauf.bewegen(NIEDRIG, NIEDRIG);
    EXPECT_EQ(stand(), (Texte{"Stick Links 1/1: 65", "Stick Oben 1/1: 87"}));
}

TEST_P(StickstandTest, EineTasteImTaktBleibtInIhrerPauseEineOhneWiederholungNicht) {
    lauf.aktion(OBEN, "2,1,87,50,1,200");
    lauf.aktion(UNTEN, "2,1,83,50,0,0");
    starten();
    lauf.bewegen(MITTIG, NIEDRIG);
    for (int i = 0; i < 60; ++i) {
        lauf.takt();
        ASSERT_EQ(stand(), Texte{"Stick Oben 1/1: 87 im Takt"}) << i;
    }
    lauf.bewegen(MITTIG, MITTIG);
    EXPECT_EQ(stand(), Texte{});
    lauf.bewegen(MITTIG, HOCH);
    EXPECT_EQ(stand(), Texte{"Stick Unten 1/1: 83 im Takt"});
    lauf.warten(100);
    EXPECT_EQ(stand(), Texte{});
}

TEST_P(StickstandTest, EineBewegungDauertSolangeDerStickImFeldIst) {
    lauf.aktion(OBEN, "0,2,5,10");
    starten();
    lauf.bewegen(MITTIG, NIEDRIG);
    EXPECT_EQ(stand(), Texte{"Stick Oben 1/1: Bewegung 2"});
    lauf.warten(1000);
    EXPECT_EQ(stand(), Texte{"Stick Oben 1/1: Bewegung 2"});
    lauf.bewegen(MITTIG, MITTIG);
    EXPECT_EQ(stand(), Texte{});
}

TEST_P(StickstandTest, EineDiagonaleSindZweiBewegungen) {
    lauf.aktion(LINKS, "0,0,5,10");
    lauf.aktion(OBEN, "0,2,5,10");
    starten();
    lauf.bewegen(NIEDRIG, NIEDRIG);
    EXPECT_EQ(stand(), (Texte{"Stick Links 1/1: Bewegung 0", "Stick Oben 1/1: Bewegung 2"}));
}

TEST_P(StickstandTest, EinMausknopfDauertSolangeDerStickImFeldIst) {
    lauf.aktion(RECHTS, "1,2");
    lauf.aktion(LINKS, "1,3,120");
    starten();
    lauf.bewegen(HOCH, MITTIG);
    EXPECT_EQ(stand(), Texte{"Stick Rechts 1/1: Mausknopf 2"});
    lauf.bewegen(NIEDRIG, MITTIG);
    EXPECT_EQ(stand(), Texte{}); // a wheel holds nothing
}

TEST_P(StickstandTest, LeerfeldUndSperrfeldHaltenNichts) {
    lauf.aktion(LINKS, "3");
    lauf.aktion(OBEN, "4");
    starten();
    lauf.bewegen(NIEDRIG, MITTIG);
    EXPECT_EQ(stand(), Texte{});
    lauf.bewegen(MITTIG, NIEDRIG);
    EXPECT_EQ(stand(), Texte{});
}

TEST_P(StickstandTest, ImFeldBindenDauertSolangeDerStickImFeldIst) {
    lauf.aktion(LINKS, "5,1");
    lauf.aktion(OBEN, "5,0");
    starten();
    lauf.bewegen(NIEDRIG, MITTIG);
    EXPECT_EQ(stand(), Texte{"Stick Links 1/1: Binden"});
    lauf.bewegen(MITTIG, MITTIG);
    EXPECT_EQ(stand(), Texte{});
    lauf.bewegen(MITTIG, NIEDRIG);
    EXPECT_EQ(stand(), Texte{}); // centring is done at once
}

TEST_P(StickstandTest, EinEgoShooterGehtAusserhalbSeinesFeldesOhneFeldWeiter) {
    lauf.aktion(LINKS, "5,2,40,30");
    starten();
    lauf.bewegen(NIEDRIG, MITTIG);
    EXPECT_EQ(stand(), Texte{"Stick Links 1/1: Ego"});
    lauf.bewegen(HOCH, MITTIG);
    EXPECT_EQ(stand(), Texte{"Stick ohne Feld: Ego"});
    lauf.bewegen(MITTIG, MITTIG);
    EXPECT_EQ(stand(), Texte{});
}

TEST_P(StickstandTest, NachDemLaufBewegtSichNichtsMehrUndDieTasteBleibt) {
    lauf.aktion(LINKS, "0,0,5,10");
    lauf.aktion(OBEN, "2,0,87,0,0");
    starten();
    lauf.bewegen(NIEDRIG, NIEDRIG);
    EXPECT_EQ(stand(), (Texte{"Stick Links 1/1: Bewegung 0", "Stick Oben 1/1: 87"}));
    lauf.fenster->beenden();
    EXPECT_EQ(stand(), Texte{"Stick Oben 1/1: 87"});
}

// --- the timer of two sides ---

namespace {

/// The left stick's movement upward and the right stick's timed key to the right, which share a timer.
class GeteilterTimer : public testing::Test {
protected:
    GeteilterTimer() {
        lauf.aktion(OBEN, "0,2,5,25");
        Schemabau(lauf.datenbank).feld(Stickseite::Rechts, RECHTS, "2,1,65,50,1,30").ergaenzen();
        lauf.starten();
        lauf.bewegen(MITTIG, MITTIG);
    }
    void linkerNachOben() { lauf.bewegen(MITTIG, NIEDRIG); }
    void rechterNachRechts() {
        lauf.pad.zustand.dwZpos = HOCH;
        lauf.warten(10);
    }
    Texte stand() { return texte(lauf); }
    Sticklauf lauf{Stickseite::Links};
};

} // namespace

TEST_F(GeteilterTimer, DieTasteNimmtIhnDerBewegung) {
    linkerNachOben();
    EXPECT_EQ(stand(), Texte{"Stick Oben 1/1: Bewegung 2"});
    rechterNachRechts();
    EXPECT_EQ(stand(), Texte{"Stick Rechts 1/1: 65 im Takt"}) << "the movement stands still";
    lauf.warten(60);
    EXPECT_EQ(stand(), Texte{"Stick Rechts 1/1: 65 im Takt"}) << "in its pause";
}

TEST_F(GeteilterTimer, DieBewegungNimmtIhnDerTasteDieUntenBleibt) {
    rechterNachRechts();
    linkerNachOben();
    const Texte beide{"Stick Oben 1/1: Bewegung 2", "Stick Rechts 1/1: 65"};
    EXPECT_EQ(stand(), beide);
    lauf.warten(1000);
    EXPECT_EQ(stand(), beide) << "nothing lets it go";
}

// --- slider ---

namespace {

class Schubstandtest : public testing::Test {
protected:
    void starten(const std::string& schub) {
        const std::string schema = "S";
        Achsendatei datei((lauf.datenbank.ordner() / "Gamepad.xml").string(), schema);
        datei.AchsenLaden();
        datei.GamepadSchreiben(schub);
        schieben(100);
        lauf.starten();
        lauf.takt();
    }
    void schieben(std::uint32_t wert) {
        lauf.pad.zustand.dwUpos = wert;
        lauf.takt();
        lauf.takt();
    }
    Probelauf lauf;
};

constexpr std::uint32_t FELD_1 = 1000;
constexpr std::uint32_t FELD_2 = 30000;
constexpr std::uint32_t FELD_3 = 60000;

} // namespace

TEST_F(Schubstandtest, NenntFeldUndTaste) {
    starten("3/0-1-3-0(,,)/0-2-2-0(65,,)/0-3-2-1(66,50,100)");
    schieben(FELD_1);
    EXPECT_EQ(texte(lauf), Texte{});
    schieben(FELD_2);
    EXPECT_EQ(texte(lauf), Texte{"Schub 2: 65"});
    schieben(FELD_3);
    for (int i = 0; i < 60; ++i) {
        lauf.takt();
        ASSERT_EQ(texte(lauf), Texte{"Schub 3: 66 im Takt"}) << i;
    }
}

TEST_F(Schubstandtest, NenntBewegungUndMausknopf) {
    starten("3/0-1-3-0(,,)/0-2-0-1(10,5,)/0-3-1-1(,,)");
    schieben(FELD_2);
    EXPECT_EQ(texte(lauf), Texte{"Schub 2: Bewegung 1"});
    schieben(FELD_3);
    EXPECT_EQ(texte(lauf), Texte{"Schub 3: Mausknopf 1"});
    schieben(FELD_1);
    EXPECT_EQ(texte(lauf), Texte{});
}

TEST_F(Schubstandtest, EineTasteDieDenLaufUeberdauertHaeltNiemand) {
    starten("3/0-1-3-0(,,)/0-2-2-1(65,5000,)");
    schieben(FELD_2);
    EXPECT_EQ(texte(lauf), Texte{"Schub 2: 65 im Takt"});
    lauf.fenster->beenden();
    lauf.pad.zustand.dwUpos = FELD_1;
    lauf.starten();
    lauf.takt();
    EXPECT_EQ(texte(lauf), Texte{"niemand: 65"});
    lauf.warten(6000);
    EXPECT_EQ(texte(lauf), Texte{});
}
