// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/hilfen/Fensterverwalter.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <array>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using Anzeige = std::unique_ptr<Display, decltype(&XCloseDisplay)>;

Anzeige oeffnen(const std::string& name) {
    Anzeige anzeige(XOpenDisplay(name.c_str()), &XCloseDisplay);
    if (!anzeige)
        throw std::runtime_error("no X server " + name);
    return anzeige;
}

Atom atom(Display& anzeige, const char* name) {
    return XInternAtom(&anzeige, name, False);
}

/// A property of the root window; empty if there is none.
std::vector<long> eigenschaft(Display& anzeige, const char* name, Atom art) {
    constexpr long HOECHSTENS = 64;
    Atom gelesen = 0;
    int format = 0;
    unsigned long anzahl = 0;
    unsigned long rest = 0;
    unsigned char* inhalt = nullptr;
    XGetWindowProperty(&anzeige, DefaultRootWindow(&anzeige), atom(anzeige, name), 0, HOECHSTENS, False, art,
                       &gelesen, &format, &anzahl, &rest, &inhalt);
    const auto* zahlen = reinterpret_cast<const long*>(inhalt);
    std::vector<long> werte(zahlen, zahlen + (inhalt ? anzahl : 0));
    if (inhalt)
        XFree(inhalt);
    return werte;
}

template <class Probe> void warten(const char* worauf, Probe probe) {
    constexpr std::chrono::seconds GEDULD{20};
    const auto ende = std::chrono::steady_clock::now() + GEDULD;
    while (!probe()) {
        if (std::chrono::steady_clock::now() > ende)
            throw std::runtime_error(worauf);
        std::this_thread::sleep_for(std::chrono::milliseconds{5});
    }
}

long freieHoehe(Display& anzeige) {
    const auto werte = eigenschaft(anzeige, "_NET_WORKAREA", XA_CARDINAL);
    return werte.size() < 4 ? 0 : werte[3];
}

} // namespace

Fensterverwalter::Fensterverwalter(const std::string& anzeige, const std::string& einstellung)
    : kennung_(fork()) {
    if (kennung_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        setenv("DISPLAY", anzeige.c_str(), 1);
        const int leer = open("/dev/null", O_RDWR | O_CLOEXEC);
        dup2(leer, STDOUT_FILENO);
        dup2(leer, STDERR_FILENO);
        // Nothing of the user's: neither settings nor session.
        execlp("openbox", "openbox", "--sm-disable", "--config-file", einstellung.c_str(), nullptr);
        _exit(127);
    }
    const auto eigene = oeffnen(anzeige);
    // From the redirection on no window can be shown past it.
    warten("openbox does not start", [&] {
        XWindowAttributes wurzel{};
        XGetWindowAttributes(eigene.get(), DefaultRootWindow(eigene.get()), &wurzel);
        return (wurzel.all_event_masks & SubstructureRedirectMask) != 0 && freieHoehe(*eigene) > 0;
    });
}

Fensterverwalter::~Fensterverwalter() {
    kill(kennung_, SIGKILL);
    waitpid(kennung_, nullptr, 0);
}

Leiste::Leiste(const std::string& anzeige, int hoehe) : anzeige_(oeffnen(anzeige).release()) {
    auto& server = *anzeige_;
    const int schirm = DefaultScreen(&server);
    const auto breite = static_cast<unsigned>(DisplayWidth(&server, schirm));
    const int oben = DisplayHeight(&server, schirm) - hoehe;
    const auto fenster = XCreateSimpleWindow(&server, DefaultRootWindow(&server), 0, oben, breite,
                                             static_cast<unsigned>(hoehe), 0, 0, 0);
    const auto setzen = [&](const char* name, Atom art, const std::vector<long>& werte) {
        XChangeProperty(&server, fenster, atom(server, name), art, 32, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(werte.data()), static_cast<int>(werte.size()));
    };
    setzen("_NET_WM_WINDOW_TYPE", XA_ATOM, {static_cast<long>(atom(server, "_NET_WM_WINDOW_TYPE_DOCK"))});
    XSizeHints ort{};
    ort.flags = USPosition;
    XSetWMNormalHints(&server, fenster, &ort);
    setzen("_NET_WM_STRUT", XA_CARDINAL, {0, 0, 0, hoehe});
    // A window manager that has only just begun may miss a window.
    constexpr int NACH = 100;
    int gefragt = 0;
    warten("no panel", [&] {
        if (gefragt++ % NACH == 0) {
            XUnmapWindow(&server, fenster);
            XMapWindow(&server, fenster);
            XFlush(&server);
        }
        return freieHoehe(server) == oben;
    });
}

Leiste::~Leiste() {
    XCloseDisplay(anzeige_);
}

Fensterlage fensterlage(const std::string& anzeige, unsigned long fenster) {
    const auto server = oeffnen(anzeige);
    for (;;) {
        Window wurzel = 0;
        Window eltern = 0;
        Window* kinder = nullptr;
        unsigned anzahl = 0;
        if (!XQueryTree(server.get(), fenster, &wurzel, &eltern, &kinder, &anzahl))
            throw std::runtime_error("no such window");
        if (kinder)
            XFree(kinder);
        if (eltern == wurzel)
            break;
        fenster = eltern;
    }
    XWindowAttributes lage{};
    XGetWindowAttributes(server.get(), fenster, &lage);
    return {lage.x, lage.y, lage.width + 2 * lage.border_width, lage.height + 2 * lage.border_width};
}
