// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Dateisperre.h"

#include "store/files/Dateiersatz.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr auto WARTEZEIT = 2s;
// Short, as a copy that writes all the time leaves the lock free for some microseconds only.
constexpr auto PAUSE = 100us;

/// Whether the lock is to be had, or none is.
bool sperren(int ordner) {
    const auto ende = std::chrono::steady_clock::now() + WARTEZEIT;
    while (flock(ordner, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return true;
        if (std::chrono::steady_clock::now() >= ende)
            return false;
        std::this_thread::sleep_for(PAUSE);
    }
    return true;
}

} // namespace

Dateisperre::Dateisperre(const std::string& pfad) {
    const auto ziel = ohneVerweise(pfad);
    if (!ziel)
        return;
    ordner_ = open(ordnerVon(*ziel).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    frei_ = ordner_ < 0 || sperren(ordner_);
}

Dateisperre::~Dateisperre() {
    if (ordner_ >= 0)
        close(ordner_);
}
