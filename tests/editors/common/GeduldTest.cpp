// SPDX-License-Identifier: GPL-3.0-or-later
// Work that takes long: a box tells of it, and Escape breaks it off.
#include "editors/common/Geduld.h"
#include "store/db/Datenbank.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Bestand.h"

#include <QRegularExpression>

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>

using namespace std::chrono_literals;

namespace {

class Geduldtest : public Formtest {
protected:
    static QMessageBox* box() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }
    /// Asks for so long, as work does.
    static bool arbeiten(Geduld& geduld, std::chrono::milliseconds dauer) {
        const auto ende = std::chrono::steady_clock::now() + dauer;
        bool weiter = geduld.weiter();
        while (weiter && std::chrono::steady_clock::now() < ende) {
            std::this_thread::sleep_for(1ms);
            weiter = geduld.weiter();
        }
        return weiter;
    }
};

TEST_F(Geduldtest, EinenAugenblickLangIstNichtsZuSehen) {
    QWidget form;
    form.show();
    Geduld geduld(&form);
    EXPECT_TRUE(arbeiten(geduld, 150ms));
    EXPECT_EQ(box(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Geduldtest, DanachStehtEineBoxBisDieArbeitRuhtOderFertigIst) {
    QWidget form;
    form.show();
    {
        Geduld geduld(&form);
        EXPECT_TRUE(arbeiten(geduld, 450ms));
        ASSERT_NE(box(), nullptr);
        EXPECT_EQ(box()->standardButtons(), QMessageBox::Cancel);
        ASSERT_NE(QApplication::overrideCursor(), nullptr);
        geduld.ruhen();
        EXPECT_EQ(box(), nullptr);
        EXPECT_TRUE(arbeiten(geduld, 100ms));
        EXPECT_EQ(box(), nullptr) << "the time begins anew";
        EXPECT_TRUE(arbeiten(geduld, 400ms));
        ASSERT_NE(box(), nullptr);
    }
    EXPECT_EQ(box(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Geduldtest, EscUndDerKnopfBrechenAb) {
    QWidget form;
    form.show();
    for (const bool taste : {true, false}) {
        Geduld geduld(&form);
        ASSERT_TRUE(arbeiten(geduld, 400ms));
        if (taste)
            QTest::keyClick(box(), Qt::Key_Escape);
        else
            box()->button(QMessageBox::Cancel)->click();
        EXPECT_FALSE(arbeiten(geduld, 200ms)) << taste;
        EXPECT_FALSE(geduld.weiter()) << "and so it stays";
    }
}

TEST_F(Geduldtest, ZeitgeberStehenWaehrendDerArbeitStill) {
    QWidget form;
    form.show();
    int takte = 0;
    QTimer takt;
    QObject::connect(&takt, &QTimer::timeout, [&] { ++takte; });
    takt.start(1);
    Geduld geduld(&form);
    EXPECT_TRUE(arbeiten(geduld, 500ms));
    EXPECT_EQ(takte, 0);
}

/// A layer with more rows than any plane has fields.
class Langearbeit : public Geduldtest {
protected:
    Langearbeit() {
        bestandLegen(datenbank_, {.bilder = 0});
        datenbank_.sql(zeilenEinesFelds(200'000, true));
        vorher_ = datenbank_.zeilen(ZAHL);
    }
    static constexpr auto ZAHL = "SELECT count(*), sum(Links), sum(Umschalt) FROM tblStickAktion";
    static constexpr auto DAUERT = "Das dauert einen Augenblick.";
    static constexpr auto ABGEBROCHEN = "Laufzeitfehler 3059:";

    QWidget& fenster(const char* name) {
        for (auto* eines : QApplication::topLevelWidgets())
            if (eines->objectName() == name && eines->isVisible())
                return *eines;
        throw std::runtime_error(std::string("not open: ") + name);
    }
    QWidget& uebersicht() {
        starten();
        emit programm_->hauptform().uebersichtGewuenscht();
        ereignisse();
        return fenster("Uebersicht");
    }
    static void klicken(QWidget& form, const char* knopf) {
        control<QAbstractButton>(form, knopf).click();
        ereignisse();
    }

    /// Does what asks or takes long. Says yes to questions, presses Escape in each other box, and gives how
    /// their texts begin. No timer reaches the box of a work that goes on: the event that shows it does.
    static std::vector<std::string> mitEscape(const std::function<void()>& tat) {
        struct Antworter : QObject {
            std::vector<std::string> texte;
            void antworten() {
                auto* offen = box();
                if (!offen)
                    return;
                texte.push_back(
                    offen->text().section(QRegularExpression("(?<=[.:?])\\s"), 0, 0).toStdString());
                if (auto* ja = offen->button(QMessageBox::Yes))
                    qobject_cast<QPushButton*>(ja)->click();
                else
                    QTest::keyClick(offen, Qt::Key_Escape);
            }
            bool eventFilter(QObject* objekt, QEvent* ereignis) override {
                if (ereignis->type() == QEvent::Show && qobject_cast<QMessageBox*>(objekt))
                    QMetaObject::invokeMethod(
                        objekt, [this] { antworten(); }, Qt::QueuedConnection);
                return false;
            }
        } antworter;
        qApp->installEventFilter(&antworter);
        tat();
        ereignisse();
        qApp->removeEventFilter(&antworter);
        return antworter.texte;
    }

    Tabellenbild vorher_;
};
using Texte = std::vector<std::string>;

TEST_F(Langearbeit, DasLoeschenEinerEbeneLaesstSichAbbrechenUndAllesBleibt) {
    auto& form = uebersicht();
    EXPECT_EQ(mitEscape([&] { klicken(form, "Command1(2)"); }), (Texte{DAUERT, ABGEBROCHEN}));
    EXPECT_EQ(datenbank_.zeilen(ZAHL), vorher_);
}

TEST_F(Langearbeit, DasKopierenEinerEbeneLaesstSichAbbrechenUndAllesBleibt) {
    auto& form = uebersicht();
    klicken(form, "Command1(0)");
    klicken(form, "Check1(2)");
    EXPECT_EQ(mitEscape([&] { klicken(form, "Command1(4)"); }), (Texte{DAUERT, ABGEBROCHEN}));
    EXPECT_EQ(datenbank_.zeilen(ZAHL), vorher_);
}

TEST_F(Langearbeit, DerWechselZweierEbenenLaesstSichAbbrechenUndAllesBleibt) {
    auto& form = uebersicht();
    klicken(form, "Command1(1)");
    klicken(form, "Check1(2)");
    EXPECT_EQ(mitEscape([&] { klicken(form, "Command1(4)"); }), (Texte{DAUERT, ABGEBROCHEN}));
    EXPECT_EQ(datenbank_.zeilen(ZAHL), vorher_);
}

TEST_F(Langearbeit, DasLoeschenEinesSchemasLaesstSichAbbrechenUndAllesBleibt) {
    starten();
    const auto texte = mitEscape([&] { klicken(haupt(), "Command1(3)"); });
    EXPECT_EQ(texte, (Texte{"Möchten Sie das Schema wirklich löschen?", DAUERT, ABGEBROCHEN}));
    EXPECT_EQ(datenbank_.zeilen(ZAHL), vorher_);
}

TEST_F(Langearbeit, DasZeichnenDesEditorsLaesstSichAbbrechen) {
    starten();
    EXPECT_EQ(mitEscape([&] { klicken(haupt(), "Command1(1)"); }), (Texte{DAUERT, ABGEBROCHEN}));
    EXPECT_EQ(datenbank_.zeilen(ZAHL), vorher_);
}

} // namespace
