// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Schiebetafel.h"

#include "editors/common/Farben.h"
#include "editors/stick/Ebenenteile.h"

#include <QFocusEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr int SCHRITT = 567; // plane units a tick
constexpr auto OEFFNEN_INTERVALL = 25ms;
constexpr auto OFFEN_BLEIBEN = 2000ms;

constexpr int STREIFEN_MINDESTENS = 11; // pixels, so that its title can be read
constexpr int RUNDUNG = 4;
constexpr int TITELRAND = 12;

Qt::FocusReason grund(const QEvent& fokuswechsel) {
    return static_cast<const QFocusEvent&>(fokuswechsel).reason();
}

bool durchTaste(const QEvent& fokuswechsel) {
    const auto wodurch = grund(fokuswechsel);
    return wodurch == Qt::TabFocusReason || wodurch == Qt::BacktabFocusReason;
}

// The focus goes to another window, and comes back to where it was.
bool fensterwechsel(const QEvent& fokuswechsel) {
    return grund(fokuswechsel) == Qt::ActiveWindowFocusReason;
}

} // namespace

Schiebetafel::Schiebetafel(QWidget* ebene, const QString& titel, const Schiebemass& mass,
                           Zeitgeber& zeitgeber)
    : QFrame(ebene), titel_(titel), mass_(mass), hoehe_(mass.hoehe) {
    setMouseTracking(true);
    setAttribute(Qt::WA_NoMousePropagation);
    setAccessibleName(titel);
    oeffnen_ = zeitgeber.formularzeitgeber([this] { oeffnenTakt(); });
    schliessen_ = zeitgeber.formularzeitgeber([this] { schliessenTakt(); });
}

void Schiebetafel::inhaltSetzen(QWidget* inhalt) {
    inhalt_ = inhalt;
    inhalt_->setParent(this);
    // The mouse is over the panel also where a control lies on it.
    inhalt_->setMouseTracking(true);
    for (auto* control : inhalt_->findChildren<QWidget*>()) {
        control->setMouseTracking(true);
        control->installEventFilter(this);
    }
    inhalt_->show();
    legen();
}

void Schiebetafel::zurueckstellen(int hoehe) {
    oben_ = STREIFEN_OBEN;
    hoehe_ = hoehe;
    legen();
    if (tastatur_)
        aufschieben();
}

void Schiebetafel::anhalten() {
    oeffnen_.reset();
    schliessen_.reset();
}

// --- layout ---

int Schiebetafel::streifenpixel() const {
    const auto streifen = ebenenpixel({0, 0, 0, double(mass_.hoehe)}, parentWidget()->size());
    return std::max(STREIFEN_MINDESTENS, static_cast<int>(std::lround(streifen.height())));
}

void Schiebetafel::legen(double mitte) {
    mitte_ = mitte;
    legen();
}

void Schiebetafel::legen() {
    const auto* ebene = parentWidget();
    const auto hoch = ebenenpixel(QRectF(0, oben_, 0, hoehe_), ebene->size());
    const int streifen = streifenpixel();
    const int breite = noetigeBreite();
    const int links = static_cast<int>(std::lround(mitte_ - breite / 2.0));
    // On a low plane the strip is thicker than what its place leaves below.
    const int oben = std::min(static_cast<int>(std::lround(hoch.top())), ebene->height() - streifen);
    const int unten = std::max(oben + streifen, static_cast<int>(std::lround(hoch.bottom())));
    setGeometry(links, oben, breite, unten - oben);
    if (!inhalt_)
        return;
    // In the middle of the panel when that is open.
    const auto offen = ebenenpixel({0, 0, 0, double(offeneHoehe())}, ebene->size());
    const int platz = static_cast<int>(offen.height()) - streifen;
    inhalt_->setGeometry(0, streifen, breite, std::max(inhalt_->sizeHint().height(), platz));
}

int Schiebetafel::offeneHoehe() const {
    const int schritte = (mass_.offen - mass_.hoehe + SCHRITT - 1) / SCHRITT;
    return mass_.hoehe + schritte * SCHRITT;
}

int Schiebetafel::noetigeBreite() const {
    const int titelbreite = fontMetrics().horizontalAdvance(titel_) + 4 * TITELRAND;
    return std::max(titelbreite, inhalt_ ? inhalt_->sizeHint().width() : 0);
}

