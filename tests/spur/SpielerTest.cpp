// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/spur/Spieler.h"

#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

using Texte = std::vector<std::string>;

const std::string SCHEMA =
    "sql INSERT INTO tblTastatur (Schemaname, btn3, btn4) VALUES ('S', '1,65,0-0-0', 'x');\n"
    "sql INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('S');\n";

Szenario szenarioLesen(const std::string& text) {
    return szenarienLesen(text).front();
}
Spurergebnis gespielt(const std::string& text) {
    return spielen(szenarioLesen(text), LEERE_DATENBANK);
}
Texte ereignisse(const std::string& text) {
    Texte alle;
    for (const auto& eines : gespielt(text).ereignisse)
        alle.push_back(std::to_string(eines.zeit.count()) + " " + eines.text);
    return alle;
}
std::string unterschied(const std::string& text) {
    return unterschied(szenarioLesen(text), gespielt(text), UnerwarteterFehler::Falsch);
}
std::string einwand(const std::string& text) {
    try {
        gespielt(text);
    } catch (const Szenariofehler& fehler) {
        return fehler.what();
    }
    return "";
}

TEST(Spieler, SpieltMitFrischerDatenbankUndFrischemStand) {
    const auto spur = SCHEMA + "0 start\n10 buttons 4\n30 ende\n=\n";
    EXPECT_EQ(ereignisse(spur), Texte{"10 +65"});
    EXPECT_EQ(ereignisse(spur), Texte{"10 +65"});
}

TEST(Spieler, LaesstDieLeereDatenbankLeer) {
    gespielt(SCHEMA + "0 start\n30 ende\n=\n");
    EXPECT_EQ(Testdatenbank().zeilen("SELECT * FROM tblTastatur"), Tabellenbild{});
}

TEST(Spieler, KeineAnweisungErreichtEineAndereDatei) {
    const Testordner ordner;
    const auto fremde = (ordner.pfad() / "fremde.db").string();
    EXPECT_NE(einwand("sql ATTACH '" + fremde + "' AS f;\n0 ende\n=\n"), "");
    EXPECT_NE(einwand("sql VACUUM INTO '" + fremde + "';\n0 ende\n=\n"), "");
    EXPECT_FALSE(std::filesystem::exists(fremde));
}

TEST(Spieler, EineAnweisungLegtUndAendertNurZeilen) {
    for (const std::string eine :
         {"CREATE VIEW v AS SELECT 1;", "CREATE TRIGGER t AFTER INSERT ON Sensible BEGIN SELECT 1; END;",
          "CREATE TABLE t (a);", "DROP TABLE Sensible;", "ALTER TABLE Sensible ADD COLUMN a;",
          "PRAGMA writable_schema=ON;"})
        EXPECT_EQ(einwand("sql " + eine + "\n0 ende\n=\n"), "sql " + eine + ": not authorized");
}

TEST(Spieler, KeineAnweisungDauertEndlosOderFuelltAlles) {
    const std::string endlos = "WITH RECURSIVE r(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM r) ";
    EXPECT_EQ(einwand("sql " + endlos + "SELECT count(*) FROM r;\n0 ende\n=\n"),
              "sql " + endlos + "SELECT count(*) FROM r;: takes too long");
    const auto fuellend =
        endlos + "INSERT INTO tblTastatur (Schemaname, btn1) SELECT i, hex(randomblob(100000)) FROM r;";
    EXPECT_EQ(einwand("sql " + fuellend + "\n0 ende\n=\n"), "sql " + fuellend + ": database or disk is full");
    EXPECT_NE(einwand("sql INSERT INTO tblTastatur (Schemaname) VALUES (zeroblob(1000001));\n0 ende\n=\n"),
              "");
}

TEST(Spieler, EinStillstandLaesstAufrufeAus) {
    // The tick at 20 comes at 33, those at 25 and 30 are left out; the press that began and ended meanwhile
    // is never seen.
    const auto spur = SCHEMA + "0 start\n20 spaet 13\n20 buttons 4\n34 buttons 0\n60 ende\n=\n";
    EXPECT_EQ(ereignisse(spur), (Texte{"33 +65", "35 -65"}));
    EXPECT_EQ(ereignisse(SCHEMA + "0 start\n17 spaet 13\n17 buttons 4\n30 buttons 0\n60 ende\n=\n"), Texte{});
}

TEST(Spieler, EinZeitgeberZaehltSpaeter) {
    const auto spur = SCHEMA + "0 start\n0 versatz 2 3\n1 buttons 4\n20 buttons 0\n30 ende\n=\n";
    EXPECT_EQ(ereignisse(spur), (Texte{"8 +65", "23 -65"})) << "the second one is that of the tick";
}

