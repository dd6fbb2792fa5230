// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/run/Sofortschrift.h"

#include "editors/common/Kurzlabel.h"

#include <QEvent>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace {

using namespace std::chrono_literals;

// How often it is asked whether the server has shown the last label.
constexpr auto NACHFRAGE = 10ms;

// What the way to the server takes at once, with room for what else is on it. A larger label is the
// toolkit's.
constexpr qsizetype PLATZ = 160 * 1024;

void merken(std::vector<QLabel*>& liste, QLabel& label) {
    if (std::ranges::find(liste, &label) == liste.end())
        liste.push_back(&label);
}

qsizetype bytes(const QLabel& label, qreal masstab) {
    return qsizetype(4 * masstab * masstab) * label.width() * label.height();
}

bool aufEinerFarbe(const QLabel& label) {
    return label.palette().brush(label.backgroundRole()).style() == Qt::SolidPattern;
}

/// As a painter of the label itself would be, over its background.
void kurzesMalen(const Kurzlabel& label, QImage& bild) {
    const auto meter = [](int zoll) { return qRound(zoll / 0.0254); };
    bild.setDotsPerMeterX(meter(label.logicalDpiX())); // by which a font has its size
    bild.setDotsPerMeterY(meter(label.logicalDpiY()));
    bild.fill(label.palette().color(label.backgroundRole()));
    QPainter maler(&bild);
    maler.setFont(label.font());
    maler.setPen(label.palette().color(label.foregroundRole()));
    maler.setLayoutDirection(label.layoutDirection());
    label.malen(maler);
}

/// The label as the toolkit would paint it, in pixels of the screen. What changes all the time is a
/// Kurzlabel, which is drawn without asking the whole window first whether it is laid out.
QImage gemalt(QLabel& label, qreal masstab) {
    QImage bild(label.size() * masstab, QImage::Format_RGB32);
    bild.setDevicePixelRatio(masstab);
    if (const auto* kurzes = dynamic_cast<const Kurzlabel*>(&label); kurzes && aufEinerFarbe(label))
        kurzesMalen(*kurzes, bild);
    else
        label.render(&bild);
    return bild;
}

/// Whether all of the label is in sight, and lies on whole pixels of the screen.
bool ganzZuSehen(const QLabel& label, qreal masstab) {
    return masstab == std::floor(masstab) && label.visibleRegion() == QRegion(label.rect()) &&
           bytes(label, masstab) <= PLATZ;
}

} // namespace

Sofortschrift::Sofortschrift(QWidget& fenster, Sofortbild* bild, QString ersatztitel)
    : fenster_(fenster), bild_(bild), ersatztitel_(std::move(ersatztitel)) {
    takt_.setSingleShot(true);
    takt_.setTimerType(Qt::PreciseTimer);
    connect(&takt_, &QTimer::timeout, this, [this] { zeichnen(); });
    fenster_.installEventFilter(this);
}

void Sofortschrift::schreiben(QLabel& label, const QString& text) {
    if (label.text() != text)
        aendern(label, [&] { label.setText(text); });
}

// --- caption ---

void Sofortschrift::betiteln(const QString& titel) {
    if (titel == titel_)
        return;
    titel_ = titel;
    if (titelVorbei())
        titelVoraus_ = true;
    else
        titelDemToolkit(titel);
}

/// In a window of another program the user plays; he may see the caption all the same, in a list of windows.
bool Sofortschrift::titelVorbei() {
    return bild_ && fenster_.windowHandle() && !fenster_.isActiveWindow() &&
           bild_->betiteln(fenster_.internalWinId(),
                           (titel_.isEmpty() ? ersatztitel_ : titel_).toStdString());
}

void Sofortschrift::titelDemToolkit(const QString& titel) {
    fenster_.setWindowTitle(titel); // which does nothing where it believes that this one is there
    auto* griff = fenster_.windowHandle();
    if (griff && (std::exchange(titelVoraus_, false) || titel.isEmpty()))
        griff->setTitle(titel.isEmpty() ? ersatztitel_ : titel);
}

// --- labels ---

void Sofortschrift::aendern(QLabel& label, const std::function<void()>& aenderung) {
    if (!abseits() || lage() == Sofortbild::Lage::Unbekannt ||
        !ganzZuSehen(label, fenster_.devicePixelRatioF()))
        return aenderung();
    label.setAttribute(Qt::WA_UpdatesDisabled); // not setUpdatesEnabled, which paints when they are on again
    aenderung();
    label.setAttribute(Qt::WA_UpdatesDisabled, false);
    merken(veraltete_, label);
    merken(offene_, label);
    if (!takt_.isActive())
        takt_.start(0);
}

/// In sight, and the user is not there: what he does in it, the toolkit has to paint anyway.
bool Sofortschrift::abseits() const {
    const auto* griff = fenster_.windowHandle();
    return bild_ && griff && griff->isExposed() && !fenster_.isActiveWindow() && !fenster_.underMouse();
}

Sofortbild::Lage Sofortschrift::lage() const {
    return bild_->lage(fenster_.internalWinId());
}

void Sofortschrift::zeichnen() {
    if (offene_.empty())
        return;
    if (!abseits() || lage() == Sofortbild::Lage::Unbekannt)
        return nachholen();
    if (lage() == Sofortbild::Lage::Frei)
        for (auto platz = PLATZ; !offene_.empty() && erstesZeichnen(platz);)
            ;
    if (offene_.empty())
        takt_.stop();
    else
        takt_.start(NACHFRAGE);
}

/// False where there is no room for it now. What is left is the toolkit's where it can't be drawn at all.
bool Sofortschrift::erstesZeichnen(qsizetype& platz) {
    const qreal masstab = fenster_.devicePixelRatioF();
    auto& label = *offene_.front();
    if (!ganzZuSehen(label, masstab)) {
        nachholen();
        return false;
    }
    platz -= bytes(label, masstab);
    if (platz < 0)
        return false;
    offene_.erase(offene_.begin());
    const auto bild = gemalt(label, masstab);
    const auto ort = label.mapTo(&fenster_, QPoint()) * masstab;
    const auto* pixel = reinterpret_cast<const std::uint32_t*>(bild.constBits());
    bild_->zeigen({ort.x(), ort.y(), bild.width(), bild.height()},
                  {pixel, static_cast<std::size_t>(bild.width()) * static_cast<std::size_t>(bild.height())});
    return true;
}

void Sofortschrift::nachholen() {
    for (auto* label : veraltete_)
        label->update();
    veraltete_.clear();
    offene_.clear();
    if (titelVoraus_)
        titelDemToolkit(titel_);
}

void Sofortschrift::fensterDa() {
    if (fenster_.windowTitle().isEmpty())
        fenster_.windowHandle()->setTitle(ersatztitel_);
    if (!bild_)
        return;
    fenster_.windowHandle()->installEventFilter(this); // once, however often
    lage();
}

bool Sofortschrift::eventFilter(QObject* empfaenger, QEvent* ereignis) {
    switch (ereignis->type()) {
    case QEvent::Show:
        if (empfaenger == &fenster_ && fenster_.windowHandle())
            fensterDa();
        break;
    case QEvent::Expose:
    case QEvent::Enter:
    case QEvent::ActivationChange:
        nachholen();
        break;
    default:
        break;
    }
    return false;
}
