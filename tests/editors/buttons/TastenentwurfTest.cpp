// SPDX-License-Identifier: GPL-3.0-or-later
// What the button editor does about changes that are not saved: shows them, keeps them, gives them back.
#include "editors/buttons/Padzeichnung.h"
#include "tests/editors/buttons/Tastwerktest.h"

#include <QComboBox>
#include <QImage>
#include <QPainter>

namespace {

constexpr const char* LEER = "10,0,0-0-0";

class TastenentwurfTest : public Tastwerktest {
protected:
    QPushButton& angebot() { return control<QPushButton>(form(), "btnWiederherstellen"); }
    bool gespeichertZuSehen() { return control<QLabel>(form(), "lblGespeichert").isVisible(); }
    void schliessen() {
        form().close();
        ereignisse();
    }
    void loeschen() {
        Boxleser boxen({QMessageBox::Yes});
        control<QPushButton>(haupt(), "Command1(3)").click();
        ereignisse();
    }
    void erwarteStand(bool ungespeichert, const char* wann) {
        EXPECT_EQ(form().windowTitle(), ungespeichert ? "Tastwerk[*]" : "Tastwerk") << wann;
        EXPECT_EQ(form().isWindowModified(), ungespeichert) << wann;
        EXPECT_EQ(knopf(4).font().bold(), ungespeichert) << wann;
    }
    /// Every text, mark, option and frame of the form as the user sees it.
    std::vector<std::string> bildschirm() {
        auto zeilen = schilder();
        for (auto* feld : form().findChildren<QWidget*>()) {
            const auto name = feld->objectName();
            if (name.isEmpty() || name.startsWith("qt_") || name == "btnWiederherstellen")
                continue;
            QString text = name + (feld->isVisible() ? " in sight" : "") + (feld->isEnabled() ? " free" : "");
            if (auto* option = qobject_cast<QAbstractButton*>(feld))
                text += option->isChecked() ? " set" : "";
            if (auto* box = qobject_cast<QLineEdit*>(feld))
                text += " " + box->text();
            if (auto* label = qobject_cast<QLabel*>(feld))
                text += " " + label->text();
            zeilen.push_back(text.toStdString());
        }
        return zeilen;
    }
};

} // namespace

TEST_F(TastenentwurfTest, JedeAenderungZeigtSichBisSieGespeichertOderZurueckgenommenIst) {
    belegt(0, "1,65,0-0-0");
    oeffnen();
    erwarteStand(false, "at first");
    waehlen(0);
    erwarteStand(false, "a button is only looked at");
    art(5);
    erwarteStand(true, "another action");
    knopf(4).click();
    erwarteStand(false, "saved");
    control<QPushButton>(form(), "Command10").click();
    erwarteStand(true, "cleared");
    art(5);
    erwarteStand(false, "as it is stored again");
    knopf(5).click();
    erwarteStand(true, "the layer cleared");
}

TEST_F(TastenentwurfTest, EinZahlfeldZaehltAuchMitEinerZahlDieEsNichtNimmt) {
    belegt(0, "1,65,1-100-50");
    oeffnen();
    waehlen(0);
    box("Text1(0)").setText("99999");
    erwarteStand(true, "too large");
    box("Text1(0)").setText("100");
    erwarteStand(false, "as it is stored");
    box("Text2(0)").setText("51");
    erwarteStand(true, "another pause");
}

TEST_F(TastenentwurfTest, AnsehenIstKeineAenderungAuchWoZahlenAndersGeschriebenSind) {
    belegt(0, "1,65,1-0100-050");
    belegt(1, "1,65,0-100-50");
    oeffnen();
    waehlen(0);
    waehlen(1);
    amPad(1);
    erwarteStand(false, "looked at");
    schliessen();
    oeffnen();
    EXPECT_FALSE(angebot().isVisible());
}

TEST_F(TastenentwurfTest, GespeichertStehtZweiSekundenDa) {
    oeffnen();
    EXPECT_FALSE(gespeichertZuSehen());
    waehlen(0);
    art(5);
    knopf(4).click();
    EXPECT_TRUE(gespeichertZuSehen());
    vergehen(1990);
    EXPECT_TRUE(gespeichertZuSehen());
    knopf(4).click(); // from now on anew
    vergehen(1990);
    EXPECT_TRUE(gespeichertZuSehen());
    vergehen(10);
    EXPECT_FALSE(gespeichertZuSehen());
    EXPECT_EQ(uhr_.laufende(), 1U) << "the poll of the pad alone";
}

