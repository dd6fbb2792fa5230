// SPDX-License-Identifier: GPL-3.0-or-later
// Stands in the place of the library's SDL_JoystickUpdate, which it calls.
#pragma once

/// How often the pads were updated.
extern int auffrischungen;
