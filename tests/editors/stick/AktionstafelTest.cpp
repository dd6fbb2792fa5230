// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Aktionstafel.h"

#include "platform/probe/ProbeTastatur.h"
#include "store/schema/modKeyCode.h"
#include "tests/hilfen/Testdatenbank.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>

#include <ostream>
#include <tuple>

namespace {

/// The plane below the panel: hears what the mouse does there.
class Ebene : public QWidget {
public:
    int gehoert = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++gehoert; }
    void mouseReleaseEvent(QMouseEvent*) override { ++gehoert; }
    void mouseMoveEvent(QMouseEvent*) override { ++gehoert; }
    void wheelEvent(QWheelEvent*) override { ++gehoert; }
};

class Tafel : public ::testing::Test {
protected:
    Tafel() {
        ebene_.resize(1024, 768);
        ebene_.setMouseTracking(true);
        tafel_ = new Aktionstafel(TAFEL_LINKS, tastatur_, tastenname(), &ebene_);
        ebene_.show();
        QApplication::setActiveWindow(&ebene_);
        ereignisse();
    }

    Aktionstafel::Tastenname tastenname() {
        return [this](const std::string& nummer) { return KeyCodeSuchen(datenbank_.pfad(), 0, nummer); };
    }
    static void ereignisse() { QApplication::processEvents(); }
    void oeffnen(const std::string& text, bool mitEgoshooter = true) {
        tafel_->oeffnen(text, mitEgoshooter);
        ereignisse();
    }

    template <class Control> Control& control(const QString& name) {
        auto* gefunden = tafel_->findChild<Control*>(name);
        if (!gefunden)
            throw std::runtime_error("no control " + name.toStdString());
        return *gefunden;
    }
    QRadioButton& option(const QString& name) { return control<QRadioButton>(name); }
    QLineEdit& feld(const QString& name) { return control<QLineEdit>(name); }
    QScrollBar& leiste(int index) { return control<QScrollBar>(QString("HScroll1(%1)").arg(index)); }
    QCheckBox& wiederholen() { return control<QCheckBox>("Check1(0)"); }
    QString titel(int index) { return control<QGroupBox>(QString("Frame1(%1)").arg(index)).title(); }
    /// The one frame that shows; -1 for none or several.
    int rahmen() {
        int gezeigt = -1;
        for (int i = 0; i < 6; ++i)
            if (control<QGroupBox>(QString("Frame1(%1)").arg(i)).isVisible())
                gezeigt = gezeigt == -1 ? i : -2;
        return std::max(gezeigt, -1);
    }
    /// Which element of an array of options is set, -1 for none.
    int gesetzt(const QString& name) {
        int index = -1;
        for (int i = 0; auto* eine = tafel_->findChild<QRadioButton*>(QString("%1(%2)").arg(name).arg(i));
             ++i)
            if (eine->isChecked())
                index = i;
        return index;
    }
    void klick(QWidget& worauf) {
        QTest::mouseClick(&worauf, Qt::LeftButton, {}, {8, worauf.height() / 2});
        ereignisse();
    }
    /// A key goes down on the keyboard.
    void taste(VirtuelleTaste code, int bedeutung = Qt::Key_unknown) {
        QKeyEvent ereignis(QEvent::KeyPress, bedeutung, Qt::NoModifier, ProbeTastatur::nummer(code), 0, 0);
        QApplication::sendEvent(QApplication::focusWidget(), &ereignis);
        ereignisse();
    }
    bool hatFokus(const QString& name) { return control<QWidget>(name).hasFocus(); }
    /// Texts of the controls of an array.
    template <class Control> QStringList texte(const QString& name, int anzahl) {
        QStringList alle;
        for (int i = 0; i < anzahl; ++i)
            alle << control<Control>(QString("%1(%2)").arg(name).arg(i)).text();
        return alle;
    }
    std::string text() { return tafel_->aktionstext(); }

    Testdatenbank datenbank_;
    ProbeTastatur tastatur_;
    Ebene ebene_;
    Aktionstafel* tafel_;
};

} // namespace

