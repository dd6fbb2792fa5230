#include "editors/main/frmHaupt.h"

#include "base/LaufzeitFehler.h"
#include "editors/common/Formhilfen.h"
#include "editors/run/Laufsteuerung.h"
#include "platform/Prozess.h"
#include "store/files/Achsendatei.h"
#include "store/schema/Schemaloeschen.h"
#include "store/schema/modSpeichern.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int VOLLE_HOEHE = twips(5250);
constexpr int KURZE_HOEHE = twips(2700);
constexpr int BREITE = 640;
constexpr int KNOPFHOEHE = 28;
constexpr int REGLER_MAX = 2000;

// Indices of Command1.
enum Knopf {
    BUTTON_BEARBEITEN = 0,
    LINKEN_STICK_BEARBEITEN = 1,
    SCHEMA_NEU = 2,
    SCHEMA_LOESCHEN = 3,
    DATENBANK = 4,
    SCHEMA_STARTEN = 5,
    RECHTEN_STICK_BEARBEITEN = 6,
};

constexpr const char* NEU = "Schema neu";
constexpr const char* SPEICHERN = "Schema Speichern";
constexpr const char* STARTEN = "Schema starten";
constexpr const char* STOPPEN = "Schema stoppen";

QScrollBar* scrollleiste(Qt::Orientation richtung, const QString& name) {
    auto* leiste = benannt(new QScrollBar(richtung), name);
    leiste->setRange(0, REGLER_MAX);
    leiste->setPageStep(REGLER_MAX / 10);
    leiste->setFocusPolicy(Qt::StrongFocus);
    return leiste;
}

/// Gives the button room for `text`, which it shows in turn with its own.
void platzFuer(QPushButton& knopf, const char* text) {
    const auto eigener = knopf.text();
    const int breite = knopf.minimumSizeHint().width();
    knopf.setText(text);
    knopf.setMinimumWidth(std::max(breite, knopf.minimumSizeHint().width()));
    knopf.setText(eigener);
}

/// Lets what stands behind the two labels begin at one place.
void gleichBreit(QLabel& eines, QLabel& anderes) {
    const int breite = std::max(eines.sizeHint().width(), anderes.sizeHint().width());
    eines.setMinimumWidth(breite);
    anderes.setMinimumWidth(breite);
}

/// Shows a text from its beginning, also when it is longer than the field.
void setzeText(QLineEdit& feld, const std::string& text) {
    feld.setText(qt(text));
    feld.home(false);
}

QLineEdit* anzeigefeld(const QString& name, const QString& text) {
    auto* feld = benannt(new QLineEdit(text), name);
    feld->setReadOnly(true);
    feld->setFocusPolicy(Qt::ClickFocus);
    return feld;
}

} // namespace

frmHaupt::frmHaupt(GobalVariable& global, Achsendatei& achsendatei, Laufsteuerung& laufsteuerung,
                   Prozess& prozess)
    : global_(global), achsendatei_(achsendatei), laufsteuerung_(laufsteuerung), prozess_(prozess) {
    setObjectName("frmHaupt");
    setWindowTitle("Game-Pad-Konfic");
    aufbauen();
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_D), this), &QShortcut::activated, this,
            &frmHaupt::uebersichtGewuenscht);
    connect(&laufsteuerung_, &Laufsteuerung::hauptformVerbergen, this, &QWidget::hide);
    connect(&laufsteuerung_, &Laufsteuerung::hauptformZurueck, this, &frmHaupt::hauptformZurueck);
}

// --- layout, top to bottom ---

void frmHaupt::aufbauen() {
    auto* anordnung = new QVBoxLayout(this);
    anordnung->addWidget(kopf());
    unterteil_ = unterteil();
    anordnung->addWidget(unterteil_, 1);
    anordnung->addStretch();
    gleichBreit(*findChild<QLabel*>(feldname("Label1", 0)), *findChild<QLabel*>(feldname("Label1", 1)));
    breiteSetzen(*this, BREITE);
    volleHoehe(true);
}

