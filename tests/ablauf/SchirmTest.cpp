// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program in real time: a game fills the screen, the pad takes its picture, and the stick editor
// has it behind its plane.
#include "tests/ablauf/Formablauf.h"
#include "tests/hilfen/Vollbild.h"

#include <QImage>
#include <QPainter>

namespace {

constexpr auto KREIS = SDL_CONTROLLER_BUTTON_B;

constexpr int ECKE = 100;
constexpr QRgb ECKENFARBE = qRgb(200, 20, 120);

/// The left upper corner has one colour.
QImage spielbild(QSize groesse) {
    auto bild = rauschen(groesse);
    QPainter(&bild).fillRect(0, 0, ECKE, ECKE, QColor::fromRgb(ECKENFARBE));
    return bild;
}

class Schirmgeschichte : public Formablauf {
protected:
    Schirmgeschichte() { std::filesystem::create_directory(datenbank_.ordner() / "Bilder"); }

    QString datei(const std::string& name) const {
        return QString::fromStdString((datenbank_.ordner() / "Bilder" / name).string());
    }
    QImage bild(const std::string& name) const {
        return QImage(datei(name)).convertToFormat(QImage::Format_RGB32);
    }
    void aufnehmen(SDL_GameControllerButton taste, const std::string& name) {
        pad_->taste(taste, true);
        EXPECT_TRUE(warten([&] { return QFile::exists(datei(name)); })) << name;
        loesen(taste);
    }
    void langTippen(SDL_GameControllerButton taste) {
        druecken(taste);
        takte(30); // a poll of the form comes every 100 ms
        loesen(taste);
    }
};

} // namespace

TEST_F(Schirmgeschichte, DasBildDesSpielsKommtPixelFuerPixelHinterDieEbene) {
    programmAuf(Schemabau(datenbank_));
    auto& editor = oeffnen("Command1(1)", "frmJust");
    control<QPushButton>(editor, "Command1(2)").click();
    auto* schirm = offene("ScreenChecken");
    ASSERT_NE(schirm, nullptr);
    EXPECT_FALSE(editor.isVisible());
    control<QPushButton>(*schirm, "Command1(0)").click();

    const auto soll = spielbild(QGuiApplication::primaryScreen()->size());
    {
        const Vollbild spiel(soll);
        aufnehmen(SDL_CONTROLLER_BUTTON_LEFTSTICK, "S0L.BMP");
        langTippen(KREIS);
        aufnehmen(SDL_CONTROLLER_BUTTON_RIGHTSTICK, "S2R.BMP");
    }
    schirm->close();
    EXPECT_TRUE(bild("S0L.BMP") == soll);
    EXPECT_TRUE(bild("S2R.BMP") == soll);
    EXPECT_FALSE(QFile::exists(datei("S0R.BMP")) || QFile::exists(datei("S2L.BMP")));

    ASSERT_EQ(offene("frmJust"), &editor);
    auto& ebene = control<QWidget>(editor, "Stickebene");
    EXPECT_EQ(ebene.grab().toImage().pixel(ECKE / 4, ECKE / 4), ECKENFARBE)
        << "the picture is behind the plane";
}
