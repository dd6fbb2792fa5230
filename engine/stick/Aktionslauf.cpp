// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/stick/Aktionslauf.h"

#include "engine/buttons/GehalteneTasten.h"
#include "engine/buttons/TastenAktion.h"
#include "engine/output/Maus.h"
#include "engine/output/XPTaste.h"
#include "engine/run/LaufAnzeige.h"
#include "engine/stick/Absolutlauf.h"
#include "platform/Eingabe.h"

using namespace stickaktion;

namespace {

constexpr int NACH_LINKS = 0;
constexpr int NACH_RECHTS = 1;
constexpr int NACH_OBEN = 2;

template <class Art> bool ist(const Aktionszeiger& aktion) {
    return aktion && aktion->ist<Art>();
}

std::optional<int> richtung(const Mausbewegung& bewegung) {
    return verlangt(bewegung.richtung).ziffer();
}

/// The step with the sign of its direction.
std::int32_t weg(const Mausbewegung& bewegung) {
    const auto wohin = richtung(bewegung);
    const auto schritt = verlangt(bewegung.schritt).zahl();
    return wohin == NACH_LINKS || wohin == NACH_OBEN ? maus::negativ(schritt) : schritt;
}

bool zeitgesteuert(const Tastatur& tastatur) {
    return verlangt(tastatur.eigenschaft).zahl() != 0;
}

} // namespace

// --- start ---

void Aktionslauf::XAktionStarten(const Aktionszeiger& a) const {
    if (a->ist<Mausbewegung>())
        XMausBewegen(a, nullptr);
    else if (a->ist<Sperrfeld>())
        sperren();
    else
        starten(a, X_SEITE);
    umfeld_.stand->AktionAlt[X_SEITE] = a;
    umfeld_.stand->begonnen[X_SEITE] = true;
    umfeld_.stand->feldAlt[X_SEITE] = umfeld_.felder[X_SEITE];
}

void Aktionslauf::YAktionStarten(const Aktionszeiger& a) const {
    if (a->ist<Mausbewegung>())
        YMausBewegen(a);
    else if (a->ist<Sperrfeld>())
        sperren();
    else
        starten(a, Y_SEITE);
    umfeld_.stand->AktionAlt[Y_SEITE] = a;
    umfeld_.stand->begonnen[Y_SEITE] = true;
    umfeld_.stand->feldAlt[Y_SEITE] = umfeld_.felder[Y_SEITE];
}

// A `Sperrfeld` of a band stops nothing here: it only has no action of its own.
void Aktionslauf::XYAktionStarten(const Aktionszeiger& ax, const Aktionszeiger& ay) const {
    const bool xBewegt = ax->ist<Mausbewegung>();
    const bool yBewegt = ay->ist<Mausbewegung>();
    if (xBewegt)
        XMausBewegen(ax, yBewegt ? ay : nullptr);
    else
        starten(ax, X_SEITE);
    if (!yBewegt)
        starten(ay, Y_SEITE);
    else if (!xBewegt) // else it runs in the diagonal
        YMausBewegen(ay);
    umfeld_.stand->AktionAlt = {ax, ay};
    umfeld_.stand->begonnen = {true, true};
    umfeld_.stand->feldAlt = umfeld_.felder;
}

// The types that are started alike, whatever runs beside them; the others start nothing here.
void Aktionslauf::starten(const Aktionszeiger& a, Aktionsseite seite) const {
    const JeArt start{[](const Mausbewegung&) {},
                      [&](const Maustaste&) { MausTasteDruecken(a, seite); },
                      [&](const Tastatur&) { TasteDruecken(a, seite); },
                      [](const Leerfeld&) {},
                      [](const Sperrfeld&) {},
                      [&](const AbsolutePosition&) { Absolutlauf(umfeld_).AbsolutePosition(a, seite); }};
    umfeld_.benannt(umfeld_.felder[seite], a, [&] { std::visit(start, a->inhalt()); });
}

void Aktionslauf::sperren() const {
    // The mask keeps its bits.
    const auto& art = *umfeld_.art;
    for (const auto id : {art.absolut, art.maus[X_SEITE].id, art.maus[Y_SEITE].id})
        umfeld_.dienste->zeitgeber.KillTimer(id);
}

// --- mouse movement ---

