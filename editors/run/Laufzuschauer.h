// SPDX-License-Identifier: GPL-3.0-or-later
// Who looks on at runs and keeps something of them.
#pragma once

class Laufmitschnitt;
class Streuablage;

/// Each may be null; all outlive the runs.
struct Laufzuschauer {
    Laufmitschnitt* mitschnitt = nullptr;
    Streuablage* streuablage = nullptr;
};
