// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/main/frmHaupt.h"

#include "base/LaufzeitFehler.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Geduld.h"
#include "editors/common/Hilfekapitel.h"
#include "editors/common/Kurzlabel.h"
#include "editors/common/Padzeile.h"
#include "editors/common/Speicherstand.h"
#include "editors/common/Tatfolge.h"
#include "editors/exchange/Schemamenue.h"
#include "editors/main/Sicherungsdienst.h"
#include "editors/main/Stickrahmen.h"
#include "editors/run/Laufsteuerung.h"
#include "platform/Prozess.h"
#include "store/files/Achsendatei.h"
#include "store/files/Gamepadtabelle.h"
#include "store/schema/Schemaloeschen.h"
#include "store/schema/modSpeichern.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <memory>

namespace {

constexpr int VOLLE_HOEHE = twips(5250);
constexpr int KURZE_HOEHE = twips(2700);
constexpr int BREITE = 640;
constexpr int KNOPFHOEHE = 28;

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

constexpr const char* SPALTE_SCHEMA = "Schema"; // of Gamepad.xml

struct Knopfhinweis {
    int knopf;
    const char* text;
};
constexpr std::array<Knopfhinweis, 7> KNOPFHINWEISE{{
    {SCHEMA_NEU, "Fragt nach dem Namen eines neuen Schemas und legt es an"},
    {SCHEMA_LOESCHEN, "Löscht nach einer Frage das gewählte Schema mit allen Belegungen"},
    {SCHEMA_STARTEN,
     "Setzt das Gamepad in Tastatur und Maus um, bis das Fenster des Schemas geschlossen wird"},
    {BUTTON_BEARBEITEN, "Belegt die Knöpfe und das Steuerkreuz"},
    {LINKEN_STICK_BEARBEITEN, "Teilt den linken Stick in Felder und gibt ihnen Aktionen"},
    {RECHTEN_STICK_BEARBEITEN, "Teilt den rechten Stick in Felder und gibt ihnen Aktionen"},
    {DATENBANK, "Dieser Knopf hat keine Funktion. Übersicht über die Schemata der Datenbank: Strg+D"},
}};

constexpr const char* NEU = "Schema neu";
constexpr const char* SPEICHERN = "Schema Speichern";
constexpr const char* STARTEN = "Schema starten";
constexpr const char* STOPPEN = "Schema stoppen";

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

} // namespace

frmHaupt::frmHaupt(GobalVariable& global, Achsendatei& achsendatei, Laufsteuerung& laufsteuerung,
                   Prozess& prozess, Zeitgeber& zeitgeber, Tatfolge& taten)
    : global_(global)
    , achsendatei_(achsendatei)
    , laufsteuerung_(laufsteuerung)
    , prozess_(prozess)
    , taten_(taten)
    , hilfe_(global, prozess) {
    setObjectName("frmHaupt");
    setWindowTitle("Game-Pad-Konfic");
    aufbauen();
    gespeichert_ = new Gespeichertzeichen(zeitgeber, this);
    verwerfen_ = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    verwerfen_->setEnabled(false);
    connect(verwerfen_, &QShortcut::activated, this, &frmHaupt::nameVerwerfen);
    schemamenue_ = new Schemamenue(*this, *schemaauswahl_, [this] { return !verwerfen_->isEnabled(); });
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_D), this), &QShortcut::activated, this,
            &frmHaupt::uebersichtGewuenscht);
    connect(&laufsteuerung_, &Laufsteuerung::hauptformVerbergen, this, &QWidget::hide);
    connect(&laufsteuerung_, &Laufsteuerung::hauptformZurueck, this, &frmHaupt::hauptformZurueck);
}

// --- layout, top to bottom ---

