// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/EingabeWahl.h"

#include "platform/linux/UinputEingabe.h"
#include "platform/linux/XTestEingabe.h"
#include "platform/linux/XVerbindung.h"

#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace {

class StummeEingabe final : public Eingabe {
public:
    std::uint32_t SendInput(std::span<const INPUT>) override { return 0; }
    std::uint32_t MapVirtualKeyA(std::uint32_t, std::uint32_t) override { return 0; }
};

std::string_view umgebung(const char* name) {
    const char* wert = std::getenv(name);
    return wert != nullptr ? wert : "";
}

// A Wayland compositor reads the kernel's devices, whatever its X server shows.
bool unterWayland() {
    return !umgebung("WAYLAND_DISPLAY").empty() || umgebung("XDG_SESSION_TYPE") == "wayland";
}

// The evdev and libinput drivers put this property on the devices that they read.
bool hatGeraeteknoten(Display* display, int geraet, Atom knoten) {
    Atom art = 0;
    int breite = 0;
    unsigned long anzahl = 0;
    unsigned long rest = 0;
    unsigned char* daten = nullptr;
    const int ergebnis = XIGetProperty(display, geraet, knoten, 0, 0, False, AnyPropertyType, &art, &breite,
                                       &anzahl, &rest, &daten);
    if (daten != nullptr)
        XFree(daten);
    return ergebnis == Success && art != 0;
}

EingabeAngebot uinputPruefen(Tastaturlayout& layout) {
    if (!unterWayland() && xServerOhneGeraete({}))
        return {nullptr, "Der X-Server liest keine Geräte des Kerns"};
    EingabeAngebot angebot;
    angebot.eingabe = UinputEingabe::oeffnen(layout, angebot.grund);
    return angebot;
}

EingabeAngebot xtestPruefen(Tastaturlayout& layout, Waechterblatt* blatt) {
    EingabeAngebot angebot;
    angebot.eingabe = XTestEingabe::oeffnen(layout, {}, angebot.grund, blatt);
    return angebot;
}

} // namespace

bool xServerOhneGeraete(const std::string& anzeige) {
    const auto verbindung = XVerbindung::oeffnen(anzeige);
    if (!verbindung)
        return false;
    Display* display = verbindung->anzeige();
    int haupt = 2;
    int neben = 0;
    const Atom knoten = XInternAtom(display, "Device Node", True);
    if (XIQueryVersion(display, &haupt, &neben) != Success)
        return false;
    if (knoten == 0) // no driver has ever named a node
        return true;
    int anzahl = 0;
    XIDeviceInfo* geraete = XIQueryDevice(display, XIAllDevices, &anzahl);
    bool gefunden = false;
    for (int nummer = 0; nummer < anzahl && !gefunden; ++nummer)
        gefunden = hatGeraeteknoten(display, geraete[nummer].deviceid, knoten);
    if (geraete != nullptr)
        XIFreeDeviceInfo(geraete);
    return !gefunden;
}

EingabeWahl eingabeWaehlen(std::span<const EingabeKandidat> kandidaten) {
    EingabeWahl wahl;
    for (const auto& kandidat : kandidaten) {
        auto angebot = kandidat.pruefen();
        if (angebot.eingabe) {
            wahl.eingabe = std::move(angebot.eingabe);
            wahl.name = kandidat.name;
            wahl.reichweite = kandidat.reichweite;
            return wahl;
        }
        wahl.gruende.push_back(kandidat.name + ": " + angebot.grund);
    }
    wahl.eingabe = std::make_unique<StummeEingabe>();
    return wahl;
}

std::vector<EingabeKandidat> eingabeKandidaten(Tastaturlayout& layout, Waechterblatt* blatt) {
    const auto durchX = unterWayland() ? Reichweite::NurX : Reichweite::Alle;
    return {{"uinput", [&layout] { return uinputPruefen(layout); }, Reichweite::Alle},
            {"XTest", [&layout, blatt] { return xtestPruefen(layout, blatt); }, durchX}};
}
