// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/exchange/Schemadialoge.h"

#include "base/Ebenennamen.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Hinweistext.h"
#include "editors/common/Kurzlabel.h"
#include "editors/exchange/Ebenenvorschau.h"
#include "editors/exchange/Namenszeile.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace {

/// "Ja" as `text`, and "Abbrechen"; the first one only while `name` may be.
QDialogButtonBox* knoepfe(QDialog& dialog, const QString& text) {
    auto* leiste = new QDialogButtonBox;
    auto* ja = leiste->addButton(text, QDialogButtonBox::AcceptRole);
    ja->setObjectName("cmdOk");
    ja->setDefault(true);
    leiste->addButton("Abbrechen", QDialogButtonBox::RejectRole)->setObjectName("cmdAbbrechen");
    QObject::connect(leiste, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(leiste, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    return leiste;
}

void nurMitNamen(const QDialogButtonBox& leiste, const Namenszeile& name) {
    auto* ja = leiste.findChild<QPushButton*>("cmdOk");
    const auto zeigen = [ja, &name] { ja->setEnabled(name.gueltig()); };
    QObject::connect(&name, &Namenszeile::geaendert, ja, zeigen);
    zeigen();
}

QString ebenenworte(const Schemadaten& daten) {
    QStringList worte;
    const auto benutzte = benutzteEbenen(daten);
    for (std::size_t ebene = 0; ebene < EBENEN; ++ebene)
        if (benutzte[ebene])
            worte << EBENENNAMEN[ebene];
    return worte.isEmpty() ? "keine" : worte.join(", ");
}

QString beiwerkworte(const Schemafund& fund) {
    const auto anzahl = fund.bilder.size();
    const QString bilder = anzahl == 0   ? QString("keine Bilder")
                           : anzahl == 1 ? QString("1 Bild")
                                         : QString("%1 Bilder").arg(anzahl);
    const auto regler = fund.daten.achsen ? fund.daten.achsen->find("Schubregler") : Gamepadzeile::iterator();
    const bool mitRegler = fund.daten.achsen && regler != fund.daten.achsen->end() && !regler->second.empty();
    return bilder + (fund.daten.achsen ? ", Achsen" : "") + (mitRegler ? ", Schubregler" : "");
}

} // namespace

// --- a name ---

Namensfrage::Namensfrage(QWidget* eltern, const QString& titel, const QString& text,
                         const std::string& vorschlag, Namenspruefung hindernis)
    : QDialog(eltern), name_(new Namenszeile(std::move(hindernis))) {
    constexpr int BREITE = 420;
    setObjectName("frmNamensfrage");
    setWindowTitle(titel);
    auto* anordnung = new QVBoxLayout(this);
    auto* frage = benannt(new QLabel(einzeiler(text)), "lblFrage");
    frage->setTextFormat(Qt::PlainText);
    frage->setWordWrap(true);
    anordnung->addWidget(frage);
    anordnung->addWidget(name_);
    anordnung->addStretch();
    auto* leiste = knoepfe(*this, titel);
    anordnung->addWidget(leiste);
    name_->setzeName(vorschlag);
    nurMitNamen(*leiste, *name_);
    name_->setFocus();
    resize(BREITE, sizeHint().height());
}

std::string Namensfrage::name() const {
    return name_->name();
}

// --- taking up ---

Aufnahmefrage::Aufnahmefrage(QWidget* eltern, const Schemafund& fund, const std::string& vorschlag,
                             Namenspruefung hindernis)
    : QDialog(eltern), fund_(fund), name_(new Namenszeile(std::move(hindernis))) {
    setObjectName("frmAufnahme");
    setWindowTitle("Schema aufnehmen");
    auto* anordnung = new QVBoxLayout(this);
    anordnung->addWidget(angaben(fund));
    anordnung->addWidget(vorschauen());
    anordnung->addWidget(name_);
    auto* leiste = knoepfe(*this, "Aufnehmen");
    anordnung->addWidget(leiste);
    name_->setzeName(vorschlag);
    nurMitNamen(*leiste, *name_);
    name_->setFocus();
    ebeneZeigen();
}

std::string Aufnahmefrage::name() const {
    return name_->name();
}

QWidget* Aufnahmefrage::angaben(const Schemafund& fund) {
    auto* bereich = new QWidget;
    auto* zeilen = new QFormLayout(bereich);
    zeilen->setContentsMargins(0, 0, 0, 0);
    const auto zeile = [&](const QString& name, const QString& label, const QString& text) {
        auto* wert = kurzlabel(name, einzeiler(text));
        wert->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        wert->setToolTip(hinweistext(text));
        zeilen->addRow(label, wert);
    };
    zeile("lblSchema", "Schema:", qt(fund.name));
    if (!fund.programm.empty())
        zeile("lblProgramm", "Geschrieben von:", qt(fund.programm));
    zeile("lblEbenen", "Benutzte Ebenen:", ebenenworte(fund.daten));
    zeile("lblBeiwerk", "Dazu:", beiwerkworte(fund));
    return bereich;
}

QWidget* Aufnahmefrage::vorschauen() {
    auto* bereich = new QWidget;
    auto* gitter = new QGridLayout(bereich);
    gitter->setContentsMargins(0, 0, 0, 0);
    ebene_ = benannt(new QComboBox, "cboEbene");
    for (const auto* name : EBENENNAMEN)
        ebene_->addItem(name);
    auto* label = new QLabel("Ebene:");
    listeBenennen(*ebene_, *label, "Ebene der Vorschau");
    label->setBuddy(ebene_);
    auto* zeile = new QHBoxLayout;
    zeile->addWidget(label);
    zeile->addWidget(ebene_);
    zeile->addStretch();
    gitter->addLayout(zeile, 0, 0, 1, 2);
    int spalte = 0;
    for (const auto& [seite, name] :
         {std::pair{Stickseite::Links, "Linker Stick"}, std::pair{Stickseite::Rechts, "Rechter Stick"}}) {
        planen_.push_back(benannt(new Ebenenvorschau(seite), feldname("Vorschau", spalte)));
        gitter->addWidget(new QLabel(name), 1, spalte);
        gitter->addWidget(planen_.back(), 2, spalte++);
    }
    connect(ebene_, &QComboBox::currentIndexChanged, this, [this] { ebeneZeigen(); });
    return bereich;
}

void Aufnahmefrage::ebeneZeigen() {
    for (auto* plane : planen_)
        plane->zeigen(fund_, ebene_->currentIndex());
}

// --- another database ---

Datenbankfrage::Datenbankfrage(QWidget* eltern, const QString& datei, const std::vector<std::string>& namen)
    : QDialog(eltern), namen_(namen), liste_(benannt(new QListWidget, "lstSchemata")) {
    constexpr int BREITE = 420;
    setObjectName("frmDatenbankfrage");
    setWindowTitle("Aus Datenbank aufnehmen");
    auto* anordnung = new QVBoxLayout(this);
    auto* frage = benannt(new QLabel("Welche Schemata sollen aufgenommen werden?"), "lblFrage");
    frage->setBuddy(liste_);
    frage->setWordWrap(true);
    anordnung->addWidget(frage);
    auto* pfad = kurzlabel("lblDatei", datei);
    pfad->setToolTip(hinweistext(datei));
    anordnung->addWidget(pfad);
    liste_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    liste_->setAccessibleName("Schemata der Datenbank");
    for (const auto& name : namen)
        liste_->addItem(einzeiler(qt(name)));
    anordnung->addWidget(liste_, 1);
    auto* leiste = knoepfe(*this, "Weiter");
    anordnung->addWidget(leiste);
    auto* weiter = leiste->findChild<QPushButton*>("cmdOk");
    const auto zeigen = [this, weiter] { weiter->setEnabled(!liste_->selectedItems().isEmpty()); };
    connect(liste_, &QListWidget::itemSelectionChanged, this, zeigen);
    connect(liste_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    if (!namen.empty())
        liste_->setCurrentRow(0);
    zeigen();
    liste_->setFocus();
    resize(BREITE, sizeHint().height());
}

std::vector<std::string> Datenbankfrage::gewaehlte() const {
    std::vector<std::string> namen;
    for (int zeile = 0; zeile < liste_->count(); ++zeile)
        if (liste_->item(zeile)->isSelected())
            namen.push_back(namen_[static_cast<std::size_t>(zeile)]);
    return namen;
}
