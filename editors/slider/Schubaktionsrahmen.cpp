// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/slider/Schubaktionsrahmen.h"

#include "editors/slider/Schubzahlen.h"

#include "base/LaufzeitFehler.h"
#include "base/Text.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Optionen.h"
#include "editors/common/Tastenfang.h"
#include "formats/Felder.h"
#include "store/schema/modKeyCode.h"

#include <QCheckBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

enum Maustaste { SCROLLRAD_PLUS = 3, SCROLLRAD_MINUS = 4 };
enum Tastenart { REAL, ZEITGESTEUERT };
// Of txtSchritt and of txtZeit.
enum Schritt : std::size_t { GESCHWINDIGKEIT, SCHRITTLAENGE };
enum Zeit : std::size_t { DRUCKZEIT, PAUSE };
// Of the parameters of an action.
enum Wert : std::size_t { A, B, D };

constexpr int TABULATOR = 9;
constexpr const char* GRUNDWERT = "1";
constexpr const char* GRUNDZEIT = "50";
constexpr const char* GRUNDPAUSE = "0";

// Sets the option whose index a record tells.
template <std::size_t N>
void optionSetzen(const std::array<QRadioButton*, N>& optionen, const std::string& index) {
    const auto i = feldzahl(std::string_view{index});
    if (i < 0 || static_cast<std::size_t>(i) >= N)
        throw LaufzeitFehler(Fehlernummer::FalscherIndex,
                             "Index außerhalb des gültigen Bereichs: Schubregler mit der Angabe " + index);
    optionen[static_cast<std::size_t>(i)]->setChecked(true);
}

QLabel* beschriftung(const QString& text, const QString& name, QWidget* fuer = nullptr) {
    auto* label = benannt(new QLabel(text), name);
    label->setBuddy(fuer);
    return label;
}

} // namespace

Schubaktionsrahmen::Schubaktionsrahmen(const std::string& datenbankPfad, Tastatur& tastatur)
    : QGroupBox("Aktion"), datenbankPfad_(datenbankPfad) {
    setObjectName("Aktion");
    auto* gitter = new QGridLayout(this);
    auto* arten = new QVBoxLayout;
    arten_ = optionen<SCHUBARTEN>("Option1",
                                  {"Mausbewegung", "Maustaste drücken", "Tastatur drücken", "Leerfeld"});
    rahmen_ = new QStackedWidget;
    for (auto* rahmen : {mausbewegung(), maustaste(), tastendruck(tastatur), leerfeld()})
        rahmen_->addWidget(rahmen);
    for (int i = 0; i < SCHUBARTEN; ++i) {
        auto* option = arten_[static_cast<std::size_t>(i)];
        connect(option, &QRadioButton::toggled, this, [this, i](bool an) {
            if (an)
                rahmen_->setCurrentIndex(i);
        });
        arten->addWidget(option);
    }
    arten->addStretch();
    arten_[static_cast<std::size_t>(Schubart::Leerfeld)]->setChecked(true);

    auto* uebernehmen = benannt(new QPushButton("Aktion übernehmen"), "Command2");
    connect(uebernehmen, &QPushButton::clicked, this, &Schubaktionsrahmen::uebernehmenGewuenscht);
    gitter->addLayout(arten, 0, 0);
    gitter->addWidget(rahmen_, 0, 1);
    gitter->addWidget(uebernehmen, 1, 1, Qt::AlignRight);
    gitter->setColumnStretch(1, 1);
    uebernehmen->setToolTip(
        "Gibt dem gewählten Feld diese Aktion; gespeichert wird sie mit „Schema speichern“");
    aenderungenMelden();
}

// What the controls tell as they go, one that loses the focus for example, comes too late.
Schubaktionsrahmen::~Schubaktionsrahmen() {
    for (auto* control : findChildren<QWidget*>())
        control->disconnect(this);
}

void Schubaktionsrahmen::aenderungenMelden() {
    for (auto* knopf : findChildren<QAbstractButton*>())
        if (knopf->isCheckable())
            connect(knopf, &QAbstractButton::toggled, this, &Schubaktionsrahmen::geaendert);
    for (auto* feld : findChildren<QLineEdit*>())
        connect(feld, &QLineEdit::textChanged, this, &Schubaktionsrahmen::geaendert);
}

// --- layout ---

