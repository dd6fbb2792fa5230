// SPDX-License-Identifier: GPL-3.0-or-later
// The part of a run's window that tells what is: the layer in force, large, and below it what is held.
#pragma once

#include "editors/run/Haltebericht.h"

#include <QWidget>

#include <array>
#include <vector>

class Kurzlabel;
class QLabel;
class Sofortschrift;

class Standanzeige final : public QWidget {
    Q_OBJECT

public:
    static constexpr int ZEILEN = 6;

    /// `neben` stands beside the layer. What changes is written by `schrift`.
    Standanzeige(QWidget* neben, Sofortschrift& schrift);

    /// Shows a layer, 0 to 2, and lines; of more than it has room for it tells how many are missing. Writes
    /// only what differs from what it shows.
    void zeigen(int ebene, const std::vector<Haltezeile>& zeilen);

private:
    Sofortschrift& schrift_;
    QLabel* ebene_;
    std::array<Kurzlabel*, ZEILEN> zeilen_{};
};
