// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/stick/Absolutlauf.h"

#include "base/LaufzeitFehler.h"
#include "base/Rundung.h"
#include "engine/input/Entwackeln.h"

#include <algorithm>
#include <cstdlib>
#include <span>
#include <utility>
#include <vector>

namespace {

constexpr int ZENTRIEREN = 0;
constexpr int BINDEN = 1;

// Outer bands are measured by the field in which the movement began, so some ten thousand counts at once come
// of assignments that are played with. A million would take longer to send than anyone waits for.
constexpr std::int64_t GROESSTER_EGOWEG = 1'000'000;
// In one call; a way of any length asks the seam for no more than this.
constexpr std::int64_t EGO_PORTION = 1024;

// How far `bis` lies from `von`. Lines may be any numbers of 32 bits, the distance of two need not be one.
std::int32_t abstand(std::int32_t von, std::int32_t bis) {
    const auto weite = std::int64_t{bis} - von;
    if (!std::in_range<std::int32_t>(weite))
        throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: Feld des Sticks von " + std::to_string(von));
    return static_cast<std::int32_t>(weite);
}

std::int32_t feldmitte(std::int32_t max, std::int32_t min) {
    return gerundet((static_cast<double>(max) - min) / 2 + min);
}

bool endetAufEins(const Aktionszeiger& aktion) {
    return aktion && aktion->endetAufEins();
}

bool istSperrfeld(const Aktionszeiger& aktion) {
    return aktion && aktion->ist<stickaktion::Sperrfeld>();
}

} // namespace

void Absolutlauf::AbsolutePosition(const Aktionszeiger& aktion, Aktionsseite seite) const {
    constexpr std::uint32_t ABSOLUT = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    const auto wahl = aktion->drittesZeichen().ziffer();
    if (wahl == ZENTRIEREN) {
        umfeld_.dienste->eingabe.mouse_event(ABSOLUT, feldmitte(umfeld_.grenzen->xMax, umfeld_.grenzen->xMin),
                                             feldmitte(umfeld_.grenzen->yMax, umfeld_.grenzen->yMin), 0, 0);
    } else if (wahl == BINDEN) {
        const auto wo = umfeld_.dienste->entwackeln.stickLesen(umfeld_.art->seite);
        umfeld_.dienste->eingabe.mouse_event(ABSOLUT, wo.x, wo.y, 0, 0);
        umfeld_.stand->BindenAktion = aktion;
        umfeld_.dienste->zeitgeber.SetTimer(umfeld_.art->absolut, umfeld_.art->bindenIntervall,
                                            [lauf = *this, seite] { lauf.bindenTakt(seite); });
        umfeld_.dienste->gegeben.timer.TimerSetzen(umfeld_.art->bindenBit);
    } else {
        umfeld_.stand->EgoDaten = {abstand(umfeld_.grenzen->xMin, umfeld_.grenzen->xMax),
                                   abstand(umfeld_.grenzen->yMin, umfeld_.grenzen->yMax),
                                   umfeld_.grenzen->xMin, umfeld_.grenzen->yMin, aktion};
        umfeld_.stand->EgoStatus = 0;
        EgoSchritt(seite);
    }
}

void Absolutlauf::bindenTakt(Aktionsseite seite) const {
    umfeld_.timerLoeschen({umfeld_.art->absolut, umfeld_.art->bindenBit});
    const auto aktion = umfeld_.stand->BindenAktion;
    AbsolutePosition(aktion, seite);
}

void Absolutlauf::EgoSchritt(Aktionsseite seite) const {
    using namespace egostatus;
    const auto& daten = umfeld_.stand->EgoDaten;
    const auto status = umfeld_.stand->EgoStatus;
    const auto& position = *daten.aktion->als<stickaktion::AbsolutePosition>();
    const auto wo = umfeld_.dienste->entwackeln.stickLesen(umfeld_.art->seite);
    if (!(status & X_AUSSEN))
        egoachseBewegen(X_SEITE, abstand(daten.xMin, wo.x), daten.breite,
                        stickaktion::verlangt(position.egoX));
    if (!(status & Y_AUSSEN))
        egoachseBewegen(Y_SEITE, abstand(daten.yMin, wo.y), daten.hoehe,
                        stickaktion::verlangt(position.egoY));
    if (status == (X_AUSSEN | Y_AUSSEN))
        return;
    umfeld_.dienste->zeitgeber.SetTimer(umfeld_.art->absolut, EGO_INTERVALL, [lauf = *this, seite] {
        const auto& umfeld = lauf.umfeld_;
        umfeld.benannt(umfeld.felder[seite], umfeld.stand->EgoDaten.aktion, [&] { lauf.EgoSchritt(seite); });
    });
    umfeld_.dienste->gegeben.timer.TimerSetzen(umfeld_.art->egoBit);
}

