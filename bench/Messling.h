// SPDX-License-Identifier: GPL-3.0-or-later
// A process whose cost is measured from outside.
#pragma once

#include <chrono>
#include <functional>
#include <sys/types.h>

/// What a process has taken up to an instant.
struct Verbrauch {
    std::chrono::steady_clock::time_point wann;
    std::chrono::duration<double> rechenzeit;
    long weckungen = 0; ///< how often its threads have waited
};

/// What it takes from one instant to another.
struct Last {
    double prozent = 0;   ///< of one core
    double weckungen = 0; ///< a second
};
Last last(const Verbrauch& vorher, const Verbrauch& nachher);

/// Lives as long as the object, and no longer than who has made it.
class Messling {
public:
    /// Does `arbeit` in a child process, whose exit status it gives.
    explicit Messling(const std::function<int()>& arbeit);
    ~Messling();
    Messling(const Messling&) = delete;
    Messling& operator=(const Messling&) = delete;

    Verbrauch verbrauch() const;
    /// Whether it still runs.
    bool lebt() const;
    /// Whether its main thread has real-time priority.
    bool inEchtzeit() const;

private:
    pid_t kennung_;
};
