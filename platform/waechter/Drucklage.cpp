// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/waechter/Drucklage.h"

#include <X11/Xlib-xcb.h>
#include <xcb/xinput.h>

#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

namespace {

struct Freigeber {
    void operator()(void* antwort) const { std::free(antwort); }
};
template <class Antwort> using Antwortbesitz = std::unique_ptr<Antwort, Freigeber>;

constexpr std::size_t BITS = 8;

void uebernehmen(const std::uint8_t* bits, std::size_t anzahl, std::size_t erste, Stellenmenge& menge) {
    for (std::size_t nummer = 0; nummer < anzahl; ++nummer)
        if ((bits[nummer / BITS] >> nummer % BITS & 1) != 0)
            menge.set(erste + nummer);
}

void standLesen(const xcb_input_query_device_state_reply_t& stand, Stellenmenge& menge) {
    auto teile = xcb_input_query_device_state_classes_iterator(&stand);
    for (; teile.rem > 0; xcb_input_input_state_next(&teile))
        if (teile.data->class_id == XCB_INPUT_INPUT_CLASS_KEY)
            uebernehmen(reinterpret_cast<const xcb_input_key_state_t*>(teile.data)->keys,
                        Waechterblatt::TASTEN, 0, menge);
        else if (teile.data->class_id == XCB_INPUT_INPUT_CLASS_BUTTON)
            uebernehmen(reinterpret_cast<const xcb_input_button_state_t*>(teile.data)->buttons,
                        Waechterblatt::KNOEPFE, Waechterblatt::TASTEN, menge);
}

struct Frage {
    bool xtest;
    xcb_input_query_device_state_cookie_t stand;
};

// All at once: each wait for an answer may be a long one while others keep the server busy. The devices that
// join several into one are not asked.
std::vector<Frage> fragen(xcb_connection_t* verbindung) {
    std::vector<Frage> alle;
    const Antwortbesitz<xcb_input_list_input_devices_reply_t> liste(
        xcb_input_list_input_devices_reply(verbindung, xcb_input_list_input_devices(verbindung), nullptr));
    if (!liste)
        return alle;
    auto name = xcb_input_list_input_devices_names_iterator(liste.get());
    for (auto geraet = xcb_input_list_input_devices_devices_iterator(liste.get()); geraet.rem > 0;
         xcb_input_device_info_next(&geraet), xcb_str_next(&name)) {
        const auto art = geraet.data->device_use;
        if (art != XCB_INPUT_DEVICE_USE_IS_X_EXTENSION_KEYBOARD &&
            art != XCB_INPUT_DEVICE_USE_IS_X_EXTENSION_POINTER)
            continue;
        const std::string_view genannt(xcb_str_name(name.data), xcb_str_name_length(name.data));
        alle.push_back({genannt.find("XTEST") != std::string_view::npos,
                        xcb_input_query_device_state(verbindung, geraet.data->device_id)});
    }
    return alle;
}

} // namespace

Drucklage drucklage(_XDisplay* anzeige) {
    auto* verbindung = XGetXCBConnection(anzeige);
    Drucklage lage;
    const auto gefragte = fragen(verbindung);
    for (const auto& frage : gefragte)
        if (const Antwortbesitz<xcb_input_query_device_state_reply_t> stand(
                xcb_input_query_device_state_reply(verbindung, frage.stand, nullptr));
            stand)
            standLesen(*stand, frage.xtest ? lage.durchXtest : lage.vonHand);
    if (gefragte.empty())
        lage.durchXtest.set();
    for (std::size_t knopf = Waechterblatt::TASTEN; knopf < Waechterblatt::STELLEN; ++knopf)
        lage.vonHand.reset(knopf);
    return lage;
}
