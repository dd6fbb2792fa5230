// SPDX-License-Identifier: GPL-3.0-or-later
// A Schema that was deleted, and layers that were deleted, swapped and copied, come back as they were; or
// nothing does, and it is said why.
#include "store/files/Streubilddateien.h"
#include "store/schema/Schemaloeschen.h"
#include "store/schema/UebersichtAktion.h"
#include "tests/hilfen/Schemaplatzprobe.h"
#include "tests/store/schema/Ebenenbau.h"

#include <gmock/gmock.h>

namespace fs = std::filesystem;

namespace {

void stumm(std::string_view) {}

class Rueckgabe : public testing::Test {
protected:
    /// A Schema with all that belongs to it.
    void anlegen(const std::string& name, unsigned saat) {
        Zufallsschema zufall(saat);
        auto daten = zufall.daten();
        daten.achsen = Gamepadzeile{{"dwXPos", "ry"}, {"Schubregler", "4"}};
        schemaAufnehmen(ort.platz(), name, daten, {"0L.bmp", "2R.bmp"},
                        [&](std::string_view endung) { return zufall.bytes(5000) + std::string(endung); });
        Streudaten streu;
        streu.achsen[0].ruhe[3] = 1000 + saat;
        ASSERT_TRUE(streubilder().speichern(name, Stickseite::Rechts, 1, streu));
    }
    Streubilddateien streubilder() const { return Streubilddateien(streubildordner(ort.datenbank.pfad())); }
    GeloeschtesSchema loeschen(const std::string& name) {
        GeloeschtesSchema geloeschtes;
        SchemaLoeschen(ort.platz(), name, stumm, {}, &geloeschtes);
        return geloeschtes;
    }
    /// All that a user could miss, and what should not be there.
    std::string stand() const {
        auto text = ort.stand();
        const auto ordner = streubildordner(ort.datenbank.pfad());
        auto namen = fs::exists(ordner) ? namenIn(ordner) : std::vector<std::string>();
        std::ranges::sort(namen);
        for (const auto& name : namen)
            text += name + "=" + dateiLesen(ordner / name) + "\n";
        return text + (fs::exists(ort.datenbank.pfad() + ".vorhaben") ? "a note" : "");
    }

    Schemaplatzprobe ort;
};

} // namespace

TEST_F(Rueckgabe, EinGeloeschtesSchemaKommtMitAllemZurueck) {
    for (unsigned saat = 1; saat <= 20; ++saat) {
        std::string name = "Spiel ";
        name += std::to_string(saat);
        anlegen(name, saat);
        anlegen("T" + name, saat + 100);
        const auto vorher = stand();
        auto geloeschtes = loeschen(name);
        ASSERT_NE(stand(), vorher);
        EXPECT_EQ(stand().find(name + "|"), stand().find("T" + name + "|") + 1) << "only the other is left";
        EXPECT_FALSE(fs::exists(ort.bilder() / (name + "0L.bmp")));
        EXPECT_EQ(streubilder().laden(name, Stickseite::Rechts, 1), Streudaten());
        ASSERT_TRUE(geloeschtes.zurueckgebbar());
        geloeschtes.zurueckgeben();
        ASSERT_EQ(stand(), vorher) << name;
    }
}

TEST_F(Rueckgabe, EinesOhneBilderUndAchsenAuch) {
    ort.datenbank.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('S');");
    const auto vorher = stand();
    auto geloeschtes = loeschen("S");
    geloeschtes.zurueckgeben();
    EXPECT_EQ(stand(), vorher);
}

TEST_F(Rueckgabe, BilderInAndererSchreibungBehaltenIhreNamen) {
    anlegen("S", 1);
    dateiSchreiben(ort.bilder() / "s1L.BMP", "another case");
    const auto vorher = stand();
    auto geloeschtes = loeschen("S");
    EXPECT_THAT(namenIn(ort.bilder()), testing::IsEmpty());
    geloeschtes.zurueckgeben();
    EXPECT_EQ(stand(), vorher);
}