void Aktionslauf::XMausBewegen(const Aktionszeiger& a, const Aktionszeiger& b) const {
    const auto& art = *umfeld_.art;
    if (umfeld_.stand->DiagonalFlag && ist<Mausbewegung>(b)) {
        diagonaleBewegen(a, b);
        return;
    }
    umfeld_.stand->MausAktion[Y_SEITE] = nullptr;
    umfeld_.benannt(umfeld_.felder[X_SEITE], a, [&] {
        const auto& bewegung = *a->als<Mausbewegung>();
        const auto wohin = richtung(bewegung);
        const auto schritt = [&] { return verlangt(bewegung.schritt).zahl(); };
        if (art.rechtsMitSendInput && wohin == NACH_RECHTS) {
            INPUT eines{};
            eines.type = INPUT_MOUSE;
            eines.mi = {schritt(), 0, 0, MOUSEEVENTF_MOVE, 0, 0};
            umfeld_.dienste->eingabe.SendInput({&eines, 1});
        } else if (!maus::bewegen(umfeld_.dienste->eingabe, wohin, schritt)) {
            return;
        }
        umfeld_.stand->MausAktion[X_SEITE] = a;
        timerSetzen(art.maus[X_SEITE], verlangt(bewegung.intervall), &Aktionslauf::mausTakt, X_SEITE);
    });
}

void Aktionslauf::diagonaleBewegen(const Aktionszeiger& x, const Aktionszeiger& y) const {
    // dx always comes from the x action and dy from the y action, whatever their directions.
    std::int32_t dx = 0;
    std::int32_t dy = 0;
    umfeld_.benannt(umfeld_.felder[X_SEITE], x, [&] { dx = weg(*x->als<Mausbewegung>()); });
    umfeld_.benannt(umfeld_.felder[Y_SEITE], y, [&] { dy = weg(*y->als<Mausbewegung>()); });
    umfeld_.stand->MausAktion = {x, y};
    umfeld_.dienste->eingabe.mouse_event(MOUSEEVENTF_MOVE, dx, dy, 0, 0);
    umfeld_.benannt(umfeld_.felder[X_SEITE], x, [&] {
        timerSetzen(umfeld_.art->maus[X_SEITE], verlangt(x->als<Mausbewegung>()->intervall),
                    &Aktionslauf::mausTakt, X_SEITE, umfeld_.art->diagonaleMitBit);
    });
}

void Aktionslauf::YMausBewegen(const Aktionszeiger& a) const {
    umfeld_.stand->MausAktion[Y_SEITE] = a;
    umfeld_.benannt(umfeld_.felder[Y_SEITE], a, [&] {
        const auto& bewegung = *a->als<Mausbewegung>();
        if (maus::bewegen(umfeld_.dienste->eingabe, richtung(bewegung),
                          [&] { return verlangt(bewegung.schritt).zahl(); }))
            timerSetzen(umfeld_.art->maus[Y_SEITE], verlangt(bewegung.intervall), &Aktionslauf::mausTakt,
                        Y_SEITE);
    });
}

void Aktionslauf::mausTakt(Aktionsseite seite) const {
    const auto aktion = umfeld_.stand->MausAktion; // what they remember may be what they move by
    if (!ist<Mausbewegung>(aktion[seite]))
        return; // behind an error, which ends a run with all its timers
    if (seite == Y_SEITE)
        YMausBewegen(aktion[Y_SEITE]);
    else
        XMausBewegen(aktion[X_SEITE], umfeld_.stand->DiagonalFlag ? aktion[Y_SEITE] : nullptr);
}

// --- mouse buttons ---

void Aktionslauf::MausTasteDruecken(const Aktionszeiger& a, Aktionsseite seite) const {
    const auto& maustaste = *a->als<Maustaste>();
    maus::druecken(umfeld_.dienste->eingabe, verlangt(maustaste.knopf).ziffer(),
                   [&] { return verlangt(maustaste.scrollsprung).zahl(); });
    umfeld_.stand->MausAktion[seite] = a;
}

void Aktionslauf::MausTasteLoslassen(const Maustaste& maustaste) const {
    maus::loslassen(umfeld_.dienste->eingabe, verlangt(maustaste.knopf).ziffer());
}

// --- keys ---

