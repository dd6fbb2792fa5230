// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Formstand.h"

#include "editors/common/Tastenfang.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

namespace {

template <class Widget, class Arbeit> void jedesControl(Widget& bereich, Arbeit&& arbeit) {
    for (auto* control : bereich.template findChildren<QWidget*>())
        if (!control->objectName().isEmpty() && !control->objectName().startsWith("qt_"))
            arbeit(*control);
}

void textSetzen(QWidget& control, const QString& text) {
    if (auto* label = qobject_cast<QLabel*>(&control))
        label->setText(text);
    else if (auto* gruppe = qobject_cast<QGroupBox*>(&control))
        gruppe->setTitle(text);
    else if (auto* feld = qobject_cast<QLineEdit*>(&control); feld && !qobject_cast<Tastenfang*>(feld))
        feld->setText(text);
}

// Also the only one of its group that is set can be cleared so.
void anSetzen(QAbstractButton& knopf, bool an) {
    const bool ausschliessend = knopf.autoExclusive();
    knopf.setAutoExclusive(false);
    knopf.setChecked(an);
    knopf.setAutoExclusive(ausschliessend);
}

} // namespace

Formstand::Formstand(std::initializer_list<const QWidget*> bereiche) {
    for (const auto* bereich : bereiche)
        jedesControl(*bereich, [this](const QWidget& control) {
            teile_.insert_or_assign(control.objectName(), teil(control));
        });
}

Formstand::Teil Formstand::teil(const QWidget& control) {
    Teil neuer;
    neuer.frei = !control.testAttribute(Qt::WA_ForceDisabled);
    neuer.verborgen = control.isHidden();
    if (const auto* knopf = qobject_cast<const QAbstractButton*>(&control))
        neuer.an = knopf->isChecked();
    if (const auto* label = qobject_cast<const QLabel*>(&control))
        neuer.text = label->text();
    else if (const auto* gruppe = qobject_cast<const QGroupBox*>(&control))
        neuer.text = gruppe->title();
    else if (const auto* feld = qobject_cast<const QLineEdit*>(&control);
             feld && !qobject_cast<const Tastenfang*>(feld))
        neuer.text = feld->text();
    return neuer;
}

void Formstand::stummAnwenden(std::initializer_list<QWidget*> bereiche) const {
    for (auto* bereich : bereiche)
        jedesControl(*bereich, [this](QWidget& control) {
            const auto stelle = teile_.find(control.objectName());
            if (stelle == teile_.end())
                return;
            const auto& [name, teil] = *stelle;
            const QSignalBlocker stumm(control);
            if (auto* knopf = qobject_cast<QAbstractButton*>(&control); knopf && knopf->isCheckable())
                anSetzen(*knopf, teil.an);
            textSetzen(control, teil.text);
            control.setEnabled(teil.frei);
            control.setVisible(!teil.verborgen);
        });
}

void Formstand::eingeben(QWidget& bereich) const {
    const auto jedes = [&](auto arbeit) {
        jedesControl(bereich, [&](QWidget& control) {
            if (const auto stelle = teile_.find(control.objectName()); stelle != teile_.end())
                arbeit(control, stelle->second);
        });
    };
    // Options first: what is set may write into the boxes.
    jedes([](QWidget& control, const Teil& teil) {
        auto* knopf = qobject_cast<QAbstractButton*>(&control);
        if (knopf && knopf->isCheckable() && (teil.an || !knopf->autoExclusive()))
            knopf->setChecked(teil.an);
    });
    jedes([](QWidget& control, const Teil& teil) { textSetzen(control, teil.text); });
}

QStringList Formstand::andereEingaben(const Formstand& anderer) const {
    QStringList namen;
    for (const auto& [name, teil] : teile_) {
        const auto stelle = anderer.teile_.find(name);
        if (stelle == anderer.teile_.end() || stelle->second.an != teil.an ||
            stelle->second.text != teil.text)
            namen << name;
    }
    return namen;
}

QString Formstand::text(const QString& name) const {
    const auto stelle = teile_.find(name);
    return stelle != teile_.end() ? stelle->second.text : QString();
}
