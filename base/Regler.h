// SPDX-License-Identifier: GPL-3.0-or-later
// The thirteen settings of a run that its scroll bars hold.
#pragma once

#include <array>
#include <cstddef>

/// Range and start value of a scroll bar.
struct Reglerbereich {
    int min;
    int max;
    int start;
};

inline constexpr int REGLER = 12;

/// `HScroll1`(0 to 11): window sizes, minimum counts and margins of the smoothing.
inline constexpr std::array<Reglerbereich, REGLER> HSCROLL1_BEREICHE{{{1, 30, 1},
                                                                      {0, 15, 0},
                                                                      {1, 30, 1},
                                                                      {0, 15, 0},
                                                                      {0, 1000, 0},
                                                                      {0, 1000, 0},
                                                                      {1, 30, 1},
                                                                      {0, 15, 0},
                                                                      {1, 30, 1},
                                                                      {0, 15, 1},
                                                                      {0, 1000, 0},
                                                                      {0, 1000, 1}}};
/// `HScroll2`: repeat interval in milliseconds, 0 for no repeat.
inline constexpr Reglerbereich HSCROLL2_BEREICH{0, 500, 0};

/// The start values of `HScroll1`, by element.
constexpr std::array<int, REGLER> hscroll1Startwerte() {
    std::array<int, REGLER> werte{};
    for (std::size_t i = 0; i < werte.size(); ++i)
        werte[i] = HSCROLL1_BEREICHE[i].start;
    return werte;
}

/// What the scroll bars show; at first their start values.
struct Reglerwerte {
    std::array<int, REGLER> glaettung = hscroll1Startwerte(); ///< `HScroll1`, by element
    int wiederholintervall = HSCROLL2_BEREICH.start;          ///< ms, `HScroll2`

    bool operator==(const Reglerwerte&) const = default;
};
