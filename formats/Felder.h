// Fields of the delimited texts: splitting them, and reading one as a number.
#pragma once

#include "formats/Zerlegen.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// One field as text. A field that no text has filled yet reads as "" and as 0.
using Feld = std::optional<std::string>;

/// What stands before the first `trenner`, or the whole text.
std::string_view davor(std::string_view text, char trenner);

/// The field as a whole number of 32 bits; blanks around it do not matter. Throws LaufzeitFehler 13 for what
/// is no number and 6 for one that is too large.
std::int32_t feldzahl(std::string_view feld);
std::int32_t feldzahl(const Feld& feld);

/// The field as text; "" where none was filled in.
std::string feldtext(const Feld& feld);
