// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/buttons/Padbild.h"

#include "editors/buttons/Padzeichnung.h"
#include "editors/common/Formhilfen.h"

#include <QAccessible>
#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QtMath>

#include <algorithm>

namespace {

constexpr int ERSTE_ZWEITMARKE = 20;
constexpr int ERSTE_STUMME = 16; ///< 16 to 19 stand on the D-pad and never light up
constexpr qreal RING = 6;        ///< how far a second mark stands off the first one

constexpr int SCHILDRAND = 12;                                     ///< left and right of its text
constexpr int SCHILDLUFT = 5;                                      ///< above and below it
constexpr int SCHILDLUECKE = 4;                                    ///< between two labels at least
constexpr const char* LAENGSTER_NAME = "Browser aktualisieren MM"; ///< a long name of a key fits, with air

/// A mark that lights up over a button. Clicks go through it.
class Padmarke final : public QWidget {
public:
    Padmarke(QWidget* eltern, qreal rundung, bool ring) : QWidget(eltern), rundung_(rundung), ring_(ring) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }
    void anordnen(const QTransform& lage, const QRectF& rechteck) {
        setGeometry(lage.mapRect(rechteck).adjusted(-2, -2, 2, 2).toAlignedRect());
        massstab_ = lage.m11();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter maler(this);
        maler.setRenderHint(QPainter::Antialiasing);
        const auto farbe = palette().color(QPalette::Highlight);
        const auto innen = QRectF(rect()).adjusted(2, 2, -2, -2);
        const qreal strich = std::max(2.0, 2.2 * massstab_);
        // Its edges set it off from a body that may be as light as the highlight.
        maler.setPen(QPen(palette().color(QPalette::WindowText), strich + 1.5));
        maler.drawRoundedRect(innen, rundung_ * massstab_, rundung_ * massstab_);
        maler.setPen(QPen(farbe, strich));
        maler.setBrush(ring_ ? QBrush(Qt::NoBrush) : QBrush(durchscheinend(farbe, 0.38)));
        maler.drawRoundedRect(innen, rundung_ * massstab_, rundung_ * massstab_);
    }

private:
    qreal rundung_;
    bool ring_;
    qreal massstab_ = 1;
};

} // namespace

// --- a label ---

Padschild::Padschild(QWidget* eltern) : QLabel(eltern) {
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignCenter);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
}

void Padschild::setGewaehlt(bool gewaehlt) {
    if (gewaehlt_ == gewaehlt)
        return;
    gewaehlt_ = gewaehlt;
    update();
}

QSize Padschild::minimumSizeHint() const {
    return {fontMetrics().horizontalAdvance("MM") + 2 * SCHILDRAND, fontMetrics().height() + 2 * SCHILDLUFT};
}

void Padschild::paintEvent(QPaintEvent*) {
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    const auto grund = palette().color(QPalette::Base);
    const auto schrift = palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Text);
    const auto betont = palette().color(QPalette::Highlight);
    const auto flaeche = gewaehlt_ ? mischung(grund, betont, 0.22) : grund;
    const qreal strich = gewaehlt_ ? 2 : 1;
    const qreal rand = gewaehlt_ ? 1 : 1.5; // on whole pixels, or the line would fade
    maler.setPen(QPen(abgehoben(gewaehlt_ || ueberfahren_ ? betont : grund, flaeche, schrift), strich));
    maler.setBrush(flaeche);
    maler.drawRoundedRect(QRectF(rect()).adjusted(rand, rand, -rand, -rand), 6, 6);
    maler.setPen(schrift);
    const auto feld = rect().adjusted(SCHILDRAND / 2, 0, -SCHILDRAND / 2, 0);
    maler.drawText(feld, Qt::AlignCenter | Qt::TextSingleLine,
                   fontMetrics().elidedText(text(), Qt::ElideRight, feld.width()));
}

void Padschild::mousePressEvent(QMouseEvent* ereignis) {
    if (ereignis->button() == Qt::LeftButton)
        emit geklickt();
}

void Padschild::enterEvent(QEnterEvent*) {
    ueberfahren_ = true;
    update();
}

void Padschild::leaveEvent(QEvent*) {
    ueberfahren_ = false;
    update();
}

// --- the picture ---

