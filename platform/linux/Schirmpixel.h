// SPDX-License-Identifier: GPL-3.0-or-later
// A picture of Qt as the picture of a screen that the interface gives.
#pragma once

#include "platform/Schirmaufnahme.h"

class QImage;

/// The same picture, its pixels shared where their format allows; empty for a null one.
Schirmbild schirmbild(const QImage& bild);
