// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/XTestEingabe.h"

#include "platform/linux/XVerbindung.h"

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

constexpr int X_VERSATZ = 8;
constexpr std::int32_t SPANNE = 65536;
constexpr std::int32_t WEITESTER_SCHRITT = 32767; // the protocol has 16 bits

constexpr int PUFFERN_HOECHSTENS = 64; // requests; Xlib's buffer holds some 400

constexpr unsigned KNOPF_LINKS = 1;
constexpr unsigned KNOPF_MITTE = 2;
constexpr unsigned KNOPF_RECHTS = 3;
constexpr unsigned RAD_HOCH = 4;
constexpr unsigned RAD_RUNTER = 5;

constexpr unsigned knopfnummer(Mausknopf knopf) {
    switch (knopf) {
    case Mausknopf::links:
        return KNOPF_LINKS;
    case Mausknopf::rechts:
        return KNOPF_RECHTS;
    case Mausknopf::mitte:
        break;
    }
    return KNOPF_MITTE;
}

// The last of the 65536 steps is the last pixel.
int pixel(std::int32_t wert, int laenge) {
    return static_cast<int>(std::int64_t{wert} * laenge / SPANNE);
}

} // namespace

std::unique_ptr<XTestEingabe> XTestEingabe::oeffnen(Tastaturlayout& layout, const std::string& anzeige,
                                                    std::string& grund, Waechterblatt* blatt) {
    auto verbindung = XVerbindung::oeffnen(anzeige);
    if (!verbindung) {
        grund = "Kein X-Server erreichbar";
        return nullptr;
    }
    int unbenutzt = 0;
    if (!XTestQueryExtension(verbindung->anzeige(), &unbenutzt, &unbenutzt, &unbenutzt, &unbenutzt)) {
        grund = "Dem X-Server fehlt XTEST";
        return nullptr;
    }
    return std::unique_ptr<XTestEingabe>(new XTestEingabe(layout, std::move(verbindung), blatt));
}

XTestEingabe::XTestEingabe(Tastaturlayout& layout, std::unique_ptr<XVerbindung> verbindung,
                           Waechterblatt* blatt)
    : GeraeteEingabe(layout)
    , verbindung_(std::move(verbindung))
    , vermerk_(blatt)
    , breite_(DisplayWidth(verbindung_->anzeige(), DefaultScreen(verbindung_->anzeige())))
    , hoehe_(DisplayHeight(verbindung_->anzeige(), DefaultScreen(verbindung_->anzeige()))) {
    Display* display = verbindung_->anzeige();
    XTestGrabControl(display, True); // a server grab does not hold us up
    XSelectInput(display, DefaultRootWindow(display), StructureNotifyMask); // the screen may change its size
    zeugenfenster();
    XFlush(display);
}

// Never shown. It goes when the server has done all that came by this connection.
void XTestEingabe::zeugenfenster() {
    Display* display = verbindung_->anzeige();
    vermerk_.anmelden(static_cast<std::uint32_t>(XCreateWindow(display, DefaultRootWindow(display), 0, 0, 1,
                                                               1, 0, 0, InputOnly, nullptr, 0, nullptr)));
}

XTestEingabe::~XTestEingabe() {
    allesLoesen();
}

// Xlib would send a full buffer by itself, and if the server had gone by then go on to write past its end.
void XTestEingabe::anfrage(const std::function<void(_XDisplay*)>& schreiben) {
    if (ungesendet_ == PUFFERN_HOECHSTENS)
        leeren();
    if (!verbindung_->steht())
        return;
    schreiben(verbindung_->anzeige());
    ++ungesendet_;
}

void XTestEingabe::leeren() {
    ungesendet_ = 0;
    if (verbindung_->steht())
        XFlush(verbindung_->anzeige());
    if (verbindung_->steht())
        vermerk_.abgeschickt();
}

void XTestEingabe::druckanfrage(std::size_t stelle, bool unten,
                                const std::function<void(_XDisplay*)>& schreiben) {
    if (unten)
        vermerk_.unten(stelle);
    anfrage(schreiben);
    if (!unten)
        vermerk_.oben(stelle);
}

void XTestEingabe::taste(EvdevTaste taste, bool unten) {
    const auto code = static_cast<unsigned>(taste + X_VERSATZ);
    druckanfrage(Haltevermerk::taste(code), unten, [=](Display* display) {
        XTestFakeKeyEvent(display, code, unten ? True : False, CurrentTime);
    });
}

void XTestEingabe::knopf(Mausknopf knopf, bool unten) {
    nummernknopf(knopfnummer(knopf), unten);
}

void XTestEingabe::nummernknopf(unsigned nummer, bool unten) {
    druckanfrage(Haltevermerk::knopf(nummer), unten, [=](Display* display) {
        XTestFakeButtonEvent(display, nummer, unten ? True : False, CurrentTime);
    });
}

void XTestEingabe::bewegen(std::int32_t dx, std::int32_t dy) {
    const auto x = std::clamp(dx, -WEITESTER_SCHRITT, WEITESTER_SCHRITT);
    const auto y = std::clamp(dy, -WEITESTER_SCHRITT, WEITESTER_SCHRITT);
    anfrage([=](Display* display) { XTestFakeRelativeMotionEvent(display, x, y, CurrentTime); });
}

void XTestEingabe::setzen(std::int32_t x, std::int32_t y) {
    anfrage([=, this](Display* display) {
        XTestFakeMotionEvent(display, DefaultScreen(display), pixel(x, breite_), pixel(y, hoehe_),
                             CurrentTime);
    });
}

void XTestEingabe::rad(std::int32_t rasten) {
    const unsigned nummer = rasten > 0 ? RAD_HOCH : RAD_RUNTER;
    for (auto rest = std::abs(rasten); rest > 0; --rest) {
        nummernknopf(nummer, true);
        nummernknopf(nummer, false);
    }
}

bool XTestEingabe::abschicken() {
    leeren();
    verbindung_->ereignisse([this](const XEvent& ereignis) {
        if (ereignis.type == ConfigureNotify) {
            breite_ = ereignis.xconfigure.width;
            hoehe_ = ereignis.xconfigure.height;
        }
    });
    return verbindung_->steht();
}
