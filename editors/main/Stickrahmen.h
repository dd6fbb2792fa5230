// SPDX-License-Identifier: GPL-3.0-or-later
// The frame of a stick on the main form: the road to its editor, and the scroll bars of its sensitivity.
//
// The bars are given, and so is what they show beside them; nothing reads or keeps what is set on them.
#pragma once

#include <QGroupBox>

class QPushButton;

class Stickrahmen final : public QGroupBox {
    Q_OBJECT

public:
    /// `stick`: 0 the left one, 1 the right one. Takes over `bearbeiten`.
    Stickrahmen(int stick, QPushButton& bearbeiten);
};
