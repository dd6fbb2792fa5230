// SPDX-License-Identifier: GPL-3.0-or-later
// Statement texts: which of them reach the database, in what form, and that every text of the program does.
#include "store/db/Anweisungstext.h"
#include "store/db/Datenbank.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Anweisungstext, NamenHinterEinemPunktWerdenAngefuehrtUndWerteZuParametern) {
    const Auswahl auswahl =
        auswahlLesen("SELECT * FROM tblStick WHERE (tblStick.Schemaname)= 'S' ORDER BY TBLSTICK.INDEX;");
    EXPECT_EQ(auswahl.tabelle, "tblStick");
    EXPECT_EQ(auswahl.bedingung, " WHERE ( tblStick . \"Schemaname\" ) = ? ORDER BY TBLSTICK . \"INDEX\"");
    EXPECT_THAT(auswahl.werte, ElementsAre(Wert("S")));
    EXPECT_TRUE(auswahl.geordnet);
}

TEST(Anweisungstext, EinTabellennameIstDieGanzeTabelle) {
    const Auswahl auswahl = auswahlLesen("tblTastatur");
    EXPECT_EQ(auswahl.tabelle, "tblTastatur");
    EXPECT_EQ(auswahl.bedingung, "");
    EXPECT_THAT(auswahl.werte, IsEmpty());
    EXPECT_FALSE(auswahl.geordnet);
}

TEST(Anweisungstext, WasInEinemLiteralStehtBleibtWieEsIst) {
    const std::vector<std::string> namen{"tblStick.index",
                                         "a.index; DROP TABLE tblTastatur; --",
                                         "ä 漢 \U0001F3AE",
                                         "\"index\" [x] `y` /* z */ ? :p @q $r",
                                         std::string("a\0b", 3),
                                         std::string(255, 'x'),
                                         "ORDER BY SELECT",
                                         "\n\t\\%_",
                                         ""};
    for (const std::string& name : namen) {
        const Auswahl auswahl = auswahlLesen(anweisung("SELECT * FROM t WHERE (t.Schemaname)= '", name));
        EXPECT_EQ(auswahl.bedingung, " WHERE ( t . \"Schemaname\" ) = ?") << name;
        EXPECT_THAT(auswahl.werte, ElementsAre(Wert(name)));
    }
}

TEST(Anweisungstext, VerdoppelteApostropheStehenFuerEinen) {
    EXPECT_THAT(auswahlLesen("SELECT * FROM t WHERE t.a = 'O''Brien'''").werte,
                ElementsAre(Wert("O'Brien'")));
}

TEST(Anweisungstext, ZahlenWerdenParameterNurVorDerOrdnung) {
    const Auswahl auswahl =
        auswahlLesen("SELECT * FROM t WHERE t.a >= -9223372036854775807 AND t.b<>2 ORDER BY 3");
    EXPECT_EQ(auswahl.bedingung, " WHERE t . \"a\" >= - ? AND t . \"b\" <> ? ORDER BY 3");
    EXPECT_THAT(auswahl.werte, ElementsAre(Wert(INT64_MAX), Wert(2)));
}

TEST(Anweisungstext, AllesAndereIstEinSyntaxfehler) {
    const std::vector<std::string> texte{
        "",
        ";",
        "SELECT *",
        "SELECT * FROM",
        "SELECT * FROM ;",
        "SELECT * FROM 't'",
        "SELECT '*' FROM t",
        "SELECT a FROM t",
        "SELECT * FROM t, u",
        "SELECT * FROM t JOIN u",
        "SELECT * FROM t;; ",
        "SELECT * FROM t; DELETE FROM t",
        "SELECT * FROM t; SELECT * FROM t;",
        "SELECT * FROM t WHERE t.a = 'x",
        "SELECT * FROM t WHERE t.a = 'O'Brien';",
        "SELECT * FROM t WHERE t.a = 1 UNION SELECT * FROM u",
        "SELECT * FROM t WHERE t.a IN (VALUES (1))",
        "SELECT * FROM t WHERE t.a = \"x\"",
        "SELECT * FROM t WHERE t.a = 1 /* x */",
        "SELECT * FROM t WHERE t.a = 9223372036854775808",
        std::string("SELECT * FROM t\0", 16),
        "DELETE FROM tblTastatur",
        "UPDATE tblTastatur SET btn1 = '1'",
        "INSERT INTO tblTastatur (Schemaname) VALUES ('S')",
        "DROP TABLE tblTastatur",
        "ATTACH 'x' AS y",
        "PRAGMA journal_mode = WAL",
        "tblTastatur;",
        "tblTastatur tblStick",
    };
    for (const std::string& text : texte)
        EXPECT_EQ(fehlernummer([&] { auswahlLesen(text); }), 3075) << text;
}

