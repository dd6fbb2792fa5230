// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Schirmpixel.h"

#include <QImage>

#include <memory>

Schirmbild schirmbild(const QImage& bild) {
    if (bild.isNull())
        return {};
    const auto halter = std::make_shared<const QImage>(bild.convertToFormat(QImage::Format_RGB32));
    return {halter->width(), halter->height(), halter->bytesPerLine(), {halter, halter->constBits()}};
}
