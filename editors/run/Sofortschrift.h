// SPDX-License-Identifier: GPL-3.0-or-later
// Changes labels of a window behind what is played in, without the toolkit painting them.
//
// The toolkit paints into memory that it shares with the server of the display, so before it paints where it
// has painted before it waits until the server has shown that. Under load this takes longer than a poll of
// the pad may wait. So while the user is elsewhere a changed label is drawn into the window itself, one at a
// time, the next when the server has shown the last. The toolkit's own copy is behind then; it paints before
// it shows that again (the window is uncovered), and when the user comes to the window.
#pragma once

#include "platform/Sofortbild.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <vector>

class QLabel;
class QWidget;

class Sofortschrift final : public QObject {
public:
    /// `bild` may be null: then the toolkit paints all. It outlives this object, and so does `fenster`.
    Sofortschrift(QWidget& fenster, Sofortbild* bild);

    /// Does `aenderung` to the looks of a label of the window; both outlive the window's display.
    void aendern(QLabel& label, const std::function<void()>& aenderung);
    void schreiben(QLabel& label, const QString& text);

protected:
    bool eventFilter(QObject* empfaenger, QEvent* ereignis) override;

private:
    bool abseits() const;
    Sofortbild::Lage lage() const;
    void zeichnen();
    void nachholen();

    QWidget& fenster_;
    Sofortbild* bild_;
    QTimer takt_;
    std::vector<QLabel*> offene_;    // to be drawn, the oldest first
    std::vector<QLabel*> veraltete_; // other than the toolkit's copy
};
