// SPDX-License-Identifier: GPL-3.0-or-later
// The slider axis "Z1": cut into equal fields, each with one action. When the slider crosses into another
// field, the old action ends and the new one starts.
//
// Timer 1111 holds one thing at a time, the next mouse step or the end of a pause, and ends with the run. The
// end of a timed press has a timer of its own: the key is let go when its time is over, also after the run.
#pragma once

#include "base/VirtuelleTaste.h"
#include "engine/run/Laufdienste.h"
#include "engine/run/Laufstand.h"
#include "formats/Schubtext.h"
#include "platform/Zeitgeber.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

class Achsen;
class Achsendatei;
class Schubregler;

/// What outlasts a run: the parameters of the action that was started last, and keys that are down for a
/// time. Must not outlive the Zeitgeber of its runs.
struct Schubstand {
    std::optional<Schubangaben> SchubParameter;
    std::int16_t SchubParameterFeld = 0; ///< field of `SchubParameter`, 0 none
    std::int32_t SchubPause = 0;         ///< ms of a repeating key, 0 for none

    struct Druckende {
        std::unique_ptr<Formularzeitgeber> zeitgeber;
        Schubregler* lauf = nullptr; ///< whose press it is; null when that run is over
    };
    std::map<VirtuelleTaste, Druckende> Druckenden; ///< by key
};

class Schubregler {
public:
    Schubregler(Schubstand& stand, Achsendatei& achsendatei, Achsen& achsen, const Laufdienste& dienste)
        : stand_(stand), achsendatei_(achsendatei), achsen_(achsen), dienste_(dienste) {}
    Schubregler(const Schubregler&) = delete;
    Schubregler& operator=(const Schubregler&) = delete;
    ~Schubregler() { beenden(); }

    /// Reads the axis assignment and the slider text of the `Schema`. Throws LaufzeitFehler for a text that
    /// is ill-formed: 13 and 6 for numbers, 9 for a record without a field number, 457 for one that comes
    /// twice.
    void erstellen();
    /// One tick. A record that can't be carried out is passed over in silence.
    void auswerten();
    /// Whether ticks with the axis as it is change nothing, and nothing of the slider's runs on a timer.
    bool inRuhe() const;
    /// Whether a key is down that is let go when its time is over.
    bool druecktAufZeit() const;
    /// What the slider holds now. Never throws.
    std::optional<Haltung> haltung(const Standquellen& quellen) const;
    /// Of a slider that does nothing on a timer.
    template <class Gang> void begehen(Gang& gang) {
        gang("lauf.schub.feld", SchubFeldAlt_);
        constexpr int KEINE = -1;
        int art = SchubArtAlt_ ? static_cast<int>(*SchubArtAlt_) : KEINE;
        gang("lauf.schub.art", art, KEINE);
        SchubArtAlt_ = art == KEINE ? std::nullopt : std::optional(static_cast<Schubart>(art));
        gang("lauf.schub.wert", SchubWertAlt_);
    }

    /// The run is over: no movement and no press follows. A key that is down for a time is let go when that
    /// is over, by a timer that needs nothing of the run but its `Eingabe`.
    void beenden();

private:
    bool erlaubt(std::int32_t wert);
    bool darf(std::int32_t wert, std::int32_t vorher) const;
    bool startetNichts(int feld, bool erlaubt) const;
    int feldVon(std::int32_t wert) const;
    bool aktionBeenden();
    void aktionStarten(int feld, bool erlaubt);

    void parameterFuellen(const Schubsatz& satz);
    void parameterLeeren();
    const Schubangaben& angaben() const;
    std::optional<int> unterwahl() const;
    std::int32_t parameter(std::size_t stelle) const;
    VirtuelleTaste taste() const;
    std::optional<Wirkung> wirkung(const Standquellen& quellen) const;

    void SchubMausBewegen(const Schubsatz& satz);
    void mausTakt();
    void mausschritt();
    void SchubMausTaste(const Schubsatz& satz);
    void SchubTaste(const Schubsatz& satz);
    void tasteDruecken();
    void druecken();
    void druckzeitStarten();
    static void druckzeitVorbei(Schubstand& stand, Eingabe& eingabe, VirtuelleTaste taste);
    void SchubMausStop();
    void SchubMausTasteLoslassen();
    void SchubTasteLoslassen();
    void timerSetzen(std::int32_t ms, void (Schubregler::*prozedur)());
    void timerStoppen();

    Schubstand& stand_;
    Achsendatei& achsendatei_;
    Achsen& achsen_;
    const Laufdienste& dienste_;

    std::map<std::string, Schubsatz> SchubFelder_; // by field number as text
    std::int16_t SchubAnzahl_ = 0;                 // number of fields, 0 without a slider text
    std::int16_t SchubFeldAlt_ = 0;                // field whose action runs, 0 none
    std::optional<Schubart> SchubArtAlt_;          // its T
    std::int16_t SchubNurAuswaerts_ = 0;
    std::int32_t SchubWertAlt_ = 0;
};
