// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/SdlJoystick.h"

#include "platform/Zeitgeber.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>
#include <SDL.h>
#include <algorithm>
#include <array>
#include <bit>
#include <iterator>
#include <limits>
#include <utility>

namespace {

constexpr Uint32 TEILE = SDL_INIT_JOYSTICK | SDL_INIT_GAMECONTROLLER;
// So long SDL is given to find what has come, whoever else has to deal with it first.
constexpr std::chrono::seconds SUCHDAUER{2};
constexpr std::chrono::seconds SUCHABSTAND{1};
constexpr Sint16 HALBER_WEG = 16384;
constexpr int ROHE_ACHSEN = 6;
constexpr int ROHE_TASTEN = 32;

using Achsenfeld = std::uint32_t JOYINFOEX::*;
constexpr Achsenfeld ACHSENFELDER[ROHE_ACHSEN] = {&JOYINFOEX::dwXpos, &JOYINFOEX::dwYpos, &JOYINFOEX::dwZpos,
                                                  &JOYINFOEX::dwRpos, &JOYINFOEX::dwUpos, &JOYINFOEX::dwVpos};

// In the order of ACHSENFELDER.
constexpr SDL_GameControllerAxis ACHSEN[ROHE_ACHSEN] = {
    SDL_CONTROLLER_AXIS_LEFTX,  SDL_CONTROLLER_AXIS_LEFTY,       SDL_CONTROLLER_AXIS_RIGHTX,
    SDL_CONTROLLER_AXIS_RIGHTY, SDL_CONTROLLER_AXIS_TRIGGERLEFT, SDL_CONTROLLER_AXIS_TRIGGERRIGHT};

struct Tastenbit {
    SDL_GameControllerButton taste;
    unsigned bit;
};
constexpr Tastenbit TASTENBITS[] = {
    {SDL_CONTROLLER_BUTTON_Y, 0},
    {SDL_CONTROLLER_BUTTON_B, 1},
    {SDL_CONTROLLER_BUTTON_A, 2},
    {SDL_CONTROLLER_BUTTON_X, 3},
    {SDL_CONTROLLER_BUTTON_LEFTSHOULDER, 5},
    {SDL_CONTROLLER_BUTTON_RIGHTSHOULDER, 7},
    {SDL_CONTROLLER_BUTTON_BACK, 8},
    {SDL_CONTROLLER_BUTTON_START, 9},
    {SDL_CONTROLLER_BUTTON_LEFTSTICK, 10},
    {SDL_CONTROLLER_BUTTON_RIGHTSTICK, 11},
};

struct Abzugbit {
    SDL_GameControllerAxis achse;
    unsigned bit;
};
constexpr Abzugbit ABZUGBITS[] = {{SDL_CONTROLLER_AXIS_TRIGGERLEFT, 4},
                                  {SDL_CONTROLLER_AXIS_TRIGGERRIGHT, 6}};

struct Kreuztaste {
    SDL_GameControllerButton taste;
    Uint8 richtung;
};
constexpr Kreuztaste KREUZTASTEN[] = {{SDL_CONTROLLER_BUTTON_DPAD_UP, SDL_HAT_UP},
                                      {SDL_CONTROLLER_BUTTON_DPAD_RIGHT, SDL_HAT_RIGHT},
                                      {SDL_CONTROLLER_BUTTON_DPAD_DOWN, SDL_HAT_DOWN},
                                      {SDL_CONTROLLER_BUTTON_DPAD_LEFT, SDL_HAT_LEFT}};

struct Hutwinkel {
    Uint8 richtung;
    std::uint32_t winkel;
};
constexpr Hutwinkel HUTWINKEL[] = {
    {SDL_HAT_UP, 0},       {SDL_HAT_RIGHTUP, 4500},   {SDL_HAT_RIGHT, 9000}, {SDL_HAT_RIGHTDOWN, 13500},
    {SDL_HAT_DOWN, 18000}, {SDL_HAT_LEFTDOWN, 22500}, {SDL_HAT_LEFT, 27000}, {SDL_HAT_LEFTUP, 31500}};

// SDL's -32768..32767 to 0..65535 with rest at 32767.
constexpr std::uint32_t achsenwert(Sint16 wert) {
    constexpr int MITTE = static_cast<int>(JOY_AXIS_RUHE);
    return static_cast<std::uint32_t>(wert <= 0 ? std::max(0, wert + MITTE) : wert + MITTE + 1);
}
static_assert(achsenwert(-32768) == 0 && achsenwert(-32767) == 0 && achsenwert(-1) == 32766);
static_assert(achsenwert(0) == JOY_AXIS_RUHE && achsenwert(1) == 32769 && achsenwert(32767) == 65535);

// Opposite directions at a time, which only a broken pad sends, count as none.
std::uint32_t winkel(Uint8 richtung) {
    const auto treffer = std::ranges::find(HUTWINKEL, richtung, &Hutwinkel::richtung);
    return treffer != std::end(HUTWINKEL) ? treffer->winkel : JOY_POVCENTERED;
}

/// While it lives SDL's lock is held, which each of its functions takes: to take it once more costs less.
class Schloss {
public:
    Schloss() { SDL_LockJoysticks(); }
    Schloss(const Schloss&) = delete;
    Schloss& operator=(const Schloss&) = delete;
    ~Schloss() { SDL_UnlockJoysticks(); }
};

void erkanntesLesen(SDL_GameController* pad, JOYINFOEX& info) {
    std::array<Sint16, SDL_CONTROLLER_AXIS_MAX> werte{};
    for (int nummer = 0; nummer < ROHE_ACHSEN; ++nummer) {
        const auto achse = ACHSEN[nummer];
        werte[achse] = SDL_GameControllerGetAxis(pad, achse);
        info.*ACHSENFELDER[nummer] = achsenwert(werte[achse]);
    }
    for (const auto& taste : TASTENBITS)
        info.dwButtons |= Uint32{SDL_GameControllerGetButton(pad, taste.taste)} << taste.bit;
    for (const auto& abzug : ABZUGBITS)
        if (werte[abzug.achse] >= HALBER_WEG)
            info.dwButtons |= 1U << abzug.bit;
    unsigned richtung = SDL_HAT_CENTERED;
    for (const auto& kreuz : KREUZTASTEN)
        if (SDL_GameControllerGetButton(pad, kreuz.taste) != 0)
            richtung |= kreuz.richtung;
    info.dwPOV = winkel(static_cast<Uint8>(richtung));
}

void rohesLesen(SDL_Joystick* pad, JOYINFOEX& info) {
    const int achsen = SDL_JoystickNumAxes(pad);
    for (int nummer = 0; nummer < ROHE_ACHSEN; ++nummer)
        info.*ACHSENFELDER[nummer] =
            nummer < achsen ? achsenwert(SDL_JoystickGetAxis(pad, nummer)) : JOY_AXIS_RUHE;
    const int tasten = std::min(SDL_JoystickNumButtons(pad), ROHE_TASTEN);
    for (int nummer = 0; nummer < tasten; ++nummer)
        info.dwButtons |= Uint32{SDL_JoystickGetButton(pad, nummer)} << nummer;
    info.dwPOV = SDL_JoystickNumHats(pad) > 0 ? winkel(SDL_JoystickGetHat(pad, 0)) : JOY_POVCENTERED;
}

// What the caller has put in stays.
void mitteilen(const JOYINFOEX& gelesen, JOYINFOEX& info) {
    auto neu = gelesen;
    neu.dwSize = info.dwSize;
    neu.dwFlags = info.dwFlags;
    neu.dwReserved1 = info.dwReserved1;
    neu.dwReserved2 = info.dwReserved2;
    info = neu;
}

// --- what is told of pads ---

std::string benennung(int stelle) {
    const char* name = SDL_JoystickNameForIndex(stelle);
    return "„" + std::string(name ? name : "") + "“";
}

std::string guid(int stelle) {
    constexpr int PLATZ = 33; // 32 digits
    char ziffern[PLATZ];
    SDL_JoystickGetGUIDString(SDL_JoystickGetDeviceGUID(stelle), ziffern, PLATZ);
    return ziffern;
}

std::string zuordnung(int stelle) {
    const std::unique_ptr<char, decltype(&SDL_free)> text(SDL_GameControllerMappingForDeviceIndex(stelle),
                                                          &SDL_free);
    return text ? "Zuordnung " + std::string(text.get()) : "ohne Zuordnung, Knöpfe und Achsen wie sie kommen";
}

// Instance of the pad that is pad 0 now; -1 without one.
SDL_JoystickID erstesPad() {
    return SDL_NumJoysticks() > 0 ? SDL_JoystickGetDeviceInstanceID(0) : -1;
}

void sdlAuffrischen() {
    SDL_JoystickUpdate();
    SDL_FlushEvents(SDL_JOYAXISMOTION, SDL_CONTROLLERSENSORUPDATE);
}

} // namespace

