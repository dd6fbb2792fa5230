// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a stored text is one that an editor of this program writes: the strictest of the readings, for
// texts that come from elsewhere.
//
// A run plays what makes sense of a text and stops at the rest, and an editor refuses what it would lose; a
// file of somebody else's is taken as a whole or not at all, before anything of it is stored. Fields are
// whole numbers of 32 bits or, as the boxes of the editors may be left so, empty.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Why the text can't be taken, in German, to stand behind a colon; nothing where it can.
using Mangel = std::optional<std::string>;

/// Of a button or a direction of the D-pad; the empty text and "leer" stand for none.
Mangel belegungsmangel(std::string_view text);
/// Of the field of a stick; the empty text is a `Leerfeld`.
Mangel stickaktionsmangel(std::string_view text);
/// Of the slider; the empty text is none.
Mangel schubtextmangel(std::string_view text);
/// Of the name of an axis; the empty text is none.
Mangel achsennamensmangel(std::string_view text);
