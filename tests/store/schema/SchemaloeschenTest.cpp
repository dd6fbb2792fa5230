// SPDX-License-Identifier: GPL-3.0-or-later
// A Schema goes: its rows in all eight tables and its pictures.
#include "store/schema/Schemaloeschen.h"
#include "store/files/Streubilddateien.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <algorithm>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace fs = std::filesystem;

namespace {

const std::vector<std::string> TABELLEN{"tblTastatur",    "tblSteuerKreuz",  "tblStick", "tblStickR",
                                        "tblStickAktion", "tblStickAktionR", "Sensible", "SensibleR"};
const std::string KEINE_TASTATUR = "Es gibt kein Tastaturschema";
const std::string KEIN_SCHEMA = "Es gibt kein Schema";
const std::string KEIN_LINKER = "Es gibt kein Stickschema (Links)";
const std::string KEIN_RECHTER = "Es gibt kein Stickschema (Rechts)";

class SchemaloeschenTest : public testing::Test {
protected:
    SchemaloeschenTest() { fs::create_directory(datei.ordner() / "Bilder"); }

    /// A Schema with rows everywhere, three of them where there may be more than one.
    void anlegen(const std::string& name) const {
        for (const auto& tabelle : TABELLEN) {
            const bool eine = tabelle == "tblTastatur" || tabelle == "tblSteuerKreuz";
            const bool linien = tabelle == "tblStick" || tabelle == "tblStickR";
            for (int i = 1; i <= (eine ? 1 : 3); ++i)
                datei.sql("INSERT INTO " + tabelle + (linien ? " (Schemaname, \"index\")" : " (Schemaname)") +
                          " VALUES ('" + name + "'" + (linien ? ", " + std::to_string(i) : "") + ")");
        }
    }
    Schemaplatz platz() const { return {datei.pfad(), bilder(), (datei.ordner() / "Gamepad.xml").string()}; }
    void loeschen(const std::string& name) {
        meldungen.clear();
        SchemaLoeschen(platz(), name, [&](std::string_view text) { meldungen.emplace_back(text); });
    }
    void fragenUndLoeschen(const std::string& name, bool antwort) {
        SchemaLoeschenFragen(platz(), name,
                             {[&, antwort](std::string_view frage, std::string_view titel) {
                                  fragen.emplace_back(std::string(titel) + ": " + std::string(frage));
                                  return antwort;
                              },
                              [&](std::string_view text) { meldungen.emplace_back(text); },
                              {}});
    }
    /// Rows of a Schema in each table.
    std::vector<int> zeilenzahlen(const std::string& name) const {
        std::vector<int> zahlen;
        for (const auto& tabelle : TABELLEN)
            zahlen.push_back(static_cast<int>(
                datei.zeilen("SELECT 1 FROM " + tabelle + " WHERE Schemaname = '" + name + "'").size()));
        return zahlen;
    }
    std::string bilder() const { return (datei.ordner() / "Bilder/").string(); }
    void bildLegen(const std::string& name) const { dateiSchreiben(datei.ordner() / "Bilder" / name, name); }
    std::vector<std::string> bildnamen() const { return namenIn(datei.ordner() / "Bilder"); }

    Testdatenbank datei;
    std::vector<std::string> fragen;
    std::vector<std::string> meldungen;
};

} // namespace

TEST_F(SchemaloeschenTest, JaLoeschtNeinNicht) {
    anlegen("S");
    bildLegen("S0L.bmp");
    const auto vorher = datei.inhalt();
    fragenUndLoeschen("S", false);
    EXPECT_THAT(fragen, ElementsAre("Löschvorgang: Möchten Sie das Schema wirklich löschen?"));
    EXPECT_THAT(meldungen, IsEmpty());
    EXPECT_EQ(datei.inhalt(), vorher);
    EXPECT_THAT(bildnamen(), ElementsAre("S0L.bmp"));

    fragenUndLoeschen("S", true);
    EXPECT_EQ(fragen.size(), 2U);
    EXPECT_THAT(meldungen, IsEmpty());
    EXPECT_THAT(zeilenzahlen("S"), testing::Each(0));
    EXPECT_THAT(bildnamen(), IsEmpty());
}

