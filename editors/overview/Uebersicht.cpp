// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/overview/Uebersicht.h"

#include "base/Ebenennamen.h"
#include "editors/common/Fenster.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Geduld.h"
#include "editors/common/Hinweistext.h"
#include "editors/common/Optionen.h"
#include "editors/common/Tatfolge.h"
#include "store/schema/modLesen.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QVBoxLayout>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace {

// Indices of Command1.
enum Knopf { KOPIEREN = 0, WECHSEL = 1, LOESCHEN = 2, INFO = 3, OK = 4, ABBRECHEN = 5 };
constexpr std::array<const char*, 6> KNOPFTEXTE{"Kopieren", "Wechsel", "Löschen", "Info", "OK", "Abbrechen"};
constexpr std::array<const char*, 6> KNOPFHINWEISE{
    "Wählen Sie danach rechts die Ziele und drücken Sie „OK“",
    "Wählen Sie danach rechts ein Ziel und drücken Sie „OK“: Beide Ebenen tauschen ihren Inhalt",
    "Löscht die links gewählte Ebene",
    "Zeigt die links gewählte Ebene, ohne dass sie sich ändern lässt",
    "Führt „Kopieren“ oder „Wechsel“ aus",
    "Schließt, was „Info“ zeigt, und vergisst die gewählten Ziele"};

/// What stands on the choices: the three layers in each of the three frames of a column.
constexpr auto EBENENTEXTE = [] {
    std::array<const char*, EBENENWAHLEN> texte{};
    for (std::size_t i = 0; i < texte.size(); ++i)
        texte[i] = EBENENNAMEN[i % EBENENNAMEN.size()];
    return texte;
}();

/// The frames around the layers, of which each column has three: what stands on one, and the index of the
/// first layer in it.
struct Rahmen {
    const char* text;
    std::size_t ersteEbene;
};
constexpr std::array<Rahmen, 3> RAHMEN{
    {{"Linker Stick", 0}, {"Rechter Stick", 6}, {"Buttons und Steuerkreuz", 3}}};
// Indices of Frame3 around the targets; those around the sources begin at 0.
constexpr int ZIELRAHMEN = 3;
constexpr std::size_t ZIEL_LINKER_STICK = 3;
constexpr std::size_t ZIEL_RECHTER_STICK = 4;
constexpr std::size_t ZIEL_BUTTONS = 5;

constexpr const char* DIALOGTITEL = "Datenbank öffnen";
constexpr const char* DATEIFILTER = "Datenbank(*.mdb)";
constexpr const char* JEDE_DATEI = "Alle Dateien (*)";
constexpr const char* ENDUNG = ".mdb";

constexpr int FELDBREITE = 300;

constexpr std::array<const char*, 2> SEITENNAMEN{"Ursprungsschema", "Zielschema"};

/// What bears the same caption on both sides, told apart.
QString mitSeite(int seite, const QString& name) {
    return QString("%1: %2").arg(SEITENNAMEN[static_cast<std::size_t>(seite)], name);
}

/// „S“ (Linker Stick, Standart)
QString ortsname(const Ebenenort& ort) {
    const auto ebene = static_cast<std::size_t>(ort.index);
    const auto rahmen = std::ranges::find_if(RAHMEN, [&](const Rahmen& einer) {
        return ebene >= einer.ersteEbene && ebene < einer.ersteEbene + EBENEN;
    });
    return QString("„%1“ (%2, %3)").arg(qt(ort.schema.schemaName), rahmen->text, EBENENTEXTE[ebene]);
}

/// The name that was chosen, with the extension of a database where one without is no file.
QString mitEndung(const QString& datei) {
    const QFileInfo angaben(datei);
    return angaben.suffix().isEmpty() && !angaben.exists() ? datei + ENDUNG : datei;
}

} // namespace

