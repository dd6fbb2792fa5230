// SPDX-License-Identifier: GPL-3.0-or-later
// The plane of a stick editor: a child that fills the form, in raw axis units, with a picture behind all that
// lies on it.
//
// Plane unit v lies at pixel v * size / 65535, whatever the size of the window. The controls on it keep their
// names and indices: `LLinks`(0 to 20), `LPfeil`(0 to 20) and so on.
#pragma once

#include "editors/stick/Ebenenteile.h"
#include "editors/stick/Zonenbild.h"
#include "store/schema/Linientabelle.h"

#include <QImage>
#include <QRegion>
#include <QWidget>

#include <array>
#include <vector>

inline constexpr int LINIENCONTROLS = LINIENPLAETZE; ///< members of each array of lines and arrows

class Stickebene final : public QWidget {
    Q_OBJECT

public:
    explicit Stickebene(QWidget* form);

    /// Plane units of a pixel.
    QPointF einheitenVon(const QPointF& pixel) const;
    /// Plane units of a length in pixels, across and down.
    QSizeF einheitenVon(const QSize& pixel) const;

    Ebenenlinie& linie(std::size_t richtung, int index);
    const Ebenenlinie& linie(std::size_t richtung, int index) const;
    /// Shows the line and the arrow of a control and places them at `wert`; hides them for less than 1.
    void linieLegen(std::size_t richtung, int index, int wert);

    Ebenenrechteck& RechteckB() { return *RechteckB_; }
    const Ebenenrechteck& RechteckB() const { return *RechteckB_; }
    Ebenenrechteck& RechteckC() { return *RechteckC_; }
    Livepunkt& Punkt() { return *Punkt_; }

    /// The picture behind everything, stretched over the plane; none when it is null.
    void bildSetzen(const QImage& bild);
    /// The symbols of the fields, drawn onto the picture; show after symboleZeigen.
    Zonenbild& symbole() { return symbole_; }
    void symboleZeigen();

signals:
    void gedrueckt(Qt::MouseButton taste, QPointF wo);
    void bewegt(QPointF wo);
    void pfeilGedrueckt(Qt::MouseButton taste, int richtung);
    void groesseGeaendert();

protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;
    void mousePressEvent(QMouseEvent* ereignis) override;
    void mouseMoveEvent(QMouseEvent* ereignis) override;

private:
    struct Linienpaar {
        Ebenenlinie* linie = nullptr;
        Ebenenpfeil* pfeil = nullptr;
    };

    void linienBauen();
    void pfeileBauen();
    void hintergrundMalen();
    void symboleMalen();
    QRegion symbolflaeche() const;
    QRectF geraetepixel(const QRect& pixel) const;

    std::array<std::array<Linienpaar, LINIENCONTROLS>, RICHTUNGEN> linien_{};
    Ebenenrechteck* RechteckB_ = nullptr;
    Ebenenrechteck* RechteckC_ = nullptr;
    Livepunkt* Punkt_ = nullptr;
    std::vector<Ebenenteil*> teile_;
    QImage bild_;
    Zonenbild symbole_;
    // Both at the plane's size in device pixels, and kept: to stretch the picture costs more than all
    // symbols, and to lay out a picture as large as a screen nearly as much.
    QImage gestreckt_;   ///< the picture by itself; null when it is to be stretched anew
    QImage hintergrund_; ///< picture and symbols
    QRegion gemalt_;     ///< where symbols are painted on it, in pixels
    bool symboleVeraltet_ = true;
};
