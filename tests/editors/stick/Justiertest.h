// SPDX-License-Identifier: GPL-3.0-or-later
// What tests of the stick editors stand on: an open editor of either stick, its controls by name, the mouse
// at plane coordinates, and the stick's tables.
#pragma once

#include "tests/editors/common/Formtest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QExposeEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest/QTest>

#include <cmath>
#include <string>

/// One of the twins.
struct Zwilling {
    const char* form;
    int knopf; ///< of the main form
    std::string zusatz;
    const char* bildende;
    const char* umschalten;
    const char* schaltflaeche;
    std::uint32_t JOYINFOEX::*x;
    std::uint32_t JOYINFOEX::*y;
};
inline void PrintTo(const Zwilling& zwilling, std::ostream* strom) {
    *strom << zwilling.form;
}
inline const Zwilling LINKER_ZWILLING{
    "frmJust", 1, "", "L.bmp", "Frame2", "Frame3", &JOYINFOEX::dwXpos, &JOYINFOEX::dwYpos};
inline const Zwilling RECHTER_ZWILLING{
    "frmJustr", 6, "R", "R.bmp", "Frame3", "Frame2", &JOYINFOEX::dwZpos, &JOYINFOEX::dwRpos};

class Justiertest : public Formtest {
protected:
    explicit Justiertest(const Zwilling& zwilling) : zwilling_(zwilling) {}

    void schema(const std::string& name = "S") { Schemabau(datenbank_, name).anlegen(); }
    /// The twenty rows of both sticks, with one line a direction: 20000, 45000, 21000, 46000 on layer 0, and
    /// 100 and 200 more on the other two.
    void linien(const std::string& name = "S") {
        Schemabau schema(datenbank_, name);
        for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
            schema
                .ebenenlinien(seite, 1,
                              {{{20000, 45000, 21000, 46000},
                                {20100, 45100, 21100, 46100},
                                {20200, 45200, 21200, 46200}}})
                .leereLinienAb(seite, 2);
        schema.ergaenzen();
    }
    void aktion(int ebene, const std::string& anker, const std::string& text) {
        datenbank_.sql("INSERT INTO " + aktionstabelle() + " VALUES ('S'," + std::to_string(ebene) + "," +
                       anker + ",'" + text + "');");
    }
    std::string stick() const { return "tblStick" + zwilling_.zusatz; }
    std::string aktionstabelle() const { return "tblStickAktion" + zwilling_.zusatz; }
    /// A column of a row of the stick's lines.
    std::string linie(const std::string& spalte, int zeile, const std::string& name = "S") const {
        return datenbank_.zeilen("SELECT " + spalte + " FROM " + stick() + " WHERE Schemaname = '" + name +
                                 "' AND \"index\" = " + std::to_string(zeile) + ";")[0][0];
    }
    /// Layer, anchors and text of each action row.
    Tabellenbild aktionen() const {
        return datenbank_.zeilen("SELECT Umschalt, Links, Rechts, Oben, Unten, Aktion FROM " +
                                 aktionstabelle() + " ORDER BY 1, 2, 3, 4, 5;");
    }

    /// Starts the program on Schema S and opens the editor.
    void editorOeffnen() {
        starten();
        editorknopf();
    }
    void editorknopf() {
        control<QPushButton>(haupt(), QString("Command1(%1)").arg(zwilling_.knopf)).click();
        ereignisse();
    }
    static QWidget* formNamens(const QString& name) {
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == name && fenster->isVisible())
                return fenster;
        return nullptr;
    }
    QWidget* offen() const { return formNamens(zwilling_.form); }
    QWidget& form() const {
        auto* fenster = offen();
        if (!fenster)
            throw std::runtime_error("the editor is not open");
        return *fenster;
    }
    template <class Control> Control& feld(const QString& name) { return control<Control>(form(), name); }
    QWidget& ebene() { return feld<QWidget>("Stickebene"); }

    QPointF pixel(double x, double y) { return {x * ebene().width() / 65535, y * ebene().height() / 65535}; }
    /// A mouse button goes down and up on the plane, at plane units.
    void klick(double x, double y, Qt::MouseButton taste = Qt::LeftButton) {
        for (const auto art : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const auto gedrueckt = art == QEvent::MouseButtonPress ? Qt::MouseButtons(taste) : Qt::NoButton;
            const auto wo = pixel(x, y);
            QMouseEvent ereignis(art, wo, ebene().mapToGlobal(wo), taste, gedrueckt, Qt::NoModifier);
            QApplication::sendEvent(&ebene(), &ereignis);
        }
        ereignisse();
    }
    void ziehen(double x, double y) { bewegen(ebene(), pixel(x, y)); }
    static void bewegen(QWidget& wo, QPointF stelle) {
        QMouseEvent ereignis(QEvent::MouseMove, stelle, wo.mapToGlobal(stelle), Qt::NoButton, Qt::NoButton,
                             Qt::NoModifier);
        QApplication::sendEvent(&wo, &ereignis);
        ereignisse();
    }
    void pfeil(const QString& name, Qt::MouseButton taste = Qt::LeftButton) {
        QTest::mouseClick(&feld<QWidget>(name), taste);
        ereignisse();
    }

    /// The window system uncovers the form.
    void freilegen() {
        QExposeEvent ereignis(QRegion(form().rect()));
        QApplication::sendEvent(form().windowHandle(), &ereignis);
        ereignisse();
    }

    /// Whether a control's left upper corner, or a line's middle, is at these plane units, to half a pixel.
    static bool nahe(double ist, double einheiten, int groesse) {
        return std::abs(ist - einheiten * groesse / 65535) <= 0.5;
    }
    bool stehtX(const QString& name, double x) {
        return nahe(feld<QWidget>(name).x() + feld<QWidget>(name).width() / 2, x, ebene().width());
    }
    bool stehtY(const QString& name, double y) {
        return nahe(feld<QWidget>(name).y() + feld<QWidget>(name).height() / 2, y, ebene().height());
    }
    bool liegt(const QString& name, double links, double oben, double breite, double hoehe) {
        const auto& rahmen = feld<QWidget>(name).geometry();
        return nahe(rahmen.left(), links, ebene().width()) && nahe(rahmen.top(), oben, ebene().height()) &&
               nahe(rahmen.left() + rahmen.width(), links + breite, ebene().width()) &&
               nahe(rahmen.top() + rahmen.height(), oben + hoehe, ebene().height());
    }
    bool zuSehen(const QString& name) { return !feld<QWidget>(name).isHidden(); }

    const Zwilling& zwilling_;
};
