// SPDX-License-Identifier: GPL-3.0-or-later
// Which field of a stick's plane lies at a point: the crossing of the x band and the y band that the lines
// cut.
//
// A point on a line belongs to the field towards the centre on a right or bottom line beyond slot 1, to the
// outer side of the first right and the first bottom line, and on a left or top line to the side of the
// larger coordinate. The outermost fields to the right and below reach beyond the plane.
#pragma once

#include "store/schema/Linientabelle.h"

#include <array>
#include <cstdint>

/// Right and lower end of the outermost fields: on purpose a little beyond the plane.
inline constexpr std::int32_t FELDENDE = 66000;

/// A field in plane units; wide enough for whatever line values a foreign database holds.
struct Feldrechteck {
    std::int64_t links = 0;
    std::int64_t breite = 0;
    std::int64_t oben = 0;
    std::int64_t hoehe = 0;
    bool operator==(const Feldrechteck&) const = default;
};

/// The key of a field: the inner line of its band in each direction, 0 for none.
using Feldanker = std::array<std::int32_t, RICHTUNGEN>;

struct Stickfeld {
    Feldrechteck rechteck;
    Feldanker anker{};
    bool operator==(const Stickfeld&) const = default;
};

/// The field at a click.
Stickfeld BereichFestlegen(const Linienebene& linien, std::int32_t x, std::int32_t y);

/// The field under the stick, in floating point.
struct Punktrechteck {
    double links = 0;
    double breite = 0;
    double oben = 0;
    double hoehe = 0;
    bool operator==(const Punktrechteck&) const = default;
};
Punktrechteck BereichFestlegen2(const Linienebene& linien, double x, double y);
