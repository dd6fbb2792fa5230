// SPDX-License-Identifier: GPL-3.0-or-later
// Changes labels of a window behind what is played in, without the toolkit painting them.
//
// The toolkit paints into memory that it shares with the server of the display, so before it paints where it
// has painted before it waits until the server has shown that. Under load this takes longer than a poll of
// the pad may wait. So while the user is elsewhere changed labels are drawn into the window itself, as many
// as the way to the server takes, the next when the server has shown these. The toolkit's own copy is behind
// then; it paints before it shows that again (the window is uncovered), and when the user comes to the
// window.
//
// The caption, which may change with each key, goes past it in the same way: of what an own one costs the
// toolkit most is its own book-keeping, and this falls into the middle of a tick.
#pragma once

#include "platform/Sofortbild.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <vector>

class QLabel;
class QWidget;

class Sofortschrift final : public QObject {
public:
    /// `bild` may be null: then the toolkit paints all. It outlives this object, and so does `fenster`.
    /// A window without a title of its own is shown with `ersatztitel`: else the toolkit gives it the name of
    /// the program.
    Sofortschrift(QWidget& fenster, Sofortbild* bild, QString ersatztitel);

    /// Does `aenderung` to the looks of a label of the window; both outlive the window's display.
    void aendern(QLabel& label, const std::function<void()>& aenderung);
    void schreiben(QLabel& label, const QString& text);
    /// Draws what has changed now, where it can be drawn at all, and not from the event loop.
    void zeichnen();
    /// Gives the window a title. The toolkit may get to know of it only when the user comes to the window.
    void betiteln(const QString& titel);
    /// The title that was given last.
    const QString& titel() const { return titel_; }

protected:
    bool eventFilter(QObject* empfaenger, QEvent* ereignis) override;

private:
    bool abseits() const;
    Sofortbild::Lage lage() const;
    bool erstesZeichnen(qsizetype& platz);
    void nachholen();
    void fensterDa();
    bool titelVorbei();
    void titelDemToolkit(const QString& titel);

    QWidget& fenster_;
    Sofortbild* bild_;
    QString ersatztitel_;
    QString titel_;
    bool titelVoraus_ = false; // of what the toolkit knows
    QTimer takt_;
    std::vector<QLabel*> offene_;    // to be drawn, the oldest first
    std::vector<QLabel*> veraltete_; // other than the toolkit's copy
};
