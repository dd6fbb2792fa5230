// SPDX-License-Identifier: GPL-3.0-or-later
// The empty Belegung.twk: tables, columns in their physical order, types, defaults, and the names of the
// keys.
#include "tests/hilfen/Testdatenbank.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <set>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Name, declared type, whether Null is refused, default.
using Spaltenbild = std::vector<std::string>;

const std::string BELEGUNG = "'10,0,0-0-0'";

Spaltenbild schluessel() {
    return {"Schemaname", "TEXT", "1", "NULL"};
}
Spaltenbild belegung(const std::string& name) {
    return {name, "TEXT", "0", BELEGUNG};
}
Spaltenbild text(const std::string& name) {
    return {name, "TEXT", "0", "NULL"};
}
Spaltenbild linie(const std::string& name) {
    return {name, "INTEGER", "1", "0"};
}
Spaltenbild schmal(const std::string& name) {
    return {name, "SMALLINT", "0", "NULL"};
}

Tabellenbild tastatur() {
    Tabellenbild bild{schluessel()};
    const auto tasten = [&](int versatz) {
        for (int i = 1; i <= 12; ++i)
            bild.push_back(belegung("btn" + std::to_string(versatz + i)));
    };
    tasten(0);
    bild.push_back(text("Programmpfad"));
    tasten(100);
    bild.push_back({"Funktion", "SMALLINT", "0", "0"});
    tasten(1000);
    return bild;
}

Tabellenbild steuerkreuz() {
    Tabellenbild bild{schluessel()};
    for (const std::string ebene : {"", "2", "3"})
        for (const std::string richtung : {"Oben", "Rechts", "Unten", "Links"})
            bild.push_back(belegung(richtung + ebene));
    return bild;
}

Tabellenbild stick() {
    Tabellenbild bild{schluessel(), {"index", "SMALLINT", "1", "0"}};
    for (const std::string ebene : {"", "2", "3"})
        for (const std::string richtung : {"Links", "Rechts", "Oben", "Unten"})
            bild.push_back(linie(richtung + ebene));
    return bild;
}

Tabellenbild stickAktion() {
    Tabellenbild bild{schluessel(), {"Umschalt", "SMALLINT", "1", "0"}};
    for (const std::string richtung : {"Links", "Rechts", "Oben", "Unten"})
        bild.push_back(linie(richtung));
    bild.push_back(text("Aktion"));
    return bild;
}

Tabellenbild schmale(const std::vector<std::string>& namen) {
    Tabellenbild bild{schluessel()};
    for (const std::string& name : namen)
        bild.push_back(schmal(name));
    return bild;
}

std::map<std::string, Tabellenbild> alleTabellen() {
    return {
        {"tblTastatur", tastatur()},
        {"tblSteuerKreuz", steuerkreuz()},
        {"tblStick", stick()},
        {"tblStickR", stick()},
        {"tblStickAktion", stickAktion()},
        {"tblStickAktionR", stickAktion()},
        {"Sensible", schmale({"Fenster_ly", "Fenster_lx", "Mindestzahl_ly", "Mindestzahl_lx", "Rand_ly",
                              "Rand_lx", "Wiederholung"})},
        {"SensibleR",
         schmale({"Fenster_rx", "Fenster_ry", "Mindestzahl_rx", "Mindestzahl_ry", "Rand_rx", "Rand_ry"})},
        {"tblKeyCode", {{"Keyc", "TEXT", "1", "NULL"}, {"Keye", "TEXT", "1", "NULL"}}},
    };
}

} // namespace

TEST(LeereDatenbank, HatGenauDieTabellenMitIhrenSpalten) {
    const Testdatenbank datei;
    std::map<std::string, Tabellenbild> gefunden;
    for (const auto& zeile : datei.zeilen("SELECT name FROM sqlite_schema WHERE type IN ('table', 'view')"))
        gefunden[zeile.at(0)] =
            datei.zeilen("SELECT name, type, \"notnull\", dflt_value FROM pragma_table_info('" + zeile.at(0) +
                         "') ORDER BY cid");
    EXPECT_EQ(gefunden, alleTabellen());
}

TEST(LeereDatenbank, IstHeilUndBisAufDieTastenLeer) {
    const Testdatenbank datei;
    EXPECT_THAT(datei.zeilen("PRAGMA integrity_check"), ElementsAre(ElementsAre("ok")));
    EXPECT_THAT(datei.zeilen("PRAGMA journal_mode"), ElementsAre(ElementsAre("delete")));
    EXPECT_THAT(datei.zeilen("PRAGMA encoding"), ElementsAre(ElementsAre("UTF-8")));
    for (const auto& [tabelle, bild] : alleTabellen())
        if (tabelle != "tblKeyCode") {
            EXPECT_THAT(datei.zeilen("SELECT * FROM " + tabelle), IsEmpty()) << tabelle;
        }
}

