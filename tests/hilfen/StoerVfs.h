// SPDX-License-Identifier: GPL-3.0-or-later
// A disk that fails: lies between SQLite and the file system and steps in at the n-th change of a file.
//
// A step is a write, a truncation, a sync or a deletion. While the object lives, every connection that is
// opened goes through it. What a power cut leaves tests/store/strom says.
#pragma once

#include <memory>

class StoerVfs {
public:
    enum class Eingriff {
        Toeten, ///< half of the write reaches the file, then the process dies by SIGKILL
        Voll,   ///< this and every later write finds the disk full
        Defekt, ///< this and every later step fails
    };

    StoerVfs();
    ~StoerVfs();
    StoerVfs(const StoerVfs&) = delete;
    StoerVfs& operator=(const StoerVfs&) = delete;

    /// From the n-th step on, counted from 1 and from now, `eingriff` holds.
    void stoereAb(int n, Eingriff eingriff);
    /// Everything works again.
    void stoereNicht();
    /// Whether the disk has stepped in since stoereAb.
    bool hatGestoert() const;
    /// How often a file was synced so far.
    int gesichert() const;
    /// How often a lock was asked for so far.
    int gesperrt() const;

    struct Innen;

private:
    std::unique_ptr<Innen> innen_;
};
