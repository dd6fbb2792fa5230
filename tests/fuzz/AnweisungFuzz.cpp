// SPDX-License-Identifier: GPL-3.0-or-later
// Any text as a statement of the store, and as the name of a `Schema` that is pasted into one. Whatever it
// says, SQLite gets one statement that only reads, and a name gets there as a value.
#include "base/LaufzeitFehler.h"
#include "store/db/Anweisungstext.h"
#include "store/db/Datenbank.h"
#include "tests/fuzz/Verlangen.h"

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>

namespace {

/// A database in memory with two of the tables.
sqlite3* datenbank() {
    sqlite3* neu = nullptr;
    sqlite3_open(":memory:", &neu);
    sqlite3_db_config(neu, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_exec(neu,
                 "CREATE TABLE tblTastatur (Schemaname TEXT, btn1 TEXT);"
                 "CREATE TABLE tblStick (Schemaname TEXT, \"index\" SMALLINT, Links INTEGER);",
                 nullptr, nullptr, nullptr);
    return neu;
}

void anSqlite(const Auswahl& auswahl) {
    static const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> verbindung(datenbank(), &sqlite3_close);
    const auto text = "SELECT _rowid_ FROM main.tblStick" + auswahl.bedingung +
                      (auswahl.geordnet ? ", _rowid_" : " ORDER BY _rowid_");
    sqlite3_stmt* anweisung = nullptr;
    const char* rest = nullptr;
    const int nummer =
        sqlite3_prepare_v2(verbindung.get(), text.data(), static_cast<int>(text.size()), &anweisung, &rest);
    if (nummer == SQLITE_OK && anweisung) {
        verlange(rest == text.data() + text.size());
        verlange(sqlite3_stmt_readonly(anweisung) != 0);
        verlange(sqlite3_bind_parameter_count(anweisung) == static_cast<int>(auswahl.werte.size()));
    }
    sqlite3_finalize(anweisung);
}

void alsAnweisung(std::string_view text) {
    try {
        anSqlite(auswahlLesen(text));
    } catch (const LaufzeitFehler& fehler) {
        verlange(fehler.nummer() == Fehlernummer::Syntax);
    }
}

void alsName(std::string_view name) {
    try {
        const auto auswahl =
            auswahlLesen(anweisung("SELECT * FROM tblStick WHERE (tblStick.Schemaname)= '", name,
                                   "' AND (tblStick.index)= 1 ORDER BY tblStick.Links;"));
        verlange(auswahl.tabelle == "tblStick" && auswahl.geordnet);
        verlange(auswahl.werte == std::vector<Wert>{std::string(name), std::int64_t{1}});
        anSqlite(auswahl);
    } catch (const LaufzeitFehler& fehler) {
        verlange(fehler.nummer() == Fehlernummer::Syntax && name.find('\'') != std::string_view::npos);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    const auto text = alsText(daten, groesse);
    alsAnweisung(text);
    alsName(text);
    return 0;
}
