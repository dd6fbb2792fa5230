#include "engine/stick/Stickaktion.h"

#include "base/LaufzeitFehler.h"
#include "base/Rundung.h"
#include "engine/buttons/GehalteneTasten.h"
#include "engine/buttons/TastenAktion.h"
#include "engine/input/Entwackeln.h"
#include "engine/output/Maus.h"
#include "engine/output/XPTaste.h"
#include "engine/run/LaufAnzeige.h"
#include "formats/Felder.h"
#include "platform/Eingabe.h"
#include "platform/Zeitgeber.h"

#include <algorithm>
#include <cstdlib>
#include <span>
#include <utility>
#include <vector>

namespace {

// Types of action, the first character of an action text.
constexpr char MAUSBEWEGUNG = '0';
constexpr char MAUSTASTE = '1';
constexpr char TASTATUR = '2';
constexpr char SPERRFELD = '4';
constexpr char ABSOLUTE_POSITION = '5';

// Fields of an action text; field 0 is the type.
constexpr std::size_t RICHTUNG_ODER_KNOPF = 1;
constexpr std::size_t SCHRITT = 2;
constexpr std::size_t INTERVALL = 3;
constexpr std::size_t SCROLLSPRUNG = 2;
constexpr std::size_t ZEITGESTEUERT = 1;
constexpr std::size_t TASTE = 2;
constexpr std::size_t DRUCKZEIT = 3;
constexpr std::size_t MIT_WIEDERHOLUNG = 4;
constexpr std::size_t PAUSENZEIT = 5;
constexpr std::array<std::size_t, AKTIONSSEITEN> EGO_ZAEHLER{2, 3};

constexpr std::size_t ABSOLUTE_WAHL = 2; // position of the character that tells the kinds of type 5 apart

// Outer bands are measured by the field in which the movement began, so some ten thousand counts at once come
// of assignments that are played with. A million would take longer to send than anyone waits for.
constexpr std::int64_t GROESSTER_EGOWEG = 1'000'000;
// In one call; a way of any length asks the seam for no more than this.
constexpr std::int64_t EGO_PORTION = 1024;

char art(std::string_view aktion) {
    return aktion.empty() ? '\0' : aktion.front();
}

char letztes(std::string_view aktion) {
    return aktion.empty() ? '\0' : aktion.back();
}

std::string_view zeichen(std::string_view text, std::size_t stelle) {
    return stelle < text.size() ? text.substr(stelle, 1) : std::string_view{};
}

class Aktionsfelder {
public:
    explicit Aktionsfelder(std::string_view aktion) : felder_(zerlegen(aktion, ',')) {}

    std::string_view text(std::size_t feld) const {
        if (feld >= felder_.size())
            throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                                 "Index außerhalb des gültigen Bereichs: zu wenige Felder");
        return felder_[feld];
    }
    std::int32_t zahl(std::size_t feld) const { return feldzahl(text(feld)); }
    /// The step with the sign of its direction.
    std::int32_t weg() const {
        const auto richtung = text(RICHTUNG_ODER_KNOPF);
        return richtung == "0" || richtung == "2" ? maus::negativ(zahl(SCHRITT)) : zahl(SCHRITT);
    }

private:
    std::vector<std::string_view> felder_;
};

std::chrono::milliseconds dauer(std::string_view text) {
    return std::chrono::milliseconds{feldzahl(text)};
}

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

} // namespace

// Runs a step of an action; its errors name the field and the text.
template <class Schritt>
void Stickaktion::benannt(const Feldname& feld, const std::string& a, const Schritt& schritt) const {
    anOrt([&] { return feldname(art_->seite, feld) + ": " + angefuehrt(a); }, schritt);
}

// --- start ---

void Stickaktion::XAktionStarten(const std::string& a) const {
    if (art(a) == MAUSBEWEGUNG)
        XMausBewegen(a, "");
    else if (art(a) == SPERRFELD)
        sperren();
    else
        starten(a, X_SEITE);
    stand_->AktionAlt[X_SEITE] = a;
    stand_->feldAlt[X_SEITE] = felder_[X_SEITE];
}

