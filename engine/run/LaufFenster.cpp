// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/run/LaufFenster.h"

#include "engine/input/Padabfrage.h"
#include "engine/output/XPTaste.h"
#include "engine/run/LaufAnzeige.h"
#include "engine/stick/Stickhaltungen.h"
#include "store/schema/SenLesSchr.h"
#include "store/schema/modSpeichern.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::chrono::milliseconds TICK{5};
constexpr std::chrono::milliseconds LEERES_INTERVALL{100};

constexpr int STANDART = 0;

// What the window shows in the tick that enters a layer.
constexpr std::array<std::string_view, EBENEN> UMSCHALTUNGEN{"", "Umschalttaste 1", "Umschalttaste 2"};

constexpr int KNOPF_STOP = 0;
constexpr int KNOPF_SENSITAST = 1;
constexpr int ERSTER_KREUZSLOT = 12;

constexpr std::uint32_t bit(int slot) {
    return 1U << slot;
}

// Reads the texts of a run once.
Laufbelegungen belegungen(const Laufbild& texte) {
    Laufbelegungen gelesen;
    for (std::size_t ebene = 0; ebene < texte.size(); ++ebene)
        for (std::size_t slot = 0; slot < texte[ebene].size(); ++slot)
            gelesen[ebene][slot] = Belegung(texte[ebene][slot]);
    return gelesen;
}

Eingabe& angeschlossen(Druckbuch& druckbuch, Eingabe& eingabe) {
    druckbuch.anschliessen(eingabe);
    return druckbuch;
}

} // namespace

LaufFenster::LaufFenster(const Laufumgebung& umgebung)
    : zustand_(umgebung.zustand)
    , joystick_(umgebung.joystick)
    , anzeige_(umgebung.anzeige)
    , eingabe_(angeschlossen(zustand_.druckbuch, umgebung.eingabe))
    , zeitgeber_(umgebung.zeitgeber, [this](const LaufzeitFehler& fehler) { abbrechen(fehler); })
    , xpTaste_(eingabe_, [this] { wiederholung_.WiederholungPruefen(); })
    , wiederholung_(zustand_.wiederholung, zustand_.gehaltene, xpTaste_, zeitgeber_)
    , tastenAktion_(zustand_.tasten, zustand_.gegeben, zustand_.gehaltene, wiederholung_, xpTaste_,
                    zeitgeber_, anzeige_)
    , entwackeln_(zustand_.entwackeln, zustand_.achsen, regler_, zeitgeber_, anzeige_)
    , dienste_{zeitgeber_,         eingabe_,         xpTaste_,    tastenAktion_,
               zustand_.gehaltene, zustand_.gegeben, entwackeln_, anzeige_}
    , schubregler_(zustand_.schub, zustand_.achsendatei, zustand_.achsen, dienste_)
    , spielzeitgeber_(zeitgeber_.formularzeitgeber([this] { spieltakt(); }))
    , streuablage_(umgebung.streuablage)
    , streuzaehler_(umgebung.streuhoerer)
    , leererZeitgeber_(zeitgeber_.formularzeitgeber([] {}))
    , ruhepunkt_(umgebung.ruhepunkt)
    , ruhepunktabstand_(umgebung.ruhepunktabstand)
    , ruhe_(
          joystick_, zeitgeber_, entwackeln_, takteInRuhe(), [this] { return inRuhe(); },
          [this](const Formularzeitgeber& takt, std::uint64_t anzahl) {
              if (&takt == spielzeitgeber_.get())
                  streuzaehler_.nocheinmal(anzahl);
          }) {
    // A pad that was never there presses nothing.
    JoyInfo_.dwPOV = JoyInfoAlt_.dwPOV = JOY_POVCENTERED;
}

LaufFenster::~LaufFenster() = default;

void LaufFenster::laden() {
    auto& global = zustand_.global;
    global.Alle_Variablen_loeschen();
    zustand_.stickdatenbank.laufBeginnt();
    reglerLesen();
    Aktionen_ = belegungen(TastenLaufLesen(global.DatenbankPfad, global.SchemaName));
    ebenen_.TasteBelegen(Aktionen_[STANDART]);
    if (const auto funktion = FunktionLesen(global.DatenbankPfad, global.SchemaName))
        anzeige_.Option1(*funktion);
    schubregler_.erstellen();
    sticktabellenLaden(STANDART);

    schemaName_ = global.SchemaName;
    geladen_ = true;
    letzterRuhepunkt_ = zeitgeber_.raster();
    anzeige_.hauptformVerbergen();
    leererZeitgeber_->Interval(LEERES_INTERVALL);
    leererZeitgeber_->Enabled(true);
    spielzeitgeber_->Interval(TICK);
    spielzeitgeber_->Enabled(true);
}

