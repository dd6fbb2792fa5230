// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Entwurfsfolge.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

struct Stand {
    int wert = 0;
    int blick = 0; ///< what is only looked at
    bool operator==(const Stand& anderer) const { return wert == anderer.wert; }
};

class EntwurfsfolgeTest : public testing::Test {
protected:
    EntwurfsfolgeTest() { folge_.beginnen({0, 0}); }
    void erwarte(int wert, bool zurueck, bool vor) {
        EXPECT_EQ(folge_.jetzt().wert, wert);
        EXPECT_EQ(folge_.kannZurueck(), zurueck);
        EXPECT_EQ(folge_.kannVor(), vor);
    }
    Entwurfsfolge<Stand> folge_;
};

} // namespace

TEST_F(EntwurfsfolgeTest, FuehrtZurueckUndVor) {
    erwarte(0, false, false);
    folge_.festhalten({1});
    folge_.festhalten({2});
    erwarte(2, true, false);
    EXPECT_EQ(folge_.davor().wert, 1);
    folge_.zurueck();
    erwarte(1, true, true);
    EXPECT_EQ(folge_.danach().wert, 2);
    folge_.zurueck();
    erwarte(0, false, true);
    folge_.vor();
    folge_.vor();
    erwarte(2, true, false);
}

TEST_F(EntwurfsfolgeTest, EinNeuerSchrittVerwirftWasZurueckgenommenWar) {
    folge_.festhalten({1});
    folge_.festhalten({2});
    folge_.zurueck();
    folge_.festhalten({3});
    erwarte(3, true, false);
    folge_.zurueck();
    erwarte(1, true, true);
}

TEST_F(EntwurfsfolgeTest, WasNurAndersAnsiehtIstKeinSchritt) {
    folge_.festhalten({1, 1});
    folge_.festhalten({1, 7});
    folge_.zurueck();
    erwarte(0, false, true);
    EXPECT_EQ(folge_.danach().blick, 7) << "as it was looked at last";
    folge_.festhalten({0, 5});
    EXPECT_TRUE(folge_.kannVor()) << "looking drops nothing";
}

TEST_F(EntwurfsfolgeTest, WasAmSelbenOrtGetipptWirdIstEinSchritt) {
    for (const int wert : {1, 10, 100})
        folge_.festhalten({wert}, "Zeit");
    folge_.festhalten({101}, "Pause");
    folge_.zurueck();
    erwarte(100, true, true);
    folge_.zurueck();
    erwarte(0, false, true);
    folge_.vor();
    folge_.festhalten({55}, "Zeit");
    folge_.zurueck();
    erwarte(100, true, true);
}

TEST_F(EntwurfsfolgeTest, AbgeschlossenesWirdNichtFortgesetzt) {
    folge_.festhalten({1}, "Zeit");
    folge_.abschliessen();
    folge_.festhalten({2}, "Zeit");
    folge_.festhalten({3}, "Zeit");
    folge_.zurueck();
    erwarte(1, true, true);
}

TEST_F(EntwurfsfolgeTest, WasZumAnfangZurueckfuehrtIstKeinSchritt) {
    folge_.festhalten({1}, "Art");
    for (const int wert : {2, 20, 2, 1})
        folge_.festhalten({wert, wert}, "Zeit");
    erwarte(1, true, false);
    EXPECT_EQ(folge_.jetzt().blick, 1);
    folge_.zurueck();
    erwarte(0, false, true);
}

TEST_F(EntwurfsfolgeTest, EinSchrittKannEinenNamenHaben) {
    folge_.festhalten({1}, "", "one");
    folge_.festhalten({2});
    EXPECT_EQ(folge_.nameDavor(), "");
    folge_.zurueck();
    EXPECT_EQ(folge_.nameDavor(), "one");
    EXPECT_EQ(folge_.nameDanach(), "");
    folge_.zurueck();
    EXPECT_EQ(folge_.nameDanach(), "one");
}

TEST_F(EntwurfsfolgeTest, WasAndersGeschriebenWirdIstEsUeberall) {
    folge_.festhalten({1});
    folge_.festhalten({2});
    folge_.zurueck();
    folge_.ueberall([](Stand& stand) { stand.wert += 10; });
    erwarte(11, true, true);
    EXPECT_EQ(folge_.davor().wert, 10);
    EXPECT_EQ(folge_.danach().wert, 12);
}

TEST_F(EntwurfsfolgeTest, BehaeltMindestensZweihundertSchritteUndNichtBeliebigViele) {
    for (int wert = 1; wert <= 10'000; ++wert)
        folge_.festhalten({wert});
    int schritte = 0;
    for (; folge_.kannZurueck(); ++schritte)
        folge_.zurueck();
    EXPECT_EQ(schritte, 500);
    EXPECT_EQ(folge_.jetzt().wert, 9'500);
}

// Against a plain list of what it was told.
TEST_F(EntwurfsfolgeTest, ZufaelligeTatenFuehrenAllesZurueckZumAnfangUndAllesVorZumEnde) {
    std::mt19937 zufall(3);
    std::vector<int> soll{0};
    std::size_t stelle = 0;
    for (int i = 0; i < 20'000; ++i) {
        const auto was = zufall() % 8;
        if (was < 3 && folge_.kannZurueck()) {
            folge_.zurueck();
            --stelle;
        } else if (was < 5 && folge_.kannVor()) {
            folge_.vor();
            ++stelle;
        } else {
            const int wert = static_cast<int>(zufall() % 4);
            if (wert != soll[stelle]) {
                soll.resize(stelle + 1);
                soll.push_back(wert);
                ++stelle;
                if (soll.size() > Entwurfsfolge<Stand>::SCHRITTE + 1) {
                    soll.erase(soll.begin());
                    --stelle;
                }
            }
            folge_.festhalten({wert});
        }
        ASSERT_EQ(folge_.jetzt().wert, soll[stelle]) << "act " << i;
        ASSERT_EQ(folge_.kannZurueck(), stelle > 0) << "act " << i;
        ASSERT_EQ(folge_.kannVor(), stelle + 1 < soll.size()) << "act " << i;
    }
    while (folge_.kannZurueck())
        folge_.zurueck();
    EXPECT_EQ(folge_.jetzt().wert, soll.front());
    while (folge_.kannVor())
        folge_.vor();
    EXPECT_EQ(folge_.jetzt().wert, soll.back());
}
