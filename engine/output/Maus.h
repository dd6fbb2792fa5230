// Mouse buttons and wheel by their number, as the assignments of sticks and slider name them.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

class Eingabe;

namespace maus {

/// Presses by the digit of the choice: "0" left, "1" right, "2" middle button, "3" wheel up, "4" wheel down
/// by `menge`, which is only asked for then. Any other text does nothing.
void druecken(Eingabe& eingabe, std::string_view wahl, const std::function<std::int32_t()>& menge);
/// Releases the button of the choice; the wheel has nothing to release.
void loslassen(Eingabe& eingabe, std::string_view wahl);
/// Moves by `schritt` counts: "0" to the left, "1" right, "2" up, "3" down. Gives whether the text is one of
/// them; any other moves nothing and does not ask for the counts.
bool bewegen(Eingabe& eingabe, std::string_view richtung, const std::function<std::int32_t()>& schritt);

/// The number with its sign turned. Throws LaufzeitFehler 6 for the one that has no counterpart.
std::int32_t negativ(std::int32_t zahl);

} // namespace maus
