// SPDX-License-Identifier: GPL-3.0-or-later
// The stick editors: what the plane says, the keyboard on it, the fields for assistive technology.
#include "tests/editors/stick/Justiertest.h"

#include <QAccessible>
#include <QGroupBox>
#include <QLineEdit>
#include <QTimer>

namespace {

class Ebenenstimmentest : public Justiertest, public ::testing::WithParamInterface<Zwilling> {
protected:
    Ebenenstimmentest() : Justiertest(GetParam()) {
        schema();
        linien();
        aktion(0, "20000,0,0,0", "2,0,66,0,0");
        aktion(0, "0,45000,0,0", "0,1,5,10");
    }
    void editorOeffnen() {
        Justiertest::editorOeffnen();
        form().activateWindow();
        ereignisse();
        ASSERT_TRUE(ebene().hasFocus()) << "from the beginning";
        ebene().clearFocus();
        ebene().setFocus(Qt::TabFocusReason);
        ereignisse();
    }
    /// The editor with the field to the right chosen by the mouse before the keyboard came for the first
    /// time.
    void schemaMitWahl() {
        Justiertest::editorOeffnen();
        form().activateWindow();
        ereignisse();
        feld<QWidget>("Uschalt(0)").setFocus(Qt::MouseFocusReason);
        klick(60000, 33000);
        ebene().clearFocus();
        ebene().setFocus(Qt::TabFocusReason);
        ereignisse();
    }
    QStringList zeilen() {
        const auto& zeile = feld<QLabel>("Zustandszeile");
        return zeile.isVisible() ? zeile.text().split('\n') : QStringList();
    }
    void maus(double x, double y) { bewegen(ebene(), pixel(x, y)); }
    void mausWeg() {
        QEvent ereignis(QEvent::Leave);
        QApplication::sendEvent(&ebene(), &ereignis);
    }
    void taste(int eine, Qt::KeyboardModifiers zusatz = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(eine), zusatz);
        ereignisse();
    }
    void tasten(std::initializer_list<int> folge) {
        for (const int eine : folge)
            taste(eine);
    }
    void stick(std::uint32_t x, std::uint32_t y) {
        pad_.zustand.*GetParam().x = x;
        pad_.zustand.*GetParam().y = y;
        vergehen(100);
    }
    QAccessibleInterface& zugang() { return *QAccessible::queryAccessibleInterface(&ebene()); }
    QString feldname(int nummer) { return zugang().child(nummer)->text(QAccessible::Name); }
};

const QString TASTEN_FREI = "Eingabetaste wählt · Menütaste: Aktion · Umschalt+Pfeiltaste schiebt die Linie";
const Tabellenbild AKTIONEN{{"0", "0", "45000", "0", "0", "0,1,5,10"},
                            {"0", "20000", "0", "0", "0", "2,0,66,0,0"}};

/// Counts the events of a control that cost something.
class Kostenzaehler final : public QObject {
public:
    explicit Kostenzaehler(QWidget& control) { control.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* ereignis) override {
        zahl += ereignis->type() == QEvent::Paint || ereignis->type() == QEvent::Resize ||
                ereignis->type() == QEvent::Move || ereignis->type() == QEvent::UpdateRequest;
        return false;
    }
    int zahl = 0;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Zwillinge, Ebenenstimmentest, ::testing::Values(LINKER_ZWILLING, RECHTER_ZWILLING),
                         [](const auto& fall) { return std::string(fall.param.form); });

// --- the line of state ---

TEST_P(Ebenenstimmentest, DieMausHoertWasEinFeldTutUndWasEinKlickTaete) {
    editorOeffnen();
    klick(33000, 33000);
    klick(33000, 33000); // the mouse has come, the mark of the keyboard is gone
    maus(10000, 33000);
    EXPECT_EQ(zeilen(), (QStringList{"Feld links – Tastatur: B, gehalten",
                                     "Klick wählt das Feld, danach Rechtsklick: Aktion"}));
    maus(10000, 10000);
    EXPECT_EQ(zeilen()[0], "Feld links oben – gilt von Feld links: Tastatur: B, gehalten");
    maus(20000, 33000);
    EXPECT_EQ(zeilen()[1], "Klick nimmt die Linie auf");
    klick(20000, 33000);
    EXPECT_EQ(zeilen(), (QStringList{"Linie aufgenommen – klicken setzt ab"}));
    klick(20000, 33000);
    klick(33000, 33000);
    maus(33000, 33000);
    EXPECT_EQ(zeilen()[1], "Klick hebt die Wahl auf · Rechtsklick: Aktion");
    klick(33000, 33000, Qt::RightButton);
    maus(60000, 10000);
    EXPECT_EQ(zeilen()[1], "Klick speichert die Aktion und schließt die Tafel");
    mausWeg();
    EXPECT_EQ(zeilen(), (QStringList{"Esc speichert und schließt die Tafel, außer in der Tastenbox"}));
    klick(33000, 33000);
    EXPECT_EQ(zeilen(), QStringList());
}

