// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as the user's list of pads, with the SDL of the system. Each line is taken or told, and SDL knows
// the pad of one that was taken.
#include "platform/linux/Padliste.h"
#include "tests/fuzz/Verlangen.h"

#include <SDL.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace {

/// SDL keeps what it was told, and looks through all of it for each line; so it forgets now and then.
void vergessenLassen() {
    constexpr int LAEUFE = 2000;
    static int lauf = 0;
    if (lauf++ % LAEUFE != 0)
        return;
    SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER | SDL_INIT_JOYSTICK);
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_JOYSTICK_HIDAPI, "0");
    SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER | SDL_INIT_JOYSTICK);
}

bool bekannt(const std::string& guid) {
    const std::unique_ptr<char, decltype(&SDL_free)> text(
        SDL_GameControllerMappingForGUID(SDL_JoystickGetGUIDFromString(guid.c_str())), &SDL_free);
    return text != nullptr;
}

/// Of one line it is known which pad it tells of. Some conditions let SDL pass a whole line over.
bool eineUnbedingte(std::string_view text) {
    return std::ranges::none_of(text, [](char zeichen) { return zeichen == '\n' || zeichen == '\xEF'; }) &&
           std::ranges::all_of(std::to_array<const char*>({"hint:", "sdk", "crc:"}),
                               [&](const char* bedingung) { return text.find(bedingung) == text.npos; });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    vergessenLassen();
    const auto text = alsText(daten, groesse);
    const auto liste = padlisteUebernehmen(text);
    const auto zeilen = 1 + std::ranges::count(text, '\n');
    verlange(liste.uebernommene + static_cast<std::ptrdiff_t>(liste.fehler.size()) <= zeilen);
    verlange(liste.grund.empty() || (liste.uebernommene == 0 && liste.fehler.empty()));
    for (const auto& fehler : liste.fehler)
        verlange(fehler.zeile >= 1 && fehler.zeile <= zeilen && !fehler.grund.empty() &&
                 !fehler.text.empty());
    if (liste.uebernommene == 1 && eineUnbedingte(text)) {
        auto guid = std::string(text.substr(text.find_first_not_of(" \t\r"), 32));
        verlange(bekannt(guid.replace(4, 4, 4, '0')));
    }
    return 0;
}