QGroupBox* Schubaktionsrahmen::mausbewegung() {
    auto* gruppe = benannt(new QGroupBox("Eigenschaft"), feldname("Frame1", 0));
    auto* gitter = new QGridLayout(gruppe);
    richtungen_ = optionen<RICHTUNGEN>("Option2", {"Links", "Rechts", "Oben", "Unten"});
    int reihe = 0;
    for (auto* option : richtungen_)
        gitter->addWidget(option, reihe++, 0);
    const std::array<const char*, 2> texte{"Geschwindigkeit", "Schrittlänge"};
    const std::array<int, 2> label{1, 0};
    for (std::size_t i = 0; i < schritte_.size(); ++i) {
        schritte_[i] = zahlfeld(feldname("txtSchritt", static_cast<int>(i)), GRUNDWERT);
        gitter->addWidget(beschriftung(texte[i], feldname("Label2", label[i]), schritte_[i]),
                          static_cast<int>(i), 2);
        gitter->addWidget(schritte_[i], static_cast<int>(i), 3);
    }
    schritte_[GESCHWINDIGKEIT]->setToolTip("Millisekunden von Schritt zu Schritt");
    schritte_[SCHRITTLAENGE]->setToolTip("Bildpunkte je Schritt");
    gitter->setColumnMinimumWidth(1, 24);
    gitter->setColumnStretch(4, 1);
    gitter->setRowStretch(reihe, 1);
    gruppe->setAccessibleName("Eigenschaft der Mausbewegung");
    return gruppe;
}

QGroupBox* Schubaktionsrahmen::maustaste() {
    auto* gruppe = benannt(new QGroupBox("Eigenschaft"), feldname("Frame1", 1));
    auto* gitter = new QGridLayout(gruppe);
    maustasten_ = optionen<MAUSTASTEN>("optMaus", {"Linke Maustaste", "Rechte Maustaste", "Maustaste Mitte",
                                                   "Scrollrad Plus", "Scrollrad Minus"});
    for (int i = 0; i < MAUSTASTEN; ++i) {
        auto* option = maustasten_[static_cast<std::size_t>(i)];
        connect(option, &QRadioButton::toggled, this, [this, i](bool an) {
            if (an)
                optMaus_Click(i);
        });
        gitter->addWidget(option, i, 0);
    }
    scrollPlus_ = zahlfeld("txtScrollPlus", GRUNDWERT);
    scrollMinus_ = zahlfeld("txtScrollMinus", GRUNDWERT);
    int reihe = SCROLLRAD_PLUS;
    for (auto* feld : {scrollPlus_, scrollMinus_}) {
        feld->setToolTip("120 ist eine Raste");
        gitter->addWidget(
            beschriftung("Scrollsprung", feldname("Scrollsprung", reihe - SCROLLRAD_PLUS), feld), reihe, 2);
        gitter->addWidget(feld, reihe++, 3);
    }
    gruppe->setAccessibleName("Eigenschaft der Maustaste");
    scrollPlus_->setAccessibleName("Scrollrad Plus: Scrollsprung");
    scrollMinus_->setAccessibleName("Scrollrad Minus: Scrollsprung");
    optMaus_Click(0);
    gitter->setColumnMinimumWidth(1, 24);
    gitter->setColumnStretch(4, 1);
    gitter->setRowStretch(reihe, 1);
    return gruppe;
}

QGroupBox* Schubaktionsrahmen::tastendruck(Tastatur& tastatur) {
    auto* gruppe = tastenrahmen_ = benannt(new QGroupBox("Eigenschaft"), feldname("Frame1", 2));
    auto* gitter = new QGridLayout(gruppe);
    tastenfang_ = benannt(new Tastenfang(tastatur), "txtTaste");
    tastenfang_->setToolTip("Mit Doppelklick Tabtaste bestätigen");
    connect(tastenfang_, &Tastenfang::tasteGeloest, this, &Schubaktionsrahmen::tasteGefangen);
    connect(tastenfang_, &Tastenfang::tabBestaetigt, this, [this] { emit tasteGefangen(TABULATOR); });
    // The box falls back to its invitation when it loses the focus; here it keeps the key that it has.
    connect(tastenfang_, &QLineEdit::textChanged, this, [this] {
        if (taste_ != 0)
            tastenfang_->setText(tastenname_);
    });
    eigenschaften_ = optionen<TASTENARTEN>("optEig", {"Real", "Taste bei Tastendruck drücken und loslassen"});
    zeiten_[DRUCKZEIT] = zahlfeld(feldname("txtZeit", DRUCKZEIT), GRUNDZEIT);
    zeiten_[PAUSE] = zahlfeld(feldname("txtZeit", PAUSE), GRUNDPAUSE);
    wiederholen_ = benannt(new QCheckBox("Tastendruck wiederholen"), "Check1");
    for (auto* option : eigenschaften_)
        connect(option, &QRadioButton::toggled, this, &Schubaktionsrahmen::tastenzeitenSchalten);
    connect(wiederholen_, &QCheckBox::toggled, this, &Schubaktionsrahmen::tastenzeitenSchalten);
    tastenzeitenSchalten();

    // The number of the label before the box and of the one behind it.
    const std::array<std::array<int, 2>, 2> lblZ{{{0, 2}, {3, 1}}};
    const auto zeitzeile = [&](std::size_t zeit, int reihe) {
        gitter->addWidget(beschriftung("Zeit:", feldname("lblZ", lblZ[zeit][0]), zeiten_[zeit]), reihe, 1);
        gitter->addWidget(zeiten_[zeit], reihe, 2);
        gitter->addWidget(beschriftung("mSek", feldname("lblZ", lblZ[zeit][1])), reihe, 3);
    };
    gitter->addWidget(tastenfang_, 0, 0, 1, 3);
    gitter->addWidget(eigenschaften_[REAL], 1, 0, 1, 5);
    gitter->addWidget(eigenschaften_[ZEITGESTEUERT], 2, 0, 1, 5);
    zeitzeile(DRUCKZEIT, 3);
    gitter->addWidget(wiederholen_, 4, 1, 1, 4);
    zeitzeile(PAUSE, 5);
    gitter->setColumnMinimumWidth(0, 20); // sets the times in under their option
    gitter->setColumnStretch(4, 1);
    gitter->setRowStretch(6, 1);
    // The frame goes by its title, which names the key.
    tastenfang_->setAccessibleName("Taste");
    zeiten_[DRUCKZEIT]->setAccessibleName("Zeit bis zum Loslassen, Millisekunden");
    zeiten_[PAUSE]->setAccessibleName("Pause bis zur Wiederholung, Millisekunden");
    return gruppe;
}

