// SPDX-License-Identifier: GPL-3.0-or-later
// The picture of a plane: what is painted piece by piece is what is painted whole.
#include "editors/stick/Stickebene.h"

#include <gtest/gtest.h>

#include <QImage>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr QSize GROESSE{700, 450};

QImage muster(QSize groesse) {
    QImage bild(groesse, QImage::Format_RGB32);
    for (int y = 0; y < bild.height(); ++y)
        for (int x = 0; x < bild.width(); ++x)
            bild.setPixel(x, y, qRgb(x * 7 % 256, y * 5 % 256, (x + y) * 3 % 256));
    return bild;
}

class Ebene {
public:
    explicit Ebene(const QImage& bild) : form_(new QWidget), ebene_(new Stickebene(form_.get())) {
        form_->resize(GROESSE);
        ebene_->resize(GROESSE);
        ebene_->bildSetzen(bild);
    }
    QImage mit(const std::vector<Feldsymbol>& symbole) {
        ebene_->symbole().loeschen();
        for (const auto& symbol : symbole)
            ebene_->symbole().zeichnen(symbol);
        ebene_->symboleZeigen();
        return ebene_->grab().toImage();
    }

private:
    std::unique_ptr<QWidget> form_;
    Stickebene* ebene_;
};

/// Symbols that lie upon each other and reach beyond the plane.
class Zufallssymbole {
public:
    Feldsymbol eines() {
        constexpr std::array ARTEN{KreisBlauZeichnen, KreisGruenZeichnen, RechteckZeichnen, KreuzZeichnen,
                                   KreisGelbZeichnen};
        const int x = zahl(60000);
        const int y = zahl(60000);
        const int bisX = x + zahl(20000);
        const int bisY = y + zahl(20000);
        return ARTEN[static_cast<std::size_t>(zahl(ARTEN.size()))](
            {{{x, y}, {x, bisY}, {bisX, y}, {bisX, bisY}}});
    }
    int zahl(std::size_t unter) { return static_cast<int>(zufall_() % unter); }

private:
    std::mt19937 zufall_{1};
};

} // namespace

TEST(Stickebenenbild, StueckweiseGemaltIstEsDasselbeWieImGanzen) {
    for (const auto& bild : {muster(GROESSE), muster({200, 300}), QImage()}) {
        Ebene stueckweise(bild);
        Zufallssymbole zufall;
        std::vector<Feldsymbol> symbole;
        for (int runde = 0; runde < 60; ++runde) {
            for (int i = zufall.zahl(4); i > 0 && !symbole.empty(); --i)
                symbole.erase(symbole.begin() + zufall.zahl(symbole.size()));
            for (int i = zufall.zahl(5); i > 0; --i)
                symbole.insert(symbole.begin() + zufall.zahl(symbole.size() + 1), zufall.eines());
            if (runde % 10 == 9)
                std::ranges::reverse(symbole);
            EXPECT_EQ(stueckweise.mit(symbole), Ebene(bild).mit(symbole)) << runde;
        }
    }
}
