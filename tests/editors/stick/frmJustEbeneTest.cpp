// SPDX-License-Identifier: GPL-3.0-or-later
// The stick editors: what is to be seen of the plane's parts.
#include "tests/editors/stick/Justiertest.h"

#include <QImage>
#include <QPaintEvent>
#include <QTimer>

namespace {

class FrmJustEbene : public Justiertest, public ::testing::WithParamInterface<Zwilling> {
protected:
    FrmJustEbene() : Justiertest(GetParam()) {
        schema();
        linien();
    }
    QImage bild() { return ebene().grab().toImage(); }
    /// The colour of the plane at a pixel.
    QColor farbe(QPoint stelle) { return bild().pixelColor(stelle); }
    QPoint mitte(const QString& name) { return feld<QWidget>(name).geometry().center(); }
    QPoint stelle(double x, double y) { return pixel(x, y).toPoint(); }

    const QColor SCHWARZ = Qt::black;
    const QColor ROT = Qt::red;
};

/// Sees whether a place of a control is painted on the screen.
class Malzeuge final : public QObject {
public:
    Malzeuge(QWidget& control, QPoint stelle) : stelle_(stelle) {
        QTest::qWait(0); // what is to be painted already
        control.installEventFilter(this);
    }
    bool wirdGemalt() {
        return QTest::qWaitFor([this] { return gemalt_; }, 5000);
    }
    bool eventFilter(QObject*, QEvent* ereignis) override {
        if (ereignis->type() == QEvent::Paint)
            gemalt_ = gemalt_ || static_cast<QPaintEvent*>(ereignis)->region().contains(stelle_);
        return false;
    }

private:
    QPoint stelle_;
    bool gemalt_ = false;
};

/// Counts what is painted of a form and all that lies on it.
class Malzaehler final : public QObject {
public:
    explicit Malzaehler(QWidget& form) {
        for (auto* teil : form.findChildren<QWidget*>())
            teil->installEventFilter(this);
        form.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* ereignis) override {
        gemalt += ereignis->type() == QEvent::Paint || ereignis->type() == QEvent::UpdateRequest ? 1 : 0;
        return false;
    }
    int gemalt = 0;
};

bool rot(const QColor& farbe) {
    return farbe.red() > 180 && farbe.green() < 90 && farbe.blue() < 90;
}
bool blau(const QColor& farbe) {
    return farbe.blue() > 180 && farbe.red() < 90;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Zwillinge, FrmJustEbene, ::testing::Values(LINKER_ZWILLING, RECHTER_ZWILLING),
                         [](const auto& fall) { return std::string(fall.param.form); });

TEST_P(FrmJustEbene, LinienSindSchwarzUndInDerHandRot) {
    editorOeffnen();
    const QPoint senkrecht{mitte("LLinks(0)").x(), stelle(0, 60000).y()};
    const QPoint waagrecht{stelle(60000, 0).x(), mitte("LUnten(0)").y()};
    EXPECT_EQ(farbe(senkrecht), SCHWARZ);
    EXPECT_EQ(farbe(waagrecht), SCHWARZ);
    klick(20000, 46000);
    EXPECT_EQ(farbe(senkrecht), ROT);
    EXPECT_EQ(farbe(waagrecht), ROT);
    klick(20000, 46000);
    EXPECT_EQ(farbe(senkrecht), SCHWARZ);
    EXPECT_EQ(farbe(waagrecht), SCHWARZ);
}

TEST_P(FrmJustEbene, EineAufgenommeneLinieWirdGleichNeuGemalt) {
    editorOeffnen();
    auto& linie = feld<QWidget>("LOben(0)"); // far from the panels, which are painted anew as well
    Malzeuge zeuge(linie, linie.rect().center());
    klick(33000, 21000);
    EXPECT_TRUE(zeuge.wirdGemalt());
}

// A pad at rest trembles by less than a pixel.
TEST_P(FrmJustEbene, MitDemStickInRuheWirdNichtsGemalt) {
    editorOeffnen();
    auto& achse = GetParam().form == std::string("frmJust") ? pad_.zustand.dwXpos : pad_.zustand.dwZpos;
    vergehen(500);
    Malzaehler zaehler(form());
    for (int i = 0; i < 400; ++i) {
        achse = JOY_AXIS_RUHE + static_cast<std::uint32_t>(i % 2);
        vergehen(5);
    }
    EXPECT_EQ(zaehler.gemalt, 0);
    achse = 40000;
    vergehen(5);
    EXPECT_GT(zaehler.gemalt, 0) << "the point moves";
}

// What wakes it are the poll, each 5 ms, and the look at which pads there are.
TEST_P(FrmJustEbene, MitDemStickInRuheWecktNurDieAbfrage) {
    const auto ohneEditor = uhr_.laufende();
    editorOeffnen();
    vergehen(500);
    EXPECT_EQ(uhr_.laufende(), ohneEditor + 1);
    std::vector<int> andere;
    for (const auto* zeitgeber : form().findChildren<QTimer*>())
        if (zeitgeber->isActive())
            andere.push_back(zeitgeber->interval());
    EXPECT_EQ(andere, (std::vector<int>{400}));
}

TEST_P(FrmJustEbene, NeueSymboleWerdenGleichGemalt) {
    editorOeffnen();
    aktion(0, "20000,0,21000,0", "4");
    const auto mitte = stelle(10000, 10500); // where the lines of the cross meet
    const auto vorher = farbe(mitte);
    Malzeuge zeuge(ebene(), mitte);
    pfeil("RPfeil(0)");
    EXPECT_TRUE(zeuge.wirdGemalt());
    EXPECT_FALSE(rot(vorher));
    EXPECT_TRUE(rot(farbe(mitte)));
}

TEST_P(FrmJustEbene, AuchEinKlickAufEineLinieZeigtDieNeueAktion) {
    editorOeffnen();
    klick(33000, 33000);
    klick(33000, 33000, Qt::RightButton);
    feld<QRadioButton>("Option1(4)").click();
    feld<QWidget>(GetParam().umschalten).setEnabled(true);
    feld<QRadioButton>("Uschalt(1)").click(); // the left editor has no field chosen from here on
    klick(20100, 60000);
    EXPECT_FALSE(zuSehen("fraAktion"));
    EXPECT_EQ(aktionen(), (Tabellenbild{{"1", "0", "0", "0", "0", "4"}}));
    const auto kreuzung = farbe(stelle(20100 + 25000 * 0.25, 21100 + 25000 * 0.25));
    EXPECT_TRUE(rot(kreuzung)) << "a line of the cross";
}

TEST_P(FrmJustEbene, AlleNeunzehnLinienStehenBeimOeffnenDa) {
    for (int zeile = 2; zeile <= 19; ++zeile)
        datenbank_.sql("UPDATE " + stick() + " SET Links3 = 20200 - 1000 * (\"index\" - 1), " +
                       "Unten3 = 46200 + 1000 * (\"index\" - 1) WHERE \"index\" = " + std::to_string(zeile) +
                       ";");
    editorOeffnen();
    feld<QRadioButton>("Uschalt(2)").click();
    for (int i = 0; i < 19; ++i) {
        EXPECT_TRUE(zuSehen(QString("LLinks(%1)").arg(i))) << i;
        EXPECT_TRUE(zuSehen(QString("UPfeil(%1)").arg(i))) << i;
        EXPECT_TRUE(stehtX(QString("LLinks(%1)").arg(i), 20200 - 1000 * i)) << i;
        EXPECT_TRUE(stehtY(QString("LUnten(%1)").arg(i), 46200 + 1000 * i)) << i;
    }
    EXPECT_FALSE(zuSehen("LLinks(19)"));
    feld<QRadioButton>("Uschalt(0)").click();
    EXPECT_TRUE(zuSehen("LLinks(0)"));
    for (int i = 1; i < 21; ++i)
        EXPECT_FALSE(zuSehen(QString("LLinks(%1)").arg(i))) << i;
}

TEST_P(FrmJustEbene, DasGewaehlteFeldHatEinenRotenRandUndIstDurchsichtig) {
    editorOeffnen();
    vergehen(5);
    const auto vorher = bild();
    klick(50000, 10000);
    const auto rahmen = feld<QWidget>("RechteckB").geometry();
    const auto innen = stelle(55000, 12000);
    const QPoint links{rahmen.left() + 2, innen.y()};
    const QPoint unten{innen.x(), rahmen.bottom() - 2};
    EXPECT_FALSE(rot(vorher.pixelColor(links)));
    EXPECT_TRUE(rot(farbe(links)));
    EXPECT_TRUE(rot(farbe(unten)));
    EXPECT_EQ(farbe(innen), vorher.pixelColor(innen)) << "the picture shows through";
}

TEST_P(FrmJustEbene, DasFeldUnterDemStickHatEinenBlauenRundenRand) {
    editorOeffnen();
    vergehen(5);
    const auto rahmen = feld<QWidget>("RechteckC").geometry();
    const auto gemalt = bild();
    const auto innen = stelle(40000, 40000);
    for (const QPoint rand : {QPoint{rahmen.left() + 2, innen.y()},
                              {rahmen.right() - 2, innen.y()},
                              {innen.x(), rahmen.top() + 2},
                              {innen.x(), rahmen.bottom() - 2}})
        EXPECT_TRUE(blau(gemalt.pixelColor(rand))) << rand.x() << "," << rand.y();
    EXPECT_FALSE(blau(gemalt.pixelColor(rahmen.topLeft() + QPoint{2, 2}))) << "a round corner";
    EXPECT_FALSE(blau(gemalt.pixelColor(innen)));
}

TEST_P(FrmJustEbene, DerPunktIstEinKleinerRoterKreis) {
    editorOeffnen();
    const auto& punkt = feld<QWidget>("Punkt");
    for (const auto& [groesse, seite] : {std::pair{QSize(1024, 768), 6}, {QSize(2560, 1536), 12}}) {
        form().resize(groesse);
        ereignisse();
        EXPECT_EQ(punkt.size(), QSize(seite, seite)) << "90 of 11520";
        EXPECT_EQ(farbe(punkt.geometry().center()), ROT);
    }
    EXPECT_FALSE(rot(farbe(punkt.pos())));
}

TEST_P(FrmJustEbene, EinWertUnterEinsIstKeineLinie) {
    datenbank_.sql("UPDATE " + stick() + " SET Links = 1, Rechts = -1, Oben = -5 WHERE \"index\" = 2;");
    editorOeffnen();
    EXPECT_TRUE(zuSehen("LLinks(1)"));
    EXPECT_TRUE(zuSehen("LPfeil(1)"));
    for (const char* name : {"LRechts(1)", "RPfeil(1)", "LOben(1)", "OPfeil(1)", "LUnten(1)", "UPfeil(1)"})
        EXPECT_FALSE(zuSehen(name)) << name;
    EXPECT_TRUE(stehtX("LRechts(1)", 0));
    EXPECT_EQ(feld<QWidget>("RPfeil(1)").pos(), QPoint());
}

TEST_P(FrmJustEbene, EineNeueLinieReichtUeberDieGanzeEbene) {
    editorOeffnen();
    for (const char* name : {"LPfeil(0)", "RPfeil(0)", "OPfeil(0)", "UPfeil(0)"})
        pfeil(name);
    for (const char* name : {"LLinks(1)", "LRechts(1)"})
        EXPECT_EQ(feld<QWidget>(name).height(), ebene().height() + 1) << name;
    for (const char* name : {"LOben(1)", "LUnten(1)"})
        EXPECT_EQ(feld<QWidget>(name).width(), ebene().width() + 1) << name;
}
