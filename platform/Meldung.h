// SPDX-License-Identifier: GPL-3.0-or-later
// How a part of the platform tells a log what it does, without knowing of any.
#pragma once

#include <functional>
#include <string>

/// Takes a line, in German. Empty where nobody listens: then nothing is looked up and no text is put
/// together.
using Meldung = std::function<void(const std::string&)>;
