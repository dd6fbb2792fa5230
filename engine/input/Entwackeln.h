// SPDX-License-Identifier: GPL-3.0-or-later
// The smoothing of the four stick axes. A cheap stick trembles around a value: the filter holds its output on
// the value that the stick kept returning to, as long as the raw value stays near it, and lets every larger
// movement through unchanged.
//
// It runs on a timer of its own, apart from the poll tick; whoever reads a stick takes the last output
// without waiting. States: off -> running at the first read of a stick; running -> off when a setting
// changes, the poll is halted or the run ends.
#pragma once

#include "base/Regler.h"
#include "base/Stickseite.h"
#include "engine/stick/Stickort.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

class Achsen;
class LaufAnzeige;
class Zeitgeber;

inline constexpr std::chrono::milliseconds ENTWACKELN_INTERVALL{1};

/// The last samples of one axis and what comes out.
class Achsenfilter {
public:
    /// The tally does not count: it is made anew in each round.
    bool operator==(const Achsenfilter& anderer) const {
        return AchsenRing_ == anderer.AchsenRing_ && RingPos_ == anderer.RingPos_ &&
               ausgabe_ == anderer.ausgabe_;
    }

    static constexpr int RINGZEILEN = 30;

    struct Einstellung {
        int fenster;     ///< samples that are looked at, 1 to RINGZEILEN
        int mindestzahl; ///< the value must have come back more often than this
        int randUnten;
        int randOben;
    };

    /// Takes the raw value `raw` and works out the output. With `bericht` writes down what it saw there.
    void glaetten(std::int32_t raw, const Einstellung& einstellung, std::string* bericht = nullptr);

    /// The filtered value; 0 until the first sample.
    std::int32_t ausgabe() const { return ausgabe_; }

    /// Whether a further `raw` changes nothing but the position: the window holds that value all through,
    /// each sample valid, and it comes out.
    bool haelt(std::int32_t raw, int fenster) const;
    /// What so many samples do to one that `haelt`.
    void drehen(std::uint64_t proben, int fenster);

    template <class Gang> void begehen(Gang& gang, const std::string& name) {
        std::array<std::int32_t, RINGZEILEN + 1> werte{};
        std::array<bool, RINGZEILEN + 1> gueltige{};
        for (std::size_t i = 0; i < AchsenRing_.size(); ++i) {
            werte[i] = AchsenRing_[i].wert;
            gueltige[i] = AchsenRing_[i].gueltig;
        }
        gang(name + ".werte", werte);
        gang(name + ".gueltige", gueltige);
        for (std::size_t i = 0; i < AchsenRing_.size(); ++i)
            AchsenRing_[i] = {werte[i], gueltige[i]};
        gang(name + ".stelle", RingPos_);
        RingPos_ = std::clamp(RingPos_, 0, RINGZEILEN);
        gang(name + ".ausgabe", ausgabe_);
    }

private:
    struct Probe {
        std::int32_t wert = 0;
        bool gueltig = false; ///< the same as the sample a whole round before
        bool operator==(const Probe&) const = default;
    };
    // A value and how often it came again right behind itself.
    struct Strich {
        std::int32_t wert = 0;
        std::int32_t zahl = 0;
    };

    void aufnehmen(std::int32_t raw, int fenster);
    int stricheZaehlen(int fenster);
    const Strich& haeufigster(int fenster) const;
    std::string berichten(int fenster, int gueltige, const Strich& modus) const;

    std::array<Probe, RINGZEILEN + 1> AchsenRing_{}; // row 0 is not used
    int RingPos_ = 0;
    std::array<Strich, RINGZEILEN + 1> Strichliste_{};
    std::int32_t ausgabe_ = 0;
};

/// What outlasts a run. Rings and outputs are never cleared.
struct Entwackelstand {
    bool EntwackelnLaeuft = false;
    std::array<Achsenfilter, 4> filter; ///< lx, ly, rx, ry
};

class Entwackeln {
public:
    /// `regler` is looked at in each round.
    Entwackeln(Entwackelstand& stand, Achsen& achsen, const Reglerwerte& regler, Zeitgeber& zeitgeber,
               LaufAnzeige& anzeige);

    /// The filtered position of a stick; starts the timer if it does not run.
    Stickposition LinkerStickLesen();
    Stickposition RechterStickLesen();
    Stickposition stickLesen(Stickseite seite) {
        return seite == Stickseite::Links ? LinkerStickLesen() : RechterStickLesen();
    }

    /// The same, as it is: starts nothing.
    Stickposition ausgabe(Stickseite seite) const;

    /// What a stick's raw axes read at the last poll; nothing while that is not known of both.
    std::optional<Stickposition> rohort(Stickseite seite) const;

    /// Stops the timer. With `nurTimer` no reader will start it again.
    void EntwackelnStoppen(bool nurTimer = false);
    /// One round: polls the pad once and smooths all four axes.
    void EntwackelnTakt();

    bool laeuft() const { return stand_.EntwackelnLaeuft; }
    /// Whether rounds with the pad as it is change nothing but the positions in the rings.
    bool inRuhe() const;
    /// Its timer rests, as only one may that is `inRuhe`; when it goes on, the rounds that were left out are
    /// made up for.
    void ruhen();
    void weiter(std::chrono::nanoseconds her = {});
    /// Whether the reports are looked at: working them out costs more than the filter.
    void berichten(bool an) { berichten_ = an; }

private:
    std::optional<std::int32_t> rohwert(std::size_t achse) const;
    Achsenfilter::Einstellung einstellung(std::size_t achse) const;
    void AchseGlaetten(std::size_t achse);
    void starten();

    Entwackelstand& stand_;
    Achsen& achsen_;
    const Reglerwerte& regler_;
    Zeitgeber& zeitgeber_;
    LaufAnzeige& anzeige_;
    bool berichten_ = false;
    std::array<std::string, 4> berichte_; // as last shown
    std::array<int, 4> drehende_{};       // windows of the filters that turn while the timer rests, else 0
};
