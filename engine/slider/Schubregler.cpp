#include "engine/slider/Schubregler.h"

#include "base/LaufzeitFehler.h"
#include "engine/input/Achsen.h"
#include "engine/output/Maus.h"
#include "engine/output/XPTaste.h"
#include "engine/run/Fehlerort.h"
#include "engine/run/TimerUeberwachung.h"
#include "formats/Felder.h"
#include "platform/Eingabe.h"
#include "platform/Zeitgeber.h"
#include "store/files/Achsendatei.h"

#include <limits>
#include <utility>

namespace {

constexpr std::int32_t MITTE = 32767;
constexpr std::int32_t UNTERES_ENDE = 130;  // below this an end is reached
constexpr std::int32_t OBERES_ENDE = 65400; // above this
constexpr double ACHSENLAENGE = 65535;

enum Art : std::int32_t { KEINE = -1, MAUSBEWEGUNG = 0, MAUSTASTE = 1, TASTATUR = 2, LEERFELD = 3 };

// Pieces of a record.
constexpr std::size_t NUR_AUSWAERTS = 0;
constexpr std::size_t NUMMER = 1;
constexpr std::size_t ART = 2;
constexpr std::size_t UNTERWAHL = 3;

// Parameters; what they mean goes by the type of action.
constexpr std::size_t INTERVALL = 0;
constexpr std::size_t SCHRITT = 1;
constexpr std::size_t RADMENGE = 0;
constexpr std::size_t TASTE = 0;
constexpr std::size_t DRUCKZEIT = 1;
constexpr std::size_t PAUSE = 2;

constexpr const char* TASTE_GEHALTEN = "0";
constexpr const char* TASTE_ZEITGESTEUERT = "1";

[[noreturn]] void falscherIndex() {
    throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                         "Index außerhalb des gültigen Bereichs: zu wenige Angaben");
}

template <class Liste> const std::string& stueck(const Liste& liste, std::size_t stelle) {
    if (stelle >= liste.size())
        falscherIndex();
    return liste[stelle];
}

std::vector<std::string> stuecke(std::string_view text, char trenner) {
    const auto teile = zerlegen(text, trenner);
    return {teile.begin(), teile.end()};
}

std::int16_t ganzzahl16(std::string_view text) {
    const auto zahl = feldzahl(text);
    if (zahl < std::numeric_limits<std::int16_t>::min() || zahl > std::numeric_limits<std::int16_t>::max())
        throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: " + angefuehrt(text));
    return static_cast<std::int16_t>(zahl);
}

// A record by its number, as far as it has one, and its text.
std::string satzname(const std::string& text) {
    const auto satz = zerlegen(text, '-');
    return "Schubregler" + (satz.size() > NUMMER ? ", Feld " + std::string(satz[NUMMER]) : "") + ": " +
           angefuehrt(text);
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
    const auto teile = stuecke(achsendatei_.SchubreglerText(), '/');
    if (teile.empty())
        return;
    anOrt([] { return std::string("Schubregler, Anzahl der Felder"); },
          [&] { SchubAnzahl_ = ganzzahl16(teile.front()); });
    std::size_t massgebend = 0;
    for (std::size_t i = 1; i < teile.size(); ++i) {
        const auto satz = stuecke(teile[i], '-');
        anOrt([&] { return satzname(teile[i]); },
              [&] {
                  if (!SchubFelder_.emplace(stueck(satz, NUMMER), satz).second)
                      throw LaufzeitFehler(Fehlernummer::SchluesselVergeben, "Dieses Feld gibt es zweimal");
              });
        if (massgebend == 0 || satz[NUMMER] == "1")
            massgebend = i;
    }
    if (massgebend > 0)
        anOrt([&] { return satzname(teile[massgebend]); },
              [&] { SchubNurAuswaerts_ = ganzzahl16(stuecke(teile[massgebend], '-')[NUR_AUSWAERTS]); });
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
    if (feld != SchubFeldAlt_ && SchubArtAlt_ != KEINE)
        fehler = !aktionBeenden() || fehler;
    if (!fehler && feld != SchubFeldAlt_)
        misslingt([&] { aktionStarten(feld, darf); });
}

// With c = 1 only a movement away from the middle triggers, and standing at an end.
bool Schubregler::erlaubt(std::int32_t wert) {
    if (SchubNurAuswaerts_ != 1)
        return true;
    const auto vorher = std::exchange(SchubWertAlt_, wert);
    if (wert > OBERES_ENDE || wert < UNTERES_ENDE)
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
    const auto art = std::exchange(SchubArtAlt_, KEINE);
    SchubFeldAlt_ = 0;
    return !misslingt([&] {
        switch (art) {
        case MAUSBEWEGUNG:
            SchubMausStop();
            break;
        case MAUSTASTE:
            SchubMausTasteLoslassen();
            break;
        case TASTATUR:
            stand_.SchubPause = 0;
            SchubTasteLoslassen();
            break;
        default:
            break;
        }
    });
}

