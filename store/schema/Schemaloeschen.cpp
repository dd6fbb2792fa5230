// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/Schemaloeschen.h"

#include "store/db/Datenbank.h"
#include "store/files/Bilddatei.h"
#include "store/files/Streubilddateien.h"
#include "store/schema/VarTastenbelegung.h"

#include <array>
#include <vector>

namespace {

enum class Umfang { EineZeile, AlleZeilen };

/// A table in the order of the deletion.
struct Loeschschritt {
    std::string_view bisZumNamen;
    std::string_view wennLeer; ///< message; "" for none
    Umfang umfang;
};

constexpr std::array<Loeschschritt, 8> SCHRITTE{{
    {"SELECT * From tblTastatur WHERE (((tblTastatur.Schemaname)='", "Es gibt kein Tastaturschema",
     Umfang::EineZeile},
    {"SELECT * From tblSteuerKreuz WHERE (((tblSteuerKreuz.Schemaname)='", "Es gibt kein Schema",
     Umfang::EineZeile},
    {"SELECT * From tblstick WHERE (((tblStick.Schemaname)='", "", Umfang::AlleZeilen},
    {"SELECT * From tblStickR WHERE (((tblStickR.Schemaname)='", "", Umfang::AlleZeilen},
    {"SELECT * From tblStickAktion WHERE (((tblStickAktion.Schemaname)='", "Es gibt kein Stickschema (Links)",
     Umfang::AlleZeilen},
    {"SELECT * From tblStickAktionR WHERE (((tblStickAktionR.Schemaname)='",
     "Es gibt kein Stickschema (Rechts)", Umfang::AlleZeilen},
    {"SELECT * From sensible WHERE (((sensible.Schemaname)='", "", Umfang::AlleZeilen},
    {"SELECT * From SensibleR WHERE (((SensibleR.Schemaname)='", "", Umfang::AlleZeilen},
}};

/// False when there was nothing to delete.
bool zeilenLoeschen(Database& datenbank, const Loeschschritt& schritt, const std::string& schemaName) {
    Recordset satz = datenbank.OpenRecordset(anweisung(schritt.bisZumNamen, schemaName, "'));"));
    if (satz.get_EOF())
        return false;
    do {
        satz.Delete();
        satz.MoveNext();
    } while (schritt.umfang == Umfang::AlleZeilen && !satz.get_EOF());
    return true;
}

/// Whether another `Schema` has this name but for the case of its letters, and so the same pictures.
bool teiltBilder(Database& datenbank, const std::string& schemaName) {
    for (Recordset satz = datenbank.OpenRecordset("tblTastatur"); !satz.get_EOF(); satz.MoveNext()) {
        const std::string name = alsText(satz.get_Value("Schemaname"));
        if (name != schemaName && gleicherBildname(name, schemaName))
            return true;
    }
    return false;
}

} // namespace

void SchemaLoeschenFragen(const std::string& datenbankPfad, const std::string& bilderPfad,
                          const std::string& schemaName, const Loeschdialog& dialog) {
    if (dialog.fragen("Möchten Sie das Schema wirklich löschen?", "Löschvorgang"))
        SchemaLoeschen(datenbankPfad, bilderPfad, schemaName, dialog.melden, dialog.weiter);
}

void SchemaLoeschen(const std::string& datenbankPfad, const std::string& bilderPfad, std::string schemaName,
                    const std::function<void(std::string_view)>& melden, const Fortgang& weiter) {
    Database datenbank = OpenDatabase(datenbankPfad);
    datenbank.fortgangFragen(weiter);
    std::vector<std::string_view> meldungen;
    bool bilderBleiben = false;
    datenbank.inEinerTransaktion([&] {
        for (const Loeschschritt& schritt : SCHRITTE)
            if (!zeilenLoeschen(datenbank, schritt, schemaName) && !schritt.wennLeer.empty())
                meldungen.push_back(schritt.wennLeer);
        bilderBleiben = teiltBilder(datenbank, schemaName);
    });
    datenbank.Close();
    if (!bilderBleiben)
        StickBilderLoeschen(bilderPfad, schemaName);
    Streubilddateien(streubildordner(datenbankPfad)).loeschen(schemaName);
    for (const std::string_view meldung : meldungen)
        melden(meldung);
}

void StickBilderLoeschen(const std::string& bilderPfad, const std::string& schemaName) {
    std::vector<std::string> namen;
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        for (const std::string_view ende : {"L.bmp", "R.bmp"})
            namen.push_back(schemaName + std::to_string(ebene) + std::string(ende));
    bilddateienLoeschen(bilderPfad, namen);
}