// --- what stands on it ---

TEST_F(Tafel, BeginntVerborgenMitDenGegebenenAufschriften) {
    EXPECT_EQ(tafel_->objectName(), "fraAktion");
    EXPECT_FALSE(tafel_->isVisible());
    EXPECT_EQ(tafel_->windowTitle(), "Aktion");
    EXPECT_EQ(texte<QRadioButton>("Option1", 6),
              (QStringList{"Mausbewegung", "Maustaste drücken", "Tastatur drücken", "Leerfeld", "Sperrfeld",
                           "Absolute Position"}));
    for (const int i : {0, 1, 3, 4, 5})
        EXPECT_EQ(titel(i), "Eigenschaft");
    EXPECT_EQ(titel(2), "Taste: 13 - Enter");
    EXPECT_EQ(texte<QRadioButton>("Option2", 4), (QStringList{"Links", "Rechts", "Oben", "Unten"}));
    EXPECT_EQ(texte<QLabel>("Label2", 2), (QStringList{"Schrittlänge", "Geschwindigkeit"}));
    EXPECT_EQ(texte<QRadioButton>("optMaus", 5),
              (QStringList{"Linke Maustaste", "Rechte Maustaste", "Maustaste Mitte", "Scrollrad Plus",
                           "Scrollrad Minus"}));
    EXPECT_EQ(tafel_->findChildren<QLabel*>("Scrollsprung").size(), 2);
    EXPECT_EQ(control<QLabel>("Scrollsprung").text(), "Scrollsprung");
    EXPECT_EQ(texte<QRadioButton>("optEig", 2),
              (QStringList{"Real", "Taste bei Tastendruck drücken und loslassen"}));
    EXPECT_EQ(texte<QLabel>("lblZ", 4), (QStringList{"Zeit:", "mSek", "mSek", "Zeit:"}));
    EXPECT_EQ(wiederholen().text(), "Tastendruck wiederholen");
    EXPECT_EQ(texte<QLabel>("Label3", 2),
              (QStringList{"Ein Leerfeld hat keine spezielle Funktion. Wenn die X und, oder Y Achse "
                           "angesprochen werden, nimmt das Feld die Eigenschaft des Mittelfeldes an",
                           "Ein Sperrfeld löst keine Aktion aus!"}));
    EXPECT_EQ(texte<QRadioButton>("Option3", 3),
              (QStringList{"Im Feld zentrieren", "Im Feld binden", "Egoshooter"}));
    EXPECT_EQ(feld("txtTaste").toolTip(), "Mit DoppelKlick die Tabtaste bestätigen");
}

TEST_F(Tafel, DieTafelRechtsUnterscheidetSichInEinerAufschriftUndEinemTooltip) {
    tafel_ = new Aktionstafel(TAFEL_RECHTS, tastatur_, tastenname(), &ebene_);
    EXPECT_EQ(option("Option3(2)").text(), "Ego Shooter");
    EXPECT_EQ(feld("txtTaste").toolTip(), "Mit Doppelklick Tabtaste bestätigen");
}

TEST_F(Tafel, BoxenUndLeistenBeginnenMitIhrenErstenWerten) {
    EXPECT_EQ(texte<QLineEdit>("txtSchritt", 2), (QStringList{"1", "1"}));
    EXPECT_EQ(texte<QLineEdit>("txtZeit", 2), (QStringList{"1", "0"}));
    EXPECT_EQ(feld("txtScrollPlus").text(), "1");
    EXPECT_EQ(feld("txtScrollMinus").text(), "1");
    EXPECT_EQ(feld("txtTaste").text(), "Hier Klicken");
    EXPECT_EQ(texte<QLineEdit>("Text1", 2), (QStringList{"X-", "Y-"}));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(leiste(i).minimum(), 1);
        EXPECT_EQ(leiste(i).maximum(), 3000);
        EXPECT_EQ(leiste(i).value(), 1);
        EXPECT_TRUE(feld(QString("Text1(%1)").arg(i)).isReadOnly());
    }
    EXPECT_FALSE(wiederholen().isChecked());
}

