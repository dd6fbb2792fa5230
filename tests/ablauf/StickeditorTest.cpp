// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program in real time: the plane of a stick is divided in its editor and a field gets a key, which
// the stick then presses.
//
// One story, told of both sticks; what differs is a row of a table.
#include "tests/ablauf/Formablauf.h"

#include <QGroupBox>
#include <QMouseEvent>
#include <QRadioButton>

#include <array>
#include <cmath>
#include <limits>
#include <ostream>

namespace {

// L 1 holds Umschalt 2.
Schemabau mitUmschalt2(const Testdatenbank& datenbank) {
    return Schemabau(datenbank).taste(5, "4,0,0-0-0").taste(9, "1,123,0-0-0").taste(9, "1,123,0-0-0", 2);
}
constexpr auto UMSCHALTTASTE_2 = SDL_CONTROLLER_BUTTON_LEFTSHOULDER;

constexpr double EBENENENDE = 65535;
constexpr double MITTE_Y = 33000; // between the lines of the centre field
constexpr Sint16 MITTE = 0;

/// A line that an arrow adds: where it is to be found.
struct Neulinie {
    const char* pfeil;
    const char* linie;
    const char* spalte;
    int wert;
    bool senkrecht;
};

struct Stickgeschichte {
    const char* name;
    const char* knopf; ///< of the main form
    const char* form;
    const char* stick;
    const char* aktionen;
    int ebene;
    std::array<Neulinie, 2> neue; ///< the first is dragged
    double gezogenNach;
    double feld; ///< x of a place beyond the dragged line
    VirtuelleTaste taste;
    const char* titel;
    const char* ab;
    const char* auf;
    SDL_GameControllerAxis achse;
    Sint16 imFeld;
    Sint16 daneben; ///< on the other side of the dragged line
};
void PrintTo(const Stickgeschichte& eine, std::ostream* strom) {
    *strom << eine.name;
}

// Lines of the default: Links 27072, Rechts 38399, Oben 25941, Unten 39679. X key codes of the us layout.
constexpr Stickgeschichte LINKS{.name = "Links",
                                .knopf = "Command1(1)",
                                .form = "frmJust",
                                .stick = "tblStick",
                                .aktionen = "tblStickAktion",
                                .ebene = 0,
                                .neue = {{{"RPfeil(0)", "LRechts(1)", "Rechts", 39399, true},
                                          {"OPfeil(0)", "LOben(1)", "Oben", 24941, false}}},
                                .gezogenNach = 52000,
                                .feld = 60000,
                                .taste = 65,
                                .titel = "Taste: 65 - A",
                                .ab = "+38",
                                .auf = "-38",
                                .achse = SDL_CONTROLLER_AXIS_LEFTX,
                                .imFeld = std::numeric_limits<Sint16>::max(),
                                .daneben = 12232}; // 45000
constexpr Stickgeschichte RECHTS{.name = "Rechts",
                                 .knopf = "Command1(6)",
                                 .form = "frmJustr",
                                 .stick = "tblStickR",
                                 .aktionen = "tblStickAktionR",
                                 .ebene = 2,
                                 .neue = {{{"LPfeil(0)", "LLinks(1)", "Links3", 26072, true},
                                           {"UPfeil(0)", "LUnten(1)", "Unten3", 40679, false}}},
                                 .gezogenNach = 13000,
                                 .feld = 6000,
                                 .taste = 66,
                                 .titel = "Taste: 66 - B",
                                 .ab = "+56",
                                 .auf = "-56",
                                 .achse = SDL_CONTROLLER_AXIS_RIGHTX,
                                 .imFeld = std::numeric_limits<Sint16>::min(),
                                 .daneben = -12768}; // 20000

class Stickeditorgeschichte : public Formablauf, public ::testing::WithParamInterface<Stickgeschichte> {
protected:
    void editorOeffnen() {
        form_ = &oeffnen(GetParam().knopf, GetParam().form);
        if (GetParam().ebene > 0)
            control<QRadioButton>(*form_, QString("Uschalt(%1)").arg(GetParam().ebene)).click();
    }
    QWidget& ebene() { return control<QWidget>(*form_, "Stickebene"); }
    QPoint pixel(double x, double y) {
        return QPointF(x * ebene().width() / EBENENENDE, y * ebene().height() / EBENENENDE).toPoint();
    }
    /// Where a line stands that the mouse let go at `x`: the mouse knows whole pixels only.
    int abgesetzt(double x) {
        return static_cast<int>(
            std::lround(pixel(x, 0).x() * EBENENENDE / static_cast<double>(ebene().width())));
    }
    void maus(QEvent::Type art, double x, double y, Qt::MouseButton taste = Qt::NoButton) {
        const QPointF wo = pixel(x, y);
        QMouseEvent ereignis(art, wo, ebene().mapToGlobal(wo), taste,
                             art == QEvent::MouseButtonPress ? Qt::MouseButtons(taste) : Qt::NoButton,
                             Qt::NoModifier);
        QApplication::sendEvent(&ebene(), &ereignis);
    }
    void klick(double x, double y, Qt::MouseButton taste = Qt::LeftButton) {
        maus(QEvent::MouseButtonPress, x, y, taste);
        maus(QEvent::MouseButtonRelease, x, y, taste);
    }

