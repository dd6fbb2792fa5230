// SPDX-License-Identifier: GPL-3.0-or-later
// Whose a database is and which version it has: what is stamped, what is only read, what is refused.
#include "store/db/Stempel.h"
#include "store/db/Datenbank.h"
#include "store/schema/UebersichtAktion.h"
#include "store/schema/modLesen.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <array>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

namespace {

constexpr auto EIGENE_NUMMER = "1196452657"; // "GPk1" as a number
const std::pair<std::string, std::string> GESTEMPELT{EIGENE_NUMMER, "1"};
const std::pair<std::string, std::string> UNGESTEMPELT{"0", "0"};

/// application_id and user_version as they lie in the file.
std::pair<std::string, std::string> stempel(const Testdatenbank& datei) {
    return {datei.zeilen("PRAGMA application_id").at(0).at(0),
            datei.zeilen("PRAGMA user_version").at(0).at(0)};
}

void stempelSetzen(const Testdatenbank& datei, const std::string& programm, const std::string& fassung) {
    datei.sql("PRAGMA application_id = " + programm + "; PRAGMA user_version = " + fassung);
}

/// A file with the `Schema` "S", stamped so.
class StempelTest : public testing::Test {
protected:
    StempelTest() { Schemabau(datei, "S").taste(0, "alt").leereLinienAb(Stickseite::Links, 1).anlegen(); }
    void stempeln(const std::string& programm, const std::string& fassung) {
        stempelSetzen(datei, programm, fassung);
    }
    void neuer() { stempeln(EIGENE_NUMMER, "2"); }

    Testdatenbank datei;
};

void aendern(Database& datenbank, const std::string& text) {
    Recordset satz = datenbank.OpenRecordset("tblTastatur");
    satz.Edit();
    satz.put_Value("btn1", text);
    satz.Update();
}

std::string btn1(const Testdatenbank& datei) {
    return datei.zeilen("SELECT btn1 FROM tblTastatur").at(0).at(0);
}

LaufzeitFehler fehlerVon(const std::function<void()>& arbeit) {
    try {
        arbeit();
    } catch (const LaufzeitFehler& fehler) {
        return fehler;
    }
    throw std::logic_error("no error");
}

} // namespace

TEST_F(StempelTest, DieLeereDatenbankTraegtIhn) {
    EXPECT_EQ(stempel(datei), GESTEMPELT);
    EXPECT_EQ(std::to_string(EIGENER_STEMPEL.programm), EIGENE_NUMMER);
    EXPECT_EQ(dateiLesen(datei.pfad()).substr(68, 4), "GPk1");
}

TEST_F(StempelTest, OeffnenUndLesenStempelnNicht) {
    stempeln("0", "0");
    const std::string vorher = dateiLesen(datei.pfad());
    {
        Database datenbank = OpenDatabase(datei.pfad());
        EXPECT_EQ(datenbank.hinweis(), "");
        datenbank.inEinerTransaktion([&] { datenbank.OpenRecordset("tblTastatur"); });
    }
    SchemataLesen(datei.pfad());
    EXPECT_EQ(dateiLesen(datei.pfad()), vorher);
}

TEST_F(StempelTest, DasErsteSpeichernStempelt) {
    for (const auto& programm : {std::string("0"), std::string(EIGENE_NUMMER)}) {
        stempeln(programm, "0");
        Database datenbank = OpenDatabase(datei.pfad());
        aendern(datenbank, "neu " + programm);
        EXPECT_EQ(btn1(datei), "neu " + programm);
        EXPECT_EQ(stempel(datei), GESTEMPELT);
    }
}

// The head of the file counts its transactions: bytes 24 to 27, the last of them the lowest.
TEST_F(StempelTest, WasErstmalsGespeichertWirdUndDerStempelSindEineTransaktion) {
    stempeln("0", "0");
    const auto zaehler = [&] { return static_cast<unsigned char>(dateiLesen(datei.pfad())[27]); };
    const auto vorher = zaehler();
    Database datenbank = OpenDatabase(datei.pfad());
    aendern(datenbank, "neu");
    EXPECT_EQ(stempel(datei), GESTEMPELT);
    EXPECT_EQ(zaehler(), vorher + 1);
}

