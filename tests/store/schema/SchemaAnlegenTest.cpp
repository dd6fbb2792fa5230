// SPDX-License-Identifier: GPL-3.0-or-later
// A new Schema, and the question when its name is taken.
#include "store/schema/modSpeichern.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class SchemaAnlegenTest : public testing::Test {
protected:
    bool anlegen(const std::string& name, const std::string& pfad = "", bool antwort = false) {
        fragen.clear();
        return SchemaAnlegen(datei.pfad(), name, pfad, [&](std::string_view frage) {
            fragen.emplace_back(frage);
            return antwort;
        });
    }
    Tabellenbild pfade() const {
        return datei.zeilen("SELECT Schemaname, Programmpfad FROM tblTastatur ORDER BY rowid");
    }
    Tabellenbild kreuze() const {
        return datei.zeilen("SELECT Schemaname FROM tblSteuerKreuz ORDER BY rowid");
    }
    /// Runs `arbeit`, expects its error and that the file has not changed.
    template <class Arbeit> void erwarteFehlerOhneWirkung(int nummer, Arbeit&& arbeit) const {
        const auto vorher = datei.inhalt();
        EXPECT_EQ(fehlernummer(arbeit), nummer);
        EXPECT_EQ(datei.inhalt(), vorher);
    }

    Testdatenbank datei;
    std::vector<std::string> fragen;
};

const std::string FRAGE = "Dieses Schema gibt es schon\nMöchten Sie das Schema ändern";

} // namespace

TEST_F(SchemaAnlegenTest, EinNeuesHatJeEineZeileMitDemNamenUndDenVorgaben) {
    EXPECT_TRUE(anlegen("S"));
    EXPECT_THAT(fragen, IsEmpty());
    std::vector<std::string> tasten{"S"};
    tasten.insert(tasten.end(), 12, "10,0,0-0-0");
    tasten.emplace_back("NULL");
    tasten.insert(tasten.end(), 12, "10,0,0-0-0");
    tasten.emplace_back("0");
    tasten.insert(tasten.end(), 12, "10,0,0-0-0");
    EXPECT_EQ(datei.zeilen("SELECT * FROM tblTastatur"), Tabellenbild{tasten});
    std::vector<std::string> kreuz{"S"};
    kreuz.insert(kreuz.end(), 12, "10,0,0-0-0");
    EXPECT_EQ(datei.zeilen("SELECT * FROM tblSteuerKreuz"), Tabellenbild{kreuz});
    for (const std::string tabelle :
         {"tblStick", "tblStickR", "tblStickAktion", "tblStickAktionR", "Sensible", "SensibleR"})
        EXPECT_THAT(datei.zeilen("SELECT * FROM " + tabelle), IsEmpty()) << tabelle;
}

TEST_F(SchemaAnlegenTest, DerPfadEinesNeuenWirdNichtGespeichert) {
    EXPECT_TRUE(anlegen("S", "/spiele/s"));
    EXPECT_EQ(pfade(), (Tabellenbild{{"S", "NULL"}}));
}

TEST_F(SchemaAnlegenTest, JaAendertNurDenPfadUndGibtFalsch) {
    Schemabau(datei)
        .spalte("Programmpfad", "/alt")
        .spalte("Funktion", "2")
        .taste(2, "1,65,0-0-0")
        .taste(12, "1,67,0-0-0")
        .anlegen();
    Schemabau(datei, "T").spalte("Programmpfad", "/t").taste(12, "1,68,0-0-0").anlegen();
    auto erwartet = datei.inhalt();
    EXPECT_FALSE(anlegen("S", "/neu", true));
    EXPECT_THAT(fragen, ElementsAre(FRAGE));
    EXPECT_EQ(pfade(), (Tabellenbild{{"S", "/neu"}, {"T", "/t"}}));
    datei.sql("UPDATE tblTastatur SET Programmpfad = '/alt' WHERE Schemaname = 'S'");
    EXPECT_EQ(datei.inhalt(), erwartet);
}

