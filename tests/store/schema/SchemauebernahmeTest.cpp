// SPDX-License-Identifier: GPL-3.0-or-later
// Taking up, renaming and doubling whole `Schema`s.
#include "store/schema/Schemauebernahme.h"
#include "store/files/Dateisperre.h"
#include "store/files/Streubilddateien.h"
#include "store/schema/Schemaloeschen.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/hilfen/Kunsthand.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/Schemaplatzprobe.h"

#include <gmock/gmock.h>

#include <sys/file.h>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

namespace {

class Uebernahmetest : public testing::Test {
protected:
    Uebernahmetest() {
        aufnehmen("S", 1, {"0L.bmp", "2R.bmp"});
        aufnehmen("T", 2, {"1L.bmp"});
    }

    void aufnehmen(const std::string& name, unsigned saat, const std::vector<std::string>& endungen) {
        auto daten = Zufallsschema(saat).daten();
        if (!daten.achsen)
            daten.achsen = Gamepadzeile{{"dwXPos", "ry"}};
        schemaAufnehmen(ort.platz(), name, daten, endungen, [&](std::string_view endung) {
            return "Bild " + std::string(endung) + std::to_string(saat);
        });
    }
    Schemadaten lesen(const std::string& name) const {
        auto datenbank = OpenDatabase(ort.platz().datenbankPfad);
        auto daten = schemadatenLesen(datenbank, name);
        daten.achsen = achsenzeileLesen(ort.platz().gamepadXml, name);
        return daten;
    }
    std::string hindernis(const std::string& name, const std::string& ausser = "") const {
        return namenshindernis(ort.platz(), name, ausser);
    }
    static std::string vielfach(const std::string& zeichen, int anzahl) {
        std::string text;
        for (; anzahl > 0; --anzahl)
            text += zeichen;
        return text;
    }
    std::vector<std::string> schemata() const {
        std::vector<std::string> namen;
        for (const auto& zeile : ort.datenbank.zeilen("SELECT Schemaname FROM tblTastatur ORDER BY rowid"))
            namen.push_back(zeile.at(0));
        return namen;
    }
    template <class Tat> void erwarteUnveraendert(Tat&& tat, int nummer) const {
        const auto vorher = ort.stand();
        EXPECT_EQ(fehlernummer(tat), nummer);
        EXPECT_EQ(ort.stand(), vorher);
        EXPECT_FALSE(fs::exists(vermerk));
    }

    const Schemaplatzprobe ort;
    const std::string vermerk = ort.platz().datenbankPfad + ".vorhaben";
};

} // namespace

TEST_F(Uebernahmetest, EinAufgenommenesHatAllesUndSonstAendertSichNichts) {
    const auto t = lesen("T");
    auto daten = Zufallsschema(7).daten();
    daten.achsen = Gamepadzeile{{"dwYPos", "Z1"}, {"Schubregler", "4"}};
    schemaAufnehmen(ort.platz(), "Neu", daten, {"1R.bmp"}, [](std::string_view) { return "x"; });
    EXPECT_EQ(lesen("Neu"), daten);
    EXPECT_EQ(dateiLesen(ort.bilder() / "Neu1R.bmp"), "x");
    EXPECT_EQ(lesen("T"), t);
    EXPECT_THAT(schemata(), ElementsAre("S", "T", "Neu"));
    EXPECT_FALSE(fs::exists(vermerk));
}

TEST_F(Uebernahmetest, EinUmbenanntesBehaeltAllesUndSeinenPlatz) {
    const auto s = lesen("S");
    schemaUmbenennen(ort.platz(), "S", "Neu");
    EXPECT_EQ(lesen("Neu"), s);
    EXPECT_THAT(schemata(), ElementsAre("Neu", "T"));
    EXPECT_THAT(namenIn(ort.bilder()), UnorderedElementsAre("Neu0L.bmp", "Neu2R.bmp", "T1L.bmp"));
    EXPECT_EQ(dateiLesen(ort.bilder() / "Neu2R.bmp"), "Bild 2R.bmp1");
    EXPECT_EQ(achsenzeileLesen(ort.platz().gamepadXml, "S"), std::nullopt);
    EXPECT_EQ(ort.datenbank.zeilen("SELECT * FROM tblStick WHERE Schemaname = 'S'"), Tabellenbild{});
    EXPECT_FALSE(fs::exists(vermerk));
}