void Stickaktion::YAktionStarten(const std::string& a) const {
    if (art(a) == MAUSBEWEGUNG)
        YMausBewegen(a);
    else if (art(a) == SPERRFELD)
        sperren();
    else
        starten(a, Y_SEITE);
    stand_->AktionAlt[Y_SEITE] = a;
    stand_->feldAlt[Y_SEITE] = felder_[Y_SEITE];
}

// A `Sperrfeld` of a band stops nothing here: it only has no action of its own.
void Stickaktion::XYAktionStarten(const std::string& ax, const std::string& ay) const {
    const bool xBewegt = art(ax) == MAUSBEWEGUNG;
    const bool yBewegt = art(ay) == MAUSBEWEGUNG;
    if (xBewegt)
        XMausBewegen(ax, yBewegt ? ay : "");
    else
        starten(ax, X_SEITE);
    if (!yBewegt)
        starten(ay, Y_SEITE);
    else if (!xBewegt) // else it runs in the diagonal
        YMausBewegen(ay);
    stand_->AktionAlt = {ax, ay};
    stand_->feldAlt = felder_;
}

// The types that are started alike, whatever runs beside them; any other starts nothing.
void Stickaktion::starten(const std::string& a, Aktionsseite seite) const {
    benannt(felder_[seite], a, [&] {
        switch (art(a)) {
        case MAUSTASTE:
            MausTasteDruecken(a, seite);
            break;
        case TASTATUR:
            TasteDruecken(a, seite);
            break;
        case ABSOLUTE_POSITION:
            AbsolutePosition(a, seite);
            break;
        default:
            break;
        }
    });
}

void Stickaktion::sperren() const {
    // The mask keeps its bits.
    for (const auto id : {art_->absolut, art_->maus[X_SEITE].id, art_->maus[Y_SEITE].id})
        dienste_->zeitgeber.KillTimer(id);
}

// --- mouse movement ---

void Stickaktion::XMausBewegen(const std::string& a, const std::string& b) const {
    if (stand_->DiagonalFlag && art(b) == MAUSBEWEGUNG) {
        diagonaleBewegen(a, b);
        return;
    }
    stand_->MausAktion[Y_SEITE].clear();
    const std::string aktion = a; // `a` may be the remembered text itself
    benannt(felder_[X_SEITE], aktion, [&] {
        const Aktionsfelder felder(aktion);
        const auto richtung = felder.text(RICHTUNG_ODER_KNOPF);
        if (art_->rechtsMitSendInput && richtung == "1") {
            INPUT eines{};
            eines.type = INPUT_MOUSE;
            eines.mi = {felder.zahl(SCHRITT), 0, 0, MOUSEEVENTF_MOVE, 0, 0};
            dienste_->eingabe.SendInput({&eines, 1});
        } else if (!maus::bewegen(dienste_->eingabe, richtung, [&] { return felder.zahl(SCHRITT); })) {
            return;
        }
        stand_->MausAktion[X_SEITE] = aktion;
        timerSetzen(art_->maus[X_SEITE], felder.text(INTERVALL), &Stickaktion::mausTakt, X_SEITE);
    });
}

void Stickaktion::diagonaleBewegen(const std::string& a, const std::string& b) const {
    const std::string x = a; // `a` and `b` may be the remembered texts themselves
    const std::string y = b;
    const Aktionsfelder xFelder(x);
    // dx always comes from the x action and dy from the y action, whatever their directions.
    std::int32_t dx = 0;
    std::int32_t dy = 0;
    benannt(felder_[X_SEITE], x, [&] { dx = xFelder.weg(); });
    benannt(felder_[Y_SEITE], y, [&] { dy = Aktionsfelder(y).weg(); });
    stand_->MausAktion = {x, y};
    dienste_->eingabe.mouse_event(MOUSEEVENTF_MOVE, dx, dy, 0, 0);
    benannt(felder_[X_SEITE], x, [&] {
        timerSetzen(art_->maus[X_SEITE], xFelder.text(INTERVALL), &Stickaktion::mausTakt, X_SEITE,
                    art_->diagonaleMitBit);
    });
}

