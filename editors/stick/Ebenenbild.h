// SPDX-License-Identifier: GPL-3.0-or-later
// The pictures behind the planes of the stick editors, and how they come to and from their files.
#pragma once

#include <QByteArray>
#include <QImage>

#include <string>
#include <string_view>

/// The picture used where a `Schema` has none of its own.
inline constexpr std::string_view ERSATZBILD = "Joy2.bmp";

/// The picture `name` of the folder `ordner`, found without regard to case; null when there is none that can
/// be shown. Whatever the file holds counts, not what it calls itself; one that is broken or larger than any
/// screen is none. A name with a separator never leaves the folder.
QImage BildLaden(const std::string& ordner, std::string_view name);

/// A picture as the bytes of a bitmap of 24 bits a pixel; empty for a null picture.
QByteArray bitmap(const QImage& bild);

/// Saves a picture as the file `name` of the folder `ordner`, as a bitmap of 24 bits a pixel, whole or not at
/// all; replaces one whose name differs by case only. False when it can't be, also for a null picture.
bool BildSpeichern(const std::string& ordner, std::string_view name, const QImage& bild);
