// SPDX-License-Identifier: GPL-3.0-or-later
// The way back from a key to its code: the contract on the fake and on the layout of a real X server.
#include "platform/linux/Tastaturlayout.h"
#include "platform/linux/XTestEingabe.h"
#include "platform/probe/ProbeEingabe.h"
#include "platform/probe/ProbeTastatur.h"
#include "tests/hilfen/XLauscher.h"
#include "tests/hilfen/XServer.h"
#include "tests/platform/Ereignisse.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

// A code, and the number of the key that the injection presses for it.
using Druck = std::pair<VirtuelleTaste, std::uint32_t>;

struct MitProbe {
    ProbeEingabe eingabe;
    ProbeTastatur tastatur;

    std::vector<Druck> druecke() {
        std::vector<Druck> alle;
        for (VirtuelleTaste code = 1; code <= 254; ++code)
            alle.emplace_back(code, eingabe.MapVirtualKeyA(code, 0));
        return alle;
    }
};

// What a client of the server hears when the injection presses each key.
class MitXServer {
    XServer server_;
    const char* layout_;

public:
    explicit MitXServer(const char* layout = "us") : layout_(layout) { server_.tastatur(layout); }

    Tastaturlayout tastatur{server_.anzeige()};

    std::vector<Druck> druecke() {
        std::string grund;
        const auto eingabe = XTestEingabe::oeffnen(tastatur, server_.anzeige(), grund);
        XLauscher lauscher(server_.anzeige(), Lauschart::roh);
        std::vector<Druck> alle;
        for (VirtuelleTaste code = 1; code <= 254; ++code) {
            const auto evdev = tastatur.karte().taste(code);
            if (evdev == KEINE_TASTE || evdev > LETZTE_X_TASTE)
                continue;
            const std::array paar{taste(code), taste(code, KEYEVENTF_KEYUP)};
            eingabe->SendInput(paar);
            const auto gehoert = lauscher.bis("-" + std::to_string(evdev + 8));
            EXPECT_EQ(gehoert.size(), 1U) << layout_ << " " << code;
            alle.emplace_back(code, static_cast<std::uint32_t>(std::stoi(gehoert.front())));
        }
        return alle;
    }
};
struct MitDeutschemXServer : MitXServer {
    MitDeutschemXServer() : MitXServer("de") {}
};

// The code that a form's key event carries for the key of `code`.
VirtuelleTaste inEreignissen(VirtuelleTaste code) {
    static constexpr std::array<VirtuelleTaste, 6> BEIDE_SEITEN{16, 16, 17, 17, 18, 18};
    return code >= 160 && code <= 165 ? BEIDE_SEITEN[code - 160U] : code;
}

template <typename Backend> class TastaturVertrag : public testing::Test {
protected:
    Backend backend;
    Tastatur& tastatur = backend.tastatur;
};
using Backends = testing::Types<MitProbe, MitXServer, MitDeutschemXServer>;
TYPED_TEST_SUITE(TastaturVertrag, Backends);

} // namespace

TYPED_TEST(TastaturVertrag, JedeTasteFuehrtAufDenCodeDerSieDrueckt) {
    std::vector<VirtuelleTaste> erwartet;
    std::vector<VirtuelleTaste> gefunden;
    for (const auto& [code, nummer] : this->backend.druecke()) {
        erwartet.push_back(inEreignissen(code));
        gefunden.push_back(this->tastatur.code(nummer));
    }
    EXPECT_GE(erwartet.size(), 145U); // all keys that X has
    EXPECT_EQ(gefunden, erwartet);
}

TYPED_TEST(TastaturVertrag, KeineTasteHatKeinenCode) {
    for (const std::uint32_t nummer : {0U, 1U, 8U, 100000U, std::numeric_limits<std::uint32_t>::max()})
        EXPECT_EQ(this->tastatur.code(nummer), 0) << nummer;
}
