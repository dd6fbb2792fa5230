// SPDX-License-Identifier: GPL-3.0-or-later
// Options of which one is set: a control array of radio buttons that lie wherever their form puts them.
#pragma once

#include "editors/common/Formhilfen.h"

#include <QButtonGroup>
#include <QRadioButton>

#include <array>

/// One option of each text, each named by its index; the first one is set.
template <std::size_t N>
std::array<QRadioButton*, N> optionen(const char* name, const std::array<const char*, N>& texte) {
    std::array<QRadioButton*, N> alle{};
    auto* gruppe = new QButtonGroup; // goes with the first one
    for (std::size_t i = 0; i < N; ++i) {
        alle[i] = benannt(new QRadioButton(texte[i]), feldname(name, static_cast<int>(i)));
        gruppe->addButton(alle[i]);
        // Tab stops once in a group, at the option that is set; the arrow keys go on from there.
        alle[i]->setFocusPolicy(Qt::ClickFocus);
        QObject::connect(alle[i], &QRadioButton::toggled, alle[i], [option = alle[i]](bool an) {
            option->setFocusPolicy(an ? Qt::StrongFocus : Qt::ClickFocus);
        });
    }
    gruppe->setParent(alle[0]);
    alle[0]->setChecked(true);
    return alle;
}

/// Makes options exclude each other, whatever else lies on their parent, and runs `klick` with the index of
/// one that gets set. `besitzer` lives as long as they.
template <class Reihe, class Klick> void gruppieren(const Reihe& optionen, QObject* besitzer, Klick klick) {
    auto* gruppe = new QButtonGroup(besitzer);
    int index = 0;
    for (auto* eine : optionen)
        gruppe->addButton(eine, index++);
    QObject::connect(gruppe, &QButtonGroup::idToggled, besitzer, [klick](int gesetzte, bool an) {
        if (an)
            klick(gesetzte);
    });
}
template <class Reihe> void gruppieren(const Reihe& optionen, QObject* besitzer) {
    gruppieren(optionen, besitzer, [](int) {});
}

/// Index of the option that is set, 0 for none.
template <class Reihe> int gesetzte(const Reihe& optionen) {
    int index = 0;
    for (const auto* eine : optionen) {
        if (eine->isChecked())
            return index;
        ++index;
    }
    return 0;
}