void frmHaupt::aufbauen() {
    auto* anordnung = new QVBoxLayout(this);
    anordnung->addWidget(kopf());
    kurzzeile_ = kurzzeile();
    anordnung->addWidget(kurzzeile_);
    unterteil_ = unterteil();
    anordnung->addWidget(unterteil_, 1);
    anordnung->addStretch();
    auto* unten = new QHBoxLayout;
    unten->addWidget(new Padzeile(laufsteuerung_.joystick()), 1);
    unten->addWidget(rueckgaengig_ = new Tatangebot(taten_));
    anordnung->addLayout(unten);
    gleichBreit(*findChild<QLabel*>(feldname("Label1", 0)), *findChild<QLabel*>(feldname("Label1", 1)));
    setTabOrder(knoepfe_[DATENBANK], knoepfe_[SCHEMA_STARTEN]); // stands to the right of both rows
    breiteSetzen(*this, BREITE);
    volleHoehe(true);
}

QWidget* frmHaupt::kopf() {
    auto* bereich = new QWidget;
    auto* gitter = new QGridLayout(bereich);
    gitter->setContentsMargins(0, 0, 0, 0);

    schemaauswahl_ = schemaauswahl("Combo1");
    connect(schemaauswahl_, &QComboBox::editTextChanged, this,
            [this](const QString& text) { global_.SchemaName = global_.Schemaauswahl = text.toStdString(); });
    connect(schemaauswahl_, &QComboBox::editTextChanged, this, [this] { nameZeigen(); });
    connect(schemaauswahl_->lineEdit(), &QLineEdit::returnPressed, this, [this] {
        // Without a name there is nothing to save.
        if (verwerfen_->isEnabled() && !schemaauswahl_->currentText().isEmpty())
            knoepfe_[SCHEMA_NEU]->click();
    });
    connect(schemaauswahl_, &QComboBox::activated, this, [this] { Combo1Klick(); });
    auto* name = benannt(new QLabel("Schema wählen:"), feldname("Label1", 0));
    name->setBuddy(schemaauswahl_);
    gitter->addWidget(name, 0, 0);
    gitter->addWidget(schemaauswahl_, 0, 1, 1, 2);

    auto* knoepfe = new QGridLayout;
    knoepfe->addWidget(Command1(SCHEMA_NEU, NEU), 0, 0);
    platzFuer(*knoepfe_[SCHEMA_NEU], SPEICHERN);
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
    sticks->addWidget(new Stickrahmen(0, *Command1(LINKEN_STICK_BEARBEITEN, "Bearbeiten")));
    sticks->addWidget(new Stickrahmen(1, *Command1(RECHTEN_STICK_BEARBEITEN, "Bearbeiten")));
    anordnung->addLayout(sticks, 1);
    anordnung->addWidget(fusszeile());
    for (const auto& [knopf, text] : KNOPFHINWEISE)
        knoepfe_[knopf]->setToolTip(text);
    return bereich;
}

/// What only the short form shows.
QWidget* frmHaupt::kurzzeile() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    namenshinweis_ = kurzlabel("lblNamenshinweis", "");
    namenshinweis_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* erste =
        benannt(new QLabel(QString("<a href=\"%1\">Erste Schritte</a>").arg(KAPITEL_ERSTE_SCHRITTE)),
                "lblErsteSchritte");
    erste->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    erste->setAccessibleName("Erste Schritte");
    erste->setToolTip("Öffnet die Hilfe: das erste Schema in fünf Schritten");
    connect(erste, &QLabel::linkActivated, this,
            [this](const QString& anker) { hilfe_.kapitelOeffnen(this, anker); });
    zeile->addWidget(namenshinweis_, 1);
    zeile->addWidget(erste);
    return bereich;
}

QWidget* frmHaupt::pfadzeile() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    programmpfad_ = benannt(new QLineEdit, feldname("Text1", 0));
    auto* name = benannt(new QLabel("Programmpfad:"), feldname("Label1", 1));
    for (QWidget* control : {static_cast<QWidget*>(programmpfad_), static_cast<QWidget*>(name)})
        control->setToolTip("Nur eine Notiz: Das Programm startet nichts damit");
    name->setBuddy(programmpfad_);
    zeile->addWidget(name);
    zeile->addWidget(programmpfad_, 1);
    return bereich;
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
    connect(hilfe, &QPushButton::clicked, this, [this] { hilfe_.seiteOeffnen(this); });
    achsen->setToolTip("Ordnet die Achsen des Gamepads den Sticks und dem Schubregler zu");
    schubregler->setToolTip("Teilt den Schubregler in Felder und gibt ihnen Aktionen");
    hilfe->setToolTip("Öffnet die Hilfe; F1 öffnet sie in jedem Fenster an der Stelle, die es erklärt");
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
    knoepfe_[index] = knopf;
    return knopf;
}

