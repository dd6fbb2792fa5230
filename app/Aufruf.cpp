// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Aufruf.h"

#include "store/schema/Schemadatei.h"

#include <QCoreApplication>
#include <QString>

#include <cstdlib>

namespace {

constexpr const char* GEBRAUCH =
    "Aufruf: gamepad-konfic [--help | --version | DATEI.schema]\n"
    "\n"
    "Macht aus dem Gamepad eine Tastatur und eine Maus. Ohne ein Wort öffnet sich das Fenster,\n"
    "mit einer Datei zeigt es das Schema darin und bietet an, es aufzunehmen.\n"
    "Ihre Dateien liegen in $XDG_DATA_HOME/gamepad-konfic (~/.local/share/gamepad-konfic) oder\n"
    "im aktuellen Ordner, wo der eine Belegung.twk hat. Siehe gamepad-konfic(1).\n";

std::string umgebung(const char* name) {
    const char* wert = std::getenv(name);
    return wert ? wert : "";
}

} // namespace

std::optional<std::string> schemadatei(std::span<char* const> worte) {
    if (worte.size() != 1)
        return std::nullopt;
    const auto wort = QString::fromLocal8Bit(worte.front());
    const auto endung = QString::fromUtf8(SCHEMAENDUNG.data(), SCHEMAENDUNG.size());
    // A file manager knows a file by what is in it, and gives its whole path.
    const bool pfad = wort.startsWith('/') || wort.endsWith(endung, Qt::CaseInsensitive);
    if (wort.startsWith('-') || !pfad)
        return std::nullopt;
    return std::string(worte.front());
}

std::optional<Auskunft> auskunft(std::span<char* const> worte) {
    if (worte.empty() || schemadatei(worte))
        return std::nullopt;
    const std::string wort = worte.front();
    if (worte.size() == 1 && wort == "--version")
        return Auskunft{"Game-Pad-Konfic " PROGRAMMVERSION "\n", 0};
    if (worte.size() == 1 && wort == "--help")
        return Auskunft{GEBRAUCH, 0};
    const std::string fremdes =
        worte.size() > 1 && (wort == "--version" || wort == "--help") ? worte[1] : wort;
    return Auskunft{"gamepad-konfic: Unbekanntes Wort „" + fremdes + "“.\n" + GEBRAUCH, 2};
}

std::string eigenerOrdner() {
    const auto ordner = umgebung("GAMEPAD_KONFIC_ORDNER");
    return ordner.empty() ? QCoreApplication::applicationDirPath().toStdString() : ordner;
}

std::string startfehler() {
    return umgebung("GAMEPAD_KONFIC_STARTFEHLER");
}
