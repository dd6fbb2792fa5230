// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Stickebene.h"

#include "editors/common/Formhilfen.h"
#include "editors/stick/Zustandstext.h"
#include "editors/stick/Zustandszeile.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace {

/// What tells the four directions apart on the plane.
struct Richtungsbild {
    const char* linien;
    const char* pfeile;
    bool senkrecht;   ///< its lines
    double grad;      ///< where its arrows point, clockwise from up
    int pfeilversatz; ///< near edge of an arrow from its line, plane units
};
constexpr std::array<Richtungsbild, RICHTUNGEN> RICHTUNGSBILDER{{
    {"LLinks", "LPfeil", true, 270, -1050},
    {"LRechts", "RPfeil", true, 90, 200},
    {"LOben", "OPfeil", false, 0, -1500},
    {"LUnten", "UPfeil", false, 180, 200},
}};

constexpr int PFEILRAND = 100; ///< arrows stand along the upper and the left edge
// So large that arrows of lines 1000 apart do not cover each other.
constexpr int PFEIL_LAENGS = 850;
constexpr int PFEIL_QUER = 1300;

constexpr const char* PFEILHINWEIS = "Linke Maustaste = Neue Linie / Rechte Maustaste Linie löschen";

constexpr QRgb FELDROT = qRgb(230, 0, 0);
constexpr QRgb FELDBLAU = qRgb(0, 60, 255);
constexpr double FELDRUNDUNG = 10;
const QRgb OHNE_BILD = qRgb(128, 136, 144);

} // namespace

Stickebene::Stickebene(QWidget* form) : QWidget(form) {
    setObjectName("Stickebene");
    setMouseTracking(true);
    // A press gives the focus by hand: by the toolkit one on a panel's bare ground would, too.
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    linienBauen();
    RechteckC_ = benannt(new Ebenenrechteck(this, QColor::fromRgb(FELDBLAU), FELDRUNDUNG), "RechteckC");
    RechteckB_ = benannt(new Ebenenrechteck(this, QColor::fromRgb(FELDROT), 0), "RechteckB");
    RechteckB_->hide();
    pfeileBauen();
    Punkt_ = benannt(new Livepunkt(this), "Punkt");
    marke_ = benannt(new Ebenenmarke(this), "Ebenenmarke");
    marke_->hide();
    for (Ebenenteil* teil : {static_cast<Ebenenteil*>(RechteckB_), static_cast<Ebenenteil*>(RechteckC_),
                             static_cast<Ebenenteil*>(Punkt_), static_cast<Ebenenteil*>(marke_)})
        teile_.push_back(teil);
    zustand_ = new Zustandszeile(this);
}

void Stickebene::linienBauen() {
    for (std::size_t d = 0; d < RICHTUNGEN; ++d)
        for (int index = 0; index < LINIENCONTROLS; ++index) {
            auto* linie = benannt(new Ebenenlinie(this, RICHTUNGSBILDER[d].senkrecht),
                                  feldname(RICHTUNGSBILDER[d].linien, index));
            linie->setVisible(index == 0);
            linien_[d][static_cast<std::size_t>(index)].linie = linie;
            teile_.push_back(linie);
        }
}

void Stickebene::pfeileBauen() {
    for (std::size_t d = 0; d < RICHTUNGEN; ++d)
        for (int index = 0; index < LINIENCONTROLS; ++index) {
            auto* pfeil = benannt(new Ebenenpfeil(this, RICHTUNGSBILDER[d].grad),
                                  feldname(RICHTUNGSBILDER[d].pfeile, index));
            pfeil->setVisible(index == 0);
            connect(pfeil, &Ebenenpfeil::gedrueckt, this,
                    [this, d](Qt::MouseButton taste) { emit pfeilGedrueckt(taste, static_cast<int>(d)); });
            linien_[d][static_cast<std::size_t>(index)].pfeil = pfeil;
            teile_.push_back(pfeil);
        }
    for (std::size_t d = 0; d < RICHTUNGEN; ++d)
        for (auto& paar : linien_[d])
            paar.pfeil->setToolTip(paar.pfeil == linien_[d][0].pfeil ? PFEILHINWEIS : pfeilhinweis(d));
}

// --- units ---

QPointF Stickebene::einheitenVon(const QPointF& pixel) const {
    return {pixel.x() * EBENENENDE / std::max(1, width()), pixel.y() * EBENENENDE / std::max(1, height())};
}

QSizeF Stickebene::einheitenVon(const QSize& pixel) const {
    const auto punkt = einheitenVon(QPointF(pixel.width(), pixel.height()));
    return {punkt.x(), punkt.y()};
}

// --- lines ---

Ebenenlinie& Stickebene::linie(std::size_t richtung, int index) {
    return *linien_[richtung][static_cast<std::size_t>(index)].linie;
}

const Ebenenlinie& Stickebene::linie(std::size_t richtung, int index) const {
    return *linien_[richtung][static_cast<std::size_t>(index)].linie;
}

void Stickebene::linieLegen(std::size_t richtung, int index, int wert) {
    const auto& bild = RICHTUNGSBILDER[richtung];
    const auto [linie, pfeil] = linien_[richtung][static_cast<std::size_t>(index)];
    const bool da = wert >= 1;
    const double ort = da ? wert : 0;
    const double neben = da ? wert + static_cast<double>(bild.pfeilversatz) : 0;
    const double rand = da ? PFEILRAND : 0;
    pfeil->setzen(bild.senkrecht ? QRectF(neben, rand, PFEIL_LAENGS, PFEIL_QUER)
                                 : QRectF(rand, neben, PFEIL_QUER, PFEIL_LAENGS));
    linie->ortSetzen(ort);
    linie->strecken();
    pfeil->setVisible(da);
    linie->setVisible(da);
}

