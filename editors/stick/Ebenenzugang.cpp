// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Ebenenzugang.h"

#include "editors/stick/Stickebene.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>

#include <map>

namespace {

/// A field. It has no widget: its number is all it is.
class Feldzugang final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    Feldzugang(Stickebene* ebene, int nummer) : ebene_(ebene), nummer_(nummer) {}

    bool isValid() const override { return felder() && nummer_ < felder()->feldzahl(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return ebene_ ? ebene_->window()->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(ebene_.data());
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QString text(QAccessible::Text art) const override {
        return art == QAccessible::Name && isValid() ? felder()->feldworte(nummer_) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        if (!isValid())
            return {};
        const auto pixel = ebenenpixel(felder()->feldplatz(nummer_), ebene_->size()).toAlignedRect();
        return {ebene_->mapToGlobal(pixel.topLeft()), pixel.size()};
    }
    QAccessible::State state() const override {
        QAccessible::State stand;
        stand.invalid = !isValid();
        if (stand.invalid)
            return stand;
        stand.focusable = stand.selectable = true;
        stand.selected = felder()->gewaehltesFeld() == nummer_;
        stand.focused = ebene_->hasFocus() && felder()->markiertesFeld() == nummer_;
        stand.invisible = !ebene_->isVisible();
        stand.disabled = !ebene_->isEnabled();
        return stand;
    }

    void* interface_cast(QAccessible::InterfaceType art) override {
        return art == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }
    QStringList actionNames() const override { return {pressAction(), showMenuAction()}; }
    void doAction(const QString& name) override {
        if (!isValid())
            return;
        if (name == pressAction())
            felder()->feldWaehlen(nummer_);
        else if (name == showMenuAction())
            felder()->feldaktionOeffnen(nummer_);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

    int nummer() const { return nummer_; }

private:
    Feldliste* felder() const { return ebene_ ? ebene_->feldliste() : nullptr; }

    const QPointer<Stickebene> ebene_;
    const int nummer_;
};

class Ebenenzugang final : public QAccessibleWidget {
public:
    explicit Ebenenzugang(Stickebene* ebene) : QAccessibleWidget(ebene, QAccessible::List) {}
    ~Ebenenzugang() override {
        for (const auto& [nummer, id] : felder_)
            QAccessible::deleteAccessibleInterface(id);
    }

    int childCount() const override { return feldzahl() + static_cast<int>(controls().size()); }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount())
            return nullptr;
        return index < feldzahl() ? feld(index)
                                  : QAccessible::queryAccessibleInterface(controls()[index - feldzahl()]);
    }
    int indexOfChild(const QAccessibleInterface* kind) const override {
        if (!kind)
            return -1;
        if (const auto* eines = dynamic_cast<const Feldzugang*>(kind))
            return eines->nummer();
        const auto stelle = controls().indexOf(qobject_cast<QWidget*>(kind->object()));
        return stelle < 0 ? -1 : feldzahl() + static_cast<int>(stelle);
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        for (int i = childCount() - 1; i >= 0; --i) // panels lie on fields
            if (auto* eines = child(i); eines && eines->rect().contains(x, y))
                return eines;
        return nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        if (!ebene()->hasFocus())
            return QAccessibleWidget::focusChild();
        const int wo = ebene()->feldliste() ? ebene()->feldliste()->markiertesFeld() : -1;
        return wo < 0 ? nullptr : child(wo);
    }

private:
    Stickebene* ebene() const { return static_cast<Stickebene*>(widget()); }
    int feldzahl() const { return ebene()->feldliste() ? ebene()->feldliste()->feldzahl() : 0; }
    /// What lies on the plane and is more than a part of its picture.
    QWidgetList controls() const {
        QWidgetList gefunden;
        for (auto* kind : ebene()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            if (!kind->isHidden() && !qobject_cast<Ebenenteil*>(kind))
                gefunden.push_back(kind);
        return gefunden;
    }
    QAccessibleInterface* feld(int nummer) const {
        const auto [stelle, neu] = felder_.try_emplace(nummer);
        if (neu)
            stelle->second = QAccessible::registerAccessibleInterface(new Feldzugang(ebene(), nummer));
        return QAccessible::accessibleInterface(stelle->second);
    }

    mutable std::map<int, QAccessible::Id> felder_;
};

QAccessibleInterface* zugangMachen(const QString& klasse, QObject* objekt) {
    auto* ebene = klasse == "Stickebene" ? qobject_cast<Stickebene*>(objekt) : nullptr;
    return ebene ? new Ebenenzugang(ebene) : nullptr;
}

} // namespace

void ebenenzugangEinrichten() {
    QAccessible::installFactory(zugangMachen); // one that is there already is not added again
}
