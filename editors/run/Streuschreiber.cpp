// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/run/Streuschreiber.h"

#include "editors/common/Formhilfen.h"
#include "engine/run/GobalVariable.h"
#include "store/files/Streubilddateien.h"
#include "store/schema/modLesen.h"

#include <utility>

namespace {

constexpr auto NICHT_GESPEICHERT =
    "Wo die Sticks in diesem Lauf waren, konnte nicht gespeichert werden: Im Ordner „Streubilder“ neben der "
    "Datenbank lässt sich nicht schreiben, oder eine neuere Fassung des Programms hat es schon getan. Das "
    "Streubild zeigt nur frühere Läufe.";

/// One that was deleted while it ran gets no files again. What can't be asked counts as still there.
bool istGeloescht(const std::string& datenbankPfad, const std::string& schemaName) {
    try {
        return !FunktionLesen(datenbankPfad, schemaName);
    } catch (const LaufzeitFehler&) {
        return false;
    }
}

/// One that can't be kept does not keep the others from it.
bool dazuzaehlen(const Streubilddateien& dateien, const std::string& schemaName,
                 const std::vector<Streulauf>& laeufe) {
    bool alle = true;
    for (const auto& lauf : laeufe)
        alle = dateien.dazuzaehlen(schemaName, lauf.seite, lauf.ebene, lauf.daten) && alle;
    return alle;
}

} // namespace

Streuschreiber::Streuschreiber(const GobalVariable& global) : global_(global) {}

void Streuschreiber::ablegen(const std::string& schemaName, std::vector<Streulauf> laeufe) {
    schreiber_.auftrag(
        [datenbank = global_.DatenbankPfad, schemaName, laeufe = std::move(laeufe)] {
            return istGeloescht(datenbank, schemaName) ||
                   dazuzaehlen(Streubilddateien(streubildordner(datenbank)), schemaName, laeufe);
        },
        [this](bool gelungen) { melden(gelungen); });
}

void Streuschreiber::melden(bool gelungen) {
    const bool sagen = !gelungen && !gesagt_;
    gesagt_ = !gelungen;
    if (sagen)
        meldung(nullptr, NICHT_GESPEICHERT, "Streubild nicht gespeichert", QMessageBox::Warning);
}

void Streuschreiber::schemaVergessen(const std::string& schemaName) {
    abwarten();
    Streubilddateien(streubildordner(global_.DatenbankPfad)).loeschen(schemaName);
}
