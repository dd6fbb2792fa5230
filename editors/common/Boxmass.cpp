// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Boxmass.h"

#include "editors/common/Fenster.h"
#include "editors/common/Hinweistext.h"

#include <QEvent>
#include <QMessageBox>
#include <QTextBoundaryFinder>

namespace {

/// More than fits on any screen; longer texts take long to lay out.
constexpr qsizetype ZEICHEN_HOECHSTENS = 4000;
constexpr qsizetype ZEICHEN_MINDESTENS = 40;

constexpr QChar FUGE(0x200B); // no width, but a line may end there

/// A box is no narrower than its longest word: one that is wider than `breite` may be broken.
QString mitFugen(const QString& text, const QFontMetrics& schrift, int breite) {
    QString ergebnis;
    int wortbreite = 0;
    QTextBoundaryFinder zeichen(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype anfang = 0, ende = 0; (ende = zeichen.toNextBoundary()) > anfang; anfang = ende) {
        const auto eines = text.mid(anfang, ende - anfang);
        const int zeichenbreite = schrift.horizontalAdvance(eines);
        wortbreite = eines.at(0).isSpace() ? 0 : wortbreite + zeichenbreite;
        if (wortbreite > breite) {
            ergebnis += FUGE;
            wortbreite = zeichenbreite;
        }
        ergebnis += eines;
    }
    return ergebnis;
}

/// A box lays its text out when it is shown, which is when its size is known and nobody has seen it yet.
class Boxmass final : public QObject {
public:
    explicit Boxmass(QMessageBox& box) : QObject(&box), box_(box) { box.installEventFilter(this); }

    bool eventFilter(QObject* objekt, QEvent* ereignis) override {
        if (objekt == &box_ && ereignis->type() == QEvent::Show)
            einpassen();
        return false;
    }

private:
    void einpassen() {
        const auto ganz = box_.text();
        const int platz = fensterplatz(box_).height();
        auto zeichen = ganz.size();
        for (box_.setText(ganz); box_.height() > platz && zeichen > ZEICHEN_MINDESTENS;) {
            zeichen -= zeichen / 8;
            box_.setText(ohneMitte(ganz, zeichen));
        }
        // When it has its place, and its frame.
        if (box_.height() <= platz)
            QMetaObject::invokeMethod(
                this, [this] { hereinholen(box_); }, Qt::QueuedConnection);
    }

    QMessageBox& box_;
};

} // namespace

void aufDemSchirmHalten(QMessageBox& box) {
    const auto kurz = ohneMitte(box.text(), ZEICHEN_HOECHSTENS);
    box.setText(mitFugen(kurz, box.fontMetrics(), fensterplatz(box).width() * 3 / 4));
    new Boxmass(box);
}
