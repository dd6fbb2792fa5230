// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/UebersichtAktion.h"

#include "store/db/Datenbank.h"
#include "store/schema/Ebenenspalten.h"
#include "store/schema/Schemadaten.h"
#include "store/schema/modLesen.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace {

/// A table that has one row a `Schema`.
struct Zeilentabelle {
    std::string_view bisZumNamen;
    std::string_view name;
    Ebenenspalten spalten;
    bool darfFehlen; ///< whether a `Schema` may be without its row
};
constexpr std::array<Zeilentabelle, 2> TASTENTABELLEN{{
    {"SELECT * FROM tblTastatur WHERE (tblTastatur.Schemaname)= '", "tblTastatur", TASTENSPALTEN, false},
    {"SELECT * FROM tblSteuerkreuz WHERE (tblSteuerkreuz.Schemaname)= '", "tblSteuerKreuz", KREUZSPALTEN,
     true},
}};

constexpr int SCHEMANAME = 0; ///< ordinal in every table

// Ordinals of tblStickAktion.
constexpr int UMSCHALT = 1;
constexpr std::size_t AKTIONSSPALTEN = 7;

using Aktionszeile = std::array<Wert, AKTIONSSPALTEN>;
using Linienzeile = std::array<Wert, RICHTUNGEN>;

/// What an index means.
struct Wahl {
    bool tasten;
    Stickseite stick; ///< of no meaning for the buttons
    int ebene;
};

Wahl wahlVon(int index) {
    if (index < 0 || index >= static_cast<int>(EBENENWAHLEN))
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Eine Ebene " + std::to_string(index) + " gibt es nicht.");
    return {istTastenebene(index), index < EBENEN ? Stickseite::Links : Stickseite::Rechts, index % EBENEN};
}

/// A side of an operation, while its file is open.
struct Seite {
    Database& datenbank;
    const Schemaort& ort;
    Wahl wahl;
};

[[noreturn]] void zuWenigZeilen(std::string_view tabelle, const Schemaort& ort, const std::string& zeilen) {
    throw LaufzeitFehler(Fehlernummer::KeinAktuellerSatz,
                         "Die Tabelle „" + std::string(tabelle) + "“ der Datenbank „" + ort.datenbankPfad +
                             "“ hat für das Schema „" + ort.schemaName + "“ " + zeilen + ".");
}

// --- buttons and D-pad ---

/// The row of a `Schema`. A D-pad without one counts as twelve empty records: its row is laid.
Recordset zeileOeffnen(const Seite& seite, const Zeilentabelle& tabelle) {
    const auto oeffnen = [&] {
        return seite.datenbank.OpenRecordset(anweisung(tabelle.bisZumNamen, seite.ort.schemaName));
    };
    Recordset satz = oeffnen();
    if (!satz.get_EOF())
        return satz;
    if (!tabelle.darfFehlen)
        zuWenigZeilen(tabelle.name, seite.ort, "keine Zeile");
    satz.AddNew();
    satz.put_Value(SCHEMANAME, seite.ort.schemaName);
    satz.Update();
    return oeffnen();
}

std::vector<Wert> zeileLesen(const Recordset& satz, const Zeilentabelle& tabelle, int ebene) {
    std::vector<Wert> werte;
    for (int i = 0; i < tabelle.spalten.anzahl; ++i)
        werte.push_back(satz.get_Value(tabelle.spalten.ordinal(ebene, i)));
    return werte;
}

void zeileSchreiben(Recordset& satz, const Zeilentabelle& tabelle, int ebene,
                    const std::vector<Wert>& werte) {
    satz.Edit();
    int nummer = 0;
    for (const Wert& wert : werte)
        satz.put_Value(tabelle.spalten.ordinal(ebene, nummer++), wert);
    satz.Update();
}

void tastenLoeschen(const Seite& seite) {
    for (const auto& tabelle : TASTENTABELLEN) {
        Recordset satz = zeileOeffnen(seite, tabelle);
        zeileSchreiben(satz, tabelle, seite.wahl.ebene,
                       std::vector<Wert>(static_cast<std::size_t>(tabelle.spalten.anzahl),
                                         Wert(std::string(LEERE_BELEGUNG))));
    }
}