void Stickaktion::YMausBewegen(const std::string& a) const {
    const std::string aktion = a;
    stand_->MausAktion[Y_SEITE] = aktion;
    benannt(felder_[Y_SEITE], aktion, [&] {
        const Aktionsfelder felder(aktion);
        if (maus::bewegen(dienste_->eingabe, felder.text(RICHTUNG_ODER_KNOPF),
                          [&] { return felder.zahl(SCHRITT); }))
            timerSetzen(art_->maus[Y_SEITE], felder.text(INTERVALL), &Stickaktion::mausTakt, Y_SEITE);
    });
}

void Stickaktion::mausTakt(Aktionsseite seite) const {
    const auto& aktion = stand_->MausAktion;
    if (seite == Y_SEITE)
        YMausBewegen(aktion[Y_SEITE]);
    else
        XMausBewegen(aktion[X_SEITE], stand_->DiagonalFlag ? aktion[Y_SEITE] : "");
}

// --- mouse buttons ---

void Stickaktion::MausTasteDruecken(const std::string& a, Aktionsseite seite) const {
    const Aktionsfelder felder(a);
    maus::druecken(dienste_->eingabe, felder.text(RICHTUNG_ODER_KNOPF),
                   [&felder] { return felder.zahl(SCROLLSPRUNG); });
    stand_->MausAktion[seite] = a;
}

void Stickaktion::MausTasteLoslassen(std::string_view a) const {
    maus::loslassen(dienste_->eingabe, Aktionsfelder(a).text(RICHTUNG_ODER_KNOPF));
}

// --- keys ---

void Stickaktion::TasteDruecken(const std::string& a, Aktionsseite seite) const {
    const std::string aktion = a;
    const Aktionsfelder felder(aktion);
    const auto taste = felder.text(TASTE);
    // Read as a number before it is entered: an entry that is no key could never be released.
    const auto code = tastencode(feldzahl(taste));
    dienste_->gehaltene.GehaltenPflegen(halteeintrag(art_->slot[seite], taste), 0, dienste_->xpTaste);
    dienste_->anzeige.titel(dienste_->gehaltene.GehaltenText());
    dienste_->xpTaste.TasteAbSenden(code);
    if (felder.zahl(ZEITGESTEUERT) == 0)
        return;
    stand_->TastenAktion[seite] = aktion;
    timerSetzen(art_->taste[seite], felder.text(DRUCKZEIT), &Stickaktion::druckTakt, seite);
}

void Stickaktion::druckTakt(Aktionsseite seite) const {
    const std::string aktion = stand_->TastenAktion[seite];
    benannt(felder_[seite], aktion, [&] {
        const Aktionsfelder felder(aktion);
        if (felder.zahl(ZEITGESTEUERT) == 0)
            return;
        dienste_->tastenAktion.TasteFreigeben(art_->slot[seite], felder.text(TASTE));
        timerLoeschen(art_->taste[seite]);
        if (felder.zahl(MIT_WIEDERHOLUNG) == 1)
            timerSetzen(art_->taste[seite], felder.text(PAUSENZEIT), &Stickaktion::pausenTakt, seite);
        else
            stand_->TastenAktion[seite].clear();
    });
}

void Stickaktion::pausenTakt(Aktionsseite seite) const {
    timerLoeschen(art_->taste[seite]);
    const auto& aktion = stand_->TastenAktion[seite];
    benannt(felder_[seite], aktion, [&] { TasteDruecken(aktion, seite); });
}

void Stickaktion::TasteLoslassen(std::string_view a, Aktionsseite seite) const {
    const Aktionsfelder felder(a);
    if (felder.zahl(ZEITGESTEUERT) != 0) {
        if (stand_->TastenAktion[seite].empty())
            return; // the last press has ended by itself
        timerLoeschen(art_->taste[seite]);
    }
    dienste_->tastenAktion.TasteFreigeben(art_->slot[seite], felder.text(TASTE));
}

