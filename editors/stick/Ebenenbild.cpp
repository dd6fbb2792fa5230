// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Ebenenbild.h"

#include "editors/pictures/Bildleser.h"
#include "store/files/Bilddatei.h"

#include <QBuffer>

QImage BildLaden(const std::string& ordner, std::string_view name) {
    for (const auto& datei : bilddateien(ordner, name))
        if (auto bild = bildLesen(datei); !bild.isNull())
            return bild;
    return {};
}

QByteArray bitmap(const QImage& bild) {
    QByteArray inhalt;
    inhalt.reserve(bild.width() * qsizetype{3} * bild.height() + bild.height() * qsizetype{3} + 100);
    QBuffer strom(&inhalt);
    strom.open(QIODevice::WriteOnly);
    return bild.convertToFormat(QImage::Format_RGB32).save(&strom, "BMP") ? inhalt : QByteArray();
}

bool BildSpeichern(const std::string& ordner, std::string_view name, const QImage& bild) {
    const auto inhalt = bitmap(bild);
    return !inhalt.isEmpty() &&
           bilddateiSchreiben(ordner, name, {inhalt.data(), static_cast<std::size_t>(inhalt.size())});
}
