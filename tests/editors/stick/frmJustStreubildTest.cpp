// SPDX-License-Identifier: GPL-3.0-or-later
// The stick editors: where the stick was, over the picture of the plane and in words.
#include "editors/stick/Justiertafeln.h"
#include "store/files/Streubilddateien.h"
#include "tests/editors/stick/Justiertest.h"

#include <QAccessible>
#include <QImage>
#include <QRegularExpression>

#include <chrono>
#include <filesystem>
#include <functional>

namespace {

constexpr int MITTE = 128;

std::uint16_t zelle(int x, int y) {
    return static_cast<std::uint16_t>(y * Streudaten::ZELLEN + x);
}

/// Ten seconds: half in the middle, half in two visits to the left, at x 10000 and close behind the line at
/// 20000. At rest there it trembles by 256 in x.
Streudaten gespielt() {
    Streudaten daten;
    daten.takte.resize(Streudaten::RASTERFELDER);
    for (const auto& [x, takte] : {std::pair{MITTE, 400}, {39, 500}, {MITTE, 400}, {77, 500}, {MITTE, 200}}) {
        daten.takte[zelle(x, MITTE)] += static_cast<std::uint32_t>(takte);
        daten.weg.push_back({zelle(x, MITTE), static_cast<std::uint16_t>(takte)});
    }
    daten.achsen[0].zittern[15] = 9900;
    daten.achsen[0].zittern[200] = 100;
    daten.achsen[0].ruhe[78] = 1000;
    return daten;
}

class FrmJustStreubild : public Justiertest, public ::testing::WithParamInterface<Zwilling> {
protected:
    FrmJustStreubild() : Justiertest(GetParam()) {
        schema();
        linien();
        aktion(0, "20000,0,0,0", "2,0,66,0,0");
    }
    Stickseite seite() const { return zwilling_.zusatz.empty() ? Stickseite::Links : Stickseite::Rechts; }
    Streubilddateien dateien() const { return Streubilddateien(streubildordner(datenbank_.pfad())); }
    void ablegen(const Streudaten& daten, int ebene = 0) { dateien().speichern("S", seite(), ebene, daten); }
    void editorOeffnen() {
        Justiertest::editorOeffnen();
        form().activateWindow();
        ereignisse();
        vergehen(5);
    }
    QCheckBox& schalter() { return feld<QCheckBox>("Streubild"); }
    QImage bild() {
        ereignisse();
        return ebene().grab().toImage();
    }
    QPoint stelle(double x, double y) { return pixel(x, y).toPoint(); }
    QStringList zeilen() { return feld<QLabel>("Zustandszeile").text().split('\n'); }
    void maus(double x, double y) { bewegen(ebene(), pixel(x, y)); }
    void taste(Qt::Key eine, Qt::KeyboardModifiers zusatz = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), eine, zusatz);
        ereignisse();
    }
    /// The marks of noise that are in sight.
    QList<QWidget*> marken() {
        QList<QWidget*> gezeigte;
        for (auto* teil : ebene().findChildren<QWidget*>(QRegularExpression("^Rauschen\\(")))
            if (!teil->isHidden())
                gezeigte << teil;
        return gezeigte;
    }
    /// What is done beside the event loop.
    static bool kommt(const std::function<bool()>& was) {
        const auto bis = std::chrono::steady_clock::now() + std::chrono::seconds{30};
        while (!was() && std::chrono::steady_clock::now() < bis)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return was();
    }
    QString feldname(int nummer) {
        return QAccessible::queryAccessibleInterface(&ebene())->child(nummer)->text(QAccessible::Name);
    }

    const QPointF LINKS_DRAUSSEN{39.5 * 256, 128.5 * 256};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Zwillinge, FrmJustStreubild, ::testing::Values(LINKER_ZWILLING, RECHTER_ZWILLING),
                         [](const auto& fall) { return std::string(fall.param.form); });

// --- on and off ---

TEST_P(FrmJustStreubild, ZuerstIstEsAus) {
    ablegen(gespielt());
    editorOeffnen();
    EXPECT_FALSE(schalter().isChecked());
    EXPECT_TRUE(marken().isEmpty());
    maus(10000, 33000);
    EXPECT_EQ(zeilen().size(), 2);
    EXPECT_FALSE(zeilen()[1].contains("der Zeit"));
}