void Schubregler::aktionStarten(int feld, bool erlaubt) {
    const auto& e = SchubFelder_.at(std::to_string(feld));
    const auto art = feldzahl(std::string_view(stueck(e, ART)));
    if (art == LEERFELD || !erlaubt)
        return;
    SchubFeldAlt_ = static_cast<std::int16_t>(feld);
    SchubArtAlt_ = art; // before the start: what an ill-formed record has begun must find its end
    switch (art) {
    case MAUSBEWEGUNG:
        SchubMausBewegen(e);
        break;
    case MAUSTASTE:
        SchubMausTaste(e);
        break;
    case TASTATUR:
        SchubTaste(e);
        break;
    default:
        break;
    }
}

// --- parameters ---

// They are kept while the field stays the same, through the end of a run too.
void Schubregler::parameterFuellen(const Satz& e) {
    const auto teile = stuecke(stueck(e, UNTERWAHL), '(');
    auto werte = stuecke(stueck(teile, 1), ',');
    const auto feld = ganzzahl16(e[NUMMER]);
    if (feld == stand_.SchubParameterFeld)
        return;
    stand_.SchubParameterFeld = feld;
    stand_.SchubParameter = Schubstand::Parameter{teile.front(), std::move(werte)};
}

void Schubregler::parameterLeeren() {
    stand_.SchubParameterFeld = 0;
    stand_.SchubParameter.reset();
}

const std::string& Schubregler::unterwahl() const {
    if (!stand_.SchubParameter)
        falscherIndex();
    return stand_.SchubParameter->unterwahl;
}

std::int32_t Schubregler::parameter(std::size_t stelle) const {
    if (!stand_.SchubParameter)
        falscherIndex();
    return feldzahl(std::string_view(stueck(stand_.SchubParameter->werte, stelle)));
}

// --- mouse ---

void Schubregler::SchubMausBewegen(const Satz& e) {
    const auto vorher = stand_.SchubParameterFeld;
    parameterFuellen(e);
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

void Schubregler::SchubMausTaste(const Satz& e) {
    parameterFuellen(e);
    maus::druecken(dienste_.eingabe, unterwahl(), [this] { return parameter(RADMENGE); });
}

void Schubregler::SchubMausTasteLoslassen() {
    maus::loslassen(dienste_.eingabe, unterwahl());
    parameterLeeren();
}

// --- keys: they go straight out and are not entered among the held ones ---

void Schubregler::SchubTaste(const Satz& e) {
    parameterFuellen(e);
    if (unterwahl() == TASTE_GEHALTEN) {
        druecken();
    } else if (unterwahl() == TASTE_ZEITGESTEUERT) {
        druecken();
        const auto& pause = stueck(stand_.SchubParameter->werte, PAUSE);
        stand_.SchubPause = pause == ")" ? 0 : feldzahl(davor(pause, ')'));
        druckzeitStarten();
    }
}

// A key that another run has left down for a time belongs to this press from now on.
void Schubregler::druecken() {
    dienste_.xpTaste.TasteAbSenden(parameter(TASTE));
    stand_.Druckenden.erase(parameter(TASTE));
}

void Schubregler::druckzeitStarten() {
    const auto taste = parameter(TASTE);
    const std::chrono::milliseconds druckzeit{parameter(DRUCKZEIT)};
    auto& ende = stand_.Druckenden[taste];
    ende.lauf = this;
    ende.zeitgeber = dienste_.zeitgeber.formularzeitgeber(
        [&stand = stand_, &eingabe = dienste_.eingabe, taste] { druckzeitVorbei(stand, eingabe, taste); });
    ende.zeitgeber->Interval(druckzeit < std::chrono::milliseconds{1} ? SETTIMER_MINDESTENS : druckzeit);
    ende.zeitgeber->Enabled(true);
}

// Outlasts the run, so it may look at the run's own things only while that is on. Cannot fail after it: the
// code has been pressed.
void Schubregler::druckzeitVorbei(Schubstand& stand, Eingabe& eingabe, std::int32_t taste) {
    const auto ende = stand.Druckenden.extract(taste);
    if (ende.mapped().lauf)
        ende.mapped().lauf->SchubTasteLoslassen();
    else
        XPTaste(eingabe, [] {}).TasteAufSenden(taste);
}

void Schubregler::SchubTasteLoslassen() {
    timerStoppen();
    std::erase_if(stand_.Druckenden, [this](const auto& eintrag) { return eintrag.second.lauf == this; });
    dienste_.xpTaste.TasteAufSenden(parameter(TASTE));
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
