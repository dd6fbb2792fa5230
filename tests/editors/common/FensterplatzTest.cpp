// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Fensterplatz.h"

#include <gtest/gtest.h>

#include <QtTest/QTest>

#include <algorithm>

namespace {

constexpr QRect SCHIRM(0, 0, 1000, 600);
constexpr QSize KLEIN(300, 200);

QPoint neben(const QRect& oeffner, const std::vector<QRect>& andere = {}, QSize groesse = KLEIN,
             const QRect& frei = SCHIRM) {
    return fensterplatz(frei, groesse, oeffner, andere);
}

} // namespace

TEST(Fensterplatz, LiegtRechtsNebenDemOeffnerAufSeinerHoehe) {
    EXPECT_EQ(neben({100, 50, 400, 300}), QPoint(500, 50));
}

TEST(Fensterplatz, ReichtRechtsBisZumLetztenPixel) {
    EXPECT_EQ(neben({0, 0, 700, 300}), QPoint(700, 0));
    EXPECT_EQ(neben({0, 0, 701, 300}), QPoint(700, 300)) << "a pixel less: below";
    EXPECT_EQ(neben({0, 0, 701, 401}), QPoint(700, 400)) << "there neither: over as little as can be";
}

TEST(Fensterplatz, LiegtLinksWoRechtsKeinPlatzIst) {
    EXPECT_EQ(neben({400, 50, 500, 550}), QPoint(100, 50));
}

TEST(Fensterplatz, DerOeffnerRagtAusDemSchirm) {
    EXPECT_EQ(neben({-350, 40, 400, 300}), QPoint(50, 40));
    EXPECT_EQ(neben({980, 500, 400, 300}), QPoint(680, 400)) << "its height would reach below the screen";
}

TEST(Fensterplatz, WeichtDenAnderenAus) {
    EXPECT_EQ(neben({0, 0, 400, 300}, {{400, 0, 300, 600}}), QPoint(700, 0));
    EXPECT_EQ(neben({0, 0, 400, 300}, {{400, 0, 600, 250}}), QPoint(400, 250));
}

TEST(Fensterplatz, UeberdecktEherEinAnderesAlsDenOeffner) {
    EXPECT_EQ(neben({0, 0, 700, 600}, {{700, 0, 300, 600}}), QPoint(700, 0));
}

TEST(Fensterplatz, UeberdecktSoWenigWieMoeglich) {
    const QRect oeffner(200, 100, 600, 400);
    const QSize gross(500, 300);
    const QRect fenster(neben(oeffner, {}, gross), gross);
    const auto flaeche = [](const QRect& r) { return r.width() * r.height(); };
    int kleinste = flaeche(SCHIRM);
    for (int x = 0; x <= SCHIRM.width() - gross.width(); ++x)
        for (int y = 0; y <= SCHIRM.height() - gross.height(); ++y)
            kleinste = std::min(kleinste, flaeche(oeffner & QRect({x, y}, gross)));
    EXPECT_EQ(flaeche(oeffner & fenster), kleinste);
    EXPECT_TRUE(SCHIRM.contains(fenster));
}

TEST(Fensterplatz, BleibtAufDemFreienTeilDesSchirms) {
    const QRect frei(100, 30, 800, 500);
    EXPECT_EQ(neben({100, 30, 500, 500}, {}, KLEIN, frei), QPoint(600, 30));
    EXPECT_EQ(neben({0, 0, 550, 560}, {}, KLEIN, frei), QPoint(550, 30));
}

TEST(Fensterplatz, EinZuGrossesBeginntObenLinks) {
    EXPECT_EQ(neben({100, 50, 400, 300}, {}, {1200, 700}), SCHIRM.topLeft());
}

TEST(Fensterplatz, OhneOeffnerObenLinks) {
    const QRect frei(0, 30, 1000, 570);
    EXPECT_EQ(neben(QRect(frei.topLeft(), QSize(0, 0)), {}, KLEIN, frei), frei.topLeft());
}

TEST(Hereingeholt, DerKuerzesteWeg) {
    EXPECT_EQ(hereingeholt(SCHIRM, {100, 100, 300, 200}), QPoint(100, 100));
    EXPECT_EQ(hereingeholt(SCHIRM, {700, 400, 300, 200}), QPoint(700, 400));
    EXPECT_EQ(hereingeholt(SCHIRM, {701, 401, 300, 200}), QPoint(700, 400));
    EXPECT_EQ(hereingeholt(SCHIRM, {-1, -1, 300, 200}), QPoint(0, 0));
    EXPECT_EQ(hereingeholt(SCHIRM, {50, 50, 1200, 700}), QPoint(0, 0));
}

TEST(Schirmfoermig, HatDieFlaecheDesEntwurfsInDerFormDesSchirms) {
    constexpr QSize ENTWURF(1024, 768);
    EXPECT_EQ(schirmfoermig(ENTWURF, {1600, 1200}, {1600, 1200}), ENTWURF);
    EXPECT_EQ(schirmfoermig(ENTWURF, {1920, 1080}, {1900, 1000}), QSize(1182, 665));
    EXPECT_EQ(schirmfoermig(ENTWURF, {1366, 768}, {1366, 600}), QSize(1067, 600));
    EXPECT_EQ(schirmfoermig(ENTWURF, {1080, 1920}, {1000, 1920}), QSize(665, 1182));
    EXPECT_EQ(schirmfoermig(ENTWURF, {1920, 1080}, {640, 1000}), QSize(640, 360));
}