TEST_P(Ebenenstimmentest, NachEinerNeuenAktionSagtDasFeldSie) {
    editorOeffnen();
    klick(33000, 33000);
    klick(33000, 33000, Qt::RightButton);
    feld<QRadioButton>("Option1(4)").click();
    klick(33000, 33000);
    maus(33000, 33000);
    EXPECT_EQ(zeilen()[0], "Mittelfeld – Sperrfeld");
    feld<QRadioButton>("Uschalt(1)").click();
    maus(33000, 33000);
    EXPECT_EQ(zeilen()[0], "Mittelfeld – keine Aktion") << "on another layer";
}

TEST_P(Ebenenstimmentest, FreigelegtSagtDieEbeneWasGespeichertIst) {
    editorOeffnen();
    maus(10000, 33000);
    datenbank_.sql("UPDATE " + aktionstabelle() + " SET Aktion = '4' WHERE Links = 20000;");
    freilegen();
    EXPECT_EQ(zeilen()[0], "Feld links – Sperrfeld");
}

TEST_P(Ebenenstimmentest, EinAnderesFensterLiegtNichtAufDerEbene) {
    editorOeffnen();
    klick(33000, 33000);
    klick(33000, 33000);
    maus(33000, 60000);
    ASSERT_FALSE(zeilen().isEmpty());
    QEnterEvent herein(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QApplication::sendEvent(&feld<QWidget>(GetParam().umschalten), &herein);
    EXPECT_EQ(zeilen(), QStringList());
}

TEST_P(Ebenenstimmentest, PfeileErklaerenSich) {
    editorOeffnen();
    klick(33000, 33000);
    klick(33000, 33000);
    maus(19500, 700);
    EXPECT_EQ(
        zeilen(),
        (QStringList{
            "Linke Maustaste = Neue Linie ganz links / Rechte Maustaste = Äußerste Linie links löschen"}));
    const std::array<const char*, 4> namen{"LPfeil", "RPfeil", "OPfeil", "UPfeil"};
    const std::array<const char*, 4> worte{"links", "rechts", "oben", "unten"};
    for (std::size_t d = 0; d < 4; ++d)
        for (int i = 1; i < 21; ++i)
            EXPECT_EQ(
                feld<QWidget>(QString("%1(%2)").arg(namen[d]).arg(i)).toolTip(),
                QString("Linke Maustaste = Neue Linie ganz %1 / Rechte Maustaste = Äußerste Linie %1 löschen")
                    .arg(worte[d]));
}

TEST_P(Ebenenstimmentest, DerStickNenntSeinFeld) {
    editorOeffnen();
    klick(33000, 33000);
    klick(33000, 33000);
    stick(60000, 33000);
    EXPECT_EQ(zeilen(), (QStringList{"Stick: Feld rechts – Maus nach rechts, 5 Schritte alle 10 ms"}));
    stick(60000, 10000);
    EXPECT_EQ(zeilen()[0],
              "Stick: Feld rechts oben – gilt von Feld rechts: Maus nach rechts, 5 Schritte alle 10 ms");
}

TEST_P(Ebenenstimmentest, ImSelbenFeldKostetDerStickNichts) {
    editorOeffnen();
    stick(60000, 33000);
    QTest::qWait(0);
    Kostenzaehler zaehler(feld<QWidget>("Zustandszeile"));
    for (std::uint32_t i = 0; i < 50; ++i)
        stick(60000 + i, 33000 + i);
    QTest::qWait(0);
    EXPECT_EQ(zaehler.zahl, 0);
    maus(33000, 33000);
    QTest::qWait(0);
    zaehler.zahl = 0;
    for (int i = 1; i < 50; ++i)
        maus(33000 + 65 * i, 33000);
    QTest::qWait(0);
    EXPECT_EQ(zaehler.zahl, 0) << "nor does the mouse";
    stick(33000, 33000);
    QTest::qWait(0);
    EXPECT_GT(zaehler.zahl, 0) << "another field is told";
}

TEST_P(Ebenenstimmentest, EinStickUnterwegsKostetSeltenWorte) {
    editorOeffnen();
    stick(33000, 33000);
    QTest::qWait(0);
    Kostenzaehler zaehler(feld<QWidget>("Zustandszeile"));
    for (int tick = 0; tick < 19; ++tick) {
        pad_.zustand.*GetParam().x = tick % 2 == 0 ? 60000 : 10000;
        vergehen(5);
    }
    QTest::qWait(0);
    EXPECT_EQ(zaehler.zahl, 0);
    vergehen(5);
    EXPECT_EQ(zeilen().back(), "Stick: Feld rechts – Maus nach rechts, 5 Schritte alle 10 ms");
}

TEST_P(Ebenenstimmentest, LangeWorteBrechenUmUndLassenPfeileFrei) {
    aktion(0, "0,0,21000,0", "2,1,32,50,1,200");
    editorOeffnen();
    form().resize(640, 480);
    ereignisse();
    maus(10000, 10000);
    const auto& zeile = feld<QLabel>("Zustandszeile");
    EXPECT_GE(zeile.height(), 3 * zeile.fontMetrics().height());
    EXPECT_GE(zeile.height(), zeile.heightForWidth(zeile.width()));
    EXPECT_GT(zeile.x(), feld<QWidget>("UPfeil(0)").geometry().right());
    EXPECT_TRUE(ebene().rect().contains(zeile.geometry()));
    EXPECT_TRUE(zeile.wordWrap());
    EXPECT_EQ(zeile.textFormat(), Qt::PlainText) << "an action text is nobody's markup";
    form().resize(800, 600);
    ereignisse();
    EXPECT_LE(std::abs(zeile.geometry().center().x() - 400), 1) << "it goes along with the plane";
}

TEST_P(Ebenenstimmentest, DieZeilenDesPadsUndDesZustandsLassenEinanderUndDenPfeilenPlatz) {
    aktion(0, "0,0,21000,0", "2,1,32,50,1,200");
    pad_.namen = {"Ein Gamepad mit einem Namen, der länger ist als alle, die sonst da sind"};
    editorOeffnen();
    form().setMinimumSize(0, 0);
    for (const auto groesse : {QSize(1182, 665), QSize(1024, 768), QSize(683, 384), QSize(640, 480)}) {
        form().resize(groesse);
        ereignisse();
        maus(10000, 10000);
        const auto zustand = feld<QWidget>("Zustandszeile").geometry();
        const auto pad = feld<QWidget>("Padzeile").geometry();
        EXPECT_TRUE(zuSehen("Zustandszeile") && zuSehen("Padzeile"));
        EXPECT_GT(zustand.top(), ebene().height() / 3) << "at the lower edge, where they could meet";
        EXPECT_FALSE(zustand.intersects(pad)) << groesse.width();
        EXPECT_LE(std::abs(zustand.center().x() - ebene().width() / 2), 1);
        EXPECT_GT(pad.left(), ebene().width() * 1400 / 65535) << "beside the arrows";
        EXPECT_LE(pad.bottom(), ebene().height() * 63828 / 65535) << "above the strips";
        EXPECT_GT(pad.top(), ebene().height() * 3 / 4);
    }
}

TEST_P(Ebenenstimmentest, EinNeuerPadnameHatPlatzUndLiegtUnterAllemAnderen) {
    pad_.namen = {"Kurz"};
    editorOeffnen();
    pad_.namen = {"Ein Gamepad mit längerem Namen"};
    auto& zeile = feld<QLabel>("lblPad");
    QMetaObject::invokeMethod(feld<QWidget>("Padzeile").findChild<QTimer*>(), "timeout");
    EXPECT_GE(zeile.width(), zeile.fontMetrics().horizontalAdvance("● Ein Gamepad mit längerem Namen"));
    EXPECT_EQ(ebene().findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly).first()->objectName(),
              "Padzeile");
    EXPECT_TRUE(zeile.hasMouseTracking()) << "the mouse moves on the plane there, too";
}

