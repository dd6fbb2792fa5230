// The slider axis "Z1": cut into equal fields, each with one action. When the slider crosses into another
// field, the old action ends and the new one starts.
//
// The slider text of a `Schema` is "n/c-n-T-S(a,b,d)/...": the number of fields, then a record for each field
// with a setting.
//
//   c  "1": triggers only when the slider moves outward (the first record counts)
//   n  number of the field, from 1
//   T  0 mouse movement   S direction  a interval in ms   b step
//      1 mouse button     S button     a wheel amount
//      2 key              S 0 held, 1 timed     a key   b press in ms   d pause in ms, "" for no repeat
//      3 nothing
//
// Timer 1111 holds one thing at a time, the next mouse step or the end of a pause, and ends with the run. The
// end of a timed press has a timer of its own: the key is let go when its time is over, also after the run.
#pragma once

#include "engine/run/Laufdienste.h"
#include "platform/Zeitgeber.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class Achsen;
class Achsendatei;
class Schubregler;

/// What outlasts a run: the parameters of the action that was started last, and keys that are down for a
/// time. Must not outlive the Zeitgeber of its runs.
struct Schubstand {
    /// [1] of the list: the sub-option S; [2]: a, b and d with the closing ")".
    struct Parameter {
        std::string unterwahl;
        std::vector<std::string> werte;
    };
    std::optional<Parameter> SchubParameter;
    std::int16_t SchubParameterFeld = 0; ///< field of `SchubParameter`, 0 none
    std::int32_t SchubPause = 0;         ///< ms of a repeating key, 0 for none

    struct Druckende {
        std::unique_ptr<Formularzeitgeber> zeitgeber;
        Schubregler* lauf = nullptr; ///< whose press it is; null when that run is over
    };
    std::map<std::int32_t, Druckende> Druckenden; ///< by key
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
    /// The run is over: no movement and no press follows. A key that is down for a time is let go when that
    /// is over, by a timer that needs nothing of the run but its `Eingabe`.
    void beenden();

private:
    using Satz = std::vector<std::string>; // c, n, T, S(a,b,d)

    bool erlaubt(std::int32_t wert);
    int feldVon(std::int32_t wert) const;
    bool aktionBeenden();
    void aktionStarten(int feld, bool erlaubt);

    void parameterFuellen(const Satz& e);
    void parameterLeeren();
    const std::string& unterwahl() const;
    std::int32_t parameter(std::size_t stelle) const;

    void SchubMausBewegen(const Satz& e);
    void mausTakt();
    void mausschritt();
    void SchubMausTaste(const Satz& e);
    void SchubTaste(const Satz& e);
    void tasteDruecken();
    void druecken();
    void druckzeitStarten();
    static void druckzeitVorbei(Schubstand& stand, Eingabe& eingabe, std::int32_t taste);
    void SchubMausStop();
    void SchubMausTasteLoslassen();
    void SchubTasteLoslassen();
    void timerSetzen(std::int32_t ms, void (Schubregler::*prozedur)());
    void timerStoppen();

    Schubstand& stand_;
    Achsendatei& achsendatei_;
    Achsen& achsen_;
    const Laufdienste& dienste_;

    std::map<std::string, Satz> SchubFelder_; // by field number as text
    std::int16_t SchubAnzahl_ = 0;            // number of fields, 0 without a slider text
    std::int16_t SchubFeldAlt_ = 0;           // field whose action runs, 0 none
    std::int32_t SchubArtAlt_ = -1;           // its T, -1 none
    std::int16_t SchubNurAuswaerts_ = 0;
    std::int32_t SchubWertAlt_ = 0;
};
