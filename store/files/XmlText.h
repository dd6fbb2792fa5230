// Text as XML 1.0 has it. The XML library takes what is not well-formed, and ends a text at a character that
// XML cannot hold; a file that is to be written back needs the strict reading.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The number of characters of a UTF-8 text; nothing when its bytes are no UTF-8 or when one of its
/// characters may not stand in XML (control characters but tab and line ends, U+FFFE, U+FFFF).
std::optional<std::size_t> xmlZeichenzahl(std::string_view text);

/// The value of an attribute from what stands between its quotes: references resolved, line ends and tabs as
/// blanks. Nothing when it is not well-formed.
std::optional<std::string> xmlAttributwert(std::string_view roh);