TEST_P(Ebenenstimmentest, SperreUndTestlaufWerdenGesagt) {
    editorOeffnen();
    feld<QCheckBox>("Check2").click();
    EXPECT_TRUE(zeilen().contains("„1 to 1“: Der Stick ruht in dieser Ebene"));
    feld<QCheckBox>("Check2").click();
    EXPECT_FALSE(zeilen().contains("„1 to 1“: Der Stick ruht in dieser Ebene"));
    feld<QPushButton>("Command1(1)").click();
    vergehen(100);
    const QString laeuft = "Test läuft – Änderungen gelten ab dem nächsten Ebenenwechsel oder Start";
    EXPECT_TRUE(zeilen().contains(laeuft));
    laufFenster()->close();
    vergehen(100);
    EXPECT_FALSE(zeilen().contains(laeuft));
}

TEST_P(Ebenenstimmentest, DieZeileWeichtDerMausUndLaesstSieDurch) {
    editorOeffnen();
    auto& zeile = feld<QWidget>("Zustandszeile");
    EXPECT_TRUE(zeile.testAttribute(Qt::WA_TransparentForMouseEvents));
    maus(33000, 33000);
    const auto unten = zeile.geometry();
    EXPECT_GT(unten.top(), ebene().height() * 3 / 4);
    EXPECT_LT(unten.bottom(), feld<QWidget>("Frame2").y()) << "above the strips";
    maus(33000, 65535.0 * unten.center().y() / ebene().height());
    const auto oben = zeile.geometry();
    EXPECT_LT(oben.bottom(), ebene().height() / 4);
    EXPECT_GT(oben.top(), feld<QWidget>("LPfeil(0)").geometry().bottom()) << "below the arrows";
    maus(33000, 33000);
    EXPECT_EQ(zeile.geometry().top(), oben.top()) << "it stays until it is in the way again";
    maus(33000, 65535.0 * oben.center().y() / ebene().height());
    EXPECT_GT(zeile.y(), ebene().height() / 2);
    EXPECT_TRUE(ebene().rect().contains(zeile.geometry()));
}

