// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/buttons/Steuerkreuz.h"

#include "platform/Joystick.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr int KEIN_CODE = -1;

// By eighths of a turn, clockwise from up.
constexpr std::array<int, 8> CODES{0, 10, 1, 12, 2, 23, 3, 30};
constexpr std::uint32_t ACHTELDREHUNG = 4500;

std::optional<int> codeDesPov(std::uint32_t pov) {
    if (pov % ACHTELDREHUNG != 0 || pov / ACHTELDREHUNG >= CODES.size())
        return std::nullopt;
    return CODES[pov / ACHTELDREHUNG];
}

constexpr bool diagonal(int code) {
    return code >= 10;
}
constexpr int linkeZiffer(int code) {
    return code / 10;
}
constexpr int rechteZiffer(int code) {
    return code % 10;
}

constexpr Kreuzereignis druck(int richtung) {
    return {richtung, true};
}
constexpr Kreuzereignis loesung(int richtung) {
    return {richtung, false};
}

} // namespace

std::vector<Kreuzereignis> Steuerkreuz::auswerten(std::uint32_t pov) {
    std::vector<Kreuzereignis> ereignisse;
    if (pov == JOY_POVCENTERED) {
        ereignisse = zentriert();
    } else if (pov != KreuzPovAlt_) {
        if (const auto code = codeDesPov(pov)) {
            ereignisse = gewechselt(*code);
            KreuzCode_ = *code;
        }
    }
    KreuzPovAlt_ = pov;
    KreuzCodeAlt_ = static_cast<std::int16_t>(KreuzCode_);
    return ereignisse;
}

bool Steuerkreuz::steht(int richtung) const {
    return KreuzCode_ != KEIN_CODE && (rechteZiffer(KreuzCode_) == richtung ||
                                       (diagonal(KreuzCode_) && linkeZiffer(KreuzCode_) == richtung));
}

bool Steuerkreuz::bleibt(std::uint32_t pov) const {
    auto danach = *this;
    return danach.auswerten(pov).empty() && danach == *this;
}

void Steuerkreuz::codesPruefen() {
    const auto gibtEs = [](int code) { return std::ranges::find(CODES, code) != CODES.end(); };
    if (!gibtEs(KreuzCode_))
        KreuzCode_ = KEIN_CODE;
    if (!gibtEs(KreuzCodeAlt_))
        KreuzCodeAlt_ = KEIN_CODE;
}

std::vector<Kreuzereignis> Steuerkreuz::zentriert() {
    KreuzCode_ = KEIN_CODE;
    if (KreuzCodeAlt_ == KEIN_CODE)
        return {};
    if (diagonal(KreuzCodeAlt_))
        return {loesung(linkeZiffer(KreuzCodeAlt_)), loesung(rechteZiffer(KreuzCodeAlt_))};
    return {loesung(KreuzCodeAlt_)};
}

std::vector<Kreuzereignis> Steuerkreuz::gewechselt(int code) const {
    const int alt = KreuzCodeAlt_;
    if (diagonal(code)) {
        if (alt == KEIN_CODE)
            return {druck(linkeZiffer(code)), druck(rechteZiffer(code))};
        return {druck(alt == linkeZiffer(code) ? rechteZiffer(code) : linkeZiffer(code))};
    }
    if (alt == KEIN_CODE)
        return {druck(code)};
    if (diagonal(alt))
        return {loesung(code == linkeZiffer(alt) ? rechteZiffer(alt) : linkeZiffer(alt))};
    return {loesung(alt), druck(code)};
}
