// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/hilfen/Bestand.h"

#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Gamepadxml.h"

#include <array>
#include <cstdint>
#include <filesystem>

namespace {

constexpr int LINIEN = 19; // as many as a direction takes
constexpr int BAENDER = 2 * LINIEN + 1;
static_assert(BAENDER * BAENDER == FELDER_EINER_EBENE);
constexpr std::array<const char*, 6> AKTIONEN{"0,0,5,10", "1,0", "2,0,65,0,0", "4", "5,0", "2,1,66,50,1,200"};

std::string zahl(int wert) {
    return std::to_string(wert);
}
int innen(int linie) {
    return 30000 - 1400 * linie;
}
int aussen(int linie) {
    return 36000 + 1400 * linie;
}

std::string schemaname(int nummer, const Bestand& bestand) {
    return nummer + 1 == bestand.schemata ? BESTANDSSCHEMA : "Spiel " + zahl(nummer);
}

/// Twenty rows of lines, `linien` of them with one to each side.
std::string linienzeilen(const std::string& tabelle, const std::string& schema, int linien) {
    std::string sql;
    for (int i = 0; i < LINIEN + 1; ++i) {
        const std::string eine =
            i < linien ? zahl(innen(i)) + "," + zahl(aussen(i)) + "," + zahl(innen(i)) + "," + zahl(aussen(i))
                       : "0,0,0,0";
        sql += "INSERT INTO " + tabelle + " VALUES ('" + schema + "'," + zahl(i + 1) + "," + eine + "," +
               eine + "," + eine + ");";
    }
    return sql;
}

/// The two columns of a band, counted from the one in the middle: to the left or up when odd.
std::string band(int nummer) {
    if (nummer == 0)
        return "0,0";
    const int linie = (nummer - 1) / 2;
    return nummer % 2 == 1 ? zahl(innen(linie)) + ",0" : "0," + zahl(aussen(linie));
}

std::string aktionszeilen(const std::string& tabelle, const std::string& schema, int anzahl) {
    std::string sql;
    for (int i = 0; i < anzahl; ++i) {
        const int feld = i % FELDER_EINER_EBENE;
        const int ebene = i / FELDER_EINER_EBENE % 3;
        sql += "INSERT INTO " + tabelle + " VALUES ('" + schema + "'," + zahl(ebene) + "," +
               band(feld % BAENDER) + "," + band(feld / BAENDER) + ",'" +
               AKTIONEN[static_cast<std::size_t>(i) % AKTIONEN.size()] + "');";
    }
    return sql;
}

std::string schemazeilen(int nummer, const Bestand& bestand) {
    constexpr int WENIGE = 10;
    const auto name = schemaname(nummer, bestand);
    const bool das = name == BESTANDSSCHEMA;
    std::string sql = "INSERT INTO tblTastatur (Schemaname, Programmpfad, btn1, btn9) VALUES ('" + name +
                      "', '/spiele/" + name + "', '1,65,0-0-0', '3,0,0-0-0');" +
                      "INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('" + name + "');" +
                      "INSERT INTO Sensible VALUES ('" + name + "', 30, 30, 0, 0, 400, 400, 400);" +
                      "INSERT INTO SensibleR VALUES ('" + name + "', 30, 30, 0, 0, 400, 400);";
    sql += linienzeilen("tblStick", name, das ? LINIEN : 2) + linienzeilen("tblStickR", name, 2);
    return sql + aktionszeilen("tblStickAktion", name, das ? bestand.aktionszeilen : WENIGE) +
           aktionszeilen("tblStickAktionR", name, WENIGE);
}

/// Twenty fields; the last field of each record carries as many zeros as the length asks for.
std::string schubtext(std::size_t zeichen) {
    constexpr int FELDER = 20;
    std::string text = zahl(FELDER);
    for (int i = 1; i <= FELDER; ++i) {
        const std::string anfang = "/1-" + zahl(i) + "-2-1(65,50,";
        const std::size_t bis = zeichen * static_cast<std::size_t>(i) / FELDER;
        const std::size_t steht = text.size() + anfang.size() + 2;
        if (steht > zeichen)
            return text;
        text += anfang + std::string(bis > steht ? bis - steht : 0, '0') + "9)";
    }
    return text;
}

void gamepadXmlLegen(const std::filesystem::path& ordner, const Bestand& bestand) {
    std::string zeilen;
    for (int i = 0; i < bestand.schemata; ++i) {
        const auto name = schemaname(i, bestand);
        zeilen += adoZeile({{"Schema", name},
                            {"dwXPos", "lx"},
                            {"dwYPos", "ly"},
                            {"dwZPos", "rx"},
                            {"dwRPos", "ry"},
                            {"dwUPos", "Z1"},
                            {"dwVPos", "Z2"},
                            {"Schubregler", schubtext(name == BESTANDSSCHEMA ? bestand.schubzeichen : 60)}});
    }
    dateiSchreiben(ordner / "Gamepad.xml", adoXml(zeilen));
}

void anfuegen(std::string& bytes, std::uint32_t wert, int breite) {
    for (int i = 0; i < breite; ++i)
        bytes += static_cast<char>(wert >> (8 * i) & 0xffU);
}

/// A bitmap of 24 bits a pixel, of one colour.
std::string bitmap(std::uint32_t breite, std::uint32_t hoehe, char grau) {
    constexpr std::uint32_t KOPF = 54;
    const std::uint32_t zeile = (breite * 3 + 3) / 4 * 4;
    std::string bytes = "BM";
    anfuegen(bytes, KOPF + zeile * hoehe, 4);
    anfuegen(bytes, 0, 4);
    for (const std::uint32_t wert : {KOPF, 40U, breite, hoehe})
        anfuegen(bytes, wert, 4);
    anfuegen(bytes, 1, 2);
    anfuegen(bytes, 24, 2);
    bytes += std::string(24, '\0');
    return bytes + std::string(std::size_t{zeile} * hoehe, grau);
}

void bilderLegen(const std::filesystem::path& ordner, const Bestand& bestand) {
    constexpr int BILDER_JE_SCHEMA = 6;
    std::filesystem::create_directory(ordner);
    for (int i = 0; i < bestand.bilder; ++i) {
        // Those of the one Schema are as large as a screen, of the others only the names count.
        const bool das = i < BILDER_JE_SCHEMA;
        const auto name = das ? BESTANDSSCHEMA : "Spiel " + zahl(i / BILDER_JE_SCHEMA);
        const auto datei = name + zahl(i % 3) + (i % BILDER_JE_SCHEMA < 3 ? "L.bmp" : "R.bmp");
        dateiSchreiben(ordner / datei, das ? bitmap(1920, 1080, static_cast<char>(40 * i)) : bitmap(8, 8, 0));
    }
}

} // namespace

