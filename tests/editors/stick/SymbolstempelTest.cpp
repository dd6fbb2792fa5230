// SPDX-License-Identifier: GPL-3.0-or-later
// Symbols that are laid down look as those that are painted, whatever was there before.
#include "editors/stick/Symbolstempel.h"
#include "editors/stick/Zonenbild.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

using Symbole = std::vector<Feldsymbol>;

constexpr QSize GROESSE{600, 400};

constexpr Feldecken feld(int links, int oben, int breite, int hoehe) {
    return {{{links, oben}, {links, oben + hoehe}, {links + breite, oben}, {links + breite, oben + hoehe}}};
}

/// Small ones, some upon each other, one over all the plane and one that reaches beyond it.
const Symbole ALLE{
    KreisBlauZeichnen(feld(1000, 1000, 5000, 9000)),     KreisGruenZeichnen(feld(2000, 3000, 9000, 9000)),
    RechteckZeichnen(feld(0, 0, 65535, 65535)),          KreuzZeichnen(feld(0, 0, 65535, 65535)),
    KreisGelbZeichnen(feld(60000, 30000, 30000, 30000)), RechteckZeichnen(feld(30000, 60000, 1500, 3000))};

QImage grund(QSize groesse, double dichte) {
    QImage bild((QSizeF(groesse) * dichte).toSize(), QImage::Format_RGB32);
    for (int y = 0; y < bild.height(); ++y)
        for (int x = 0; x < bild.width(); ++x)
            bild.setPixel(x, y, qRgb(x * 7 % 256, y * 5 % 256, (x + y) * 3 % 256));
    bild.setDevicePixelRatio(dichte);
    return bild;
}

QImage gelegt(const Symbolstempel& stempel, QSize groesse, double dichte, const QRegion& wo) {
    auto bild = grund(groesse, dichte);
    QPainter maler(&bild);
    stempel.legen(maler, wo);
    return bild;
}
QImage gelegt(const Symbole& symbole, QSize groesse = GROESSE, double dichte = 1) {
    Symbolstempel stempel;
    stempel.setzen(symbole, groesse, dichte);
    return gelegt(stempel, groesse, dichte, QRect({0, 0}, groesse));
}
QImage gemalt(const Symbole& symbole, QSize groesse, double dichte) {
    auto bild = grund(groesse, dichte);
    QPainter maler(&bild);
    for (const auto& symbol : symbole)
        symbolMalen(maler, symbol, groesse);
    return bild;
}

/// The largest difference of a colour of a pixel.
int unterschied(const QImage& eines, const QImage& anderes) {
    constexpr std::array<int (*)(QRgb), 3> ANTEILE{&qRed, &qGreen, &qBlue};
    int groesster = eines.size() == anderes.size() ? 0 : 256;
    for (int y = 0; groesster < 256 && y < eines.height(); ++y)
        for (int x = 0; x < eines.width(); ++x)
            for (const auto anteil : ANTEILE)
                groesster =
                    std::max(groesster, std::abs(anteil(eines.pixel(x, y)) - anteil(anderes.pixel(x, y))));
    return groesster;
}

} // namespace

// Translucent upon translucent is rounded at another place.
TEST(SymbolstempelTest, GelegtSehenSieAusWieGemalt) {
    constexpr int RUNDUNG = 3;
    for (const auto groesse : {GROESSE, QSize(130, 700), QSize(37, 37)})
        for (const double dichte : {1.0, 2.0}) {
            EXPECT_LE(unterschied(gelegt(ALLE, groesse, dichte), gemalt(ALLE, groesse, dichte)), RUNDUNG)
                << groesse.width() << " at " << dichte;
            EXPECT_GT(unterschied(gelegt(ALLE, groesse, dichte), grund(groesse, dichte)), 100);
        }
}

TEST(SymbolstempelTest, ZwischenZweiPixelnAuch) {
    constexpr int SCHARF = 40; // edges may lie a fraction of a pixel beside
    EXPECT_LE(unterschied(gelegt(ALLE, GROESSE, 1.5), gemalt(ALLE, GROESSE, 1.5)), SCHARF);
}

TEST(SymbolstempelTest, WasVorherDaWarMachtKeinenUnterschied) {
    const Symbole umgekehrt(ALLE.rbegin(), ALLE.rend());
    const Symbole eines{ALLE[1]};
    Symbolstempel stempel;
    const auto wie = [&](const Symbole& symbole, QSize groesse, double dichte) {
        stempel.setzen(symbole, groesse, dichte);
        EXPECT_EQ(gelegt(stempel, groesse, dichte, QRect({0, 0}, groesse)), gelegt(symbole, groesse, dichte));
    };
    wie(ALLE, GROESSE, 1);
    wie(umgekehrt, GROESSE, 1);
    wie(eines, GROESSE, 1);
    wie(ALLE, QSize(500, 400), 1);
    wie(ALLE, QSize(500, 400), 2);
    wie({}, QSize(500, 400), 2);
    EXPECT_NE(gelegt(ALLE), gelegt(umgekehrt)) << "the last one lies on top";
}

TEST(SymbolstempelTest, ImSelbenBildMehrmalsLiegtEsMehrmals) {
    EXPECT_EQ(gelegt({ALLE[0], ALLE[1], ALLE[0]}), gelegt({ALLE[0], ALLE[1], ALLE[0]}, GROESSE, 1));
    EXPECT_NE(gelegt({ALLE[0], ALLE[1], ALLE[0]}), gelegt({ALLE[0], ALLE[1]}));
}

TEST(SymbolstempelTest, NurWasDieStelleBeruehrtWirdGelegt) {
    Symbolstempel stempel;
    stempel.setzen({ALLE[0], ALLE[5]}, GROESSE, 1);
    const QRect obenLinks(0, 0, 200, 200);
    const auto bild = gelegt(stempel, GROESSE, 1, obenLinks);
    EXPECT_EQ(bild.copy(obenLinks), gelegt({ALLE[0], ALLE[5]}).copy(obenLinks));
    EXPECT_EQ(bild, gelegt({ALLE[0]}));
}

TEST(SymbolstempelTest, NaehmeDieEbeneKeinenPlatzEinWaereNichtsDa) {
    Symbolstempel stempel;
    stempel.setzen(ALLE, QSize(0, 0), 1);
    EXPECT_EQ(gelegt(stempel, GROESSE, 1, QRect({0, 0}, GROESSE)), grund(GROESSE, 1));
}
