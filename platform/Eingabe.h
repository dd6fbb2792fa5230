// SPDX-License-Identifier: GPL-3.0-or-later
// Synthetic keyboard and mouse input towards the program that has the focus.
#pragma once

#include "base/VirtuelleTaste.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

inline constexpr std::uint32_t INPUT_MOUSE = 0;
inline constexpr std::uint32_t INPUT_KEYBOARD = 1;

inline constexpr std::uint32_t KEYEVENTF_EXTENDEDKEY = 1;
inline constexpr std::uint32_t KEYEVENTF_KEYUP = 2;

inline constexpr std::uint32_t MOUSEEVENTF_MOVE = 1;
inline constexpr std::uint32_t MOUSEEVENTF_LEFTDOWN = 2;
inline constexpr std::uint32_t MOUSEEVENTF_LEFTUP = 4;
inline constexpr std::uint32_t MOUSEEVENTF_RIGHTDOWN = 8;
inline constexpr std::uint32_t MOUSEEVENTF_RIGHTUP = 16;
inline constexpr std::uint32_t MOUSEEVENTF_MIDDLEDOWN = 32;
inline constexpr std::uint32_t MOUSEEVENTF_MIDDLEUP = 64;
inline constexpr std::uint32_t MOUSEEVENTF_WHEEL = 2048;
inline constexpr std::uint32_t MOUSEEVENTF_ABSOLUTE = 0x8000;

struct MOUSEINPUT {
    std::int32_t dx;
    std::int32_t dy;
    std::uint32_t mouseData; ///< wheel amount, a signed number in two's complement
    std::uint32_t dwFlags;
    std::uint32_t time;
    std::uint32_t dwExtraInfo;
};

struct KEYBDINPUT {
    VirtuelleTaste wVk;
    std::uint16_t wScan;
    std::uint32_t dwFlags;
    std::uint32_t time;
    std::uint32_t dwExtraInfo;
    std::array<std::byte, 8> auffuellung; ///< the union is as wide as its mouse member
};

/// One event; the layout is that of the 32-bit INPUT record of winuser.h.
struct INPUT {
    std::uint32_t type;
    union {
        MOUSEINPUT mi;
        KEYBDINPUT ki;
    };
};
static_assert(sizeof(INPUT) == 28 && offsetof(INPUT, ki) == 4 && offsetof(KEYBDINPUT, dwFlags) == 4);

/// Contract: events leave in the order in which they are handed in and have left when the call returns. A key
/// code means the key that carries its label on the user's keyboard layout; the extended flag does not select
/// another key. A code without a counterpart, an unknown type and a failing system are ignored. Never throws.
///
/// Mouse records: MOVE moves by dx, dy counts; MOVE with ABSOLUTE moves to dx, dy, where 0..65535 spans the
/// whole screen. WHEEL turns by mouseData / 120 notches, rounded to the nearest and at least one away from 0;
/// positive is away from the user. Several flags in one record act in the order move, buttons, wheel.
class Eingabe {
public:
    Eingabe() = default;
    Eingabe(const Eingabe&) = delete;
    Eingabe& operator=(const Eingabe&) = delete;
    virtual ~Eingabe() = default;

    /// Sends the events; returns how many of them were delivered.
    virtual std::uint32_t SendInput(std::span<const INPUT> ereignisse) = 0;

    /// With art 0: the scan code (set 1, low byte) of the key that `code` means, 0 if it has none.
    /// Any other art gives 0.
    virtual std::uint32_t MapVirtualKeyA(std::uint32_t code, std::uint32_t art) = 0;

    /// One mouse event; it does what SendInput does with a mouse record.
    virtual void mouse_event(std::uint32_t dwFlags, std::int32_t dx, std::int32_t dy, std::int32_t dwData,
                             std::uint32_t dwExtraInfo) {
        INPUT eines{};
        eines.type = INPUT_MOUSE;
        eines.mi = {dx, dy, static_cast<std::uint32_t>(dwData), dwFlags, 0, dwExtraInfo};
        SendInput({&eines, 1});
    }
};
