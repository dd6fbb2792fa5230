// SPDX-License-Identifier: GPL-3.0-or-later
// Sets: the cursor, what a set sees of later changes, AddNew, Edit, Update and Delete.
#include "store/db/Datenbank.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr auto NAMEN = "SELECT Schemaname FROM tblTastatur ORDER BY rowid";

class Satz : public testing::Test {
protected:
    void schemata(const std::vector<std::string>& namen) {
        for (const std::string& name : namen)
            datei.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('" + name + "')");
    }

    Recordset tastatur() { return datenbank.OpenRecordset("tblTastatur"); }

    /// The names from the cursor to the end; "-" for a row that is not there any more.
    static std::vector<std::string> rest(Recordset& satz) {
        std::vector<std::string> namen;
        for (; !satz.get_EOF(); satz.MoveNext())
            if (fehlernummer([&] { namen.push_back(alsText(satz.get_Value(0))); }) == 3021)
                namen.push_back("-");
        return namen;
    }

    Testdatenbank datei;
    Database datenbank = OpenDatabase(datei.pfad());
};

} // namespace

TEST_F(Satz, EineLeereMengeIstSofortAmEnde) {
    Recordset satz = tastatur();
    EXPECT_TRUE(satz.get_EOF());
    EXPECT_EQ(satz.get_RecordCount(), 0);
    EXPECT_EQ(fehlernummer([&] { satz.MoveFirst(); }), 3021);
    EXPECT_EQ(fehlernummer([&] { satz.MoveNext(); }), 3021);
    EXPECT_EQ(fehlernummer([&] { satz.get_Value(0); }), 3021);
    EXPECT_EQ(fehlernummer([&] { satz.Edit(); }), 3021);
    EXPECT_EQ(fehlernummer([&] { satz.Delete(); }), 3021);
}

TEST_F(Satz, DerTabellennameGibtAlleZeilenInGespeicherterReihenfolge) {
    schemata({"Z", "A", "M"});
    Recordset satz = tastatur();
    EXPECT_EQ(satz.get_RecordCount(), 3);
    EXPECT_THAT(rest(satz), ElementsAre("Z", "A", "M"));
    EXPECT_TRUE(satz.get_EOF());
    EXPECT_EQ(fehlernummer([&] { satz.MoveNext(); }), 3021);
    satz.MoveFirst();
    EXPECT_THAT(rest(satz), ElementsAre("Z", "A", "M"));
}

// The index would bring them by another order.
TEST_F(Satz, EinIndexAendertDieGespeicherteReihenfolgeNicht) {
    datei.sql("CREATE INDEX andersherum ON tblStickAktion (Schemaname, Links, Aktion DESC);"
              "INSERT INTO tblStickAktion (Schemaname, Umschalt, Links, Aktion) VALUES "
              "('S', 1, 5, 'a'), ('S', 0, 5, 'b'), ('S', 1, 4, 'c'), ('S', 0, 4, 'd'), ('S', 2, 5, 'e')");
    const auto aktionen = [&](const std::string& danach) {
        std::string texte;
        Recordset satz = datenbank.OpenRecordset(
            "SELECT * FROM tblStickAktion WHERE (tblStickAktion.Schemaname)= 'S'" + danach + ";");
        for (; !satz.get_EOF(); satz.MoveNext())
            texte += alsText(satz.get_Value("Aktion"));
        return texte;
    };
    EXPECT_EQ(aktionen(""), "abcde");
    EXPECT_EQ(aktionen(" AND (tblStickAktion.Links)= 5"), "abe");
    EXPECT_EQ(aktionen(" ORDER BY tblStickAktion.Links"), "cdabe");
}

TEST_F(Satz, GleicheUnterEinerOrdnungBleibenInGespeicherterReihenfolge) {
    datei.sql("INSERT INTO tblStickAktion (Schemaname, Links, Aktion) VALUES "
              "('S', 5, 'a'), ('S', 0, 'b'), ('S', 5, 'c'), ('S', 0, 'd'), ('T', 0, 'e')");
    Recordset satz = datenbank.OpenRecordset(
        "SELECT * FROM tblStickAktion WHERE (tblStickAktion.Schemaname)= 'S' Order by tblstickAktion.Links;");
    std::string aktionen;
    for (; !satz.get_EOF(); satz.MoveNext())
        aktionen += alsText(satz.get_Value("Aktion"));
    EXPECT_EQ(aktionen, "bdac");
}

