// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Aktionsrahmen.h"

#include "base/Text.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Optionen.h"
#include "editors/common/Tastenfang.h"
#include "editors/common/Umbruchoption.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

constexpr int TABTASTE = 9;
constexpr const char* ERSTER_TASTENTITEL = "Taste: 13 - Enter";
constexpr int GROESSTER_EGOWEG = 3000;

constexpr int EINZUG = 22; // of what belongs to an option
constexpr int ZEILENABSTAND = 5;

constexpr std::array<const char*, MAUSRICHTUNGEN> RICHTUNGSTEXTE{"Links", "Rechts", "Oben", "Unten"};
constexpr std::array<const char*, MAUSTASTEN> MAUSTASTENTEXTE{
    "Linke Maustaste", "Rechte Maustaste", "Maustaste Mitte", "Scrollrad Plus", "Scrollrad Minus"};

/// The labels around the box of a time, and what it says at first.
struct Zeitangabe {
    int davor;
    int danach;
    const char* anfang;
};
constexpr int DRUCKZEIT = 0;
constexpr int PAUSENZEIT = 1;
constexpr std::array<Zeitangabe, 2> ZEITEN{{{0, 2, "1"}, {3, 1, "0"}}};

// By action type.
constexpr std::array<const char*, STICKAKTIONSARTEN> ZUGANGSNAMEN{
    "Eigenschaft der Mausbewegung", "Eigenschaft der Maustaste",  "",
    "Eigenschaft des Leerfelds",    "Eigenschaft des Sperrfelds", "Eigenschaft der Position"};

std::size_t platz(int index) {
    return static_cast<std::size_t>(index);
}

QRadioButton* option(const char* name, int index, const char* text) {
    return benannt(new QRadioButton(text), feldname(name, index));
}

void setzen(const Optionen& optionen, const std::optional<int>& index) {
    if (index)
        optionen[platz(*index)]->setChecked(true);
}
void setzen(QLineEdit* feld, const std::optional<std::string>& text) {
    if (text)
        feld->setText(qt(*text));
}
void setzen(QScrollBar* leiste, const std::optional<int>& wert) {
    if (wert)
        leiste->setValue(*wert); // beyond its range, the nearer end
}

QLineEdit* zahlfeld(const QString& name, const char* text) {
    auto* feld = benannt(new QLineEdit(text), name);
    feld->setFixedWidth(feld->fontMetrics().horizontalAdvance("000000") + 14);
    return feld;
}

QLabel* schild(const QString& name, const char* text, QWidget* fuer = nullptr) {
    auto* label = benannt(new QLabel(text), name);
    label->setBuddy(fuer);
    return label;
}

} // namespace

Aktionsrahmen::Aktionsrahmen(Stickaktionsart art) : QGroupBox("Eigenschaft") {
    setObjectName(feldname("Frame1", static_cast<int>(art)));
    // That of a key goes by its title, which names the key.
    setAccessibleName(ZUGANGSNAMEN[static_cast<std::size_t>(art)]);
}

// --- Mausbewegung ---

Mausbewegungsrahmen::Mausbewegungsrahmen() : Aktionsrahmen(Stickaktionsart::Mausbewegung) {
    auto* gitter = new QGridLayout(this);
    gitter->setVerticalSpacing(ZEILENABSTAND);
    for (int i = 0; i < MAUSRICHTUNGEN; ++i) {
        richtungen_.push_back(option("Option2", i, RICHTUNGSTEXTE[platz(i)]));
        gitter->addWidget(richtungen_.back(), i / 2, i % 2);
    }
    gruppieren(richtungen_, this);
    geschwindigkeit_ = zahlfeld(feldname("txtSchritt", 0), "1");
    schrittlaenge_ = zahlfeld(feldname("txtSchritt", 1), "1");
    gitter->addWidget(schild(feldname("Label2", 1), "Geschwindigkeit", geschwindigkeit_), 3, 0);
    gitter->addWidget(geschwindigkeit_, 3, 1);
    gitter->addWidget(schild(feldname("Label2", 0), "Schrittlänge", schrittlaenge_), 4, 0);
    gitter->addWidget(schrittlaenge_, 4, 1);
    gitter->setRowMinimumHeight(2, ZEILENABSTAND);
    gitter->setRowStretch(5, 1);
    gitter->setHorizontalSpacing(EINZUG);
    gitter->setColumnStretch(2, 1);
}

