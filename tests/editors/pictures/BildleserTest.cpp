// SPDX-License-Identifier: GPL-3.0-or-later
// Picture files from anywhere: what is shown of them, and what they may not cost.
#include "editors/pictures/Bildleser.h"

#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Testdatenbank.h"

#include <QBuffer>
#include <QColor>
#include <QImageWriter>

#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <sys/stat.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

const QRgb ROT = qRgb(255, 0, 0);

std::string zahl(std::uint32_t wert, int bytes = 4) {
    std::string text;
    for (; bytes > 0; --bytes, wert >>= 8)
        text += static_cast<char>(wert & 0xFF);
    return text;
}

/// A bitmap of 8 bits with run lengths, red where its color is 0.
std::string lauflaengen(int breite, int hoehe, const std::string& pixel) {
    constexpr int KOPF = 54 + 8;
    return "BM" + zahl(KOPF) + zahl(0) + zahl(KOPF) + zahl(40) + zahl(static_cast<std::uint32_t>(breite)) +
           zahl(static_cast<std::uint32_t>(hoehe)) + zahl(1, 2) + zahl(8, 2) + zahl(1) + zahl(0) + zahl(0) +
           zahl(0) + zahl(2) + zahl(0) + std::string("\0\0\xFF\0\xFF\0\0\0", 8) + pixel;
}
const std::string BILDENDE("\0\1", 2);

std::string gespeichert(const QImage& bild, const char* format, bool inDurchgaengen = false) {
    QBuffer strom;
    strom.open(QIODevice::WriteOnly);
    QImageWriter schreiber(&strom, format);
    schreiber.setProgressiveScanWrite(inDurchgaengen);
    schreiber.write(bild);
    return strom.data().toStdString();
}

/// A GIF of this size with one red pixel at its corner.
std::string gif(std::uint32_t breite, std::uint32_t hoehe) {
    return "GIF89a" + zahl(breite, 2) + zahl(hoehe, 2) +
           std::string("\x80\0\0\xFF\0\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;", 25);
}

QImage rotes() {
    QImage bild(8, 8, QImage::Format_RGB32);
    bild.fill(ROT);
    return bild;
}

class Bildlesertest : public testing::Test {
protected:
    QImage gelesen(const std::string& inhalt) const {
        dateiSchreiben(datei, inhalt);
        return bildLesen(datei);
    }

    const Testordner ordner;
    const fs::path datei = ordner.pfad() / "S0L.bmp";
};

} // namespace

TEST_F(Bildlesertest, DreiFormateWerdenGezeigtAndereNichtGefragt) {
    for (const auto* format : {"BMP", "PNG", "JPEG"})
        EXPECT_EQ(gelesen(gespeichert(rotes(), format)).size(), QSize(8, 8)) << format;
    EXPECT_TRUE(gelesen(gif(1, 1)).isNull());
    for (const auto* format : {"PPM", "XPM", "XBM", "ICO"})
        EXPECT_TRUE(gelesen(gespeichert(rotes(), format)).isNull()) << format;
    EXPECT_TRUE(gelesen("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'/>").isNull());
    EXPECT_TRUE(gelesen("").isNull());
}

TEST_F(Bildlesertest, DasGroessteBildWirdGezeigtEinGroesseresNicht) {
    EXPECT_EQ(gelesen(lauflaengen(8192, 8192, BILDENDE)).size(), QSize(8192, 8192));
    QImage schwarz(8192, 8192, QImage::Format_Mono);
    schwarz.fill(0);
    EXPECT_EQ(gelesen(gespeichert(schwarz, "PNG")).size(), schwarz.size());
    EXPECT_TRUE(gelesen(lauflaengen(8193, 8192, BILDENDE)).isNull());
    EXPECT_TRUE(gelesen(lauflaengen(60000, 60000, BILDENDE)).isNull());
    EXPECT_TRUE(gelesen(lauflaengen(2147483647, 2147483647, BILDENDE)).isNull());
}

TEST_F(Bildlesertest, WasLauflaengenUeberspringenIstDieErsteFarbe) {
    { // memory that held something else before
        const std::vector<std::vector<char>> fremdes(100, std::vector<char>(64 * 64, '\1'));
    }
    for (const auto& pixel :
         {BILDENDE, std::string("\0\2\x10\x10", 4) + BILDENDE, std::string("\5\0", 2) + BILDENDE}) {
        const auto bild = gelesen(lauflaengen(64, 64, pixel));
        ASSERT_EQ(bild.size(), QSize(64, 64));
        for (int y = 0; y < 64; ++y)
            EXPECT_EQ(std::ranges::count(std::span(bild.constScanLine(y), 64), 0), 64) << y;
    }
}

