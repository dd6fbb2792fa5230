// SPDX-License-Identifier: GPL-3.0-or-later
// Where a record may begin in the middle of a run.
#include "tests/hilfen/Testdatenbank.h"
#include "tests/spur/Aufnahme.h"
#include "tests/spur/Spieler.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

const std::string SCHEMA = "grundzeilen\n"
                           "sql UPDATE tblTastatur SET btn3 = '1,65,0-0-0', btn4 = '1,66,1-500-500';\n"
                           "sql UPDATE Sensible SET Fenster_lx = 30, Mindestzahl_lx = 2;\n";

/// The record of the last seconds of a run with these inputs.
std::string aufgenommen(const std::string& eingaben, int sekunden) {
    Aufnahmeart art;
    art.grenzen.dauer = 5s;
    const auto ende = std::to_string(sekunden * 1000) + " ende\n=\n";
    return aufnehmen(szenarienLesen(SCHEMA + "0 start\n" + eingaben + ende).front(), LEERE_DATENBANK, art)
        .text;
}

bool mittenImLauf(const std::string& mitschnitt) {
    return mitschnitt.find("\n0 lauf\n") != std::string::npos;
}

std::string unterschiedBeim(const std::string& mitschnitt) {
    const auto szenario = szenarienLesen(mitschnitt).front();
    return unterschied(szenario, spielen(szenario, LEERE_DATENBANK));
}

} // namespace

TEST(Ruhepunkt, EinStickDerZittertHindertIhnNicht) {
    std::string zittern;
    for (int ms = 3; ms < 19'000; ms += 4)
        zittern += std::to_string(ms) + " achse 0 " + std::to_string(32767 + ms % 7) + "\n";
    const auto mitschnitt = aufgenommen(zittern + "19000 achse 0 10000\n19400 buttons 4\n", 20);
    EXPECT_TRUE(mittenImLauf(mitschnitt));
    EXPECT_NE(mitschnitt.find(" +65\n"), std::string::npos);
    EXPECT_EQ(unterschiedBeim(mitschnitt), "");
}

TEST(Ruhepunkt, WasNochAufZeitLaeuftHindertIhn) {
    const auto mitschnitt = aufgenommen("20 buttons 8\n", 20);
    EXPECT_FALSE(mittenImLauf(mitschnitt));
    EXPECT_EQ(unterschiedBeim(mitschnitt), "");
}
