// SPDX-License-Identifier: GPL-3.0-or-later
// Files as tests look at them: whole contents, names in a folder, and a user whom permissions bind.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

inline void dateiSchreiben(const std::filesystem::path& pfad, const std::string& inhalt) {
    std::ofstream(pfad, std::ios::binary) << inhalt;
}

inline std::string dateiLesen(const std::filesystem::path& pfad) {
    std::ostringstream inhalt;
    inhalt << std::ifstream(pfad, std::ios::binary).rdbuf();
    return inhalt.str();
}

inline std::vector<std::string> namenIn(const std::filesystem::path& ordner) {
    std::vector<std::string> namen;
    for (const auto& eintrag : std::filesystem::directory_iterator(ordner))
        namen.push_back(eintrag.path().filename().string());
    return namen;
}

/// Gives up root's right to pass over the permission bits of files, while it lives.
class AlsNiemand {
public:
    AlsNiemand() {
        constexpr uid_t NIEMAND = 65534;
        if (war_ == 0 && seteuid(NIEMAND) != 0)
            std::abort();
    }
    ~AlsNiemand() {
        if (war_ == 0 && seteuid(0) != 0)
            std::abort();
    }
    AlsNiemand(const AlsNiemand&) = delete;
    AlsNiemand& operator=(const AlsNiemand&) = delete;

private:
    uid_t war_ = geteuid();
};