TEST_P(Ebenenstimmentest, DieZeileLiegtNichtUnterDerAktionstafel) {
    editorOeffnen();
    const auto& zeile = feld<QWidget>("Zustandszeile");
    klick(33000, 33000);
    klick(33000, 33000, Qt::RightButton);
    auto& tafel = feld<QWidget>("fraAktion");
    ASSERT_TRUE(tafel.isVisible());
    tafel.move(zeile.pos()); // as for a field at that edge
    for (const int y : {10000, 33000, 20000}) {
        maus(5000, y);
        EXPECT_TRUE(zeile.isVisible());
        EXPECT_FALSE(zeile.geometry().intersects(tafel.geometry()));
    }
    klick(5000, 20000);
    maus(5000, 33000);
    EXPECT_GT(zeile.y(), ebene().height() / 2) << "back where it was";
}

// --- the keyboard ---

TEST_P(Ebenenstimmentest, PfeiltastenGehenVonFeldZuFeld) {
    editorOeffnen();
    EXPECT_TRUE(liegt("Ebenenmarke", 20000, 21000, 25000, 25000)) << "it begins in the middle";
    taste(Qt::Key_Left);
    EXPECT_TRUE(liegt("Ebenenmarke", 0, 21000, 20000, 25000));
    EXPECT_EQ(zeilen(), (QStringList{"Feld links – Tastatur: B, gehalten", TASTEN_FREI}));
    tasten({Qt::Key_Left, Qt::Key_Up});
    EXPECT_TRUE(liegt("Ebenenmarke", 0, 0, 20000, 21000)) << "at the edge it stays";
    tasten({Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Down});
    EXPECT_TRUE(liegt("Ebenenmarke", 45000, 46000, 20535, 19535)) << "not beyond the plane";
    EXPECT_FALSE(zuSehen("RechteckB"));
    klick(33000, 33000);
    EXPECT_FALSE(zuSehen("Ebenenmarke")) << "the mouse is in use now";
}

TEST_P(Ebenenstimmentest, DieWorteFolgenDerHandDieSichZuletztRuehrte) {
    editorOeffnen();
    maus(60000, 33000);
    EXPECT_EQ(zeilen()[0], "Feld rechts – Maus nach rechts, 5 Schritte alle 10 ms");
    EXPECT_TRUE(zuSehen("Ebenenmarke"));
    taste(Qt::Key_Left);
    EXPECT_EQ(zeilen(), (QStringList{"Feld links – Tastatur: B, gehalten", TASTEN_FREI}));
    maus(60000, 33000);
    EXPECT_EQ(zeilen()[0], "Feld links – Tastatur: B, gehalten") << "the mouse lies still";
    maus(60000, 33100);
    EXPECT_EQ(zeilen()[0], "Feld rechts – Maus nach rechts, 5 Schritte alle 10 ms");
}

TEST_P(Ebenenstimmentest, DieMarkeGiltNurMitDerTastatur) {
    editorOeffnen();
    EXPECT_TRUE(zuSehen("Ebenenmarke"));
    feld<QWidget>("Uschalt(0)").setFocus(Qt::TabFocusReason);
    EXPECT_FALSE(zuSehen("Ebenenmarke"));
    taste(Qt::Key_F2);
    ebene().setFocus(Qt::BacktabFocusReason);
    EXPECT_TRUE(zuSehen("Ebenenmarke"));
}

