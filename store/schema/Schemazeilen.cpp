// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/Schemazeilen.h"

#include "store/db/Datenbank.h"

#include <array>
#include <variant>

namespace {

struct Zeilenquelle {
    std::string name;
    int spalten;
};
/// The tables by their columns in physical order; the first one decides whether there is such a `Schema`.
const std::array<Zeilenquelle, 8> QUELLEN{{{"tblTastatur", 39},
                                           {"tblSteuerKreuz", 13},
                                           {"tblStick", 14},
                                           {"tblStickR", 14},
                                           {"tblStickAktion", 7},
                                           {"tblStickAktionR", 7},
                                           {"Sensible", 8},
                                           {"SensibleR", 7}}};
constexpr int SCHEMANAME = 0;
// Of the first table; nothing of a run hangs on them.
constexpr int PROGRAMMPFAD = 13;
constexpr int FUNKTION = 26;

// A line break would end the line that the statement is; a NUL its text.
std::string literal(const std::string& text) {
    std::string geschrieben = "'";
    for (const char zeichen : text) {
        if (zeichen == '\'')
            geschrieben += "''";
        else if (zeichen == '\n' || zeichen == '\r' || zeichen == '\0')
            geschrieben += "'||char(" + std::to_string(static_cast<int>(zeichen)) + ")||'";
        else
            geschrieben += zeichen;
    }
    return geschrieben + "'";
}

std::string literal(const Wert& wert) {
    if (istNull(wert))
        return "NULL";
    if (const auto* zahl = std::get_if<std::int64_t>(&wert))
        return std::to_string(*zahl);
    return literal(std::get<std::string>(wert));
}

std::string zeile(const Zeilenquelle& quelle, const Recordset& satz, const std::string& alsName) {
    std::string text = "INSERT INTO " + quelle.name + " VALUES (" + literal(alsName);
    for (int spalte = SCHEMANAME + 1; spalte < quelle.spalten; ++spalte) {
        const bool ohne =
            quelle.name == QUELLEN.front().name && (spalte == PROGRAMMPFAD || spalte == FUNKTION);
        text += ", ";
        text += ohne ? "NULL" : literal(satz.get_Value(spalte));
    }
    return text + ");";
}

} // namespace

std::vector<std::string> SchemazeilenLesen(const std::string& pfad, const std::string& schemaName,
                                           const std::string& alsName) {
    std::vector<std::string> zeilen;
    auto datenbank = OpenDatabase(pfad);
    datenbank.inEinemLesezug([&] {
        for (const auto& quelle : QUELLEN) {
            auto satz = datenbank.OpenRecordset(anweisung(
                "SELECT * FROM " + quelle.name + " WHERE (" + quelle.name + ".Schemaname)= '", schemaName));
            for (; !satz.get_EOF(); satz.MoveNext())
                zeilen.push_back(zeile(quelle, satz, alsName));
            if (zeilen.empty())
                return;
        }
    });
    return zeilen;
}
