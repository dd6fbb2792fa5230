// SPDX-License-Identifier: GPL-3.0-or-later
// The pad as the poll cycle sees it: one call that fills one record.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

/// State of a pad. Names, order and widths are those of the Windows multimedia joystick API (joystickapi.h);
/// the axes run from 0 to 65535, small x is left, small y is up.
struct JOYINFOEX {
    std::uint32_t dwSize = 0;
    std::uint32_t dwFlags = 0;
    std::uint32_t dwXpos = 0;
    std::uint32_t dwYpos = 0;
    std::uint32_t dwZpos = 0;
    std::uint32_t dwRpos = 0;
    std::uint32_t dwUpos = 0;
    std::uint32_t dwVpos = 0;
    std::uint32_t dwButtons = 0; ///< bit k is button k
    std::uint32_t dwButtonNumber = 0;
    std::uint32_t dwPOV = 0; ///< hundredths of a degree clockwise from up, 65535 when centred
    std::uint32_t dwReserved1 = 0;
    std::uint32_t dwReserved2 = 0;
};
static_assert(sizeof(JOYINFOEX) == 52);

inline constexpr std::uint32_t JOYERR_NOERROR = 0;
inline constexpr std::uint32_t JOYERR_UNPLUGGED = 167;
inline constexpr std::uint32_t JOY_POVCENTERED = 65535;
inline constexpr std::uint32_t JOY_AXIS_RUHE = 32767; ///< an axis at rest, and one that the pad does not have

/// What is plugged in, for people to read.
struct Padauskunft {
    std::size_t anzahl = 0; ///< of the pads
    std::string name;       ///< of pad 0, as it calls itself; "" where there is none or it says nothing

    bool operator==(const Padauskunft&) const = default;
};

/// That a pad has done something: `her` ago, 0 where that is not known.
using Weckruf = std::function<void(std::chrono::nanoseconds her)>;

/// Contract: a pad may come and go between any two instants of the program's clock. Calls in one instant
/// share one look at a pad, whatever it does meanwhile: a run that rests and one that polls then see the
/// same. Outside of instants each call looks anew. Never throws, never blocks.
class Joystick {
public:
    Joystick() = default;
    Joystick(const Joystick&) = delete;
    Joystick& operator=(const Joystick&) = delete;
    virtual ~Joystick() = default;

    /// Reads pad `id` (0 is the first) into `info`: the six axes, dwButtons, dwButtonNumber and dwPOV.
    /// dwSize and dwFlags are the caller's and stay. Returns JOYERR_NOERROR, or JOYERR_UNPLUGGED when there
    /// is no such pad; `info` is then left as it was.
    virtual std::uint32_t joyGetPosEx(std::uint32_t id, JOYINFOEX& info) = 0;

    /// What is plugged in now; a backend that cannot tell says that nothing is. Not for every tick: it makes
    /// texts.
    virtual Padauskunft auskunft() { return {}; }

    /// Instead of being polled, keeps watch over pad 0: calls `weckruf` as soon as joyGetPosEx could bring
    /// anything else than it did last, that is when the pad does something, comes or goes. Once, from the
    /// event loop or from within a call of this object, never from within this one. It may come for nothing.
    /// False where that cannot be told; nothing is watched then. Replaces a watch that is on.
    virtual bool wachen(Weckruf weckruf) {
        static_cast<void>(weckruf);
        return false;
    }
    /// Ends the watch without a call, if one is on.
    virtual void nichtWachen() {}
};
