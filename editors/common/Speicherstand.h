// SPDX-License-Identifier: GPL-3.0-or-later
// How a form shows whether what it holds is saved: an asterisk in its title and a bold button for what is
// not, "Gespeichert" for two seconds after it was, and the offer of what an earlier closing discarded.
#pragma once

#include "platform/Zeitgeber.h"

#include <QLabel>
#include <QString>

#include <memory>

class QPushButton;

/// "Gespeichert", in sight for two seconds. Mouse and keys pass it by.
class Gespeichertzeichen final : public QLabel {
    Q_OBJECT

public:
    explicit Gespeichertzeichen(Zeitgeber& zeitgeber, QWidget* eltern = nullptr);
    /// Shows it; anew, where it is in sight.
    void zeigen();

private:
    std::unique_ptr<Formularzeitgeber> uhr_;
};

/// The title of a form without the mark of what is not saved.
QString formtitel(const QWidget& form);

class Speicherstand final : public QObject {
    Q_OBJECT

public:
    /// `form` has its title, `speichern` its text; both outlive this object.
    Speicherstand(QWidget& form, QPushButton& speichern, Zeitgeber& zeitgeber);

    /// The two things that come and go; the form gives them a place.
    Gespeichertzeichen& zeichen() { return *zeichen_; }
    QPushButton& angebot() { return *angebot_; }

    void setUngespeichert(bool ungespeichert);
    /// Shows that all of it was saved just now.
    void gespeichert();
    void anbieten(bool anbieten);

signals:
    void wiederherstellenGewuenscht();

private:
    QWidget& form_;
    QPushButton& speichern_;
    const QString titel_;
    Gespeichertzeichen* zeichen_; // of the form, as soon as it has a place there
    QPushButton* angebot_;
};
