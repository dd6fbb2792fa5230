// SPDX-License-Identifier: GPL-3.0-or-later
// How windows find their place on the screen, come to the front and go, the same way for all of them.
//
// How wide the frame of a window is, is known when it stands on the screen, not before: until then it counts
// as that of the windows that do. Under Wayland a window is not told where it is nor how much of the screen
// panels take, and can't be placed: there a reserve is kept, and the rest is the compositor's.
#pragma once

#include <QMargins>
#include <QSize>

#include <memory>

class QWidget;

/// What frame and panels take of the screen at each side of a window, as far as that is known.
QMargins fensterrahmen(const QWidget& form);

/// How large the content of a window may be on its screen.
QSize fensterplatz(const QWidget& form);

/// Places a form that is not on the screen yet: beside the window that opens it, which is the active one or
/// `oeffner`, clear of `weichend`, which goes out of sight, and of all others where there is room for it. One
/// that is larger than the screen is made smaller, its content rolling where it can't be smaller; once more
/// when its frame is known.
void danebenStellen(QWidget& form, const QWidget* oeffner = nullptr, const QWidget* weichend = nullptr);

/// Brings a form that stands on the screen wholly onto it, after it has changed its size; makes it smaller as
/// danebenStellen does.
void hereinholen(QWidget& form);

/// Shows a form, also one that is minimized, before all others, and gives it the focus. One that comes for
/// the first time is placed, as if `weichend` were gone already.
void nachVorn(QWidget& form, const QWidget* weichend = nullptr);

/// Closes a form whose owner lets go of it. It tells nobody, and goes only when the event loop runs again:
/// its own close event may be what brought us here. What it does at closing has happened by then.
struct SpaeterLoeschen {
    void operator()(QWidget* form) const;
};

/// Owns a form until it is closed.
template <class Form> using Formbesitz = std::unique_ptr<Form, SpaeterLoeschen>;
