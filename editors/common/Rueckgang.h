// SPDX-License-Identifier: GPL-3.0-or-later
// How a form offers to undo what is not saved yet: Strg+Z, Strg+Umschalt+Z, and a context menu that names the
// step.
//
// A text field that has something of its own to undo comes first, and a box that catches keys keeps all of
// them.
#pragma once

#include <QObject>

#include <array>
#include <functional>

class QAction;
class QPoint;
class QString;
class QWidget;

enum class Richtung { Zurueck, Vor };

class Rueckgang final : public QObject {
    Q_OBJECT

public:
    /// What the form does for it.
    struct Dienst {
        std::function<bool(Richtung)> kann;    ///< whether there is a step
        std::function<QString(Richtung)> name; ///< its name
        std::function<void(Richtung)> gehen;
    };
    /// `form` has all its fields.
    Rueckgang(QWidget& form, Dienst dienst);

    bool eventFilter(QObject* objekt, QEvent* ereignis) override;

signals:
    /// A text field lost the focus: what is typed in it now is one step.
    void feldVerlassen();

private:
    void menueZeigen(const QPoint& ort);

    QWidget& form_;
    const Dienst dienst_;
    std::array<QAction*, 2> taten_{};
};
