// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/modSpeichern.h"

#include "store/db/Datenbank.h"
#include "store/schema/Ebenenspalten.h"

#include <cstddef>

namespace {

/// Makes a row that carries its name only; false when the name has one.
bool zeileAnlegen(Database& datenbank, std::string_view tabelle, const std::string& name) {
    Recordset satz = datenbank.OpenRecordset(tabelle);
    satz.AddNew();
    satz.put_Value("Schemaname", name);
    try {
        satz.Update();
    } catch (const LaufzeitFehler& fehler) {
        if (fehler.nummer() != Fehlernummer::DoppelterSchluessel)
            throw;
        return false;
    }
    return true;
}

void pfadSchreiben(Database& datenbank, const std::string& name, const std::string& pfad) {
    Recordset satz = datenbank.OpenRecordset(
        anweisung("Select * FROM tblTastatur WHERE (tbltastatur.Schemaname)= '", name));
    satz.Edit();
    satz.put_Value("Programmpfad", pfad.empty() ? " " : pfad);
    satz.Update();
}

void tastenSchreiben(Recordset& satz, const VarTastenbelegung& bild) {
    satz.Edit();
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        for (int taste = 0; taste < TASTEN; ++taste)
            satz.put_Value("btn" + tastennummer(ebene, taste), bild.belegung(taste, ebene));
    satz.Update();
}

/// A row that is missing is laid.
void kreuzSchreiben(Recordset& satz, const std::string& schemaName, const VarTastenbelegung& bild) {
    if (satz.get_EOF()) {
        satz.AddNew();
        satz.put_Value(0, schemaName);
    } else {
        satz.Edit();
    }
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        for (int taste = TASTEN; taste < SLOTS; ++taste)
            satz.put_Value(KREUZSPALTEN.ordinal(ebene, taste - TASTEN), bild.belegung(taste, ebene));
    satz.Update();
}

/// Opens the rows of a stick, all twenty. One that has none gets none: its `Schema` has been deleted.
Recordset ganzeLinienzeilen(Database& datenbank, Stickseite seite, const std::string& schemaName) {
    Recordset satz = linienzeilen(datenbank, seite, schemaName);
    linienzeilenPruefen(satz, seite, schemaName);
    if (fehlendeZeilen(satz).empty())
        return satz;
    StickGrundzeilenAnlegen(datenbank, seite, schemaName);
    return linienzeilen(datenbank, seite, schemaName);
}

/// Whether there is nothing to save: what stands there already is not written, so that it needs no lock.
bool stehenSchonDa(Database& datenbank, Stickseite seite, const std::string& schemaName,
                   const Sticklinien& bild) {
    bool alle = false;
    datenbank.inEinemLesezug([&] {
        Recordset satz = linienzeilen(datenbank, seite, schemaName);
        linienzeilenPruefen(satz, seite, schemaName);
        alle = fehlendeZeilen(satz).empty();
        if (alle)
            jedenLinienwert(satz, bild, [&](int ordinal, std::int64_t wert) {
                alle = alle && satz.get_Value(ordinal) == Wert{wert};
            });
    });
    return alle;
}

/// Puts what differs from what stands there.
void linienSchreiben(Database& datenbank, Stickseite seite, const std::string& schemaName,
                     const Sticklinien& bild) {
    Recordset satz = ganzeLinienzeilen(datenbank, seite, schemaName);
    jedenLinienwert(satz, bild, [&](int ordinal, std::int64_t wert) {
        if (satz.get_Value(ordinal) == Wert{wert})
            return;
        satz.Edit();
        satz.put_Value(ordinal, wert);
        satz.Update();
    });
    for (satz.MoveFirst(); !satz.get_EOF(); satz.MoveNext())
        satz.bezeugen();
}

/// Gives the rows of `satz` whose line satisfies `trifftZu` the line `neu`.
template <class Bedingung>
void linieSetzen(Recordset& satz, int ordinal, std::int32_t neu, Bedingung&& trifftZu) {
    for (; !satz.get_EOF(); satz.MoveNext()) {
        if (!trifftZu(alsZahl(satz.get_Value(ordinal))))
            continue;
        satz.Edit();
        satz.put_Value(ordinal, std::int64_t{neu});
        satz.Update();
    }
}

constexpr std::int64_t FANGWEITE = 10; ///< how far beside a line an action no longer belongs to it

void aktionenVerschieben(Database& datenbank, Stickseite seite, const std::string& schemaName,
                         const Linienumzug& umzug) {
    const auto& [ebene, richtung, neu, alt] = umzug;
    const int ordinal = ERSTE_FELDSPALTE + richtung;
    Recordset genau = aktionszeilen(datenbank, seite, schemaName, ebene, {{richtungsspalte(richtung), alt}});
    if (!genau.get_EOF()) {
        linieSetzen(genau, ordinal, neu, [](std::int64_t) { return true; });
        return;
    }
    Recordset alle = aktionszeilen(datenbank, seite, schemaName, ebene, {});
    linieSetzen(alle, ordinal, neu,
                [von = std::int64_t{alt} - FANGWEITE, bis = std::int64_t{alt} + FANGWEITE](
                    std::int64_t wert) { return wert > von && wert < bis; });
}

void aktionSchreiben(Database& datenbank, Stickseite seite, const std::string& schemaName,
                     const Feldschluessel& feld, const std::string& aktion) {
    Recordset satz = feldzeilen(datenbank, seite, schemaName, feld);
    if (satz.get_EOF()) {
        satz.AddNew();
        satz.put_Value(0, schemaName);
        int ordinal = 1;
        for (const std::int32_t wert : feld)
            satz.put_Value(ordinal++, std::int64_t{wert});
    } else {
        satz.Edit();
    }
    satz.put_Value("Aktion", aktion);
    satz.Update();
}

} // namespace

