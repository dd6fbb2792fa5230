// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Bildschirm.h"

#include <X11/Xlib.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

std::string umgebung(const char* name) {
    const char* wert = std::getenv(name);
    return wert ? wert : "";
}

std::shared_ptr<void> xVerbindung() {
    auto* anzeige = XOpenDisplay(nullptr);
    if (!anzeige)
        return nullptr;
    return {anzeige, XCloseDisplay};
}

bool waylandErreichbar() {
    const auto name = umgebung("WAYLAND_DISPLAY");
    if (name.empty())
        return false;
    const auto pfad = name.front() == '/' ? name : umgebung("XDG_RUNTIME_DIR") + "/" + name;
    sockaddr_un adresse{};
    adresse.sun_family = AF_UNIX;
    if (pfad.size() >= sizeof adresse.sun_path)
        return false;
    std::memcpy(adresse.sun_path, pfad.c_str(), pfad.size() + 1);
    const int steckdose = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (steckdose < 0)
        return false;
    const bool verbunden =
        connect(steckdose, reinterpret_cast<const sockaddr*>(&adresse), sizeof adresse) == 0;
    close(steckdose);
    return verbunden;
}

} // namespace

Bildschirmbefund bildschirmSuchen() {
    const auto gewaehlt = umgebung("QT_QPA_PLATFORM");
    const bool x = gewaehlt.empty() || gewaehlt.starts_with("xcb");
    const bool wayland = gewaehlt.empty() || gewaehlt.starts_with("wayland");
    if (!x && !wayland) // a platform that needs neither
        return {};
    if (wayland && waylandErreichbar())
        return {};
    if (auto verbindung = x ? xVerbindung() : nullptr)
        return {"", std::move(verbindung)};
    return {"Kein Bildschirm erreichbar: weder unter DISPLAY=\"" + umgebung("DISPLAY") +
                "\" noch unter WAYLAND_DISPLAY=\"" + umgebung("WAYLAND_DISPLAY") + "\".",
            nullptr};
}
