// SPDX-License-Identifier: GPL-3.0-or-later
// What a Schema looks like when it is read for a run, and the twenty rows of a new stick.
#include "store/schema/modLesen.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::Optional;

namespace {

/// A Schema whose columns each carry a text of their own: "E<layer>T<slot>".
void vollesSchema(const Testdatenbank& datei, const std::string& name) {
    std::string spalten = "Schemaname";
    std::string werte = "'" + name + "'";
    std::string kreuz = werte;
    for (int ebene = 0; ebene < EBENEN; ++ebene) {
        const std::string marke = "E" + std::to_string(ebene) + "T";
        const int versatz[]{0, 100, 1000};
        for (int taste = 0; taste < TASTEN; ++taste) {
            spalten += ", btn" + std::to_string(versatz[ebene] + taste + 1);
            werte += ", '" + marke + std::to_string(taste) + "'";
        }
        for (int taste = TASTEN; taste < SLOTS; ++taste)
            kreuz += ", '" + marke + std::to_string(taste) + "'";
    }
    datei.sql("INSERT INTO tblTastatur (" + spalten + ") VALUES (" + werte +
              ");"
              "INSERT INTO tblSteuerKreuz VALUES (" +
              kreuz + ")");
}

Laufbild erwartetesBild() {
    Laufbild bild;
    for (std::size_t ebene = 0; ebene < EBENEN; ++ebene)
        for (std::size_t taste = 0; taste < SLOTS; ++taste)
            bild[ebene][taste] = "E" + std::to_string(ebene) + "T" + std::to_string(taste);
    return bild;
}

Laufbild leeresBild() {
    Laufbild bild;
    for (auto& ebene : bild)
        ebene.fill("10,0,0-0-0");
    return bild;
}

} // namespace

TEST(TastenLaufLesen, LiestJedeTasteJederEbene) {
    const Testdatenbank datei;
    vollesSchema(datei, "S");
    Schemabau(datei, "T").anlegen();
    EXPECT_EQ(TastenLaufLesen(datei.pfad(), "S"), erwartetesBild());
    EXPECT_EQ(TastenLaufLesen(datei.pfad(), "T"), leeresBild());
}

TEST(TastenLaufLesen, LeereSpaltenSindTastenOhneAktion) {
    const Testdatenbank datei;
    vollesSchema(datei, "S");
    datei.sql("UPDATE tblTastatur SET btn3 = NULL, btn112 = ''; UPDATE tblSteuerKreuz SET Oben = '', Links3 "
              "= NULL");
    Laufbild erwartet = erwartetesBild();
    for (std::string* leer : {&erwartet[0][2], &erwartet[1][11], &erwartet[0][12], &erwartet[2][15]})
        *leer = "10,0,0-0-0";
    EXPECT_EQ(TastenLaufLesen(datei.pfad(), "S"), erwartet);
}

TEST(TastenLaufLesen, OhneZeileOderMitApostrophEndetEs) {
    const Testdatenbank datei;
    for (const std::string name : {"halb", "O'Brien"})
        Schemabau(datei, name).ohneKreuz().anlegen();
    EXPECT_EQ(fehlernummer([&] { TastenLaufLesen(datei.pfad(), "fehlt"); }), 3021);
    EXPECT_EQ(TastenLaufLesen(datei.pfad(), "halb"), leeresBild()) << "a missing D-pad is an empty one";
    EXPECT_EQ(fehlernummer([&] { TastenLaufLesen(datei.pfad(), "O'Brien"); }), 3075);
}

TEST(SchemataLesen, EineLeereTabelleGibtJeEinenLeerenEintrag) {
    const Testdatenbank datei;
    const Schemaliste liste = SchemataLesen(datei.pfad());
    EXPECT_THAT(liste.SchemaNamen, ElementsAre(""));
    EXPECT_THAT(liste.SchemaPfade, ElementsAre(""));
}

TEST(SchemataLesen, DieListeStehtInGespeicherterReihenfolgeMitEinemLeerenEintragAmEnde) {
    const Testdatenbank datei;
    datei.sql(
        "INSERT INTO tblTastatur (Schemaname, Programmpfad) VALUES ('Z', ' '), ('A', NULL), ('O''Brien', ''),"
        " ('漢 ä', '/spiele/x')");
    const Schemaliste liste = SchemataLesen(datei.pfad());
    EXPECT_THAT(liste.SchemaNamen, ElementsAre("Z", "A", "O'Brien", "漢 ä", ""));
    EXPECT_THAT(liste.SchemaPfade, ElementsAre(" ", "", "", "/spiele/x", ""));
}

TEST(SchemataLesen, ZwischenGeloeschteBleibtDieReihenfolge) {
    const Testdatenbank datei;
    datei.sql(
        "INSERT INTO tblTastatur (Schemaname) VALUES ('C'), ('B'), ('A');"
        "DELETE FROM tblTastatur WHERE Schemaname = 'B'; INSERT INTO tblTastatur (Schemaname) VALUES ('B')");
    EXPECT_THAT(SchemataLesen(datei.pfad()).SchemaNamen, ElementsAre("C", "A", "B", ""));
}

