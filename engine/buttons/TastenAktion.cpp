// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/buttons/TastenAktion.h"

#include "base/LaufzeitFehler.h"
#include "base/Spuren.h"
#include "engine/buttons/GehalteneTasten.h"
#include "engine/buttons/Wiederholung.h"
#include "engine/output/XPTaste.h"
#include "engine/run/Fehlerort.h"
#include "engine/run/GegebenerStand.h"
#include "engine/run/LaufAnzeige.h"
#include "platform/Zeitgeber.h"

using namespace belegungsfeld;

namespace {

constexpr std::int32_t MODUS_IMPULS = 1; // press and release by itself
constexpr int LETZTER_SLOT = 15;

constexpr std::uint32_t bit(int slot) {
    return 1U << slot;
}

Feld zifferntaste(int zaehler) {
    return Feld('0' + zaehler);
}

bool hatTaste(Belegungsart art) {
    return art == Belegungsart::ZaehlerAuf || art == Belegungsart::Taste || art == Belegungsart::ZaehlerAb;
}

std::chrono::milliseconds dauer(const Feld& feld) {
    return std::chrono::milliseconds{feld.zahl()};
}

// Runs a step that reads a `Belegung`; its errors name the slot and the text.
template <class Schritt> void benannt(const Belegungsort& ort, const Schritt& schritt) {
    anOrt([&] { return slotname(ort.slot, ort.ebene) + ": " + angefuehrt(ort.belegung); }, schritt);
}

} // namespace

TastenAktion::TastenAktion(Tastenstand& stand, GegebenerStand& gegeben, GehalteneTasten& gehaltene,
                           Wiederholung& wiederholung, XPTaste& xpTaste, Zeitgeber& zeitgeber,
                           LaufAnzeige& anzeige)
    : stand_(stand)
    , gegeben_(gegeben)
    , gehaltene_(gehaltene)
    , wiederholung_(wiederholung)
    , xpTaste_(xpTaste)
    , zeitgeber_(zeitgeber)
    , anzeige_(anzeige) {}

void TastenAktion::TasteDrueckAktion(const Belegung& belegung, int slot, int ebene) {
    gegeben_.AktSlot = static_cast<std::int16_t>(slot);
    gegeben_.AktTimerId = slotTimerId(slot);
    const Belegungsort ort{slot, ebene, belegung.text()};
    benannt(ort, [&] { druecken(belegung, ort); });
}

void TastenAktion::TasteLoesAktion(const Belegung& belegung, int slot, int ebene) {
    benannt({slot, ebene, belegung.text()}, [&] { loesen(belegung, slot); });
}

void TastenAktion::druecken(const Belegung& belegung, const Belegungsort& ort) {
    const int slot = ort.slot;
    BelegungZerlegen(belegung);

    const auto& felder = stand_.Felder;
    const auto modus = felder[MODUS].zahl();
    const auto druckzeit = felder[DRUCKZEIT].zahl();
    const bool impuls = modus == MODUS_IMPULS && druckzeit > 0;
    const auto art = static_cast<Belegungsart>(felder[ART].zahl());

    if (art == Belegungsart::ZaehlerAuf)
        zaehlen(+1);
    else if (art == Belegungsart::ZaehlerAb)
        zaehlen(-1);

    if (hatTaste(art)) {
        const auto taste = art == Belegungsart::Taste ? felder[TASTE] : zifferntaste(stand_.Zaehler);
        if (!impuls) {
            tasteDruecken(slot, taste);
        } else if (slot <= LETZTER_SLOT) {
            auto& satz = stand_.TastenSatz[static_cast<std::size_t>(slot) + 1];
            satz = felder;
            satz[TASTE] = taste;
            stand_.TastenSatzOrt[static_cast<std::size_t>(slot) + 1] = ort;
            SlotTakt(slot);
        }
    } else if (art == Belegungsart::Maus) {
        xpTaste_.MausDruecken(modus);
    }
    titelZeigen();
}