TEST_F(Satz, TabellenUndSpaltenGeltenInJederSchreibweise) {
    schemata({"S"});
    for (const std::string tabelle : {"tblTastatur", "TBLTASTATUR", "tbltastatur", "TblTastatur"}) {
        Recordset satz = datenbank.OpenRecordset(tabelle);
        for (const std::string spalte : {"btn1", "Btn1", "BTN1"})
            EXPECT_EQ(satz.get_Value(spalte), Wert("10,0,0-0-0"));
        for (const std::string spalte : {"Programmpfad", "programmpfad", "PROGRAMMPFAD"})
            EXPECT_TRUE(istNull(satz.get_Value(spalte)));
    }
    for (const std::string tabelle :
         {"tblSteuerKreuz", "tblSteuerkreuz", "tblStickR", "tblStickr", "tblStickAktionR", "tblStickAktionr",
          "Sensible", "sensible", "SensibleR", "sensibler"})
        EXPECT_TRUE(datenbank.OpenRecordset(tabelle).get_EOF());
    datei.sql("INSERT INTO tblStick (Schemaname, \"index\") VALUES ('S', 3)");
    Recordset stick = datenbank.OpenRecordset("tblStick");
    for (const std::string spalte : {"index", "Index", "INDEX"})
        EXPECT_EQ(stick.get_Value(spalte), Wert(3));
}

TEST_F(Satz, NamenVonZeilenGeltenNurInIhrerSchreibweise) {
    schemata({"Rennen", "rennen"});
    Recordset satz = datenbank.OpenRecordset(
        anweisung("SELECT * FROM tblTastatur WHERE (tblTastatur.Schemaname)= '", "rennen"));
    EXPECT_THAT(rest(satz), ElementsAre("rennen"));
}

TEST_F(Satz, EineFremdeSpalteIstEinFehler) {
    schemata({"S"});
    Recordset satz = tastatur();
    satz.Edit();
    for (const int ordinal : {-1, 39})
        EXPECT_EQ(fehlernummer([&] { satz.get_Value(ordinal); }), 3265) << ordinal;
    EXPECT_EQ(fehlernummer([&] { satz.put_Value(39, "x"); }), 3265);
    EXPECT_EQ(fehlernummer([&] { satz.get_Value("btn13"); }), 3265);
    EXPECT_EQ(fehlernummer([&] { satz.put_Value("", "x"); }), 3265);
    EXPECT_EQ(satz.get_Value(38), Wert("10,0,0-0-0"));
}

TEST_F(Satz, WerteWerdenLiveGelesen) {
    schemata({"S"});
    Recordset satz = tastatur();
    datei.sql("UPDATE tblTastatur SET btn1 = 'neu'");
    EXPECT_EQ(satz.get_Value("btn1"), Wert("neu"));
}

TEST_F(Satz, EineVerschwundeneSpalteLiestSichNichtAlsIhrName) {
    schemata({"S"});
    Recordset satz = tastatur();
    datei.sql("ALTER TABLE tblTastatur DROP COLUMN btn1");
    EXPECT_EQ(fehlernummer([&] { satz.get_Value("btn1"); }), 3075);
}

TEST_F(Satz, SpaeterAngelegteZeilenGehoerenNichtDazu) {
    schemata({"A"});
    Recordset satz = tastatur();
    schemata({"B"});
    satz.AddNew();
    satz.put_Value("Schemaname", "C");
    satz.Update();
    EXPECT_EQ(satz.get_RecordCount(), 1);
    EXPECT_THAT(rest(satz), ElementsAre("A"));
    Recordset neu = tastatur();
    EXPECT_THAT(rest(neu), ElementsAre("A", "B", "C"));
}