TEST_F(Tafel, SieHatGanzAufEinerEbeneVon1024Mal768PlatzWoImmerSieAufgeht) {
    // Left of a click at 55000 and right of one at 12000 it has a half each; below 33000 and above it all.
    EXPECT_LE(tafel_->width() / 2, 1024 * (65535 - 55000) / 65535);
    EXPECT_LE(tafel_->width() / 2, 1024 * 12000 / 65535);
    EXPECT_LE(tafel_->height(), 768 * (65535 - 33000) / 65535);
    const auto groesse = tafel_->size();
    for (const char* text : {"0,0,5,10", "1,0", "2,0,13,0,0", "3", "4", "5,2,7,8"}) {
        oeffnen(text);
        EXPECT_EQ(tafel_->size(), groesse) << text;
    }
}

TEST_F(Tafel, KeinControlHatWenigerPlatzAlsSeinTextBraucht) {
    for (const char* art : {"0,0,5,10", "1,0", "2,0,171,0,0", "3", "4", "5,2,3000,3000"}) {
        oeffnen(art);
        for (const auto* eines : tafel_->findChildren<QWidget*>()) {
            if (!eines->isVisible() || eines->objectName().isEmpty() || eines->objectName().startsWith("qt_"))
                continue;
            EXPECT_GE(eines->width(), eines->minimumSizeHint().width()) << eines->objectName().toStdString();
            const int hoehe = eines->hasHeightForWidth() ? eines->heightForWidth(eines->width())
                                                         : eines->minimumSizeHint().height();
            EXPECT_GE(eines->height(), hoehe) << eines->objectName().toStdString();
        }
    }
}

TEST_F(Tafel, BeimBewegenAendertSichNurIhrPlatz) {
    oeffnen("3");
    const auto groesse = tafel_->size();
    tafel_->move(300, 200);
    ereignisse();
    EXPECT_EQ(tafel_->geometry(), QRect({300, 200}, groesse));
}

TEST_F(Tafel, WasDieMausAufIhrTutHoertDieEbeneNicht) {
    oeffnen("2,0,13,0,0");
    QTest::mouseClick(tafel_, Qt::LeftButton, {}, {5, 5});
    QTest::mouseClick(&control<QGroupBox>("Frame1(2)"), Qt::RightButton, {}, {5, 40});
    QTest::mouseClick(&control<QLabel>("lblZ(0)"), Qt::LeftButton);
    QTest::mouseClick(&feld("txtZeit(0)"), Qt::LeftButton); // disabled
    QTest::mouseMove(tafel_, {7, 7});
    ereignisse();
    EXPECT_EQ(ebene_.gehoert, 0);
    QTest::mouseClick(&ebene_, Qt::LeftButton, {}, {1000, 700});
    EXPECT_GT(ebene_.gehoert, 0);
}

// --- opening ---

TEST_F(Tafel, JedeZeileDerTabelleOeffnetUndLiestSichUnveraendertZurueck) {
    for (const char* eintrag : {"0,0,5,10", "0,1,1,1", "0,2,7,1", "0,3,,", "1,0", "1,1", "1,2", "1,3,120",
                                "1,3,", "1,4,7", "2,0,13,0,0", "2,1,65,50,0,0", "2,1,65,50,1,200", "3", "4",
                                "5,0", "5,1", "5,2,1,3000", "5,2,400,300"}) {
        tafel_ = new Aktionstafel(TAFEL_LINKS, tastatur_, tastenname(), &ebene_);
        oeffnen(eintrag);
        EXPECT_TRUE(tafel_->isVisible());
        EXPECT_EQ(text(), eintrag);
        EXPECT_EQ(rahmen(), eintrag[0] - '0');
        EXPECT_EQ(gesetzt("Option1"), eintrag[0] - '0');
        delete tafel_;
    }
}