TEST_F(Bildlesertest, EineDateiLaengerAlsJedesBildWirdNichtGelesen) {
    dateiSchreiben(datei, gespeichert(rotes(), "BMP"));
    fs::resize_file(datei, GROESSTE_BILDDATEI);
    EXPECT_EQ(bildLesen(datei).size(), QSize(8, 8));
    fs::resize_file(datei, GROESSTE_BILDDATEI + 1);
    EXPECT_TRUE(bildLesen(datei).isNull());
}

TEST_F(Bildlesertest, WasKeineDateiIstHaeltNichtAuf) {
    EXPECT_TRUE(bildLesen(datei).isNull());
    ASSERT_EQ(mkfifo(datei.c_str(), 0600), 0);
    EXPECT_TRUE(bildLesen(datei).isNull());
    EXPECT_TRUE(bildLesen(ordner.pfad()).isNull());
    const auto verweis = ordner.pfad() / "verweis";
    for (const fs::path& ziel : {fs::path("/dev/zero"), fs::path("/dev/full"), verweis}) {
        fs::remove(verweis);
        fs::create_symlink(ziel, verweis);
        EXPECT_TRUE(bildLesen(verweis).isNull()) << ziel;
    }
}

TEST_F(Bildlesertest, DieTexteEinesPngBleibenUngelesen) {
    auto bild = rotes();
    bild.setText("Kommentar", QString(10'000, 'a')); // packed
    bild.setText("Kurz", "b");
    const auto inhalt = gespeichert(bild, "PNG");
    ASSERT_EQ(QImage::fromData(QByteArray::fromStdString(inhalt)).textKeys().size(), 2);
    const auto gezeigtes = gelesen(inhalt);
    EXPECT_EQ(gezeigtes.pixel(7, 7), ROT);
    EXPECT_TRUE(gezeigtes.textKeys().isEmpty());
}

TEST_F(Bildlesertest, DieDurchsichtigkeitEinesPngBleibt) {
    QImage bild(2, 1, QImage::Format_Indexed8);
    bild.setColorTable({qRgba(255, 0, 0, 0), qRgba(0, 255, 0, 255)});
    bild.setPixel(0, 0, 0);
    bild.setPixel(1, 0, 1);
    const auto gezeigtes = gelesen(gespeichert(bild, "PNG"));
    EXPECT_EQ(qAlpha(gezeigtes.pixel(0, 0)), 0);
    EXPECT_EQ(gezeigtes.pixel(1, 0), qRgb(0, 255, 0));
}

TEST_F(Bildlesertest, EinPngMitEinemTeilLaengerAlsDieDateiIstKeines) {
    const auto ganz = gespeichert(rotes(), "PNG");
    for (std::size_t laenge = 8; laenge + 12 < ganz.size(); ++laenge)
        EXPECT_TRUE(gelesen(ganz.substr(0, laenge)).isNull()) << laenge;
    auto falsch = ganz;
    falsch.replace(falsch.find("IDAT") - 4, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_TRUE(gelesen(falsch).isNull());
}

TEST_F(Bildlesertest, EinJpegInTausendDurchgaengenWirdNichtGezeigt) {
    const auto ganz = gespeichert(rotes(), "JPEG", true);
    const std::string marke = "\xFF\xDA";
    const auto letzter = ganz.substr(ganz.rfind(marke), ganz.size() - 2 - ganz.rfind(marke));
    std::size_t durchgaenge = 0;
    for (auto stelle = ganz.find(marke); stelle != std::string::npos; stelle = ganz.find(marke, stelle + 1))
        ++durchgaenge;
    ASSERT_GT(durchgaenge, 5U);
    auto viele = ganz.substr(0, ganz.size() - 2);
    for (; durchgaenge < 64; ++durchgaenge)
        viele += letzter;
    EXPECT_EQ(gelesen(viele + "\xFF\xD9").size(), QSize(8, 8));
    EXPECT_TRUE(gelesen(viele + letzter + "\xFF\xD9").isNull());
}