bool SchemaAnlegen(const std::string& datenbankPfad, const std::string& name, const std::string& pfad,
                   const std::function<bool(std::string_view)>& fragen) {
    Database datenbank = OpenDatabase(datenbankPfad);
    bool neu = false;
    bool mitKreuz = false;
    const auto kreuzAnlegen = [&] { mitKreuz = zeileAnlegen(datenbank, "tblSteuerKreuz", name); };
    // The path of a new `Schema` is left out on purpose: it is out of sight while the name is typed.
    datenbank.inEinerTransaktion([&] {
        neu = zeileAnlegen(datenbank, "tblTastatur", name);
        if (neu)
            kreuzAnlegen();
    });
    if (neu)
        return mitKreuz;
    // Nothing is locked while the user thinks.
    const bool aendern = fragen("Dieses Schema gibt es schon\nMöchten Sie das Schema ändern");
    datenbank.inEinerTransaktion([&] {
        if (aendern)
            pfadSchreiben(datenbank, name, pfad);
        kreuzAnlegen();
    });
    return mitKreuz;
}

bool TastenbelegungSpeichern(const std::string& datenbankPfad, const std::string& schemaName,
                             const VarTastenbelegung& bild) {
    Database datenbank = OpenDatabase(datenbankPfad);
    bool gespeichert = false;
    datenbank.inEinerTransaktion([&] {
        Recordset tasten = datenbank.OpenRecordset(
            anweisung("SELECT * FROM tblTastatur WHERE (tblTastatur.Schemaname)= '", schemaName));
        if (tasten.get_EOF())
            return;
        tastenSchreiben(tasten, bild);
        Recordset kreuz = datenbank.OpenRecordset(
            anweisung("SELECT * FROM tblSteuerKreuz WHERE (tblSteuerKreuz.Schemaname)= '", schemaName));
        kreuzSchreiben(kreuz, schemaName, bild);
        gespeichert = true;
    });
    return gespeichert;
}

void StickLinienSpeichern(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                          const Sticklinien& bild, Zeilenschritt* schritt) {
    Database datenbank = OpenDatabase(datenbankPfad);
    if (!stehenSchonDa(datenbank, seite, schemaName, bild))
        datenbank.alsSchritt(schritt, [&] { linienSchreiben(datenbank, seite, schemaName, bild); });
}

void StickLinieVerlegen(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                        const Sticklinien& bild, const Linienumzug& umzug, const Fortgang& weiter,
                        Zeilenschritt* schritt) {
    Database datenbank = OpenDatabase(datenbankPfad);
    datenbank.fortgangFragen(weiter);
    datenbank.alsSchritt(schritt, [&] {
        linienSchreiben(datenbank, seite, schemaName, bild);
        aktionenVerschieben(datenbank, seite, schemaName, umzug);
    });
}

bool StickLinieEntfernen(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                         const Sticklinien& bild, int ebene, int richtung, std::int32_t linie,
                         Zeilenschritt* schritt) {
    Database datenbank = OpenDatabase(datenbankPfad);
    const auto leerfelderLoeschen = [&](Zeilenschritt* eigener) {
        return StickAktionenLoeschen(datenbank, seite, schemaName, ebene, richtung, linie, eigener);
    };
    // The file is locked only where there is something to write.
    if (!stehtKeineAktionAn(datenbank, seite, schemaName, ebene, richtung, linie)) {
        leerfelderLoeschen(schritt);
        return false;
    }
    bool entfernt = false;
    datenbank.alsSchritt(schritt, [&] {
        entfernt = leerfelderLoeschen(nullptr);
        if (entfernt)
            linienSchreiben(datenbank, seite, schemaName, bild);
    });
    return entfernt;
}

void StickAktionSpeichern(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                          const Feldschluessel& feld, const std::string& aktion, Zeilenschritt* schritt) {
    Database datenbank = OpenDatabase(datenbankPfad);
    datenbank.alsSchritt(schritt, [&] { aktionSchreiben(datenbank, seite, schemaName, feld, aktion); });
}

void FunktionSpeichern(const std::string& datenbankPfad, const std::string& schemaName, int index) {
    auto datenbank = OpenDatabase(datenbankPfad);
    auto satz = datenbank.OpenRecordset(
        anweisung("SELECT * FROM tblTastatur WHERE  (tblTastatur.Schemaname) = '", schemaName));
    if (satz.get_EOF())
        return;
    // What stands there already is not written: a run must also start on a file that may only be read. Null
    // stands for 0.
    const Wert steht = satz.get_Value("Funktion");
    if (steht == Wert{std::int64_t{index}} || (istNull(steht) && index == 0))
        return;
    satz.Edit();
    satz.put_Value("Funktion", std::int64_t{index});
    satz.Update();
}
