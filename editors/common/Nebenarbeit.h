// SPDX-License-Identifier: GPL-3.0-or-later
// Does slow work beside the event loop, one piece after the other in the order given.
//
// A picture of a large screen, say, takes longer to read or to write than the program may pause while a
// `Schema` runs.
#pragma once

#include <QObject>
#include <QThreadPool>

#include <functional>

class Nebenarbeit final : public QObject {
    Q_OBJECT

public:
    using Arbeit = std::function<bool()>;
    using Meldung = std::function<void(bool)>;

    explicit Nebenarbeit(QObject* eltern);
    /// Waits for the work that is left; nothing is told any more.
    ~Nebenarbeit() override;

    /// `arbeit` runs on a thread of its own and shares nothing with this one; `fertig` gets its result, false
    /// also for an exception, from the event loop of this thread.
    void auftrag(Arbeit arbeit, Meldung fertig);
    /// Comes back when all is done; it is told later.
    void ausarbeiten();
    /// Comes back when all is done and told.
    void abwarten();

private:
    QThreadPool faden_;
};
