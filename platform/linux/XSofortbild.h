// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures into X windows by the toolkit's own connection, so that they keep their order among what the
// toolkit paints. Under another platform than X it knows no window.
#pragma once

#include "platform/Sofortbild.h"

#include <cstdlib>
#include <memory>
#include <optional>
#include <xcb/xcb.h>

class XSofortbild final : public Sofortbild {
public:
    ~XSofortbild() override;

    Lage lage(std::uintptr_t fenster) override;
    void zeigen(const Ausschnitt& wo, std::span<const std::uint32_t> pixel) override;
    bool betiteln(std::uintptr_t fenster, std::string_view text) override;

private:
    void kennenlernen(xcb_window_t fenster);
    void vergessen();
    struct Freigeber {
        void operator()(void* antwort) const { std::free(antwort); }
    };
    template <class Antwort> using Gekommen = std::unique_ptr<Antwort, Freigeber>;
    template <class Antwort> Gekommen<Antwort> abholen(std::optional<unsigned>& frage);
    std::optional<unsigned> namensfrage(std::string_view name);
    void namenAbholen(xcb_atom_t& nummer, std::optional<unsigned>& frage);

    xcb_connection_t* verbindung_ = nullptr; // the toolkit's; as long as a window is known
    xcb_window_t fenster_ = XCB_NONE;
    xcb_gcontext_t stift_ = XCB_NONE;
    int tiefe_ = 0;                       // of the window; 0 where it is not known or takes no such pixels
    std::optional<unsigned> tiefenfrage_; // requests whose answers have not come yet
    std::optional<unsigned> standfrage_;
    xcb_atom_t titel_ = XCB_NONE;   // the caption as it is shown today
    xcb_atom_t textart_ = XCB_NONE; // and its kind
    std::optional<unsigned> titelfrage_;
    std::optional<unsigned> textartfrage_;
};