Uebersicht::Uebersicht(const GobalVariable& global, std::unique_ptr<Infoansicht> info, Tatfolge& taten)
    : global_(global), info_(std::move(info)), taten_(taten) {
    setObjectName("Uebersicht");
    setWindowTitle("Ubersicht für SchemaDatenbank");
    quellebenen_ = optionen("Option1", EBENENTEXTE);
    for (std::size_t i = 0; i < EBENENWAHLEN; ++i)
        zielebenen_[i] = benannt(new QCheckBox(EBENENTEXTE[i]), feldname("Check1", static_cast<int>(i)));

    auto* anordnung = new QVBoxLayout(this);
    auto* spalten = new QHBoxLayout;
    for (int seite = 0; seite < 2; ++seite)
        spalten->addWidget(schemaspalte(seite), 1);
    anordnung->addLayout(spalten, 1);
    anordnung->addWidget(knopfzeile());
    anordnung->addWidget(new Tatangebot(taten_), 0, Qt::AlignLeft);
    hoeheSetzen(*this, 0);

    for (auto* option : quellebenen_) {
        connect(option, &QRadioButton::toggled, this, [this](bool an) {
            if (an)
                Option1Klick();
        });
        connect(option, &QRadioButton::clicked, this,
                &Uebersicht::Option1Klick); // also on the one that is set
    }
    for (int i = 0; i < static_cast<int>(EBENENWAHLEN); ++i)
        connect(zielebenen_[static_cast<std::size_t>(i)], &QCheckBox::toggled, this,
                [this, i] { Check1Klick(i); });
    // Nobody is left who could be unlocked by "Abbrechen".
    connect(info_.get(), &Infoansicht::leer, this, [this] {
        dateiwahl_[0]->setEnabled(true);
        schemalisten_[0]->setEnabled(true);
    });
}

// --- layout ---

QWidget* Uebersicht::schemaspalte(int seite) {
    auto* spalte = new QGroupBox(SEITENNAMEN[static_cast<std::size_t>(seite)]);
    if (seite == 0)
        spalte->setObjectName("Frame1");
    auto* anordnung = new QVBoxLayout(spalte);
    anordnung->addWidget(pfadrahmen(seite));
    anordnung->addWidget(namensrahmen(seite));
    if (seite == 0)
        ebenenrahmen(*spalte, 0, quellebenen_);
    else
        ebenenrahmen(*spalte, ZIELRAHMEN, zielebenen_);
    anordnung->addStretch();
    return spalte;
}

QGroupBox* Uebersicht::pfadrahmen(int seite) {
    const auto i = static_cast<std::size_t>(seite);
    auto* rahmen = new QGroupBox("Pfad");
    const auto wo = mitSeite(seite, rahmen->title());
    rahmen->setAccessibleName(wo);
    if (seite == 0)
        rahmen->setObjectName("Frame2");
    pfadfelder_[i] = benannt(new QLineEdit, feldname("Text1", seite));
    pfadfelder_[i]->setMinimumWidth(FELDBREITE);
    connect(pfadfelder_[i], &QLineEdit::textChanged, pfadfelder_[i],
            [feld = pfadfelder_[i]](const QString& pfad) { feld->setToolTip(hinweistext(pfad)); });
    dateiwahl_[i] = benannt(new QPushButton("..."), feldname("Command2", seite));
    dateiwahl_[i]->setToolTip(DIALOGTITEL);
    pfadfelder_[i]->setAccessibleName(wo + " der Datenbank");
    dateiwahl_[i]->setAccessibleName(wo + " auswählen");
    connect(dateiwahl_[i], &QPushButton::clicked, this, [this, seite] { Command2Klick(seite); });
    auto* zeile = new QHBoxLayout(rahmen);
    zeile->addWidget(pfadfelder_[i], 1);
    zeile->addWidget(dateiwahl_[i]);
    return rahmen;
}

