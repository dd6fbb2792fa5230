// SPDX-License-Identifier: GPL-3.0-or-later
// Injection through the XTEST extension of an X server.
#pragma once

#include "platform/linux/GeraeteEingabe.h"
#include "platform/linux/Haltevermerk.h"

#include <functional>
#include <memory>
#include <string>

class XVerbindung;
struct _XDisplay;

class XTestEingabe final : public GeraeteEingabe {
public:
    /// Uses the server `anzeige`, with "" the one of $DISPLAY. Null if it cannot serve; `grund` then says
    /// why. What is down is noted on `blatt`, if there is one, which must outlive this object.
    static std::unique_ptr<XTestEingabe> oeffnen(Tastaturlayout& layout, const std::string& anzeige,
                                                 std::string& grund, Waechterblatt* blatt = nullptr);
    ~XTestEingabe() override;

private:
    XTestEingabe(Tastaturlayout& layout, std::unique_ptr<XVerbindung> verbindung, Waechterblatt* blatt);

    bool kann(EvdevTaste taste) const override { return taste <= LETZTE_X_TASTE; }
    void taste(EvdevTaste taste, bool unten) override;
    void knopf(Mausknopf knopf, bool unten) override;
    void bewegen(std::int32_t dx, std::int32_t dy) override;
    void setzen(std::int32_t x, std::int32_t y) override;
    void rad(std::int32_t rasten) override;
    bool abschicken() override;

    void zeugenfenster();
    /// Sends what is buffered.
    void leeren();
    void nummernknopf(unsigned nummer, bool unten);
    // What presses or releases, with its place on the sheet.
    void druckanfrage(std::size_t stelle, bool unten, const std::function<void(_XDisplay*)>& schreiben);
    // All requests go through here: into the buffer of a lost connection none may be written.
    void anfrage(const std::function<void(_XDisplay*)>& schreiben);

    std::unique_ptr<XVerbindung> verbindung_;
    Haltevermerk vermerk_;
    int ungesendet_ = 0; // requests in the buffer
    int breite_;         // of the root window, in pixels
    int hoehe_;
};
