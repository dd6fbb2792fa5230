// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/slider/Schubregler.h"

#include "base/LaufzeitFehler.h"
#include "engine/input/Achsen.h"
#include "engine/output/Druckbuch.h"
#include "engine/output/Maus.h"
#include "engine/output/XPTaste.h"
#include "engine/run/Fehlerort.h"
#include "engine/run/TimerUeberwachung.h"
#include "platform/Eingabe.h"
#include "platform/Zeitgeber.h"
#include "store/files/Achsendatei.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::int32_t MITTE = 32767;
constexpr std::int32_t UNTERES_ENDE = 130;  // below this an end is reached
constexpr std::int32_t OBERES_ENDE = 65400; // above this
constexpr double ACHSENLAENGE = 65535;

// Parameters; what they mean goes by the type of action.
constexpr std::size_t INTERVALL = 0;
constexpr std::size_t SCHRITT = 1;
constexpr std::size_t RADMENGE = 0;
constexpr std::size_t TASTE = 0;
constexpr std::size_t DRUCKZEIT = 1;

constexpr int TASTE_GEHALTEN = 0;
constexpr int TASTE_ZEITGESTEUERT = 1;

[[noreturn]] void falscherIndex() {
    throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                         "Index außerhalb des gültigen Bereichs: zu wenige Angaben");
}

const Feld& verlangt(const Feld& feld) {
    if (!feld.da())
        falscherIndex();
    return feld;
}

std::int16_t ganzzahl16(const Feld& feld) {
    const auto zahl = feld.zahl();
    if (!std::in_range<std::int16_t>(zahl))
        throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: " + angefuehrt(feld.text()));
    return static_cast<std::int16_t>(zahl);
}

// A record by its number, as far as it has one, and its text.
std::string satzname(const Schubsatz& satz) {
    return "Schubregler" + (satz.nummer.da() ? ", Feld " + satz.nummer.text() : "") + ": " +
           angefuehrt(satz.text);
}

// Runs one step with its errors ignored; gives whether there was one.
template <class Schritt> bool misslingt(Schritt&& schritt) {
    try {
        schritt();
    } catch (const LaufzeitFehler&) {
        return true;
    }
    return false;
}

} // namespace

void Schubregler::erstellen() {
    achsendatei_.AchsenLaden();
    const auto lauf = schubtextImLauf(achsendatei_.SchubreglerText());
    if (!lauf)
        return;
    anOrt([] { return std::string("Schubregler, Anzahl der Felder"); },
          [&] { SchubAnzahl_ = ganzzahl16(lauf->anzahl); });
    for (const auto& satz : lauf->saetze)
        anOrt([&] { return satzname(satz); },
              [&] {
                  if (!SchubFelder_.emplace(verlangt(satz.nummer).text(), satz).second)
                      throw LaufzeitFehler(Fehlernummer::SchluesselVergeben, "Dieses Feld gibt es zweimal");
              });
    if (!lauf->saetze.empty())
        anOrt([&] { return satzname(lauf->massgebend()); },
              [&] { SchubNurAuswaerts_ = ganzzahl16(lauf->massgebend().nurAuswaerts); });
}

void Schubregler::auswerten() {
    achsen_.AchsenLesen();
    const auto wert = achsen_.AchsenWert(Achse::Z1);
    if (!wert)
        return;
    const bool darf = erlaubt(*wert);
    const int feld = feldVon(*wert);
    if (feld == 0)
        return;
    // An error does not end the tick but keeps the new action from starting in it: where the end of the old
    // one fails, the new one starts a tick later.
    bool fehler = !SchubFelder_.contains(std::to_string(feld));
    if (feld != SchubFeldAlt_ && SchubArtAlt_)
        fehler = !aktionBeenden() || fehler;
    if (!fehler && feld != SchubFeldAlt_)
        misslingt([&] { aktionStarten(feld, darf); });
}

bool Schubregler::inRuhe() const {
    if (druecktAufZeit())
        return false;
    const auto wert = achsen_.AchsenWert(Achse::Z1);
    if (!wert)
        return true;
    if (SchubNurAuswaerts_ == 1 && SchubWertAlt_ != *wert)
        return false;
    const int feld = feldVon(*wert);
    return feld == 0 || feld == SchubFeldAlt_ || (!SchubArtAlt_ && startetNichts(feld, darf(*wert, *wert)));
}

// A field that has no record, the empty one, or one that is not let start.
bool Schubregler::startetNichts(int feld, bool erlaubt) const {
    const auto satz = SchubFelder_.find(std::to_string(feld));
    if (satz == SchubFelder_.end() || !erlaubt)
        return true;
    bool leer = false;
    misslingt([&] { leer = static_cast<Schubart>(verlangt(satz->second.art).zahl()) == Schubart::Leerfeld; });
    return leer;
}

