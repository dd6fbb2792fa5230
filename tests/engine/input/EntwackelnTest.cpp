// SPDX-License-Identifier: GPL-3.0-or-later
// The smoothing: the filter of one axis sample by sample, and the timer that feeds the four of them.
#include "engine/input/Entwackeln.h"
#include "engine/input/Achsen.h"

#include "engine/run/TimerUeberwachung.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeUhr.h"
#include "store/files/Achsendatei.h"
#include "tests/hilfen/ProbeAnzeige.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using Einstellung = Achsenfilter::Einstellung;
using Texte = std::vector<std::string>;

class AchsenfilterTest : public testing::Test {
protected:
    /// Takes the samples one by one; gives the last report.
    std::string proben(std::initializer_list<std::int32_t> werte) {
        std::string bericht;
        for (const auto wert : werte)
            filter.glaetten(wert, einstellung, &bericht);
        return bericht;
    }
    std::string proben(int anzahl, std::int32_t wert) {
        std::string bericht;
        for (int i = 0; i < anzahl; ++i)
            filter.glaetten(wert, einstellung, &bericht);
        return bericht;
    }
    std::int32_t ausgabeNach(std::int32_t wert) {
        filter.glaetten(wert, einstellung);
        return filter.ausgabe();
    }
    void fenster(int n) { einstellung.fenster = n; }

    Einstellung einstellung{3, 0, 20, 20};
    Achsenfilter filter;
};

} // namespace

// For each window and each number of rounds: turned it stands as if it had taken the samples.
TEST_F(AchsenfilterTest, EinerDerHaeltDrehtSichWieMitLauterGleichenProben) {
    for (const std::int32_t wert : {0, 1, 32767})
        for (const int n : {1, 2, 3, 29, 30})
            for (const int runden : {0, 1, n - 1, n, n + 1, 1000}) {
                fenster(n);
                filter = {};
                proben(2 * n, wert);
                ASSERT_TRUE(filter.haelt(wert, n)) << wert << " " << n;
                auto gedreht = filter;
                gedreht.drehen(static_cast<std::uint64_t>(runden), n);
                proben(runden, wert);
                EXPECT_EQ(filter, gedreht) << wert << " " << n << " " << runden;
            }
}

TEST_F(AchsenfilterTest, NurEinVollesFensterMitDemWertDerHerauskommtHaelt) {
    proben(5, 500);
    EXPECT_FALSE(filter.haelt(500, 3)); // the last sample of the first round is not valid yet
    proben(1, 500);
    EXPECT_TRUE(filter.haelt(500, 3));
    EXPECT_FALSE(filter.haelt(501, 3));
    EXPECT_FALSE(filter.haelt(500, 4)); // a larger window has rows that nothing is in
    EXPECT_TRUE(filter.haelt(500, 3));
    proben(1, 510);
    EXPECT_EQ(filter.ausgabe(), 500); // held within the margin
    EXPECT_FALSE(filter.haelt(510, 3));
    EXPECT_FALSE(filter.haelt(500, 3));
}

TEST_F(AchsenfilterTest, DerGroesserWarAlsDasFensterHaeltNochNicht) {
    fenster(10);
    proben(25, 500); // stands at row 5
    ASSERT_TRUE(filter.haelt(500, 10));
    EXPECT_TRUE(filter.haelt(500, 5));
    EXPECT_FALSE(filter.haelt(500, 4)); // runs on to row 30
}

TEST_F(AchsenfilterTest, DerAnderesHerausgibtHaeltNicht) {
    fenster(6);
    for (int runde = 0; runde < 3; ++runde) {
        proben({510, 510});
        EXPECT_EQ(filter.ausgabe(), runde < 2 ? 510 : 500); // once the longer run is valid
        if (runde < 2)
            proben({500, 500, 500, 500});
    }
    EXPECT_FALSE(filter.haelt(510, 2)); // the next sample comes out in a window that was made so small
    fenster(2);
    EXPECT_EQ(ausgabeNach(510), 510);
}

TEST_F(AchsenfilterTest, VorDerErstenProbeIstDieAusgabeNull) {
    EXPECT_EQ(filter.ausgabe(), 0);
}

