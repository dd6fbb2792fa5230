// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Fenster.h"

#include <QWidget>

void nachVorn(QWidget& form) {
    form.setWindowState(form.windowState() & ~Qt::WindowMinimized);
    form.show();
    form.raise();
    form.activateWindow();
}

void SpaeterLoeschen::operator()(QWidget* form) const {
    form->disconnect();
    form->close();
    form->deleteLater();
}
