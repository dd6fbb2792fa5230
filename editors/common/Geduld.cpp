// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Geduld.h"

#include <QApplication>
#include <QMessageBox>

using namespace std::chrono_literals;

namespace {

constexpr auto AUGENBLICK = 300ms; // up to which nobody asks whether anything goes on
constexpr auto TAKT = 50ms;        // between two looks at what the user does

} // namespace

Geduld::~Geduld() {
    ruhen();
}

void Geduld::ruhen() {
    beginn_ = Uhr::now();
    if (!box_)
        return;
    QApplication::restoreOverrideCursor();
    delete box_;
}

bool Geduld::weiter() {
    const auto jetzt = Uhr::now();
    if (jetzt - beginn_ < AUGENBLICK || jetzt - zuletzt_ < TAKT)
        return !abgebrochen_;
    if (!box_)
        zeigen();
    // Without timers: a run that reads the file while it is being written would find it locked.
    QApplication::processEvents(QEventLoop::X11ExcludeTimers | QEventLoop::ExcludeSocketNotifiers);
    zuletzt_ = Uhr::now();
    return !abgebrochen_;
}

void Geduld::zeigen() {
    box_ = new QMessageBox(QMessageBox::NoIcon, "Bitte warten",
                           "Das dauert einen Augenblick. „Abbrechen“ oder Esc lässt alles, wie es war.",
                           QMessageBox::Cancel, form_);
    box_->setModal(true);
    QObject::connect(box_, &QMessageBox::rejected, box_, [this] { abgebrochen_ = true; });
    QObject::connect(box_, &QMessageBox::buttonClicked, box_, [this] { abgebrochen_ = true; });
    QApplication::setOverrideCursor(Qt::BusyCursor);
    box_->show();
}
