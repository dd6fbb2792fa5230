// SPDX-License-Identifier: GPL-3.0-or-later
// Drops mouse presses that reach a window after it has been hidden.
//
// Qt's xcb plugin (6.4) remembers the window of the last press, forgets it when that window is hidden, but
// not when it is destroyed. A press that was under way while the window went, one from the pad for instance,
// is delivered in between: the next window that hides would then look at one that is no more.
#pragma once

#include <QAbstractNativeEventFilter>

class Geisterklicks final : public QAbstractNativeEventFilter {
public:
    /// True, which ends the event, for the press of a button on a window of this program that is not visible.
    /// Needs the QGuiApplication whose windows are meant.
    bool nativeEventFilter(const QByteArray& art, void* ereignis, qintptr* ergebnis) override;
};
