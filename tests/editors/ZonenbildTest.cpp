#include "editors/Zonenbild.h"

#include <gtest/gtest.h>

namespace {

constexpr int GROESSE = 600;

/// A field in the middle half of the plane.
constexpr Feldecken MITTELFELD{{{16384, 16384}, {16384, 49152}, {49152, 16384}, {49152, 49152}}};

/// Pixel of a plane unit.
int bildpunkt(double wert, int groesse = GROESSE) {
    return static_cast<int>(wert * groesse / 65535);
}

const QImage& gemalt(Zonenbild& bild, const Feldsymbol& symbol) {
    bild.loeschen();
    bild.zeichnen(symbol);
    return bild.bild({GROESSE, GROESSE});
}

QRgb farbeBei(const QImage& bild, double x, double y) {
    return bild.pixel(bildpunkt(x, bild.width()), bildpunkt(y, bild.height()));
}

constexpr QRgb DURCHSICHTIG = 0;

} // namespace

TEST(Zonenbild, ColourValuesHoldRedInTheLowestByte) {
    EXPECT_EQ(symbolfarbwert(16711680), QColor(0, 0, 255));
    EXPECT_EQ(symbolfarbwert(32768), QColor(0, 128, 0));
    EXPECT_EQ(symbolfarbwert(255), QColor(255, 0, 0));
    EXPECT_EQ(symbolfarbwert(131071), QColor(255, 255, 1));
}

TEST(Zonenbild, WithoutSymbolsItIsTransparent) {
    Zonenbild bild;
    EXPECT_EQ(bild.bild({40, 30}).size(), QSize(40, 30));
    QImage leer(40, 30, QImage::Format_ARGB32_Premultiplied);
    leer.fill(Qt::transparent);
    EXPECT_EQ(bild.bild({40, 30}), leer);
}

TEST(Zonenbild, ACircleIsAnOutlineAroundItsCentre) {
    Zonenbild bild;
    const auto& gemaltes = gemalt(bild, KreisBlauZeichnen(MITTELFELD));
    const double radius = 8192;
    for (const auto& [dx, dy] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}})
        EXPECT_EQ(farbeBei(gemaltes, 32768 + dx * radius, 32768 + dy * radius), qRgb(0, 0, 255));
    EXPECT_EQ(farbeBei(gemaltes, 32768, 32768), DURCHSICHTIG);
    EXPECT_EQ(farbeBei(gemaltes, 32768 + radius * 1.2, 32768), DURCHSICHTIG);
    EXPECT_EQ(farbeBei(gemaltes, 32768 + radius, 32768 + radius), DURCHSICHTIG);
}

TEST(Zonenbild, ARectangleIsAnOutlineAtTheQuarters) {
    Zonenbild bild;
    const auto& gemaltes = gemalt(bild, RechteckZeichnen(MITTELFELD));
    for (const auto& [x, y] : {std::pair{24576, 32768}, {40960, 32768}, {32768, 24576}, {32768, 40960}})
        EXPECT_EQ(farbeBei(gemaltes, x, y), qRgb(255, 0, 0));
    EXPECT_EQ(farbeBei(gemaltes, 32768, 32768), DURCHSICHTIG);
    EXPECT_EQ(farbeBei(gemaltes, 20000, 32768), DURCHSICHTIG);
}

TEST(Zonenbild, ACrossReachesIntoTheCorners) {
    Zonenbild bild;
    const auto& gemaltes = gemalt(bild, KreuzZeichnen(MITTELFELD));
    for (const double anteil : {0.02, 0.5, 0.98}) {
        const double diagonal = 16384 + anteil * 32768;
        EXPECT_EQ(farbeBei(gemaltes, diagonal, diagonal), qRgb(255, 0, 0));
        EXPECT_EQ(farbeBei(gemaltes, diagonal, 65536 - diagonal), qRgb(255, 0, 0));
    }
    EXPECT_EQ(farbeBei(gemaltes, 32768, 20000), DURCHSICHTIG);
}

