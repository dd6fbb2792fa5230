// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Wegrechnung.h"

#include <gtest/gtest.h>

namespace {

constexpr Wegstelle BRUCH{};
constexpr Gitterplatz LINKS{0, 1};
constexpr Gitterplatz MITTE{1, 1};

Linienebene linien() {
    Linienebene ebene{};
    ebene[1] = {20000, 45000, 21000, 46000};
    return ebene;
}
/// In the row of the middle.
Wegrechnung quer(const std::vector<std::pair<int, int>>& aufenthalte) {
    std::vector<Wegstelle> weg;
    for (const auto& [x, takte] : aufenthalte)
        weg.push_back({static_cast<std::uint16_t>(x), 33000, static_cast<std::uint32_t>(takte)});
    return Wegrechnung(weg);
}

} // namespace

TEST(WegrechnungTest, EinEintrittKommtAusEinemAnderenFeld) {
    const auto weg = quer({{33000, 100}, {10000, 10}, {11000, 10}, {33000, 30}, {10000, 40}, {33000, 10}});
    EXPECT_DOUBLE_EQ(weg.sekunden(), 1.0);
    EXPECT_EQ(weg.eintritte(linien(), LINKS), 2);
    EXPECT_EQ(weg.eintritte(linien(), MITTE), 2) << "not the first stay";
    EXPECT_EQ(weg.eintritte(linien(), {2, 1}), 0);
    EXPECT_EQ(weg.eintritte(linien(), {0, 0}), 0) << "the row counts, too";
}

TEST(WegrechnungTest, EineLinieGiltAufDieEinheit) {
    const auto weg = quer({{20000, 1}, {19999, 1}, {20000, 1}, {19999, 1}, {20001, 1}});
    auto ebene = linien();
    EXPECT_EQ(weg.eintritte(ebene, LINKS), 2) << "the line itself belongs to the middle";
    ebene[1][richtung::LINKS] = 19999;
    EXPECT_EQ(weg.eintritte(ebene, LINKS), 0);
    ebene[1][richtung::LINKS] = 20001;
    EXPECT_EQ(weg.eintritte(ebene, MITTE), 1);
}

TEST(WegrechnungTest, InYIstEsWieInX) {
    const Wegrechnung weg({{33000, 33000, 1}, {33000, 46000, 1}, {33000, 45999, 1}, {33000, 65535, 1}});
    EXPECT_EQ(weg.eintritte(linien(), {1, 2}), 2);
    EXPECT_EQ(weg.eintritte(linien(), MITTE), 1);
}

TEST(WegrechnungTest, NachEinemBruchIstEsKeinEintritt) {
    const Wegrechnung weg({{33000, 33000, 1}, BRUCH, {100, 33000, 1}, {33000, 33000, 1}, {100, 33000, 1}});
    EXPECT_EQ(weg.eintritte(linien(), LINKS), 1);
    EXPECT_EQ(weg.eintritte(linien(), {0, 0}), 0) << "nor is the break one, which tells no place";
    EXPECT_DOUBLE_EQ(weg.sekunden(), 0.02);
}

// At each line and beside it, with lines enough: as a run finds its field.
TEST(WegrechnungTest, JedeStelleLiegtWoEinLaufSieFindet) {
    auto ebene = linien();
    ebene[2] = {9000, 50000, 0, 60000};
    ebene[3] = {0, 65000, 0, 0};
    const Feldgitter gitter(ebene);
    for (int spalte = 0; spalte < gitter.spalten(); ++spalte) {
        const std::uint16_t draussen = spalte == 0 ? 65535 : 0;
        int gefundene = 0;
        for (const int x : {0, 1, 8999, 9000, 9001, 19999, 20000, 20001, 33000, 44999, 45000, 45001, 49999,
                            50000, 50001, 64999, 65000, 65001, 65535}) {
            const Wegrechnung weg({{draussen, 33000, 1}, {static_cast<std::uint16_t>(x), 33000, 1}});
            const bool drin = gitter.platz(BereichFestlegen(ebene, x, 33000).anker).spalte == spalte;
            EXPECT_EQ(weg.eintritte(ebene, {spalte, gitter.mitte().zeile}), drin) << spalte << ": " << x;
            gefundene += drin;
        }
        EXPECT_GT(gefundene, 0) << spalte;
    }
}
