// SPDX-License-Identifier: GPL-3.0-or-later
// What was done to whole `Schema`s and layers and can be taken back, the newest first, as long as the program
// lives; and the button by which a form offers it.
//
// Nothing of it is on the disk: what a crash leaves is what was done last.
#pragma once

#include "store/db/Datenbank.h"

#include <QObject>
#include <QPushButton>
#include <QString>

#include <cstddef>
#include <deque>
#include <functional>

class Tatfolge final : public QObject {
    Q_OBJECT

public:
    static constexpr std::size_t HOECHSTENS = 20; ///< what each holds may be large

    struct Tat {
        QString name;                                       ///< "Löschen von „Rennspiel“"
        std::function<void(const Fortgang&)> zuruecknehmen; ///< throws LaufzeitFehler, and then does nothing
        std::function<void()> danach;                       ///< shows that it has been taken back
    };
    void merken(Tat tat);
    /// What taking back would take back; "" for nothing.
    QString name() const { return taten_.empty() ? QString() : taten_.back().name; }

    /// Takes the newest back. Where that can't be done a box of `form` says why; where others have changed
    /// the same it is not offered any more.
    void zuruecknehmen(QWidget* form);

signals:
    void geaendert();

private:
    std::deque<Tat> taten_;
    bool nimmtZurueck_ = false;
};

/// Out of sight while there is nothing to take back, and keeps its room.
class Tatangebot final : public QPushButton {
public:
    /// `folge` outlives it.
    explicit Tatangebot(Tatfolge& folge);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* ereignis) override;

private:
    void zeigen();
    void beschriften();

    Tatfolge& folge_;
};
