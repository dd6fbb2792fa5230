// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Streurechnung.h"

#include "tests/hilfen/Kunsthand.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

constexpr int ZELLEN = Streudaten::ZELLEN;
constexpr Streudaten::Aufenthalt BRUCH{0, 0};

/// One line a direction, on edges of cells: 20480, 46080, 20480, 46080.
Linienebene linien() {
    Linienebene ebene{};
    ebene[1] = {80 * 256, 180 * 256, 80 * 256, 180 * 256};
    return ebene;
}
constexpr Gitterplatz MITTE{1, 1};
constexpr Gitterplatz LINKS{0, 1};
constexpr Gitterplatz RECHTS{2, 1};

std::uint16_t zelle(int x, int y) {
    return static_cast<std::uint16_t>(y * ZELLEN + x);
}
constexpr int IN_DER_MITTE = 128;

class Daten {
public:
    Daten& takte(int x, int y, std::uint32_t anzahl) {
        daten_.takte.resize(Streudaten::RASTERFELDER);
        daten_.takte[zelle(x, y)] += anzahl;
        return *this;
    }
    /// Stays in the row of the middle, by cell.
    Daten& weg(const std::vector<std::pair<int, int>>& aufenthalte) {
        for (const auto& [x, anzahl] : aufenthalte)
            daten_.weg.push_back({zelle(x, IN_DER_MITTE), static_cast<std::uint16_t>(anzahl)});
        return *this;
    }
    Daten& bruch() {
        daten_.weg.push_back(BRUCH);
        return *this;
    }
    Daten& zittern(std::size_t achse, std::size_t klasse, std::uint32_t anzahl) {
        daten_.achsen[achse].zittern[klasse] += anzahl;
        return *this;
    }
    Daten& ruhe(std::size_t achse, std::size_t wo, std::uint32_t anzahl) {
        daten_.achsen[achse].ruhe[wo] += anzahl;
        return *this;
    }
    Streurechnung rechnung() const { return Streurechnung(daten_); }
    Streurechnung::Feldstreuung feld(const Gitterplatz& platz) const {
        return rechnung().feld(linien(), platz);
    }

private:
    Streudaten daten_;
};

} // namespace

// --- shares ---

TEST(StreurechnungTest, DerAnteilIstDieZeitImFeld) {
    const auto daten = Daten().takte(128, 128, 60).takte(80, 180, 5).takte(79, 128, 30).takte(255, 255, 5);
    EXPECT_DOUBLE_EQ(daten.rechnung().sekunden(), 0.5);
    EXPECT_DOUBLE_EQ(daten.feld(MITTE).anteil, 0.60);
    EXPECT_DOUBLE_EQ(daten.feld(LINKS).anteil, 0.30) << "the cell before the line";
    EXPECT_DOUBLE_EQ(daten.feld({1, 2}).anteil, 0.05) << "the cells behind the lines";
    EXPECT_DOUBLE_EQ(daten.feld({2, 2}).anteil, 0.05) << "the last cell of all";
    EXPECT_DOUBLE_EQ(daten.feld(RECHTS).anteil, 0);
}

TEST(StreurechnungTest, AlleFelderZusammenSindDieGanzeZeit) {
    const Streurechnung rechnung(streudatenAus({.saat = 3}, 12000));
    auto ebene = linien();
    ebene[1] = {20011, 45777, 21003, 46999};
    ebene[2] = {9001, 60123, 10007, 0};
    const Feldgitter gitter(ebene);
    double summe = 0;
    for (int i = 0; i < gitter.anzahl(); ++i)
        summe += rechnung.feld(ebene, gitter.platz(i)).anteil;
    EXPECT_NEAR(summe, 1, 1e-9);
    EXPECT_DOUBLE_EQ(rechnung.sekunden(), 60);
}