TEST(Spieler, EinZustandGiltVorDemErstenLauf) {
    const std::string halten = "zustand gehaltene 2/65/65\nzustand wiederholung.text 2-65,\n";
    EXPECT_EQ(ereignisse(SCHEMA + halten + "0 start\n10 buttons 4\n20 buttons 0\n30 ende\n=\n"),
              (Texte{"10 +65", "20 -65"}));
    EXPECT_EQ(einwand(SCHEMA + "zustand gibt.es.nicht 1\n0 start\n9 ende\n=\n"),
              "nothing has the zustand gibt.es.nicht");
    EXPECT_EQ(einwand(SCHEMA + "zustand tasten.zaehler x\n0 start\n9 ende\n=\n"),
              "zustand tasten.zaehler: \"x\" makes no sense here");
    EXPECT_EQ(einwand(SCHEMA + "zustand lauf.ebene 1\n0 start\n9 ende\n=\n"),
              "nothing has the zustand lauf.ebene");
}

TEST(Spieler, EinLaufGehtMittenWeiter) {
    const std::string gedrueckt =
        "zustand gehaltene 2/65/65\nzustand lauf.tasten 4\nzustand lauf.tastenAlt 4\n"
        "zustand lauf.wiederholintervall 0\n";
    EXPECT_EQ(ereignisse(SCHEMA + gedrueckt + "0 lauf\n0 buttons 4\n12 buttons 0\n30 ende\n=\n"),
              Texte{"15 -65"});
}

TEST(Spieler, EinZustandDenEsNichtGibtSchadetNicht) {
    const std::string kreuz = "zustand lauf.wiederholintervall 0\nzustand lauf.kreuz 4711\n"
                              "zustand lauf.kreuzAlt 31234\n0 lauf\n10 pov 0\n30 pov 65535\n60 ende\n=\n";
    const std::string belegt = "sql UPDATE tblSteuerKreuz SET Oben = '1,66,0-0-0';\n";
    EXPECT_EQ(ereignisse(SCHEMA + belegt + kreuz), (Texte{"10 +66", "30 -66"}));
    const std::string takte =
        "zustand lauf.wiederholintervall 0\nzustand lauf.wiederholen3 9223372036854775807\n"
        "zustand lauf.wiederholen3.an 1\nzustand lauf.wiederholen4 -5\n"
        "zustand lauf.wiederholen4.an 1\n0 lauf\n10 buttons 4\n900 ende\n=\n";
    EXPECT_EQ(ereignisse(SCHEMA + takte), Texte{"10 +65"});
}

TEST(Spieler, EineToleranzGiltDerZeitUndNichtDerReihe) {
    const auto spur = SCHEMA + "toleranz 10\n0 start\n10 buttons 4\n30 buttons 0\n60 ende\n=\n";
    EXPECT_EQ(unterschied(spur + "20 +65\n20 -65\n"), "");
    EXPECT_EQ(unterschied(spur + "21 +65\n30 -65\n"), "event 1: expected 21 +65, came 10 +65");
    EXPECT_EQ(unterschied(spur + "20 -65\n20 +65\n"), "event 1: expected 20 -65, came 10 +65");
}

TEST(Spieler, WasNichtMehrGenauIstWirdNichtGespielt) {
    const auto spur = "toleranz 10\ngenau 25\n" + SCHEMA +
                      "0 start\n10 buttons 4\n20 buttons 0\n25 buttons 4\n40 knopf 0\n60 ende\n=\n";
    EXPECT_EQ(ereignisse(spur), (Texte{"10 +65", "20 -65"}));
    EXPECT_EQ(unterschied(spur + "10 +65\n20 -65\n25 +99\n"), "");
    EXPECT_EQ(unterschied(spur + "10 +65\n24 -66\n25 +99\n"), "event 2: expected 24 -66, came 20 -65");
    EXPECT_EQ(unterschied("fehler 13\n" + spur + "10 +65\n20 -65\n"), "") << "it comes at the end";
}

TEST(Spieler, VieleGleicheStehenAlsEinesMitIhrerZahl) {
    const auto szenario = szenarioLesen(SCHEMA + "0 start\n9 ende\n=\n4 m(1,0)*3 +65\n");
    EXPECT_EQ(szenario.erwartet, (std::vector<Spurereignis>{{std::chrono::milliseconds{4}, "m(1,0)"},
                                                            {std::chrono::milliseconds{4}, "m(1,0)"},
                                                            {std::chrono::milliseconds{4}, "m(1,0)"},
                                                            {std::chrono::milliseconds{4}, "+65"}}));
}