TEST_F(StempelTest, JedeArtDesSchreibensStempelt) {
    const auto anlegen = [](Database& datenbank) {
        Recordset satz = datenbank.OpenRecordset("tblKeyCode");
        satz.AddNew();
        satz.put_Value("Keyc", "9999");
        satz.put_Value("Keye", "Neu");
        satz.Update();
    };
    const auto loeschen = [](Database& datenbank) { datenbank.OpenRecordset("tblTastatur").Delete(); };
    for (const auto& schreiben : std::vector<std::function<void(Database&)>>{anlegen, loeschen}) {
        stempeln("0", "0");
        Database datenbank = OpenDatabase(datei.pfad());
        schreiben(datenbank);
        EXPECT_EQ(stempel(datei), GESTEMPELT);
    }
}

TEST_F(StempelTest, WasNichtGespeichertWirdStempeltNicht) {
    stempeln("0", "0");
    const std::string vorher = dateiLesen(datei.pfad());
    Database datenbank = OpenDatabase(datei.pfad());
    EXPECT_THROW(datenbank.inEinerTransaktion([&] {
        aendern(datenbank, "neu");
        throw std::runtime_error("changed their mind");
    }),
                 std::runtime_error);
    const auto nochmals = [&] { // a name that exists
        Recordset satz = datenbank.OpenRecordset("tblTastatur");
        satz.AddNew();
        satz.put_Value("Schemaname", "S");
        satz.Update();
    };
    EXPECT_EQ(fehlernummer(nochmals), 3022);
    EXPECT_EQ(dateiLesen(datei.pfad()), vorher);
    // What is given up inside goes, what is saved around it stamps.
    datenbank.inEinerTransaktion([&] {
        EXPECT_THROW(datenbank.inEinerTransaktion([&] {
            aendern(datenbank, "innen");
            throw std::runtime_error("changed their mind");
        }),
                     std::runtime_error);
        aendern(datenbank, "aussen");
    });
    EXPECT_EQ(btn1(datei), "aussen");
    EXPECT_EQ(stempel(datei), GESTEMPELT);
}

TEST_F(StempelTest, EineZeileDieAndereGeloeschtHabenStempeltNicht) {
    stempeln("0", "0");
    Database datenbank = OpenDatabase(datei.pfad());
    Recordset satz = datenbank.OpenRecordset("tblTastatur");
    datei.sql("DELETE FROM tblTastatur");
    satz.Edit();
    satz.put_Value("btn1", "neu");
    EXPECT_EQ(fehlernummer([&] { satz.Update(); }), 3021);
    EXPECT_EQ(stempel(datei), UNGESTEMPELT);
}

TEST_F(StempelTest, DieZahlEinesAnderenProgrammsOhneKennungBleibt) {
    stempeln("0", "7");
    Database datenbank = OpenDatabase(datei.pfad());
    aendern(datenbank, "neu");
    EXPECT_EQ(btn1(datei), "neu");
    EXPECT_EQ(stempel(datei), (std::pair<std::string, std::string>{"0", "7"}));
}

TEST_F(StempelTest, EineNeuereFassungWirdNurGelesen) {
    for (const std::string fassung : {"2", "2147483647", "-1"}) {
        stempeln(EIGENE_NUMMER, fassung);
        const std::string vorher = dateiLesen(datei.pfad());
        Database datenbank = OpenDatabase(datei.pfad());
        Recordset satz = datenbank.OpenRecordset("tblTastatur");
        EXPECT_EQ(satz.get_Value("btn1"), Wert("alt"));
        const auto fehler = fehlerVon([&] { aendern(datenbank, "neu"); });
        EXPECT_EQ(fehler.zahl(), 3027);
        EXPECT_THAT(fehler.what(), HasSubstr("„" + datei.pfad() + "“ gehört zu einer neueren Version"));
        EXPECT_THAT(fehler.what(), HasSubstr("Fassung " + fassung + ","));
        EXPECT_THAT(fehler.what(), HasSubstr("nur gelesen"));
        EXPECT_EQ(fehlernummer([&] { datenbank.inEinerTransaktion([&] { aendern(datenbank, "neu"); }); }),
                  3027);
        EXPECT_EQ(fehlernummer([&] { satz.Delete(); }), 3027);
        datenbank.Close();
        EXPECT_EQ(dateiLesen(datei.pfad()), vorher);
    }
    EXPECT_THAT(namenIn(datei.ordner()), ElementsAre(fs::path(datei.pfad()).filename().string()));
}