QGroupBox* Schubaktionsrahmen::leerfeld() {
    auto* gruppe = benannt(new QGroupBox("Eigenschaft"), feldname("Frame1", 3));
    auto* spalte = new QVBoxLayout(gruppe);
    auto* text = beschriftung("Ein Leerfeld hat keine spezielle Funktion. ", "Label3");
    text->setWordWrap(true);
    spalte->addWidget(text);
    spalte->addStretch();
    gruppe->setAccessibleName("Eigenschaft des Leerfelds");
    return gruppe;
}

// A box whose text is looked at when the focus leaves it.
QLineEdit* Schubaktionsrahmen::zahlfeld(const QString& name, const QString& text) {
    auto* feld = benannt(new QLineEdit(text), name);
    feld->setFixedWidth(feld->fontMetrics().horizontalAdvance("0000000000") + 12);
    feld->installEventFilter(this);
    return feld;
}

// --- what the controls do ---

void Schubaktionsrahmen::optMaus_Click(int index) {
    scrollPlus_->setEnabled(index == SCROLLRAD_PLUS);
    scrollMinus_->setEnabled(index == SCROLLRAD_MINUS);
}

void Schubaktionsrahmen::tastenzeitenSchalten() {
    const bool zeitgesteuert = eigenschaften_[ZEITGESTEUERT]->isChecked();
    zeiten_[DRUCKZEIT]->setEnabled(zeitgesteuert);
    wiederholen_->setEnabled(zeitgesteuert);
    zeiten_[PAUSE]->setEnabled(zeitgesteuert && wiederholen_->isChecked());
}

bool Schubaktionsrahmen::eventFilter(QObject* control, QEvent* ereignis) {
    if (ereignis->type() == QEvent::FocusOut) {
        const auto grund = static_cast<QFocusEvent*>(ereignis)->reason();
        // Another window, or the box's own menu: the box keeps its place in the form.
        if (grund != Qt::ActiveWindowFocusReason && grund != Qt::PopupFocusReason) {
            auto* feld = static_cast<QLineEdit*>(control);
            // Queued: the focus has to arrive where it goes before it can be called back.
            QMetaObject::invokeMethod(
                this, [this, feld] { zahlfeldVerlassen(feld); }, Qt::QueuedConnection);
        }
    }
    return QGroupBox::eventFilter(control, ereignis);
}

void Schubaktionsrahmen::zahlfeldVerlassen(QLineEdit* feld) {
    std::string zahl;
    if (feld->isVisible() && !feld->hasFocus())
        zahlLesen(*feld, zahl);
}

void Schubaktionsrahmen::tasteGewaehlt(int code) {
    const auto nummer = std::to_string(code);
    tasteSetzen(code, qt(ohneRand(KeyCodeSuchen(datenbankPfad_, 0, nummer))));
    tastenrahmen_->setTitle(QString("Taste: %1 - %2").arg(qt(nummer), tastenname_));
    emit geaendert();
}