TEST_F(Rueckgabe, GeteilteBilderBleibenUndSindNichtImWeg) {
    anlegen("S", 1);
    ort.datenbank.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('s');");
    const auto vorher = stand();
    auto geloeschtes = loeschen("S");
    EXPECT_EQ(namenIn(ort.bilder()).size(), 2U);
    dateiSchreiben(ort.bilder() / "S0L.bmp", "painted anew for the other");
    ASSERT_TRUE(geloeschtes.zurueckgebbar());
    geloeschtes.zurueckgeben();
    EXPECT_EQ(dateiLesen(ort.bilder() / "S0L.bmp"), "painted anew for the other");
}

TEST_F(Rueckgabe, WasZuKeinemGehoerteGibtNichtsZurueck) {
    EXPECT_FALSE(loeschen("nobody").zurueckgebbar());
}

TEST_F(Rueckgabe, EinBildDasSichNichtVerwahrenLaesstWirdNichtAngeboten) {
    anlegen("S", 1);
    fs::remove(ort.platz().gamepadXml);
    dateiSchreiben(ort.platz().gamepadXml, "no table");
    EXPECT_FALSE(loeschen("S").zurueckgebbar());
    EXPECT_EQ(ort.datenbank.zeilen("SELECT * FROM tblTastatur").size(), 0U);
    EXPECT_EQ(dateiLesen(ort.platz().gamepadXml), "no table");
}

TEST_F(Rueckgabe, WasAndereAnAnderenTunIstKeinHindernis) {
    anlegen("S", 1);
    anlegen("T", 2);
    auto geloeschtes = loeschen("S");
    ort.datenbank.sql("DELETE FROM tblStickAktion; DELETE FROM tblStick WHERE Schemaname = 'T';");
    anlegen("U", 3);
    geloeschtes.zurueckgeben();
    EXPECT_EQ(ort.datenbank.zeilen("SELECT Schemaname FROM tblTastatur").size(), 3U);
}

TEST_F(Rueckgabe, WasInzwischenUnterSeinemNamenLiegtBleibtUndWirdGesagt) {
    const std::vector<std::function<void()>> hindernisse{
        [&] { ort.datenbank.sql("INSERT INTO tblTastatur (Schemaname) VALUES ('S');"); },
        [&] { ort.datenbank.sql("INSERT INTO tblStickAktion (Schemaname, Aktion) VALUES ('S', '4');"); },
        [&] { dateiSchreiben(ort.bilder() / "S0L.bmp", "another picture"); },
        [&] {
            auto tabelle = *gamepadLesen(ort.platz().gamepadXml);
            tabelle.zeilen.push_back({{"Schema", "S"}, {"dwXPos", "lx"}});
            ASSERT_TRUE(gamepadSpeichern(ort.platz().gamepadXml, tabelle));
        },
        [&] {
            Streudaten streu;
            streu.achsen[0].ruhe[3] = 3;
            ASSERT_TRUE(streubilder().speichern("S", Stickseite::Rechts, 1, streu));
        }};
    anlegen("T", 2);
    const auto ordner = ort.datenbank.ordner();
    for (std::size_t i = 0; i < hindernisse.size(); ++i) {
        SCOPED_TRACE(i);
        anlegen("S", 1);
        auto geloeschtes = loeschen("S");
        hindernisse[i]();
        const auto vorher = stand();
        EXPECT_EQ(fehlernummer([&] { geloeschtes.zurueckgeben(); }), 3197);
        EXPECT_EQ(stand(), vorher);
        loeschen("S"); // and what is in the way
        fs::remove(ort.bilder() / "S0L.bmp");
    }
}

TEST_F(Rueckgabe, EineGesperrteDatenbankLaesstAllesWieEsIstUndEsGehtSpaeter) {
    anlegen("S", 1);
    const auto vorher = stand();
    auto geloeschtes = loeschen("S");
    const auto ohne = stand();
    {
        RoheVerbindung andere(ort.datenbank.pfad());
        andere.sql("BEGIN IMMEDIATE");
        EXPECT_EQ(fehlernummer([&] { geloeschtes.zurueckgeben(); }), 3218);
        andere.sql("COMMIT");
    }
    EXPECT_EQ(stand(), ohne);
    geloeschtes.zurueckgeben();
    EXPECT_EQ(stand(), vorher);
    EXPECT_EQ(fehlernummer([&] { geloeschtes.zurueckgeben(); }), 3197) << "it is there already";
    EXPECT_EQ(stand(), vorher);
}

