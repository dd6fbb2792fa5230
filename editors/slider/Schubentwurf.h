// SPDX-License-Identifier: GPL-3.0-or-later
// All that the slider editor of a `Schema` held and showed when it was closed without saving.
#pragma once

#include "editors/common/Formstand.h"
#include "formats/Schubtext.h"

#include <QString>

#include <array>

/// The action frame.
struct Schubrahmenstand {
    Formstand controls;
    int taste = 0; ///< code, 0 none
    QString tastenname;
    bool operator==(const Schubrahmenstand&) const = default;
};

struct Schubentwurf {
    std::array<Schubtext, 2> regler;
    int gewaehlt;      ///< whose fields the form showed
    bool nurAuswaerts; ///< `Check2`
    int feld;          ///< index in `List1`, -1 none
    Schubrahmenstand rahmen;
    Schubrahmenstand gezeigter; ///< the frame before somebody changed it
};
