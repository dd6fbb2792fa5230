// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/run/GobalVariable.h"

#include "platform/Prozess.h"

#include <algorithm>

namespace {

// The directory of `datei` with `name` in the place of the file, "/" throughout and at the end. In a path
// that begins with "/" a "\" separates nothing: it is part of a folder's name.
std::string nachbarverzeichnis(std::string datei, const std::string& name) {
    if (!datei.starts_with('/'))
        std::replace(datei.begin(), datei.end(), '\\', '/');
    return datei.substr(0, datei.rfind('/') + 1) + name + "/";
}

} // namespace

void GobalVariable::PfadeSetzen(Prozess& prozess) {
    HilfePfad = prozess.GetFullPathNameA("Beschreibung\\Startfenster.htm");
    DatenbankPfad = prozess.GetFullPathNameA("Belegung.twk");
    BilderPfad = nachbarverzeichnis(DatenbankPfad, "Bilder");
}
