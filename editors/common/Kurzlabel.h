// SPDX-License-Identifier: GPL-3.0-or-later
// A label of one line that gives way: a long text is cut with dots where it is drawn, and its tool tip has it
// whole.
#pragma once

#include <QLabel>

class Kurzlabel final : public QLabel {
public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* ereignis) override;
};

/// One with a name, whose text is shown as it stands.
Kurzlabel* kurzlabel(const QString& name, const QString& text);