TEST_F(Tafel, EinFeldOhneZeileOeffnetAlsLeerfeldUndSchliesstAlsSolches) {
    oeffnen("");
    EXPECT_EQ(gesetzt("Option1"), 3);
    EXPECT_EQ(rahmen(), 3);
    EXPECT_EQ(text(), "3");
    oeffnen("0,1,5,10");
    oeffnen("");
    EXPECT_EQ(text(), "3");
}

TEST_F(Tafel, NurDasMittelfeldBietetDenEgoshooterAn) {
    oeffnen("5,0", false);
    EXPECT_FALSE(option("Option3(2)").isVisible());
    oeffnen("5,0", true);
    EXPECT_TRUE(option("Option3(2)").isVisible());
}

TEST_F(Tafel, EinEgoshooterNebenDerMitteBleibtEinerObwohlSeineOptionVerborgenIst) {
    oeffnen("5,2,7,8", false);
    EXPECT_FALSE(option("Option3(2)").isVisible());
    EXPECT_EQ(text(), "5,2,7,8");
}

TEST_F(Tafel, EineBewegungFuelltRichtungSchrittlaengeUndGeschwindigkeit) {
    oeffnen("0,2,5,10");
    EXPECT_EQ(gesetzt("Option2"), 2);
    EXPECT_EQ(feld("txtSchritt(1)").text(), "5");
    EXPECT_EQ(feld("txtSchritt(0)").text(), "10");
}

TEST_F(Tafel, EineKurzeBewegungLaesstDasUebrigeWieEsStand) {
    oeffnen("0,2,5,10");
    oeffnen("0,3");
    EXPECT_EQ(text(), "0,3,5,10");
    oeffnen("0,1,6");
    EXPECT_EQ(text(), "0,1,6,10");
    oeffnen("0");
    EXPECT_EQ(text(), "0,0,6,10") << "of the choices, what the type begins with";
    oeffnen("0,1,6");
    oeffnen("4");
    oeffnen("0");
    EXPECT_EQ(text(), "0,0,6,10");
}

TEST_F(Tafel, OeffnenRuftDieProzedurDerArtAuchWoSieSchonGesetztIst) {
    for (const auto& [eintrag, ohneFelder, danach] : {std::tuple{"1,4,7", "1,x", "1,0"},
                                                      {"2,1,65,5,0,0", "2,x", "2,0,65,0,0"},
                                                      {"0,3,5,6", "0,x", "0,0,5,6"}}) {
        oeffnen(eintrag);
        try {
            oeffnen(ohneFelder);
        } catch (const LaufzeitFehler&) { // of a choice that can't be read, which leaves the type's first
        }
        EXPECT_EQ(text(), danach);
    }
}

TEST_F(Tafel, AuchEinFeldDerZuletztBearbeitetenArtNimmtDieErsteTaste) {
    for (const char* eintrag : {"2,0,13,0,0", "2,0,13,0,0", "2,1,13,50,0,0", "2,1,13,50,0,0"}) {
        oeffnen(eintrag);
        ASSERT_TRUE(hatFokus("txtTaste")) << eintrag;
        taste(65);
        EXPECT_EQ(titel(2), "Taste: 65 - A") << eintrag;
        tafel_->hide();
        ereignisse();
    }
}

TEST_F(Tafel, DieScrollspruengeDesRadsBleibenGetrennt) {
    oeffnen("1,3,12");
    EXPECT_EQ(feld("txtScrollPlus").text(), "12");
    EXPECT_EQ(feld("txtScrollMinus").text(), "1");
    oeffnen("1,4,7");
    EXPECT_EQ(feld("txtScrollPlus").text(), "12");
    EXPECT_EQ(feld("txtScrollMinus").text(), "7");
    option("optMaus(3)").click();
    EXPECT_EQ(text(), "1,3,12");
}

TEST_F(Tafel, EineGehalteneTasteOeffnetMitGesperrtenZeiten) {
    oeffnen("2,0,13,0,0");
    EXPECT_EQ(gesetzt("optEig"), 0);
    EXPECT_FALSE(feld("txtZeit(0)").isEnabled());
    EXPECT_FALSE(feld("txtZeit(1)").isEnabled());
    EXPECT_FALSE(wiederholen().isEnabled());
    EXPECT_EQ(titel(2), "Taste: 13 - Enter");
    EXPECT_EQ(text(), "2,0,13,0,0");
}

