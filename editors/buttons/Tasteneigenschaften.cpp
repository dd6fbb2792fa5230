// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/buttons/Tasteneigenschaften.h"

#include "base/LaufzeitFehler.h"
#include "editors/buttons/Wahlknopf.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Speicherstand.h"
#include "formats/Felder.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <initializer_list>

using belegungsfeld::DRUCKZEIT;
using belegungsfeld::MODUS;
using belegungsfeld::PAUSENZEIT;

namespace {

// Indices of famAusgabe.
enum Rahmen { TASTENRAHMEN = 0, MAUSRAHMEN = 1, UMSCHALTRAHMEN = 2 };

constexpr std::array<const char*, 2> TASTENTEXTE{"Real (Ereignis bei Aktion)",
                                                 "Taste bei Tastendruck drücken und loslassen"};
constexpr std::array<const char*, 5> MAUSTEXTE{"Linke Maustaste", "Rechte Maustaste", "Maustaste Mitte",
                                               "Scrollrad Plus", "Scrollrad Minus"};
constexpr std::array<const char*, 2> UMSCHALTTEXTE{"Halten ---> Loslassen", "Feststellen"};

// Indices of optEig and Option2.
constexpr std::size_t PULSEND = 1;
constexpr int SCROLLRAD_PLUS = 3;
constexpr int SCROLLRAD_MINUS = 4;

// One below 0 is as good as out of range: its sign would part the fields of the `Belegung`, and neither this
// form nor a run could read the text again.
bool istZeit(std::int16_t zahl) {
    return zahl >= 0;
}

bool wirdGenommen(const std::string& text) {
    try {
        return istZeit(getippteZahl16(text));
    } catch (const LaufzeitFehler&) {
        return false;
    }
}

// One of several options by a field of the image.
template <std::size_t N>
Wahlknopf& gemeinte(const std::array<Wahlknopf*, N>& optionen, const std::string& feld) {
    const auto index = feldzahl(std::string_view{feld});
    if (index < 0 || static_cast<std::size_t>(index) >= N)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex, "Eine Auswahl " + feld + " gibt es nicht.");
    return *optionen[static_cast<std::size_t>(index)];
}

} // namespace

Tasteneigenschaften::Tasteneigenschaften(Tastwerk& werk) : werk_(werk) {
    auto* gitter = new QGridLayout(this);
    gitter->setContentsMargins(0, 0, 0, 0);
    rahmen_ = {tastenrahmen(), mausrahmen(), umschaltrahmen()};
    for (std::size_t i = 0; i < rahmen_.size(); ++i) {
        platzBehalten(*benannt(rahmen_[i], feldname("famAusgabe", static_cast<int>(i))));
        gitter->addWidget(rahmen_[i], 0, 0);
    }
}

// --- layout ---

QGroupBox* Tasteneigenschaften::tastenrahmen() {
    auto* gruppe = new QGroupBox;
    auto* gitter = new QGridLayout(gruppe);
    for (int i = 0; i < 2; ++i) {
        const auto platz = static_cast<std::size_t>(i);
        tastenmodus_[platz] =
            benannt(new Wahlknopf(TASTENTEXTE[platz], [this, i] { optEig_Click(i); }), feldname("optEig", i));
        gitter->addWidget(tastenmodus_[platz], i, 0, 1, 5, Qt::AlignLeft);
    }
    druckzeit_ = zahlfeld(feldname("Text1", 0), "1", DRUCKZEIT);
    wiederholen_ = benannt(new QCheckBox("Tastendruck wiederholen"), feldname("Check1", 0));
    connect(wiederholen_, &QCheckBox::toggled, this,
            [this] { mitFehlermeldung(window(), formtitel(*window()), [this] { Check1_Click(); }); });
    pausenzeit_ = zahlfeld(feldname("Text2", 0), "0", PAUSENZEIT);

    const auto zeile = [gitter](int reihe, int links, QLineEdit* box, int rechts) {
        gitter->addWidget(benannt(new QLabel("Zeit:"), feldname("lblZ", links)), reihe, 1);
        gitter->addWidget(box, reihe, 2);
        gitter->addWidget(benannt(new QLabel("mSek"), feldname("lblZ", rechts)), reihe, 3);
    };
    gitter->addWidget(benannt(new QLabel("Zeitspanne Drücken -> Loslassen"), feldname("Label1", 0)), 2, 1, 1,
                      4);
    zeile(3, 0, druckzeit_, 2);
    gitter->addWidget(wiederholen_, 4, 1, 1, 4, Qt::AlignLeft);
    zeile(5, 3, pausenzeit_, 1);
    gitter->setColumnMinimumWidth(0, 20); // the times belong to the option above them
    gitter->setColumnStretch(4, 1);
    gitter->setRowStretch(6, 1);
    gruppe->setAccessibleName("Tastendruckeigenschaft");
    druckzeit_->setAccessibleName("Zeitspanne Drücken bis Loslassen, Millisekunden");
    pausenzeit_->setAccessibleName("Pause bis zur Wiederholung, Millisekunden");
    return gruppe;
}

