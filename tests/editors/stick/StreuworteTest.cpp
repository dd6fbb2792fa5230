// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Streuworte.h"
#include "editors/stick/Zustandstext.h"

#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

using Zeilen = std::vector<std::string>;

std::uint16_t zelle(int x, int y) {
    return static_cast<std::uint16_t>(y * Streudaten::ZELLEN + x);
}

/// A hundred seconds: forty in the middle, sixty in three visits to the left, of which one is only just
/// beyond the line at 20480. At rest in the middle and at 20480 it trembles by 256 in x; of y nothing is
/// known.
Streudaten daten() {
    Streudaten daten;
    daten.takte.resize(Streudaten::RASTERFELDER);
    const auto war = [&](int x, int takte) {
        daten.takte[zelle(x, 128)] += static_cast<std::uint32_t>(takte);
        daten.weg.push_back({zelle(x, 128), static_cast<std::uint16_t>(takte)});
    };
    for (const auto& [x, takte] :
         {std::pair{128, 2000}, {20, 5000}, {128, 2000}, {21, 6900}, {128, 2000}, {79, 100}, {128, 2000}})
        war(x, takte);
    daten.achsen[0].zittern[15] = 9900;
    daten.achsen[0].zittern[200] = 100;
    daten.achsen[0].ruhe[128] = 9000;
    daten.achsen[0].ruhe[80] = 1000;
    return daten;
}

class StreuworteTest : public ::testing::Test {
protected:
    StreuworteTest() {
        Schemabau(datenbank_, "S").anlegen();
        linien_[1] = {20480, 46080, 20480, 46080};
        datenbank_.sql("INSERT INTO tblStickAktion VALUES ('S',0,20480,0,0,0,'2,0,66,0,0');");
        Database offen = OpenDatabase(datenbank_.pfad());
        auskunft_.lesen(offen, Stickseite::Links, "S", 0);
    }
    Zeilen zeilen(Ebenenlage lage) {
        lage.gespeichert = gespeichert_.value_or(linien_);
        return zustandszeilen(lage, linien_, auskunft_, &rechnung_, probe_);
    }

    Testdatenbank datenbank_;
    Linienebene linien_{};
    std::optional<Linienebene> gespeichert_;
    Feldauskunft auskunft_;
    const Streurechnung rechnung_{daten()};
    Wegprobe probe_;
};
const Linienzug::Griff LINKE_LINIE{richtung::LINKS, 1, 20480};

} // namespace

TEST(StreuwortTest, EinFeldHatAnteilEintritteUndMedian) {
    EXPECT_EQ(streuworte({.anteil = 0.042, .eintritte = 9, .jeMinute = 12.54, .median = 0.1849}),
              "4,2 % der Zeit · 12,5 Eintritte je Minute · Median 0,18 s");
    EXPECT_EQ(streuworte({.anteil = 1, .eintritte = 0}), "100,0 % der Zeit · 0,0 Eintritte je Minute");
    EXPECT_EQ(streuworte({.anteil = 0.0004, .eintritte = 1, .jeMinute = 0.04}),
              "unter 0,1 % der Zeit · 0,0 Eintritte je Minute");
    EXPECT_EQ(streuworte({}), "hier war der Stick nie");
}

TEST_F(StreuworteTest, DasFeldDerMausSagtWasDerStickDortTat) {
    EXPECT_EQ(zeilen({.maus = Stickposition{10000, 33000}, .klick = Klickfolge::Wahl}),
              (Zeilen{"Feld links – Tastatur: B, gehalten",
                      "60,0 % der Zeit · 1,8 Eintritte je Minute · Median 25,00 s",
                      "Linie rechts im Rauschen (± 256)", "Klick wählt das Feld, danach Rechtsklick: Aktion",
                      "Streubild aus 2 min"}));
}

TEST_F(StreuworteTest, DieMarkeDerTastaturSagtDasselbe) {
    const auto worte = zeilen({.marke = Gitterplatz{0, 1}});
    EXPECT_EQ(worte[1], "60,0 % der Zeit · 1,8 Eintritte je Minute · Median 25,00 s");
    EXPECT_EQ(worte[2], "Linie rechts im Rauschen (± 256)");
}

TEST_F(StreuworteTest, EineLinieUnterDerMausSagtDassSieImRauschenLiegt) {
    const auto worte =
        zeilen({.maus = Stickposition{20480, 33000}, .klick = Klickfolge::Aufnahme, .linien = {LINKE_LINIE}});
    EXPECT_EQ(worte[2], "Diese Linie liegt im Rauschen (± 256)");
    EXPECT_EQ(std::ranges::count(worte, "Linie links im Rauschen (± 256)"), 0) << "not said twice";
}