TEST_F(SchemaloeschenTest, AlleZeilenDiesesSchemasGehenUndNurDiese) {
    for (const std::string name : {"s", "S", "S ", "S0"})
        anlegen(name);
    const auto andere = [this] {
        std::vector<Tabellenbild> zeilen;
        for (const auto& tabelle : TABELLEN)
            zeilen.push_back(datei.zeilen("SELECT rowid, * FROM " + tabelle + " WHERE Schemaname <> 'S'"));
        return zeilen;
    };
    const auto vorher = andere();
    loeschen("S");
    EXPECT_THAT(meldungen, IsEmpty());
    EXPECT_THAT(zeilenzahlen("S"), testing::Each(0));
    EXPECT_EQ(andere(), vorher);
}

TEST_F(SchemaloeschenTest, EinNeuesSchemaMeldetBeideStickschemasUndGehtTrotzdem) {
    Schemabau(datei).anlegen();
    loeschen("S");
    EXPECT_THAT(meldungen, ElementsAre(KEIN_LINKER, KEIN_RECHTER));
    EXPECT_THAT(zeilenzahlen("S"), testing::Each(0));
}

TEST_F(SchemaloeschenTest, JedeFehlendeTabelleMeldetNurWasSieZuMeldenHat) {
    const std::vector<std::vector<std::string>> erwartet{{KEINE_TASTATUR}, {KEIN_SCHEMA},  {}, {},
                                                         {KEIN_LINKER},    {KEIN_RECHTER}, {}, {}};
    for (std::size_t i = 0; i < TABELLEN.size(); ++i) {
        anlegen("S");
        datei.sql("DELETE FROM " + TABELLEN[i]);
        loeschen("S");
        EXPECT_EQ(meldungen, erwartet[i]) << TABELLEN[i];
        EXPECT_THAT(zeilenzahlen("S"), testing::Each(0)) << TABELLEN[i];
    }
}

TEST_F(SchemaloeschenTest, WasEsNichtGibtMeldetAlleVierInIhrerReihenfolge) {
    loeschen("fehlt");
    EXPECT_THAT(meldungen, ElementsAre(KEINE_TASTATUR, KEIN_SCHEMA, KEIN_LINKER, KEIN_RECHTER));
}

TEST_F(SchemaloeschenTest, GemeldetWirdWennAllesFortIst) {
    anlegen("S");
    bildLegen("S0L.bmp");
    datei.sql("DELETE FROM tblSteuerKreuz; DELETE FROM tblStickAktion");
    std::vector<std::string> gemeldet;
    SchemaLoeschen(platz(), "S", [&](std::string_view text) {
        gemeldet.emplace_back(text);
        EXPECT_THAT(zeilenzahlen("S"), testing::Each(0));
        EXPECT_THAT(bildnamen(), IsEmpty());
    });
    EXPECT_THAT(gemeldet, ElementsAre(KEIN_SCHEMA, KEIN_LINKER));
}

TEST_F(SchemaloeschenTest, EinFehlerInDerLetztenTabelleLaesstAlleZeilenUndMeldetNichts) {
    anlegen("S");
    bildLegen("S0L.bmp");
    datei.sql("DELETE FROM tblStickAktion; DROP TABLE SensibleR");
    const auto vorher = datei.inhalt();
    EXPECT_EQ(fehlernummer([&] { loeschen("S"); }), 3078);
    EXPECT_EQ(datei.inhalt(), vorher);
    EXPECT_THAT(meldungen, IsEmpty());
    EXPECT_THAT(bildnamen(), ElementsAre("S0L.bmp"));
}

TEST_F(SchemaloeschenTest, BilderDieAuchEinemAnderenSchemaGehoerenBleiben) {
    for (const auto& [geloescht, anderes] :
         {std::pair<std::string, std::string>{"s", "S"}, {"Ägir", "ägir"}}) {
        anlegen(geloescht);
        anlegen(anderes);
        anlegen(anderes + "x");
        bildLegen(anderes + "0L.bmp");
        loeschen(geloescht);
        EXPECT_THAT(zeilenzahlen(geloescht), testing::Each(0));
        EXPECT_THAT(bildnamen(), ElementsAre(anderes + "0L.bmp"));
        loeschen(anderes);
        EXPECT_THAT(bildnamen(), IsEmpty()) << "the last one takes them along";
        loeschen(anderes + "x");
    }
}