TEST(FunktionLesen, GibtDieGespeicherteFunktion) {
    const Testdatenbank datei;
    datei.sql("INSERT INTO tblTastatur (Schemaname, Funktion) VALUES ('S', 2), ('N', NULL)");
    datei.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('neu')");
    EXPECT_THAT(FunktionLesen(datei.pfad(), "S"), Optional(2));
    EXPECT_THAT(FunktionLesen(datei.pfad(), "N"), Optional(0));
    EXPECT_THAT(FunktionLesen(datei.pfad(), "neu"), Optional(0));
    EXPECT_EQ(FunktionLesen(datei.pfad(), "fehlt"), std::nullopt);
    EXPECT_EQ(fehlernummer([&] { FunktionLesen(datei.pfad(), "O'Brien"); }), 3075);
}

TEST(FunktionLesen, EineZuGrosseZahlIstKeineDieEsGibt) {
    const Testdatenbank datei;
    for (const auto& [zahl, funktion] :
         {std::pair{"2147483647", 2147483647}, {"2147483648", -1}, {"4294967297", -1}, {"-2147483649", -1}}) {
        datei.sql("DELETE FROM tblTastatur; INSERT INTO tblTastatur (Schemaname, Funktion) VALUES ('S', " +
                  std::string(zahl) + ");");
        EXPECT_THAT(FunktionLesen(datei.pfad(), "S"), Optional(funktion)) << zahl;
    }
}

namespace {

/// The twenty rows of a new stick, as they stand in the table.
Tabellenbild grundzeilen(const std::string& name) {
    Tabellenbild bild{{name, "1", "27072", "38399", "25941", "39679", "27072", "38399", "25941", "39679",
                       "27072", "38399", "25941", "39679"}};
    for (int index = 2; index <= 20; ++index) {
        bild.push_back({name, std::to_string(index)});
        bild.back().resize(14, "0");
    }
    return bild;
}

} // namespace

TEST(StickGrundzeilenAnlegen, LegtZwanzigZeilen) {
    const Testdatenbank datei;
    Database datenbank = OpenDatabase(datei.pfad());
    for (const auto& [seite, tabelle] :
         {std::pair{Stickseite::Links, "tblStick"}, {Stickseite::Rechts, "tblStickR"}}) {
        StickGrundzeilenAnlegen(datenbank, seite, "S");
        EXPECT_EQ(datei.zeilen("SELECT * FROM " + std::string(tabelle)), grundzeilen("S"));
        EXPECT_EQ(datenbank.OpenRecordset(tabelle).get_RecordCount(), 20);
    }
}

TEST(StickGrundzeilenAnlegen, NeunzehnZeilenUndDieSperreDahinter) {
    const Testdatenbank datei;
    Database datenbank = OpenDatabase(datei.pfad());
    StickGrundzeilenAnlegen(datenbank, Stickseite::Links, "S");
    datei.sql("UPDATE tblStick SET Links = 5 WHERE \"index\" = 20");
    Recordset satz = datenbank.OpenRecordset(
        "SELECT * FROM tblStick WHERE (tblStick.Schemaname)= 'S' ORDER BY TBLSTICK.INDEX;");
    for (int zeile = 1; zeile <= 19; ++zeile)
        satz.MoveNext();
    EXPECT_EQ(satz.get_Value("Links"), Wert(5));
}

TEST(StickGrundzeilenAnlegen, NurFehlendeZeilenEntstehen) {
    const Testdatenbank datei;
    datei.sql("INSERT INTO tblStick (Schemaname, \"index\", Oben) VALUES ('S', 13, 7), ('T', 2, 8)");
    Database datenbank = OpenDatabase(datei.pfad());
    StickGrundzeilenAnlegen(datenbank, Stickseite::Links, "S");
    auto erwartet = grundzeilen("S");
    erwartet.at(12).at(4) = "7";
    EXPECT_EQ(datei.zeilen("SELECT * FROM tblStick WHERE Schemaname = 'S' ORDER BY \"index\""), erwartet);
    EXPECT_EQ(datei.zeilen("SELECT count(*) FROM tblStick"), (Tabellenbild{{"21"}}));
}

TEST(StickGrundzeilenAnlegen, NamenMitApostrophErreichenDieDatenbankNicht) {
    const Testdatenbank datei;
    Database datenbank = OpenDatabase(datei.pfad());
    EXPECT_EQ(fehlernummer([&] { StickGrundzeilenAnlegen(datenbank, Stickseite::Rechts, "O'Brien"); }), 3075);
    EXPECT_TRUE(datei.zeilen("SELECT * FROM tblStickR").empty());
}
