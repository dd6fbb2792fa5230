// SPDX-License-Identifier: GPL-3.0-or-later
// The start of the program's process as the launcher asks for it, and its main form as a desktop sees it.
#include "editors/exchange/Schemafund.h"
#include "tests/ablauf/Programmprozess.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Schemabau.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

/// The display, with what it shows.
class Schirm {
public:
    /// The window in sight with this title; 0 if there is none.
    Window fenster(const std::string& titel) const {
        Window wurzel = 0;
        Window eltern = 0;
        Window* alle = nullptr;
        unsigned anzahl = 0;
        XGrabServer(anzeige_.get()); // none goes while it is looked at
        XQueryTree(anzeige_.get(), DefaultRootWindow(anzeige_.get()), &wurzel, &eltern, &alle, &anzahl);
        Window gefunden = 0;
        for (unsigned i = 0; i < anzahl; ++i)
            if (titelVon(alle[i]) == titel && istSichtbar(alle[i]))
                gefunden = alle[i];
        XFree(alle);
        XUngrabServer(anzeige_.get());
        XSync(anzeige_.get(), False);
        return gefunden;
    }
    /// Widths of the pictures that a desktop has to choose from: each is width, height and the pixels.
    std::vector<unsigned long> symbolbreiten(Window eines) const {
        Atom art = 0;
        int format = 0;
        unsigned long anzahl = 0;
        unsigned long rest = 0;
        unsigned char* daten = nullptr;
        XGetWindowProperty(anzeige_.get(), eines, XInternAtom(anzeige_.get(), "_NET_WM_ICON", False), 0,
                           1L << 20, False, XA_CARDINAL, &art, &format, &anzahl, &rest, &daten);
        const auto* zahlen = reinterpret_cast<const unsigned long*>(daten);
        std::vector<unsigned long> breiten;
        for (unsigned long i = 0; i + 1 < anzahl; i += 2 + zahlen[i] * zahlen[i + 1])
            breiten.push_back(zahlen[i]);
        if (daten)
            XFree(daten);
        return breiten;
    }
    /// By this a desktop finds the menu's entry for a window.
    std::string klasse(Window eines) const {
        XClassHint hinweis{};
        if (!XGetClassHint(anzeige_.get(), eines, &hinweis))
            return "";
        std::string name = hinweis.res_class;
        XFree(hinweis.res_name);
        XFree(hinweis.res_class);
        return name;
    }

private:
    std::string titelVon(Window eines) const {
        char* name = nullptr;
        XFetchName(anzeige_.get(), eines, &name);
        std::string titel = name ? name : "";
        if (name)
            XFree(name);
        return titel;
    }
    bool istSichtbar(Window eines) const {
        XWindowAttributes angaben{};
        return XGetWindowAttributes(anzeige_.get(), eines, &angaben) && angaben.map_state == IsViewable;
    }

    struct Schliesser {
        void operator()(Display* anzeige) const { XCloseDisplay(anzeige); }
    };
    std::unique_ptr<Display, Schliesser> anzeige_{XOpenDisplay(nullptr)};
};

class Programmstart : public ::testing::Test {
protected:
    Testdatenbank datenbank_;
    Testordner ordner_;
};

} // namespace

TEST_F(Programmstart, DieAchsendateiLiegtInDemOrdnerDenDerStarterNennt) {
    Schemabau(datenbank_).anlegen();
    Programmprozess prozess(datenbank_.ordner(), [&](const std::filesystem::path&) {
        setenv("GAMEPAD_KONFIC_ORDNER", ordner_.pfad().c_str(), 1);
    });
    EXPECT_TRUE(
        Programmprozess::warten([&] { return std::filesystem::exists(ordner_.pfad() / "Gamepad.xml"); }));
    prozess.senden(SIGTERM);
    EXPECT_EQ(prozess.ausgang(), "exit 0");
    EXPECT_EQ(namenIn(ordner_.pfad()), std::vector<std::string>{"Gamepad.xml"});
    EXPECT_EQ(namenIn(prozess.programmordner()), std::vector<std::string>{"gamepad-konfic"});
}

TEST_F(Programmstart, DasHauptfensterTraegtDasSymbolUndDieKlasseDesMenueeintrags) {
    Programmprozess prozess(datenbank_.ordner());
    const Schirm schirm;
    Window haupt = 0;
    ASSERT_TRUE(Programmprozess::warten([&] { return (haupt = schirm.fenster("Game-Pad-Konfic")) != 0; }));
    EXPECT_THAT(schirm.symbolbreiten(haupt), ::testing::UnorderedElementsAre(16, 32, 48, 128));
    EXPECT_THAT(prozess.imSpeicher(), ::testing::Not(::testing::HasSubstr("/imageformats/")))
        << "plugins are loaded for pictures that need none";
    EXPECT_EQ(schirm.klasse(haupt), "gamepad-konfic");
    prozess.senden(SIGTERM);
    EXPECT_EQ(prozess.ausgang(), "exit 0");
}

TEST_F(Programmstart, DieDateiEinesSchemasWirdGezeigtUndWasKeineIstMitGrundAbgelehnt) {
    Schemabau(datenbank_).anlegen();
    const auto datei = (ordner_.pfad() / "S.schema").string();
    const Schemaplatz platz{datenbank_.pfad(), ordner_.pfad().string(), (ordner_.pfad() / "x.xml").string()};
    schemadateiSchreiben(datei, schemaPacken(platz, "S", "Programm").paket);
    const auto ohne = (ordner_.pfad() / "Keine.SCHEMA").string();
    const auto umbenannte = (ordner_.pfad() / "S.schema (1)").string(); // as a browser names a second one
    std::filesystem::copy_file(datei, umbenannte);
    const Schirm schirm;
    for (const auto& [wort, titel] :
         {std::pair{datei, "Schema aufnehmen"}, std::pair{umbenannte, "Schema aufnehmen"},
          std::pair{ohne, "Game-Pad-Konfic"}}) {
        Programmprozess prozess(
            datenbank_.ordner(), [](const std::filesystem::path&) {}, wort);
        EXPECT_TRUE(Programmprozess::warten([&] { return schirm.fenster(titel) != 0; })) << wort;
        prozess.senden(SIGTERM);
        EXPECT_EQ(prozess.ausgang(), "exit 0");
    }
}
