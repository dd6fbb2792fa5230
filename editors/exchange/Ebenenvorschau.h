// SPDX-License-Identifier: GPL-3.0-or-later
// A plane of a stick as its editor would show it, small: picture, lines, symbols. It only shows.
#pragma once

#include "base/Stickseite.h"
#include "editors/stick/Zonenbild.h"

#include <QImage>
#include <QWidget>

#include <vector>

struct Schemafund;

class Ebenenvorschau final : public QWidget {
    Q_OBJECT

public:
    explicit Ebenenvorschau(Stickseite seite);

    /// Shows a layer, 0 to 2.
    void zeigen(const Schemafund& fund, int ebene);

    /// The symbols that are shown.
    const Zonenbild& symbole() const { return symbole_; }

protected:
    void paintEvent(QPaintEvent* ereignis) override;

private:
    const Stickseite seite_;
    QImage bild_; ///< no larger than it is shown
    std::vector<int> senkrechte_;
    std::vector<int> waagrechte_;
    Zonenbild symbole_;
};
