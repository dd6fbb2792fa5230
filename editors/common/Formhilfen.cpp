// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Formhilfen.h"

#include "editors/common/Boxmass.h"
#include "editors/common/Fenster.h"
#include "editors/common/Namenshinweis.h"
#include "editors/common/Rollbereich.h"

#include <QComboBox>
#include <QCompleter>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>

#include <algorithm>

QString einzeiler(QString text) {
    constexpr qsizetype ANFANG = 300;
    constexpr qsizetype ENDE = 100;
    text.replace(QRegularExpression("\\s"), " ");
    if (text.size() <= ANFANG + ENDE)
        return text;
    return text.left(ANFANG) + "…" + text.right(ENDE);
}

QString feldname(std::string_view name, int index) {
    return QString("%1(%2)").arg(qt(name)).arg(index);
}

void platzBehalten(QWidget& control) {
    auto regel = control.sizePolicy();
    regel.setRetainSizeWhenHidden(true);
    control.setSizePolicy(regel);
}

QComboBox* schemaauswahl(const QString& name) {
    auto* combo = benannt(new QComboBox, name);
    combo->setEditable(true);
    // What is typed is not completed, not put into the list, and Enter and leaving the field do not choose an
    // entry that looks like it.
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setCompleter(nullptr);
    QObject::disconnect(combo->lineEdit(), &QLineEdit::returnPressed, combo, nullptr);
    QObject::disconnect(combo->lineEdit(), &QLineEdit::editingFinished, combo, nullptr);
    // A long name must not ask for a wider form, nor five hundred of them be measured.
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(20);
    // One that is chosen, be it anew, and longer than the field shows its beginning.
    const auto anfangZeigen = [feld = combo->lineEdit()] { feld->home(false); };
    QObject::connect(combo, &QComboBox::currentIndexChanged, combo->lineEdit(), anfangZeigen);
    QObject::connect(combo, &QComboBox::activated, combo->lineEdit(), anfangZeigen);
    langeNamenZeigen(*combo);
    return combo;
}

void listeBenennen(QComboBox& liste, QLabel& label, const QString& name) {
    liste.setAccessibleName(name);
    label.setAccessibleName(name);
}

void breiteSetzen(QWidget& form, int gewuenscht) {
    form.setFixedWidth(std::max(gewuenscht, form.minimumSizeHint().width()));
}

void hoeheSetzen(QWidget& form, int gewuenscht) {
    auto& inhalt = forminhalt(form);
    if (inhalt.layout())
        inhalt.layout()->activate();
    int noetig = inhalt.minimumSizeHint().height();
    // A text that wraps needs more than it says by itself.
    if (inhalt.layout() && inhalt.layout()->hasHeightForWidth())
        noetig = std::max(noetig, inhalt.layout()->totalMinimumHeightForWidth(inhalt.width()));
    inhalt.setFixedHeight(std::max(gewuenscht, noetig));
    if (form.isVisible())
        hereinholen(form);
}

namespace {

/// Shows a box and gives the button that closed it; nothing else when its parent took it along, as a run that
/// is stopped by an error does with its window.
int gezeigt(const QPointer<QMessageBox>& box) {
    box->setTextFormat(Qt::PlainText); // a name in it may look like markup
    aufDemSchirmHalten(*box);
    const int knopf = box->exec();
    delete box;
    return knopf;
}

} // namespace

void meldung(QWidget* eltern, const QString& text, const QString& titel, QMessageBox::Icon symbol) {
    gezeigt(new QMessageBox(symbol, titel, text, QMessageBox::Ok, eltern));
}

bool frage(QWidget* eltern, const QString& text, const QString& titel, QMessageBox::StandardButton vorgabe) {
    auto* box = new QMessageBox(QMessageBox::NoIcon, titel, text, QMessageBox::Yes | QMessageBox::No, eltern);
    box->setDefaultButton(vorgabe);
    return gezeigt(box) == QMessageBox::Yes;
}

void fehlermeldung(QWidget* eltern, const LaufzeitFehler& fehler, const QString& titel) {
    const auto grund = einzeiler(QString::fromUtf8(fehler.what()));
    meldung(eltern, QString("Laufzeitfehler %1:\n").arg(fehler.zahl()) + grund, titel, QMessageBox::Warning);
}

bool darfSpeichern(QWidget* eltern, const std::string& geladenes, const std::string& gewaehltes) {
    return geladenes == gewaehltes ||
           frage(eltern,
                 QString(
                     "Diese Angaben wurden für das Schema „%1“ geladen, gewählt ist jetzt „%2“.\nSollen sie "
                     "das ersetzen, was für „%2“ gespeichert ist?")
                     .arg(qt(geladenes), qt(gewaehltes)),
                 "", QMessageBox::No);
}