    void linienAnlegen() {
        for (const auto& neue : GetParam().neue) {
            QTest::mouseClick(&control<QWidget>(*form_, neue.pfeil), Qt::LeftButton);
            EXPECT_EQ(linie(neue, 2), neue.wert);
            erwarteLinie(neue, neue.wert);
        }
    }
    void linieZiehen() {
        const auto& gezogene = GetParam().neue[0];
        klick(gezogene.wert, MITTE_Y);
        maus(QEvent::MouseMove, GetParam().gezogenNach, MITTE_Y);
        EXPECT_EQ(linie(gezogene, 2), gezogene.wert) << "nothing is stored on the way";
        klick(GetParam().gezogenNach, MITTE_Y);
        EXPECT_EQ(linie(gezogene, 2), abgesetzt(GetParam().gezogenNach));
        erwarteLinie(gezogene, abgesetzt(GetParam().gezogenNach));
    }
    /// The field beyond the dragged line gets the key that is pressed on the keyboard now.
    void feldBelegen() {
        const auto& fall = GetParam();
        klick(fall.feld, MITTE_Y);
        EXPECT_TRUE(control<QWidget>(*form_, "RechteckB").isVisible());
        klick(fall.feld, MITTE_Y, Qt::RightButton);
        auto& tafel = control<QWidget>(*form_, "fraAktion");
        EXPECT_TRUE(tafel.isVisible());
        control<QRadioButton>(tafel, "Option1(2)").click();
        auto& fang = control<QWidget>(tafel, "txtTaste");
        EXPECT_TRUE(warten([&] { return fang.hasFocus(); }));
        anDerTastatur(fall.taste, fall.ab, fall.auf);
        auto& rahmen = control<QGroupBox>(tafel, "Frame1(2)");
        EXPECT_TRUE(warten([&] { return rahmen.title() == fall.titel; })) << rahmen.title().toStdString();
        EXPECT_EQ(aktionen(), Tabellenbild{}) << "the panel is stored when it is closed";
        klick(fall.feld, MITTE_Y);
        EXPECT_FALSE(tafel.isVisible());
        EXPECT_FALSE(control<QWidget>(*form_, "RechteckB").isVisible());
    }
    void knopf(const char* name) {
        auto& einer = control<QPushButton>(*form_, name);
        EXPECT_TRUE(einer.isEnabled());
        einer.click();
    }
    /// Into the field and out of it over the dragged line, which ends the key.
    void erwarteTasteImFeld() {
        const auto& fall = GetParam();
        pad_->achse(fall.achse, fall.imFeld);
        EXPECT_EQ(bis(fall.ab), Ereignisse{fall.ab});
        pad_->achse(fall.achse, fall.daneben);
        EXPECT_EQ(bis(fall.auf), Ereignisse{fall.auf});
        pad_->achse(fall.achse, MITTE);
        EXPECT_EQ(angekommen(), Ereignisse{});
    }
    /// On Umschalt 2 only, which ends with its key: so does what the field has down.
    void erwarteTasteAufDerEbene() {
        const auto& fall = GetParam();
        pad_->achse(fall.achse, fall.imFeld);
        EXPECT_EQ(angekommen(), Ereignisse{}) << "the field belongs to another layer";
        pad_->achse(fall.achse, MITTE);
        takte(4);
        druecken(UMSCHALTTASTE_2);
        erwarteTasteImFeld();
        pad_->achse(fall.achse, fall.imFeld);
        EXPECT_EQ(bis(fall.ab), Ereignisse{fall.ab});
        pad_->taste(UMSCHALTTASTE_2, false);
        EXPECT_EQ(bis(fall.auf), Ereignisse{fall.auf});
        pad_->achse(fall.achse, MITTE);
        EXPECT_EQ(angekommen(), Ereignisse{});
    }

