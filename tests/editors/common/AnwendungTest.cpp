// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Anwendung.h"
#include "base/LaufzeitFehler.h"
#include "tests/editors/common/Formtest.h"

#include <new>

namespace {

/// Does what the test says when an event comes.
class Empfaenger final : public QObject {
public:
    std::function<void()> beiEreignis;
    bool event(QEvent*) override {
        beiEreignis();
        return true;
    }
    void anstossen() {
        QEvent ereignis(QEvent::User);
        QCoreApplication::sendEvent(this, &ereignis);
    }
};

class AnwendungTest : public testing::Test {
protected:
    AnwendungTest() { qApp->setProperty("DARF_DURCHLASSEN", true); }
    ~AnwendungTest() override { qApp->setProperty("DARF_DURCHLASSEN", {}); }
};

} // namespace

TEST_F(AnwendungTest, EinFehlerDenEineProzedurDurchlaesstBeendetNurSieUndWirdEinmalGesagt) {
    Boxleser boxen;
    Empfaenger empfaenger;
    empfaenger.beiEreignis = [] { throw LaufzeitFehler(Fehlernummer::Gesperrt, "Die Datei ist gesperrt."); };
    empfaenger.anstossen();
    empfaenger.beiEreignis = [] { throw std::bad_alloc(); };
    empfaenger.anstossen();

    ASSERT_EQ(boxen.gesehen().size(), 2U);
    EXPECT_EQ(boxen.gesehen()[0], (Gesehen{"Fehler", "Laufzeitfehler 3218:\nDie Datei ist gesperrt.",
                                           QMessageBox::Warning, QMessageBox::Ok}));
    EXPECT_TRUE(boxen.gesehen()[1].text.startsWith("Laufzeitfehler 51:"))
        << boxen.gesehen()[1].text.toStdString();
}

TEST_F(AnwendungTest, DieBoxEinesFehlersDerEinenLangenTextZitiertBleibtKlein) {
    Boxleser boxen;
    Empfaenger empfaenger;
    for (const std::size_t laenge : {399U, 400U, 401U, 100000U}) {
        empfaenger.beiEreignis = [laenge] {
            throw LaufzeitFehler(Fehlernummer::FalscherTyp, std::string(200, 'a') +
                                                                std::string(laenge - 300, '\n') +
                                                                std::string(100, 'z'));
        };
        empfaenger.anstossen();
    }

    const QString kopf = "Laufzeitfehler 13:\n" + QString(200, 'a');
    const QString schluss(100, 'z');
    QStringList texte;
    for (const auto& box : boxen.gesehen())
        texte << box.text;
    EXPECT_EQ(texte, (QStringList{kopf + QString(99, ' ') + schluss, kopf + QString(100, ' ') + schluss,
                                  kopf + QString(100, ' ') + "…" + schluss,
                                  kopf + QString(100, ' ') + "…" + schluss}));
}
