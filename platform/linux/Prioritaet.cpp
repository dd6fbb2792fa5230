// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Prioritaet.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <sched.h>
#include <unistd.h>

namespace {

constexpr rlim_t RUHELOS_HOECHSTENS = 2'000'000; // microseconds
constexpr int BESTE_GUETE = -20;                 // nice value

// Async-signal-safe. The id of the process is that of its main thread. Only the privileged may take the flag
// back.
void zurueckstufen(int) {
    const int fehler = errno;
    const sched_param normal{};
    sched_setscheduler(getpid(), SCHED_OTHER | SCHED_RESET_ON_FORK, &normal);
    errno = fehler;
}

// Comes a good while before the hard limit, at which the kernel kills.
rlim_t weicheGrenze(rlim_t harte) {
    return harte == RLIM_INFINITY ? RUHELOS_HOECHSTENS : std::min(RUHELOS_HOECHSTENS, harte - harte / 4);
}

} // namespace

void ruhelosigkeitBegrenzen(rlim_t hoechstens) {
    struct sigaction aktion {};
    aktion.sa_handler = zurueckstufen;
    aktion.sa_flags = SA_RESTART;
    sigemptyset(&aktion.sa_mask);
    rlimit grenze{};
    if (sigaction(SIGXCPU, &aktion, nullptr) != 0 || getrlimit(RLIMIT_RTTIME, &grenze) != 0)
        return;
    grenze.rlim_max = std::min(hoechstens, grenze.rlim_max);
    grenze.rlim_cur = weicheGrenze(grenze.rlim_max);
    setrlimit(RLIMIT_RTTIME, &grenze);
}

bool echtzeitNehmen() {
    sched_param niedrigste{};
    niedrigste.sched_priority = sched_get_priority_min(SCHED_RR);
    ruhelosigkeitBegrenzen();
    return sched_setscheduler(getpid(), SCHED_RR | SCHED_RESET_ON_FORK, &niedrigste) == 0;
}

void besteGueteNehmen() {
    const int jetzige = getpriority(PRIO_PROCESS, 0);
    for (int guete = BESTE_GUETE; guete < jetzige; ++guete)
        if (setpriority(PRIO_PROCESS, 0, guete) == 0)
            return;
}

void prioritaetZurueckgeben(int guete) {
    zurueckstufen(0);
    setpriority(PRIO_PROCESS, 0, guete);
}