TEST_P(Ebenenstimmentest, EingabeWaehltUndOeffnetDannUndEscSpeichert) {
    editorOeffnen();
    tasten({Qt::Key_Left, Qt::Key_Return});
    EXPECT_TRUE(zuSehen("RechteckB"));
    EXPECT_TRUE(liegt("RechteckB", 0, 21000, 20000, 25000));
    EXPECT_FALSE(zuSehen("fraAktion"));
    taste(Qt::Key_Return);
    EXPECT_TRUE(zuSehen("fraAktion"));
    EXPECT_TRUE(feld<QRadioButton>("Option1(2)").isChecked());
    EXPECT_TRUE(feld<QWidget>("fraAktion").isAncestorOf(QApplication::focusWidget()));
    feld<QRadioButton>("Option1(4)").click();
    feld<QRadioButton>("Option1(4)").setFocus();
    taste(Qt::Key_Escape);
    EXPECT_FALSE(zuSehen("fraAktion"));
    EXPECT_FALSE(zuSehen("RechteckB")) << "as a click outside does";
    EXPECT_EQ(aktionen()[1], (std::vector<std::string>{"0", "20000", "0", "0", "0", "4"}));
    EXPECT_TRUE(ebene().hasFocus());
    EXPECT_EQ(zeilen()[0], "Feld links – Sperrfeld");
}

TEST_P(Ebenenstimmentest, EineGehalteneEingabetasteOeffnetNichts) {
    editorOeffnen();
    taste(Qt::Key_Return);
    QKeyEvent wiederholt(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
    QApplication::sendEvent(&ebene(), &wiederholt);
    EXPECT_TRUE(zuSehen("RechteckB"));
    EXPECT_FALSE(zuSehen("fraAktion"));
    QKeyEvent weiter(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier, "", true);
    QApplication::sendEvent(&ebene(), &weiter);
    EXPECT_TRUE(liegt("Ebenenmarke", 0, 21000, 20000, 25000)) << "a held arrow goes on";
}

TEST_P(Ebenenstimmentest, EscLegtEineLinieInDerHandZurueck) {
    editorOeffnen();
    klick(20000, 60000);
    ziehen(15000, 60000);
    ASSERT_TRUE(stehtX("LLinks(0)", 15000));
    taste(Qt::Key_Escape);
    EXPECT_TRUE(stehtX("LLinks(0)", 20000));
    EXPECT_EQ(linie("Links", 1), "20000");
    EXPECT_TRUE(feld<QWidget>("Frame2").isEnabled());
    ziehen(15000, 60000);
    EXPECT_TRUE(stehtX("LLinks(0)", 20000)) << "it is in no hand";
}

TEST_P(Ebenenstimmentest, EinAnderesFeldLoestDasGewaehlteAb) {
    editorOeffnen();
    tasten({Qt::Key_Left, Qt::Key_Return, Qt::Key_Up, Qt::Key_Return});
    EXPECT_TRUE(zuSehen("RechteckB"));
    EXPECT_TRUE(liegt("RechteckB", 0, 0, 20000, 21000));
    taste(Qt::Key_Escape);
    EXPECT_FALSE(zuSehen("RechteckB"));
    EXPECT_EQ(aktionen(), AKTIONEN) << "nothing is saved by choosing";
}

TEST_P(Ebenenstimmentest, WoDieMarkeGingWirdMitDenLinienWenigerFelder) {
    editorOeffnen();
    pfeil("LPfeil(0)");
    ebene().setFocus(Qt::TabFocusReason);
    tasten({Qt::Key_Right, Qt::Key_Right, Qt::Key_Down});
    EXPECT_TRUE(liegt("Ebenenmarke", 45000, 46000, 65535 - 45000, 65535 - 46000)) << "the last column";
    pfeil("LPfeil(0)", Qt::RightButton);
    EXPECT_EQ(zeilen()[0],
              "Feld rechts unten – gilt von Feld rechts: Maus nach rechts, 5 Schritte alle 10 ms");
    tasten({Qt::Key_Up, Qt::Key_Return});
    EXPECT_TRUE(liegt("RechteckB", 45000, 21000, 66000 - 45000, 25000)) << "is still the last one";
    tasten({Qt::Key_Escape, Qt::Key_Left, Qt::Key_Left});
    EXPECT_TRUE(liegt("Ebenenmarke", 0, 21000, 20000, 25000));
    pfeil("LPfeil(0)");
    EXPECT_FALSE(liegt("Ebenenmarke", 0, 21000, 20000, 25000)) << "a line goes through it";
}

TEST_P(Ebenenstimmentest, DieMarkeBeginntImGewaehltenFeld) {
    schemaMitWahl();
    tasten({Qt::Key_Menu});
    EXPECT_TRUE(liegt("RechteckB", 45000, 21000, 66000 - 45000, 25000));
    EXPECT_TRUE(zuSehen("fraAktion"));
}

TEST_P(Ebenenstimmentest, TastenMitStrgOderAltSindNichtDerEbene) {
    editorOeffnen();
    for (const auto zusatz : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier}) {
        taste(Qt::Key_Left, zusatz);
        taste(Qt::Key_Return, zusatz);
    }
    EXPECT_TRUE(liegt("Ebenenmarke", 20000, 21000, 25000, 25000));
    EXPECT_FALSE(zuSehen("RechteckB"));
    taste(Qt::Key_Left, Qt::KeypadModifier);
    EXPECT_TRUE(liegt("Ebenenmarke", 0, 21000, 20000, 25000));
}

