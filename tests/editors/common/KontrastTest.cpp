// SPDX-License-Identifier: GPL-3.0-or-later
// What is drawn by hand is seen in light, dark and high contrast palettes: measured at what lies on the
// screen.
#include "editors/common/Farben.h"
#include "editors/stick/Zustandszeile.h"
#include "tests/editors/common/Farbwelt.h"
#include "tests/editors/common/Formgang.h"

#include <QCheckBox>
#include <QImage>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

#include <algorithm>
#include <map>

namespace {

using Befund = std::vector<std::string>;

/// The colour that most pixels have.
QColor grundfarbe(const QImage& bild, const QRect& wo) {
    std::map<QRgb, int> zahl;
    for (int y = wo.top(); y <= wo.bottom(); ++y)
        for (int x = wo.left(); x <= wo.right(); ++x)
            ++zahl[bild.pixel(x, y)];
    return std::ranges::max_element(zahl, {}, [](const auto& eintrag) { return eintrag.second; })->first;
}
/// The highest contrast that a pixel has with `grund`.
double staerkster(const QImage& bild, const QRect& wo, const QColor& grund) {
    double hoechster = 1;
    for (int y = wo.top(); y <= wo.bottom(); ++y)
        for (int x = wo.left(); x <= wo.right(); ++x)
            hoechster = std::max(hoechster, kontrast(bild.pixelColor(x, y), grund));
    return hoechster;
}
double textkontrast(const QImage& bild, const QRect& wo) {
    return staerkster(bild, wo, grundfarbe(bild, wo));
}
/// Of the edges of a drawing whose middle is its ground.
double randkontrast(const QImage& bild) {
    const int x = bild.width() / 4;
    return staerkster(bild, {x, 0, 1, 3}, grundfarbe(bild, {x, 4, 1, bild.height() - 8}));
}

QImage bildVon(QWidget& control) {
    return control.grab().toImage();
}

class Kontrast : public Formgang {
protected:
    /// Walks through all forms in all palettes.
    void inAllenFarben(const Formbesuch& besuch) {
        for (const auto& welt : farbwelten()) {
            const Farbwelt an(welt);
            gehen([&](const std::string& zustand, QWidget& form) {
                besuch(std::string(welt.name) + ", " + zustand, form);
            });
            programm_.reset();
            ereignisse();
            for (const char* tabelle :
                 {"tblTastatur", "tblSteuerKreuz", "tblStick", "tblStickR", "Sensible", "SensibleR"})
                datenbank_.sql(std::string("DELETE FROM ") + tabelle + ";");
        }
    }
};

QRect anzeige(const QAbstractButton& knopf, QStyle::SubElement teil) {
    QStyleOptionButton option;
    option.initFrom(&knopf);
    return knopf.style()->subElementRect(teil, &option, &knopf);
}

} // namespace

TEST_F(Kontrast, OptionenUndHaekchenSindAuchUngesetztZuSehen) {
    int gesehen = 0;
    inAllenFarben([&](const std::string& wo, QWidget& form) {
        for (auto* knopf : form.findChildren<QAbstractButton*>()) {
            const bool kreis = qobject_cast<QRadioButton*>(knopf);
            const bool kasten = qobject_cast<QCheckBox*>(knopf);
            if (!knopf->isVisible() || !knopf->isEnabled() || !(kreis || kasten))
                continue;
            ++gesehen;
            const auto platz =
                anzeige(*knopf, kreis ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator);
            EXPECT_GE(staerkster(bildVon(*knopf), platz.intersected(knopf->rect()),
                                 knopf->palette().color(QPalette::Window)),
                      MARKENKONTRAST)
                << wo << ": " << knopf->objectName().toStdString();
        }
    });
    EXPECT_GT(gesehen, 500);
}

TEST_F(Kontrast, FelderListenUndKnoepfeHabenEinenRand) {
    int gesehen = 0;
    inAllenFarben([&](const std::string& wo, QWidget& form) {
        for (auto* control : form.findChildren<QWidget*>()) {
            const auto klasse = std::string_view(control->metaObject()->className());
            if (!control->isVisible() || !control->isEnabled() || control->hasFocus() ||
                !(klasse == "QPushButton" || klasse == "QComboBox" ||
                  (klasse == "QLineEdit" && !control->parentWidget()->inherits("QComboBox"))))
                continue;
            ++gesehen;
            const auto bild = bildVon(*control);
            EXPECT_GE(
                staerkster(bild, {bild.width() / 4, 0, 1, 3}, control->palette().color(QPalette::Window)),
                MARKENKONTRAST)
                << wo << ": " << control->objectName().toStdString();
        }
    });
    EXPECT_GT(gesehen, 500);
}

TEST_F(Kontrast, SchilderDesPadbildesSindZuLesen) {
    inAllenFarben([&](const std::string& wo, QWidget& form) {
        if (form.objectName() != "frmJoyKonfic" || !form.isEnabled())
            return;
        for (int taste = 0; taste < 16; ++taste) {
            auto& schild = control<QLabel>(form, QString("lblInfo(%1)").arg(taste));
            const auto bild = bildVon(schild);
            EXPECT_GE(textkontrast(bild, bild.rect().adjusted(8, 4, -8, -4)), TEXTKONTRAST) << wo << taste;
            EXPECT_GE(randkontrast(bild), MARKENKONTRAST) << wo << taste;
        }
    });
}