TEST_F(AchsenfilterTest, GueltigIstEineProbeDieDerEinerRundeZuvorGleicht) {
    EXPECT_EQ(proben({5}), "0 --- 3\n\n0 --- 0");
    EXPECT_EQ(proben({5, 5}), "0 --- 3\n\n0 --- 0");
    EXPECT_EQ(proben({5}), "1 --- 2\n\n0 --- 0");
    EXPECT_EQ(proben({5}), "2 --- 1\n5  ---  1\n\n1 --- 5");
    EXPECT_EQ(proben({5}), "3 --- 0\n5  ---  2\n\n2 --- 5");
    EXPECT_EQ(proben({6}), "2 --- 1\n5  ---  1\n\n1 --- 5");
}

TEST_F(AchsenfilterTest, VerglichenWirdNurGenauGleiches) {
    EXPECT_EQ(proben({5, 5, 5, 6, 4, 5}), "1 --- 2\n\n0 --- 0");
}

TEST_F(AchsenfilterTest, MitFensterEinsKommtAllesDurch) {
    einstellung = {1, 0, 1000, 1000};
    EXPECT_EQ(proben({7}), "0 --- 1\n\n0 --- 0");
    EXPECT_EQ(proben({7}), "1 --- 0\n\n0 --- 0");
    EXPECT_EQ(ausgabeNach(7), 7);
    EXPECT_EQ(ausgabeNach(8), 8);
}

TEST_F(AchsenfilterTest, EineNullIstGueltigUndZaehltNie) {
    // The ring is full of zeros at first.
    EXPECT_EQ(proben({0}), "1 --- 2\n\n0 --- 0");
    EXPECT_EQ(proben({0, 0}), "3 --- 0\n\n0 --- 0");
    EXPECT_EQ(proben({0, 0, 0}), "3 --- 0\n\n0 --- 0");
    EXPECT_EQ(ausgabeNach(1), 1);
}

TEST_F(AchsenfilterTest, EineNullTrenntEinenLauf) {
    EXPECT_EQ(proben({5, 0, 5, 5, 0, 5}), "3 --- 0\n\n0 --- 0");
}

TEST_F(AchsenfilterTest, NullenVornNehmenDerAchseKeinenPlatz) {
    fenster(5);
    EXPECT_EQ(proben({0, 0, 0, 5, 5, 0, 0, 0, 5, 5}), "5 --- 0\n5  ---  1\n\n1 --- 5");
}

TEST_F(AchsenfilterTest, EineUngueltigeProbeTrenntKeinenLauf) {
    EXPECT_EQ(proben({5, 6, 5, 5, 7, 5}), "2 --- 1\n5  ---  1\n\n1 --- 5");
}

TEST_F(AchsenfilterTest, GezaehltWerdenLaeufeUndNichtHaeufigkeiten) {
    fenster(4);
    EXPECT_EQ(proben({50, 60, 50, 50, 50, 60, 50, 50}), "4 --- 0\n50  ---  1\n\n1 --- 50");
    fenster(5);
    filter = {};
    EXPECT_EQ(proben({50, 50, 60, 50, 50, 50, 50, 60, 50, 50}),
              "5 --- 0\n50  ---  1\n50  ---  1\n\n1 --- 50");
}

TEST_F(AchsenfilterTest, DerLaengereLaufGewinnt) {
    fenster(5);
    EXPECT_EQ(proben({50, 50, 60, 60, 60, 50, 50, 60, 60, 60}),
              "5 --- 0\n50  ---  1\n60  ---  2\n\n2 --- 60");
}

TEST_F(AchsenfilterTest, UnterGleichenGewinntDerErsteDerReihenfolgeImRing) {
    fenster(4);
    EXPECT_EQ(proben({50, 50, 60, 60, 50, 50, 60, 60}), "4 --- 0\n50  ---  1\n60  ---  1\n\n1 --- 50");
    EXPECT_EQ(filter.ausgabe(), 50) << "raw was 60";
    // In the ring, not in time: the newest two are 50 now, and stand first.
    EXPECT_EQ(proben({50, 50}), "4 --- 0\n50  ---  1\n60  ---  1\n\n1 --- 50");
}

