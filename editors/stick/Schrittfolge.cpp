// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Schrittfolge.h"

#include <algorithm>
#include <utility>

namespace {

// Steps are small; those that move thousands of actions are not.
constexpr std::size_t MEISTE_BYTES = std::size_t{256} << 20;

} // namespace

std::vector<Linienaenderung> linienunterschied(const Linienebene& vorher, const Linienebene& nachher) {
    std::vector<Linienaenderung> aenderungen;
    for (std::size_t d = 0; d < RICHTUNGEN; ++d)
        for (std::size_t slot = ERSTE_LINIENZEILE; slot <= LETZTE_LINIENZEILE; ++slot)
            if (vorher[slot][d] != nachher[slot][d])
                aenderungen.push_back({{d, static_cast<int>(slot)}, vorher[slot][d], nachher[slot][d]});
    return aenderungen;
}

void Schrittfolge::neu(Stickschritt schritt) {
    schritte_.erase(schritte_.begin() + static_cast<std::ptrdiff_t>(stelle_), schritte_.end());
    if (fortsetzen(schritt))
        return;
    if (!schritt.benannt()) {
        // Where it can't be joined others have written between: no step would find what it has left.
        if (stelle_ > 0 && !schritte_.back().zeilen.anfuegen(schritt.zeilen))
            leeren();
        return;
    }
    schritte_.push_back(std::move(schritt));
    ++stelle_;
    begrenzen();
}

bool Schrittfolge::fortsetzen(const Stickschritt& schritt) {
    if (stelle_ == 0 || !schritt.gehalten || schritt.linien.size() != 1)
        return false;
    auto& voriger = schritte_.back();
    const auto& linie = schritt.linien.front();
    const bool dieselbe = voriger.ebene == schritt.ebene && voriger.linien.size() == 1 &&
                          voriger.linien.front().platz == linie.platz &&
                          voriger.linien.front().neu == linie.alt;
    if (!dieselbe || !voriger.zeilen.anfuegen(schritt.zeilen))
        return false;
    voriger.linien.front().neu = linie.neu;
    return true;
}

void Schrittfolge::begrenzen() {
    std::size_t bytes = 0;
    for (const auto& schritt : schritte_)
        bytes += schritt.zeilen.bytes();
    while (bytes > MEISTE_BYTES && stelle_ > 1) {
        bytes -= schritte_.front().zeilen.bytes();
        schritte_.pop_front();
        --stelle_;
    }
}

void Schrittfolge::leeren() {
    schritte_.clear();
    stelle_ = 0;
}

Stickschritt* Schrittfolge::letzter() {
    return stelle_ == 0 ? nullptr : &schritte_[stelle_ - 1];
}

Stickschritt* Schrittfolge::naechster() {
    return stelle_ == schritte_.size() ? nullptr : &schritte_[stelle_];
}

void Schrittfolge::zurueckgenommen(const std::vector<Zeilenumzug>& umzuege) {
    umziehen(umzuege);
    --stelle_;
}

void Schrittfolge::wiederholt(const std::vector<Zeilenumzug>& umzuege) {
    umziehen(umzuege);
    ++stelle_;
}

void Schrittfolge::umziehen(const std::vector<Zeilenumzug>& umzuege) {
    if (umzuege.empty())
        return;
    for (auto& schritt : schritte_)
        schritt.zeilen.umziehen(umzuege); // nothing is left to do in the one that has moved them
}

void Schrittfolge::umbenennen(const std::string& alt, const std::string& neu) {
    for (auto& schritt : schritte_)
        schritt.zeilen.ersetzen("Schemaname", alt, neu);
}

std::int64_t Schrittfolge::hoechsteZeile() const {
    std::int64_t hoechste = 0;
    for (const auto& schritt : schritte_)
        hoechste = std::max(hoechste, schritt.zeilen.hoechsteZeile());
    return hoechste;
}