bool Schubregler::druecktAufZeit() const {
    return std::ranges::any_of(stand_.Druckenden,
                               [this](const auto& ende) { return ende.second.lauf == this; });
}

// With c = 1 only a movement away from the middle triggers, and standing at an end.
bool Schubregler::erlaubt(std::int32_t wert) {
    if (SchubNurAuswaerts_ != 1)
        return true;
    return darf(wert, std::exchange(SchubWertAlt_, wert));
}

bool Schubregler::darf(std::int32_t wert, std::int32_t vorher) const {
    if (SchubNurAuswaerts_ != 1 || wert > OBERES_ENDE || wert < UNTERES_ENDE)
        return true;
    return wert > MITTE ? wert > vorher : wert < MITTE && wert < vorher;
}

void Schubregler::beenden() {
    timerStoppen();
    for (auto& [taste, ende] : stand_.Druckenden)
        if (ende.lauf == this)
            ende.lauf = nullptr;
}

// Number of the field from 1; 0 when none fits, as at the very end of the axis. That is looked at by itself:
// with some numbers of fields the last product comes out a little above it.
int Schubregler::feldVon(std::int32_t wert) const {
    if (wert >= ACHSENLAENGE)
        return 0;
    for (int i = 1; i <= SchubAnzahl_; ++i)
        if (wert < i * (ACHSENLAENGE / SchubAnzahl_))
            return i;
    return 0;
}

// Gives whether it went without an error; the action counts as ended in any case.
bool Schubregler::aktionBeenden() {
    const auto art = std::exchange(SchubArtAlt_, std::nullopt);
    SchubFeldAlt_ = 0;
    return !misslingt([&] {
        switch (*art) {
        case Schubart::Mausbewegung:
            SchubMausStop();
            break;
        case Schubart::Maustaste:
            SchubMausTasteLoslassen();
            break;
        case Schubart::Tastatur:
            stand_.SchubPause = 0;
            SchubTasteLoslassen();
            break;
        case Schubart::Leerfeld:
            break;
        }
    });
}

void Schubregler::aktionStarten(int feld, bool erlaubt) {
    const auto& satz = SchubFelder_.at(std::to_string(feld));
    const auto art = static_cast<Schubart>(verlangt(satz.art).zahl());
    if (art == Schubart::Leerfeld || !erlaubt)
        return;
    SchubFeldAlt_ = static_cast<std::int16_t>(feld);
    SchubArtAlt_ = art; // before the start: what an ill-formed record has begun must find its end
    switch (art) {
    case Schubart::Mausbewegung:
        SchubMausBewegen(satz);
        break;
    case Schubart::Maustaste:
        SchubMausTaste(satz);
        break;
    case Schubart::Tastatur:
        SchubTaste(satz);
        break;
    case Schubart::Leerfeld:
        break;
    }
}

// --- what it holds ---

std::optional<Haltung> Schubregler::haltung(const Standquellen& quellen) const {
    std::optional<Wirkung> eine;
    if (SchubArtAlt_ && stand_.SchubParameter)
        misslingt([&] { eine = wirkung(quellen); });
    return eine ? std::optional(Haltung{Schubhalter{SchubFeldAlt_}, *eine}) : std::nullopt;
}

std::optional<Wirkung> Schubregler::wirkung(const Standquellen& quellen) const {
    const auto& buch = quellen.druckbuch;
    const auto wahl = unterwahl();
    if (!wahl)
        return std::nullopt;
    switch (*SchubArtAlt_) {
    case Schubart::Mausbewegung:
        if (quellen.timer.contains(timerid::SCHUBREGLER))
            return Bewegungswirkung{*wahl};
        break;
    case Schubart::Maustaste:
        if (*wahl < Druckbuch::KNOEPFE && buch.mausdruck(*wahl) != 0)
            return Mausknopfwirkung{*wahl, buch.mausdruck(*wahl)};
        break;
    case Schubart::Tastatur:
        if (stand_.SchubPause != 0)
            return Tastenwirkung{taste(), true, 0};
        if (buch.druck(taste()) != 0)
            return Tastenwirkung{taste(), *wahl == TASTE_ZEITGESTEUERT, buch.druck(taste())};
        break;
    case Schubart::Leerfeld:
        break;
    }
    return std::nullopt;
}

// --- parameters ---

