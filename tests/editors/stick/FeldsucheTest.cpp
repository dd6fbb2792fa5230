// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Feldsuche.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include <ostream>

void PrintTo(const Stickfeld& feld, std::ostream* strom) {
    const auto& r = feld.rechteck;
    *strom << "left " << r.links << " width " << r.breite << " top " << r.oben << " height " << r.hoehe
           << " anchor " << feld.anker[0] << "," << feld.anker[1] << "," << feld.anker[2] << ","
           << feld.anker[3];
}

namespace {

// A direction's lines from slot 1 on.
using Linien = std::vector<std::int32_t>;
Linienebene ebene(const Linien& links, const Linien& rechts, const Linien& oben, const Linien& unten) {
    Linienebene linien{};
    const std::array<const Linien*, 4> alle{&links, &rechts, &oben, &unten};
    for (std::size_t d = 0; d < 4; ++d)
        for (std::size_t i = 0; i < alle[d]->size(); ++i)
            linien[i + 1][d] = (*alle[d])[i];
    return linien;
}

const Linienebene ZWEI = ebene({20000, 10000}, {45000, 55000}, {25000, 5000}, {40000, 60000});
constexpr std::int32_t MITTE = 32767;

// Left, width, anchor Links, anchor Rechts of the field at x, in the centre band of y.
using Querband = std::array<std::int64_t, 4>;
Querband quer(const Linienebene& linien, std::int32_t x) {
    const auto feld = BereichFestlegen(linien, x, MITTE);
    return {feld.rechteck.links, feld.rechteck.breite, feld.anker[0], feld.anker[1]};
}
// Top, height, anchor Oben, anchor Unten of the field at y.
Querband hoch(const Linienebene& linien, std::int32_t y) {
    const auto feld = BereichFestlegen(linien, MITTE, y);
    return {feld.rechteck.oben, feld.rechteck.hoehe, feld.anker[2], feld.anker[3]};
}
// Left and width of the field under the stick at x.
std::array<double, 2> unterPunkt(const Linienebene& linien, double x) {
    const auto feld = BereichFestlegen2(linien, x, MITTE);
    return {feld.links, feld.breite};
}

// 19 lines in each direction: 30000, 29000 ... 12000 and 36000, 37000 ... 54000.
Linienebene volle() {
    Linien innen;
    Linien aussen;
    for (int i = 0; i < 19; ++i) {
        innen.push_back(30000 - 1000 * i);
        aussen.push_back(36000 + 1000 * i);
    }
    return ebene(innen, aussen, innen, aussen);
}

} // namespace

TEST(Feldsuche, DasMittelfeldHatKeinenAnker) {
    EXPECT_EQ(BereichFestlegen(ZWEI, MITTE, MITTE), (Stickfeld{{20000, 25000, 25000, 15000}, {0, 0, 0, 0}}));
}

TEST(Feldsuche, EinPunktAufEinerLinieGehoertWieBestimmt) {
    EXPECT_EQ(quer(ZWEI, 19999), (Querband{10000, 10000, 20000, 0}));
    EXPECT_EQ(quer(ZWEI, 20000), (Querband{20000, 25000, 0, 0})) << "on the inner left line: centre";
    EXPECT_EQ(quer(ZWEI, 20001), (Querband{20000, 25000, 0, 0}));
    EXPECT_EQ(quer(ZWEI, 10001), (Querband{10000, 10000, 20000, 0}));
    EXPECT_EQ(quer(ZWEI, 10000), (Querband{10000, 10000, 20000, 0})) << "on a left line: the larger side";
    EXPECT_EQ(quer(ZWEI, 9999), (Querband{0, 10000, 10000, 0}));

    EXPECT_EQ(quer(ZWEI, 44999), (Querband{20000, 25000, 0, 0}));
    EXPECT_EQ(quer(ZWEI, 45000), (Querband{45000, 10000, 0, 45000})) << "on the inner right line: outside";
    EXPECT_EQ(quer(ZWEI, 45001), (Querband{45000, 10000, 0, 45000}));
    EXPECT_EQ(quer(ZWEI, 54999), (Querband{45000, 10000, 0, 45000}));
    EXPECT_EQ(quer(ZWEI, 55000), (Querband{45000, 10000, 0, 45000})) << "on a further right line: inside";
    EXPECT_EQ(quer(ZWEI, 55001), (Querband{55000, 11000, 0, 55000}));
}

TEST(Feldsuche, InYIstEsDasselbe) {
    EXPECT_EQ(hoch(ZWEI, 25000), (Querband{25000, 15000, 0, 0}));
    EXPECT_EQ(hoch(ZWEI, 24999), (Querband{5000, 20000, 25000, 0}));
    EXPECT_EQ(hoch(ZWEI, 5000), (Querband{5000, 20000, 25000, 0}));
    EXPECT_EQ(hoch(ZWEI, 4999), (Querband{0, 5000, 5000, 0}));
    EXPECT_EQ(hoch(ZWEI, 39999), (Querband{25000, 15000, 0, 0}));
    EXPECT_EQ(hoch(ZWEI, 40000), (Querband{40000, 20000, 0, 40000}));
    EXPECT_EQ(hoch(ZWEI, 60000), (Querband{40000, 20000, 0, 40000}));
    EXPECT_EQ(hoch(ZWEI, 60001), (Querband{60000, 6000, 0, 60000}));
}

