// SPDX-License-Identifier: GPL-3.0-or-later
// Injection through the XTEST extension of an X server.
#pragma once

#include "platform/linux/GeraeteEingabe.h"

#include <functional>
#include <memory>
#include <string>

class XVerbindung;
struct _XDisplay;

class XTestEingabe final : public GeraeteEingabe {
public:
    /// Uses the server `anzeige`, with "" the one of $DISPLAY. Null if it cannot serve; `grund` then says
    /// why.
    static std::unique_ptr<XTestEingabe> oeffnen(Tastaturlayout& layout, const std::string& anzeige,
                                                 std::string& grund);
    ~XTestEingabe() override;

private:
    XTestEingabe(Tastaturlayout& layout, std::unique_ptr<XVerbindung> verbindung);

    bool kann(EvdevTaste taste) const override { return taste <= LETZTE_X_TASTE; }
    void taste(EvdevTaste taste, bool unten) override;
    void knopf(Mausknopf knopf, bool unten) override;
    void bewegen(std::int32_t dx, std::int32_t dy) override;
    void setzen(std::int32_t x, std::int32_t y) override;
    void rad(std::int32_t rasten) override;
    bool abschicken() override;

    void nummernknopf(unsigned nummer, bool unten);
    // All requests go through here: into the buffer of a lost connection none may be written.
    void anfrage(const std::function<void(_XDisplay*)>& schreiben);

    std::unique_ptr<XVerbindung> verbindung_;
    int ungesendet_ = 0; // requests in the buffer
    int breite_;         // of the root window, in pixels
    int hoehe_;
};
