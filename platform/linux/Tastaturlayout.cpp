// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Tastaturlayout.h"

#include "platform/linux/XVerbindung.h"

#include <X11/XKBlib.h>
#include <X11/Xlib-xcb.h>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <string_view>
#include <utility>
#include <xkbcommon/xkbcommon-x11.h>

namespace {

using Kontext = std::unique_ptr<xkb_context, decltype(&xkb_context_unref)>;
using Belegung = std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)>;

Kontext neuerKontext() {
    Kontext kontext(xkb_context_new(XKB_CONTEXT_NO_FLAGS), &xkb_context_unref);
    if (kontext)
        xkb_context_set_log_level(kontext.get(), XKB_LOG_LEVEL_CRITICAL);
    return kontext;
}

// The four names that make a layout, as the system's keyboard file writes them: XKBLAYOUT="de".
struct Layoutnamen {
    std::array<std::pair<std::string_view, std::string>, 4> werte{
        {{"XKBMODEL", {}}, {"XKBLAYOUT", {}}, {"XKBVARIANT", {}}, {"XKBOPTIONS", {}}}};

    void zeile(std::string_view text) {
        const auto gleich = text.find('=');
        if (gleich == std::string_view::npos)
            return;
        for (auto& [name, wert] : werte)
            if (name == text.substr(0, gleich)) {
                wert = text.substr(gleich + 1);
                std::erase(wert, '"');
            }
    }

    Belegung belegung(xkb_context* kontext) const {
        const xkb_rule_names namen{nullptr, werte[0].second.c_str(), werte[1].second.c_str(),
                                   werte[2].second.c_str(), werte[3].second.c_str()};
        return {xkb_keymap_new_from_names(kontext, &namen, XKB_KEYMAP_COMPILE_NO_FLAGS), &xkb_keymap_unref};
    }
};

// Empty names stand for what the environment says, or else for the library's defaults.
Layoutnamen namenOhneServer(const std::string& datei) {
    Layoutnamen namen;
    if (std::getenv("XKB_DEFAULT_LAYOUT") != nullptr)
        return namen;
    std::ifstream strom(datei);
    for (std::string zeile; std::getline(strom, zeile);)
        namen.zeile(zeile);
    return namen;
}

TastenKarte karteOhneServer(const std::string& datei) {
    const auto kontext = neuerKontext();
    if (!kontext)
        return {};
    const auto namen = namenOhneServer(datei);
    auto belegung = namen.belegung(kontext.get());
    if (!belegung) // names that mean nothing
        belegung = Layoutnamen{}.belegung(kontext.get());
    return TastenKarte(belegung.get(), 0);
}

} // namespace

struct Tastaturlayout::Server {
    explicit Server(std::unique_ptr<XVerbindung> neue) : verbindung(std::move(neue)) {
        Display* anzeige = verbindung->anzeige();
        int fehler = 0;
        if (!XkbQueryExtension(anzeige, nullptr, &ereignisart, &fehler, nullptr, nullptr) ||
            !xkb_x11_setup_xkb_extension(XGetXCBConnection(anzeige), XKB_X11_MIN_MAJOR_XKB_VERSION,
                                         XKB_X11_MIN_MINOR_XKB_VERSION, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS,
                                         nullptr, nullptr, nullptr, nullptr)) {
            verbindung.reset();
            return;
        }
        constexpr unsigned ARTEN = XkbNewKeyboardNotifyMask | XkbMapNotifyMask;
        XkbSelectEvents(anzeige, XkbUseCoreKbd, ARTEN, ARTEN);
        XkbSelectEventDetails(anzeige, XkbUseCoreKbd, XkbStateNotify, XkbGroupStateMask, XkbGroupStateMask);
    }

    // Whether the layout or the group may have changed since the last call.
    bool geaendert() {
        bool anders = std::exchange(neu, false);
        verbindung->ereignisse([&](const XEvent& ereignis) { anders |= ereignis.type == ereignisart; });
        return anders && verbindung->steht();
    }

    std::unique_ptr<TastenKarte> lesen() const {
        Display* anzeige = verbindung->anzeige();
        auto* draht = XGetXCBConnection(anzeige);
        const auto kontext = neuerKontext();
        const auto geraet = xkb_x11_get_core_keyboard_device_id(draht);
        if (!kontext || geraet < 0)
            return nullptr;
        const Belegung belegung(
            xkb_x11_keymap_new_from_device(kontext.get(), draht, geraet, XKB_KEYMAP_COMPILE_NO_FLAGS),
            &xkb_keymap_unref);
        XkbStateRec zustand{};
        if (!belegung || XkbGetState(anzeige, XkbUseCoreKbd, &zustand) != Success)
            return nullptr;
        return std::make_unique<TastenKarte>(belegung.get(), zustand.group);
    }

    std::unique_ptr<XVerbindung> verbindung; // null if the server cannot say its layout
    int ereignisart = 0;
    bool neu = true;
};

Tastaturlayout::Tastaturlayout(const std::string& anzeige, const std::string& datei) {
    if (auto verbindung = XVerbindung::oeffnen(anzeige)) {
        server_ = std::make_unique<Server>(std::move(verbindung));
        if (!server_->verbindung)
            server_.reset();
    }
    if (!server_)
        karte_ = karteOhneServer(datei);
}

Tastaturlayout::~Tastaturlayout() = default;

const TastenKarte& Tastaturlayout::karte() {
    if (server_ && server_->verbindung->steht() && server_->geaendert())
        if (const auto gelesen = server_->lesen())
            karte_ = *gelesen;
    return karte_;
}

VirtuelleTaste Tastaturlayout::code(std::uint32_t nummer) {
    constexpr std::uint32_t VERSATZ = 8;
    const bool vorhanden = nummer > VERSATZ && nummer < VERSATZ + EVDEV_TASTEN;
    return vorhanden ? karte().code(static_cast<EvdevTaste>(nummer - VERSATZ)) : VirtuelleTaste{0};
}
