// SPDX-License-Identifier: GPL-3.0-or-later
// Pads through SDL.
//
// SDL is asked for an update where Padwache says that it could bring anything, for a while after pads have
// come or gone, and each second to be sure. A pad that cannot be watched has it updated each time: one that
// the kernel has no event node of, or only for others.
//
// Pad `id` is the one that stands at this place in SDL's list, oldest first; so when the first pad goes, the
// next call takes the one after it. A pad is opened at the first call that asks for it.
//
// A pad whose layout SDL knows is brought into one layout:
//   dwButtons  bit 0 to 11: Dreieck, Kreis, Kreuz, Viereck, L 2, L 1, R 2, R 1, Select, Start, L-Stick,
//   R-Stick;
//              L 2 and R 2 from half way; nothing else gets in
//   dwX/Ypos   left stick; dwZ/Rpos right stick
//   dwU/Vpos   left and right trigger. They go through the same formula as the sticks, so they rest at 32767
//   and
//              are fully pressed at 65535.
//   dwPOV      D-pad
// Any other pad is passed on as it is: the first six axes to X, Y, Z, R, U, V, the first 32 buttons, the
// first hat. dwButtonNumber is the number, from 1, of the highest button pressed, 0 without one.
#pragma once

#include "platform/Joystick.h"
#include "platform/Meldung.h"
#include "platform/linux/Padwache.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QSocketNotifier;
class Zeitgeber;

class SdlJoystick final : public Joystick {
public:
    /// If SDL cannot be started there is simply never a pad. `meldung` is told of each pad that comes or
    /// goes, and which one then is the first. All that reads in one instant of `zeitgeber`, which outlives
    /// this object, shares one look at the pads; without it each call takes its own.
    explicit SdlJoystick(Meldung meldung = {}, const Zeitgeber* zeitgeber = nullptr);
    ~SdlJoystick() override;

    std::uint32_t joyGetPosEx(std::uint32_t id, JOYINFOEX& info) override;
    Padauskunft auskunft() override;
    /// Needs an event loop on this thread. Not while pads are being looked for, and not over one that can't
    /// be watched.
    bool wachen(Weckruf weckruf) override;
    void nichtWachen() override;

    /// Tells which pads have come and gone since the last time. joyGetPosEx and auskunft do it, too.
    void umsehen();

private:
    class Pad;

    /// What a pad was found to do.
    struct Blick {
        std::uint32_t id;
        std::uint32_t antwort; ///< of joyGetPosEx
        JOYINFOEX info;
    };
    /// A pad that was told of.
    struct Gemeldetes {
        std::int32_t kennung;
        std::string name;
    };

    using Uhr = Padwache::Uhr;

    Blick blicken(std::uint32_t id);
    void auffrischen();
    bool istAufgefrischt();
    bool kannNeuesBringen();
    bool allesBewacht() const;
    void wachmeldung();
    void wecken(Uhr::time_point seit);
    void oeffnen(std::uint32_t id);
    void schliessen(std::uint32_t id);
    bool istGemeldet() const;

    Padwache wache_;                // before SDL looks for pads
    Uhr::time_point suchende_;      // until then each update may find a pad, or how it stands
    Uhr::time_point naechsteSuche_; // the next update that needs no reason
    bool ungelesen_ = false;        // the watch has seen something that no update has followed yet
    Weckruf weckruf_;               // empty without a watch
    std::int32_t bewachtes_ = 0;    // instance of pad 0 when the watch began
    std::unique_ptr<QSocketNotifier> wachmelder_;
    std::map<std::uint32_t, std::unique_ptr<Pad>> offene_; // by id
    Meldung meldung_;
    const Zeitgeber* zeitgeber_;
    std::uint64_t augenblick_ = 0;      // of the last update
    std::optional<Blick> blick_;        // since then
    std::vector<Gemeldetes> gemeldete_; // in the order of SDL's list
};