void TastenAktion::loesen(const Belegung& belegung, int slot) {
    BelegungZerlegen(belegung);
    const auto art = static_cast<Belegungsart>(stand_.Felder[ART].zahl());
    if (hatTaste(art))
        tasteLoesen(art, slot);
    else if (art == Belegungsart::Maus)
        xpTaste_.MausLoesen(stand_.Felder[MODUS].zahl());
}

void TastenAktion::tasteLoesen(Belegungsart art, int slot) {
    if (stand_.Felder[DRUCKZEIT].zahl() <= 0)
        TasteFreigeben(slot);

    if (stand_.DrueckMaske & bit(slot)) {
        zeitgeber_.KillTimer(slotTimerId(slot));
        stand_.DrueckMaske &= ~bit(slot);
        TasteFreigeben(slot);
        if (art != Belegungsart::ZaehlerAuf)
            drueckmaskeZeigen();
    }
    if (stand_.PausenMaske & bit(slot)) {
        zeitgeber_.KillTimer(slotTimerId(slot));
        stand_.PausenMaske &= ~bit(slot);
        drueckmaskeZeigen();
    } else {
        TasteFreigeben(slot);
    }
}

void TastenAktion::SlotTakt(int slot) {
    const auto id = slotTimerId(slot);
    const auto& satz = stand_.TastenSatz[static_cast<std::size_t>(slot) + 1];
    const auto wiederkommen = [this, slot] {
        benannt(stand_.TastenSatzOrt[static_cast<std::size_t>(slot) + 1], [&] { SlotTakt(slot); });
    };

    if (stand_.DrueckMaske & bit(slot)) {
        TasteFreigeben(slot);
        zeitgeber_.KillTimer(id);
        stand_.DrueckMaske &= ~bit(slot);
        if (satz[PAUSENZEIT].zahl() > 0) {
            stand_.PausenMaske |= bit(slot);
            zeitgeber_.SetTimer(id, dauer(satz[PAUSENZEIT]), wiederkommen);
        }
        return;
    }
    if (stand_.PausenMaske & bit(slot)) {
        stand_.PausenMaske &= ~bit(slot);
        zeitgeber_.KillTimer(id);
    }
    const auto eintrag = Halteeintrag::aus(slot, satz[TASTE]);
    gehaltene_.aufnehmen(eintrag);
    if (slot != 0) // the caption of slot 0 lags until the next action
        titelZeigen();
    xpTaste_.TasteAbSenden(eintrag.taste);
    if (satz[MODUS].zahl() == MODUS_IMPULS) {
        stand_.DrueckMaske |= bit(slot);
        zeitgeber_.SetTimer(id, dauer(satz[DRUCKZEIT]), wiederkommen);
    }
}

void TastenAktion::TasteFreigeben(int slot) {
    // The gate is a plain search in the text. What follows goes by the whole slot number.
    if (!slotKommtVor(gehaltene_.GehaltenText(), slot))
        return;
    wiederholung_.WiederholungStoppen(slot);
    if (const auto eintrag = gehaltene_.herausnehmen(slot))
        xpTaste_.TasteAufSenden(eintrag->taste);
    wiederholung_.abgleichen();
    titelZeigen();
}

void TastenAktion::tasteDruecken(int slot, const Feld& taste) {
    const auto eintrag = Halteeintrag::aus(slot, taste);
    gehaltene_.aufnehmen(eintrag);
    xpTaste_.TasteAbSenden(eintrag.taste);
}

void TastenAktion::zaehlen(int schritt) {
    constexpr int ZIFFERN = 10;
    stand_.Zaehler = static_cast<std::int16_t>((stand_.Zaehler + schritt + ZIFFERN) % ZIFFERN);
}

void TastenAktion::titelZeigen() {
    anzeige_.titel(gehaltene_.GehaltenText());
}

void TastenAktion::drueckmaskeZeigen() {
    anzeige_.Erg(DRUECKMASKE_SPUR, std::to_string(stand_.DrueckMaske));
}
