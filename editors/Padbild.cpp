#include "editors/Padbild.h"

#include "editors/Formhilfen.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

#include <algorithm>
#include <cstdlib>

namespace {

// The drawing's own units.
constexpr QSizeF ZEICHNUNG{560, 340};
constexpr int ZEILEN = 8;
constexpr qreal ZEILENABSTAND = ZEICHNUNG.height() / ZEILEN;

enum class Seite { links, rechts };

// Where things of one button lie, in the drawing's units. `weg` leads from the label into the picture and
// ends on the button; `marke` lights up there. Rounded corners of half the height make a circle.
struct Platz {
    int taste;
    Seite seite;
    int zeile; ///< of the column of labels on its side
    std::array<QPointF, 3> weg;
    QRectF marke;
    qreal rundung;
};

// A column of labels from top to bottom, then the other. The sides mirror each other.
constexpr std::array<Platz, Padbild::SCHILDER> PLAETZE{{
    {6, Seite::links, 0, {{{20, 21}, {70, 21}, {108, 34}}}, {98, 20, 68, 32}, 12},
    {4, Seite::links, 1, {{{20, 64}, {70, 64}, {100, 64}}}, {88, 54, 88, 20}, 9},
    {8, Seite::links, 2, {{{24, 106}, {42, 89}, {190, 89}}}, {216, 126, 40, 17}, 8.5},
    {12, Seite::links, 3, {{{32, 149}, {69, 112}, {117, 107}}}, {113, 98, 30, 38}, 6},
    {15, Seite::links, 4, {{{34, 191}, {79, 146}, {91, 134}}}, {84, 127, 38, 30}, 6},
    {14, Seite::links, 5, {{{50, 234}, {104, 180}, {117, 178}}}, {113, 148, 30, 38}, 6},
    {13, Seite::links, 6, {{{86, 276}, {156, 206}, {159, 152}}}, {134, 127, 38, 30}, 6},
    {10, Seite::links, 7, {{{100, 319}, {174, 245}, {200, 222}}}, {172, 168, 76, 76}, 38},
    {7, Seite::rechts, 0, {{{540, 21}, {490, 21}, {452, 34}}}, {394, 20, 68, 32}, 12},
    {5, Seite::rechts, 1, {{{540, 64}, {490, 64}, {460, 64}}}, {384, 54, 88, 20}, 9},
    {9, Seite::rechts, 2, {{{536, 106}, {518, 89}, {370, 89}}}, {304, 126, 40, 17}, 8.5},
    {0, Seite::rechts, 3, {{{528, 149}, {491, 112}, {446, 108}}}, {413, 85, 38, 38}, 19},
    {1, Seite::rechts, 4, {{{526, 191}, {489, 154}, {482, 147}}}, {451, 123, 38, 38}, 19},
    {2, Seite::rechts, 5, {{{510, 234}, {460, 184}, {446, 184}}}, {413, 161, 38, 38}, 19},
    {3, Seite::rechts, 6, {{{474, 276}, {404, 206}, {396, 156}}}, {375, 123, 38, 38}, 19},
    {11, Seite::rechts, 7, {{{460, 319}, {386, 245}, {360, 222}}}, {312, 168, 76, 76}, 38},
}};

// From the last point of their ways to the pills in the middle.
constexpr std::array<std::pair<int, QPointF>, 2> FORTSETZUNG{{{8, {226, 130}}, {9, {334, 130}}}};

constexpr int ERSTE_ZWEITMARKE = 20;
constexpr int ERSTE_STUMME = 16; ///< 16 to 19 stand on the D-pad and never light up
constexpr qreal RING = 6;        ///< how far a second mark stands off the first one

constexpr QPointF KREUZMITTE{128, 142};
constexpr std::array<QPointF, 2> STICKMITTEN{{{210, 206}, {350, 206}}};
constexpr qreal STICKRADIUS = 38;

constexpr int SCHILDRAND = 12;                                     ///< left and right of its text
constexpr int SCHILDLUFT = 5;                                      ///< above and below it
constexpr int SCHILDLUECKE = 4;                                    ///< between two labels at least
constexpr const char* LAENGSTER_NAME = "Browser aktualisieren MM"; ///< a long name of a key fits, with air

const Platz& platz(int taste) {
    return *std::ranges::find(PLAETZE, taste, &Platz::taste);
}

QColor mischung(const QColor& a, const QColor& b, qreal anteil) {
    const auto kanal = [anteil](float x, float y) {
        return static_cast<float>(x * (1 - anteil) + y * anteil);
    };
    return QColor::fromRgbF(kanal(a.redF(), b.redF()), kanal(a.greenF(), b.greenF()),
                            kanal(a.blueF(), b.blueF()));
}

QColor durchscheinend(QColor farbe, qreal deckung) {
    farbe.setAlphaF(static_cast<float>(deckung));
    return farbe;
}

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
        maler.setPen(QPen(farbe, std::max(2.0, 2.2 * massstab_)));
        maler.setBrush(ring_ ? QBrush(Qt::NoBrush) : QBrush(durchscheinend(farbe, 0.38)));
        const auto innen = QRectF(rect()).adjusted(2, 2, -2, -2);
        maler.drawRoundedRect(innen, rundung_ * massstab_, rundung_ * massstab_);
    }

