// SPDX-License-Identifier: GPL-3.0-or-later
// Injection through the kernel: two virtual devices made with /dev/uinput, which serve X11, Wayland and the
// console.
//
// One device has the keys, the buttons, relative axes and the wheel; a second one is an absolute pointer, as
// a device with both kinds of axes is not taken for a mouse. A desktop needs a moment to find devices that
// are made, so what is sent within the first fraction of a second may be lost; the program makes them when it
// starts.
#pragma once

#include "platform/linux/GeraeteEingabe.h"

#include <memory>
#include <string>

struct libevdev_uinput;

class UinputEingabe final : public GeraeteEingabe {
public:
    /// Null if the kernel's devices cannot be made; `grund` then says why.
    static std::unique_ptr<UinputEingabe> oeffnen(Tastaturlayout& layout, std::string& grund);
    ~UinputEingabe() override;

    /// The device nodes (/dev/input/event...) of the keys and of the absolute pointer, "" if unknown.
    std::string tastenknoten() const;
    std::string zeigerknoten() const;

private:
    struct Schliessen {
        void operator()(libevdev_uinput* geraet) const;
    };
    using Geraet = std::unique_ptr<libevdev_uinput, Schliessen>;

    UinputEingabe(Tastaturlayout& layout, Geraet tasten, Geraet zeiger);
    static Geraet tastengeraet(int& fehler);
    static Geraet zeigergeraet(int& fehler);

    bool kann(EvdevTaste) const override { return true; }
    void taste(EvdevTaste taste, bool unten) override;
    void knopf(Mausknopf knopf, bool unten) override;
    void bewegen(std::int32_t dx, std::int32_t dy) override;
    void setzen(std::int32_t x, std::int32_t y) override;
    void rad(std::int32_t rasten) override;
    bool abschicken() override;

    void schreiben(const Geraet& geraet, unsigned art, unsigned code, int wert);
    void abschliessen(const Geraet& geraet);

    Geraet tasten_;
    Geraet zeiger_;
    std::int32_t x_ = 0; // where the absolute pointer was set last; the kernel starts at 0
    std::int32_t y_ = 0;
    bool fehler_ = false; // since the last abschicken
};