std::optional<LaufzeitFehler> LaufFenster::beenden() {
    if (!std::exchange(geladen_, false))
        return std::nullopt;
    ruhe_.beenden();
    const auto& global = zustand_.global;
    anzeige_.hauptformZurueck(global.OffenerEditor != 1 && global.OffenerEditorR != 1);
    wiederholung_.anhalten();
    entwackeln_.EntwackelnStoppen();
    auto fehler = behalten();
    AlleTimerBeenden(zeitgeber_);
    schubregler_.beenden();
    leererZeitgeber_->Enabled(false);
    spielzeitgeber_->Enabled(false);
    streuungAblegen();
    return fehler;
}

void LaufFenster::reglerLesen() {
    const auto& global = zustand_.global;
    SensibleLesenSchreiben(global.DatenbankPfad, global.SchemaName, regler_, false);
    SensibleRLesenSchreiben(global.DatenbankPfad, global.SchemaName, regler_, false);
    // A copy: a scroll bar that is set comes back as a change.
    const auto werte = regler_;
    for (std::size_t i = 0; i < werte.glaettung.size(); ++i)
        anzeige_.HScroll1(static_cast<int>(i), werte.glaettung[i]);
    anzeige_.HScroll2(werte.wiederholintervall);
    HScroll2Aenderung(werte.wiederholintervall);
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

void LaufFenster::spieltakt() {
    // A poll that fails leaves the last values to be evaluated again.
    padDa_ = padAbfragen(joystick_, JoyInfo_);
    Beschriften();
    StickAuswerten();
    streuungZaehlen();
    SteuerkreuzAuswerten();
    schubregler_.auswerten();
    ruhepunktMelden();
    ruhe_.versuchen();
}

// Where a pad is gone its last values are nobody's.
void LaufFenster::streuungZaehlen() {
    for (const auto* stick : zustand_.sticks) {
        const auto seite = stick->seite();
        streuzaehler_.takt(seite, ebenen_.Ebene(), zustand_.gegeben.stick(seite).position,
                           padDa_ ? entwackeln_.rohort(seite) : std::nullopt);
    }
}

void LaufFenster::streuungAblegen() {
    if (!streuablage_)
        return;
    if (auto laeufe = streuzaehler_.ergebnis(); !laeufe.empty())
        streuablage_->ablegen(schemaName_, std::move(laeufe));
}

// By the clock and not by ticks: a run that rests has few of them.
void LaufFenster::ruhepunktMelden() {
    if (!ruhepunkt_ || zeitgeber_.raster() - letzterRuhepunkt_ < ruhepunktabstand_ || !haeltStill())
        return;
    if (ruhepunkt_(*this))
        letzterRuhepunkt_ = zeitgeber_.raster();
}

void LaufFenster::fortsetzen() {
    for (std::size_t i = 0; i < regler_.glaettung.size(); ++i)
        regler_.glaettung[i] =
            std::clamp(regler_.glaettung[i], HSCROLL1_BEREICHE[i].min, HSCROLL1_BEREICHE[i].max);
    sticktabellenLaden(ebenen_.Ebene());
    wiederholung_.intervall(std::chrono::milliseconds{regler_.wiederholintervall});
    entwackeln_.stickLesen(Stickseite::Links); // starts the smoothing
}

void LaufFenster::Beschriften() {
    auto& padtasten = JoyInfo_.dwButtons;
    if (padtasten == 0)
        nichtsGedrueckt();

    const int gedrueckte = gedruecktePadtasten(); // before the shift keys act on them

    std::string_view umschaltung;
    if (const auto eintritt = ebenen_.gedrueckt(padtasten)) {
        wechseln(*eintritt);
        padtasten -= eintritt->umschalttaste;
        umschaltung = UMSCHALTUNGEN[static_cast<std::size_t>(eintritt->ebene)];
    }

    if (std::exchange(gezeigteUmschaltung_, umschaltung) != umschaltung)
        anzeige_.lblUmschalt(umschaltung);
    if (std::exchange(gezeigtePadtastenzahl_, gedrueckte) != gedrueckte)
        anzeige_.gedruecktePadtasten(gedrueckte);

    padtastenflanken();
    JoyInfoAlt_ = JoyInfo_;
    TastenWort_ = static_cast<std::uint16_t>(padtasten);
}

// Those of the repeat may go on over empty places.
std::vector<Formularzeitgeber*> LaufFenster::takteInRuhe() const {
    auto takte = wiederholung_.zeitgeber();
    takte.insert(takte.end(), {spielzeitgeber_.get(), leererZeitgeber_.get()});
    return takte;
}

int LaufFenster::gedruecktePadtasten() const {
    return static_cast<int>(JoyInfo_.dwButtons & 0xFFFF) - static_cast<int>(ebenen_.eigeneUmschalttaste());
}

void LaufFenster::nichtsGedrueckt() {
    wiederholung_.slotsLeeren();
    if (const auto austritt = ebenen_.nichtsGedrueckt())
        wechseln(*austritt);
}

void LaufFenster::wechseln(const Ebenenwechsel::Schritt& schritt) {
    sticktabellenLaden(schritt.ebene);
    if (schritt.sticksAuswerten) {
        grenzenLoeschen();
        StickAuswerten();
    }
    ebenen_.vollziehen(schritt);
}

void LaufFenster::padtastenflanken() {
    const auto jetzt = JoyInfo_.dwButtons;
    const auto vorher = JoyInfoAlt_.dwButtons;
    for (int slot = 0; slot < TASTEN; ++slot) {
        if (jetzt & ~vorher & bit(slot))
            tastenAktion_.TasteDrueckAktion(belegung(slot), slot, ebenen_.Ebene());
        else if (~jetzt & vorher & bit(slot))
            tastenAktion_.TasteLoesAktion(belegung(slot), slot, ebenen_.Ebene());
    }
}

void LaufFenster::StickAuswerten() {
    for (auto* stick : zustand_.sticks) {
        const auto position = stick->lesen(dienste_);
        if (!(static_cast<std::uint32_t>(stick->StickSperre) & bit(ebenen_.Ebene()))) {
            if (!stick->grenzen.enthaeltX(position.x))
                stick->auswerten(dienste_, position);
            if (!stick->grenzen.enthaeltY(position.y))
                stick->auswerten(dienste_, position);
        }
        zustand_.gegeben.stick(stick->seite()).position = position;
    }
}

void LaufFenster::SteuerkreuzAuswerten() {
    for (const auto& ereignis : steuerkreuz_.auswerten(JoyInfo_.dwPOV)) {
        const int slot = ERSTER_KREUZSLOT + ereignis.richtung;
        if (ereignis.gedrueckt)
            tastenAktion_.TasteDrueckAktion(belegung(slot), slot, ebenen_.Ebene());
        else
            tastenAktion_.TasteLoesAktion(belegung(slot), slot, ebenen_.Ebene());
    }
}

void LaufFenster::Command1Klick(int index) {
    if (!geladen_)
        return;
    ruhe_.beenden();
    // Each button knows only its own caption, and both act on the one timer.
    auto& angehalten = index == KNOPF_STOP ? stopGedrueckt_ : ausgeklappt_;
    angehalten = !angehalten;
    const std::string_view ruhetext = index == KNOPF_STOP ? "Stop" : "SensiTast";
    spielzeitgeber_->Enabled(!angehalten);
    if (angehalten) {
        streuzaehler_.unterbrechen();
        pollHalten();
    }
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
    ruhe_.beenden(); // by the window that the rings have turned in
    const auto i = static_cast<std::size_t>(index);
    regler_.glaettung[i] = std::clamp(wert, HSCROLL1_BEREICHE[i].min, HSCROLL1_BEREICHE[i].max);
    entwackeln_.EntwackelnStoppen(); // the next tick starts it anew
}

void LaufFenster::HScroll2Aenderung(int wert) {
    regler_.wiederholintervall = wert;
    wiederholung_.intervall(std::chrono::milliseconds{wert});
}

void LaufFenster::Option1Klick(int index) {
    FunktionSpeichern(zustand_.global.DatenbankPfad, zustand_.global.SchemaName, index);
}

bool LaufFenster::pollt() const {
    return spielzeitgeber_->Enabled();
}

// --- rest ---

// Looks at everything that a tick or a round of the smoothing reads and may change, in the state in which the
// last ones have left it.
bool LaufFenster::inRuhe() const {
    return geladen_ && pollt() && nurTakte() && padtastenInRuhe() && sticksInRuhe() &&
           steuerkreuz_.bleibt(JoyInfo_.dwPOV) && schubregler_.inRuhe() && entwackeln_.inRuhe();
}

// The pad may do what it likes: what it did is part of the state, also where the smoothing has not done with
// it.
bool LaufFenster::haeltStill() const {
    return geladen_ && pollt() && nurTakte() && !schubregler_.druecktAufZeit();
}

// No pulse, no movement, nothing of the slider, no repeat.
bool LaufFenster::nurTakte() const {
    const auto& gesetzte = zeitgeber_.gesetzte();
    return gesetzte.size() == gesetzte.count(timerid::ENTWACKELN) && wiederholung_.inRuhe();
}

// The next tick gets the word that the last one has left: only the entry of a layer, which shows its name,
// takes a shift key out of it.
bool LaufFenster::padtastenInRuhe() const {
    const auto padtasten = JoyInfo_.dwButtons;
    return gezeigteUmschaltung_.empty() && gezeigtePadtastenzahl_ == gedruecktePadtasten() &&
           ebenen_.bleibt(padtasten) && (padtasten != 0 || wiederholung_.leer());
}

bool LaufFenster::sticksInRuhe() const {
    return std::ranges::all_of(zustand_.sticks, [&](StickMaschine* stick) {
        if (static_cast<std::uint32_t>(stick->StickSperre) & bit(ebenen_.Ebene()))
            return true;
        const auto position = entwackeln_.ausgabe(stick->seite());
        return stick->grenzen.enthaeltX(position.x) && stick->grenzen.enthaeltY(position.y);
    });
}

// --- what is held ---

Laufstand LaufFenster::stand() const {
    Laufstand stand{ebenen_.Ebene(), {}};
    auto& haltungen = stand.haltungen;
    const Standquellen quellen{zustand_.druckbuch, zustand_.gehaltene, zeitgeber_.gesetzte(),
                               zustand_.gegeben.timer};
    padhaltungenAnhaengen(haltungen);
    for (const auto* stick : zustand_.sticks)
        stickhaltungenAnhaengen(stick->eigenart(), stick->stand(), quellen, haltungen);
    if (const auto schub = schubregler_.haltung(quellen))
        haltungen.push_back(*schub);
    ohneHalterAnhaengen(zustand_.druckbuch, haltungen);
    return stand;
}

void LaufFenster::padhaltungenAnhaengen(std::vector<Haltung>& haltungen) const {
    for (int slot = 0; slot < SLOTS; ++slot) {
        const Padhalter halter{slot, gedrueckt(slot)};
        if (const auto wirkung = padwirkung(slot))
            haltungen.push_back({halter, *wirkung});
        if (const auto wirkung = halter.gedrueckt ? padmauswirkung(slot) : std::nullopt)
            haltungen.push_back({halter, *wirkung});
    }
}

std::optional<Wirkung> LaufFenster::padwirkung(int slot) const {
    const auto& tasten = zustand_.tasten;
    // The masks alone outlast a run.
    const bool imTakt = ((tasten.DrueckMaske | tasten.PausenMaske) & bit(slot)) != 0 &&
                        zeitgeber_.gesetzte().contains(slotTimerId(slot));
    const auto& alle = zustand_.gehaltene.eintraege();
    const auto eintrag = std::ranges::find(alle, slot, &Halteeintrag::slot);
    if (eintrag != alle.end())
        return Tastenwirkung{eintrag->taste, imTakt, imTakt ? 0 : zustand_.druckbuch.druck(eintrag->taste)};
    if (imTakt) // its pause; it was pressed, so its key is one
        return Tastenwirkung{
            tastencode(tasten.TastenSatz[static_cast<std::size_t>(slot) + 1][belegungsfeld::TASTE].zahl()),
            true, 0};
    return std::nullopt;
}

std::optional<Wirkung> LaufFenster::padmauswirkung(int slot) const {
    const auto knopf = belegung(slot).mausknopf();
    const auto druck = knopf ? zustand_.druckbuch.mausdruck(*knopf) : 0;
    return druck != 0 ? std::optional<Wirkung>(Mausknopfwirkung{*knopf, druck}) : std::nullopt;
}

bool LaufFenster::gedrueckt(int slot) const {
    return slot < TASTEN ? (JoyInfo_.dwButtons & bit(slot)) != 0
                         : steuerkreuz_.steht(slot - ERSTER_KREUZSLOT);
}

void LaufFenster::grenzenLoeschen() {
    for (auto* stick : zustand_.sticks)
        stick->grenzen.xMax = stick->grenzen.yMax = 0;
}

void LaufFenster::sticktabellenLaden(int ebene) {
    for (auto* stick : zustand_.sticks)
        stick->tabellenLaden(ebene);
}

const Belegung& LaufFenster::belegung(int slot) const {
    return Aktionen_[static_cast<std::size_t>(ebenen_.Ebene())][static_cast<std::size_t>(slot)];
}
