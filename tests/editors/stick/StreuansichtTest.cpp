// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Streuansicht.h"

#include "editors/stick/Stickebene.h"

#include <gtest/gtest.h>

#include <QWidget>

namespace {

using Stempel = std::filesystem::file_time_type;

class StreuansichtTest : public ::testing::Test {
protected:
    StreuansichtTest() {
        stand_.ebene()[1] = {20000, 45000, 21000, 46000};
        daten_.takte.resize(Streudaten::RASTERFELDER);
        daten_.takte[5] = 7;
        for (auto& achse : daten_.achsen) {
            achse.zittern[15] = 9900; // ± 256
            achse.zittern[200] = 100;
        }
        daten_.achsen[0].ruhe[78] = 10; // 19968 to 20223
        daten_.achsen[1].ruhe[180] = 10;
    }
    Streuansicht ansicht() {
        return {ebene_,
                stand_,
                {.lesen =
                     [this](int ebene) {
                         gelesene_.push_back(ebene);
                         return daten_;
                     },
                 .stempel =
                     [this](int) {
                         ++blicke_;
                         return stempel_;
                     }}};
    }
    std::vector<Rauschmarke> marken() { return rauschmarken(Streurechnung(daten_), stand_.ebene()); }

    QWidget form_;
    Stickebene ebene_{&form_};
    Justierstand stand_;
    Streudaten daten_;
    Stempel stempel_{};
    std::vector<int> gelesene_; ///< layers
    int blicke_ = 0;
};

} // namespace

TEST_F(StreuansichtTest, AusgeschaltetLiestSieNichts) {
    auto eine = ansicht();
    eine.lesen();
    eine.linienZeigen();
    eine.schalten(false);
    stempel_ = Stempel(std::chrono::seconds{9});
    EXPECT_FALSE(eine.nachsehen());
    EXPECT_EQ(gelesene_, std::vector<int>{});
    EXPECT_EQ(blicke_, 0);
    EXPECT_EQ(eine.rechnung(), nullptr);
}

TEST_F(StreuansichtTest, EingeschaltetLiestSieEinmalUndNurWasSichAendert) {
    auto eine = ansicht();
    eine.schalten(true);
    eine.schalten(true);
    EXPECT_EQ(gelesene_, std::vector<int>{0});
    EXPECT_FALSE(eine.nachsehen());
    stempel_ = Stempel(std::chrono::seconds{9});
    EXPECT_TRUE(eine.nachsehen());
    EXPECT_FALSE(eine.nachsehen());
    EXPECT_EQ(gelesene_, (std::vector<int>{0, 0}));
    stand_.EditorEbene = 2;
    eine.lesen();
    EXPECT_EQ(gelesene_, (std::vector<int>{0, 0, 2}));
    ASSERT_NE(eine.rechnung(), nullptr);
    EXPECT_EQ(eine.rechnung()->daten(), daten_);
    eine.schalten(false);
    EXPECT_EQ(eine.rechnung(), nullptr);
}

TEST_F(StreuansichtTest, JedeLinieImRauschenHatIhrenStreifen) {
    EXPECT_EQ(marken(), (std::vector<Rauschmarke>{{QRectF(20000 - 256, 0, 512, 65535)},
                                                  {QRectF(0, 46000 - 256, 65535, 512)}}));
}

TEST_F(StreuansichtTest, SchmaleBaenderStehenHinterDenStreifen) {
    stand_.ebene()[1] = {20500, 21011, 21000, 21512};
    stand_.ebene()[2] = {0, 65200, 0, 0};
    EXPECT_EQ(marken(), (std::vector<Rauschmarke>{{QRectF(20500, 0, 511, 65535), true}}))
        << "512 are enough, and the field at the edge reaches beyond the plane";
}

TEST_F(StreuansichtTest, WoKeineLinieIstStehtAuchAmRandKeinStreifen) {
    stand_.ebene()[1] = {30000, 45000, 21000, 40000};
    daten_.achsen[0].ruhe = {10}; // it rests at 0, as the places do that hold no line
    daten_.achsen[1].ruhe = {10};
    EXPECT_EQ(marken(), std::vector<Rauschmarke>{});
}

TEST_F(StreuansichtTest, VerkehrteLinienLassenKeinBandStehen) {
    stand_.ebene()[1] = {45000, 30000, 40000, 21000};
    EXPECT_EQ(marken(), std::vector<Rauschmarke>{});
}
