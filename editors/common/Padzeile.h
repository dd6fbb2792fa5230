// SPDX-License-Identifier: GPL-3.0-or-later
// The line of a form that names the pad: "● NAME", or that there is none. It looks for itself a few times a
// second while it is in sight, and writes only what has changed.
#pragma once

#include "platform/Joystick.h"

#include <QWidget>

#include <optional>

class Kurzlabel;
class QTimer;

class Padzeile final : public QWidget {
    Q_OBJECT

public:
    /// In a run a pad that was there and has gone is missed in other words: its last state still counts.
    enum class Ort { Editor, Lauf };

    explicit Padzeile(Joystick& joystick, Ort ort = Ort::Editor);

protected:
    void showEvent(QShowEvent* ereignis) override;
    void hideEvent(QHideEvent* ereignis) override;

private:
    void nachsehen();
    QString text() const;
    QString hinweis() const;

    Joystick& joystick_;
    const Ort ort_;
    std::optional<Padauskunft> gezeigt_;
    bool warDa_ = false;
    Kurzlabel* zeile_;
    QTimer* takt_;
};
