// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/exchange/Weitergabe.h"

#include "base/LaufzeitFehler.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Geduld.h"
#include "editors/exchange/Schemadialoge.h"
#include "editors/exchange/Schemafund.h"
#include "engine/run/GobalVariable.h"
#include "store/schema/Schemauebernahme.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>

#include <algorithm>
#include <new>
#include <utility>

namespace {

constexpr const char* SCHEMAFILTER = "Schemata (*.schema)";
constexpr const char* DATENBANKFILTER = "Datenbanken (*.twk)";
constexpr const char* JEDE_DATEI = "Alle Dateien (*)";

/// The name of a file for a `Schema`: what a folder can't hold, or other systems can't, becomes "-".
QString dateiname(const std::string& schema) {
    auto name = qt(schema);
    for (auto& zeichen : name)
        if (zeichen.unicode() < u' ' || QString("/\\:*?\"<>|").contains(zeichen))
            zeichen = '-';
    constexpr int HOECHSTENS = 200; // bytes; a folder takes 255, and more stands behind while it is written
    while (name.toUtf8().size() > HOECHSTENS)
        name.chop(name.back().isLowSurrogate() ? 2 : 1);
    return (name.startsWith('.') ? "_" + name : name) + qt(SCHEMAENDUNG);
}

QString zeilen(const std::vector<std::string>& namen) {
    QStringList alle;
    for (const auto& name : namen)
        alle << einzeiler(qt(name));
    return alle.join(", ");
}

} // namespace

Weitergabe::Weitergabe(Umfeld umfeld)
    : QObject(&umfeld.form), umfeld_(std::move(umfeld)), ordner_(QDir::homePath()) {}

void Weitergabe::tun(Schematat tat) {
    if (umfeld_.laeuft()) {
        meldung(&umfeld_.form, "Solange ein Schema läuft, geht das nicht. Stoppen Sie es zuerst.",
                "Game-Pad-Konfic", QMessageBox::Information);
        return;
    }
    const auto name = umfeld_.global.Schemaauswahl; // a copy: the list may go on meanwhile
    switch (tat) {
    case Schematat::Weitergeben:
        return weitergeben(name);
    case Schematat::Aufnehmen:
        return aufnehmen();
    case Schematat::AusDatenbank:
        return ausDatenbank();
    case Schematat::Umbenennen:
        return umbenennen(name);
    case Schematat::Verdoppeln:
        return verdoppeln(name);
    }
}

void Weitergabe::aufraeumen() const {
    beiwerkAufraeumen(platz());
}

Schemaplatz Weitergabe::platz() const {
    return {umfeld_.global.DatenbankPfad, umfeld_.global.BilderPfad, umfeld_.gamepadXml};
}

/// Does something, which asks whether to go on where it takes long; an error is told behind `was`, without a
/// number: it is about what the user has chosen. What the user breaks off needs no word.
template <class Arbeit> bool Weitergabe::gelungen(const QString& was, Arbeit&& arbeit) {
    QString grund;
    try {
        Geduld geduld(&umfeld_.form);
        arbeit([&] { return geduld.weiter(); });
        return true;
    } catch (const LaufzeitFehler& fehler) {
        if (fehler.nummer() == Fehlernummer::Abgebrochen)
            return false;
        grund = QString::fromUtf8(fehler.what());
    } catch (const std::bad_alloc&) {
        grund = "Der Speicher reicht nicht.";
    }
    meldung(&umfeld_.form, was + "\n\n" + einzeiler(grund), "Game-Pad-Konfic", QMessageBox::Warning);
    return false;
}

/// What is wrong with a new name. Two that differ only in how their letters are put together look the same in
/// the list; the store compares them byte by byte.
std::string Weitergabe::hindernis(const std::string& name, const std::string& ausser) const {
    auto grund = namenshindernis(platz(), name, ausser);
    if (!grund.empty())
        return grund;
    const auto aussehen = [](const std::string& eines) {
        return qt(eines).normalized(QString::NormalizationForm_KC).toCaseFolded();
    };
    for (const auto& anderer : schemataIn(platz().datenbankPfad))
        if (anderer != ausser && aussehen(anderer) == aussehen(name))
            return "Ein Schema, dessen Name genauso aussieht, gibt es schon.";
    return "";
}

