// SPDX-License-Identifier: GPL-3.0-or-later
// Every read and write goes to the file by row id at once.
#include "store/db/Recordset.h"

#include "store/db/Anweisungstext.h"
#include "store/db/Namen.h"
#include "store/db/Verbindung.h"

#include <cstddef>
#include <map>
#include <utility>

namespace {

enum class Zustand { Lesend, Neu, Aendernd };

std::vector<std::int64_t> zeilenSuchen(Verbindung& verbindung, const Tabelle& tabelle,
                                       const Auswahl& auswahl) {
    const std::string text = "SELECT _rowid_ FROM " + tabelle.ort + auswahl.bedingung +
                             (auswahl.geordnet ? ", _rowid_" : " ORDER BY _rowid_");
    std::vector<std::int64_t> zeilen;
    Verbindung::Lauf lauf(verbindung, text, auswahl.werte);
    while (lauf.weiter())
        zeilen.push_back(alsZahl(lauf.wert(0)));
    return zeilen;
}

} // namespace

struct Recordset::Innen {
    std::shared_ptr<Verbindung> verbindung;
    Dateiteil teil{};
    std::shared_ptr<const Tabelle> tabelle;
    std::string lesetext;
    std::vector<std::int64_t> zeilen;
    std::int32_t anzahl = 0;
    std::size_t stelle = 0;
    bool loch = false; ///< the row before `stelle` has just been deleted
    Zustand zustand = Zustand::Lesend;
    std::map<int, Wert> puffer; ///< put since AddNew or Edit, by ordinal
    std::vector<Wert> bild;     ///< the current row, where a Lesezug keeps it from changing
    std::uint64_t bildAus = 0;  ///< the Lesezug that `bild` was read in

    std::int64_t zeile() const;
    void stellen(std::size_t neueStelle);
    void beginnen(Zustand neu);
    Wert lesen(int ordinal);
    Wert ausDemBild(int ordinal);
    void einfuegen(const std::map<int, Wert>& werte);
    void aendern(const std::map<int, Wert>& werte);
};

namespace {

[[noreturn]] void keinAktuellerSatz() {
    throw LaufzeitFehler(Fehlernummer::KeinAktuellerSatz, "Kein aktueller Datensatz.");
}

[[noreturn]] void keinAddNewOderEdit() {
    throw LaufzeitFehler(Fehlernummer::KeinAddNewOderEdit,
                         "Der Datensatz wurde weder mit AddNew noch mit Edit zum Schreiben geöffnet.");
}

std::vector<Wert> nurWerte(const std::map<int, Wert>& werte) {
    std::vector<Wert> ergebnis;
    for (const auto& [ordinal, wert] : werte)
        ergebnis.push_back(wert);
    return ergebnis;
}

} // namespace

std::int64_t Recordset::Innen::zeile() const {
    if (loch || stelle >= zeilen.size())
        keinAktuellerSatz();
    return zeilen[stelle];
}

void Recordset::Innen::stellen(std::size_t neueStelle) {
    beginnen(Zustand::Lesend);
    loch = false;
    stelle = neueStelle;
    bild.clear();
}

void Recordset::Innen::beginnen(Zustand neu) {
    zustand = neu;
    puffer.clear();
}

Wert Recordset::Innen::lesen(int ordinal) {
    tabelle->spalte(ordinal);
    if (const auto geschrieben = puffer.find(ordinal); geschrieben != puffer.end())
        return geschrieben->second;
    if (zustand == Zustand::Neu)
        return {};
    if (verbindung->imLesezug())
        return ausDemBild(ordinal);
    Verbindung::Lauf lauf(*verbindung, lesetext, {zeile()});
    if (!lauf.weiter())
        keinAktuellerSatz(); // deleted by others since the set was opened
    return lauf.wert(ordinal);
}

Wert Recordset::Innen::ausDemBild(int ordinal) {
    if (bildAus != verbindung->lesezug())
        bild.clear();
    if (bild.empty()) {
        bildAus = verbindung->lesezug();
        Verbindung::Lauf lauf(*verbindung, lesetext, {zeile()});
        if (!lauf.weiter())
            keinAktuellerSatz();
        for (std::size_t i = 0; i < tabelle->spalten.size(); ++i)
            bild.push_back(lauf.wert(static_cast<int>(i)));
    }
    return bild[static_cast<std::size_t>(ordinal)];
}