void Absolutlauf::egoachseBewegen(Aktionsseite seite, std::int32_t versatz, std::int32_t laenge,
                                  const Feld& zaehler) const {
    umfeld_.dienste->gegeben.stick(umfeld_.art->seite).versatz[seite] = versatz;
    auto& weg = umfeld_.stand->egoWeg[seite];
    const auto zaehlerzahl = zaehler.zahl();
    if (laenge == 0 || zaehlerzahl == 0)
        throw LaufzeitFehler(Fehlernummer::DivisionDurchNull, "Division durch Null: Ego Shooter");
    const auto ziel = gerundet(versatz / (static_cast<double>(laenge) / zaehlerzahl));
    // A target of 0 moves nothing and leaves the last travel as it was.
    if (ziel == 0 || ziel == weg)
        return;
    const auto schritte = std::int64_t{ziel} - weg;
    if (std::llabs(schritte) > GROESSTER_EGOWEG)
        throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: Ego Shooter mit " +
                                                          std::to_string(schritte) + " Schritten auf einmal");
    weg = ziel;
    const std::int32_t richtung = schritte < 0 ? -1 : 1;
    schritteSenden(
        {seite == X_SEITE ? richtung : 0, seite == Y_SEITE ? richtung : 0, 0, MOUSEEVENTF_MOVE, 0, 0},
        std::llabs(schritte));
}

// The same record again and again, many in one call: a call each would cost a backend far more.
void Absolutlauf::schritteSenden(const MOUSEINPUT& einer, std::int64_t anzahl) const {
    INPUT eines{};
    eines.type = INPUT_MOUSE;
    eines.mi = einer;
    const std::vector<INPUT> portion(static_cast<std::size_t>(std::min(anzahl, EGO_PORTION)), eines);
    for (auto rest = anzahl; rest > 0; rest -= EGO_PORTION)
        umfeld_.dienste->eingabe.SendInput(
            std::span(portion).first(static_cast<std::size_t>(std::min(rest, EGO_PORTION))));
}

void Absolutlauf::beendenX(const Aktionszeiger& neu) const {
    using namespace egostatus;
    umfeld_.stand->EgoStatus = 0;
    const auto& alt = umfeld_.stand->AktionAlt[X_SEITE];
    std::int32_t wahl = 0;
    umfeld_.benannt(umfeld_.stand->feldAlt[X_SEITE], alt, [&] { wahl = alt->drittesZeichen().zahl(); });
    if (wahl < BINDEN)
        return;
    if (wahl != EGO_SHOOTER) {
        umfeld_.timerLoeschen({umfeld_.art->absolut, umfeld_.art->bindenBitXEnde});
        return;
    }
    if (umfeld_.stand->xZone != "Mitte")
        umfeld_.stand->EgoStatus |= X_AUSSEN;
    if (umfeld_.stand->yZone != "Mitte")
        umfeld_.stand->EgoStatus |= Y_AUSSEN;
    if (istSperrfeld(neu) || umfeld_.stand->EgoStatus == 0)
        umfeld_.dienste->zeitgeber.KillTimer(umfeld_.art->absolut); // the mask keeps its bit
}

void Absolutlauf::beendenY(const Aktionszeiger& neu) const {
    const auto& alt = umfeld_.stand->AktionAlt;
    if (!istSperrfeld(neu) && !(!endetAufEins(alt[X_SEITE]) && endetAufEins(alt[Y_SEITE])))
        return;
    umfeld_.timerLoeschen({umfeld_.art->absolut, umfeld_.art->bindenBit});
    umfeld_.stand->EgoDaten.aktion.reset();
}