TEST_F(StempelTest, WerEineNeuereFassungLiestHaeltIhrenSchreiberNichtAuf) {
    neuer();
    Database datenbank = OpenDatabase(datei.pfad());
    RoheVerbindung andere(datei.pfad());
    datenbank.inEinerTransaktion([&] { EXPECT_NO_THROW(andere.sql("BEGIN IMMEDIATE; ROLLBACK")); });
}

TEST_F(StempelTest, DerHinweisSagtWasEineNeuereFassungBedeutetUndWasHilft) {
    EXPECT_EQ(OpenDatabase(datei.pfad()).hinweis(), "");
    neuer();
    EXPECT_EQ(
        OpenDatabase(datei.pfad()).hinweis(),
        "Die Datenbank „" + datei.pfad() +
            "“ gehört zu einer neueren Version des Programms: Sie hat Fassung 2, diese Version kennt "
            "Fassung 1.\n\nIhre Schemata lassen sich starten, aber nicht ändern: In die Datei wird nichts "
            "geschrieben. Zum Ändern installieren Sie bitte die neuere Version des Programms.");
}

// A newer program may keep one; what lies in it is read, and stays there.
TEST_F(StempelTest, EinVorauslogEinerNeuerenFassungKommtNichtInDieDatei) {
    neuer();
    datei.sql("PRAGMA journal_mode = WAL");
    RoheVerbindung andere(datei.pfad());
    andere.sql("UPDATE tblTastatur SET btn1 = 'im Log'");
    const fs::path kopie = datei.ordner() / "Kopie.twk"; // as a crash of the other one leaves them
    fs::copy_file(datei.pfad(), kopie);
    fs::copy_file(datei.pfad() + "-wal", kopie.string() + "-wal");
    const std::string vorher = dateiLesen(kopie);
    const std::string log = dateiLesen(kopie.string() + "-wal");
    {
        Database datenbank = OpenDatabase(kopie.string());
        EXPECT_EQ(datenbank.OpenRecordset("tblTastatur").get_Value("btn1"), Wert("im Log"));
    }
    Testdatenbank eigene;
    EXPECT_EQ(fehlernummer([&] { OpenDatabase(eigene.pfad()).danebenOeffnen(kopie.string()); }), 3027);
    EXPECT_EQ(fehlernummer([&] { OpenDatabase(kopie.string()).danebenOeffnen(eigene.pfad()); }), 3027);
    EXPECT_EQ(dateiLesen(kopie), vorher);
    EXPECT_EQ(dateiLesen(kopie.string() + "-wal"), log);
}

TEST_F(StempelTest, EinVorauslogDerEigenenFassungGehtBeimSchliessenEin) {
    datei.sql("PRAGMA journal_mode = WAL");
    {
        Database datenbank = OpenDatabase(datei.pfad());
        aendern(datenbank, "neu");
    }
    EXPECT_THAT(namenIn(datei.ordner()), ElementsAre(fs::path(datei.pfad()).filename().string()));
    EXPECT_EQ(btn1(datei), "neu");
}

TEST_F(StempelTest, DieDatenbankEinesAnderenProgrammsWirdNichtGeoeffnet) {
    for (const std::string fassung : {"0", "1", "2"}) {
        stempeln("252006673", fassung);
        const std::string vorher = dateiLesen(datei.pfad());
        const auto fehler = fehlerVon([&] { OpenDatabase(datei.pfad()); });
        EXPECT_EQ(fehler.zahl(), 3343);
        EXPECT_EQ(fehler.what(),
                  "Die Datei „" + datei.pfad() + "“ ist die Datenbank eines anderen Programms.");
        EXPECT_EQ(dateiLesen(datei.pfad()), vorher);
    }
}

TEST_F(StempelTest, WirdDieOffeneDateiErneuertSchreibtNiemandMehrHinein) {
    Database datenbank = OpenDatabase(datei.pfad());
    aendern(datenbank, "erst");
    neuer();
    const std::string vorher = dateiLesen(datei.pfad());
    EXPECT_EQ(fehlernummer([&] { aendern(datenbank, "dann"); }), 3027);
    EXPECT_EQ(fehlernummer([&] { datenbank.inEinerTransaktion([&] { aendern(datenbank, "dann"); }); }), 3027);
    EXPECT_EQ(dateiLesen(datei.pfad()), vorher);
    stempeln("252006673", "1");
    EXPECT_EQ(fehlernummer([&] { aendern(datenbank, "dann"); }), 3343);
    EXPECT_EQ(btn1(datei), "erst");
}

