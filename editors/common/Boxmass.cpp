// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Boxmass.h"

#include "editors/common/Fenster.h"
#include "editors/common/Hinweistext.h"

#include <QEvent>
#include <QLayout>
#include <QMessageBox>

namespace {

/// More than fits on any screen; longer texts take long to lay out.
constexpr qsizetype ZEICHEN_HOECHSTENS = 4000;
constexpr qsizetype ZEICHEN_MINDESTENS = 40;

/// A box lays its text out when it is shown, which is when its size is known and nobody has seen it yet.
class Boxmass final : public QObject {
public:
    explicit Boxmass(QMessageBox& box) : QObject(&box), box_(box) { box.installEventFilter(this); }

    bool eventFilter(QObject* objekt, QEvent* ereignis) override {
        if (objekt == &box_ && ereignis->type() == QEvent::Show)
            einpassen();
        if (objekt == &box_ && ereignis->type() == QEvent::Resize)
            schmaelern();
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

    /// A long word makes a box as wide as the screen, without its frame.
    void schmaelern() {
        const int platz = fensterplatz(box_).width();
        if (box_.width() > platz)
            box_.setFixedSize(platz, box_.layout()->totalHeightForWidth(platz));
    }

    QMessageBox& box_;
};

} // namespace

void aufDemSchirmHalten(QMessageBox& box) {
    box.setText(ohneMitte(box.text(), ZEICHEN_HOECHSTENS));
    new Boxmass(box);
}