void frmHaupt::volleHoehe(bool voll) {
    unterteil_->setVisible(voll);
    kurzzeile_->setVisible(!voll);
    hoeheSetzen(*this, voll ? VOLLE_HOEHE : KURZE_HOEHE);
}

// --- the list ---

bool frmHaupt::laden() {
    prozess_.SetPriorityClass(REALTIME_PRIORITY_CLASS);
    global_.PfadeSetzen(prozess_);
    emit pfadeGesetzt();
    const bool gelesen = datenbankLesen();
    achsendateiZurueckholen(sicherungen());
    if (schemaauswahl_->count() == 0) {
        volleHoehe(false);
        achsendatei_.AchsenLaden(); // makes the file in which a first Schema finds its row
        return gelesen;
    }
    erstesWaehlen();
    return gelesen;
}

bool frmHaupt::datenbankLesen() {
    const auto lesen = [this] {
        hinweisGeben();
        schemataLesen();
    };
    try {
        lesen();
        return true;
    } catch (const LaufzeitFehler& fehler) {
        return datenbankZurueckholen(sicherungen(), fehler) &&
               mitFehlermeldung(nullptr, qt(global_.DatenbankPfad), lesen);
    }
}

Sicherungen frmHaupt::sicherungen() const {
    return {global_.DatenbankPfad, achsendatei_.pfad()};
}

void frmHaupt::hinweisGeben() {
    const auto hinweis = OpenDatabase(global_.DatenbankPfad).hinweis();
    if (!hinweis.empty())
        meldung(nullptr, qt(hinweis), qt(global_.DatenbankPfad), QMessageBox::Information);
}

void frmHaupt::schemataLesen() {
    schemata_ = SchemataLesen(global_.DatenbankPfad);
    QStringList namen;
    for (const auto& name : schemata_.SchemaNamen)
        namen << qt(name);
    namen.removeLast(); // the spare entry is no name
    schemaauswahl_->clear();
    schemaauswahl_->addItems(namen);
}

void frmHaupt::neuLesen(const std::string& schema) {
    if (!mitFehlermeldung(this, FEHLERTITEL, [this] { schemataLesen(); }))
        return;
    const auto zeile = schemaauswahl_->findText(qt(schema), Qt::MatchExactly | Qt::MatchCaseSensitive);
    volleHoehe(true);
    waehlen(std::max(zeile, 0));
}

void frmHaupt::erstesWaehlen() {
    waehlen(0);
}

void frmHaupt::waehlen(int zeile) {
    schemaauswahl_->setCurrentIndex(zeile);
    schemaauswahl_->setEditText(
        schemaauswahl_->itemText(zeile)); // where the entry was the current one, its text may be gone
    Combo1Klick();
}

void frmHaupt::Combo1Klick() {
    const auto name = schemaauswahl_->currentText().toStdString();
    const auto& namen = schemata_.SchemaNamen;
    const auto stelle = std::find(namen.begin(), namen.end(), name);
    if (stelle != namen.end())
        setzeText(*programmpfad_, schemata_.SchemaPfade[static_cast<std::size_t>(stelle - namen.begin())]);
    schemaauswahl_->lineEdit()->home(false);
    global_.SchemaName = name;
    achsendatei_.AchsenLaden();
}

// --- the buttons ---