TEST_F(AchsenfilterTest, AbwechselndeWerteGeltenNurWennDiePeriodeInsFensterPasst) {
    fenster(10);
    for (int i = 0; i < 10; ++i)
        proben({50, 60});
    EXPECT_EQ(proben({50}), "10 --- 0\n\n0 --- 0") << "runs of one count nothing";
    EXPECT_EQ(filter.ausgabe(), 50);
    filter = {};
    fenster(9);
    for (int i = 0; i < 10; ++i)
        proben({50, 60});
    EXPECT_EQ(proben({50}), "0 --- 9\n\n0 --- 0");
}

TEST_F(AchsenfilterTest, EinZitternWirdGehaltenEineBewegungNicht) {
    einstellung = {10, 2, 100, 100};
    proben(20, 30000);
    EXPECT_EQ(filter.ausgabe(), 30000);
    EXPECT_EQ(ausgabeNach(30050), 30000);
    EXPECT_EQ(ausgabeNach(31000), 31000);
    EXPECT_EQ(ausgabeNach(30000), 30000);
}

TEST_F(AchsenfilterTest, ZweiRundenBisAlleGelten) {
    fenster(10);
    EXPECT_EQ(proben(10, 30000), "0 --- 10\n\n0 --- 0");
    EXPECT_EQ(proben(9, 30000), "9 --- 1\n30000  ---  8\n\n8 --- 30000");
    EXPECT_EQ(proben(1, 30000), "10 --- 0\n30000  ---  9\n\n9 --- 30000");
}

TEST_F(AchsenfilterTest, DieMindestzahlMussUebertroffenWerden) {
    // After six samples of 50 the ring of three counts 2; the next other value leaves a count of 1.
    for (const auto& [mindestzahl, gehalten] : {std::pair{0, true}, {1, false}, {2, false}}) {
        filter = {};
        einstellung = {3, mindestzahl, 20, 20};
        proben(6, 50);
        EXPECT_EQ(ausgabeNach(60), gehalten ? 50 : 60) << mindestzahl;
    }
}

TEST_F(AchsenfilterTest, DieRaenderGehoerenDazu) {
    struct Fall {
        std::int32_t wert;
        bool gehalten;
    };
    for (const auto& fall :
         {Fall{989, false}, {990, true}, {991, true}, {1029, true}, {1030, true}, {1031, false}}) {
        filter = {};
        einstellung = {5, 0, 10, 30};
        proben(10, 1000);
        EXPECT_EQ(ausgabeNach(fall.wert), fall.gehalten ? 1000 : fall.wert) << fall.wert;
    }
}

TEST_F(AchsenfilterTest, OhneHaeufigstenLiegenDieRaenderUmNull) {
    einstellung = {3, 0, 20, 20};
    EXPECT_EQ(ausgabeNach(20), 20);
    EXPECT_EQ(ausgabeNach(21), 21);
}

TEST_F(AchsenfilterTest, NachKleineremFensterLaeuftDiePositionBisDreissigWeiter) {
    fenster(5);
    proben(4, 9); // rows 1 to 4
    fenster(2);
    EXPECT_EQ(proben(26, 9), "0 --- 2\n\n0 --- 0"); // rows 5 to 30
    EXPECT_EQ(proben({9}), "1 --- 1\n\n0 --- 0");   // row 1, as it was
    EXPECT_EQ(proben({9}), "2 --- 0\n9  ---  1\n\n1 --- 9");
    EXPECT_EQ(proben({8}), "1 --- 1\n\n0 --- 0"); // row 1 again
}

TEST_F(AchsenfilterTest, NachFensterGenauAufDerPositionGehtEsVornWeiter) {
    fenster(5);
    proben(2, 9);
    fenster(2);
    EXPECT_EQ(proben({9}), "1 --- 1\n\n0 --- 0");
}

TEST_F(AchsenfilterTest, NachGroesseremFensterGehtEsDahinterWeiter) {
    fenster(2);
    proben(4, 9);
    fenster(4);
    EXPECT_EQ(proben({9}), "2 --- 2\n9  ---  1\n\n1 --- 9"); // row 3 held nothing yet
    EXPECT_EQ(proben({9, 9}), "2 --- 2\n9  ---  1\n\n1 --- 9");
    EXPECT_EQ(proben({9, 9}), "3 --- 1\n9  ---  2\n\n2 --- 9");
}

