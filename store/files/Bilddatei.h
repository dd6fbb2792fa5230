// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures in the picture folder, found by name without regard to case: "S0L.BMP" written is "S0L.bmp" read
// and deleted.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// The files of `ordner` that have this name (UTF-8) but for the case of its letters; there is at most one
/// unless another system has put more there. None for a name that contains a separator, "/" or "\": a name
/// never leaves the folder. A folder that can't be read has none. Throws nothing but std::bad_alloc.
std::vector<std::filesystem::path> bilddateien(const std::filesystem::path& ordner, std::string_view name);

/// Whether two names (UTF-8) are one for pictures, which ignore the case of letters.
bool gleicherBildname(std::string_view einer, std::string_view anderer);

/// Writes a picture's file as a whole or not at all, under the name that lies there or else under this one;
/// where another system has put more than one they all become this picture. False when it can't be written:
/// no such folder, no right, no room, a name with a separator.
bool bilddateiSchreiben(const std::filesystem::path& ordner, std::string_view name, std::string_view inhalt);

/// Lets the files of two names change places in one step, so that no crash loses one of them; one that lies
/// there alone takes the other name. False when nothing was changed, or when it is not safe on the disk.
bool bilddateienTauschen(const std::filesystem::path& ordner, std::string_view name,
                         std::string_view anderer);

/// Removes the files of these names, and what interrupted writes of them have left. Those that can't be
/// removed stay without a word. A power cut brings none of them back.
void bilddateienLoeschen(const std::filesystem::path& ordner, const std::vector<std::string>& namen);
