// SPDX-License-Identifier: GPL-3.0-or-later
// Names of tables and columns: compared without regard to the case of ASCII letters, as SQLite does it.
#pragma once

#include <string>
#include <string_view>

/// Folds the ASCII letters to lower case, whatever the locale.
std::string kleinGeschrieben(std::string_view name);
bool gleicherName(std::string_view a, std::string_view b);
/// The name as a quoted identifier of a statement.
std::string inAnfuehrung(std::string_view name);
