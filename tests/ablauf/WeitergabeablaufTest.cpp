// SPDX-License-Identifier: GPL-3.0-or-later
// Stories of a user and a whole Schema: handed on, out of one data folder as a file and from there into
// another, where it plays as it did; broken, deleted, and had back each time.
#include "editors/stick/Ebenenbild.h"
#include "tests/ablauf/Handablauf.h"
#include "tests/hilfen/Dateien.h"

#include <QComboBox>
#include <QImage>
#include <QPushButton>

#include <functional>

namespace fs = std::filesystem;

namespace {

constexpr auto DREIECK = SDL_CONTROLLER_BUTTON_Y;
constexpr const char* NAME = "Rennen"; // and of the file that the dialog suggests
const QString DATEI = "Rennen.schema";

class Weitergabeablauf : public Handablauf {
protected:
    Weitergabeablauf() {
        qputenv("HOME", heim_.pfad().c_str()); // where the dialogs begin
        for (const auto& ordner : {datenbank_.ordner(), zweite_.ordner()})
            fs::create_directory(ordner / "Bilder");
    }
    ~Weitergabeablauf() override { qputenv("HOME", altesHeim_); }

    void schemaLegen() {
        Schemabau(datenbank_, NAME)
            .taste(0, "1,87,0-0-0")
            .linien(Stickseite::Links, 1, {20000, 45000, 20000, 45000})
            .leereLinienAb(Stickseite::Links, 2)
            .feld(Stickseite::Links, {0, 45000, 0, 0}, "2,0,68,0,0")
            .ungeglaettet()
            .anlegen();
        QImage bild(40, 30, QImage::Format_RGB32);
        bild.fill(Qt::darkGreen);
        ASSERT_TRUE(
            BildSpeichern((datenbank_.ordner() / "Bilder").string(), std::string(NAME) + "0L.bmp", bild));
    }
    /// The program in a data folder, at the main form.
    void oeffnen(const Testdatenbank& datenbank) {
        fs::current_path(datenbank.ordner());
        programmStarten(datenbank);
        vorn("frmHaupt");
    }
    void schliessenUndBeenden() {
        beendenAmHauptfenster();
        beenden();
    }
    /// Ctrl+E, which the text field could take for itself, and the name that the dialog suggests.
    void weitergeben() {
        auto* feld = vorn("frmHaupt").findChild<QComboBox*>("Combo1");
        klicken(*feld->lineEdit());
        EXPECT_TRUE(warten([&] { return feld->hasFocus(); }));
        sobald("cdlSchemaWeitergeben", [this](QWidget& dialog) {
            EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), DATEI);
            hand_.taste("Return");
        });
        hand_.taste("Control_L+e");
        EXPECT_TRUE(warten([&] { return boxen_.size() == 1; }));
        EXPECT_TRUE(boxen_.value(0).contains(DATEI)) << boxen_.value(0).toStdString();
        vorn("frmHaupt");
    }
    void aufnehmen() {
        sobald("cdlSchemaAufnehmen", [this](QWidget&) {
            hand_.tippen(DATEI.toStdString());
            hand_.taste("Return");
        });
        sobald("frmAufnahme", [this](QWidget& dialog) {
            EXPECT_TRUE(steht(dialog, NAME));
            EXPECT_TRUE(steht(dialog, "1 Bild, Achsen"));
            hand_.taste("Return");
        });
        vorn("frmHaupt");
        hand_.taste("Control_L+i");
        EXPECT_TRUE(warten([&] { return schemata(zweite_) == Tabellenbild{{NAME}}; }));
        vorn("frmHaupt");
    }
    /// A line of the left stick goes where nobody wants it, and comes back.
    void linieVerlegenUndZuruecknehmen() {
        klicken(
            *vorn("frmHaupt").findChild<QPushButton*>("Command1(1)")); // "Bearbeiten" below "Linken Stick"
        auto& editor = vorn("frmJust");
        auto& ebene = *editor.findChild<QWidget*>("Stickebene");
        EXPECT_TRUE(warten([&] { return ebene.hasFocus(); }));
        const auto heil = datenbank_.inhalt();
        hand_.taste("Shift_L+Right");
        EXPECT_TRUE(warten([&] { return datenbank_.inhalt() != heil; })) << "no line has moved";
        hand_.taste("Control_L+z");
        EXPECT_TRUE(warten([&] { return datenbank_.inhalt() == heil; }));
        erwarteText(editor, "rückgängig");
        schliessen(editor);
    }
    void loeschenUndZurueckholen() {
        const auto vorher = datenbank_.inhalt();
        const auto vorigesBild = bild(datenbank_);
        const auto achsen = dateiLesen(datenbank_.ordner() / "Gamepad.xml");
        knopf(vorn("frmHaupt"), "Schema löschen");
        EXPECT_TRUE(warten([&] { return schemata(datenbank_) == Tabellenbild{}; }));
        auto& haupt = vorn("frmHaupt");
        EXPECT_FALSE(fs::exists(datenbank_.ordner() / "Bilder" / (std::string(NAME) + "0L.bmp")));
        klicken(*haupt.findChild<QWidget*>("btnRueckgaengig"));
        EXPECT_TRUE(warten([&] { return datenbank_.inhalt() == vorher; }));
        EXPECT_EQ(bild(datenbank_), vorigesBild);
        EXPECT_EQ(dateiLesen(datenbank_.ordner() / "Gamepad.xml"), achsen);
    }
    /// Dialogs run loops of their own: what is done in one is done when it has the keyboard.
    void sobald(const QString& name, const std::function<void(QWidget&)>& tat) {
        auto* takt = new QTimer(&takte_);
        QObject::connect(takt, &QTimer::timeout, [takt, name, tat] {
            auto* fenster = QApplication::activeWindow();
            if (!fenster || fenster->objectName() != name)
                return;
            takt->stop();
            tat(*fenster);
        });
        takt->start(50);
    }
    static Tabellenbild schemata(const Testdatenbank& datenbank) {
        return datenbank.zeilen("SELECT Schemaname FROM tblTastatur");
    }
    void spielen() {
        knopf(vorn("frmHaupt"), "Schema starten");
        vorn("LaufFenster");
        imSpiel();
        schliessen(vorn("LaufFenster"));
    }
    /// What a game gets of a button and of the stick, until it ends.
    void imSpiel() {
        Spielfenster spiel(qgetenv("DISPLAY").toStdString());
        EXPECT_TRUE(warten([&] { return spiel.vorn(); }));
        pad_->taste(DREIECK, true);
        erwarteTasten(spiel, {"+w"});
        pad_->taste(DREIECK, false);
        pad_->achse(SDL_CONTROLLER_AXIS_LEFTX, SDL_JOYSTICK_AXIS_MAX);
        erwarteTasten(spiel, {"+w", "-w", "+d"});
        pad_->achse(SDL_CONTROLLER_AXIS_LEFTX, 0);
        erwarteTasten(spiel, {"+w", "-w", "+d", "-d"});
    }
    static std::string bild(const Testdatenbank& datenbank) {
        return dateiLesen(datenbank.ordner() / "Bilder" / (std::string(NAME) + "0L.bmp"));
    }

    const Testdatenbank zweite_;

