// SPDX-License-Identifier: GPL-3.0-or-later
// A keyboard whose keys are numbered as ProbeEingabe numbers their scan codes: the code and 1000.
#pragma once

#include "platform/Tastatur.h"

class ProbeTastatur final : public Tastatur {
public:
    /// Number of the key that `code` means.
    static constexpr std::uint32_t nummer(VirtuelleTaste code) { return code + VERSATZ; }

    VirtuelleTaste code(std::uint32_t nummer) override {
        if (nummer <= VERSATZ || nummer >= VERSATZ + 255)
            return 0;
        const auto code = static_cast<VirtuelleTaste>(nummer - VERSATZ);
        const bool seitlich = code >= 160 && code <= 165; // left and right Shift, Strg, Alt
        return seitlich ? static_cast<VirtuelleTaste>(16 + (code - 160) / 2) : code;
    }

private:
    static constexpr std::uint32_t VERSATZ = 1000;
};
