#include "engine/run/LaufFenster.h"

#include "engine/output/XPTaste.h"
#include "engine/run/Fehlerort.h"
#include "engine/run/LaufAnzeige.h"
#include "store/schema/SenLesSchr.h"
#include "store/schema/modSpeichern.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::chrono::milliseconds TICK{5};
constexpr std::chrono::milliseconds TIMER1_INTERVALL{100};

// The size is larger than the record; drivers that the pads came with were asked this way.
constexpr std::uint32_t ABGEFRAGTE_GROESSE = 64;
constexpr std::uint32_t ALLE_WERTE = 255;

constexpr int STANDART = 0;
constexpr int UMSCHALT_1 = 1;
constexpr int UMSCHALT_2 = 2;
constexpr std::int16_t FESTSTELLEN = 1; // mode of a shift key; any other is `Halten ---> Loslassen`

constexpr int KNOPF_STOP = 0;
constexpr int KNOPF_SENSITAST = 1;
constexpr int ERSTER_KREUZSLOT = 12;

constexpr std::uint32_t bit(int slot) {
    return 1U << slot;
}

// The mode of a shift key: the character at position 5 of a `Belegung` whose first two fields have one digit
// each.
std::int16_t umschaltart(std::string_view belegung) {
    constexpr std::size_t MODUSZEICHEN = 4;
    const auto zeichen =
        belegung.size() > MODUSZEICHEN ? belegung.substr(MODUSZEICHEN, 1) : std::string_view{};
    return static_cast<std::int16_t>(feldzahl(zeichen));
}

} // namespace

LaufFenster::LaufFenster(const Laufumgebung& umgebung)
    : zustand_(umgebung.zustand)
    , joystick_(umgebung.joystick)
    , anzeige_(umgebung.anzeige)
    , sticks_(umgebung.sticks)
    , zeitgeber_(umgebung.zeitgeber, [this](const LaufzeitFehler& fehler) { abbrechen(fehler); })
    , xpTaste_(umgebung.eingabe, [this] { wiederholung_.WiederholungPruefen(); })
    , wiederholung_(zustand_.wiederholung, zustand_.gehaltene, xpTaste_, zeitgeber_)
    , tastenAktion_(zustand_.tasten, zustand_.gehaltene, wiederholung_, xpTaste_, zeitgeber_, anzeige_)
    , entwackeln_(zustand_.entwackeln, zustand_.achsen, regler_, zeitgeber_, anzeige_)
    , dienste_{zeitgeber_,         umgebung.eingabe, xpTaste_,    tastenAktion_,
               zustand_.gehaltene, zustand_.timer,   entwackeln_, anzeige_}
    , schubregler_(zustand_.schub, zustand_.achsen, dienste_)
    , tmrSpiel_(zeitgeber_.formularzeitgeber([this] { tmrSpielTakt(); }))
    , Timer1_(zeitgeber_.formularzeitgeber([] {})) {
    // A pad that was never there presses nothing.
    JoyInfo_.dwPOV = JoyInfoAlt_.dwPOV = JOY_POVCENTERED;
}

LaufFenster::~LaufFenster() = default;

void LaufFenster::laden() {
    auto& global = zustand_.global;
    global.Alle_Variablen_loeschen();
    zustand_.stickdatenbank.laufBeginnt();
    reglerLesen();
    Aktionen_ = TastenLaufLesen(global.DatenbankPfad, global.SchemaName);
    TasteBelegen();
    if (const auto funktion = FunktionLesen(global.DatenbankPfad, global.SchemaName))
        anzeige_.Option1(*funktion);
    schubregler_.erstellen();
    sticktabellenLaden(STANDART);

    geladen_ = true;
    anzeige_.hauptformVerbergen();
    Timer1_->Interval(TIMER1_INTERVALL);
    Timer1_->Enabled(true);
    tmrSpiel_->Interval(TICK);
    tmrSpiel_->Enabled(true);
}

