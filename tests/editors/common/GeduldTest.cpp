// SPDX-License-Identifier: GPL-3.0-or-later
// Work that takes long: a box tells of it, and Escape breaks it off.
#include "editors/common/Geduld.h"
#include "store/db/Datenbank.h"
#include "tests/editors/common/Formtest.h"
#include "tests/hilfen/Bestand.h"

#include <chrono>
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
    Tabellenbild vorher_;
};

TEST_F(Langearbeit, DieUebersichtLaesstSichAbbrechenUndAllesBleibt) {
    starten();
    emit programm_->hauptform().uebersichtGewuenscht();
    ereignisse();
    QWidget* uebersicht = nullptr;
    for (auto* fenster : QApplication::topLevelWidgets())
        if (fenster->objectName() == "Uebersicht")
            uebersicht = fenster;
    ASSERT_NE(uebersicht, nullptr);

    // Presses Escape in the first box, before the layer can be empty, and accepts the one that tells of it.
    std::vector<QString> texte;
    const auto antworten = [&] {
        auto* offen = box();
        if (!offen)
            return;
        texte.push_back(offen->text());
        QTest::keyClick(offen, Qt::Key_Escape);
    };
    QObject waechter;
    // No timer reaches the box of a work that goes on: the event that shows it does.
    struct Filter : QObject {
        std::function<void()> tat;
        bool eventFilter(QObject* objekt, QEvent* ereignis) override {
            if (ereignis->type() == QEvent::Show && qobject_cast<QMessageBox*>(objekt))
                QMetaObject::invokeMethod(objekt, tat, Qt::QueuedConnection);
            return false;
        }
    } filter;
    filter.tat = antworten;
    qApp->installEventFilter(&filter);
    control<QPushButton>(*uebersicht, "Command1(2)").click();
    ereignisse();
    qApp->removeEventFilter(&filter);

    ASSERT_EQ(texte.size(), 2U);
    EXPECT_TRUE(texte[0].startsWith("Das dauert einen Augenblick.")) << texte[0].toStdString();
    EXPECT_TRUE(texte[1].startsWith("Laufzeitfehler 3059:")) << texte[1].toStdString();
    EXPECT_EQ(datenbank_.zeilen(ZAHL), vorher_);
}

} // namespace
