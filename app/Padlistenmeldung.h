// SPDX-License-Identifier: GPL-3.0-or-later
// What the user is told of a list of pads that cannot be used, in whole or in part.
#pragma once

#include <QString>

struct Padliste;

/// Name of the user's list in the folder of his data.
inline constexpr const char* PADLISTE = "gamecontrollerdb.txt";

/// The text of the box, which stays on the screen however many lines are faulty and however long they are; ""
/// where nothing is wrong.
QString padlistenmeldung(const Padliste& liste);
