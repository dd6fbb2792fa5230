// SPDX-License-Identifier: GPL-3.0-or-later
// A label of one line that gives way: a long text is cut with dots where it is drawn, and its tool tip has it
// whole.
#pragma once

#include <QLabel>

class Kurzlabel final : public QLabel {
public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override;
    /// Draws what its window shows, but for the background, at the place that the label has in a painter of
    /// its own.
    void malen(QPainter& maler) const;

protected:
    void paintEvent(QPaintEvent* ereignis) override;
};

/// One with a name, whose text is shown as it stands.
Kurzlabel* kurzlabel(const QString& name, const QString& text);