// Both rows may be one: all values are read before the first is written.
void tastenWechseln(const Seite& erste, const Seite& zweite) {
    for (const auto& tabelle : TASTENTABELLEN) {
        Recordset ersterSatz = zeileOeffnen(erste, tabelle);
        Recordset zweiterSatz = zeileOeffnen(zweite, tabelle);
        const auto ersteWerte = zeileLesen(ersterSatz, tabelle, erste.wahl.ebene);
        const auto zweiteWerte = zeileLesen(zweiterSatz, tabelle, zweite.wahl.ebene);
        zeileSchreiben(ersterSatz, tabelle, erste.wahl.ebene, zweiteWerte);
        zeileSchreiben(zweiterSatz, tabelle, zweite.wahl.ebene, ersteWerte);
    }
}

// --- lines of a stick ---

Recordset linienOeffnen(const Seite& seite) {
    return linienzeilen(seite.datenbank, seite.wahl.stick, seite.ort.schemaName);
}

std::vector<Linienzeile> linienLesen(Recordset& satz, int ebene) {
    std::vector<Linienzeile> zeilen;
    for (; !satz.get_EOF(); satz.MoveNext()) {
        auto& zeile = zeilen.emplace_back();
        for (int d = 0; d < RICHTUNGEN; ++d)
            zeile[static_cast<std::size_t>(d)] = satz.get_Value(LINIENSPALTEN.ordinal(ebene, d));
    }
    return zeilen;
}

void linieSchreiben(Recordset& satz, int ebene, const Linienzeile& zeile) {
    satz.Edit();
    for (int d = 0; d < RICHTUNGEN; ++d)
        satz.put_Value(LINIENSPALTEN.ordinal(ebene, d), zeile[static_cast<std::size_t>(d)]);
    satz.Update();
}

/// Writes the lines from the first row of `satz` on; it has at least as many rows.
void linienSchreiben(Recordset& satz, int ebene, const std::vector<Linienzeile>& zeilen) {
    satz.MoveFirst();
    for (const auto& zeile : zeilen) {
        linieSchreiben(satz, ebene, zeile);
        satz.MoveNext();
    }
}

void linienpruefung(const Seite& seite, std::size_t hat, std::size_t braucht) {
    const std::string tabelle = "tblStick" + std::string(tabellenzusatz(seite.wahl.stick));
    if (hat == 0)
        zuWenigZeilen(tabelle, seite.ort, "keine Zeilen");
    if (hat < braucht)
        zuWenigZeilen(tabelle, seite.ort,
                      "nur " + std::to_string(hat) + " von " + std::to_string(braucht) + " Zeilen");
}

void linienLoeschen(const Seite& seite) {
    Linienzeile grundlinien;
    for (std::size_t d = 0; d < RICHTUNGEN; ++d)
        grundlinien[d] = std::int64_t{GRUNDLINIEN[d]};
    Linienzeile keine;
    keine.fill(std::int64_t{0});
    Recordset satz = linienOeffnen(seite);
    for (; !satz.get_EOF(); satz.MoveNext())
        linieSchreiben(satz, seite.wahl.ebene,
                       alsZahl(satz.get_Value("index")) == ERSTE_LINIENZEILE ? grundlinien : keine);
}

void linienWechseln(const Seite& erste, const Seite& zweite) {
    Recordset ersterSatz = linienOeffnen(erste);
    Recordset zweiterSatz = linienOeffnen(zweite);
    const auto ersteLinien = linienLesen(ersterSatz, erste.wahl.ebene);
    const auto zweiteLinien = linienLesen(zweiterSatz, zweite.wahl.ebene);
    linienpruefung(erste, ersteLinien.size(), zweiteLinien.size());
    linienpruefung(zweite, zweiteLinien.size(), ersteLinien.size());
    linienSchreiben(ersterSatz, erste.wahl.ebene, zweiteLinien);
    linienSchreiben(zweiterSatz, zweite.wahl.ebene, ersteLinien);
}

// --- actions of a stick ---

Recordset aktionenOeffnen(const Seite& seite) {
    return aktionszeilen(seite.datenbank, seite.wahl.stick, seite.ort.schemaName, seite.wahl.ebene, {});
}

