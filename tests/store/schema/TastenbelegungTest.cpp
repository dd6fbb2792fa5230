// SPDX-License-Identifier: GPL-3.0-or-later
// The button table on its way from the database into the editor and back.
#include "store/schema/modLesen.h"
#include "store/schema/modSpeichern.h"
#include "tests/hilfen/Dateirechte.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

/// A text of its own for each slot and layer.
std::string textVon(int taste, int ebene) {
    return std::to_string(taste % 6) + "," + std::to_string(100 * ebene + taste) + "," +
           std::to_string(ebene) + "-" + std::to_string(taste + 1) + "-" + std::to_string(10 * taste + ebene);
}

VarTastenbelegung vollesBild() {
    VarTastenbelegung bild;
    for (int taste = 0; taste < SLOTS; ++taste)
        for (int ebene = 0; ebene < EBENEN; ++ebene)
            bild.setzeBelegung(taste, ebene, textVon(taste, ebene));
    return bild;
}

/// The row of tblTastatur that carries these texts, past Schemaname; Programmpfad and Funktion as given.
std::vector<std::string> tastenzeile(const std::string& pfad, const std::string& funktion) {
    std::vector<std::string> zeile;
    for (int ebene = 0; ebene < EBENEN; ++ebene) {
        for (int taste = 0; taste < TASTEN; ++taste)
            zeile.push_back(textVon(taste, ebene));
        if (ebene < 2)
            zeile.push_back(ebene == 0 ? pfad : funktion);
    }
    return zeile;
}

std::vector<std::string> kreuzzeile() {
    std::vector<std::string> zeile;
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        for (int taste = TASTEN; taste < SLOTS; ++taste)
            zeile.push_back(textVon(taste, ebene));
    return zeile;
}

class Tastenbelegung : public testing::Test {
protected:
    Tastenbelegung() { anlegen("S", "/spiele/s"); }

    void anlegen(const std::string& name, const std::string& pfad = "") const {
        Schemabau schema(datei, name);
        if (!pfad.empty())
            schema.spalte("Programmpfad", pfad);
        schema.spalte("Funktion", "2").anlegen();
    }
    /// The row of a `Schema` past its name.
    std::vector<std::string> zeile(const std::string& tabelle, const std::string& name) const {
        auto zeilen = datei.zeilen("SELECT * FROM " + tabelle + " WHERE Schemaname = '" + name + "'");
        zeilen.at(0).erase(zeilen.at(0).begin());
        return zeilen.at(0);
    }
    /// The image; each of its texts has to be readable.
    VarTastenbelegung gelesen(const std::string& name = "S") const {
        std::vector<Tastenort> unlesbare;
        auto bild = TastenbelegungLesen(datei.pfad(), name, unlesbare);
        EXPECT_TRUE(unlesbare.empty());
        return bild;
    }
    std::vector<Tastenort> unlesbare() const {
        std::vector<Tastenort> orte;
        TastenbelegungLesen(datei.pfad(), "S", orte);
        return orte;
    }
    void speichern(const std::string& name = "S") {
        gespeichert = TastenbelegungSpeichern(datei.pfad(), name, vollesBild());
    }

    Testdatenbank datei;
    bool gespeichert = false;
};

} // namespace

TEST_F(Tastenbelegung, EinNeuesSchemaHatUeberallDieLeereBelegung) {
    const VarTastenbelegung bild = gelesen();
    for (int taste = 0; taste < SLOTS; ++taste)
        for (int ebene = 0; ebene < EBENEN; ++ebene)
            EXPECT_EQ(bild.belegung(taste, ebene), "10,0,0-0-0") << taste << " " << ebene;
}