void Mausbewegungsrahmen::beginnen() {
    setzen(richtungen_, 0);
}

void Mausbewegungsrahmen::zeigen(const Stickaktionsbild& bild) {
    setzen(richtungen_, bild.richtung);
    setzen(geschwindigkeit_, bild.geschwindigkeit);
    setzen(schrittlaenge_, bild.schrittlaenge);
}

void Mausbewegungsrahmen::lesen(Stickaktionsbild& bild) const {
    bild.richtung = gesetzte(richtungen_);
    bild.geschwindigkeit = geschwindigkeit_->text().toStdString();
    bild.schrittlaenge = schrittlaenge_->text().toStdString();
}

// --- Maustaste drücken ---

Maustastenrahmen::Maustastenrahmen() : Aktionsrahmen(Stickaktionsart::Maustaste) {
    auto* gitter = new QGridLayout(this);
    gitter->setVerticalSpacing(ZEILENABSTAND);
    for (int i = 0; i < MAUSTASTEN; ++i) {
        tasten_.push_back(option("optMaus", i, MAUSTASTENTEXTE[platz(i)]));
        gitter->addWidget(tasten_.back(), i, 0);
    }
    gruppieren(tasten_, this);
    scrollPlus_ = zahlfeld("txtScrollPlus", "1");
    scrollMinus_ = zahlfeld("txtScrollMinus", "1");
    for (const int reihe : {SCROLLRAD_PLUS, SCROLLRAD_MINUS}) {
        auto* feld = scrollsprung(reihe);
        gitter->addWidget(schild("Scrollsprung", "Scrollsprung", feld), reihe, 1,
                          Qt::AlignRight | Qt::AlignVCenter);
        gitter->addWidget(feld, reihe, 2);
    }
    scrollPlus_->setAccessibleName("Scrollrad Plus: Scrollsprung");
    scrollMinus_->setAccessibleName("Scrollrad Minus: Scrollsprung");
    gitter->setColumnStretch(1, 1);
    gitter->setRowStretch(MAUSTASTEN, 1);
}

QLineEdit* Maustastenrahmen::scrollsprung(int maustaste) const {
    return maustaste == SCROLLRAD_MINUS ? scrollMinus_ : scrollPlus_;
}

void Maustastenrahmen::beginnen() {
    setzen(tasten_, 0);
}

void Maustastenrahmen::zeigen(const Stickaktionsbild& bild) {
    setzen(tasten_, bild.maustaste);
    setzen(scrollsprung(bild.maustaste.value_or(0)), bild.scrollsprung);
}

void Maustastenrahmen::lesen(Stickaktionsbild& bild) const {
    const int taste = gesetzte(tasten_);
    bild.maustaste = taste;
    bild.scrollsprung = scrollsprung(taste)->text().toStdString();
}

// --- Tastatur drücken ---