Aktionszeile aktionLesen(const Recordset& satz) {
    Aktionszeile zeile;
    for (std::size_t i = 0; i < AKTIONSSPALTEN; ++i)
        zeile[i] = satz.get_Value(static_cast<int>(i));
    return zeile;
}

void aktionAnlegen(Recordset& satz, const Aktionszeile& zeile) {
    satz.AddNew();
    for (std::size_t i = 0; i < AKTIONSSPALTEN; ++i)
        satz.put_Value(static_cast<int>(i), zeile[i]);
    satz.Update();
}

void aktionenLoeschen(Recordset& satz) {
    while (!satz.get_EOF()) {
        satz.Delete();
        satz.MoveNext();
    }
}

// The rows keep their layer, and both directions carry the second side's name.
void aktionenWechseln(const Seite& erste, const Seite& zweite) {
    Recordset ersterSatz = aktionenOeffnen(erste);
    Recordset zweiterSatz = aktionenOeffnen(zweite);
    std::vector<Aktionszeile> ersteAktionen;
    for (; !ersterSatz.get_EOF(); ersterSatz.MoveNext()) {
        ersteAktionen.push_back(aktionLesen(ersterSatz));
        ersterSatz.Delete();
    }
    for (; !zweiterSatz.get_EOF(); zweiterSatz.MoveNext()) {
        Aktionszeile zeile = aktionLesen(zweiterSatz);
        zeile[SCHEMANAME] = zweite.ort.schemaName;
        aktionAnlegen(ersterSatz, zeile);
        zweiterSatz.Delete();
    }
    for (Aktionszeile& zeile : ersteAktionen) {
        zeile[SCHEMANAME] = zweite.ort.schemaName;
        aktionAnlegen(zweiterSatz, zeile);
    }
}

// --- copy ---

/// The source of a copy. It is read whole before anything is written: it may lie in the file, even in the
/// layer, that is written then.
struct Kopie {
    std::vector<Linienzeile> linien;
    std::vector<Aktionszeile> aktionen;
};

/// A file that is both source and target is written by the name of the source: what a crash leaves of a
/// change lies beside the name that it was made by, and another hard link would not lead to it.
const std::string& zielpfad(const Schemaort& quelle, const Schemaort& ziel) {
    std::error_code egal; // a file that is not there is told of when it is opened
    return std::filesystem::equivalent(quelle.datenbankPfad, ziel.datenbankPfad, egal) ? quelle.datenbankPfad
                                                                                       : ziel.datenbankPfad;
}

Kopie kopieLesen(const Schemaort& ort, const Wahl& wahl, const Fortgang& weiter) {
    Database datenbank = OpenDatabase(ort.datenbankPfad);
    datenbank.fortgangFragen(weiter);
    Kopie kopie;
    const Seite linke{datenbank, ort, {false, Stickseite::Links, wahl.ebene}};
    datenbank.inEinemLesezug([&] {
        Recordset linien = linienOeffnen(linke); // the left one's, whichever stick it is
        kopie.linien = linienLesen(linien, wahl.ebene);
        linienpruefung(linke, kopie.linien.size(), 1);
        Recordset aktionen = aktionenOeffnen({datenbank, ort, wahl});
        for (; !aktionen.get_EOF(); aktionen.MoveNext())
            kopie.aktionen.push_back(aktionLesen(aktionen));
    });
    return kopie;
}

void kopieSchreiben(const Kopie& kopie, const Seite& ziel) {
    Recordset linien = linienOeffnen(ziel);
    linienpruefung(ziel, static_cast<std::size_t>(linien.get_RecordCount()), kopie.linien.size());
    linienSchreiben(linien, ziel.wahl.ebene, kopie.linien);
    Recordset aktionen = aktionenOeffnen(ziel);
    aktionenLoeschen(aktionen);
    for (Aktionszeile zeile : kopie.aktionen) {
        zeile[SCHEMANAME] = ziel.ort.schemaName;
        zeile[UMSCHALT] = std::int64_t{ziel.wahl.ebene};
        aktionAnlegen(aktionen, zeile);
    }
}

/// All rows that an act on a layer may change.
Schemaschritt::Bereich bereich(const Seite& seite, bool daneben) {
    using namespace schematabelle;
    const auto& name = seite.ort.schemaName;
    if (seite.wahl.tasten)
        return {daneben, name, {TASTATUR, STEUERKREUZ}};
    if (seite.wahl.stick == Stickseite::Links)
        return {daneben, name, {STICK, STICKAKTION}};
    return {daneben, name, {STICK_R, STICKAKTION_R}};
}

} // namespace

