// SPDX-License-Identifier: GPL-3.0-or-later
// Files that are not what they should be: missing, foreign, read-only, unreadable, damaged.
#include "store/db/Datenbank.h"
#include "store/schema/modLesen.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <random>

#include <sys/stat.h>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

void schemaLegen(const Testdatenbank& datei) {
    datei.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('S')");
}

int satzAendern(Database& datenbank) {
    return fehlernummer([&] {
        Recordset satz = datenbank.OpenRecordset("tblTastatur");
        satz.Edit();
        satz.put_Value("btn1", "x");
        satz.Update();
    });
}

} // namespace

TEST(Datei, EineFehlendeWirdNieAngelegt) {
    const Testordner ordner;
    for (const std::string name : {"Belegung.twk", "fehlt/Belegung.twk", ":memory:", "file:x?mode=memory"}) {
        const std::string pfad = (ordner.pfad() / name).string();
        EXPECT_EQ(fehlernummer([&] { OpenDatabase(pfad); }), 3024) << name;
    }
    EXPECT_EQ(fehlernummer([] { OpenDatabase(""); }), 3024);
    EXPECT_EQ(fehlernummer([] { OpenDatabase(":memory:"); }), 3024);
    EXPECT_THAT(namenIn(ordner.pfad()), IsEmpty());
}

TEST(Datei, EineRoehreAnDerStelleDesJournalsHaeltNiemandAuf) {
    const Testdatenbank datei;
    schemaLegen(datei);
    ASSERT_EQ(mkfifo((datei.pfad() + "-journal").c_str(), 0600), 0);
    EXPECT_EQ(fehlernummer([&] { OpenDatabase(datei.pfad()); }), 3051);
    fs::remove(datei.pfad() + "-journal");
    EXPECT_EQ(fehlernummer([&] { OpenDatabase(datei.pfad()); }), 0);
}

TEST(Datei, DieMeldungNenntDenPfad) {
    const Testordner ordner;
    const std::string pfad = (ordner.pfad() / "Prozent % ä.twk").string();
    try {
        OpenDatabase(pfad);
        FAIL();
    } catch (const LaufzeitFehler& fehler) {
        EXPECT_EQ(fehler.what(), "Die Datenbank „" + pfad + "“ gibt es nicht.");
    }
}

TEST(Datei, WasKeineDatenbankIstWirdErkanntUndNichtAngefasst) {
    const Testordner ordner;
    const std::string kopf("SQLite format 3\0", 16);
    for (const std::string& inhalt :
         {std::string(), std::string("x"), std::string("Dies ist ein Text.\n"), std::string(511, 'x'),
          std::string(512, 'x'), std::string(5000, 'x'), kopf, kopf + std::string(5000, '\0')}) {
        const fs::path pfad = ordner.pfad() / "Belegung.twk";
        dateiSchreiben(pfad, inhalt);
        EXPECT_EQ(fehlernummer([&] { OpenDatabase(pfad.string()); }), 3343) << inhalt.size();
        EXPECT_EQ(dateiLesen(pfad), inhalt);
    }
    EXPECT_THAT(namenIn(ordner.pfad()), ElementsAre("Belegung.twk"));
    EXPECT_EQ(fehlernummer([&] { OpenDatabase(ordner.pfad().string()); }), 3343);
    EXPECT_EQ(fehlernummer([] { OpenDatabase("/dev/null"); }), 3343);
}