TEST_F(AchsenfilterTest, DasGroessteFensterFasstDreissig) {
    fenster(30);
    EXPECT_EQ(proben(60, 65535), "30 --- 0\n65535  ---  29\n\n29 --- 65535");
}

TEST_F(AchsenfilterTest, OhneBerichtKommtDasselbeHeraus) {
    Achsenfilter stumm;
    for (const std::int32_t wert : {50, 50, 50, 50, 50, 60, 50, 71, 50}) {
        std::string bericht;
        filter.glaetten(wert, einstellung, &bericht);
        stumm.glaetten(wert, einstellung);
        EXPECT_EQ(stumm.ausgabe(), filter.ausgabe());
    }
}

// --- the timer and the four axes ---

namespace {

class EntwackelnTest : public testing::Test {
protected:
    EntwackelnTest() {
        achsendatei.AchsenLaden(); // there is no file: the default assignment
        entwackeln.berichten(true);
    }

    Testordner ordner;
    ProbeUhr uhr;
    ProbeJoystick pad;
    ProbeAnzeige anzeige;
    std::string auswahl = "S";
    Achsendatei achsendatei{(ordner.pfad() / "Gamepad.xml").string(), auswahl};
    Achsen achsen{pad, achsendatei};
    Reglerwerte regler;
    Entwackelstand stand;
    Entwackeln entwackeln{stand, achsen, regler, uhr, anzeige};
};

/// A pad whose axes tell how often it was polled: x reads 1 at the first poll, y 2, z 3, r 4.
class Zaehlpad final : public Joystick {
public:
    std::uint32_t joyGetPosEx(std::uint32_t, JOYINFOEX& info) override {
        ++abfragen;
        info.dwXpos = abfragen;
        info.dwYpos = abfragen + 1;
        info.dwZpos = abfragen + 2;
        info.dwRpos = abfragen + 3;
        return JOYERR_NOERROR;
    }
    std::uint32_t abfragen = 0;
};

} // namespace

TEST_F(EntwackelnTest, JederSticklaeuftBeimErstenLesenAn) {
    for (const auto seite : {Stickseite::Links, Stickseite::Rechts}) {
        EXPECT_FALSE(entwackeln.laeuft());
        EXPECT_FALSE(uhr.laeuft(timerid::ENTWACKELN));
        EXPECT_EQ(entwackeln.stickLesen(seite), (Stickposition{0, 0}));
        EXPECT_TRUE(entwackeln.laeuft());
        EXPECT_TRUE(uhr.laeuft(timerid::ENTWACKELN));
        entwackeln.EntwackelnStoppen();
    }
}

TEST_F(EntwackelnTest, BisZumErstenTaktBleibenDieWerte) {
    entwackeln.LinkerStickLesen();
    pad.zustand.dwXpos = 111;
    pad.zustand.dwYpos = 222;
    pad.zustand.dwZpos = 333;
    pad.zustand.dwRpos = 444;
    EXPECT_EQ(entwackeln.LinkerStickLesen(), (Stickposition{0, 0}));
    uhr.vorUm(1ms);
    EXPECT_EQ(entwackeln.LinkerStickLesen(), (Stickposition{111, 222}));
    EXPECT_EQ(entwackeln.RechterStickLesen(), (Stickposition{333, 444}));
}

TEST_F(EntwackelnTest, EinWeiteresLesenStelltDenZeitgeberNichtNeu) {
    entwackeln.LinkerStickLesen();
    uhr.vorVor(1ms);
    entwackeln.RechterStickLesen();
    uhr.vorBis(1ms);
    EXPECT_EQ(entwackeln.LinkerStickLesen().x, static_cast<std::int32_t>(JOY_AXIS_RUHE));
}

TEST_F(EntwackelnTest, DerTaktKommtJedeMillisekunde) {
    entwackeln.LinkerStickLesen();
    for (const std::uint32_t wert : {5U, 6U, 7U}) {
        pad.zustand.dwXpos = wert;
        uhr.vorUm(1ms);
        EXPECT_EQ(entwackeln.LinkerStickLesen().x, static_cast<std::int32_t>(wert));
    }
}

