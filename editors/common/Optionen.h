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

/// Index of the option that is set.
template <std::size_t N> int gesetzte(const std::array<QRadioButton*, N>& optionen) {
    for (std::size_t i = 0; i < N; ++i)
        if (optionen[i]->isChecked())
            return static_cast<int>(i);
    return 0;
}
