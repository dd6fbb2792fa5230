// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/hilfen/XGeraete.h"

#include <X11/Xlib.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XTest.h>

#include <span>
#include <stdexcept>
#include <string_view>

namespace {

XDevice* geraet(void* eines) {
    return static_cast<XDevice*>(eines);
}

// A bit a key or a button.
void bits(const char* feld, unsigned anzahl, const std::string& art, std::vector<std::string>& alle) {
    for (unsigned nummer = 0; nummer < anzahl; ++nummer)
        if ((static_cast<unsigned char>(feld[nummer / 8]) >> nummer % 8 & 1) != 0)
            alle.push_back(art + std::to_string(nummer));
}

} // namespace

XGeraete::XGeraete(const std::string& anzeige) : anzeige_(XOpenDisplay(anzeige.c_str())) {
    if (anzeige_ == nullptr)
        throw std::runtime_error("no X server " + anzeige);
    XTestGrabControl(anzeige_, True);
    tastatur_ = oeffnen("Xvfb keyboard");
    maus_ = oeffnen("Xvfb mouse");
    xtestTastatur_ = oeffnen("Virtual core XTEST keyboard");
    xtestMaus_ = oeffnen("Virtual core XTEST pointer");
}

XGeraete::~XGeraete() {
    for (void* eines : {tastatur_, maus_, xtestTastatur_, xtestMaus_})
        XCloseDevice(anzeige_, geraet(eines));
    XCloseDisplay(anzeige_);
}

void* XGeraete::oeffnen(const std::string& name) const {
    int anzahl = 0;
    XDeviceInfo* alle = XListInputDevices(anzeige_, &anzahl);
    XDevice* offenes = nullptr;
    for (const auto& eines : std::span(alle, static_cast<std::size_t>(anzahl)))
        if (name == eines.name)
            offenes = XOpenDevice(anzeige_, eines.id);
    XFreeDeviceList(alle);
    if (offenes == nullptr)
        throw std::runtime_error("no device " + name);
    return offenes;
}

void XGeraete::taste(unsigned code, bool unten) {
    XTestFakeDeviceKeyEvent(anzeige_, geraet(tastatur_), code, unten ? True : False, nullptr, 0, CurrentTime);
    XSync(anzeige_, False);
}

void XGeraete::knopf(unsigned nummer, bool unten) {
    XTestFakeDeviceButtonEvent(anzeige_, geraet(maus_), nummer, unten ? True : False, nullptr, 0,
                               CurrentTime);
    XSync(anzeige_, False);
}

void XGeraete::gedrueckte(void* eines, std::vector<std::string>& alle) const {
    XDeviceState* stand = XQueryDeviceState(anzeige_, geraet(eines));
    const XInputClass* klasse = stand->data;
    for (int i = 0; i < stand->num_classes; ++i) {
        if (klasse->c_class == KeyClass) {
            const auto& tasten = *reinterpret_cast<const XKeyState*>(klasse);
            bits(tasten.keys, 256, "", alle);
        } else if (klasse->c_class == ButtonClass) {
            const auto& knoepfe = *reinterpret_cast<const XButtonState*>(klasse);
            bits(knoepfe.buttons, 256, "K", alle);
        }
        klasse = reinterpret_cast<const XInputClass*>(reinterpret_cast<const char*>(klasse) + klasse->length);
    }
    XFreeDeviceState(stand);
}

std::vector<std::string> XGeraete::vonProgrammen() const {
    std::vector<std::string> alle;
    gedrueckte(xtestTastatur_, alle);
    gedrueckte(xtestMaus_, alle);
    return alle;
}

std::vector<std::string> XGeraete::unten() const {
    std::vector<std::string> alle;
    char tasten[32];
    XQueryKeymap(anzeige_, tasten);
    bits(tasten, 256, "", alle);
    Window wurzel = 0;
    Window kind = 0;
    int x = 0;
    int y = 0;
    int fensterX = 0;
    int fensterY = 0;
    unsigned maske = 0;
    XQueryPointer(anzeige_, DefaultRootWindow(anzeige_), &wurzel, &kind, &x, &y, &fensterX, &fensterY,
                  &maske);
    for (unsigned nummer = 1; nummer <= 5; ++nummer)
        if ((maske & Button1Mask << (nummer - 1)) != 0)
            alle.push_back("K" + std::to_string(nummer));
    return alle;
}

void XGeraete::greifen(bool fest) {
    fest ? XGrabServer(anzeige_) : XUngrabServer(anzeige_);
    XSync(anzeige_, False);
}
