// SPDX-License-Identifier: GPL-3.0-or-later
// The end of the program when its display goes: the X server or the compositor has ended or was killed.
//
// The toolkit ends the process then, in the midst of the event loop, and nothing is unwound: xcb's plugin by
// exit(), wayland's by _exit() after a warning, which may come from one of its threads. So the last words are
// said on these ways.
#pragma once

#include <functional>
#include <string>

class Bildschirmverlust {
public:
    /// Saves what an end in order saves, without touching a window, and gives sentences for the user about
    /// it.
    using Sichern = std::function<std::string()>;

    /// There is one at a time. Needs the application object, in its thread, for as long as this lives.
    explicit Bildschirmverlust(Sichern sichern);
    ~Bildschirmverlust();
    Bildschirmverlust(const Bildschirmverlust&) = delete;
    Bildschirmverlust& operator=(const Bildschirmverlust&) = delete;

    /// Saves, says so on stderr in one line, and ends the process with status 1.
    [[noreturn]] void beenden();

private:
    const Sichern sichern_;
};
