// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/UinputEingabe.h"

#include <cerrno>
#include <cstring>
#include <libevdev/libevdev-uinput.h>
#include <libevdev/libevdev.h>
#include <linux/input.h>
#include <utility>

namespace {

constexpr int SCHRITTE_JE_RASTE = 120; // REL_WHEEL_HI_RES counts in 1/120 of a notch
constexpr int ZEIGER_ENDE = 65535;

constexpr unsigned knopfcode(Mausknopf knopf) {
    switch (knopf) {
    case Mausknopf::links:
        return BTN_LEFT;
    case Mausknopf::rechts:
        return BTN_RIGHT;
    case Mausknopf::mitte:
        break;
    }
    return BTN_MIDDLE;
}

// A device while it is described.
class Beschreibung {
public:
    explicit Beschreibung(const char* name) : geraet_(libevdev_new(), &libevdev_free) {
        libevdev_set_name(geraet_.get(), name);
        libevdev_set_id_bustype(geraet_.get(), BUS_VIRTUAL);
    }

    void kann(unsigned art, unsigned code, const void* angaben = nullptr) {
        libevdev_enable_event_code(geraet_.get(), art, code, angaben);
    }
    void eigenschaft(unsigned welche) { libevdev_enable_property(geraet_.get(), welche); }

    libevdev_uinput* anlegen(int& fehler) const {
        libevdev_uinput* neu = nullptr;
        fehler = -libevdev_uinput_create_from_device(geraet_.get(), LIBEVDEV_UINPUT_OPEN_MANAGED, &neu);
        return fehler == 0 ? neu : nullptr;
    }

private:
    std::unique_ptr<libevdev, decltype(&libevdev_free)> geraet_;
};

std::string ursache(int fehler) {
    switch (fehler) {
    case ENOENT:
    case ENODEV:
    case ENXIO:
        return "Das Kernmodul uinput ist nicht geladen";
    case EACCES:
    case EPERM:
        return "Es fehlt die Berechtigung";
    default:
        return std::strerror(fehler);
    }
}

std::string knoten(libevdev_uinput* geraet) {
    const char* pfad = libevdev_uinput_get_devnode(geraet);
    return pfad != nullptr ? pfad : "";
}

} // namespace

void UinputEingabe::Schliessen::operator()(libevdev_uinput* geraet) const {
    libevdev_uinput_destroy(geraet);
}

UinputEingabe::Geraet UinputEingabe::tastengeraet(int& fehler) {
    Beschreibung beschreibung("gamepad-konfic Tastatur und Maus");
    for (const auto& feste : festeTasten())
        beschreibung.kann(EV_KEY, feste.taste);
    for (const auto& schild : schilder())
        beschreibung.kann(EV_KEY, schild.deutsch); // all keys of the typing block, on every layout
    for (const unsigned knopf : {BTN_LEFT, BTN_RIGHT, BTN_MIDDLE})
        beschreibung.kann(EV_KEY, knopf);
    for (const unsigned achse : {REL_X, REL_Y, REL_WHEEL, REL_WHEEL_HI_RES})
        beschreibung.kann(EV_REL, achse);
    return Geraet(beschreibung.anlegen(fehler));
}

UinputEingabe::Geraet UinputEingabe::zeigergeraet(int& fehler) {
    Beschreibung beschreibung("gamepad-konfic Zeiger");
    input_absinfo spanne{};
    spanne.maximum = ZEIGER_ENDE;
    beschreibung.kann(EV_ABS, ABS_X, &spanne);
    beschreibung.kann(EV_ABS, ABS_Y, &spanne);
    beschreibung.kann(EV_KEY,
                      BTN_LEFT); // absolute axes and a mouse button: an absolute mouse, no tablet or pad
    beschreibung.kann(EV_KEY, BTN_RIGHT);
    beschreibung.eigenschaft(INPUT_PROP_POINTER);
    return Geraet(beschreibung.anlegen(fehler));
}

std::unique_ptr<UinputEingabe> UinputEingabe::oeffnen(Tastaturlayout& layout, std::string& grund) {
    int fehler = 0;
    auto tasten = tastengeraet(fehler);
    auto zeiger = tasten ? zeigergeraet(fehler) : Geraet();
    if (!zeiger) {
        grund = "/dev/uinput lässt sich nicht schreiben: " + ursache(fehler);
        return nullptr;
    }
    return std::unique_ptr<UinputEingabe>(new UinputEingabe(layout, std::move(tasten), std::move(zeiger)));
}

UinputEingabe::UinputEingabe(Tastaturlayout& layout, Geraet tasten, Geraet zeiger)
    : GeraeteEingabe(layout), tasten_(std::move(tasten)), zeiger_(std::move(zeiger)) {}

// The kernel releases what is held when the devices go.
UinputEingabe::~UinputEingabe() = default;

std::string UinputEingabe::tastenknoten() const {
    return knoten(tasten_.get());
}

std::string UinputEingabe::zeigerknoten() const {
    return knoten(zeiger_.get());
}

void UinputEingabe::schreiben(const Geraet& geraet, unsigned art, unsigned code, int wert) {
    fehler_ |= libevdev_uinput_write_event(geraet.get(), art, code, wert) != 0;
}

// Each action is a frame of its own: within one frame a release and a press of a key may be taken for
// nothing.
void UinputEingabe::abschliessen(const Geraet& geraet) {
    schreiben(geraet, EV_SYN, SYN_REPORT, 0);
}

void UinputEingabe::taste(EvdevTaste taste, bool unten) {
    schreiben(tasten_, EV_KEY, taste, unten ? 1 : 0);
    abschliessen(tasten_);
}

void UinputEingabe::knopf(Mausknopf knopf, bool unten) {
    schreiben(tasten_, EV_KEY, knopfcode(knopf), unten ? 1 : 0);
    abschliessen(tasten_);
}

void UinputEingabe::bewegen(std::int32_t dx, std::int32_t dy) {
    schreiben(tasten_, EV_REL, REL_X, dx);
    schreiben(tasten_, EV_REL, REL_Y, dy);
    abschliessen(tasten_);
}

// The kernel drops an absolute value equal to the last one, but the pointer may have been moved off by
// another device since. A step of 1/65536 of the screen ahead makes the value a new one.
void UinputEingabe::setzen(std::int32_t x, std::int32_t y) {
    if (x == x_)
        schreiben(zeiger_, EV_ABS, ABS_X, x ^ 1);
    if (y == y_)
        schreiben(zeiger_, EV_ABS, ABS_Y, y ^ 1);
    schreiben(zeiger_, EV_ABS, ABS_X, x);
    schreiben(zeiger_, EV_ABS, ABS_Y, y);
    abschliessen(zeiger_);
    x_ = x;
    y_ = y;
}

void UinputEingabe::rad(std::int32_t rasten) {
    schreiben(tasten_, EV_REL, REL_WHEEL, rasten);
    schreiben(tasten_, EV_REL, REL_WHEEL_HI_RES, rasten * SCHRITTE_JE_RASTE);
    abschliessen(tasten_);
}

bool UinputEingabe::abschicken() {
    return !std::exchange(fehler_, false);
}
