// SPDX-License-Identifier: GPL-3.0-or-later
// The line of steps of a stick editor, and its words.
#include "editors/stick/Schrittfolge.h"
#include "editors/stick/Schrittworte.h"
#include "store/db/Datenbank.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

namespace {

class Folgentest : public testing::Test {
protected:
    Folgentest() { datei.sql("INSERT INTO tblStick (Schemaname, \"index\", Links) VALUES ('S', 1, 100)"); }

    void setzen(std::int64_t wert) {
        auto satz = datenbank.OpenRecordset("tblStick");
        satz.Edit();
        satz.put_Value("Links", wert);
        satz.Update();
    }
    Zeilenschritt zeilen(std::int64_t wert) {
        Zeilenschritt schritt;
        datenbank.alsSchritt(&schritt, [&] { setzen(wert); });
        return schritt;
    }
    /// A step that moves the first line to the left.
    Stickschritt verschiebung(std::int32_t alt, std::int32_t neu, bool gehalten = false) {
        return {.linien = {{{0, 1}, alt, neu}}, .zeilen = zeilen(neu), .gehalten = gehalten};
    }
    std::string stand() const { return datei.zeilen("SELECT Links FROM tblStick")[0][0]; }
    void zurueck() { folge.zurueckgenommen(folge.letzter()->zeilen.zuruecknehmen(datenbank)); }
    void wieder() { folge.wiederholt(folge.naechster()->zeilen.wiederholen(datenbank)); }

    Testdatenbank datei;
    Database datenbank = OpenDatabase(datei.pfad());
    Schrittfolge folge;
};

Stickschritt mitLinien(std::vector<Linienaenderung> linien, int ebene = 0) {
    return {.ebene = ebene, .linien = std::move(linien)};
}

} // namespace

TEST_F(Folgentest, GehtZurueckUndWiederVor) {
    EXPECT_EQ(folge.letzter(), nullptr);
    EXPECT_EQ(folge.naechster(), nullptr);
    folge.neu(verschiebung(100, 200));
    folge.neu(verschiebung(200, 300));
    EXPECT_EQ(folge.naechster(), nullptr);
    zurueck();
    EXPECT_EQ(stand(), "200");
    EXPECT_EQ(folge.naechster()->linien.front().neu, 300);
    zurueck();
    EXPECT_EQ(stand(), "100");
    EXPECT_EQ(folge.letzter(), nullptr);
    wieder();
    wieder();
    EXPECT_EQ(stand(), "300");
}

TEST_F(Folgentest, EinNeuerSchrittLaesstDasZurueckgenommeneFallen) {
    folge.neu(verschiebung(100, 200));
    zurueck();
    folge.neu(verschiebung(100, 300));
    EXPECT_EQ(folge.naechster(), nullptr);
    zurueck();
    EXPECT_EQ(stand(), "100");
    EXPECT_EQ(folge.letzter(), nullptr);
}

TEST_F(Folgentest, EineGehalteneTasteIstEinSchritt) {
    folge.neu(verschiebung(100, 350));
    folge.neu(verschiebung(350, 600, true));
    folge.neu(verschiebung(600, 850, true));
    EXPECT_EQ(folge.letzter()->linien, (std::vector<Linienaenderung>{{{0, 1}, 100, 850}}));
    zurueck();
    EXPECT_EQ(stand(), "100");
    EXPECT_EQ(folge.letzter(), nullptr);
    wieder();
    EXPECT_EQ(stand(), "850");
    folge.neu(verschiebung(850, 1100)); // pressed anew
    zurueck();
    EXPECT_EQ(stand(), "850");
    auto andere = verschiebung(850, 1100, true); // another line
    andere.linien.front().platz.slot = 2;
    folge.neu(std::move(andere));
    zurueck();
    EXPECT_EQ(stand(), "850");
}

TEST_F(Folgentest, WasKeinenNamenHatGehoertZumLetztenSchritt) {
    folge.neu({.zeilen = zeilen(150)}); // there is none: nothing to take back
    EXPECT_EQ(folge.letzter(), nullptr);
    folge.neu(verschiebung(150, 200));
    folge.neu({.zeilen = zeilen(250)});
    zurueck();
    EXPECT_EQ(stand(), "150");
    EXPECT_EQ(folge.letzter(), nullptr);
}

