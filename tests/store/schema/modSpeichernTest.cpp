// SPDX-License-Identifier: GPL-3.0-or-later
// What a run writes into its Schema.
#include "store/schema/modSpeichern.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

class FunktionSpeichernTest : public testing::Test {
protected:
    FunktionSpeichernTest() {
        datei.sql("INSERT INTO tblTastatur (Schemaname, Funktion) VALUES ('S', 2), ('T', 2)");
    }
    Tabellenbild funktionen() const { return datei.zeilen("SELECT Schemaname, Funktion FROM tblTastatur"); }

    Testdatenbank datei;
};

} // namespace

TEST_F(FunktionSpeichernTest, SchreibtNurDieseSpalteDiesesSchemas) {
    const auto erwartet = datei.zeilen("SELECT * FROM tblTastatur WHERE Schemaname = 'S'");
    FunktionSpeichern(datei.pfad(), "S", 1);
    EXPECT_EQ(funktionen(), (Tabellenbild{{"S", "1"}, {"T", "2"}}));
    datei.sql("UPDATE tblTastatur SET Funktion = 2");
    EXPECT_EQ(datei.zeilen("SELECT * FROM tblTastatur WHERE Schemaname = 'S'"), erwartet);
}

TEST_F(FunktionSpeichernTest, SchreibtUeberEinenLeerenWert) {
    datei.sql("UPDATE tblTastatur SET Funktion = NULL");
    FunktionSpeichern(datei.pfad(), "S", 0); // which it stands for
    EXPECT_EQ(funktionen(), (Tabellenbild{{"S", "NULL"}, {"T", "NULL"}}));
    FunktionSpeichern(datei.pfad(), "S", 1);
    EXPECT_EQ(funktionen(), (Tabellenbild{{"S", "1"}, {"T", "NULL"}}));
}

TEST_F(FunktionSpeichernTest, OhneZeileGeschiehtNichts) {
    FunktionSpeichern(datei.pfad(), "fehlt", 1);
    EXPECT_EQ(funktionen(), (Tabellenbild{{"S", "2"}, {"T", "2"}}));
}

TEST_F(FunktionSpeichernTest, WasSchonDaStehtWirdNichtGeschrieben) {
    RoheVerbindung andere(datei.pfad());
    andere.sql("BEGIN IMMEDIATE");
    EXPECT_EQ(fehlernummer([&] { FunktionSpeichern(datei.pfad(), "S", 2); }), 0);
    EXPECT_EQ(fehlernummer([&] { FunktionSpeichern(datei.pfad(), "S", 1); }), 3218);
    andere.sql("COMMIT");
    EXPECT_EQ(funktionen(), (Tabellenbild{{"S", "2"}, {"T", "2"}}));
}

TEST_F(FunktionSpeichernTest, WasNichtPasstWirdAbgewiesen) {
    EXPECT_EQ(fehlernummer([&] { FunktionSpeichern(datei.pfad(), "S", 32768); }), 6);
    EXPECT_EQ(fehlernummer([&] { FunktionSpeichern(datei.pfad(), "O'Brien", 1); }), 3075);
    EXPECT_EQ(fehlernummer([&] { FunktionSpeichern(datei.pfad() + ".fehlt", "S", 1); }), 3024);
    EXPECT_EQ(funktionen(), (Tabellenbild{{"S", "2"}, {"T", "2"}}));
}