TEST_F(Satz, VonAnderenGeloeschteZeilenSindNichtMehrDa) {
    schemata({"A", "B", "C"});
    Recordset satz = tastatur();
    datei.sql("DELETE FROM tblTastatur WHERE Schemaname IN ('A', 'B')");
    EXPECT_EQ(satz.get_RecordCount(), 3);
    EXPECT_EQ(fehlernummer([&] { satz.Delete(); }), 3021);
    satz.Edit();
    satz.put_Value("btn1", "x");
    EXPECT_EQ(fehlernummer([&] { satz.Update(); }), 3021);
    EXPECT_THAT(rest(satz), ElementsAre("-", "-", "C"));
}

TEST_F(Satz, NachDemLoeschenIstDieStelleEinLoch) {
    schemata({"A", "B", "C"});
    Recordset satz = tastatur();
    satz.MoveNext();
    satz.Delete();
    EXPECT_FALSE(satz.get_EOF());
    EXPECT_EQ(fehlernummer([&] { satz.get_Value(0); }), 3021);
    EXPECT_EQ(fehlernummer([&] { satz.Edit(); }), 3021);
    EXPECT_EQ(fehlernummer([&] { satz.Delete(); }), 3021);
    satz.MoveNext();
    EXPECT_EQ(satz.get_Value(0), Wert("C"));
    satz.MoveFirst();
    EXPECT_THAT(rest(satz), ElementsAre("A", "C"));
    EXPECT_EQ(satz.get_RecordCount(), 3);
}

TEST_F(Satz, LoeschenUndWeiterBisZumEndeLeertDieMenge) {
    schemata({"A", "B", "C"});
    Recordset satz = tastatur();
    int geloescht = 0;
    for (; !satz.get_EOF(); satz.MoveNext(), ++geloescht)
        satz.Delete();
    EXPECT_EQ(geloescht, 3);
    EXPECT_THAT(datei.zeilen(NAMEN), IsEmpty());
    EXPECT_EQ(fehlernummer([&] { satz.MoveFirst(); }), 3021);
}

TEST_F(Satz, MoveFirstNachDemLoeschenDerErstenGehtAufDieZweite) {
    schemata({"A", "B"});
    Recordset satz = tastatur();
    satz.Delete();
    satz.MoveFirst();
    EXPECT_THAT(rest(satz), ElementsAre("B"));
}

TEST_F(Satz, NurWasNichtZutrifftBleibtBeimLoeschenImDurchlauf) {
    schemata({"A", "B", "C", "D"});
    Recordset satz = tastatur();
    for (; !satz.get_EOF(); satz.MoveNext())
        if (satz.get_Value(0) == Wert("A") || satz.get_Value(0) == Wert("C"))
            satz.Delete();
    EXPECT_THAT(datei.zeilen(NAMEN), ElementsAre(ElementsAre("B"), ElementsAre("D")));
}

