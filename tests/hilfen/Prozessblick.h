// SPDX-License-Identifier: GPL-3.0-or-later
// Looks at a process that is nobody's child here, the watcher above all.
#pragma once

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

class Prozessblick {
public:
    explicit Prozessblick(pid_t kennung)
        : kennung_(kennung), griff_(static_cast<int>(syscall(SYS_pidfd_open, kennung, 0))) {}
    ~Prozessblick() { close(griff_); }
    Prozessblick(const Prozessblick&) = delete;
    Prozessblick& operator=(const Prozessblick&) = delete;

    pid_t kennung() const { return kennung_; }

    /// Whether it ends within so many milliseconds, or has ended.
    bool endet(int millisekunden) const {
        pollfd warten{griff_, POLLIN, 0};
        return griff_ < 0 || poll(&warten, 1, millisekunden) == 1;
    }
    void senden(int signal) const { kill(kennung_, signal); }

    /// The number that stands behind a word in a file of /proc; -1 if it is not there.
    long zahl(const std::string& datei, const std::string& wort) const {
        std::ifstream strom(pfad() / datei);
        for (std::string eines; strom >> eines;)
            if (long wert = -1; eines == wort && strom >> wert)
                return wert;
        return -1;
    }
    std::filesystem::path pfad() const { return "/proc/" + std::to_string(kennung_); }

private:
    const pid_t kennung_;
    const int griff_;
};
