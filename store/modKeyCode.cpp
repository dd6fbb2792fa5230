#include "store/modKeyCode.h"

#include "store/Datenbank.h"

namespace {

std::string nameZuCode(Database& datenbank, const std::string& code) {
    try {
        const Recordset satz =
            datenbank.OpenRecordset(anweisung("SELECT * FROM tblKeyCode WHERE (tblKeyCode.Keyc)= '", code));
        return satz.get_EOF() ? "" : alsText(satz.get_Value("Keye"));
    } catch (const LaufzeitFehler&) {
        return code;
    }
}

std::string codeZuName(Database& datenbank, const std::string& name) {
    const Recordset satz =
        datenbank.OpenRecordset(anweisung("SELECT * FROM tblKeyCode WHERE (tblKeyCode.Keye)= '", name));
    return alsText(satz.get_Value("Keyc"));
}

} // namespace

std::string KeyCodeSuchen(const std::string& datenbankPfad, int richtung, const std::string& wert) {
    Database datenbank = OpenDatabase(datenbankPfad);
    return richtung == 0 ? nameZuCode(datenbank, wert) : codeZuName(datenbank, wert);
}
