// SPDX-License-Identifier: GPL-3.0-or-later
// Whether there is a screen to show windows on.
#pragma once

#include <memory>
#include <string>

struct Bildschirmbefund {
    std::string grund; ///< "" if windows can be shown, else why not, in German
    /// The connection that has shown it. It is to stay until the toolkit has its own: a server that runs for
    /// this program alone starts anew or ends when its last client goes.
    std::shared_ptr<void> verbindung;
};

/// Asked before the toolkit starts, which would abort.
Bildschirmbefund bildschirmSuchen();
