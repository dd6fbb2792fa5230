// SPDX-License-Identifier: GPL-3.0-or-later
// How windows come to the front and how they go, the same way for all of them.
#pragma once

#include <memory>

class QWidget;

/// Shows a form, also one that is minimized, before all others, and gives it the focus.
void nachVorn(QWidget& form);

/// Closes a form whose owner lets go of it. It tells nobody, and goes only when the event loop runs again:
/// its own close event may be what brought us here. What it does at closing has happened by then.
struct SpaeterLoeschen {
    void operator()(QWidget* form) const;
};

/// Owns a form until it is closed.
template <class Form> using Formbesitz = std::unique_ptr<Form, SpaeterLoeschen>;
