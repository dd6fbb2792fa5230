// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Streubild.h"

#include <gtest/gtest.h>

#include <QColor>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

namespace {

constexpr int ZELLEN = 256;

std::vector<std::uint32_t> raster(std::initializer_list<std::pair<int, std::uint32_t>> zellen) {
    std::vector<std::uint32_t> takte(std::size_t{ZELLEN} * ZELLEN);
    for (const auto& [zelle, anzahl] : zellen)
        takte[static_cast<std::size_t>(zelle)] = anzahl;
    return takte;
}
int zelle(int x, int y) {
    return y * ZELLEN + x;
}
QImage einfarbig(QSize groesse, QColor farbe) {
    QImage bild(groesse, QImage::Format_RGB32);
    bild.fill(farbe);
    return bild;
}
QImage gemischt(const std::vector<std::uint32_t>& takte, const QImage& grund, bool hell) {
    const auto bild = std::make_unique<Streubild>();
    bild->setzen(takte, hell);
    QImage ziel(grund.size(), QImage::Format_RGB32);
    ziel.fill(Qt::magenta);
    bild->mischen(grund, ziel, ziel.rect());
    return ziel;
}
/// Three quarters of a colour and a quarter of what is behind it, to one.
bool istGemisch(QRgb pixel, QRgb farbe, QRgb grund) {
    constexpr std::array<int (*)(QRgb), 3> ANTEILE{&qRed, &qGreen, &qBlue};
    for (const auto anteil : ANTEILE)
        if (std::abs(anteil(pixel) - (anteil(farbe) * 3 + anteil(grund)) / 4) > 1)
            return false;
    return true;
}
double leuchtdichte(QRgb farbe) {
    const auto linear = [](int anteil) { return std::pow(anteil / 255.0, 2.2); };
    return 0.2126 * linear(qRed(farbe)) + 0.7152 * linear(qGreen(farbe)) + 0.0722 * linear(qBlue(farbe));
}

/// As who has no cones of a kind sees it: the lightness of a colour, CIE L*, 0 to 100 (Machado, Oliveira and
/// Fernandes, 2009, of the full strength; linear light).
using Sehweise = std::array<std::array<double, 3>, 3>;
constexpr std::array<Sehweise, 4> SEHWEISEN{
    {{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
     {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}},
     {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}},
     {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}}};

double helligkeit(QRgb farbe, const Sehweise& sehweise) {
    const auto linear = [](int anteil) { return std::pow(anteil / 255.0, 2.2); };
    const std::array<double, 3> licht{linear(qRed(farbe)), linear(qGreen(farbe)), linear(qBlue(farbe))};
    constexpr std::array<double, 3> GEWICHT{0.2126, 0.7152, 0.0722};
    double y = 0;
    for (std::size_t i = 0; i < licht.size(); ++i) {
        double gesehen = 0;
        for (std::size_t k = 0; k < licht.size(); ++k)
            gesehen += sehweise[i][k] * licht[k];
        y += GEWICHT[i] * std::clamp(gesehen, 0.0, 1.0);
    }
    return 116 * std::cbrt(std::max(y, 0.008856)) - 16;
}

} // namespace

// By lightness alone, also through the quarter of a picture that shines through.
TEST(StreubildTest, WerKeinRotGruenOderBlauSiehtUnterscheidetZehnStufen) {
    for (const auto& sehweise : SEHWEISEN)
        for (const int grund : {0, 127, 255})
            for (int stufe = 1; stufe < 10; ++stufe) {
                const auto gesehen = [&](int welche) {
                    const auto farbe = streufarbe(welche / 9.0);
                    const auto ueber = [&](int anteil) { return (anteil * 3 + grund) / 4; };
                    return helligkeit(qRgb(ueber(qRed(farbe)), ueber(qGreen(farbe)), ueber(qBlue(farbe))),
                                      sehweise);
                };
                EXPECT_GT(gesehen(stufe) - gesehen(stufe - 1), 3.5)
                    << &sehweise - SEHWEISEN.data() << ", " << grund << ", " << stufe;
            }
}

// Who sees no red or no green goes by lightness and by blue against yellow.
TEST(StreubildTest, DieFarbenWerdenNurHeller) {
    for (int i = 1; i <= 100; ++i)
        EXPECT_GT(leuchtdichte(streufarbe(i / 100.0)), leuchtdichte(streufarbe((i - 1) / 100.0))) << i;
    EXPECT_GT(leuchtdichte(streufarbe(1)) / leuchtdichte(streufarbe(0)), 20);
    EXPECT_EQ(streufarbe(-1), streufarbe(0));
    EXPECT_EQ(streufarbe(2), streufarbe(1));
}

TEST(StreubildTest, WoDerStickNieWarBleibtDasBild) {
    const auto grund = einfarbig({512, 512}, QColor(10, 20, 30));
    const auto bild = gemischt(raster({{zelle(3, 5), 7}}), grund, false);
    for (int y = 0; y < 512; ++y)
        for (int x = 0; x < 512; ++x) {
            const bool drin = x / 2 == 3 && y / 2 == 5;
            ASSERT_EQ(bild.pixel(x, y) == grund.pixel(x, y), !drin) << x << "," << y;
        }
    EXPECT_TRUE(istGemisch(bild.pixel(6, 10), streufarbe(1), grund.pixel(6, 10)));
}