int Schiebetafel::noetigeEbenenhoehe() const {
    if (!inhalt_)
        return 0;
    // A pixel at each edge may be lost to rounding; on a small plane the strip is thicker than its part.
    const int inhalt = inhalt_->sizeHint().height() + 2;
    const double ohneStreifen = double(EBENENENDE) / (offeneHoehe() - mass_.hoehe);
    const double mitStreifen = double(EBENENENDE) / offeneHoehe();
    return static_cast<int>(
        std::ceil(std::max(inhalt * ohneStreifen, (inhalt + STREIFEN_MINDESTENS) * mitStreifen)));
}

void Schiebetafel::changeEvent(QEvent* ereignis) {
    QFrame::changeEvent(ereignis);
    if (ereignis->type() != QEvent::EnabledChange)
        return;
    // What the mouse does on the panel is none of the plane's business, but over one that rests a line goes
    // on.
    setAttribute(Qt::WA_NoMousePropagation, isEnabled());
    update();
}

void Schiebetafel::paintEvent(QPaintEvent*) {
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    auto grund = palette().color(QPalette::Window);
    grund.setAlpha(240);
    const auto rand = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    maler.setPen(umriss(grund, palette().color(QPalette::Active, QPalette::WindowText)));
    maler.setBrush(grund);
    maler.drawRoundedRect(rand, RUNDUNG, RUNDUNG);

    const QRect streifen(0, 0, width(), streifenpixel());
    maler.setPen(Qt::NoPen);
    const auto band = palette().color(QPalette::Active, isEnabled() ? QPalette::Highlight : QPalette::Mid);
    maler.setBrush(band);
    maler.drawRoundedRect(QRectF(streifen).adjusted(0.5, 0.5, -0.5, -0.5), RUNDUNG, RUNDUNG);
    auto schrift = font();
    schrift.setPixelSize(std::max(9, streifen.height() * 3 / 4));
    schrift.setBold(true);
    maler.setFont(schrift);
    // A locked panel is told by its grey; its title is to be read all the same.
    const auto wunsch = isEnabled() ? QPalette::HighlightedText : QPalette::WindowText;
    maler.setPen(lesbar(band, palette().color(QPalette::Active, wunsch)));
    maler.drawText(streifen, Qt::AlignCenter, titel_);
}

// --- sliding ---

void Schiebetafel::mouseMoveEvent(QMouseEvent*) {
    aufschieben();
}

// Whoever goes by keys must not stand on a control that is out of sight.
bool Schiebetafel::eventFilter(QObject* control, QEvent* ereignis) {
    if (ereignis->type() == QEvent::FocusIn && durchTaste(*ereignis)) {
        tastatur_ = true;
        aufschieben();
    }
    if (ereignis->type() == QEvent::FocusOut && !fensterwechsel(*ereignis) &&
        std::exchange(tastatur_, false) && schliessen_) {
        schliessen_->Interval(OFFEN_BLEIBEN);
        schliessen_->Enabled(true);
    }
    return QFrame::eventFilter(control, ereignis);
}

void Schiebetafel::aufschieben() {
    if (!oeffnen_)
        return;
    // Setting the interval would start a period anew, and a mouse that keeps moving would keep the panel
    // down.
    if (oeffnen_->Interval() != OEFFNEN_INTERVALL)
        oeffnen_->Interval(OEFFNEN_INTERVALL);
    oeffnen_->Enabled(true);
    schliessen_->Interval(mass_.ruheIntervall);
    schliessen_->Enabled(false);
}

void Schiebetafel::oeffnenTakt() {
    if (hoehe_ < mass_.offen) {
        oben_ -= SCHRITT;
        hoehe_ += SCHRITT;
        legen();
        return;
    }
    oeffnen_->Enabled(false);
    oeffnen_->Interval(0ms);
    schliessen_->Interval(OFFEN_BLEIBEN);
    schliessen_->Enabled(true);
}

void Schiebetafel::schliessenTakt() {
    if (tastatur_)
        return;
    zurueckstellen(mass_.hoehe);
    schliessen_->Enabled(false);
    schliessen_->Interval(0ms);
}
