// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps message boxes on the screen, whatever stands in them.
#pragma once

class QMessageBox;

/// Comes before `box` is shown. Where its text would make it larger than the screen, the middle of the text
/// goes, with dots in its place: what a box is about stands at the beginning, what it asks at the end.
void aufDemSchirmHalten(QMessageBox& box);
