// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Sicherungen.h"

#include "base/LaufzeitFehler.h"
#include "store/files/Achsendatei.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr Sicherungstag HEUTE{2026, 11, 22};
constexpr Sicherungstag MORGEN{2026, 11, 23};

class SicherungenTest : public testing::Test {
protected:
    SicherungenTest() { datenbank.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('Eins')"); }
    void achsendatei(const std::string& text) const { dateiSchreiben(gamepadXml, text); }
    std::string gueltigeAchsendatei() const {
        const std::string schema = "Eins";
        Achsendatei(gamepadXml, schema).GamepadAnlegen();
        return dateiLesen(gamepadXml);
    }
    std::vector<std::string> liegende() const {
        std::vector<std::string> namen;
        std::error_code keiner;
        for (const auto& datei : std::filesystem::directory_iterator(sicherungen.ordner(), keiner))
            namen.push_back(datei.path().filename().string());
        std::ranges::sort(namen);
        return namen;
    }
    std::string gesichertes(const std::string& name) const { return (sicherungen.ordner() / name).string(); }
    std::string schemaIn(const std::string& datei) const {
        return RoheVerbindung(datei).zeilen("SELECT Schemaname FROM tblTastatur").at(0).at(0);
    }
    void beschaedigen() const {
        std::string inhalt = dateiLesen(datenbank.pfad());
        inhalt.replace(1024, inhalt.size() - 1024, inhalt.size() - 1024, 'x');
        dateiSchreiben(datenbank.pfad(), inhalt);
    }

    Testdatenbank datenbank;
    std::string gamepadXml = (datenbank.ordner() / "Gamepad.xml").string();
    Sicherungen sicherungen{datenbank.pfad(), gamepadXml};
};

TEST_F(SicherungenTest, DieErsteDesTagesHaeltBeideDateienWieSieSind) {
    const auto achsen = gueltigeAchsendatei();
    sicherungen.sichern(HEUTE);
    EXPECT_THAT(liegende(), ElementsAre("Belegung 2026-11-22.twk", "Gamepad 2026-11-22.xml"));
    EXPECT_EQ(schemaIn(gesichertes("Belegung 2026-11-22.twk")), "Eins");
    EXPECT_EQ(dateiLesen(gesichertes("Gamepad 2026-11-22.xml")), achsen);
    datenbank.sql("UPDATE tblTastatur SET Schemaname = 'Zwei'");
    achsendatei(std::string(achsen).replace(achsen.find("Eins"), 4, "Zwei"));
    sicherungen.sichern(HEUTE);
    EXPECT_EQ(schemaIn(gesichertes("Belegung 2026-11-22.twk")), "Eins") << "that of the morning stays";
    EXPECT_EQ(dateiLesen(gesichertes("Gamepad 2026-11-22.xml")), achsen);
    sicherungen.sichern(MORGEN);
    EXPECT_EQ(schemaIn(gesichertes("Belegung 2026-11-23.twk")), "Zwei");
}

TEST_F(SicherungenTest, WasSichNichtGeaendertHatWirdNichtNocheinmalGesichert) {
    sicherungen.sichern(HEUTE);
    sicherungen.sichern(MORGEN);
    EXPECT_THAT(liegende(), ElementsAre("Belegung 2026-11-22.twk"));
}

TEST_F(SicherungenTest, EineMitVorlaufIstInDerSicherungGanz) {
    RoheVerbindung offen(datenbank.pfad());
    offen.sql("PRAGMA journal_mode = WAL");
    offen.sql("UPDATE tblTastatur SET Schemaname = 'ImVorlauf'");
    sicherungen.sichern(HEUTE);
    EXPECT_EQ(schemaIn(gesichertes("Belegung 2026-11-22.twk")), "ImVorlauf");
    EXPECT_TRUE(sicherungen.neuesteGute(Gesichertes::Datenbank, MORGEN));
}

TEST_F(SicherungenTest, EineGesperrteWirdNichtHalbGesichert) {
    RoheVerbindung anderes(datenbank.pfad());
    anderes.sql("BEGIN EXCLUSIVE");
    EXPECT_EQ(fehlernummer([&] { sicherungen.sichern(HEUTE); }), 3218);
    EXPECT_THAT(liegende(), IsEmpty());
}

TEST_F(SicherungenTest, BeschaedigtesWirdNichtGesichert) {
    achsendatei("<xml");
    beschaedigen();
    EXPECT_EQ(fehlernummer([&] { sicherungen.sichern(HEUTE); }), 3049);
    EXPECT_THAT(liegende(), IsEmpty());
    EXPECT_TRUE(sicherungen.achsendateiBeschaedigt());
}

TEST_F(SicherungenTest, EineBeschaedigteAchsendateiHaeltDieDatenbankNichtAuf) {
    achsendatei("<xml");
    sicherungen.sichern(HEUTE);
    EXPECT_THAT(liegende(), ElementsAre("Belegung 2026-11-22.twk"));
}

TEST_F(SicherungenTest, WasKeineDateiIstHaeltNichtAuf) {
    ASSERT_EQ(mkfifo(gamepadXml.c_str(), 0600), 0);
    sicherungen.sichern(HEUTE);
    EXPECT_THAT(liegende(), ElementsAre("Belegung 2026-11-22.twk"));
    EXPECT_FALSE(sicherungen.achsendateiBeschaedigt());
}

TEST_F(SicherungenTest, AuchEinFehlerInEinerSeiteDieNiemandLiestIstEiner) {
    for (int i = 0; i < 300; ++i)
        datenbank.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('S" + std::to_string(i) + "')");
    std::string inhalt = dateiLesen(datenbank.pfad());
    inhalt.replace(inhalt.size() - 4096, 4096, 4096, '\xff');
    dateiSchreiben(datenbank.pfad(), inhalt);
    EXPECT_EQ(fehlernummer([&] { sicherungen.sichern(HEUTE); }), 3049);
}

TEST_F(SicherungenTest, BehaltenWerdenZehnUndJeDerErsteDerLetztenSechsMonate) {
    std::set<Sicherungstag> alle;
    for (int monat = 1; monat <= 11; ++monat)
        for (int tag = 3; tag <= 28; ++tag)
            alle.insert({2026, monat, tag});
    std::set<Sicherungstag> erwartet;
    for (int tag = 19; tag <= 28; ++tag)
        erwartet.insert({2026, 11, tag});
    for (int monat = 6; monat <= 11; ++monat)
        erwartet.insert({2026, monat, 3});
    EXPECT_EQ(zuBehalten(alle, {2026, 11, 28}), erwartet);
    EXPECT_EQ(zuBehalten({}, HEUTE), std::set<Sicherungstag>{});
    EXPECT_EQ(zuBehalten({{2025, 12, 31}, {2026, 1, 1}}, {2026, 1, 1}),
              (std::set<Sicherungstag>{{2025, 12, 31}, {2026, 1, 1}}));
}

// As after months with a clock that stood still in 2000, or ran ahead.
TEST_F(SicherungenTest, WasEineFalscheUhrInDieZukunftSchriebIstDasAelteste) {
    std::set<Sicherungstag> kommende;
    for (int monat = 1; monat <= 12; ++monat)
        for (int tag = 1; tag <= 20; ++tag)
            kommende.insert({2099, monat, tag});
    auto alle = kommende;
    alle.insert(HEUTE);
    auto bleiben = zuBehalten(alle, HEUTE);
    EXPECT_TRUE(bleiben.contains(HEUTE));
    EXPECT_EQ(bleiben.size(), 1U + 9U + 5U);
    for (int tag = 1; tag <= 22; ++tag)
        alle.insert({2026, 11, tag});
    bleiben = zuBehalten(alle, HEUTE);
    for (int tag = 13; tag <= 22; ++tag)
        EXPECT_TRUE(bleiben.contains({2026, 11, tag})) << tag;
    EXPECT_TRUE(bleiben.contains({2026, 11, 1}));
    EXPECT_EQ(bleiben.size(), 11U + 5U) << "months of the future";

    sicherungen.sichern({2099, 1, 1});
    datenbank.sql("UPDATE tblTastatur SET Schemaname = 'Zwei'");
    sicherungen.sichern(HEUTE);
    datenbank.sql("UPDATE tblTastatur SET Schemaname = 'Eins'");
    sicherungen.sichern(MORGEN);
    EXPECT_EQ(liegende().size(), 3U) << "the one of the future is not the one before";
    EXPECT_EQ(sicherungen.neuesteGute(Gesichertes::Datenbank, MORGEN)->tag, MORGEN);
    std::filesystem::remove(gesichertes("Belegung 2026-11-22.twk"));
    std::filesystem::remove(gesichertes("Belegung 2026-11-23.twk"));
    EXPECT_EQ(sicherungen.neuesteGute(Gesichertes::Datenbank, MORGEN)->tag, (Sicherungstag{2099, 1, 1}));
}

TEST_F(SicherungenTest, AltesGehtFremdesBleibt) {
    std::filesystem::create_directory(sicherungen.ordner());
    for (const auto* fremde :
         {"Belegung 2026-1-01.twk", "Belegung 2026-01-01.twk.bak", "Notizen.txt", "Belegung von Oma.twk"})
        dateiSchreiben(gesichertes(fremde), "fremd");
    for (int tag = 1; tag <= 20; ++tag) {
        datenbank.sql("UPDATE tblTastatur SET Schemaname = 'S" + std::to_string(tag) + "'");
        sicherungen.sichern({2026, 1, tag});
    }
    EXPECT_EQ(liegende().size(), 4U + 11U);
    EXPECT_TRUE(std::filesystem::exists(gesichertes("Belegung 2026-01-01.twk"))) << "the first of its month";
    EXPECT_FALSE(std::filesystem::exists(gesichertes("Belegung 2026-01-10.twk")));
    EXPECT_EQ(dateiLesen(gesichertes("Notizen.txt")), "fremd");
}

TEST_F(SicherungenTest, DieNeuesteGuteIstDieNeuesteDieSichLesenLaesst) {
    EXPECT_FALSE(sicherungen.neuesteGute(Gesichertes::Datenbank, MORGEN));
    gueltigeAchsendatei();
    sicherungen.sichern(HEUTE);
    dateiSchreiben(gesichertes("Belegung 2026-11-23.twk"), std::string(4096, 'x'));
    dateiSchreiben(gesichertes("Gamepad 2026-11-23.xml"), "<xml");
    EXPECT_EQ(sicherungen.neuesteGute(Gesichertes::Datenbank, MORGEN)->tag, HEUTE);
    EXPECT_EQ(sicherungen.neuesteGute(Gesichertes::Achsendatei, MORGEN)->tag, HEUTE);
}

TEST_F(SicherungenTest, ZurueckgesichertesTrittAnDieStelleUndDasBeschaedigteBleibtLiegen) {
    sicherungen.sichern(HEUTE);
    beschaedigen();
    const auto kaputte = dateiLesen(datenbank.pfad());
    for (const auto* beifile : {"-journal", "-wal", "-shm"})
        dateiSchreiben(datenbank.pfad() + beifile, beifile);
    const auto gute = sicherungen.neuesteGute(Gesichertes::Datenbank, MORGEN);
    ASSERT_TRUE(gute);
    const auto ablage = sicherungen.zuruecksichern(Gesichertes::Datenbank, *gute);
    EXPECT_EQ(ablage, datenbank.pfad() + ".beschädigt");
    EXPECT_EQ(dateiLesen(ablage), kaputte);
    for (const auto* beifile : {"-journal", "-wal", "-shm"}) {
        EXPECT_EQ(dateiLesen(ablage + beifile), beifile);
        EXPECT_FALSE(std::filesystem::exists(datenbank.pfad() + beifile));
    }
    EXPECT_EQ(schemaIn(datenbank.pfad()), "Eins");
    beschaedigen();
    EXPECT_EQ(sicherungen.zuruecksichern(Gesichertes::Datenbank, *gute), datenbank.pfad() + ".beschädigt 2");
    EXPECT_EQ(dateiLesen(ablage), kaputte) << "what was put aside first stays";
}

TEST_F(SicherungenTest, AuchDieAchsendateiKommtZurueck) {
    const auto achsen = gueltigeAchsendatei();
    sicherungen.sichern(HEUTE);
    achsendatei("kaputt");
    ASSERT_TRUE(sicherungen.achsendateiBeschaedigt());
    sicherungen.zuruecksichern(Gesichertes::Achsendatei,
                               *sicherungen.neuesteGute(Gesichertes::Achsendatei, MORGEN));
    EXPECT_EQ(dateiLesen(gamepadXml), achsen);
    EXPECT_FALSE(sicherungen.achsendateiBeschaedigt());
    EXPECT_EQ(dateiLesen(gamepadXml + ".beschädigt"), "kaputt");
}

TEST_F(SicherungenTest, OhnePlatzFuerDenOrdnerWirdEsGesagt) {
    dateiSchreiben(sicherungen.ordner().string(), "eine Datei");
    EXPECT_EQ(fehlernummer([&] { sicherungen.sichern(HEUTE); }), 3026);
    EXPECT_EQ(dateiLesen(sicherungen.ordner().string()), "eine Datei");
}

} // namespace
