// SPDX-License-Identifier: GPL-3.0-or-later
// The layer that is active after each tick, and what a change of layer asks for.
//
// A time line has a character a tick: "_" nothing pressed, "1" and "2" a shift key alone, "+" a shift key
// with another button, "x" another button.
#include "engine/buttons/Ebenenwechsel.h"
#include "base/LaufzeitFehler.h"

#include <gtest/gtest.h>

#include <map>
#include <string_view>
#include <tuple>

namespace {

using Belegungen = std::array<Belegung, SLOTS>;
using Zustand = Ebenenwechsel::Zustand;

constexpr std::uint32_t TASTE_1 = 1U << 8;
constexpr std::uint32_t TASTE_2 = 1U << 9;
constexpr std::uint32_t ANDERE = 4;

const std::string HALTEN = "0-0-0";
const std::string FESTSTELLEN = "1-0-0";

std::uint32_t wortVon(char zeichen) {
    const std::map<char, std::uint32_t> worte{
        {'_', 0}, {'1', TASTE_1}, {'2', TASTE_2}, {'+', TASTE_1 | ANDERE}, {'x', ANDERE}};
    return worte.at(zeichen);
}

Ebenenwechsel belegt(const std::string& modus1, const std::string& modus2) {
    Belegungen belegungen;
    belegungen.fill(Belegung(LEERE_BELEGUNG));
    belegungen[8] = Belegung("3,0," + modus1);
    belegungen[9] = Belegung("4,0," + modus2);
    Ebenenwechsel ebenen;
    ebenen.TasteBelegen(belegungen);
    return ebenen;
}

std::optional<Ebenenwechsel::Schritt> tick(Ebenenwechsel& ebenen, char zeichen) {
    const auto wort = wortVon(zeichen);
    const auto schritt = wort == 0 ? ebenen.nichtsGedrueckt() : ebenen.gedrueckt(wort);
    if (schritt)
        ebenen.vollziehen(*schritt);
    return schritt;
}

std::string ebenenNach(Ebenenwechsel ebenen, std::string_view zeitlinie) {
    std::string verlauf;
    for (const char zeichen : zeitlinie) {
        tick(ebenen, zeichen);
        verlauf += std::to_string(ebenen.Ebene());
    }
    return verlauf;
}

TEST(Ebenenwechsel, HaltenGiltBisZumLoslassen) {
    const auto ebenen = belegt(HALTEN, HALTEN);
    EXPECT_EQ(ebenenNach(ebenen, "___1111____"), "00011110000");
    EXPECT_EQ(ebenenNach(ebenen, "___2222____"), "00022220000");
}

TEST(Ebenenwechsel, NurDieZweiteBleibtNachEinemLaengerenDruckFest) {
    const auto ebenen = belegt(FESTSTELLEN, FESTSTELLEN);
    EXPECT_EQ(ebenenNach(ebenen, "___1111____"), "00011110000");
    EXPECT_EQ(ebenenNach(ebenen, "___2222____2222____"), "0002222222222220000");
}

TEST(Ebenenwechsel, NachEinemDruckVonEinemTickBleibtAuchDieErsteFest) {
    const auto ebenen = belegt(FESTSTELLEN, FESTSTELLEN);
    EXPECT_EQ(ebenenNach(ebenen, "___1____1111____"), "0001111111110000");
    EXPECT_EQ(ebenenNach(ebenen, "___2____2____"), "0002222220000");
}

TEST(Ebenenwechsel, DieEbeneBleibtSolangeIrgendetwasGedruecktIst) {
    EXPECT_EQ(ebenenNach(belegt(HALTEN, HALTEN), "1+xx2_"), "111110");
}

TEST(Ebenenwechsel, EineUmschalttasteMitEinerAnderenSchaltetNicht) {
    EXPECT_EQ(ebenenNach(belegt(HALTEN, HALTEN), "x++1"), "0001");
}

// The table at the head of the class, line by line.
TEST(Ebenenwechsel, JederZustandAufJedesEreignis) {
    struct Zeile {
        std::string hin; // from the base layer into the state
        Zustand zustand;
        Zustand nichts, erste, zweite, andere;
    };
    using enum Zustand;
    const auto pruefen = [](const Ebenenwechsel& ebenen, const Zeile& zeile) {
        const auto nach = [&](const std::string& zeitlinie) {
            Ebenenwechsel eine = ebenen;

            for (const char zeichen : zeitlinie)
                tick(eine, zeichen);
            return eine.zustand();
        };
        SCOPED_TRACE(zeile.hin);
        EXPECT_EQ(nach(zeile.hin), zeile.zustand);
        EXPECT_EQ(nach(zeile.hin + "_"), zeile.nichts);
        EXPECT_EQ(nach(zeile.hin + "1"), zeile.erste);
        EXPECT_EQ(nach(zeile.hin + "2"), zeile.zweite);
        EXPECT_EQ(nach(zeile.hin + "x"), zeile.andere);
        EXPECT_EQ(nach(zeile.hin + "+"), zeile.andere);
    };
    for (const auto& zeile : {Zeile{"", GRUND, GRUND, E1_GEHALTEN, E2_GEHALTEN, GRUND},
                              Zeile{"1", E1_GEHALTEN, GRUND, E1_GEHALTEN, E1_GEHALTEN, E1_GEHALTEN},
                              Zeile{"2", E2_GEHALTEN, GRUND, E2_GEHALTEN, E2_GEHALTEN, E2_GEHALTEN}})
        pruefen(belegt(HALTEN, HALTEN), zeile);
    for (const auto& zeile : {Zeile{"", GRUND, GRUND, E1_FEST, E2_FEST, GRUND},
                              Zeile{"1", E1_FEST, E1_GELOEST, E1_GEHALTEN, E1_FEST, E1_FEST},
                              Zeile{"1_", E1_GELOEST, E1_GELOEST, E1_GEHALTEN, E1_GELOEST, E1_GELOEST},
                              Zeile{"11", E1_GEHALTEN, GRUND, E1_GEHALTEN, E1_GEHALTEN, E1_GEHALTEN},
                              Zeile{"2", E2_FEST, E2_GELOEST, E2_FEST, E2_FEST, E2_FEST},
                              Zeile{"2_", E2_GELOEST, E2_GELOEST, E2_GELOEST, E2_GEHALTEN, E2_GELOEST},
                              Zeile{"2_2", E2_GEHALTEN, GRUND, E2_GEHALTEN, E2_GEHALTEN, E2_GEHALTEN}})
        pruefen(belegt(FESTSTELLEN, FESTSTELLEN), zeile);
}

TEST(Ebenenwechsel, EinSchrittSagtWasDieSticksZuTunHaben) {
    auto ebenen = belegt(HALTEN, HALTEN);
    const auto gefragt = [&](char zeichen) {
        const auto schritt = tick(ebenen, zeichen).value_or(Ebenenwechsel::Schritt{.ebene = -1});
        return std::tuple(schritt.ebene, schritt.sticksAuswerten, schritt.umschalttaste);
    };
    EXPECT_EQ(gefragt('1'), std::tuple(1, true, TASTE_1));
    EXPECT_EQ(gefragt('_'), std::tuple(0, true, 0U));
    EXPECT_EQ(gefragt('2'), std::tuple(2, false, TASTE_2));
    EXPECT_EQ(gefragt('_'), std::tuple(0, true, 0U));
    EXPECT_EQ(gefragt('_'), std::tuple(-1, false, 0U));
}

TEST(Ebenenwechsel, BisEinSchrittVollzogenIstGiltDieAlteEbene) {
    auto ebenen = belegt(HALTEN, HALTEN);
    const auto hin = ebenen.gedrueckt(TASTE_1);
    ASSERT_TRUE(hin);
    EXPECT_EQ(ebenen.Ebene(), 0);
    EXPECT_EQ(ebenen.eigeneUmschalttaste(), 0U);
    ebenen.vollziehen(*hin);
    EXPECT_EQ(ebenen.Ebene(), 1);
    EXPECT_EQ(ebenen.eigeneUmschalttaste(), TASTE_1);
    const auto zurueck = ebenen.nichtsGedrueckt();
    ASSERT_TRUE(zurueck);
    EXPECT_EQ(ebenen.Ebene(), 1);
}

TEST(Ebenenwechsel, VonMehrerenUmschalttastenGiltDieLetzte) {
    Belegungen belegungen;
    belegungen[3] = belegungen[5] = Belegung("3,0,0-0-0");
    belegungen[12] = Belegung("3,0,0-0-0"); // the D-pad shifts nothing
    Ebenenwechsel ebenen;
    ebenen.TasteBelegen(belegungen);
    EXPECT_FALSE(ebenen.gedrueckt(1U << 3));
    EXPECT_FALSE(ebenen.gedrueckt(1U << 12));
    EXPECT_TRUE(ebenen.gedrueckt(1U << 5));
}

TEST(Ebenenwechsel, EinModusDerKeineZahlIstNenntSeineTaste) {
    Belegungen belegungen;
    belegungen[8] = Belegung("3,0,x-0-0");
    Ebenenwechsel ebenen;
    try {
        ebenen.TasteBelegen(belegungen);
        FAIL() << "no error";
    } catch (const LaufzeitFehler& fehler) {
        EXPECT_EQ(fehler.nummer(), Fehlernummer::FalscherTyp);
        EXPECT_TRUE(std::string_view(fehler.what()).starts_with("Taste Select, Ebene Standart: "))
            << fehler.what();
    }
}

} // namespace
