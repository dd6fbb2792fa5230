// SPDX-License-Identifier: GPL-3.0-or-later
// What is done while the user waits: work of more than a moment tells that it is on, and can be broken off.
//
// Nothing that a user can make with this program takes so long; a database from elsewhere may hold any number
// of rows.
#pragma once

#include <QPointer>

#include <chrono>

class QMessageBox;
class QWidget;

class Geduld {
public:
    explicit Geduld(QWidget* form) : form_(form) {}
    ~Geduld();
    Geduld(const Geduld&) = delete;
    Geduld& operator=(const Geduld&) = delete;

    /// To be asked all the while, as a `Fortgang`. Once the work has taken 300 ms a box stands before the
    /// form; false when its button or Escape has been pressed. Timers stand still, as they do in all work.
    bool weiter();
    /// The work rests, as the user is asked something: the box goes, and the time begins anew.
    void ruhen();

private:
    using Uhr = std::chrono::steady_clock;

    void zeigen();

    QWidget* const form_;
    Uhr::time_point beginn_ = Uhr::now();
    Uhr::time_point zuletzt_ = beginn_;
    QPointer<QMessageBox> box_;
    bool abgebrochen_ = false;
};