/// What is handed on or doubled is what is saved; an open editor may show more than that.
bool Weitergabe::wieGespeichert(const std::string& name, const QString& titel) {
    const auto fenster = umfeld_.ungespeichert(name);
    return fenster.isEmpty() ||
           frage(
               &umfeld_.form,
               QString(
                   "Nicht gespeichert ist, was Sie hier geändert haben: %1.\nSoll das Schema „%2“ ohne diese "
                   "Änderungen genommen werden?")
                   .arg(fenster.join(", "), einzeiler(qt(name))),
               titel);
}

// --- handing on ---

void Weitergabe::weitergeben(const std::string& name) {
    const auto was = QString("Das Schema „%1“ lässt sich nicht weitergeben.").arg(einzeiler(qt(name)));
    Schemapackung packung;
    const auto packen = [&](const Fortgang& weiter) {
        packung = schemaPacken(platz(), name, umfeld_.programm, weiter);
    };
    if (!wieGespeichert(name, "Schema weitergeben") || !gelungen(was, packen))
        return;
    const auto pfad = dateiBenennen(name);
    const auto schreiben = [&](const Fortgang&) { schemadateiSchreiben(pfad.toStdString(), packung.paket); };
    if (pfad.isEmpty() || !gelungen(was, schreiben))
        return;
    auto text =
        QString("Das Schema „%1“ steht jetzt in der Datei\n%2").arg(einzeiler(qt(name)), einzeiler(pfad));
    if (!packung.unlesbareBilder.empty())
        text += "\n\nOhne diese Bilder, die sich nicht lesen lassen: " + zeilen(packung.unlesbareBilder);
    meldung(&umfeld_.form, text, "Schema weitergeben", QMessageBox::Information);
}

// The dialog goes with its form, which may close while it is open.
QString Weitergabe::gewaehlt(const QPointer<QFileDialog>& dialog) {
    QString pfad;
    if (dialog->exec() == QDialog::Accepted && dialog && !dialog->selectedFiles().isEmpty())
        pfad = dialog->selectedFiles().first();
    delete dialog;
    if (!pfad.isEmpty())
        ordner_ = QFileInfo(pfad).absolutePath();
    return pfad;
}

QString Weitergabe::dateiBenennen(const std::string& name) {
    auto* dialog = new QFileDialog(&umfeld_.form, "Schema weitergeben", ordner_, SCHEMAFILTER);
    dialog->setObjectName("cdlSchemaWeitergeben");
    dialog->setAcceptMode(QFileDialog::AcceptSave); // asks before it replaces a file
    dialog->setDefaultSuffix(qt(SCHEMAENDUNG.substr(1)));
    dialog->selectFile(dateiname(name));
    return gewaehlt(dialog);
}

// --- taking up ---

QString Weitergabe::dateiWaehlen(const QString& titel, const QString& filter, const QString& ordner) {
    auto* dialog = new QFileDialog(&umfeld_.form, titel, ordner);
    dialog->setObjectName("cdlSchemaAufnehmen");
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters({filter, JEDE_DATEI});
    return gewaehlt(dialog);
}

void Weitergabe::aufnehmen() {
    if (const auto pfad = dateiWaehlen("Schema aufnehmen", SCHEMAFILTER, ordner_); !pfad.isEmpty())
        dateiAufnehmen(pfad.toStdString());
}

void Weitergabe::dateiAufnehmen(const std::string& pfad) {
    if (umfeld_.laeuft())
        return tun(Schematat::Aufnehmen); // which says why not
    Schemafund fund;
    const auto was = QString("Die Datei „%1“ lässt sich nicht aufnehmen.").arg(einzeiler(qt(pfad)));
    if (gelungen(was, [&](const Fortgang& weiter) { fund = fundInDatei(pfad, weiter); }))
        vorlegen(fund);
}

