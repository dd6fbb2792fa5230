// SPDX-License-Identifier: GPL-3.0-or-later
// Fields of the delimited texts: splitting them, and reading one as a number.
#pragma once

#include "formats/Zerlegen.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// What stands before the first `trenner`, or the whole text.
std::string_view davor(std::string_view text, char trenner);

/// The text as a whole number of 32 bits; blanks around it do not matter. Throws LaufzeitFehler 13 for what
/// is no number and 6 for one that is too large.
std::int32_t feldzahl(std::string_view text);

/// One field as it is written, and the number that it says: read once, when the text is split, and asked for
/// as often as a timer likes. What is no number is an error only where a number is asked for, so a text goes
/// as far as it makes sense.
class Feld {
public:
    /// A field that no text has filled: reads as "" and as 0.
    Feld() = default;
    explicit Feld(std::string_view text);
    explicit Feld(std::int32_t zahl);

    /// Whether a text has filled it.
    bool da() const { return da_; }
    const std::string& text() const { return text_; }
    /// Throws as feldzahl.
    std::int32_t zahl() const { return lesbar_ ? zahl_ : feldzahl(text_); }
    /// Whether it says this number; a field that is no number does not.
    bool ist(std::int32_t zahl) const { return da_ && lesbar_ && zahl_ == zahl; }
    /// The digit that is all its text: " 1" and "01" say the number 1 but are not the digit.
    std::optional<int> ziffer() const;

    bool operator==(const Feld&) const = default;

private:
    bool da_ = false;
    bool lesbar_ = true;
    std::int32_t zahl_ = 0;
    std::string text_;
};