TEST(Anweisungstext, EinNameMitApostrophKommtInKeinenText) {
    for (const std::string name : {"O'Brien", "'", "x' OR '1'='1", "a''b"})
        EXPECT_EQ(fehlernummer([&] { anweisung("SELECT * FROM t WHERE t.a= '", name); }), 3075) << name;
    EXPECT_EQ(anweisung("a '", "b", "' c"), "a 'b' c");
}

namespace {

struct Textform {
    std::string bis;
    std::string danach = "';";
};

/// Every statement text of the program, up to the name and after it.
std::vector<Textform> alleTexte() {
    std::vector<Textform> texte{
        {"SELECT * FROM tblTastatur WHERE (tblTastatur.Schemaname)= '"},
        {"SELECT * FROM tblTastatur WHERE  (tblTastatur.Schemaname) = '"},
        {"Select * FROM tblTastatur WHERE (tbltastatur.Schemaname)= '"},
        {"SELECT * FROM tblSteuerKreuz WHERE (tblSteuerKreuz.Schemaname)= '"},
        {"SELECT * FROM tblSteuerkreuz WHERE (tblSteuerkreuz.Schemaname)= '"},
        {"SELECT * FROM tblStickAktionr WHERE (tblStickAktionr.Schemaname)= '",
         "' AND (tblStickAktionr.Umschalt)= 0;"},
        {"SELECT * FROM tblStickr WHERE (tblStickr.Schemaname)= '", "'ORDER BY TBLSTICKr.INDEX;"},
        {"SELECT * From tblTastatur WHERE (((tblTastatur.Schemaname)='", "'));"},
        {"SELECT * From tblSteuerKreuz WHERE (((tblSteuerKreuz.Schemaname)='", "'));"},
        {"SELECT * From tblstick WHERE (((tblStick.Schemaname)='", "'));"},
        {"SELECT * From sensible WHERE (((sensible.Schemaname)='", "'));"},
    };
    for (const std::string r : {"", "R"}) {
        const std::string linien = "tblStick" + r;
        const std::string aktion = "tblStickAktion" + r;
        const std::string zone = aktion + " WHERE (" + aktion + ".Schemaname)= '";
        const std::string zoneMitBlank = aktion + " WHERE (" + aktion + ".Schemaname) = '";
        const std::vector<Textform> paar{
            {"SELECT * FROM " + linien + " WHERE (" + linien + ".Schemaname)= '",
             "' ORDER BY TBLSTICK" + r + ".INDEX;"},
            {"SELECT * FROM " + linien + " WHERE (" + linien + ".Schemaname)= '",
             "'ORDER BY TBLSTICK" + r + ".INDEX;"},
            {"Select * from " + linien + " Where (" + linien + ".Schemaname) = '",
             "' and (" + linien + ".Index) = 7;"},
            {"SELECT * FROM " + zone,
             "' AND (" + aktion + ".Umschalt)= 0 Order by tblstickAktion" + r + ".Links;"},
            {"SELECT * FROM " + zone, "' AND (" + aktion + ".Umschalt)= 0 AND (" + aktion +
                                          ".links)= 7 AND (" + aktion + ".rechts)= 0 AND (" + aktion +
                                          ".oben)= 0 AND (" + aktion + ".Unten)= 0;"},
            {"SELECT * FROM " + zone, "' AND (" + aktion + ".Umschalt)= 0 AND (" + aktion + ".Rechts)= 0;"},
            {"SELECT * FROM " + zoneMitBlank,
             "' AND (" + aktion + ".Umschalt) = 0 AND (" + aktion + ".Links) = 7;"},
            {"SELECT * FROM " + zoneMitBlank, "' AND (" + aktion + ".Umschalt) = 0;"},
            {"SELECT * From " + aktion + " WHERE (((" + aktion + ".Schemaname)='", "'));"},
            {"SELECT * FROM Sensible" + r + " WHERE (Sensible" + r + ".Schemaname)= '"},
            {"SELECT * From Sensible" + r + " WHERE (((Sensible" + r + ".Schemaname)='", "'));"},
        };
        texte.insert(texte.end(), paar.begin(), paar.end());
    }
    return texte;
}

/// One row in every table, and one of another name that no text must find.
void zeilenLegen(const Testdatenbank& datei, const std::string& name) {
    for (const std::string& schema : {name, name + "x"}) {
        std::string text;
        for (const std::string tabelle : {"tblTastatur", "tblSteuerKreuz", "Sensible", "SensibleR"})
            text += "INSERT INTO " + tabelle + " (Schemaname) VALUES ('" + schema + "');";
        for (const std::string r : {"", "R"}) {
            text += "INSERT INTO tblStick" + r + " (Schemaname, \"index\") VALUES ('" + schema + "', 7);";
            text += "INSERT INTO tblStickAktion" + r + " (Schemaname, Links) VALUES ('" + schema + "', 7);";
        }
        datei.sql(text);
    }
}

} // namespace