TEST(Datei, EineDatenbankMitAnderenTabellenNenntDieFehlende) {
    Testdatenbank datei;
    datei.sql("DROP TABLE tblTastatur; CREATE TABLE fremd (a); INSERT INTO fremd VALUES (1);"
              "CREATE VIEW tblTastatur AS SELECT a AS Schemaname FROM fremd");
    const auto vorher = datei.inhalt();
    try {
        SchemataLesen(datei.pfad());
        FAIL();
    } catch (const LaufzeitFehler& fehler) {
        EXPECT_EQ(fehler.zahl(), 3078);
        EXPECT_THAT(fehler.what(), HasSubstr(datei.pfad()));
        EXPECT_THAT(fehler.what(), HasSubstr("„tblTastatur“"));
    }
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST(Datei, AusloeserEinerFremdenDatenbankLaufenNicht) {
    Testdatenbank datei;
    schemaLegen(datei);
    datei.sql("CREATE TRIGGER t AFTER UPDATE ON tblTastatur BEGIN DELETE FROM tblKeyCode; END");
    Database datenbank = OpenDatabase(datei.pfad());
    EXPECT_EQ(satzAendern(datenbank), 0);
    EXPECT_NE(datei.zeilen("SELECT * FROM tblKeyCode").size(), 0u);
}

// The function is harmless; what counts is that a column of a foreign table calls one that is not marked so.
TEST(Datei, WasEineFremdeTabelleAufrufenWillLaeuftNicht) {
    Testdatenbank datei;
    datei.sql("DROP TABLE tblTastatur; CREATE TABLE tblTastatur "
              "(Schemaname TEXT, btn1 TEXT, wert TEXT DEFAULT (fts5_source_id()))");
    const auto anlegen = [&] {
        Database datenbank = OpenDatabase(datei.pfad());
        Recordset satz = datenbank.OpenRecordset("tblTastatur");
        satz.AddNew();
        satz.put_Value("Schemaname", std::string("S"));
        satz.Update();
    };
    EXPECT_EQ(fehlernummer(anlegen), 3075);
    EXPECT_THAT(datei.zeilen("SELECT * FROM tblTastatur"), IsEmpty());
    datei.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('S')"); // who trusts it may
    EXPECT_EQ(datei.zeilen("SELECT wert IS NOT NULL FROM tblTastatur"), (Tabellenbild{{"1"}}));
}

TEST(Datei, NamenMitLeerzeichenUndUmlautenSindPfadeWieAndere) {
    Testdatenbank datei;
    schemaLegen(datei);
    for (const std::string name : {"Meine Belegung ä 漢.twk", "a?mode=ro&b#c%20.twk", "O'Brien \"x\".twk"}) {
        const fs::path ziel = datei.ordner() / name;
        fs::copy_file(datei.pfad(), ziel);
        Database datenbank = OpenDatabase(ziel.string());
        EXPECT_EQ(satzAendern(datenbank), 0) << name;
    }
}

TEST(Datei, EinNameDenSqliteAndersVerstuendeIstEineDatei) {
    const Testdatenbank datei;
    schemaLegen(datei);
    const fs::path war = fs::current_path();
    fs::current_path(datei.ordner());
    fs::rename(datei.pfad(), ":memory:");
    EXPECT_THAT(SchemataLesen(":memory:").SchemaNamen, ElementsAre("S", ""));
    fs::current_path(war);
}

TEST(Datei, EineSchreibgeschuetzteLaesstSichLesenAberNichtAendern) {
    Testdatenbank datei;
    schemaLegen(datei);
    const std::string vorher = dateiLesen(datei.pfad());
    {
        const Rechte rechte(datei, 0555, 0444);
        const AlsNiemand niemand;
        Database datenbank = OpenDatabase(datei.pfad());
        Recordset satz = datenbank.OpenRecordset("tblTastatur");
        EXPECT_EQ(satz.get_Value("Schemaname"), Wert("S"));
        EXPECT_EQ(satzAendern(datenbank), 3027);
        EXPECT_EQ(fehlernummer([&] { satz.Delete(); }), 3027);
        EXPECT_EQ(fehlernummer([&] {
                      satz.AddNew();
                      satz.put_Value(0, "T");
                      satz.Update();
                  }),
                  3027);
        EXPECT_EQ(fehlernummer([&] { datenbank.inEinerTransaktion([&] { satz.Delete(); }); }), 3027);
        EXPECT_EQ(satz.get_Value("btn1"), Wert("10,0,0-0-0"));
    }
    EXPECT_EQ(dateiLesen(datei.pfad()), vorher);
}

TEST(Datei, InEinemSchreibgeschuetztenOrdnerIstAuchEineFreieDateiNurLesbar) {
    Testdatenbank datei;
    schemaLegen(datei);
    const std::string vorher = dateiLesen(datei.pfad());
    {
        const Rechte rechte(datei, 0555, 0666);
        const AlsNiemand niemand;
        Database datenbank = OpenDatabase(datei.pfad());
        EXPECT_EQ(satzAendern(datenbank), 3027);
    }
    EXPECT_EQ(dateiLesen(datei.pfad()), vorher);
}

TEST(Datei, EineUnlesbareMeldetDassDerZugriffFehlt) {
    Testdatenbank datei;
    {
        const Rechte rechte(datei, 0555, 0000);
        const AlsNiemand niemand;
        EXPECT_EQ(fehlernummer([&] { OpenDatabase(datei.pfad()); }), 3051);
    }
    const Rechte rechte(datei, 0000, 0666);
    const AlsNiemand niemand;
    EXPECT_EQ(fehlernummer([&] { OpenDatabase(datei.pfad()); }), 3051);
}

TEST(Datei, EineZerstoerteSeiteMeldetSichAlsBeschaedigt) {
    Testdatenbank datei;
    schemaLegen(datei);
    const std::size_t seite =
        std::stoul(datei.zeilen("SELECT rootpage FROM sqlite_schema WHERE name='tblTastatur'").at(0).at(0));
    const std::size_t seitengroesse = std::stoul(datei.zeilen("PRAGMA page_size").at(0).at(0));
    std::string inhalt = dateiLesen(datei.pfad());
    inhalt.replace((seite - 1) * seitengroesse, seitengroesse, seitengroesse, '\xff');
    dateiSchreiben(datei.pfad(), inhalt);
    Database datenbank = OpenDatabase(datei.pfad());
    EXPECT_EQ(fehlernummer([&] { datenbank.OpenRecordset("tblTastatur"); }), 3049);
    EXPECT_EQ(dateiLesen(datei.pfad()), inhalt);
    // The other tables still serve.
    EXPECT_TRUE(datenbank.OpenRecordset("tblSteuerKreuz").get_EOF());
}

TEST(Datei, EineAbgeschnitteneMeldetSichAlsBeschaedigt) {
    Testdatenbank datei;
    schemaLegen(datei);
    const std::string inhalt = dateiLesen(datei.pfad());
    dateiSchreiben(datei.pfad(), inhalt.substr(0, inhalt.size() / 2));
    EXPECT_EQ(fehlernummer([&] {
                  Database datenbank = OpenDatabase(datei.pfad());
                  for (const std::string tabelle : {"tblTastatur", "tblStick", "SensibleR", "tblKeyCode"})
                      datenbank.OpenRecordset(tabelle);
              }),
              3049);
}

TEST(Datei, WelcheBytesAuchKippenEsWirftNurLaufzeitfehler) {
    Testdatenbank vorlage;
    schemaLegen(vorlage);
    const std::string heil = dateiLesen(vorlage.pfad());
    std::mt19937 zufall(20240229);
    int beschaedigt = 0;
    constexpr int VERSUCHE = 400;
    for (int versuch = 0; versuch < VERSUCHE; ++versuch) {
        std::string inhalt = heil;
        for (int i = 0; i < 64; ++i)
            inhalt[zufall() % inhalt.size()] = static_cast<char>(zufall());
        const fs::path pfad = vorlage.ordner() / "kaputt.twk";
        dateiSchreiben(pfad, inhalt);
        const int nummer = fehlernummer([&] {
            Database datenbank = OpenDatabase(pfad.string());
            for (const std::string tabelle : {"tblTastatur", "tblSteuerKreuz", "tblStick", "tblKeyCode"}) {
                Recordset satz = datenbank.OpenRecordset(tabelle);
                for (; !satz.get_EOF(); satz.MoveNext())
                    satz.get_Value(1);
                satz.AddNew();
                satz.put_Value(0, "neu");
                satz.put_Value(1, "1");
                satz.Update();
            }
        });
        beschaedigt += nummer == 3049;
    }
    EXPECT_GT(beschaedigt, 0);
}