void frmHaupt::Command1Klick(int index) {
    if (schemaauswahl_->count() > 0) {
        global_.SchemaName = schemaauswahl_->currentText().toStdString();
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
    auto* knopf = knoepfe_[SCHEMA_STARTEN];
    if (knopf->text() != STARTEN) {
        laufsteuerung_.entladen();
        knopf->setText(STARTEN);
        return;
    }
    emit laufBeginnt();
    if (!laufsteuerung_.laden())
        return;
    knopf->setText(STOPPEN);
    prozess_.SetPriorityClass(REALTIME_PRIORITY_CLASS); // long work in an editor may have cost it
}

void frmHaupt::loeschen() {
    const auto name = global_.SchemaName;
    loeschenFragen();
    const bool zeileWeg = achsendatei_.GamepadLoeschen(); // also after a Nein
    schemataLesen();
    const auto& namen = schemata_.SchemaNamen;
    const bool weg = std::find(namen.begin(), namen.end() - 1, name) == namen.end() - 1; // without the spare
    if (weg)
        emit schemaGeloescht(name);
    setzeText(*schemaauswahl_->lineEdit(), schemata_.SchemaNamen.front());
    setzeText(*programmpfad_, schemata_.SchemaPfade.front());
    global_.SchemaName = schemaauswahl_->currentText().toStdString();
    if (weg && !zeileWeg)
        meldung(this,
                QString("Die Achsenzuordnung und der Schubregler des Schemas „%1“ konnten nicht gelöscht "
                        "werden: Gamepad.xml lässt sich nicht lesen oder nicht schreiben.")
                    .arg(qt(name)),
                "");
}

/// Asks, and deletes; from then on it can be taken back.
void frmHaupt::loeschenFragen() {
    const auto name = global_.SchemaName;
    const auto geloeschtes = std::make_shared<GeloeschtesSchema>();
    laufsteuerung_.streuungAbwarten(); // what was counted last goes along, and comes back
    Geduld geduld(this);
    const auto merken = qScopeGuard([&] {
        if (geloeschtes->zurueckgebbar())
            taten_.merken({QString("Löschen von „%1“").arg(qt(name)),
                           [geloeschtes](const Fortgang& weiter) { geloeschtes->zurueckgeben(weiter); },
                           [this, name] {
                               schemaZurueck(name);
                               emit schemaZurueckgeholt(name);
                           }});
    });
    const auto fragen = [&](std::string_view text, std::string_view titel) {
        const bool ja = frage(this, qt(text), qt(titel));
        geduld.ruhen();
        return ja;
    };
    const auto melden = [&](std::string_view text) {
        geduld.ruhen();
        meldung(this, qt(text), "");
    };
    SchemaLoeschenFragen({global_.DatenbankPfad, global_.BilderPfad, achsendatei_.pfad()}, name,
                         {fragen, melden, [&] { return geduld.weiter(); }}, geloeschtes.get());
}

/// While a name is being typed the list is put aside.
void frmHaupt::schemaZurueck(const std::string& name) {
    if (!verwerfen_->isEnabled())
        return neuLesen(name);
    if (!vorher_.liste.contains(qt(name)))
        vorher_.liste << qt(name);
    vergebeneNamenLesen();
    nameZeigen();
}

void frmHaupt::neu() {
    if (knoepfe_[SCHEMA_NEU]->text() == NEU)
        nameErfragen();
    else
        nameSpeichern();
}

void frmHaupt::nameErfragen() {
    vorher_ = {{}, schemaauswahl_->currentText(), programmpfad_->text()};
    for (int i = 0; i < schemaauswahl_->count(); ++i)
        vorher_.liste << schemaauswahl_->itemText(i);
    vergebeneNamenLesen();
    namenseingabeZeigen(true);
    knoepfe_[SCHEMA_NEU]->setText(SPEICHERN);
    programmpfad_->clear();
    schemaauswahl_->clear();
    schemaauswahl_
        ->clearEditText(); // a list that is empty already has nothing to clear, and keeps what was typed
    schemaauswahl_->setFocus();
}

/// The form is as it was before a name was asked for.
void frmHaupt::nameVerwerfen() {
    namenseingabeZeigen(false);
    knoepfe_[SCHEMA_NEU]->setText(NEU);
    schemaauswahl_->addItems(vorher_.liste);
    schemaauswahl_->setCurrentIndex(static_cast<int>(vorher_.liste.indexOf(vorher_.name)));
    setzeText(*schemaauswahl_->lineEdit(), vorher_.name.toStdString());
    setzeText(*programmpfad_, vorher_.pfad.toStdString());
    if (vorher_.liste.isEmpty())
        volleHoehe(false);
}

/// A database that can't be read says so when the name is saved.
void frmHaupt::vergebeneNamenLesen() {
    vergebeneNamen_.clear();
    try {
        vergebeneNamen_ = SchemataLesen(global_.DatenbankPfad).SchemaNamen;
        vergebeneNamen_.pop_back(); // the spare entry is no name
    } catch (const LaufzeitFehler&) {
    }
}

/// Tells at the field what is wrong with the name that is typed.
void frmHaupt::nameZeigen() {
    const auto hinweis =
        verwerfen_->isEnabled() ? namenshinweis(schemaauswahl_->currentText().toStdString()) : QString();
    namenshinweis_->setText(hinweis);
    namenshinweis_->setToolTip(hinweis);
    schemaauswahl_->lineEdit()->setAccessibleDescription(hinweis);
}

QString frmHaupt::namenshinweis(const std::string& name) const {
    if (name.empty())
        return "Ohne Namen entsteht kein Schema.";
    if (name.find('\'') != std::string::npos)
        return "Mit einem Apostroph lässt sich das Schema weder bearbeiten noch starten.";
    if (std::ranges::find(vergebeneNamen_, name) != vergebeneNamen_.end())
        return "Ein Schema dieses Namens gibt es schon.";
    if (!gamepadNimmt(SPALTE_SCHEMA, name))
        return gamepadNimmt("", name)
                   ? "Der Name ist zu lang: Achsen werden nur bis 100 Zeichen gespeichert."
                   : "Der Name enthält Zeichen, mit denen keine Achsen gespeichert werden.";
    // In a list they are not seen, and "Rennen" and "Rennen " look the same there.
    const auto getippt = qt(name);
    const auto sichtbar = getippt.trimmed();
    if (sichtbar.isEmpty())
        return "Der Name besteht nur aus Leerzeichen.";
    if (sichtbar != getippt)
        return "Der Name beginnt oder endet mit einem Leerzeichen.";
    return {};
}

void frmHaupt::nameSpeichern() {
    namenseingabeZeigen(false);
    const auto name = schemaauswahl_->currentText();
    bool angelegt = false;
    if (!name.isEmpty())
        angelegt = nameAnlegen(name);
    else if (schemaauswahl_->currentIndex() >= 0)
        erstesWaehlen();
    else
        volleHoehe(false);
    global_.SchemaName = schemaauswahl_->currentText().toStdString();
    knoepfe_[SCHEMA_NEU]->setText(NEU);
    if (angelegt)
        schemaauswahl_->addItem(name);
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
        return SchemaAnlegen(global_.DatenbankPfad, name.toStdString(), programmpfad_->text().toStdString(),
                             [this](std::string_view text) { return frage(this, qt(text), ""); });
    } catch (const LaufzeitFehler&) {
        namenseingabeZeigen(true);
        throw;
    }
}

void frmHaupt::namenseingabeZeigen(bool an) {
    knoepfe_[SCHEMA_LOESCHEN]->setEnabled(!an);
    schemaauswahl_->lineEdit()->setPlaceholderText(an ? "Name des neuen Schemas" : "");
    verwerfen_->setEnabled(an);
    volleHoehe(!an);
    nameZeigen();
}

void frmHaupt::gespeichertZeigen() {
    const auto rand = layout()->contentsMargins();
    gespeichert_->adjustSize();
    gespeichert_->move(width() - rand.right() - gespeichert_->width(),
                       height() - rand.bottom() - gespeichert_->height());
    gespeichert_->zeigen();
}

void frmHaupt::hauptformZurueck(bool zeigen) {
    knoepfe_[SCHEMA_STARTEN]->setText(STARTEN);
    if (zeigen)
        show();
}

void frmHaupt::closeEvent(QCloseEvent* ereignis) {
    laufsteuerung_.entladen();
    ereignis->accept();
    emit geschlossen();
}
