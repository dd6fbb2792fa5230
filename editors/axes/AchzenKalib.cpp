// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/axes/AchzenKalib.h"

#include "editors/axes/Achsenwahl.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Padzeile.h"
#include "engine/input/Padabfrage.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

constexpr std::chrono::milliseconds ABFRAGE{50};
constexpr int BALKEN_MAX = std::numeric_limits<std::int16_t>::max();
constexpr int BALKENHOEHE = 130;
constexpr int BALKENBREITE = 20;
constexpr int SPALTEN = 3;

constexpr const char* AUFGABE = "Bitte mit Ihrem Controller die Achsen testen und nach Ihren Bedürfnissen "
                                "einstellen";
constexpr const char* REGEL_LINKS = "Bitte immer nur 2 mal den Stick Links mit den Richtungen "
                                    "Links/Rechts-Oben/Unten ";
constexpr const char* REGEL_RECHTS = "Bitte immer nur 2 mal den Stick Rechts mit den Richtungen  (siehe oben)"
                                     "                      ";
constexpr const char* REGEL_SCHUB = "Bitte immer beide Schubvarianten einstellen";

// By raw axis.
constexpr std::array<const char*, ACHSEN> RAHMENTITEL{"Achse X", "Achse Y", "Achse Z",
                                                      "Achse R", "Achse U", "Achse V"};

template <class Texte> QComboBox* liste(const QString& name, const Texte& texte) {
    auto* neue = benannt(new QComboBox, name);
    for (const auto* text : texte)
        neue->addItem(text);
    neue->setCurrentIndex(-1);
    return neue;
}

// A bar that only shows: it takes neither the mouse nor the focus.
QScrollBar* balken(const QString& name) {
    auto* neuer = benannt(new QScrollBar(Qt::Vertical), name);
    neuer->setRange(0, BALKEN_MAX);
    neuer->setPageStep(BALKEN_MAX / 10);
    neuer->setFocusPolicy(Qt::NoFocus);
    neuer->setAttribute(Qt::WA_TransparentForMouseEvents);
    neuer->setMinimumSize(std::max(BALKENBREITE, neuer->sizeHint().width()), BALKENHOEHE);
    return neuer;
}

QLabel* beschriftung(const QString& text, int index, QWidget* fuer) {
    auto* label = benannt(new QLabel(text), feldname("Label1", index));
    label->setBuddy(fuer);
    return label;
}

} // namespace

AchzenKalib::AchzenKalib(Achsendatei& achsendatei, Joystick& joystick, Zeitgeber& zeitgeber)
    : achsendatei_(achsendatei), schema_(achsendatei.Schema()), joystick_(joystick) {
    setObjectName("AchzenKalib");
    setWindowTitle("Achsen zuordnen");
    auto* anordnung = new QVBoxLayout(this);
    anordnung->setSpacing(12);
    auto* aufgabe = benannt(new QLabel(AUFGABE), "Label2");
    aufgabe->setWordWrap(true);
    anordnung->addWidget(aufgabe);
    anordnung->addWidget(rahmengitter(), 1);
    anordnung->addWidget(hinweise());
    anordnung->addWidget(knopfzeile());
    anordnung->addWidget(new Padzeile(joystick_));
    breiteSetzen(*this, 0);
    hoeheSetzen(*this, 0);

    belegungZeigen();
    zeilen_[0].Auswahl->setFocus();
    abfrage_ = zeitgeber.formularzeitgeber([this] { Timer1_Timer(); });
    abfrage_->Interval(ABFRAGE);
    abfrage_->Enabled(true);
}

void AchzenKalib::closeEvent(QCloseEvent* ereignis) {
    abfrage_->Enabled(false);
    ereignis->accept();
}

// --- layout ---

QWidget* AchzenKalib::rahmengitter() {
    auto* bereich = new QWidget;
    auto* gitter = new QGridLayout(bereich);
    gitter->setContentsMargins(0, 0, 0, 0);
    for (int achse = 0; achse < static_cast<int>(ACHSEN); ++achse)
        gitter->addWidget(rahmen(achse), achse / SPALTEN, achse % SPALTEN);
    return bereich;
}