TEST_F(Rueckgabe, WasEinAbsturzVomLoeschenLiegenLiessGehtBeimNaechstenStart) {
    anlegen("S", 1);
    const auto platz = ort.platz();
    // As the rows have gone and nothing else.
    dateiSchreiben(platz.datenbankPfad + ".vorhaben", std::string("S\0ENDE", 6));
    ort.datenbank.sql("DELETE FROM tblTastatur;");
    beiwerkAufraeumen(platz);
    EXPECT_THAT(namenIn(ort.bilder()), testing::IsEmpty());
    EXPECT_FALSE(achsenzeileLesen(platz.gamepadXml, "S"));
    EXPECT_EQ(streubilder().laden("S", Stickseite::Rechts, 1), Streudaten());
}

// --- layers ---

namespace {

class Ebenenrueckgabe : public testing::Test {
protected:
    Ebenenrueckgabe() {
        for (const auto* name : {"A", "B"})
            schemaLegen(datei, name, name[0] * 1000);
        schemaLegen(andere, "A", 20000);
    }
    Ebenenort hier(const std::string& name, int index) const { return {{datei.pfad(), name}, index}; }
    Ebenenort dort(int index) const { return {{andere.pfad(), "A"}, index}; }

    using Inhalt = std::vector<std::vector<Tabellenbild>>;
    Inhalt inhalt() const { return {datei.inhalt(), andere.inhalt()}; }

    static void ja(Schemaschritt& schritt, const Ebenenort& ort) {
        LayerLoeschen(
            ort, [](std::string_view) { return true; }, {}, &schritt);
    }
    static void wechseln(Schemaschritt& schritt, const Ebenenort& einer, const Ebenenort& anderer) {
        LayerWechseln(einer, anderer, stumm, {}, &schritt);
    }
    std::vector<std::function<void(Schemaschritt&)>> taten() const {
        std::vector<std::function<void(Schemaschritt&)>> alle;
        for (const int index : {0, 1, 4, 8}) {
            alle.emplace_back([=, this](auto& schritt) { ja(schritt, hier("A", index)); });
            alle.emplace_back([=, this](auto& schritt) { wechseln(schritt, hier("A", index), dort(index)); });
            alle.emplace_back([=, this](auto& schritt) { wechseln(schritt, dort(index), hier("B", index)); });
            alle.emplace_back(
                [=, this](auto& schritt) { wechseln(schritt, hier("A", index), hier("B", index)); });
        }
        alle.emplace_back([this](auto& schritt) {
            LayerLoeschen(
                hier("A", 7), [](std::string_view) { return false; }, {}, &schritt);
        });
        alle.emplace_back([this](auto& schritt) { wechseln(schritt, hier("A", 0), hier("A", 8)); });
        alle.emplace_back([this](auto& schritt) { wechseln(schritt, hier("A", 3), hier("A", 5)); });
        alle.emplace_back([this](auto& schritt) {
            LayerKopieren(hier("A", 6), dort(0).schema, {true, true, false, false, false, false, true}, {},
                          &schritt);
        });
        alle.emplace_back([this](auto& schritt) {
            LayerKopieren(hier("A", 0), hier("A", 0).schema, {false, true, true}, {}, &schritt);
        });
        return alle;
    }

    const Testdatenbank datei;
    const Testdatenbank andere;
};

} // namespace

TEST_F(Ebenenrueckgabe, JedeTatGehtZurueckZeileFuerZeile) {
    const auto vorher = inhalt();
    int nummer = 0;
    for (const auto& tat : taten()) {
        SCOPED_TRACE(nummer++);
        Schemaschritt schritt;
        tat(schritt);
        ASSERT_NE(inhalt(), vorher);
        ASSERT_FALSE(schritt.leer());
        schritt.zuruecknehmen();
        ASSERT_EQ(inhalt(), vorher);
    }
}

