// SPDX-License-Identifier: GPL-3.0-or-later
// Whether there is a screen to show windows on.
#pragma once

#include <string>

/// "" if windows can be shown, else the reason in German. Asked before the toolkit starts, which would abort.
std::string bildschirmFehlt();
