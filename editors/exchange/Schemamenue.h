// SPDX-License-Identifier: GPL-3.0-or-later
// What the list of `Schema`s on the main form offers for the one that it shows: a context menu, keys, and
// files that are dropped on the form.
#pragma once

#include <QObject>

#include <array>
#include <functional>
#include <string>

class QAction;
class QComboBox;
class QEvent;
class QMimeData;
class QWidget;

/// In the order of the menu.
enum class Schematat { Weitergeben, Aufnehmen, AusDatenbank, Umbenennen, Verdoppeln };
inline constexpr std::size_t SCHEMATATEN = 5;

class Schemamenue final : public QObject {
    Q_OBJECT

public:
    /// Serves `form`, all of whose fields let files fall through to it, and the `liste` on it. `bereit` tells
    /// whether something may be done at all; without a `Schema` in the list only taking up makes sense.
    Schemamenue(QWidget& form, QComboBox& liste, std::function<bool()> bereit);

    bool eventFilter(QObject* objekt, QEvent* ereignis) override;

signals:
    void gewaehlt(Schematat tat);
    /// A file that was dropped.
    void abgelegt(const std::string& pfad);

private:
    void menueZeigen(QWidget& wo, const QPoint& ort);
    void freigeben();
    static QString schemadatei(const QMimeData& daten);

    QWidget& form_;
    QComboBox& liste_;
    const std::function<bool()> bereit_;
    std::array<QAction*, SCHEMATATEN> taten_{};
};
