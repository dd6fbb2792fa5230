// SPDX-License-Identifier: GPL-3.0-or-later
// The plane of a stick editor: a child that fills the form, in raw axis units, with a picture behind all that
// lies on it.
//
// Plane unit v lies at pixel v * size / 65535, whatever the size of the window. The controls on it keep their
// names and indices: `LLinks`(0 to 20), `LPfeil`(0 to 20) and so on.
#pragma once

#include "editors/stick/Ebenenteile.h"
#include "editors/stick/Streubild.h"
#include "editors/stick/Symbolstempel.h"
#include "editors/stick/Zonenbild.h"
#include "store/schema/Linientabelle.h"

#include <QImage>
#include <QRegion>
#include <QWidget>

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

class Feldliste;
class Zustandszeile;

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

    Zustandszeile& zustand() { return *zustand_; }
    /// The mark of the keyboard lies at a field, in plane units, or nowhere.
    void markeSetzen(const std::optional<QRectF>& feld);
    /// Direction of the arrow at a pixel.
    std::optional<std::size_t> pfeilBei(QPoint pixel) const;

    /// What the fields are to those who can't see them; null for none. It outlasts its place here.
    void feldlisteSetzen(Feldliste* felder) { felder_ = felder; }
    Feldliste* feldliste() const { return felder_; }
    /// Is asked for each key that goes down while the plane has the focus; true when that was for the plane.
    std::function<bool(const QKeyEvent&)> tastendruck;

    /// The picture behind everything, stretched over the plane; none when it is null.
    void bildSetzen(const QImage& bild);
    /// Where the stick was, ticks by cell as Streudaten has them, over that picture; none: empty. What was
    /// shown last is kept: to show the same again costs nothing.
    void streuungSetzen(std::vector<std::uint32_t> takte);
    /// The marks of noise, in plane units, in place of those that are shown.
    void rauschenZeigen(const std::vector<Rauschmarke>& marken);
    /// The symbols of the fields, which lie on the picture; show after symboleZeigen.
    Zonenbild& symbole() { return symbole_; }
    void symboleZeigen();

signals:
    void gedrueckt(Qt::MouseButton taste, QPointF wo);
    void bewegt(QPointF wo);
    void pfeilGedrueckt(Qt::MouseButton taste, int richtung);
    void groesseGeaendert();
    /// The mouse is no longer on the plane.
    void verlassen();
    /// The plane has the focus, by a key that moves it, or has it no longer.
    void tastaturKommt();
    void tastaturGeht();

protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;
    void mousePressEvent(QMouseEvent* ereignis) override;
    void mouseMoveEvent(QMouseEvent* ereignis) override;
    void leaveEvent(QEvent* ereignis) override;
    void keyPressEvent(QKeyEvent* ereignis) override;
    void focusInEvent(QFocusEvent* ereignis) override;
    void focusOutEvent(QFocusEvent* ereignis) override;

private:
    struct Linienpaar {
        Ebenenlinie* linie = nullptr;
        Ebenenpfeil* pfeil = nullptr;
    };

    void linienBauen();
    void pfeileBauen();
    void bildStrecken();
    const QImage& gestreut();
    void symboleStempeln();
    QRectF geraetepixel(const QRect& pixel) const;

    std::array<std::array<Linienpaar, LINIENCONTROLS>, RICHTUNGEN> linien_{};
    Ebenenrechteck* RechteckB_ = nullptr;
    Ebenenrechteck* RechteckC_ = nullptr;
    Livepunkt* Punkt_ = nullptr;
    Ebenenmarke* marke_ = nullptr;
    Zustandszeile* zustand_ = nullptr;
    Feldliste* felder_ = nullptr;
    std::vector<Ebenenteil*> teile_;
    std::vector<Rauschstreifen*> streifen_; ///< as many as were ever needed
    QImage bild_;
    Zonenbild symbole_;
    std::vector<Feldsymbol> gezeigte_; ///< the symbols that are shown; of new ones only the difference is
    Symbolstempel stempel_;
    bool stempelVeraltet_ = true;
    // At the plane's size in device pixels, and kept: to stretch the picture, to lay the counts over it and
    // to paint the symbols each costs more than all the rest of a window.
    QImage gestreckt_; ///< the picture by itself; null when it is to be stretched anew
    QImage gestreut_;  ///< the picture and where the stick was
    bool gestreutVeraltet_ = true;
    bool streuungAn_ = false;
    std::vector<std::uint32_t> streutakte_; ///< of the picture that is kept, also while it is off
    Streubild streubild_;
};
