#include "store/schema/VarTastenbelegung.h"

#include "base/LaufzeitFehler.h"
#include "formats/Zerlegen.h"

#include <optional>

namespace {

constexpr std::size_t KOMMAFELDER = 3;  ///< the third of them is split on
constexpr std::size_t STRICHFELDER = 3; ///< Modus, Druckzeit, Pausenzeit

using Felderblick = std::array<std::string_view, BELEGUNGSFELDER>;

std::optional<Felderblick> felderVon(std::string_view text) {
    const auto aussen = zerlegen(text, ',');
    if (aussen.size() != KOMMAFELDER)
        return std::nullopt;
    const auto innen = zerlegen(aussen[2], '-');
    if (innen.size() != STRICHFELDER)
        return std::nullopt;
    return Felderblick{aussen[0], aussen[1], innen[0], innen[1], innen[2]};
}

} // namespace

std::size_t VarTastenbelegung::stelle(int taste, int ebene, int feld) {
    if (taste < 0 || taste >= SLOTS || ebene < 0 || ebene >= EBENEN || feld < 0 || feld >= BELEGUNGSFELDER)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex, "Das Feld " + std::to_string(feld) + " der Taste " +
                                                              std::to_string(taste) + " auf der Ebene " +
                                                              std::to_string(ebene) + " gibt es nicht.");
    return static_cast<std::size_t>((taste * EBENEN + ebene) * BELEGUNGSFELDER + feld);
}

std::string VarTastenbelegung::belegung(int taste, int ebene) const {
    return field(taste, ebene, 0) + ',' + field(taste, ebene, 1) + ',' + field(taste, ebene, 2) + '-' +
           field(taste, ebene, 3) + '-' + field(taste, ebene, 4);
}

void VarTastenbelegung::setzeBelegung(int taste, int ebene, std::string_view text) {
    const auto felder = felderVon(text);
    if (!felder)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Die Belegung „" + std::string(text) +
                                 "“ hat nicht die Form „Art,Taste,Modus-Druckzeit-Pausenzeit“.");
    for (std::size_t feld = 0; feld < BELEGUNGSFELDER; ++feld)
        field(taste, ebene, static_cast<int>(feld)) = (*felder)[feld];
}
