// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Bilddatei.h"

#include "store/files/Dateiersatz.h"

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <string>

namespace fs = std::filesystem;

namespace {

/// Folds ASCII letters and, in UTF-8, the umlauts and accented letters from À to Þ, whatever the locale.
std::string gefaltet(std::string_view name) {
    constexpr unsigned char VORBYTE = 0xC3;
    constexpr unsigned char MALZEICHEN = 0x97; // × lies between the letters
    std::string ergebnis(name);
    unsigned char vorher = 0;
    for (char& zeichen : ergebnis) {
        const auto byte = static_cast<unsigned char>(zeichen);
        const bool ascii = byte >= 'A' && byte <= 'Z';
        const bool latin = vorher == VORBYTE && byte >= 0x80 && byte <= 0x9E && byte != MALZEICHEN;
        if (ascii || latin)
            zeichen = static_cast<char>(byte + 0x20);
        vorher = byte;
    }
    return ergebnis;
}

bool hatTrenner(std::string_view name) {
    return name.find_first_of("/\\") != std::string_view::npos;
}

bool umbenennen(const fs::path& von, const fs::path& nach, unsigned art) {
    return renameat2(AT_FDCWD, von.c_str(), AT_FDCWD, nach.c_str(), art) == 0;
}

} // namespace

bool gleicherBildname(std::string_view einer, std::string_view anderer) {
    return gefaltet(einer) == gefaltet(anderer);
}

std::vector<fs::path> bilddateien(const fs::path& ordner, std::string_view name) {
    std::vector<fs::path> gefunden;
    if (hatTrenner(name))
        return gefunden;
    const std::string gesucht = gefaltet(name);
    std::error_code grund;
    for (fs::directory_iterator stelle(ordner, grund), ende; !grund && stelle != ende;
         stelle.increment(grund)) {
        std::error_code keineDatei;
        if (gefaltet(stelle->path().filename().native()) == gesucht && stelle->is_regular_file(keineDatei))
            gefunden.push_back(stelle->path());
    }
    return gefunden;
}

bool bilddateiSchreiben(const fs::path& ordner, std::string_view name, std::string_view inhalt) {
    if (hatTrenner(name))
        return false;
    auto ziele = bilddateien(ordner, name);
    if (ziele.empty())
        ziele.push_back(ordner / name);
    return std::ranges::all_of(ziele, [&](const auto& ziel) { return dateiErsetzen(ziel, inhalt); });
}

bool bilddateienTauschen(const fs::path& ordner, std::string_view name, std::string_view anderer) {
    if (hatTrenner(name) || hatTrenner(anderer))
        return false;
    const auto eine = bilddateien(ordner, name);
    const auto andere = bilddateien(ordner, anderer);
    if (!eine.empty() && !andere.empty())
        return umbenennen(eine.front(), andere.front(), RENAME_EXCHANGE);
    if (!eine.empty())
        return umbenennen(eine.front(), ordner / anderer, RENAME_NOREPLACE);
    return !andere.empty() && umbenennen(andere.front(), ordner / name, RENAME_NOREPLACE);
}
