// SPDX-License-Identifier: GPL-3.0-or-later
// What a stick holds at this moment. Its actions remember what they started, not what still runs: that is
// read off the keys that are down and the timers that are set.
#pragma once

#include "engine/run/Laufstand.h"

struct Stickaktionsstand;
struct Stickeigenart;

/// Adds what the stick holds to `haltungen`. Never throws for an ill-formed action: that holds nothing.
void stickhaltungenAnhaengen(const Stickeigenart& art, const Stickaktionsstand& stand,
                             const Standquellen& quellen, std::vector<Haltung>& haltungen);
