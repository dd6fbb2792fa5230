// SPDX-License-Identifier: GPL-3.0-or-later
// Files that are made to hold the program up: pages that lead on without an end, values larger than any file,
// columns that are computed while they are read.
#include "store/db/Datenbank.h"
#include "store/schema/modLesen.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Schemabau.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

constexpr std::size_t SEITE = 512;

std::string zahl(std::size_t bytes, std::size_t wert) {
    std::string text;
    for (; bytes > 0; --bytes)
        text += static_cast<char>(wert >> (8 * (bytes - 1)) & 0xFF);
    return text;
}

/// A page of a table's tree that leads `zweige` times to the page `unten`, by SQLite's file format.
std::string astseite(std::size_t zweige, std::size_t unten) {
    constexpr std::size_t ZELLE = 5; // the number of a page, a row id
    std::string seite =
        "\x05" + zahl(2, 0) + zahl(2, zweige) + zahl(2, SEITE - zweige * ZELLE) + zahl(1, 0) + zahl(4, unten);
    for (std::size_t i = 0; i < zweige; ++i)
        seite += zahl(2, SEITE - (i + 1) * ZELLE);
    seite.resize(SEITE - zweige * ZELLE);
    for (std::size_t i = 0; i < zweige; ++i)
        seite += zahl(4, unten) + zahl(1, 1);
    return seite;
}

/// A file with the table `name`, whose tree leads to its rows again and again: eight floors of pages, each of
/// which leads seventy times to the next one.
class Irrgarten {
public:
    explicit Irrgarten(const std::string& name) {
        datei.sql("PRAGMA page_size = 512; VACUUM;");
        Schemabau(datei).anlegen();
        const auto wurzel =
            std::stoul(datei.zeilen("SELECT rootpage FROM sqlite_schema WHERE name = '" + name + "'")[0][0]);
        auto inhalt = dateiLesen(datei.pfad());
        const auto bisher = inhalt.size() / SEITE;
        const auto blatt = inhalt.substr((wurzel - 1) * SEITE, SEITE);
        constexpr std::size_t STOCKWERKE = 8;
        constexpr std::size_t ZWEIGE = 70;
        for (std::size_t stockwerk = 1; stockwerk < STOCKWERKE; ++stockwerk)
            inhalt += astseite(ZWEIGE, bisher + stockwerk + 1);
        inhalt += blatt;
        inhalt.replace((wurzel - 1) * SEITE, SEITE, astseite(ZWEIGE, bisher + 1));
        constexpr std::size_t SEITENZAHL = 28;
        inhalt.replace(SEITENZAHL, 4, zahl(4, bisher + STOCKWERKE));
        dateiSchreiben(datei.pfad(), inhalt);
    }

    Testdatenbank datei;
};

int oeffnen(const Testdatenbank& datei, std::string_view source) {
    Database datenbank = OpenDatabase(datei.pfad());
    return fehlernummer([&] { datenbank.OpenRecordset(source); });
}

} // namespace

TEST(Schutz, MehrZeilenAlsInDieDateiPassenSindEinSchaden) {
    const Irrgarten irrgarten("Sensible");
    irrgarten.datei.sql("SELECT 1"); // it opens
    EXPECT_EQ(oeffnen(irrgarten.datei, "tblTastatur"), 0);
    const Irrgarten voll("tblTastatur");
    EXPECT_EQ(oeffnen(voll.datei, "tblTastatur"), 3049);
}

TEST(Schutz, EineSucheOhneEndeWirdAbgebrochen) {
    const Irrgarten irrgarten("tblTastatur");
    EXPECT_EQ(oeffnen(irrgarten.datei, "SELECT * FROM tblTastatur WHERE (tblTastatur.Funktion)= 9;"), 3049);
    // The connection goes on.
    Database datenbank = OpenDatabase(irrgarten.datei.pfad());
    EXPECT_EQ(fehlernummer([&] {
                  datenbank.OpenRecordset("SELECT * FROM tblTastatur WHERE (tblTastatur.Funktion)= 9;");
              }),
              3049);
    EXPECT_FALSE(datenbank.OpenRecordset("tblSteuerKreuz").get_EOF());
}

