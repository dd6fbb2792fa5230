// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/hilfen/Testdatenbank.h"

namespace fs = std::filesystem;

Testdatenbank::Testdatenbank() : pfad_(ordner_.pfad() / "Belegung.twk") {
    fs::copy_file(LEERE_DATENBANK, pfad_);
}

void Testdatenbank::sql(std::string_view text) const {
    RoheVerbindung(pfad()).sql(text);
}
Tabellenbild Testdatenbank::zeilen(std::string_view abfrage) const {
    return RoheVerbindung(pfad()).zeilen(abfrage);
}

std::vector<Tabellenbild> Testdatenbank::inhalt() const {
    std::vector<Tabellenbild> alles;
    RoheVerbindung verbindung(pfad());
    for (const auto& tabelle :
         verbindung.zeilen("SELECT name FROM sqlite_schema WHERE type='table' ORDER BY name"))
        alles.push_back(verbindung.zeilen("SELECT rowid, * FROM \"" + tabelle.at(0) + "\" ORDER BY rowid"));
    return alles;
}
