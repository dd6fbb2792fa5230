// SPDX-License-Identifier: GPL-3.0-or-later
// What the forms are to somebody who can't see them: every control that takes the focus has a name, and no
// two of a form have the same.
#include "editors/common/Formhilfen.h"
#include "tests/editors/common/Formgang.h"

#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>

#include <map>

namespace {

using Befund = std::vector<std::string>;

// A list says what is chosen in it for a name: what it is, is asked of its label.
QString zugangsname(QWidget& control) {
    auto* zugang = QAccessible::queryAccessibleInterface(&control);
    if (!zugang)
        return {};
    if (qobject_cast<QComboBox*>(&control))
        for (const auto& [label, art] : zugang->relations(QAccessible::Label))
            if (art & QAccessible::Label)
                return label->text(QAccessible::Name).trimmed() + " (Liste)";
    return zugang->text(QAccessible::Name).trimmed();
}

/// Whether it is a part of another control, which the toolkit has made: the box of a list, say.
bool istTeil(const QWidget& control) {
    for (const auto* eltern = control.parentWidget(); eltern; eltern = eltern->parentWidget())
        if (qobject_cast<const QComboBox*>(eltern) || qobject_cast<const QAbstractSpinBox*>(eltern))
            return true;
    const auto* rollt = qobject_cast<const QAbstractScrollArea*>(control.parentWidget());
    return control.objectName().startsWith("qt_") || rollt;
}

/// Controls that take the focus, by any way, and frames; the hidden ones, too, as they may come.
std::vector<QWidget*> benannteControls(QWidget& form) {
    std::vector<QWidget*> gefunden;
    for (auto* control : form.findChildren<QWidget*>()) {
        const bool nimmtFokus = control->focusPolicy() != Qt::NoFocus || control->focusProxy();
        if (control->window() == &form && !istTeil(*control) &&
            (nimmtFokus || qobject_cast<QGroupBox*>(control)))
            gefunden.push_back(control);
    }
    return gefunden;
}

/// What is wrong with the names of a form.
Befund befund(QWidget& form) {
    Befund fehler;
    std::map<QString, QString> wer;
    for (auto* control : benannteControls(form)) {
        const auto name = zugangsname(*control);
        const auto [stelle, neu] = wer.try_emplace(name, control->objectName());
        if (name.isEmpty())
            fehler.push_back("no name: " + control->objectName().toStdString());
        else if (!neu)
            fehler.push_back("twice: " + name.toStdString() + ": " + stelle->second.toStdString() + ", " +
                             control->objectName().toStdString());
    }
    return fehler;
}

} // namespace

TEST_F(Formgang, JedesControlMitFokusHatEinenNamenFuerSichAllein) {
    std::size_t besuche = 0;
    gehen([&](const std::string& zustand, QWidget& form) {
        ++besuche;
        EXPECT_EQ(befund(form), Befund{}) << zustand;
        EXPECT_GT(benannteControls(form).size(), 2U) << zustand;
    });
    EXPECT_EQ(besuche, 39U);
}

TEST_F(Formgang, DerBefundFindetNamenloseUndGleiche) {
    QWidget form;
    auto* ohne = benannt(new QLineEdit(&form), "ohne");
    for (const auto& name : {"eins", "zwei"})
        benannt(new QPushButton("Weiter", &form), name);
    EXPECT_EQ(befund(form), (Befund{"no name: ohne", "twice: Weiter: eins, zwei"}));
    ohne->setAccessibleName("Pfad");
    form.findChild<QPushButton*>("zwei")->setText("Zurück");
    EXPECT_EQ(befund(form), Befund{});
}
