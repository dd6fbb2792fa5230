// SPDX-License-Identifier: GPL-3.0-or-later
// Injection that only writes down what is sent.
#pragma once

#include "platform/Eingabe.h"
#include "platform/mitschnitt/Ereignistext.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

class ProbeEingabe final : public Eingabe {
public:
    /// Called for each event as it is sent.
    using Zuhoerer = std::function<void(const INPUT&)>;

    ProbeEingabe() = default;
    explicit ProbeEingabe(Zuhoerer zuhoerer) : zuhoerer_(std::move(zuhoerer)) {}

    /// The two ways in.
    enum class Eingang { SendInput, mouse_event };

    std::uint32_t SendInput(std::span<const INPUT> ereignisse) override;
    void mouse_event(std::uint32_t dwFlags, std::int32_t dx, std::int32_t dy, std::int32_t dwData,
                     std::uint32_t dwExtraInfo) override;
    /// Every code has its own scan code: the code and 1000.
    std::uint32_t MapVirtualKeyA(std::uint32_t code, std::uint32_t art) override {
        return art == 0 ? code + 1000 : 0;
    }

    /// All events since the last call, oldest first.
    std::vector<INPUT> abholen() {
        eingaenge_.clear();
        return std::exchange(ereignisse_, {});
    }
    /// By which way each of the events came that wait to be fetched.
    const std::vector<Eingang>& eingaenge() const { return eingaenge_; }
    /// How many events the longest call of SendInput brought.
    std::size_t laengsterAufruf() const { return laengsterAufruf_; }
    /// The same as texts.
    std::vector<std::string> texteAbholen();

private:
    Zuhoerer zuhoerer_;
    std::vector<INPUT> ereignisse_;
    std::vector<Eingang> eingaenge_;
    std::size_t laengsterAufruf_ = 0;
};
