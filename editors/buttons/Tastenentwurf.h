// SPDX-License-Identifier: GPL-3.0-or-later
// All that the button editor of a `Schema` held and showed when it was closed without saving.
#pragma once

#include "editors/buttons/Tastwerk.h"
#include "editors/common/Formstand.h"

struct Tastenentwurf {
    VarTastenbelegung bild;
    int taste;
    int ebene;
    Tastwerk::Umschalttasten umschalttasten;
    Formstand stand; ///< of all that shows a button or a layer
};