QGroupBox* Uebersicht::namensrahmen(int seite) {
    const auto i = static_cast<std::size_t>(seite);
    auto* rahmen = new QGroupBox("Schema");
    rahmen->setAccessibleName(mitSeite(seite, rahmen->title()));
    if (seite == 0)
        rahmen->setObjectName("Schema");
    schemalisten_[i] = schemaauswahl(feldname("Combo1", seite));
    schemalisten_[i]->setAccessibleName(mitSeite(seite, "Name"));
    connect(schemalisten_[i], &QComboBox::activated, this, [this] { frameEnable(1); });
    auto* zeile = new QHBoxLayout(rahmen);
    zeile->addWidget(schemalisten_[i]);
    return rahmen;
}

template <class Knoepfe>
void Uebersicht::ebenenrahmen(QWidget& spalte, int ersterRahmen, const Knoepfe& knoepfe) {
    int nummer = ersterRahmen;
    for (const auto& [text, ersteEbene] : RAHMEN) {
        auto* rahmen = benannt(new QGroupBox(text), feldname("Frame3", nummer));
        ebenenrahmen_[static_cast<std::size_t>(nummer++)] = rahmen;
        rahmen->setAccessibleName(mitSeite(ersterRahmen == ZIELRAHMEN, text));
        auto* zeile = new QHBoxLayout(rahmen);
        for (std::size_t ebene = 0; ebene < EBENEN; ++ebene) {
            auto* knopf = knoepfe[ersteEbene + ebene];
            knopf->setAccessibleName(rahmen->accessibleName() + ": " + knopf->text());
            zeile->addWidget(knopf, 1);
        }
        spalte.layout()->addWidget(rahmen);
    }
}

QWidget* Uebersicht::knopfzeile() {
    auto* bereich = new QWidget;
    auto* zeile = new QHBoxLayout(bereich);
    zeile->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < static_cast<int>(knoepfe_.size()); ++i) {
        const auto platz = static_cast<std::size_t>(i);
        knoepfe_[platz] = benannt(new QPushButton(KNOPFTEXTE[platz]), feldname("Command1", i));
        knoepfe_[platz]->setToolTip(KNOPFHINWEISE[platz]);
        connect(knoepfe_[platz], &QPushButton::clicked, this,
                [this, i] { mitFehlermeldung(this, FEHLERTITEL, [this, i] { Command1Klick(i); }); });
        if (i == OK)
            zeile->addStretch();
        zeile->addWidget(knoepfe_[platz]);
    }
    return bereich;
}

// --- load and unload ---

void Uebersicht::laden() {
    Option1Klick();
    for (int seite = 0; seite < 2; ++seite)
        pfadSetzen(seite, qt(global_.DatenbankPfad));
    mitFehlermeldung(nullptr, windowTitle(), [this] {
        auto namen = SchemataLesen(global_.DatenbankPfad).SchemaNamen;
        namen.pop_back(); // the spare entry is no name
        QStringList liste;
        for (const auto& name : namen)
            liste << qt(name);
        for (auto* combo : schemalisten_)
            combo->addItems(liste); // the first one is selected by that
    });
}

void Uebersicht::schemaZurueck(const std::string& name) {
    for (auto* liste : schemalisten_)
        if (liste->findText(qt(name), Qt::MatchExactly | Qt::MatchCaseSensitive) < 0)
            liste->addItem(qt(name));
}

void Uebersicht::closeEvent(QCloseEvent* ereignis) {
    for (auto* knopf : knoepfe_)
        knopf->setEnabled(false);
    info_->alleEntladen(); // nobody could close one that stayed by "Abbrechen"
    ereignis->accept();
}

// --- the locks ---

void Uebersicht::frameEnable(const std::int16_t& art) {
    if (art == 0) {
        const bool tasten = istTastenebene(gesetzte(quellebenen_));
        ebenenrahmen_[ZIEL_LINKER_STICK]->setEnabled(!tasten);
        ebenenrahmen_[ZIEL_RECHTER_STICK]->setEnabled(!tasten);
        ebenenrahmen_[ZIEL_BUTTONS]->setEnabled(tasten);
        return;
    }
    for (const auto rahmen : {ZIEL_LINKER_STICK, ZIEL_RECHTER_STICK, ZIEL_BUTTONS})
        ebenenrahmen_[rahmen]->setEnabled(false);
    for (auto* ziel : zielebenen_)
        ziel->setChecked(false); // its click locks others, which the following undoes
    for (auto* knopf : knoepfe_)
        knopf->setEnabled(true);
    for (auto* ziel : zielebenen_)
        ziel->setEnabled(true);
    knoepfe_[OK]->setEnabled(false);
}

