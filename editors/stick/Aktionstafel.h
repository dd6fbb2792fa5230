// SPDX-License-Identifier: GPL-3.0-or-later
// The panel on which a field of a stick's plane gets its action. It lies over the plane, and its form says
// where: it places it, opens it on a field and asks it for the text when it has closed it.
//
// What there is to be said about an action of a type stands on the frame of that type, Aktionsrahmen.
#pragma once

#include "editors/stick/Aktionsrahmen.h"

#include <QFrame>

#include <array>
#include <string>

class QStackedLayout;

class Aktionstafel final : public QFrame {
    Q_OBJECT

public:
    using Tastenname = Tastaturrahmen::Tastenname;

    /// Starts hidden. Its size is that of its content.
    Aktionstafel(const Tafeleigenart& eigenart, Tastatur& tastatur, Tastenname tastenname, QWidget* eltern);

    /// Shows the panel with the action of a field; the empty text, that of a field without a row, is a
    /// `Leerfeld`. `mitEgoshooter` is for the centre field, the only one that can be one. Throws
    /// LaufzeitFehler for a text that cannot be read in full; the panel is open then and shows what could be
    /// read. Errors of the key names go through.
    void oeffnen(const std::string& aktionstext, bool mitEgoshooter);

    /// The action text of what the panel shows.
    std::string aktionstext() const;

    /// Gives the focus to the panel where it has none: to the type of the action.
    void fokusGeben();

signals:
    /// Escape was pressed in it.
    void verlassen();

protected:
    void keyPressEvent(QKeyEvent* ereignis) override;
    void paintEvent(QPaintEvent* ereignis) override;
    void hideEvent(QHideEvent* ereignis) override;

private:
    QLayout* artwahl();

    void Option1Klick(int index);
    void zeigen(const Stickaktionsbild& bild);
    void artWaehlen(int index);

    Optionen arten_;
    std::array<Aktionsrahmen*, STICKAKTIONSARTEN> rahmen_{}; ///< by type
    Positionsrahmen* position_ = nullptr;                    ///< one of them
    QStackedLayout* eigenschaften_ = nullptr;
};