TEST(Schutz, VieleZeilenSindKeinSchaden) {
    const Testdatenbank datei;
    datei.sql("WITH RECURSIVE z(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM z WHERE i < 60000)"
              " INSERT INTO tblStickAktion SELECT 'S', 0, 0, 0, 0, 0, '3' FROM z;");
    Database datenbank = OpenDatabase(datei.pfad());
    EXPECT_EQ(datenbank.OpenRecordset("tblStickAktion").get_RecordCount(), 60000);
    datei.sql("DROP INDEX tblStickAktion_Ebene; CREATE TABLE kurz (a); INSERT INTO kurz"
              " SELECT NULL FROM tblStickAktion; DELETE FROM tblStickAktion; VACUUM;");
    EXPECT_EQ(datenbank.OpenRecordset("kurz").get_RecordCount(), 60000);
}

TEST(Schutz, JedeSucheHatIhrEigenesEnde) {
    const Testdatenbank datei;
    datei.sql("WITH RECURSIVE z(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM z WHERE i < 60000)"
              " INSERT INTO tblStickAktion SELECT 'S', 0, 0, 0, 0, 0, '3' FROM z;");
    Database datenbank = OpenDatabase(datei.pfad());
    // Together they take several times what one may.
    for (int suche = 0; suche < 200; ++suche)
        ASSERT_EQ(fehlernummer([&] {
                      datenbank.OpenRecordset(
                          "SELECT * FROM tblStickAktion WHERE (tblStickAktion.Links)= 9;");
                  }),
                  0)
            << suche;
}

TEST(Schutz, EinWertGroesserAlsJederGespeicherteIstEinSchaden) {
    const Testdatenbank datei;
    Schemabau(datei).anlegen();
    datei.sql("UPDATE tblTastatur SET btn2 = printf('%.*c', 400000, 'x')");
    EXPECT_EQ(TastenLaufLesen(datei.pfad(), "S")[0][1].size(), 400'000U);
    datei.sql("UPDATE tblTastatur SET btn2 = printf('%.*c', 1000001, 'x')");
    EXPECT_EQ(fehlernummer([&] { TastenLaufLesen(datei.pfad(), "S"); }), 3049);
}

TEST(Schutz, BerechneteSpaltenWerdenNichtGelesen) {
    const Testdatenbank datei;
    datei.sql("DROP TABLE tblKeyCode; CREATE TABLE tblKeyCode (Keyc TEXT, Keye TEXT AS (upper(Keyc)));"
              "INSERT INTO tblKeyCode VALUES ('a')");
    try {
        OpenDatabase(datei.pfad()).OpenRecordset("tblKeyCode");
        FAIL();
    } catch (const LaufzeitFehler& fehler) {
        EXPECT_EQ(fehler.zahl(), 3078);
        EXPECT_THAT(fehler.what(), HasSubstr("berechnete Spalten"));
    }
}

TEST(Schutz, TabellenDieEinModulVorgibtGibtEsNicht) {
    const Testdatenbank datei;
    datei.sql("DROP TABLE tblKeyCode; CREATE VIRTUAL TABLE tblKeyCode USING fts5(Keyc, Keye)");
    EXPECT_EQ(oeffnen(datei, "tblKeyCode"), 3078);
}

TEST(Schutz, EineRegelDieVielVerlangtVerlangtSieVergebens) {
    const Testdatenbank datei;
    datei.sql("CREATE TABLE regel (a TEXT CHECK (length(hex(zeroblob(400000000))) > 0))");
    Database datenbank = OpenDatabase(datei.pfad());
    auto satz = datenbank.OpenRecordset("regel");
    EXPECT_NE(fehlernummer([&] {
                  satz.AddNew();
                  satz.put_Value("a", "x");
                  satz.Update();
              }),
              0);
    EXPECT_TRUE(datenbank.OpenRecordset("regel").get_EOF());
}
