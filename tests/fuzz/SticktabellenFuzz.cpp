// SPDX-License-Identifier: GPL-3.0-or-later
// Anything in the rows of a stick: each line of the input is a statement's worth of values for tblStick ("i"
// and five values) or tblStickAktion ("a" and five values, then the action); then the stick goes round the
// plane.
#include "engine/run/GobalVariable.h"
#include "engine/stick/StickMaschine.h"
#include "tests/fuzz/Fuzzlauf.h"

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

namespace {

// A value as SQL: a number as it stands, anything else as text.
std::string wert(const std::string& wort) {
    const bool zahl = !wort.empty() && wort.size() < 18 &&
                      wort.find_first_not_of("0123456789", wort[0] == '-' ? 1 : 0) == std::string::npos &&
                      wort != "-";
    if (zahl)
        return wort;
    std::string text = "'";
    for (const char zeichen : wort)
        text += zeichen == '\'' ? "''" : zeichen == '\0' ? " " : std::string(1, zeichen);
    return text + "'";
}

std::string anweisungAus(const std::string& zeile) {
    std::istringstream woerter(zeile.substr(1));
    std::string sql = zeile[0] == 'i' ? "INSERT OR REPLACE INTO tblStick (Schemaname, \"index\", Links, "
                                        "Rechts, Oben, Unten) VALUES ('S'"
                                      : "INSERT OR REPLACE INTO tblStickAktion VALUES ('S', 0";
    std::string wort;
    for (int i = 0; i < 5; ++i) {
        woerter >> wort;
        sql += "," + wert(wort);
    }
    return sql + ");";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    static const Testdatenbank datei;
    RoheVerbindung roh(datei.pfad());
    roh.sql("PRAGMA synchronous=OFF; PRAGMA journal_mode=MEMORY; BEGIN; DELETE FROM tblStick; DELETE FROM "
            "tblStickAktion;");
    roh.sql("INSERT INTO tblStick (Schemaname, \"index\", Links, Rechts, Oben, Unten) VALUES ('S', 1, 27072, "
            "38399, 25941, 39679);"
            "WITH RECURSIVE z(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM z WHERE i < 20)"
            " INSERT INTO tblStick (Schemaname, \"index\") SELECT 'S', i FROM z;");
    std::istringstream zeilen(std::string(reinterpret_cast<const char*>(daten), groesse));
    for (std::string zeile; std::getline(zeilen, zeile);)
        if (!zeile.empty())
            try {
                roh.sql(anweisungAus(zeile));
            } catch (const std::exception&) { // not every value goes into every column
            }
    roh.sql("COMMIT");

    Fuzzlauf lauf;
    GobalVariable global;
    global.DatenbankPfad = datei.pfad();
    global.SchemaName = "S";
    static Stickdatenbank datenbank;
    StickMaschine stick(LINKER_STICK_EIGENART, global, datenbank);
    lauf.versuchen([&] { stick.tabellenLaden(0); });
    for (const std::int32_t x : {32767, 0, 1, 9000, 27071, 27072, 38399, 38400, 65535})
        for (const std::int32_t y : {32767, 0, 20000, 60000, 65535})
            lauf.versuchen([&] { stick.auswerten(lauf.dienste, {x, y}); });
    return 0;
}
