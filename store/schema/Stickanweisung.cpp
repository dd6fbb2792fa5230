// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/Stickanweisung.h"

#include <cstddef>

Recordset linienzeilen(Database& datenbank, Stickseite seite, const std::string& schemaName) {
    const std::string zusatz(tabellenzusatz(seite));
    const std::string tabelle = "tblStick" + zusatz;
    return datenbank.OpenRecordset(
        anweisung("SELECT * FROM " + tabelle + " WHERE (" + tabelle + ".Schemaname)= '", schemaName,
                  "' ORDER BY TBLSTICK" + zusatz + ".INDEX;"));
}

Recordset linienzeile(Database& datenbank, Stickseite seite, const std::string& schemaName, int index) {
    const std::string tabelle = "tblStick" + std::string(tabellenzusatz(seite));
    return datenbank.OpenRecordset(
        anweisung("Select * from " + tabelle + " Where (" + tabelle + ".Schemaname) = '", schemaName,
                  "' and (" + tabelle + ".Index) = " + std::to_string(index) + ";"));
}

void linienzeilenPruefen(const Recordset& satz, Stickseite seite, const std::string& schemaName) {
    if (satz.get_RecordCount() == 0)
        throw LaufzeitFehler(Fehlernummer::KeinAktuellerSatz,
                             "Die Tabelle „tblStick" + std::string(tabellenzusatz(seite)) +
                                 "“ hat für das Schema „" + schemaName + "“ keine Zeilen.");
}

Recordset aktionszeilen(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene,
                        std::initializer_list<std::pair<std::string_view, std::int32_t>> bedingung) {
    const std::string tabelle = "tblStickAktion" + std::string(tabellenzusatz(seite));
    std::string danach = "' AND (" + tabelle + ".Umschalt)= " + std::to_string(ebene);
    for (const auto& [spalte, wert] : bedingung)
        danach += " AND (" + tabelle + "." + std::string(spalte) + ")= " + std::to_string(wert);
    return datenbank.OpenRecordset(anweisung(
        "SELECT * FROM " + tabelle + " WHERE (" + tabelle + ".Schemaname)= '", schemaName, danach + ";"));
}

Recordset feldzeilen(Database& datenbank, Stickseite seite, const std::string& schemaName,
                     const Feldschluessel& feld) {
    const auto& [ebene, links, rechts, oben, unten] = feld;
    return aktionszeilen(datenbank, seite, schemaName, ebene,
                         {{"links", links}, {"rechts", rechts}, {"oben", oben}, {"Unten", unten}});
}

Recordset aktionszeilenNachLinks(Database& datenbank, Stickseite seite, const std::string& schemaName,
                                 int ebene) {
    const std::string zusatz(tabellenzusatz(seite));
    const std::string tabelle = "tblStickAktion" + zusatz;
    return datenbank.OpenRecordset(
        anweisung("SELECT * FROM " + tabelle + " WHERE (" + tabelle + ".Schemaname)= '", schemaName,
                  "' AND (" + tabelle + ".Umschalt)= " + std::to_string(ebene) + " Order by tblstickAktion" +
                      zusatz + ".Links;"));
}

Recordset aktionszeilenDerGruppe(Database& datenbank, Stickseite seite, const std::string& schemaName,
                                 int ebene, std::string_view gruppe) {
    const std::string tabelle = "tblStickAktion" + std::string(tabellenzusatz(seite));
    const std::string oben = tabelle + ".Oben, " + tabelle + ".Unten DESC;";
    std::string danach =
        "' AND (" + tabelle + ".Umschalt)= " + std::to_string(ebene) + " AND (" + tabelle + ".";
    if (gruppe == "Mitte")
        danach += "Links) = 0 And (" + tabelle + ".Rechts) = 0 ORDER BY " + oben;
    else
        danach += std::string(gruppe) + ")<> 0 ORDER BY " + tabelle + "." + std::string(gruppe) + ", " + oben;
    return datenbank.OpenRecordset(
        anweisung("SELECT * FROM " + tabelle + " WHERE (" + tabelle + ".Schemaname)= '", schemaName, danach));
}

const char* ebenenendung(int Umschalt) {
    switch (Umschalt) {
    case 1:
        return "2";
    case 2:
        return "3";
    default:
        return "";
    }
}

std::string_view richtungsspalte(int richtung) {
    if (richtung < 0 || richtung >= RICHTUNGEN)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Eine Richtung " + std::to_string(richtung) + " gibt es nicht.");
    return LINIENRICHTUNGEN[static_cast<std::size_t>(richtung)];
}