// As in a game of years: 2^32 ticks in one cell, one in another.
TEST(StreubildTest, DerMassstabIstLogarithmisch) {
    const auto grund = einfarbig({256, 256}, Qt::black);
    const auto bild = gemischt(raster({{0, 0xffffffff}, {1, 0xffff}, {2, 1}}), grund, false);
    EXPECT_TRUE(istGemisch(bild.pixel(0, 0), streufarbe(1), 0));
    EXPECT_TRUE(istGemisch(bild.pixel(1, 0), streufarbe(17.0 / 33), 0));
    EXPECT_TRUE(istGemisch(bild.pixel(2, 0), streufarbe(1.585 / 33), 0)) << "a single tick has its colour";
    EXPECT_NE(bild.pixel(2, 0), grund.pixel(2, 0));
}

// Colours of small counts are looked up, those of large ones are computed.
TEST(StreubildTest, JedeAnzahlHatIhreFarbe) {
    const std::vector<std::uint32_t> anzahlen{1, 2, 3, 999, 16383, 16384, 16385, 1000000, 3, 16383, 1};
    std::vector<std::uint32_t> takte(std::size_t{ZELLEN} * ZELLEN);
    std::ranges::copy(anzahlen, takte.begin());
    const auto bild = gemischt(takte, einfarbig({256, 256}, Qt::black), false);
    for (std::size_t i = 0; i < anzahlen.size(); ++i) {
        const auto wert = std::log(2.0 * anzahlen[i] + 1) / std::log(2000001.0);
        EXPECT_TRUE(istGemisch(bild.pixel(static_cast<int>(i), 0), streufarbe(wert), 0)) << anzahlen[i];
    }
}

TEST(StreubildTest, AufHellemBildIstDasHaeufigeDunkel) {
    const auto grund = einfarbig({256, 256}, Qt::white);
    const auto bild = gemischt(raster({{0, 1000}, {1, 1}}), grund, true);
    EXPECT_TRUE(istGemisch(bild.pixel(0, 0), streufarbe(0), grund.pixel(0, 0)));
    EXPECT_GT(leuchtdichte(bild.pixel(1, 0)), leuchtdichte(bild.pixel(0, 0)));
}

// On screens whose size is no multiple of the cells, and smaller than those.
TEST(StreubildTest, JedesPixelHatDieFarbeSeinerZelle) {
    std::vector<std::uint32_t> takte(std::size_t{ZELLEN} * ZELLEN);
    for (std::size_t i = 0; i < takte.size(); ++i)
        takte[i] = i * 7919 % 5 == 0 ? 0 : static_cast<std::uint32_t>(i * 31 % 1000);
    for (const auto groesse : {QSize(1024, 768), QSize(1366, 771), QSize(200, 100), QSize(1, 1)}) {
        const auto grund = einfarbig(groesse, QColor(200, 100, 50));
        const auto klein = gemischt(takte, einfarbig({256, 256}, QColor(200, 100, 50)), false);
        const auto bild = gemischt(takte, grund, false);
        for (int y = 0; y < groesse.height(); ++y)
            for (int x = 0; x < groesse.width(); ++x)
                ASSERT_EQ(bild.pixel(x, y),
                          klein.pixel(x * 256 / groesse.width(), y * 256 / groesse.height()))
                    << x << "," << y << " of " << groesse.width();
    }
}

TEST(StreubildTest, EinTeilWirdWieDasGanzeGemischt) {
    std::vector<std::uint32_t> takte(std::size_t{ZELLEN} * ZELLEN, 3);
    const auto grund = einfarbig({700, 500}, QColor(90, 90, 90));
    const auto ganz = gemischt(takte, grund, false);
    const auto bild = std::make_unique<Streubild>();
    bild->setzen(takte, false);
    auto ziel = einfarbig({700, 500}, Qt::magenta);
    const QRect stelle(33, 44, 101, 57);
    bild->mischen(grund, ziel, stelle.adjusted(0, 0, 0, 0));
    EXPECT_EQ(ziel.copy(stelle), ganz.copy(stelle));
    EXPECT_EQ(ziel.pixelColor(32, 44), QColor(Qt::magenta));
    EXPECT_EQ(ziel.pixelColor(134, 44), QColor(Qt::magenta));
    EXPECT_EQ(ziel.pixelColor(33, 101), QColor(Qt::magenta));
    bild->mischen(grund, ziel, QRect(-50, -50, 5000, 5000)); // a symbol at the edge reaches beyond
    EXPECT_EQ(ziel, ganz);
}

TEST(StreubildTest, LeerIstEsOhneTakte) {
    const auto bild = std::make_unique<Streubild>();
    EXPECT_TRUE(bild->leer());
    bild->setzen(raster({{1, 1}}), false);
    EXPECT_FALSE(bild->leer());
    bild->setzen(raster({}), false);
    EXPECT_TRUE(bild->leer());
    bild->setzen({}, false);
    EXPECT_TRUE(bild->leer());
}

TEST(StreubildTest, HellIstEinBildImGanzen) {
    EXPECT_TRUE(istHell(einfarbig({300, 200}, Qt::white)));
    EXPECT_FALSE(istHell(einfarbig({300, 200}, Qt::black)));
    EXPECT_FALSE(istHell(QImage()));
    auto halb = einfarbig({300, 200}, Qt::white);
    for (int y = 0; y < 130; ++y)
        for (int x = 0; x < 300; ++x)
            halb.setPixelColor(x, y, Qt::black);
    EXPECT_FALSE(istHell(halb));
}