TEST_F(Tafel, EineZeitgesteuerteTasteOeffnetMitFreienZeiten) {
    oeffnen("2,1,65,50,0,0");
    EXPECT_EQ(titel(2), "Taste: 65 - A");
    EXPECT_EQ(gesetzt("optEig"), 1);
    EXPECT_TRUE(feld("txtZeit(0)").isEnabled());
    EXPECT_EQ(feld("txtZeit(0)").text(), "50");
    EXPECT_TRUE(wiederholen().isEnabled());
    EXPECT_FALSE(wiederholen().isChecked());
    EXPECT_FALSE(feld("txtZeit(1)").isEnabled());
    EXPECT_EQ(feld("txtZeit(1)").text(), "0");
    oeffnen("2,1,66,51,1,70");
    EXPECT_TRUE(wiederholen().isChecked());
    EXPECT_TRUE(feld("txtZeit(1)").isEnabled());
    EXPECT_EQ(feld("txtZeit(1)").text(), "70");
    EXPECT_EQ(text(), "2,1,66,51,1,70");
}

TEST_F(Tafel, DieWiederholungBleibtVomZuletztBearbeitetenFeldGesetzt) {
    oeffnen("2,1,65,50,1,70");
    oeffnen("2,1,66,40,0,0");
    EXPECT_TRUE(wiederholen().isChecked());
    EXPECT_TRUE(feld("txtZeit(1)").isEnabled());
    EXPECT_EQ(text(), "2,1,66,40,1,70");
    oeffnen("2,0,66,0,0");
    EXPECT_TRUE(wiederholen().isChecked());
    EXPECT_FALSE(feld("txtZeit(1)").isEnabled());
    EXPECT_EQ(text(), "2,0,66,0,0");
}

TEST_F(Tafel, EineGehalteneTasteMitWiederholungSetztDieWiederholungDennoch) {
    oeffnen("2,0,66,5,1,70");
    EXPECT_TRUE(wiederholen().isChecked());
    EXPECT_FALSE(wiederholen().isEnabled());
    EXPECT_EQ(feld("txtZeit(0)").text(), "1");
    EXPECT_EQ(feld("txtZeit(1)").text(), "70");
    EXPECT_EQ(text(), "2,0,66,0,0");
}

TEST_F(Tafel, EineTasteOhneNamenZeigtIhreNummerUndBehaeltSie) {
    oeffnen("2,0,9999,0,0");
    EXPECT_EQ(titel(2), "Taste: 9999 - ");
    EXPECT_EQ(text(), "2,0,9999,0,0");
    oeffnen("2,0,1''1,0,0"); // cannot be looked up
    EXPECT_EQ(titel(2), "Taste: 1''1 - 1''1");
    oeffnen("2,0,,0,0");
    EXPECT_EQ(text(), "2,0,,0,0");
}

TEST_F(Tafel, LeerzeichenUmEinenTastennamenWerdenAbgeschnitten) {
    datenbank_.sql("INSERT INTO tblKeyCode VALUES ('9999', '  Breit e ')");
    oeffnen("2,0,9999,0,0");
    EXPECT_EQ(titel(2), "Taste: 9999 - Breit e");
}

TEST_F(Tafel, EinEgoshooterStelltSeineLeisten) {
    oeffnen("5,2,400,300");
    EXPECT_EQ(leiste(0).value(), 400);
    EXPECT_EQ(leiste(1).value(), 300);
    EXPECT_EQ(texte<QLineEdit>("Text1", 2), (QStringList{"400", "300"}));
    EXPECT_TRUE(leiste(0).isVisible() && leiste(1).isVisible());
    EXPECT_TRUE(feld("Text1(0)").isVisible() && feld("Text1(1)").isVisible());
}

TEST_F(Tafel, LeistenDieSichNichtAendernLassenIhreAnzeigeWieSieIst) {
    oeffnen("5,2,1,2");
    EXPECT_EQ(texte<QLineEdit>("Text1", 2), (QStringList{"X-", "2"}));
}

