// Key codes and their German names, from tblKeyCode.
#pragma once

#include <string>

/// Looks a key up. With `richtung` 0, `wert` is a code in decimal and the name comes back; otherwise `wert`
/// is a name and its code comes back. No row gives "". A statement that fails (an apostrophe in `wert`) gives
/// `wert` itself for richtung 0 and throws LaufzeitFehler otherwise.
std::string KeyCodeSuchen(const std::string& datenbankPfad, int richtung, const std::string& wert);