TEST(StreurechnungTest, EineLinieTeiltEineZelleNachFlaeche) {
    const auto daten = Daten().takte(100, 128, 1000);
    auto ebene = linien();
    for (const auto& [linie, links] : {std::pair{100 * 256, 0.0}, {100 * 256 + 64, 0.25}, {101 * 256, 1.0}}) {
        ebene[1][richtung::LINKS] = linie;
        EXPECT_DOUBLE_EQ(daten.rechnung().feld(ebene, LINKS).anteil, links) << linie;
        EXPECT_DOUBLE_EQ(daten.rechnung().feld(ebene, MITTE).anteil, 1 - links) << linie;
    }
}

TEST(StreurechnungTest, OhneZaehlungIstAllesNichts) {
    const Streurechnung rechnung{Streudaten{}};
    const auto feld = rechnung.feld(linien(), MITTE);
    EXPECT_EQ(rechnung.sekunden(), 0);
    EXPECT_EQ(feld.anteil, 0);
    EXPECT_EQ(feld.eintritte, 0);
    EXPECT_EQ(feld.jeMinute, 0);
    EXPECT_EQ(feld.median, std::nullopt);
}

TEST(StreurechnungTest, EinFeldVonVerkehrtenLinienIstLeer) {
    auto ebene = linien();
    std::swap(ebene[1][richtung::LINKS], ebene[1][richtung::RECHTS]);
    EXPECT_GE(Daten().takte(128, 128, 10).rechnung().feld(ebene, MITTE).anteil, 0);
}

// --- entries and stays ---

TEST(StreurechnungTest, EinEintrittKommtAusEinemAnderenFeld) {
    const auto daten = Daten().weg({{128, 100}, {20, 10}, {21, 10}, {128, 30}, {20, 40}, {128, 10}});
    const auto links = daten.feld(LINKS);
    EXPECT_EQ(links.eintritte, 2);
    EXPECT_DOUBLE_EQ(links.jeMinute, 2 * 60 / (200 * 0.005));
    EXPECT_DOUBLE_EQ(*links.median, 0.15) << "20 and 40 ticks, the first of two cells";
    const auto mitte = daten.feld(MITTE);
    EXPECT_EQ(mitte.eintritte, 2) << "not the first stay";
    EXPECT_DOUBLE_EQ(*mitte.median, 0.15) << "nor the last, whose end is not known";
}

TEST(StreurechnungTest, NachEinemBruchIstEinAufenthaltKeinEintritt) {
    const auto feld =
        Daten().weg({{128, 5}}).bruch().weg({{20, 9}, {128, 1}, {20, 7}}).bruch().weg({{128, 5}}).feld(LINKS);
    EXPECT_EQ(feld.eintritte, 1) << "the one that came from the middle";
    EXPECT_EQ(feld.median, std::nullopt) << "how long it would have stayed is not known";
}

TEST(StreurechnungTest, EinLangerAufenthaltInStueckenIstEiner) {
    const auto feld = Daten().weg({{128, 1}, {20, 65535}, {20, 65535}, {20, 30}, {128, 1}}).feld(LINKS);
    EXPECT_EQ(feld.eintritte, 1);
    EXPECT_DOUBLE_EQ(*feld.median, 131100 * 0.005);
}

TEST(StreurechnungTest, DerMedianIstDerMittlereAufenthalt) {
    EXPECT_DOUBLE_EQ(*Daten()
                          .weg({{128, 1}, {20, 900}, {128, 1}, {20, 4}, {128, 1}, {20, 6}, {128, 1}})
                          .feld(LINKS)
                          .median,
                     0.03);
}

TEST(StreurechnungTest, EineZelleGehoertZumFeldIhrerMitte) {
    auto ebene = linien();
    const auto daten = Daten().weg({{128, 1}, {60, 1}, {128, 1}});
    ebene[1][richtung::LINKS] = 60 * 256 + 128;
    EXPECT_EQ(daten.rechnung().feld(ebene, LINKS).eintritte, 0) << "a point on the line belongs to its right";
    ebene[1][richtung::LINKS] = 60 * 256 + 129;
    EXPECT_EQ(daten.rechnung().feld(ebene, LINKS).eintritte, 1);
}

