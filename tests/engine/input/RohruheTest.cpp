// SPDX-License-Identifier: GPL-3.0-or-later
// What counts as rest of an axis, and how much it trembles there.
#include "engine/input/Rohruhe.h"
#include "tests/hilfen/Kunsthand.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <span>

namespace {

using Achsenruhe = Streudaten::Achsenruhe;
using Taetigkeit = Kunsthand::Taetigkeit;

std::uint64_t summe(std::span<const std::uint32_t> zahlen) {
    return std::accumulate(zahlen.begin(), zahlen.end(), std::uint64_t{0});
}

/// The first class beyond which there is at most one of a hundred.
std::size_t grenze99(const Achsenruhe& ruhe) {
    const auto alle = summe(ruhe.zittern);
    std::uint64_t bisher = 0;
    std::size_t klasse = 0;
    while (klasse < ruhe.zittern.size() && (bisher += ruhe.zittern[klasse]) * 100 < alle * 99)
        ++klasse;
    return klasse;
}

class RohruheTest : public testing::Test {
protected:
    void takte(int anzahl, std::int32_t wert) {
        for (int i = 0; i < anzahl; ++i)
            finder.takt(wert, ruhe);
    }
    /// Two values in turn.
    void wechsel(int anzahl, std::int32_t einer, std::int32_t anderer) {
        for (int i = 0; i < anzahl; ++i)
            finder.takt(i % 2 == 0 ? einer : anderer, ruhe);
    }
    std::uint64_t gezaehlte() const { return summe(ruhe.ruhe); }

    Rohruhe finder;
    Achsenruhe ruhe;
};

} // namespace

TEST_F(RohruheTest, HundertGleicheTakteSindRuheEinerWenigerNicht) {
    takte(99, 32767);
    EXPECT_EQ(gezaehlte(), 0U);
    takte(1, 32767);
    EXPECT_EQ(ruhe.ruhe[127], 100U);
    EXPECT_EQ(ruhe.zittern[0], 100U);
    takte(24, 32767);
    EXPECT_EQ(gezaehlte(), 100U);
    takte(1, 32767);
    EXPECT_EQ(gezaehlte(), 125U);
}

