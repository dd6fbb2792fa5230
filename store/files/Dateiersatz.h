// SPDX-License-Identifier: GPL-3.0-or-later
// Replaces a file by new content in one step: whatever happens on the way, a reader finds the old content
// whole or the new content whole.
//
// The new content goes into a file of its own in the same folder, reaches the disk there and takes the old
// one's name by a rename. A process that is killed before the rename leaves that other file behind; it is
// never read, and the next replacement removes it. One that is still being written is locked.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// Replaces the file `pfad`, or makes it where there is none. A symbolic link stays one: what it points to is
/// replaced. An old file passes on its permissions, and its owner where the process may give that.
/// Returns false when it is not safe on the disk. Mostly nothing was changed then: an old file that may not
/// be written (also for root, whom permission bits do not bind: one without any write bit), something that is
/// no regular file, a folder that takes no file, a full disk. Only where the disk fails at the very end the
/// new content has its name already, which a power cut may take from it. Throws nothing but std::bad_alloc.
bool dateiErsetzen(const std::string& pfad, std::string_view inhalt);

/// Brings to the disk what was made, renamed and removed in a folder. False when the disk fails at that; a
/// folder that may not be read, and a file system that does not know it, are taken as they are.
bool ordnerSichern(const std::filesystem::path& ordner);

/// Removes from a folder what interrupted replacements have left there of files whose name is `gemeint`. What
/// is being written is locked by its writer and stays.
void resteRaeumen(const std::filesystem::path& ordner,
                  const std::function<bool(std::string_view name)>& gemeint);

/// Where a path leads to by symbolic links, also when there is no file yet; nothing for a circle.
std::optional<std::filesystem::path> ohneVerweise(std::filesystem::path pfad);

/// The folder that a file lies in, "." for a bare name.
std::filesystem::path ordnerVon(const std::filesystem::path& pfad);