QWidget* frmHaupt::kopf() {
    auto* bereich = new QWidget;
    auto* gitter = new QGridLayout(bereich);
    gitter->setContentsMargins(0, 0, 0, 0);

    Combo1_ = schemaauswahl("Combo1");
    connect(Combo1_, &QComboBox::editTextChanged, this,
            [this](const QString& text) { global_.SchemaName = global_.Schemaauswahl = text.toStdString(); });
    connect(Combo1_, &QComboBox::activated, this, [this] { Combo1Klick(); });
    auto* name = benannt(new QLabel("Schema wählen:"), feldname("Label1", 0));
    name->setBuddy(Combo1_);
    gitter->addWidget(name, 0, 0);
    gitter->addWidget(Combo1_, 0, 1, 1, 2);

    auto* knoepfe = new QGridLayout;
    knoepfe->addWidget(Command1(SCHEMA_NEU, NEU), 0, 0);
    platzFuer(*Command1_[SCHEMA_NEU], SPEICHERN);
    knoepfe->addWidget(Command1(SCHEMA_LOESCHEN, "Schema löschen"), 0, 1);
    auto* starten = Command1(SCHEMA_STARTEN, STARTEN);
    auto fett = starten->font();
    fett.setBold(true);
    starten->setFont(fett);
    platzFuer(*starten, STOPPEN);
    starten->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    knoepfe->addWidget(starten, 0, 2, 2, 1);
    knoepfe->addWidget(Command1(BUTTON_BEARBEITEN, "Button bearbeiten"), 1, 0);
    knoepfe->addWidget(Command1(DATENBANK, "Datenbank"), 1, 1);
    Command1_[DATENBANK]->setToolTip("Übersicht über die Schemata der Datenbank: Strg+D");
    gitter->addLayout(knoepfe, 1, 0, 1, 3);
    gitter->setColumnStretch(1, 1);
    return bereich;
}

QWidget* frmHaupt::unterteil() {
    auto* bereich = new QWidget;
    auto* anordnung = new QVBoxLayout(bereich);
    anordnung->setContentsMargins(0, 0, 0, 0);
    anordnung->addWidget(pfadzeile());
    auto* sticks = new QHBoxLayout;
    sticks->addWidget(stickgruppe(0, LINKEN_STICK_BEARBEITEN));
    sticks->addWidget(stickgruppe(1, RECHTEN_STICK_BEARBEITEN));
    anordnung->addLayout(sticks, 1);
    anordnung->addWidget(fusszeile());
    return bereich;
}

QWidget* frmHaupt::pfadzeile() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    Text1_ = benannt(new QLineEdit, feldname("Text1", 0));
    auto* name = benannt(new QLabel("Programmpfad:"), feldname("Label1", 1));
    name->setBuddy(Text1_);
    zeile->addWidget(name);
    zeile->addWidget(Text1_, 1);
    return bereich;
}

QGroupBox* frmHaupt::stickgruppe(int stick, int knopf) {
    auto* gruppe = new QGroupBox;
    auto* gitter = new QGridLayout(gruppe);
    gitter->setVerticalSpacing(3);
    gitter->addWidget(
        benannt(new QLabel(stick == 0 ? "Linken Stick" : "Rechten Stick"), feldname("Label2", stick)), 0, 0);
    gitter->addWidget(Command1(knopf, "Bearbeiten"), 1, 0);
    Command1_[knopf]->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);

    auto* waagrecht = scrollleiste(Qt::Horizontal, feldname("HScroll1", stick));
    auto* sensible = anzeigefeld(feldname("Text2", stick), "Sensible: 0");
    connect(waagrecht, &QScrollBar::valueChanged, sensible,
            [sensible](int wert) { sensible->setText(QString("Sensible: %1").arg(wert)); });
    gitter->addWidget(waagrecht, 2, 0);
    gitter->addWidget(sensible, 3, 0);

    auto* senkrecht = scrollleiste(Qt::Vertical, feldname("VScroll1", stick));
    auto* wert = anzeigefeld(feldname("Text3", stick), "0");
    wert->setFixedWidth(wert->fontMetrics().horizontalAdvance("00000") + 12);
    connect(senkrecht, &QScrollBar::valueChanged, wert,
            [wert](int neu) { wert->setText(QString::number(neu)); });
    gitter->addWidget(senkrecht, 0, 1, 3, 1, Qt::AlignHCenter);
    gitter->setRowStretch(1, 1);
    gitter->addWidget(wert, 3, 1);
    return gruppe;
}

