// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/hilfen/Testdatenbank.h"

#include <sqlite3.h>

#include <cstdlib>
#include <stdexcept>

namespace fs = std::filesystem;

Testordner::Testordner() {
    std::string muster = (fs::temp_directory_path() / "gamepad-konfic-XXXXXX").string();
    if (!mkdtemp(muster.data()))
        throw std::runtime_error("no temporary folder");
    pfad_ = muster;
}

Testordner::~Testordner() {
    std::error_code grund;
    fs::remove_all(pfad_, grund);
}

void RoheVerbindung::Schliesser::operator()(sqlite3* verbindung) const noexcept {
    sqlite3_close(verbindung);
}

RoheVerbindung::RoheVerbindung(const std::string& pfad) {
    sqlite3* sqlite = nullptr;
    const int nummer = sqlite3_open_v2(pfad.c_str(), &sqlite, SQLITE_OPEN_READWRITE, nullptr);
    sqlite_.reset(sqlite);
    if (nummer != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(sqlite));
}

void RoheVerbindung::sql(std::string_view text) {
    zeilen(text);
}

Tabellenbild RoheVerbindung::zeilen(std::string_view abfrage) {
    Tabellenbild bild;
    const auto zeile = [](void* ziel, int anzahl, char** werte, char**) {
        auto& neu = static_cast<Tabellenbild*>(ziel)->emplace_back();
        for (int i = 0; i < anzahl; ++i)
            neu.emplace_back(werte[i] ? werte[i] : "NULL");
        return 0;
    };
    if (sqlite3_exec(sqlite_.get(), std::string(abfrage).c_str(), zeile, &bild, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(sqlite_.get()));
    return bild;
}
