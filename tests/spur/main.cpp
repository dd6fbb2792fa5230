// SPDX-License-Identifier: GPL-3.0-or-later
// spur [OPTION...] FILE|FOLDER... plays trace files, of a folder all that lie in it and below, and compares;
// prints the first difference of each scenario, exits 1 on any. Each is played twice, by a run that always
// polls and by one that rests while nothing can change: there may be no difference between these, either.
//
// --streng        an error that stops a run and is not named by the file is a difference, too
// --mindestens N  fewer than N scenarios are a failure, too
// --ruhend N      rests that leave out fewer than N calls of timers, all in all, are a failure, too
// --zeige         prints what comes out instead
// --weg links|rechts FILE   prints where this stick was in a record (formats/Stickweg.h), where the record
// plays
//                 again as it says; the file may be a stranger's, so that there is a bound to what that takes
#include "tests/hilfen/Bauart.h"
#include "tests/spur/Spieler.h"
#include "tests/spur/Wegschreiber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <iostream>
#include <string_view>
#include <sys/resource.h>

namespace {

namespace fs = std::filesystem;

// Beside the program, as it is built, or where it is installed.
fs::path leereDatenbank() {
    const auto hier = fs::read_symlink("/proc/self/exe").parent_path();
    const auto nebenan = hier / "Belegung.twk";
    return fs::exists(nebenan) ? nebenan : hier / ZU_DEN_DATEN / "Belegung.twk";
}

struct Auftrag {
    bool zeigen = false;
    UnerwarteterFehler unerwarteter = UnerwarteterFehler::Gilt;
    int mindestens = 0;
    int ruhend = 0;
    std::vector<fs::path> orte;
};

/// What the command line asks for; nothing where it can't be read.
std::optional<Auftrag> auftrag(const std::vector<std::string_view>& worte) {
    Auftrag auftrag;
    for (std::size_t i = 0; i < worte.size(); ++i) {
        const auto wort = worte[i];
        if (wort == "--zeige") {
            auftrag.zeigen = true;
        } else if (wort == "--streng") {
            auftrag.unerwarteter = UnerwarteterFehler::Falsch;
        } else if ((wort == "--mindestens" || wort == "--ruhend") && i + 1 < worte.size()) {
            const auto zahl = worte[++i];
            auto& ziel = wort == "--ruhend" ? auftrag.ruhend : auftrag.mindestens;
            if (std::from_chars(zahl.data(), zahl.data() + zahl.size(), ziel).ptr !=
                zahl.data() + zahl.size())
                return std::nullopt;
        } else if (wort.starts_with("--")) {
            return std::nullopt;
        } else {
            auftrag.orte.emplace_back(wort);
        }
    }
    return auftrag.orte.empty() ? std::nullopt : std::optional(auftrag);
}

std::vector<fs::path> spurenIn(const fs::path& ordner) {
    std::vector<fs::path> spuren;
    for (const auto& eintrag : fs::recursive_directory_iterator(ordner))
        if (eintrag.path().extension() == ".spur")
            spuren.push_back(eintrag.path());
    std::ranges::sort(spuren);
    return spuren;
}

std::string inhalt(const fs::path& datei) {
    std::ifstream strom(datei, std::ios::binary);
    if (!strom)
        throw Szenariofehler("can't be read");
    constexpr std::size_t HOECHSTENS = std::size_t{256} * 1024 * 1024; // a record has some dozens of MiB
    std::string text;
    std::array<char, 65536> stueck{};
    while (strom.read(stueck.data(), stueck.size()) || strom.gcount() > 0) {
        text.append(stueck.data(), static_cast<std::size_t>(strom.gcount()));
        if (text.size() > HOECHSTENS)
            throw Szenariofehler("is no trace: more than 256 MiB");
    }
    return text;
}

// What stands in a stranger's file says nothing to the terminal.
std::string druckbar(std::string text) {
    std::ranges::replace_if(
        text, [](unsigned char zeichen) { return zeichen < ' ' || zeichen == 0x7f; }, '?');
    return text;
}

// --- the way of a record ---

constexpr rlim_t WEG_SEKUNDEN = 60;
constexpr rlim_t WEG_SPEICHER = rlim_t{1} << 30;

void begrenzen(__rlimit_resource was, rlim_t hoechstens) {
    const rlimit grenze{hoechstens, hoechstens};
    setrlimit(was, &grenze);
}

/// Throws where it is no record, or plays otherwise than it says.
std::string stickweg(Stickseite seite, const fs::path& datei) {
    const auto szenarien = szenarienLesen(inhalt(datei));
    if (szenarien.size() != 1 || !szenarien.front().toleranz)
        throw Szenariofehler("is no record");
    Wegschreiber schreiber(seite);
    const auto ergebnis = spielen(szenarien.front(), leereDatenbank(), Pollart::Immer, &schreiber);
    if (const auto text = unterschied(szenarien.front(), ergebnis); !text.empty())
        throw Szenariofehler(text);
    return stickwegSchreiben(schreiber.weg());
}

/// Exit code.
int wegZeigen(Stickseite seite, const fs::path& datei) {
    if (!ADRESSPRUEFER) // which wants room without end
        begrenzen(RLIMIT_AS, WEG_SPEICHER);
    begrenzen(RLIMIT_CPU, WEG_SEKUNDEN);
    try {
        std::cout << stickweg(seite, datei);
        return std::cout.flush() ? 0 : 1;
    } catch (const std::exception& fehler) {
        std::cerr << datei.string() << ": " << fehler.what() << '\n';
        return 1;
    }
}

std::optional<Stickseite> stick(std::string_view wort) {
    if (wort == "links")
        return Stickseite::Links;
    return wort == "rechts" ? std::optional(Stickseite::Rechts) : std::nullopt;
}

// --- all that is named ---

class Vorfuehrung {
public:
    explicit Vorfuehrung(Auftrag auftrag) : auftrag_(std::move(auftrag)) {}