TEST_F(TastenentwurfTest, WasSichNichtSpeichernLaesstIstNichtGespeichert) {
    oeffnen();
    waehlen(0);
    art(5);
    datenbank_.sql("DELETE FROM tblTastatur;");
    Boxleser boxen;
    knopf(4).click();
    EXPECT_EQ(boxen.gesehen().size(), 1U);
    EXPECT_FALSE(gespeichertZuSehen());
    erwarteStand(true, "nothing was saved");
}

TEST_F(TastenentwurfTest, WasVerworfenWurdeKommtZurueckWieEsAufDemSchirmStand) {
    belegt(0, "1,65,1-100-50", 1);
    oeffnen();
    waehlen(2); // takes a shift key on the first layer
    art(3);
    knopf(1).click();
    waehlen(0);
    box("Text1(0)").setText("70000");
    box("Text2(0)").setText("7");
    knopf(5).click(); // the frame of the button stays in sight
    const auto vorher = bildschirm();
    Boxleser boxen;
    schliessen();
    oeffnen();
    EXPECT_EQ(boxen.gesehen(), std::vector<Gesehen>{});
    EXPECT_EQ(text(2), "Kreuz") << "as it is stored";
    erwarteStand(false, "opened");
    ASSERT_TRUE(angebot().isVisible());
    EXPECT_EQ(angebot().text(), "Verworfene Änderungen wiederherstellen");

    QTest::mouseClick(&angebot(), Qt::LeftButton);
    ereignisse();
    EXPECT_EQ(bildschirm(), vorher);
    EXPECT_FALSE(angebot().isVisible());
    erwarteStand(true, "restored");
    EXPECT_EQ(box("Text1(0)").text(), "70000");

    waehlen(3);
    EXPECT_TRUE(option("Option1", 3).isEnabled()) << "the layer keys of the second layer";
    knopf(0).click();
    EXPECT_EQ(text(2), "Umschalt 1");
    waehlen(3);
    EXPECT_FALSE(option("Option1", 3).isEnabled()) << "the button with the cross has it";
    EXPECT_EQ(belegung(2), "3,0,0-0-0");
    EXPECT_EQ(gespeichert(0, 1), LEER);
}

TEST_F(TastenentwurfTest, DerGewaehlteButtonUndDieUmschalttastenKommenMitZurueck) {
    oeffnen();
    waehlen(2);
    art(3);
    waehlen(4);
    art(0);
    schliessen();
    oeffnen();
    angebot().click();
    art(5);
    EXPECT_EQ(text(4), "Maus") << "it is chosen still";
    waehlen(3);
    EXPECT_FALSE(option("Option1", 3).isEnabled()) << "the button with the cross is that shift key";
    EXPECT_TRUE(option("Option1", 4).isEnabled());
}

TEST_F(TastenentwurfTest, DasAngebotBleibtBisZumSpeichern) {
    oeffnen();
    waehlen(0);
    art(5);
    schliessen();
    for (int i = 0; i < 2; ++i) { // looked at and closed
        oeffnen();
        EXPECT_TRUE(angebot().isVisible());
        if (i == 0)
            schliessen();
    }
    knopf(4).click();
    EXPECT_FALSE(angebot().isVisible());
    schliessen();
    oeffnen();
    EXPECT_FALSE(angebot().isVisible());
    EXPECT_EQ(gespeichert(0), LEER);
}

TEST_F(TastenentwurfTest, GespeichertesBietetNichtsAn) {
    oeffnen();
    waehlen(0);
    art(5);
    knopf(4).click();
    schliessen();
    oeffnen();
    EXPECT_FALSE(angebot().isVisible());
}

TEST_F(TastenentwurfTest, JedesSchemaHatSeineEigenen) {
    Schemabau(datenbank_, "T").anlegen();
    oeffnen();
    waehlen(0);
    art(5);
    schliessen();
    auto& combo = control<QComboBox>(haupt(), "Combo1");
    const auto waehleSchema = [&](int index) {
        combo.setCurrentIndex(index);
        emit combo.activated(index);
    };
    waehleSchema(1);
    oeffnen();
    EXPECT_FALSE(angebot().isVisible());
    waehlen(1);
    art(5);
    schliessen();
    waehleSchema(0);
    oeffnen();
    ASSERT_TRUE(angebot().isVisible());
    angebot().click();
    EXPECT_EQ(text(0), "Maus");
    EXPECT_EQ(text(1), "Kreis");
}

TEST_F(TastenentwurfTest, MitSeinemSchemaGehtAuchWasVerworfenWurde) {
    oeffnen();
    waehlen(0);
    art(5);
    schliessen();
    oeffnen();
    waehlen(1);
    art(5); // and open as it goes
    loeschen();
    EXPECT_EQ(offenes(), nullptr);
    auto& neu = control<QPushButton>(haupt(), "Command1(2)");
    neu.click();
    control<QComboBox>(haupt(), "Combo1").setEditText("S");
    neu.click();
    oeffnen();
    EXPECT_FALSE(angebot().isVisible());
}