TEST(LeereDatenbank, EinFrischerSatzTraegtDieVorgaben) {
    const Testdatenbank datei;
    const std::string leer = "10,0,0-0-0";
    for (const auto& [tabelle, bild] : alleTabellen()) {
        if (tabelle == "tblKeyCode")
            continue;
        datei.sql("INSERT INTO " + tabelle + " (Schemaname) VALUES ('S')");
        std::vector<std::string> erwartet{"S"};
        for (std::size_t i = 1; i < bild.size(); ++i)
            erwartet.push_back(bild[i][3] == BELEGUNG ? leer : bild[i][3]);
        EXPECT_THAT(datei.zeilen("SELECT * FROM " + tabelle), ElementsAre(erwartet)) << tabelle;
    }
}

namespace {

std::map<std::string, std::string> tastennamen() {
    const Testdatenbank datei;
    std::map<std::string, std::string> namen;
    for (const auto& zeile : datei.zeilen("SELECT Keyc, Keye FROM tblKeyCode"))
        namen[zeile.at(0)] = zeile.at(1);
    return namen;
}

void bereich(std::set<int>& codes, int von, int bis) {
    for (int code = von; code <= bis; ++code)
        codes.insert(code);
}

/// The codes that the keys of a German or US keyboard give, with number pad and media keys.
std::set<int> tastencodes() {
    std::set<int> codes{3, 8, 9, 12, 13, 16, 17, 18, 19, 20, 27, 144, 145, 226};
    bereich(codes, 32, 40);   // blank, paging, arrows
    bereich(codes, 44, 46);   // print, insert, delete
    bereich(codes, 48, 57);   // digits
    bereich(codes, 65, 90);   // letters
    bereich(codes, 91, 93);   // Windows and menu keys
    bereich(codes, 95, 111);  // sleep, number pad
    bereich(codes, 112, 135); // F1 to F24
    bereich(codes, 160, 183); // left and right, browser, media
    bereich(codes, 186, 192); // the keys that each country labels its own way
    bereich(codes, 219, 222);
    return codes;
}

} // namespace

TEST(Tastennamen, JedeTasteDieEsGibtHatEinenNamen) {
    const auto namen = tastennamen();
    std::vector<int> ohne;
    for (const int code : tastencodes())
        if (!namen.contains(std::to_string(code)))
            ohne.push_back(code);
    EXPECT_THAT(ohne, IsEmpty());
}

TEST(Tastennamen, CodesSindZahlenUndNamenEindeutigUndOhneRand) {
    std::set<std::string> verschiedene;
    for (const auto& [code, name] : tastennamen()) {
        EXPECT_EQ(std::to_string(std::stoi(code)), code);
        EXPECT_TRUE(std::stoi(code) >= 1 && std::stoi(code) <= 254) << code;
        EXPECT_FALSE(name.empty() || name.front() == ' ' || name.back() == ' ') << code;
        EXPECT_EQ(name.find('\''), std::string::npos) << name; // it could not be looked up by its name
        EXPECT_TRUE(verschiedene.insert(name).second) << name;
    }
    EXPECT_FALSE(tastennamen().contains("0"));
}

TEST(Tastennamen, HeissenWieAufDerDeutschenTastatur) {
    const std::map<std::string, std::string> erwartet{
        {"8", "Rück"},   {"9", "Tab"},        {"13", "Enter"},       {"16", "Umschalt"},
        {"17", "Strg"},  {"18", "Alt"},       {"19", "Pause"},       {"20", "Feststell"},
        {"27", "Esc"},   {"32", "Leertaste"}, {"33", "Bild auf"},    {"34", "Bild ab"},
        {"35", "Ende"},  {"36", "Pos1"},      {"37", "Pfeil links"}, {"44", "Druck"},
        {"45", "Einfg"}, {"46", "Entf"},      {"48", "0"},           {"57", "9"},
        {"65", "A"},     {"90", "Z"},         {"91", "Win links"},   {"92", "Win rechts"},
        {"93", "Menü"},  {"96", "Num 0"},     {"103", "Num 7"},      {"107", "Num +"},
        {"112", "F1"},   {"135", "F24"},      {"145", "Rollen"},     {"160", "Links Umschalt"},
        {"186", "Ü"},    {"187", "+"},        {"188", ","},          {"189", "-"},
        {"190", "."},    {"191", "#"},        {"192", "Ö"},          {"219", "ß"},
        {"220", "^"},    {"221", "´"},        {"222", "Ä"},          {"226", "<"}};
    const auto namen = tastennamen();
    for (const auto& [code, name] : erwartet)
        EXPECT_EQ(namen.at(code), name) << code;
}
