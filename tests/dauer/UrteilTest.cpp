// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/dauer/Urteil.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

constexpr double MINUTE = 1.0 / 60;

/// A row a minute of one process; each measure is what `wert` says for the minute.
template <class Wert> std::vector<Messzeile> zeilen(int anzahl, Groesse groesse, Wert wert, int leben = 1) {
    std::vector<Messzeile> alle;
    for (int i = 0; i < anzahl; ++i) {
        Messzeile zeile{i * MINUTE, leben, {}};
        zeile.werte.at(static_cast<std::size_t>(groesse)) = wert(i);
        alle.push_back(zeile);
    }
    return alle;
}

std::vector<std::string> verstoesse(const std::vector<Messzeile>& zeilen, const Vorfaelle& vorfaelle = {}) {
    std::vector<std::string> texte;
    for (const auto& befund : urteilen(zeilen, vorfaelle))
        if (befund.verstoss)
            texte.push_back(befund.text);
    return texte;
}

double erlaubt(Groesse groesse) {
    return MESSGROESSEN.at(static_cast<std::size_t>(groesse)).erlaubt;
}

} // namespace

TEST(Urteil, EineGeradeHatIhreSteigungAlsMitteUndAlsGrenze) {
    const auto steig =
        steigung(zeilen(20, Groesse::Heap, [](int i) { return 1000.0 + 2 * i; }), Groesse::Heap);
    EXPECT_NEAR(steig.je_stunde, 120, 1e-6);
    EXPECT_NEAR(steig.mindestens, 120, 1e-6);
}

TEST(Urteil, EinzelneAusreisserBiegenDieSteigungNicht) {
    const auto steig = steigung(
        zeilen(30, Groesse::Rss, [](int i) { return i % 10 == 7 ? 90000.0 : 50000.0 + i; }), Groesse::Rss);
    EXPECT_NEAR(steig.je_stunde, 60, 15);
}

TEST(Urteil, WasNichtWaechstIstInOrdnung) {
    EXPECT_EQ(verstoesse(zeilen(60, Groesse::Heap, [](int) { return 9000.0; })), std::vector<std::string>{});
}

TEST(Urteil, AnDerGrenzeIstEsInOrdnungDarueberNicht) {
    for (const auto groesse : {Groesse::Rss, Groesse::Heap, Groesse::Dateien, Groesse::Weckrufe}) {
        const auto mit = [&](double faktor) {
            return verstoesse(
                zeilen(60, groesse, [&](int i) { return 100 + faktor * erlaubt(groesse) * i * MINUTE; }));
        };
        EXPECT_EQ(mit(0.99).size(), 0U);
        const auto darueber = mit(1.01);
        ASSERT_EQ(darueber.size(), 1U);
        EXPECT_NE(darueber[0].find(MESSGROESSEN.at(static_cast<std::size_t>(groesse)).name),
                  std::string::npos);
        EXPECT_NE(darueber[0].find("GROWS"), std::string::npos);
    }
}

TEST(Urteil, RauschenOhneSteigungIstKeinWachstum) {
    std::mt19937 zufall(4711);
    int beschuldigt = 0;
    for (int lauf = 0; lauf < 200; ++lauf)
        beschuldigt += static_cast<int>(verstoesse(zeilen(10, Groesse::Rss, [&](int) {
                                            return 50000.0 + static_cast<int>(zufall() % 4000);
                                        })).size());
    EXPECT_LT(beschuldigt, 20); // one in twenty is what the interval lets through
}

TEST(Urteil, WachstumImRauschenWirdErkannt) {
    std::mt19937 zufall(4711);
    EXPECT_EQ(verstoesse(zeilen(60, Groesse::Rss,
                                [&](int i) { return 50000.0 + 100 * i + static_cast<int>(zufall() % 1000); }))
                  .size(),
              1U);
}

TEST(Urteil, EineTreppeVonDateienWirdErkannt) {
    EXPECT_EQ(verstoesse(zeilen(60, Groesse::Dateien, [](int i) { return 30.0 + i / 10; })).size(), 1U);
}

TEST(Urteil, DerWarmlaufZaehltNicht) {
    EXPECT_EQ(verstoesse(zeilen(60, Groesse::Rss, [](int i) { return 50000.0 + 3000 * std::min(i, 12); })),
              std::vector<std::string>{});
}

TEST(Urteil, JederProzessWirdFuerSichBeurteilt) {
    auto alle = zeilen(
        20, Groesse::Rss, [](int) { return 40000.0; }, 1);
    const auto zweite = zeilen(
        20, Groesse::Rss, [](int) { return 80000.0; }, 2);
    alle.insert(alle.end(), zweite.begin(), zweite.end());
    EXPECT_EQ(verstoesse(alle), std::vector<std::string>{});
    const auto dritte = zeilen(
        20, Groesse::Rss, [](int i) { return 40000.0 + 1000 * i; }, 3);
    alle.insert(alle.end(), dritte.begin(), dritte.end());
    const auto texte = verstoesse(alle);
    ASSERT_EQ(texte.size(), 1U);
    EXPECT_EQ(texte[0].find("process 3, rss"), 0U) << texte[0];
}

TEST(Urteil, WenigeZeilenBeschuldigenNiemandenUndSagenEs) {
    const auto steile = [](int anzahl) {
        return zeilen(anzahl, Groesse::Rss, [](int i) { return 50000.0 + 9000 * i; });
    };
    constexpr int WARM = 4; // those of the first three minutes
    constexpr int GENUG = WARM + static_cast<int>(MINDESTZEILEN);
    const auto befunde = urteilen(steile(GENUG - 1), {});
    EXPECT_EQ(befunde.back().text, "growth: not judged, no process has rows enough");
    EXPECT_EQ(verstoesse(steile(GENUG - 1)), std::vector<std::string>{});
    EXPECT_EQ(verstoesse(steile(GENUG)).size(), 1U);
}

TEST(Urteil, JederVorfallIstEinVerstoss) {
    for (auto Vorfaelle::*art : {&Vorfaelle::abstuerze, &Vorfaelle::haenger, &Vorfaelle::unruhen,
                                 &Vorfaelle::haengende, &Vorfaelle::schaeden, &Vorfaelle::verweigerte}) {
        Vorfaelle vorfaelle;
        vorfaelle.*art = 1;
        EXPECT_EQ(verstoesse({}, vorfaelle).size(), 1U);
    }
    EXPECT_EQ(verstoesse({}).size(), 0U);
}