TEST_F(SchemaloeschenTest, DerNameIstEineKopieUndDieDateiWaehrendEinerMeldungFrei) {
    datei.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('S'), ('T');"
              "INSERT INTO Sensible (Schemaname) VALUES ('S'), ('T')");
    for (const std::string bild : {"S1R.bmp", "T1R.bmp"})
        bildLegen(bild);
    std::string SchemaName = "S";
    SchemaLoeschen(platz(), SchemaName, [&](std::string_view) {
        SchemaName = "T";
        RoheVerbindung(datei.pfad()).sql("BEGIN EXCLUSIVE; COMMIT");
    });
    EXPECT_EQ(SchemaName, "T");
    EXPECT_THAT(zeilenzahlen("S"), testing::Each(0));
    EXPECT_THAT(zeilenzahlen("T"), ElementsAre(1, 0, 0, 0, 0, 0, 1, 0));
    EXPECT_THAT(bildnamen(), ElementsAre("T1R.bmp"));
}

TEST_F(SchemaloeschenTest, VonDoppeltenZeilenGehtInDenErstenBeidenTabellenNurEine) {
    for (const std::string tabelle : {"tblTastatur", "tblSteuerKreuz", "tblStick"})
        datei.sql("DROP TABLE " + tabelle + "; CREATE TABLE " + tabelle + " (Schemaname TEXT); INSERT INTO " +
                  tabelle + " VALUES ('S'), ('S'), ('S')");
    loeschen("S");
    EXPECT_THAT(zeilenzahlen("S"), ElementsAre(2, 2, 0, 0, 0, 0, 0, 0));
}

TEST_F(SchemaloeschenTest, OhneApostrophGehtJederName) {
    for (const std::string name : {"", " ", "../x", "Ä ö ß 漢", "a\"b;--", "%"}) {
        anlegen(name);
        anlegen("bleibt");
        loeschen(name);
        EXPECT_THAT(meldungen, IsEmpty()) << name;
        EXPECT_THAT(zeilenzahlen(name), testing::Each(0)) << name;
        EXPECT_THAT(zeilenzahlen("bleibt"), testing::Each(testing::Ge(1))) << name;
        loeschen("bleibt");
    }
}

TEST_F(SchemaloeschenTest, EinNameMitApostrophLoeschtNichts) {
    for (const std::string name : {"O'Brien", "x' OR 'a'='a"}) {
        bildLegen(name + "0L.bmp");
        const auto vorher = datei.inhalt();
        EXPECT_EQ(fehlernummer([&] { loeschen(name); }), 3075);
        EXPECT_THAT(meldungen, IsEmpty());
        EXPECT_EQ(datei.inhalt(), vorher);
    }
    EXPECT_EQ(bildnamen().size(), 2U);
}

TEST_F(SchemaloeschenTest, SperreSchreibschutzUndFehlendeDateiLassenAllesWieEsIst) {
    anlegen("S");
    bildLegen("S0L.bmp");
    const auto vorher = datei.inhalt();
    RoheVerbindung andere(datei.pfad());
    for (const std::string sperre : {"BEGIN IMMEDIATE", "BEGIN EXCLUSIVE"}) {
        andere.sql(sperre);
        EXPECT_EQ(fehlernummer([&] { loeschen("S"); }), 3218);
        andere.sql("COMMIT");
    }
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { loeschen("S"); }), 3027);
    EXPECT_EQ(fehlernummer([&] { SchemaLoeschen({datei.pfad() + ".fehlt", bilder(), ""}, "S", {}); }), 3024);
    EXPECT_EQ(datei.inhalt(), vorher);
    EXPECT_THAT(bildnamen(), ElementsAre("S0L.bmp"));
}

