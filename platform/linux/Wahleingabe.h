// SPDX-License-Identifier: GPL-3.0-or-later
// The injection that serves on this system, for as long as the program lives. Which one it is may change
// between two runs: the right to write to /dev/uinput can come while the program is open.
#pragma once

#include "platform/Eingabeweg.h"
#include "platform/linux/EingabeWahl.h"

class Wahleingabe final : public Eingabe, public Eingabeweg {
public:
    using Empfaenger = std::function<void(const EingabeWahl&)>;

    /// Asks the candidates, the best first. `beiWahl` hears what came of it, now and whenever that is another
    /// injection or stands for other reasons.
    explicit Wahleingabe(std::vector<EingabeKandidat> kandidaten, Empfaenger beiWahl = {});

    std::uint32_t SendInput(std::span<const INPUT> ereignisse) override;
    std::uint32_t MapVirtualKeyA(std::uint32_t code, std::uint32_t art) override;

    Eingabelage pruefen() override;

    /// Which injection serves, and why others do not.
    const EingabeWahl& wahl() const { return wahl_; }

private:
    void sagen() const;

    const Empfaenger beiWahl_;
    const std::vector<EingabeKandidat> kandidaten_;
    EingabeWahl wahl_;
};
