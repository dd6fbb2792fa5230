// SPDX-License-Identifier: GPL-3.0-or-later
// Builds a `Schema` in which each value tells where it was laid.
#pragma once

#include "tests/hilfen/Testdatenbank.h"

#include <string>

namespace ebenenbau {

/// "<basis>.<ordinal>" in all buttons and directions; `Funktion` is 7.
inline std::string tasten(const std::string& name, const std::string& basis) {
    constexpr int FUNKTION = 26;
    std::string sql;
    for (const auto& [tabelle, spalten] : {std::pair("tblTastatur", 38), std::pair("tblSteuerKreuz", 12)}) {
        sql += std::string("INSERT INTO ") + tabelle + " VALUES ('" + name + "'";
        for (int i = 1; i <= spalten; ++i)
            sql += i == FUNKTION ? std::string(",7") : ",'" + basis + "." + std::to_string(i) + "'";
        sql += ");";
    }
    return sql;
}

/// `zeilen` rows of lines: basis + 100 x row + ordinal. `zusatz` is "" or "R".
inline std::string linien(const std::string& zusatz, const std::string& name, int basis, int zeilen) {
    std::string sql;
    for (int zeile = zeilen; zeile >= 1; --zeile) { // not in the order in which they are read
        sql += "INSERT INTO tblStick" + zusatz + " VALUES ('" + name + "'," + std::to_string(zeile);
        for (int ordinal = 2; ordinal <= 13; ++ordinal) {
            sql += ",";
            sql += std::to_string(basis + 100 * zeile + ordinal);
        }
        sql += ");";
    }
    return sql;
}

/// Two actions on each layer: "<basis>/<layer>a" and "<basis>/<layer>b".
inline std::string aktionen(const std::string& zusatz, const std::string& name, const std::string& basis) {
    std::string sql;
    for (int ebene = 0; ebene < 3; ++ebene)
        for (const std::string ende : {"a", "b"})
            sql += "INSERT INTO tblStickAktion" + zusatz + " VALUES ('" + name + "'," +
                   std::to_string(ebene) + "," + (ende == "a" ? "1" : "2") + ",0,3,4,'" + basis + "/" +
                   std::to_string(ebene) + ende + "');";
    return sql;
}

} // namespace ebenenbau

/// Lays rows in one go; what a test lays need not survive a loss of power.
inline void aufEinmal(const Testdatenbank& datei, const std::string& sql) {
    datei.sql("PRAGMA synchronous = OFF; BEGIN;" + sql + "COMMIT");
}

/// The statements that lay a whole `Schema` with both sticks; the right one's lines begin at `basis` + 50000.
inline std::string schematext(const std::string& name, int basis) {
    const std::string text = name + std::to_string(basis);
    using namespace ebenenbau;
    return tasten(name, text) + linien("", name, basis, 20) + linien("R", name, basis + 50000, 20) +
           aktionen("", name, text + "L") + aktionen("R", name, text + "R");
}

inline void schemaLegen(const Testdatenbank& datei, const std::string& name, int basis) {
    aufEinmal(datei, schematext(name, basis));
}
