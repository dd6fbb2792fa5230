// SPDX-License-Identifier: GPL-3.0-or-later
// What the user reads of a key that he has captured: each key has a name, and it is the name of that key.
//
// The names of the typing block are what the German layout of the system writes with these keys; those of the
// others stand here once more, by the kernel's name for the key.
#include "platform/linux/TastenKarte.h"
#include "store/schema/modKeyCode.h"
#include "tests/hilfen/Testdatenbank.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <xkbcommon/xkbcommon.h>

namespace {

const std::map<EvdevTaste, std::string> FESTE_NAMEN{
    {KEY_CANCEL, "Abbruch"},
    {KEY_BACKSPACE, "Rück"},
    {KEY_TAB, "Tab"},
    {KEY_CLEAR, "Leeren"},
    {KEY_ENTER, "Enter"},
    {KEY_PAUSE, "Pause"},
    {KEY_CAPSLOCK, "Feststell"},
    {KEY_ESC, "Esc"},
    {KEY_SPACE, "Leertaste"},
    {KEY_PAGEUP, "Bild auf"},
    {KEY_PAGEDOWN, "Bild ab"},
    {KEY_END, "Ende"},
    {KEY_HOME, "Pos1"},
    {KEY_LEFT, "Pfeil links"},
    {KEY_UP, "Pfeil auf"},
    {KEY_RIGHT, "Pfeil rechts"},
    {KEY_DOWN, "Pfeil ab"},
    {KEY_SELECT, "Auswahl"},
    {KEY_PRINT, "Drucken"},
    {KEY_SYSRQ, "Druck"},
    {KEY_INSERT, "Einfg"},
    {KEY_DELETE, "Entf"},
    {KEY_HELP, "Hilfe"},
    {KEY_LEFTMETA, "Win links"},
    {KEY_RIGHTMETA, "Win rechts"},
    {KEY_COMPOSE, "Menü"},
    {KEY_SLEEP, "Standby"},
    {KEY_KP0, "Num 0"},
    {KEY_KP1, "Num 1"},
    {KEY_KP2, "Num 2"},
    {KEY_KP3, "Num 3"},
    {KEY_KP4, "Num 4"},
    {KEY_KP5, "Num 5"},
    {KEY_KP6, "Num 6"},
    {KEY_KP7, "Num 7"},
    {KEY_KP8, "Num 8"},
    {KEY_KP9, "Num 9"},
    {KEY_KPASTERISK, "Num *"},
    {KEY_KPPLUS, "Num +"},
    {KEY_KPCOMMA, "Num Trenner"},
    {KEY_KPMINUS, "Num -"},
    {KEY_KPDOT, "Num ,"},
    {KEY_KPSLASH, "Num /"},
    {KEY_KPEQUAL, "Num ="},
    {KEY_F1, "F1"},
    {KEY_F2, "F2"},
    {KEY_F3, "F3"},
    {KEY_F4, "F4"},
    {KEY_F5, "F5"},
    {KEY_F6, "F6"},
    {KEY_F7, "F7"},
    {KEY_F8, "F8"},
    {KEY_F9, "F9"},
    {KEY_F10, "F10"},
    {KEY_F11, "F11"},
    {KEY_F12, "F12"},
    {KEY_F13, "F13"},
    {KEY_F14, "F14"},
    {KEY_F15, "F15"},
    {KEY_F16, "F16"},
    {KEY_F17, "F17"},
    {KEY_F18, "F18"},
    {KEY_F19, "F19"},
    {KEY_F20, "F20"},
    {KEY_F21, "F21"},
    {KEY_F22, "F22"},
    {KEY_F23, "F23"},
    {KEY_F24, "F24"},
    {KEY_NUMLOCK, "Num Feststell"},
    {KEY_SCROLLLOCK, "Rollen"},
    {KEY_LEFTSHIFT, "Links Umschalt"},
    {KEY_RIGHTSHIFT, "Rechts Umschalt"},
    {KEY_LEFTCTRL, "Links Strg"},
    {KEY_RIGHTCTRL, "Rechts Strg"},
    {KEY_LEFTALT, "Links Alt"},
    {KEY_RIGHTALT, "Alt Gr"},
    {KEY_BACK, "Browser zurück"},
    {KEY_FORWARD, "Browser vor"},
    {KEY_REFRESH, "Browser aktualisieren"},
    {KEY_STOP, "Browser abbrechen"},
    {KEY_SEARCH, "Browser Suche"},
    {KEY_BOOKMARKS, "Browser Favoriten"},
    {KEY_HOMEPAGE, "Browser Startseite"},
    {KEY_MUTE, "Ton aus"},
    {KEY_VOLUMEDOWN, "Leiser"},
    {KEY_VOLUMEUP, "Lauter"},
    {KEY_NEXTSONG, "Nächster Titel"},
    {KEY_PREVIOUSSONG, "Voriger Titel"},
    {KEY_STOPCD, "Medien Stopp"},
    {KEY_PLAYPAUSE, "Wiedergabe"},
    {KEY_MAIL, "E-Mail"},
    {KEY_MEDIA, "Medienauswahl"},
    {KEY_COMPUTER, "Programm 1"},
    {KEY_CALC, "Programm 2"},
    {KEY_RO, "Ro"},
    {KEY_PLAY, "Abspielen"},
    {KEY_ZOOM, "Zoom"},
};

/// Codes that stand for either side of a key, and one that no key has.
const std::map<VirtuelleTaste, std::string> OHNE_SEITE{{16, "Umschalt"}, {17, "Strg"}, {18, "Alt"}};
constexpr VirtuelleTaste AUSFUEHREN = 43;

using Belegung = std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)>;