// An open pad, as a controller if SDL knows its layout.
class SdlJoystick::Pad {
public:
    explicit Pad(int stelle)
        : kennung_(SDL_JoystickGetDeviceInstanceID(stelle))
        , erkannt_(SDL_IsGameController(stelle) ? SDL_GameControllerOpen(stelle) : nullptr)
        , roh_(erkannt_ ? nullptr : SDL_JoystickOpen(stelle)) {}
    Pad(const Pad&) = delete;
    Pad& operator=(const Pad&) = delete;
    ~Pad() {
        if (erkannt_)
            SDL_GameControllerClose(erkannt_);
        if (roh_)
            SDL_JoystickClose(roh_);
    }

    SDL_JoystickID kennung() const { return kennung_; }
    /// Of its device; null where there is none.
    const char* pfad() const {
        if (erkannt_)
            return SDL_GameControllerPath(erkannt_);
        return roh_ ? SDL_JoystickPath(roh_) : nullptr;
    }

    bool angeschlossen() const {
        if (erkannt_)
            return SDL_GameControllerGetAttached(erkannt_) == SDL_TRUE;
        return roh_ && SDL_JoystickGetAttached(roh_) == SDL_TRUE;
    }

    void lesen(JOYINFOEX& info) const {
        info.dwButtons = 0;
        if (erkannt_)
            erkanntesLesen(erkannt_, info);
        else
            rohesLesen(roh_, info);
        info.dwButtonNumber = static_cast<std::uint32_t>(std::bit_width(info.dwButtons));
    }

private:
    SDL_JoystickID kennung_;
    SDL_GameController* erkannt_;
    SDL_Joystick* roh_;
};

