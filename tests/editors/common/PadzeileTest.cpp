// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Padzeile.h"

#include "tests/editors/common/Formtest.h"

#include <QSignalSpy>
#include <QTextDocument>
#include <QTextDocumentFragment>

#include <utility>

namespace {

constexpr const char* KEINES = "○ Kein Gamepad gefunden – anstecken";
constexpr const char* DA = "● Probepad";

class PadzeileTest : public Formtest {
protected:
    /// The program with a `Schema` whose editors open without a message.
    void schemaStarten() {
        Schemabau schema(datenbank_);
        for (const auto seite : {Stickseite::Links, Stickseite::Rechts})
            schema.linien(seite, 1, {20000, 45000, 20000, 45000}).leereLinienAb(seite, 2);
        schema.anlegen();
        starten();
    }
    static QLabel& zeile(QWidget& form) { return control<QLabel>(form, "lblPad"); }
    /// The text after the next look of a line that stands in sight.
    static QString nachDemBlick(QWidget& form) {
        auto* eine = qobject_cast<Padzeile*>(&form);
        auto* takt = (eine ? eine : form.findChild<Padzeile*>())->findChild<QTimer*>();
        EXPECT_TRUE(takt->isActive());
        QMetaObject::invokeMethod(takt, "timeout");
        return zeile(form).text();
    }
    static QWidget* offene(const QString& name) {
        for (auto* form : QApplication::topLevelWidgets())
            if (form->objectName() == name && form->isVisible())
                return form;
        return nullptr;
    }
    /// What the line of a form says with a pad, without and with one again.
    std::vector<QString> folge(QWidget& form) {
        std::vector<QString> texte;
        for (const bool da : {true, false, true}) {
            pad_.da = da;
            texte.push_back(nachDemBlick(form));
        }
        return texte;
    }
};

// Notes how often it is asked.
class Zaehlpad final : public Joystick {
public:
    int fragen = 0;
    std::uint32_t joyGetPosEx(std::uint32_t, JOYINFOEX&) override { return JOYERR_UNPLUGGED; }
    Padauskunft auskunft() override {
        ++fragen;
        return {};
    }
};

} // namespace

TEST_F(PadzeileTest, VonMehrerenPadsStehtDasErsteDaUndDieZahlImHinweis) {
    pad_.namen = {"Erstes", "Zweites"};
    Padzeile eine(pad_);
    EXPECT_EQ(zeile(eine).text(), "● Erstes");
    EXPECT_EQ(zeile(eine).toolTip(), "2 Gamepads sind angesteckt, benutzt wird: Erstes");
    pad_.namen = {"Zweites"};
    eine.show();
    EXPECT_EQ(zeile(eine).text(), "● Zweites");
    EXPECT_EQ(zeile(eine).toolTip(), "Zweites");
}

TEST_F(PadzeileTest, DerHinweisZeigtDenNamenWieErIst) {
    for (const char* name : {"Tom & \"Jerry\"", "<b>Fett</b> & Co", "&lt;b&gt;", "&amp;"}) {
        pad_.namen = {name};
        const auto hinweis = zeile(*std::make_unique<Padzeile>(pad_)).toolTip();
        EXPECT_EQ(Qt::mightBeRichText(hinweis) ? QTextDocumentFragment::fromHtml(hinweis).toPlainText()
                                               : hinweis,
                  name);
    }
}

TEST_F(PadzeileTest, EinNameIstEineZeileUndFehltErStehtGamepadDa) {
    pad_.namen = {" Ein\nPad\t mit  Rand "};
    EXPECT_EQ(zeile(*std::make_unique<Padzeile>(pad_)).text(), "● Ein Pad mit Rand");
    pad_.namen = {""};
    EXPECT_EQ(zeile(*std::make_unique<Padzeile>(pad_)).text(), "● Gamepad");
}

TEST_F(PadzeileTest, ImLaufGiltNachDemTrennenDerLetzteStand) {
    pad_.da = false;
    Padzeile eine(pad_, Padzeile::Ort::Lauf);
    eine.show();
    EXPECT_EQ(zeile(eine).text(), KEINES);
    EXPECT_EQ(folge(eine), (std::vector<QString>{DA, "○ Gamepad getrennt, der letzte Stand gilt", DA}));
}

TEST_F(PadzeileTest, FragtNurSolangeSieZuSehenIst) {
    Zaehlpad pad;
    Padzeile eine(pad);
    auto* takt = eine.findChild<QTimer*>();
    EXPECT_FALSE(takt->isActive());
    eine.show();
    EXPECT_TRUE(takt->isActive());
    EXPECT_GE(takt->interval(), 250);
    EXPECT_LE(takt->interval(), 500);
    const int vorher = pad.fragen;
    nachDemBlick(eine);
    EXPECT_GT(pad.fragen, vorher);
    eine.hide();
    EXPECT_FALSE(takt->isActive());
}

TEST_F(PadzeileTest, JedeFormDieEinPadBrauchtNenntEs) {
    schemaStarten();
    EXPECT_EQ(folge(haupt()), (std::vector<QString>{DA, KEINES, DA}));
    for (const auto& [knopf, name] : {std::pair{"Command1(0)", "frmJoyKonfic"},
                                      {"Command3", "AchzenKalib"},
                                      {"Command4", "SchubreglerKonfic"},
                                      {"Command1(1)", "frmJust"},
                                      {"Command1(6)", "frmJustr"}}) {
        haupt().show();
        control<QPushButton>(haupt(), knopf).click();
        auto* form = offene(name);
        ASSERT_NE(form, nullptr) << name;
        EXPECT_EQ(folge(*form), (std::vector<QString>{DA, KEINES, DA})) << name;
        EXPECT_EQ(beschnittene(*form), std::vector<std::string>{}) << name;
        EXPECT_TRUE(form->rect().contains(zeile(*form).mapTo(form, zeile(*form).rect().bottomRight())))
            << name;
        form->close();
        ereignisse();
    }
}

TEST_F(PadzeileTest, AuchDieFernbedienungFuerBilderNenntEs) {
    schemaStarten();
    control<QPushButton>(haupt(), "Command1(1)").click();
    control<QPushButton>(*offene("frmJust"), "Command1(2)").click();
    auto* form = offene("ScreenChecken");
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(folge(*form), (std::vector<QString>{DA, KEINES, DA}));
    EXPECT_EQ(beschnittene(*form), std::vector<std::string>{});
    form->close();
    ereignisse();
}

TEST_F(PadzeileTest, AufDerEbeneEinesStickeditorsIstEinKlickAufDieZeileEinerAufDieEbene) {
    schemaStarten();
    control<QPushButton>(haupt(), "Command1(1)").click();
    auto* form = offene("frmJust");
    ASSERT_NE(form, nullptr);
    auto* ebene = form->findChild<QWidget*>("Stickebene");
    ASSERT_NE(ebene, nullptr);
    QSignalSpy klicks(ebene, SIGNAL(gedrueckt(Qt::MouseButton, QPointF)));
    QSignalSpy wege(ebene, SIGNAL(bewegt(QPointF)));
    QTest::mouseMove(&zeile(*form), QPoint(5, 5));
    QTest::mouseClick(&zeile(*form), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(klicks.size(), 1);
    EXPECT_GE(wege.size(), 1);
}