void Uebersicht::command1Enable(int art) {
    for (const int knopf : {art == 0 ? WECHSEL : KOPIEREN, LOESCHEN, INFO})
        knoepfe_[static_cast<std::size_t>(knopf)]->setEnabled(false);
}

void Uebersicht::Option1Klick() {
    frameEnable(1);
    for (auto* knopf : knoepfe_)
        knopf->setEnabled(true);
    knoepfe_[OK]->setEnabled(false);
}

// A swap has one target only.
void Uebersicht::Check1Klick(int index) {
    knoepfe_[OK]->setEnabled(true);
    if (!knoepfe_[WECHSEL]->isEnabled())
        return;
    for (std::size_t k = 0; k < zielebenen_.size(); ++k)
        zielebenen_[k]->setEnabled(k == static_cast<std::size_t>(index));
}

// --- files ---

namespace {

/// Where another database is looked for first: among the copies of this one, if there are any.
QString anfangsordner(const QString& ordner) {
    const QFileInfo sicherungen(ordner + "/Sicherungen");
    return sicherungen.isDir() ? sicherungen.filePath() : ordner;
}

} // namespace

void Uebersicht::Command2Klick(int seite) {
    frameEnable(1);
    auto& feld = *pfadfelder_[static_cast<std::size_t>(seite)];
    const QPointer<QFileDialog> dialog =
        new QFileDialog(this, DIALOGTITEL, anfangsordner(QFileInfo(feld.text()).absolutePath()));
    dialog->setObjectName("cdlDateiOeffnen");
    dialog->setNameFilters({DATEIFILTER, JEDE_DATEI});
    dialog->selectNameFilter(JEDE_DATEI); // the program's own databases have another extension
    if (dialog->exec() == QDialog::Accepted && !dialog->selectedFiles().isEmpty())
        pfadSetzen(seite, mitEndung(dialog->selectedFiles().first()));
    delete dialog;
}

/// The end of a long path, with the name of the file, is what stays in sight.
void Uebersicht::pfadSetzen(int seite, const QString& pfad) {
    auto* feld = pfadfelder_[static_cast<std::size_t>(seite)];
    feld->setText(pfad);
    feld->end(false);
}

// --- the buttons ---

void Uebersicht::Command1Klick(int index) {
    dateiwahl_[0]->setEnabled(true);
    schemalisten_[0]->setEnabled(true);
    switch (index) {
    case KOPIEREN:
        frameEnable(0);
        return command1Enable(0);
    case WECHSEL:
        frameEnable(0);
        return command1Enable(1);
    case LOESCHEN:
        return loeschen();
    case INFO:
        return InfoAusgabe();
    case OK:
        return ausfuehren();
    default:
        return abbrechen();
    }
}

/// The program's own database is opened by its own name, whatever name leads to it: what a crash leaves of a
/// change lies beside the name that it was made by, and another hard link would not lead to it.
std::string Uebersicht::pfad(int seite) const {
    const auto gewaehlter = pfadfelder_[static_cast<std::size_t>(seite)]->text().toStdString();
    std::error_code egal; // a file that is not there is told of when it is opened
    return fs::equivalent(gewaehlter, global_.DatenbankPfad, egal) ? global_.DatenbankPfad : gewaehlter;
}

Schemaort Uebersicht::schema(int seite) const {
    return {pfad(seite), schemalisten_[static_cast<std::size_t>(seite)]->currentText().toStdString()};
}

Ebenenort Uebersicht::quelle() const {
    return {schema(0), gesetzte(quellebenen_)};
}

