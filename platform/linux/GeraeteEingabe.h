// SPDX-License-Identifier: GPL-3.0-or-later
// What all injection into a real system has in common: from INPUT records to single actions on keys and a
// mouse.
//
// A further key-down of a key that is held goes out as release and press in one go. That is how a held key's
// repeat looks to X clients, and it is the only form in which it reaches a program: X servers and libinput
// drop a second press of a held key, and libinput drops the kernel's repeat events too. Modifiers and lock
// keys are left out, as no keyboard repeats them.
#pragma once

#include "platform/Eingabe.h"
#include "platform/linux/Tastentabelle.h"

#include <array>

class Tastaturlayout;

enum class Mausknopf { links, rechts, mitte };

class GeraeteEingabe : public Eingabe {
public:
    std::uint32_t SendInput(std::span<const INPUT> ereignisse) final;
    std::uint32_t MapVirtualKeyA(std::uint32_t code, std::uint32_t art) final;

protected:
    /// The layout must outlive this object.
    explicit GeraeteEingabe(Tastaturlayout& layout) : layout_(layout) {}

    /// Whether the system can send this key.
    virtual bool kann(EvdevTaste taste) const = 0;
    virtual void taste(EvdevTaste taste, bool unten) = 0;
    virtual void knopf(Mausknopf knopf, bool unten) = 0;
    virtual void bewegen(std::int32_t dx, std::int32_t dy) = 0;
    /// 0..65535 spans the screen; both lie within.
    virtual void setzen(std::int32_t x, std::int32_t y) = 0;
    /// Never 0; positive is away from the user.
    virtual void rad(std::int32_t rasten) = 0;
    /// Sees to it that what was done has left; false if the system has failed.
    virtual bool abschicken() = 0;

    /// Releases what is held; for the destructors of the backends.
    void allesLoesen();

private:
    bool tastatur(const KEYBDINPUT& ereignis);
    void maus(const MOUSEINPUT& ereignis);
    void druecken(VirtuelleTaste code, EvdevTaste taste);
    void loesen(EvdevTaste taste);
    bool gehalten(EvdevTaste taste) const;

    Tastaturlayout& layout_;
    // The key that each code holds down: the layout may be another one by the time of the release.
    std::array<EvdevTaste, VIRTUELLE_TASTEN> gedrueckt_{};
    std::array<bool, 3> knoepfe_{};
};
