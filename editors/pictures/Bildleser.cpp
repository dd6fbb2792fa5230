// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/pictures/Bildleser.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>

namespace {

constexpr qint64 KOPFBYTES = 34; // of a bitmap that tell how long it is

constexpr QByteArrayView PNG("\x89PNG\r\n\x1a\n", 8);

struct Bildformat {
    QByteArrayView anfang;
    const char* name; ///< as Qt calls it
};
constexpr std::array<Bildformat, 3> FORMATE{
    {{QByteArrayView("BM", 2), "bmp"}, {PNG, "png"}, {QByteArrayView("\xFF\xD8\xFF", 3), "jpeg"}}};

template <class Zahl> Zahl zahlAn(QByteArrayView kopf, qsizetype stelle) {
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

    const bool alt = zahlAn<quint32>(kopf, KOPFLAENGE) == ALTER_KOPF;
    const auto packart = alt ? 0 : zahlAn<quint32>(kopf, PACKART);
    if (packart == LAUFLAENGEN_4 || packart == LAUFLAENGEN_8)
        return true;
    const qint64 bits = zahlAn<quint16>(kopf, alt ? BITS_IM_ALTEN : BITS);
    const qint64 zeile = (groesse.width() * bits + 31) / 32 * 4;
    return zahlAn<quint32>(kopf, PIXELANFANG) + zeile * groesse.height() <= dateilaenge;
}

// --- PNG ---

/// The file with the parts that make its pixels, all others left out; nothing where its parts do not join up.
/// Qt unpacks the texts of a PNG, a thousand of them and each to megabytes.
QByteArray nurPixel(QByteArrayView png) {
    constexpr std::array<QByteArrayView, 5> TEILE{"IHDR", "PLTE", "tRNS", "IDAT", "IEND"};
    constexpr qsizetype RAHMEN = 12; // length and name before a part, a sum behind it
    constexpr qsizetype NAME = 4;
    QByteArray pixel = PNG.toByteArray();
    for (auto rest = png.sliced(PNG.size()); rest.size() >= RAHMEN;) {
        const qsizetype laenge = RAHMEN + qsizetype{qFromBigEndian<quint32>(rest.data())};
        if (laenge > rest.size())
            return {};
        if (std::ranges::find(TEILE, rest.sliced(NAME, NAME)) != TEILE.end())
            pixel.append(rest.first(laenge));
        rest = rest.sliced(laenge);
    }
    return pixel;
}

// --- JPEG ---

/// Passes over the whole picture that a JPEG may take; cameras and programs make up to ten. Each costs as
/// much as the picture is large, and may be some bytes.
constexpr qsizetype MEISTE_DURCHGAENGE = 64;

/// At least as many as there are: among the pixels the mark of a pass does not stand.
qsizetype durchgaenge(const QByteArray& jpeg) {
    return jpeg.count("\xFF\xDA");
}

// --- the file ---

/// Opens what is really a file, and neither waits at a pipe nor reads a device that has no end.
bool oeffnen(QFile& strom, const std::filesystem::path& datei) {
    const int nummer = open(datei.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (nummer < 0 || !strom.open(nummer, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return false;
    struct stat angaben {};
    return fstat(nummer, &angaben) == 0 && S_ISREG(angaben.st_mode) && angaben.st_size <= GROESSTE_BILDDATEI;
}

QImage lesen(QIODevice& strom, const char* format) {
    const auto kopf = strom.peek(KOPFBYTES);
    QImageReader leser(&strom, format);
    leser.setAutoDetectImageFormat(false);
    leser.setAutoTransform(false);
    const auto groesse = leser.size();
    // The size is asked before anything is made for it.
    if (groesse.isEmpty() || qint64{groesse.width()} * groesse.height() > MEISTE_PIXEL)
        return {};
    if (!kopf.startsWith("BM"))
        return leser.read();
    if (!vollstaendig(kopf, groesse, strom.size()))
        return {};
    // Run lengths may pass over pixels, and end before the last of them: Qt leaves those as it finds them.
    QImage bild(groesse, leser.imageFormat());
    bild.fill(0);
    return leser.read(&bild) ? bild : QImage();
}

QImage lesen(const QByteArray& inhalt, const char* format) {
    QBuffer strom;
    strom.setData(inhalt);
    strom.open(QIODevice::ReadOnly);
    return lesen(strom, format);
}

/// Of pixels of 32 bits, in MiB. Qt's own limit is half of it.
void grenzeSetzen() {
    static const bool grenze = [] {
        QImageReader::setAllocationLimit(static_cast<int>(MEISTE_PIXEL * 4 >> 20));
        return true;
    }();
    Q_UNUSED(grenze);
}

} // namespace

QImage bildLesen(const std::filesystem::path& datei) {
    grenzeSetzen();
    QFile strom;
    if (!oeffnen(strom, datei))
        return {};
    const auto beginnt = [kopf = strom.peek(PNG.size())](const Bildformat& format) {
        return kopf.startsWith(format.anfang);
    };
    const auto format = std::ranges::find_if(FORMATE, beginnt);
    if (format == FORMATE.end())
        return {};
    if (format->name == std::string_view("png"))
        return lesen(nurPixel(strom.readAll()), format->name);
    if (format->name == std::string_view("jpeg")) {
        const auto inhalt = strom.readAll();
        return durchgaenge(inhalt) <= MEISTE_DURCHGAENGE ? lesen(inhalt, format->name) : QImage();
    }
    return lesen(strom, format->name);
}

QImage pngLesen(const QByteArray& inhalt) {
    grenzeSetzen();
    return inhalt.startsWith(PNG) ? lesen(nurPixel(inhalt), "png") : QImage();
}
