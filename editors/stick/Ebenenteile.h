// SPDX-License-Identifier: GPL-3.0-or-later
// What lies on the plane of a stick editor: lines, arrows, rectangles, the live point. Each knows its place
// in plane units and lets mouse presses through, but for the arrows.
//
// They lie over any picture of any game, so each is drawn with a halo: light around a dark line, dark around
// a light one.
#pragma once

#include "editors/stick/Ebenenmass.h"

#include <QColor>
#include <QRectF>
#include <QWidget>

#include <cstdint>

/// Colour of a line at rest and of one that is picked up, red in the lowest byte.
inline constexpr std::int32_t LINIENFARBE = 0;
inline constexpr std::int32_t GREIFFARBE = 255;

/// Pixels of a rectangle of a plane that is `groesse` pixels large: unit v lies at v * size / 65535.
QRectF ebenenpixel(const QRectF& einheiten, QSize groesse);

/// Base of all: a child of the plane at a place in plane units.
class Ebenenteil : public QWidget {
    Q_OBJECT

public:
    /// Left, top, width and height in plane units.
    const QRectF& platz() const { return platz_; }
    void setzen(const QRectF& platz);
    /// Lays the widget where its place is at the plane's present size.
    void legen();

protected:
    explicit Ebenenteil(QWidget* ebene);
    /// The widget's pixels for its place in pixels of the plane.
    virtual QRect pixel(const QRectF& platz) const;

private:
    QRectF platz_;
};

/// A line across the plane; colour 0 at rest, 255 while it is picked up.
class Ebenenlinie final : public Ebenenteil {
    Q_OBJECT

public:
    Ebenenlinie(QWidget* ebene, bool senkrecht);

    /// Where the line stands, in plane units: x1 = x2 of a vertical one, y1 = y2 of a horizontal one.
    double ort() const { return senkrecht_ ? platz().x() : platz().y(); }
    void ortSetzen(double ort);
    /// Stretches the line across the plane.
    void strecken();
    std::int32_t farbe() const { return farbe_; }
    void faerben(std::int32_t farbe);

protected:
    void paintEvent(QPaintEvent* ereignis) override;
    QRect pixel(const QRectF& platz) const override;

private:
    bool senkrecht_;
    std::int32_t farbe_ = LINIENFARBE;
};

/// An arrow beside a line, pointing away from the centre. A mouse button on it tells its line's direction.
class Ebenenpfeil final : public Ebenenteil {
    Q_OBJECT

public:
    /// `grad`: where it points, clockwise from up.
    Ebenenpfeil(QWidget* ebene, double grad);

signals:
    void gedrueckt(Qt::MouseButton taste);

protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void mousePressEvent(QMouseEvent* ereignis) override;
    void enterEvent(QEnterEvent* ereignis) override;
    void leaveEvent(QEvent* ereignis) override;

private:
    double grad_;
};

/// The border of a field.
class Ebenenrechteck final : public Ebenenteil {
    Q_OBJECT

public:
    Ebenenrechteck(QWidget* ebene, const QColor& farbe, double rundung);

protected:
    void paintEvent(QPaintEvent* ereignis) override;

private:
    QColor farbe_;
    double rundung_;
};

/// The field at which the keyboard is: a broken border with thick corners, which tells it from the borders of
/// other fields without their colours.
class Ebenenmarke final : public Ebenenteil {
    Q_OBJECT

public:
    explicit Ebenenmarke(QWidget* ebene);

protected:
    void paintEvent(QPaintEvent* ereignis) override;
};

/// A mark of noise, in plane units: a faint stripe along a line, or a hatched band between lines that lie too
/// near to each other.
struct Rauschmarke {
    QRectF platz;
    bool schraffiert = false;
    bool operator==(const Rauschmarke&) const = default;
};

class Rauschstreifen final : public Ebenenteil {
    Q_OBJECT

public:
    explicit Rauschstreifen(QWidget* ebene);
    void zeigen(const Rauschmarke& marke);

protected:
    void paintEvent(QPaintEvent* ereignis) override;

private:
    bool schraffiert_ = false;
};

/// The live position of the stick; its left upper corner is the position.
class Livepunkt final : public Ebenenteil {
    Q_OBJECT

public:
    explicit Livepunkt(QWidget* ebene);

protected:
    void paintEvent(QPaintEvent* ereignis) override;
    QRect pixel(const QRectF& platz) const override;
};