TEST_F(Folgentest, WoAndereDazwischenGeschriebenHabenIstAllesFort) {
    folge.neu(verschiebung(100, 200));
    datei.sql("UPDATE tblStick SET Links = 7");
    folge.neu({.zeilen = zeilen(250)});
    EXPECT_EQ(folge.letzter(), nullptr);
}

TEST_F(Folgentest, VieleSchritteBleiben) {
    datenbank.inEinerTransaktion([&] {
        for (int i = 0; i < 1000; ++i)
            folge.neu(verschiebung(100 + i, 101 + i));
    });
    int schritte = 0;
    datenbank.inEinerTransaktion([&] {
        for (; folge.letzter(); ++schritte)
            zurueck();
    });
    EXPECT_EQ(schritte, 1000);
    EXPECT_EQ(stand(), "100");
}

TEST_F(Folgentest, GehtMitDemNamenUndMitUmgezogenenZeilenMit) {
    const auto anlegen = [&](std::int64_t index) {
        Zeilenschritt schritt;
        datenbank.alsSchritt(&schritt, [&] {
            auto satz = datenbank.OpenRecordset("tblStick");
            satz.AddNew();
            satz.put_Value("Schemaname", std::string("S"));
            satz.put_Value("index", index);
            satz.Update();
        });
        return schritt;
    };
    folge.neu({.andere = "neu", .zeilen = anlegen(2)});
    Zeilenschritt weg;
    datenbank.alsSchritt(&weg, [&] {
        auto satz = datenbank.OpenRecordset("tblStick");
        satz.MoveNext();
        satz.Delete();
    });
    folge.neu({.andere = "weg", .zeilen = weg});
    datei.sql("INSERT INTO tblStick (Schemaname) VALUES ('fremd'); UPDATE tblStick SET Schemaname = 'N' "
              "WHERE Schemaname = 'S'");
    folge.umbenennen("S", "N");
    EXPECT_GE(folge.hoechsteZeile(), 2);
    zurueck();
    EXPECT_EQ(datei.zeilen("SELECT Schemaname, \"index\" FROM tblStick ORDER BY rowid"),
              (Tabellenbild{{"N", "1"}, {"fremd", "0"}, {"N", "2"}}));
    zurueck();
    EXPECT_EQ(datei.zeilen("SELECT Schemaname FROM tblStick ORDER BY rowid"),
              (Tabellenbild{{"N"}, {"fremd"}}));
}

TEST(Schrittworte, NennenLinienUndEbene) {
    const auto gezogen = mitLinien({{{1, 1}, 45000, 52000}});
    EXPECT_EQ(ruecknahmeworte(&gezogen, 0), "Linie Rechts 45000 → 52000 rückgängig");
    EXPECT_EQ(wiederholungsworte(&gezogen, 1), "Linie Rechts 45000 → 52000 (Standart) wiederherstellen");
    const auto neu = mitLinien({{{0, 2}, 0, 19000}}, 2);
    EXPECT_EQ(ruecknahmeworte(&neu, 0), "Neue Linie Links 19000 (Umschalt 2) rückgängig");
    const auto fort = mitLinien({{{2, 2}, 8000, 0}});
    EXPECT_EQ(ruecknahmeworte(&fort, 0), "Löschen der Linie Oben 8000 rückgängig");
    const auto kreuzung = mitLinien({{{0, 1}, 1, 2}, {{3, 1}, 3, 4}});
    EXPECT_EQ(ruecknahmeworte(&kreuzung, 0), "Linie Links 1 → 2 und Linie Unten 3 → 4 rückgängig");
}

TEST(Schrittworte, NennenAnderes) {
    const Stickschritt aktion{.andere = aktionswechsel("Feld links", "keine Aktion", "Sperrfeld")};
    EXPECT_EQ(ruecknahmeworte(&aktion, 0), "Feld links: keine Aktion → Sperrfeld rückgängig");
    EXPECT_EQ(leerfeldloeschung(1, 46000), "Löschen der Leerfelder an Linie Rechts 46000");
    EXPECT_EQ(maskenwechsel(true), "„1 to 1“ einschalten");
    EXPECT_EQ(maskenwechsel(false), "„1 to 1“ ausschalten");
    EXPECT_EQ(ruecknahmeworte(nullptr, 0), "Rückgängig");
    EXPECT_EQ(wiederholungsworte(nullptr, 0), "Wiederherstellen");
}