void LayerLoeschen(const Ebenenort& ort, const std::function<bool(std::string_view)>& fragen,
                   const Fortgang& weiter, Schemaschritt* schritt) {
    Database datenbank = OpenDatabase(ort.schema.datenbankPfad);
    datenbank.fortgangFragen(weiter);
    const Seite seite{datenbank, ort.schema, wahlVon(ort.index)};
    Schemaschritt eigener;
    auto& tat = schritt ? *schritt : eigener;
    tat = Schemaschritt(ort.schema.datenbankPfad, "", {bereich(seite, false)});
    if (seite.wahl.tasten)
        return tat.tun(datenbank, datenbank, [&] { tastenLoeschen(seite); });
    tat.tun(datenbank, datenbank, [&] {
        Recordset satz = aktionenOeffnen(seite);
        aktionenLoeschen(satz);
    });
    // Nothing is locked while the user thinks.
    if (fragen("Die Aktionen wurden gelöscht, möchten Sie die Felder auch löschen?"))
        tat.tun(datenbank, datenbank, [&] { linienLoeschen(seite); });
}

void LayerWechseln(const Ebenenort& erster, const Ebenenort& zweiter,
                   const std::function<void(std::string_view)>& melden, const Fortgang& weiter,
                   Schemaschritt* schritt) {
    Database ersteDatenbank = OpenDatabase(erster.schema.datenbankPfad);
    ersteDatenbank.fortgangFragen(weiter);
    Database zweiteDatenbank = ersteDatenbank.danebenOeffnen(zweiter.schema.datenbankPfad);
    const Seite erste{ersteDatenbank, erster.schema, wahlVon(erster.index)};
    const Seite zweite{zweiteDatenbank, zweiter.schema, wahlVon(zweiter.index)};
    if (erste.wahl.tasten != zweite.wahl.tasten)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Eine Ebene eines Sticks wechselt nicht mit einer der Buttons.");
    const bool mitSichSelbst = ersteDatenbank.istDieselbeDatei(zweiteDatenbank) &&
                               erster.schema.schemaName == zweiter.schema.schemaName &&
                               erster.index == zweiter.index;
    Schemaschritt tat(erster.schema.datenbankPfad, zweiter.schema.datenbankPfad,
                      {bereich(erste, false), bereich(zweite, true)});
    if (!mitSichSelbst)
        tat.tun(ersteDatenbank, zweiteDatenbank, [&] {
            if (erste.wahl.tasten)
                return tastenWechseln(erste, zweite);
            linienWechseln(erste, zweite);
            aktionenWechseln(erste, zweite);
        });
    ersteDatenbank.Close();
    if (schritt)
        *schritt = std::move(tat);
    melden("Aktion Wechsel ist durchgeführt!");
}

void LayerKopieren(const Ebenenort& quelle, const Schemaort& ziel,
                   const std::array<bool, EBENENWAHLEN>& ziele, const Fortgang& weiter,
                   Schemaschritt* schritt) {
    const Wahl wahl = wahlVon(quelle.index);
    if (wahl.tasten)
        return;
    const Kopie kopie = kopieLesen(quelle.schema, wahl, weiter);
    const auto pfad = zielpfad(quelle.schema, ziel);
    Database datenbank = OpenDatabase(pfad);
    datenbank.fortgangFragen(weiter);
    std::vector<Seite> seiten;
    std::vector<Schemaschritt::Bereich> bereiche;
    for (int k = 0; k < static_cast<int>(EBENENWAHLEN); ++k)
        if (ziele[static_cast<std::size_t>(k)] && !istTastenebene(k)) {
            seiten.push_back({datenbank, ziel, wahlVon(k)});
            bereiche.push_back(bereich(seiten.back(), false));
        }
    Schemaschritt tat(pfad, "", std::move(bereiche));
    tat.tun(datenbank, datenbank, [&] {
        for (const auto& seite : seiten)
            kopieSchreiben(kopie, seite);
    });
    if (schritt)
        *schritt = std::move(tat);
}
