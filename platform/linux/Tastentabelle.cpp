// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Tastentabelle.h"

#include <algorithm>
#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace {

constexpr FesteTaste FESTE_TASTEN[] = {
    {3, KEY_CANCEL},         {8, KEY_BACKSPACE},    {9, KEY_TAB},
    {12, KEY_CLEAR}, // uinput only; the keypad's 5 is 101
    {13, KEY_ENTER},         {16, KEY_LEFTSHIFT},   {17, KEY_LEFTCTRL},
    {18, KEY_LEFTALT},       {19, KEY_PAUSE},       {20, KEY_CAPSLOCK},
    {27, KEY_ESC},           {32, KEY_SPACE},       {33, KEY_PAGEUP},
    {34, KEY_PAGEDOWN},      {35, KEY_END},         {36, KEY_HOME},
    {37, KEY_LEFT},          {38, KEY_UP},          {39, KEY_RIGHT},
    {40, KEY_DOWN},          {41, KEY_SELECT}, // uinput only
    {42, KEY_PRINT},         {44, KEY_SYSRQ},       {45, KEY_INSERT},
    {46, KEY_DELETE},        {47, KEY_HELP},        {91, KEY_LEFTMETA},
    {92, KEY_RIGHTMETA},     {93, KEY_COMPOSE},     {95, KEY_SLEEP},
    {96, KEY_KP0},           {97, KEY_KP1},         {98, KEY_KP2},
    {99, KEY_KP3},           {100, KEY_KP4},        {101, KEY_KP5},
    {102, KEY_KP6},          {103, KEY_KP7},        {104, KEY_KP8},
    {105, KEY_KP9},          {106, KEY_KPASTERISK}, {107, KEY_KPPLUS},
    {108, KEY_KPCOMMA},      {109, KEY_KPMINUS},    {110, KEY_KPDOT},
    {111, KEY_KPSLASH},      {112, KEY_F1},         {113, KEY_F2},
    {114, KEY_F3},           {115, KEY_F4},         {116, KEY_F5},
    {117, KEY_F6},           {118, KEY_F7},         {119, KEY_F8},
    {120, KEY_F9},           {121, KEY_F10},        {122, KEY_F11},
    {123, KEY_F12},          {124, KEY_F13},        {125, KEY_F14},
    {126, KEY_F15},          {127, KEY_F16},        {128, KEY_F17},
    {129, KEY_F18},          {130, KEY_F19},        {131, KEY_F20},
    {132, KEY_F21},          {133, KEY_F22},        {134, KEY_F23},
    {135, KEY_F24},          {144, KEY_NUMLOCK},    {145, KEY_SCROLLLOCK},
    {146, KEY_KPEQUAL},      {160, KEY_LEFTSHIFT},  {161, KEY_RIGHTSHIFT},
    {162, KEY_LEFTCTRL},     {163, KEY_RIGHTCTRL},  {164, KEY_LEFTALT},
    {165, KEY_RIGHTALT},     {166, KEY_BACK},       {167, KEY_FORWARD},
    {168, KEY_REFRESH},      {169, KEY_STOP},       {170, KEY_SEARCH},
    {171, KEY_BOOKMARKS},    {172, KEY_HOMEPAGE},   {173, KEY_MUTE},
    {174, KEY_VOLUMEDOWN},   {175, KEY_VOLUMEUP},   {176, KEY_NEXTSONG},
    {177, KEY_PREVIOUSSONG}, {178, KEY_STOPCD},     {179, KEY_PLAYPAUSE},
    {180, KEY_MAIL},         {181, KEY_MEDIA},      {182, KEY_COMPUTER},
    {183, KEY_CALC},         {193, KEY_RO},         {250, KEY_PLAY},
    {251, KEY_ZOOM}, // uinput only
};

constexpr Schild ziffer(VirtuelleTaste code, EvdevTaste deutsch) {
    return {code, deutsch, true, {code, 0}}; // the keysym of a digit is its character
}

constexpr Schild buchstabe(VirtuelleTaste code, EvdevTaste deutsch) {
    return {code, deutsch, true, {code + 32U, code}};
}

