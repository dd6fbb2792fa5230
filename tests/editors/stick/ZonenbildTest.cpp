// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Zonenbild.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLineF>
#include <QPainter>

namespace {

constexpr int GROESSE = 600;

/// A field in the middle half of the plane.
constexpr Feldecken MITTELFELD{{{16384, 16384}, {16384, 49152}, {49152, 16384}, {49152, 49152}}};

/// Pixel of a plane unit.
int bildpunkt(double wert, int groesse = GROESSE) {
    return static_cast<int>(wert * groesse / 65535);
}

/// The symbols on nothing.
QImage gemalt(const Zonenbild& bild, QSize groesse = {GROESSE, GROESSE}) {
    QImage flaeche(groesse, QImage::Format_ARGB32_Premultiplied);
    flaeche.fill(Qt::transparent);
    QPainter maler(&flaeche);
    bild.malen(maler, groesse);
    return flaeche;
}
QImage gemalt(const Feldsymbol& symbol) {
    Zonenbild bild;
    bild.zeichnen(symbol);
    return gemalt(bild);
}

QRgb farbeBei(const QImage& bild, double x, double y) {
    return bild.pixel(bildpunkt(x, bild.width()), bildpunkt(y, bild.height()));
}

constexpr QRgb DURCHSICHTIG = 0;

} // namespace

TEST(Zonenbild, FarbwerteHabenRotImNiedrigstenByte) {
    EXPECT_EQ(symbolfarbwert(16711680), QColor(0, 0, 255));
    EXPECT_EQ(symbolfarbwert(32768), QColor(0, 128, 0));
    EXPECT_EQ(symbolfarbwert(255), QColor(255, 0, 0));
    EXPECT_EQ(symbolfarbwert(131071), QColor(255, 255, 1));
}

TEST(Zonenbild, OhneSymboleRuehrtEsNichtsAn) {
    const Zonenbild bild;
    QImage leer(40, 30, QImage::Format_ARGB32_Premultiplied);
    leer.fill(Qt::transparent);
    EXPECT_EQ(gemalt(bild, {40, 30}), leer);
    EXPECT_TRUE(bild.flaechen({40, 30}).empty());
}

TEST(Zonenbild, EinKreisIstEinUmrissUmSeineMitte) {
    const auto gemaltes = gemalt(KreisBlauZeichnen(MITTELFELD));
    const double radius = 8192;
    for (const auto& [dx, dy] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}})
        EXPECT_EQ(farbeBei(gemaltes, 32768 + dx * radius, 32768 + dy * radius), qRgb(0, 0, 255));
    EXPECT_EQ(farbeBei(gemaltes, 32768, 32768), DURCHSICHTIG);
    EXPECT_EQ(farbeBei(gemaltes, 32768 + radius * 1.2, 32768), DURCHSICHTIG);
    EXPECT_EQ(farbeBei(gemaltes, 32768 + radius, 32768 + radius), DURCHSICHTIG);
}

TEST(Zonenbild, EinRechteckIstEinUmrissAufDenVierteln) {
    const auto gemaltes = gemalt(RechteckZeichnen(MITTELFELD));
    for (const auto& [x, y] : {std::pair{24576, 32768}, {40960, 32768}, {32768, 24576}, {32768, 40960}})
        EXPECT_EQ(farbeBei(gemaltes, x, y), qRgb(255, 0, 0));
    EXPECT_EQ(farbeBei(gemaltes, 32768, 32768), DURCHSICHTIG);
    EXPECT_EQ(farbeBei(gemaltes, 20000, 32768), DURCHSICHTIG);
}

TEST(Zonenbild, EinKreuzReichtBisInDieEcken) {
    const auto gemaltes = gemalt(KreuzZeichnen(MITTELFELD));
    for (const double anteil : {0.02, 0.5, 0.98}) {
        const double diagonal = 16384 + anteil * 32768;
        EXPECT_EQ(farbeBei(gemaltes, diagonal, diagonal), qRgb(255, 0, 0));
        EXPECT_EQ(farbeBei(gemaltes, diagonal, 65536 - diagonal), qRgb(255, 0, 0));
    }
    EXPECT_EQ(farbeBei(gemaltes, 32768, 20000), DURCHSICHTIG);
}

