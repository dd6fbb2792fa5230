#include "engine/buttons/TastenAktion.h"

#include "base/LaufzeitFehler.h"
#include "engine/buttons/GehalteneTasten.h"
#include "engine/buttons/Wiederholung.h"
#include "engine/output/XPTaste.h"
#include "engine/run/Fehlerort.h"
#include "engine/run/LaufAnzeige.h"
#include "engine/run/TimerUeberwachung.h"
#include "platform/Zeitgeber.h"

using namespace belegungsfeld;

namespace {

constexpr std::int32_t MODUS_IMPULS = 1; // press and release by itself
constexpr int LETZTER_SLOT = 15;
constexpr int DRUECKMASKE_ERG = 2; // trace label of DrueckMaske

constexpr std::uint32_t bit(int slot) {
    return 1U << slot;
}

std::string zifferntaste(int zaehler) {
    return std::to_string('0' + zaehler);
}

bool hatTaste(Tastenart art) {
    return art == Tastenart::ZaehlerAuf || art == Tastenart::Taste || art == Tastenart::ZaehlerAb;
}

std::chrono::milliseconds dauer(const Feld& feld) {
    return std::chrono::milliseconds{feldzahl(feld)};
}

// Runs a step that reads a `Belegung`; its errors name the slot and the text.
template <class Schritt> void benannt(const Belegungsort& ort, const Schritt& schritt) {
    anOrt([&] { return slotname(ort.slot, ort.ebene) + ": " + angefuehrt(ort.belegung); }, schritt);
}

} // namespace

TastenAktion::TastenAktion(Tastenstand& stand, GehalteneTasten& gehaltene, Wiederholung& wiederholung,
                           XPTaste& xpTaste, Zeitgeber& zeitgeber, LaufAnzeige& anzeige)
    : stand_(stand)
    , gehaltene_(gehaltene)
    , wiederholung_(wiederholung)
    , xpTaste_(xpTaste)
    , zeitgeber_(zeitgeber)
    , anzeige_(anzeige) {}

void TastenAktion::BelegungZerlegen(std::string_view text) {
    std::size_t naechstes = 0;
    const auto ablegen = [&](std::string_view stueck) {
        if (naechstes >= stand_.Felder.size())
            throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                                 "Index außerhalb des gültigen Bereichs: zu viele Felder");
        stand_.Felder[naechstes++] = std::string(stueck);
    };
    const auto stuecke = zerlegen(text, ',');
    for (std::size_t i = 0; i + 1 < stuecke.size(); ++i)
        ablegen(stuecke[i]);
    if (!stuecke.empty())
        for (const auto stueck : zerlegen(stuecke.back(), '-'))
            ablegen(stueck);
}

void TastenAktion::TasteDrueckAktion(std::string_view belegung, int slot, int ebene) {
    stand_.AktSlot = static_cast<std::int16_t>(slot);
    stand_.AktTimerId = slotTimerId(slot);
    const Belegungsort ort{slot, ebene, std::string(belegung)};
    benannt(ort, [&] { druecken(ort); });
}

void TastenAktion::TasteLoesAktion(std::string_view belegung, int slot, int ebene) {
    const Belegungsort ort{slot, ebene, std::string(belegung)};
    benannt(ort, [&] { loesen(ort); });
}

void TastenAktion::druecken(const Belegungsort& ort) {
    const int slot = ort.slot;
    BelegungZerlegen(ort.belegung);

    const auto& felder = stand_.Felder;
    const auto modus = feldzahl(felder[MODUS]);
    const auto druckzeit = feldzahl(felder[DRUCKZEIT]);
    const bool impuls = modus == MODUS_IMPULS && druckzeit > 0;
    const auto art = static_cast<Tastenart>(feldzahl(felder[ART]));

    if (art == Tastenart::ZaehlerAuf)
        zaehlen(+1);
    else if (art == Tastenart::ZaehlerAb)
        zaehlen(-1);

    if (hatTaste(art)) {
        const auto taste = art == Tastenart::Taste ? feldtext(felder[TASTE]) : zifferntaste(stand_.Zaehler);
        if (!impuls) {
            tasteDruecken(slot, taste);
        } else if (slot <= LETZTER_SLOT) {
            auto& satz = stand_.TastenSatz[static_cast<std::size_t>(slot) + 1];
            satz = felder;
            satz[TASTE] = taste;
            stand_.TastenSatzOrt[static_cast<std::size_t>(slot) + 1] = ort;
            SlotTakt(slot);
        }
    } else if (art == Tastenart::Maus) {
        xpTaste_.MausDruecken(modus);
    }
    titelZeigen();
}

