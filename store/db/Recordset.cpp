// SPDX-License-Identifier: GPL-3.0-or-later
// Every read and write goes to the file by row id at once.
#include "store/db/Recordset.h"

#include "store/db/Anweisungstext.h"
#include "store/db/Namen.h"
#include "store/db/Verbindung.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

namespace {

enum class Zustand { Lesend, Neu, Aendernd };

// The file is asked for its size at each of so many rows only.
constexpr std::size_t ZEILEN_JE_PRUEFUNG = 10'000;

/// What a search has found: the rows, and the values of the first of them, row after row.
struct Fund {
    std::vector<std::int64_t> zeilen;
    std::vector<Wert> werte;
};

// A foreign file may hold texts of any length: what is beyond is read row by row.
constexpr std::size_t MEISTE_BYTES = std::size_t{32} << 20;

std::size_t bytes(const Wert& wert) {
    const auto* text = std::get_if<std::string>(&wert);
    return sizeof wert + (text ? text->size() : 0);
}

/// With the values of columns by their ordinals.
Fund zeilenSuchen(Verbindung& verbindung, Dateiteil teil, const Tabelle& tabelle, const Auswahl& auswahl,
                  const std::vector<int>& ordinale) {
    const std::string text =
        "SELECT _rowid_" + (ordinale.empty() ? "" : ',' + tabelle.spaltenliste(ordinale)) + " FROM " +
        tabelle.ort + auswahl.bedingung + (auswahl.geordnet ? ", _rowid_" : " ORDER BY _rowid_");
    const int spalten = static_cast<int>(ordinale.size());
    Fund fund;
    std::size_t summe = 0;
    Verbindung::Lauf lauf(verbindung, text, zellen(auswahl.werte));
    while (lauf.weiter()) {
        fund.zeilen.push_back(alsZahl(lauf.wert(0)));
        if (fund.zeilen.size() % ZEILEN_JE_PRUEFUNG == 0)
            verbindung.zeilenPruefen(teil, fund.zeilen.size());
        if (summe > MEISTE_BYTES)
            continue;
        for (int i = 1; i <= spalten; ++i)
            summe += bytes(fund.werte.emplace_back(lauf.wert(i)));
    }
    return fund;
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
    std::vector<std::size_t> geloeschte; ///< places in `zeilen` of rows that are gone, ascending
    bool loch = false;                   ///< the row at `stelle` is one of them
    Zustand zustand = Zustand::Lesend;
    std::map<int, Wert> puffer; ///< put since AddNew or Edit, by ordinal
    // What a Lesezug keeps from changing: all rows of a set that is opened in it, come with their search,
    // and of one that was opened before the row that is read.
    std::vector<Wert> bild;       ///< values from the row `bildAb` on, row after row
    std::vector<int> bildspalten; ///< their ordinals in each row
    std::size_t bildAb = 0;       ///< place in `zeilen`
    std::uint64_t bildAus = 0;    ///< the Lesezug that `bild` was read in

    std::int64_t zeile() const;
    void stellen(std::size_t neueStelle);
    void geloeschteWeglassen();
    void beginnen(Zustand neu);
    Wert lesen(int ordinal);
    Wert ausDemBild(int ordinal);
    void ganzeZeileLesen(std::int64_t satz);
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

std::vector<Zelle> nurZellen(const std::map<int, Wert>& werte) {
    std::vector<Zelle> ergebnis;
    for (const auto& [ordinal, wert] : werte)
        ergebnis.push_back(zelle(wert));
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
}

/// All at once: row by row, to delete many would take the square of their number.
void Recordset::Innen::geloeschteWeglassen() {
    if (geloeschte.empty())
        return;
    bild.clear();
    std::size_t bleiben = 0;
    auto weg = geloeschte.begin();
    for (std::size_t i = 0; i < zeilen.size(); ++i)
        if (weg != geloeschte.end() && *weg == i)
            ++weg;
        else
            zeilen[bleiben++] = zeilen[i];
    zeilen.resize(bleiben);
    geloeschte.clear();
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
    const std::int64_t satz = zeile();
    auto spalte = std::ranges::find(bildspalten, ordinal);
    const bool da = spalte != bildspalten.end() && bildAus == verbindung->lesezug() && stelle >= bildAb &&
                    stelle < bildAb + bild.size() / bildspalten.size();
    if (!da) {
        ganzeZeileLesen(satz);
        spalte = bildspalten.begin() + ordinal;
    }
    const auto platz = static_cast<std::size_t>(spalte - bildspalten.begin());
    return bild[(stelle - bildAb) * bildspalten.size() + platz];
}

void Recordset::Innen::ganzeZeileLesen(std::int64_t satz) {
    bild.clear();
    bildspalten = tabelle->alle();
    Verbindung::Lauf lauf(*verbindung, lesetext, {satz});
    if (!lauf.weiter())
        keinAktuellerSatz();
    for (const int ordinal : bildspalten)
        bild.push_back(lauf.wert(ordinal));
    bildAb = stelle;
    bildAus = verbindung->lesezug();
}

void Recordset::Innen::einfuegen(const std::map<int, Wert>& werte) {
    std::string spalten;
    std::string stellen;
    for (const auto& [ordinal, wert] : werte) {
        spalten += (spalten.empty() ? "" : ",") + inAnfuehrung(tabelle->spalte(ordinal).name);
        stellen += stellen.empty() ? "?" : ",?";
    }
    const std::string was = werte.empty() ? " DEFAULT VALUES" : " (" + spalten + ") VALUES (" + stellen + ")";
    verbindung->schreiben(teil, "INSERT INTO " + tabelle->ort + was, nurZellen(werte));
    if (auto* mitschrift = verbindung->mitschrift())
        mitschrift->neu(teil, tabelle, verbindung->letzteZeile());
}

void Recordset::Innen::aendern(const std::map<int, Wert>& werte) {
    const std::int64_t satz = zeile();
    if (werte.empty())
        return;
    std::string zuweisungen;
    for (const auto& [ordinal, wert] : werte)
        zuweisungen += (zuweisungen.empty() ? "" : ",") + inAnfuehrung(tabelle->spalte(ordinal).name) + "=?";
    std::vector<Zelle> parameter = nurZellen(werte);
    parameter.emplace_back(satz);
    const std::string text = "UPDATE " + tabelle->ort + " SET " + zuweisungen + " WHERE _rowid_ = ?";
    if (auto* mitschrift = verbindung->mitschrift())
        mitschrift->vorher(teil, tabelle, satz);
    if (verbindung->schreiben(teil, text, parameter) == 0)
        keinAktuellerSatz();
}

Recordset::Recordset(std::shared_ptr<Verbindung> verbindung, Dateiteil teil, std::string_view source,
                     std::initializer_list<std::string_view> spalten)
    : innen_(std::make_unique<Innen>()) {
    const Auswahl auswahl = auswahlLesen(source);
    innen_->verbindung = std::move(verbindung);
    innen_->teil = teil;
    innen_->tabelle = innen_->verbindung->tabelle(teil, auswahl.tabelle);
    innen_->lesetext = innen_->tabelle->lesetext();
    for (const auto spalte : spalten)
        innen_->bildspalten.push_back(innen_->tabelle->ordinal(spalte));
    if (!innen_->verbindung->imLesezug())
        innen_->bildspalten.clear();
    else if (innen_->bildspalten.empty())
        innen_->bildspalten = innen_->tabelle->alle();
    auto fund = zeilenSuchen(*innen_->verbindung, teil, *innen_->tabelle, auswahl, innen_->bildspalten);
    innen_->zeilen = std::move(fund.zeilen);
    innen_->bild = std::move(fund.werte);
    innen_->bildAus = innen_->verbindung->lesezug();
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
    offen().geloeschteWeglassen();
    if (innen_->zeilen.empty())
        keinAktuellerSatz();
    innen_->stellen(0);
}

void Recordset::MoveNext() {
    if (get_EOF())
        keinAktuellerSatz();
    innen_->stellen(innen_->stelle + 1);
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
    if (auto* mitschrift = innen_->verbindung->mitschrift())
        mitschrift->vorher(innen_->teil, innen_->tabelle, satz);
    if (innen_->verbindung->schreiben(innen_->teil, text, {satz}) == 0)
        keinAktuellerSatz();
    innen_->geloeschte.push_back(innen_->stelle);
    innen_->loch = true;
}

void Recordset::bezeugen() const {
    const std::int64_t satz = offen().zeile();
    if (auto* mitschrift = innen_->verbindung->mitschrift())
        mitschrift->bezeugen(innen_->teil, innen_->tabelle, satz);
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