TEST(Feldsuche, DasLetzteFeldReichtUeberDieEbeneHinaus) {
    const auto linien = ebene({20000}, {45000}, {20000}, {45000});
    EXPECT_EQ(quer(linien, 50000), (Querband{45000, 21000, 0, 45000}));
    EXPECT_EQ(quer(linien, 65535), (Querband{45000, 21000, 0, 45000}));
    EXPECT_EQ(hoch(linien, 65535), (Querband{45000, 21000, 0, 45000}));
    EXPECT_EQ(quer(linien, 0), (Querband{0, 20000, 20000, 0}));
    EXPECT_EQ(hoch(linien, 0), (Querband{0, 20000, 20000, 0}));
}

TEST(Feldsuche, DieEckenHabenZweiAnker) {
    EXPECT_EQ(BereichFestlegen(ZWEI, 0, 0), (Stickfeld{{0, 10000, 0, 5000}, {10000, 0, 5000, 0}}));
    EXPECT_EQ(BereichFestlegen(ZWEI, 65535, 65535),
              (Stickfeld{{55000, 11000, 60000, 6000}, {0, 55000, 0, 60000}}));
}

TEST(Feldsuche, VolleReihenEndenAmLetztenPlatz) {
    const auto linien = volle();
    EXPECT_EQ(quer(linien, 12000), (Querband{12000, 1000, 13000, 0}));
    EXPECT_EQ(quer(linien, 11999), (Querband{0, 12000, 12000, 0}));
    EXPECT_EQ(quer(linien, 54000), (Querband{53000, 1000, 0, 53000}));
    EXPECT_EQ(quer(linien, 54001), (Querband{54000, 12000, 0, 54000}));
    EXPECT_EQ(hoch(linien, 11999), (Querband{0, 12000, 12000, 0}));
    EXPECT_EQ(hoch(linien, 54001), (Querband{54000, 12000, 0, 54000}));
}

TEST(Feldsuche, EinGangUeberDieReiheHinausNimmtDieLetzteLinieAlsAeusserste) {
    auto linien = volle();
    linien[20] = {11000, 55000, 11000, 55000}; // the slot that is always empty otherwise
    EXPECT_EQ(quer(linien, 10999), (Querband{0, 11000, 11000, 0}));
    EXPECT_EQ(quer(linien, 55001), (Querband{55000, 11000, 0, 55000}));
    EXPECT_EQ(hoch(linien, 10999), (Querband{0, 11000, 11000, 0}));
    EXPECT_EQ(hoch(linien, 55001), (Querband{55000, 11000, 0, 55000}));
    EXPECT_EQ(unterPunkt(linien, 10999.5), (std::array{0.0, 11000.0}));
    EXPECT_EQ(unterPunkt(linien, 55000.5), (std::array{55000.0, 11000.0}));
}

TEST(Feldsuche, FremdeWerteLaufenNichtUeber) {
    constexpr auto KLEINSTE = std::numeric_limits<std::int32_t>::min();
    constexpr auto GROESSTE = std::numeric_limits<std::int32_t>::max();
    const auto linien = ebene({GROESSTE}, {KLEINSTE}, {GROESSTE}, {KLEINSTE});
    EXPECT_EQ(quer(linien, 5), (Querband{0, GROESSTE, GROESSTE, 0}));
    const auto verdreht = ebene({KLEINSTE}, {KLEINSTE}, {1}, {2});
    EXPECT_EQ(quer(verdreht, 5), (Querband{KLEINSTE, std::int64_t{66000} - KLEINSTE, 0, KLEINSTE}));
}

TEST(Feldsuche, UnterDemStickRechnetEsMitBruchteilen) {
    EXPECT_EQ(unterPunkt(ZWEI, 19999.5), (std::array{10000.0, 10000.0}));
    EXPECT_EQ(unterPunkt(ZWEI, 20000), (std::array{20000.0, 25000.0}));
    EXPECT_EQ(unterPunkt(ZWEI, 9999.5), (std::array{0.0, 10000.0}));
    EXPECT_EQ(unterPunkt(ZWEI, 44999.5), (std::array{20000.0, 25000.0}));
    EXPECT_EQ(unterPunkt(ZWEI, 45000), (std::array{45000.0, 10000.0}));
    EXPECT_EQ(unterPunkt(ZWEI, 55000), (std::array{45000.0, 10000.0}));
    EXPECT_EQ(unterPunkt(ZWEI, 55000.5), (std::array{55000.0, 11000.0}));
    EXPECT_EQ(BereichFestlegen2(ZWEI, 32764.5, 65535), (Punktrechteck{20000.0, 25000.0, 60000.0, 6000.0}));
    EXPECT_EQ(BereichFestlegen2(ZWEI, 32764.5, 24999.5), (Punktrechteck{20000.0, 25000.0, 5000.0, 20000.0}));
    EXPECT_EQ(BereichFestlegen2(ZWEI, 32764.5, 25000), (Punktrechteck{20000.0, 25000.0, 25000.0, 15000.0}));
}