TEST_F(Tastenbelegung, JedeTasteJederEbeneLiegtInIhrerSpalte) {
    anlegen("T");
    const auto fremd = std::make_pair(zeile("tblTastatur", "T"), zeile("tblSteuerKreuz", "T"));
    speichern();
    EXPECT_EQ(zeile("tblTastatur", "S"), tastenzeile("/spiele/s", "2"));
    EXPECT_EQ(zeile("tblSteuerKreuz", "S"), kreuzzeile());
    EXPECT_EQ(std::make_pair(zeile("tblTastatur", "T"), zeile("tblSteuerKreuz", "T")), fremd);
    EXPECT_EQ(gelesen(), vollesBild());
}

TEST_F(Tastenbelegung, LeereSpaltenLesenSichAlsLeereBelegung) {
    speichern();
    datei.sql("UPDATE tblTastatur SET btn1 = NULL, btn112 = '', btn1001 = NULL;"
              "UPDATE tblSteuerKreuz SET Oben = '', Links3 = NULL");
    VarTastenbelegung erwartet = vollesBild();
    for (const auto& [taste, ebene] : {std::pair{0, 0}, {11, 1}, {0, 2}, {12, 0}, {15, 2}})
        erwartet.setzeBelegung(taste, ebene, "10,0,0-0-0");
    EXPECT_EQ(gelesen(), erwartet);
}

TEST_F(Tastenbelegung, LeerStehtNurInTastenspaltenFuerKeineFelder) {
    datei.sql("UPDATE tblTastatur SET btn105 = 'leer'");
    const VarTastenbelegung bild = gelesen();
    for (int feld = 0; feld < BELEGUNGSFELDER; ++feld)
        EXPECT_EQ(bild.field(4, 1, feld), "");
    EXPECT_EQ(bild.belegung(4, 0), "10,0,0-0-0");

    datei.sql("UPDATE tblTastatur SET btn105 = 'Leer'");
    EXPECT_EQ(unlesbare(), (std::vector<Tastenort>{{4, 1}}));
    datei.sql("UPDATE tblTastatur SET btn105 = NULL; UPDATE tblSteuerKreuz SET Rechts = 'leer'");
    EXPECT_EQ(unlesbare(), (std::vector<Tastenort>{{13, 0}}));
}

TEST_F(Tastenbelegung, EinTextMitAndererFeldzahlIstLeerWirdGenanntUndBleibt) {
    for (const std::string text : {"1", "1,65", "1,65,0-0", "1,65,0-0-0-0", "1,65,0-0-0,7"}) {
        speichern();
        datei.sql("UPDATE tblTastatur SET btn1 = '" + text + "', btn1012 = '" + text +
                  "'; UPDATE tblSteuerKreuz SET Oben = '" + text + "', Links3 = '" + text + "'");
        const auto vorher = datei.inhalt();
        auto erwartet = vollesBild();
        const std::vector<Tastenort> orte{{0, 0}, {12, 0}, {11, 2}, {15, 2}};
        for (const auto& [taste, ebene] : orte)
            erwartet.setzeBelegung(taste, ebene, "10,0,0-0-0");
        std::vector<Tastenort> genannte;
        EXPECT_EQ(TastenbelegungLesen(datei.pfad(), "S", genannte), erwartet) << text;
        EXPECT_EQ(genannte, orte) << text;
        EXPECT_EQ(datei.inhalt(), vorher) << text;
    }
}

TEST_F(Tastenbelegung, WasInDenFeldernStehtBleibtBeimLesenUndSchreiben) {
    datei.sql("UPDATE tblTastatur SET btn3 = ' 1,A,x- -007', btn4 = ',,--'");
    TastenbelegungSpeichern(datei.pfad(), "S", gelesen());
    EXPECT_THAT(datei.zeilen("SELECT btn3, btn4, btn5 FROM tblTastatur"),
                ElementsAre(ElementsAre(" 1,A,x- -007", ",,--", "10,0,0-0-0")));
}