// --- absolute position ---

void Stickaktion::AbsolutePosition(const std::string& a, Aktionsseite seite) const {
    constexpr std::uint32_t ABSOLUT = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    const auto wahl = zeichen(a, ABSOLUTE_WAHL);
    if (wahl == "0") {
        dienste_->eingabe.mouse_event(ABSOLUT, feldmitte(grenzen_->xMax, grenzen_->xMin),
                                      feldmitte(grenzen_->yMax, grenzen_->yMin), 0, 0);
    } else if (wahl == "1") {
        const auto wo = dienste_->entwackeln.stickLesen(art_->seite);
        dienste_->eingabe.mouse_event(ABSOLUT, wo.x, wo.y, 0, 0);
        stand_->BindenAktion = a;
        dienste_->zeitgeber.SetTimer(art_->absolut, art_->bindenIntervall,
                                     [aktion = *this, seite] { aktion.bindenTakt(seite); });
        dienste_->timer.TimerSetzen(art_->bindenBit);
    } else {
        stand_->EgoDaten = {abstand(grenzen_->xMin, grenzen_->xMax), abstand(grenzen_->yMin, grenzen_->yMax),
                            grenzen_->xMin, grenzen_->yMin, a};
        stand_->EgoStatus = 0;
        EgoSchritt(seite);
    }
}

void Stickaktion::bindenTakt(Aktionsseite seite) const {
    timerLoeschen({art_->absolut, art_->bindenBit});
    const std::string aktion = stand_->BindenAktion;
    AbsolutePosition(aktion, seite);
}

void Stickaktion::EgoSchritt(Aktionsseite seite) const {
    using namespace egostatus;
    const auto& daten = stand_->EgoDaten;
    const auto status = stand_->EgoStatus;
    const Aktionsfelder felder(daten.aktion);
    const auto wo = dienste_->entwackeln.stickLesen(art_->seite);
    if (!(status & X_AUSSEN))
        egoachseBewegen(X_SEITE, abstand(daten.xMin, wo.x), daten.breite, felder.text(EGO_ZAEHLER[X_SEITE]));
    if (!(status & Y_AUSSEN))
        egoachseBewegen(Y_SEITE, abstand(daten.yMin, wo.y), daten.hoehe, felder.text(EGO_ZAEHLER[Y_SEITE]));
    if (status == (X_AUSSEN | Y_AUSSEN))
        return;
    dienste_->zeitgeber.SetTimer(art_->absolut, EGO_INTERVALL, [aktion = *this, seite] {
        aktion.benannt(aktion.felder_[seite], aktion.stand_->EgoDaten.aktion,
                       [&] { aktion.EgoSchritt(seite); });
    });
    dienste_->timer.TimerSetzen(art_->egoBit);
}

void Stickaktion::egoachseBewegen(Aktionsseite seite, std::int32_t versatz, std::int32_t laenge,
                                  std::string_view zaehler) const {
    auto& achse = stand_->egoachsen[seite];
    achse.versatz = versatz;
    const auto zaehlerzahl = feldzahl(zaehler);
    if (laenge == 0 || zaehlerzahl == 0)
        throw LaufzeitFehler(Fehlernummer::DivisionDurchNull, "Division durch Null: Ego Shooter");
    const auto ziel = gerundet(versatz / (static_cast<double>(laenge) / zaehlerzahl));
    // A target of 0 moves nothing and leaves the last travel as it was.
    if (ziel == 0 || ziel == achse.weg)
        return;
    const auto schritte = std::int64_t{ziel} - achse.weg;
    if (std::llabs(schritte) > GROESSTER_EGOWEG)
        throw LaufzeitFehler(Fehlernummer::Ueberlauf, "Überlauf: Ego Shooter mit " +
                                                          std::to_string(schritte) + " Schritten auf einmal");
    achse.weg = ziel;
    const std::int32_t richtung = schritte < 0 ? -1 : 1;
    schritteSenden(
        {seite == X_SEITE ? richtung : 0, seite == Y_SEITE ? richtung : 0, 0, MOUSEEVENTF_MOVE, 0, 0},
        std::llabs(schritte));
}