TEST(Zonenbild, EinheitenDerEbeneFolgenInBeidenAchsenDerGroesse) {
    Zonenbild bild;
    bild.zeichnen(RechteckZeichnen(MITTELFELD));
    const auto breit = gemalt(bild, {800, 400});
    EXPECT_EQ(breit.size(), QSize(800, 400));
    EXPECT_EQ(breit.pixel(300, 200), qRgb(255, 0, 0));
    EXPECT_EQ(breit.pixel(400, 150), qRgb(255, 0, 0));
    EXPECT_EQ(qAlpha(breit.pixel(400, 200)), 0);
}

TEST(Zonenbild, EinKreisIstRundAufEinerEbeneJederForm) {
    Zonenbild bild;
    bild.zeichnen(KreisGruenZeichnen(MITTELFELD));
    for (const QSize groesse : {QSize(1200, 400), QSize(400, 1200)}) {
        const auto gemaltes = gemalt(bild, groesse);
        const auto farbe = [&](double grad, double radius) {
            const QPointF wo =
                QLineF::fromPolar(radius, grad).p2() + QPointF(groesse.width(), groesse.height()) / 2;
            return gemaltes.pixel(static_cast<int>(wo.x()), static_cast<int>(wo.y()));
        };
        const double radius = 50; // an eighth of the shorter side, whose scale is the smaller one
        for (const double grad : {0, 30, 45, 90, 135, 180, 200, 270, 300}) {
            EXPECT_EQ(farbe(grad, radius), qRgb(0, 128, 0)) << grad;
            for (const double daneben : {radius - 6, radius + 6, 150.0})
                EXPECT_EQ(farbe(grad, daneben), DURCHSICHTIG) << daneben << " at " << grad;
        }
    }
}

TEST(Zonenbild, EinKreuzGehtVonEckeZuEckeAufEinerEbeneJederForm) {
    Zonenbild bild;
    bild.zeichnen(KreuzZeichnen({{{6000, 40000}, {6000, 60000}, {30000, 40000}, {30000, 60000}}}));
    for (const QSize groesse : {QSize(1200, 400), QSize(400, 1200)}) {
        const auto gemaltes = gemalt(bild, groesse);
        for (const double anteil : {0.05, 0.3, 0.5, 0.8, 0.95})
            for (const double y : {40000 + anteil * 20000, 60000 - anteil * 20000})
                EXPECT_EQ(farbeBei(gemaltes, 6000 + anteil * 24000, y), qRgb(255, 0, 0)) << anteil;
        EXPECT_EQ(farbeBei(gemaltes, 18000, 42000), DURCHSICHTIG);
        EXPECT_EQ(farbeBei(gemaltes, 8000, 50000), DURCHSICHTIG);
    }
}

TEST(Zonenbild, DunkleFarbenHabenEinenHellenSaumUndHelleEinenDunklen) {
    const auto neben = [](const Feldsymbol& symbol) {
        // Right of the leftmost place of the circle, behind its line of 3 pixels.
        const auto punkt = gemalt(symbol).pixelColor(bildpunkt(24576) + 3, bildpunkt(32768));
        return punkt.alpha() > 100 ? punkt.lightness() : -1;
    };
    EXPECT_GT(neben(KreisBlauZeichnen(MITTELFELD)), 200);
    EXPECT_GT(neben(KreisGruenZeichnen(MITTELFELD)), 150);
    const int gelb = neben(KreisGelbZeichnen(MITTELFELD));
    EXPECT_GE(gelb, 0);
    EXPECT_LT(gelb, 80);
}

TEST(Zonenbild, BehaeltSeineSymboleBisZumNaechstenLoeschen) {
    Zonenbild bild;
    const auto eins = KreisBlauZeichnen(MITTELFELD);
    const auto zwei = KreuzZeichnen(MITTELFELD);
    bild.zeichnen(eins);
    gemalt(bild, {100, 100});
    bild.zeichnen(zwei);
    EXPECT_EQ(bild.symbole(), (std::vector<Feldsymbol>{eins, zwei}));
    EXPECT_EQ(farbeBei(gemalt(bild), 32768, 32768), qRgb(255, 0, 0));
    EXPECT_EQ(farbeBei(gemalt(bild, {GROESSE / 2, GROESSE / 2}), 32768, 32768), qRgb(255, 0, 0));
    bild.loeschen();
    EXPECT_TRUE(bild.symbole().empty());
    EXPECT_EQ(farbeBei(gemalt(bild), 32768, 32768), DURCHSICHTIG);
}