TEST_F(Tastenbelegung, OhneZeileEndetDasLesenUndGeschiehtBeimSpeichernNichts) {
    datei.sql("INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('nur Kreuz')");
    const auto vorher = datei.inhalt();
    for (const std::string name : {"fehlt", "nur Kreuz", "s", "S ", ""}) {
        EXPECT_EQ(fehlernummer([&] { gelesen(name); }), 3021) << name;
        speichern(name);
        EXPECT_FALSE(gespeichert);
    }
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_F(Tastenbelegung, EinKreuzOhneZeileLiestSichLeerUndBekommtSieBeimSpeichern) {
    speichern();
    datei.sql("DELETE FROM tblSteuerKreuz");
    VarTastenbelegung erwartet = vollesBild();
    for (int taste = TASTEN; taste < SLOTS; ++taste)
        for (int ebene = 0; ebene < EBENEN; ++ebene)
            erwartet.setzeBelegung(taste, ebene, "10,0,0-0-0");
    EXPECT_EQ(gelesen(), erwartet);
    EXPECT_TRUE(datei.zeilen("SELECT * FROM tblSteuerKreuz").empty());

    speichern();
    EXPECT_TRUE(gespeichert);
    EXPECT_EQ(zeile("tblSteuerKreuz", "S"), kreuzzeile());
    EXPECT_EQ(zeile("tblTastatur", "S"), tastenzeile("/spiele/s", "2"));
}

TEST_F(Tastenbelegung, ScheitertDasKreuzBleibenAuchDieTasten) {
    datei.sql("DROP TABLE tblSteuerKreuz");
    const auto vorher = datei.inhalt();
    EXPECT_EQ(fehlernummer([&] { speichern(); }), 3078);
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_F(Tastenbelegung, NamenBrauchenNurOhneApostrophZuSein) {
    for (const std::string& name :
         std::vector<std::string>{"../x", "a\"b;--", " ", "Ä ö ß 漢", std::string(300, 'x')}) {
        anlegen(name, "NULL");
        speichern(name);
        EXPECT_EQ(gelesen(name), vollesBild()) << name;
    }
    anlegen("O'Brien");
    const auto vorher = datei.inhalt();
    EXPECT_EQ(fehlernummer([&] { gelesen("O'Brien"); }), 3075);
    EXPECT_EQ(fehlernummer([&] { speichern("O'Brien"); }), 3075);
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_F(Tastenbelegung, WasEsNichtGibtWirdGenannt) {
    try {
        TastenLaufLesen(datei.pfad(), "fehlt");
        FAIL();
    } catch (const LaufzeitFehler& fehler) {
        EXPECT_EQ(fehler.zahl(), 3021);
        EXPECT_STREQ(fehler.what(), "Das Schema „fehlt“ gibt es in der Datenbank nicht.");
    }
}

TEST_F(Tastenbelegung, EineGesperrteDatenbankBleibtWieSieIst) {
    const auto vorher = datei.inhalt();
    RoheVerbindung anderes(datei.pfad());
    anderes.sql("BEGIN IMMEDIATE"); // readers still come through
    EXPECT_EQ(gelesen().belegung(0, 0), "10,0,0-0-0");
    EXPECT_EQ(fehlernummer([&] { speichern(); }), 3218);
    anderes.sql("COMMIT; BEGIN EXCLUSIVE");
    EXPECT_EQ(fehlernummer([&] { gelesen(); }), 3218);
    EXPECT_EQ(fehlernummer([&] { speichern(); }), 3218);
    anderes.sql("COMMIT");
    EXPECT_EQ(datei.inhalt(), vorher);
}

TEST_F(Tastenbelegung, EineSchreibgeschuetzteDatenbankWirdGelesenUndBleibt) {
    const auto vorher = datei.inhalt();
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { gelesen(); }), 0);
    EXPECT_EQ(fehlernummerNurLesend(datei, [&] { speichern(); }), 3027);
    EXPECT_EQ(datei.inhalt(), vorher);
    std::vector<Tastenort> unlesbare;
    EXPECT_EQ(fehlernummer([&] { TastenbelegungLesen(datei.pfad() + ".fehlt", "S", unlesbare); }), 3024);
    EXPECT_EQ(fehlernummer([&] { TastenbelegungSpeichern(datei.pfad() + ".fehlt", "S", {}); }), 3024);
}