// The same record again and again, many in one call: a call each would cost a backend far more.
void Stickaktion::schritteSenden(const MOUSEINPUT& einer, std::int64_t anzahl) const {
    INPUT eines{};
    eines.type = INPUT_MOUSE;
    eines.mi = einer;
    const std::vector<INPUT> portion(static_cast<std::size_t>(std::min(anzahl, EGO_PORTION)), eines);
    for (auto rest = anzahl; rest > 0; rest -= EGO_PORTION)
        dienste_->eingabe.SendInput(
            std::span(portion).first(static_cast<std::size_t>(std::min(rest, EGO_PORTION))));
}

// --- end ---

void Stickaktion::AktionBeenden(std::string_view neu) const {
    seiteBeenden(X_SEITE);
    if (art(stand_->AktionAlt[X_SEITE]) == ABSOLUTE_POSITION)
        absolutBeendenX(neu);
    seiteBeenden(Y_SEITE);
    if (art(stand_->AktionAlt[Y_SEITE]) == ABSOLUTE_POSITION)
        absolutBeendenY(neu);
}

void Stickaktion::seiteBeenden(Aktionsseite seite) const {
    const auto& alt = stand_->AktionAlt[seite];
    benannt(stand_->feldAlt[seite], alt, [&] {
        switch (art(alt)) {
        case MAUSBEWEGUNG:
            timerLoeschen(art_->maus[seite]);
            break;
        case MAUSTASTE:
            MausTasteLoslassen(alt);
            break;
        case TASTATUR:
            TasteLoslassen(alt, seite);
            break;
        default:
            break;
        }
    });
}

// The `Ego Shooter` goes on when the stick leaves its field for another one: as long as one axis stands in a
// centre band it works on that axis, with the data of the field in which it began.
void Stickaktion::absolutBeendenX(std::string_view neu) const {
    using namespace egostatus;
    stand_->EgoStatus = 0;
    const auto& alt = stand_->AktionAlt[X_SEITE];
    const auto wahl = zeichen(alt, ABSOLUTE_WAHL);
    bool haelt = false;
    benannt(stand_->feldAlt[X_SEITE], alt, [&] { haelt = feldzahl(wahl) >= 1; });
    if (!haelt)
        return;
    if (wahl != "2") {
        timerLoeschen({art_->absolut, art_->bindenBitXEnde});
        return;
    }
    if (stand_->xZone != "Mitte")
        stand_->EgoStatus |= X_AUSSEN;
    if (stand_->yZone != "Mitte")
        stand_->EgoStatus |= Y_AUSSEN;
    if (art(neu) == SPERRFELD || stand_->EgoStatus == 0)
        dienste_->zeitgeber.KillTimer(art_->absolut); // the mask keeps its bit
}

void Stickaktion::absolutBeendenY(std::string_view neu) const {
    const auto& alt = stand_->AktionAlt;
    if (art(neu) != SPERRFELD && !(letztes(alt[X_SEITE]) != '1' && letztes(alt[Y_SEITE]) == '1'))
        return;
    timerLoeschen({art_->absolut, art_->bindenBit});
    stand_->EgoDaten.aktion.clear();
}

// --- timers ---

void Stickaktion::timerSetzen(const Sticktimer& timer, std::string_view ms,
                              void (Stickaktion::*takt)(Aktionsseite) const, Aktionsseite seite,
                              bool mitBit) const {
    dienste_->zeitgeber.SetTimer(timer.id, dauer(ms),
                                 [aktion = *this, takt, seite] { (aktion.*takt)(seite); });
    if (mitBit)
        dienste_->timer.TimerSetzen(timer.bit);
}

void Stickaktion::timerLoeschen(const Sticktimer& timer) const {
    dienste_->zeitgeber.KillTimer(timer.id);
    dienste_->timer.TimerLoeschen(timer.bit);
}