TEST_F(Ebenenrueckgabe, EineNachDerAnderenGehenAlleZurueck) {
    const auto vorher = inhalt();
    std::vector<Schemaschritt> schritte;
    for (const auto& tat : taten())
        tat(schritte.emplace_back());
    for (auto schritt = schritte.rbegin(); schritt != schritte.rend(); ++schritt)
        if (!schritt->leer())
            schritt->zuruecknehmen();
    EXPECT_EQ(inhalt(), vorher);
}

TEST_F(Ebenenrueckgabe, WasNichtsAendertLaesstSichNichtZuruecknehmen) {
    Schemaschritt schritt;
    wechseln(schritt, hier("A", 1), hier("A", 1));
    EXPECT_TRUE(schritt.leer());
    LayerKopieren(hier("A", 4), hier("B", 4).schema, {true}, {}, &schritt);
    EXPECT_TRUE(schritt.leer());
}

TEST_F(Ebenenrueckgabe, NachEinemFehlerLaesstSichZuruecknehmenWasBisDahinGeschah) {
    const auto vorher = inhalt();
    Schemaschritt schritt;
    EXPECT_THROW(
        LayerLoeschen(
            hier("A", 1), [](std::string_view) -> bool { throw std::runtime_error("away"); }, {}, &schritt),
        std::runtime_error);
    ASSERT_NE(inhalt(), vorher);
    schritt.zuruecknehmen();
    EXPECT_EQ(inhalt(), vorher);
}

TEST_F(Ebenenrueckgabe, WasSeitdemInDieselbenTabellenGeschriebenWurdeHindertEs) {
    const std::vector<std::string> schreiben{
        "INSERT INTO tblStickAktion (Schemaname, Umschalt, Aktion) VALUES ('A', 2, '4');",
        "UPDATE tblStick SET Links3 = 7 WHERE Schemaname = 'A' AND \"index\" = 1;",
        "DELETE FROM tblStickAktion WHERE Schemaname = 'A' AND Umschalt = 2;",
        "UPDATE tblStick SET Schemaname = 'C' WHERE Schemaname = 'A';"};
    for (const auto& sql : schreiben) {
        SCOPED_TRACE(sql);
        Schemaschritt schritt;
        ja(schritt, hier("A", 1));
        datei.sql(sql);
        const auto vorher = inhalt();
        EXPECT_EQ(fehlernummer([&] { schritt.zuruecknehmen(); }), 3197);
        EXPECT_EQ(inhalt(), vorher);
        datei.sql("DELETE FROM tblTastatur; DELETE FROM tblSteuerKreuz; DELETE FROM tblStick; DELETE FROM "
                  "tblStickR; DELETE FROM tblStickAktion; DELETE FROM tblStickAktionR;");
        schemaLegen(datei, "A", 1000);
    }
}

TEST_F(Ebenenrueckgabe, WasAnAnderenSchemataUndTabellenGeschahHindertEsNicht) {
    Schemaschritt schritt;
    wechseln(schritt, hier("A", 1), dort(2));
    const std::string anderes = "UPDATE tblStick SET Links = 1 WHERE Schemaname = 'B';"
                                "UPDATE tblStickR SET Links = 1; DELETE FROM tblTastatur;";
    datei.sql(anderes);
    schritt.zuruecknehmen();
    EXPECT_EQ(datei.zeilen("SELECT Links FROM tblStick WHERE Schemaname = 'B' LIMIT 1"), Tabellenbild{{"1"}});
}

TEST_F(Ebenenrueckgabe, WerZwischenDenBeidenTeilenEinerTatSchreibtNimmtIhrDasZurueck) {
    Schemaschritt schritt;
    LayerLoeschen(
        hier("A", 1),
        [&](std::string_view) {
            datei.sql("INSERT INTO tblStickAktion (Schemaname, Umschalt, Aktion) VALUES ('A', 1, '4');");
            return true;
        },
        {}, &schritt);
    EXPECT_TRUE(schritt.leer());
}
