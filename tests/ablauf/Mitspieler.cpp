// SPDX-License-Identifier: GPL-3.0-or-later
// Linked to the program as it is: a virtual pad that starts the first `Schema` by the button of the main
// form, and then plays at random, in the program's own event loop. Message boxes it takes note of.
//
//   MITSPIELER        "" plays nothing and starts nothing, a number is the seed of the play
//   MITSPIELER_REGLER position that the first scroll bar of the run is put to
#include "tests/ablauf/Spielpad.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

#include <array>
#include <optional>
#include <random>

namespace {

template <class Feld> Feld* sichtbares(const char* form, const char* name) {
    for (auto* fenster : QApplication::topLevelWidgets())
        if (fenster->objectName() == form && fenster->isVisible())
            return fenster->findChild<Feld*>(name);
    return nullptr;
}

class Mitspieler {
public:
    explicit Mitspieler(unsigned saat) : zufall_(saat) {
        QObject::connect(&takt_, &QTimer::timeout, [this] { zug(); });
        takt_.start(1);
    }

private:
    void zug() {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->accept();
        else if (!gestartet_)
            starten();
        else if (zufall_() % 3 == 0)
            spielen();
    }

    void starten() {
        auto* knopf = sichtbares<QPushButton>("frmHaupt", "Command1(5)");
        if (knopf == nullptr)
            return;
        gestartet_ = true;
        pad_.emplace();
        // Not from within the timer, which would stand as long as a box of the click does.
        QMetaObject::invokeMethod(
            knopf,
            [knopf] {
                knopf->click();
                reglerStellen();
            },
            Qt::QueuedConnection);
    }

    static void reglerStellen() {
        if (auto* regler = sichtbares<QScrollBar>("LaufFenster", "HScroll1(0)");
            regler != nullptr && qEnvironmentVariableIsSet("MITSPIELER_REGLER"))
            regler->setValue(qEnvironmentVariableIntValue("MITSPIELER_REGLER"));
    }

    void spielen() {
        constexpr int STICKS = 4;
        const auto was = zufall_() % 8;
        const bool gedrueckt = zufall_() % 3 != 0;
        if (was == 0)
            pad_->achse(static_cast<SDL_GameControllerAxis>(zufall_() % STICKS),
                        static_cast<Sint16>(zufall_() % 65536 - 32768));
        else if (was == 1)
            pad_->abzug(zufall_() % 2 == 0 ? SDL_CONTROLLER_AXIS_TRIGGERLEFT
                                           : SDL_CONTROLLER_AXIS_TRIGGERRIGHT,
                        gedrueckt);
        else
            pad_->taste(
                static_cast<SDL_GameControllerButton>(zufall_() % (SDL_CONTROLLER_BUTTON_DPAD_RIGHT + 1)),
                gedrueckt);
    }

    std::mt19937 zufall_;
    QTimer takt_;
    bool gestartet_ = false;
    std::optional<Spielpad> pad_;
};

Mitspieler* mitspieler = nullptr; // as long as the process: the platform has gone before what is static here

// The program takes its platform up first, in which SDL starts; what it does when it is there comes after.
void mitspielen() {
    const auto saat = qgetenv("MITSPIELER");
    if (!saat.isEmpty())
        QTimer::singleShot(0, [saat] { mitspieler = new Mitspieler(saat.toUInt()); });
}
Q_COREAPP_STARTUP_FUNCTION(mitspielen)

} // namespace
