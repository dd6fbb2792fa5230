// SPDX-License-Identifier: GPL-3.0-or-later
// What a run and its window get beside what they need.
#pragma once

class Laufmitschnitt;
class Sofortbild;
class Streuablage;

/// Each may be null; all outlive the runs.
struct Laufbeigaben {
    Laufmitschnitt* mitschnitt = nullptr; ///< records the runs
    Streuablage* streuablage = nullptr;   ///< keeps where the sticks were
    Sofortbild* sofortbild = nullptr;     ///< draws the window past the toolkit where that would wait
};
