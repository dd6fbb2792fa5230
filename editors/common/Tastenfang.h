// SPDX-License-Identifier: GPL-3.0-or-later
// The box that catches a key of the keyboard: every key, also those that close a window or run a shortcut
// elsewhere.
//
//   the tabulator             is
//   ------------------------  ---------------------------------------------------------
//   first key after a click   caught as any other
//   any later, and without    the way out of the box, with Shift the way back; a Shift
//   a click                   that goes before it is no key of the box
//   with Ctrl                 caught; the Ctrl before it is no key of the box
//
// It only catches. Its text is "Hier Klicken" until a click makes it "Tab", which a double click confirms;
// what a key makes of the text is up to the form.
#pragma once

#include "platform/Eingabe.h"

#include <QLineEdit>

class QKeyEvent;
class Tastatur;

class Tastenfang final : public QLineEdit {
    Q_OBJECT

public:
    explicit Tastenfang(Tastatur& tastatur, QWidget* eltern = nullptr);

    /// Shows its invitation.
    void einladen();

    /// The code of the key of an event, 0 if it has none. A platform that gives no number of the key, such as
    /// a keyboard on the screen, tells what the key means: then it goes by that.
    static VirtuelleTaste code(const QKeyEvent& ereignis, Tastatur& tastatur);

signals:
    /// A key went down in the box; a key that is held counts once.
    void tasteGedrueckt(int code);
    /// A key was let go in the box.
    void tasteGeloest(int code);
    /// The tabulator was confirmed by double click.
    void tabBestaetigt();

protected:
    bool event(QEvent* ereignis) override;
    void mouseReleaseEvent(QMouseEvent* ereignis) override;
    void mouseDoubleClickEvent(QMouseEvent* ereignis) override;
    void focusInEvent(QFocusEvent* ereignis) override;
    void focusOutEvent(QFocusEvent* ereignis) override;

private:
    bool gehtWeiter(const QKeyEvent& ereignis) const;
    void weitergehen(const QKeyEvent& ereignis);
    void druecken(const QKeyEvent& ereignis);
    void loesen(const QKeyEvent& ereignis);
    void aufgeschobeneMelden();

    Tastatur& tastatur_;
    /// The focus came by a key that is still down: the next release belongs to no key of the box, unless one
    /// goes down here first.
    bool fremdeTaste_ = false;
    bool wartet_ = false;             ///< a click has asked for a key, and none has come yet
    bool tabGefangen_ = false;        ///< the tabulator is down, and was caught
    VirtuelleTaste aufgeschoben_ = 0; ///< Shift or Ctrl is down, and may be there for the tabulator only
    VirtuelleTaste verbraucht_ = 0;   ///< was there for the tabulator, and is still down
};
