// SPDX-License-Identifier: GPL-3.0-or-later
// The tabulator goes through each form as the eye does: rows from top to bottom, each from left to right; a
// column or a frame to its end before the next.
#include "tests/editors/common/Formgang.h"

#include "editors/common/Tastenfang.h"

#include <QGroupBox>

namespace {

using Befund = std::vector<std::string>;

QRect platz(const QWidget& control, const QWidget& form) {
    return {control.mapTo(&form, QPoint()), control.size()};
}

/// The controls at which the tabulator stops, in its order, from the first one of the form.
std::vector<QWidget*> tabfolge(QWidget& form) {
    std::vector<QWidget*> folge;
    for (auto* control = form.nextInFocusChain(); control != &form; control = control->nextInFocusChain())
        if (control->window() == &form && (control->focusPolicy() & Qt::TabFocus) && !control->focusProxy() &&
            control->isVisible() && control->isEnabled() && !control->visibleRegion().isEmpty())
            folge.push_back(control);
    return folge;
}

bool ueberlappen(int a1, int a2, int b1, int b2) {
    return std::min(a2, b2) > std::max(a1, b1);
}

/// Whether `frueher` lies where the eye comes after `spaeter`: in the same column and wholly below it, or in
/// the same row and wholly to its right.
bool verkehrt(const QRect& frueher, const QRect& spaeter) {
    const bool spalte = ueberlappen(frueher.left(), frueher.right(), spaeter.left(), spaeter.right());
    const bool zeile = ueberlappen(frueher.top(), frueher.bottom(), spaeter.top(), spaeter.bottom());
    return (spalte && frueher.top() > spaeter.bottom()) || (zeile && frueher.left() > spaeter.right());
}

Befund verkehrte(QWidget& form) {
    Befund fehler;
    const auto folge = tabfolge(form);
    for (std::size_t i = 0; i < folge.size(); ++i)
        for (std::size_t j = i + 1; j < folge.size(); ++j)
            if (verkehrt(platz(*folge[i], form), platz(*folge[j], form)))
                fehler.push_back(folge[i]->objectName().toStdString() + " before " +
                                 folge[j]->objectName().toStdString());
    return fehler;
}

/// Frames that the tabulator leaves and comes back to.
Befund zerrissene(QWidget& form) {
    Befund fehler;
    const auto folge = tabfolge(form);
    for (auto* rahmen : form.findChildren<QGroupBox*>()) {
        int eintritte = 0;
        bool vorherInnen = false;
        for (const auto* control : folge) {
            const bool innen = rahmen->isAncestorOf(control);
            eintritte += innen && !vorherInnen;
            vorherInnen = innen;
        }
        if (eintritte > 1)
            fehler.push_back(rahmen->objectName().toStdString());
    }
    return fehler;
}

} // namespace

TEST_F(Formgang, DerTabulatorFolgtDemAuge) {
    gehen([](const std::string& zustand, QWidget& form) {
        EXPECT_EQ(verkehrte(form), Befund{}) << zustand;
        EXPECT_EQ(zerrissene(form), Befund{}) << zustand;
        if (form.isEnabled()) {
            EXPECT_GT(tabfolge(form).size(), 0U) << zustand;
        }
    });
}

TEST_F(Formgang, DieFangboxenLiegenInDerTabfolge) {
    int boxen = 0;
    gehen([&](const std::string& zustand, QWidget& form) {
        const auto folge = tabfolge(form);
        for (auto* box : form.findChildren<Tastenfang*>())
            if (box->isVisible() && box->isEnabled()) {
                ++boxen;
                EXPECT_TRUE(std::ranges::find(folge, box) != folge.end()) << zustand;
            }
    });
    EXPECT_EQ(boxen, 4) << "of the button editor, the slider editor and both stick editors";
}

TEST_F(Formgang, WoDerTabulatorHaeltIstZuSehen) {
    int stellen = 0;
    gehen([&](const std::string& zustand, QWidget& form) {
        if (zustand != "frmJust" && zustand != "frmJustr")
            return;
        form.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        auto& ebene = control<QWidget>(form, "Stickebene");
        ebene.setFocus(Qt::TabFocusReason);
        do {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            vergehen(400);
            const auto* wo = QApplication::focusWidget();
            EXPECT_EQ(wo->visibleRegion().boundingRect(), wo->rect()) << wo->objectName().toStdString();
            vergehen(5000);
            EXPECT_EQ(wo->visibleRegion().boundingRect(), wo->rect()) << "as long as it has the focus";
            ++stellen;
        } while (!ebene.hasFocus());
        vergehen(5000);
        for (const char* innen : {"Uschalt(0)", "Command1(1)"})
            EXPECT_TRUE(control<QWidget>(form, innen).visibleRegion().isEmpty()) << innen;
    });
    EXPECT_EQ(stellen, 2 * 8)
        << "a layer, three buttons, the tick, two for where the stick was and the plane, of both sticks";
}

TEST_F(Formgang, VerkehrtIstWasDasAugeAndersLiest) {
    const QRect oben(0, 0, 50, 20);
    const QRect darunter(0, 30, 50, 20);
    const QRect daneben(60, 0, 50, 20);
    const QRect schraeg(60, 30, 50, 20);
    EXPECT_FALSE(verkehrt(oben, darunter));
    EXPECT_TRUE(verkehrt(darunter, oben));
    EXPECT_FALSE(verkehrt(oben, daneben));
    EXPECT_TRUE(verkehrt(daneben, oben));
    EXPECT_FALSE(verkehrt(darunter, daneben)) << "the next column";
    EXPECT_FALSE(verkehrt(daneben, darunter)) << "the next row";
    EXPECT_FALSE(verkehrt(oben, schraeg));
}
