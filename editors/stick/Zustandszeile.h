// SPDX-License-Identifier: GPL-3.0-or-later
// The state of a stick editor in words: a translucent label on the plane that lets the mouse through and
// moves to the other edge where a hand comes near or a panel covers it.
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
    /// Stays clear of what covers this part of the plane, in pixels, where the other edge is free.
    void freilassen(QRect verdeckt);
    /// Keeps this height above the strips free for what else lies there.
    void untenFreihalten(int pixel);
    /// Lays the label on the plane as large as that is now.
    void legen();

protected:
    void paintEvent(QPaintEvent* ereignis) override;

private:
    QSize groesse() const;
    int hoeheAm(bool oben) const;
    QRect platzAm(bool oben) const;

    bool oben_ = false;
    QRect verdeckt_;
    int untenFrei_ = 0;
};