TEST_F(Tafel, WegeJenseitsDerLeistenWerdenAnIhrenEndenGehalten) {
    oeffnen("5,2,0,3001");
    EXPECT_EQ(text(), "5,2,1,3000");
    oeffnen("5,2,-5,2147483647");
    EXPECT_EQ(text(), "5,2,1,3000");
}

// --- texts that the panel has not written ---

TEST_F(Tafel, EineArtDieEsNichtGibtWirdGemeldetUndOeffnetAlsLeerfeld) {
    for (const auto& [eintrag, nummer] : {std::pair{"6,1,2", 9}, {"-1", 9}, {"x", 13}, {",1", 13}}) {
        oeffnen("0,2,5,10");
        EXPECT_EQ(fehlernummer([&] { oeffnen(eintrag); }), nummer) << eintrag;
        EXPECT_TRUE(tafel_->isVisible());
        EXPECT_EQ(rahmen(), 3);
        EXPECT_EQ(text(), "3");
        option("Option1(1)").click();
        EXPECT_EQ(text(), "1,0"); // and it can be edited
    }
}

TEST_F(Tafel, EinFehlendesFeldWirdGemeldetUndWasDavorKamIstZuSehen) {
    EXPECT_EQ(fehlernummer([&] { oeffnen("2,1,65"); }), 9);
    EXPECT_TRUE(tafel_->isVisible());
    EXPECT_EQ(text(), "2,1,65,1,0,0");
    EXPECT_EQ(fehlernummer([&] { oeffnen("1,4"); }), 9);
    EXPECT_EQ(text(), "1,4,1");
    EXPECT_EQ(fehlernummer([&] { oeffnen("5,2,7"); }), 9);
    EXPECT_EQ(text(), "5,2,7,1");
    EXPECT_EQ(fehlernummer([&] { oeffnen("1,5"); }), 9);
    EXPECT_EQ(text(), "1,0");
}

TEST_F(Tafel, ScheitertDerSpeicherEndetDieProzedurUndDieTafelBleibtBrauchbar) {
    tafel_ = new Aktionstafel(
        TAFEL_LINKS, tastatur_,
        [](const std::string&) -> std::string { throw LaufzeitFehler(Fehlernummer::KeineDatei, "fort"); },
        &ebene_);
    EXPECT_EQ(fehlernummer([&] { oeffnen("2,1,65,50,0,0"); }), 3024);
    EXPECT_TRUE(tafel_->isVisible());
    EXPECT_EQ(fehlernummer([&] { control<Tastaturrahmen>("Frame1(2)").tasteGewaehlt(70); }), 3024);
    EXPECT_EQ(feld("txtTaste").text(), "Hier Klicken");
    EXPECT_EQ(titel(2), "Taste: 13 - Enter");
    option("Option1(4)").click();
    EXPECT_EQ(text(), "4");
}

// --- the user's hand ---

TEST_F(Tafel, EineArtZeigtIhrenRahmenUndSetztIhreErsteWahl) {
    oeffnen("");
    const std::array<const char*, 6> texte{"0,0,1,1", "1,0", "2,0,13,0,0", "3", "4", "5,0"};
    for (int i = 0; i < 6; ++i) {
        klick(option(QString("Option1(%1)").arg(i)));
        EXPECT_EQ(rahmen(), i);
        EXPECT_EQ(text(), texte[static_cast<std::size_t>(i)]);
    }
}

TEST_F(Tafel, DieWahlenJedesRahmensSchliessenEinanderAusUndKeineAnderen) {
    oeffnen("0,2,5,10");
    oeffnen("1,4,7");
    oeffnen("2,1,65,5,0,0");
    oeffnen("5,1");
    const auto alle = [this] {
        return std::array{gesetzt("Option1"), gesetzt("Option2"), gesetzt("optMaus"), gesetzt("optEig"),
                          gesetzt("Option3")};
    };
    EXPECT_EQ(alle(), (std::array{5, 2, 4, 1, 1}));
    klick(option("Option3(1)")); // a set one stays set
    klick(option("Option1(5)"));
    EXPECT_EQ(alle(), (std::array{5, 2, 4, 1, 1}));
    int anzahl = 0;
    for (const auto* eine : tafel_->findChildren<QRadioButton*>())
        anzahl += eine->isChecked();
    EXPECT_EQ(anzahl, 5);
}

