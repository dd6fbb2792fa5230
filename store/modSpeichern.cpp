#include "store/modSpeichern.h"

#include "store/Datenbank.h"

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
