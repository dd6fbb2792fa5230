// SPDX-License-Identifier: GPL-3.0-or-later
// A running `Schema`: the poll cycle and all that hangs on it. Made at the start of a run, dies with it.
//
// Every 5 ms a tick, in this order:
//
//   1  the pad is polled; a poll that fails leaves the last values
//   2  `Beschriften`            shift keys (Ebenenwechsel), then the edges of the twelve buttons
//   3  `StickAuswerten`         left, right: each that has left the bounds of its field
//   4  Streuzaehler             where the sticks are
//   5  `SteuerkreuzAuswerten`   the edges of the D-pad
//   6  Schubregler              polls for itself
//
// States of the poll, switched by the two buttons of the window, each by its own caption alone:
//
//   tmrSpiel  Command1(0)  Command1(1)
//   on        "Stop"       "SensiTast"   running
//   off       "Start"      any           halted by Command1(0)
//   off       any          "Start"       folded out by Command1(1)
//
// While nothing can change, the poll rests (Pollruhe).
//
// A resume by one button ends the halt by the other, whose caption stays.
#pragma once

#include "base/LaufzeitFehler.h"
#include "base/Regler.h"
#include "engine/buttons/Ebenenwechsel.h"
#include "engine/buttons/Steuerkreuz.h"
#include "engine/input/Entwackeln.h"
#include "engine/output/XPTaste.h"
#include "engine/run/GesicherterZeitgeber.h"
#include "engine/run/Laufdienste.h"
#include "engine/run/Laufstand.h"
#include "engine/run/Laufzustand.h"
#include "engine/run/Pollruhe.h"
#include "engine/run/Streuzaehler.h"
#include "engine/slider/Schubregler.h"
#include "formats/Belegung.h"
#include "platform/Joystick.h"
#include "store/schema/modLesen.h"

#include <array>
#include <functional>
#include <optional>
#include <string_view>

/// What a run takes from outside; all of it outlives the run.
class LaufFenster;
struct Laufumgebung {
    Laufzustand& zustand;
    Joystick& joystick;
    Eingabe& eingabe;
    Zeitgeber& zeitgeber;
    LaufAnzeige& anzeige;
    Streuablage* streuablage = nullptr; ///< who keeps where the sticks were; nobody needs to
    /// Called at the end of a tick after which nothing hangs on a timer, a few times a minute: what goes on
    /// from there does so from `begehen` alone. False where that does not hold for what lies outside; then
    /// again soon.
    std::function<bool(LaufFenster&)> ruhepunkt = {};
    /// With some unrest there still is one a minute.
    std::chrono::milliseconds ruhepunktabstand = std::chrono::seconds{20};
    Streuhoerer* streuhoerer = nullptr; ///< hears where the sticks are, as they are counted
};

/// [layer][slot], as Laufbild.
using Laufbelegungen = std::array<std::array<Belegung, SLOTS>, EBENEN>;

class LaufFenster {
public:
    explicit LaufFenster(const Laufumgebung& umgebung);
    ~LaufFenster();

    /// Load of the window: reads the `Schema`, hides the main form, starts the poll. Throws LaufzeitFehler
    /// when the `Schema` can't be read; nothing runs then and the main form stays.
    void laden();
    /// Ends the run: the main form comes back, the scroll bars are stored, all timers stop. Held keys are not
    /// released. A second call does nothing. Gives the error that kept the scroll bars, or rows that the
    /// start was to lay, from being stored, with what is lost; everything else has happened then, too.
    std::optional<LaufzeitFehler> beenden();

    void Beschriften();
    void StickAuswerten();
    void SteuerkreuzAuswerten();

    /// The window's controls.
    void Command1Klick(int index);
    void HScroll1Aenderung(int index, int wert);
    void HScroll2Aenderung(int wert);
    void Option1Klick(int index);

