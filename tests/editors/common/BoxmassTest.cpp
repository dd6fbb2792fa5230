// SPDX-License-Identifier: GPL-3.0-or-later
// Message boxes with texts of any length, and names where they are shown.
#include "editors/common/Formhilfen.h"
#include "editors/common/Hinweistext.h"
#include "editors/common/Rollbereich.h"
#include "tests/editors/common/Formtest.h"

#include <QScreen>

namespace {

/// What a box looked like when it stood on the screen.
struct Kasten {
    QString text;
    QRect ort;
    bool passt = false; ///< all of it, frame and button included, is on the screen
    bool rollt = false; ///< some of it is seen only by scrolling
};

Kasten gezeigt(const QString& text, QWidget* eltern = nullptr) {
    Kasten kasten;
    QTimer takt;
    int ansichten = 0;
    QObject::connect(&takt, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || ++ansichten == 1) // it gets its place when it has been shown
            return;
        kasten.text = box->text();
        kasten.ort = box->frameGeometry();
        const auto* knopf = box->button(QMessageBox::Yes);
        kasten.passt = box->screen()->availableGeometry().contains(kasten.ort) &&
                       box->rect().contains(knopf->geometry());
        kasten.rollt = &forminhalt(*box) != box;
        box->accept();
    });
    takt.start(0);
    frage(eltern, text, "");
    return kasten;
}

QString woerter(int zeichen) {
    return QString("Wort ").repeated(zeichen / 5);
}

TEST(BoxmassTest, EineBoxBleibtMitJedemTextAufDemSchirm) {
    for (const auto& text : {QString(400'000, 'M'), woerter(400'000), QString("\n").repeated(400),
                             QString("Zeile\n").repeated(4000)}) {
        const auto kasten = gezeigt("Anfang " + text + " Ende?");
        EXPECT_TRUE(kasten.passt) << kasten.ort.width() << " x " << kasten.ort.height();
        EXPECT_FALSE(kasten.rollt);
        EXPECT_TRUE(kasten.text.startsWith("Anfang "));
        EXPECT_TRUE(kasten.text.contains("…"));
        EXPECT_TRUE(kasten.text.endsWith(" Ende?"));
    }
}

TEST(BoxmassTest, MitGrosserSchriftBleibtWeniger) {
    const auto normal = gezeigt(woerter(10'000));
    const Schriftgrad gross(30);
    const auto grosse = gezeigt(woerter(10'000));
    EXPECT_TRUE(normal.passt && grosse.passt);
    EXPECT_LT(grosse.text.size(), normal.text.size());
    EXPECT_GT(grosse.text.size(), 40);
}

// As a path may have, or a name from elsewhere.
TEST(BoxmassTest, EinWortDasBreiterAlsDerSchirmIstWirdUmbrochen) {
    const int schirmbreite = QGuiApplication::primaryScreen()->availableGeometry().width();
    for (const int zeichen : {60, 120, 400}) {
        const auto kasten = gezeigt("Anfang „" + QString(zeichen, 'W') + "“ Ende?");
        EXPECT_TRUE(kasten.passt && !kasten.rollt) << zeichen;
        EXPECT_LT(kasten.ort.width(), schirmbreite);
        EXPECT_EQ(kasten.text.count('W'), zeichen);
    }
}

TEST(BoxmassTest, WasPasstBleibtGanz) {
    for (const auto& text : {QString("Kurz?"), woerter(1000), QString("Zeile\n").repeated(12)}) {
        const auto kasten = gezeigt(text);
        EXPECT_TRUE(kasten.passt);
        EXPECT_EQ(kasten.text, text);
    }
}

TEST(BoxmassTest, AuchAmRandDesSchirmsStehtSieGanzDarauf) {
    QWidget form;
    const auto schirm = form.screen()->availableGeometry();
    form.setGeometry(schirm.right() - 60, schirm.bottom() - 60, 200, 200);
    form.show();
    const auto kasten = gezeigt(woerter(400'000), &form);
    EXPECT_TRUE(kasten.passt) << kasten.ort.left() << "," << kasten.ort.top() << " " << kasten.ort.width()
                              << " x " << kasten.ort.height();
}

TEST(OhneMitteTest, VonEinemLangenTextBleibenAnfangUndEnde) {
    EXPECT_EQ(ohneMitte("", 10), "");
    EXPECT_EQ(ohneMitte("1234567890", 10), "1234567890");
    EXPECT_EQ(ohneMitte("12345678901", 10), "1234567…01");
    EXPECT_EQ(ohneMitte(QString(100, 'x'), 10).size(), 10);
}

TEST(OhneMitteTest, EinZeichenAusZweiHaelftenBleibtGanzOderGar) {
    const auto pferd = QString::fromUcs4(U"🐴");
    for (int vorn = 0; vorn < 3; ++vorn) {
        const auto kurz = ohneMitte(QString(vorn, 'x') + pferd.repeated(20), 10);
        EXPECT_TRUE(kurz.isValidUtf16()) << vorn;
        EXPECT_LE(kurz.size(), 10) << vorn;
    }
}

TEST(HinweistextTest, LangeNamenWerdenGekuerzt) {
    const QString lang(400'000, 'x');
    EXPECT_EQ(hinweistext(lang).size(), 1000);
    EXPECT_EQ(titeltext(lang).size(), 1000);
    EXPECT_EQ(titeltext("[*]"), "[*][*]");
}

} // namespace
