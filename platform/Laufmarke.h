// SPDX-License-Identifier: GPL-3.0-or-later
// The mark by which the copies of the program that one user has started know of each other's runs: two runs
// at a time both send what the one pad does.
#pragma once

/// Contract: several copies may have the mark at a time. It ends with the process that has it, however that
/// ends, and no child has it. Where the system has no place for it, each copy finds itself alone. Never
/// throws.
class Laufmarke {
public:
    Laufmarke() = default;
    Laufmarke(const Laufmarke&) = delete;
    Laufmarke& operator=(const Laufmarke&) = delete;
    virtual ~Laufmarke() = default;

    /// From now on a `Schema` runs here. Returns whether it is the only copy that says so: of two that say it
    /// at once, neither is.
    virtual bool setzen() = 0;

    /// No `Schema` runs here any more.
    virtual void loesen() = 0;
};