TEST_P(Ebenenstimmentest, DerZustandLaesstDieMarkeFrei) {
    datenbank_.sql("UPDATE " + Justiertest::stick() + " SET Oben = 6000, Unten = 56000 WHERE \"index\" = 1;");
    editorOeffnen();
    taste(Qt::Key_Down);
    EXPECT_LT(feld<QWidget>("Zustandszeile").geometry().bottom(), ebene().height() / 2);
    tasten({Qt::Key_Up, Qt::Key_Up});
    EXPECT_GT(feld<QWidget>("Zustandszeile").geometry().top(), ebene().height() / 2);
}

TEST_P(Ebenenstimmentest, MitDemFokusAufDerEbeneSpeichertEingabeDieOffeneTafel) {
    editorOeffnen();
    tasten({Qt::Key_Right, Qt::Key_Menu});
    EXPECT_EQ(QApplication::focusWidget(), &feld<QWidget>("Option1(0)"));
    feld<QRadioButton>("Option1(4)").click();
    ebene().setFocus(Qt::BacktabFocusReason);
    taste(Qt::Key_Left);
    EXPECT_TRUE(liegt("Ebenenmarke", 45000, 21000, 65535 - 45000, 25000)) << "an open panel holds it";
    ebene().setFocus(Qt::BacktabFocusReason);
    taste(Qt::Key_Return);
    EXPECT_FALSE(zuSehen("fraAktion"));
    EXPECT_EQ(aktionen()[0][5], "4");
}

TEST_P(Ebenenstimmentest, EinKlickDerNichtSpeichernKannLaesstDerTafelDieTasten) {
    editorOeffnen();
    tasten({Qt::Key_Right, Qt::Key_Menu});
    feld<QRadioButton>("Option1(4)").click();
    feld<QRadioButton>("Option1(4)").setFocus();
    datenbank_.sql("ALTER TABLE " + aktionstabelle() + " RENAME TO weg;");
    Boxleser boxen;
    klick(33000, 60000);
    EXPECT_EQ(boxen.gesehen().size(), 1u);
    EXPECT_TRUE(zuSehen("fraAktion"));
    form().activateWindow();
    ereignisse();
    ASSERT_EQ(QApplication::focusWidget(), &feld<QWidget>("Option1(4)"));
}

TEST_P(Ebenenstimmentest, DieMenuetasteOeffnetDieAktionDesMarkiertenFeldes) {
    for (const auto& [eine, zusatz] :
         {std::pair{Qt::Key_Menu, Qt::NoModifier}, {Qt::Key_F10, Qt::ShiftModifier}}) {
        editorOeffnen();
        tasten({Qt::Key_Right});
        taste(eine, zusatz);
        EXPECT_TRUE(zuSehen("fraAktion"));
        EXPECT_TRUE(liegt("RechteckB", 45000, 21000, 21000, 25000));
        EXPECT_TRUE(feld<QRadioButton>("Option1(0)").isChecked());
        taste(Qt::Key_Escape);
        EXPECT_FALSE(zuSehen("fraAktion"));
        EXPECT_EQ(aktionen(), AKTIONEN);
        form().close();
        programm_.reset();
        ereignisse();
    }
}

