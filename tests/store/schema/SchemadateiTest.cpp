// SPDX-License-Identifier: GPL-3.0-or-later
// The file that hands a `Schema` on: what comes out is what went in, and what somebody else has made of one
// is refused with its reason.
#include "store/schema/Schemadatei.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/hilfen/Schemaplatzprobe.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

using testing::HasSubstr;

namespace {

class Schemadateitest : public testing::Test {
protected:
    Schemapaket paket(unsigned saat = 1) {
        Zufallsschema zufall(saat);
        Schemapaket eines{"Rennen", "Game-Pad-Konfic 1", zufall.daten(), {}};
        eines.bilder.push_back({0, Stickseite::Links, zufall.bytes(3000)});
        eines.bilder.push_back({2, Stickseite::Rechts, zufall.bytes(1)});
        return eines;
    }

    /// A file after somebody has been at it.
    std::string veraendert(std::string_view sql) {
        schemadateiSchreiben(pfad, paket());
        RoheVerbindung(pfad).sql(sql);
        return grund();
    }
    /// Why the file is refused; "" where it is not.
    std::string grund() {
        const auto vorher = dateiLesen(pfad);
        const auto warum = lesen();
        EXPECT_EQ(dateiLesen(pfad), vorher);
        return warum;
    }
    std::string lesen() const {
        try {
            schemadateiLesen(pfad);
        } catch (const LaufzeitFehler& fehler) {
            return fehler.what();
        }
        return "";
    }

    const Testordner ordner;
    const std::string pfad = (ordner.pfad() / "Rennen.schema").string();
};

} // namespace

TEST_F(Schemadateitest, TausendKommenWiederWieSieWaren) {
    for (unsigned saat = 0; saat < 1000 && !HasFailure(); ++saat) {
        const auto eines = paket(saat);
        EXPECT_EQ(schemadateiAus(schemadateiInhalt(eines)), eines) << "seed " << saat;
    }
}

TEST_F(Schemadateitest, TraegtIhrenStempel) {
    schemadateiSchreiben(pfad, paket());
    RoheVerbindung roh(pfad);
    EXPECT_EQ(roh.zeilen("PRAGMA application_id"), Tabellenbild{{std::to_string(0x47506B53)}});
    EXPECT_EQ(roh.zeilen("PRAGMA user_version"), Tabellenbild{{"1"}});
    EXPECT_EQ(roh.zeilen("PRAGMA integrity_check"), Tabellenbild{{"ok"}});
    EXPECT_EQ(roh.zeilen("SELECT * FROM Angaben"), (Tabellenbild{{"Rennen", "Game-Pad-Konfic 1"}}));
}

TEST_F(Schemadateitest, ErsetztEineAlteUndLaesstSieWoDasNichtGeht) {
    dateiSchreiben(pfad, "alt");
    schemadateiSchreiben(pfad, paket());
    EXPECT_EQ(schemadateiLesen(pfad), paket());
    const auto vorher = dateiLesen(pfad);
    chmod(pfad.c_str(), 0444);
    EXPECT_EQ(fehlernummer([&] { schemadateiSchreiben(pfad, paket(2)); }), 3043);
    EXPECT_EQ(dateiLesen(pfad), vorher);
    EXPECT_EQ(namenIn(ordner.pfad()).size(), 1U);
}

TEST_F(Schemadateitest, WasKeineIstWirdGesagt) {
    EXPECT_THAT(grund(), HasSubstr("gibt es nicht"));
    for (const std::string inhalt : {"", "Bild", "SQLite format 3"}) {
        dateiSchreiben(pfad, inhalt);
        EXPECT_THAT(grund(), HasSubstr("keine Schema-Datei")) << inhalt;
    }
    dateiSchreiben(pfad, dateiLesen(Testdatenbank().pfad()));
    EXPECT_THAT(grund(), HasSubstr("ganze Datenbank"));
    EXPECT_THAT(veraendert("PRAGMA application_id = 7"), HasSubstr("keine Schema-Datei"));
    EXPECT_THAT(veraendert("PRAGMA user_version = 2"), HasSubstr("neueren Version"));
    EXPECT_THAT(veraendert("PRAGMA user_version = -1"), HasSubstr("neueren Version"));
    EXPECT_THAT(veraendert("PRAGMA user_version = 0"), HasSubstr("keine Schema-Datei"));
    EXPECT_THAT(veraendert("PRAGMA journal_mode = WAL"), HasSubstr("(WAL)"));
    EXPECT_THAT(veraendert("PRAGMA application_id = 7; PRAGMA journal_mode = WAL"),
                HasSubstr("keine Schema-Datei"));
}

