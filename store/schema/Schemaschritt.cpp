// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/Schemaschritt.h"

#include "store/schema/Schemadaten.h"

namespace {

/// All values of a `Schema` in a table, as far as it has the columns; none where there is no such table.
std::vector<Wert> werteVon(Database& datenbank, std::size_t tabelle, const std::string& schemaName) {
    const auto& beschreibung = schematabellen()[tabelle];
    const std::string name(beschreibung.name);
    std::vector<Wert> werte;
    try {
        Recordset satz = datenbank.OpenRecordset(
            anweisung("SELECT * FROM " + name + " WHERE (" + name + ".Schemaname)= '", schemaName));
        for (; !satz.get_EOF(); satz.MoveNext())
            for (std::size_t i = 0; i <= beschreibung.spalten.size(); ++i) // with the name
                werte.push_back(satz.get_Value(static_cast<int>(i)));
    } catch (const LaufzeitFehler& fehler) {
        if (fehler.nummer() != Fehlernummer::KeineTabelle && fehler.nummer() != Fehlernummer::KeinSolchesFeld)
            throw;
    }
    return werte;
}

} // namespace

Schemaschritt::Stand Schemaschritt::standVon(Database& erste, Database& zweite) const {
    Stand stand;
    for (const auto& bereich : bereiche_)
        for (const auto& tabelle : bereich.tabellen)
            stand.push_back(werteVon(bereich.daneben ? zweite : erste, tabelle, bereich.schemaName));
    return stand;
}

void Schemaschritt::zuruecknehmen(const Fortgang& weiter, const std::function<void()>& dazu) {
    Database erste = OpenDatabase(pfad_);
    erste.fortgangFragen(weiter);
    Database zweite = erste.danebenOeffnen(daneben_.empty() ? pfad_ : daneben_);
    auto zeilen = zeilen_; // this one stays what it is where the transaction fails behind it
    erste.inEinerTransaktion([&] {
        if (danach_ != standVon(erste, zweite))
            throw LaufzeitFehler(Fehlernummer::VonAnderenGeaendert,
                                 "Seitdem wurde an denselben Daten etwas anderes geändert.");
        zeilen.zuruecknehmen(erste);
        if (dazu)
            dazu();
    });
}
