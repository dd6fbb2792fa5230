// SPDX-License-Identifier: GPL-3.0-or-later
// What the style draws by itself, but as the toolkit does it.
#include "editors/common/Kontraststil.h"

#include <gtest/gtest.h>

#include <QGroupBox>
#include <QImage>
#include <QPainter>
#include <QStyleFactory>

#include <memory>

namespace {

QImage gemalt(QGroupBox& gruppe, QStyle& stil, const QPalette& farben) {
    gruppe.setStyle(&stil);
    gruppe.setPalette(farben);
    gruppe.resize(220, 140);
    return gruppe.grab().toImage();
}

} // namespace

TEST(KontraststilTest, DerRahmenEinerGruppeIstDerDesToolkits) {
    const std::unique_ptr<QStyle> grundstil(QStyleFactory::create(Kontraststil::GRUNDSTIL));
    Kontraststil stil;
    const QPalette hell(QColor(240, 240, 240));
    const QPalette dunkel(QColor(40, 40, 40));
    for (const auto& farben : {hell, dunkel})
        for (const auto* titel : {"", "Linker Stick"}) {
            QGroupBox gruppe(titel);
            const auto eigene = gemalt(gruppe, stil, farben);
            EXPECT_EQ(eigene, gemalt(gruppe, *grundstil, farben)) << titel;
            QImage ohne(eigene.size(), eigene.format());
            ohne.fill(farben.color(QPalette::Window));
            EXPECT_NE(eigene, ohne) << "there is a frame";
        }
}

TEST(KontraststilTest, EineGruppeZumAnkreuzenHatIhrenRahmenEbendort) {
    const std::unique_ptr<QStyle> grundstil(QStyleFactory::create(Kontraststil::GRUNDSTIL));
    Kontraststil stil;
    QGroupBox gruppe;
    gruppe.setCheckable(true);
    const auto unten = [&](QStyle& dieser) {
        const auto bild = gemalt(gruppe, dieser, QPalette(QColor(240, 240, 240)));
        return bild.copy(40, 0, bild.width() - 40, bild.height()); // beside the box, whose outline differs
    };
    EXPECT_EQ(unten(stil), unten(*grundstil));
}
