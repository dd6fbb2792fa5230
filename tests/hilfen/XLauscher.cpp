// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/hilfen/XLauscher.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XInput2.h>
#include <array>
#include <cmath>
#include <poll.h>
#include <stdexcept>

namespace {

constexpr int GEDULD_MS = 5000;

std::string taste(const char* art, int nummer) {
    return art + std::to_string(nummer);
}

std::string knopf(int nummer, const char* art) {
    return "K" + std::to_string(nummer) + art;
}

std::string bewegung(const XIRawEvent& ereignis) {
    std::array<long, 2> schritt{};
    const double* wert = ereignis.raw_values;
    for (int achse = 0; achse < 2 && achse < ereignis.valuators.mask_len * 8; ++achse)
        if (XIMaskIsSet(ereignis.valuators.mask, achse))
            schritt[static_cast<std::size_t>(achse)] = std::lround(*wert++);
    return "m(" + std::to_string(schritt[0]) + "," + std::to_string(schritt[1]) + ")";
}

std::string rohtext(const XIRawEvent& ereignis) {
    switch (ereignis.evtype) {
    case XI_RawKeyPress:
        return taste("+", ereignis.detail);
    case XI_RawKeyRelease:
        return taste("-", ereignis.detail);
    case XI_RawButtonPress:
        return knopf(ereignis.detail, "+");
    case XI_RawButtonRelease:
        return knopf(ereignis.detail, "-");
    case XI_RawMotion:
        return bewegung(ereignis);
    default:
        return {};
    }
}

std::string fenstertext(const XEvent& ereignis) {
    switch (ereignis.type) {
    case KeyPress:
        return taste("+", static_cast<int>(ereignis.xkey.keycode));
    case KeyRelease:
        return taste("-", static_cast<int>(ereignis.xkey.keycode));
    case ButtonPress:
        return knopf(static_cast<int>(ereignis.xbutton.button), "+");
    case ButtonRelease:
        return knopf(static_cast<int>(ereignis.xbutton.button), "-");
    default:
        return {};
    }
}

} // namespace

XLauscher::XLauscher(const std::string& anzeige, Lauschart art) : anzeige_(XOpenDisplay(anzeige.c_str())) {
    if (anzeige_ == nullptr)
        throw std::runtime_error("no X server " + anzeige);
    if (art == Lauschart::fenster)
        fensterOeffnen();
    else
        rohAnmelden();
    XSync(anzeige_, False);
}

XLauscher::~XLauscher() {
    XCloseDisplay(anzeige_);
}

void XLauscher::fensterOeffnen() {
    const int schirm = DefaultScreen(anzeige_);
    fenster_ = XCreateSimpleWindow(anzeige_, DefaultRootWindow(anzeige_), 0, 0,
                                   static_cast<unsigned>(DisplayWidth(anzeige_, schirm)),
                                   static_cast<unsigned>(DisplayHeight(anzeige_, schirm)), 0, 0, 0);
    XSelectInput(anzeige_, fenster_,
                 KeyPressMask | KeyReleaseMask | ButtonPressMask | ButtonReleaseMask | StructureNotifyMask);
    XMapWindow(anzeige_, fenster_);
    XEvent ereignis;
    do
        XNextEvent(anzeige_, &ereignis);
    while (ereignis.type != MapNotify);
    XSetInputFocus(anzeige_, fenster_, RevertToParent, CurrentTime);
}

void XLauscher::rohAnmelden() {
    int unbenutzt = 0;
    int haupt = 2;
    int neben = 1;
    if (!XQueryExtension(anzeige_, "XInputExtension", &xinput_, &unbenutzt, &unbenutzt) ||
        XIQueryVersion(anzeige_, &haupt, &neben) != Success)
        throw std::runtime_error("no XInput 2");
    std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> arten{};
    for (const int art :
         {XI_RawKeyPress, XI_RawKeyRelease, XI_RawButtonPress, XI_RawButtonRelease, XI_RawMotion})
        arten[static_cast<std::size_t>(art / 8)] |= static_cast<unsigned char>(1 << art % 8);
    XIEventMask maske{XIAllMasterDevices, static_cast<int>(arten.size()), arten.data()};
    XISelectEvents(anzeige_, DefaultRootWindow(anzeige_), &maske, 1);
}

std::string XLauscher::naechstes() {
    XEvent ereignis;
    XNextEvent(anzeige_, &ereignis);
    if (ereignis.type != GenericEvent)
        return fenstertext(ereignis);
    std::string text;
    if (ereignis.xcookie.extension == xinput_ && XGetEventData(anzeige_, &ereignis.xcookie)) {
        text = rohtext(*static_cast<const XIRawEvent*>(ereignis.xcookie.data));
        XFreeEventData(anzeige_, &ereignis.xcookie);
    }
    return text;
}

std::vector<std::string> XLauscher::bis(const std::string& ende) {
    std::vector<std::string> texte;
    while (true) {
        pollfd warten{ConnectionNumber(anzeige_), POLLIN, 0};
        if (XPending(anzeige_) == 0 && poll(&warten, 1, GEDULD_MS) <= 0) {
            texte.emplace_back("???");
            return texte;
        }
        while (XPending(anzeige_) > 0) {
            auto text = naechstes();
            if (text == ende)
                return texte;
            if (!text.empty())
                texte.push_back(std::move(text));
        }
    }
}

std::vector<std::string> XLauscher::vorhandene() {
    std::vector<std::string> texte;
    while (XPending(anzeige_) > 0)
        if (auto text = naechstes(); !text.empty())
            texte.push_back(std::move(text));
    return texte;
}

std::string XLauscher::titel(unsigned long fenster, const char* eigenschaft) const {
    XTextProperty text{};
    if (XGetTextProperty(anzeige_, fenster, &text, XInternAtom(anzeige_, eigenschaft, False)) == 0)
        return {};
    const std::string titel(reinterpret_cast<const char*>(text.value), text.nitems);
    XFree(text.value);
    return titel;
}

std::pair<int, int> XLauscher::zeiger() const {
    Window wurzel = 0;
    Window kind = 0;
    int x = -1;
    int y = -1;
    int fensterX = 0;
    int fensterY = 0;
    unsigned maske = 0;
    XQueryPointer(anzeige_, DefaultRootWindow(anzeige_), &wurzel, &kind, &x, &y, &fensterX, &fensterY,
                  &maske);
    return {x, y};
}

void XLauscher::gruppe(unsigned nummer) {
    XkbLockGroup(anzeige_, XkbUseCoreKbd, nummer);
    XSync(anzeige_, False);
}

unsigned long XLauscher::zeichen(unsigned taste, unsigned ebene) const {
    return XkbKeycodeToKeysym(anzeige_, static_cast<KeyCode>(taste), 0, static_cast<int>(ebene));
}