private:
    QObject takte_;
    const Testordner heim_;
    const QByteArray altesHeim_ = qgetenv("HOME");
};

} // namespace

TEST_F(Weitergabeablauf, AusDemEinenOrdnerInDenAnderenSpieltEsWieZuvor) {
    schemaLegen();
    oeffnen(datenbank_);
    spielen();
    weitergeben();
    ASSERT_FALSE(HasFailure()) << "there is no file to take up";
    schliessenUndBeenden();

    oeffnen(zweite_);
    EXPECT_EQ(schemata(zweite_), Tabellenbild{});
    aufnehmen();
    EXPECT_EQ(zweite_.inhalt(), datenbank_.inhalt());
    EXPECT_EQ(bild(zweite_), bild(datenbank_));
    spielen();
    schliessenUndBeenden();
    EXPECT_EQ(boxen_.size(), 1) << "and no other box on the way";
}

TEST_F(Weitergabeablauf, WasZerstoertUndGeloeschtWarKommtZurueckUndSpieltAnderswo) {
    schemaLegen();
    oeffnen(datenbank_);
    const auto heil = datenbank_.inhalt();
    linieVerlegenUndZuruecknehmen();
    EXPECT_EQ(datenbank_.inhalt(), heil);
    loeschenUndZurueckholen();
    boxen_.clear();
    weitergeben();
    ASSERT_FALSE(HasFailure()) << "there is no file to take up";
    schliessenUndBeenden();

    oeffnen(zweite_);
    aufnehmen();
    EXPECT_EQ(zweite_.inhalt(), heil);
    spielen();
    schliessenUndBeenden();
}
