// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as Gamepad.xml: they are a table or they are not, and a table comes back the same once it is
// written.
#include "store/files/Gamepadtabelle.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {
void verlange(bool bedingung) {
    if (!bedingung)
        std::abort();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    const auto tabelle = gamepadAusXml({reinterpret_cast<const char*>(daten), groesse});
    if (!tabelle)
        return 0;
    const auto xml = gamepadAlsXml(*tabelle);
    verlange(xml.has_value());
    const auto wieder = gamepadAusXml(*xml);
    verlange(wieder == tabelle);
    verlange(gamepadAlsXml(*wieder) == xml);
    return 0;
}