TEST_F(Uebernahmetest, NurAndereBuchstabengroesseLaesstDieBilder) {
    aufnehmen("Rennen", 3, {"0L.bmp"});
    const auto vorher = lesen("Rennen");
    schemaUmbenennen(ort.platz(), "Rennen", "RENNEN");
    EXPECT_EQ(lesen("RENNEN"), vorher);
    EXPECT_EQ(bilddateien(ort.bilder(), "RENNEN0L.bmp").size(), 1U);
    EXPECT_EQ(achsenzeileLesen(ort.platz().gamepadXml, "Rennen"), std::nullopt);
}

TEST_F(Uebernahmetest, SpaltenDerAchsendateiDieNiemandKenntGehenMit) {
    auto tabelle = *gamepadLesen(ort.platz().gamepadXml);
    auto spalte = tabelle.spalten.back();
    spalte.name = "Fremd";
    for (auto& [name, wert] : spalte.attribute)
        if (name == "rs:number")
            wert = "9";
    tabelle.spalten.push_back(spalte);
    for (auto& zeile : tabelle.zeilen)
        zeile["Fremd"] = "7";
    ASSERT_TRUE(gamepadSpeichern(ort.platz().gamepadXml, tabelle));
    schemaUmbenennen(ort.platz(), "S", "Neu");
    EXPECT_THAT(ort.beiwerk(), HasSubstr("Fremd=7 Schema=Neu"));
    EXPECT_FALSE(lesen("Neu").achsen->contains("Fremd")) << "a file of a Schema has no place for it";
    schemadatenPruefen(lesen("Neu"));
}

TEST_F(Uebernahmetest, EinVerdoppeltesStehtNebenDemErsten) {
    const auto s = lesen("S");
    schemaVerdoppeln(ort.platz(), "S", "S 2");
    EXPECT_EQ(lesen("S"), s);
    EXPECT_EQ(lesen("S 2"), s);
    EXPECT_THAT(namenIn(ort.bilder()),
                UnorderedElementsAre("S0L.bmp", "S2R.bmp", "S 20L.bmp", "S 22R.bmp", "T1L.bmp"));
    EXPECT_THAT(schemata(), ElementsAre("S", "T", "S 2"));
}

// The tables of the sensitivity keep nobody from laying two rows; a run reads the first.
TEST_F(Uebernahmetest, VonZweiZeilenGehtDieErsteMit) {
    ort.datenbank.sql("DELETE FROM Sensible WHERE Schemaname = 'S'; "
                      "INSERT INTO Sensible VALUES ('S', 1, 1, 1, 1, 1, 1, 1), ('S', 2, 2, 2, 2, 2, 2, 2)");
    schemaVerdoppeln(ort.platz(), "S", "S 2");
    EXPECT_EQ(ort.datenbank.zeilen("SELECT Fenster_ly FROM Sensible WHERE Schemaname = 'S 2'"),
              (Tabellenbild{{"1"}}));
}

TEST_F(Uebernahmetest, WasLaeufeGezaehltHabenGehtMit) {
    const Streubilddateien zaehlung(streubildordner(ort.platz().datenbankPfad));
    const auto gezaehlt = streudatenAus({.saat = 3}, 400);
    ASSERT_TRUE(zaehlung.speichern("S", Stickseite::Rechts, 2, gezaehlt));
    schemaVerdoppeln(ort.platz(), "S", "S 2");
    schemaUmbenennen(ort.platz(), "S", "Neu");
    for (const auto* name : {"S 2", "Neu"})
        EXPECT_EQ(zaehlung.laden(name, Stickseite::Rechts, 2), gezaehlt) << name;
    EXPECT_EQ(zaehlung.laden("S", Stickseite::Rechts, 2), Streudaten{});
    EXPECT_EQ(zaehlung.laden("Neu", Stickseite::Links, 2), Streudaten{});
}

TEST_F(Uebernahmetest, AuchWasNichtInsFormatPasstWirdUmbenanntUndVerdoppelt) {
    ort.datenbank.sql("UPDATE tblTastatur SET btn1 = 'x' WHERE Schemaname = 'S'");
    schemaVerdoppeln(ort.platz(), "S", "U");
    schemaUmbenennen(ort.platz(), "U", "V");
    EXPECT_EQ(lesen("V"), lesen("S"));
}