QGroupBox* Tasteneigenschaften::mausrahmen() {
    auto* gruppe = new QGroupBox("Mausdruckeigenschaft");
    auto* gitter = new QGridLayout(gruppe);
    for (int i = 0; i < 5; ++i) {
        const auto platz = static_cast<std::size_t>(i);
        mausaktionen_[platz] =
            benannt(new Wahlknopf(MAUSTEXTE[platz], [this, i] { Option2_Click(i); }), feldname("Option2", i));
        gitter->addWidget(mausaktionen_[platz], i, 0, Qt::AlignLeft);
    }
    scrollPlus_ = zahlfeld("txtScrollPlus", "1", DRUCKZEIT);
    scrollMinus_ = zahlfeld("txtScrollMinus", "1", DRUCKZEIT);
    int nummer = 0;
    for (auto* box : {scrollPlus_, scrollMinus_}) {
        box->setEnabled(false);
        const int reihe = SCROLLRAD_PLUS + nummer;
        gitter->addWidget(benannt(new QLabel("Scrollsprung"), feldname("Scrollsprung", nummer++)), reihe, 1);
        gitter->addWidget(box, reihe, 2);
    }
    gitter->setColumnStretch(3, 1);
    gitter->setRowStretch(5, 1);
    scrollPlus_->setAccessibleName("Scrollrad Plus: Scrollsprung");
    scrollMinus_->setAccessibleName("Scrollrad Minus: Scrollsprung");
    return gruppe;
}

QGroupBox* Tasteneigenschaften::umschaltrahmen() {
    auto* gruppe = new QGroupBox("Eigenschaften Umschalttaste");
    auto* spalte = new QVBoxLayout(gruppe);
    for (int i = 0; i < 2; ++i) {
        const auto platz = static_cast<std::size_t>(i);
        umschaltmodus_[platz] = benannt(new Wahlknopf(UMSCHALTTEXTE[platz], [this, i] { Option3_Click(i); }),
                                        feldname("Option3", i));
        spalte->addWidget(umschaltmodus_[platz], 0, Qt::AlignLeft);
    }
    spalte->addStretch();
    return gruppe;
}

QLineEdit* Tasteneigenschaften::zahlfeld(const QString& name, const QString& text, std::size_t feld) {
    auto* box = benannt(new QLineEdit(text), name);
    box->setMaximumWidth(box->fontMetrics().horizontalAdvance("0000000000") + 16);
    zahlfelder_.push_back({box, feld});
    connect(box, &QLineEdit::textChanged, this, [this, box, feld] {
        mitFehlermeldung(window(), formtitel(*window()), [&] { zahlGeaendert(*box, feld); });
    });
    return box;
}

// --- what the controls do ---

void Tasteneigenschaften::optEig_Click(int index) {
    werk_.setzeFeld(MODUS, std::to_string(index));
    const bool pulst = index == int{PULSEND};
    wiederholen_->setEnabled(pulst);
    druckzeit_->setEnabled(pulst);
    pausenzeit_->setEnabled(pulst && wiederholen_->isChecked());
}

void Tasteneigenschaften::Check1_Click() {
    if (wiederholen_->isChecked()) {
        pausenzeit_->setEnabled(true);
        return;
    }
    werk_.setzeFeld(PAUSENZEIT, "0");
    textSetzen(*pausenzeit_, "0", PAUSENZEIT);
    pausenzeit_->setEnabled(false);
}

void Tasteneigenschaften::Option2_Click(int index) {
    werk_.setzeFeld(MODUS, std::to_string(index));
    scrollPlus_->setEnabled(index == SCROLLRAD_PLUS);
    scrollMinus_->setEnabled(index == SCROLLRAD_MINUS);
}

void Tasteneigenschaften::Option3_Click(int index) {
    werk_.setzeFeld(MODUS, std::to_string(index));
}

