// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Endsignale.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <sys/signalfd.h>
#include <unistd.h>

namespace {

bool ignoriert(int signal) {
    struct sigaction aktion {};
    return sigaction(signal, nullptr, &aktion) == 0 && aktion.sa_handler == SIG_IGN;
}

sigset_t endsignale() {
    sigset_t menge;
    sigemptyset(&menge);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        if (!ignoriert(signal))
            sigaddset(&menge, signal);
    return menge;
}

} // namespace

Endsignale::Endsignale() {
    const auto menge = endsignale();
    pthread_sigmask(SIG_BLOCK, &menge, &vorher_);
    strom_ = signalfd(-1, &menge, SFD_NONBLOCK | SFD_CLOEXEC);
    if (strom_ < 0) // better a sudden end than none
        pthread_sigmask(SIG_SETMASK, &vorher_, nullptr);
}

Endsignale::~Endsignale() {
    melder_.reset();
    close(strom_);
    pthread_sigmask(SIG_SETMASK, &vorher_, nullptr);
}

void Endsignale::verbinden() {
    if (strom_ < 0)
        return;
    melder_ = std::make_unique<QSocketNotifier>(strom_, QSocketNotifier::Read);
    QObject::connect(melder_.get(), &QSocketNotifier::activated, melder_.get(), [this] {
        signalfd_siginfo gekommenes{};
        if (read(strom_, &gekommenes, sizeof gekommenes) == sizeof gekommenes)
            QCoreApplication::exit();
    });
}