private:
    qreal rundung_;
    bool ring_;
    qreal massstab_ = 1;
};

// The colours of the drawing, made of the palette so that it fits light and dark surroundings.
struct Farben {
    explicit Farben(const QPalette& palette) {
        const auto grund = palette.color(QPalette::Window);
        const bool dunkel = grund.lightnessF() < 0.5F;
        koerperOben = dunkel ? mischung(grund, Qt::white, 0.24) : mischung(grund, Qt::black, 0.02);
        koerperUnten = dunkel ? mischung(grund, Qt::white, 0.10) : mischung(grund, Qt::black, 0.20);
        rand = dunkel ? mischung(grund, Qt::white, 0.42) : mischung(grund, Qt::black, 0.45);
        glanz = durchscheinend(Qt::white, dunkel ? 0.16 : 0.75);
        schatten = durchscheinend(Qt::black, dunkel ? 0.42 : 0.22);
        tief = dunkel ? mischung(grund, Qt::black, 0.45) : QColor(0x3a, 0x3f, 0x47);
        knopfOben = dunkel ? QColor(0x4a, 0x4f, 0x58) : QColor(0x5b, 0x62, 0x6d);
        knopfUnten = dunkel ? QColor(0x26, 0x29, 0x2e) : QColor(0x2f, 0x33, 0x3a);
        linie = durchscheinend(palette.color(QPalette::WindowText), 0.55);
        punkt = palette.color(QPalette::Highlight);
    }
    QColor koerperOben, koerperUnten, rand, glanz, schatten, tief, knopfOben, knopfUnten, linie, punkt;

    QBrush knopf(const QRectF& flaeche) const {
        QLinearGradient verlauf(flaeche.topLeft(), flaeche.bottomLeft());
        verlauf.setColorAt(0, knopfOben);
        verlauf.setColorAt(1, knopfUnten);
        return verlauf;
    }
};

// What is drawn into the four buttons on the right: their shapes, each in a colour.
constexpr std::array<QRgb, 4> ZEICHENFARBEN{0xfff0b44c, 0xff4cc3b5, 0xff8f9bf0, 0xfff08a72};