TEST_F(SchemaAnlegenTest, JaMitLeeremPfadSchreibtEinLeerzeichen) {
    anlegen("S");
    EXPECT_FALSE(anlegen("S", "", true));
    EXPECT_EQ(pfade(), (Tabellenbild{{"S", " "}}));
    EXPECT_FALSE(anlegen("S", " ", true));
    EXPECT_EQ(pfade(), (Tabellenbild{{"S", " "}}));
}

TEST_F(SchemaAnlegenTest, NeinAendertNichtsUndGibtFalsch) {
    Schemabau(datei).spalte("Programmpfad", "/alt").anlegen();
    const auto vorher = datei.inhalt();
    EXPECT_FALSE(anlegen("S", "/neu", false));
    EXPECT_THAT(fragen, ElementsAre(FRAGE));
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_F(SchemaAnlegenTest, EinHalbesBekommtBeiJeDerAntwortSeinKreuzUndGibtWahr) {
    for (const bool antwort : {true, false}) {
        datei.sql("DELETE FROM tblTastatur; DELETE FROM tblSteuerKreuz;"
                  "INSERT INTO tblTastatur (Schemaname, Programmpfad) VALUES ('S', '/alt')");
        EXPECT_TRUE(anlegen("S", "/neu", antwort));
        EXPECT_THAT(fragen, ElementsAre(FRAGE));
        EXPECT_EQ(pfade(), (Tabellenbild{{"S", antwort ? "/neu" : "/alt"}}));
        EXPECT_EQ(kreuze(), (Tabellenbild{{"S"}}));
    }
}

TEST_F(SchemaAnlegenTest, DasKreuzKommtNachDerFrageUndDemPfad) {
    datei.sql("INSERT INTO tblTastatur (Schemaname, Programmpfad) VALUES ('S', '/alt')");
    EXPECT_TRUE(SchemaAnlegen(datei.pfad(), "S", "/neu", [&](std::string_view) {
        EXPECT_THAT(kreuze(), IsEmpty());
        return true;
    }));
    datei.sql("UPDATE tblTastatur SET Programmpfad = '/alt'; DROP TABLE tblSteuerKreuz");
    EXPECT_EQ(fehlernummer([&] { anlegen("S", "/neu", true); }), 3078);
    EXPECT_EQ(pfade(), (Tabellenbild{{"S", "/alt"}})) << "path and D-pad are one";
    EXPECT_EQ(fehlernummer([&] { anlegen("T"); }), 3078);
    EXPECT_EQ(pfade(), (Tabellenbild{{"S", "/alt"}})) << "and so are the two rows of a new one";
}

TEST_F(SchemaAnlegenTest, NurEinVergebenerNameFuehrtZurFrage) {
    datei.sql("DROP TABLE tblTastatur; CREATE TABLE tblTastatur (Schemaname TEXT UNIQUE CHECK "
              "(Schemaname <> 'S'), Programmpfad TEXT)");
    erwarteFehlerOhneWirkung(3317, [&] { anlegen("S"); });
    EXPECT_THAT(fragen, IsEmpty());
    EXPECT_TRUE(anlegen("T"));
    EXPECT_FALSE(anlegen("T"));
    EXPECT_THAT(fragen, ElementsAre(FRAGE));
}

TEST_F(SchemaAnlegenTest, EinVerwaistesKreuzGibtFalschOhneFrage) {
    datei.sql("INSERT INTO tblSteuerKreuz (Schemaname, Oben) VALUES ('S', '1,67,0-0-0')");
    EXPECT_FALSE(anlegen("S"));
    EXPECT_THAT(fragen, IsEmpty());
    EXPECT_EQ(pfade(), (Tabellenbild{{"S", "NULL"}}));
    EXPECT_EQ(datei.zeilen("SELECT Schemaname, Oben FROM tblSteuerKreuz"),
              (Tabellenbild{{"S", "1,67,0-0-0"}}));
}

TEST_F(SchemaAnlegenTest, NamenWerdenGenommenWieSieSind) {
    const std::vector<std::string> namen{"",
                                         " ",
                                         "S",
                                         "s",
                                         "S ",
                                         "../x",
                                         "a/b\\c",
                                         "Ä ö ß 漢",
                                         "%s \"x\";--",
                                         std::string(99, 'n'),
                                         std::string(100, 'n'),
                                         std::string(101, 'n')};
    Tabellenbild erwartet;
    for (const auto& name : namen) {
        EXPECT_TRUE(anlegen(name)) << name;
        EXPECT_THAT(fragen, IsEmpty()) << name;
        erwartet.push_back({name});
    }
    EXPECT_EQ(datei.zeilen("SELECT Schemaname FROM tblTastatur ORDER BY rowid"), erwartet);
    EXPECT_EQ(kreuze(), erwartet);
    EXPECT_FALSE(anlegen("../x", "/p", true));
    EXPECT_EQ(datei.zeilen("SELECT Programmpfad FROM tblTastatur WHERE Schemaname = '../x'"),
              (Tabellenbild{{"/p"}}));
}

TEST_F(SchemaAnlegenTest, EinNameMitApostrophWirdAngelegtAberNichtGeaendert) {
    for (const std::string name : {"O'Brien", "x' OR 'a'='a"}) {
        EXPECT_TRUE(anlegen(name)) << name;
        EXPECT_THAT(fragen, IsEmpty());
        erwarteFehlerOhneWirkung(3075, [&] { anlegen(name, "/neu", true); });
        EXPECT_THAT(fragen, ElementsAre(FRAGE));
        EXPECT_FALSE(anlegen(name, "/neu", false));
    }
    EXPECT_EQ(pfade(), (Tabellenbild{{"O'Brien", "NULL"}, {"x' OR 'a'='a", "NULL"}}));
    EXPECT_EQ(kreuze(), (Tabellenbild{{"O'Brien"}, {"x' OR 'a'='a"}}));
}

TEST_F(SchemaAnlegenTest, WaehrendDerFrageIstDieDateiFrei) {
    anlegen("S");
    SchemaAnlegen(datei.pfad(), "S", "/neu", [&](std::string_view) {
        RoheVerbindung(datei.pfad())
            .sql("BEGIN EXCLUSIVE; UPDATE tblTastatur SET btn1 = '1,65,0-0-0'; COMMIT");
        return true;
    });
    EXPECT_EQ(datei.zeilen("SELECT btn1, Programmpfad FROM tblTastatur"),
              (Tabellenbild{{"1,65,0-0-0", "/neu"}}));
}

TEST_F(SchemaAnlegenTest, WerWaehrendDerFrageLoeschtLaesstDasAendernScheitern) {
    anlegen("S");
    EXPECT_EQ(fehlernummer([&] {
                  SchemaAnlegen(datei.pfad(), "S", "/neu", [&](std::string_view) {
                      datei.sql("DELETE FROM tblTastatur");
                      return true;
                  });
              }),
              3021);
    EXPECT_THAT(pfade(), IsEmpty());
}

TEST_F(SchemaAnlegenTest, EineGesperrteDateiBleibtWieSieIst) {
    anlegen("da");
    RoheVerbindung andere(datei.pfad());
    for (const std::string sperre : {"BEGIN IMMEDIATE", "BEGIN EXCLUSIVE"}) {
        const auto vorher = datei.inhalt();
        andere.sql(sperre);
        EXPECT_EQ(fehlernummer([&] { anlegen("S"); }), 3218);
        EXPECT_EQ(fehlernummer([&] { anlegen("da", "/neu", true); }), 3218);
        EXPECT_THAT(fragen, IsEmpty());
        andere.sql("COMMIT");
        EXPECT_EQ(datei.inhalt(), vorher);
    }
}

TEST_F(SchemaAnlegenTest, EineSchreibgeschuetzteFehlendeOderFremdeDateiBleibtWieSieIst) {
    const auto vorher = datei.inhalt();
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { anlegen("S"); }), 3027);
    EXPECT_EQ(datei.inhalt(), vorher);
    EXPECT_EQ(fehlernummer([&] { SchemaAnlegen(datei.pfad() + ".fehlt", "S", "", {}); }), 3024);
    datei.sql("DROP TABLE tblTastatur");
    erwarteFehlerOhneWirkung(3078, [&] { anlegen("S"); });
}
