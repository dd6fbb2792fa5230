// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Rueckgang.h"

#include "editors/common/Tastenfang.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>

#include <cstddef>
#include <utility>

namespace {

struct Eintrag {
    Richtung richtung;
    const char* taste;
    const char* allein; ///< where there is no step
    const char* hinter; ///< the name of one
};
constexpr std::array<Eintrag, 2> EINTRAEGE{
    {{Richtung::Zurueck, "Ctrl+Z", "Rückgängig", "%1 rückgängig"},
     {Richtung::Vor, "Ctrl+Shift+Z", "Wiederherstellen", "%1 wiederherstellen"}}};

/// Whether a field loses its place in the form: not to a menu, or to another window.
bool bleibtNicht(Qt::FocusReason grund) {
    return grund != Qt::ActiveWindowFocusReason && grund != Qt::PopupFocusReason;
}

/// Whether a field would take this key for itself and has nothing to do with it.
bool umsonst(const QLineEdit& feld, const QKeyEvent& taste) {
    if (taste.key() != Qt::Key_Z)
        return false;
    if (taste.modifiers() == Qt::ControlModifier)
        return !feld.isUndoAvailable();
    return taste.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier) && !feld.isRedoAvailable();
}

} // namespace

Rueckgang::Rueckgang(QWidget& form, Dienst dienst) : QObject(&form), form_(form), dienst_(std::move(dienst)) {
    for (std::size_t i = 0; i < EINTRAEGE.size(); ++i) {
        const auto& eintrag = EINTRAEGE[i];
        auto* tat = taten_[i] = new QAction(eintrag.allein, this);
        tat->setObjectName(QString("mnuRueckgang(%1)").arg(i));
        tat->setShortcut(QKeySequence(eintrag.taste));
        connect(tat, &QAction::triggered, this, [this, richtung = eintrag.richtung] {
            if (dienst_.kann(richtung))
                dienst_.gehen(richtung);
        });
        form.addAction(tat);
    }
    form.installEventFilter(this);
    for (auto* feld : form.findChildren<QLineEdit*>())
        if (!qobject_cast<Tastenfang*>(feld))
            feld->installEventFilter(this);
}

bool Rueckgang::eventFilter(QObject* objekt, QEvent* ereignis) {
    if (objekt == &form_) {
        if (ereignis->type() != QEvent::ContextMenu)
            return false;
        menueZeigen(static_cast<QContextMenuEvent&>(*ereignis).globalPos());
        return true;
    }
    if (ereignis->type() == QEvent::FocusOut && bleibtNicht(static_cast<QFocusEvent&>(*ereignis).reason()))
        emit feldVerlassen();
    if (ereignis->type() == QEvent::ShortcutOverride &&
        umsonst(static_cast<QLineEdit&>(*objekt), static_cast<QKeyEvent&>(*ereignis))) {
        ereignis->ignore();
        return true;
    }
    return false;
}

void Rueckgang::menueZeigen(const QPoint& ort) {
    QMenu menue(&form_);
    menue.setObjectName("mnuRueckgang");
    for (std::size_t i = 0; i < EINTRAEGE.size(); ++i) {
        const auto& eintrag = EINTRAEGE[i];
        const bool kann = dienst_.kann(eintrag.richtung);
        auto name = kann ? dienst_.name(eintrag.richtung) : QString();
        taten_[i]->setText(kann ? QString(eintrag.hinter).arg(name.replace('&', "&&")) : eintrag.allein);
        taten_[i]->setEnabled(kann);
        menue.addAction(taten_[i]);
    }
    menue.exec(ort);
    for (auto* tat : taten_)
        tat->setEnabled(true); // whether there is a step is asked at each key anew
}