QWidget* frmHaupt::fusszeile() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    auto* achsen = benannt(new QPushButton("Achsen kalibrieren"), "Command3");
    auto* schubregler = benannt(new QPushButton("Schubregler"), "Command4");
    auto* hilfe = benannt(new QPushButton("Hilfe"), "Command2");
    for (auto* knopf : {achsen, schubregler, hilfe})
        knopf->setMinimumHeight(std::max(KNOPFHOEHE, knopf->minimumSizeHint().height()));
    connect(achsen, &QPushButton::clicked, this, &frmHaupt::achsenGewuenscht);
    connect(schubregler, &QPushButton::clicked, this, &frmHaupt::schubreglerGewuenscht);
    connect(hilfe, &QPushButton::clicked, this, &frmHaupt::hilfeOeffnen);
    auto* hinweis =
        benannt(new QLabel("Die Hilfe ist mit Java geschrieben. Bitte lassen Sie diese in Ihrem Browser zu!"),
                "Label3");
    hinweis->setWordWrap(true);
    zeile->addWidget(achsen);
    zeile->addWidget(schubregler);
    zeile->addWidget(hilfe);
    zeile->addWidget(hinweis, 1);
    return bereich;
}

QPushButton* frmHaupt::Command1(int index, const QString& text) {
    auto* knopf = benannt(new QPushButton(text), feldname("Command1", index));
    knopf->setMinimumHeight(std::max(KNOPFHOEHE, knopf->minimumSizeHint().height()));
    connect(knopf, &QPushButton::clicked, this,
            [this, index] { mitFehlermeldung(this, FEHLERTITEL, [this, index] { Command1Klick(index); }); });
    Command1_[index] = knopf;
    return knopf;
}

void frmHaupt::volleHoehe(bool voll) {
    unterteil_->setVisible(voll);
    hoeheSetzen(*this, voll ? VOLLE_HOEHE : KURZE_HOEHE);
}

// --- the list ---

void frmHaupt::laden() {
    prozess_.SetPriorityClass(REALTIME_PRIORITY_CLASS);
    global_.PfadeSetzen(prozess_);
    mitFehlermeldung(nullptr, qt(global_.DatenbankPfad), [this] { schemataLesen(); });
    if (Combo1_->count() == 0) {
        volleHoehe(false);
        achsendatei_.AchsenLaden(); // makes the file in which a first Schema finds its row
        return;
    }
    erstesWaehlen();
}

void frmHaupt::schemataLesen() {
    schemata_ = SchemataLesen(global_.DatenbankPfad);
    QStringList namen;
    for (const auto& name : schemata_.SchemaNamen)
        namen << qt(name);
    namen.removeLast(); // the spare entry is no name
    Combo1_->clear();
    Combo1_->addItems(namen);
}

void frmHaupt::erstesWaehlen() {
    Combo1_->setCurrentIndex(0);
    Combo1_->setEditText(Combo1_->itemText(0)); // where the entry was the current one, its text may be gone
    Combo1Klick();
}

void frmHaupt::Combo1Klick() {
    const auto name = Combo1_->currentText().toStdString();
    const auto& namen = schemata_.SchemaNamen;
    const auto stelle = std::find(namen.begin(), namen.end(), name);
    if (stelle != namen.end())
        setzeText(*Text1_, schemata_.SchemaPfade[static_cast<std::size_t>(stelle - namen.begin())]);
    Combo1_->lineEdit()->home(false);
    global_.SchemaName = name;
    achsendatei_.AchsenLaden();
}

// --- the buttons ---

void frmHaupt::Command1Klick(int index) {
    if (Combo1_->count() > 0) {
        global_.SchemaName = Combo1_->currentText().toStdString();
    } else if (index != SCHEMA_NEU) {
        meldung(this, "Es muß ein Schema erstellt werden", "Kein Schema!", QMessageBox::Information);
        return;
    }
    switch (index) {
    case SCHEMA_STARTEN:
        return starten();
    case SCHEMA_LOESCHEN:
        return loeschen();
    case SCHEMA_NEU:
        return neu();
    case BUTTON_BEARBEITEN:
        emit tastwerkGewuenscht();
        return;
    case LINKEN_STICK_BEARBEITEN:
        emit stickBearbeiten(Stickseite::Links);
        return;
    case RECHTEN_STICK_BEARBEITEN:
        emit stickBearbeiten(Stickseite::Rechts);
        return;
    default:
        return;
    }
}