Belegung layout(const char* name) {
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> kontext(
        xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES), &xkb_context_unref);
    const xkb_rule_names namen{"evdev", "pc105", name, "", ""};
    return {xkb_keymap_new_from_names(kontext.get(), &namen, XKB_KEYMAP_COMPILE_NO_FLAGS), &xkb_keymap_unref};
}

/// What a keysym writes, in capitals; a dead one what it writes by itself.
std::string schrift(xkb_keysym_t zeichen) {
    if (zeichen == XKB_KEY_dead_circumflex)
        zeichen = XKB_KEY_asciicircum;
    if (zeichen == XKB_KEY_dead_acute)
        zeichen = XKB_KEY_acute;
    if (zeichen != XKB_KEY_ssharp) // the key has no capital on it
        zeichen = xkb_keysym_to_upper(zeichen);
    std::array<char, 8> text{};
    xkb_keysym_to_utf8(zeichen, text.data(), text.size());
    return text.data();
}

/// What the key writes on the German keyboard without any other.
std::string schriftDeutsch(EvdevTaste taste) {
    static const Belegung deutsch = layout("de");
    constexpr xkb_keycode_t VERSATZ = 8;
    const xkb_keysym_t* zeichen = nullptr;
    const int anzahl = xkb_keymap_key_get_syms_by_level(deutsch.get(), taste + VERSATZ, 0, 0, &zeichen);
    return anzahl == 1 ? schrift(*zeichen) : std::string();
}

std::map<std::string, std::string> namenDerTabelle() {
    const Testdatenbank datei;
    std::map<std::string, std::string> namen;
    for (const auto& zeile : datei.zeilen("SELECT Keyc, Keye FROM tblKeyCode"))
        namen[zeile.at(0)] = zeile.at(1);
    return namen;
}

std::map<std::string, std::string> erwarteteNamen() {
    std::map<std::string, std::string> namen{{std::to_string(AUSFUEHREN), "Ausführen"}};
    for (const auto& [code, taste] : festeTasten())
        namen[std::to_string(code)] = OHNE_SEITE.contains(code) ? OHNE_SEITE.at(code) : FESTE_NAMEN.at(taste);
    for (const auto& schild : schilder())
        namen[std::to_string(schild.code)] = schriftDeutsch(schild.deutsch);
    return namen;
}

} // namespace

TEST(Tastennamen, JederCodeHeisstWieSeineTaste) {
    EXPECT_THAT(namenDerTabelle(), testing::ContainerEq(erwarteteNamen()));
}

TEST(Tastennamen, JedeTasteDieSichFangenLaesstHatEinenNamen) {
    const Testdatenbank datei;
    for (const char* name : {"de", "us", "fr", "br", "jp", "ru"}) {
        const Belegung belegung = layout(name);
        ASSERT_NE(belegung, nullptr) << name;
        const TastenKarte karte(belegung.get(), 0);
        std::set<VirtuelleTaste> codes;
        for (EvdevTaste taste = 1; taste < EVDEV_TASTEN; ++taste)
            if (const auto code = karte.code(taste); code != 0)
                codes.insert(code);
        EXPECT_GE(codes.size(), 139U) << name;
        for (const auto code : codes)
            EXPECT_NE(KeyCodeSuchen(datei.pfad(), 0, std::to_string(code)), "") << name << " " << code;
    }
}