TEST(Zonenbild, PlaneUnitsFollowTheSizeInBothAxes) {
    Zonenbild bild;
    bild.zeichnen(RechteckZeichnen(MITTELFELD));
    const auto& breit = bild.bild({800, 400});
    EXPECT_EQ(breit.size(), QSize(800, 400));
    EXPECT_EQ(breit.pixel(300, 200), qRgb(255, 0, 0));
    EXPECT_EQ(breit.pixel(400, 150), qRgb(255, 0, 0));
    EXPECT_EQ(qAlpha(breit.pixel(400, 200)), 0);
}

TEST(Zonenbild, TwiceAsManyDevicePixelsGiveATwiceAsFinePicture) {
    Zonenbild bild;
    bild.zeichnen(RechteckZeichnen(MITTELFELD));
    const auto& fein = bild.bild({400, 400}, 2);
    EXPECT_EQ(fein.size(), QSize(800, 800));
    EXPECT_EQ(fein.devicePixelRatio(), 2);
    EXPECT_EQ(fein.pixel(300, 400), qRgb(255, 0, 0));
}

TEST(Zonenbild, DarkColoursHaveALightHaloAndLightOnesADarkOne) {
    Zonenbild bild;
    const auto neben = [&](const Feldsymbol& symbol) {
        // Right of the leftmost place of the circle, behind its line of 3 pixels.
        const auto punkt = gemalt(bild, symbol).pixelColor(bildpunkt(24576) + 3, bildpunkt(32768));
        return punkt.alpha() > 100 ? punkt.lightness() : -1;
    };
    EXPECT_GT(neben(KreisBlauZeichnen(MITTELFELD)), 200);
    EXPECT_GT(neben(KreisGruenZeichnen(MITTELFELD)), 150);
    const int gelb = neben(KreisGelbZeichnen(MITTELFELD));
    EXPECT_GE(gelb, 0);
    EXPECT_LT(gelb, 80);
}

TEST(Zonenbild, KeepsItsSymbolsUntilTheNextClear) {
    Zonenbild bild;
    const auto eins = KreisBlauZeichnen(MITTELFELD);
    const auto zwei = KreuzZeichnen(MITTELFELD);
    bild.zeichnen(eins);
    bild.bild({100, 100});
    bild.zeichnen(zwei);
    EXPECT_EQ(bild.symbole(), (std::vector<Feldsymbol>{eins, zwei}));
    EXPECT_EQ(farbeBei(bild.bild({GROESSE, GROESSE}), 32768, 32768), qRgb(255, 0, 0));
    EXPECT_EQ(farbeBei(bild.bild({GROESSE / 2, GROESSE / 2}), 32768, 32768), qRgb(255, 0, 0));
    bild.loeschen();
    EXPECT_TRUE(bild.symbole().empty());
    EXPECT_EQ(farbeBei(bild.bild({GROESSE, GROESSE}), 32768, 32768), DURCHSICHTIG);
}

TEST(Zonenbild, PaintsAnewOnlyWhatHasChanged) {
    Zonenbild bild;
    bild.zeichnen(KreuzZeichnen(MITTELFELD));
    const auto erstes = bild.bild({GROESSE, GROESSE}).cacheKey();
    EXPECT_EQ(bild.bild({GROESSE, GROESSE}).cacheKey(), erstes);
    EXPECT_NE(bild.bild({GROESSE, GROESSE + 1}).cacheKey(), erstes);
}

TEST(Zonenbild, DegenerateFieldsAndSizesDoNoHarm) {
    Zonenbild bild;
    bild.zeichnen(KreisBlauZeichnen({{{40000, 40000}, {40000, 20000}, {20000, 40000}, {20000, 20000}}}));
    bild.zeichnen(RechteckZeichnen({{{40000, 40000}, {40000, 20000}, {20000, 40000}, {20000, 20000}}}));
    bild.zeichnen(KreuzZeichnen({{{5, 5}, {5, 5}, {5, 5}, {5, 5}}}));
    EXPECT_TRUE(bild.bild({0, 0}).isNull());
    EXPECT_EQ(bild.bild({1, 1}).size(), QSize(1, 1));
    EXPECT_EQ(bild.bild({GROESSE, GROESSE}).size(), QSize(GROESSE, GROESSE));
}