TEST_F(StreuworteTest, EineLinieNebenDemRauschenSagtNichts) {
    EXPECT_EQ(linienworte(rechnung_, richtung::RECHTS, 46080), std::nullopt);
    EXPECT_EQ(linienworte(rechnung_, richtung::OBEN, 20480), std::nullopt) << "of y nothing is known";
    EXPECT_EQ(linienworte(rechnung_, richtung::LINKS, 20480), "Diese Linie liegt im Rauschen (± 256)");
}

// It rests where the plane ends, too.
TEST_F(StreuworteTest, DerRandDerEbeneIstKeineLinie) {
    auto andere = daten();
    andere.achsen[0].ruhe = {1000};
    andere.achsen[0].ruhe[255] = 1000;
    const Streurechnung rechnung(andere);
    EXPECT_EQ(rauschworte(rechnung, linien_, {0, 1}), Zeilen{});
    EXPECT_EQ(rauschworte(rechnung, linien_, {2, 1}), Zeilen{});
}

TEST_F(StreuworteTest, EinSchmalesFeldSagtEs) {
    linien_[2] = {20480 - 511, 46080 + 512, 0, 0};
    EXPECT_EQ(
        rauschworte(rechnung_, linien_, {1, 1}),
        (Zeilen{"Linie rechts im Rauschen (± 256)", "Feld schmaler als das doppelte Rauschen (± 256)"}));
    EXPECT_EQ(rauschworte(rechnung_, linien_, {3, 1}), Zeilen{}) << "exactly twice the noise";
}

TEST_F(StreuworteTest, EineLinieInDerHandZeigtBeideSeiten) {
    gespeichert_ = linien_;
    linien_[1][richtung::LINKS] = 19900; // 79 is in the middle now
    EXPECT_EQ(zeilen({.maus = Stickposition{19900, 33000},
                      .klick = Klickfolge::Absetzen,
                      .linieInDerHand = true,
                      .linien = {LINKE_LINIE}}),
              (Zeilen{"Feld links: 59,5 % der Zeit, 2 Eintritte (bisher 3) – Tastatur: B, gehalten",
                      "Mittelfeld: 40,5 % der Zeit, 2 Eintritte (bisher 3) – keine Aktion",
                      "Linie aufgenommen – klicken setzt ab", "Streubild aus 2 min"}));
}

// To the unit: at 20300 the stick went into the left field six times, at 20250 never; cells of 256 units
// would not tell one from the other.
TEST_F(StreuworteTest, MitEinemMitschnittZaehltEineProbeAufDieEinheit) {
    std::vector<Wegstelle> weg;
    for (int i = 0; i < 6; ++i)
        weg.insert(weg.end(), {{33000, 33000, 9900}, {20260, 33000, 100}});
    const Wegrechnung rechnung(weg);
    probe_ = {Wegprobe::Stand::Da, &rechnung, "2026-01-02 03.04.05"};
    gespeichert_ = linien_;
    linien_[1][richtung::LINKS] = 20300;
    const Ebenenlage lage{
        .maus = Stickposition{20300, 33000}, .linieInDerHand = true, .linien = {LINKE_LINIE}};
    auto worte = zeilen(lage);
    EXPECT_EQ(worte[1], "Feld links: 59,6 % der Zeit, 6 Eintritte – Tastatur: B, gehalten");
    EXPECT_EQ(worte.back(), "Streubild aus 2 min, Eintritte aus 5 min Mitschnitt vom 02.01.2026, 03:04 Uhr");
    linien_[1][richtung::LINKS] = 20250;
    worte = zeilen(lage);
    EXPECT_EQ(worte[1], "Feld links: 59,6 % der Zeit, 0 Eintritte (bisher 6) – Tastatur: B, gehalten");
    EXPECT_EQ(worte[2], "Mittelfeld: 40,4 % der Zeit, 0 Eintritte (bisher 5) – keine Aktion");
}

TEST_F(StreuworteTest, WasDerMitschnittNichtWeissSagtDasStreubild) {
    using Stand = Wegprobe::Stand;
    const std::string zeitpunkt = "2026-01-02 03.04.05";
    const Wegrechnung leer({});
    gespeichert_ = linien_;
    linien_[1][richtung::LINKS] = 19900;
    for (const auto& [probe, worte] :
         {std::pair(Wegprobe{}, ""),
          {Wegprobe{Stand::Wartet}, " – der letzte Mitschnitt wird nachgespielt"},
          {Wegprobe{Stand::Unbrauchbar, nullptr, zeitpunkt},
           " – der Mitschnitt vom 02.01.2026, 03:04 Uhr ließ sich nicht nachspielen"},
          {Wegprobe{Stand::Da, &leer, zeitpunkt},
           " – im Mitschnitt vom 02.01.2026, 03:04 Uhr kommt diese Ebene nicht vor"}}) {
        probe_ = probe;
        const auto gesagt =
            zeilen({.maus = Stickposition{19900, 33000}, .linieInDerHand = true, .linien = {LINKE_LINIE}});
        EXPECT_EQ(gesagt[0], "Feld links: 59,5 % der Zeit, 2 Eintritte (bisher 3) – Tastatur: B, gehalten");
        EXPECT_EQ(gesagt.back(), std::string("Streubild aus 2 min") + worte);
    }
}

