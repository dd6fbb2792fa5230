// SPDX-License-Identifier: GPL-3.0-or-later
// A mouse press that reaches a window after it was hidden, as the pad may send one while a run ends.
#include "app/Geisterklicks.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>
#include <QtTest/QTest>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <memory>

namespace {

class Geisterklick : public testing::Test {
protected:
    Geisterklick() {
        qApp->installNativeEventFilter(&filter_);
        XTestFakeMotionEvent(anzeige_.get(), -1, 50, 50, CurrentTime);
        XSync(anzeige_.get(), False);
    }
    ~Geisterklick() override {
        knopf(false);
        QTest::qWait(20);
        qApp->removeNativeEventFilter(&filter_);
    }

    /// Has arrived at the server when it comes back.
    void knopf(bool unten) {
        XTestFakeButtonEvent(anzeige_.get(), 1, unten, CurrentTime);
        XSync(anzeige_.get(), False);
    }
    static std::unique_ptr<QWidget> fenster() {
        auto eines = std::make_unique<QWidget>(nullptr, Qt::X11BypassWindowManagerHint);
        eines->setGeometry(0, 0, 100, 100);
        eines->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(eines.get()));
        return eines;
    }

    struct Schliesser {
        void operator()(Display* anzeige) const { XCloseDisplay(anzeige); }
    };
    std::unique_ptr<Display, Schliesser> anzeige_{XOpenDisplay(nullptr)};
    Geisterklicks filter_;
};

// Counts the presses that a window gets from the plugin, in sight or not.
class Druckzaehler final : public QObject {
public:
    explicit Druckzaehler(QWidget& fenster) { fenster.windowHandle()->installEventFilter(this); }
    int drucke = 0;

protected:
    bool eventFilter(QObject*, QEvent* ereignis) override {
        drucke += ereignis->type() == QEvent::MouseButtonPress;
        return false;
    }
};

TEST_F(Geisterklick, AufEinVerborgenesFensterKommtNichtAnUndStoertKeinesDasNachIhmGeht) {
    auto erstes = fenster();
    const Druckzaehler zaehler(*erstes);
    knopf(true);    // on its way to the window,
    erstes->hide(); // which is hidden before it reads it,
    QTest::qWait(50);
    EXPECT_EQ(zaehler.drucke, 0);
    erstes.reset(); // and gone afterwards
    auto zweites = fenster();
    zweites->hide(); // asks for the window of the last press
    zweites->show();
    EXPECT_TRUE(zweites->isVisible());
}

TEST_F(Geisterklick, AufEinSichtbaresFensterKommtAn) {
    const auto sichtbares = fenster();
    const Druckzaehler zaehler(*sichtbares);
    knopf(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return zaehler.drucke == 1; }));
}

} // namespace
