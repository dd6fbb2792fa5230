// SPDX-License-Identifier: GPL-3.0-or-later
// A mark of runs among objects of one process.
#pragma once

#include "platform/Laufmarke.h"

class ProbeMarke final : public Laufmarke {
public:
    /// `gesetzte` counts the marks that are set, this one's among them; it outlives the mark.
    explicit ProbeMarke(int& gesetzte) : gesetzte_(gesetzte) {}
    ~ProbeMarke() override { loesen(); }

    bool setzen() override {
        loesen();
        gesetzt_ = true;
        return ++gesetzte_ == 1;
    }
    void loesen() override {
        gesetzte_ -= gesetzt_ ? 1 : 0;
        gesetzt_ = false;
    }

private:
    int& gesetzte_;
    bool gesetzt_ = false;
};