TEST(Zonenbild, WasMehrmalsDerselbeOrtTraegtWirdEinmalGemalt) {
    const auto kreis = KreisBlauZeichnen(MITTELFELD);
    const auto kreuz = KreuzZeichnen(MITTELFELD);
    Zonenbild oft;
    for (int i = 0; i < 1000; ++i)
        oft.zeichnen(kreis);
    Zonenbild einmal;
    einmal.zeichnen(kreis);
    EXPECT_EQ(gemalt(oft), gemalt(einmal));
    EXPECT_EQ(oft.flaechen({GROESSE, GROESSE}).size(), 1U);

    oft.zeichnen(kreuz);
    oft.zeichnen(kreis);
    EXPECT_EQ(oft.symbole(), (std::vector<Feldsymbol>{kreuz, kreis})) << "the last one lies on top";
    oft.zeichnen(KreisGruenZeichnen(MITTELFELD));
    EXPECT_EQ(oft.symbole().size(), 3U) << "another colour is another symbol";
    oft.loeschen();
    oft.zeichnen(kreis);
    EXPECT_EQ(oft.symbole(), (std::vector<Feldsymbol>{kreis}));
}

TEST(Zonenbild, DerUnterschiedZweierBilderSindIhreVerschiedenenSymbole) {
    const auto a = KreisBlauZeichnen(MITTELFELD);
    const auto b = KreuzZeichnen(MITTELFELD);
    const auto c = KreisGelbZeichnen(MITTELFELD);
    using Liste = std::vector<Feldsymbol>;
    EXPECT_EQ(symbolunterschied({a, b}, {a, b}), Liste{});
    EXPECT_EQ(symbolunterschied({}, {a, b}), (Liste{a, b}));
    EXPECT_EQ(symbolunterschied({a, b}, {}), (Liste{a, b}));
    EXPECT_EQ(symbolunterschied({a, b}, {a, c}), (Liste{b, c}));
    EXPECT_EQ(symbolunterschied({a, b, c}, {c, a}), (Liste{a, b, c, c, a})) << "another order";
}

TEST(Zonenbild, AusserhalbDerGenanntenFlaechenWirdNichtsGemalt) {
    constexpr Feldecken SCHMAL{{{1000, 3000}, {1000, 60000}, {2500, 3000}, {2500, 60000}}};
    Zonenbild bild;
    for (const auto& ecken : {MITTELFELD, SCHMAL})
        for (auto* symbol : {KreisBlauZeichnen, RechteckZeichnen, KreuzZeichnen})
            bild.zeichnen(symbol(ecken));
    for (const QSize groesse : {QSize(37, 37), QSize(GROESSE, GROESSE), QSize(900, 300), QSize(200, 700)}) {
        auto bleibt = gemalt(bild, groesse);
        EXPECT_EQ(bild.flaechen(bleibt.size()).size(), 6U);
        QPainter maler(&bleibt);
        maler.setCompositionMode(QPainter::CompositionMode_Clear);
        for (const auto& flaeche : bild.flaechen(bleibt.size()))
            maler.fillRect(flaeche.toAlignedRect(), Qt::transparent);
        maler.end();
        QImage leer(bleibt.size(), bleibt.format());
        leer.fill(Qt::transparent);
        EXPECT_EQ(bleibt, leer) << groesse.width() << " by " << groesse.height();
    }
}

TEST(Zonenbild, EntarteteFelderUndGroessenSchadenNicht) {
    Zonenbild bild;
    bild.zeichnen(KreisBlauZeichnen({{{40000, 40000}, {40000, 20000}, {20000, 40000}, {20000, 20000}}}));
    bild.zeichnen(RechteckZeichnen({{{40000, 40000}, {40000, 20000}, {20000, 40000}, {20000, 20000}}}));
    bild.zeichnen(KreuzZeichnen({{{5, 5}, {5, 5}, {5, 5}, {5, 5}}}));
    for (const QSize groesse : {QSize(0, 0), QSize(1, 1), QSize(GROESSE, GROESSE)}) {
        EXPECT_EQ(bild.flaechen(groesse).size(), 3U);
        QImage flaeche(GROESSE, GROESSE, QImage::Format_RGB32);
        QPainter maler(&flaeche);
        bild.malen(maler, groesse);
    }
}
