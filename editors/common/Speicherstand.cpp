// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Speicherstand.h"

#include "editors/common/Formhilfen.h"

#include <QPushButton>

#include <algorithm>
#include <chrono>

namespace {

constexpr std::chrono::milliseconds ZEICHENDAUER{2000};
constexpr const char* MARKE = "[*]";

void fettSetzen(QWidget& control, bool fett) {
    auto schrift = control.font();
    schrift.setBold(fett);
    control.setFont(schrift);
}

// Bold letters are wider: nothing moves when they come.
void platzFuerFett(QPushButton& knopf) {
    const int normal = knopf.sizeHint().width();
    fettSetzen(knopf, true);
    knopf.setMinimumWidth(std::max(normal, knopf.sizeHint().width()));
    fettSetzen(knopf, false);
}

} // namespace

Gespeichertzeichen::Gespeichertzeichen(Zeitgeber& zeitgeber, QWidget* eltern)
    : QLabel("Gespeichert", eltern), uhr_(zeitgeber.formularzeitgeber([this] {
        uhr_->Enabled(false);
        hide();
    })) {
    setObjectName("lblGespeichert");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAutoFillBackground(true);
    uhr_->Interval(ZEICHENDAUER);
    hide();
}

void Gespeichertzeichen::zeigen() {
    uhr_->Enabled(false);
    uhr_->Enabled(true);
    show();
    raise();
}

QString formtitel(const QWidget& form) {
    return form.windowTitle().remove(MARKE);
}

Speicherstand::Speicherstand(QWidget& form, QPushButton& speichern, Zeitgeber& zeitgeber)
    : QObject(&form)
    , form_(form)
    , speichern_(speichern)
    , titel_(form.windowTitle())
    , zeichen_(new Gespeichertzeichen(zeitgeber, &form))
    , angebot_(
          benannt(new QPushButton("Verworfene Änderungen wiederherstellen", &form), "btnWiederherstellen")) {
    platzFuerFett(speichern_);
    angebot_->setToolTip("Dieses Fenster wurde mit Änderungen geschlossen, die nicht gespeichert sind");
    angebot_->hide();
    connect(angebot_, &QPushButton::clicked, this, &Speicherstand::wiederherstellenGewuenscht);
}

void Speicherstand::setUngespeichert(bool ungespeichert) {
    if (form_.isWindowModified() == ungespeichert)
        return;
    form_.setWindowTitle(ungespeichert ? titel_ + MARKE : titel_);
    form_.setWindowModified(ungespeichert);
    fettSetzen(speichern_, ungespeichert);
}

void Speicherstand::gespeichert() {
    anbieten(false);
    zeichen_->zeigen();
}

void Speicherstand::anbieten(bool anbieten) {
    angebot_->setVisible(anbieten);
    if (anbieten)
        zeichen_->hide();
}
