// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/dauer/XWelt.h"

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <array>
#include <stdexcept>

namespace {

constexpr int MAUSKNOEPFE = 5;
constexpr long VON_DER_LEISTE = 2; // source indication of a task bar

/// Windows come and go while they are asked for.
int ueberhoeren(Display*, XErrorEvent*) {
    return 0;
}

int zaehlen(Display* anzeige, Window fenster, Window gehoert_zu) {
    // The upper bits of an id are the client's own.
    constexpr Window CLIENT = ~Window{0x1fffff};
    Window wurzel = 0;
    Window eltern = 0;
    Window* kinder = nullptr;
    unsigned anzahl = 0;
    int gezaehlt = (fenster & CLIENT) == (gehoert_zu & CLIENT) ? 1 : 0;
    if (!XQueryTree(anzeige, fenster, &wurzel, &eltern, &kinder, &anzahl))
        return gezaehlt;
    for (unsigned i = 0; i < anzahl; ++i)
        gezaehlt += zaehlen(anzeige, kinder[i], gehoert_zu);
    if (kinder)
        XFree(kinder);
    return gezaehlt;
}

std::array<bool, 256> gehalteneTasten(Display* anzeige) {
    std::array<char, 32> bits{};
    XQueryKeymap(anzeige, bits.data());
    std::array<bool, 256> unten{};
    for (std::size_t code = 0; code < unten.size(); ++code)
        unten[code] = (static_cast<unsigned char>(bits[code / 8]) >> code % 8 & 1) != 0;
    return unten;
}

std::array<bool, MAUSKNOEPFE> gehalteneKnoepfe(Display* anzeige) {
    Window fenster = 0;
    int ort = 0;
    unsigned maske = 0;
    XQueryPointer(anzeige, DefaultRootWindow(anzeige), &fenster, &fenster, &ort, &ort, &ort, &ort, &maske);
    std::array<bool, MAUSKNOEPFE> unten{};
    for (unsigned knopf = 0; knopf < MAUSKNOEPFE; ++knopf)
        unten[knopf] = (maske & Button1Mask << knopf) != 0;
    return unten;
}

} // namespace

XWelt::XWelt(const std::string& anzeige) : anzeige_(XOpenDisplay(anzeige.c_str())) {
    if (!anzeige_)
        throw std::runtime_error("no X server " + anzeige);
    XSetErrorHandler(ueberhoeren);
}

XWelt::~XWelt() {
    XCloseDisplay(anzeige_);
}

void XWelt::bitten(const char* worum, unsigned long fenster, long quelle) {
    XEvent bitte{};
    bitte.xclient.type = ClientMessage;
    bitte.xclient.window = fenster;
    bitte.xclient.message_type = XInternAtom(anzeige_, worum, False);
    bitte.xclient.format = 32;
    bitte.xclient.data.l[0] = quelle;
    bitte.xclient.data.l[1] = quelle == VON_DER_LEISTE ? CurrentTime : VON_DER_LEISTE;
    XSendEvent(anzeige_, DefaultRootWindow(anzeige_), False,
               SubstructureNotifyMask | SubstructureRedirectMask, &bitte);
    XSync(anzeige_, False);
}

void XWelt::aktivieren(unsigned long fenster) {
    bitten("_NET_ACTIVE_WINDOW", fenster, VON_DER_LEISTE);
}

void XWelt::schliessen(unsigned long fenster) {
    bitten("_NET_CLOSE_WINDOW", fenster, CurrentTime);
}

void XWelt::clientToeten(unsigned long fenster) {
    XKillClient(anzeige_, fenster);
    XSync(anzeige_, False);
}

int XWelt::fensterzahl(unsigned long fenster) const {
    return zaehlen(anzeige_, DefaultRootWindow(anzeige_), fenster);
}

std::vector<std::string> XWelt::gehaltene() const {
    std::vector<std::string> alle;
    const auto tasten = gehalteneTasten(anzeige_);
    for (std::size_t code = 0; code < tasten.size(); ++code)
        if (tasten[code])
            alle.push_back("key " + std::to_string(code));
    const auto knoepfe = gehalteneKnoepfe(anzeige_);
    for (std::size_t knopf = 0; knopf < knoepfe.size(); ++knopf)
        if (knoepfe[knopf])
            alle.push_back("button " + std::to_string(knopf + 1));
    return alle;
}

void XWelt::loslassen() {
    const auto tasten = gehalteneTasten(anzeige_);
    for (unsigned code = 0; code < tasten.size(); ++code)
        if (tasten[code])
            XTestFakeKeyEvent(anzeige_, code, False, CurrentTime);
    const auto knoepfe = gehalteneKnoepfe(anzeige_);
    for (unsigned knopf = 0; knopf < knoepfe.size(); ++knopf)
        if (knoepfe[knopf])
            XTestFakeButtonEvent(anzeige_, knopf + 1, False, CurrentTime);
    XSync(anzeige_, False);
}
