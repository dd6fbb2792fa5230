// SPDX-License-Identifier: GPL-3.0-or-later
// An option that tells whenever it is chosen.
#pragma once

#include <QRadioButton>

#include <functional>

class Wahlknopf final : public QRadioButton {
public:
    /// `klick` runs when the option becomes set, and when a hand clicks it though it is set. What it throws
    /// by hand one message box of the form tells.
    Wahlknopf(const QString& text, std::function<void()> klick);

    /// Sets it in code; `klick` runs where that changes it, and its errors come back to the caller.
    void setzen();
    /// Clears it, which the only one set of a group can't be otherwise; nothing runs.
    void abwaehlen();

private:
    void geklickt();

    std::function<void()> klick_;
    bool warGesetzt_ = false;
};
