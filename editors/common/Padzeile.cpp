// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Padzeile.h"

#include "editors/common/Formhilfen.h"
#include "editors/common/Hinweistext.h"
#include "editors/common/Kurzlabel.h"

#include <QHBoxLayout>
#include <QTimer>

namespace {

constexpr int TAKT_MS = 400;

// A pad may call itself anything, in several lines, too.
QString padname(const Padauskunft& auskunft) {
    const auto name = qt(auskunft.name).simplified();
    return name.isEmpty() ? "Gamepad" : name;
}

} // namespace

Padzeile::Padzeile(Joystick& joystick, Ort ort)
    : joystick_(joystick), ort_(ort), zeile_(kurzlabel("lblPad", "")), takt_(new QTimer(this)) {
    setObjectName("Padzeile");
    auto* anordnung = new QHBoxLayout(this);
    anordnung->setContentsMargins(0, 0, 0, 0);
    anordnung->addWidget(zeile_, 1);
    for (auto* teil : {static_cast<QWidget*>(this), static_cast<QWidget*>(zeile_)})
        teil->setMouseTracking(true); // what lies below it shall see the mouse
    nachsehen();
    takt_->setInterval(TAKT_MS);
    connect(takt_, &QTimer::timeout, this, &Padzeile::nachsehen);
}

void Padzeile::showEvent(QShowEvent* ereignis) {
    nachsehen();
    takt_->start();
    QWidget::showEvent(ereignis);
}

void Padzeile::hideEvent(QHideEvent* ereignis) {
    takt_->stop();
    QWidget::hideEvent(ereignis);
}

void Padzeile::nachsehen() {
    auto jetzt = joystick_.auskunft();
    if (gezeigt_ == jetzt)
        return;
    gezeigt_ = std::move(jetzt);
    warDa_ = warDa_ || gezeigt_->anzahl > 0;
    zeile_->setText(text());
    zeile_->setToolTip(hinweis());
    if (parentWidget() && !parentWidget()->layout())
        adjustSize(); // lies free on a surface
}

QString Padzeile::text() const {
    if (gezeigt_->anzahl > 0)
        return "● " + padname(*gezeigt_);
    if (ort_ == Ort::Lauf && warDa_)
        return "○ Gamepad getrennt, der letzte Stand gilt";
    return "○ Kein Gamepad gefunden – anstecken";
}

QString Padzeile::hinweis() const {
    if (gezeigt_->anzahl == 0)
        return "Sobald ein Gamepad angesteckt ist, steht hier sein Name.";
    const auto name = padname(*gezeigt_);
    if (gezeigt_->anzahl == 1)
        return hinweistext(name);
    return hinweistext(
        QString("%1 Gamepads sind angesteckt, benutzt wird: %2").arg(gezeigt_->anzahl).arg(name));
}
