#include "store/modSpeichern.h"

#include "store/Datenbank.h"
#include "store/Tastenspalten.h"

namespace {

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

} // namespace

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
