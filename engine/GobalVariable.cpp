#include "engine/GobalVariable.h"

#include "platform/Prozess.h"

#include <algorithm>

namespace {

// The directory of `datei` with `name` in the place of the file, "/" throughout and at the end.
std::string nachbarverzeichnis(std::string datei, const std::string& name) {
    std::replace(datei.begin(), datei.end(), '\\', '/');
    return datei.substr(0, datei.rfind('/') + 1) + name + "/";
}

} // namespace

void GobalVariable::PfadeSetzen(Prozess& prozess) {
    HilfePfad = prozess.GetFullPathNameA("Beschreibung\\Startfenster.htm");
    DatenbankPfad = prozess.GetFullPathNameA("Belegung.twk");
    BilderPfad = nachbarverzeichnis(DatenbankPfad, "Bilder");
}
