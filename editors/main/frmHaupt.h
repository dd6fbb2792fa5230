// SPDX-License-Identifier: GPL-3.0-or-later
// The main form: lists the `Schema`s and is the road to everything else.
//
// Its captions are the state of its toggles: `Command1`(5) tells whether a run is on, `Command1`(2) whether a
// name is being typed. While it is, the list is empty and the form short; what the list held comes back with
// the next deletion or start.
#pragma once

#include "base/Stickseite.h"
#include "editors/common/Hilfe.h"
#include "engine/run/GobalVariable.h"
#include "store/files/Sicherungen.h"
#include "store/schema/modLesen.h"

#include <QWidget>

#include <QStringList>

#include <map>
#include <string>
#include <vector>

class Achsendatei;
class Gespeichertzeichen;
class Kurzlabel;
class Laufsteuerung;
class Prozess;
class Schemamenue;
class Tatangebot;
class Tatfolge;
class QComboBox;
class QLineEdit;
class QPushButton;
class QShortcut;
class Zeitgeber;

class frmHaupt final : public QWidget {
    Q_OBJECT

public:
    frmHaupt(GobalVariable& global, Achsendatei& achsendatei, Laufsteuerung& laufsteuerung, Prozess& prozess,
             Zeitgeber& zeitgeber, Tatfolge& taten);

    /// Load of the form: priority, paths, the list. A database that can't be read gives one message box and
    /// an empty list. Whether it could be read.
    bool laden();

    /// The copies of what this form and all others work on.
    Sicherungen sicherungen() const;

    /// Shows for a moment that a form which closes when it saves has saved.
    void gespeichertZeigen();

    /// A `Schema` that was deleted is there again: the list has it.
    void schemaZurueck(const std::string& name);

    /// Reads the list anew and chooses a `Schema` in it.
    void neuLesen(const std::string& schema);

    Hilfe& hilfe() { return hilfe_; }
    /// What is offered for the `Schema` that the list shows.
    Schemamenue& schemamenue() { return *schemamenue_; }

protected:
    void closeEvent(QCloseEvent* ereignis) override;

signals:
    /// At the load of the form: it is known where all lies, and nothing of it has been read.
    void pfadeGesetzt();
    /// "Schema starten" was clicked; the run is loaded next.
    void laufBeginnt();
    /// "Button bearbeiten" was clicked: the button editor is wanted for the current `Schema`.
    void tastwerkGewuenscht();
    /// "Achsen kalibrieren" was clicked.
    void achsenGewuenscht();
    /// "Schubregler" was clicked.
    void schubreglerGewuenscht();
    /// Strg+D was pressed: the overview is wanted.
    void uebersichtGewuenscht();
    /// After "Schema löschen" the database has no `Schema` of this name; whatever the answer was, where it
    /// had none before.
    void schemaGeloescht(const std::string& name);
    /// The deletion of this `Schema` was taken back.
    void schemaZurueckgeholt(const std::string& name);
    /// The form was closed: the program ends.
    void geschlossen();
    /// The editor of a stick is to open for the current `Schema`.
    void stickBearbeiten(Stickseite seite);

private:
    void aufbauen();
    QWidget* kopf();
    QWidget* kurzzeile();
    QWidget* unterteil();
    QWidget* pfadzeile();
    QWidget* fusszeile();
    QPushButton* Command1(int index, const QString& text);
    void volleHoehe(bool voll);

    bool datenbankLesen();
    void hinweisGeben();
    void schemataLesen();
    void erstesWaehlen();
    void waehlen(int zeile);
    void Combo1Klick();
    void Command1Klick(int index);
    void starten();
    void loeschen();
    void loeschenFragen();
    void neu();
    void nameErfragen();
    void nameVerwerfen();
    void vergebeneNamenLesen();
    void nameZeigen();
    QString namenshinweis(const std::string& name) const;
    void nameSpeichern();
    bool nameAnlegen(const QString& name);
    void namenseingabeZeigen(bool an);
    void hauptformZurueck(bool zeigen);

    GobalVariable& global_;
    Achsendatei& achsendatei_;
    Laufsteuerung& laufsteuerung_;
    Prozess& prozess_;
    Tatfolge& taten_;
    Hilfe hilfe_;
    Schemaliste schemata_;
    std::vector<std::string> vergebeneNamen_; ///< while a name is asked for: those that there are
    /// While a name is asked for: what the form showed before.
    struct {
        QStringList liste;
        QString name;
        QString pfad;
    } vorher_;

    QComboBox* schemaauswahl_ = nullptr;
    QLineEdit* programmpfad_ = nullptr;
    QWidget* kurzzeile_ = nullptr;
    Kurzlabel* namenshinweis_ = nullptr;
    QShortcut* verwerfen_ = nullptr;
    Schemamenue* schemamenue_ = nullptr;
    QWidget* unterteil_ = nullptr;
    Gespeichertzeichen* gespeichert_ = nullptr;
    Tatangebot* rueckgaengig_ = nullptr;
    std::map<int, QPushButton*> knoepfe_;
};