constexpr Schild SCHILDER[] = {
    ziffer('0', KEY_0),
    ziffer('1', KEY_1),
    ziffer('2', KEY_2),
    ziffer('3', KEY_3),
    ziffer('4', KEY_4),
    ziffer('5', KEY_5),
    ziffer('6', KEY_6),
    ziffer('7', KEY_7),
    ziffer('8', KEY_8),
    ziffer('9', KEY_9),
    buchstabe('A', KEY_A),
    buchstabe('B', KEY_B),
    buchstabe('C', KEY_C),
    buchstabe('D', KEY_D),
    buchstabe('E', KEY_E),
    buchstabe('F', KEY_F),
    buchstabe('G', KEY_G),
    buchstabe('H', KEY_H),
    buchstabe('I', KEY_I),
    buchstabe('J', KEY_J),
    buchstabe('K', KEY_K),
    buchstabe('L', KEY_L),
    buchstabe('M', KEY_M),
    buchstabe('N', KEY_N),
    buchstabe('O', KEY_O),
    buchstabe('P', KEY_P),
    buchstabe('Q', KEY_Q),
    buchstabe('R', KEY_R),
    buchstabe('S', KEY_S),
    buchstabe('T', KEY_T),
    buchstabe('U', KEY_U),
    buchstabe('V', KEY_V),
    buchstabe('W', KEY_W),
    buchstabe('X', KEY_X),
    buchstabe('Y', KEY_Z), // QWERTZ; the kernel names keys as they stand on QWERTY
    buchstabe('Z', KEY_Y),
    {186, KEY_LEFTBRACE, false, {XKB_KEY_udiaeresis, XKB_KEY_Udiaeresis}},
    {187, KEY_RIGHTBRACE, false, {XKB_KEY_plus, 0}},
    {188, KEY_COMMA, false, {XKB_KEY_comma, 0}},
    {189, KEY_SLASH, false, {XKB_KEY_minus, 0}},
    {190, KEY_DOT, false, {XKB_KEY_period, 0}},
    {191, KEY_BACKSLASH, false, {XKB_KEY_numbersign, 0}},
    {192, KEY_SEMICOLON, false, {XKB_KEY_odiaeresis, XKB_KEY_Odiaeresis}},
    {219, KEY_MINUS, false, {XKB_KEY_ssharp, 0}},
    {220, KEY_GRAVE, false, {XKB_KEY_asciicircum, XKB_KEY_dead_circumflex}},
    {221, KEY_EQUAL, false, {XKB_KEY_acute, XKB_KEY_dead_acute}},
    {222, KEY_APOSTROPHE, false, {XKB_KEY_adiaeresis, XKB_KEY_Adiaeresis}},
    {226, KEY_102ND, false, {XKB_KEY_less, 0}},
};

constexpr OhneTaste OHNE_TASTE[] = {
    {1, 2, "mouse buttons"},
    {4, 6, "mouse buttons"},
    {7, 7, "undefined"},
    {10, 11, "reserved"},
    {14, 15, "undefined"},
    {21, 26, "input methods for Korean and Japanese"},
    {28, 31, "input methods for Japanese"},
    {43, 43, "no keyboard has an Execute key"},
    {58, 64, "undefined"},
    {94, 94, "reserved"},
    {136, 143, "unassigned"},
    {147, 150, "makers' own keys"},
    {151, 159, "unassigned"},
    {184, 185, "reserved"},
    {194, 194, "the Brazilian keypad's full stop, which is the keypad's separator, 108"},
    {195, 218, "reserved, and buttons of a pad"},
    {223, 223, "a key that the German keyboard does not have"},
    {224, 225, "reserved and makers' own keys"},
    {227, 228, "makers' own keys"},
    {229, 229, "input methods"},
    {230, 230, "makers' own keys"},
    {231, 231, "a character, not a key"},
    {232, 232, "unassigned"},
    {233, 245, "makers' own keys"},
    {246, 249, "keys of terminals"},
    {252, 252, "reserved"},
    {253, 254, "keys of terminals"},
};

constexpr bool jederCodeStehtEinmal() {
    std::array<int, VIRTUELLE_TASTEN> mal{};
    for (const auto& feste : FESTE_TASTEN)
        ++mal[feste.code];
    for (const auto& schild : SCHILDER)
        ++mal[schild.code];
    for (const auto& ohne : OHNE_TASTE)
        for (auto code = ohne.von; code <= ohne.bis; ++code)
            ++mal[code];
    return std::all_of(mal.begin() + 1, mal.end() - 1, [](int anzahl) { return anzahl == 1; });
}
static_assert(jederCodeStehtEinmal());

struct Abtastcode {
    EvdevTaste taste;
    std::uint8_t code;
};

