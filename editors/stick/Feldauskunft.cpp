// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Feldauskunft.h"

#include "editors/stick/Aktionsworte.h"
#include "store/schema/StickLaufLesen.h"
#include "store/schema/modKeyCode.h"

namespace {

/// The half of a field's key that its band gives, and whether the band is off the centre.
struct Schluesselhaelfte {
    std::string ziffern{MITTELHAELFTE};
    bool imBand = false;
};

Schluesselhaelfte haelfte(std::int32_t fallend, std::int32_t steigend) {
    if (fallend != 0)
        return {haelfteLinksOderOben(std::to_string(fallend)), true};
    if (steigend != 0)
        return {haelfteRechtsOderUnten(std::to_string(steigend)), true};
    return {};
}

} // namespace

void Feldauskunft::lesen(Database& datenbank, Stickseite seite, const std::string& schemaName, int ebene) {
    vergessen();
    Aktionsliste liste(StickAktionenLesen(datenbank, schemaName, seite, ebene));
    tastennamen_.clear();
    const Tastenbenennung nachschlagen = [&](const std::string& nummer) {
        const auto [stelle, neu] = tastennamen_.try_emplace(nummer);
        if (neu)
            stelle->second = TastennameLesen(datenbank, nummer);
        return stelle->second;
    };
    for (const auto& aktion : liste.alle())
        aktionsworte(*aktion, nachschlagen);
    aktionen_ = std::move(liste);
}

std::string Feldauskunft::worte(const Linienebene& linien, const Feldanker& anker) const {
    if (!aktionen_)
        return "Aktion konnte nicht gelesen werden";
    const auto x = haelfte(anker[richtung::LINKS], anker[richtung::RECHTS]);
    const auto y = haelfte(anker[richtung::OBEN], anker[richtung::UNTEN]);
    const Feldgitter gitter(linien);
    const auto platz = gitter.platz(anker);
    return feldworte(aktionen_->imFeld(x.ziffern, x.imBand, y.ziffern, y.imBand),
                     gitter.name({platz.spalte, gitter.mitte().zeile}),
                     gitter.name({gitter.mitte().spalte, platz.zeile}), [this](const std::string& nummer) {
                         const auto stelle = tastennamen_.find(nummer);
                         return stelle == tastennamen_.end() ? std::string() : stelle->second;
                     });
}
