// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/modKeyCode.h"

#include "store/db/Datenbank.h"

#include <optional>

namespace {

std::optional<Recordset> zeileZuCode(Database& datenbank, const std::string& code) {
    try {
        return datenbank.OpenRecordset(
            anweisung("SELECT * FROM tblKeyCode WHERE (tblKeyCode.Keyc)= '", code));
    } catch (const LaufzeitFehler&) {
        return std::nullopt;
    }
}

std::string codeZuName(Database& datenbank, const std::string& name) {
    const Recordset satz =
        datenbank.OpenRecordset(anweisung("SELECT * FROM tblKeyCode WHERE (tblKeyCode.Keye)= '", name));
    return alsText(satz.get_Value("Keyc"));
}

} // namespace

std::string TastennameLesen(Database& datenbank, const std::string& code) {
    const auto satz = zeileZuCode(datenbank, code);
    if (!satz)
        return code;
    try {
        return alsText(satz->get_Value("Keye"));
    } catch (const LaufzeitFehler&) { // no row, or none that can be read
        return "";
    }
}

std::string KeyCodeSuchen(const std::string& datenbankPfad, int richtung, const std::string& wert) {
    Database datenbank = OpenDatabase(datenbankPfad);
    return richtung == 0 ? TastennameLesen(datenbank, wert) : codeZuName(datenbank, wert);
}

std::map<std::string, std::string> TastennamenLesen(const std::string& datenbankPfad) {
    std::map<std::string, std::string> namen;
    Database datenbank = OpenDatabase(datenbankPfad);
    for (Recordset satz = datenbank.OpenRecordset("tblKeyCode"); !satz.get_EOF(); satz.MoveNext())
        namen[alsText(satz.get_Value("Keyc"))] = alsText(satz.get_Value("Keye"));
    return namen;
}
