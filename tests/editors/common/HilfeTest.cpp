// SPDX-License-Identifier: GPL-3.0-or-later
// What helps on all forms: F1 and the tool tips of the buttons.
#include "editors/common/Hilfe.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Hilfekapitel.h"
#include "editors/exchange/Schemadialoge.h"
#include "editors/exchange/Schemafund.h"
#include "tests/editors/common/Formtest.h"

#include <QAction>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QtTest/QTest>

#include <map>
#include <memory>
#include <set>

namespace {

class HilfeTest : public Formtest {
protected:
    HilfeTest() {
        Schemabau(datenbank_).taste(0, "1,65,0-0-0").anlegen();
        starten();
    }

    static QWidget* offenes(const QString& name) {
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == name && fenster->isVisible())
                return fenster;
        return nullptr;
    }
    static QWidget& fenster(const QString& name) {
        auto* gefunden = offenes(name);
        if (!gefunden)
            throw std::runtime_error("no window " + name.toStdString());
        return *gefunden;
    }
    static void klicken(QWidget& form, const QString& knopf) {
        Boxleser boxen;
        control<QPushButton>(form, knopf).click();
        ereignisse();
    }
    /// Opens the form of this name from the main form.
    QWidget& oeffnen(const QString& name) {
        static const std::map<QString, QString> KNOEPFE{
            {"frmJoyKonfic", "Command1(0)"}, {"frmJust", "Command1(1)"},  {"frmJustr", "Command1(6)"},
            {"LaufFenster", "Command1(5)"},  {"AchzenKalib", "Command3"}, {"SchubreglerKonfic", "Command4"}};
        if (const auto knopf = KNOEPFE.find(name); knopf != KNOEPFE.end())
            klicken(haupt(), knopf->second);
        else if (name == "Uebersicht")
            emit programm_->hauptform().uebersichtGewuenscht();
        else if (name == "ScreenChecken")
            klicken(oeffnen("frmJust"), "Command1(2)");
        ereignisse();
        return fenster(name);
    }
    /// The chapter that was opened last, and how many were.
    std::pair<std::size_t, std::string> geoeffnet() const {
        if (prozess_.geoeffnet.empty())
            return {0, ""};
        const auto& letztes = prozess_.geoeffnet.back();
        const auto seite = datenbank_.ordner().string() + "/Beschreibung\\Startfenster.htm#";
        EXPECT_TRUE(letztes.starts_with(seite)) << letztes;
        return {prozess_.geoeffnet.size(), letztes.substr(seite.size())};
    }
    using Geoeffnet = std::pair<std::size_t, std::string>;
};

/// The forms that have a chapter; the panel of an action is part of one, and dialogs belong to the main form.
std::vector<Hilfekapitel> formen() {
    static const std::set<QString> KEINE{"fraAktion",   "cdlSchemaWeitergeben", "cdlSchemaAufnehmen",
                                         "frmAufnahme", "frmDatenbankfrage",    "frmNamensfrage"};
    std::vector<Hilfekapitel> alle;
    for (const auto& kapitel : HILFEKAPITEL)
        if (!KEINE.contains(kapitel.teil))
            alle.push_back(kapitel);
    return alle;
}

} // namespace

TEST_F(HilfeTest, F1OeffnetAnJederFormIhrKapitel) {
    for (const auto& kapitel : formen()) {
        starten();
        prozess_.geoeffnet.clear();
        auto& form = oeffnen(kapitel.teil);
        QTest::keyClick(&form, Qt::Key_F1);
        EXPECT_EQ(geoeffnet(), (Geoeffnet{1, kapitel.anker})) << kapitel.teil;
    }
}

TEST_F(HilfeTest, F1GehtAuchWoEinControlDenFokusHat) {
    QTest::keyClick(&control<QComboBox>(haupt(), "Combo1"), Qt::Key_F1);
    EXPECT_EQ(geoeffnet(), (Geoeffnet{1, "erstes"}));
    auto& schub = oeffnen("SchubreglerKonfic");
    QTest::keyClick(&control<QListWidget>(schub, "List1"), Qt::Key_F1);
    EXPECT_EQ(geoeffnet(), (Geoeffnet{2, "schub"}));
    QTest::keyClick(&control<QLineEdit>(schub, "txtSchritt(0)"), Qt::Key_F1);
    EXPECT_EQ(geoeffnet(), (Geoeffnet{3, "schub"}));
    QTest::keyClick(&control<QWidget>(oeffnen("frmJoyKonfic"), "imgHintergrund"), Qt::Key_F1);
    EXPECT_EQ(geoeffnet(), (Geoeffnet{4, "knoepfe"}));
}

TEST_F(HilfeTest, F1OeffnetInDerAktionstafelDasKapitelDerAktionen) {
    auto& form = oeffnen("frmJust");
    auto& ebene = control<QWidget>(form, "Stickebene");
    ebene.setFocus(Qt::TabFocusReason);
    for (const auto taste : {Qt::Key_Return, Qt::Key_Menu})
        QTest::keyClick(&ebene, taste);
    ASSERT_TRUE(control<QWidget>(form, "fraAktion").isVisible());
    QTest::keyClick(form.focusWidget(), Qt::Key_F1);
    EXPECT_EQ(geoeffnet(), (Geoeffnet{1, "aktionen"}));
    QTest::keyClick(form.focusWidget(), Qt::Key_F10);
    EXPECT_TRUE(control<QWidget>(form, "fraAktion").isVisible()) << "a key that nothing takes";
}

