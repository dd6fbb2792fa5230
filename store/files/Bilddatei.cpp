// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/Bilddatei.h"

#include "store/files/Dateiersatz.h"

#include <algorithm>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace {

/// A byte of a name with ASCII letters and, in UTF-8, the umlauts and accented letters from À to Þ folded,
/// whatever the locale. `vorher` is the byte before it.
constexpr unsigned char gefaltet(unsigned char byte, unsigned char vorher) {
    constexpr unsigned char VORBYTE = 0xC3;
    constexpr unsigned char MALZEICHEN = 0x97; // × lies between the letters
    const bool ascii = byte >= 'A' && byte <= 'Z';
    const bool latin = vorher == VORBYTE && byte >= 0x80 && byte <= 0x9E && byte != MALZEICHEN;
    return static_cast<unsigned char>(ascii || latin ? byte + 0x20 : byte);
}

bool hatTrenner(std::string_view name) {
    return name.find_first_of("/\\") != std::string_view::npos;
}

struct Ordnerschluss {
    void operator()(DIR* strom) const noexcept { closedir(strom); }
};

bool umbenennen(const fs::path& von, const fs::path& nach, unsigned art) {
    return renameat2(AT_FDCWD, von.c_str(), AT_FDCWD, nach.c_str(), art) == 0;
}

bool tauschen(const fs::path& ordner, std::string_view name, std::string_view anderer) {
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

} // namespace

// A folded letter is as long as the letter: names of different lengths, and so most of a folder, are told
// apart without a look at their bytes.
bool gleicherBildname(std::string_view einer, std::string_view anderer) {
    if (einer.size() != anderer.size())
        return false;
    unsigned char vorEinem = 0;
    unsigned char vorAnderem = 0;
    for (std::size_t i = 0; i < einer.size(); ++i) {
        const auto eines = static_cast<unsigned char>(einer[i]);
        const auto anderes = static_cast<unsigned char>(anderer[i]);
        if (gefaltet(eines, vorEinem) != gefaltet(anderes, vorAnderem))
            return false;
        vorEinem = eines;
        vorAnderem = anderes;
    }
    return true;
}

std::vector<fs::path> bilddateien(const fs::path& ordner, std::string_view name) {
    std::vector<fs::path> gefunden;
    if (hatTrenner(name))
        return gefunden;
    // Read by the system's own calls: a folder may hold thousands of pictures, and to make a path of each of
    // their names takes several times as long as to read them.
    const std::unique_ptr<DIR, Ordnerschluss> strom(opendir(ordner.c_str()));
    while (const auto* eintrag = strom ? readdir(strom.get()) : nullptr) {
        if (!gleicherBildname(eintrag->d_name, name))
            continue;
        auto datei = ordner / eintrag->d_name;
        std::error_code keineDatei;
        if (fs::is_regular_file(datei, keineDatei))
            gefunden.push_back(std::move(datei));
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
    return tauschen(ordner, name, anderer) && ordnerSichern(ordner);
}

void bilddateienLoeschen(const fs::path& ordner, const std::vector<std::string>& namen) {
    for (const auto& name : namen)
        for (const auto& datei : bilddateien(ordner, name))
            unlink(datei.c_str());
    resteRaeumen(ordner, [&](std::string_view rest) {
        return std::ranges::any_of(namen, [&](const auto& name) { return gleicherBildname(name, rest); });
    });
    ordnerSichern(ordner);
}
