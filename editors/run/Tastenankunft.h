// SPDX-License-Identifier: GPL-3.0-or-later
// Tells the user when what the pad does can't reach the program that has the focus, and what mends it.
#pragma once

class Eingabeweg;
class Hilfe;

class Tastenankunft {
public:
    /// Both outlive this object.
    Tastenankunft(Eingabeweg& weg, Hilfe& hilfe);

    /// Looks, and shows one message box unless everyone is reached.
    void pruefen();

private:
    Eingabeweg& weg_;
    Hilfe& hilfe_;
};