TEST_F(StreuworteTest, EineLinieInDerHandSagtDassSieImRauschenLiegt) {
    gespeichert_ = linien_;
    linien_[1][richtung::LINKS] = 20500;
    EXPECT_EQ(
        zeilen({.maus = Stickposition{20500, 33000}, .linieInDerHand = true, .linien = {LINKE_LINIE}})[0],
        "Diese Linie liegt im Rauschen (± 256)");
}

TEST_F(StreuworteTest, DieProbeGiltInDerReiheDerMaus) {
    const auto namen = [&](const std::vector<Linienzug::Griff>& griffe, Stickposition wo) {
        Zeilen gefunden;
        for (const auto& zeile : probeworte(rechnung_, {linien_, linien_, griffe, wo}, auskunft_))
            gefunden.push_back(zeile.substr(0, zeile.find(':')));
        return gefunden;
    };
    EXPECT_EQ(namen({LINKE_LINIE}, {20480, 5000}), (Zeilen{"Feld links oben", "Feld oben"}));
    EXPECT_EQ(namen({{richtung::RECHTS, 1, 46080}}, {46080, 33000}), (Zeilen{"Mittelfeld", "Feld rechts"}));
    EXPECT_EQ(namen({{richtung::OBEN, 1, 20480}}, {60000, 20480}),
              (Zeilen{"Feld rechts oben", "Feld rechts"}));
    EXPECT_EQ(namen({{richtung::UNTEN, 1, 46080}}, {33000, 46080}), (Zeilen{"Mittelfeld", "Feld unten"}));
    EXPECT_EQ(namen({LINKE_LINIE, {richtung::UNTEN, 1, 46080}}, {20480, 46080}),
              (Zeilen{"Feld links unten", "Feld unten", "Mittelfeld"}))
        << "each once; the hand is to the lower right of the crossing";
}

TEST_F(StreuworteTest, DieAktionenHaengenAnDenGespeichertenLinien) {
    gespeichert_ = linien_;
    linien_[1][richtung::LINKS] = 12345; // on which no action hangs
    EXPECT_NE(
        zeilen({.maus = Stickposition{12345, 33000}, .linieInDerHand = true, .linien = {LINKE_LINIE}})[0]
            .find("Tastatur: B"),
        std::string::npos);
    const auto oben =
        zeilen({.maus = Stickposition{12345, 5000}, .linieInDerHand = true, .linien = {LINKE_LINIE}})[0];
    EXPECT_NE(oben.find("gilt von Feld links: Tastatur: B"), std::string::npos) << oben;
}

TEST_F(StreuworteTest, OhneStreubildBleibtAllesWieEsWar) {
    EXPECT_EQ(zustandszeilen({.maus = Stickposition{20480, 33000},
                              .klick = Klickfolge::Absetzen,
                              .linieInDerHand = true,
                              .linien = {LINKE_LINIE},
                              .gespeichert = linien_},
                             linien_, auskunft_),
              (Zeilen{"Linie aufgenommen – klicken setzt ab"}));
}

TEST(StreuwortTest, DasBildSagtWorausEsIst) {
    Streudaten eigene;
    EXPECT_EQ(streubildworte(Streurechnung(eigene)), "Streubild: Auf dieser Ebene wurde noch nicht gespielt");
    eigene.takte.resize(Streudaten::RASTERFELDER);
    eigene.takte[0] = 60 * 60 * 200;
    eigene.weg = {{0, 6000}};
    EXPECT_EQ(streubildworte(Streurechnung(eigene)), "Streubild aus 60 min, Eintritte aus den letzten 30 s");
    eigene.weg = {{0, 17800}};
    EXPECT_EQ(streubildworte(Streurechnung(eigene)), "Streubild aus 60 min, Eintritte aus den letzten 89 s");
    eigene.weg = {{0, 19000}};
    EXPECT_EQ(streubildworte(Streurechnung(eigene)), "Streubild aus 60 min, Eintritte aus den letzten 2 min");
    const Wegrechnung weg({{1, 1, 400}});
    EXPECT_EQ(streubildworte(Streurechnung(eigene), {Wegprobe::Stand::Da, &weg, "2026-11-22 11.36.05"}),
              "Streubild aus 60 min, Eintritte aus 2 s Mitschnitt vom 22.11.2026, 11:36 Uhr");
}
