// SPDX-License-Identifier: GPL-3.0-or-later
// Sees to it that each day has its copies of the database and of the axis file, and offers them where a file
// is damaged.
#pragma once

#include "base/LaufzeitFehler.h"
#include "editors/common/Nebenarbeit.h"
#include "store/files/Sicherungen.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>

/// A day as the user's clock has it.
Sicherungstag heutigerTag();

class Sicherungsdienst final : public QObject {
    Q_OBJECT

public:
    /// `takt` is how often it looks whether a new day has begun.
    explicit Sicherungsdienst(std::function<Sicherungstag()> heute = heutigerTag,
                              std::chrono::milliseconds takt = std::chrono::minutes{1});

    /// From now on copies are made, beside the event loop: now, before anything is written, and when a new
    /// day begins; a database that is locked then has its copy made later. What can't be laid by is told in a
    /// box, or, while `form` does not show, not at all: a run is on then.
    void beginnen(const Sicherungen& sicherungen, const QWidget& form);
    /// Makes the copies of the day that the clock shows.
    void neuerTag();
    /// Comes back when all is laid by and told.
    void abwarten() { werk_.abwarten(); }

signals:
    /// The database was found to be damaged, and a copy is in its place.
    void zurueckgeholt();

private:
    void erzaehlen(const LaufzeitFehler& fehler);

    std::function<Sicherungstag()> heute_;
    std::optional<Sicherungen> sicherungen_;
    const QWidget* form_ = nullptr;
    QTimer takt_;
    std::optional<Sicherungstag> tag_; ///< the last one whose copies were made, or are told of
    Nebenarbeit werk_{nullptr};
};

/// The database could not be read: one box tells it, and offers the newest good copy where there is one and
/// the file is what is damaged. True when the copy is in its place.
bool datenbankZurueckholen(const Sicherungen& sicherungen, const LaufzeitFehler& fehler);

/// The same for an axis file that is damaged; without a copy nothing is said, since saving tells.
void achsendateiZurueckholen(const Sicherungen& sicherungen);
