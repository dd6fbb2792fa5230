// The whole program in real time: a game fills the screen, the pad takes its picture, and the stick editor
// has it behind its plane.
#include "tests/ablauf/Formablauf.h"

#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <QRasterWindow>

namespace {

constexpr const char* ZEILEN = R"(
INSERT INTO tblTastatur (Schemaname) VALUES ('S');
INSERT INTO tblSteuerKreuz (Schemaname) VALUES ('S');
)";
constexpr auto KREIS = SDL_CONTROLLER_BUTTON_B;

constexpr int ECKE = 100;
constexpr QRgb ECKENFARBE = qRgb(200, 20, 120);

/// Every pixel is one of its own, but in the left upper corner.
QImage spielbild(QSize groesse) {
    QImage bild(groesse, QImage::Format_RGB32);
    QRandomGenerator zufall(4711);
    for (int y = 0; y < bild.height(); ++y)
        for (int x = 0; x < bild.width(); ++x)
            bild.setPixel(x, y, x < ECKE && y < ECKE ? ECKENFARBE : 0xff000000U | zufall.generate());
    return bild;
}

/// A game: it lies over everything and shows one picture.
class Spiel final : public QRasterWindow {
public:
    explicit Spiel(const QImage& bild) : bild_(bild) {
        setFlags(Qt::BypassWindowManagerHint);
        setGeometry(QRect({0, 0}, bild.size()));
        show();
        EXPECT_TRUE(QTest::qWaitFor([this] { return gemalt_; }));
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).drawImage(0, 0, bild_);
        gemalt_ = true;
    }

private:
    QImage bild_;
    bool gemalt_ = false;
};

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
    programmAuf(ZEILEN);
    auto& editor = oeffnen("Command1(1)", "frmJust");
    control<QPushButton>(editor, "Command1(2)").click();
    auto* schirm = offene("ScreenChecken");
    ASSERT_NE(schirm, nullptr);
    EXPECT_FALSE(editor.isVisible());
    control<QPushButton>(*schirm, "Command1(0)").click();

    const auto soll = spielbild(QGuiApplication::primaryScreen()->size());
    {
        const Spiel spiel(soll);
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
