// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Feldgitter.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using richtung::LINKS;
using richtung::OBEN;
using richtung::RECHTS;
using richtung::UNTEN;

using Reihen = std::array<std::vector<std::int32_t>, RICHTUNGEN>;

Linienebene linien(const Reihen& reihen) {
    Linienebene ebene{};
    for (std::size_t d = 0; d < RICHTUNGEN; ++d)
        for (std::size_t i = 0; i < reihen[d].size(); ++i)
            ebene[i + 1][d] = reihen[d][i];
    return ebene;
}

const Reihen EINFACH{{{20000}, {45000}, {21000}, {46000}}};
const Reihen DICHT{{{20000, 9000}, {45000, 50000, 60000}, {21000}, {46000, 64000}}};

Reihen volle() {
    Reihen reihen;
    for (int i = 0; i < LETZTE_LINIENZEILE; ++i)
        for (std::size_t d = 0; d < RICHTUNGEN; ++d)
            reihen[d].push_back(d == LINKS || d == OBEN ? 30000 - 1500 * i : 35000 + 1500 * i);
    return reihen;
}

} // namespace

TEST(FeldgitterTest, JedeLinieGibtEineSpalteOderZeile) {
    const Feldgitter einfach(linien(EINFACH));
    EXPECT_EQ(einfach.spalten(), 3);
    EXPECT_EQ(einfach.zeilen(), 3);
    const Feldgitter dicht(linien(DICHT));
    EXPECT_EQ(dicht.spalten(), 6);
    EXPECT_EQ(dicht.zeilen(), 4);
    EXPECT_EQ(dicht.anzahl(), 24);
    EXPECT_EQ(dicht.mitte(), (Gitterplatz{2, 1}));
    EXPECT_EQ(Feldgitter(linien(volle())).anzahl(), 39 * 39);
}

TEST(FeldgitterTest, FelderSindDieDerSucheAnIhrerMitte) {
    for (const auto& reihen : {EINFACH, DICHT, volle()}) {
        const auto ebene = linien(reihen);
        const Feldgitter gitter(ebene);
        for (int nummer = 0; nummer < gitter.anzahl(); ++nummer) {
            const auto platz = gitter.platz(nummer);
            const auto feld = gitter.feld(platz);
            const auto& r = feld.rechteck;
            const auto gesucht = BereichFestlegen(ebene, static_cast<std::int32_t>(r.links + r.breite / 2),
                                                  static_cast<std::int32_t>(r.oben + r.hoehe / 2));
            ASSERT_EQ(feld, gesucht) << nummer;
            ASSERT_EQ(gitter.platz(feld.anker), platz) << nummer;
            ASSERT_EQ(gitter.nummer(platz), nummer);
        }
    }
}

TEST(FeldgitterTest, NamenZaehlenVonDerMitteNachAussen) {
    const Feldgitter gitter(linien(DICHT));
    EXPECT_EQ(gitter.name({2, 1}), "Mittelfeld");
    EXPECT_EQ(gitter.name({1, 1}), "Feld links");
    EXPECT_EQ(gitter.name({0, 1}), "Feld links 2");
    EXPECT_EQ(gitter.name({5, 3}), "Feld rechts 3 unten 2");
    EXPECT_EQ(gitter.name({2, 0}), "Feld oben");
    EXPECT_EQ(gitter.name({3, 2}), "Feld rechts unten");
}

TEST(FeldgitterTest, EinAnkerOhneLinieLiegtInDerMitte) {
    EXPECT_EQ(Feldgitter(linien(DICHT)).platz(Feldanker{12345, 0, 21000, 0}), (Gitterplatz{2, 0}));
}

TEST(FeldgitterTest, AussenIstSchluss) {
    const Feldgitter gitter(linien(EINFACH));
    EXPECT_EQ(gitter.begrenzt({-1, 3}), (Gitterplatz{0, 2}));
    EXPECT_EQ(gitter.begrenzt({2, 0}), (Gitterplatz{2, 0}));
}

TEST(FeldgitterTest, InEinemBandBewegtSichDessenInnereLinie) {
    const Feldgitter gitter(linien(DICHT));
    for (const int schritt : {-1, 1}) {
        EXPECT_EQ(gitter.linieBeiX({0, 0}, schritt), (Linienplatz{LINKS, 2}));
        EXPECT_EQ(gitter.linieBeiX({1, 1}, schritt), (Linienplatz{LINKS, 1}));
        EXPECT_EQ(gitter.linieBeiX({5, 1}, schritt), (Linienplatz{RECHTS, 3}));
        EXPECT_EQ(gitter.linieBeiY({2, 0}, schritt), (Linienplatz{OBEN, 1}));
        EXPECT_EQ(gitter.linieBeiY({2, 3}, schritt), (Linienplatz{UNTEN, 2}));
    }
}

TEST(FeldgitterTest, ImMittelbandBewegtSichDieLinieAufDieEsZugeht) {
    const Feldgitter gitter(linien(DICHT));
    EXPECT_EQ(gitter.linieBeiX({2, 0}, -1), (Linienplatz{LINKS, 1}));
    EXPECT_EQ(gitter.linieBeiX({2, 0}, 1), (Linienplatz{RECHTS, 1}));
    EXPECT_EQ(gitter.linieBeiY({0, 1}, -1), (Linienplatz{OBEN, 1}));
    EXPECT_EQ(gitter.linieBeiY({0, 1}, 1), (Linienplatz{UNTEN, 1}));
    EXPECT_EQ(Feldgitter(Linienebene{}).linieBeiX({0, 0}, 1), std::nullopt) << "without lines";
}
