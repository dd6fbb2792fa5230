// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/hilfen/XHand.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <cctype>
#include <ranges>
#include <stdexcept>
#include <vector>

namespace {

std::vector<std::string> teile(std::string_view tasten) {
    std::vector<std::string> namen;
    for (const auto teil : std::views::split(tasten, '+'))
        namen.emplace_back(teil.begin(), teil.end());
    return namen;
}

} // namespace

XHand::XHand(const std::string& anzeige) : anzeige_(XOpenDisplay(anzeige.c_str())) {
    int unbenutzt = 0;
    if (anzeige_ == nullptr)
        throw std::runtime_error("no X server " + anzeige);
    if (!XTestQueryExtension(anzeige_, &unbenutzt, &unbenutzt, &unbenutzt, &unbenutzt))
        throw std::runtime_error("no XTEST");
}

XHand::~XHand() {
    XCloseDisplay(anzeige_);
}

void XHand::zeigen(int x, int y) {
    for (const int davor : {1, 0}) // no hand jumps
        XTestFakeMotionEvent(anzeige_, -1, x - davor, y, CurrentTime);
    XSync(anzeige_, False);
}

void XHand::klicken(unsigned knopf) {
    for (const bool unten : {true, false})
        XTestFakeButtonEvent(anzeige_, knopf, unten ? True : False, CurrentTime);
    XSync(anzeige_, False);
}

void XHand::taste(std::string_view tasten) {
    const auto namen = teile(tasten);
    for (const auto& name : namen)
        einzelne(name, true);
    for (const auto& name : namen | std::views::reverse)
        einzelne(name, false);
    XSync(anzeige_, False);
}

void XHand::druecken(const std::string& taste) {
    einzelne(taste, true);
    XSync(anzeige_, False);
}

void XHand::loesen(const std::string& taste) {
    einzelne(taste, false);
    XSync(anzeige_, False);
}

void XHand::tippen(std::string_view text) {
    for (const char zeichen : text) {
        const bool gross = std::isupper(static_cast<unsigned char>(zeichen)) != 0;
        const std::string name = zeichen == ' '   ? "space"
                                 : zeichen == '.' ? "period"
                                                  : std::string(1, zeichen);
        taste((gross ? "Shift_L+" : "") + name);
    }
}

unsigned long XHand::aktivesFenster() const {
    Atom art = 0;
    int format = 0;
    unsigned long anzahl = 0;
    unsigned long rest = 0;
    unsigned char* inhalt = nullptr;
    XGetWindowProperty(anzeige_, DefaultRootWindow(anzeige_),
                       XInternAtom(anzeige_, "_NET_ACTIVE_WINDOW", False), 0, 1, False, XA_WINDOW, &art,
                       &format, &anzahl, &rest, &inhalt);
    const unsigned long fenster = anzahl == 1 ? *reinterpret_cast<const unsigned long*>(inhalt) : 0;
    if (inhalt)
        XFree(inhalt);
    return fenster;
}

void XHand::einzelne(const std::string& keysym, bool unten) {
    const auto code = XKeysymToKeycode(anzeige_, XStringToKeysym(keysym.c_str()));
    if (code == 0)
        throw std::runtime_error("no key " + keysym);
    XTestFakeKeyEvent(anzeige_, code, unten ? True : False, CurrentTime);
}