TEST_F(HilfeTest, F1IstInDerFangboxEineTasteWieJedeAndere) {
    auto& form = oeffnen("SchubreglerKonfic");
    control<QAbstractButton>(form, "Option1(2)").click();
    auto& fang = control<QLineEdit>(form, "txtTaste");
    QTest::keyClick(&fang, Qt::Key_F1);
    EXPECT_TRUE(prozess_.geoeffnet.empty());
    EXPECT_EQ(fang.text(), "F1");
}

TEST_F(HilfeTest, F1MitEinerUmschalttasteOderGehaltenIstKeines) {
    QTest::keyClick(&haupt(), Qt::Key_F1, Qt::ControlModifier);
    QKeyEvent gehalten(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(&haupt(), &gehalten);
    EXPECT_TRUE(prozess_.geoeffnet.empty());
}

TEST_F(HilfeTest, F1InEinemDialogUeberGanzeSchemataOeffnetIhrKapitel) {
    for (const auto& [name, gehoert] :
         std::vector<std::pair<QString, QString>>{{"mnuSchema(0)", "cdlSchemaWeitergeben"},
                                                  {"mnuSchema(1)", "cdlSchemaAufnehmen"},
                                                  {"mnuSchema(2)", "cdlSchemaAufnehmen"},
                                                  {"mnuSchema(3)", "frmNamensfrage"},
                                                  {"mnuSchema(4)", "frmNamensfrage"}}) {
        prozess_.geoeffnet.clear();
        QTimer::singleShot(0, [&] {
            auto* dialog = QApplication::activeModalWidget();
            EXPECT_EQ(dialog->objectName(), gehoert);
            QTest::keyClick(dialog->focusWidget() ? dialog->focusWidget() : dialog, Qt::Key_F1);
            dialog->close();
        });
        haupt().findChild<QAction*>(name)->trigger();
        EXPECT_EQ(geoeffnet(), (Geoeffnet{1, "weitergeben"})) << name.toStdString();
    }
    const auto keines = [](const std::string&) { return ""; };
    EXPECT_EQ(Hilfe::kapitelVon(std::make_unique<Aufnahmefrage>(&haupt(), Schemafund(), "S", keines).get()),
              "weitergeben");
    EXPECT_EQ(Hilfe::kapitelVon(
                  std::make_unique<Datenbankfrage>(&haupt(), "B.twk", std::vector<std::string>{"S"}).get()),
              "weitergeben");
}

TEST_F(HilfeTest, F1InEinerBoxOeffnetDasKapitelIhrerForm) {
    auto& form = oeffnen("SchubreglerKonfic");
    QTimer::singleShot(0, [] {
        auto* box = QApplication::activeModalWidget();
        QTest::keyClick(box->focusWidget() ? box->focusWidget() : box, Qt::Key_F1);
        box->close();
    });
    control<QPushButton>(form, "Command2").click(); // no field is chosen
    EXPECT_EQ(geoeffnet(), (Geoeffnet{1, "schub"}));
}

TEST_F(HilfeTest, F1InEinerBoxOhneFormOeffnetWasBeiFehlernHilft) {
    QTimer::singleShot(0, [] {
        auto* box = QApplication::activeModalWidget();
        QTest::keyClick(box, Qt::Key_F1);
        box->close();
    });
    meldung(nullptr, "Text", "Titel");
    EXPECT_EQ(geoeffnet(), (Geoeffnet{1, KAPITEL_OHNE_FORM}));
}

TEST_F(HilfeTest, EineHilfeDieSichNichtOeffnenLaesstWirdGesagt) {
    prozess_.oeffnet = false;
    Boxleser boxen;
    QTest::keyClick(&haupt(), Qt::Key_F1);
    const auto seite = datenbank_.ordner().string() + "/Beschreibung\\Startfenster.htm";
    EXPECT_EQ(
        boxen.gesehen(),
        (std::vector<Gesehen>{{"Game-Pad-Konfic",
                               QString::fromStdString("Die Hilfe konnte nicht geöffnet werden:\n" + seite),
                               QMessageBox::Warning, QMessageBox::Ok}}));
}

TEST_F(HilfeTest, JederKnopfSagtWasErTut) {
    for (const auto& kapitel : formen()) {
        if (kapitel.teil == std::string("LaufFenster"))
            continue;
        starten();
        QStringList stumme;
        for (const auto* knopf : oeffnen(kapitel.teil).findChildren<QPushButton*>())
            if (!knopf->objectName().isEmpty() && knopf->toolTip().isEmpty())
                stumme << knopf->objectName();
        EXPECT_EQ(stumme.join(" "), "") << kapitel.teil;
    }
}

TEST_F(HilfeTest, WasOhneWirkungIstSagtEs) {
    for (const auto* name : {"HScroll1(0)", "VScroll1(0)", "Text2(0)", "Text3(0)", "HScroll1(1)",
                             "VScroll1(1)", "Text2(1)", "Text3(1)"})
        EXPECT_EQ(control<QWidget>(haupt(), name).toolTip(),
                  "Ohne Wirkung. Was gilt, stellen Sie im Fenster des laufenden Schemas ein.")
            << name;
    for (const auto* name : {"Text1(0)", "Label1(1)"})
        EXPECT_EQ(control<QWidget>(haupt(), name).toolTip(),
                  "Nur eine Notiz: Das Programm startet nichts damit");
    EXPECT_EQ(control<QWidget>(haupt(), "Command1(4)").toolTip(),
              "Dieser Knopf hat keine Funktion. Übersicht über die Schemata der Datenbank: Strg+D");
}
