// SPDX-License-Identifier: GPL-3.0-or-later
// The pictures of the help page, drawn by the forms themselves: "hilfebilder FOLDER" lays them there. What
// they show is a `Schema` as a player would have it.
#include "app/Anwendung.h"
#include "store/files/Streubilddateien.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Kunsthand.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/XServer.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyleFactory>

#include <filesystem>

namespace {

constexpr const char* SCHEMA = "Abenteuer";

constexpr int LINIE_IM_RAUSCHEN = 33400;

constexpr qint64 GROESSTES_BILD = 80000; // bytes

QString ordner;

/// Without the lowest bits of its colours: what hardly differs becomes one colour, and the file smaller.
QImage vergroebert(QImage bild, int bits) {
    const QRgb maske = (0xffU << bits & 0xffU) * 0x010101U | 0xff000000U;
    for (int y = 0; y < bild.height(); ++y)
        for (int x = 0; x < bild.width(); ++x)
            bild.setPixel(x, y, bild.pixel(x, y) & maske);
    return bild;
}

class Hilfebilder : public Formtest {
protected:
    Hilfebilder() { pad_.namen = {"Xbox 360 Controller"}; }

    void schemataLegen() {
        const auto taste = [](int code) { return "1," + std::to_string(code) + ",0-0-0"; };
        Schemabau schema(datenbank_, SCHEMA);
        schema.taste(0, taste(69)).taste(1, taste(17)).taste(2, "1,32,1-40-60").taste(3, taste(82));
        schema.taste(4, "3,0,0-0-0").taste(5, "4,0,1-0-0").taste(6, "5,0,0-0-0").taste(7, "5,0,1-0-0");
        schema.taste(8, taste(9)).taste(9, taste(27)).taste(10, taste(16)).taste(11, "2,0,0-0-0");
        schema.taste(12, taste(38)).taste(13, taste(39)).taste(14, taste(40)).taste(15, taste(37));
        for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
            schema.linien(seite, 1, {27072, 38399, 25941, 39679})
                .linien(seite, 2, {12000, 53500, 0, 0})
                .leereLinienAb(seite, 3)
                .feld(seite, {0, 0, 25941, 0}, "2,0,87,0,0")
                .feld(seite, {27072, 0, 0, 0}, "2,1,65,40,0")
                .feld(seite, {0, 38399, 0, 0}, "2,0,68,0,0")
                .feld(seite, {0, 0, 0, 39679}, "2,0,83,0,0")
                .feld(seite, {12000, 0, 0, 0}, "0,0,5,10")
                .feld(seite, {0, 53500, 0, 0}, "0,1,5,10")
                .feld(seite, {12000, 0, 25941, 0}, "4")
                .feld(seite, {0, 53500, 0, 39679}, "1,1,0");
        schema.ungeglaettet().anlegen();
        Schemabau(datenbank_, "Rennen").anlegen();
    }
    static QWidget& offene(const QString& name) {
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == name && fenster->isVisible())
                return *fenster;
        throw std::runtime_error("no form " + name.toStdString());
    }
    QWidget& oeffnen(const char* knopf, const char* name) {
        const Boxleser boxen;
        control<QPushButton>(haupt(), knopf).click();
        ereignisse();
        return offene(name);
    }
    static void malen(QWidget& was, const char* name) {
        EXPECT_TRUE(QTest::qWaitForWindowExposed(was.window()));
        ereignisse();
        const auto bild = was.grab().toImage().convertToFormat(QImage::Format_RGB32);
        const auto datei = QDir(ordner).filePath(name);
        for (int bits = 0; bits == 0 || QFileInfo(datei).size() > GROESSTES_BILD; ++bits)
            ASSERT_TRUE(bits < 6 && vergroebert(bild, bits).save(datei, "PNG", 0)) << name;
    }
    static void schliessen(QWidget& form) {
        form.close();
        ereignisse();
    }
    static void maus(QWidget& ebene, QEvent::Type art, QPointF wo, Qt::MouseButton taste = Qt::NoButton) {
        const bool unten = art == QEvent::MouseButtonPress;
        QMouseEvent ereignis(art, wo, ebene.mapToGlobal(wo), taste,
                             unten ? Qt::MouseButtons(taste) : Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&ebene, &ereignis);
    }
    static void klick(QWidget& ebene, QPointF wo, Qt::MouseButton taste) {
        maus(ebene, QEvent::MouseMove, wo);
        maus(ebene, QEvent::MouseButtonPress, wo, taste);
        maus(ebene, QEvent::MouseButtonRelease, wo, taste);
    }
    static void ziehen(QWidget& form, const char* leiste, int wert) {
        control<QScrollBar>(form, leiste).setValue(wert);
    }

    // --- the pictures ---