QString Schubaktionsrahmen::tastenname(const std::string& code) const {
    try {
        const auto name = ohneRand(KeyCodeSuchen(datenbankPfad_, 0, code));
        return qt(name.empty() ? code : name);
    } catch (const LaufzeitFehler&) {
        return qt(code);
    }
}

void Schubaktionsrahmen::tasteSetzen(int code, const QString& name) {
    tastenname_ = name;
    taste_ = code;
    if (code != 0)
        tastenfang_->setText(tastenname_);
    else
        tastenfang_->einladen();
}

// --- what is not saved ---

Schubrahmenstand Schubaktionsrahmen::stand() const {
    return {Formstand({this}), taste_, tastenname_};
}

void Schubaktionsrahmen::herstellen(const Schubrahmenstand& stand) {
    tasteSetzen(stand.taste, stand.tastenname);
    stand.controls.eingeben(*this);
}

// --- a record in the controls ---

void Schubaktionsrahmen::zeigen(const Schubaktion& aktion) {
    const auto wert = [&](Wert stelle) { return qt(aktion.werte[stelle]); };
    arten_[static_cast<std::size_t>(aktion.art)]->setChecked(true);
    switch (aktion.art) {
    case Schubart::Mausbewegung:
        optionSetzen(richtungen_, aktion.unterwahl);
        schritte_[GESCHWINDIGKEIT]->setText(wert(A));
        schritte_[SCHRITTLAENGE]->setText(wert(B));
        break;
    case Schubart::Maustaste:
        optionSetzen(maustasten_, aktion.unterwahl);
        if (maustasten_[SCROLLRAD_PLUS]->isChecked())
            scrollPlus_->setText(wert(A));
        if (maustasten_[SCROLLRAD_MINUS]->isChecked())
            scrollMinus_->setText(wert(A));
        break;
    case Schubart::Tastatur:
        optionSetzen(eigenschaften_, aktion.unterwahl);
        zeiten_[DRUCKZEIT]->setText(wert(B).isEmpty() ? GRUNDZEIT : wert(B)); // "Real" has none
        wiederholen_->setChecked(!aktion.werte[D].empty());
        if (wiederholen_->isChecked())
            zeiten_[PAUSE]->setText(wert(D));
        tasteGewaehlt(feldzahl(std::string_view{aktion.werte[A]}));
        break;
    case Schubart::Leerfeld:
        break;
    }
}

bool Schubaktionsrahmen::lesen(Schubaktion& aktion) {
    aktion.art = static_cast<Schubart>(gesetzte(arten_));
    switch (aktion.art) {
    case Schubart::Mausbewegung:
        aktion.unterwahl = std::to_string(gesetzte(richtungen_));
        return zahlLesen(*schritte_[GESCHWINDIGKEIT], aktion.werte[A]) &&
               zahlLesen(*schritte_[SCHRITTLAENGE], aktion.werte[B]);
    case Schubart::Maustaste: {
        const int taste = gesetzte(maustasten_);
        aktion.unterwahl = std::to_string(taste);
        if (taste == SCROLLRAD_PLUS)
            return zahlLesen(*scrollPlus_, aktion.werte[A]);
        return taste != SCROLLRAD_MINUS || zahlLesen(*scrollMinus_, aktion.werte[A]);
    }
    case Schubart::Tastatur: {
        if (taste_ == 0) {
            meldung(window(), "Sie müssen eine Taste drücken!", "");
            tastenfang_->setFocus();
            return false;
        }
        const int art = gesetzte(eigenschaften_);
        aktion.unterwahl = std::to_string(art);
        aktion.werte[A] = std::to_string(taste_);
        if (art != ZEITGESTEUERT)
            return true;
        return zahlLesen(*zeiten_[DRUCKZEIT], aktion.werte[B]) &&
               (!wiederholen_->isChecked() || zahlLesen(*zeiten_[PAUSE], aktion.werte[D]));
    }
    case Schubart::Leerfeld:
        break;
    }
    return true;
}

// The number in the box, without the blanks around it. When there is none that the slider text could hold,
// the user is told, the focus returns to the box and false comes back. A sign or a comma would be taken for
// a separator of that text, and the action would do something else.
bool Schubaktionsrahmen::zahlLesen(QLineEdit& feld, std::string& ziel) {
    const auto text = feld.text().trimmed().toStdString();
    const auto befund = zahlPruefen(text);
    if (befund == Zahlbefund::Gut) {
        ziel = text;
        return true;
    }
    meldung(window(),
            befund == Zahlbefund::KeineZahl
                ? QString("Sie müssen eine Zahl eingeben")
                : QString("Sie müssen eine ganze Zahl von 0 bis %1 eingeben").arg(SCHUBZAHL_MAX),
            "");
    feld.setFocus();
    return false;
}
