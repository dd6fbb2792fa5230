// SPDX-License-Identifier: GPL-3.0-or-later
// The watcher of this process, a small process of its own: when this one dies, however it dies, it lets go
// what is held down in the X server. What that is it reads on the sheet.
//
// It is in a session of its own, so that what kills a whole terminal leaves it be, has none of our
// descriptors, and dies with us and with the server.
#pragma once

#include "platform/Meldung.h"
#include "platform/waechter/Waechterblatt.h"

#include <sys/types.h>

#include <memory>
#include <string>

class QSocketNotifier;

class Waechter {
public:
    /// Starts the executable `programm`, in the environment of this process, which has no other thread yet.
    /// One that can't be started watches nothing; all else works as with it.
    explicit Waechter(std::string programm);
    /// A watcher goes before this comes back.
    ~Waechter();
    Waechter(const Waechter&) = delete;
    Waechter& operator=(const Waechter&) = delete;

    /// What holds something down notes it here; null where nobody could read it.
    Waechterblatt* blatt() const { return blatt_; }
    /// The process; -1 if there is none.
    pid_t kennung() const { return kennung_; }

    /// Waits until it watches, at most so many milliseconds; before verbinden() only.
    bool wacht(int hoechstens) const;

    /// From now on a watcher that dies is noticed by the event loop, told, and another one started, unless
    /// the dead one has ended by itself without having come to watch.
    void verbinden(Meldung melden);

    /// The executable that lies beside this one.
    static std::string nebenan();

private:
    void blattAnlegen();
    void starten();
    void lauschen();
    void hoeren();
    void verstorben();

    const std::string programm_;
    int blattdatei_ = -1;
    Waechterblatt* blatt_ = nullptr;
    int leitung_ = -1;
    pid_t kennung_ = -1;
    bool bereit_ = false;
    int neustarts_ = 0;
    Meldung melden_;
    std::unique_ptr<QSocketNotifier> melder_;
};
