// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/run/Streuschreiber.h"

#include "editors/common/Formhilfen.h"
#include "engine/run/GobalVariable.h"
#include "store/files/Streubilddateien.h"

#include <utility>

namespace {

constexpr auto NICHT_GESPEICHERT =
    "Wo die Sticks in diesem Lauf waren, konnte nicht gespeichert werden: Im Ordner „Streubilder“ neben der "
    "Datenbank lässt sich nicht schreiben, oder eine neuere Fassung des Programms hat es schon getan. Das "
    "Streubild zeigt nur frühere Läufe.";

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
    const Streubilddateien dateien(streubildordner(global_.DatenbankPfad));
    schreiber_.auftrag([dateien, schemaName,
                        laeufe = std::move(laeufe)] { return dazuzaehlen(dateien, schemaName, laeufe); },
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
