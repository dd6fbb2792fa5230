#include "store/modSpeichern.h"

#include "store/Datenbank.h"
#include "store/Tastenspalten.h"

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

void kreuzSchreiben(Recordset& satz, const VarTastenbelegung& bild) {
    satz.Edit();
    for (int ebene = 0; ebene < EBENEN; ++ebene)
        for (int taste = TASTEN; taste < SLOTS; ++taste)
            satz.put_Value(kreuzordinal(ebene, taste), bild.belegung(taste, ebene));
    satz.Update();
}

/// Puts a number into the row being changed, where it differs from what stands there.
void setzeGeaendertes(Recordset& satz, int ordinal, std::int32_t wert) {
    if (satz.get_Value(ordinal) != Wert{std::int64_t{wert}})
        satz.put_Value(ordinal, std::int64_t{wert});
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

} // namespace

bool SchemaAnlegen(const std::string& datenbankPfad, const std::string& name, const std::string& pfad,
                   const std::function<bool(std::string_view)>& fragen) {
    Database datenbank = OpenDatabase(datenbankPfad);
    // The path of a new `Schema` is left out on purpose: it is out of sight while the name is typed.
    if (!zeileAnlegen(datenbank, "tblTastatur", name) &&
        fragen("Dieses Schema gibt es schon\nMöchten Sie das Schema ändern"))
        pfadSchreiben(datenbank, name, pfad);
    return zeileAnlegen(datenbank, "tblSteuerKreuz", name);
}

void TastenbelegungSpeichern(const std::string& datenbankPfad, const std::string& schemaName,
                             const VarTastenbelegung& bild) {
    Database datenbank = OpenDatabase(datenbankPfad);
    Recordset satz = datenbank.OpenRecordset(
        anweisung("SELECT * FROM tblTastatur WHERE (tblTastatur.Schemaname)= '", schemaName));
    if (satz.get_EOF())
        return;
    tastenSchreiben(satz, bild);
    satz = datenbank.OpenRecordset(
        anweisung("SELECT * FROM tblSteuerKreuz WHERE (tblSteuerKreuz.Schemaname)= '", schemaName));
    kreuzSchreiben(satz, bild);
}

void StickLinienSpeichern(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                          const Sticklinien& bild) {
    Database datenbank = OpenDatabase(datenbankPfad);
    Recordset satz = linienzeilen(datenbank, seite, schemaName);
    linienzeilenPruefen(satz, seite, schemaName);
    int ordinal = ERSTE_LINIENSPALTE;
    for (const auto& ebene : bild.linien) {
        satz.MoveFirst();
        for (std::size_t zeile = 1; zeile < ZEILEN_JE_STICK; ++zeile, satz.MoveNext()) {
            satz.Edit();
            for (std::size_t richtung = 0; richtung < RICHTUNGEN; ++richtung)
                setzeGeaendertes(satz, ordinal + static_cast<int>(richtung), ebene[zeile][richtung]);
            satz.Update();
        }
        ordinal += RICHTUNGEN;
    }
    satz.Edit(); // row 20, where the walk has ended
    setzeGeaendertes(satz, ERSTE_LINIENSPALTE, bild.StickSperre);
    satz.Update();
}

void AktionenVerschieben(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                         int ebene, int richtung, std::int32_t neu, std::int32_t alt) {
    const auto spalte = richtungsspalte(richtung);
    const int ordinal = ERSTE_LINIENSPALTE + richtung;
    Database datenbank = OpenDatabase(datenbankPfad);
    Recordset genau = aktionszeilen(datenbank, seite, schemaName, ebene, {{spalte, alt}});
    if (!genau.get_EOF()) {
        linieSetzen(genau, ordinal, neu, [](std::int64_t) { return true; });
        return;
    }
    Recordset alle = aktionszeilen(datenbank, seite, schemaName, ebene, {});
    linieSetzen(alle, ordinal, neu, [alt](std::int64_t wert) {
        return wert > std::int64_t{alt} - FANGWEITE && wert < std::int64_t{alt} + FANGWEITE;
    });
}

void StickAktionSpeichern(const std::string& datenbankPfad, Stickseite seite, const std::string& schemaName,
                          const Feldschluessel& feld, const std::string& aktion) {
    Database datenbank = OpenDatabase(datenbankPfad);
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

void FunktionSpeichern(const std::string& datenbankPfad, const std::string& schemaName, int index) {
    auto datenbank = OpenDatabase(datenbankPfad);
    auto satz = datenbank.OpenRecordset(
        anweisung("SELECT * FROM tblTastatur WHERE  (tblTastatur.Schemaname) = '", schemaName));
    // What stands there already is not written: a run must also start on a file that may only be read.
    if (satz.get_EOF() || satz.get_Value("Funktion") == Wert{std::int64_t{index}})
        return;
    satz.Edit();
    satz.put_Value("Funktion", std::int64_t{index});
    satz.Update();
}
