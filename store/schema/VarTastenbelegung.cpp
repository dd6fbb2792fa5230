// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/VarTastenbelegung.h"

#include "base/LaufzeitFehler.h"

std::size_t VarTastenbelegung::stelle(int taste, int ebene, int feld) {
    if (taste < 0 || taste >= SLOTS || ebene < 0 || ebene >= EBENEN || feld < 0 || feld >= BELEGUNGSFELDER)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex, "Das Feld " + std::to_string(feld) + " der Taste " +
                                                              std::to_string(taste) + " auf der Ebene " +
                                                              std::to_string(ebene) + " gibt es nicht.");
    return static_cast<std::size_t>((taste * EBENEN + ebene) * BELEGUNGSFELDER + feld);
}

std::string VarTastenbelegung::belegung(int taste, int ebene) const {
    Belegungstexte felder;
    for (int feld = 0; feld < BELEGUNGSFELDER; ++feld)
        felder[static_cast<std::size_t>(feld)] = field(taste, ebene, feld);
    return belegungstext(felder);
}

void VarTastenbelegung::setzeBelegung(int taste, int ebene, std::string_view text) {
    const auto felder = belegungStrengLesen(text);
    if (!felder)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Die Belegung „" + std::string(text) +
                                 "“ hat nicht die Form „Art,Taste,Modus-Druckzeit-Pausenzeit“.");
    for (std::size_t feld = 0; feld < BELEGUNGSFELDER; ++feld)
        field(taste, ebene, static_cast<int>(feld)) = (*felder)[feld];
}
