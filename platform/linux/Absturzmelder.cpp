// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Absturzmelder.h"

#include "platform/waechter/Waechterblatt.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

namespace {

// All after which the system writes the memory away, and that nothing else here takes.
constexpr std::array ABSTURZSIGNALE{SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS, SIGQUIT};

// A handler of signals has nothing else to know its object by.
std::atomic<int> meldeleitung = -1;
std::array<struct sigaction, ABSTURZSIGNALE.size()> vorherige;
alignas(std::max_align_t) std::array<char, 65536> notstapel; // the usual one may be what is full

// Async-signal-safe calls only.
void melden(int signal, siginfo_t* angaben, void*) {
    const int fehler = errno;
    const char wort = leitungswort::STERBEND;
    send(meldeleitung, &wort, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
    const auto stelle = std::ranges::find(ABSTURZSIGNALE, signal) - ABSTURZSIGNALE.begin();
    sigaction(signal, &vorherige[static_cast<std::size_t>(stelle)], nullptr);
    // What an instruction has caused comes again with it; what was sent does not.
    if (angaben->si_code <= 0)
        raise(signal);
    errno = fehler;
}

void notstapelStellen() {
    stack_t jetziger{};
    if (sigaltstack(nullptr, &jetziger) != 0 || (jetziger.ss_flags & SS_DISABLE) == 0)
        return;
    stack_t neuer{};
    neuer.ss_sp = notstapel.data();
    neuer.ss_size = notstapel.size();
    sigaltstack(&neuer, nullptr);
}

} // namespace

void abstuerzeMelden(int leitung) {
    const bool schon = meldeleitung.exchange(leitung) >= 0;
    if (schon == (leitung >= 0))
        return;
    notstapelStellen();
    for (std::size_t i = 0; i < ABSTURZSIGNALE.size(); ++i) {
        struct sigaction aktion {};
        aktion.sa_sigaction = melden;
        aktion.sa_flags = SA_SIGINFO | SA_ONSTACK;
        sigemptyset(&aktion.sa_mask);
        if (leitung >= 0)
            sigaction(ABSTURZSIGNALE[i], &aktion, &vorherige[i]);
        else
            sigaction(ABSTURZSIGNALE[i], &vorherige[i], nullptr);
    }
}
