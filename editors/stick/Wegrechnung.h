// SPDX-License-Identifier: GPL-3.0-or-later
// How often a stick would have come into a field on the way that a record tells, with the lines anywhere.
//
// The way tells each tick to the unit, so that the field of each is the one in which a run finds it: where
// cells of 256 units are too wide to tell whether a line was crossed, as in the noise, this counts right.
#pragma once

#include "editors/stick/Feldgitter.h"
#include "formats/Stickweg.h"

#include <vector>

class Wegrechnung {
public:
    explicit Wegrechnung(std::vector<Wegstelle> weg);

    double sekunden() const;
    /// An entry is a tick in the field behind one in another; what stands behind a break is none.
    int eintritte(const Linienebene& linien, const Gitterplatz& platz) const;

private:
    std::vector<Wegstelle> weg_;
};
