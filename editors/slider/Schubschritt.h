// SPDX-License-Identifier: GPL-3.0-or-later
// A step of the slider editor's undo: what makes two states of it the same, and how the step from one to the
// other is called, "Feld 3: Taste A → Linke Maustaste", say.
#pragma once

#include "editors/slider/Schubentwurf.h"

#include <QString>

#include <functional>
#include <string>

struct Schubinhalt {
    Schubentwurf entwurf;

    /// Whether something was set or written in the action frame and not taken over.
    bool hatEingabe() const;
    /// Which field or slider is looked at makes no difference.
    bool operator==(const Schubinhalt& anderer) const;
};

/// The box in which is typed from one state to the other, so that the next letter belongs to the same step;
/// "" where it is something else.
std::string tippfeld(const Schubinhalt& von, const Schubinhalt& nach);

/// What the step from one to the other is called; `taste` names a key by its code.
QString schrittname(const Schubinhalt& von, const Schubinhalt& nach,
                    const std::function<QString(const std::string& code)>& taste);