Padbild::Padbild(QWidget* eltern) : QWidget(eltern) {
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName("Knöpfe des Gamepads");
    for (int nummer = 0; nummer < MARKEN; ++nummer) {
        const bool ring = nummer >= ERSTE_STUMME;
        const auto& ort = platz(nummer < ERSTE_STUMME       ? nummer
                                : nummer < ERSTE_ZWEITMARKE ? nummer - 4
                                                            : nummer - ERSTE_ZWEITMARKE);
        auto* marke = new Padmarke(this, ort.rundung + (ring ? RING : 0), ring);
        marken_[static_cast<std::size_t>(nummer)] = benannt(marke, feldname("Shape2", nummer));
    }
    for (int taste = 0; taste < SCHILDER; ++taste) {
        auto* schild = benannt(new Padschild(this), feldname("lblInfo", taste));
        connect(schild, &Padschild::geklickt, this, [this, taste] { emit geklickt(taste); });
        schilder_[static_cast<std::size_t>(taste)] = schild;
    }
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Padbild::markenZeigen(int erste, int zweite) {
    for (int nummer = 0; nummer < MARKEN; ++nummer)
        marken_[static_cast<std::size_t>(nummer)]->setVisible(nummer == erste || nummer == zweite);
}

void Padbild::setGewaehlt(int taste) {
    gewaehlt_ = taste;
    for (int i = 0; i < SCHILDER; ++i)
        lblInfo(i).setGewaehlt(i == taste);
    fokusMelden();
}

int Padbild::tasteVon(const Padschild& schild) const {
    return static_cast<int>(std::ranges::find(schilder_, &schild) - schilder_.begin());
}

// The list has the focus; to who listens, its chosen button does.
void Padbild::fokusMelden() {
    if (gewaehlt_ < 0 || !hasFocus() || !QAccessible::isActive())
        return;
    QAccessibleEvent ereignis(&lblInfo(gewaehlt_), QAccessible::Focus);
    QAccessible::updateAccessibility(&ereignis);
}

void Padbild::focusInEvent(QFocusEvent* ereignis) {
    QWidget::focusInEvent(ereignis);
    fokusMelden();
}

int Padbild::schildbreite() const {
    return fontMetrics().horizontalAdvance(LAENGSTER_NAME) + 2 * SCHILDRAND;
}

QSize Padbild::minimumSizeHint() const {
    const qreal mass = (schilder_[0]->minimumSizeHint().height() + SCHILDLUECKE) / ZEILENABSTAND;
    return {2 * schildbreite() + qCeil(ZEICHNUNG.width() * mass), qCeil(ZEICHNUNG.height() * mass)};
}

QSize Padbild::sizeHint() const {
    const auto mindestens = minimumSizeHint();
    return {std::max(mindestens.width(), 2 * schildbreite() + qCeil(ZEICHNUNG.width())),
            std::max(mindestens.height(), qCeil(ZEICHNUNG.height()))};
}

qreal Padbild::masstab() const {
    return std::min((width() - 2.0 * schildbreite()) / ZEICHNUNG.width(), height() / ZEICHNUNG.height());
}

QTransform Padbild::ausZeichnung() const {
    const qreal mass = masstab();
    return QTransform(mass, 0, 0, mass, (width() - ZEICHNUNG.width() * mass) / 2,
                      (height() - ZEICHNUNG.height() * mass) / 2);
}

void Padbild::anordnen() {
    imgHintergrund_ = {};
    const auto lage = ausZeichnung();
    for (const auto& ort : PLAETZE) {
        const bool links = ort.seite == Seite::links;
        const auto kante =
            lage.map(QPointF(links ? 0 : ZEICHNUNG.width(), (ort.zeile + 0.5) * ZEILENABSTAND));
        const int hoehe = lblInfo(ort.taste).minimumSizeHint().height();
        const int breite = schildbreite();
        lblInfo(ort.taste).setGeometry(qRound(kante.x()) - (links ? breite : 0),
                                       qRound(kante.y()) - hoehe / 2, breite, hoehe);
        const auto marke = [&](int nummer, const QRectF& rechteck) {
            static_cast<Padmarke*>(marken_[static_cast<std::size_t>(nummer)])->anordnen(lage, rechteck);
        };
        marke(ort.taste, ort.marke);
        const auto aussen = ort.marke.adjusted(-RING, -RING, RING, RING);
        if (ort.taste < MARKEN - ERSTE_ZWEITMARKE)
            marke(ort.taste + ERSTE_ZWEITMARKE, aussen);
        if (ort.taste >= ERSTE_STUMME - 4)
            marke(ort.taste + 4, aussen);
    }
}

void Padbild::paintEvent(QPaintEvent*) {
    if (imgHintergrund_.isNull()) {
        const qreal dichte = devicePixelRatioF();
        imgHintergrund_ = QPixmap(size() * dichte);
        imgHintergrund_.setDevicePixelRatio(dichte);
        imgHintergrund_.fill(Qt::transparent);
        QPainter maler(&imgHintergrund_);
        maler.setRenderHint(QPainter::Antialiasing);
        maler.setTransform(ausZeichnung(), true);
        padZeichnen(maler, palette());
    }
    QPainter maler(this);
    maler.drawPixmap(0, 0, imgHintergrund_);
    if (hasFocus()) {
        maler.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        maler.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void Padbild::resizeEvent(QResizeEvent*) {
    anordnen();
}

void Padbild::changeEvent(QEvent* ereignis) {
    const auto art = ereignis->type();
    if (art == QEvent::PaletteChange || art == QEvent::FontChange || art == QEvent::StyleChange ||
        art == QEvent::EnabledChange) {
        updateGeometry();
        anordnen();
        update();
    }
    QWidget::changeEvent(ereignis);
}

std::optional<int> Padbild::tasteBei(QPointF stelle) const {
    const auto punkt = ausZeichnung().inverted().map(stelle);
    for (const auto& ort : PLAETZE)
        if (ort.marke.contains(punkt))
            return ort.taste;
    return std::nullopt;
}

void Padbild::mousePressEvent(QMouseEvent* ereignis) {
    if (ereignis->button() != Qt::LeftButton)
        return;
    if (const auto taste = tasteBei(ereignis->position()))
        emit geklickt(*taste);
}

void Padbild::keyPressEvent(QKeyEvent* ereignis) {
    struct Schritt {
        int taste;
        int weite; ///< in PLAETZE
    };
    static constexpr std::array<Schritt, 4> SCHRITTE{
        {{Qt::Key_Up, -1}, {Qt::Key_Down, 1}, {Qt::Key_Left, -SCHILDZEILEN}, {Qt::Key_Right, SCHILDZEILEN}}};
    const auto schritt = std::ranges::find(SCHRITTE, ereignis->key(), &Schritt::taste);
    if (schritt == SCHRITTE.end()) {
        QWidget::keyPressEvent(ereignis);
        return;
    }
    const auto jetzt = std::ranges::find(PLAETZE, gewaehlt_, &Platz::taste);
    const int ziel = jetzt == PLAETZE.end() ? 0 : static_cast<int>(jetzt - PLAETZE.begin()) + schritt->weite;
    if (ziel >= 0 && ziel < SCHILDER)
        emit geklickt(PLAETZE[static_cast<std::size_t>(ziel)].taste);
}