TEST_F(StempelTest, JedeDerBeidenDateienBekommtIhrenEigenen) {
    Testdatenbank zweite;
    Schemabau(zweite, "S").taste(0, "alt").anlegen();
    stempeln("0", "0");
    stempelSetzen(zweite, "0", "0");
    Database eine = OpenDatabase(datei.pfad());
    Database andere = eine.danebenOeffnen(zweite.pfad());
    eine.inEinerTransaktion([&] { aendern(andere, "neu"); });
    EXPECT_EQ(stempel(datei), UNGESTEMPELT);
    EXPECT_EQ(stempel(zweite), GESTEMPELT);
    eine.inEinerTransaktion([&] { aendern(eine, "neu"); });
    EXPECT_EQ(stempel(datei), GESTEMPELT);
}

TEST_F(StempelTest, EinWechselMitEinerNeuerenOderFremdenAendertKeineVonBeiden) {
    Testdatenbank zweite;
    Schemabau(zweite, "S").taste(0, "anders").anlegen();
    const Ebenenort hier{{datei.pfad(), "S"}, 3};
    const Ebenenort dort{{zweite.pfad(), "S"}, 3};
    const auto wechseln = [](const Ebenenort& erster, const Ebenenort& zweiter) {
        LayerWechseln(erster, zweiter, [](std::string_view) {});
    };
    for (const auto& [programm, nummer] : {std::pair{EIGENE_NUMMER, 3027}, std::pair{"252006673", 3343}}) {
        stempelSetzen(zweite, programm, "2");
        const std::string vorherHier = dateiLesen(datei.pfad());
        const std::string vorherDort = dateiLesen(zweite.pfad());
        for (const auto& [erster, zweiter] : {std::pair{hier, dort}, std::pair{dort, hier}}) {
            const auto fehler = fehlerVon([&] { wechseln(erster, zweiter); });
            EXPECT_EQ(fehler.zahl(), nummer);
            EXPECT_THAT(fehler.what(), HasSubstr(zweite.pfad()));
        }
        EXPECT_EQ(dateiLesen(datei.pfad()), vorherHier);
        EXPECT_EQ(dateiLesen(zweite.pfad()), vorherDort);
    }
}

TEST_F(StempelTest, AusEinerNeuerenWirdKopiertInSieNicht) {
    Testdatenbank neue;
    Schemabau(neue, "S")
        .linien(Stickseite::Links, 1, {30000, 36000, 30000, 36000})
        .leereLinienAb(Stickseite::Links, 2)
        .anlegen();
    stempelSetzen(neue, EIGENE_NUMMER, "2");
    const std::string vorher = dateiLesen(neue.pfad());
    std::array<bool, EBENENWAHLEN> ziele{};
    ziele[1] = true;
    LayerKopieren({{neue.pfad(), "S"}, 0}, {datei.pfad(), "S"}, ziele);
    EXPECT_EQ(datei.zeilen("SELECT Links2 FROM tblStick WHERE \"index\" = 1"), (Tabellenbild{{"30000"}}));
    EXPECT_EQ(fehlernummer([&] {
                  LayerKopieren({{datei.pfad(), "S"}, 0}, {neue.pfad(), "S"}, ziele);
              }),
              3027);
    EXPECT_EQ(dateiLesen(neue.pfad()), vorher);
}

// The stamp is looked at once a transaction: what a part of it has undone is looked at again.
TEST_F(StempelTest, AuchWennEinTeilDerTransaktionMitIhmVerworfenWird) {
    stempeln("0", "0");
    Database datenbank = OpenDatabase(datei.pfad());
    datenbank.inEinerTransaktion([&] {
        EXPECT_THROW(datenbank.inEinerTransaktion([&] {
            aendern(datenbank, "verworfen");
            throw std::runtime_error("Unfug");
        }),
                     std::runtime_error);
        aendern(datenbank, "neu");
    });
    EXPECT_EQ(stempel(datei), GESTEMPELT);
    EXPECT_EQ(btn1(datei), "neu");
}

TEST_F(StempelTest, JedeTransaktionSiehtIhnNeuAn) {
    Database datenbank = OpenDatabase(datei.pfad());
    datenbank.inEinerTransaktion([&] { aendern(datenbank, "eins"); });
    neuer();
    EXPECT_EQ(fehlernummer([&] { datenbank.inEinerTransaktion([&] { aendern(datenbank, "zwei"); }); }), 3027);
    EXPECT_EQ(btn1(datei), "eins");
}
