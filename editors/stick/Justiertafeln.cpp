// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Justiertafeln.h"

#include "base/Ebenennamen.h"
#include "editors/common/Formhilfen.h"
#include "editors/stick/Schiebetafel.h"
#include "editors/stick/Stickebene.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>

#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr Schiebemass UMSCHALTEN_MASS{.hoehe = 1000, .offen = 6230, .ruheIntervall = 0ms};
constexpr Schiebemass SCHALTFLAECHE_MASS{.hoehe = 900, .offen = 7254, .ruheIntervall = 5000ms};
constexpr int ZURUECKGESTELLT = 1000; // both panels
// Where the panels stand across the plane.
constexpr double UMSCHALTEN_MITTE = 0.25;
constexpr double SCHALTFLAECHE_MITTE = 0.75;

constexpr std::array<const char*, 3> KNOPFTEXTE{"End", "Test", "Hintergrund"};
constexpr const char* STREUBILD = "Zeigt, wo der Stick in den Läufen war (Taste S)";
constexpr const char* ZURUECKSETZEN =
    "Vergisst, wo der Stick auf dieser Ebene war; fragt vorher (Umschalt+S)";
constexpr const char* EINS_ZU_EINS = "Angehakt löst der Stick auf dieser Ebene nichts aus";
constexpr std::array<const char*, 3> KNOPFHINWEISE{
    "Schließt das Fenster; jede Änderung ist schon gespeichert",
    "Startet das Schema, während dieses Fenster offen bleibt",
    "Macht aus dem laufenden Spiel Bilder für den Hintergrund"};

/// A label that does what its control does when it is clicked.
class Beschriftung final : public QLabel {
public:
    Beschriftung(const QString& text, QAbstractButton& knopf) : QLabel(text), knopf_(knopf) {
        knopf_.setAccessibleName(text.trimmed());
    }

protected:
    void mousePressEvent(QMouseEvent*) override { knopf_.click(); }

private:
    QAbstractButton& knopf_;
};

} // namespace

Justiertafeln::Justiertafeln(Stickebene& ebene, const Justiereigenart& art, Zeitgeber& zeitgeber)
    : QObject(&ebene)
    , ebene_(ebene)
    , umschalten_(benannt(new Schiebetafel(&ebene, "Umschalten", UMSCHALTEN_MASS, zeitgeber), art.umschalten))
    , schaltflaeche_(benannt(new Schiebetafel(&ebene, "Schaltfläche", SCHALTFLAECHE_MASS, zeitgeber),
                             art.schaltflaeche)) {
    umschalten_->inhaltSetzen(umschaltinhalt());
    schaltflaeche_->inhaltSetzen(befehlsinhalt());
    streubildEinpassen(ebene.screen()->availableSize());
}

// Large letters on a low screen leave two rows no room, and one is too wide for a small screen: there the
// button goes first, as it is wanted less, then both. Their keys remain.
void Justiertafeln::streubildEinpassen(const QSize& platz) {
    if (noetigeEbene().height() <= platz.height())
        return;
    streubildspalte_->setDirection(QBoxLayout::LeftToRight);
    streubild_->updateGeometry(); // a layout inside another does not tell it
    for (QWidget* control : {static_cast<QWidget*>(ruecksetzung_), static_cast<QWidget*>(streubild_)}) {
        if (noetigeEbene().width() <= platz.width())
            return;
        control->hide();
        streubildspalte_->invalidate();
        streubild_->parentWidget()->layout()->invalidate();
    }
}

QWidget* Justiertafeln::umschaltinhalt() {
    auto* inhalt = new QWidget;
    auto* zeile = new QHBoxLayout(inhalt);
    zeile->setContentsMargins(12, 1, 12, 1);
    for (int i = 0; i < EBENEN; ++i) {
        const auto platz = static_cast<std::size_t>(i);
        auto* option = benannt(new QRadioButton, feldname("Uschalt", i));
        zeile->addWidget(option);
        zeile->addWidget(benannt(new Beschriftung(EBENENNAMEN[platz], *option), feldname("Label1", i)));
        if (i + 1 < EBENEN)
            zeile->addSpacing(10);
        connect(option, &QRadioButton::toggled, this, [this, i](bool an) {
            if (an)
                emit ebeneGewaehlt(i);
        });
        ebenen_[platz] = option;
    }
    return inhalt;
}