QPainterPath zeichenpfad(int taste, QPointF mitte) {
    constexpr qreal R = 8;
    QPainterPath pfad;
    switch (taste) {
    case 0:
        pfad.addPolygon(QPolygonF{mitte + QPointF(0, -R), mitte + QPointF(R, R * 0.7),
                                  mitte + QPointF(-R, R * 0.7), mitte + QPointF(0, -R)});
        pfad.closeSubpath();
        break;
    case 1:
        pfad.addEllipse(mitte, R * 0.9, R * 0.9);
        break;
    case 2:
        pfad.moveTo(mitte + QPointF(-R * 0.75, -R * 0.75));
        pfad.lineTo(mitte + QPointF(R * 0.75, R * 0.75));
        pfad.moveTo(mitte + QPointF(R * 0.75, -R * 0.75));
        pfad.lineTo(mitte + QPointF(-R * 0.75, R * 0.75));
        break;
    default:
        pfad.addRect(QRectF(mitte - QPointF(R, R) * 0.78, QSizeF(R, R) * 1.56));
    }
    return pfad;
}

// The right half from the top to the bottom of the middle; the left one mirrors it.
QPainterPath koerperpfad() {
    QPainterPath halb({280, 84});
    halb.lineTo(352, 84);
    halb.cubicTo(368, 84, 372, 73, 390, 72);
    halb.lineTo(452, 72);
    halb.cubicTo(488, 72, 508, 92, 518, 124);
    halb.cubicTo(534, 176, 548, 236, 542, 284);
    halb.cubicTo(537, 326, 500, 334, 478, 308);
    halb.cubicTo(458, 284, 446, 262, 410, 262);
    halb.lineTo(280, 262);
    halb.closeSubpath();
    const auto spiegel = QTransform(-1, 0, 0, 1, ZEICHNUNG.width(), 0);
    return halb.united(spiegel.map(halb)).simplified();
}

// A trigger: narrower towards the top.
QPainterPath abzugspfad(const QRectF& marke) {
    constexpr qreal SCHRAEGE = 7;
    constexpr qreal BOGEN = 12;
    QPainterPath pfad(marke.bottomLeft() + QPointF(0, BOGEN));
    pfad.lineTo(marke.topLeft() + QPointF(SCHRAEGE * 0.7, BOGEN));
    pfad.quadTo(marke.topLeft() + QPointF(SCHRAEGE, 0), marke.topLeft() + QPointF(SCHRAEGE + BOGEN, 0));
    pfad.lineTo(marke.topRight() - QPointF(SCHRAEGE + BOGEN, 0));
    pfad.quadTo(marke.topRight() - QPointF(SCHRAEGE, 0), marke.topRight() + QPointF(-SCHRAEGE * 0.7, BOGEN));
    pfad.lineTo(marke.bottomRight() + QPointF(0, BOGEN));
    return pfad;
}

// Both shoulder buttons of each side run on behind the body.
void schultern(QPainter& maler, const Farben& farben) {
    const auto zeichneForm = [&](const QPainterPath& pfad) {
        maler.setPen(QPen(farben.tief, 1.2));
        maler.setBrush(farben.knopf(pfad.boundingRect()));
        maler.drawPath(pfad);
        maler.save();
        maler.setClipPath(pfad);
        maler.setBrush(Qt::NoBrush);
        maler.setPen(QPen(durchscheinend(Qt::white, 0.25), 2));
        maler.drawPath(pfad.translated(0, 1.6));
        maler.restore();
    };
    for (const int taste : {6, 7})
        zeichneForm(abzugspfad(platz(taste).marke));
    for (const int taste : {4, 5}) {
        QPainterPath pfad;
        pfad.addRoundedRect(platz(taste).marke.adjusted(0, 0, 0, 14), platz(taste).rundung,
                            platz(taste).rundung);
        zeichneForm(pfad);
    }
}

void koerper(QPainter& maler, const Farben& farben) {
    const auto pfad = koerperpfad();
    maler.setPen(Qt::NoPen);
    for (int stufe = 4; stufe > 0; --stufe) { // soft shadow
        maler.setBrush(durchscheinend(farben.schatten, farben.schatten.alphaF() / 4));
        maler.drawPath(pfad.translated(0, stufe * 1.6));
    }
    QLinearGradient verlauf(0, 72, 0, 330);
    verlauf.setColorAt(0, farben.koerperOben);
    verlauf.setColorAt(1, farben.koerperUnten);
    maler.setBrush(verlauf);
    maler.setPen(QPen(farben.rand, 1.4));
    maler.drawPath(pfad);
    maler.save();
    maler.setClipPath(pfad);
    maler.setBrush(Qt::NoBrush);
    maler.setPen(QPen(farben.glanz, 2.5));
    maler.drawPath(pfad.translated(0, 2.2)); // light from above
    maler.restore();
}