void TastenAktion::loesen(const Belegungsort& ort) {
    BelegungZerlegen(ort.belegung);
    const auto art = static_cast<Tastenart>(feldzahl(stand_.Felder[ART]));
    if (hatTaste(art))
        tasteLoesen(art, ort.slot);
    else if (art == Tastenart::Maus)
        xpTaste_.MausLoesen(feldzahl(stand_.Felder[MODUS]));
}

void TastenAktion::tasteLoesen(Tastenart art, int slot) {
    const auto taste =
        art == Tastenart::Taste ? feldtext(stand_.Felder[TASTE]) : zifferntaste(stand_.Zaehler);

    if (feldzahl(stand_.Felder[DRUCKZEIT]) <= 0)
        TasteFreigeben(slot, taste);

    if (stand_.DrueckMaske & bit(slot)) {
        zeitgeber_.KillTimer(slotTimerId(slot));
        stand_.DrueckMaske &= ~bit(slot);
        TasteFreigeben(slot, taste);
        if (art != Tastenart::ZaehlerAuf)
            drueckmaskeZeigen();
    }
    if (stand_.PausenMaske & bit(slot)) {
        zeitgeber_.KillTimer(slotTimerId(slot));
        stand_.PausenMaske &= ~bit(slot);
        drueckmaskeZeigen();
    } else {
        TasteFreigeben(slot, taste);
    }
}

void TastenAktion::SlotTakt(int slot) {
    const auto id = slotTimerId(slot);
    const auto& satz = stand_.TastenSatz[static_cast<std::size_t>(slot) + 1];
    const auto wiederkommen = [this, slot] {
        benannt(stand_.TastenSatzOrt[static_cast<std::size_t>(slot) + 1], [&] { SlotTakt(slot); });
    };

    if (stand_.DrueckMaske & bit(slot)) {
        TasteFreigeben(slot, feldtext(satz[TASTE]));
        zeitgeber_.KillTimer(id);
        stand_.DrueckMaske &= ~bit(slot);
        if (feldzahl(satz[PAUSENZEIT]) > 0) {
            stand_.PausenMaske |= bit(slot);
            zeitgeber_.SetTimer(id, dauer(satz[PAUSENZEIT]), wiederkommen);
        }
        return;
    }
    if (stand_.PausenMaske & bit(slot)) {
        stand_.PausenMaske &= ~bit(slot);
        zeitgeber_.KillTimer(id);
    }
    const auto taste = tastencode(feldzahl(satz[TASTE]));
    gehaltene_.GehaltenPflegen(halteeintrag(slot, feldtext(satz[TASTE])), 0, xpTaste_);
    if (slot != 0) // the caption of slot 0 lags until the next action
        titelZeigen();
    xpTaste_.TasteAbSenden(taste);
    if (feldzahl(satz[MODUS]) == MODUS_IMPULS) {
        stand_.DrueckMaske |= bit(slot);
        zeitgeber_.SetTimer(id, dauer(satz[DRUCKZEIT]), wiederkommen);
    }
}

void TastenAktion::TasteFreigeben(int slot, std::string_view taste) {
    // The gate is a plain search: "2-" is also found in "12-65,". What follows goes by the whole slot number.
    if (gehaltene_.GehaltenText().find(std::to_string(slot) + "-") == std::string::npos)
        return;
    const auto eintrag = halteeintrag(slot, taste);
    wiederholung_.WiederholungStoppen(eintrag);
    gehaltene_.GehaltenPflegen(eintrag, 1, xpTaste_);
    wiederholung_.abgleichen();
    titelZeigen();
}

void TastenAktion::tasteDruecken(int slot, const std::string& taste) {
    // Read as a number before it is entered: an entry that is no key could never be released.
    const auto code = tastencode(feldzahl(std::string_view{taste}));
    gehaltene_.GehaltenPflegen(halteeintrag(slot, taste), 0, xpTaste_);
    xpTaste_.TasteAbSenden(code);
}

void TastenAktion::zaehlen(int schritt) {
    constexpr int ZIFFERN = 10;
    stand_.Zaehler = static_cast<std::int16_t>((stand_.Zaehler + schritt + ZIFFERN) % ZIFFERN);
}

void TastenAktion::titelZeigen() {
    anzeige_.titel(gehaltene_.GehaltenText());
}

void TastenAktion::drueckmaskeZeigen() {
    anzeige_.Erg(DRUECKMASKE_ERG, std::to_string(stand_.DrueckMaske));
}
