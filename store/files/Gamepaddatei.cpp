// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Gamepaddatei.h"

#include "store/files/Dateiersatz.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace fs = std::filesystem;

bool gamepadDateiDa(const std::string& pfad) {
    std::error_code grund;
    const auto art = fs::status(pfad, grund).type();
    return art != fs::file_type::not_found && art != fs::file_type::directory;
}

std::optional<Gamepadtabelle> gamepadLesen(const std::string& pfad) {
    std::error_code grund;
    if (!fs::is_regular_file(pfad, grund))
        return std::nullopt; // the opening of a pipe would wait
    if (fs::file_size(pfad, grund) > GROESSTES_XML)
        return std::nullopt;
    std::ifstream datei(pfad, std::ios::binary);
    const std::string inhalt{std::istreambuf_iterator<char>(datei), {}};
    return datei.bad() ? std::nullopt : gamepadAusXml(inhalt);
}

bool gamepadSpeichern(const std::string& pfad, const Gamepadtabelle& tabelle) {
    const auto xml = gamepadAlsXml(tabelle);
    return xml && dateiErsetzen(pfad, *xml);
}

bool istZeileVon(const Gamepadzeile& zeile, const std::string& schema) {
    const auto name = zeile.find("Schema");
    return name != zeile.end() && name->second == schema;
}
