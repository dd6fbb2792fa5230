// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/Schemaloeschen.h"

#include "store/db/Datenbank.h"
#include "store/files/Bilddatei.h"
#include "store/schema/Schemadaten.h"

#include <array>
#include <cstddef>
#include <numeric>
#include <utility>
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

std::vector<std::size_t> alleTabellen() {
    std::vector<std::size_t> alle(schematabelle::ANZAHL);
    std::iota(alle.begin(), alle.end(), std::size_t{0});
    return alle;
}

/// Gives what is told of parts that were missing.
std::vector<std::string_view> alleZeilenLoeschen(Database& datenbank, const std::string& schemaName) {
    std::vector<std::string_view> meldungen;
    for (const Loeschschritt& schritt : SCHRITTE)
        if (!zeilenLoeschen(datenbank, schritt, schemaName) && !schritt.wennLeer.empty())
            meldungen.push_back(schritt.wennLeer);
    return meldungen;
}

/// Whether the `Schema` has its row, so that a note that comes to nothing leaves what belongs to it.
bool gibtEs(Database& datenbank, const std::string& schemaName) {
    bool da = false;
    datenbank.inEinemLesezug([&] {
        da = !datenbank.OpenRecordset(anweisung(SCHRITTE.front().bisZumNamen, schemaName, "'));")).get_EOF();
    });
    return da;
}

/// Where the database can't be written either, that says more than that the note can't.
void vermerken(std::optional<Beiwerkvermerk>& vermerk, const Schemaplatz& platz, Database& datenbank,
               const std::string& schemaName) {
    try {
        vermerk.emplace(platz, std::vector{schemaName});
    } catch (const LaufzeitFehler& fehler) {
        if (fehler.nummer() != Fehlernummer::EinAusgabe)
            throw;
        datenbank.inEinerTransaktion([&] {
            alleZeilenLoeschen(datenbank, schemaName);
            throw fehler; // and nothing is deleted
        });
    }
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

void SchemaLoeschenFragen(const Schemaplatz& platz, const std::string& schemaName, const Loeschdialog& dialog,
                          GeloeschtesSchema* geloeschtes) {
    if (dialog.fragen("Möchten Sie das Schema wirklich löschen?", "Löschvorgang"))
        SchemaLoeschen(platz, schemaName, dialog.melden, dialog.weiter, geloeschtes);
}

void SchemaLoeschen(const Schemaplatz& platz, std::string schemaName,
                    const std::function<void(std::string_view)>& melden, const Fortgang& weiter,
                    GeloeschtesSchema* geloeschtes) {
    beiwerkAufraeumen(platz);
    Database datenbank = OpenDatabase(platz.datenbankPfad);
    datenbank.fortgangFragen(weiter);
    std::vector<std::string_view> meldungen;
    GeloeschtesSchema neues;
    neues.platz_ = platz;
    neues.schemaName_ = schemaName;
    neues.zeilen_ = Schemaschritt(platz.datenbankPfad, "", {{false, schemaName, alleTabellen()}});
    bool bilderBleiben = false;
    {
        std::optional<Beiwerkvermerk> vermerk;
        if (gibtEs(datenbank, schemaName))
            vermerken(vermerk, platz, datenbank, schemaName);
        neues.zeilen_.tun(datenbank, datenbank, [&] {
            meldungen = alleZeilenLoeschen(datenbank, schemaName);
            bilderBleiben = teiltBilder(datenbank, schemaName);
            neues.beiwerk_ = beiwerkVerwahren(platz, schemaName, bilderBleiben);
        });
        datenbank.Close();
        if (!vermerk)
            beiwerkLoeschen(platz, schemaName, bilderBleiben);
    } // what lies beside the database goes with the note
    if (geloeschtes)
        *geloeschtes = std::move(neues);
    for (const std::string_view meldung : meldungen)
        melden(meldung);
}

void GeloeschtesSchema::zurueckgeben(const Fortgang& weiter) {
    beiwerkAufraeumen(platz_);
    const auto frei = [this] {
        if (const auto grund = beiwerkImWeg(platz_, schemaName_, *beiwerk_); !grund.empty())
            throw LaufzeitFehler(Fehlernummer::VonAnderenGeaendert, grund);
    };
    frei(); // what others have laid there must not be cleared away by the note
    const Beiwerkvermerk vermerk(platz_, {schemaName_});
    zeilen_.zuruecknehmen(weiter, [&] { beiwerkZuruecklegen(platz_, schemaName_, *beiwerk_); });
}