TEST_F(Uebernahmetest, WelcheNamenGehen) {
    EXPECT_EQ(hindernis("Neu"), "");
    EXPECT_EQ(hindernis(std::string(100, 'x')), "");
    for (const auto& [name, grund] :
         std::vector<std::pair<std::string, std::string>>{{"", "Ohne Namen"},
                                                          {"S", "gibt es schon"},
                                                          {"s", "gibt es schon"},
                                                          {"a'b", "Apostroph"},
                                                          {"a/b", "„/“"},
                                                          {"a\\b", "„/“"},
                                                          {" a", "Leerzeichen"},
                                                          {"a ", "Leerzeichen"},
                                                          {"a\n\x01", "Zeichen"},
                                                          {"a\nb", "niemand sieht"},
                                                          {"a\u200Bb", "niemand sieht"},
                                                          {"a\u202Eb", "niemand sieht"},
                                                          {"\uFEFFa", "niemand sieht"},
                                                          {std::string(101, 'x'), "zu lang"},
                                                          {vielfach("😀", 56), "als dass Bilder"}})
        EXPECT_THAT(hindernis(name), HasSubstr(grund)) << name;
    EXPECT_EQ(hindernis("s", "S"), "");
    EXPECT_THAT(hindernis("S", "S"), HasSubstr("heißt das Schema schon"));
    EXPECT_THAT(hindernis("t", "S"), HasSubstr("gibt es schon"));
    EXPECT_EQ(freierName(ort.platz(), "Neu"), "Neu");
    EXPECT_EQ(freierName(ort.platz(), "S"), "S 2");
    EXPECT_EQ(freierName(ort.platz(), "a/b's"), "a-b-s");
}

TEST_F(Uebernahmetest, EinVorschlagGehtAuchWoDerWunschNichtGinge) {
    const auto vorschlag = [&](const std::string& wunsch) {
        auto name = freierName(ort.platz(), wunsch);
        EXPECT_EQ(hindernis(name), "") << wunsch;
        return name;
    };
    EXPECT_EQ(vorschlag(" a\n\u202Eb "), "ab");
    EXPECT_EQ(vorschlag(std::string(1000, 'x')), std::string(100, 'x'));
    EXPECT_EQ(vorschlag(vielfach("ü", 127)), vielfach("ü", 100));
    EXPECT_EQ(vorschlag(vielfach("😀", 100)), vielfach("😀", 55));
    aufnehmen(std::string(100, 'x'), 3, {"0L.bmp"});
    EXPECT_EQ(vorschlag(std::string(100, 'x')), std::string(98, 'x') + " 2");
    aufnehmen(vielfach("😀", 55), 4, {"0L.bmp"}); // and its pictures can be written
    EXPECT_EQ(freierName(ort.platz(), " \n"), "");
}

// What lies there may be somebody's: of a Schema of another database, say.
TEST_F(Uebernahmetest, WasUnterDemNamenSchonLiegtWirdNieErsetzt) {
    dateiSchreiben(ort.bilder() / "NEU1L.bmp", "meins");
    EXPECT_THAT(hindernis("Neu"), HasSubstr("liegen noch Bilder"));
    erwarteUnveraendert([&] { aufnehmen("Neu", 5, {"1L.bmp"}); }, 3022);
    erwarteUnveraendert([&] { schemaUmbenennen(ort.platz(), "S", "neu"); }, 3022);
    erwarteUnveraendert([&] { schemaVerdoppeln(ort.platz(), "S", "Neu"); }, 3022);
    fs::remove(ort.bilder() / "NEU1L.bmp");
    EXPECT_EQ(hindernis("Neu"), "");
    auto tabelle = *gamepadLesen(ort.platz().gamepadXml);
    tabelle.zeilen.push_back({{"Schema", "Neu"}, {"dwXPos", "Z2"}});
    ASSERT_TRUE(gamepadSpeichern(ort.platz().gamepadXml, tabelle));
    erwarteUnveraendert([&] { aufnehmen("Neu", 5, {}); }, 3022);
}

