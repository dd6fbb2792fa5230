// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Padliste.h"

#include <SDL.h>
#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::size_t GUID_ZIFFERN = 32;
constexpr std::size_t PRUEFSUMME = 4; // where in a GUID the sum over the pad's name stands, and its length
constexpr std::string_view BOM = "\xEF\xBB\xBF";
constexpr std::string_view LEERRAUM = " \t\r";

// The parts of a pad as SDL calls them: what follows one of these must be readable. Newer lists know further
// ones, which SDL passes over.
constexpr std::array<std::string_view, 27> TEILE{
    "a",         "b",          "x",       "y",       "back",         "guide",         "start",
    "leftstick", "rightstick", "dpup",    "dpdown",  "leftshoulder", "rightshoulder", "dpleft",
    "dpright",   "misc1",      "paddle1", "paddle2", "paddle3",      "paddle4",       "touchpad",
    "leftx",     "lefty",      "rightx",  "righty",  "lefttrigger",  "righttrigger"};

std::string_view ohneRand(std::string_view text) {
    const auto anfang = text.find_first_not_of(LEERRAUM);
    if (anfang == std::string_view::npos)
        return {};
    return text.substr(anfang, text.find_last_not_of(LEERRAUM) + 1 - anfang);
}

// Takes what comes before the next `trenner` off the front.
std::string_view abtrennen(std::string_view& rest, char trenner) {
    const auto ende = std::min(rest.find(trenner), rest.size());
    const auto teil = rest.substr(0, ende);
    rest.remove_prefix(std::min(ende + 1, rest.size()));
    return teil;
}

// --- the encoding ---

// Length of the UTF-8 sequence at the front, 0 if there is none.
std::size_t zeichenlaenge(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char erstes = byte(0);
    if (erstes < 0x80)
        return erstes == 0 ? 0 : 1;
    const std::size_t laenge = erstes >= 0xF0 ? 4 : erstes >= 0xE0 ? 3 : 2;
    if (erstes < 0xC2 || erstes > 0xF4 || text.size() < laenge)
        return 0;
    for (std::size_t i = 1; i < laenge; ++i)
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    const bool zuLang = (erstes == 0xE0 && byte(1) < 0xA0) || (erstes == 0xF0 && byte(1) < 0x90);
    const bool keinZeichen = (erstes == 0xED && byte(1) > 0x9F) || (erstes == 0xF4 && byte(1) > 0x8F);
    return zuLang || keinZeichen ? 0 : laenge;
}

// The line, from 1, of the first byte that is no text.
std::optional<std::ptrdiff_t> zeileOhneText(std::string_view inhalt) {
    for (std::size_t ort = 0; ort < inhalt.size();) {
        const auto laenge = zeichenlaenge(inhalt.substr(ort));
        if (laenge == 0)
            return 1 + std::ranges::count(inhalt.substr(0, ort), '\n');
        ort += laenge;
    }
    return std::nullopt;
}

// --- a line ---

bool istZahl(std::string_view text) {
    unsigned char zahl = 0; // SDL counts parts of a pad in bytes
    const auto [ende, fehler] = std::from_chars(text.data(), text.data() + text.size(), zahl);
    return fehler == std::errc() && ende == text.data() + text.size();
}

bool istQuelle(std::string_view wert) {
    const bool halb = wert.starts_with('+') || wert.starts_with('-');
    if (halb)
        wert.remove_prefix(1);
    if (wert.starts_with('a')) {
        if (wert.ends_with('~'))
            wert.remove_suffix(1);
        return istZahl(wert.substr(1));
    }
    if (halb)
        return false;
    if (wert.starts_with('b'))
        return istZahl(wert.substr(1));
    if (!wert.starts_with('h'))
        return false;
    wert.remove_prefix(1);
    const auto hut = abtrennen(wert, '.');
    return istZahl(hut) && istZahl(wert);
}

bool istTeil(std::string_view name) {
    if (name.starts_with('+') || name.starts_with('-')) // a half of an axis
        name.remove_prefix(1);
    return std::ranges::find(TEILE, name) != TEILE.end();
}