TEST(Spieler, EingabenEinerZeitKommenVorDenZeitgebern) {
    EXPECT_EQ(ereignisse(SCHEMA + "0 start\n10 buttons 4\n15 buttons 0\n15 stop\n30 ende\n=\n"),
              Texte{"10 +65"});
    EXPECT_EQ(ereignisse(SCHEMA + "0 start\n10 buttons 4\n15 buttons 0\n16 stop\n30 ende\n=\n"),
              (Texte{"10 +65", "15 -65"}));
}

TEST(Spieler, WasAmEndeFaelligIstKommtNoch) {
    EXPECT_EQ(ereignisse(SCHEMA + "0 start\n10 buttons 4\n10 ende\n=\n"), Texte{"10 +65"});
    EXPECT_EQ(ereignisse(SCHEMA + "0 start\n9 buttons 4\n9 ende\n=\n"), Texte{});
}

TEST(Spieler, NenntDenFehlerDerEinenLaufBeendet) {
    const auto ergebnis = gespielt(SCHEMA + "0 start\n10 buttons 8\n20 buttons 4\n30 ende\n=\n");
    EXPECT_EQ(ergebnis.fehler, 13);
    EXPECT_NE(ergebnis.fehlertext, "");
    EXPECT_EQ(ergebnis.ereignisse.size(), 0U);
}

TEST(Spieler, WeistEingabenOhneLaufZurueck) {
    EXPECT_EQ(einwand("0 start\n1 ende\n=\n"), ""); // no row: the run ends before it begins
    EXPECT_EQ(einwand("0 knopf 0\n1 ende\n=\n"), "an input for the window while no run is on");
    EXPECT_EQ(einwand("0 regler 12 30\n1 ende\n=\n"), "an input for the window while no run is on");
    EXPECT_EQ(einwand(SCHEMA + "0 start\n5 start\n9 ende\n=\n"), "start while a run is on");
}

TEST(Spieler, EinFehlerNimmtDasFensterMit) {
    const auto spur = SCHEMA + "0 start\n10 buttons 8\n20 knopf 0\n21 regler 12 30\n22 knopf 0\n";
    EXPECT_EQ(einwand(spur + "30 ende\n=\n"), "");
    EXPECT_EQ(ereignisse(spur + "30 buttons 0\n40 start\n50 buttons 4\n60 ende\n=\n"), Texte{"50 +65"});
    EXPECT_EQ(einwand("0 start\n10 knopf 0\n20 ende\n=\n"), "") << "nor is there one of a failed start";
    EXPECT_EQ(einwand(SCHEMA + "0 start\n10 stop\n20 knopf 0\n30 ende\n=\n"),
              "an input for the window while no run is on");
}

TEST(Spieler, NenntDieAnweisungDieFehlschlaegt) {
    EXPECT_EQ(einwand("sql INSERT INTO tblGarnicht VALUES (1);\n0 ende\n=\n"),
              "sql INSERT INTO tblGarnicht VALUES (1);: no such table: tblGarnicht");
}

TEST(Unterschied, IstLeerWennAllesStimmt) {
    EXPECT_EQ(unterschied(SCHEMA + "0 start\n10 buttons 4\n20 buttons 0\n30 ende\n=\n10 +65\n20 -65\n"), "");
}

TEST(Unterschied, NenntDasErsteEreignisMitZeit) {
    const auto spur = SCHEMA + "0 start\n10 buttons 4\n20 buttons 0\n30 ende\n=\n";
    EXPECT_EQ(unterschied(spur + "10 +66\n20 -66\n"), "event 1: expected 10 +66, came 10 +65");
    EXPECT_EQ(unterschied(spur + "10 +65\n15 -65\n"), "event 2: expected 15 -65, came 20 -65");
    EXPECT_EQ(unterschied(spur + "10 +65\n20 -65\n25 +65\n"), "event 3: expected 25 +65, came nothing more");
    EXPECT_EQ(unterschied(spur + "10 +65\n"), "event 2: expected nothing more, came 20 -65");
    EXPECT_EQ(unterschied(spur), "event 1: expected nothing more, came 10 +65");
}

TEST(Unterschied, NenntDenFehlerDerFehltZuVielIstOderEinAndererIst) {
    const auto ohne = SCHEMA + "0 start\n30 ende\n=\n";
    const auto mit = SCHEMA + "0 start\n10 buttons 8\n30 ende\n=\n";
    EXPECT_EQ(unterschied("fehler 13\n" + ohne), "expected a run stopped by error 13, came no error");
    EXPECT_EQ(unterschied("fehler 13\n" + mit), "");
    EXPECT_TRUE(unterschied(mit).starts_with("expected no error, came a run stopped by error 13 ("))
        << unterschied(mit);
    EXPECT_TRUE(unterschied("fehler 9\n" + mit)
                    .starts_with("expected a run stopped by error 9, came a run stopped by error 13 ("))
        << unterschied("fehler 9\n" + mit);
}

} // namespace
