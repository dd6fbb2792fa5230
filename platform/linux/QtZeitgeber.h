// SPDX-License-Identifier: GPL-3.0-or-later
// Timers on Qt's event loop.
//
// All timers share one timerfd: exact to some 0.1 ms under every event dispatcher, where Qt's own timers
// round to whole milliseconds. It beats by the shortest interval and is set anew only where the next deadline
// does not lie on its next beat. Deadlines lie on one grid of whole milliseconds, so that timers wake the
// process together and one that is set anew in its own procedure does not drift. At one deadline the shorter
// interval goes first, so that what is read every 5 ms is as fresh as what is worked out every 1 ms, and then
// the one that was set first. Whole periods that were missed are left out.
#pragma once

#include "platform/Zeitgeber.h"

#include <QObject>
#include <chrono>
#include <map>
#include <memory>
#include <vector>

class QSocketNotifier;

/// From where on a call counts as late: a movement is seen to stutter.
inline constexpr std::chrono::milliseconds VERSPAETUNG{20};

struct Verspaetungen {
    std::uint64_t anzahl = 0; ///< calls more than VERSPAETUNG after their deadline
    std::chrono::milliseconds groesste{0};
};

class QtZeitgeber final : public Zeitgeber {
public:
    /// Needs the QCoreApplication of its thread. Throws std::system_error if the system has no timer to give.
    QtZeitgeber();
    ~QtZeitgeber() override;

    void SetTimer(std::uint32_t id, std::chrono::milliseconds intervall, TimerProzedur prozedur) override;
    void KillTimer(std::uint32_t id) override;
    std::unique_ptr<Formularzeitgeber> formularzeitgeber(TimerProzedur prozedur) override;
    std::uint64_t augenblick() const override { return durchgaenge_ > 0 ? augenblick_ : 0; }
    std::chrono::milliseconds raster() const override;
    std::chrono::milliseconds zuletztGesetztAb() const override { return gesetztAb_; }
    bool kannRuhen() const override { return true; }
    void ruhen(std::uint32_t id) override;
    std::uint64_t weiter(std::uint32_t id, std::chrono::nanoseconds her = {}) override;
    void vorDemSchlaf(TimerProzedur prozedur) override;

    /// While `ja`, other events may have to wait for some milliseconds where a timer runs each millisecond,
    /// which takes much less of the processor then.
    void ungestoert(bool ja) { ungestoert_ = ja; }
    bool ungestoert() const { return ungestoert_; }

    /// The late calls of all timers since the count was begun.
    const Verspaetungen& verspaetungen() const { return verspaetungen_; }
    void verspaetungenNeuZaehlen() { verspaetungen_ = {}; }

private:
    class Formular;
    using Uhr = std::chrono::steady_clock;

    struct Eintrag {
        TimerProzedur prozedur;
        Uhr::duration intervall{};
        Uhr::time_point faellig;
        bool laeuft = false; // its procedure is on the stack
        bool ruht = false;
    };
    using Zeiger = std::shared_ptr<Eintrag>;

    void einplanen(const Zeiger& eintrag, std::chrono::milliseconds intervall);
    static bool frueher(const Eintrag& eintrag, const Eintrag& als);
    void streichen(const Zeiger& eintrag);
    void eintragRuhen(const Zeiger& eintrag);
    std::uint64_t eintragWeiter(const Zeiger& eintrag, std::chrono::nanoseconds her);
    void laufen();
    bool naechsterKommtGleich() const;
    void durchgang();
    void schlaegeZaehlen();
    const Eintrag* faelligeLaufenLassen();
    void verspaetungZaehlen(Uhr::duration spaet);
    const Zeiger* faelligster(Uhr::time_point nach = Uhr::time_point::min()) const;
    Uhr::duration kuerzestesIntervall() const;
    void stellen();
    void stellenAuf(const Eintrag* erster);
    void schlagen(Uhr::time_point erster, Uhr::duration schritt);

    int uhr_; // file descriptor
    std::unique_ptr<QSocketNotifier> melder_;
    Uhr::time_point schlag_;                 // when the clock beats next; the epoch when it stands
    Uhr::duration schritt_{};                // from beat to beat
    int durchgaenge_ = 0;                    // on the stack
    std::chrono::milliseconds durchgang_{0}; // instant of the innermost
    std::chrono::milliseconds gesetztAb_{0};
    bool ungestoert_ = false;
    std::uint64_t augenblick_ = 0;
    std::vector<Zeiger> plan_; // in the order in which they were set
    std::map<std::uint32_t, Zeiger> fenster_;
    TimerProzedur vorDemSchlaf_;
    QMetaObject::Connection schlafmeldung_;
    Verspaetungen verspaetungen_;
};