    /// Exit code.
    int alles() {
        for (const auto& ort : auftrag_.orte)
            allesAn(ort);
        if (!auftrag_.zeigen)
            std::cout << dateien_ << (dateien_ == 1 ? " file: " : " files: ") << bestandene_ << " passed, "
                      << falsche_ << " failed\n";
        const bool zuWenige = bestandene_ + falsche_ < auftrag_.mindestens;
        if (zuWenige)
            std::cout << "fewer than " << auftrag_.mindestens << " scenarios\n";
        const bool zuUnruhig = ausgelassene_ < static_cast<std::uint64_t>(auftrag_.ruhend);
        if (zuUnruhig)
            std::cout << "rests have left out " << ausgelassene_ << " calls of timers, fewer than "
                      << auftrag_.ruhend << '\n';
        return falsche_ || zuWenige || zuUnruhig ? 1 : 0;
    }

private:
    void allesAn(const fs::path& ort) {
        std::error_code grund;
        if (!fs::is_directory(ort, grund))
            return datei(ort);
        std::vector<fs::path> spuren;
        try {
            spuren = spurenIn(ort);
        } catch (const fs::filesystem_error& fehler) {
            gescheitert(ort.string(), fehler.code().message());
        }
        for (const auto& spur : spuren)
            datei(spur);
    }

    void datei(const fs::path& datei) {
        ++dateien_;
        try {
            for (const auto& szenario : szenarienLesen(inhalt(datei)))
                vorfuehren(datei.string(), szenario);
        } catch (const std::exception& fehler) {
            gescheitert(datei.string(), fehler.what());
        }
    }

    void vorfuehren(std::string name, const Szenario& szenario) {
        if (!szenario.variante.empty())
            name += " (" + szenario.variante + ")";
        try {
            const auto ergebnis = spielen(szenario, leereDatenbank());
            if (auftrag_.zeigen)
                zeigen(szenario, ergebnis);
            else
                vergleichen(name, szenario, ergebnis);
        } catch (const std::exception& fehler) {
            gescheitert(name, fehler.what());
        }
    }

    void vergleichen(const std::string& name, const Szenario& szenario, const Spurergebnis& ergebnis) {
        auto text = unterschied(szenario, ergebnis, auftrag_.unerwarteter);
        if (text.empty() && !szenario.toleranz) {
            const auto ruhend = spielen(szenario, leereDatenbank(), Pollart::Ruhend);
            ausgelassene_ += ruhend.ausgelassene;
            text = ruheunterschied(ergebnis, ruhend);
        }
        if (text.empty() && szenario.genau == std::chrono::milliseconds{0})
            text = "nothing of it is exact";
        if (!text.empty())
            return gescheitert(name, text);
        ++bestandene_;
        if (szenario.genau)
            std::cout << druckbar(name) << ": played as far as it is exact, "
                      << std::to_string(szenario.genau->count()) << " ms\n";
    }

    void gescheitert(const std::string& name, const std::string& grund) {
        ++falsche_;
        std::cout << druckbar(name) << ": " << druckbar(grund) << '\n';
    }

    static void zeigen(const Szenario& szenario, const Spurergebnis& ergebnis) {
        if (!szenario.variante.empty())
            std::cout << "# " << szenario.variante << '\n';
        for (const auto& ereignis : ergebnis.ereignisse)
            std::cout << ereignis.zeit.count() << ' ' << ereignis.text << '\n';
        if (ergebnis.fehler)
            std::cerr << "stopped by error " << *ergebnis.fehler << ": " << ergebnis.fehlertext << '\n';
    }

    Auftrag auftrag_;
    int dateien_ = 0;
    int bestandene_ = 0; ///< of the scenarios, as the next
    int falsche_ = 0;
    std::uint64_t ausgelassene_ = 0;
};

} // namespace

int main(int anzahl, char** worte) {
    const std::vector<std::string_view> alle(worte + 1, worte + anzahl);
    if (alle.size() == 3 && alle[0] == "--weg" && stick(alle[1]))
        return wegZeigen(*stick(alle[1]), alle[2]);
    const auto gelesen = auftrag(alle);
    if (!gelesen) {
        std::cerr << "usage: spur [--streng | --zeige] [--mindestens N] [--ruhend N] FILE|FOLDER...\n"
                     "       spur --weg links|rechts FILE\n";
        return 2;
    }
    return Vorfuehrung(*gelesen).alles();
}