void Aktionslauf::TasteDruecken(const Aktionszeiger& a, Aktionsseite seite) const {
    const auto& tastatur = *a->als<Tastatur>();
    const auto& dienste = *umfeld_.dienste;
    const auto eintrag = Halteeintrag::aus(umfeld_.art->slot[seite], verlangt(tastatur.taste));
    dienste.gehaltene.aufnehmen(eintrag);
    dienste.anzeige.titel(dienste.gehaltene.GehaltenText());
    dienste.xpTaste.TasteAbSenden(eintrag.taste);
    if (!zeitgesteuert(tastatur))
        return;
    umfeld_.stand->TastenAktion[seite] = a;
    timerSetzen(umfeld_.art->taste[seite], verlangt(tastatur.druckzeit), &Aktionslauf::druckTakt, seite);
}

void Aktionslauf::druckTakt(Aktionsseite seite) const {
    const auto aktion = umfeld_.stand->TastenAktion[seite];
    umfeld_.benannt(umfeld_.felder[seite], aktion, [&] {
        const auto& tastatur = *aktion->als<Tastatur>();
        umfeld_.dienste->tastenAktion.TasteFreigeben(umfeld_.art->slot[seite]);
        umfeld_.timerLoeschen(umfeld_.art->taste[seite]);
        if (verlangt(tastatur.wiederholen).zahl() == 1)
            timerSetzen(umfeld_.art->taste[seite], verlangt(tastatur.pausenzeit), &Aktionslauf::pausenTakt,
                        seite);
        else
            umfeld_.stand->TastenAktion[seite].reset();
    });
}

void Aktionslauf::pausenTakt(Aktionsseite seite) const {
    umfeld_.timerLoeschen(umfeld_.art->taste[seite]);
    const auto aktion = umfeld_.stand->TastenAktion[seite];
    umfeld_.benannt(umfeld_.felder[seite], aktion, [&] { TasteDruecken(aktion, seite); });
}

void Aktionslauf::TasteLoslassen(const Tastatur& tastatur, Aktionsseite seite) const {
    if (zeitgesteuert(tastatur)) {
        if (!umfeld_.stand->TastenAktion[seite])
            return; // the last press has ended by itself
        umfeld_.timerLoeschen(umfeld_.art->taste[seite]);
    }
    verlangt(tastatur.taste);
    umfeld_.dienste->tastenAktion.TasteFreigeben(umfeld_.art->slot[seite]);
}

// --- end ---

void Aktionslauf::AktionBeenden(const Aktionszeiger& neu) const {
    const auto& alt = umfeld_.stand->AktionAlt;
    umfeld_.stand->begonnen = {};
    seiteBeenden(X_SEITE);
    if (ist<AbsolutePosition>(alt[X_SEITE]))
        Absolutlauf(umfeld_).beendenX(neu);
    seiteBeenden(Y_SEITE);
    if (ist<AbsolutePosition>(alt[Y_SEITE]))
        Absolutlauf(umfeld_).beendenY(neu);
}

void Aktionslauf::seiteBeenden(Aktionsseite seite) const {
    const auto& alt = umfeld_.stand->AktionAlt[seite];
    if (!alt)
        return;
    const JeArt ende{[&](const Mausbewegung&) { umfeld_.timerLoeschen(umfeld_.art->maus[seite]); },
                     [&](const Maustaste& maustaste) { MausTasteLoslassen(maustaste); },
                     [&](const Tastatur& tastatur) { TasteLoslassen(tastatur, seite); },
                     [](const Leerfeld&) {},
                     [](const Sperrfeld&) {},
                     [](const AbsolutePosition&) {}}; // ended by itself, after what else its side has
    umfeld_.benannt(umfeld_.stand->feldAlt[seite], alt, [&] { std::visit(ende, alt->inhalt()); });
}

// --- timers ---

void Aktionslauf::timerSetzen(const Sticktimer& timer, const Feld& ms,
                              void (Aktionslauf::*takt)(Aktionsseite) const, Aktionsseite seite,
                              bool mitBit) const {
    umfeld_.dienste->zeitgeber.SetTimer(timer.id, std::chrono::milliseconds{ms.zahl()},
                                        [lauf = *this, takt, seite] { (lauf.*takt)(seite); });
    umfeld_.dienste->gegeben.timer.vergeben(timer.id, timer.bit);
    if (mitBit)
        umfeld_.dienste->gegeben.timer.TimerSetzen(timer.bit);
}
