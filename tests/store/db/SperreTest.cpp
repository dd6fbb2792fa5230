// SPDX-License-Identifier: GPL-3.0-or-later
// A second program on the same file: who waits, how long, and who never blocks whom. Real time is the subject
// here.
#include "store/db/Datenbank.h"
#include "store/db/Verbindung.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <stdexcept>
#include <thread>

using namespace std::chrono_literals;
using Uhr = std::chrono::steady_clock;

namespace {

class Sperre : public testing::Test {
protected:
    Sperre() { datei.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('S')"); }

    /// Runs `arbeit` and expects it to fail as locked, after the whole waiting time and not much more.
    static void erwarteGesperrt(const std::string& was, const std::function<void()>& arbeit) {
        const auto anfang = Uhr::now();
        EXPECT_EQ(fehlernummer(arbeit), 3218) << was;
        const auto gedauert = Uhr::now() - anfang;
        EXPECT_GE(gedauert, std::chrono::milliseconds(SPERRE_WARTEN_MS)) << was;
        EXPECT_LT(gedauert, 4 * std::chrono::milliseconds(SPERRE_WARTEN_MS)) << was;
    }

    static void aendern(Recordset& satz) {
        satz.Edit();
        satz.put_Value("btn1", "neu");
        satz.Update();
    }

    Testdatenbank datei;
    RoheVerbindung anderes{datei.pfad()};
};

} // namespace

TEST_F(Sperre, EineViertelsekundeWirdGewartet) {
    EXPECT_EQ(SPERRE_WARTEN_MS, 250);
}

TEST_F(Sperre, WerAllesSperrtLaesstJedenVorgangScheitern) {
    Database datenbank = OpenDatabase(datei.pfad());
    Recordset satz = datenbank.OpenRecordset("tblTastatur");
    const auto vorher = datei.inhalt();
    anderes.sql("BEGIN EXCLUSIVE");
    erwarteGesperrt("OpenDatabase", [&] { OpenDatabase(datei.pfad()); });
    erwarteGesperrt("OpenRecordset", [&] { datenbank.OpenRecordset("tblTastatur"); });
    erwarteGesperrt("get_Value", [&] { satz.get_Value(0); });
    erwarteGesperrt("Update", [&] { aendern(satz); });
    erwarteGesperrt("Delete", [&] { satz.Delete(); });
    erwarteGesperrt("AddNew", [&] {
        satz.AddNew();
        satz.put_Value(0, "T");
        satz.Update();
    });
    erwarteGesperrt("inEinerTransaktion", [&] { datenbank.inEinerTransaktion([&] { aendern(satz); }); });
    anderes.sql("COMMIT");
    EXPECT_EQ(datei.inhalt(), vorher);
    // The set has lost nothing by it.
    aendern(satz);
    EXPECT_EQ(satz.get_Value("btn1"), Wert("neu"));
}

TEST_F(Sperre, WerNurSchreibenWillLaesstLesenZu) {
    Database datenbank = OpenDatabase(datei.pfad());
    Recordset satz = datenbank.OpenRecordset("tblTastatur");
    anderes.sql("BEGIN IMMEDIATE");
    EXPECT_EQ(satz.get_Value(0), Wert("S"));
    erwarteGesperrt("Update", [&] { aendern(satz); });
    anderes.sql("COMMIT");
    EXPECT_EQ(satz.get_Value("btn1"), Wert("10,0,0-0-0"));
}

TEST_F(Sperre, EinLeserDerNichtEndetHaeltDasSchreibenAuf) {
    Database datenbank = OpenDatabase(datei.pfad());
    Recordset satz = datenbank.OpenRecordset("tblTastatur");
    const auto vorher = datei.inhalt();
    anderes.sql("BEGIN; SELECT * FROM tblTastatur");
    erwarteGesperrt("Update", [&] { aendern(satz); });
    erwarteGesperrt("inEinerTransaktion", [&] { datenbank.inEinerTransaktion([&] { aendern(satz); }); });
    EXPECT_EQ(satz.get_Value("btn1"), Wert("10,0,0-0-0"));
    anderes.sql("COMMIT");
    EXPECT_EQ(datei.inhalt(), vorher);
    datenbank.inEinerTransaktion([&] { aendern(satz); });
    EXPECT_EQ(satz.get_Value("btn1"), Wert("neu"));
}

TEST_F(Sperre, EineTransaktionSperrtVonAnfangAnFuerSchreiber) {
    Database datenbank = OpenDatabase(datei.pfad());
    datenbank.inEinerTransaktion([&] { EXPECT_THROW(anderes.sql("BEGIN IMMEDIATE"), std::runtime_error); });
    EXPECT_NO_THROW(anderes.sql("BEGIN IMMEDIATE"));
}

TEST_F(Sperre, EineOffeneMengeSperrtNiemandenAus) {
    Database datenbank = OpenDatabase(datei.pfad());
    Recordset ganz = datenbank.OpenRecordset("tblTastatur");
    Recordset gesucht =
        datenbank.OpenRecordset("SELECT * FROM tblTastatur WHERE (tblTastatur.Schemaname)= 'S';");
    ganz.get_Value(0);
    gesucht.get_Value("btn1");
    gesucht.Edit();
    gesucht.put_Value("btn1", "neu");
    anderes.sql("BEGIN EXCLUSIVE; UPDATE tblTastatur SET btn2 = 'anders'; COMMIT");
    gesucht.Update();
    ganz.AddNew();
    EXPECT_THAT(datei.zeilen("SELECT btn1, btn2 FROM tblTastatur"),
                testing::ElementsAre(testing::ElementsAre("neu", "anders")));
}

TEST_F(Sperre, WerBaldFreigibtWirdAbgewartet) {
    Database datenbank = OpenDatabase(datei.pfad());
    Recordset satz = datenbank.OpenRecordset("tblTastatur");
    anderes.sql("BEGIN EXCLUSIVE");
    std::thread freigabe([&] {
        std::this_thread::sleep_for(60ms);
        anderes.sql("COMMIT");
    });
    EXPECT_EQ(fehlernummer([&] { aendern(satz); }), 0);
    freigabe.join();
    EXPECT_EQ(satz.get_Value("btn1"), Wert("neu"));
}