std::optional<LaufzeitFehler> LaufFenster::beenden() {
    if (!std::exchange(geladen_, false))
        return std::nullopt;
    const auto& global = zustand_.global;
    anzeige_.hauptformZurueck(global.OffenerEditor != 1 && global.OffenerEditorR != 1);
    wiederholung_.anhalten();
    entwackeln_.EntwackelnStoppen();
    auto fehler = behalten();
    AlleTimerBeenden(zeitgeber_);
    schubregler_.beenden();
    Timer1_->Enabled(false);
    tmrSpiel_->Enabled(false);
    return fehler;
}

void LaufFenster::reglerLesen() {
    const auto& global = zustand_.global;
    SensibleLesenSchreiben(global.DatenbankPfad, global.SchemaName, regler_, false);
    SensibleRLesenSchreiben(global.DatenbankPfad, global.SchemaName, regler_, false);
    // A copy: a scroll bar that is set comes back as a change.
    const auto werte = regler_;
    for (std::size_t i = 0; i < werte.HScroll1.size(); ++i)
        anzeige_.HScroll1(static_cast<int>(i), werte.HScroll1[i]);
    anzeige_.HScroll2(werte.HScroll2);
    HScroll2Aenderung(werte.HScroll2);
}

// Writes the scroll bars. The rows are two: what one of them fails with does not keep the other from being
// written. Gives what could not be kept of the run, also of the rows that its start was to lay.
std::optional<LaufzeitFehler> LaufFenster::behalten() {
    std::optional<LaufzeitFehler> erster;
    std::string verlorenes;
    const auto verloren = [&](std::string_view was, const LaufzeitFehler& fehler) {
        verlorenes += (erster ? ", " : "") + std::string(was);
        if (!erster)
            erster = fehler;
    };
    const auto& global = zustand_.global;
    for (const auto& [schreiben, was] :
         {std::pair(&SensibleLesenSchreiben, "die Empfindlichkeit des linken Sticks"),
          std::pair(&SensibleRLesenSchreiben, "die Empfindlichkeit des rechten Sticks")})
        try {
            schreiben(global.DatenbankPfad, global.SchemaName, regler_, true);
        } catch (const LaufzeitFehler& fehler) {
            verloren(was, fehler);
        }
    for (const auto& [seite, was] : {std::pair(Stickseite::Links, "die Linien des linken Sticks"),
                                     std::pair(Stickseite::Rechts, "die Linien des rechten Sticks")})
        if (const auto& fehler = zustand_.stickdatenbank.ungelegt(seite))
            verloren(was, *fehler);
    if (erster)
        erster = LaufzeitFehler(erster->nummer(),
                                std::string(erster->what()) + "\nNicht gespeichert: " + verlorenes + ".");
    return erster;
}

void LaufFenster::abbrechen(const LaufzeitFehler& fehler) {
    if (!geladen_)
        return; // an error of what is left of a run that has ended
    const auto verlorenes = beenden();
    anzeige_.abgebrochen(
        verlorenes ? LaufzeitFehler(fehler.nummer(), std::string(fehler.what()) + "\n\n" + verlorenes->what())
                   : fehler);
}

void LaufFenster::TasteBelegen() {
    for (int slot = 0; slot < TASTEN; ++slot) {
        const auto& text = Aktionen_[STANDART][static_cast<std::size_t>(slot)];
        const auto maske = static_cast<std::int16_t>(bit(slot));
        anOrt([&] { return slotname(slot, STANDART) + ": " + angefuehrt(text); },
              [&] {
                  if (text.starts_with('3')) {
                      Umschalt1Maske_ = maske;
                      Umschalt1Art_ = umschaltart(text);
                  } else if (text.starts_with('4')) {
                      Umschalt2Maske_ = maske;
                      Umschalt2Art_ = umschaltart(text);
                  }
              });
    }
}