QGroupBox* AchzenKalib::rahmen(int achse) {
    auto& zeile = zeilen_[static_cast<std::size_t>(achse)];
    zeile.VScroll1 = balken(feldname("VScroll1", achse));
    zeile.Auswahl = liste(feldname("Auswahl", achse), AUSWAHLEN);
    zeile.Richtung = liste(feldname("Richtung", achse), RICHTUNGEN);
    // A slider has no direction: nobody shall think that one is asked for.
    connect(zeile.Auswahl, &QComboBox::currentTextChanged, zeile.Richtung,
            [richtung = zeile.Richtung](const QString& text) {
                richtung->setEnabled(!istSchub(text.toStdString()));
            });

    auto* gruppe =
        benannt(new QGroupBox(RAHMENTITEL[static_cast<std::size_t>(achse)]), feldname("Frame1", achse));
    auto* gitter = new QGridLayout(gruppe);
    gitter->addWidget(zeile.VScroll1, 0, 0, 6, 1);
    gitter->setColumnMinimumWidth(1, 6);
    auto* stick = beschriftung("Stick:", 2 * achse, zeile.Auswahl);
    auto* richtung = beschriftung("Richtung", 2 * achse + 1, zeile.Richtung);
    listeBenennen(*zeile.Auswahl, *stick, gruppe->title() + ": Stick");
    listeBenennen(*zeile.Richtung, *richtung, gruppe->title() + ": Richtung");
    gitter->addWidget(stick, 1, 2);
    gitter->addWidget(zeile.Auswahl, 2, 2);
    gitter->addWidget(richtung, 3, 2);
    gitter->addWidget(zeile.Richtung, 4, 2);
    gitter->setRowStretch(0, 1);
    gitter->setRowStretch(5, 1);
    gitter->setColumnStretch(2, 1);
    return gruppe;
}

// The three rules are one text whose blanks part them: at just the width of the first one each of them stands
// on a line of its own.
QWidget* AchzenKalib::hinweise() {
    auto* regeln = benannt(new QLabel(QString(REGEL_LINKS) + REGEL_RECHTS + REGEL_SCHUB), "Label3");
    regeln->setWordWrap(true);
    regeln->setFixedWidth(regeln->fontMetrics().horizontalAdvance(REGEL_LINKS) + 2);
    return regeln;
}

QWidget* AchzenKalib::knopfzeile() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    auto* uebernehmen = benannt(new QPushButton("Übernehmen"), feldname("Command1", 0));
    auto* abbrechen = benannt(new QPushButton("Abbrechen"), feldname("Command1", 1));
    uebernehmen->setToolTip("Prüft die Zuordnung, speichert sie für das Schema und schließt das Fenster");
    abbrechen->setToolTip("Schließt das Fenster, ohne zu speichern");
    connect(uebernehmen, &QPushButton::clicked, this, &AchzenKalib::bestaetigen);
    connect(abbrechen, &QPushButton::clicked, this, &QWidget::close);
    zeile->addStretch();
    zeile->addWidget(uebernehmen);
    zeile->addWidget(abbrechen);
    return bereich;
}

// --- what the controls do ---

void AchzenKalib::belegungZeigen() {
    for (std::size_t i = 0; i < ACHSEN; ++i) {
        const auto [auswahl, richtung] = auswahlZu(achsendatei_.AchsenSchluessel()[i]);
        zeilen_[i].Auswahl->setCurrentIndex(zeilen_[i].Auswahl->findText(qt(auswahl)));
        zeilen_[i].Richtung->setCurrentIndex(zeilen_[i].Richtung->findText(qt(richtung)));
    }
}

void AchzenKalib::Timer1_Timer() {
    const bool da = padAbfragen(joystick_, joystickinfo_); // without a pad the bars stay where they are
    for (std::size_t i = 0; i < ACHSEN; ++i) {
        auto& bar = *zeilen_[i].VScroll1;
        bar.setEnabled(da); // and are grey
        bar.setValue(balkenwert(joystickinfo_.*ROHACHSEN[i], bar.maximum()));
    }
}

void AchzenKalib::bestaetigen() {
    std::array<Achsenauswahl, ACHSEN> tabelle;
    for (std::size_t i = 0; i < ACHSEN; ++i)
        tabelle[i] = {zeilen_[i].Auswahl->currentText().toStdString(),
                      zeilen_[i].Richtung->currentText().toStdString()};
    if (!istVollstaendig(tabelle)) {
        meldung(this, "Falsche Eingabe", "");
        return;
    }
    if (!darfSpeichern(this, schema_, achsendatei_.Schema()))
        return;
    if (!achsendatei_.AchsenUebernehmen(tabelle))
        meldung(this,
                "Die Zuordnung gilt jetzt, konnte aber nicht gespeichert werden: Gamepad.xml lässt sich "
                "nicht lesen oder nicht schreiben, oder der Name des Schemas passt nicht hinein.",
                "");
    close();
}
