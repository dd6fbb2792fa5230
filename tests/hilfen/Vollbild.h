// SPDX-License-Identifier: GPL-3.0-or-later
// A picture that fills the screen, as a game does, and one in which every pixel counts.
#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <QRasterWindow>
#include <QTest>

#include <cstdint>
#include <utility>

/// Every pixel is one of its own.
inline QImage rauschen(QSize groesse) {
    constexpr std::uint32_t SAAT = 4711;
    QImage bild(groesse, QImage::Format_RGB32);
    QRandomGenerator zufall(SAAT);
    for (int y = 0; y < bild.height(); ++y)
        for (int x = 0; x < bild.width(); ++x)
            bild.setPixel(x, y, 0xff000000U | zufall.generate());
    return bild;
}

/// Lies over everything else, from the left upper corner on, and shows one picture.
class Vollbild final : public QRasterWindow {
public:
    explicit Vollbild(QImage bild) : bild_(std::move(bild)) {
        constexpr int GEDULD_MS = 20000;
        setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
        setGeometry(0, 0, bild_.width(), bild_.height());
        show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(this, GEDULD_MS));
        EXPECT_TRUE(QTest::qWaitFor([this] { return gemalt_; }, GEDULD_MS));
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).drawImage(0, 0, bild_);
        gemalt_ = true;
    }

private:
    QImage bild_;
    bool gemalt_ = false;
};