TEST_F(Schemadateitest, WasKeineDateiIstHaeltNichtAuf) {
    std::filesystem::create_directory(pfad);
    EXPECT_EQ(lesen(), "Das ist keine Datei.");
    std::filesystem::remove(pfad);
    ASSERT_EQ(mkfifo(pfad.c_str(), 0600), 0);
    EXPECT_EQ(lesen(), "Das ist keine Datei."); // and does not wait for somebody who writes
    std::filesystem::remove(pfad);
    std::filesystem::create_symlink("/dev/zero", pfad);
    EXPECT_EQ(lesen(), "Das ist keine Datei.");
    std::filesystem::remove(pfad);
    std::filesystem::create_symlink(pfad, pfad);
    EXPECT_EQ(lesen(), "Die Datei lässt sich nicht öffnen.");
}

TEST_F(Schemadateitest, EineBeschaedigteSagtEsAufDeutsch) {
    schemadateiSchreiben(pfad, paket());
    const auto heil = dateiLesen(pfad);
    dateiSchreiben(pfad, heil.substr(0, heil.size() / 2));
    EXPECT_EQ(grund(), "Die Datei ist beschädigt (ihre Tabellen lassen sich nicht lesen).");
    dateiSchreiben(pfad, heil.substr(0, 100) + std::string(heil.size() - 100, 'x'));
    EXPECT_EQ(grund(), "Die Datei ist beschädigt (ihre Tabellen lassen sich nicht lesen).");
}

TEST_F(Schemadateitest, EineZuGrosseWirdNichtGelesen) {
    schemadateiSchreiben(pfad, paket());
    std::filesystem::resize_file(pfad, GROESSTE_SCHEMADATEI);
    EXPECT_THAT(lesen(), testing::Not(HasSubstr("zu groß")));
    std::filesystem::resize_file(pfad, GROESSTE_SCHEMADATEI + 1);
    EXPECT_THAT(lesen(), HasSubstr("zu groß"));
}

TEST_F(Schemadateitest, WasInIhrLaufenWillLaeuftNicht) {
    // A table that cannot be had without running something.
    EXPECT_THAT(
        veraendert("DROP TABLE Angaben; CREATE VIEW Angaben AS SELECT 'x' AS Schema, 'y' AS Programm"),
        HasSubstr("keine gewöhnliche Tabelle"));
    EXPECT_THAT(
        veraendert("ALTER TABLE Angaben DROP COLUMN Programm; ALTER TABLE Angaben ADD COLUMN Programm "
                   "AS (upper(Schema))"),
        HasSubstr("berechnete Spalten"));
    EXPECT_THAT(veraendert("DROP TABLE Angaben; CREATE TABLE Angaben (Schema PRIMARY KEY, Programm) WITHOUT "
                           "ROWID; INSERT INTO Angaben VALUES ('a', 'b')"),
                HasSubstr("keine gewöhnliche Tabelle"));
    // What stands beside is passed over.
    EXPECT_EQ(
        veraendert("CREATE VIEW mehr AS SELECT 1; CREATE TABLE fremd (a); CREATE TRIGGER t BEFORE INSERT "
                   "ON Angaben BEGIN DELETE FROM Angaben; END; ALTER TABLE Angaben ADD COLUMN neu"),
        "");
}

