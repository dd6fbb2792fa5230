// SPDX-License-Identifier: GPL-3.0-or-later
// Tells the user when what the pad does can't reach the program that has the focus, and what mends it.
#pragma once

#include "engine/run/GobalVariable.h"

class Eingabeweg;
class Prozess;

class Tastenankunft {
public:
    Tastenankunft(Eingabeweg& weg, Prozess& prozess, const GobalVariable& global);

    /// Looks, and shows one message box unless everyone is reached.
    void pruefen();

private:
    void hilfeOeffnen();

    Eingabeweg& weg_;
    Prozess& prozess_;
    const GobalVariable& global_;
};