SdlJoystick::SdlJoystick(Meldung meldung, const Zeitgeber* zeitgeber)
    : meldung_(std::move(meldung)), zeitgeber_(zeitgeber) {
    SDL_SetHintWithPriority(SDL_HINT_NO_SIGNAL_HANDLERS, "1", SDL_HINT_OVERRIDE);
    SDL_SetHintWithPriority(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1", SDL_HINT_OVERRIDE);
    // The search for HIDAPI devices can hold up a call for long; the kernel's own drivers serve the same
    // pads.
    SDL_SetHint(SDL_HINT_JOYSTICK_HIDAPI, "0");
    if (SDL_InitSubSystem(TEILE) != 0)
        return;
    // The state is asked for; nobody takes events from the queue.
    SDL_JoystickEventState(SDL_IGNORE);
    SDL_GameControllerEventState(SDL_IGNORE);
}

SdlJoystick::~SdlJoystick() {
    offene_.clear();
    SDL_QuitSubSystem(TEILE);
}

std::uint32_t SdlJoystick::joyGetPosEx(std::uint32_t id, JOYINFOEX& info) {
    auffrischen();
    if (!blick_ || blick_->id != id)
        blick_ = blicken(id);
    if (blick_->antwort == JOYERR_NOERROR)
        mitteilen(blick_->info, info);
    return blick_->antwort;
}

SdlJoystick::Blick SdlJoystick::blicken(std::uint32_t id) {
    const Schloss schloss;
    Blick blick{id, JOYERR_UNPLUGGED, {}};
    if (id >= static_cast<std::uint32_t>(std::max(0, SDL_NumJoysticks()))) {
        schliessen(id);
        return blick;
    }
    const int stelle = static_cast<int>(id);
    if (const auto offen = offene_.find(id);
        offen == offene_.end() || offen->second->kennung() != SDL_JoystickGetDeviceInstanceID(stelle)) {
        schliessen(id);
        oeffnen(id);
    }
    const auto& pad = *offene_.at(id);
    if (!pad.angeschlossen()) {
        schliessen(id);
        return blick;
    }
    pad.lesen(blick.info);
    blick.antwort = JOYERR_NOERROR;
    return blick;
}

// SDL first: the kernel then gives it each event before it gives it to the watch. What comes before the watch
// has begun is found by the updates of the time that follows.
void SdlJoystick::oeffnen(std::uint32_t id) {
    auto pad = std::make_unique<Pad>(static_cast<int>(id));
    wache_.knotenHinzu(pad->kennung(), pad->pfad());
    offene_[id] = std::move(pad);
    suchende_ = Uhr::now() + SUCHDAUER;
    sdlAuffrischen();
}

void SdlJoystick::schliessen(std::uint32_t id) {
    if (const auto pad = offene_.extract(id))
        wache_.knotenWeg(pad.mapped()->kennung());
}

// Whether SDL's list is what was told last; asked at each poll, so it costs next to nothing.
bool SdlJoystick::istGemeldet() const {
    const int anzahl = SDL_NumJoysticks();
    bool gleich = anzahl == std::ssize(gemeldete_);
    for (int stelle = 0; gleich && stelle < anzahl; ++stelle)
        gleich =
            SDL_JoystickGetDeviceInstanceID(stelle) == gemeldete_[static_cast<std::size_t>(stelle)].kennung;
    return gleich;
}

void SdlJoystick::umsehen() {
    if (!meldung_ || istGemeldet())
        return;
    std::vector<Gemeldetes> vorher;
    vorher.swap(gemeldete_);
    const auto erstes = [](const std::vector<Gemeldetes>& liste) {
        return liste.empty() ? -1 : liste.front().kennung;
    };
    const auto enthalten = [](const std::vector<Gemeldetes>& liste, std::int32_t kennung) {
        return std::ranges::find(liste, kennung, &Gemeldetes::kennung) != liste.end();
    };
    const int anzahl = SDL_NumJoysticks();
    for (int stelle = 0; stelle < anzahl; ++stelle) {
        const auto kennung = SDL_JoystickGetDeviceInstanceID(stelle);
        gemeldete_.push_back({kennung, benennung(stelle)});
        if (!enthalten(vorher, kennung))
            meldung_("Gamepad da: " + gemeldete_.back().name + ", GUID " + guid(stelle) + ", " +
                     zuordnung(stelle));
    }
    for (const auto& eines : vorher)
        if (!enthalten(gemeldete_, eines.kennung))
            meldung_("Gamepad weg: " + eines.name);
    if (erstes(gemeldete_) != erstes(vorher))
        meldung_(gemeldete_.empty() ? "kein Gamepad in Gebrauch"
                                    : "in Gebrauch: " + gemeldete_.front().name + ", 1 von " +
                                          std::to_string(gemeldete_.size()));
}

// Whether this instant has had its update; from now on it has.
bool SdlJoystick::istAufgefrischt() {
    const auto jetzt = zeitgeber_ ? zeitgeber_->augenblick() : 0;
    return std::exchange(augenblick_, jetzt) == jetzt && jetzt != 0;
}

// Finds pads that came or went, too.
void SdlJoystick::auffrischen() {
    if (istAufgefrischt())
        return;
    blick_.reset();
    if (kannNeuesBringen())
        sdlAuffrischen();
    umsehen();
}

// What is seen here wakes who waits for it, too: it won't be seen again.
bool SdlJoystick::kannNeuesBringen() {
    if (!weckruf_ && !allesBewacht())
        return true; // what the watch has seen keeps until it matters
    const auto befund = wache_.nachsehen();
    const auto jetzt = Uhr::now();
    if (befund.geraete)
        suchende_ = jetzt + SUCHDAUER;
    if (befund.neues())
        wecken(befund.seit);
    else if (weckruf_ && erstesPad() != bewachtes_) // who else changes SDL's list in this process
        wecken(jetzt);
    const bool grund =
        std::exchange(ungelesen_, false) || befund.pads || !allesBewacht() || jetzt < suchende_;
    if (!grund && jetzt < naechsteSuche_)
        return false;
    naechsteSuche_ = jetzt + SUCHABSTAND;
    return true;
}

bool SdlJoystick::allesBewacht() const {
    return wache_.siehtKommen() &&
           std::ranges::all_of(offene_, [&](const auto& pad) { return wache_.sieht(pad.second->kennung()); });
}

// --- watch ---

bool SdlJoystick::wachen(Weckruf weckruf) {
    nichtWachen();
    if (ungelesen_ || !allesBewacht() || Uhr::now() < suchende_ || !QAbstractEventDispatcher::instance())
        return false;
    if (!wachmelder_) {
        wachmelder_ = std::make_unique<QSocketNotifier>(wache_.melder(), QSocketNotifier::Read);
        QObject::connect(wachmelder_.get(), &QSocketNotifier::activated, wachmelder_.get(),
                         [this] { wachmeldung(); });
    }
    weckruf_ = std::move(weckruf);
    bewachtes_ = erstesPad();
    wachmelder_->setEnabled(true);
    return true;
}

void SdlJoystick::nichtWachen() {
    weckruf_ = {};
    if (wachmelder_)
        wachmelder_->setEnabled(false);
}

void SdlJoystick::wachmeldung() {
    const auto befund = wache_.nachsehen();
    if (!befund.neues())
        return;
    ungelesen_ = true;
    if (befund.geraete)
        suchende_ = Uhr::now() + SUCHDAUER;
    wecken(befund.seit);
}

void SdlJoystick::wecken(Uhr::time_point seit) {
    if (!weckruf_)
        return;
    const auto weckruf = std::exchange(weckruf_, {});
    wachmelder_->setEnabled(false);
    weckruf(Uhr::now() - seit);
}

Padauskunft SdlJoystick::auskunft() {
    auffrischen();
    const int anzahl = SDL_NumJoysticks();
    if (anzahl <= 0)
        return {};
    const char* name = SDL_JoystickNameForIndex(0);
    return {static_cast<std::size_t>(anzahl), name ? name : ""};
}