// They are kept while the field stays the same, through the end of a run too.
void Schubregler::parameterFuellen(const Schubsatz& satz) {
    if (!satz.angaben)
        falscherIndex();
    const auto feld = ganzzahl16(satz.nummer);
    if (feld == stand_.SchubParameterFeld)
        return;
    stand_.SchubParameterFeld = feld;
    stand_.SchubParameter = satz.angaben;
}

void Schubregler::parameterLeeren() {
    stand_.SchubParameterFeld = 0;
    stand_.SchubParameter.reset();
}

const Schubangaben& Schubregler::angaben() const {
    if (!stand_.SchubParameter)
        falscherIndex();
    return *stand_.SchubParameter;
}

std::optional<int> Schubregler::unterwahl() const {
    return angaben().unterwahl.ziffer();
}

std::int32_t Schubregler::parameter(std::size_t stelle) const {
    return angaben().wert(stelle).zahl();
}

VirtuelleTaste Schubregler::taste() const {
    return tastencode(parameter(TASTE));
}

// --- mouse ---

void Schubregler::SchubMausBewegen(const Schubsatz& satz) {
    const auto vorher = stand_.SchubParameterFeld;
    parameterFuellen(satz);
    if (stand_.SchubParameterFeld != vorher)
        timerStoppen();
    mausschritt();
}

void Schubregler::mausTakt() {
    timerStoppen();
    mausschritt();
}

void Schubregler::mausschritt() {
    maus::bewegen(dienste_.eingabe, unterwahl(), [this] { return parameter(SCHRITT); });
    timerSetzen(parameter(INTERVALL), &Schubregler::mausTakt);
}

void Schubregler::SchubMausStop() {
    timerStoppen();
    parameterLeeren();
}

void Schubregler::SchubMausTaste(const Schubsatz& satz) {
    parameterFuellen(satz);
    maus::druecken(dienste_.eingabe, unterwahl(), [this] { return parameter(RADMENGE); });
}

void Schubregler::SchubMausTasteLoslassen() {
    maus::loslassen(dienste_.eingabe, unterwahl());
    parameterLeeren();
}

// --- keys: they go straight out and are not entered among the held ones ---

void Schubregler::SchubTaste(const Schubsatz& satz) {
    parameterFuellen(satz);
    if (unterwahl() == TASTE_GEHALTEN) {
        druecken();
    } else if (unterwahl() == TASTE_ZEITGESTEUERT) {
        druecken();
        stand_.SchubPause = angaben().pause();
        druckzeitStarten();
    }
}

// A key that another run has left down for a time belongs to this press from now on.
void Schubregler::druecken() {
    dienste_.xpTaste.TasteAbSenden(taste());
    stand_.Druckenden.erase(taste());
}

void Schubregler::druckzeitStarten() {
    const auto code = taste();
    const std::chrono::milliseconds druckzeit{parameter(DRUCKZEIT)};
    auto& ende = stand_.Druckenden[code];
    ende.lauf = this;
    ende.zeitgeber = dienste_.zeitgeber.formularzeitgeber(
        [&stand = stand_, &eingabe = dienste_.eingabe, code] { druckzeitVorbei(stand, eingabe, code); });
    ende.zeitgeber->Interval(druckzeit < std::chrono::milliseconds{1} ? SETTIMER_MINDESTENS : druckzeit);
    ende.zeitgeber->Enabled(true);
}

// Outlasts the run, so it may look at the run's own things only while that is on. Cannot fail after it: the
// code has been pressed.
void Schubregler::druckzeitVorbei(Schubstand& stand, Eingabe& eingabe, VirtuelleTaste taste) {
    const auto ende = stand.Druckenden.extract(taste);
    if (ende.mapped().lauf)
        ende.mapped().lauf->SchubTasteLoslassen();
    else
        XPTaste(eingabe, [] {}).TasteAufSenden(taste);
}

void Schubregler::SchubTasteLoslassen() {
    timerStoppen();
    std::erase_if(stand_.Druckenden, [this](const auto& eintrag) { return eintrag.second.lauf == this; });
    dienste_.xpTaste.TasteAufSenden(taste());
    if (stand_.SchubPause == 0)
        parameterLeeren();
    else
        timerSetzen(stand_.SchubPause, &Schubregler::tasteDruecken);
}

void Schubregler::tasteDruecken() {
    timerStoppen();
    druecken();
    druckzeitStarten();
}

// --- timer ---

void Schubregler::timerSetzen(std::int32_t ms, void (Schubregler::*prozedur)()) {
    dienste_.zeitgeber.SetTimer(timerid::SCHUBREGLER, std::chrono::milliseconds{ms},
                                [this, prozedur] { (this->*prozedur)(); });
}

void Schubregler::timerStoppen() {
    dienste_.zeitgeber.KillTimer(timerid::SCHUBREGLER);
}