TEST_F(EntwackelnTest, NachDemStoppenStelltDasNaechsteLesenIhnNeu) {
    entwackeln.LinkerStickLesen();
    uhr.vorUm(3ms);
    entwackeln.EntwackelnStoppen();
    EXPECT_FALSE(entwackeln.laeuft());
    EXPECT_FALSE(uhr.laeuft(timerid::ENTWACKELN));
    pad.zustand.dwXpos = 5;
    uhr.vorUm(3ms);
    EXPECT_EQ(entwackeln.LinkerStickLesen().x, static_cast<std::int32_t>(JOY_AXIS_RUHE)) << "the last value";
    EXPECT_TRUE(uhr.laeuft(timerid::ENTWACKELN));
    uhr.vorUm(1ms);
    EXPECT_EQ(entwackeln.LinkerStickLesen().x, 5);
}

TEST_F(EntwackelnTest, NurDerZeitgeberGestopptUndKeinLesenStelltIhnNeu) {
    entwackeln.LinkerStickLesen();
    entwackeln.EntwackelnStoppen(true);
    EXPECT_TRUE(entwackeln.laeuft());
    EXPECT_FALSE(uhr.laeuft(timerid::ENTWACKELN));
    entwackeln.LinkerStickLesen();
    entwackeln.RechterStickLesen();
    EXPECT_FALSE(uhr.laeuft(timerid::ENTWACKELN));
}

TEST_F(EntwackelnTest, OhnePadBleibenDieWerte) {
    pad.da = false;
    entwackeln.LinkerStickLesen();
    uhr.vorUm(5ms);
    EXPECT_EQ(entwackeln.LinkerStickLesen(), (Stickposition{0, 0}));
    EXPECT_EQ(entwackeln.RechterStickLesen(), (Stickposition{0, 0}));
    EXPECT_EQ(anzeige.abholen(), Texte{});
    pad.da = true;
    pad.zustand.dwXpos = 5;
    uhr.vorUm(1ms);
    pad.da = false;
    pad.zustand.dwXpos = 6;
    uhr.vorUm(5ms);
    EXPECT_EQ(entwackeln.LinkerStickLesen(), (Stickposition{5, static_cast<std::int32_t>(JOY_AXIS_RUHE)}));
}

TEST_F(EntwackelnTest, OhneNamenFuerEineAchseBleibtIhrWert) {
    std::array<Achsenauswahl, ACHSEN> tabelle{};
    tabelle[5] = {"Rechts", "Oben/Unten"};
    achsendatei.AchsenUebernehmen(tabelle);
    pad.zustand.dwVpos = 77;
    entwackeln.RechterStickLesen();
    uhr.vorUm(2ms);
    EXPECT_EQ(entwackeln.RechterStickLesen(), (Stickposition{0, 77}));
    EXPECT_EQ(entwackeln.LinkerStickLesen(), (Stickposition{0, 0}));
}

TEST_F(EntwackelnTest, EineRundeFragtDasPadEinmalFuerAlleAchsen) {
    Zaehlpad zaehlpad;
    Achsen eigene(zaehlpad, achsendatei);
    Entwackelstand eigenerStand;
    Entwackeln einer(eigenerStand, eigene, regler, uhr, anzeige);
    einer.EntwackelnTakt();
    EXPECT_EQ(zaehlpad.abfragen, 1U);
    EXPECT_EQ(einer.LinkerStickLesen(), (Stickposition{1, 2}));
    EXPECT_EQ(einer.RechterStickLesen(), (Stickposition{3, 4}));
    einer.EntwackelnTakt();
    EXPECT_EQ(zaehlpad.abfragen, 2U);
    einer.EntwackelnStoppen();
}