    void tastwerk() {
        auto& form = oeffnen("Command1(0)", "frmJoyKonfic");
        QTest::mouseClick(&control<QLabel>(form, "lblInfo(2)"), Qt::LeftButton);
        malen(form, "Tastwerk.png");
        schliessen(form);
    }
    void stickeditor() {
        auto& form = oeffnen("Command1(1)", "frmJust");
        form.resize(900, 506);
        ereignisse();
        auto& ebene = control<QWidget>(form, "Stickebene");
        pad_.zustand.dwXpos = 45000;
        pad_.zustand.dwYpos = 21000;
        vergehen(1000);
        const QPointF feld(ebene.width() * 0.34, ebene.height() * 0.45);
        klick(ebene, feld, Qt::LeftButton);
        malen(form, "Stickeditor.png");
        klick(ebene, feld, Qt::RightButton);
        control<QRadioButton>(form, "Option1(2)").click();
        malen(control<QWidget>(form, "fraAktion"), "Aktionstafel.png");
        pad_.zustand = ProbeJoystick::inRuhe();
        schliessen(form);
    }
    /// Five minutes of play, and a line that lies where the stick comes to rest.
    void streubild() {
        Streubilddateien(streubildordner(datenbank_.pfad()))
            .speichern(SCHEMA, Stickseite::Links, 0, streudatenAus({.saat = 4, .rauschen = 190}, 60000));
        const auto rechteLinie = [this](int von, int nach) {
            for (const char* tabelle : {"tblStick", "tblStickAktion"})
                datenbank_.sql(std::string("UPDATE ") + tabelle + " SET Rechts = " + std::to_string(nach) +
                               " WHERE Rechts = " + std::to_string(von) + ";");
        };
        rechteLinie(38399, LINIE_IM_RAUSCHEN);
        auto& form = oeffnen("Command1(1)", "frmJust");
        form.resize(900, 506);
        control<QCheckBox>(form, "Streubild").setChecked(true);
        ereignisse();
        auto& ebene = control<QWidget>(form, "Stickebene");
        maus(ebene, QEvent::MouseMove, {ebene.width() * LINIE_IM_RAUSCHEN / 65535.0, ebene.height() * 0.45});
        malen(form, "Streubild.png");
        schliessen(form);
        rechteLinie(LINIE_IM_RAUSCHEN, 38399);
    }
    void schubregler() {
        auto& form = oeffnen("Command4", "SchubreglerKonfic");
        for (int linie = 0; linie < 3; ++linie)
            control<QPushButton>(form, "Command1(0)").click();
        pad_.zustand.dwUpos = 52000;
        vergehen(500);
        control<QListWidget>(form, "List1").setCurrentRow(2);
        control<QRadioButton>(form, "Option1(0)").click();
        for (auto* option : form.findChildren<QRadioButton*>())
            if (option->isVisible() && option->text() == "Rechts")
                option->click();
        const Boxleser boxen;
        control<QPushButton>(form, "Command2").click();
        malen(form, "Schubregler.png");
        pad_.zustand = ProbeJoystick::inRuhe();
        schliessen(form);
    }
    void uebersicht() {
        emit programm_->hauptform().uebersichtGewuenscht();
        ereignisse();
        auto& form = offene("Uebersicht");
        for (const char* pfad : {"Text1(0)", "Text1(1)"})
            if (auto* feld = form.findChild<QLineEdit*>(pfad))
                feld->setText("Belegung.twk");
        form.findChildren<QComboBox*>().at(1)->setCurrentText("Rennen");
        control<QPushButton>(form, "Command1(0)").click();
        for (const char* ziel : {"Check1(1)", "Check1(2)"})
            control<QCheckBox>(form, ziel).click();
        malen(form, "Uebersicht.png");
        schliessen(form);
    }
    void lauf() {
        control<QPushButton>(haupt(), "Command1(5)").click();
        ereignisse();
        auto& form = *laufFenster();
        control<QPushButton>(form, "Command1(1)").click();
        for (const char* knopf : {"Command1(0)", "Command1(0)"})
            control<QPushButton>(form, knopf).click(); // it polls again
        ziehen(form, "HScroll1(2)", 10);
        ziehen(form, "HScroll1(3)", 4);
        ziehen(form, "HScroll1(5)", 150);
        tastenDruecken(1U << 3);
        pad_.zustand.dwXpos = 45000;
        vergehen(2500);
        malen(form, "LaufFenster.png");
        schliessen(form);
    }
};

TEST_F(Hilfebilder, Malen) {
    schemataLegen();
    std::filesystem::create_directories(datenbank_.ordner() / "Bilder");
    std::filesystem::copy_file(ERSATZBILD, datenbank_.ordner() / "Bilder" / "Joy2.bmp");
    starten();
    malen(haupt(), "Hauptfenster.png");
    tastwerk();
    stickeditor();
    streubild();
    schubregler();
    uebersicht();
    lauf();
}

} // namespace

int main(int anzahl, char** worte) {
    ::testing::InitGoogleTest(&anzahl, worte);
    if (anzahl != 2) {
        std::fprintf(stderr, "Usage: hilfebilder FOLDER\n");
        return 2;
    }
    ordner = worte[1];
    const XServer server("1920x1080x24");
    qputenv("DISPLAY", server.anzeige().c_str());
    qunsetenv("WAYLAND_DISPLAY");
    qunsetenv("QT_SCALE_FACTOR");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // nothing of the user's desktop
    qputenv("QT_QPA_PLATFORM", "xcb");
    Anwendung anwendung(anzahl, worte);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    return RUN_ALL_TESTS();
}