    int linie(const Neulinie& neue, int zeile) {
        const auto zeilen =
            datenbank_.zeilen(std::string("SELECT ") + neue.spalte + " FROM " + GetParam().stick +
                              " WHERE Schemaname = 'S' AND \"index\" = " + std::to_string(zeile));
        return std::stoi(zeilen.at(0).at(0));
    }
    Tabellenbild aktionen() {
        return datenbank_.zeilen(
            std::string("SELECT Schemaname, Umschalt, Links, Rechts, Oben, Unten, Aktion FROM ") +
            GetParam().aktionen);
    }
    /// The line is to be seen where `wert` lies, to a pixel.
    void erwarteLinie(const Neulinie& neue, int wert) {
        const auto& control = this->control<QWidget>(*form_, neue.linie);
        EXPECT_TRUE(control.isVisible()) << neue.linie;
        const auto mitte = control.geometry().center();
        const auto soll = pixel(wert, wert);
        EXPECT_LE(std::abs(neue.senkrecht ? mitte.x() - soll.x() : mitte.y() - soll.y()), 1) << neue.linie;
    }

    QWidget* form_ = nullptr;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(, Stickeditorgeschichte, ::testing::Values(LINKS, RECHTS),
                         [](const auto& fall) { return std::string(fall.param.name); });

TEST_P(Stickeditorgeschichte, EinFeldWirdEingeteiltBelegtUndGespielt) {
    const auto& fall = GetParam();
    programmAuf(mitUmschalt2(datenbank_));
    editorOeffnen();
    linienAnlegen();
    linieZiehen();
    feldBelegen();
    const auto anker = abgesetzt(fall.gezogenNach);
    const bool links = fall.gezogenNach < EBENENENDE / 2;
    const Tabellenbild belegt{{"S", std::to_string(fall.ebene), links ? std::to_string(anker) : "0",
                               links ? "0" : std::to_string(anker), "0", "0",
                               "2,0," + std::to_string(fall.taste) + ",0,0"}};
    EXPECT_EQ(aktionen(), belegt);

    knopf("Command1(1)");
    ASSERT_NE(laufFenster(), nullptr);
    takte(2);
    if (fall.ebene == 0)
        erwarteTasteImFeld();
    else
        erwarteTasteAufDerEbene();
    knopf("Command1(0)");
    EXPECT_EQ(laufFenster(), nullptr);
    EXPECT_EQ(offene(fall.form), nullptr);
    EXPECT_TRUE(programm_->hauptform().isVisible());

    beenden();
    programmStarten();
    editorOeffnen();
    EXPECT_EQ(abgesetzt(fall.gezogenNach), anker) << "the plane has its size again";
    erwarteLinie(fall.neue[0], anker);
    erwarteLinie(fall.neue[1], fall.neue[1].wert);
    EXPECT_EQ(linie(fall.neue[0], 2), anker);
    EXPECT_EQ(linie(fall.neue[1], 2), fall.neue[1].wert);
    EXPECT_EQ(linie(fall.neue[0], 3), 0);
    EXPECT_EQ(aktionen(), belegt);
    EXPECT_EQ(boxen_, QStringList{"Es wird ein neues Schema erstellen!"}) << "once, at the first opening";
}
