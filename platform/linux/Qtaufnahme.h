// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of the screen by Qt itself, which can where programs may read the screen: under X11.
#pragma once

#include "platform/Schirmaufnahme.h"

class Qtaufnahme final : public Schirmaufnahme {
public:
    /// The picture comes before this returns.
    void aufnehmen(Empfaenger empfaenger) override;
};