TEST_F(EntwackelnTest, DieBerichteStehenInDerReihenfolgeDerAchsenUndNurWennSieNeuSind) {
    pad.zustand.dwXpos = 5;
    pad.zustand.dwYpos = 0;
    regler.glaettung[6] = 2;
    entwackeln.EntwackelnTakt();
    EXPECT_EQ(anzeige.abholen(), (Texte{"Text3(0) = 0 --- 1\n\n0 --- 0", "Text3(1) = 1 --- 0\n\n0 --- 0",
                                        "Text3(2) = 0 --- 2\n\n0 --- 0", "Text3(3) = 0 --- 1\n\n0 --- 0"}));
    entwackeln.EntwackelnTakt();
    EXPECT_EQ(anzeige.abholen(), (Texte{"Text3(0) = 1 --- 0\n\n0 --- 0", "Text3(3) = 1 --- 0\n\n0 --- 0"}));
    entwackeln.EntwackelnTakt();
    EXPECT_EQ(anzeige.abholen(), (Texte{"Text3(2) = 1 --- 1\n\n0 --- 0"}));
}

TEST_F(EntwackelnTest, OhneBetrachterGibtEsKeineBerichte) {
    entwackeln.berichten(false);
    entwackeln.EntwackelnTakt();
    EXPECT_EQ(anzeige.abholen(), Texte{});
    entwackeln.berichten(true);
    entwackeln.EntwackelnTakt();
    EXPECT_EQ(anzeige.abholen().size(), 4U);
}

TEST_F(EntwackelnTest, JedeAchseHatIhreRegler) {
    struct Zeile {
        std::uint32_t JOYINFOEX::*roh;
        std::size_t fenster;
        std::size_t mindestzahl;
        std::size_t randUnten;
        std::size_t randOben;
    };
    const std::array zeilen{Zeile{&JOYINFOEX::dwXpos, 2, 3, 5, 5}, Zeile{&JOYINFOEX::dwYpos, 0, 1, 4, 4},
                            Zeile{&JOYINFOEX::dwZpos, 6, 7, 10, 10}, Zeile{&JOYINFOEX::dwRpos, 8, 9, 11, 10}};
    const auto ausgaben = [this] {
        return std::array{stand.filter[0].ausgabe(), stand.filter[1].ausgabe(), stand.filter[2].ausgabe(),
                          stand.filter[3].ausgabe()};
    };
    for (std::size_t i = 0; i < zeilen.size(); ++i) {
        const auto& zeile = zeilen[i];
        // What comes out for `wert` after 1000, when the other scroll bars would not let it be held.
        const auto nach = [&](std::uint32_t wert, int mindestzahl, int unten, int oben) {
            stand.filter = {};
            regler = {};
            regler.glaettung[9] = 0;
            regler.glaettung[zeile.fenster] = 5;
            regler.glaettung[zeile.mindestzahl] = mindestzahl;
            regler.glaettung[11] = 0;
            regler.glaettung[zeile.randOben] = oben;
            regler.glaettung[zeile.randUnten] = unten;
            pad.zustand.*zeile.roh = 1000;
            for (int takt = 0; takt < 10; ++takt)
                entwackeln.EntwackelnTakt();
            pad.zustand.*zeile.roh = wert;
            entwackeln.EntwackelnTakt();
            return ausgaben()[i];
        };
        const int oben = zeile.randOben == zeile.randUnten ? 30 : 40;
        EXPECT_EQ(nach(970, 0, 30, oben), 1000) << i;
        EXPECT_EQ(nach(969, 0, 30, oben), 969) << i;
        EXPECT_EQ(nach(static_cast<std::uint32_t>(1000 + oben), 0, 30, oben), 1000) << i;
        EXPECT_EQ(nach(static_cast<std::uint32_t>(1001 + oben), 0, 30, oben), 1001 + oben) << i;
        EXPECT_EQ(nach(1010, 2, 30, oben), 1000) << i; // five samples count 4, one other leaves 3
        EXPECT_EQ(nach(1010, 3, 30, oben), 1010) << i;
    }
}

TEST_F(EntwackelnTest, NachEinemReglerGiltSeinNeuerWertImNaechstenTakt) {
    regler.glaettung[2] = 5;
    regler.glaettung[5] = 30;
    pad.zustand.dwXpos = 1000;
    for (int takt = 0; takt < 10; ++takt)
        entwackeln.EntwackelnTakt();
    pad.zustand.dwXpos = 1010;
    entwackeln.EntwackelnTakt();
    EXPECT_EQ(stand.filter[0].ausgabe(), 1000);
    regler.glaettung[5] = 9;
    entwackeln.EntwackelnTakt();
    EXPECT_EQ(stand.filter[0].ausgabe(), 1010);
}
