// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/SenLesSchr.h"

#include "store/db/Datenbank.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace {

/// A column of numbers and the scroll bar that it keeps.
struct Reglerspalte {
    int ordinal;
    std::size_t element; ///< of `HScroll1`
    int grundwert;       ///< without a row
};

// Mind the order: the columns take both windows, then both minimum counts; the elements take them by axis.
constexpr std::array<Reglerspalte, 6> SPALTEN_LINKS{
    {{1, 0, 30}, {2, 2, 30}, {3, 1, 0}, {4, 3, 0}, {5, 4, 400}, {6, 5, 400}}};
constexpr std::array<Reglerspalte, 6> SPALTEN_RECHTS{
    {{1, 6, 30}, {2, 8, 30}, {3, 7, 0}, {4, 9, 0}, {5, 10, 400}, {6, 11, 400}}};
constexpr int KEINE_SPALTE = -1;

/// What one stick's table has of its own.
struct Zwilling {
    std::string_view bisZumNamen;
    std::span<const Reglerspalte> spalten;
    int spalteHScroll2;
};

constexpr Zwilling LINKS{"SELECT * FROM Sensible WHERE (Sensible.Schemaname)= '", SPALTEN_LINKS, 7};
constexpr Zwilling RECHTS{"SELECT * FROM SensibleR WHERE (SensibleR.Schemaname)= '", SPALTEN_RECHTS,
                          KEINE_SPALTE};

/// The column's value on its scroll bar; Null gives `beiNull`.
int reglerwert(const Wert& wert, const Reglerbereich& bereich, int beiNull) {
    if (istNull(wert))
        return beiNull;
    return static_cast<int>(std::clamp<std::int64_t>(alsZahl(wert), bereich.min, bereich.max));
}

Reglerwerte gelesen(const Zwilling& zwilling, const Recordset& satz, Reglerwerte werte) {
    for (const auto& [ordinal, element, grundwert] : zwilling.spalten)
        werte.glaettung[element] = reglerwert(satz.get_Value(ordinal), HSCROLL1_BEREICHE[element], grundwert);
    if (zwilling.spalteHScroll2 != KEINE_SPALTE)
        werte.wiederholintervall =
            reglerwert(satz.get_Value(zwilling.spalteHScroll2), HSCROLL2_BEREICH, werte.wiederholintervall);
    return werte;
}

void schreibe(const Zwilling& zwilling, Recordset& satz, const Reglerwerte& werte) {
    satz.Edit();
    for (const Reglerspalte& spalte : zwilling.spalten)
        satz.put_Value(spalte.ordinal, werte.glaettung[spalte.element]);
    if (zwilling.spalteHScroll2 != KEINE_SPALTE)
        satz.put_Value(zwilling.spalteHScroll2, werte.wiederholintervall);
    satz.Update();
}

/// Lays a row with its name only. One that can't be laid is no obstacle to reading: the run that needs the
/// values goes on with the defaults, and its end, which writes, tells what can't be kept.
void zeileAnlegen(Recordset& satz, const std::string& schemaName, bool schreiben) {
    satz.AddNew();
    satz.put_Value(0, schemaName);
    try {
        satz.Update();
    } catch (const LaufzeitFehler&) {
        if (schreiben)
            throw;
    }
}

Reglerwerte mitGrundwerten(const Zwilling& zwilling, Reglerwerte werte) {
    for (const Reglerspalte& spalte : zwilling.spalten)
        werte.glaettung[spalte.element] = spalte.grundwert;
    return werte;
}

void lesenSchreiben(const Zwilling& zwilling, const std::string& datenbankPfad, const std::string& schemaName,
                    Reglerwerte& werte, bool schreiben) {
    Database datenbank = OpenDatabase(datenbankPfad);
    Recordset satz = datenbank.OpenRecordset(anweisung(zwilling.bisZumNamen, schemaName));
    if (satz.get_EOF()) {
        zeileAnlegen(satz, schemaName, schreiben);
        werte = mitGrundwerten(zwilling, werte); // also when writing: a row begins with the defaults
    } else if (schreiben) {
        schreibe(zwilling, satz, werte);
    } else {
        werte = gelesen(zwilling, satz, werte);
    }
}

} // namespace

void SensibleLesenSchreiben(const std::string& datenbankPfad, const std::string& schemaName,
                            Reglerwerte& werte, bool schreiben) {
    lesenSchreiben(LINKS, datenbankPfad, schemaName, werte, schreiben);
}

void SensibleRLesenSchreiben(const std::string& datenbankPfad, const std::string& schemaName,
                             Reglerwerte& werte, bool schreiben) {
    lesenSchreiben(RECHTS, datenbankPfad, schemaName, werte, schreiben);
}