TEST_F(Schemadateitest, WasFehltOderZuVielIstWirdGesagt) {
    EXPECT_THAT(veraendert("DROP TABLE Bilder"), HasSubstr("„Bilder“ fehlt"));
    EXPECT_THAT(veraendert("ALTER TABLE tblStick RENAME COLUMN Links3 TO x"), HasSubstr("Spalte „Links3“"));
    EXPECT_THAT(veraendert("DELETE FROM Angaben"), HasSubstr("„Angaben“ ist leer"));
    EXPECT_THAT(veraendert("UPDATE Angaben SET Schema = ''"), HasSubstr("Namen"));
    EXPECT_EQ(veraendert("UPDATE Angaben SET Schema = printf('%.1000c', 'a')"), "");
    EXPECT_THAT(veraendert("UPDATE Angaben SET Schema = printf('%.1001c', 'a')"), HasSubstr("Namen"));
    EXPECT_EQ(veraendert("UPDATE Angaben SET Programm = printf('%.1000000c', 'a')"), "");
    EXPECT_EQ(veraendert("UPDATE Angaben SET Programm = printf('%.1000001c', 'a')"),
              "In der Tabelle „Angaben“ steht unter „Programm“ ein Text, der zu lang ist.");
    EXPECT_THAT(veraendert("INSERT INTO Angaben VALUES ('a', 'b')"), HasSubstr("zu viele Zeilen"));
    EXPECT_THAT(veraendert("DELETE FROM tblTastatur"), HasSubstr("tblTastatur"));
    EXPECT_THAT(veraendert("INSERT INTO Bilder SELECT * FROM Bilder"), HasSubstr("zweimal"));
    EXPECT_THAT(veraendert("UPDATE Bilder SET Ebene = 3"), HasSubstr("kein Bild"));
    EXPECT_THAT(veraendert("UPDATE Bilder SET Ebene = -1"), HasSubstr("kein Bild"));
    EXPECT_THAT(veraendert("UPDATE Bilder SET Ebene = 'x' WHERE Ebene = 0"), HasSubstr("kein Bild"));
    EXPECT_THAT(veraendert("UPDATE Bilder SET Stick = 'x'"), HasSubstr("kein Bild"));
    EXPECT_THAT(veraendert("UPDATE Bilder SET PNG = 'x'"), HasSubstr("kein Bild"));
    EXPECT_THAT(veraendert("UPDATE Bilder SET PNG = zeroblob(64 * 1024 * 1024 + 1) WHERE Ebene = 0"),
                HasSubstr("Bild ist zu groß"));
}

