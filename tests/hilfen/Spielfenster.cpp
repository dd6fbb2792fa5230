// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/hilfen/Spielfenster.h"

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <stdexcept>

Spielfenster::Spielfenster(const std::string& anzeige) : anzeige_(XOpenDisplay(anzeige.c_str())) {
    if (anzeige_ == nullptr)
        throw std::runtime_error("no X server " + anzeige);
    const auto atom = [this](const char* name) { return XInternAtom(anzeige_, name, False); };
    constexpr unsigned SEITE = 300; // the window manager makes it as large as the screen
    const auto fenster =
        XCreateSimpleWindow(anzeige_, DefaultRootWindow(anzeige_), 0, 0, SEITE, SEITE, 0, 0, 0);
    XStoreName(anzeige_, fenster, "Spiel");
    const Atom ganz = atom("_NET_WM_STATE_FULLSCREEN");
    XChangeProperty(anzeige_, fenster, atom("_NET_WM_STATE"), XA_ATOM, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&ganz), 1);
    XSelectInput(anzeige_, fenster, KeyPressMask | KeyReleaseMask | FocusChangeMask);
    XkbSetDetectableAutoRepeat(anzeige_, True, nullptr);
    XMapRaised(anzeige_, fenster);
    XSync(anzeige_, False);
}

Spielfenster::~Spielfenster() {
    XCloseDisplay(anzeige_);
}

bool Spielfenster::vorn() {
    lesen();
    return vorn_;
}

const std::vector<std::string>& Spielfenster::tasten() {
    lesen();
    return tasten_;
}

void Spielfenster::lesen() {
    while (XPending(anzeige_) > 0) {
        XEvent ereignis;
        XNextEvent(anzeige_, &ereignis);
        if (ereignis.type == FocusIn || ereignis.type == FocusOut)
            vorn_ = ereignis.type == FocusIn;
        if (ereignis.type != KeyPress && ereignis.type != KeyRelease)
            continue;
        const std::string name = XKeysymToString(XLookupKeysym(&ereignis.xkey, 0));
        if (ereignis.type == KeyRelease && unten_.erase(name) > 0)
            tasten_.push_back("-" + name);
        if (ereignis.type == KeyPress && unten_.insert(name).second)
            tasten_.push_back("+" + name);
    }
}
