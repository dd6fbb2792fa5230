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
        return bild();
    }
    QImage bild() { return ebene_->grab().toImage(); }
    Stickebene& stickebene() { return *ebene_; }

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

namespace {

using Takte = std::vector<std::uint32_t>;

Takte takte(std::uint32_t faktor) {
    Takte alle(std::size_t{256} * 256);
    for (std::size_t i = 0; i < alle.size(); ++i)
        alle[i] = i % 3 == 0 ? 0 : static_cast<std::uint32_t>(i * faktor % 1009);
    return alle;
}

/// What a plane shows that has never shown anything else.
QImage neu(const QImage& bild, const Takte& takte, QSize groesse = GROESSE) {
    Ebene ebene(bild);
    ebene.stickebene().resize(groesse);
    ebene.stickebene().streuungSetzen(takte);
    return ebene.bild();
}

} // namespace

// The picture of the counts is kept while it is off, and is that of what it is shown for all the same.
TEST(Stickebenenbild, WasBehaltenWirdIstImmerDasWasGezeigtWerdenSoll) {
    const auto dunkel = muster(GROESSE);
    QImage hell(GROESSE, QImage::Format_RGB32);
    hell.fill(Qt::white);
    const auto eine = takte(7);
    const auto andere = takte(31);
    Ebene ebene(dunkel);
    const auto zeigt = [&](const QImage& bild, const Takte& streuung, QSize groesse = GROESSE) {
        ebene.stickebene().streuungSetzen(streuung);
        EXPECT_EQ(ebene.bild(), neu(bild, streuung, groesse));
    };
    zeigt(dunkel, eine);
    zeigt(dunkel, {});
    zeigt(dunkel, eine);
    zeigt(dunkel, andere);
    zeigt(dunkel, {});
    ebene.stickebene().bildSetzen(hell);
    zeigt(hell, {});
    zeigt(hell, andere);
    ebene.stickebene().bildSetzen(dunkel);
    zeigt(dunkel, andere);
    zeigt(dunkel, {});
    ebene.stickebene().resize(500, 300);
    zeigt(dunkel, {}, {500, 300});
    zeigt(dunkel, andere, {500, 300});
    zeigt(dunkel, Takte(std::size_t{256} * 256), {500, 300});
    zeigt(dunkel, eine, {500, 300});
}

TEST(Stickebenenbild, SymboleLiegenAufDemStreubildUndGehenMitDerGroesse) {
    const auto symbol = KreisBlauZeichnen({{{20000, 20000}, {20000, 50000}, {50000, 20000}, {50000, 50000}}});
    Ebene ebene(muster(GROESSE));
    ebene.mit({symbol});
    for (const auto groesse : {GROESSE, QSize(400, 300)})
        for (const auto& streuung : {takte(7), Takte()}) {
            ebene.stickebene().resize(groesse);
            ebene.stickebene().streuungSetzen(streuung);
            Ebene frische(muster(GROESSE));
            frische.stickebene().resize(groesse);
            frische.stickebene().streuungSetzen(streuung);
            const auto ohne = frische.bild();
            EXPECT_EQ(ebene.bild(), frische.mit({symbol}));
            EXPECT_NE(ebene.bild(), ohne);
        }
}
