// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema/StickLaufLesen.h"

#include "formats/Aktionsliste.h"
#include "formats/Linienliste.h"
#include "store/schema/modLesen.h"

#include <utility>

namespace {

class Leser {
public:
    Leser(Database& datenbank, const std::string& schemaName, Stickseite seite, int Umschalt)
        : datenbank_(datenbank), schemaName_(schemaName), seite_(seite), Umschalt_(Umschalt) {}

    Sticklaufbild lesen() {
        datenbank_.inEinemLesezug([&] {
            bild_.aktionen = StickAktionenLesen(datenbank_, schemaName_, seite_, Umschalt_);
            linien();
        });
        return std::move(bild_);
    }

private:
    void linien() {
        for (int i = ERSTE_LINIENZEILE; i <= SPERRZEILE; ++i) {
            const auto satz = linienzeile(datenbank_, seite_, schemaName_, i);
            bild_.zeilenFehlen |= satz.get_EOF();
            if (i == SPERRZEILE)
                bild_.StickSperre = satz.get_EOF() ? 0 : linienwert(satz.get_Value("Links"));
            else if (!linienEinerZeile(satz, i))
                i = LETZTE_LINIENZEILE; // rows behind the first empty one are never read
        }
    }

    // Whether the row holds any line in this layer.
    bool linienEinerZeile(const Recordset& satz, int index) {
        bool eine = false;
        for (std::size_t richtung = 0; richtung < bild_.linien.size(); ++richtung) {
            const auto wert = satz.get_EOF() ? grundlinie(index, richtung) : linie(satz, richtung);
            if (wert == 0)
                continue; // leaves no gap: the lines of a direction close up
            linieAnhaengen(bild_.linien[richtung], wert);
            eine = true;
        }
        return eine;
    }

    std::int64_t linie(const Recordset& satz, std::size_t richtung) const {
        return alsZahl(satz.get_Value(std::string(richtungsspalte(static_cast<int>(richtung))) +
                                      ebenenendung(Umschalt_)));
    }

    // What stands in a row of a new stick.
    static std::int64_t grundlinie(int index, std::size_t richtung) {
        return index == ERSTE_LINIENZEILE ? GRUNDLINIEN[richtung] : 0;
    }

    Database& datenbank_;
    const std::string& schemaName_;
    Stickseite seite_;
    int Umschalt_;
    Sticklaufbild bild_;
};

} // namespace

Sticklaufbild StickLaufLesen(Database& datenbank, const std::string& schemaName, Stickseite seite,
                             int Umschalt) {
    return Leser(datenbank, schemaName, seite, Umschalt).lesen();
}

std::string StickAktionenLesen(Database& datenbank, const std::string& schemaName, Stickseite seite,
                               int Umschalt) {
    auto satz = aktionszeilenNachLinks(datenbank, seite, schemaName, Umschalt);
    std::string liste;
    for (; !satz.get_EOF(); satz.MoveNext()) {
        std::string schluessel;
        for (int richtung = 0; richtung < RICHTUNGEN; ++richtung)
            schluessel += alsText(satz.get_Value(richtungsspalte(richtung)));
        eintragAnhaengen(liste, schluessel, alsText(satz.get_Value("Aktion")));
    }
    return liste;
}
