// SPDX-License-Identifier: GPL-3.0-or-later
// The picture of the pad as a screen reader finds it.
#include "tests/editors/buttons/Tastwerktest.h"

#include <QAccessible>

namespace {

class Padzugang : public Tastwerktest {
protected:
    QAccessibleInterface& bild() {
        return *QAccessible::queryAccessibleInterface(&control<QWidget>(form(), "imgHintergrund"));
    }
    QString name(int stelle) { return bild().child(stelle)->text(QAccessible::Name); }
    std::vector<int> gewaehlte() {
        std::vector<int> stellen;
        for (int i = 0; i < bild().childCount(); ++i)
            if (bild().child(i)->state().selected)
                stellen.push_back(i);
        return stellen;
    }
    static void ausloesen(QAccessibleInterface& zugang) {
        zugang.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }
};

} // namespace

TEST_F(Padzugang, EineListeAusKnoepfenInDerOrdnungDesBildes) {
    belegt(0, "1,65,0-0-0");
    oeffnen();
    EXPECT_EQ(bild().role(), QAccessible::List);
    EXPECT_EQ(bild().text(QAccessible::Name), "Knöpfe des Gamepads");
    ASSERT_EQ(bild().childCount(), 16);
    QStringList namen;
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(bild().child(i)->role(), QAccessible::Button);
        EXPECT_EQ(bild().indexOfChild(bild().child(i)), i);
        namen << name(i).section(": ", 0, 0);
    }
    // What stands on the pad, not what the labels have always called it.
    EXPECT_EQ(namen.join(", "), "L 2, L 1, Select, Steuerkreuz oben, Steuerkreuz links, Steuerkreuz unten, "
                                "Steuerkreuz rechts, L-Stick, R 2, R 1, Start, Dreieck, Kreis, Kreuz, "
                                "Viereck, R-Stick");
    EXPECT_EQ(name(11), "Dreieck: A");
    EXPECT_EQ(name(0), "L 2: nicht belegt");
    EXPECT_EQ(bild().child(16), nullptr);
    EXPECT_EQ(bild().child(-1), nullptr);
}

TEST_F(Padzugang, EinKnopfWirdGedruecktWiePerKlickUndIstDannGewaehlt) {
    oeffnen();
    EXPECT_EQ(gewaehlte(), std::vector<int>{});
    auto& kreis = *bild().child(12);
    EXPECT_EQ(kreis.actionInterface()->actionNames(), QStringList{QAccessibleActionInterface::pressAction()});
    ausloesen(kreis);
    EXPECT_EQ(gewaehlte(), std::vector<int>{12});
    art(1);
    EXPECT_EQ(belegung(1), "1,0,0-0-0");
    control<QWidget>(form(), "imgHintergrund").setEnabled(false);
    ausloesen(*bild().child(11));
    EXPECT_EQ(gewaehlte(), std::vector<int>{12}) << "one that is locked does nothing";
}

TEST_F(Padzugang, DerGewaehlteKnopfHatDenFokusDerListe) {
    oeffnen();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form()));
    auto& ansicht = control<QWidget>(form(), "imgHintergrund");
    ansicht.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&ansicht, Qt::Key_Down);
    EXPECT_EQ(gewaehlte(), std::vector<int>{0});
    QTest::keyClick(&ansicht, Qt::Key_Down);
    EXPECT_EQ(gewaehlte(), std::vector<int>{1});
    EXPECT_EQ(bild().focusChild(), bild().child(1));
    EXPECT_TRUE(bild().child(1)->state().focused);
    knopf(4).setFocus();
    EXPECT_FALSE(bild().child(1)->state().focused);
}

TEST_F(Padzugang, DieKnoepfeLiegenWoIhreSchilderLiegen) {
    oeffnen();
    for (int i = 0; i < 16; ++i) {
        const auto mitte = bild().child(i)->rect().center();
        EXPECT_EQ(bild().childAt(mitte.x(), mitte.y()), bild().child(i)) << i;
    }
}
