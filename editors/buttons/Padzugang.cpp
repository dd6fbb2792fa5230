// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/buttons/Padzugang.h"

#include "base/Tastennamen.h"
#include "editors/buttons/Padbild.h"
#include "editors/buttons/Padzeichnung.h"
#include "editors/common/Formhilfen.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include <algorithm>

namespace {

/// What stands on the pad. The labels' own names are no help to whoever holds it in the hand.
QString aufdruck(int taste) {
    const auto platz = static_cast<std::size_t>(taste);
    return taste < TASTEN ? qt(LAUFNAMEN[platz])
                          : QString("Steuerkreuz %1").arg(QString(KREUZRICHTUNGEN[platz - TASTEN]).toLower());
}

/// A label: a button of the list.
class Schildzugang final : public QAccessibleWidget {
public:
    explicit Schildzugang(Padschild* schild) : QAccessibleWidget(schild, QAccessible::Button) {}

    QString text(QAccessible::Text art) const override {
        if (art != QAccessible::Name)
            return QAccessibleWidget::text(art);
        const auto belegung = schild().text().trimmed();
        const bool belegt =
            !belegung.isEmpty() && belegung != qt(TASTENBESCHRIFTUNG[static_cast<std::size_t>(taste())]);
        return aufdruck(taste()) + ": " + (belegt ? belegung : "nicht belegt");
    }
    QAccessible::State state() const override {
        auto stand = QAccessibleWidget::state();
        stand.focusable = stand.selectable = true;
        stand.selected = schild().gewaehlt();
        stand.focused = stand.selected && widget()->parentWidget()->hasFocus();
        return stand;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override {
        if (name == pressAction() && widget()->isEnabled())
            emit schild().geklickt();
    }

private:
    Padschild& schild() const { return *static_cast<Padschild*>(widget()); }
    int taste() const { return static_cast<Padbild*>(widget()->parentWidget())->tasteVon(schild()); }
};

/// The picture. Its marks and the drawing say nothing that its labels don't.
class Bildzugang final : public QAccessibleWidget {
public:
    explicit Bildzugang(Padbild* bild) : QAccessibleWidget(bild, QAccessible::List) {}

    int childCount() const override { return Padbild::SCHILDER; }
    // As the arrow keys go.
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= Padbild::SCHILDER)
            return nullptr;
        return QAccessible::queryAccessibleInterface(
            &bild().lblInfo(PLAETZE[static_cast<std::size_t>(index)].taste));
    }
    int indexOfChild(const QAccessibleInterface* kind) const override {
        const auto* schild = kind ? qobject_cast<Padschild*>(kind->object()) : nullptr;
        if (!schild)
            return -1;
        const auto stelle = std::ranges::find(PLAETZE, bild().tasteVon(*schild), &Platz::taste);
        return stelle == PLAETZE.end() ? -1 : static_cast<int>(stelle - PLAETZE.begin());
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        for (int i = 0; i < childCount(); ++i)
            if (auto* eines = child(i); eines->rect().contains(x, y))
                return eines;
        return nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        if (!bild().hasFocus() || bild().gewaehlt() < 0)
            return QAccessibleWidget::focusChild();
        return QAccessible::queryAccessibleInterface(&bild().lblInfo(bild().gewaehlt()));
    }

private:
    Padbild& bild() const { return *static_cast<Padbild*>(widget()); }
};

QAccessibleInterface* zugangMachen(const QString& klasse, QObject* objekt) {
    if (auto* bild = klasse == "Padbild" ? qobject_cast<Padbild*>(objekt) : nullptr)
        return new Bildzugang(bild);
    if (auto* schild = klasse == "Padschild" ? qobject_cast<Padschild*>(objekt) : nullptr)
        return new Schildzugang(schild);
    return nullptr;
}

} // namespace

void padzugangEinrichten() {
    QAccessible::installFactory(zugangMachen); // one that is there already is not added again
}