Tastaturrahmen::Tastaturrahmen(const Tafeleigenart& eigenart, Tastatur& tastatur, Tastenname tastenname)
    : Aktionsrahmen(Stickaktionsart::Tastatur), tastenname_(std::move(tastenname)) {
    setTitle(ERSTER_TASTENTITEL);
    taste_ = tastenfeld(tastatur, eigenart.tabhinweis);
    eigenschaften_.push_back(option("optEig", 0, "Real"));
    eigenschaften_.push_back(benannt(new Umbruchoption("Taste bei Tastendruck drücken und loslassen"),
                                     feldname("optEig", TASTE_MIT_ZEIT)));
    wiederholen_ = benannt(new QCheckBox("Tastendruck wiederholen"), feldname("Check1", 0));
    druckzeit_ = zahlfeld(feldname("txtZeit", DRUCKZEIT), ZEITEN[DRUCKZEIT].anfang);
    auto* druckzeile = zeitzeile(DRUCKZEIT, druckzeit_);
    pausenzeit_ = zahlfeld(feldname("txtZeit", PAUSENZEIT), ZEITEN[PAUSENZEIT].anfang);
    auto* pausenzeile = zeitzeile(PAUSENZEIT, pausenzeit_);
    auto* wiederholzeile = new QHBoxLayout;
    wiederholzeile->setContentsMargins(EINZUG, 0, 0, 0);
    wiederholzeile->addWidget(wiederholen_);

    taste_->setAccessibleName("Taste");
    druckzeit_->setAccessibleName("Zeit bis zum Loslassen, Millisekunden");
    pausenzeit_->setAccessibleName("Pause bis zur Wiederholung, Millisekunden");

    auto* anordnung = new QVBoxLayout(this);
    anordnung->setSpacing(ZEILENABSTAND);
    anordnung->addWidget(taste_);
    for (auto* eine : eigenschaften_)
        anordnung->addWidget(eine);
    anordnung->addLayout(druckzeile);
    anordnung->addLayout(wiederholzeile);
    anordnung->addLayout(pausenzeile);
    anordnung->addStretch();

    gruppieren(eigenschaften_, this, [this](int index) { optEigKlick(index); });
    connect(wiederholen_, &QCheckBox::toggled, this, &Tastaturrahmen::Check1Klick);
}

QBoxLayout* Tastaturrahmen::zeitzeile(int zeit, QLineEdit* feld) {
    const auto& angabe = ZEITEN[platz(zeit)];
    auto* zeile = new QHBoxLayout;
    zeile->setContentsMargins(EINZUG, 0, 0, 0);
    zeile->addWidget(schild(feldname("lblZ", angabe.davor), "Zeit:", feld));
    zeile->addWidget(feld);
    zeile->addWidget(schild(feldname("lblZ", angabe.danach), "mSek"));
    zeile->addStretch();
    return zeile;
}

Tastenfang* Tastaturrahmen::tastenfeld(Tastatur& tastatur, const char* hinweis) {
    auto* feld = benannt(new Tastenfang(tastatur), "txtTaste");
    feld->setToolTip(hinweis);
    connect(feld, &Tastenfang::tasteGedrueckt, this, &Tastaturrahmen::tasteGewaehlt);
    connect(feld, &Tastenfang::tabBestaetigt, this, [this] { tasteGewaehlt(TABTASTE); });
    return feld;
}

void Tastaturrahmen::beginnen() {
    setzen(eigenschaften_, 0);
    taste_->setFocus();
}

void Tastaturrahmen::zeigen(const Stickaktionsbild& bild) {
    setzen(eigenschaften_, bild.eigenschaft);
    if (bild.taste)
        titelSetzen(*bild.taste);
    setzen(druckzeit_, bild.druckzeit);
    if (bild.wiederholen)
        wiederholen_->setChecked(true);
    setzen(pausenzeit_, bild.pausenzeit);
}

void Tastaturrahmen::lesen(Stickaktionsbild& bild) const {
    bild.eigenschaft = gesetzte(eigenschaften_);
    bild.taste = tastennummer(title().toStdString());
    bild.druckzeit = druckzeit_->text().toStdString();
    bild.wiederholen = wiederholen_->isChecked();
    bild.pausenzeit = pausenzeit_->text().toStdString();
}

void Tastaturrahmen::titelSetzen(const std::string& nummer) {
    setTitle(qt(tastentitel(nummer, ohneRand(tastenname_(nummer)))));
}

