// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/axes/Achsenwahl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <vector>

// Beside the type, where gtest and the comparison find them.
static bool operator==(const Achsenauswahl& a, const Achsenauswahl& b) {
    return a.Auswahl == b.Auswahl && a.Richtung == b.Richtung;
}
static void PrintTo(const Achsenauswahl& zeile, std::ostream* strom) {
    *strom << zeile.Auswahl << " " << zeile.Richtung;
}

namespace {

using Tabelle = std::array<Achsenauswahl, ACHSEN>;

const Achsenauswahl LX{"Links", "Links/Rechts"};
const Achsenauswahl LY{"Links", "Oben/Unten"};
const Achsenauswahl RX{"Rechts", "Links/Rechts"};
const Achsenauswahl RY{"Rechts", "Oben/Unten"};
const Achsenauswahl Z1{"Z-Achse", ""};
const Achsenauswahl Z2{"Schubregler", ""};

} // namespace

TEST(Achsenwahl, JederNameHatSeineAuswahl) {
    EXPECT_EQ(auswahlZu("lx"), LX);
    EXPECT_EQ(auswahlZu("ly"), LY);
    EXPECT_EQ(auswahlZu("rx"), RX);
    EXPECT_EQ(auswahlZu("ry"), RY);
    EXPECT_EQ(auswahlZu("Z1"), Z1);
    EXPECT_EQ(auswahlZu("Z2"), Z2);
}

TEST(Achsenwahl, WasEinNameNichtSagtBleibtLeer) {
    EXPECT_EQ(auswahlZu(""), Achsenauswahl{});
    EXPECT_EQ(auswahlZu("x"), Achsenauswahl{});
    EXPECT_EQ(auswahlZu("Z"), Achsenauswahl{});
    EXPECT_EQ(auswahlZu("Z3"), Achsenauswahl{});
    EXPECT_EQ(auswahlZu("l"), (Achsenauswahl{"Links", ""}));
    EXPECT_EQ(auswahlZu("r"), (Achsenauswahl{"Rechts", ""}));
}

TEST(Achsenwahl, JedeReihenfolgeDerSechsNamenGilt) {
    std::array<int, ACHSEN> reihenfolge{0, 1, 2, 3, 4, 5};
    const Tabelle namen{LX, LY, RX, RY, Z1, Z2};
    do {
        Tabelle tabelle;
        for (std::size_t i = 0; i < ACHSEN; ++i)
            tabelle[i] = namen[static_cast<std::size_t>(reihenfolge[i])];
        ASSERT_TRUE(istVollstaendig(tabelle));
    } while (std::ranges::next_permutation(reihenfolge).found);
}

// All other ways to fill six rows, a row without a direction and an empty one among them: there is no sum
// that comes out by chance.
TEST(Achsenwahl, NurDieSechsNamenGelten) {
    const std::vector<Achsenauswahl> moegliche{LX, LY, RX, RY, Z1, Z2, {"Links", ""}, {"Rechts", ""}, {}};
    const auto anzahl = moegliche.size();
    std::size_t alle = 1;
    for (std::size_t i = 0; i < ACHSEN; ++i)
        alle *= anzahl;
    int gueltige = 0;
    for (std::size_t nummer = 0; nummer < alle; ++nummer) {
        Tabelle tabelle;
        auto rest = nummer;
        for (auto& zeile : tabelle) {
            zeile = moegliche[rest % anzahl];
            rest /= anzahl;
        }
        gueltige += istVollstaendig(tabelle) ? 1 : 0;
    }
    EXPECT_EQ(gueltige, 720) << "the orders of six names";
}

TEST(Achsenwahl, DieRichtungEinesSchubreglersZaehltNicht) {
    EXPECT_TRUE(
        istVollstaendig({LX, LY, RX, RY, {"Z-Achse", "Links/Rechts"}, {"Schubregler", "Oben/Unten"}}));
}

TEST(Achsenwahl, DreiGleicheBringenEinenZaehlerAufNullUndGeltenDochNicht) {
    EXPECT_FALSE(istVollstaendig({LX, LX, LX, RX, RY, Z1}));
    EXPECT_FALSE(istVollstaendig({LX, LX, LX, RX, RX, RX}));
    EXPECT_FALSE(istVollstaendig({LX, LX, RX, RY, Z1, Z2}));
}

TEST(Achsenwahl, DerBalkenFolgtDemWertUndRundetZumNaechsten) {
    EXPECT_EQ(balkenwert(0, 32767), 0);
    EXPECT_EQ(balkenwert(1, 32767), 0);         // 0.49999
    EXPECT_EQ(balkenwert(2, 32767), 1);         // 0.99998
    EXPECT_EQ(balkenwert(32767, 32767), 16383); // 16383.25
    EXPECT_EQ(balkenwert(32768, 32767), 16384); // 16383.75
    EXPECT_EQ(balkenwert(65534, 32767), 32767); // 32766.50001
    EXPECT_EQ(balkenwert(65533, 32767), 32766); // 32766.00002
    EXPECT_EQ(balkenwert(65535, 32767), 32767);
    EXPECT_EQ(balkenwert(65535, 100), 100);
}
