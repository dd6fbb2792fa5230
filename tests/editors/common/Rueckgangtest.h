// SPDX-License-Identifier: GPL-3.0-or-later
// The undo of a form in the hands of a test: its keys, and what its context menu says.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTimer>
#include <QtTest/QTest>

#include <string>
#include <vector>

/// Presses Strg+Z in whatever holds the focus of the window, with Umschalt where `vor`.
inline void rueckgangstaste(QWidget& form, bool vor = false) {
    form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    auto* ziel = form.focusWidget() ? form.focusWidget() : &form;
    QTest::keyClick(ziel, Qt::Key_Z, vor ? Qt::ControlModifier | Qt::ShiftModifier : Qt::ControlModifier);
}

/// Opens the context menu at `wo` and gives its lines, in brackets those that can't be chosen; triggers the
/// one of index `waehlen`.
inline std::vector<std::string> rueckgangsmenue(QWidget& wo, int waehlen = -1) {
    std::vector<std::string> zeilen;
    QTimer::singleShot(0, &wo, [&] {
        auto* menue = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menue)
            return;
        for (const auto* tat : menue->actions())
            zeilen.push_back(tat->isEnabled() ? tat->text().toStdString()
                                              : "(" + tat->text().toStdString() + ")");
        if (waehlen >= 0) {
            menue->setActiveAction(menue->actions().at(waehlen));
            QTest::keyClick(menue, Qt::Key_Return);
        } else {
            menue->close();
        }
    });
    QContextMenuEvent ereignis(QContextMenuEvent::Mouse, {5, 5}, wo.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&wo, &ereignis);
    return zeilen;
}