QWidget* Justiertafeln::befehlsinhalt() {
    auto* inhalt = new QWidget;
    auto* zeile = new QHBoxLayout(inhalt);
    zeile->setContentsMargins(12, 1, 12, 1);
    for (const int index : {HINTERGRUND, TEST, ENDE}) {
        auto* knopf = benannt(new QPushButton(KNOPFTEXTE[static_cast<std::size_t>(index)]),
                              feldname("Command1", index));
        knopf->setFocusPolicy(Qt::TabFocus);
        knopf->setToolTip(KNOPFHINWEISE[static_cast<std::size_t>(index)]);
        connect(knopf, &QPushButton::clicked, this, [this, index] { emit geklickt(index); });
        zeile->addWidget(knopf);
    }
    zeile->addSpacing(10);
    einsZuEins_ = benannt(new QCheckBox, "Check2");
    einsZuEins_->setToolTip(EINS_ZU_EINS);
    connect(einsZuEins_, &QCheckBox::toggled, this, &Justiertafeln::einsZuEinsGeaendert);
    zeile->addWidget(einsZuEins_);
    zeile->addWidget(benannt(new Beschriftung("1 to 1 ", *einsZuEins_), feldname("Label1", EBENEN)));
    zeile->addSpacing(10);
    zeile->addLayout(streubildspalte());
    return inhalt;
}

// One below the other: beside each other they would leave a small screen no room for both panels.
QBoxLayout* Justiertafeln::streubildspalte() {
    streubildspalte_ = new QBoxLayout(QBoxLayout::TopToBottom);
    streubildspalte_->setSpacing(2);
    streubild_ = benannt(new QCheckBox("Streubild"), "Streubild");
    streubild_->setFocusPolicy(Qt::TabFocus);
    streubild_->setToolTip(STREUBILD);
    connect(streubild_, &QCheckBox::toggled, this, &Justiertafeln::streubildGeaendert);
    streubildspalte_->addWidget(streubild_);
    ruecksetzung_ = benannt(new QPushButton("zurücksetzen"), "Streubildruecksetzung");
    ruecksetzung_->setFocusPolicy(Qt::TabFocus);
    ruecksetzung_->setAccessibleName("Streubild zurücksetzen");
    ruecksetzung_->setToolTip(ZURUECKSETZEN);
    connect(ruecksetzung_, &QPushButton::clicked, this, &Justiertafeln::streubildZuruecksetzen);
    streubildspalte_->addWidget(ruecksetzung_);
    return streubildspalte_;
}

QSize Justiertafeln::noetigeEbene() const {
    return {umschalten_->noetigeBreite() + schaltflaeche_->noetigeBreite(),
            std::max(umschalten_->noetigeEbenenhoehe(), schaltflaeche_->noetigeEbenenhoehe())};
}

// On a narrow plane they move together, and to its left.
void Justiertafeln::legen() {
    const double breite = ebene_.width();
    const double rechte = schaltflaeche_->noetigeBreite();
    const double linke = umschalten_->noetigeBreite();
    const double rechts = std::min(SCHALTFLAECHE_MITTE * breite, breite - rechte / 2);
    schaltflaeche_->legen(rechts);
    umschalten_->legen(std::min(UMSCHALTEN_MITTE * breite, rechts - (rechte + linke) / 2));
}

void Justiertafeln::sperren(bool gesperrt) {
    umschalten_->setEnabled(!gesperrt);
    schaltflaeche_->setEnabled(!gesperrt);
}

void Justiertafeln::zurueckstellen() {
    umschalten_->zurueckstellen(ZURUECKGESTELLT);
    schaltflaeche_->zurueckstellen(ZURUECKGESTELLT);
}

void Justiertafeln::anhalten() {
    umschalten_->anhalten();
    schaltflaeche_->anhalten();
}

bool Justiertafeln::gewaehlt(int ebene) const {
    return ebenen_[static_cast<std::size_t>(ebene)]->isChecked();
}

void Justiertafeln::waehlen(int ebene) {
    ebenen_[static_cast<std::size_t>(ebene)]->setChecked(true);
}

void Justiertafeln::einsZuEinsSetzen(bool an) {
    einsZuEins_->setChecked(an);
}

void Justiertafeln::streubildSetzen(bool an) {
    streubild_->setChecked(an);
}

bool Justiertafeln::streubildGewaehlt() const {
    return streubild_->isChecked();
}