// Keys up to F12 carry their scan code of set 1 as number; these are the others, most of them with prefix E0.
constexpr EvdevTaste LETZTE_GLEICHE = KEY_F12;
constexpr Abtastcode ABTASTCODES[] = {
    {KEY_RO, 0x73},         {KEY_RIGHTCTRL, 0x1D}, {KEY_KPSLASH, 0x35},   {KEY_SYSRQ, 0x54},
    {KEY_RIGHTALT, 0x38},   {KEY_HOME, 0x47},      {KEY_UP, 0x48},        {KEY_PAGEUP, 0x49},
    {KEY_LEFT, 0x4B},       {KEY_RIGHT, 0x4D},     {KEY_END, 0x4F},       {KEY_DOWN, 0x50},
    {KEY_PAGEDOWN, 0x51},   {KEY_INSERT, 0x52},    {KEY_DELETE, 0x53},    {KEY_MUTE, 0x20},
    {KEY_VOLUMEDOWN, 0x2E}, {KEY_VOLUMEUP, 0x30},  {KEY_KPEQUAL, 0x59},   {KEY_PAUSE, 0x45},
    {KEY_KPCOMMA, 0x7E},    {KEY_LEFTMETA, 0x5B},  {KEY_RIGHTMETA, 0x5C}, {KEY_COMPOSE, 0x5D},
    {KEY_STOP, 0x68},       {KEY_HELP, 0x63},      {KEY_CALC, 0x21},      {KEY_SLEEP, 0x5F},
    {KEY_MAIL, 0x6C},       {KEY_BOOKMARKS, 0x66}, {KEY_COMPUTER, 0x6B},  {KEY_BACK, 0x6A},
    {KEY_FORWARD, 0x69},    {KEY_NEXTSONG, 0x19},  {KEY_PLAYPAUSE, 0x22}, {KEY_PREVIOUSSONG, 0x10},
    {KEY_STOPCD, 0x24},     {KEY_HOMEPAGE, 0x32},  {KEY_REFRESH, 0x67},   {KEY_F13, 0x64},
    {KEY_F14, 0x65},        {KEY_F15, 0x66},       {KEY_F16, 0x67},       {KEY_F17, 0x68},
    {KEY_F18, 0x69},        {KEY_F19, 0x6A},       {KEY_F20, 0x6B},       {KEY_F21, 0x6C},
    {KEY_F22, 0x6D},        {KEY_F23, 0x6E},       {KEY_F24, 0x76},       {KEY_CANCEL, 0x46},
    {KEY_SEARCH, 0x65},     {KEY_MEDIA, 0x6D},     {KEY_KPENTER, 0x1C},
};

// Keys without a code of their own in a form's key event.
constexpr FesteTaste ZWEITE_TASTEN[] = {
    {13, KEY_KPENTER}, {16, KEY_RIGHTSHIFT}, {17, KEY_RIGHTCTRL}, {18, KEY_RIGHTALT}};

constexpr EvdevTaste UMSCHALTER[] = {KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTCTRL,  KEY_RIGHTCTRL,
                                     KEY_LEFTALT,   KEY_RIGHTALT,   KEY_LEFTMETA,  KEY_RIGHTMETA,
                                     KEY_CAPSLOCK,  KEY_NUMLOCK,    KEY_SCROLLLOCK};

} // namespace

std::span<const FesteTaste> festeTasten() {
    return FESTE_TASTEN;
}

std::span<const Schild> schilder() {
    return SCHILDER;
}

std::span<const OhneTaste> ohneTaste() {
    return OHNE_TASTE;
}

VirtuelleTaste festerCode(EvdevTaste taste) {
    const auto zweite = std::ranges::find(ZWEITE_TASTEN, taste, &FesteTaste::taste);
    if (zweite != std::end(ZWEITE_TASTEN))
        return zweite->code;
    // The general code of a left modifier stands before its own one.
    const auto feste = std::ranges::find(FESTE_TASTEN, taste, &FesteTaste::taste);
    return feste != std::end(FESTE_TASTEN) ? feste->code : VirtuelleTaste{0};
}

bool istUmschalter(EvdevTaste taste) {
    return std::ranges::find(UMSCHALTER, taste) != std::end(UMSCHALTER);
}

std::uint8_t abtastcode(EvdevTaste taste) {
    if (taste <= LETZTE_GLEICHE)
        return static_cast<std::uint8_t>(taste);
    const auto eintrag = std::ranges::find(ABTASTCODES, taste, &Abtastcode::taste);
    return eintrag != std::end(ABTASTCODES) ? eintrag->code : std::uint8_t{0};
}
