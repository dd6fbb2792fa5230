// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/slider/Schubschritt.h"

#include "base/LaufzeitFehler.h"
#include "editors/common/Formhilfen.h"

#include <array>
#include <charconv>
#include <cstddef>

namespace {

constexpr std::array<const char*, 4> RICHTUNGSWORTE{"Links", "Rechts", "Oben", "Unten"};
constexpr std::array<const char*, 5> MAUSWORTE{"Linke Maustaste", "Rechte Maustaste", "Maustaste Mitte",
                                               "Scrollrad Plus", "Scrollrad Minus"};

/// The same entered, whether or not it is in sight.
bool gleichEingegeben(const Schubrahmenstand& eines, const Schubrahmenstand& anderes) {
    return eines.taste == anderes.taste && eines.tastenname == anderes.tastenname &&
           eines.controls.andereEingaben(anderes.controls).isEmpty();
}

bool gleicheTexte(const Schubentwurf& eines, const Schubentwurf& anderes) {
    for (std::size_t i = 0; i < eines.regler.size(); ++i)
        if (eines.regler[i].text(false) != anderes.regler[i].text(false))
            return false;
    return true;
}

template <std::size_t N> QString eines(const std::array<const char*, N>& namen, const std::string& nummer) {
    std::size_t i = N;
    std::from_chars(nummer.data(), nummer.data() + nummer.size(), i);
    return i < N ? QString(namen[i]) : qt(nummer);
}

QString aktionswort(const std::string& satz, const std::function<QString(const std::string&)>& taste) {
    Schubaktion aktion;
    try {
        if (!satz.empty())
            aktion = aktionAus(satz);
    } catch (const LaufzeitFehler&) {
        return einzeiler(qt(satz));
    }
    switch (aktion.art) {
    case Schubart::Mausbewegung:
        return "Maus nach " + eines(RICHTUNGSWORTE, aktion.unterwahl);
    case Schubart::Maustaste:
        return eines(MAUSWORTE, aktion.unterwahl);
    case Schubart::Tastatur:
        return "Taste " + taste(aktion.werte[0]);
    case Schubart::Leerfeld:
        break;
    }
    return "Leerfeld";
}

/// How the fields of one slider have changed; "" where they have not.
QString felderwort(const Schubtext& von, const Schubtext& nach,
                   const std::function<QString(const std::string&)>& taste) {
    if (von.linien() != nach.linien())
        return von.linien() < nach.linien() ? "Neue Linie" : "Linie löschen";
    for (int index = 0; index < nach.felder(); ++index) {
        if (von.satz(index) == nach.satz(index))
            continue;
        const auto vorher = aktionswort(von.satz(index), taste);
        const auto nachher = aktionswort(nach.satz(index), taste);
        return QString("Feld %1: ").arg(index + 1) +
               (vorher == nachher ? nachher + ", Eigenschaften" : vorher + " → " + nachher);
    }
    return "";
}

QString eingabewort(const Schubinhalt& von, const Schubinhalt& nach,
                    const std::function<QString(const std::string&)>& taste) {
    const auto& wo = nach.hatEingabe() ? nach : von;
    const auto feld = wo.entwurf.feld < 0 ? QString() : QString("Feld %1: ").arg(wo.entwurf.feld + 1);
    if (!nach.hatEingabe() && nach.entwurf.feld != von.entwurf.feld)
        return feld + "Eingabe verworfen";
    const auto& vorher = von.entwurf.rahmen;
    const auto& nachher = nach.entwurf.rahmen;
    if (vorher.taste != nachher.taste && nachher.taste != 0)
        return feld + "Eingabe Taste " + taste(std::to_string(nachher.taste));
    if (const auto box = tippfeld(von, nach); !box.empty())
        return QString("%1Eingabe %2 → %3")
            .arg(feld, einzeiler(vorher.controls.text(qt(box))), einzeiler(nachher.controls.text(qt(box))));
    return feld + "Eingabe";
}

} // namespace

bool Schubinhalt::hatEingabe() const {
    return !gleichEingegeben(entwurf.rahmen, entwurf.gezeigter);
}

bool Schubinhalt::operator==(const Schubinhalt& anderer) const {
    if (entwurf.nurAuswaerts != anderer.entwurf.nurAuswaerts || !gleicheTexte(entwurf, anderer.entwurf) ||
        hatEingabe() != anderer.hatEingabe())
        return false;
    return !hatEingabe() || gleichEingegeben(entwurf.rahmen, anderer.entwurf.rahmen);
}

std::string tippfeld(const Schubinhalt& von, const Schubinhalt& nach) {
    const auto& vorher = von.entwurf;
    const auto& nachher = nach.entwurf;
    if (vorher.nurAuswaerts != nachher.nurAuswaerts || !gleicheTexte(vorher, nachher) ||
        vorher.rahmen.taste != nachher.rahmen.taste || vorher.feld != nachher.feld)
        return {};
    const auto andere = vorher.rahmen.controls.andereEingaben(nachher.rahmen.controls);
    if (andere.size() != 1 ||
        vorher.rahmen.controls.text(andere.first()) == nachher.rahmen.controls.text(andere.first()))
        return {};
    return andere.first().toStdString();
}

QString schrittname(const Schubinhalt& von, const Schubinhalt& nach,
                    const std::function<QString(const std::string& code)>& taste) {
    for (std::size_t i = 0; i < von.entwurf.regler.size(); ++i)
        if (const auto wort = felderwort(von.entwurf.regler[i], nach.entwurf.regler[i], taste);
            !wort.isEmpty())
            return i == 0 ? wort : "Schubregler 2, " + wort;
    if (von.entwurf.nurAuswaerts != nach.entwurf.nurAuswaerts)
        return nach.entwurf.nurAuswaerts ? "„Deaktiviert beim loslassen…“ an"
                                         : "„Deaktiviert beim loslassen…“ aus";
    return eingabewort(von, nach, taste);
}