void Tasteneigenschaften::zahlGeaendert(QLineEdit& box, std::size_t feld) {
    try {
        const auto zahl = getippteZahl16(box.text().toStdString());
        if (istZeit(zahl))
            werk_.setzeFeld(feld, std::to_string(zahl));
        else
            werk_.geaendert();
    } catch (const LaufzeitFehler& fehler) {
        if (fehler.nummer() != Fehlernummer::FalscherTyp) {
            werk_.geaendert();
            return; // out of range: neither stored nor told
        }
        const QPointer<QLineEdit> noch = &box;
        meldung(window(), "Sie haben keine Zahl eingegeben!", "");
        if (!noch)
            return;
        textSetzen(box, "1", feld);
        box.setFocus();
    }
}

bool Tasteneigenschaften::imGebrauch(const Zahlfeld& zahlfeld) const {
    return !zahlfeld.box->parentWidget()->isHidden() && zahlfeld.box->isEnabledTo(this);
}

std::map<std::size_t, QString> Tasteneigenschaften::ungueltiges() const {
    std::map<std::size_t, QString> texte;
    if (!werk_.gewaehlt())
        return texte;
    for (const auto& zahlfeld : zahlfelder_) {
        const auto text = zahlfeld.box->text().toStdString();
        if (imGebrauch(zahlfeld) && text != werk_.feld(zahlfeld.feld) && !wirdGenommen(text))
            texte.emplace(zahlfeld.feld, zahlfeld.box->text());
    }
    return texte;
}

void Tasteneigenschaften::ungueltigesSetzen(const std::map<std::size_t, QString>& texte) {
    for (const auto& zahlfeld : zahlfelder_)
        if (const auto stelle = texte.find(zahlfeld.feld); stelle != texte.end() && imGebrauch(zahlfeld)) {
            const QSignalBlocker stumm(zahlfeld.box);
            zahlfeld.box->setText(stelle->second);
        }
}

// --- the image in the controls ---

void Tasteneigenschaften::Eigenschaftfestlegen(Belegungsart art) {
    const bool maus = art == Belegungsart::Maus;
    const bool umschalttaste = art == Belegungsart::Umschalt1 || art == Belegungsart::Umschalt2;
    const bool taste = !maus && !umschalttaste;
    if (taste)
        tasteZeigen();
    if (umschalttaste)
        gemeinte(umschaltmodus_, werk_.feld(MODUS)).setzen();
    if (maus)
        mausZeigen();
    rahmen_[TASTENRAHMEN]->setVisible(taste);
    rahmen_[UMSCHALTRAHMEN]->setVisible(umschalttaste);
    rahmen_[MAUSRAHMEN]->setVisible(maus);
}

// The fields are read first: what is set here changes them.
void Tasteneigenschaften::tasteZeigen() {
    const auto druckzeit = werk_.feld(DRUCKZEIT);
    const auto pausenzeit = werk_.feld(PAUSENZEIT);
    auto& modus = gemeinte(tastenmodus_, werk_.feld(MODUS));
    modus.setzen();
    textSetzen(*druckzeit_, druckzeit, DRUCKZEIT);
    const bool pulst = &modus == tastenmodus_[PULSEND];
    const bool wiederholt = pulst && feldzahl(std::string_view{pausenzeit}) > 0;
    if (!pulst)
        for (QWidget* control : std::initializer_list<QWidget*>{druckzeit_, wiederholen_, pausenzeit_})
            control->setEnabled(false);
    wiederholungSetzen(wiederholt);
    textSetzen(*pausenzeit_, wiederholt ? pausenzeit : "0", PAUSENZEIT);
}

void Tasteneigenschaften::mausZeigen() {
    const auto scrollsprung = werk_.feld(DRUCKZEIT);
    auto& aktion = gemeinte(mausaktionen_, werk_.feld(MODUS));
    aktion.setzen();
    if (&aktion == mausaktionen_[SCROLLRAD_PLUS])
        textSetzen(*scrollPlus_, scrollsprung, DRUCKZEIT);
    if (&aktion == mausaktionen_[SCROLLRAD_MINUS])
        textSetzen(*scrollMinus_, scrollsprung, DRUCKZEIT);
}

void Tasteneigenschaften::verbergen() {
    for (auto* rahmen : rahmen_)
        rahmen->hide();
}

void Tasteneigenschaften::textSetzen(QLineEdit& box, const std::string& text, std::size_t feld) {
    if (box.text() == qt(text))
        return;
    {
        const QSignalBlocker stumm(box);
        box.setText(qt(text));
    }
    zahlGeaendert(box, feld);
}

void Tasteneigenschaften::wiederholungSetzen(bool an) {
    if (wiederholen_->isChecked() == an)
        return;
    {
        const QSignalBlocker stumm(*wiederholen_);
        wiederholen_->setChecked(an);
    }
    Check1_Click();
}