    /// The layer, and what is held now and for whom. Made when it is asked for: the tick keeps no book of it.
    Laufstand stand() const;
    /// Whether the poll runs. It does while it rests.
    bool pollt() const;
    /// Whether nothing can change until the pad does something: what is left to happen are ticks and rounds
    /// of the smoothing that would find all as it is.
    bool inRuhe() const;
    /// Whether nothing but the poll and the smoothing runs on a timer.
    bool haeltStill() const;
    /// The walk over the state of a run that `haeltStill`; `fortsetzen` after a walk that has read one into a
    /// run that was loaded just now.
    template <class Gang> void begehen(Gang& gang);
    void fortsetzen();
    /// Low word of the buttons, as the layer logic left it in the last tick.
    std::uint16_t TastenWort() const { return TastenWort_; }

private:
    void spieltakt();
    void streuungZaehlen();
    void streuungAblegen();
    void ruhepunktMelden();
    std::vector<Formularzeitgeber*> takteInRuhe() const;
    int gedruecktePadtasten() const;
    bool padtastenInRuhe() const;
    bool sticksInRuhe() const;
    bool nurTakte() const;
    void abbrechen(const LaufzeitFehler& fehler);
    void reglerLesen();
    std::optional<LaufzeitFehler> behalten();
    void pollHalten();

    void nichtsGedrueckt();
    void wechseln(const Ebenenwechsel::Schritt& schritt);
    void padtastenflanken();
    void padhaltungenAnhaengen(std::vector<Haltung>& haltungen) const;
    std::optional<Wirkung> padwirkung(int slot) const;
    std::optional<Wirkung> padmauswirkung(int slot) const;
    bool gedrueckt(int slot) const;
    void grenzenLoeschen();
    void sticktabellenLaden(int ebene);
    const Belegung& belegung(int slot) const;

    Laufzustand& zustand_;
    Joystick& joystick_;
    LaufAnzeige& anzeige_;
    Eingabe& eingabe_; ///< keeps book

    GesicherterZeitgeber zeitgeber_;
    XPTaste xpTaste_;
    Wiederholung wiederholung_;
    TastenAktion tastenAktion_;
    Reglerwerte regler_;
    Entwackeln entwackeln_;
    Laufdienste dienste_;
    Schubregler schubregler_;
    std::unique_ptr<Formularzeitgeber> spielzeitgeber_;

    Laufbelegungen Aktionen_;
    JOYINFOEX JoyInfo_;
    JOYINFOEX JoyInfoAlt_;
    Steuerkreuz steuerkreuz_;

    Ebenenwechsel ebenen_;

    bool geladen_ = false;
    bool stopGedrueckt_ = false; // Command1(0) says "Start"
    bool ausgeklappt_ = false;   // Command1(1) says "Start"
    std::string_view gezeigteUmschaltung_;
    std::optional<int> gezeigtePadtastenzahl_;

    Streuablage* streuablage_;
    Streuzaehler streuzaehler_;
    std::string schemaName_; ///< of the run; the current one may be another by its end
    bool padDa_ = false;     ///< in the last tick

    // Given; nothing in the program hangs on it.
    std::uint16_t TastenWort_ = 0;
    std::unique_ptr<Formularzeitgeber> leererZeitgeber_; // `Timer1`, has no procedure

    std::function<bool(LaufFenster&)> ruhepunkt_;
    std::chrono::milliseconds ruhepunktabstand_;
    std::chrono::milliseconds letzterRuhepunkt_{0};

    Pollruhe ruhe_; // lets timers rest that are above
};

template <class Gang> void LaufFenster::begehen(Gang& gang) {
    ebenen_.begehen(gang);
    steuerkreuz_.begehen(gang);
    schubregler_.begehen(gang);
    wiederholung_.begehen(gang);
    gang("lauf.tasten", JoyInfo_.dwButtons);
    gang("lauf.tastenAlt", JoyInfoAlt_.dwButtons);
    gang("lauf.pov", JoyInfo_.dwPOV, std::uint32_t{JOY_POVCENTERED});
    gang("lauf.stop", stopGedrueckt_);
    gang("lauf.ausgeklappt", ausgeklappt_);
    gang("lauf.regler", regler_.glaettung);
    gang("lauf.wiederholintervall", regler_.wiederholintervall, -1); // always: the rows have some, too
}
