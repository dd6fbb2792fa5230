// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/stick/Stickhaltungen.h"

#include "engine/buttons/GehalteneTasten.h"
#include "engine/output/Druckbuch.h"
#include "engine/stick/Aktionsumfeld.h"

#include <algorithm>

using namespace stickaktion;

namespace {

class Blick {
public:
    Blick(const Stickeigenart& art, const Stickaktionsstand& stand, const Standquellen& quellen,
          std::vector<Haltung>& haltungen)
        : art_(art), stand_(stand), quellen_(quellen), haltungen_(haltungen) {}

    void seite(Aktionsseite seite) {
        taste(seite);
        mausknopf(seite);
        bewegung(seite);
    }

    // One timer for both sides. What runs without a field of its own is an `Ego Shooter` that goes on with
    // the data of the field in which it began.
    void absolut() {
        if (!quellen_.timer.contains(art_.absolut))
            return;
        for (const auto seite : {X_SEITE, Y_SEITE}) {
            const auto& aktion = stand_.AktionAlt[seite];
            if (stand_.begonnen[seite] && aktion->ist<AbsolutePosition>()) {
                anhaengen(seite, Absolutwirkung{aktion->drittesZeichen().ziffer() != BINDEN});
                return;
            }
        }
        haltungen_.push_back({Stickhalter{art_.seite, {}}, Absolutwirkung{stand_.EgoStatus != 0}});
    }

private:
    static constexpr int BINDEN = 1;

    // One timer serves two sides of the two sticks: who sets it takes it from the other.
    bool gesetzt(const Sticktimer& timer) const {
        return quellen_.timer.contains(timer.id) && quellen_.ueberwachung.verwendung(timer.id) == timer.bit;
    }

    void taste(Aktionsseite seite) {
        const auto& zeitaktion = stand_.TastenAktion[seite];
        const auto* zeit = zeitaktion && gesetzt(art_.taste[seite]) ? zeitaktion->als<Tastatur>() : nullptr;
        const auto& alle = quellen_.gehaltene.eintraege();
        const auto eintrag = std::ranges::find(alle, art_.slot[seite], &Halteeintrag::slot);
        if (eintrag != alle.end())
            anhaengen(seite, Tastenwirkung{eintrag->taste, zeit != nullptr,
                                           zeit ? 0 : quellen_.druckbuch.druck(eintrag->taste)});
        else if (zeit) // its pause; it was pressed, so its key is one
            anhaengen(seite, Tastenwirkung{tastencode(zeit->taste.zahl()), true, 0});
    }

    void mausknopf(Aktionsseite seite) {
        const auto* maustaste = begonnene<Maustaste>(seite);
        const auto knopf = maustaste ? maustaste->knopf.ziffer() : std::nullopt;
        if (knopf && *knopf < Druckbuch::KNOEPFE && quellen_.druckbuch.mausdruck(*knopf) != 0)
            anhaengen(seite, Mausknopfwirkung{*knopf, quellen_.druckbuch.mausdruck(*knopf)});
    }

    void bewegung(Aktionsseite seite) {
        // The y side of a diagonal runs on the timer of the x side.
        const bool diagonal =
            stand_.DiagonalFlag && stand_.MausAktion[Y_SEITE] && begonnene<Mausbewegung>(X_SEITE);
        const auto& timer = art_.maus[diagonal ? X_SEITE : seite];
        const auto* eine = gesetzt(timer) ? begonnene<Mausbewegung>(seite) : nullptr;
        if (const auto wohin = eine ? eine->richtung.ziffer() : std::nullopt)
            anhaengen(seite, Bewegungswirkung{*wohin});
    }

    template <class Art> const Art* begonnene(Aktionsseite seite) const {
        return stand_.begonnen[seite] ? stand_.AktionAlt[seite]->als<Art>() : nullptr;
    }

    void anhaengen(Aktionsseite seite, const Wirkung& wirkung) {
        Stickhalter halter{art_.seite, {}};
        if (stand_.begonnen[seite])
            halter.feld = stand_.feldAlt[seite];
        haltungen_.push_back({halter, wirkung});
    }

    const Stickeigenart& art_;
    const Stickaktionsstand& stand_;
    const Standquellen& quellen_;
    std::vector<Haltung>& haltungen_;
};

} // namespace

void stickhaltungenAnhaengen(const Stickeigenart& art, const Stickaktionsstand& stand,
                             const Standquellen& quellen, std::vector<Haltung>& haltungen) {
    Blick blick(art, stand, quellen, haltungen);
    for (const auto seite : {X_SEITE, Y_SEITE})
        blick.seite(seite);
    blick.absolut();
}
