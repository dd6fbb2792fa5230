// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/exchange/Schemamenue.h"

#include "store/schema/Schemadatei.h"

#include <QAction>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

struct Menuezeile {
    Schematat tat;
    const char* text;
    const char* taste;
    bool brauchtSchema;
};
constexpr std::array<Menuezeile, SCHEMATATEN> ZEILEN{
    {{Schematat::Weitergeben, "Schema weitergeben…", "Ctrl+E", true},
     {Schematat::Aufnehmen, "Schema aufnehmen…", "Ctrl+I", false},
     {Schematat::AusDatenbank, "Aus Datenbank aufnehmen…", "", false},
     {Schematat::Umbenennen, "Umbenennen…", "", true},
     {Schematat::Verdoppeln, "Verdoppeln…", "", true}}};

} // namespace

Schemamenue::Schemamenue(QWidget& form, QComboBox& liste, std::function<bool()> bereit)
    : QObject(&form), form_(form), liste_(liste), bereit_(std::move(bereit)) {
    for (std::size_t i = 0; i < ZEILEN.size(); ++i) {
        auto* tat = taten_[i] = new QAction(ZEILEN[i].text, this);
        tat->setObjectName(QString("mnuSchema(%1)").arg(i));
        tat->setShortcut(QKeySequence(ZEILEN[i].taste));
        connect(tat, &QAction::triggered, this, [this, i] {
            freigeben();
            if (taten_[i]->isEnabled())
                emit gewaehlt(ZEILEN[i].tat);
            for (auto* eine : taten_)
                eine->setEnabled(true); // whether it may be done is asked at each key anew
        });
        form.addAction(tat);
    }
    form.setAcceptDrops(true);
    form.installEventFilter(this);
    liste.installEventFilter(this);
    for (auto* feld : form.findChildren<QLineEdit*>())
        feld->installEventFilter(this);
}

bool Schemamenue::eventFilter(QObject* objekt, QEvent* ereignis) {
    auto& wo = static_cast<QWidget&>(*objekt);
    switch (ereignis->type()) {
    case QEvent::ShortcutOverride: {
        // On X11 text fields take Ctrl+E for the end of the line.
        const auto& taste = static_cast<QKeyEvent&>(*ereignis);
        const auto diese = [&](const QAction* tat) {
            return tat->shortcut() == QKeySequence(taste.keyCombination());
        };
        if (std::ranges::none_of(taten_, diese))
            return false;
        ereignis->ignore();
        return true;
    }
    case QEvent::ContextMenu:
        if (&wo != &liste_ && &wo != liste_.lineEdit())
            return false;
        menueZeigen(wo, static_cast<QContextMenuEvent&>(*ereignis).globalPos());
        return true;
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: {
        auto& ablage = static_cast<QDropEvent&>(*ereignis);
        const auto pfad = schemadatei(*ablage.mimeData());
        if (pfad.isEmpty() || !bereit_())
            return false;
        ablage.setDropAction(Qt::CopyAction);
        ablage.accept();
        // Who let it fall waits until the event is over, and must not wait for a dialog.
        if (ereignis->type() == QEvent::Drop)
            QTimer::singleShot(0, this, [this, pfad] { emit abgelegt(pfad.toStdString()); });
        return true;
    }
    default:
        return false;
    }
}

/// The text field's own menu with what concerns the `Schema` below it.
void Schemamenue::menueZeigen(QWidget& wo, const QPoint& ort) {
    std::unique_ptr<QMenu> menue(&wo == liste_.lineEdit() ? liste_.lineEdit()->createStandardContextMenu()
                                                          : new QMenu(&wo));
    menue->setObjectName("mnuSchema");
    auto* erster = menue->actions().value(0);
    freigeben();
    for (auto* tat : taten_)
        menue->insertAction(erster, tat);
    if (erster)
        menue->insertSeparator(erster);
    menue->exec(ort);
    for (auto* tat : taten_)
        tat->setEnabled(true);
}

void Schemamenue::freigeben() {
    for (std::size_t i = 0; i < ZEILEN.size(); ++i)
        taten_[i]->setEnabled(bereit_() && (!ZEILEN[i].brauchtSchema || liste_.count() > 0));
}

/// The one file of a Schema that is carried; "" for anything else.
QString Schemamenue::schemadatei(const QMimeData& daten) {
    const auto adressen = daten.urls();
    if (adressen.size() != 1 || !adressen.first().isLocalFile())
        return {};
    const auto pfad = adressen.first().toLocalFile();
    return pfad.endsWith(QString::fromUtf8(SCHEMAENDUNG.data(), SCHEMAENDUNG.size()), Qt::CaseInsensitive)
               ? pfad
               : QString();
}
