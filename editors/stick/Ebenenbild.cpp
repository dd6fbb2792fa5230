// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Ebenenbild.h"

#include "editors/common/Formhilfen.h"
#include "store/files/Bilddatei.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QtEndian>

namespace {

// A screen of 8192 by 8192; more would take hundreds of megabytes.
constexpr qint64 MEISTE_PIXEL = qint64{8192} * 8192;

constexpr qint64 KOPFBYTES = 34; // of a bitmap that tell how long it is

template <class Zahl> Zahl zahlAn(const QByteArray& kopf, qsizetype stelle) {
    return kopf.size() < stelle + qsizetype{sizeof(Zahl)} ? Zahl{}
                                                          : qFromLittleEndian<Zahl>(kopf.data() + stelle);
}

/// Whether a bitmap of this size and beginning has all its pixels. One that is cut off would be shown with
/// whatever the memory held in their place; other formats tell by themselves.
bool vollstaendig(const QByteArray& kopf, QSize groesse, qint64 dateilaenge) {
    constexpr qsizetype PIXELANFANG = 10;
    constexpr qsizetype KOPFLAENGE = 14;
    constexpr quint32 ALTER_KOPF = 12; // with shorter fields, and never compressed
    constexpr qsizetype BITS_IM_ALTEN = 24;
    constexpr qsizetype BITS = 28;
    constexpr qsizetype PACKART = 30;
    constexpr quint32 LAUFLAENGEN_4 = 2;
    constexpr quint32 LAUFLAENGEN_8 = 1;

    if (!kopf.startsWith("BM"))
        return true;
    const bool alt = zahlAn<quint32>(kopf, KOPFLAENGE) == ALTER_KOPF;
    const auto packart = alt ? 0 : zahlAn<quint32>(kopf, PACKART);
    if (packart == LAUFLAENGEN_4 || packart == LAUFLAENGEN_8)
        return true;
    const qint64 bits = zahlAn<quint16>(kopf, alt ? BITS_IM_ALTEN : BITS);
    const qint64 zeile = (groesse.width() * bits + 31) / 32 * 4;
    return zahlAn<quint32>(kopf, PIXELANFANG) + zeile * groesse.height() <= dateilaenge;
}

} // namespace

QImage BildLaden(const std::string& ordner, std::string_view name) {
    for (const auto& datei : bilddateien(ordner, name)) {
        QFile strom(QFile::decodeName(datei.c_str()));
        if (!strom.open(QIODevice::ReadOnly))
            continue;
        const auto kopf = strom.peek(KOPFBYTES);
        QImageReader leser(&strom);
        leser.setDecideFormatFromContent(true);
        leser.setAutoTransform(false);
        const auto groesse = leser.size();
        // The size is asked before anything is made for it.
        if (groesse.isEmpty() || qint64{groesse.width()} * groesse.height() > MEISTE_PIXEL)
            continue;
        if (!vollstaendig(kopf, groesse, strom.size()))
            continue;
        if (auto bild = leser.read(); !bild.isNull())
            return bild;
    }
    return {};
}

bool BildSpeichern(const std::string& ordner, std::string_view name, const QImage& bild) {
    QByteArray inhalt;
    inhalt.reserve(bild.width() * qsizetype{3} * bild.height() + bild.height() * qsizetype{3} + 100);
    QBuffer strom(&inhalt);
    strom.open(QIODevice::WriteOnly);
    return bild.convertToFormat(QImage::Format_RGB32).save(&strom, "BMP") &&
           bilddateiSchreiben(ordner, name, {inhalt.data(), static_cast<std::size_t>(inhalt.size())});
}
