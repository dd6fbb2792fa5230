// SPDX-License-Identifier: GPL-3.0-or-later
// An event that is sent, as traces write it.
#pragma once

#include "platform/Eingabe.h"

#include <string>

/// One record as text: keys "+65" and "-65" ("+38e" with the extended flag), "m(dx,dy)" relative and
/// "abs(x,y)" absolute moves, "LD LU RD RU MD MU" buttons, "W+3" and "W-4" the wheel; several in one record
/// joined by blanks.
std::string ereignistext(const INPUT& ereignis);