void LaufFenster::tmrSpielTakt() {
    JoyInfo_.dwFlags = ALLE_WERTE;
    JoyInfo_.dwSize = ABGEFRAGTE_GROESSE;
    joystick_.joyGetPosEx(0, JoyInfo_); // a poll that fails leaves the last values to be evaluated again
    Beschriften();
    StickAuswerten();
    SteuerkreuzAuswerten();
    schubregler_.auswerten();
}

void LaufFenster::Beschriften() {
    auto& tasten = JoyInfo_.dwButtons;
    if (tasten == 0)
        ebeneVerlassen();

    // The number as it is before the shift keys act on it.
    const std::array<int, EBENEN> abzug{0, Umschalt1Maske_, Umschalt2Maske_};
    const int gedrueckte = static_cast<int>(tasten & 0xFFFF) - abzug[static_cast<std::size_t>(Ebene_)];

    std::string_view umschaltung;
    if (umschalttaste1())
        umschaltung = "Umschalttaste 1";
    if (umschalttaste2())
        umschaltung = "Umschalttaste 2";

    if (std::exchange(lblUmschalt_, umschaltung) != umschaltung)
        anzeige_.lblUmschalt(umschaltung);
    if (std::exchange(gedrueckteTasten_, gedrueckte) != gedrueckte)
        anzeige_.gedrueckteTasten(gedrueckte);

    tastenflanken();
    JoyInfoAlt_ = JoyInfo_;
    TastenWort_ = static_cast<std::uint16_t>(tasten);
}

void LaufFenster::ebeneVerlassen() {
    wiederholung_.slotsLeeren();
    if (Umschalt1Fest_ || Umschalt2Fest_) {
        LoesenMerker_ = true;
        return;
    }
    if (Ebene_ == STANDART)
        return;
    sticktabellenLaden(STANDART);
    grenzenLoeschen();
    StickAuswerten(); // still in the layer that is left, whose locks hold
    Ebene_ = STANDART;
}

// The two shift keys are no twins: a further tick of the same press wipes the latch of the first one, so only
// the second one stays latched when it is let go.
bool LaufFenster::umschalttaste1() {
    const auto maske = static_cast<std::uint32_t>(Umschalt1Maske_);
    if (JoyInfo_.dwButtons != maske || maske == 0 || Ebene_ == UMSCHALT_2)
        return false;
    if (Ebene_ == UMSCHALT_1) {
        LoesenMerker_ = false;
        Umschalt1Fest_ = false;
        return false;
    }
    if (Umschalt1Art_ == FESTSTELLEN && Umschalt1Fest_) {
        Umschalt1Fest_ = false;
        return false;
    }
    Umschalt1Fest_ = Umschalt1Art_ == FESTSTELLEN;
    sticktabellenLaden(UMSCHALT_1);
    grenzenLoeschen();
    StickAuswerten();
    Ebene_ = UMSCHALT_1;
    JoyInfo_.dwButtons -= maske;
    return true;
}

bool LaufFenster::umschalttaste2() {
    const auto maske = static_cast<std::uint32_t>(Umschalt2Maske_);
    if (JoyInfo_.dwButtons != maske || maske == 0 || Ebene_ == UMSCHALT_1)
        return false;
    if (Ebene_ == UMSCHALT_2) {
        if (LoesenMerker_)
            Umschalt2Fest_ = LoesenMerker_ = false;
        return false;
    }
    if (Umschalt2Art_ == FESTSTELLEN && Umschalt2Fest_) {
        Umschalt2Fest_ = false;
        return false;
    }
    Umschalt2Fest_ = Umschalt2Art_ == FESTSTELLEN;
    sticktabellenLaden(UMSCHALT_2); // the sticks' bounds stay: they follow when a stick leaves its field
    Ebene_ = UMSCHALT_2;
    JoyInfo_.dwButtons -= maske;
    return true;
}

