// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Qtaufnahme.h"

#include "platform/linux/Schirmpixel.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

void Qtaufnahme::aufnehmen(Empfaenger empfaenger) {
    // The pointer is in the game, on whatever screen that is.
    auto* schirm = QGuiApplication::screenAt(QCursor::pos());
    if (!schirm)
        schirm = QGuiApplication::primaryScreen();
    empfaenger(schirm ? schirmbild(schirm->grabWindow(0).toImage()) : Schirmbild{});
}
