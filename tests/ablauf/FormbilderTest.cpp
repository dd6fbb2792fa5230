// SPDX-License-Identifier: GPL-3.0-or-later
// Every form with what makes it hard to draw: long names and long key names, no and 200 `Schema`s, letters of
// other sizes, a dark desktop. Nothing on it may be cut off; where $FORMBILDER names a folder, each form
// leaves its picture there, to be looked at.
//
// Scale and colours are the application's for its life: each test has an X server and an application of its
// own.
#include "app/Anwendung.h"
#include "editors/common/Formhilfen.h"
#include "editors/exchange/Schemadialoge.h"
#include "store/files/Streubilddateien.h"
#include "store/schema/Schemauebernahme.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Kunsthand.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/XServer.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QListWidget>
#include <QMouseEvent>
#include <QRadioButton>
#include <QScreen>
#include <QStyleFactory>
#include <QTimer>

#include <algorithm>
#include <optional>
#include <ostream>
#include <string>

namespace {

const std::string LANGER_NAME = "Das vergessene Königreich der Drachen – Gesammelte Ausgabe";
constexpr const char* LANGES_PAD = "Microsoft Xbox Series S|X Controller (Bluetooth, kabellos)";
constexpr int BROWSER_AKTUALISIEREN = 168; // the longest name of a key
constexpr int BROWSER_STARTSEITE = 172;
constexpr int VIELE = 200;

enum class Inhalt { Kurz, Lang, Viele };
constexpr const char* INHALTE[] = {"Kurz", "Lang", "Viele"};

struct Bildfall {
    const char* masstab;
    bool dunkel;
    Inhalt inhalt;
};
std::string fallname(const Bildfall& fall) {
    std::string name = std::string("Mal") + fall.masstab + (fall.dunkel ? "Dunkel" : "Hell") +
                       INHALTE[static_cast<int>(fall.inhalt)];
    std::ranges::replace(name, '.', '_');
    return name;
}
void PrintTo(const Bildfall& fall, std::ostream* strom) {
    *strom << fallname(fall);
}
std::vector<Bildfall> alleFaelle() {
    std::vector<Bildfall> alle;
    for (const char* masstab : {"1", "1.5", "2"})
        for (const bool dunkel : {false, true})
            for (const auto inhalt : {Inhalt::Kurz, Inhalt::Lang, Inhalt::Viele})
                alle.push_back({masstab, dunkel, inhalt});
    return alle;
}

QPalette dunkleFarben() {
    QPalette farben(QColor(45, 48, 52), QColor(35, 38, 41));
    farben.setColor(QPalette::Base, QColor(27, 30, 32));
    farben.setColor(QPalette::AlternateBase, QColor(35, 38, 41));
    farben.setColor(QPalette::ToolTipBase, QColor(49, 54, 59));
    farben.setColor(QPalette::Highlight, QColor(61, 174, 233));
    farben.setColor(QPalette::Link, QColor(127, 193, 232));
    for (const auto rolle :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        farben.setColor(rolle, QColor(239, 240, 241));
        farben.setColor(QPalette::Disabled, rolle, QColor(130, 134, 138));
    }
    return farben;
}

/// A screen on which each form has room, and the application there.
class Malplatz {
protected:
    explicit Malplatz(const Bildfall& fall)
        : server_(std::to_string(int(std::stod(fall.masstab) * 1920)) + "x" +
                  std::to_string(int(std::stod(fall.masstab) * 1200)) + "x24") {
        qputenv("DISPLAY", server_.anzeige().c_str());
        qunsetenv("WAYLAND_DISPLAY");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // no desktop of the machine takes part
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv("QT_SCALE_FACTOR", fall.masstab);
        anwendung_.emplace(anzahl_, worte_);
        QApplication::setQuitOnLastWindowClosed(false);
        QApplication::setStyle(QStyleFactory::create("Fusion"));
        if (fall.dunkel)
            QApplication::setPalette(dunkleFarben());
    }

private:
    XServer server_;
    int anzahl_ = 1;
    char name_[5] = "test";
    char* worte_[2] = {name_, nullptr};
    std::optional<Anwendung> anwendung_;
};

class Formbilder : private Malplatz, public Formtest, public ::testing::WithParamInterface<Bildfall> {
protected:
    Formbilder() : Malplatz(GetParam()) {
        if (lang())
            pad_.namen = {LANGES_PAD};
    }

    static bool lang() { return GetParam().inhalt != Inhalt::Kurz; }
    static std::string schemaname() { return lang() ? LANGER_NAME : "Abenteuer"; }

