// SPDX-License-Identifier: GPL-3.0-or-later
// What the window of a run shows while something else is played, and that showing it holds up nothing.
//
// A program of its own: its X server stands still at times.
#include "tests/ablauf/Ablauf.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Vollbild.h"
#include "tests/hilfen/XServer.h"

#include <QBackingStore>
#include <QCursor>
#include <QLabel>
#include <QScreen>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include <X11/Xlib.h>

namespace {

using namespace std::chrono_literals;
using Uhr = std::chrono::steady_clock;

constexpr auto DREIECK = SDL_CONTROLLER_BUTTON_Y;
constexpr auto L1 = SDL_CONTROLLER_BUTTON_LEFTSHOULDER;

const XServer* xserver = nullptr;

/// While it lives, or for so long at most, the X server does nothing.
class Stillstand {
public:
    explicit Stillstand(std::chrono::seconds laengstens) {
        xserver->anhalten(true);
        wecker_ = std::thread([this, laengstens] {
            std::unique_lock sperre(riegel_);
            ende_.wait_for(sperre, laengstens, [this] { return vorbei_; });
            xserver->anhalten(false);
        });
    }
    ~Stillstand() {
        {
            const std::lock_guard sperre(riegel_);
            vorbei_ = true;
        }
        ende_.notify_one();
        wecker_.join();
    }
    Stillstand(const Stillstand&) = delete;
    Stillstand& operator=(const Stillstand&) = delete;

private:
    std::mutex riegel_;
    std::condition_variable ende_;
    bool vorbei_ = false;
    std::thread wecker_;
};

class Nebenherspiel : public Ablauf {
protected:
    /// A run, and the user is somewhere else with keyboard and mouse.
    void nebenherSpielen() {
        starten(Schemabau(datenbank_).taste(0, "1,65,0-0-0").taste(5, "4,0,1-0-0"));
        woandersHin();
        takte(100); // past the first look at what is held
    }
    static void woandersHin() {
        auto* anzeige = XOpenDisplay(nullptr);
        XWarpPointer(anzeige, None, DefaultRootWindow(anzeige), 0, 0, 0, 0, DisplayWidth(anzeige, 0) - 1,
                     DisplayHeight(anzeige, 0) - 1);
        XSetInputFocus(anzeige, None, RevertToNone, CurrentTime);
        XCloseDisplay(anzeige);
        ASSERT_TRUE(warten([] { return !laufFenster()->isActiveWindow() && !laufFenster()->underMouse(); }));
    }
    static bool warten(auto&& zustand) { return QTest::qWaitFor(zustand, GEDULD_MS); }
    static QLabel& label(const QString& name) { return *laufFenster()->findChild<QLabel*>(name); }

    /// The label as it is on the screen.
    static QImage aufDemSchirm(QLabel& label) {
        return ausschnitt(label, label.screen()->grabWindow(label.window()->winId()));
    }
    /// As the toolkit paints it where it has its window.
    static QImage wieErSeinSoll(QLabel& label) { return ausschnitt(label, label.window()->grab()); }
    static QImage ausschnitt(QLabel& label, const QPixmap& fenster) {
        const auto masstab = fenster.devicePixelRatio();
        const QPointF ort(label.mapTo(label.window(), QPoint()));
        const QRectF bereich(ort * masstab, QSizeF(label.size()) * masstab);
        return fenster.toImage().copy(bereich.toAlignedRect()).convertToFormat(QImage::Format_RGB32);
    }
    /// By today's property and by the old one.
    void titelErwarten(const std::string& text) {
        Ablauf::titelErwarten(text);
        EXPECT_EQ(lauscher_->titel(laufFenster()->winId(), "WM_NAME"), text);
    }
    static bool stimmt(QLabel& label) { return aufDemSchirm(label) == wieErSeinSoll(label); }

    /// Its copy is what shows when the window rolls.
    void dasToolkitHoltNach(const std::function<void()>& kommen) {
        nebenherSpielen();
        druecken(DREIECK);
        auto& zahl = label("Label1(0)");
        EXPECT_TRUE(warten([&] { return zahl.text() == "1" && stimmt(zahl); }));
        kommen();
        ASSERT_TRUE(warten([] { return laufFenster()->isActiveWindow() || laufFenster()->underMouse(); }));
        takte(2);
        laufFenster()->backingStore()->flush(laufFenster()->rect(), laufFenster()->windowHandle());
        EXPECT_TRUE(warten([&] { return stimmt(zahl); }));
        loesen(DREIECK);
        EXPECT_TRUE(warten([&] { return zahl.text() == "0" && stimmt(zahl); }));
    }
};

} // namespace

TEST_F(Nebenherspiel, EinServerDerNichtZumZeichnenKommtHaeltDenTaktNichtAuf) {
    nebenherSpielen();
    tippen(DREIECK);
    const auto anfang = Uhr::now();
    {
        const Stillstand stillstand(8s);
        for (int i = 0; i < 4; ++i) { // captions of the window, too, take room on the way to the server
            tippen(DREIECK);
            tippen(L1);
        }
        druecken(DREIECK);
        takte(100);
        EXPECT_LT(Uhr::now() - anfang, 4s);
    }
    EXPECT_EQ(label("Label1(0)").text(), "1");
    EXPECT_TRUE(label("lblGehalten(0)").text().startsWith("Dreieck → A, "));
    for (const auto* name : {"Label1(0)", "lblGehalten(0)", "lblEbene", "lblUmschalt"})
        EXPECT_TRUE(warten([&] { return stimmt(label(name)); })) << name;
}