TEST_F(Tafel, EineErneutGewaehlteArtBeginntBeiIhrerErstenWahlBehaeltAberDieBoxen) {
    oeffnen("0,2,5,10");
    klick(option("Option1(0)")); // set already: nothing happens
    EXPECT_EQ(text(), "0,2,5,10");
    klick(option("Option1(4)"));
    klick(option("Option1(0)"));
    EXPECT_EQ(text(), "0,0,5,10");
    oeffnen("5,2,7,8");
    klick(option("Option1(0)"));
    klick(option("Option1(5)"));
    EXPECT_EQ(text(), "5,0");
    EXPECT_FALSE(leiste(0).isVisible());
    klick(option("Option3(2)"));
    EXPECT_EQ(text(), "5,2,7,8");
}

TEST_F(Tafel, DieArtTastaturGibtDerTastenboxDenFokus) {
    oeffnen("");
    klick(option("Option1(2)"));
    EXPECT_TRUE(hatFokus("txtTaste"));
    klick(option("optEig(1)"));
    EXPECT_TRUE(hatFokus("txtTaste"));
    feld("txtZeit(0)").setFocus();
    klick(option("optEig(0)"));
    EXPECT_TRUE(hatFokus("txtTaste"));
}

TEST_F(Tafel, OhneGewaehlteTasteGibtSieDerTitel) {
    oeffnen("");
    klick(option("Option1(2)"));
    EXPECT_EQ(text(), "2,0,13,0,0");
    oeffnen("2,0,66,0,0");
    oeffnen("");
    klick(option("Option1(2)"));
    EXPECT_EQ(text(), "2,0,66,0,0");
}

TEST_F(Tafel, DieEigenschaftGibtDieZeitenFrei) {
    oeffnen("2,0,13,0,0");
    klick(option("optEig(1)"));
    EXPECT_TRUE(wiederholen().isEnabled());
    EXPECT_TRUE(feld("txtZeit(0)").isEnabled());
    EXPECT_FALSE(feld("txtZeit(1)").isEnabled());
    wiederholen().click();
    EXPECT_TRUE(feld("txtZeit(1)").isEnabled());
    EXPECT_EQ(text(), "2,1,13,1,1,0");
    klick(option("optEig(0)"));
    EXPECT_FALSE(wiederholen().isEnabled());
    EXPECT_FALSE(feld("txtZeit(0)").isEnabled());
    EXPECT_FALSE(feld("txtZeit(1)").isEnabled());
    EXPECT_EQ(text(), "2,0,13,0,0");
    klick(option("optEig(1)"));
    EXPECT_TRUE(feld("txtZeit(1)").isEnabled()); // the repeat is still set
    wiederholen().click();
    EXPECT_FALSE(feld("txtZeit(1)").isEnabled());
    EXPECT_EQ(text(), "2,1,13,1,0,0");
}

TEST_F(Tafel, DieLangeEigenschaftLaesstSichAufJederIhrerZeilenAnklicken) {
    oeffnen("2,0,13,0,0");
    auto& lange = option("optEig(1)");
    EXPECT_GT(lange.height(), option("optEig(0)").height());
    QTest::mouseClick(&lange, Qt::LeftButton, {}, {lange.width() - 3, lange.height() - 3});
    EXPECT_TRUE(lange.isChecked());
}

