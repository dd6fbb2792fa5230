// SPDX-License-Identifier: GPL-3.0-or-later
// A radio button whose text may take several lines, as many as its width asks for.
#pragma once

#include <QRadioButton>

class Umbruchoption final : public QRadioButton {
public:
    using QRadioButton::QRadioButton;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int breite) const override;

protected:
    void paintEvent(QPaintEvent* ereignis) override;
    bool hitButton(const QPoint& stelle) const override { return rect().contains(stelle); }

private:
    int textrand() const;
};
