#include "editors/Ebenenbild.h"

#include "editors/Formhilfen.h"
#include "store/Bilddatei.h"

#include <QFile>
#include <QImageReader>

namespace {

// A screen of 8192 by 8192; more would take hundreds of megabytes.
constexpr qint64 MEISTE_PIXEL = qint64{8192} * 8192;

} // namespace

QImage BildLaden(const std::string& ordner, std::string_view name) {
    for (const auto& datei : bilddateien(ordner, name)) {
        QFile strom(QFile::decodeName(datei.c_str()));
        if (!strom.open(QIODevice::ReadOnly))
            continue;
        QImageReader leser(&strom);
        leser.setDecideFormatFromContent(true);
        leser.setAutoTransform(false);
        const auto groesse = leser.size();
        // The size is asked before anything is made for it.
        if (groesse.isEmpty() || qint64{groesse.width()} * groesse.height() > MEISTE_PIXEL)
            continue;
        if (auto bild = leser.read(); !bild.isNull())
            return bild;
    }
    return {};
}
