#include "store/Bilddatei.h"

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

} // namespace

std::vector<fs::path> bilddateien(const fs::path& ordner, std::string_view name) {
    std::vector<fs::path> gefunden;
    if (name.find_first_of("/\\") != std::string_view::npos)
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