void mulde(QPainter& maler, const Farben& farben, QPointF mitte, qreal radius) {
    QRadialGradient verlauf(mitte - QPointF(0, radius * 0.3), radius * 1.3);
    verlauf.setColorAt(0, durchscheinend(farben.schatten, farben.schatten.alphaF() * 0.9));
    verlauf.setColorAt(1, durchscheinend(farben.schatten, farben.schatten.alphaF() * 0.25));
    maler.setPen(Qt::NoPen);
    maler.setBrush(verlauf);
    maler.drawEllipse(mitte, radius, radius);
}

void steuerkreuz(QPainter& maler, const Farben& farben) {
    mulde(maler, farben, KREUZMITTE, 54);
    QPainterPath kreuz;
    kreuz.addRoundedRect(QRectF(113, 98, 30, 88), 6, 6);
    QPainterPath quer;
    quer.addRoundedRect(QRectF(84, 127, 88, 30), 6, 6);
    kreuz = kreuz.united(quer);
    maler.setPen(QPen(farben.tief, 1.2));
    maler.setBrush(farben.knopf(kreuz.boundingRect()));
    maler.drawPath(kreuz);
    maler.setPen(Qt::NoPen);
    maler.setBrush(durchscheinend(Qt::white, 0.55));
    for (int viertel = 0; viertel < 4; ++viertel) {
        maler.save();
        maler.translate(KREUZMITTE);
        maler.rotate(90 * viertel);
        maler.drawPolygon(QPolygonF{{0, -36}, {6, -27}, {-6, -27}});
        maler.restore();
    }
}

