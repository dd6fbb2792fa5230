// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Hilfe.h"

#include "editors/common/Formhilfen.h"
#include "editors/common/Hilfekapitel.h"
#include "engine/run/GobalVariable.h"
#include "platform/Prozess.h"

#include <QApplication>
#include <QFileDialog>
#include <QKeyEvent>

#include <algorithm>

namespace {

bool hilfetaste(const QEvent& ereignis) {
    if (ereignis.type() != QEvent::KeyPress)
        return false;
    const auto& taste = static_cast<const QKeyEvent&>(ereignis);
    return taste.key() == Qt::Key_F1 && taste.modifiers() == Qt::NoModifier && !taste.isAutoRepeat();
}

} // namespace

Hilfe::Hilfe(const GobalVariable& global, Prozess& prozess) : global_(global), prozess_(prozess) {
    qApp->installEventFilter(this);
}

void Hilfe::seiteOeffnen(QWidget* eltern) {
    pruefen(eltern, prozess_.ShellExecuteA(global_.HilfePfad));
}

void Hilfe::kapitelOeffnen(QWidget* eltern, const QString& anker) {
    pruefen(eltern, prozess_.kapitelOeffnen(global_.HilfePfad, anker.toStdString()));
}

void Hilfe::pruefen(QWidget* eltern, bool geoeffnet) {
    if (!geoeffnet)
        meldung(eltern, QString("Die Hilfe konnte nicht geöffnet werden:\n%1").arg(qt(global_.HilfePfad)),
                "Game-Pad-Konfic", QMessageBox::Warning);
}

QString Hilfe::kapitelVon(const QWidget* control) {
    for (; control; control = control->parentWidget()) {
        const auto stelle = std::ranges::find_if(
            HILFEKAPITEL, [&](const auto& kapitel) { return control->objectName() == kapitel.teil; });
        if (stelle != HILFEKAPITEL.end())
            return stelle->anker;
    }
    return KAPITEL_OHNE_FORM;
}

// A key that no control takes comes to the window in the end; the field of a file dialog takes them all.
bool Hilfe::eventFilter(QObject* objekt, QEvent* ereignis) {
    if (!hilfetaste(*ereignis) || !objekt->isWidgetType())
        return false;
    auto* fenster = static_cast<QWidget*>(objekt)->window();
    if (objekt != fenster && !qobject_cast<QFileDialog*>(fenster))
        return false;
    const auto* fokus = fenster->focusWidget();
    kapitelOeffnen(fenster, kapitelVon(fokus ? fokus : fenster));
    return true;
}
