// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/XSofortbild.h"

#include <QGuiApplication>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <utility>
#include <xcb/xcbext.h>

namespace {

constexpr int OHNE_DURCHSICHT = 24;
constexpr int MIT_DURCHSICHT = 32;

xcb_connection_t* verbindungDesToolkits() {
    const auto* x = qApp ? qApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x ? x->connection() : nullptr;
}

bool gleicheBytefolge(xcb_connection_t* verbindung) {
    const bool kleinesZuerst = xcb_get_setup(verbindung)->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    return kleinesZuerst == (std::endian::native == std::endian::little);
}

/// Whether a window of this depth takes pixels as a Sofortbild has them.
bool taugt(xcb_connection_t* verbindung, int tiefe) {
    if (tiefe != OHNE_DURCHSICHT && tiefe != MIT_DURCHSICHT)
        return false;
    for (auto schirm = xcb_setup_roots_iterator(xcb_get_setup(verbindung)); schirm.rem;
         xcb_screen_next(&schirm))
        for (auto art = xcb_screen_allowed_depths_iterator(schirm.data); art.rem; xcb_depth_next(&art)) {
            const auto* erstes = xcb_depth_visuals(art.data);
            const auto* ende = erstes + xcb_depth_visuals_length(art.data);
            if (art.data->depth == tiefe && std::any_of(erstes, ende, [](const xcb_visualtype_t& eines) {
                    return eines.red_mask != 0xff0000 || eines.blue_mask != 0xff;
                }))
                return false;
        }
    return true;
}

bool istAscii(char zeichen) {
    return zeichen >= ' ' && zeichen <= '~';
}

} // namespace

XSofortbild::~XSofortbild() {
    vergessen();
}

Sofortbild::Lage XSofortbild::lage(std::uintptr_t fenster) {
    if (const auto gefragtes = static_cast<xcb_window_t>(fenster); gefragtes != fenster_)
        kennenlernen(gefragtes);
    if (const auto antwort = abholen<xcb_get_geometry_reply_t>(tiefenfrage_))
        tiefe_ = taugt(verbindung_, antwort->depth) ? antwort->depth : 0;
    if (tiefe_ == 0)
        return Lage::Unbekannt;
    abholen<xcb_get_input_focus_reply_t>(standfrage_);
    return standfrage_ ? Lage::Beschaeftigt : Lage::Frei;
}

/// What a request was answered, if that has come; it is no open one then.
template <class Antwort> XSofortbild::Gekommen<Antwort> XSofortbild::abholen(std::optional<unsigned>& frage) {
    void* antwort = nullptr;
    if (frage && xcb_poll_for_reply(verbindung_, *frage, &antwort, nullptr) != 0)
        frage.reset();
    return Gekommen<Antwort>(static_cast<Antwort*>(antwort));
}

void XSofortbild::zeigen(const Ausschnitt& wo, std::span<const std::uint32_t> pixel) {
    xcb_put_image(verbindung_, XCB_IMAGE_FORMAT_Z_PIXMAP, fenster_, stift_,
                  static_cast<std::uint16_t>(wo.breite), static_cast<std::uint16_t>(wo.hoehe),
                  static_cast<std::int16_t>(wo.x), static_cast<std::int16_t>(wo.y), 0,
                  static_cast<std::uint8_t>(tiefe_), static_cast<std::uint32_t>(pixel.size_bytes()),
                  reinterpret_cast<const std::uint8_t*>(pixel.data()));
    if (standfrage_)
        xcb_discard_reply(verbindung_, *standfrage_);
    standfrage_ = xcb_get_input_focus_unchecked(verbindung_).sequence; // answered once all before it is done
    xcb_flush(verbindung_);
}

// Beside today's property the old one, which is what some window managers know, as the toolkit does it. Who
// looks at a window gets to know of each change of a property, so both go out together.
bool XSofortbild::betiteln(std::uintptr_t fenster, std::string_view text) {
    if (const auto gefragtes = static_cast<xcb_window_t>(fenster); gefragtes != fenster_)
        kennenlernen(gefragtes);
    namenAbholen(titel_, titelfrage_);
    namenAbholen(textart_, textartfrage_);
    if (titel_ == XCB_NONE || textart_ == XCB_NONE || text.empty() || !std::ranges::all_of(text, istAscii))
        return false;
    for (const auto& [titel, art] :
         {std::pair(titel_, textart_), std::pair<xcb_atom_t, xcb_atom_t>(XCB_ATOM_WM_NAME, XCB_ATOM_STRING)})
        xcb_change_property(verbindung_, XCB_PROP_MODE_REPLACE, fenster_, titel, art, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
    xcb_flush(verbindung_);
    return true;
}

std::optional<unsigned> XSofortbild::namensfrage(std::string_view name) {
    return xcb_intern_atom_unchecked(verbindung_, 0, static_cast<std::uint16_t>(name.size()), name.data())
        .sequence;
}

void XSofortbild::namenAbholen(xcb_atom_t& nummer, std::optional<unsigned>& frage) {
    if (const auto antwort = abholen<xcb_intern_atom_reply_t>(frage))
        nummer = antwort->atom;
}

void XSofortbild::kennenlernen(xcb_window_t fenster) {
    vergessen();
    fenster_ = fenster;
    verbindung_ = fenster == XCB_NONE ? nullptr : verbindungDesToolkits();
    if (!verbindung_ || !gleicheBytefolge(verbindung_))
        return;
    stift_ = xcb_generate_id(verbindung_);
    xcb_create_gc(verbindung_, stift_, fenster_, 0, nullptr);
    tiefenfrage_ = xcb_get_geometry_unchecked(verbindung_, fenster_).sequence;
    titelfrage_ = namensfrage("_NET_WM_NAME");
    textartfrage_ = namensfrage("UTF8_STRING");
    xcb_flush(verbindung_);
}

void XSofortbild::vergessen() {
    if (stift_ != XCB_NONE && verbindungDesToolkits() == verbindung_) {
        for (const auto& frage : {tiefenfrage_, standfrage_, titelfrage_, textartfrage_})
            if (frage)
                xcb_discard_reply(verbindung_, *frage);
        xcb_free_gc(verbindung_, stift_);
    }
    stift_ = XCB_NONE;
    tiefe_ = 0;
    titel_ = textart_ = XCB_NONE;
    for (auto* frage : {&tiefenfrage_, &standfrage_, &titelfrage_, &textartfrage_})
        frage->reset();
}
