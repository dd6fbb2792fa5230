// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps the sensitivity of the sticks across runs: copies between the row of a `Schema` and the scroll bars.
//
// The row of a `Schema` without one is made with its name only; its numbers come with the first write that
// finds it. Each procedure opens the database itself and closes it at its end.
#pragma once

#include "base/Regler.h"

#include <string>

/// Left stick, table Sensible: elements 0 to 5 of `HScroll1`, and `HScroll2`.
///
/// Reading takes the row over into `werte`; a number beyond the range of its scroll bar is clamped to it,
/// Null leaves the default of a missing row, and `HScroll2` as it was. Writing puts `werte` into the row.
/// Without a row both make one and set the six elements to their defaults, `HScroll2` stays; reading does so
/// also where the row can't be made. Throws LaufzeitFehler and changes nothing then: 13 for a column that
/// holds no whole number, 6 for a value beyond 16 bits, 3075 for a name with an apostrophe, 3027 for a write
/// to a file that can only be read.
void SensibleLesenSchreiben(const std::string& datenbankPfad, const std::string& schemaName,
                            Reglerwerte& werte, bool schreiben);

/// Right stick, table SensibleR: elements 6 to 11 of `HScroll1`; never `HScroll2`. Else the same.
void SensibleRLesenSchreiben(const std::string& datenbankPfad, const std::string& schemaName,
                             Reglerwerte& werte, bool schreiben);