TEST_F(Satz, AddNewSchreibtNurWasGegebenIst) {
    Recordset satz = datenbank.OpenRecordset(
        "SELECT * FROM tblStick WHERE (tblStick.Schemaname)= 'S' ORDER BY TBLSTICK.INDEX;");
    ASSERT_TRUE(satz.get_EOF());
    satz.AddNew();
    satz.put_Value("Schemaname", "S");
    satz.put_Value("index", 4);
    satz.put_Value(2, 77);
    satz.Update();
    EXPECT_TRUE(satz.get_EOF());
    EXPECT_EQ(satz.get_RecordCount(), 0);
    EXPECT_THAT(
        datei.zeilen("SELECT * FROM tblStick"),
        ElementsAre(ElementsAre("S", "4", "77", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0")));
}

TEST_F(Satz, AddNewLaesstDieStelleWoSieIst) {
    schemata({"A", "B"});
    Recordset satz = tastatur();
    satz.MoveNext();
    satz.AddNew();
    satz.put_Value(0, "C");
    EXPECT_EQ(satz.get_Value(0), Wert("C"));
    EXPECT_TRUE(istNull(satz.get_Value(1)));
    satz.Update();
    EXPECT_EQ(satz.get_Value(0), Wert("B"));
}

TEST_F(Satz, AddNewOhneEinenPflichtwertIstEinFehler) {
    Recordset satz = tastatur();
    satz.AddNew();
    EXPECT_EQ(fehlernummer([&] { satz.Update(); }), 3314);
    EXPECT_THAT(datei.zeilen(NAMEN), IsEmpty());
}

TEST_F(Satz, EinZweiterSatzGleichenNamensIstEinDoppelterSchluessel) {
    schemata({"S"});
    datei.sql("UPDATE tblTastatur SET btn1 = 'alt', Programmpfad = 'p'");
    const auto vorher = datei.inhalt();
    Recordset satz = tastatur();
    satz.AddNew();
    satz.put_Value("Schemaname", "S");
    satz.put_Value("btn1", "neu");
    EXPECT_EQ(fehlernummer([&] { satz.Update(); }), 3022);
    EXPECT_EQ(datei.inhalt(), vorher);
    // The failed change is over: a write needs AddNew or Edit again, and the set goes on working.
    EXPECT_EQ(fehlernummer([&] { satz.put_Value("btn1", "x"); }), 3020);
    EXPECT_EQ(satz.get_Value("btn1"), Wert("alt"));
}

TEST_F(Satz, JedeTabelleMitSchluesselMeldetEinenDoppelten) {
    struct {
        std::string tabelle;
        int zweiter;
    } const faelle[]{{"tblTastatur", 3022}, {"tblSteuerKreuz", 3022}, {"tblStick", 3022},
                     {"tblStickR", 3022},   {"Sensible", 0},          {"SensibleR", 0},
                     {"tblStickAktion", 0}, {"tblStickAktionR", 0}};
    for (const auto& [tabelle, zweiter] : faelle) {
        Recordset satz = datenbank.OpenRecordset(tabelle);
        for (const int erwartet : {0, zweiter}) {
            satz.AddNew();
            satz.put_Value(0, "S");
            EXPECT_EQ(fehlernummer([&] { satz.Update(); }), erwartet) << tabelle;
        }
    }
}

TEST_F(Satz, DerStickSchluesselIstNameUndIndexZusammen) {
    Recordset satz = datenbank.OpenRecordset("tblStick");
    const auto anlegen = [&](const std::string& name, int index) {
        satz.AddNew();
        satz.put_Value("Schemaname", name);
        satz.put_Value("index", index);
        return fehlernummer([&] { satz.Update(); });
    };
    EXPECT_EQ(anlegen("S", 1), 0);
    EXPECT_EQ(anlegen("S", 2), 0);
    EXPECT_EQ(anlegen("T", 1), 0);
    EXPECT_EQ(anlegen("S", 1), 3022);
}

TEST_F(Satz, MehrereWerteGehenMitEinemUpdate) {
    schemata({"S", "T"});
    Recordset satz = tastatur();
    satz.Edit();
    satz.put_Value("btn1", "a");
    satz.put_Value("Btn1012", "b");
    satz.put_Value("programmpfad", " ");
    satz.put_Value("Funktion", 4);
    EXPECT_EQ(satz.get_Value("btn1"), Wert("a"));
    EXPECT_EQ(satz.get_Value("btn2"), Wert("10,0,0-0-0"));
    EXPECT_THAT(datei.zeilen("SELECT DISTINCT btn1 FROM tblTastatur"),
                ElementsAre(ElementsAre("10,0,0-0-0")));
    satz.Update();
    EXPECT_THAT(
        datei.zeilen("SELECT Schemaname, btn1, btn2, btn1012, Programmpfad, Funktion FROM tblTastatur"),
        ElementsAre(ElementsAre("S", "a", "10,0,0-0-0", "b", " ", "4"),
                    ElementsAre("T", "10,0,0-0-0", "10,0,0-0-0", "10,0,0-0-0", "NULL", "0")));
}

TEST_F(Satz, EditUndUpdateOhneWertAendertNichts) {
    schemata({"S"});
    const auto vorher = datei.inhalt();
    Recordset satz = tastatur();
    satz.Edit();
    satz.Update();
    EXPECT_EQ(datei.inhalt(), vorher);
    EXPECT_EQ(fehlernummer([&] { satz.Update(); }), 3020);
}

TEST_F(Satz, SchreibenOhneAddNewOderEditIstEinFehler) {
    schemata({"S"});
    const auto vorher = datei.inhalt();
    Recordset satz = tastatur();
    EXPECT_EQ(fehlernummer([&] { satz.put_Value("btn1", "x"); }), 3020);
    EXPECT_EQ(fehlernummer([&] { satz.put_Value(1, "x"); }), 3020);
    EXPECT_EQ(fehlernummer([&] { satz.Update(); }), 3020);
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_F(Satz, WerDieStelleWechseltVerwirftDieAngefangeneAenderung) {
    schemata({"A", "B"});
    const auto vorher = datei.inhalt();
    Recordset satz = tastatur();
    for (const auto& wechsel : {&Recordset::MoveFirst, &Recordset::MoveNext}) {
        satz.Edit();
        satz.put_Value("btn1", "x");
        (satz.*wechsel)();
        EXPECT_EQ(fehlernummer([&] { satz.Update(); }), 3020);
    }
    satz.AddNew();
    satz.put_Value(0, "C");
    satz.Edit();
    satz.Update();
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_F(Satz, EineGeaenderteZeileBehaeltIhrenPlatz) {
    schemata({"A", "B"});
    Recordset satz = tastatur();
    satz.Edit();
    satz.put_Value("Schemaname", "Z");
    satz.Update();
    EXPECT_THAT(rest(satz), ElementsAre("Z", "B"));
    satz.MoveFirst();
    satz.Edit();
    satz.put_Value("Schemaname", "B");
    EXPECT_EQ(fehlernummer([&] { satz.Update(); }), 3022);
    EXPECT_EQ(satz.get_Value(0), Wert("Z"));
}

TEST_F(Satz, ZweiMengenTauschenZeilenOhneSichZuStoeren) {
    datei.sql("INSERT INTO tblStickAktion (Schemaname, Umschalt, Aktion) VALUES ('S', 0, 'a'), ('S', 1, 'b'),"
              " ('S', 1, 'c')");
    const auto ebene = [&](int nummer) {
        return datenbank.OpenRecordset(
            anweisung("SELECT * FROM tblStickAktion WHERE (tblStickAktion.Schemaname)= '", "S",
                      "' AND (tblStickAktion.Umschalt)= " + std::to_string(nummer)));
    };
    Recordset erste = ebene(0);
    Recordset zweite = ebene(1);
    erste.Delete();
    for (; !zweite.get_EOF(); zweite.MoveNext()) {
        erste.AddNew();
        erste.put_Value(0, "T");
        for (const int ordinal : {1, 2, 3, 4, 5, 6})
            erste.put_Value(ordinal, zweite.get_Value(ordinal));
        erste.Update();
        zweite.Delete();
    }
    EXPECT_THAT(datei.zeilen("SELECT Schemaname, Umschalt, Aktion FROM tblStickAktion ORDER BY Aktion"),
                ElementsAre(ElementsAre("T", "1", "b"), ElementsAre("T", "1", "c")));
}

TEST_F(Satz, GeschlossenesMeldetSich) {
    schemata({"S"});
    Recordset satz = tastatur();
    Recordset anderer = tastatur();
    satz.Close();
    satz.Close();
    EXPECT_EQ(fehlernummer([&] { satz.get_EOF(); }), 3420);
    EXPECT_EQ(fehlernummer([&] { satz.get_Value("btn1"); }), 3420);
    datenbank.Close();
    datenbank.Close();
    EXPECT_EQ(fehlernummer([&] { anderer.get_EOF(); }), 3420);
    EXPECT_EQ(fehlernummer([&] { anderer.AddNew(); }), 3420);
    EXPECT_EQ(fehlernummer([&] { datenbank.OpenRecordset("tblTastatur"); }), 3420);
    EXPECT_EQ(fehlernummer([&] { datenbank.inEinerTransaktion([] {}); }), 3420);
}

TEST_F(Satz, EineMengeUeberlebtDasVerschiebenIhrerDatenbank) {
    schemata({"S"});
    Recordset satz = tastatur();
    Database umgezogen = std::move(datenbank);
    EXPECT_EQ(satz.get_Value(0), Wert("S"));
    Recordset umgezogenerSatz = std::move(satz);
    EXPECT_EQ(umgezogenerSatz.get_Value(0), Wert("S"));
    umgezogen = OpenDatabase(datei.pfad());
    EXPECT_EQ(fehlernummer([&] { umgezogenerSatz.get_Value(0); }), 3420);
}
