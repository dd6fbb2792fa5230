// SPDX-License-Identifier: GPL-3.0-or-later
// The part of Zeilenschritt that works on a database: checks the rows of a step, and writes them.
#include "store/db/Datenbank.h"
#include "store/db/Namen.h"
#include "store/db/Verbindung.h"
#include "store/db/Zeilenschritt.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace {

[[noreturn]] void vonAnderenGeaendert() {
    throw LaufzeitFehler(Fehlernummer::VonAnderenGeaendert,
                         "Die Daten haben sich seitdem an anderer Stelle geändert.");
}

} // namespace

/// One step made on a file, in one of its two directions.
struct Zeilenschritt::Wendung {
    Verbindung& verbindung;
    Bild Zeile::*von;
    Bild Zeile::*nach;
    std::int64_t ueber;
    std::vector<Zeilenumzug> umzuege;

    void pruefen(const Tabellenteil& teil, const Tabelle& tabelle);
    void entfernen(const Tabellenteil& teil, const Tabelle& tabelle);
    void aendern(const Tabellenteil& teil, const Tabelle& tabelle);
    void legen(const Tabellenteil& teil, const Tabelle& tabelle);

private:
    void zeileAendern(const Tabellenteil& teil, const Tabelle& tabelle, const Zeile& zeile);
    std::int64_t neuerOrt(const Tabellenteil& teil, const Tabelle& tabelle) const;
    void erwarteEine(int geaendert) const;
};

void Zeilenschritt::Wendung::pruefen(const Tabellenteil& teil, const Tabelle& tabelle) {
    if (tabelle.spaltennamen() != teil.spalten)
        vonAnderenGeaendert();
    // Of a row that is to be laid only its place may be taken; that is seen to then.
    for (const auto& zeile : teil.zeilen)
        if (zeile.*von && verbindung.zeilenbild(tabelle, zeile.ort) != zeile.*von)
            vonAnderenGeaendert();
}

void Zeilenschritt::Wendung::erwarteEine(int geaendert) const {
    if (geaendert != 1)
        vonAnderenGeaendert();
}

void Zeilenschritt::Wendung::entfernen(const Tabellenteil& teil, const Tabelle& tabelle) {
    const std::string text = "DELETE FROM " + tabelle.ort + " WHERE _rowid_ = ?";
    for (const auto& zeile : teil.zeilen)
        if (zeile.*von && !(zeile.*nach))
            erwarteEine(verbindung.schreiben(teil.teil, text, {zeile.ort}));
}

void Zeilenschritt::Wendung::aendern(const Tabellenteil& teil, const Tabelle& tabelle) {
    for (const auto& zeile : teil.zeilen)
        if (zeile.*von && zeile.*nach && zeile.*von != zeile.*nach)
            zeileAendern(teil, tabelle, zeile);
}

/// Only the columns that differ are written: a rule of the table for another one is no matter of this step.
void Zeilenschritt::Wendung::zeileAendern(const Tabellenteil& teil, const Tabelle& tabelle,
                                          const Zeile& zeile) {
    const auto alte = (zeile.*von)->zellen();
    const auto neue = (zeile.*nach)->zellen();
    std::string zuweisungen;
    std::vector<Zelle> parameter;
    for (std::size_t i = 0; i < neue.size(); ++i) {
        if (alte[i] == neue[i])
            continue;
        zuweisungen += zuweisungen.empty() ? "" : ",";
        zuweisungen += inAnfuehrung(tabelle.spalten[i].name) + "=?";
        parameter.push_back(neue[i]);
    }
    parameter.emplace_back(zeile.ort);
    erwarteEine(verbindung.schreiben(
        teil.teil, "UPDATE " + tabelle.ort + " SET " + zuweisungen + " WHERE _rowid_ = ?", parameter));
}

/// In their order. Behind one that finds its place taken all go to new places, so that the order stays.
void Zeilenschritt::Wendung::legen(const Tabellenteil& teil, const Tabelle& tabelle) {
    std::string stellen = "?";
    for (std::size_t i = 0; i < tabelle.spalten.size(); ++i)
        stellen += ",?";
    const std::string text = "INSERT INTO " + tabelle.ort + " (_rowid_," +
                             tabelle.spaltenliste(tabelle.alle()) + ") VALUES (" + stellen + ")";
    std::int64_t frei = 0; // the next new place, once there is one
    for (const auto& zeile : teil.zeilen) {
        if (zeile.*von || !(zeile.*nach))
            continue;
        if (frei == 0 && verbindung.zeilenbild(tabelle, zeile.ort))
            frei = neuerOrt(teil, tabelle);
        const std::int64_t ort = frei == 0 ? zeile.ort : frei++;
        std::vector<Zelle> parameter;
        parameter.emplace_back(ort);
        std::ranges::move((zeile.*nach)->zellen(), std::back_inserter(parameter));
        erwarteEine(verbindung.schreiben(teil.teil, text, parameter));
        if (verbindung.letzteZeile() != ort) // a column of the table is the place, and says another one
            vonAnderenGeaendert();
        if (ort != zeile.ort)
            umzuege.push_back({teil.teil, teil.tabelle, zeile.ort, ort});
    }
}

std::int64_t Zeilenschritt::Wendung::neuerOrt(const Tabellenteil& teil, const Tabelle& tabelle) const {
    Verbindung::Lauf lauf(verbindung, "SELECT max(_rowid_) FROM " + tabelle.ort, {});
    lauf.weiter();
    const std::int64_t hoechste =
        std::max({ueber, teil.zeilen.back().ort, alsZahl(lauf.wert(0))}); // not empty: a place is taken
    if (hoechste > std::numeric_limits<std::int64_t>::max() - std::ssize(teil.zeilen))
        vonAnderenGeaendert();
    return hoechste + 1;
}

std::vector<Zeilenumzug> Zeilenschritt::zuruecknehmen(Database& datenbank, std::int64_t ueber) {
    return wenden(datenbank, &Zeile::nachher, &Zeile::vorher, ueber);
}

std::vector<Zeilenumzug> Zeilenschritt::wiederholen(Database& datenbank, std::int64_t ueber) {
    return wenden(datenbank, &Zeile::vorher, &Zeile::nachher, ueber);
}

std::vector<Zeilenumzug> Zeilenschritt::wenden(Database& datenbank, Bild Zeile::*von, Bild Zeile::*nach,
                                               std::int64_t ueber) {
    std::vector<Zeilenumzug> umzuege;
    const auto arbeit = [&] {
        auto& verbindung = datenbank.offen();
        Wendung wendung{verbindung, von, nach, ueber, {}};
        // All is looked at before anything is written, and rows go before others come that may have their
        // key.
        using Gang = void (Wendung::*)(const Tabellenteil&, const Tabelle&);
        for (const Gang gang : {&Wendung::pruefen, &Wendung::entfernen, &Wendung::aendern, &Wendung::legen})
            for (const auto& teil : tabellen_)
                (wendung.*gang)(teil, *verbindung.tabelle(teil.teil, teil.tabelle));
        umzuege = std::move(wendung.umzuege);
    };
    try {
        datenbank.inEinerTransaktion(arbeit);
    } catch (const LaufzeitFehler& fehler) {
        if (fehler.nummer() == Fehlernummer::DoppelterSchluessel ||
            fehler.nummer() == Fehlernummer::KeineTabelle)
            vonAnderenGeaendert();
        throw;
    }
    umziehen(umzuege);
    return umzuege;
}