void frmHaupt::starten() {
    auto* knopf = Command1_[SCHEMA_STARTEN];
    if (knopf->text() != STARTEN) {
        laufsteuerung_.entladen();
        knopf->setText(STARTEN);
    } else if (laufsteuerung_.laden()) {
        knopf->setText(STOPPEN);
    }
}

void frmHaupt::loeschen() {
    const auto name = global_.SchemaName;
    SchemaLoeschenFragen(
        global_.DatenbankPfad, global_.BilderPfad, global_.SchemaName,
        {[this](std::string_view text, std::string_view titel) { return frage(this, qt(text), qt(titel)); },
         [this](std::string_view text) { meldung(this, qt(text), ""); }});
    const bool zeileWeg = achsendatei_.GamepadLoeschen(); // also after a Nein
    schemataLesen();
    const auto& namen = schemata_.SchemaNamen;
    const bool weg = std::find(namen.begin(), namen.end() - 1, name) == namen.end() - 1; // without the spare
    if (weg)
        emit schemaGeloescht(name);
    setzeText(*Combo1_->lineEdit(), schemata_.SchemaNamen.front());
    setzeText(*Text1_, schemata_.SchemaPfade.front());
    global_.SchemaName = Combo1_->currentText().toStdString();
    if (weg && !zeileWeg)
        meldung(this,
                QString("Die Achsenzuordnung und der Schubregler des Schemas „%1“ konnten nicht gelöscht "
                        "werden: Gamepad.xml lässt sich nicht lesen oder nicht schreiben.")
                    .arg(qt(name)),
                "");
}

void frmHaupt::neu() {
    if (Command1_[SCHEMA_NEU]->text() == NEU)
        nameErfragen();
    else
        nameSpeichern();
}

void frmHaupt::nameErfragen() {
    namenseingabeZeigen(true);
    Command1_[SCHEMA_NEU]->setText(SPEICHERN);
    Text1_->clear();
    Combo1_->clear();
    Combo1_->clearEditText(); // a list that is empty already has nothing to clear, and keeps what was typed
    Combo1_->setFocus();
}

void frmHaupt::nameSpeichern() {
    namenseingabeZeigen(false);
    const auto name = Combo1_->currentText();
    bool angelegt = false;
    if (!name.isEmpty())
        angelegt = nameAnlegen(name);
    else if (Combo1_->currentIndex() >= 0)
        erstesWaehlen();
    else
        volleHoehe(false);
    global_.SchemaName = Combo1_->currentText().toStdString();
    Command1_[SCHEMA_NEU]->setText(NEU);
    if (angelegt)
        Combo1_->addItem(name);
    const bool gespeichert = achsendatei_.GamepadSchreiben(""); // whether or not there is a new `Schema`
    if (!gespeichert && !name.isEmpty())
        meldung(this,
                QString("Für das Schema „%1“ konnte keine Achsenzuordnung gespeichert werden: Gamepad.xml "
                        "lässt sich nicht lesen oder nicht schreiben, oder der Name des Schemas passt nicht "
                        "hinein.")
                    .arg(name),
                "");
}

/// Makes the `Schema`. An error leaves the form as the first stroke left it, the name still typed.
bool frmHaupt::nameAnlegen(const QString& name) {
    try {
        return SchemaAnlegen(global_.DatenbankPfad, name.toStdString(), Text1_->text().toStdString(),
                             [this](std::string_view text) { return frage(this, qt(text), ""); });
    } catch (const LaufzeitFehler&) {
        namenseingabeZeigen(true);
        throw;
    }
}

void frmHaupt::namenseingabeZeigen(bool an) {
    Command1_[SCHEMA_LOESCHEN]->setEnabled(!an);
    volleHoehe(!an);
}

void frmHaupt::hilfeOeffnen() {
    if (!prozess_.ShellExecuteA(global_.HilfePfad))
        meldung(this, QString("Die Hilfe konnte nicht geöffnet werden:\n%1").arg(qt(global_.HilfePfad)),
                windowTitle(), QMessageBox::Warning);
}

void frmHaupt::hauptformZurueck(bool zeigen) {
    Command1_[SCHEMA_STARTEN]->setText(STARTEN);
    if (zeigen)
        show();
}

void frmHaupt::closeEvent(QCloseEvent* ereignis) {
    laufsteuerung_.entladen();
    ereignis->accept();
    emit geschlossen();
}