TEST_F(Schemadateitest, JederWertWirdGeprueft) {
    EXPECT_THAT(veraendert("UPDATE tblTastatur SET btn3 = '1,65'"),
                HasSubstr("Kreuz auf der Ebene Standart"));
    EXPECT_THAT(veraendert("UPDATE tblTastatur SET btn1003 = '1,65'"),
                HasSubstr("Kreuz auf der Ebene Umschalt 2"));
    EXPECT_THAT(veraendert("UPDATE tblSteuerKreuz SET Links2 = 'x'"),
                HasSubstr("Links auf der Ebene Umschalt 1"));
    EXPECT_THAT(veraendert("UPDATE tblTastatur SET Funktion = 32768"), HasSubstr("Funktion"));
    EXPECT_THAT(veraendert("UPDATE tblTastatur SET Programmpfad = x'00'"), HasSubstr("weder Zahl noch Text"));
    EXPECT_THAT(veraendert("UPDATE tblTastatur SET Programmpfad = cast(x'ff' AS TEXT)"),
                HasSubstr("weder Zahl noch Text"));
    EXPECT_THAT(veraendert("UPDATE tblTastatur SET Funktion = 1.5"), HasSubstr("weder Zahl noch Text"));
    EXPECT_THAT(veraendert("UPDATE tblTastatur SET Programmpfad = printf('%.5000c', 'a')"),
                HasSubstr("zu lang"));
    EXPECT_THAT(veraendert("UPDATE tblStick SET \"index\" = 21 WHERE \"index\" = 1"), HasSubstr("Zeile 21"));
    EXPECT_THAT(veraendert("UPDATE tblStick SET \"index\" = 0 WHERE \"index\" = 1"), HasSubstr("Zeile 0"));
    EXPECT_THAT(veraendert("UPDATE tblStick SET \"index\" = 2"), HasSubstr("Zeile 2"));
    EXPECT_THAT(veraendert("UPDATE tblStick SET Links = 2147483648"), HasSubstr("tblStick, Spalte Links"));
    EXPECT_THAT(veraendert("UPDATE tblStick SET Oben2 = NULL"), HasSubstr("fehlt eine Zahl"));
    const std::string neue = "INSERT INTO tblStickAktionR VALUES ";
    EXPECT_THAT(veraendert(neue + "(0, 0, 0, 0, 0, '2,0')"), HasSubstr("Rechter Stick: „2,0“"));
    EXPECT_THAT(veraendert(neue + "(3, 0, 0, 0, 0, '3')"), HasSubstr("Ebene 3 gibt es nicht"));
    EXPECT_THAT(veraendert(neue + "(-1, 0, 0, 0, 0, '3')"), HasSubstr("Ebene -1 gibt es nicht"));
    EXPECT_THAT(
        veraendert("INSERT INTO tblStickAktion SELECT 0, 1, 0, 0, 0, '3' FROM (WITH RECURSIVE n(i) AS "
                   "(SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10001) SELECT i FROM n)"),
        HasSubstr("zu viele Zeilen"));
    EXPECT_THAT(veraendert("DELETE FROM Achsen; INSERT INTO Achsen (dwXPos) VALUES ('oben')"),
                HasSubstr("keine Achse"));
    EXPECT_THAT(veraendert("DELETE FROM Achsen; INSERT INTO Achsen (Schubregler) VALUES ('x')"),
                HasSubstr("kein Text eines Schubreglers"));
}

TEST_F(Schemadateitest, WasNichtAufgenommenWuerdeWirdNichtWeitergegeben) {
    auto eines = paket();
    eines.daten.zeilen[schematabelle::TASTATUR][0][0] = std::string("1,65");
    EXPECT_EQ(fehlernummer([&] { schemadateiSchreiben(pfad, eines); }), 13);
    EXPECT_FALSE(std::filesystem::exists(pfad));
    eines = paket();
    eines.bilder[0].png.assign((std::size_t{64} << 20) + 1, 'x');
    EXPECT_EQ(fehlernummer([&] { schemadateiInhalt(eines); }), 13);
}

TEST_F(Schemadateitest, EbenenSindBenutztWoEtwasGeschieht) {
    using namespace schematabelle;
    Schemadaten daten;
    daten.zeilen[TASTATUR].emplace_back(schematabellen()[TASTATUR].spalten.size());
    EXPECT_EQ(benutzteEbenen(daten), (std::array<bool, 3>{false, false, false}));
    for (const auto* nichts : {"10,0,0-0-0", "10,65,3-1-1", "leer", ""}) {
        daten.zeilen[TASTATUR][0][0] = std::string(nichts);
        EXPECT_EQ(benutzteEbenen(daten), (std::array<bool, 3>{false, false, false})) << nichts;
    }
    daten.zeilen[TASTATUR][0][13] = std::string("1,65,0-0-0"); // btn101
    EXPECT_EQ(benutzteEbenen(daten), (std::array<bool, 3>{false, true, false}));
    const std::int64_t zwei = 2;
    const std::int64_t null = 0;
    daten.zeilen[STICKAKTION_R].push_back({zwei, null, null, null, null, std::string("3")});
    EXPECT_EQ(benutzteEbenen(daten), (std::array<bool, 3>{false, true, false}));
    daten.zeilen[STICKAKTION_R].push_back({zwei, null, null, null, null, std::string("4")});
    EXPECT_EQ(benutzteEbenen(daten), (std::array<bool, 3>{false, true, true}));
}