/// Whether one of the first `anzahl` sides names no `Schema`; then a message box says so.
bool Uebersicht::schemaFehlt(int anzahl) {
    for (int seite = 0; seite < anzahl; ++seite)
        if (schema(seite).schemaName.empty()) {
            meldung(this, "Es muß ein Schema erstellt werden", "Kein Schema!", QMessageBox::Information);
            return true;
        }
    return false;
}

void Uebersicht::InfoAusgabe() {
    if (schemaFehlt(1))
        return;
    const auto ort = quelle();
    info_->zeigen(ort.index, ort.schema.schemaName, *this);
    InfoEditor_ = Infoansicht::editorVon(ort.index);
    dateiwahl_[0]->setEnabled(false);
    schemalisten_[0]->setEnabled(false);
    nachVorn(*this);
}

void Uebersicht::ausfuehren() {
    if (schemaFehlt(2))
        return;
    if (knoepfe_[KOPIEREN]->isEnabled())
        kopieren();
    else
        wechseln();
    frameEnable(1);
}

void Uebersicht::abbrechen() {
    editorenEntladen();
    frameEnable(1);
}

void Uebersicht::editorenEntladen() {
    if (InfoEditor_ == InfoEditor::frmJust)
        info_->entladen(InfoEditor::frmJust);
    info_->entladen(InfoEditor_ == InfoEditor::frmJustr ? InfoEditor::frmJustr : InfoEditor::frmJoyKonfic);
}

// --- the work on the tables ---

void Uebersicht::loeschen() {
    if (schemaFehlt(1))
        return;
    const auto ort = quelle();
    rueckgaengigMachbar("Löschen von " + ortsname(ort), [&](Schemaschritt& schritt) {
        Geduld geduld(this);
        LayerLoeschen(
            ort,
            [&](std::string_view text) {
                geduld.ruhen();
                const bool ja = frage(this, qt(text), "");
                geduld.ruhen();
                return ja;
            },
            [&] { return geduld.weiter(); }, &schritt);
    });
}

void Uebersicht::wechseln() {
    const auto gesetztes = std::ranges::find_if(zielebenen_, &QCheckBox::isChecked);
    if (gesetztes == zielebenen_.end())
        return;
    const auto erster = quelle();
    const Ebenenort zweiter{schema(1), static_cast<int>(gesetztes - zielebenen_.begin())};
    const auto name = QString("Wechsel von %1 mit %2").arg(ortsname(erster), ortsname(zweiter));
    rueckgaengigMachbar(name, [&](Schemaschritt& schritt) {
        Geduld geduld(this);
        LayerWechseln(
            erster, zweiter,
            [&](std::string_view text) {
                geduld.ruhen();
                meldung(this, qt(text), "");
            },
            [&] { return geduld.weiter(); }, &schritt);
    });
}

void Uebersicht::kopieren() {
    std::array<bool, EBENENWAHLEN> ziele{};
    for (std::size_t k = 0; k < ziele.size(); ++k)
        ziele[k] = zielebenen_[k]->isChecked();
    const auto von = quelle();
    const auto nach = schema(1);
    const auto name = QString("Kopieren von %1 nach „%2“").arg(ortsname(von), qt(nach.schemaName));
    rueckgaengigMachbar(name, [&](Schemaschritt& schritt) {
        Geduld geduld(this);
        LayerKopieren(
            von, nach, ziele, [&] { return geduld.weiter(); }, &schritt);
    });
}

/// Does `arbeit`, and offers to take back what it has changed, also where it was broken off half way.
template <class Arbeit> void Uebersicht::rueckgaengigMachbar(const QString& name, Arbeit&& arbeit) {
    const auto schritt = std::make_shared<Schemaschritt>();
    const auto merken = qScopeGuard([&] {
        if (!schritt->leer())
            taten_.merken(
                {name, [schritt](const Fortgang& weiter) { schritt->zuruecknehmen(weiter); }, [] {}});
    });
    arbeit(*schritt);
}
