// SPDX-License-Identifier: GPL-3.0-or-later
// A way of the input that reaches whom the test says.
#pragma once

#include "platform/Eingabeweg.h"

class ProbeEingabeweg final : public Eingabeweg {
public:
    Eingabelage pruefen() override { return lage; }

    Eingabelage lage;
};
