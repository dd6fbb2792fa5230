// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps other copies of the program from changing a file while one reads it, changes it and replaces it.
//
// What is locked is the folder that the file lies in: the file itself is another one after each replacement,
// and a file made for the lock would stay behind and could not be made in a folder that is only read.
#pragma once

#include <string>

class Dateisperre {
public:
    /// Waits for the lock of the file `pfad`, where that leads to by symbolic links; up to two seconds. Where
    /// there is no folder, or one whose file system knows no locks, there is nothing to wait for.
    explicit Dateisperre(const std::string& pfad);
    ~Dateisperre();
    Dateisperre(const Dateisperre&) = delete;
    Dateisperre& operator=(const Dateisperre&) = delete;

    /// False when another copy has kept the lock all the time: then nothing may be changed.
    bool frei() const { return frei_; }

private:
    int ordner_ = -1;
    bool frei_ = true;
};
