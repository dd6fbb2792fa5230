// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Prioritaet.h"

#include "platform/linux/Dauerlast.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <optional>
#include <sched.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr rlim_t RUHELOS_HOECHSTENS = 150'000; // microseconds
constexpr int BESTE_GUETE = -20;               // nice value
constexpr long AUGENBLICK_NS = 200'000;

// A signal handler has nobody that it could be handed anything by.
struct Waechter {
    std::optional<timer_t> uhr; // of the main thread's processor time
    Dauerlast last;
    std::string zeile;
};
Waechter waechter;

std::chrono::nanoseconds jetzt() {
    timespec zeit{};
    clock_gettime(CLOCK_MONOTONIC, &zeit);
    return std::chrono::seconds(zeit.tv_sec) + std::chrono::nanoseconds(zeit.tv_nsec);
}

// The id of the process is that of its main thread. Only the privileged may take the flag back.
void zurueckstufen() {
    const sched_param normal{};
    sched_setscheduler(getpid(), SCHED_OTHER | SCHED_RESET_ON_FORK, &normal);
}

bool inEchtzeit() {
    return (sched_getscheduler(getpid()) & ~SCHED_RESET_ON_FORK) == SCHED_RR;
}

bool uhrAnlegen() {
    if (waechter.uhr)
        return true;
    sigevent signal{};
    signal.sigev_notify = SIGEV_THREAD_ID;
    signal.sigev_signo = SIGXCPU;
    signal._sigev_un._tid = getpid();
    timer_t uhr{};
    if (timer_create(CLOCK_THREAD_CPUTIME_ID, &signal, &uhr) != 0)
        return false;
    waechter.uhr = uhr;
    return true;
}

// Goes on only while the thread works, so it costs nothing at rest; 0 stops it.
void uhrStellen(std::chrono::nanoseconds abschnitt) {
    const timespec zeit{0, abschnitt.count()};
    const itimerspec takt{zeit, zeit};
    if (waechter.uhr)
        timer_settime(*waechter.uhr, 0, &takt, nullptr);
}

void entziehen() {
    if (!inEchtzeit())
        return;
    zurueckstufen();
    uhrStellen({});
    [[maybe_unused]] const auto geschrieben =
        write(STDERR_FILENO, waechter.zeile.data(), waechter.zeile.size());
}

// Async-signal-safe calls only.
void waechterruf(int, siginfo_t* woher, void*) {
    const int fehler = errno;
    const bool vonDerUhr = woher->si_code == SI_TIMER;
    if (!vonDerUhr || waechter.last.abschnitt(jetzt()))
        entziehen();
    errno = fehler;
}

bool aufSignalHoeren() {
    struct sigaction aktion {};
    aktion.sa_sigaction = waechterruf;
    aktion.sa_flags = SA_RESTART | SA_SIGINFO;
    sigemptyset(&aktion.sa_mask);
    return sigaction(SIGXCPU, &aktion, nullptr) == 0;
}

// Comes a good while before the hard limit, at which the kernel kills.
rlim_t weicheGrenze(rlim_t harte) {
    return harte == RLIM_INFINITY ? RUHELOS_HOECHSTENS : std::min(RUHELOS_HOECHSTENS, harte - harte / 4);
}

} // namespace

void ruhelosigkeitBegrenzen(rlim_t hoechstens) {
    rlimit grenze{};
    if (!aufSignalHoeren() || getrlimit(RLIMIT_RTTIME, &grenze) != 0)
        return;
    grenze.rlim_max = std::min(hoechstens, grenze.rlim_max);
    grenze.rlim_cur = weicheGrenze(grenze.rlim_max);
    setrlimit(RLIMIT_RTTIME, &grenze);
}

// The kernel's count begins at a wait at real-time priority, and nowhere else; one that is over before it has
// begun is none.
void ruhelosigkeitZaehlen() {
    uhrStellen({});
    waechter.last = {};
    if (uhrAnlegen())
        uhrStellen(Dauerlast::ABSCHNITT);
    const timespec augenblick{0, AUGENBLICK_NS};
    nanosleep(&augenblick, nullptr);
}

bool echtzeitNehmen() {
    sched_param niedrigste{};
    niedrigste.sched_priority = sched_get_priority_min(SCHED_RR);
    ruhelosigkeitBegrenzen();
    if (sched_setscheduler(getpid(), SCHED_RR | SCHED_RESET_ON_FORK, &niedrigste) != 0)
        return false;
    ruhelosigkeitZaehlen();
    return true;
}

void echtzeitverlustMelden(std::string zeile) {
    waechter.zeile = std::move(zeile);
}

void besteGueteNehmen() {
    const int jetzige = getpriority(PRIO_PROCESS, 0);
    for (int guete = BESTE_GUETE; guete < jetzige; ++guete)
        if (setpriority(PRIO_PROCESS, 0, guete) == 0)
            return;
}

void prioritaetZurueckgeben(int guete) {
    uhrStellen({});
    zurueckstufen();
    setpriority(PRIO_PROCESS, 0, guete);
}