TEST_F(SchemaloeschenTest, DieSechsBilderGehenInJederSchreibungUndSonstKeines) {
    for (const std::string name : {"S0L.BMP", "s0r.bmp", "S1L.bmp", "S1R.bmp", "S2L.Bmp", "S2R.bmp"})
        bildLegen(name);
    for (const std::string name :
         {"S3L.bmp", "S0M.bmp", "S00L.bmp", "XS0L.bmp", "S0L.png", "Joy2.bmp", "0L.bmp"})
        bildLegen(name);
    StickBilderLoeschen(bilder(), "S");
    EXPECT_THAT(bildnamen(), UnorderedElementsAre("S3L.bmp", "S0M.bmp", "S00L.bmp", "XS0L.bmp", "S0L.png",
                                                  "Joy2.bmp", "0L.bmp"));
}

TEST_F(SchemaloeschenTest, WasSeineLaeufeGezaehltHabenGehtMitUndKeinAnderes) {
    const Streubilddateien dateien(datei.ordner() / "Streubilder");
    for (const auto* name : {"S", "s"}) {
        anlegen(name);
        ASSERT_TRUE(dateien.speichern(name, Stickseite::Links, 0, {}));
        ASSERT_TRUE(dateien.speichern(name, Stickseite::Rechts, 2, {}));
    }
    fragenUndLoeschen("S", false);
    EXPECT_EQ(namenIn(datei.ordner() / "Streubilder").size(), 4U);
    loeschen("S");
    EXPECT_FALSE(fs::exists(dateien.pfad("S", Stickseite::Links, 0)));
    EXPECT_FALSE(fs::exists(dateien.pfad("S", Stickseite::Rechts, 2)));
    EXPECT_TRUE(fs::exists(dateien.pfad("s", Stickseite::Links, 0)));
    EXPECT_TRUE(fs::exists(dateien.pfad("s", Stickseite::Rechts, 2)));
}

TEST_F(SchemaloeschenTest, FehlendeBilderSindKeinFehler) {
    anlegen("S");
    bildLegen("S0L.bmp");
    bildLegen("S2R.bmp");
    loeschen("S");
    EXPECT_THAT(meldungen, IsEmpty());
    EXPECT_THAT(bildnamen(), IsEmpty());
    fs::remove(datei.ordner() / "Bilder");
    anlegen("S");
    EXPECT_EQ(fehlernummer([&] { loeschen("S"); }), 0);
}

TEST_F(SchemaloeschenTest, EinBildDasNichtGehtHaeltDieAnderenNichtAuf) {
    bildLegen("S1L.bmp");
    fs::create_directories(datei.ordner() / "Bilder" / "S0L.bmp" / "voll");
    StickBilderLoeschen(bilder(), "S");
    EXPECT_THAT(bildnamen(), ElementsAre("S0L.bmp"));

    bildLegen("S1L.bmp");
    fs::permissions(datei.ordner() / "Bilder", fs::perms(0555));
    {
        const AlsNiemand niemand;
        StickBilderLoeschen(bilder(), "S");
    }
    fs::permissions(datei.ordner() / "Bilder", fs::perms::owner_all);
    EXPECT_TRUE(fs::exists(datei.ordner() / "Bilder" / "S1L.bmp"));
}

TEST_F(SchemaloeschenTest, EinNameMitTrennerVerlaesstDenBilderordnerNicht) {
    dateiSchreiben(datei.ordner() / "x0L.bmp", "");
    fs::create_directory(datei.ordner() / "Bilder" / "tief");
    dateiSchreiben(datei.ordner() / "Bilder" / "tief" / "x0L.bmp", "");
    for (const std::string name : {"../x", "..\\x", "tief/x", "tief\\x"}) {
        anlegen(name);
        loeschen(name);
        EXPECT_THAT(zeilenzahlen(name), testing::Each(0)) << name;
    }
    StickBilderLoeschen(bilder(), datei.ordner().string() + "/x");
    EXPECT_TRUE(fs::exists(datei.ordner() / "x0L.bmp"));
    EXPECT_TRUE(fs::exists(datei.ordner() / "Bilder" / "tief" / "x0L.bmp"));
}