void Weitergabe::ausDatenbank() {
    const auto pfad = dateiWaehlen("Aus Datenbank aufnehmen", DATENBANKFILTER, ordner_);
    if (pfad.isEmpty())
        return;
    const auto quelle = platzNeben(pfad.toStdString());
    std::vector<std::string> namen;
    const auto was = QString("Aus der Datei „%1“ lässt sich nichts aufnehmen.").arg(einzeiler(pfad));
    if (!gelungen(was, [&](const Fortgang&) { namen = schemataIn(quelle.datenbankPfad); }))
        return;
    if (namen.empty()) {
        meldung(&umfeld_.form, was + "\n\nSie hat kein Schema.", "Aus Datenbank aufnehmen",
                QMessageBox::Information);
        return;
    }
    const QPointer<Datenbankfrage> dialog = new Datenbankfrage(&umfeld_.form, pfad, namen);
    const bool ja = dialog->exec() == QDialog::Accepted && dialog;
    const auto gewaehlte = ja ? dialog->gewaehlte() : std::vector<std::string>();
    delete dialog;
    for (const auto& name : gewaehlte) {
        Schemafund fund;
        const auto wasNicht = QString("Das Schema „%1“ lässt sich nicht aufnehmen.").arg(einzeiler(qt(name)));
        const auto lesen = [&](const Fortgang& weiter) { fund = fundInDatenbank(quelle, name, weiter); };
        if (gelungen(wasNicht, lesen) && !vorlegen(fund))
            return; // "Abbrechen" means all that would follow, too
    }
}

/// Shows what was found and takes it up; false where the user did not want that.
bool Weitergabe::vorlegen(const Schemafund& fund) {
    const auto wohin = platz();
    std::string vorschlag = fund.name;
    const auto was = QString("Das Schema „%1“ lässt sich nicht aufnehmen.").arg(einzeiler(qt(fund.name)));
    if (!gelungen(was, [&](const Fortgang&) { vorschlag = freierName(wohin, fund.name); }))
        return false;
    const QPointer<Aufnahmefrage> dialog = new Aufnahmefrage(
        &umfeld_.form, fund, vorschlag, [this](const std::string& name) { return hindernis(name); });
    const bool ja = dialog->exec() == QDialog::Accepted && dialog;
    const auto name = ja ? dialog->name() : std::string();
    delete dialog;
    if (ja && gelungen(was, [&](const Fortgang& weiter) { fundAufnehmen(wohin, name, fund, weiter); }))
        emit aufgenommen(name);
    return ja;
}

// --- renaming, doubling ---

void Weitergabe::umbenennen(const std::string& alt) {
    const auto wohin = platz();
    if (const auto grund = umfeld_.umbenennenHindert(alt); !grund.isEmpty()) {
        meldung(&umfeld_.form, grund, "Umbenennen", QMessageBox::Information);
        return;
    }
    const QPointer<Namensfrage> dialog =
        new Namensfrage(&umfeld_.form, "Umbenennen", QString("Wie soll das Schema „%1“ heißen?").arg(qt(alt)),
                        alt, [&](const std::string& name) { return hindernis(name, alt); });
    const bool ja = dialog->exec() == QDialog::Accepted && dialog;
    const auto neu = ja ? dialog->name() : std::string();
    delete dialog;
    const auto was = QString("Das Schema „%1“ lässt sich nicht umbenennen.").arg(einzeiler(qt(alt)));
    if (ja && gelungen(was, [&](const Fortgang&) { schemaUmbenennen(wohin, alt, neu); }))
        emit umbenannt(alt, neu);
}

void Weitergabe::verdoppeln(const std::string& von) {
    const auto wohin = platz();
    const auto was = QString("Das Schema „%1“ lässt sich nicht verdoppeln.").arg(einzeiler(qt(von)));
    std::string vorschlag = von;
    const auto vorschlagen = [&](const Fortgang&) { vorschlag = freierName(wohin, von); };
    if (!wieGespeichert(von, "Verdoppeln") || !gelungen(was, vorschlagen))
        return;
    const QPointer<Namensfrage> dialog = new Namensfrage(
        &umfeld_.form, "Verdoppeln", QString("Wie soll das Doppel des Schemas „%1“ heißen?").arg(qt(von)),
        vorschlag, [this](const std::string& name) { return hindernis(name); });
    const bool ja = dialog->exec() == QDialog::Accepted && dialog;
    const auto neu = ja ? dialog->name() : std::string();
    delete dialog;
    if (ja && gelungen(was, [&](const Fortgang&) { schemaVerdoppeln(wohin, von, neu); }))
        emit aufgenommen(neu);
}
