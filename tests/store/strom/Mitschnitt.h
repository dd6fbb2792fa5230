// SPDX-License-Identifier: GPL-3.0-or-later
// Records what this process asks the disk for, between the program with its libraries and the system: their
// calls of the system come here first. Lets a call fail on demand.
//
// Nothing that is synced goes to a real disk: what a power cut leaves is Platte's to say.
#pragma once

#include "tests/store/strom/Platte.h"

#include <filesystem>
#include <vector>

/// While it lives it hears of the files in one folder and below. One at a time.
class Mitschnitt {
public:
    explicit Mitschnitt(const std::filesystem::path& ordner);
    ~Mitschnitt();
    Mitschnitt(const Mitschnitt&) = delete;
    Mitschnitt& operator=(const Mitschnitt&) = delete;

    /// The n-th step, counted from 1, fails with this errno, and with `dauernd` all after it that can. A full
    /// disk (ENOSPC) still shortens, removes and renames.
    void scheitern(int n, int nummer, bool dauernd);
    /// The process dies by SIGKILL in place of the n-th step, counted from 1.
    void sterben(int n) { todBei_ = n; }
    /// Whether a step has failed.
    bool gescheitert() const { return gescheitert_; }

    const std::vector<Plattenschritt>& schritte() const { return schritte_; }

    /// A system call on a file: what it is, and the call itself. Not for tests.
    long tun(const Plattenschritt& schritt, const std::function<long()>& aufruf);
    bool meint(const std::string& pfad) const;
    bool kennt(const std::string& pfad) const;

private:
    bool scheitertJetzt(Plattenschritt::Art art);

    std::string ordner_;
    Platte platte_;
    std::vector<Plattenschritt> schritte_;
    int todBei_ = 0;
    int nochBis_ = 0;
    int nummer_ = 0;
    bool dauernd_ = false;
    bool gescheitert_ = false;
};

/// While it lives the file system gives no file a second name.
class OhneVerknuepfungen {
public:
    OhneVerknuepfungen();
    ~OhneVerknuepfungen();
    OhneVerknuepfungen(const OhneVerknuepfungen&) = delete;
    OhneVerknuepfungen& operator=(const OhneVerknuepfungen&) = delete;
};

/// All files in a folder and below, by absolute paths.
Plattenbild bildVon(const std::filesystem::path& ordner);

/// Makes the files of a folder and below those of `bild`; folders stay.
void bildLegen(const std::filesystem::path& ordner, const Plattenbild& bild);
