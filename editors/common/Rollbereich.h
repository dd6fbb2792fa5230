// SPDX-License-Identifier: GPL-3.0-or-later
// A form that is larger than the screen: its content is laid into a scroll area, as it is.
#pragma once

#include <QSize>

class QWidget;

/// Lays the content of a form with a layout into a scroll area that fills it; what was the form's least size
/// is the content's. The form may be as small as it likes then, and is as large as its content, within
/// `platz`.
void rollbarMachen(QWidget& form, QSize platz);

/// The widget that has the form's size and layout: what lies in the scroll area, or else the form itself.
QWidget& forminhalt(QWidget& form);

/// Gives a form with a scroll area the height of its content, within `platz`.
void rollhoeheSetzen(QWidget& form, int platz);
