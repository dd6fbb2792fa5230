// SPDX-License-Identifier: GPL-3.0-or-later
// The run image of a stick, as it comes out of the database: lines, actions, lock, and the connection.
#include "engine/stick/StickTabellen.h"

#include "tests/hilfen/Dateirechte.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/Testdatenbank.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

using Texte = std::vector<std::string>;

Texte texte(const Linienliste& liste) {
    Texte alle;
    for (const auto& linie : liste)
        alle.push_back(linie.text());
    return alle;
}

class StickTabellenTest : public testing::TestWithParam<Stickseite> {
protected:
    std::string tabelle(const std::string& name, bool zwilling = false) const {
        return name + ((GetParam() == Stickseite::Rechts) != zwilling ? "R" : "");
    }
    Sticktabellen lesen(int ebene = 0, const std::string& name = "S") {
        return datenbank.tabellen(datei.pfad(), name, GetParam(), ebene);
    }
    int fehler(int ebene = 0, const std::string& name = "S") {
        return fehlernummer([&] { lesen(ebene, name); });
    }
    std::vector<Texte> linien(int ebene = 0) {
        std::vector<Texte> alle;
        for (const auto& liste : lesen(ebene).StickLinien)
            alle.push_back(texte(liste));
        return alle;
    }

    /// Lays rows 1 to 20 without any line.
    void leereZeilen(const std::string& name = "S") const {
        for (int i = 1; i <= 20; ++i)
            datei.sql("INSERT INTO " + tabelle("tblStick") + " (Schemaname, \"index\") VALUES ('" + name +
                      "', " + std::to_string(i) + ")");
    }
    void setze(int zeile, const std::string& zuweisung) const {
        datei.sql("UPDATE " + tabelle("tblStick") + " SET " + zuweisung +
                  " WHERE \"index\" = " + std::to_string(zeile));
    }
    void aktion(const std::string& werte, bool zwilling = false) const {
        datei.sql("INSERT INTO " + tabelle("tblStickAktion", zwilling) + " VALUES (" + werte + ")");
    }

    Testdatenbank datei;
    Stickdatenbank datenbank;
};

INSTANTIATE_TEST_SUITE_P(, StickTabellenTest, testing::Values(Stickseite::Links, Stickseite::Rechts),
                         [](const auto& fall) {
                             return fall.param == Stickseite::Links ? "Links" : "Rechts";
                         });

} // namespace

// --- lines ---

TEST_P(StickTabellenTest, EinSchemaOhneZeilenBekommtZwanzig) {
    aktion("'S', 0, 27072, 0, 0, 0, '3'");
    const std::vector<Texte> grundlinien{{"27072", ""}, {"38399", ""}, {"25941", ""}, {"39679", ""}};
    EXPECT_EQ(linien(), grundlinien);
    EXPECT_EQ(lesen().StickAktionen, ";27072000+3;");
    EXPECT_EQ(lesen().StickSperre, 0);
    EXPECT_EQ(linien(1), grundlinien);
    EXPECT_EQ(linien(2), grundlinien);
    EXPECT_EQ(datei.zeilen("SELECT count(*), min(\"index\"), max(\"index\"), sum(Links3) FROM " +
                           tabelle("tblStick") + " WHERE Schemaname = 'S'"),
              (Tabellenbild{{"20", "1", "20", "27072"}}));
    EXPECT_EQ(datei.zeilen("SELECT count(*) FROM " + tabelle("tblStick", true)), (Tabellenbild{{"0"}}))
        << "the twin is not touched";
}

TEST_P(StickTabellenTest, NurDasEigeneSchemaZaehlt) {
    leereZeilen("T");
    setze(1, "Links = 5000");
    EXPECT_EQ(linien().at(0), (Texte{"27072", ""}));
}

