// SPDX-License-Identifier: GPL-3.0-or-later
// The signals that ask the program to end: SIGTERM, SIGINT (Ctrl+C in the terminal) and SIGHUP (the terminal
// has gone). They end the event loop, so that what is held is let go: an X server keeps a key down for ever
// when the client that pressed it is simply gone.
#pragma once

#include <csignal>
#include <memory>

class QSocketNotifier;

class Endsignale {
public:
    /// Holds the signals back from now on, in this thread and in those that it starts: to be made before the
    /// toolkit, which starts some. A signal that is ignored, as under nohup, stays ignored.
    Endsignale();
    ~Endsignale();
    Endsignale(const Endsignale&) = delete;
    Endsignale& operator=(const Endsignale&) = delete;

    /// From now on a signal, also one that has come before, ends the event loop of the application, with all
    /// message boxes.
    void verbinden();

private:
    sigset_t vorher_{};
    int strom_ = -1;
    std::unique_ptr<QSocketNotifier> melder_;
};