TEST_P(FrmJustStreubild, ImFeldWarDerStickUndDasSiehtMan) {
    ablegen(gespielt());
    editorOeffnen();
    const auto vorher = bild();
    schalter().click();
    const auto mit = bild();
    EXPECT_NE(mit.pixel(stelle(LINKS_DRAUSSEN.x(), LINKS_DRAUSSEN.y())),
              vorher.pixel(stelle(LINKS_DRAUSSEN.x(), LINKS_DRAUSSEN.y())));
    EXPECT_EQ(mit.pixel(stelle(10000, 60000)), vorher.pixel(stelle(10000, 60000))) << "it never was there";
    schalter().click();
    EXPECT_EQ(bild(), vorher);
}

TEST_P(FrmJustStreubild, DieTasteSSchaltetEs) {
    ablegen(gespielt());
    editorOeffnen();
    taste(Qt::Key_S);
    EXPECT_TRUE(schalter().isChecked());
    taste(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(schalter().isChecked()) << "that is another key";
    taste(Qt::Key_S);
    EXPECT_FALSE(schalter().isChecked());
    QKeyEvent gehalten(QEvent::KeyPress, Qt::Key_S, Qt::NoModifier, "s", true);
    QApplication::sendEvent(&ebene(), &gehalten);
    EXPECT_FALSE(schalter().isChecked()) << "held";
}

// The pad may be what presses it.
TEST_P(FrmJustStreubild, ImTestlaufGehoertDieTasteDemSpiel) {
    editorOeffnen();
    feld<QPushButton>("Command1(1)").click();
    ereignisse();
    ASSERT_NE(laufFenster(), nullptr);
    form().activateWindow();
    ebene().setFocus();
    ereignisse();
    ASSERT_TRUE(ebene().hasFocus());
    taste(Qt::Key_S);
    EXPECT_FALSE(schalter().isChecked());
}

TEST_P(FrmJustStreubild, DasProgrammMerktSichDassEsAnIst) {
    ablegen(gespielt());
    editorOeffnen();
    schalter().click();
    form().close();
    ereignisse();
    editorknopf();
    EXPECT_TRUE(schalter().isChecked());
    EXPECT_EQ(marken().size(), 1) << "and it is shown";
    taste(Qt::Key_S);
    form().close();
    ereignisse();
    editorknopf();
    EXPECT_FALSE(schalter().isChecked());
}

TEST_P(FrmJustStreubild, JedeEbeneHatIhrEigenes) {
    ablegen(gespielt(), 1);
    editorOeffnen();
    schalter().click();
    maus(10000, 33000);
    EXPECT_EQ(zeilen().last(), "Streubild: Auf dieser Ebene wurde noch nicht gespielt");
    feld<QRadioButton>("Uschalt(1)").click();
    maus(10001, 33000);
    EXPECT_EQ(zeilen().last(), "Streubild aus 10 s");
    feld<QRadioButton>("Uschalt(2)").click();
    maus(10000, 33000);
    EXPECT_EQ(zeilen().last(), "Streubild: Auf dieser Ebene wurde noch nicht gespielt");
}

// A run that ends counts more, here or in another copy of the program.
TEST_P(FrmJustStreubild, WasDazukommtZeigtEsVonSelbst) {
    editorOeffnen();
    schalter().click();
    maus(10000, 33000);
    EXPECT_EQ(zeilen().last(), "Streubild: Auf dieser Ebene wurde noch nicht gespielt");
    ablegen(gespielt());
    vergehen(505);
    EXPECT_EQ(zeilen().last(), "Streubild aus 10 s");
    EXPECT_EQ(marken().size(), 1);
}

TEST_P(FrmJustStreubild, EsAendertNichtsAnDemWasGespeichertIst) {
    ablegen(gespielt());
    editorOeffnen();
    const auto vorher = datenbank_.zeilen("SELECT * FROM " + stick() + ";");
    schalter().click();
    feld<QRadioButton>("Uschalt(1)").click();
    feld<QRadioButton>("Uschalt(0)").click();
    klick(20000, 33000);
    ziehen(15000, 33000);
    schalter().click();
    klick(50000, 60000); // misses the line
    EXPECT_EQ(datenbank_.zeilen("SELECT * FROM " + stick() + ";"), vorher);
}

// --- back to nothing ---

TEST_P(FrmJustStreubild, ZuruecksetzenFragtUndVergisstDieseEbene) {
    ablegen(gespielt(), 0);
    ablegen(gespielt(), 1);
    editorOeffnen();
    schalter().click();
    const Boxleser boxen({QMessageBox::No, QMessageBox::Yes});
    auto& knopf = feld<QPushButton>("Streubildruecksetzung");
    knopf.click();
    EXPECT_EQ(dateien().laden("S", seite(), 0), gespielt());
    EXPECT_EQ(marken().size(), 1);
    knopf.click();
    EXPECT_EQ(dateien().laden("S", seite(), 0), Streudaten());
    EXPECT_EQ(dateien().laden("S", seite(), 1), gespielt());
    EXPECT_TRUE(marken().isEmpty());
    const Gesehen gefragt{"Streubild zurücksetzen",
                          "Soll das Programm vergessen, wo der Stick auf dieser Ebene war?",
                          QMessageBox::NoIcon, QMessageBox::Yes | QMessageBox::No};
    EXPECT_EQ(boxen.gesehen(), (std::vector<Gesehen>{gefragt, gefragt}));
}

// It is still being written when its window goes.
TEST_P(FrmJustStreubild, DerLetzteLaufWirdGezeigtUndMitVergessen) {
    editorOeffnen();
    feld<QPushButton>("Command1(1)").click();
    ereignisse();
    vergehen(1000);
    laufFenster()->close();
    schalter().click();
    maus(10000, 33000);
    EXPECT_EQ(zeilen().last(), "Streubild aus 1 s");
    feld<QPushButton>("Command1(1)").click();
    ereignisse();
    vergehen(1000);
    laufFenster()->close();
    const Boxleser boxen({QMessageBox::Yes});
    feld<QPushButton>("Streubildruecksetzung").click();
    programm_.reset();
    EXPECT_EQ(dateien().laden("S", seite(), 0), Streudaten());
}

TEST_P(FrmJustStreubild, UmschaltSFragtUndVergisst) {
    ablegen(gespielt());
    editorOeffnen();
    const Boxleser boxen({QMessageBox::No, QMessageBox::Yes});
    const auto umschaltS = [&] {
        form().activateWindow(); // a box has come between
        ebene().setFocus();
        ereignisse();
        taste(Qt::Key_S, Qt::ShiftModifier);
    };
    umschaltS();
    EXPECT_EQ(dateien().laden("S", seite(), 0), gespielt());
    umschaltS();
    EXPECT_EQ(dateien().laden("S", seite(), 0), Streudaten());
    EXPECT_EQ(boxen.gesehen().size(), 2U);
    EXPECT_FALSE(schalter().isChecked());
}

TEST_P(FrmJustStreubild, WerNurEnterDruecktBehaeltEs) {
    ablegen(gespielt());
    editorOeffnen();
    const Eingabetaste enter;
    feld<QPushButton>("Streubildruecksetzung").click();
    EXPECT_EQ(enter.gedrueckt(), 1);
    EXPECT_EQ(dateien().laden("S", seite(), 0), gespielt());
}

TEST_P(FrmJustStreubild, WasSichNichtVergessenLaesstSagtEs) {
    std::filesystem::create_directories(dateien().pfad("S", seite(), 0) / "voll"); // no file at all
    editorOeffnen();
    const Boxleser boxen({QMessageBox::Yes});
    feld<QPushButton>("Streubildruecksetzung").click();
    ASSERT_EQ(boxen.gesehen().size(), 2U);
    EXPECT_EQ(boxen.gesehen()[1].text, "Das Streubild ließ sich nicht zurücksetzen.");
}

// --- words ---

TEST_P(FrmJustStreubild, DasFeldUnterDerMausSagtWieOftDerStickDortWar) {
    ablegen(gespielt());
    editorOeffnen();
    schalter().click();
    maus(10000, 33000);
    EXPECT_EQ(zeilen(),
              (QStringList{"Feld links – Tastatur: B, gehalten",
                           "50,0 % der Zeit · 12,0 Eintritte je Minute · Median 2,50 s",
                           "Linie rechts im Rauschen (± 256)",
                           "Klick wählt das Feld, danach Rechtsklick: Aktion", "Streubild aus 10 s"}));
    EXPECT_EQ(feldname(3),
              "Feld links – Tastatur: B, gehalten – 50,0 % der Zeit · 12,0 Eintritte je Minute · "
              "Median 2,50 s – Linie rechts im Rauschen (± 256)");
    schalter().click();
    EXPECT_EQ(feldname(3), "Feld links – Tastatur: B, gehalten");
}

TEST_P(FrmJustStreubild, EineLinieInDerHandWirdProbiert) {
    ablegen(gespielt());
    editorOeffnen();
    schalter().click();
    maus(20000, 33000);
    EXPECT_EQ(zeilen()[2], "Diese Linie liegt im Rauschen (± 256)");
    klick(20000, 33000);
    ziehen(20010, 33000);
    EXPECT_EQ(zeilen(), (QStringList{"Diese Linie liegt im Rauschen (± 256)",
                                     "Feld links: 50,0 % der Zeit, 2 Eintritte – Tastatur: B, gehalten",
                                     "Mittelfeld: 50,0 % der Zeit, 2 Eintritte – keine Aktion",
                                     "Linie aufgenommen – klicken setzt ab", "Streubild aus 10 s"}));
    ziehen(15000, 33000);
    EXPECT_EQ(zeilen(),
              (QStringList{"Feld links: 25,0 % der Zeit, 1 Eintritt (bisher 2) – Tastatur: B, gehalten",
                           "Mittelfeld: 75,0 % der Zeit, 1 Eintritt (bisher 2) – keine Aktion",
                           "Linie aufgenommen – klicken setzt ab", "Streubild aus 10 s"}));
    klick(15000, 33000);
    maus(10000, 33000);
    EXPECT_EQ(zeilen()[1], "25,0 % der Zeit · 6,0 Eintritte je Minute · Median 2,50 s");
    EXPECT_EQ(linie("Links", 1), "15000");
}

// The run is recorded as it is played, and the editor has the record played again: the stick goes to 19990
// and back four times, which no line beyond that sees.
TEST_P(FrmJustStreubild, EineProbeZaehltImLetztenMitschnitt) {
    ablegen(gespielt());
    editorOeffnen();
    feld<QPushButton>("Command1(1)").click();
    ereignisse();
    vergehen(1000);
    for (int i = 0; i < 4; ++i)
        for (const std::uint32_t x : {19990U, 32767U}) {
            pad_.zustand.*zwilling_.x = x;
            pad_.melden();
            vergehen(1000); // smoothed it is there, too
        }
    control<QPushButton>(*laufFenster(), "cmdMitschnitt").click();
    ASSERT_TRUE(kommt([&] { return !control<QLabel>(*laufFenster(), "lblMitschnitt").text().isEmpty(); }));
    laufFenster()->close();
    schalter().click();
    form().activateWindow();
    ereignisse();
    klick(20000, 33000);
    ziehen(19995, 33000);
    ASSERT_TRUE(kommt([&] { return zeilen().last().contains(" Mitschnitt vom "); }))
        << zeilen().last().toStdString();
    EXPECT_TRUE(zeilen()[1].contains("4 Eintritte – ")) << zeilen()[1].toStdString();
    ziehen(19985, 33000);
    EXPECT_TRUE(zeilen()[1].contains("0 Eintritte (bisher 4) – ")) << zeilen()[1].toStdString();
}

// --- noise ---

TEST_P(FrmJustStreubild, EinStreifenBegleitetDieLinieSolangeSieImRauschenLiegt) {
    ablegen(gespielt());
    editorOeffnen();
    schalter().click();
    ASSERT_EQ(marken().size(), 1);
    EXPECT_TRUE(liegt("Rauschen(0)", 20000 - 256, 0, 512, 65535));
    klick(20000, 33000);
    ziehen(20100, 33000);
    ASSERT_EQ(marken().size(), 1);
    EXPECT_TRUE(liegt("Rauschen(0)", 20100 - 256, 0, 512, 65535));
    ziehen(15000, 33000);
    EXPECT_TRUE(marken().isEmpty());
    klick(50000, 60000); // misses it: it goes back, and a field is chosen
    EXPECT_EQ(marken().size(), 1);
    klick(50000, 60000);
    schalter().click();
    EXPECT_TRUE(marken().isEmpty());
}

TEST_P(FrmJustStreubild, EinSchmalesBandIstSchraffiert) {
    datenbank_.sql("UPDATE " + stick() + " SET Rechts = 45501 WHERE \"index\" = 2;");
    auto daten = gespielt();
    ablegen(daten);
    editorOeffnen();
    const QPoint imBand = stelle(45250, 60000);
    const auto vorher = bild();
    schalter().click();
    ASSERT_EQ(marken().size(), 2);
    EXPECT_TRUE(liegt("Rauschen(1)", 45000, 0, 501, 65535));
    auto schraffiert = bild();
    int anders = 0;
    for (int y = -20; y < 20; ++y)
        anders += schraffiert.pixel(imBand + QPoint(0, y)) != vorher.pixel(imBand + QPoint(0, y));
    EXPECT_GT(anders, 4) << "strokes";
    EXPECT_LT(anders, 36) << "and the picture between them";
}

// --- the picture ---

// What is wiped off and painted anew shows the same picture as one painted whole.
TEST_P(FrmJustStreubild, SymboleKommenUndGehenDarauf) {
    auto daten = gespielt();
    for (int x = 120; x < 135; ++x)
        for (int y = 120; y < 135; ++y)
            daten.takte[zelle(x, y)] += 100;
    ablegen(daten);
    editorOeffnen();
    const QPoint mitte = stelle(32500, 33500); // of the field, where the lines of the cross meet
    const auto nackt = bild();
    schalter().click();
    const auto ohne = bild();
    EXPECT_NE(ohne.pixel(mitte), nackt.pixel(mitte));
    aktion(0, "0,0,0,0", "4");
    pfeil("RPfeil(0)");
    EXPECT_NE(bild().pixel(mitte), ohne.pixel(mitte));
    datenbank_.sql("DELETE FROM " + aktionstabelle() + " WHERE Links = 0;");
    pfeil("RPfeil(0)", Qt::RightButton);
    EXPECT_EQ(bild().copy(0, 0, 400, 400), ohne.copy(0, 0, 400, 400));
    EXPECT_EQ(bild().pixel(mitte), ohne.pixel(mitte));
}

TEST_P(FrmJustStreubild, EsWaechstMitDemFenster) {
    ablegen(gespielt());
    editorOeffnen();
    schalter().click();
    form().resize(1400, 900);
    const auto gross = bild();
    schalter().click();
    EXPECT_NE(gross.pixel(stelle(LINKS_DRAUSSEN.x(), LINKS_DRAUSSEN.y())),
              bild().pixel(stelle(LINKS_DRAUSSEN.x(), LINKS_DRAUSSEN.y())));
}

// --- the panel ---

TEST_P(FrmJustStreubild, WoDerPlatzNichtReichtGehtZuerstDerKnopf) {
    editorOeffnen();
    auto& tafeln = *ebene().findChild<Justiertafeln*>();
    std::vector<std::pair<bool, bool>> gezeigte; // switch and button
    for (int breite = 2000; breite > 200; breite -= 5) {
        tafeln.streubildEinpassen({breite, 100});
        const std::pair jetzt{!schalter().isHidden(), !feld<QPushButton>("Streubildruecksetzung").isHidden()};
        if (gezeigte.empty() || gezeigte.back() != jetzt)
            gezeigte.push_back(jetzt);
        EXPECT_TRUE(!jetzt.first || tafeln.noetigeEbene().width() <= breite) << breite;
    }
    EXPECT_EQ(gezeigte, (std::vector<std::pair<bool, bool>>{{true, true}, {true, false}, {false, false}}));
}

TEST_P(FrmJustStreubild, DieGegebenenControlsStehenWieZuvor) {
    editorOeffnen();
    const auto rechts = [&](const char* name) {
        const auto& control = feld<QWidget>(name);
        return control.mapTo(&form(), control.rect().bottomRight()).x();
    };
    EXPECT_LT(rechts("Command1(2)"), rechts("Command1(1)"));
    EXPECT_LT(rechts("Command1(1)"), rechts("Command1(0)"));
    EXPECT_LT(rechts("Command1(0)"), rechts("Check2"));
    EXPECT_LT(rechts("Label1(3)"), rechts("Streubild"));
    EXPECT_LT(rechts("Label1(3)"), rechts("Streubildruecksetzung"));
}
