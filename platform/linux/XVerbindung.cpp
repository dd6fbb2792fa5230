// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/XVerbindung.h"

#include <X11/Xlib.h>

namespace {

// Xlib's own handler ends the process. A refused request is a failing system call, and those are ignored.
int fehlerUebergehen(Display*, XErrorEvent*) {
    return 0;
}

// Xlib's own one ends the process before it comes to the exit handler of the connection; connections that
// have no such handler still end it there.
int verlustUebergehen(Display*) {
    return 0;
}

} // namespace

std::unique_ptr<XVerbindung> XVerbindung::oeffnen(const std::string& anzeige) {
    Display* display = XOpenDisplay(anzeige.empty() ? nullptr : anzeige.c_str());
    if (display == nullptr)
        return nullptr;
    return std::unique_ptr<XVerbindung>(new XVerbindung(display));
}

XVerbindung::XVerbindung(_XDisplay* anzeige) : anzeige_(anzeige) {
    XSetErrorHandler(fehlerUebergehen); // one for all connections, as is the next
    XSetIOErrorHandler(verlustUebergehen);
    XSetIOErrorExitHandler(
        anzeige_, [](Display*, void* selbst) { static_cast<XVerbindung*>(selbst)->steht_ = false; }, this);
}

XVerbindung::~XVerbindung() {
    XCloseDisplay(anzeige_);
}

void XVerbindung::ereignisse(const std::function<void(const _XEvent&)>& behandeln) {
    while (steht_ && XPending(anzeige_) > 0 && steht_) {
        XEvent ereignis;
        XNextEvent(anzeige_, &ereignis);
        if (steht_)
            behandeln(ereignis);
    }
}
