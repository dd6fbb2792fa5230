// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Bildschirmverlust.h"

#include <QCoreApplication>
#include <QString>
#include <QThread>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

constexpr unsigned long GEDULD_S = 10; // of other threads with the one that saves

// Neither way gives the called anything to know an object by.
std::atomic<Bildschirmverlust*> jetziger = nullptr;
std::atomic<bool> amEnde = false;
QtMessageHandler bisheriger = nullptr;

bool meldetVerlust(QtMsgType art, const QString& text) {
    return art == QtWarningMsg && text.startsWith("The Wayland connection ");
}

void letzteWorte() {
    if (auto* dieser = jetziger.exchange(nullptr)) {
        amEnde = true;
        dieser->beenden();
    }
}

// What is saved belongs to the thread of the event loop. Another one that notices the loss waits here: it
// would end the process as soon as it came back.
void verloren() {
    if (QThread::currentThread() == qApp->thread())
        return letzteWorte();
    QMetaObject::invokeMethod(qApp, letzteWorte, Qt::QueuedConnection);
    QThread::sleep(GEDULD_S);
}

void meldungHoeren(QtMsgType art, const QMessageLogContext& ort, const QString& text) {
    bisheriger(art, ort, text);
    if (meldetVerlust(art, text) && (jetziger != nullptr || amEnde))
        verloren();
}

} // namespace

Bildschirmverlust::Bildschirmverlust(Sichern sichern) : sichern_(std::move(sichern)) {
    static const bool angemeldet = std::atexit(letzteWorte) == 0;
    static_cast<void>(angemeldet);
    jetziger = this;
    bisheriger = qInstallMessageHandler(meldungHoeren);
}

Bildschirmverlust::~Bildschirmverlust() {
    jetziger = nullptr;
    qInstallMessageHandler(bisheriger);
}

void Bildschirmverlust::beenden() {
    auto text = std::string("Die Verbindung zum Bildschirm ist abgerissen, das Programm ist beendet.");
    if (const auto mehr = sichern_(); !mehr.empty())
        text += " " + mehr;
    std::fprintf(stderr, "gamepad-konfic: %s\n", text.c_str());
    std::fflush(nullptr);
    std::_Exit(1);
}
