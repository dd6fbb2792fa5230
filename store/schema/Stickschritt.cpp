// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/Stickschritt.h"

#include "store/schema/modLesen.h"

#include <utility>

Schrittergebnis StickSchrittWenden(const std::string& datenbankPfad, Stickseite seite,
                                   const std::string& schemaName, Zeilenschritt& schritt,
                                   Schrittrichtung richtung, std::int64_t ueber, const Fortgang& weiter) {
    Database datenbank = OpenDatabase(datenbankPfad);
    datenbank.fortgangFragen(weiter);
    Schrittergebnis ergebnis;
    auto gewendeter = schritt; // it may still be rolled back
    datenbank.inEinerTransaktion([&] {
        ergebnis.umzuege = richtung == Schrittrichtung::Zurueck ? gewendeter.zuruecknehmen(datenbank, ueber)
                                                                : gewendeter.wiederholen(datenbank, ueber);
        ergebnis.linien = StickLinienLesen(datenbank, seite, schemaName);
    });
    schritt = std::move(gewendeter);
    return ergebnis;
}