TEST_F(TastenentwurfTest, EinInzwischenGeaendertesSchemaWirdErstDurchSpeichernUeberschrieben) {
    oeffnen();
    waehlen(0);
    art(5);
    schliessen();
    belegt(0, "1,65,0-0-0");
    belegt(1, "1,66,0-0-0");
    oeffnen();
    EXPECT_EQ(text(1), "B");
    angebot().click();
    EXPECT_EQ(text(0), "Maus");
    EXPECT_EQ(text(1), "Kreis") << "what was typed";
    EXPECT_EQ(gespeichert(1), "1,66,0-0-0");
    knopf(4).click();
    EXPECT_EQ(gespeichert(0), "5,0,0-0-0");
    EXPECT_EQ(gespeichert(1), LEER);
}

TEST_F(TastenentwurfTest, WiederhergestelltesDasVerworfenWirdKommtWieder) {
    oeffnen();
    waehlen(0);
    art(5);
    for (int i = 0; i < 3; ++i) {
        schliessen();
        oeffnen();
        ASSERT_TRUE(angebot().isVisible());
        angebot().click();
        EXPECT_EQ(text(0), "Maus");
    }
}

TEST_F(TastenentwurfTest, WasDasWiederherstellenErsetztKommtMitDemNaechstenZurueck) {
    oeffnen();
    waehlen(0);
    art(5);
    schliessen();
    oeffnen();
    waehlen(1);
    art(5); // without a look at the offer
    for (int i = 0; i < 2; ++i) {
        angebot().click();
        EXPECT_EQ(text(0), "Maus");
        EXPECT_EQ(text(1), "Kreis");
        ASSERT_TRUE(angebot().isVisible());
        angebot().click();
        EXPECT_EQ(text(0), "Dreieck");
        EXPECT_EQ(text(1), "Maus");
        ASSERT_TRUE(angebot().isVisible());
    }
}

TEST_F(TastenentwurfTest, JedesVerwerfenBleibtAuchWennEinFrueheresNochAngebotenIst) {
    for (const int taste : {0, 1}) {
        oeffnen();
        waehlen(taste);
        art(5);
        schliessen();
    }
    oeffnen();
    angebot().click();
    EXPECT_EQ(text(0), "Dreieck");
    EXPECT_EQ(text(1), "Maus") << "the newest";
    ASSERT_TRUE(angebot().isVisible());
    angebot().click();
    EXPECT_EQ(text(0), "Maus");
    EXPECT_EQ(text(1), "Kreis");
}

TEST_F(TastenentwurfTest, SchilderDerSchultertastenSagenWasAufDemPadSteht) {
    oeffnen();
    std::vector<std::string> hinweise;
    for (int taste = 0; taste < 16; ++taste)
        if (!schild(taste).toolTip().isEmpty())
            hinweise.push_back(schild(taste).toolTip().toStdString());
    std::vector<std::string> erwartet;
    for (const auto& [pad, hier] :
         {std::pair{"L 2", "L 1"}, std::pair{"L 1", "R 1"}, std::pair{"R 2", "L 2"}, std::pair{"R 1", "R 2"}})
        erwartet.push_back(std::string("Auf dem Gamepad steht „") + pad +
                           "“; ohne Belegung heißt dieser Knopf hier „" + hier + "“");
    EXPECT_EQ(hinweise, erwartet);
}

TEST_F(TastenentwurfTest, DieSchultertastenTragenIhreNamen) {
    const auto hellePunkte = [](int taste) {
        QImage bild(ZEICHNUNG.toSize() * 2, QImage::Format_RGB32);
        bild.fill(Qt::gray);
        QPainter maler(&bild);
        maler.scale(2, 2);
        padZeichnen(maler, QPalette());
        const auto mitte = platz(taste).marke.center();
        const QRect schrift = QRectF((mitte - QPointF(12, 5)) * 2, QSizeF(48, 20)).toRect();
        int helle = 0;
        for (int y = schrift.top(); y <= schrift.bottom(); ++y)
            for (int x = schrift.left(); x <= schrift.right(); ++x)
                helle += qGray(bild.pixel(x, y)) > 200 ? 1 : 0;
        return helle;
    };
    for (const int taste : {4, 5, 6, 7})
        EXPECT_GT(hellePunkte(taste), 60) << "button " << taste;
    EXPECT_EQ(hellePunkte(8), 0) << "only the shoulder buttons have names";
}