TEST_P(Ebenenstimmentest, UmschaltUndPfeilSchiebenEineLinieUndSpeichern) {
    editorOeffnen();
    taste(Qt::Key_Left);
    taste(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_TRUE(stehtX("LLinks(0)", 19750));
    EXPECT_EQ(linie("Links", 1), "19750");
    EXPECT_EQ(aktionen()[1][1], "19750") << "its action follows";
    EXPECT_TRUE(liegt("Ebenenmarke", 0, 21000, 19750, 25000)) << "the mark, too";
    EXPECT_EQ(zeilen()[0], "Feld links – Tastatur: B, gehalten");
    taste(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(linie("Links", 1), "20000");
    taste(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(linie("Unten", 1), "46250") << "from the centre band outward";
    taste(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(linie("Oben", 1), "20750");
}

TEST_P(Ebenenstimmentest, EineGehalteneTasteSchiebtNichtSchnellerAlsGespeichertWird) {
    editorOeffnen();
    taste(Qt::Key_Left);
    const auto gehalten = [&](quint64 zeitpunkt, bool wiederholt = true) {
        QKeyEvent eine(QEvent::KeyPress, Qt::Key_Left, Qt::ShiftModifier, "", wiederholt);
        eine.setTimestamp(zeitpunkt);
        QApplication::sendEvent(&ebene(), &eine);
        return linie("Links", 1);
    };
    EXPECT_EQ(gehalten(1000, false), "19750");
    EXPECT_EQ(gehalten(1000), "19750") << "it waited while the first was saved";
    EXPECT_EQ(gehalten(601000), "19500");
    EXPECT_EQ(gehalten(601000), "19500");
    EXPECT_EQ(gehalten(601000, false), "19250") << "each press by itself counts";
    EXPECT_EQ(gehalten(0), "19000") << "without a time each counts, too";
    EXPECT_EQ(aktionen()[1][1], "19000");
}

TEST_P(Ebenenstimmentest, TastenDerTafelBleibenAufIhr) {
    editorOeffnen();
    tasten({Qt::Key_Right, Qt::Key_Menu});
    auto& schritt = feld<QLineEdit>("txtSchritt(1)");
    schritt.setFocus();
    schritt.setText("17");
    tasten({Qt::Key_Left, Qt::Key_Up, Qt::Key_Return, Qt::Key_Menu, Qt::Key_Down});
    EXPECT_TRUE(zuSehen("fraAktion"));
    EXPECT_TRUE(liegt("RechteckB", 45000, 21000, 21000, 25000));
    QTest::keyClicks(&schritt, "5");
    EXPECT_EQ(schritt.text(), "157") << "the cursor went left";
    feld<QRadioButton>("Option1(0)").setFocus();
    taste(Qt::Key_Return);
    EXPECT_TRUE(zuSehen("fraAktion")) << "an option leaves this key";
    feld<QRadioButton>("Option1(0)").click();
    schritt.setFocus();
    taste(Qt::Key_Escape);
    EXPECT_EQ(aktionen()[0][5], "0,1,157,10");
}

TEST_P(Ebenenstimmentest, WasStreifenVonTastenLassenIstNichtDerEbene) {
    editorOeffnen();
    feld<QWidget>("Uschalt(0)").setFocus();
    tasten({Qt::Key_Return, Qt::Key_Menu});
    EXPECT_FALSE(zuSehen("RechteckB"));
    EXPECT_FALSE(zuSehen("fraAktion"));
}

TEST_P(Ebenenstimmentest, DieTastenboxFaengtAuchEscUndPfeile) {
    editorOeffnen();
    tasten({Qt::Key_Left, Qt::Key_Menu});
    ASSERT_EQ(QApplication::focusWidget(), &feld<QWidget>("txtTaste"));
    tasten({Qt::Key_Left, Qt::Key_Return, Qt::Key_Escape});
    EXPECT_TRUE(zuSehen("fraAktion"));
    EXPECT_TRUE(liegt("RechteckB", 0, 21000, 20000, 25000));
}

TEST_P(Ebenenstimmentest, ImTestlaufSindTastenNichtDerEbene) {
    editorOeffnen();
    feld<QPushButton>("Command1(1)").click();
    ereignisse();
    ASSERT_NE(laufFenster(), nullptr);
    form().activateWindow();
    ebene().setFocus(Qt::TabFocusReason);
    ereignisse();
    tasten({Qt::Key_Left, Qt::Key_Return});
    taste(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_FALSE(zuSehen("RechteckB"));
    EXPECT_EQ(linie("Links", 1), "20000");
    laufFenster()->close();
    form().activateWindow();
    ebene().setFocus(Qt::TabFocusReason);
    ereignisse();
    taste(Qt::Key_Return);
    EXPECT_TRUE(zuSehen("RechteckB"));
}

TEST_P(Ebenenstimmentest, KannEscNichtSpeichernBleibtDieTafelOffen) {
    editorOeffnen();
    tasten({Qt::Key_Right, Qt::Key_Menu});
    feld<QRadioButton>("Option1(4)").click();
    feld<QRadioButton>("Option1(4)").setFocus();
    datenbank_.sql("ALTER TABLE " + aktionstabelle() + " RENAME TO weg;");
    Boxleser boxen;
    taste(Qt::Key_Escape);
    EXPECT_EQ(boxen.gesehen().size(), 1u);
    EXPECT_TRUE(zuSehen("fraAktion"));
    EXPECT_TRUE(feld<QRadioButton>("Option1(4)").isChecked());
    datenbank_.sql("ALTER TABLE weg RENAME TO " + aktionstabelle() + ";");
    form().activateWindow();
    ereignisse();
    ASSERT_EQ(QApplication::focusWidget(), &feld<QWidget>("Option1(4)")) << "it can be tried again";
    taste(Qt::Key_Escape);
    EXPECT_EQ(aktionen()[0][5], "4");
}

// --- assistive technology ---

TEST_P(Ebenenstimmentest, DieFelderSindEineListeInWorten) {
    editorOeffnen();
    EXPECT_EQ(zugang().role(), QAccessible::List);
    EXPECT_EQ(zugang().text(QAccessible::Name),
              GetParam().zusatz.empty() ? "Felder des linken Sticks" : "Felder des rechten Sticks");
    ASSERT_GE(zugang().childCount(), 9);
    EXPECT_EQ(feldname(0), "Feld links oben – gilt von Feld links: Tastatur: B, gehalten");
    EXPECT_EQ(feldname(3), "Feld links – Tastatur: B, gehalten");
    EXPECT_EQ(feldname(4), "Mittelfeld – keine Aktion");
    EXPECT_EQ(feldname(5), "Feld rechts – Maus nach rechts, 5 Schritte alle 10 ms");
    auto* mitte = zugang().child(4);
    EXPECT_EQ(mitte->role(), QAccessible::ListItem);
    EXPECT_EQ(mitte->parent(), &zugang());
    EXPECT_EQ(zugang().indexOfChild(mitte), 4);
    const auto ecke = ebene().mapToGlobal(pixel(20000, 21000)).toPoint();
    EXPECT_LE((mitte->rect().topLeft() - ecke).manhattanLength(), 2);
    EXPECT_LE(std::abs(mitte->rect().width() - ebene().width() * 25000 / 65535), 2);
    EXPECT_EQ(zugang().childAt(mitte->rect().center().x(), mitte->rect().center().y()), mitte);
}

TEST_P(Ebenenstimmentest, EineNeueLinieGibtMehrFelder) {
    editorOeffnen();
    const int vorher = zugang().childCount();
    auto* neuntes = zugang().child(8);
    pfeil("RPfeil(0)");
    EXPECT_EQ(zugang().childCount(), vorher + 3);
    EXPECT_EQ(feldname(3), "Feld rechts 2 oben – keine Aktion");
    EXPECT_TRUE(neuntes->isValid());
    auto* zwoelftes = zugang().child(11);
    EXPECT_EQ(zwoelftes->text(QAccessible::Name), "Feld rechts 2 unten – keine Aktion");
    pfeil("RPfeil(0)", Qt::RightButton);
    EXPECT_FALSE(zwoelftes->isValid()) << "which has gone";
    EXPECT_EQ(zwoelftes->text(QAccessible::Name), "");
}

TEST_P(Ebenenstimmentest, FelderSagenWoDieTastaturIstUndWasGewaehltIst) {
    editorOeffnen();
    taste(Qt::Key_Left);
    EXPECT_TRUE(zugang().child(3)->state().focused);
    EXPECT_FALSE(zugang().child(4)->state().focused);
    EXPECT_EQ(zugang().focusChild(), zugang().child(3));
    EXPECT_FALSE(zugang().child(3)->state().selected);
    feld<QWidget>("Uschalt(0)").setFocus();
    EXPECT_FALSE(zugang().child(3)->state().focused) << "the focus is on a panel";
    ebene().setFocus(Qt::TabFocusReason);
    taste(Qt::Key_Return);
    EXPECT_TRUE(zugang().child(3)->state().selected);
}

TEST_P(Ebenenstimmentest, FelderLassenSichBedienen) {
    editorOeffnen();
    auto* taten = zugang().child(5)->actionInterface();
    ASSERT_NE(taten, nullptr);
    taten->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(liegt("RechteckB", 45000, 21000, 21000, 25000));
    EXPECT_FALSE(zuSehen("fraAktion"));
    taten->doAction(QAccessibleActionInterface::showMenuAction());
    EXPECT_TRUE(zuSehen("fraAktion"));
    EXPECT_EQ(aktionen(), AKTIONEN);
    feld<QRadioButton>("Option1(0)").setFocus();
    taste(Qt::Key_Escape);
    zugang().child(3)->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    EXPECT_TRUE(zuSehen("fraAktion")) << "also of a field that is not chosen";
    EXPECT_TRUE(liegt("RechteckB", 0, 21000, 20000, 25000));
}

TEST_P(Ebenenstimmentest, AuchTafelnUndZustandGehoerenDazuAberKeineLinien) {
    editorOeffnen();
    QStringList namen;
    for (int i = 9; i < zugang().childCount(); ++i) {
        namen.push_back(zugang().child(i)->object()->objectName());
        EXPECT_EQ(zugang().indexOfChild(zugang().child(i)), i);
        EXPECT_EQ(zugang().child(i)->parent(), &zugang());
    }
    namen.sort();
    const auto streifen = feld<QWidget>("Frame2").mapToGlobal(QPoint(5, 5));
    EXPECT_EQ(zugang().childAt(streifen.x(), streifen.y())->object(), &feld<QWidget>("Frame2"))
        << "it lies on a field";
    EXPECT_EQ(namen, (QStringList{"Frame2", "Frame3", "Padzeile", "Zustandszeile"}));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&feld<QWidget>("Zustandszeile"))->text(QAccessible::Name),
              feld<QLabel>("Zustandszeile").text());
}
