// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/main/Sicherungsdienst.h"

#include "editors/common/Formhilfen.h"

#include <QDate>

#include <memory>
#include <optional>

namespace {

constexpr const char* TITEL = "Sicherung";

QString geschrieben(Sicherungstag tag) {
    return QDate(tag.jahr, tag.monat, tag.tag).toString("dd.MM.yyyy");
}

/// Asks, and puts the copy into the file's place. An error is told.
bool anbieten(const Sicherungen& sicherungen, Gesichertes was, const Sicherung& sicherung,
              const QString& befund) {
    const auto text =
        befund + "\n\nEs gibt eine Sicherung vom " + geschrieben(sicherung.tag) +
        ". Soll sie an die Stelle der Datei treten? Die beschädigte Datei bleibt daneben liegen.";
    if (!frage(nullptr, text, qt(sicherungen.datei(was))))
        return false;
    return mitFehlermeldung(nullptr, TITEL, [&] {
        const auto ablage = sicherungen.zuruecksichern(was, sicherung);
        meldung(nullptr,
                "Die Sicherung vom " + geschrieben(sicherung.tag) +
                    " ist an ihrer Stelle.\nDie beschädigte Datei heißt jetzt „" + qt(ablage) + "“.",
                TITEL, QMessageBox::Information);
    });
}

} // namespace

Sicherungstag heutigerTag() {
    const auto heute = QDate::currentDate();
    return {heute.year(), heute.month(), heute.day()};
}

Sicherungsdienst::Sicherungsdienst(std::function<Sicherungstag()> heute, std::chrono::milliseconds takt)
    : heute_(std::move(heute)) {
    // A timer for midnight would stand still while the machine sleeps, and not follow a clock that is set.
    takt_.setInterval(takt);
    takt_.setTimerType(Qt::VeryCoarseTimer);
}

void Sicherungsdienst::beginnen(const Sicherungen& sicherungen, const QWidget& form) {
    sicherungen_ = sicherungen;
    form_ = &form;
    QObject::connect(&takt_, &QTimer::timeout, this, [this] {
        if (tag_ != heute_())
            neuerTag();
    });
    takt_.start();
    neuerTag();
}

void Sicherungsdienst::neuerTag() {
    tag_ = heute_();
    const auto fehler = std::make_shared<std::optional<LaufzeitFehler>>();
    werk_.auftrag(
        [sicherungen = *sicherungen_, fehler, heute = *tag_] {
            try {
                if (sicherungen.schreibbar()) // else nothing will change
                    sicherungen.sichern(heute);
            } catch (const LaufzeitFehler& dieser) {
                *fehler = dieser;
            }
            return true;
        },
        [this, fehler](bool) {
            if (!*fehler)
                return;
            if ((*fehler)->nummer() == Fehlernummer::Gesperrt)
                tag_.reset(); // somebody writes: it is tried again with the next look at the clock
            else if (form_->isVisible())
                erzaehlen(**fehler);
        });
}

void Sicherungsdienst::erzaehlen(const LaufzeitFehler& fehler) {
    if (fehler.nummer() == Fehlernummer::KeineDatei)
        return; // told where it is missed
    if (datenbankZurueckholen(*sicherungen_, fehler))
        emit zurueckgeholt();
}

bool datenbankZurueckholen(const Sicherungen& sicherungen, const LaufzeitFehler& fehler) {
    const auto pfad = qt(sicherungen.datei(Gesichertes::Datenbank));
    const bool beschaedigt =
        fehler.nummer() == Fehlernummer::DateiBeschaedigt || fehler.nummer() == Fehlernummer::KeineDatenbank;
    const auto gute =
        beschaedigt ? sicherungen.neuesteGute(Gesichertes::Datenbank, heutigerTag()) : std::nullopt;
    if (gute)
        return anbieten(sicherungen, Gesichertes::Datenbank, *gute, einzeiler(qt(fehler.what())));
    fehlermeldung(nullptr, fehler, pfad);
    return false;
}

void achsendateiZurueckholen(const Sicherungen& sicherungen) {
    if (!sicherungen.achsendateiBeschaedigt())
        return;
    if (const auto gute = sicherungen.neuesteGute(Gesichertes::Achsendatei, heutigerTag()))
        anbieten(sicherungen, Gesichertes::Achsendatei, *gute,
                 "Die Datei mit den Achsenzuordnungen lässt sich nicht lesen.");
}
