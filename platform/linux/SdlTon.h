// SPDX-License-Identifier: GPL-3.0-or-later
// Tones through SDL.
//
// Opening a sound device may take seconds, so all of SDL's calls are made on a thread of their own, which the
// first tone starts. The device is given back when no tone has come for a while, so that it may sleep and the
// next tone finds the one that is the default then. Where none opens tones are dropped for as long. A tone
// ends after 5 s at the latest.
#pragma once

#include "platform/Tongeber.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

class SdlTon final : public Tongeber {
public:
    SdlTon() = default;
    /// A tone that still sounds ends.
    ~SdlTon() override;

    void Beep(std::uint32_t frequenz, std::uint32_t dauer) override;

private:
    struct Ton {
        std::uint32_t frequenz;
        std::uint32_t dauer;
    };

    void faden();
    std::optional<Ton> naechster(bool mitFrist);

    std::mutex schloss_;
    std::condition_variable bewegung_;
    std::optional<Ton> ton_; ///< the one to sound next
    bool ende_ = false;
    std::thread faden_;
};
