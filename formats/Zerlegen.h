// SPDX-License-Identifier: GPL-3.0-or-later
// Splitting of the delimited texts that the formats are made of.
#pragma once

#include <string_view>
#include <vector>

/// Splits at each `trenner`; a text without one gives itself, an empty text gives no pieces. The pieces look
/// into `text`.
std::vector<std::string_view> zerlegen(std::string_view text, char trenner);