void LaufFenster::tastenflanken() {
    const auto jetzt = JoyInfo_.dwButtons;
    const auto vorher = JoyInfoAlt_.dwButtons;
    for (int slot = 0; slot < TASTEN; ++slot) {
        if (jetzt & ~vorher & bit(slot))
            tastenAktion_.TasteDrueckAktion(belegung(slot), slot, Ebene_);
        else if (~jetzt & vorher & bit(slot))
            tastenAktion_.TasteLoesAktion(belegung(slot), slot, Ebene_);
    }
}

void LaufFenster::StickAuswerten() {
    for (auto* stick : sticks_) {
        auto position = stick->lesen(dienste_);
        if (!(static_cast<std::uint32_t>(stick->StickSperre) & bit(Ebene_))) {
            if (!stick->grenzen.enthaeltX(position.x))
                stick->auswerten(dienste_, position, Ebene_);
            if (!stick->grenzen.enthaeltY(position.y))
                stick->auswerten(dienste_, position, Ebene_);
        }
        stick->position = position;
    }
}

void LaufFenster::SteuerkreuzAuswerten() {
    for (const auto& ereignis : steuerkreuz_.auswerten(JoyInfo_.dwPOV)) {
        const int slot = ERSTER_KREUZSLOT + ereignis.richtung;
        if (ereignis.gedrueckt)
            tastenAktion_.TasteDrueckAktion(belegung(slot), slot, Ebene_);
        else
            tastenAktion_.TasteLoesAktion(belegung(slot), slot, Ebene_);
    }
}

void LaufFenster::Command1Klick(int index) {
    if (!geladen_)
        return;
    // Each button knows only its own caption, and both act on the one timer.
    auto& angehalten = index == KNOPF_STOP ? stopGedrueckt_ : ausgeklappt_;
    angehalten = !angehalten;
    const std::string_view ruhetext = index == KNOPF_STOP ? "Stop" : "SensiTast";
    tmrSpiel_->Enabled(!angehalten);
    if (angehalten)
        pollHalten();
    anzeige_.Command1(index, angehalten ? "Start" : ruhetext);
    if (index == KNOPF_SENSITAST) {
        entwackeln_.berichten(angehalten);
        anzeige_.testfeld(angehalten);
    }
}

// Held keys stay held, and all other timers go on.
void LaufFenster::pollHalten() {
    if (!entwackeln_.laeuft())
        return;
    entwackeln_.EntwackelnStoppen();
    zeitgeber_.KillTimer(timerid::RECHTS_ABSOLUT);
    zeitgeber_.KillTimer(timerid::LINKS_ABSOLUT);
}

void LaufFenster::HScroll1Aenderung(int index, int wert) {
    const auto i = static_cast<std::size_t>(index);
    regler_.HScroll1[i] = std::clamp(wert, HSCROLL1_BEREICHE[i].min, HSCROLL1_BEREICHE[i].max);
    entwackeln_.EntwackelnStoppen(); // the next tick starts it anew
}

void LaufFenster::HScroll2Aenderung(int wert) {
    regler_.HScroll2 = wert;
    wiederholung_.intervall(std::chrono::milliseconds{wert});
}

void LaufFenster::Option1Klick(int index) {
    FunktionSpeichern(zustand_.global.DatenbankPfad, zustand_.global.SchemaName, index);
}

bool LaufFenster::pollt() const {
    return tmrSpiel_->Enabled();
}

void LaufFenster::grenzenLoeschen() {
    for (auto* stick : sticks_)
        stick->grenzen.xMax = stick->grenzen.yMax = 0;
}

void LaufFenster::sticktabellenLaden(int ebene) {
    for (auto* stick : sticks_)
        stick->tabellenLaden(ebene);
}

const std::string& LaufFenster::belegung(int slot) const {
    return Aktionen_[static_cast<std::size_t>(Ebene_)][static_cast<std::size_t>(slot)];
}
