// SPDX-License-Identifier: GPL-3.0-or-later
// Reads a picture file that may come from anywhere: what it costs is known before it is read.
//
//   what a file may try                      what stops it
//   to be no file: a pipe, a device          it is opened without waiting, and asked
//   more bytes than any picture has          GROESSTE_BILDDATEI
//   more pixels than any screen              MEISTE_PIXEL, asked before room is made; Qt's limit for the room
//   texts and profiles in a PNG, packed      Qt gets the parts of a PNG that make its picture, no others
//   a JPEG in thousands of passes            MEISTE_DURCHGAENGE
//   a format of some plug-in                 three formats, known by how they begin; no other is asked. Not
//   GIF:
//                                            Qt's shows what was in memory where a file does not say
//   to end in its middle                     a bitmap is measured; the other formats tell
#pragma once

#include <QByteArray>
#include <QImage>

#include <filesystem>

/// A screen of 8192 by 8192; more would take hundreds of megabytes.
inline constexpr qint64 MEISTE_PIXEL = qint64{8192} * 8192;
/// A bitmap of that many pixels of 32 bits, with its head.
inline constexpr qint64 GROESSTE_BILDDATEI = MEISTE_PIXEL * 4 + 4096;

/// The picture of a file: a bitmap, a PNG or a JPEG, whatever its name says. Null for any other file,
/// for one that is broken and for one that breaks a limit.
QImage bildLesen(const std::filesystem::path& datei);

/// The picture that a PNG's bytes hold, by the same limits; null for any other bytes.
QImage pngLesen(const QByteArray& inhalt);
