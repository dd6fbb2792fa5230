// SPDX-License-Identifier: GPL-3.0-or-later
// Which way pictures of the screen are taken here.
#pragma once

#include "platform/Schirmaufnahme.h"

#include <memory>

/// Under Wayland the desktop portal, under X11 Qt itself; elsewhere one that has no pictures. Never null.
/// Needs the QGuiApplication of its thread.
std::unique_ptr<Schirmaufnahme> schirmaufnahmeWaehlen();
