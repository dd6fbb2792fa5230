// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/run/Haltebericht.h"

#include "base/Tastennamen.h"
#include "editors/common/Formhilfen.h"

#include <QStringList>

#include <algorithm>

using std::chrono::milliseconds;

namespace {

template <class... Faelle> struct Je : Faelle... { using Faelle::operator()...; };
template <class... Faelle> Je(Faelle...) -> Je<Faelle...>;

// In the order of the lines; upward and downward come first in the words.
constexpr std::array<const char*, 4> RICHTUNGSWORTE{"links", "rechts", "oben", "unten"};
constexpr std::array<std::size_t, 4> WORTFOLGE{2, 3, 0, 1};

constexpr std::array<const char*, 3> MAUSWORTE{"Linke Maustaste", "Rechte Maustaste", "Maustaste Mitte"};

template <class Worte> QString wort(const Worte& worte, int nummer) {
    const auto i = static_cast<std::size_t>(nummer);
    return i < worte.size() ? QString(worte[i]) : QString::number(nummer);
}

QString padwort(const Padhalter& halter) {
    const QString name = halter.slot < TASTEN ? qt(LAUFNAMEN[static_cast<std::size_t>(halter.slot)])
                                              : "Steuerkreuz " + wort(KREUZRICHTUNGEN, halter.slot - TASTEN);
    return halter.gedrueckt ? name : name + " (losgelassen)";
}

QString stickwort(const Stickhalter& halter) {
    const QString stick = halter.seite == Stickseite::Links ? "Linker Stick" : "Rechter Stick";
    return halter.feld ? stick + ", " + feldwort(*halter.feld) : stick;
}

QString halterwort(const Halter& halter) {
    return std::visit(
        Je{[](const OhneHalter&) { return QString("Von niemandem gehalten"); },
           [](const Padhalter& pad) { return padwort(pad); },
           [](const Stickhalter& stick) { return stickwort(stick); },
           [](const Schubhalter& schub) { return QString("Schubregler, Feld %1").arg(schub.feld); }},
        halter);
}

QString dauerwort(milliseconds dauer) {
    const auto sekunden = static_cast<int>(dauer / std::chrono::seconds{1});
    if (sekunden < 60)
        return QString("%1 s").arg(sekunden);
    return QString("%1:%2 min").arg(sekunden / 60).arg(sekunden % 60, 2, 10, QChar('0'));
}

bool verwaist(const Halter& halter) {
    const auto* pad = std::get_if<Padhalter>(&halter);
    return std::holds_alternative<OhneHalter>(halter) || (pad && !pad->gedrueckt);
}

// Which press it is, 0 for what is none: a movement, and a key in time, which comes and goes.
std::uint32_t druck(const Wirkung& wirkung) {
    return std::visit(Je{[](const Tastenwirkung& taste) { return taste.druck; },
                         [](const Mausknopfwirkung& knopf) { return knopf.druck; },
                         [](const auto&) { return std::uint32_t{0}; }},
                      wirkung);
}

} // namespace

QString feldwort(const Feldname& feld) {
    QStringList worte;
    bool nummeriert = false;
    for (const auto richtung : WORTFOLGE) {
        const auto& band = feld.baender[richtung];
        if (band.nummer == 0)
            continue;
        nummeriert = nummeriert || band.anzahl > 1;
        worte << (band.anzahl > 1 ? QString("%1 %2").arg(RICHTUNGSWORTE[richtung]).arg(band.nummer)
                                  : QString(RICHTUNGSWORTE[richtung]));
    }
    return worte.isEmpty() ? "Feld Mitte" : "Feld " + worte.join(nummeriert ? ", " : " ");
}

QString Haltebericht::wirkungswort(const Wirkung& wirkung) const {
    return std::visit(Je{[this](const Tastenwirkung& taste) {
                             const auto stelle = namen_.find(std::to_string(taste.taste));
                             const auto name = stelle != namen_.end() && !stelle->second.empty()
                                                   ? qt(stelle->second)
                                                   : QString("Taste %1").arg(taste.taste);
                             return taste.imTakt ? name + " im Takt" : name;
                         },
                         [](const Mausknopfwirkung& knopf) { return wort(MAUSWORTE, knopf.knopf); },
                         [](const Bewegungswirkung& bewegung) {
                             return "Mausbewegung nach " + wort(RICHTUNGSWORTE, bewegung.richtung);
                         },
                         [](const Absolutwirkung& absolut) {
                             return QString(absolut.egoShooter ? "Ego Shooter" : "Im Feld binden");
                         }},
                      wirkung);
}

void Haltebericht::ansehen(const Laufstand& stand, milliseconds jetzt) {
    std::vector<Gehaltenes> neue;
    for (const auto& haltung : stand.haltungen)
        neue.push_back({haltung, beginn(haltung, jetzt)});
    gehaltene_ = std::move(neue);
    jetzt_ = jetzt;
}

bool Haltebericht::auffaellig(const Gehaltenes& eines) const {
    return verwaist(eines.haltung.halter) ||
           (druck(eines.haltung.wirkung) != 0 && jetzt_ - eines.seit > LANGE);
}

std::vector<Haltezeile> Haltebericht::zeilen() const {
    auto geordnete = gehaltene_;
    std::ranges::stable_sort(geordnete, [&](const Gehaltenes& a, const Gehaltenes& b) {
        return std::pair(!auffaellig(a), a.seit) < std::pair(!auffaellig(b), b.seit);
    });
    std::vector<Haltezeile> zeilen;
    for (const auto& eines : geordnete) {
        const bool warnen = auffaellig(eines);
        zeilen.push_back({(warnen ? "⚠ " : "") + halterwort(eines.haltung.halter) + " → " +
                              wirkungswort(eines.haltung.wirkung) + ", " + dauerwort(jetzt_ - eines.seit),
                          warnen});
    }
    return zeilen;
}

// A press is the same one whoever holds it now.
milliseconds Haltebericht::beginn(const Haltung& haltung, milliseconds jetzt) const {
    const auto gleiche = std::ranges::find_if(gehaltene_, [&](const Gehaltenes& eines) {
        return eines.haltung == haltung ||
               (druck(haltung.wirkung) != 0 && eines.haltung.wirkung == haltung.wirkung);
    });
    return gleiche != gehaltene_.end() ? gleiche->seit : jetzt;
}
