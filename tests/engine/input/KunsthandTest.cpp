// SPDX-License-Identifier: GPL-3.0-or-later
// The made-up hand does what one does: what others measure by it hangs on that.
#include "tests/hilfen/Kunsthand.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace {

using Taetigkeit = Kunsthand::Taetigkeit;
using Probe = Kunsthand::Probe;

std::vector<Probe> proben(const Kunsthand::Eigenart& eigenart, int sekunden) {
    Kunsthand hand(eigenart);
    std::vector<Probe> alle;
    for (int i = 0; i < sekunden * eigenart.hertz; ++i)
        alle.push_back(hand.naechste());
    return alle;
}

double abstand(const Probe& probe) {
    return std::hypot(probe.x - 32767, probe.y - 32767);
}

constexpr int FUENF_MINUTEN = 300;

} // namespace

TEST(KunsthandTest, DieselbeSaatSpieltDasselbe) {
    Kunsthand eine;
    Kunsthand andere;
    Kunsthand fremde({.saat = 2});
    bool fremd = false;
    for (int i = 0; i < 10'000; ++i) {
        const auto probe = eine.naechste();
        const auto zweite = andere.naechste();
        ASSERT_EQ(std::pair(probe.x, probe.y), std::pair(zweite.x, zweite.y));
        const auto dritte = fremde.naechste();
        fremd = fremd || std::pair(probe.x, probe.y) != std::pair(dritte.x, dritte.y);
    }
    EXPECT_TRUE(fremd);
}

TEST(KunsthandTest, SieTutInFuenfMinutenAllesUndBleibtInnerhalbDesGehaeuses) {
    for (const int hertz : {200, 1000}) {
        std::map<Taetigkeit, int> zeiten;
        for (const auto& probe : proben({.hertz = hertz}, FUENF_MINUTEN)) {
            ++zeiten[probe.taetigkeit];
            ASSERT_TRUE(0 <= probe.x && probe.x <= 65535 && 0 <= probe.y && probe.y <= 65535);
            ASSERT_LT(abstand(probe), 34'500);
            ASSERT_EQ(probe.x % 16, 0) << "a step of the converter";
        }
        EXPECT_GT(zeiten[Taetigkeit::Ruhen], 60 * hertz);
        for (const auto was :
             {Taetigkeit::Greifen, Taetigkeit::Halten, Taetigkeit::Schwenken, Taetigkeit::Loslassen})
            EXPECT_GT(zeiten[was], 10 * hertz) << static_cast<int>(was);
    }
}

TEST(KunsthandTest, RuheLiegtNebenDerMitteUndJedesmalWoanders) {
    double kleinste = 65535;
    double groesste = 0;
    double quadrate = 0;
    int ruhende = 0;
    for (const auto& probe : proben({}, FUENF_MINUTEN))
        if (probe.taetigkeit == Taetigkeit::Ruhen) {
            kleinste = std::min(kleinste, probe.xMitte);
            groesste = std::max(groesste, probe.xMitte);
            quadrate += (probe.x - probe.xMitte) * (probe.x - probe.xMitte);
            ++ruhende;
        }
    EXPECT_GT(groesste - kleinste, 400);
    EXPECT_LT(groesste - kleinste, 3000);
    EXPECT_NEAR(std::sqrt(quadrate / ruhende), 90, 15) << "the noise that was asked for";
}

TEST(KunsthandTest, BeimLoslassenSchwingtDerStickUeber) {
    int losgelassen = 0;
    int jenseits = 0;
    Probe vorher;
    double vonX = 0;
    bool drueben = false;
    for (const auto& probe : proben({}, FUENF_MINUTEN)) {
        const bool beginnt =
            probe.taetigkeit == Taetigkeit::Loslassen && vorher.taetigkeit != probe.taetigkeit;
        if (beginnt && std::abs(vorher.x - 32767) > 15'000) {
            ++losgelassen;
            vonX = vorher.x - 32767;
            drueben = false;
        }
        if (probe.taetigkeit == Taetigkeit::Loslassen && !drueben && vonX * (probe.x - 32767) < 0 &&
            std::abs(probe.x - 32767) > 2000) {
            drueben = true;
            ++jenseits;
        }
        vorher = probe;
    }
    EXPECT_GT(losgelassen, 10);
    EXPECT_GT(jenseits, losgelassen / 2);
}

TEST(KunsthandTest, StreudatenVonIhrZaehlenJedenTakt) {
    const auto daten = streudatenAus({.saat = 5}, 60'000);
    std::uint64_t raster = 0;
    for (const auto takte : daten.takte)
        raster += takte;
    std::uint64_t weg = 0;
    for (const auto& aufenthalt : daten.weg)
        weg += aufenthalt.takte;
    std::uint64_t ruhe = 0;
    for (const auto takte : daten.achsen[0].zittern)
        ruhe += takte;
    EXPECT_EQ(raster, 60'000U);
    EXPECT_EQ(weg, 60'000U);
    EXPECT_GT(ruhe, 12'000U);
    EXPECT_LE(streudatenSchreiben(daten).size(), Streudaten::DATEI_HOECHSTENS);
}
