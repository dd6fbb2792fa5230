// SPDX-License-Identifier: GPL-3.0-or-later
// A trace is told of the left stick or of its x axis; a variant is how it is played: on which stick, on which
// axis. What is exchanged for it stands at the head of Szenario.h.
#pragma once

#include "tests/spur/Szenario.h"

struct Variante {
    std::string name;
    bool achsenTauschen = false; ///< x and y of the left stick, before the sticks
    bool sticksTauschen = false;
};

inline const Variante LINKS{"links", false, false};
inline const Variante RECHTS{"rechts", false, true};

inline const std::array<Variante, 4> PRUEFACHSEN{
    {{"lx", false, false}, {"ly", true, false}, {"rx", false, true}, {"ry", true, true}}};

/// An event that must come out: so often at `zeit` or, with `bis`, at each tick of `Im Feld binden` until
/// then.
struct Erwartung {
    std::chrono::milliseconds zeit{0};
    std::optional<std::chrono::milliseconds> bis;
    std::string text;
    std::size_t anzahl = 1;
};

/// The scenario of a variant, from what is written; throws Szenariofehler for an axis that the trace moves
/// and whose counterpart no raw axis is.
Szenario uebertragen(const Szenario& geschrieben, const std::vector<Erwartung>& erwartungen,
                     const Variante& variante);