TEST_F(Kontrast, DieMarkeEinesKnopfesHebtSichVomPadAb) {
    inAllenFarben([&](const std::string& wo, QWidget& form) {
        if (form.objectName() != "frmJoyKonfic" || !wo.ends_with("Knopf 0"))
            return;
        auto& bild = control<QWidget>(form, "imgHintergrund");
        for (const char* name : {"Shape2(0)", "Shape2(20)"}) { // on the button, and the ring around it
            auto& marke = control<QWidget>(form, name);
            const auto mit = bild.grab(marke.geometry()).toImage();
            marke.hide();
            const auto ohne = bild.grab(marke.geometry()).toImage();
            marke.show();
            double hoechster = 1;
            for (int y = 0; y < mit.height(); ++y)
                for (int x = 0; x < mit.width(); ++x)
                    hoechster = std::max(hoechster, kontrast(mit.pixelColor(x, y), ohne.pixelColor(x, y)));
            EXPECT_GE(hoechster, MARKENKONTRAST) << wo << " " << name;
        }
    });
}

TEST_F(Kontrast, DieEbeneInSichtIstAmKnopfZuSehen) {
    inAllenFarben([&](const std::string& wo, QWidget& form) {
        if (form.objectName() != "frmJoyKonfic" || !form.isEnabled())
            return;
        const auto rand = [&](int ebene) {
            auto& knopf = control<QPushButton>(form, QString("Command1(%1)").arg(ebene));
            return bildVon(knopf).pixelColor(knopf.width() / 4, 1);
        };
        EXPECT_GE(kontrast(rand(0), form.palette().color(QPalette::Window)), MARKENKONTRAST) << wo;
        EXPECT_LT(kontrast(rand(1), form.palette().color(QPalette::Window)), MARKENKONTRAST) << wo;
    });
}

TEST_F(Kontrast, ZahlenUndRandDesSchubbildesSindZuSehen) {
    inAllenFarben([&](const std::string& wo, QWidget& form) {
        if (form.objectName() != "SchubreglerKonfic")
            return;
        const auto bild = bildVon(control<QWidget>(form, "Picture1"));
        EXPECT_GE(textkontrast(bild, bild.rect().adjusted(12, 4, -4, -4)), TEXTKONTRAST) << wo;
        EXPECT_GE(randkontrast(bild), MARKENKONTRAST) << wo;
    });
}

TEST_F(Kontrast, TitelDerTafelnSindZuLesenAuchDerGesperrten) {
    inAllenFarben([&](const std::string& wo, QWidget& form) {
        const bool stick = form.objectName() == "frmJust" || form.objectName() == "frmJustr";
        if (!stick || !form.isEnabled())
            return;
        for (const char* tafel : {"Frame2", "Frame3"}) {
            auto& eine = control<QWidget>(form, tafel);
            const QRect titel(eine.width() / 2 - 40, 1, 80, 9);
            EXPECT_GE(textkontrast(bildVon(eine), titel), TEXTKONTRAST) << wo << " " << tafel;
        }
    });
}

TEST_F(Kontrast, DieZustandszeileIstAufJedemBildZuLesen) {
    for (const auto& welt : farbwelten()) {
        const Farbwelt an(welt);
        for (const auto& hinten : {Qt::white, Qt::black, Qt::gray, Qt::red}) {
            QWidget ebene;
            ebene.resize(600, 400);
            auto farben = ebene.palette();
            farben.setColor(QPalette::Window, hinten);
            ebene.setPalette(farben);
            Zustandszeile zeile(&ebene);
            zeile.zeigen({"Feld links – Tastatur: B, gehalten"});
            const auto bild = ebene.grab().toImage();
            EXPECT_GE(textkontrast(bild, zeile.geometry().adjusted(4, 4, -4, -4)), TEXTKONTRAST)
                << welt.name << " " << hinten;
        }
    }
}

// --- the colours themselves ---

TEST(Farben, DerKontrastIstDerVonWcag) {
    EXPECT_DOUBLE_EQ(kontrast(Qt::black, Qt::white), 21);
    EXPECT_DOUBLE_EQ(kontrast(Qt::white, Qt::white), 1);
    EXPECT_NEAR(kontrast(QColor(0x767676), Qt::white), 4.54, 0.01);
    EXPECT_NEAR(kontrast(QColor(Qt::blue), Qt::white), 8.59, 0.01);
}

TEST(Farben, EinUmrissHebtSichAbUndNimmtNichtMehrAlsNoetig) {
    for (const auto& welt : farbwelten()) {
        const auto grund = welt.palette.color(QPalette::Window);
        const auto schrift = welt.palette.color(QPalette::WindowText);
        EXPECT_GE(kontrast(umriss(grund, schrift), grund), MARKENKONTRAST) << welt.name;
        EXPECT_LT(kontrast(umriss(grund, schrift), grund), 0.6 * kontrast(schrift, grund)) << welt.name;
    }
    EXPECT_EQ(umriss(QColor(0x808080), QColor(0x909090)), QColor(0x909090)) << "as far as it goes";
}

TEST(Farben, LesbarLaesstDenWunschWoErZuLesenIst) {
    EXPECT_EQ(lesbar(Qt::black, Qt::yellow), QColor(Qt::yellow));
    EXPECT_EQ(lesbar(Qt::white, Qt::yellow), QColor(Qt::black));
    EXPECT_EQ(lesbar(QColor(0x202020), QColor(0x303030)), QColor(Qt::white));
}