TEST_F(Uebernahmetest, WasNichtGehtAendertNichts) {
    auto datenbank = OpenDatabase(ort.platz().datenbankPfad);
    erwarteUnveraendert([&] { schemazeilenUmbenennen(datenbank, "S", "a'b"); }, 3075);
    datenbank.Close();
    erwarteUnveraendert([&] { schemaUmbenennen(ort.platz(), "weg", "Neu"); }, 3021);
    erwarteUnveraendert([&] { schemaVerdoppeln(ort.platz(), "weg", "Neu"); }, 3021);
    erwarteUnveraendert([&] { schemaUmbenennen(ort.platz(), "S", "T"); }, 3022);
    auto schlechte = Zufallsschema(4).daten();
    schlechte.zeilen[schematabelle::TASTATUR][0][0] = std::string("x");
    erwarteUnveraendert([&] { schemaAufnehmen(ort.platz(), "Neu", schlechte, {}, {}); }, 13);
    // A picture that breaks off in the middle of all.
    const auto bild = [](std::string_view endung) -> std::string {
        if (endung == "1L.bmp")
            throw LaufzeitFehler(Fehlernummer::EinAusgabe, "kaputt");
        return "Bild";
    };
    erwarteUnveraendert(
        [&] {
            schemaAufnehmen(ort.platz(), "Neu", Zufallsschema(4).daten(), {"0L.bmp", "1L.bmp"}, bild);
        },
        3043);
}

TEST_F(Uebernahmetest, OhneSchreibbarenBilderordnerOderAchsendateiGeschiehtNichts) {
    fs::rename(ort.bilder(), ort.datenbank.ordner() / "weg");
    dateiSchreiben(ort.bilder(), "keiner");
    const auto zeilen = ort.datenbank.inhalt();
    EXPECT_EQ(fehlernummer([&] { aufnehmen("Neu", 5, {"1L.bmp"}); }), 3043);
    EXPECT_EQ(ort.datenbank.inhalt(), zeilen);
    fs::remove(ort.bilder());
    fs::rename(ort.datenbank.ordner() / "weg", ort.bilder());
    EXPECT_EQ(fehlernummer([&] { aufnehmen("Neu", 5, {"1L.bmp"}); }), 0);

    dateiSchreiben(ort.platz().gamepadXml, "keine");
    const auto vorher = ort.stand();
    for (const auto& tat : std::vector<std::function<void()>>{
             [&] { aufnehmen("Neu 2", 5, {"1L.bmp"}); }, [&] { schemaUmbenennen(ort.platz(), "S", "U"); },
             [&] { schemaVerdoppeln(ort.platz(), "S", "U"); }})
        EXPECT_EQ(fehlernummer(tat), 3049);
    EXPECT_EQ(ort.stand(), vorher);
    EXPECT_EQ(dateiLesen(ort.platz().gamepadXml), "keine");
}

TEST_F(Uebernahmetest, OhneAchsendateiEntstehtEineNurWoAchsenMitkommen) {
    fs::remove(ort.platz().gamepadXml);
    schemaVerdoppeln(ort.platz(), "S", "U");
    EXPECT_FALSE(fs::exists(ort.platz().gamepadXml));
    aufnehmen("Neu", 5, {});
    EXPECT_TRUE(achsenzeileLesen(ort.platz().gamepadXml, "Neu"));
}

// --- the note ---

TEST_F(Uebernahmetest, WasEinTotesProgrammLiessWirdWeggeraeumt) {
    dateiSchreiben(ort.bilder() / "Halb0L.bmp", "halb");
    dateiSchreiben(vermerk, std::string("Halb\0S\0ENDE", 11));
    beiwerkAufraeumen(ort.platz());
    EXPECT_THAT(namenIn(ort.bilder()), UnorderedElementsAre("S0L.bmp", "S2R.bmp", "T1L.bmp"));
    EXPECT_TRUE(achsenzeileLesen(ort.platz().gamepadXml, "S"));
    EXPECT_FALSE(fs::exists(vermerk));
}