TEST_F(RohruheTest, DieAbweichungVomMittelWirdGezaehlt) {
    wechsel(100, 30'000, 30'200);
    EXPECT_EQ(ruhe.zittern[100 / 16], 100U);
    EXPECT_EQ(ruhe.ruhe[30'100 / 256], 100U);
    EXPECT_EQ(gezaehlte(), summe(ruhe.zittern));
}

TEST_F(RohruheTest, WasWeiterAuseinanderliegtIstKeineRuhe) {
    wechsel(100, 30'000, 30'000 + Rohruhe::WEITE);
    EXPECT_EQ(gezaehlte(), 100U);
    finder.vonVorn();
    wechsel(100, 30'000, 30'001 + Rohruhe::WEITE);
    EXPECT_EQ(gezaehlte(), 100U);
}

TEST_F(RohruheTest, DieMittelDerViertelDuerfenEinWenigWandern) {
    for (const auto& [schritt, erwartet] : {std::pair(5, 100U), std::pair(6, 0U)}) { // 3 * 5 <= 16 + 15 / 12
        ruhe = {};
        finder.vonVorn();
        for (int viertel = 0; viertel < 4; ++viertel)
            takte(25, 5000 + schritt * viertel);
        EXPECT_EQ(gezaehlte(), erwartet) << schritt;
    }
}

// What spreads over 1200 units may wander by 16 + 1200 / 12 of the mean: by 2900 of the sum of a quarter.
TEST_F(RohruheTest, WasMehrZittertDarfWeiterWandern) {
    for (const auto& [letzter, erwartet] : {std::pair(128, 100U), std::pair(129, 0U)}) {
        ruhe = {};
        finder.vonVorn();
        for (int viertel = 0; viertel < 4; ++viertel) {
            const bool wandert = viertel == 3;
            takte(1, 10'000);
            takte(1, 11'200);
            takte(22, wandert ? 10'500 + 126 : 10'500);
            takte(1, wandert ? 10'500 + letzter : 10'500);
        }
        EXPECT_EQ(gezaehlte(), erwartet) << letzter;
    }
}

// At the very edge, where a finder that has seen nothing yet might take it for what it has seen.
TEST_F(RohruheTest, AuchAmRandSindHundertTakteNoetig) {
    finder.takte(0, 99, ruhe);
    EXPECT_EQ(gezaehlte(), 0U);
    finder.takte(0, 26, ruhe);
    EXPECT_EQ(ruhe.ruhe[0], 125U);
}

TEST_F(RohruheTest, EinSprungBeendetSieUndJedesViertelZaehltEinmal) {
    takte(110, 1000);
    takte(40, 60'000);
    EXPECT_EQ(gezaehlte(), 100U);
    takte(74, 60'000);
    EXPECT_EQ(gezaehlte(), 100U) << "the quarter of the jump counts for none";
    takte(1, 60'000);
    EXPECT_EQ(gezaehlte(), 200U);
    EXPECT_EQ(ruhe.ruhe[60'000 / 256], 100U);
}

TEST_F(RohruheTest, EinStoerwertNimmtNurSeineNachbarschaftWeg) {
    takte(200, 1000);
    takte(1, 20'000);
    takte(224, 1000);
    EXPECT_EQ(gezaehlte(), 400U) << "all quarters but that of the value";
}

TEST_F(RohruheTest, NachUnterbrechungBeginntSieVonVorn) {
    takte(99, 1000);
    finder.vonVorn();
    takte(99, 1000);
    EXPECT_EQ(gezaehlte(), 0U);
    takte(1, 1000);
    EXPECT_EQ(gezaehlte(), 100U);
}

// For each place in the ring, after rest and after unrest.
TEST_F(RohruheTest, VieleGleicheTakteAufEinmalSindWieEinzelne) {
    for (const int vorher : {0, 1, 99, 100, 101, 130, 199})
        for (const int anzahl : {0, 1, 24, 25, 26, 99, 100, 199, 200, 1000, 1013})
            for (const std::int32_t wert : {0, 1000, 65'535}) {
                Rohruhe einzeln;
                Achsenruhe einzelne;
                for (int i = 0; i < vorher; ++i)
                    einzeln.takt(1000 + i % 3 * 100, einzelne);
                Rohruhe aufEinmal = einzeln;
                Achsenruhe aufEinmalige = einzelne;
                aufEinmal.takte(wert, static_cast<std::uint64_t>(anzahl), aufEinmalige);
                for (int i = 0; i < anzahl; ++i)
                    einzeln.takt(wert, einzelne);
                for (int i = 0; i < 130; ++i) { // and they go on alike
                    aufEinmal.takt(wert + i % 2, aufEinmalige);
                    einzeln.takt(wert + i % 2, einzelne);
                }
                ASSERT_EQ(einzelne, aufEinmalige) << vorher << " " << anzahl << " " << wert;
            }
}

TEST_F(RohruheTest, EinLangsamerZugIstKeineRuhe) {
    for (const double rauschen : {0.0, 30.0, 90.0, 150.0})
        for (const double tempo : {400.0, 1000.0, 5000.0}) { // units a second
            Kunsthand stille({.hertz = 200, .rauschen = rauschen, .rastlage = 0, .drift = 0});
            ruhe = {};
            finder.vonVorn();
            for (int i = 0; i < 200; ++i) { // it rests for a second at least, at a place that is taken along
                const auto probe = stille.naechste();
                ASSERT_EQ(probe.taetigkeit, Taetigkeit::Ruhen);
                finder.takt(probe.x + static_cast<std::int32_t>(tempo * i / 200), ruhe);
            }
            EXPECT_EQ(gezaehlte(), 0U) << rauschen << " " << tempo;
        }
}

namespace {

/// What was counted of a play, by what the hand did in those ticks.
struct Handprobe {
    std::uint64_t ruhend = 0; ///< ticks in which the hand rested
    std::uint64_t inRuhe = 0; ///< counted in them
    std::uint64_t beimZiehen = 0;
    std::uint64_t gezaehlt = 0;
    Achsenruhe ruhe;
};

constexpr int FUENF_MINUTEN = 60'000; // ticks

Handprobe handprobe(const Kunsthand::Eigenart& eigenart) {
    constexpr double ZUG = 500; // units a second, of this axis
    Kunsthand hand(eigenart);
    Rohruhe finder;
    Handprobe ergebnis;
    std::vector<Kunsthand::Probe> proben;
    for (int takt = 0; takt < FUENF_MINUTEN; ++takt) {
        for (int i = 0; i < eigenart.hertz / 200; ++i)
            proben.push_back(hand.naechste());
        finder.takt(proben.back().x, ergebnis.ruhe);
        ergebnis.ruhend += proben.back().taetigkeit == Taetigkeit::Ruhen;
        const auto schritt = static_cast<std::size_t>(eigenart.hertz / 200);
        for (auto dazu = summe(ergebnis.ruhe.ruhe) - ergebnis.gezaehlt; dazu > 0; --dazu) { // the last ticks
            const auto stelle = proben.size() - 1 - (dazu - 1) * schritt;
            const auto& probe = proben[stelle];
            const auto zug =
                stelle == 0 ? 0.0 : std::abs(probe.xMitte - proben[stelle - 1].xMitte) * eigenart.hertz;
            ergebnis.inRuhe += probe.taetigkeit == Taetigkeit::Ruhen;
            ergebnis.beimZiehen += probe.taetigkeit == Taetigkeit::Schwenken && zug > ZUG;
        }
        ergebnis.gezaehlt = summe(ergebnis.ruhe.ruhe);
    }
    return ergebnis;
}

} // namespace

// Against what the hand knows of itself.
TEST_F(RohruheTest, AnEinerHandWirdDieRuheGefundenUndKeinZug) {
    for (const std::uint32_t saat : {1U, 2U, 3U})
        for (const int hertz : {200, 1000}) {
            const auto probe = handprobe({.saat = saat, .hertz = hertz});
            EXPECT_GT(probe.inRuhe, probe.ruhend * 9 / 10) << saat << " " << hertz;
            EXPECT_LT(probe.beimZiehen, probe.gezaehlt / 100) << saat << " " << hertz;
        }
}

TEST_F(RohruheTest, DasBandIstDasRauschenDesPads) {
    for (const double rauschen : {60.0, 90.0, 150.0}) {
        const auto probe = handprobe({.saat = 4, .hertz = 200, .rauschen = rauschen});
        const double band = static_cast<double>(grenze99(probe.ruhe)) * Streudaten::KLASSENBREITE;
        EXPECT_NEAR(band, 2.576 * rauschen, 16 + 0.25 * 2.576 * rauschen) << rauschen;
    }
}