void zeichenknoepfe(QPainter& maler, const Farben& farben) {
    mulde(maler, farben, {ZEICHNUNG.width() - KREUZMITTE.x(), KREUZMITTE.y()}, 66);
    for (int taste = 0; taste < 4; ++taste) {
        const auto flaeche = platz(taste).marke;
        maler.setPen(QPen(farben.tief, 1.2));
        maler.setBrush(farben.knopf(flaeche));
        maler.drawEllipse(flaeche);
        maler.setBrush(Qt::NoBrush);
        maler.setPen(QPen(QColor::fromRgba(ZEICHENFARBEN[static_cast<std::size_t>(taste)]), 2.4,
                          Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        maler.drawPath(zeichenpfad(taste, flaeche.center()));
    }
}

void mittelknoepfe(QPainter& maler, const Farben& farben) {
    maler.setPen(QPen(farben.tief, 1));
    for (const int taste : {8, 9}) {
        const auto& marke = platz(taste).marke;
        maler.setBrush(farben.knopf(marke));
        maler.drawRoundedRect(marke, platz(taste).rundung, platz(taste).rundung);
    }
}

void sticks(QPainter& maler, const Farben& farben) {
    for (const auto& mitte : STICKMITTEN) {
        mulde(maler, farben, mitte, STICKRADIUS + 8);
        maler.setPen(QPen(farben.tief, 1.4));
        const QRectF aussen(mitte - QPointF(STICKRADIUS, STICKRADIUS), QSizeF(1, 1) * (2 * STICKRADIUS));
        maler.setBrush(farben.knopf(aussen));
        maler.drawEllipse(aussen);
        QRadialGradient kuhle(mitte - QPointF(0, 10), STICKRADIUS * 1.1);
        kuhle.setColorAt(0, farben.knopfUnten);
        kuhle.setColorAt(1, farben.knopfOben);
        maler.setPen(QPen(durchscheinend(Qt::white, 0.18), 1.2));
        maler.setBrush(kuhle);
        maler.drawEllipse(mitte, STICKRADIUS * 0.72, STICKRADIUS * 0.72);
    }
}

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
    const qreal strich = gewaehlt_ ? 2 : 1;
    maler.setPen(QPen(gewaehlt_ || ueberfahren_ ? betont : mischung(grund, schrift, 0.35), strich));
    maler.setBrush(gewaehlt_ ? mischung(grund, betont, 0.22) : grund);
    maler.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 6, 6);
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
    for (int nummer = 0; nummer < MARKEN; ++nummer) {
        const bool ring = nummer >= ERSTE_STUMME;
        const auto& ort = platz(nummer < ERSTE_STUMME       ? nummer
                                : nummer < ERSTE_ZWEITMARKE ? nummer - 4
                                                            : nummer - ERSTE_ZWEITMARKE);
        auto* marke = new Padmarke(this, ort.rundung + (ring ? RING : 0), ring);
        Shape2_[static_cast<std::size_t>(nummer)] = benannt(marke, feldname("Shape2", nummer));
    }
    for (int taste = 0; taste < SCHILDER; ++taste) {
        auto* schild = benannt(new Padschild(this), feldname("lblInfo", taste));
        connect(schild, &Padschild::geklickt, this, [this, taste] { emit geklickt(taste); });
        lblInfo_[static_cast<std::size_t>(taste)] = schild;
    }
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Padbild::markenZeigen(int erste, int zweite) {
    for (int nummer = 0; nummer < MARKEN; ++nummer)
        Shape2_[static_cast<std::size_t>(nummer)]->setVisible(nummer == erste || nummer == zweite);
}

void Padbild::setGewaehlt(int taste) {
    gewaehlt_ = taste;
    for (int i = 0; i < SCHILDER; ++i)
        lblInfo(i).setGewaehlt(i == taste);
}

int Padbild::schildbreite() const {
    return fontMetrics().horizontalAdvance(LAENGSTER_NAME) + 2 * SCHILDRAND;
}

QSize Padbild::minimumSizeHint() const {
    const qreal mass = (lblInfo_[0]->minimumSizeHint().height() + SCHILDLUECKE) / ZEILENABSTAND;
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
            static_cast<Padmarke*>(Shape2_[static_cast<std::size_t>(nummer)])->anordnen(lage, rechteck);
        };
        marke(ort.taste, ort.marke);
        const auto aussen = ort.marke.adjusted(-RING, -RING, RING, RING);
        if (ort.taste < MARKEN - ERSTE_ZWEITMARKE)
            marke(ort.taste + ERSTE_ZWEITMARKE, aussen);
        if (ort.taste >= ERSTE_STUMME - 4)
            marke(ort.taste + 4, aussen);
    }
}

void Padbild::zeichnen(QPainter& maler) const {
    const Farben farben(palette());
    schultern(maler, farben);
    koerper(maler, farben);
    steuerkreuz(maler, farben);
    zeichenknoepfe(maler, farben);
    mittelknoepfe(maler, farben);
    sticks(maler, farben);
    for (const auto& ort : PLAETZE) {
        QPolygonF weg(QList<QPointF>(ort.weg.begin(), ort.weg.end()));
        weg.prepend({ort.seite == Seite::links ? 0 : ZEICHNUNG.width(), ort.weg.front().y()});
        for (const auto& [taste, ende] : FORTSETZUNG)
            if (taste == ort.taste)
                weg.append(ende);
        maler.setBrush(Qt::NoBrush);
        maler.setPen(QPen(farben.linie, 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        maler.drawPolyline(weg);
        maler.setPen(Qt::NoPen);
        maler.setBrush(farben.punkt);
        maler.drawEllipse(weg.back(), 3, 3);
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
        zeichnen(maler);
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
        {{Qt::Key_Up, -1}, {Qt::Key_Down, 1}, {Qt::Key_Left, -ZEILEN}, {Qt::Key_Right, ZEILEN}}};
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