TEST_F(Uebernahmetest, WasEinTotesProgrammLiessStehtSeinemNamenNichtImWege) {
    dateiSchreiben(ort.bilder() / "Neu1L.bmp", "halb");
    dateiSchreiben(vermerk, std::string("Neu\0ENDE", 8));
    aufnehmen("Neu", 5, {"0R.bmp"});
    EXPECT_FALSE(fs::exists(ort.bilder() / "Neu1L.bmp"));
    EXPECT_TRUE(fs::exists(ort.bilder() / "Neu0R.bmp"));
}

TEST_F(Uebernahmetest, EinVermerkDerNichtGanzIstTutNichts) {
    for (const auto& text : {std::string("Halb\0EN", 7), std::string("Halb"), std::string()}) {
        dateiSchreiben(ort.bilder() / "Halb0L.bmp", "meins");
        dateiSchreiben(vermerk, text);
        beiwerkAufraeumen(ort.platz());
        EXPECT_TRUE(fs::exists(ort.bilder() / "Halb0L.bmp"));
        EXPECT_FALSE(fs::exists(vermerk));
    }
}

TEST_F(Uebernahmetest, DerVermerkEinesLebendenBleibtUndWirdAbgewartet) {
    dateiSchreiben(ort.bilder() / "Halb0L.bmp", "wird gerade");
    dateiSchreiben(vermerk, std::string("Halb\0ENDE", 9));
    const int lebender = open(vermerk.c_str(), O_RDWR);
    ASSERT_EQ(flock(lebender, LOCK_EX), 0);
    beiwerkAufraeumen(ort.platz());
    EXPECT_TRUE(fs::exists(ort.bilder() / "Halb0L.bmp"));
    EXPECT_EQ(fehlernummer([&] { schemaVerdoppeln(ort.platz(), "S", "U"); }), 3218); // after two seconds
    close(lebender);
    schemaVerdoppeln(ort.platz(), "S", "U");
    EXPECT_FALSE(fs::exists(ort.bilder() / "Halb0L.bmp"));
    EXPECT_FALSE(fs::exists(vermerk));
}

// Somebody could have laid it for a file that he would like to see emptied.
TEST_F(Uebernahmetest, EinVermerkDerWoandershinFuehrtWirdNichtBeschrieben) {
    const auto fremde = ort.datenbank.ordner() / "fremd";
    dateiSchreiben(fremde, "meins");
    fs::create_symlink(fremde, vermerk);
    const auto vorher = ort.stand();
    EXPECT_EQ(fehlernummer([&] { aufnehmen("Neu", 5, {"1L.bmp"}); }), 3043);
    EXPECT_EQ(ort.stand(), vorher);
    EXPECT_EQ(dateiLesen(fremde), "meins");
}

TEST_F(Uebernahmetest, EineGesperrteAchsendateiAendertNichts) {
    const auto vorher = ort.stand();
    {
        const Dateisperre andere(ort.platz().gamepadXml);
        ASSERT_TRUE(andere.frei());
        EXPECT_EQ(fehlernummer([&] { aufnehmen("Neu", 5, {"1L.bmp"}); }), 3218);
    }
    beiwerkAufraeumen(ort.platz()); // as the next start does
    EXPECT_EQ(ort.stand(), vorher);
    EXPECT_FALSE(fs::exists(vermerk));
}

TEST_F(Uebernahmetest, OhneLesbareDatenbankBleibtAlles) {
    dateiSchreiben(ort.bilder() / "Halb0L.bmp", "halb");
    dateiSchreiben(vermerk, std::string("Halb\0ENDE", 9));
    const auto datei = dateiLesen(ort.datenbank.pfad());
    dateiSchreiben(ort.datenbank.pfad(), "keine");
    beiwerkAufraeumen(ort.platz());
    EXPECT_TRUE(fs::exists(vermerk));
    EXPECT_TRUE(fs::exists(ort.bilder() / "Halb0L.bmp"));
    dateiSchreiben(ort.datenbank.pfad(), datei);
    beiwerkAufraeumen(ort.platz());
    EXPECT_FALSE(fs::exists(ort.bilder() / "Halb0L.bmp"));
}

TEST_F(Uebernahmetest, EineGesperrteDatenbankAendertNichts) {
    RoheVerbindung andere(ort.datenbank.pfad());
    andere.sql("BEGIN IMMEDIATE");
    erwarteUnveraendert([&] { schemaUmbenennen(ort.platz(), "S", "U"); }, 3218);
}
