// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/Zonenlesen.h"

#include "base/Rundung.h"
#include "store/schema/Stickanweisung.h"

namespace {

constexpr std::size_t LAENGSTE_LISTE = 20;

/// A number of the plane's tables. A foreign database may hold any; none of them wraps.
std::int32_t plangroesse(const Wert& wert) {
    return gerundet(static_cast<double>(alsZahl(wert)));
}

Zonenzeile zeileLesen(const Recordset& satz, std::string_view gruppe) {
    Zonenzeile zeile{"Mitte", 0, gruppe, 0, alsText(satz.get_Value("Aktion"))};
    if (const auto oben = plangroesse(satz.get_Value("Oben")); oben != 0) {
        zeile.senkrecht = "Oben";
        zeile.wertSenkrecht = oben;
    } else if (const auto unten = plangroesse(satz.get_Value("Unten")); unten != 0) {
        zeile.senkrecht = "Unten";
        zeile.wertSenkrecht = unten;
    }
    if (gruppe != "Mitte")
        zeile.wertWaagrecht = plangroesse(satz.get_Value(gruppe));
    return zeile;
}

} // namespace

Zonenlinien LinienListeLesen(Recordset& satz, std::string_view richtungsname, int ebene) {
    Zonenlinien linien;
    if (satz.get_RecordCount() == 0)
        return linien;
    const auto spalte = std::string(richtungsname) + ebenenendung(ebene);
    for (satz.MoveFirst(); !satz.get_EOF() && linien.size() < LAENGSTE_LISTE; satz.MoveNext()) {
        if (alsZahl(satz.get_Value("index")) == SPERRZEILE)
            continue;
        const auto linie = plangroesse(satz.get_Value(spalte));
        if (linie == 0)
            break;
        linien.push_back(linie);
    }
    return linien;
}

void ZonenzeilenLesen(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene,
                      std::string_view gruppe, const std::function<void(const Zonenzeile&)>& zeile) {
    for (auto satz = aktionszeilenDerGruppe(datenbank, seite, schemaName, ebene, gruppe); !satz.get_EOF();
         satz.MoveNext())
        zeile(zeileLesen(satz, gruppe));
}
