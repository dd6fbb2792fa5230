// SPDX-License-Identifier: GPL-3.0-or-later
// The one sound the program makes: a plain tone.
#pragma once

#include <cstdint>

class Tongeber {
public:
    Tongeber() = default;
    Tongeber(const Tongeber&) = delete;
    Tongeber& operator=(const Tongeber&) = delete;
    virtual ~Tongeber() = default;

    /// Sounds a tone of `frequenz` hertz for `dauer` milliseconds and does not wait for it; 0 of either is
    /// silence. A tone that still sounds is cut off: the latest is the one that counts. Where nothing can
    /// sound, nothing happens. Throws nothing.
    virtual void Beep(std::uint32_t frequenz, std::uint32_t dauer) = 0;
};