TEST(StreurechnungTest, InYIstEsWieInX) {
    Streudaten daten;
    for (const int y : {128, 200, 128, 201, 128})
        daten.weg.push_back({zelle(128, y), 10});
    EXPECT_EQ(Streurechnung(daten).feld(linien(), {1, 2}).eintritte, 2);
    EXPECT_EQ(Streurechnung(daten).feld(linien(), {1, 0}).eintritte, 0);
}

// --- noise ---

TEST(StreurechnungTest, DasRauschenIstDasBandVon99Prozent) {
    auto daten = Daten().zittern(0, 0, 980).zittern(0, 19, 20);
    EXPECT_DOUBLE_EQ(*daten.rechnung().rauschen(Streurechnung::X), 19 * 16 + 8) << "half way in the class";
    EXPECT_EQ(daten.rechnung().rauschen(Streurechnung::Y), std::nullopt);
    EXPECT_DOUBLE_EQ(*Daten().zittern(1, 255, 1000).rechnung().rauschen(Streurechnung::Y),
                     255 * 16 + 0.99 * 16);
}

TEST(StreurechnungTest, VonZweiSekundenRuheAnIstDasRauschenBekannt) {
    EXPECT_EQ(Daten().zittern(0, 1, 399).rechnung().rauschen(Streurechnung::X), std::nullopt);
    EXPECT_TRUE(Daten().zittern(0, 1, 400).rechnung().rauschen(Streurechnung::X));
}

TEST(StreurechnungTest, EineLinieLiegtImRauschenWoDerStickRuht) {
    // ± 256, at rest in the cell from 25600 to 25855.
    const auto rechnung = Daten().zittern(0, 15, 9900).zittern(0, 200, 100).ruhe(0, 100, 1000).rechnung();
    ASSERT_DOUBLE_EQ(*rechnung.rauschen(Streurechnung::X), 256);
    const auto liegt = [&](std::int32_t linie) { return rechnung.linieImRauschen(Streurechnung::X, linie); };
    EXPECT_TRUE(liegt(25728));
    EXPECT_TRUE(liegt(25600 - 256 + 3)) << "a hundredth of the cell";
    EXPECT_FALSE(liegt(25600 - 256 + 2));
    EXPECT_TRUE(liegt(25856 + 256 - 3));
    EXPECT_FALSE(liegt(25856 + 256 - 2));
    EXPECT_FALSE(rechnung.linieImRauschen(Streurechnung::Y, 25728)) << "nothing is known of the other axis";
}

TEST(StreurechnungTest, EinSeltenerRuheortIstKeiner) {
    const auto bei = [](std::uint32_t dort) {
        return Daten().zittern(0, 10, 1000).ruhe(0, 100, dort).ruhe(0, 200, 1000 - dort).rechnung();
    };
    EXPECT_TRUE(bei(10).linieImRauschen(Streurechnung::X, 25728));
    EXPECT_FALSE(bei(9).linieImRauschen(Streurechnung::X, 25728));
}

TEST(StreurechnungTest, SchmalIstWenigerAlsDasDoppelteRauschen) {
    const auto rechnung = Daten().zittern(0, 15, 9900).zittern(0, 200, 100).rechnung();
    EXPECT_TRUE(rechnung.schmal(Streurechnung::X, 1000, 1511));
    EXPECT_FALSE(rechnung.schmal(Streurechnung::X, 1000, 1512));
    EXPECT_FALSE(rechnung.schmal(Streurechnung::Y, 1000, 1001));
}

// A cheap pad: 90 units of noise, and a hand that trembles.
TEST(StreurechnungTest, EineKunsthandRauschtWieIhrPad) {
    const Streurechnung rechnung(streudatenAus({.saat = 5}, 60000));
    for (const auto achse : {Streurechnung::X, Streurechnung::Y}) {
        ASSERT_TRUE(rechnung.rauschen(achse));
        EXPECT_GT(*rechnung.rauschen(achse), 2 * 90);
        EXPECT_LT(*rechnung.rauschen(achse), 1500);
        EXPECT_TRUE(rechnung.linieImRauschen(achse, 32767)) << "where it comes to rest";
    }
}