void bestandLegen(const Testdatenbank& datenbank, const Bestand& bestand) {
    std::string sql = "BEGIN;";
    for (int i = 0; i < bestand.schemata; ++i)
        sql += schemazeilen(i, bestand);
    datenbank.sql(sql + "COMMIT;");
    gamepadXmlLegen(datenbank.ordner(), bestand);
    bilderLegen(datenbank.ordner() / "Bilder", bestand);
}

std::string zeilenEinesFelds(int anzahl, bool gross) {
    const std::string linien = gross ? "600,64000,600,64000" : "32700,32760,32700,32760";
    std::string sql =
        "BEGIN; UPDATE tblStick SET (Links, Rechts, Oben, Unten) = (0, 0, 0, 0) WHERE Schemaname = '" +
        std::string(BESTANDSSCHEMA) + "'; UPDATE tblStick SET (Links, Rechts, Oben, Unten) = (" + linien +
        ") WHERE Schemaname = '" + BESTANDSSCHEMA +
        "' AND \"index\" = 1; DELETE FROM tblStickAktion WHERE Schemaname = '" + BESTANDSSCHEMA + "';";
    sql += "WITH RECURSIVE zahlen(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM zahlen WHERE n < " +
           zahl(anzahl) + ") INSERT INTO tblStickAktion SELECT '" + BESTANDSSCHEMA +
           "', 0, 0, 0, 0, 0, '0,0,5,10' FROM zahlen;";
    return sql + "COMMIT;";
}
