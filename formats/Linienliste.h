// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of one direction of a stick's layer, from the centre outward.
//
//   "line;line;"   "27072;20000;": the inner line and the one beyond it; "": none
//
// The list that a run works on is closed by an end mark, the empty piece behind the last ";". It has at most
// one piece less than the text has characters. That tells in one case: "5;", a single line of one digit,
// gives a list without end mark whose only entry still holds the ";". It can't be played with.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A line as its decimal text; the empty text ends a list.
class Linie {
public:
    explicit Linie(std::string text);

    const std::string& text() const { return text_; }
    bool endmarke() const { return text_.empty(); }
    /// Position in the plane; the end mark lies behind every position. Throws LaufzeitFehler 13 for a text
    /// that is no number and 6 for one beyond 32 bits.
    std::int32_t wert() const { return wert_ ? *wert_ : keineLinie(); }

private:
    std::int32_t keineLinie() const;

    std::string text_;
    std::optional<std::int32_t> wert_;
};

using Linienliste = std::vector<Linie>;

Linienliste linienliste(std::string_view gesammelt);

/// Adds a line to the text.
void linieAnhaengen(std::string& gesammelt, std::int64_t linie);
