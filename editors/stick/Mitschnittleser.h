// SPDX-License-Identifier: GPL-3.0-or-later
// Has the last record of a `Schema` played again, for where one of its sticks was.
//
// That happens at most once, when it is first asked for, and beside the event loop. The player is a process
// of its own: what a record makes of it, a stranger's too, can neither hold up nor end the program.
#pragma once

#include "base/Stickseite.h"
#include "editors/common/Nebenarbeit.h"
#include "editors/run/Mitschnittablage.h"
#include "editors/stick/Streuworte.h"
#include "formats/Stickweg.h"

#include <QObject>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>

class Mitschnittleser final : public QObject {
    Q_OBJECT

public:
    using Suche = std::function<std::optional<Mitschnittdatei>()>;
    using Spieler = std::function<std::optional<Stickweg>(const Mitschnittdatei&, const std::atomic<bool>&)>;

    /// Both run on a thread of their own. `suche` finds the record; `spieler` plays it, and gives nothing as
    /// soon as its flag is set.
    Mitschnittleser(Suche suche, Spieler spieler);
    /// Breaks off what is being played.
    ~Mitschnittleser() override;

    /// What is known of the way in a layer. The first call begins to look for a record.
    const Wegprobe& probe(int ebene);

signals:
    /// More is known now.
    void gelesen();

private:
    void suchen();
    void nachspielen(const Mitschnittdatei& datei);

    const Suche suche_;
    const Spieler spieler_;
    const std::shared_ptr<std::atomic<bool>> abbruch_ = std::make_shared<std::atomic<bool>>(false);
    bool begonnen_ = false;
    std::array<std::optional<Wegrechnung>, EBENEN> wege_;
    std::array<Wegprobe, EBENEN> proben_;
    Nebenarbeit arbeit_{nullptr};
};

/// Plays it by the player that lies beside the program.
std::optional<Stickweg> mitschnittNachspielen(Stickseite seite, const Mitschnittdatei& datei,
                                              const std::atomic<bool>& abbruch);
