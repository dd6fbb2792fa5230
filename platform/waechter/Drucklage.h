// SPDX-License-Identifier: GPL-3.0-or-later
// What is down on the devices of an X server, in the places of the sheet: by clients that press through
// XTEST, and by hand on the user's own devices.
//
// The server lets a key go for its programs as soon as one of its devices lets it go, also while another one
// still holds it, and also when the one that lets go has not held it. A button stays down with the last one.
#pragma once

#include "platform/waechter/Waechterblatt.h"

#include <bitset>

struct _XDisplay;

using Stellenmenge = std::bitset<Waechterblatt::STELLEN>;

struct Drucklage {
    Stellenmenge durchXtest;
    Stellenmenge vonHand; ///< keys only
};

/// Where the server does not tell of its devices all counts as down through XTEST.
Drucklage drucklage(_XDisplay* anzeige);
