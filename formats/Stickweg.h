// SPDX-License-Identifier: GPL-3.0-or-later
// Where a stick was while a record was played again: what the player prints and the stick editor reads.
//
//   Stickweg 1
//   Ebene E COUNT      for each layer, in order; as many lines follow as it counts
//   X Y TICKS          a stay at one place; 0 0 0 where the way is broken
//   Ende
#pragma once

#include "base/Slots.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The smoothed position for so many ticks (5 ms). Where that is 0 the way is broken, as by another layer.
struct Wegstelle {
    std::uint16_t x = 0;
    std::uint16_t y = 0;
    std::uint32_t takte = 0;
    bool operator==(const Wegstelle&) const = default;
};

/// Of one stick, by layer.
using Stickweg = std::array<std::vector<Wegstelle>, EBENEN>;

/// More of all layers are not read: half an hour in which the stick never stands still. A record has ten
/// minutes.
constexpr std::size_t WEGSTELLEN_HOECHSTENS = std::size_t{30} * 60 * 200;

std::string stickwegSchreiben(const Stickweg& weg);

/// Nothing where it is not whole, or is anything else.
std::optional<Stickweg> stickwegLesen(std::string_view text);