TEST_F(Tafel, DiePositionenZeigenDieLeistenNurBeimEgoshooter) {
    oeffnen("5,0");
    const auto sichtbar = [this] {
        return std::array{leiste(0).isVisible(), leiste(1).isVisible(), feld("Text1(0)").isVisible(),
                          feld("Text1(1)").isVisible()};
    };
    EXPECT_EQ(sichtbar(), (std::array{false, false, false, false}));
    klick(option("Option3(2)"));
    EXPECT_EQ(sichtbar(), (std::array{true, true, true, true}));
    leiste(0).setValue(1234);
    EXPECT_EQ(feld("Text1(0)").text(), "1234");
    EXPECT_EQ(feld("Text1(1)").text(), "Y-");
    EXPECT_EQ(text(), "5,2,1234,1");
    klick(option("Option3(1)"));
    EXPECT_EQ(sichtbar(), (std::array{false, false, false, false}));
    EXPECT_EQ(text(), "5,1");
}

TEST_F(Tafel, BoxenWerdenGeschriebenWieSieStehen) {
    oeffnen("0,1,5,10");
    feld("txtSchritt(0)").setText("");
    feld("txtSchritt(1)").setText("ab,c");
    EXPECT_EQ(text(), "0,1,ab,c,");
    oeffnen("1,3,5");
    feld("txtScrollPlus").setText("");
    EXPECT_EQ(text(), "1,3,");
    oeffnen("2,1,65,5,1,6");
    feld("txtZeit(0)").setText(" 7");
    feld("txtZeit(1)").setText("");
    EXPECT_EQ(text(), "2,1,65, 7,1,");
}

// --- taking a key ---

TEST_F(Tafel, EineTasteWirdBeimDrueckenGenommen) {
    oeffnen("2,0,13,0,0");
    feld("txtTaste").setFocus();
    taste(65);
    EXPECT_EQ(titel(2), "Taste: 65 - A");
    EXPECT_EQ(feld("txtTaste").text(), "65");
    EXPECT_EQ(text(), "2,0,65,0,0");
    taste(112);
    EXPECT_EQ(titel(2), "Taste: 112 - F1");
    taste(13, Qt::Key_Return);
    EXPECT_EQ(text(), "2,0,13,0,0");
}

TEST_F(Tafel, DerTabulatorGehtWeiterUndWirdNichtGenommen) {
    oeffnen("2,1,65,5,0,0");
    feld("txtTaste").setFocus();
    taste(9, Qt::Key_Tab);
    EXPECT_FALSE(hatFokus("txtTaste"));
    EXPECT_TRUE(tafel_->isAncestorOf(QApplication::focusWidget()));
    EXPECT_EQ(text(), "2,1,65,5,0,0");
}

TEST_F(Tafel, EinKlickBietetDenTabulatorAnUndEinDoppelklickNimmtIhn) {
    oeffnen("2,0,13,0,0");
    auto& box = feld("txtTaste");
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_EQ(box.text(), "Tab");
    EXPECT_EQ(titel(2), "Taste: 13 - Enter");
    QTest::mouseDClick(&box, Qt::LeftButton);
    EXPECT_EQ(titel(2), "Taste: 9 - Tab");
    EXPECT_EQ(box.text(), "9");
    EXPECT_EQ(text(), "2,0,9,0,0");
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_EQ(box.text(), "9");
}

TEST_F(Tafel, EinDoppelklickOhneDasAngebotNimmtNichts) {
    oeffnen("2,0,13,0,0");
    auto& box = feld("txtTaste");
    box.setFocus();
    taste(65);
    QTest::mouseDClick(&box, Qt::LeftButton);
    EXPECT_EQ(text(), "2,0,65,0,0");
    EXPECT_EQ(box.text(), "65");
}

TEST_F(Tafel, DieBoxVergisstWennSieDenFokusVerliert) {
    oeffnen("2,0,13,0,0");
    auto& box = feld("txtTaste");
    box.setFocus();
    taste(65);
    option("Option1(2)").setFocus();
    EXPECT_EQ(box.text(), "Hier Klicken");
    EXPECT_EQ(titel(2), "Taste: 65 - A");
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_EQ(box.text(), "Tab");
    EXPECT_TRUE(box.hasFocus());
    tafel_->hide();
    ereignisse();
    EXPECT_EQ(box.text(), "Hier Klicken");
}
