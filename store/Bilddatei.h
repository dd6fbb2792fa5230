// Pictures in the picture folder, found by name without regard to case: "S0L.BMP" written is "S0L.bmp" read
// and deleted.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

/// The files of `ordner` that have this name (UTF-8) but for the case of its letters; there is at most one
/// unless another system has put more there. None for a name that contains a separator, "/" or "\": a name
/// never leaves the folder. A folder that can't be read has none. Throws nothing but std::bad_alloc.
std::vector<std::filesystem::path> bilddateien(const std::filesystem::path& ordner, std::string_view name);