TEST_F(Nebenherspiel, EineEbeneStehtSogleichDa) {
    nebenherSpielen();
    auto& ebene = label("lblEbene");
    ASSERT_TRUE(warten([&] { return stimmt(ebene); }));
    const auto vorher = aufDemSchirm(ebene);
    tippen(L1);
    ASSERT_TRUE(warten([&] { return ebene.text() == "Ebene: Umschalt 2"; })) << ebene.text().toStdString();
    EXPECT_TRUE(QTest::qWaitFor([&] { return stimmt(ebene); }, 1000));
    EXPECT_NE(aufDemSchirm(ebene), vorher);
}

TEST_F(Nebenherspiel, WasGehaltenWirdStehtGanzDaUndWasDavorStandNichtMehr) {
    nebenherSpielen();
    auto& zeile = label("lblGehalten(0)");
    auto eigene = zeile.font(); // as a striking line has one
    eigene.setItalic(true);
    zeile.setFont(eigene);
    druecken(DREIECK);
    for (const char* dauer : {", 0 s", ", 1 s"}) {
        const auto steht = [&] { return zeile.text().endsWith(dauer) && stimmt(zeile); };
        EXPECT_TRUE(warten(steht)) << zeile.text().toStdString();
    }
    loesen(DREIECK);
    EXPECT_TRUE(warten([&] { return zeile.text() == "Nichts gehalten" && stimmt(zeile); }));
    for (const auto* name : {"Label1(0)", "lblGehalten(0)", "lblEbene", "lblUmschalt"})
        EXPECT_GE(label(name).width(), label(name).sizeHint().width()) << name << " is cut";
}

TEST_F(Nebenherspiel, WerDasFensterAufdecktSiehtWasDarinSteht) {
    nebenherSpielen();
    auto& zahl = label("Label1(0)");
    {
        const Vollbild spiel(rauschen(QGuiApplication::primaryScreen()->size()));
        druecken(DREIECK);
        takte(20);
    }
    EXPECT_EQ(zahl.text(), "1");
    EXPECT_TRUE(warten([&] { return stimmt(zahl); }));
}

TEST_F(Nebenherspiel, WerMitDerTastaturKommtHatEinToolkitDasWeissWasDarinSteht) {
    dasToolkitHoltNach([] { laufFenster()->activateWindow(); });
}

TEST_F(Nebenherspiel, WerMitDerMausKommtHatEinToolkitDasWeissWasDarinSteht) {
    dasToolkitHoltNach([] { QCursor::setPos(laufFenster()->mapToGlobal(QPoint(5, 5))); });
}

TEST_F(Nebenherspiel, DerTitelStehtSogleichDaUndDasToolkitErfaehrtIhnWennDerBenutzerKommt) {
    nebenherSpielen();
    titelErwarten("Schema gestartet");
    druecken(DREIECK);
    titelErwarten("0-65,");
    EXPECT_EQ(laufFenster()->windowTitle(), "Schema gestartet") << "it went past the toolkit";
    loesen(DREIECK);
    titelErwarten("Schema gestartet"); // as an empty one is shown
    druecken(DREIECK);
    laufFenster()->activateWindow();
    ASSERT_TRUE(warten([] { return laufFenster()->isActiveWindow(); }));
    takte(2);
    EXPECT_EQ(laufFenster()->windowTitle(), "0-65,");
    titelErwarten("0-65,");
    loesen(DREIECK);
    titelErwarten("Schema gestartet");
    EXPECT_EQ(laufFenster()->windowTitle(), "");
}

TEST_F(Nebenherspiel, EinTitelDenDasToolkitNochDaGlaubtKommtAuchNachdemErVorbeigingZurueck) {
    nebenherSpielen();
    druecken(DREIECK); // and the toolkit hears of the server's time, without which nobody gets the focus
    titelErwarten("0-65,");
    laufFenster()->activateWindow();
    ASSERT_TRUE(warten([] { return laufFenster()->isActiveWindow(); }));
    woandersHin();
    loesen(DREIECK);
    titelErwarten("Schema gestartet");
    EXPECT_EQ(laufFenster()->windowTitle(), "0-65,");
    druecken(DREIECK);
    titelErwarten("0-65,");
    laufFenster()->activateWindow();
    ASSERT_TRUE(warten([] { return laufFenster()->isActiveWindow(); }));
    takte(2);
    titelErwarten("0-65,");
}

int main(int anzahl, char** worte) {
    ::testing::InitGoogleTest(&anzahl, worte);
    const XServer server("2560x1600x24"); // has room for the window at a scale of 3
    xserver = &server;
    qputenv("DISPLAY", server.anzeige().c_str());
    qunsetenv("WAYLAND_DISPLAY");
    qunsetenv("XDG_SESSION_TYPE");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // no desktop of the machine takes part
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:");
    const Testordner laufzeit; // nor do runs of other tests
    qputenv("XDG_RUNTIME_DIR", laufzeit.pfad().c_str());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("SDL_AUDIODRIVER", "dummy");
    QApplication anwendung(anzahl, worte);
    return RUN_ALL_TESTS();
}
