// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Messling.h"

#include <csignal>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <sched.h>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double sekunden(clockid_t uhr) {
    timespec zeit{};
    clock_gettime(uhr, &zeit);
    return static_cast<double>(zeit.tv_sec) + static_cast<double>(zeit.tv_nsec) / 1e9;
}

long freiwilligeWechsel(const std::filesystem::path& faden) {
    std::ifstream strom(faden / "status");
    for (std::string wort; strom >> wort;)
        if (wort == "voluntary_ctxt_switches:") {
            long anzahl = 0;
            strom >> anzahl;
            return anzahl;
        }
    return 0;
}

} // namespace

Last last(const Verbrauch& vorher, const Verbrauch& nachher) {
    const std::chrono::duration<double> dauer = nachher.wann - vorher.wann;
    return {(nachher.rechenzeit - vorher.rechenzeit) / dauer * 100,
            static_cast<double>(nachher.weckungen - vorher.weckungen) / dauer.count()};
}

Messling::Messling(const std::function<int()>& arbeit) : kennung_(fork()) {
    if (kennung_ != 0)
        return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    int ende = 1;
    try {
        ende = arbeit();
    } catch (const std::exception& grund) {
        std::fprintf(stderr, "%s\n", grund.what());
    }
    _exit(ende);
}

Messling::~Messling() {
    kill(kennung_, SIGKILL);
    waitpid(kennung_, nullptr, 0);
}

Verbrauch Messling::verbrauch() const {
    clockid_t uhr{};
    clock_getcpuclockid(kennung_, &uhr);
    Verbrauch stand{std::chrono::steady_clock::now(), std::chrono::duration<double>(sekunden(uhr)), 0};
    std::error_code egal;
    for (const auto& faden :
         std::filesystem::directory_iterator("/proc/" + std::to_string(kennung_) + "/task", egal))
        stand.weckungen += freiwilligeWechsel(faden.path());
    return stand;
}

bool Messling::lebt() const {
    siginfo_t ende{};
    return waitid(P_PID, static_cast<id_t>(kennung_), &ende, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           ende.si_pid == 0;
}

bool Messling::inEchtzeit() const {
    return (sched_getscheduler(kennung_) & ~SCHED_RESET_ON_FORK) == SCHED_RR;
}