    /// One `Schema` with everything; the others have a name.
    void schemataLegen() {
        const auto taste = [](int code) { return "1," + std::to_string(code) + ",1-40-60"; };
        Schemabau schema(datenbank_, schemaname());
        for (const int slot : {0, 1, 2, 3, 5, 6, 7, 8, 9, 10, 12, 13, 14, 15})
            schema.taste(slot, taste(lang() ? BROWSER_AKTUALISIEREN : 65 + slot));
        schema.taste(4, "3,0,0-0-0").taste(11, "5,0,3-0-0");
        schema.spalte("Programmpfad", lang() ? "/home/nutzer/Spiele/" + LANGER_NAME + "/bin/spiel" : "");
        for (const auto seite : {Stickseite::Links, Stickseite::Rechts}) {
            schema.linien(seite, 1, {27072, 38399, 25941, 39679})
                .linien(seite, 2, {12000, 52000, 11000, 54000});
            schema.leereLinienAb(seite, 3);
            const auto code = std::to_string(lang() ? BROWSER_STARTSEITE : 87);
            schema.feld(seite, {0, 38399, 0, 0}, "2,0," + code + ",0,0")
                .feld(seite, {0, 0, 25941, 0}, "2,1," + code + ",40,60")
                .feld(seite, {27072, 0, 0, 0}, "0,0,5,10")
                .feld(seite, {0, 0, 0, 39679}, "1,1,0");
        }
        schema.ungeglaettet().anlegen();
        if (GetParam().inhalt == Inhalt::Viele)
            for (int i = 2; i <= VIELE; ++i)
                Schemabau(datenbank_, "Schema Nummer " + std::to_string(i)).anlegen();
    }

    QWidget& offene(const QString& name) {
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

    /// Nothing on the form is cut off.
    void ansehen(QWidget& form, const std::string& name) {
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&form));
        ereignisse();
        const auto zuKlein = beschnittene(form);
        EXPECT_TRUE(zuKlein.empty()) << zuKlein[0] << " of " << name;
        if (const auto ordner = qEnvironmentVariable("FORMBILDER"); !ordner.isEmpty()) {
            const auto datei = QString::fromStdString(name + "-" + fallname(GetParam()) + ".png");
            EXPECT_TRUE(QDir().mkpath(ordner) && form.grab().save(QDir(ordner).filePath(datei)));
        }
    }
    void schliessen(QWidget& form) {
        form.close();
        ereignisse();
    }