TEST(Anweisungstext, JederTextDesProgrammsFindetSeineZeileBeiJedemNamen) {
    for (const std::string& name :
         {std::string("S"), std::string("Rennen.index; ä 漢"), std::string(255, 'n')}) {
        Testdatenbank datei;
        zeilenLegen(datei, name);
        Database datenbank = OpenDatabase(datei.pfad());
        for (const auto& [bis, danach] : alleTexte()) {
            Recordset satz = datenbank.OpenRecordset(anweisung(bis, name, danach));
            EXPECT_EQ(satz.get_RecordCount(), 1) << bis << danach;
            EXPECT_EQ(satz.get_Value(0), Wert(name)) << bis << danach;
        }
    }
}

TEST(Anweisungstext, EinNameMitApostrophLaesstSichAnlegenAberNichtSuchen) {
    Testdatenbank datei;
    Database datenbank = OpenDatabase(datei.pfad());
    Recordset satz = datenbank.OpenRecordset("tblTastatur");
    satz.AddNew();
    satz.put_Value("Schemaname", "O'Brien");
    satz.Update();
    EXPECT_THAT(datei.zeilen("SELECT Schemaname FROM tblTastatur"), ElementsAre(ElementsAre("O'Brien")));

    const auto vorher = datei.inhalt();
    for (const auto& [bis, danach] : alleTexte()) {
        EXPECT_EQ(fehlernummer([&] { anweisung(bis, "O'Brien", danach); }), 3075);
        EXPECT_EQ(fehlernummer([&] { datenbank.OpenRecordset(bis + "O'Brien" + danach); }), 3075);
    }
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST(Anweisungstext, UnbekannteTabellenUndSpaltenSindFehlerUndKeineTexte) {
    Testdatenbank datei;
    Database datenbank = OpenDatabase(datei.pfad());
    const std::vector<std::pair<std::string, int>> texte{
        {"tblGibtEsNicht", 3078},
        {"SELECT * FROM tblGibtEsNicht", 3078},
        {"sqlite_schema", 3078},
        {"SELECT * FROM tblTastatur WHERE (tblStick.Schemaname)= 'S';", 3075},
        {"SELECT * FROM tblTastatur WHERE (tblTastatur.GibtEsNicht)= 'S';", 3075},
        {"SELECT * FROM tblTastatur WHERE", 3075},
        {"SELECT * FROM tblStick ORDER BY INDEX", 3075},
        {"SELECT * FROM tblTastatur WHERE (1=1) LIMIT 1", 3075},
        {"SELECT * FROM tblTastatur WHERE (tblTastatur.btn1 = '1';", 3075},
    };
    for (const auto& [text, nummer] : texte)
        EXPECT_EQ(fehlernummer([&] { datenbank.OpenRecordset(text); }), nummer) << text;
}