void Recordset::Innen::einfuegen(const std::map<int, Wert>& werte) {
    std::string spalten;
    std::string stellen;
    for (const auto& [ordinal, wert] : werte) {
        spalten += (spalten.empty() ? "" : ",") + inAnfuehrung(tabelle->spalte(ordinal).name);
        stellen += stellen.empty() ? "?" : ",?";
    }
    const std::string was = werte.empty() ? " DEFAULT VALUES" : " (" + spalten + ") VALUES (" + stellen + ")";
    verbindung->schreiben(teil, "INSERT INTO " + tabelle->ort + was, nurWerte(werte));
}

void Recordset::Innen::aendern(const std::map<int, Wert>& werte) {
    const std::int64_t satz = zeile();
    if (werte.empty())
        return;
    std::string zuweisungen;
    for (const auto& [ordinal, wert] : werte)
        zuweisungen += (zuweisungen.empty() ? "" : ",") + inAnfuehrung(tabelle->spalte(ordinal).name) + "=?";
    std::vector<Wert> parameter = nurWerte(werte);
    parameter.emplace_back(satz);
    const std::string text = "UPDATE " + tabelle->ort + " SET " + zuweisungen + " WHERE _rowid_ = ?";
    if (verbindung->schreiben(teil, text, parameter) == 0)
        keinAktuellerSatz();
}

Recordset::Recordset(std::shared_ptr<Verbindung> verbindung, Dateiteil teil, std::string_view source)
    : innen_(std::make_unique<Innen>()) {
    const Auswahl auswahl = auswahlLesen(source);
    innen_->verbindung = std::move(verbindung);
    innen_->teil = teil;
    innen_->tabelle = innen_->verbindung->tabelle(teil, auswahl.tabelle);
    innen_->lesetext = innen_->tabelle->lesetext();
    innen_->zeilen = zeilenSuchen(*innen_->verbindung, *innen_->tabelle, auswahl);
    innen_->anzahl = static_cast<std::int32_t>(innen_->zeilen.size());
}

Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::~Recordset() = default;

void Recordset::Close() {
    innen_.reset();
}

Recordset::Innen& Recordset::offen() const {
    if (!innen_ || !innen_->verbindung->istOffen())
        throw LaufzeitFehler(Fehlernummer::ObjektGeschlossen, "Die Datensatzgruppe ist geschlossen.");
    return *innen_;
}

bool Recordset::get_EOF() const {
    return !offen().loch && innen_->stelle >= innen_->zeilen.size();
}

std::int32_t Recordset::get_RecordCount() const {
    return offen().anzahl;
}

void Recordset::MoveFirst() {
    if (offen().zeilen.empty())
        keinAktuellerSatz();
    innen_->stellen(0);
}

void Recordset::MoveNext() {
    if (get_EOF())
        keinAktuellerSatz();
    innen_->stellen(innen_->loch ? innen_->stelle : innen_->stelle + 1);
}

void Recordset::AddNew() {
    offen().beginnen(Zustand::Neu);
}

void Recordset::Edit() {
    offen().zeile();
    innen_->beginnen(Zustand::Aendernd);
}

void Recordset::Update() {
    const Zustand war = std::exchange(offen().zustand, Zustand::Lesend);
    const std::map<int, Wert> werte = std::exchange(innen_->puffer, {});
    if (war == Zustand::Lesend)
        keinAddNewOderEdit();
    if (war == Zustand::Neu)
        innen_->einfuegen(werte);
    else
        innen_->aendern(werte);
}

void Recordset::Delete() {
    const std::int64_t satz = offen().zeile();
    innen_->beginnen(Zustand::Lesend);
    const std::string text = "DELETE FROM " + innen_->tabelle->ort + " WHERE _rowid_ = ?";
    if (innen_->verbindung->schreiben(innen_->teil, text, {satz}) == 0)
        keinAktuellerSatz();
    innen_->zeilen.erase(innen_->zeilen.begin() + static_cast<std::ptrdiff_t>(innen_->stelle));
    innen_->loch = true;
}

Wert Recordset::get_Value(int ordinal) const {
    return offen().lesen(ordinal);
}

Wert Recordset::get_Value(std::string_view spalte) const {
    return get_Value(offen().tabelle->ordinal(spalte));
}

void Recordset::put_Value(int ordinal, Wert wert) {
    const Spalte& spalte = offen().tabelle->spalte(ordinal);
    if (innen_->zustand == Zustand::Lesend)
        keinAddNewOderEdit();
    innen_->puffer[ordinal] = passendFuer(spalte, std::move(wert));
}

void Recordset::put_Value(std::string_view spalte, Wert wert) {
    put_Value(offen().tabelle->ordinal(spalte), std::move(wert));
}