std::optional<std::size_t> Stickebene::pfeilBei(QPoint pixel) const {
    const auto* da = childAt(pixel);
    for (std::size_t d = 0; d < RICHTUNGEN; ++d)
        for (const auto& paar : linien_[d])
            if (da && paar.pfeil == da)
                return d;
    return std::nullopt;
}

void Stickebene::markeSetzen(const std::optional<QRectF>& feld) {
    if (feld)
        marke_->setzen(*feld);
    marke_->setVisible(feld.has_value());
}

// --- picture ---

void Stickebene::bildSetzen(const QImage& bild) {
    bild_ = bild;
    gestreckt_ = {};
    update();
}

void Stickebene::streuungSetzen(std::vector<std::uint32_t> takte) {
    streuungAn_ = !takte.empty();
    if (streuungAn_ && takte != streutakte_) {
        streutakte_ = std::move(takte);
        gestreutVeraltet_ = true;
    }
    update();
}

void Stickebene::rauschenZeigen(const std::vector<Rauschmarke>& marken) {
    while (streifen_.size() < marken.size()) {
        auto* streifen = benannt(new Rauschstreifen(this), feldname("Rauschen", int(streifen_.size())));
        streifen->lower(); // lines and arrows lie on it
        streifen_.push_back(streifen);
        teile_.push_back(streifen);
    }
    for (std::size_t i = 0; i < streifen_.size(); ++i) {
        if (i < marken.size())
            streifen_[i]->zeigen(marken[i]);
        streifen_[i]->setVisible(i < marken.size());
    }
}

/// Where symbols have come or gone all is painted anew, each in its turn, so that it is the same as painted
/// whole.
void Stickebene::symboleZeigen() {
    auto neue = symbole_.symbole();
    QRegion flaeche;
    for (const auto& symbol : symbolunterschied(gezeigte_, neue))
        flaeche |= symbolumriss(symbol, size()).toAlignedRect();
    gezeigte_ = std::move(neue);
    stempelVeraltet_ = true;
    update(flaeche & rect());
}

QRectF Stickebene::geraetepixel(const QRect& pixel) const {
    const double dichte = devicePixelRatioF();
    return {QPointF(pixel.topLeft()) * dichte, QSizeF(pixel.size()) * dichte};
}

/// The picture, which fills the plane, with nothing on it.
void Stickebene::bildStrecken() {
    const QSize pixel = (QSizeF(size()) * devicePixelRatioF()).toSize();
    gestreckt_ =
        bild_.isNull() ? QImage() : bild_.scaled(pixel, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    // One that is as the plane needs it already, as those of the screen are, is taken as it is.
    if (gestreckt_.format() != QImage::Format_RGB32) {
        const auto gemaltes = std::exchange(gestreckt_, QImage(pixel, QImage::Format_RGB32));
        gestreckt_.fill(gemaltes.isNull() ? QColor::fromRgb(OHNE_BILD) : Qt::black);
        if (!gemaltes.isNull())
            QPainter(&gestreckt_).drawImage(0, 0, gemaltes);
    }
    gestreutVeraltet_ = true;
    if (!streuungAn_)
        gestreut_ = {};
}

/// Picture and where the stick was. Its image is used again where that can be.
const QImage& Stickebene::gestreut() {
    if (!std::exchange(gestreutVeraltet_, false))
        return gestreut_;
    streubild_.setzen(streutakte_, istHell(gestreckt_));
    if (streubild_.leer())
        return gestreut_ = gestreckt_;
    if (gestreut_.size() != gestreckt_.size() || !gestreut_.isDetached())
        gestreut_ = QImage(gestreckt_.size(), gestreckt_.format());
    streubild_.mischen(gestreckt_, gestreut_, gestreut_.rect());
    return gestreut_;
}

void Stickebene::symboleStempeln() {
    stempel_.setzen(gezeigte_, size(), devicePixelRatioF());
    stempelVeraltet_ = false;
}

void Stickebene::paintEvent(QPaintEvent* ereignis) {
    if (gestreckt_.size() != (QSizeF(size()) * devicePixelRatioF()).toSize()) {
        bildStrecken();
        stempelVeraltet_ = true;
    }
    if (stempelVeraltet_)
        symboleStempeln();
    const auto& grund = streuungAn_ ? gestreut() : gestreckt_;
    QPainter maler(this);
    for (const auto& teil : ereignis->region())
        maler.drawImage(QRectF(teil), grund, geraetepixel(teil));
    stempel_.legen(maler, ereignis->region());
}

void Stickebene::resizeEvent(QResizeEvent*) {
    for (auto* teil : teile_)
        teil->legen();
    zustand_->legen();
    emit groesseGeaendert();
}

// --- mouse ---

void Stickebene::mousePressEvent(QMouseEvent* ereignis) {
    emit gedrueckt(ereignis->button(), einheitenVon(ereignis->position()));
}

void Stickebene::mouseMoveEvent(QMouseEvent* ereignis) {
    emit bewegt(einheitenVon(ereignis->position()));
}

void Stickebene::leaveEvent(QEvent*) {
    emit verlassen();
}

// --- keyboard ---

// What a control on a panel leaves of its keys comes by here, too.
void Stickebene::keyPressEvent(QKeyEvent* ereignis) {
    if (!hasFocus() || !tastendruck || !tastendruck(*ereignis))
        QWidget::keyPressEvent(ereignis);
}

void Stickebene::focusInEvent(QFocusEvent* ereignis) {
    const auto grund = ereignis->reason();
    if (grund == Qt::TabFocusReason || grund == Qt::BacktabFocusReason || grund == Qt::ShortcutFocusReason)
        emit tastaturKommt();
}

void Stickebene::focusOutEvent(QFocusEvent*) {
    emit tastaturGeht();
}
