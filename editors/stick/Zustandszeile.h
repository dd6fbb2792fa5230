// SPDX-License-Identifier: GPL-3.0-or-later
// The state of a stick editor in words: a translucent label on the plane that lets the mouse through and
// moves to the other edge where a hand comes near.
#pragma once

#include <QLabel>

class Zustandszeile final : public QLabel {
    Q_OBJECT

public:
    explicit Zustandszeile(QWidget* ebene);

    /// Shows these lines, nothing where there are none. The same text again costs nothing.
    void zeigen(const QStringList& zeilen);
    /// Leaves a place of the plane free, in pixels.
    void ausweichen(QPoint wo);
    /// Lays the label on the plane as large as that is now.
    void legen();

protected:
    void paintEvent(QPaintEvent* ereignis) override;

private:
    QSize groesse() const;
    int hoeheAm(bool oben) const;

    bool oben_ = false;
};