bool istGuid(std::string_view text) {
    return text.size() == GUID_ZIFFERN &&
           text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

struct Zeilenurteil {
    bool andereswo = false; // it is for another platform
    std::string grund;      // what is wrong with it
};

Zeilenurteil feldPruefen(std::string_view feld, int& teile) {
    auto wert = feld;
    const auto name = abtrennen(wert, ':');
    if (name.size() == feld.size())
        return {false, "„" + std::string(feld) + "“ hat keinen Doppelpunkt"};
    if (name == "platform")
        return {wert != SDL_GetPlatform(), ""};
    if (!istTeil(name))
        return {};
    ++teile;
    if (!istQuelle(wert))
        return {false, "„" + std::string(feld) + "“ nennt weder Taste noch Achse noch Richtung"};
    return {};
}

// What is for another platform may be written as that likes it: it is no fault.
Zeilenurteil zeilePruefen(std::string_view zeile) {
    Zeilenurteil urteil;
    const auto bemaengeln = [&](const std::string& grund) {
        if (urteil.grund.empty())
            urteil.grund = grund;
    };
    if (!istGuid(abtrennen(zeile, ',')))
        bemaengeln("sie beginnt nicht mit einer Kennung aus 32 Hexadezimalziffern");
    if (ohneRand(abtrennen(zeile, ',')).empty())
        bemaengeln("der Name des Gamepads fehlt");
    int teile = 0;
    while (!zeile.empty()) {
        const auto feld = ohneRand(abtrennen(zeile, ','));
        if (feld.empty())
            continue;
        const auto eines = feldPruefen(feld, teile);
        urteil.andereswo |= eines.andereswo;
        bemaengeln(eines.grund);
    }
    if (teile == 0)
        bemaengeln("sie ordnet nichts zu");
    return urteil;
}

// SDL looks for a pad without the sum over its name, but names pads with it: both are to be found.
std::string ohnePruefsumme(std::string_view zeile) {
    std::string text(zeile);
    text.replace(PRUEFSUMME, PRUEFSUMME, PRUEFSUMME, '0');
    return text;
}

void zeileUebernehmen(std::string_view zeile, int nummer, Padliste& liste) {
    auto urteil = zeilePruefen(zeile);
    if (urteil.andereswo)
        return;
    if (urteil.grund.empty() && SDL_GameControllerAddMapping(ohnePruefsumme(zeile).c_str()) < 0)
        urteil.grund = SDL_GetError();
    if (urteil.grund.empty())
        ++liste.uebernommene;
    else
        liste.fehler.push_back({nummer, std::string(zeile), urteil.grund});
}

// --- the file ---

class Strom {
public:
    // Does not wait at what only looks like a file.
    explicit Strom(const std::filesystem::path& datei)
        : nummer_(open(datei.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    Strom(const Strom&) = delete;
    Strom& operator=(const Strom&) = delete;
    ~Strom() {
        if (nummer_ >= 0)
            close(nummer_);
    }
    bool offen() const { return nummer_ >= 0; }
    bool istDatei() const {
        struct stat angaben {};
        return fstat(nummer_, &angaben) == 0 && S_ISREG(angaben.st_mode);
    }
    // At most one byte more than a list may have; nothing after an error.
    std::optional<std::string> lesen() const {
        std::string inhalt(PADLISTE_HOECHSTENS + 1, '\0');
        std::size_t gelesen = 0;
        while (gelesen < inhalt.size()) {
            const auto stueck = read(nummer_, inhalt.data() + gelesen, inhalt.size() - gelesen);
            if (stueck < 0 && errno == EINTR)
                continue;
            if (stueck < 0)
                return std::nullopt;
            if (stueck == 0)
                break;
            gelesen += static_cast<std::size_t>(stueck);
        }
        inhalt.resize(gelesen);
        return inhalt;
    }

private:
    int nummer_;
};

Padliste unbrauchbar(const std::string& grund) {
    return {grund, 0, {}};
}

} // namespace

Padliste padlisteLaden(const std::filesystem::path& datei) {
    const Strom strom(datei);
    if (!strom.offen())
        return errno == ENOENT ? Padliste{} : unbrauchbar("sie lässt sich nicht öffnen");
    if (!strom.istDatei())
        return unbrauchbar("sie ist keine Datei");
    const auto inhalt = strom.lesen();
    if (!inhalt)
        return unbrauchbar("sie lässt sich nicht lesen");
    return padlisteUebernehmen(*inhalt);
}

Padliste padlisteUebernehmen(std::string_view inhalt) {
    if (inhalt.size() > PADLISTE_HOECHSTENS)
        return unbrauchbar("sie ist größer als 4 MiB");
    if (const auto zeile = zeileOhneText(inhalt))
        return unbrauchbar("sie ist kein Text in UTF-8 (Zeile " + std::to_string(*zeile) + ")");
    if (inhalt.starts_with(BOM))
        inhalt.remove_prefix(BOM.size());
    Padliste liste;
    for (int nummer = 1; !inhalt.empty(); ++nummer) {
        const auto zeile = ohneRand(abtrennen(inhalt, '\n'));
        if (!zeile.empty() && !zeile.starts_with('#'))
            zeileUebernehmen(zeile, nummer, liste);
    }
    return liste;
}