TEST_P(StickTabellenTest, LesenAendertNichts) {
    leereZeilen();
    setze(1, "Links = 20000");
    const auto vorher = datei.inhalt();
    lesen();
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_P(StickTabellenTest, JedeEbeneHatIhreSpalten) {
    leereZeilen();
    setze(1, "Links = 101, Rechts = 102, Oben = 103, Unten = 104, Links2 = 201, Rechts2 = 202, Oben2 = 203, "
             "Unten2 = 204, Links3 = 301, Rechts3 = 302, Oben3 = 303, Unten3 = 304");
    EXPECT_EQ(linien(0), (std::vector<Texte>{{"101", ""}, {"102", ""}, {"103", ""}, {"104", ""}}));
    EXPECT_EQ(linien(1), (std::vector<Texte>{{"201", ""}, {"202", ""}, {"203", ""}, {"204", ""}}));
    EXPECT_EQ(linien(2), (std::vector<Texte>{{"301", ""}, {"302", ""}, {"303", ""}, {"304", ""}}));
    EXPECT_EQ(linien(3), linien(0)) << "no suffix";
}

TEST_P(StickTabellenTest, DieLinienEinerRichtungSchliessenAuf) {
    leereZeilen();
    setze(1, "Links = 20000, Rechts = 45000");
    setze(2, "Oben = 20000");
    setze(3, "Links = 9000, Unten = 45000");
    setze(4, "Oben = 9000, Links = 4000");
    EXPECT_EQ(linien(),
              (std::vector<Texte>{
                  {"20000", "9000", "4000", ""}, {"45000", ""}, {"20000", "9000", ""}, {"45000", ""}}));
}

TEST_P(StickTabellenTest, NachDerErstenLeerenZeileWirdNurDieZwanzigsteGelesen) {
    leereZeilen();
    for (int i = 1; i <= 6; ++i)
        setze(i, "Links = " + std::to_string(20000 - 1000 * i));
    setze(8, "Links = 1000, Rechts = 'kein Wert', Unten = 1");
    setze(20, "Links = 5, Rechts = 'kein Wert'");
    EXPECT_EQ(linien().at(0), (Texte{"19000", "18000", "17000", "16000", "15000", "14000", ""}));
    EXPECT_EQ(lesen().StickSperre, 5);
}

TEST_P(StickTabellenTest, LeerIstEineZeileWennDieSpaltenDerEbeneEsSind) {
    leereZeilen();
    setze(1, "Links = 20000, Links2 = 20000");
    setze(2, "Links2 = 9000");
    setze(3, "Links = 8000, Links2 = 4000");
    EXPECT_EQ(linien(0).at(0), (Texte{"20000", ""}));
    EXPECT_EQ(linien(1).at(0), (Texte{"20000", "9000", "4000", ""}));
}

TEST_P(StickTabellenTest, EineLinieGenuegtDamitEineZeileNichtLeerIst) {
    for (const std::string richtung : {"Links", "Rechts", "Oben", "Unten"}) {
        datei.sql("DELETE FROM " + tabelle("tblStick"));
        leereZeilen();
        setze(1, richtung + " = 100");
        setze(2, "Links = 200");
        EXPECT_EQ(linien().at(0).size(), richtung == "Links" ? 3U : 2U) << richtung;
    }
}

TEST_P(StickTabellenTest, NeunzehnZeilenSindLinienDieZwanzigsteNicht) {
    leereZeilen();
    for (int i = 1; i <= 20; ++i)
        setze(i, "Rechts = " + std::to_string(40000 + i) + ", Links = 3");
    const auto alle = linien();
    EXPECT_EQ(alle.at(1).size(), 20U);
    EXPECT_EQ(alle.at(1).at(18), "40019");
    EXPECT_EQ(alle.at(1).back(), "");
    EXPECT_EQ(lesen().StickSperre, 3);
}

TEST_P(StickTabellenTest, DieSperreStehtInJederEbeneInLinks) {
    leereZeilen();
    setze(20, "Links = 6, Links2 = 1, Links3 = 2");
    for (const int ebene : {0, 1, 2})
        EXPECT_EQ(lesen(ebene).StickSperre, 6) << ebene;
}

TEST_P(StickTabellenTest, OhneLinienSindDieListenLeer) {
    leereZeilen();
    EXPECT_EQ(linien(), std::vector<Texte>(4));
}

TEST_P(StickTabellenTest, EineEinstelligeEinzigeLinieBehaeltIhrenStrichpunkt) {
    leereZeilen();
    setze(1, "Links = 9, Rechts = 10, Oben = 5, Unten = 65535");
    setze(2, "Oben = 3");
    EXPECT_EQ(linien(), (std::vector<Texte>{{"9;"}, {"10", ""}, {"5", "3", ""}, {"65535", ""}}));
}

// --- actions ---

TEST_P(StickTabellenTest, AktionenStehenNachLinksGeordnetSonstWieGespeichert) {
    leereZeilen();
    aktion("'S', 0, 20000, 0, 9000, 0, '0,0,5,10'");
    aktion("'S', 0, 0, 45000, 0, 52000, '1,0'");
    aktion("'S', 0, 9000, 0, 0, 0, '2,0,65,0,0'");
    aktion("'S', 0, 0, 0, 0, 0, '3'");
    EXPECT_EQ(lesen().StickAktionen, ";045000052000+1,0;0000+3;9000000+2,0,65,0,0;20000090000+0,0,5,10;");
}

TEST_P(StickTabellenTest, OhneAktionenIstDerTextLeer) {
    leereZeilen();
    EXPECT_EQ(lesen().StickAktionen, "");
}

TEST_P(StickTabellenTest, NurAktionenDesSchemasDerEbeneUndDesSticks) {
    leereZeilen();
    aktion("'T', 0, 1, 0, 0, 0, 'fremdes Schema'");
    aktion("'S', 1, 2, 0, 0, 0, 'Ebene 1'");
    aktion("'S', 2, 3, 0, 0, 0, 'Ebene 2'");
    aktion("'S', 0, 4, 0, 0, 0, 'Zwilling'", true);
    EXPECT_EQ(lesen(0).StickAktionen, "");
    EXPECT_EQ(lesen(1).StickAktionen, ";2000+Ebene 1;");
    EXPECT_EQ(lesen(2).StickAktionen, ";3000+Ebene 2;");
}

TEST_P(StickTabellenTest, EineAktionOhneTextIstLeer) {
    leereZeilen();
    aktion("'S', 0, 1, 0, 0, 0, NULL");
    aktion("'S', 0, 2, 0, 0, 0, ''");
    EXPECT_EQ(lesen().StickAktionen, ";1000+;2000+;");
}

// --- failures ---

TEST_P(StickTabellenTest, DieAktionenWerdenVorDenLinienGelesen) {
    leereZeilen();
    setze(1, "Links = 'kein Wert'");
    datei.sql("DROP TABLE " + tabelle("tblStickAktion"));
    EXPECT_EQ(fehler(), 3078) << "not 13";
}

TEST_P(StickTabellenTest, EinTextWoEineZahlHingehoertIstFehler13) {
    for (const auto& [zeile, spalte] : {std::pair{1, "Links"}, {1, "Unten"}, {2, "Oben"}, {20, "Links"}}) {
        datei.sql("DELETE FROM " + tabelle("tblStick"));
        leereZeilen();
        setze(1, "Rechts = 45000");
        setze(zeile, std::string(spalte) + " = 'x'");
        EXPECT_EQ(fehler(), 13) << zeile << spalte;
    }
}

TEST_P(StickTabellenTest, EineFehlendeZeileLiestSichWieNeuUndWirdGelegt) {
    const auto anzahl = [&] { return datei.zeilen("SELECT count(*) FROM " + tabelle("tblStick")); };
    for (const auto& [fehlende, links] : {std::pair{1, Texte{"27072", "9000", "8000", ""}},
                                          {2, Texte{"20000", ""}},
                                          {3, Texte{"20000", "9000", ""}},
                                          {20, Texte{"20000", "9000", "8000", ""}}}) {
        SCOPED_TRACE(fehlende);
        datei.sql("DELETE FROM " + tabelle("tblStick"));
        leereZeilen();
        setze(1, "Links = 20000");
        setze(2, "Links = 9000");
        setze(3, "Links = 8000");
        setze(20, "Links = 4");
        datei.sql("DELETE FROM " + tabelle("tblStick") + " WHERE \"index\" = " + std::to_string(fehlende));
        for (int mal = 0; mal < 2; ++mal) {
            EXPECT_EQ(linien().at(0), links);
            EXPECT_EQ(lesen().StickSperre, fehlende == 20 ? 0 : 4);
            EXPECT_EQ(anzahl(), (Tabellenbild{{"20"}}));
        }
    }
}

TEST_P(StickTabellenTest, EineZeileHinterDerErstenLeerenDarfFehlen) {
    leereZeilen();
    setze(1, "Links = 20000");
    datei.sql("DELETE FROM " + tabelle("tblStick") + " WHERE \"index\" BETWEEN 3 AND 19");
    EXPECT_EQ(linien().at(0), (Texte{"20000", ""}));
}

TEST_P(StickTabellenTest, EinNameMitApostrophErreichtDieDatenbankNicht) {
    const auto vorher = datei.inhalt();
    EXPECT_EQ(fehler(0, "a' OR '1'='1"), 3075);
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_P(StickTabellenTest, EineSchreibgeschuetzteDateiWirdGelesenAberNichtErgaenzt) {
    const auto vorher = datei.inhalt();
    EXPECT_EQ(
        fehlernummerNurLesend(datei,
                              [this] {
                                  EXPECT_EQ(linien().at(0), (Texte{"27072", ""})) << "plays with defaults";
                              }),
        0);
    EXPECT_EQ(datei.inhalt(), vorher);
    EXPECT_EQ(datenbank.ungelegt(GetParam()).value().nummer(), Fehlernummer::NurLesen);
    EXPECT_EQ(datenbank.ungelegt(GetParam() == Stickseite::Links ? Stickseite::Rechts : Stickseite::Links),
              std::nullopt);
    datenbank.laufBeginnt();
    EXPECT_EQ(datenbank.ungelegt(GetParam()), std::nullopt);
    lesen();
    EXPECT_NE(datei.inhalt(), vorher);
    EXPECT_EQ(datenbank.ungelegt(GetParam()), std::nullopt);
    datei.sql("DELETE FROM " + tabelle("tblStick"));
    leereZeilen();
    EXPECT_EQ(fehlernummerNurLesend(datei,
                                    [this] {
                                        Stickdatenbank eigene;
                                        eigene.tabellen(datei.pfad(), "S", GetParam(), 0);
                                    }),
              0);
}

TEST_P(StickTabellenTest, ImLaufWirdEinmalVersuchtZuLegenWasFehlt) {
    const auto zeilen = [&] { return datei.zeilen("SELECT count(*) FROM " + tabelle("tblStick")); };
    {
        RoheVerbindung anderes(datei.pfad());
        anderes.sql("BEGIN IMMEDIATE");
        EXPECT_EQ(linien().at(0), (Texte{"27072", ""}));
    }
    EXPECT_EQ(datenbank.ungelegt(GetParam()).value().nummer(), Fehlernummer::Gesperrt);
    lesen(1);
    EXPECT_EQ(zeilen(), (Tabellenbild{{"0"}})) << "nothing keeps them from being laid now";
    EXPECT_EQ(datenbank.ungelegt(GetParam()).value().nummer(), Fehlernummer::Gesperrt);
    datenbank.laufBeginnt();
    lesen();
    EXPECT_EQ(zeilen(), (Tabellenbild{{"20"}}));
}

TEST_P(StickTabellenTest, EineGesperrteDateiIstFehler3218UndDanachWiederLesbar) {
    leereZeilen();
    lesen();
    {
        RoheVerbindung anderes(datei.pfad());
        anderes.sql("BEGIN EXCLUSIVE");
        EXPECT_EQ(fehler(), 3218);
    }
    EXPECT_EQ(fehler(), 0);
}

// --- the connection ---

TEST_P(StickTabellenTest, JedesLadenSiehtDenStandVonJetzt) {
    leereZeilen();
    setze(1, "Links = 20000");
    EXPECT_EQ(linien().at(0), (Texte{"20000", ""}));
    setze(1, "Links = 19000"); // another program: the open connection does not keep it from writing
    EXPECT_EQ(linien().at(0), (Texte{"19000", ""}));
}

TEST(StickdatenbankTest, BleibtOffen) {
    const Testdatenbank datei;
    Stickdatenbank datenbank;
    auto& erste = datenbank.offen(datei.pfad());
    EXPECT_EQ(&datenbank.offen(datei.pfad()), &erste);
    std::filesystem::remove(datei.pfad());
    EXPECT_EQ(fehlernummer([&] { datenbank.offen(datei.pfad()).OpenRecordset("tblStick"); }), 0)
        << "it is not opened again";
}

TEST(StickdatenbankTest, EineErsetzteDateiWirdBeimNaechstenLaufGeoeffnet) {
    const Testdatenbank alte;
    const Testdatenbank neue;
    Schemabau(neue).sperre(Stickseite::Links, 0).ergaenzen();
    Stickdatenbank datenbank;
    const auto zeilen = [&] {
        return datenbank.offen(alte.pfad()).OpenRecordset("tblStick").get_RecordCount();
    };
    datenbank.laufBeginnt();
    EXPECT_EQ(zeilen(), 0);
    std::filesystem::rename(neue.pfad(), alte.pfad());
    EXPECT_EQ(zeilen(), 0) << "a run keeps to its file";
    datenbank.laufBeginnt();
    EXPECT_EQ(zeilen(), 1);
}

// A copy keeps the time of its original, so another file need not be of another time.
TEST(StickdatenbankTest, EineErsetzteDateiGleicherZeitWirdBeimNaechstenLaufGeoeffnet) {
    const Testdatenbank alte;
    const Testdatenbank neue;
    Schemabau(neue).sperre(Stickseite::Links, 0).ergaenzen();
    std::filesystem::last_write_time(neue.pfad(), std::filesystem::last_write_time(alte.pfad()));
    Stickdatenbank datenbank;
    datenbank.offen(alte.pfad());
    std::filesystem::rename(neue.pfad(), alte.pfad());
    datenbank.laufBeginnt();
    EXPECT_EQ(datenbank.offen(alte.pfad()).OpenRecordset("tblStick").get_RecordCount(), 1);
}

// Nor need it be another file: this one has another content, and what is known of its tables is of the old
// one.
TEST(StickdatenbankTest, EineUeberschriebeneDateiWirdBeimNaechstenLaufGeoeffnet) {
    const Testdatenbank alte;
    const Testdatenbank neue;
    neue.sql("DROP TABLE tblStick; CREATE TABLE tblStick (Neu)");
    Stickdatenbank datenbank;
    EXPECT_EQ(fehlernummer([&] { datenbank.offen(alte.pfad()).OpenRecordset("tblStick").get_Value("Neu"); }),
              3265);
    std::filesystem::copy_file(neue.pfad(), alte.pfad(), std::filesystem::copy_options::overwrite_existing);
    std::filesystem::last_write_time(alte.pfad(),
                                     std::filesystem::file_time_type::clock::now() + std::chrono::seconds(1));
    datenbank.laufBeginnt();
    EXPECT_EQ(fehlernummer([&] { datenbank.offen(alte.pfad()).OpenRecordset("tblStick").get_Value("Neu"); }),
              3021);
}

TEST(StickdatenbankTest, EineFehlendeDateiWirdBeimNaechstenLaufVermisst) {
    const Testdatenbank datei;
    Stickdatenbank datenbank;
    auto& offene = datenbank.offen(datei.pfad());
    datenbank.laufBeginnt();
    EXPECT_EQ(&datenbank.offen(datei.pfad()), &offene);
    std::filesystem::remove(datei.pfad());
    datenbank.laufBeginnt();
    EXPECT_EQ(fehlernummer([&] { datenbank.offen(datei.pfad()); }), 3024);
}

TEST(StickdatenbankTest, EinAndererPfadWirdGeoeffnet) {
    const Testdatenbank eine;
    const Testdatenbank andere;
    Schemabau(andere).sperre(Stickseite::Links, 0).ergaenzen();
    Stickdatenbank datenbank;
    EXPECT_EQ(datenbank.offen(eine.pfad()).OpenRecordset("tblStick").get_RecordCount(), 0);
    EXPECT_EQ(datenbank.offen(andere.pfad()).OpenRecordset("tblStick").get_RecordCount(), 1);
}

TEST(StickdatenbankTest, OhneDateiIstFehler3024UndDerNaechsteVersuchGeht) {
    const Testdatenbank datei;
    Stickdatenbank datenbank;
    EXPECT_EQ(fehlernummer([&] { datenbank.offen(datei.pfad() + ".fehlt"); }), 3024);
    EXPECT_EQ(fehlernummer([&] { datenbank.offen(datei.pfad()); }), 0);
}

// --- lists and lines as texts ---

TEST(LinienlisteTest, HatEineEndmarke) {
    EXPECT_EQ(texte(linienliste("")), Texte{});
    EXPECT_EQ(texte(linienliste("20000;")), (Texte{"20000", ""}));
    EXPECT_EQ(texte(linienliste("20000;9000;")), (Texte{"20000", "9000", ""}));
    EXPECT_TRUE(linienliste("20000;").back().endmarke());
}

TEST(LinienlisteTest, HatHoechstensEinStueckWenigerAlsZeichen) {
    EXPECT_EQ(texte(linienliste("5;")), (Texte{"5;"}));
    EXPECT_EQ(texte(linienliste("10;")), (Texte{"10", ""}));
    EXPECT_EQ(texte(linienliste("5;3;")), (Texte{"5", "3", ""}));
    EXPECT_EQ(texte(linienliste("5;3;1;")), (Texte{"5", "3", "1", ""}));
}

TEST(LinieTest, IstIhrTextAlsZahl) {
    EXPECT_EQ(Linie("20000").wert(), 20000);
    EXPECT_EQ(Linie("-5").wert(), -5);
    EXPECT_EQ(Linie("2147483647").wert(), 2147483647);
}

TEST(LinieTest, WasKeineLinieIstFaelltErstBeimVergleichenAuf) {
    EXPECT_EQ(fehlernummer([] { Linie("5;").wert(); }), 13);
    EXPECT_EQ(fehlernummer([] { Linie("").wert(); }), 13);
    EXPECT_EQ(fehlernummer([] { Linie("2147483648").wert(); }), 6);
    EXPECT_EQ(fehlernummer([] { return Linie("x").text(); }), 0);
}
