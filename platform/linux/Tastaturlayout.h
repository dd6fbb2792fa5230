// SPDX-License-Identifier: GPL-3.0-or-later
// The keyboard layout in force.
//
// It comes from the X server and follows it at run time. Without a server it is settled once: from the
// environment (XKB_DEFAULT_LAYOUT and its like), else from the file that the system's set-up writes, else it
// is the default of libxkbcommon.
#pragma once

#include "platform/Tastatur.h"
#include "platform/linux/TastenKarte.h"

#include <memory>
#include <string>

class Tastaturlayout final : public Tastatur {
public:
    /// `anzeige` names the X server, "" the one of $DISPLAY; `datei` is the system's keyboard file.
    explicit Tastaturlayout(const std::string& anzeige = {},
                            const std::string& datei = "/etc/default/keyboard");
    ~Tastaturlayout() override;

    /// The map of the layout in force now. A server that has gone leaves the last one.
    const TastenKarte& karte();

    /// X and Wayland number their keys alike: the kernel's number and 8.
    VirtuelleTaste code(std::uint32_t nummer) override;

private:
    struct Server;

    std::unique_ptr<Server> server_;
    TastenKarte karte_;
};
