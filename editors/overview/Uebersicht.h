// SPDX-License-Identifier: GPL-3.0-or-later
// The overview: picks a layer of a `Schema` and deletes it, shows it in its editor, or copies or swaps it to
// a layer of a second `Schema`, which may lie in another database file.
//
// The buttons lock each other. "Kopieren" and "Wechsel" only set the operation up: the one that stays enabled
// is the one that "OK" carries out. The lists show the `Schema`s of the program's own database, whatever the
// paths say, so the name of one that lies elsewhere may be typed.
#pragma once

#include "editors/overview/Infoansicht.h"
#include "store/schema/UebersichtAktion.h"

#include <QWidget>

#include <array>
#include <cstdint>
#include <memory>
#include <string>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class Tatfolge;

class Uebersicht final : public QWidget {
    Q_OBJECT

public:
    Uebersicht(const GobalVariable& global, std::unique_ptr<Infoansicht> info, Tatfolge& taten);

    /// Load of the form. A database that can't be read gives one message box and empty lists.
    void laden();

    /// Shows the source layer in its editor. Throws LaufzeitFehler.
    void InfoAusgabe();
    /// Locks the operations that were not chosen: "Kopieren" stays with 0, "Wechsel" with all else.
    void command1Enable(int art);
    /// With 0 opens the targets that fit the source; with all else nothing is set up any more.
    void frameEnable(const std::int16_t& art);

    /// A `Schema` that was deleted is there again: the lists have it.
    void schemaZurueck(const std::string& name);

    /// Closes what shows a `Schema` that was deleted.
    void schemaVergessen(const std::string& name) { info_->schemaVergessen(name); }

protected:
    void closeEvent(QCloseEvent* ereignis) override;

private:
    QWidget* schemaspalte(int seite);
    QGroupBox* pfadrahmen(int seite);
    QGroupBox* namensrahmen(int seite);
    template <class Knoepfe> void ebenenrahmen(QWidget& spalte, int ersterRahmen, const Knoepfe& knoepfe);
    QWidget* knopfzeile();

    void Option1Klick();
    void Check1Klick(int index);
    void Command2Klick(int seite);
    void Command1Klick(int index);
    void ausfuehren();
    void abbrechen();
    void editorenEntladen();
    void pfadSetzen(int seite, const QString& pfad);
    bool schemaFehlt(int anzahl);
    void loeschen();
    void wechseln();
    void kopieren();

    std::string pfad(int seite) const;
    Schemaort schema(int seite) const;
    Ebenenort quelle() const;
    template <class Arbeit> void rueckgaengigMachbar(const QString& name, Arbeit&& arbeit);

    const GobalVariable& global_;
    std::unique_ptr<Infoansicht> info_;
    Tatfolge& taten_;
    InfoEditor InfoEditor_ = InfoEditor::Keiner;

    std::array<QLineEdit*, 2> pfadfelder_{};
    std::array<QPushButton*, 2> dateiwahl_{};
    std::array<QComboBox*, 2> schemalisten_{};
    std::array<QRadioButton*, EBENENWAHLEN> quellebenen_{};
    std::array<QCheckBox*, EBENENWAHLEN> zielebenen_{};
    std::array<QGroupBox*, 6> ebenenrahmen_{};
    std::array<QPushButton*, 6> knoepfe_{};
};
