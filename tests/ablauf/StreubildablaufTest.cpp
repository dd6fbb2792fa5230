// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program in real time: a hand plays, the editor shows where its stick was, a line that lies in the
// noise is put elsewhere, and the same hand presses less by mistake.
//
// STREUBILD_SEKUNDEN plays as long as that instead.
#include "tests/ablauf/Formablauf.h"
#include "tests/hilfen/Kunsthand.h"

#include <QCheckBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>

#include <chrono>
#include <cmath>
#include <cstdio>

namespace {

constexpr double EBENENENDE = 65535;
constexpr double MITTE_Y = 33000;
constexpr int LINIE_IM_RAUSCHEN = 33000;
constexpr const char* A_AB = "+38"; // X key code of the us layout
constexpr int SEKUNDEN = 10;

int spielsekunden() {
    bool gesetzt = false;
    const int sekunden = qEnvironmentVariableIntValue("STREUBILD_SEKUNDEN", &gesetzt);
    return gesetzt ? sekunden : SEKUNDEN;
}

/// What the field to the right pressed.
struct Druecke {
    int alle = 0;
    int irrige = 0; ///< while the hand let the stick rest
};

class Streubildgeschichte : public Formablauf {
protected:
    /// The hand plays, a sample a millisecond, as far as this machine keeps up.
    Druecke spielen() {
        using Uhr = std::chrono::steady_clock;
        Kunsthand hand({.saat = 11});
        Kunsthand::Probe probe;
        Druecke druecke;
        const auto anfang = Uhr::now();
        const auto dauer = std::chrono::seconds(spielsekunden());
        auto stand = anfang;
        while (Uhr::now() - anfang < dauer) {
            for (; stand <= Uhr::now(); stand += std::chrono::milliseconds{1})
                probe = hand.naechste();
            pad_->achse(SDL_CONTROLLER_AXIS_LEFTX, static_cast<Sint16>(probe.x - 32768));
            pad_->achse(SDL_CONTROLLER_AXIS_LEFTY, static_cast<Sint16>(probe.y - 32768));
            QTest::qWait(1);
            for (const auto& eines : lauscher_->vorhandene())
                if (eines == A_AB) {
                    ++druecke.alle;
                    druecke.irrige += probe.taetigkeit == Kunsthand::Taetigkeit::Ruhen;
                }
        }
        pad_->achse(SDL_CONTROLLER_AXIS_LEFTX, 0);
        pad_->achse(SDL_CONTROLLER_AXIS_LEFTY, 0);
        takte(10);
        return druecke;
    }
    /// At its end the first one is saved as a record.
    Druecke lauf(bool mitschneiden) {
        umschalten();
        EXPECT_NE(laufFenster(), nullptr);
        takte(10);
        const auto druecke = spielen();
        if (mitschneiden) {
            control<QPushButton>(*laufFenster(), "cmdMitschnitt").click();
            auto& meldung = control<QLabel>(*laufFenster(), "lblMitschnitt");
            EXPECT_TRUE(warten([&] { return meldung.text().startsWith("Gespeichert: "); }))
                << meldung.text().toStdString();
        }
        umschalten();
        EXPECT_EQ(laufFenster(), nullptr);
        return druecke;
    }

    QWidget& ebene() { return control<QWidget>(*form_, "Stickebene"); }
    QPointF pixel(double x, double y) {
        return {x * ebene().width() / EBENENENDE, y * ebene().height() / EBENENENDE};
    }
    void maus(QEvent::Type art, double x, Qt::MouseButton taste = Qt::NoButton) {
        const auto wo = pixel(x, MITTE_Y);
        QMouseEvent ereignis(art, wo, ebene().mapToGlobal(wo), taste,
                             art == QEvent::MouseButtonPress ? Qt::MouseButtons(taste) : Qt::NoButton,
                             Qt::NoModifier);
        QApplication::sendEvent(&ebene(), &ereignis);
    }
    QString worte() { return control<QLabel>(*form_, "Zustandszeile").text(); }
    QImage bild() { return ebene().grab().toImage(); }
    /// The pixels around the rest of the stick that are others in `eines` than in `anderes`.
    int gefaerbte(const QImage& eines, const QImage& anderes) {
        const auto von = pixel(31500, 31500).toPoint();
        const auto bis = pixel(34500, 34500).toPoint();
        int anzahl = 0;
        for (int y = von.y(); y < bis.y(); ++y)
            for (int x = von.x(); x < bis.x(); ++x)
                anzahl += eines.pixel(x, y) != anderes.pixel(x, y);
        return anzahl;
    }

    QWidget* form_ = nullptr;
};

} // namespace

TEST_F(Streubildgeschichte, EineLinieKommtAusDemRauschen) {
    Schemabau schema(datenbank_);
    schema.taste(9, "1,123,0-0-0").ungeglaettet();
    schema.linien(Stickseite::Links, 1, {10000, LINIE_IM_RAUSCHEN, 10000, 55000})
        .leereLinienAb(Stickseite::Links, 2);
    schema.feld(Stickseite::Links, {0, LINIE_IM_RAUSCHEN, 0, 0}, "2,0,65,0,0");
    programmAuf(schema);
    const auto vorher = lauf(true);
    EXPECT_GT(vorher.irrige, 3);

    form_ = &oeffnen("Command1(1)", "frmJust");
    const auto ohne = bild();
    control<QCheckBox>(*form_, "Streubild").click();
    // What the run has counted is written beside the event loop, and the editor looks for it.
    EXPECT_TRUE(warten([&] {
        maus(QEvent::MouseMove, LINIE_IM_RAUSCHEN);
        return worte().contains("Diese Linie liegt im Rauschen (± ");
    })) << worte().toStdString();
    EXPECT_GT(gefaerbte(bild(), ohne), 100) << "where the stick came to rest";

    maus(QEvent::MouseButtonPress, LINIE_IM_RAUSCHEN, Qt::LeftButton);
    EXPECT_TRUE(warten([&] {
        maus(QEvent::MouseMove, LINIE_IM_RAUSCHEN);
        return worte().contains(" Mitschnitt vom ");
    })) << worte().toStdString();
    double ort = LINIE_IM_RAUSCHEN;
    do
        maus(QEvent::MouseMove, ort += 100);
    while (worte().contains("Rauschen") && ort < 50000);
    EXPECT_LT(ort, 40000) << "not far";
    EXPECT_TRUE(worte().contains("(bisher ")) << worte().toStdString();
    std::printf("at %.0f the editor says:\n%s\n", ort, qPrintable(worte()));
    maus(QEvent::MouseButtonPress, ort, Qt::LeftButton);
    form_->close();

    const auto nachher = lauf(false);
    std::printf("%d s each: with the line in the noise %d presses, %d of them at rest; out of it %d and %d\n",
                spielsekunden(), vorher.alle, vorher.irrige, nachher.alle, nachher.irrige);
    EXPECT_LT(nachher.irrige * 4, vorher.irrige);
}
