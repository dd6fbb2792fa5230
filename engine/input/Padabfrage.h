// SPDX-License-Identifier: GPL-3.0-or-later
// The one place that polls the pad: whoever wants to know what it does comes through here.
#pragma once

#include "base/Achse.h"
#include "platform/Joystick.h"

#include <array>
#include <cstdint>

/// The raw axes X Y Z R U V of a poll.
inline constexpr std::array<std::uint32_t JOYINFOEX::*, ACHSEN> ROHACHSEN{
    &JOYINFOEX::dwXpos, &JOYINFOEX::dwYpos, &JOYINFOEX::dwZpos,
    &JOYINFOEX::dwRpos, &JOYINFOEX::dwUpos, &JOYINFOEX::dwVpos};

/// Polls the first pad into `info`. False when there is none; `info` then keeps what the last poll brought.
bool padAbfragen(Joystick& joystick, JOYINFOEX& info);