void Tastaturrahmen::tasteGewaehlt(int code) {
    const auto nummer = std::to_string(code);
    titelSetzen(nummer);
    taste_->setText(qt(nummer));
}

void Tastaturrahmen::optEigKlick(int index) {
    taste_->setFocus();
    const bool mitZeit = index != 0;
    wiederholen_->setEnabled(mitZeit);
    druckzeit_->setEnabled(mitZeit);
    pausenzeit_->setEnabled(mitZeit && wiederholen_->isChecked());
}

void Tastaturrahmen::Check1Klick() {
    pausenzeit_->setEnabled(wiederholen_->isChecked());
}

// --- Leerfeld, Sperrfeld ---

Hinweisrahmen::Hinweisrahmen(Stickaktionsart art, int index, const char* text) : Aktionsrahmen(art) {
    auto* label = schild(feldname("Label3", index), text);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* anordnung = new QVBoxLayout(this);
    anordnung->addWidget(label, 1);
}

// --- Absolute Position ---

Positionsrahmen::Positionsrahmen(const Tafeleigenart& eigenart)
    : Aktionsrahmen(Stickaktionsart::AbsolutePosition) {
    auto* gitter = new QGridLayout(this);
    gitter->setVerticalSpacing(ZEILENABSTAND);
    int reihe = 0;
    for (const char* text : {"Im Feld zentrieren", "Im Feld binden", eigenart.egoshooter}) {
        arten_.push_back(option("Option3", reihe, text));
        gitter->addWidget(arten_.back(), reihe++, 0, 1, 2);
    }
    for (int i = 0; i < 2; ++i) {
        auto* leiste = benannt(new QScrollBar(Qt::Horizontal), feldname("HScroll1", i));
        leiste->setRange(1, GROESSTER_EGOWEG);
        leiste->setPageStep(GROESSTER_EGOWEG / 30);
        leiste->setFocusPolicy(Qt::StrongFocus);
        auto* wert = zahlfeld(feldname("Text1", i), i == 0 ? "X-" : "Y-");
        wert->setReadOnly(true);
        wert->setFocusPolicy(Qt::ClickFocus);
        connect(leiste, &QScrollBar::valueChanged, wert,
                [wert](int neu) { wert->setText(QString::number(neu)); });
        const QString achse = i == 0 ? "X" : "Y";
        leiste->setAccessibleName("Weg " + achse);
        wert->setAccessibleName("Wert des Wegs " + achse);
        leiste->hide();
        wert->hide();
        gitter->addWidget(leiste, reihe, 0);
        gitter->addWidget(wert, reihe++, 1);
        wege_[platz(i)] = leiste;
        wegtexte_[platz(i)] = wert;
    }
    gitter->setColumnStretch(0, 1);
    gitter->setRowStretch(reihe, 1);
    gruppieren(arten_, this, [this](int index) { Option3Klick(index); });
}

void Positionsrahmen::beginnen() {
    setzen(arten_, 0);
}

void Positionsrahmen::zeigen(const Stickaktionsbild& bild) {
    setzen(arten_, bild.position);
    setzen(wege_[0], bild.egoX);
    setzen(wege_[1], bild.egoY);
}

void Positionsrahmen::lesen(Stickaktionsbild& bild) const {
    bild.position = gesetzte(arten_);
    bild.egoX = wege_[0]->value();
    bild.egoY = wege_[1]->value();
}

void Positionsrahmen::egoshooterAnbieten(bool an) {
    arten_[EGO_SHOOTER]->setVisible(an);
}

void Positionsrahmen::Option3Klick(int index) {
    for (std::size_t i = 0; i < wege_.size(); ++i) {
        wege_[i]->setVisible(index == EGO_SHOOTER);
        wegtexte_[i]->setVisible(index == EGO_SHOOTER);
    }
}