    static void maus(QWidget& ebene, QEvent::Type art, QPointF wo) {
        QMouseEvent ereignis(art, wo, ebene.mapToGlobal(wo), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&ebene, &ereignis);
    }
    void klick(QWidget& ebene, QPointF wo, Qt::MouseButton taste) {
        for (const auto art : {QEvent::MouseMove, QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const bool unten = art == QEvent::MouseButtonPress;
            QMouseEvent ereignis(art, wo, ebene.mapToGlobal(wo),
                                 art == QEvent::MouseMove ? Qt::NoButton : taste,
                                 unten ? Qt::MouseButtons(taste) : Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(&ebene, &ereignis);
        }
    }

    // --- the forms ---

    void tastwerk() {
        auto& form = oeffnen("Command1(0)", "frmJoyKonfic");
        ansehen(form, "Tastwerk-ungewaehlt");
        QTest::mouseClick(&control<QLabel>(form, "lblInfo(2)"), Qt::LeftButton);
        ansehen(form, "Tastwerk-Taste");
        QTest::mouseClick(&control<QLabel>(form, "lblInfo(4)"), Qt::LeftButton);
        ansehen(form, "Tastwerk-Umschalttaste");
        QTest::mouseClick(&control<QLabel>(form, "lblInfo(11)"), Qt::LeftButton);
        ansehen(form, "Tastwerk-Maus");
        schliessen(form);
    }
    void stickeditor(const char* knopf, const char* name) {
        auto& form = oeffnen(knopf, name);
        auto& ebene = control<QWidget>(form, "Stickebene");
        pad_.zustand.dwXpos = pad_.zustand.dwUpos = 60000;
        vergehen(500);
        const QPointF feld(ebene.width() * 0.7, ebene.height() * 0.5);
        klick(ebene, feld, Qt::LeftButton);
        vergehen(500);
        ansehen(form, std::string(name) + "-gewaehlt");
        klick(ebene, feld, Qt::RightButton);
        const int arten = 6;
        for (int art = 0; art < arten; ++art) {
            auto* option = form.findChild<QRadioButton*>(QString("Option1(%1)").arg(art));
            if (!option || !option->isVisible())
                continue;
            option->click();
            ansehen(form, std::string(name) + "-Tafel" + std::to_string(art));
        }
        pad_.zustand = ProbeJoystick::inRuhe();
        schliessen(form);
    }
    /// Where the stick was, a line in the noise under the mouse, and the panel that shows it open.
    void streubild() {
        Streubilddateien(streubildordner(datenbank_.pfad()))
            .speichern(schemaname(), Stickseite::Links, 0,
                       streudatenAus({.saat = 4, .rauschen = 2500}, 60000));
        auto& form = oeffnen("Command1(1)", "frmJust");
        control<QCheckBox>(form, "Streubild").setChecked(true);
        auto& ebene = control<QWidget>(form, "Stickebene");
        maus(ebene, QEvent::MouseMove, {ebene.width() * 27072 / 65535.0, ebene.height() * 0.45});
        ansehen(form, "frmJust-Streubild");
        auto& tafel = control<QWidget>(form, "Frame3");
        maus(tafel, QEvent::MouseMove, {5, 5});
        vergehen(400);
        ansehen(form, "frmJust-Streubild-Tafel");
        control<QCheckBox>(form, "Streubild").setChecked(false);
        schliessen(form);
    }
    void bilder() {
        auto& editor = oeffnen("Command1(1)", "frmJust");
        control<QPushButton>(editor, "Command1(2)").click();
        ereignisse();
        auto& form = offene("ScreenChecken");
        ansehen(form, "ScreenChecken");
        schliessen(form);
        schliessen(editor);
    }
    void schubregler() {
        auto& form = oeffnen("Command4", "SchubreglerKonfic");
        for (int i = 0; i < 19; ++i)
            control<QPushButton>(form, "Command1(0)").click();
        control<QListWidget>(form, "List1").setCurrentRow(3);
        for (int art = 0; art < 3; ++art) {
            control<QRadioButton>(form, QString("Option1(%1)").arg(art)).click();
            ansehen(form, "SchubreglerKonfic-" + std::to_string(art));
        }
        schliessen(form);
    }
    void achsen() {
        auto& form = oeffnen("Command3", "AchzenKalib");
        ansehen(form, "AchzenKalib");
        pad_.da = false;
        QTest::qWait(500);
        vergehen(500);
        ansehen(form, "AchzenKalib-ohne-Pad");
        pad_.da = true;
        schliessen(form);
    }
    /// The open list of the `Schema`s lies on the screen.
    void liste() {
        auto& combo = *haupt().findChild<QComboBox*>();
        combo.showPopup();
        auto& fenster = *combo.view()->window();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&fenster));
        ereignisse();
        EXPECT_TRUE(QGuiApplication::primaryScreen()->geometry().contains(fenster.frameGeometry()));
        ansehen(fenster, "frmHaupt-Liste");
        combo.hidePopup();
    }
    void uebersicht() {
        emit programm_->hauptform().uebersichtGewuenscht();
        ereignisse();
        auto& form = offene("Uebersicht");
        control<QPushButton>(form, "Command1(0)").click();
        ansehen(form, "Uebersicht");
        schliessen(form);
    }
    void weitergabe() {
        const Schemaplatz platz{datenbank_.pfad(), datenbank_.ordner().string(),
                                (datenbank_.ordner() / "Gamepad.xml").string()};
        QImage bild(640, 480, QImage::Format_RGB32);
        bild.fill(QColor(70, 110, 60));
        auto fund = fundInDatenbank(platz, schemaname());
        fund.programm = "Game-Pad-Konfic 0.1";
        fund.bilder["0R.bmp"] = [bild] { return bild; };
        fund.vorschau["0R.bmp"] = bild;
        const auto pruefen = [&](const std::string& name) { return namenshindernis(platz, name); };
        Aufnahmefrage aufnahme(&haupt(), fund, schemaname(), pruefen); // the name is given: a hint shows
        aufnahme.show();
        ansehen(aufnahme, "Aufnahmefrage");
        schliessen(aufnahme);
        Namensfrage name(
            &haupt(), "Umbenennen", "Wie soll das Schema „" + qt(schemaname()) + "“ heißen?", schemaname(),
            [](const std::string&) {
                return "Unter diesem Namen liegen noch Bilder oder Achsen eines anderen Schemas.";
            });
        name.show();
        ansehen(name, "Namensfrage");
        schliessen(name);
        Datenbankfrage wahl(&haupt(), qt(datenbank_.pfad()), schemataIn(datenbank_.pfad()));
        wahl.show();
        ansehen(wahl, "Datenbankfrage");
        schliessen(wahl);
    }
    void lauf() {
        control<QPushButton>(haupt(), "Command1(5)").click();
        ereignisse();
        auto& form = *laufFenster();
        ansehen(form, "LaufFenster-leer");
        tastenDruecken(0x002F);
        pad_.zustand.dwXpos = 45000;
        vergehen(12000);
        ansehen(form, "LaufFenster-haelt");
        control<QPushButton>(form, "Command1(1)").click();
        ereignisse();
        ansehen(form, "LaufFenster-Testfeld");
        tastenDruecken(0);
        pad_.zustand = ProbeJoystick::inRuhe();
        schliessen(form);
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(, Formbilder, ::testing::ValuesIn(alleFaelle()),
                         [](const auto& fall) { return fallname(fall.param); });

TEST_P(Formbilder, NichtsIstAbgeschnitten) {
    if (GetParam().inhalt == Inhalt::Kurz) {
        starten();
        ansehen(haupt(), "frmHaupt-kurz");
        control<QPushButton>(haupt(), "Command1(2)").click();
        ansehen(haupt(), "frmHaupt-Name");
        programm_.reset();
        ereignisse();
    }
    schemataLegen();
    starten();
    ansehen(haupt(), "frmHaupt");
    liste();
    tastwerk();
    stickeditor("Command1(1)", "frmJust");
    stickeditor("Command1(6)", "frmJustr");
    streubild();
    bilder();
    schubregler();
    achsen();
    uebersicht();
    weitergabe();
    lauf();
}

int main(int anzahl, char** worte) {
    ::testing::InitGoogleTest(&anzahl, worte);
    return RUN_ALL_TESTS();
}
