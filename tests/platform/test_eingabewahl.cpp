// SPDX-License-Identifier: GPL-3.0-or-later
// The choice of the injection, with made candidates and with the real ones.
#include "platform/linux/EingabeWahl.h"
#include "platform/linux/Tastaturlayout.h"
#include "platform/linux/Wahleingabe.h"
#include "platform/probe/ProbeEingabe.h"
#include "tests/hilfen/XServer.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using testing::ElementsAre;

namespace {

EingabeKandidat dienlich(const std::string& name, std::vector<std::string>& gefragt) {
    return {name, [name, &gefragt] {
                gefragt.push_back(name);
                return EingabeAngebot{std::make_unique<ProbeEingabe>(), {}};
            }};
}

EingabeKandidat untauglich(const std::string& name, std::vector<std::string>& gefragt) {
    return {name, [name, &gefragt] {
                gefragt.push_back(name);
                return EingabeAngebot{nullptr, "geht nicht"};
            }};
}

constexpr const char* KEIN_XTEST = "XTest: Kein X-Server erreichbar";

// What the choice on this system looks like from a child of its own, which `vorher` prepares: the name, then
// the reasons, a line each.
std::string inEinemKind(const std::function<void()>& vorher) {
    int rohr[2];
    EXPECT_EQ(pipe(rohr), 0);
    const pid_t kind = fork();
    if (kind == 0) {
        vorher();
        Tastaturlayout layout;
        const auto wahl = eingabeWaehlen(eingabeKandidaten(layout));
        std::string text = wahl.name;
        for (const auto& grund : wahl.gruende)
            text += "\n" + grund;
        _exit(write(rohr[1], text.data(), text.size()) == static_cast<ssize_t>(text.size()) ? 0 : 1);
    }
    close(rohr[1]);
    std::string text(4096, '\0');
    const auto gelesen = read(rohr[0], text.data(), text.size());
    text.resize(static_cast<std::size_t>(std::max<ssize_t>(0, gelesen)));
    close(rohr[0]);
    int ausgang = 1;
    waitpid(kind, &ausgang, 0);
    EXPECT_EQ(ausgang, 0);
    return text;
}

void ohneOberflaeche() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE"})
        unsetenv(name);
}

// What uinput says on this machine where no X server stands against it: "" if it serves.
std::string uinputGrund(bool darf) {
    if (access("/dev/uinput", F_OK) != 0)
        return "uinput: /dev/uinput lässt sich nicht schreiben: Das Kernmodul uinput ist nicht geladen";
    if (!darf || access("/dev/uinput", W_OK) != 0)
        return "uinput: /dev/uinput lässt sich nicht schreiben: Es fehlt die Berechtigung";
    return "";
}

} // namespace

TEST(EingabeWahl, DerErsteDerDientWirdGenommenUndDieFolgendenNichtGefragt) {
    std::vector<std::string> gefragt;
    const auto wahl =
        eingabeWaehlen(std::vector{untauglich("a", gefragt), dienlich("b", gefragt), dienlich("c", gefragt)});
    EXPECT_EQ(wahl.name, "b");
    EXPECT_NE(dynamic_cast<ProbeEingabe*>(wahl.eingabe.get()), nullptr);
    EXPECT_THAT(wahl.gruende, ElementsAre("a: geht nicht"));
    EXPECT_THAT(gefragt, ElementsAre("a", "b"));
}

TEST(EingabeWahl, WennKeinerDientWirdAllesUebergangen) {
    std::vector<std::string> gefragt;
    const auto wahl = eingabeWaehlen(std::vector{untauglich("a", gefragt), untauglich("b", gefragt)});
    EXPECT_EQ(wahl.name, "");
    EXPECT_THAT(wahl.gruende, ElementsAre("a: geht nicht", "b: geht nicht"));
    INPUT taste{};
    taste.type = INPUT_KEYBOARD;
    taste.ki.wVk = 65;
    EXPECT_EQ(wahl.eingabe->SendInput({&taste, 1}), 0U);
    EXPECT_EQ(wahl.eingabe->MapVirtualKeyA(65, 0), 0U);
}

TEST(EingabeWahl, OhneKandidatenGibtEsDieStummeEingabe) {
    const auto wahl = eingabeWaehlen({});
    ASSERT_NE(wahl.eingabe, nullptr);
    EXPECT_EQ(wahl.eingabe->SendInput({}), 0U);
}

TEST(EingabeWahl, UnterEinemVirtuellenXServerDientXTest) {
    const XServer server;
    const auto ergebnis = inEinemKind([&] {
        ohneOberflaeche();
        setenv("DISPLAY", server.anzeige().c_str(), 1);
    });
    EXPECT_EQ(ergebnis, "XTest\nuinput: Der X-Server liest keine Geräte des Kerns");
}

TEST(EingabeWahl, OhneXServerEntscheidetDerKern) {
    const auto grund = uinputGrund(true);
    EXPECT_EQ(inEinemKind(ohneOberflaeche), grund.empty() ? "uinput" : "\n" + grund + "\n" + KEIN_XTEST);
}

TEST(EingabeWahl, UnterWaylandGiltDieGeraetelisteDesXServersNicht) {
    const XServer server;
    const auto grund = uinputGrund(true);
    const auto ergebnis = inEinemKind([&] {
        ohneOberflaeche();
        setenv("DISPLAY", server.anzeige().c_str(), 1);
        setenv("WAYLAND_DISPLAY", "wayland-0", 1);
    });
    EXPECT_EQ(ergebnis, grund.empty() ? "uinput" : "XTest\n" + grund);
}

TEST(EingabeWahl, OhneRechteNenntUinputDieBerechtigung) {
    const auto ergebnis = inEinemKind([] {
        ohneOberflaeche();
        if (getuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) // nobody
            _exit(2);
    });
    const auto grund = uinputGrund(getuid() != 0); // none for a user whom the machine lets in
    EXPECT_EQ(ergebnis, grund.empty() ? "uinput" : "\n" + grund + "\n" + KEIN_XTEST);
}

TEST(XServerOhneGeraete, TrifftAufXvfbZuUndNichtAufKeinen) {
    const XServer server;
    EXPECT_TRUE(xServerOhneGeraete(server.anzeige()));
    EXPECT_FALSE(xServerOhneGeraete(":4711"));
}

namespace {

/// A candidate that serves once `da` is set, and what became of the injection that it gave.
struct Spaeter {
    bool da = false;
    std::string grund = "noch nicht";
    int gefragt = 0;
    ProbeEingabe* gegeben = nullptr;
    EingabeKandidat kandidat(const std::string& name, Reichweite reichweite) {
        return {name,
                [this] {
                    ++gefragt;
                    if (!da)
                        return EingabeAngebot{nullptr, grund};
                    auto eine = std::make_unique<ProbeEingabe>();
                    gegeben = eine.get();
                    return EingabeAngebot{std::move(eine), {}};
                },
                reichweite};
    }
};

class WahleingabeFaelle : public testing::Test {
protected:
    std::vector<EingabeKandidat> kandidaten() {
        return {beste.kandidat("a", Reichweite::Alle), naechste.kandidat("b", Reichweite::NurX),
                letzte.kandidat("c", Reichweite::Alle)};
    }
    static void tippen(Eingabe& eingabe) {
        INPUT taste{};
        taste.type = INPUT_KEYBOARD;
        taste.ki.wVk = 65;
        eingabe.SendInput({&taste, 1});
    }
    Spaeter beste;
    Spaeter naechste;
    Spaeter letzte;
};

} // namespace

TEST_F(WahleingabeFaelle, WerAlleErreichtBleibtUndNiemandWirdNocheinmalGefragt) {
    naechste.da = true;
    beste.da = true;
    Wahleingabe eingabe(kandidaten());
    const auto lage = eingabe.pruefen();
    EXPECT_EQ(lage.reichweite, Reichweite::Alle);
    EXPECT_EQ(beste.gefragt, 1);
    EXPECT_EQ(naechste.gefragt, 0);
    tippen(eingabe);
    EXPECT_THAT(beste.gegeben->texteAbholen(), ElementsAre("+65"));
}

TEST_F(WahleingabeFaelle, SolangeKeinBessererDientSendetDerselbeUndNenntDieGruendeVonJetzt) {
    naechste.da = true;
    Wahleingabe eingabe(kandidaten());
    auto* erste = naechste.gegeben;
    beste.grund = "immer noch nicht";
    const auto lage = eingabe.pruefen();
    EXPECT_EQ(lage.reichweite, Reichweite::NurX);
    EXPECT_THAT(lage.gruende, ElementsAre("a: immer noch nicht"));
    EXPECT_EQ(naechste.gefragt, 1);
    EXPECT_EQ(eingabe.wahl().name, "b");
    tippen(eingabe);
    EXPECT_THAT(erste->texteAbholen(), ElementsAre("+65"));
}

TEST_F(WahleingabeFaelle, EinBessererDerDazugekommenIstWirdGenommen) {
    naechste.da = true;
    Wahleingabe eingabe(kandidaten());
    beste.da = true;
    const auto lage = eingabe.pruefen();
    EXPECT_EQ(lage.reichweite, Reichweite::Alle);
    EXPECT_THAT(lage.gruende, ElementsAre());
    EXPECT_EQ(eingabe.wahl().name, "a");
    tippen(eingabe);
    EXPECT_THAT(beste.gegeben->texteAbholen(), ElementsAre("+65"));
}

TEST_F(WahleingabeFaelle, OhneEinenWirdJederNocheinmalGefragt) {
    Wahleingabe eingabe(kandidaten());
    EXPECT_EQ(eingabe.pruefen().reichweite, Reichweite::Keine);
    EXPECT_THAT(eingabe.pruefen().gruende, ElementsAre("a: noch nicht", "b: noch nicht", "c: noch nicht"));
    EXPECT_EQ(eingabe.MapVirtualKeyA(65, 0), 0U);
    letzte.da = true;
    EXPECT_EQ(eingabe.pruefen().reichweite, Reichweite::Alle);
    EXPECT_EQ(eingabe.MapVirtualKeyA(65, 0), ProbeEingabe().MapVirtualKeyA(65, 0));
    const int gefragt = beste.gefragt;
    eingabe.pruefen();
    EXPECT_EQ(beste.gefragt, gefragt) << "one who reaches everyone stays";
}

TEST_F(WahleingabeFaelle, WerDientUndWarumAndereNichtWirdGesagtSooftEsEinAnderesIst) {
    std::vector<std::string> gesagt;
    const auto hoeren = [&](const EingabeWahl& wahl) {
        std::string text = wahl.name;
        for (const auto& grund : wahl.gruende)
            text += "; " + grund;
        gesagt.push_back(text);
    };
    const auto neues = [&] { return std::exchange(gesagt, {}); };
    Wahleingabe eingabe(kandidaten(), hoeren);
    EXPECT_THAT(neues(), ElementsAre("; a: noch nicht; b: noch nicht; c: noch nicht"));
    eingabe.pruefen();
    EXPECT_THAT(neues(), ElementsAre());
    naechste.da = true;
    eingabe.pruefen();
    EXPECT_THAT(neues(), ElementsAre("b; a: noch nicht"));
    eingabe.pruefen();
    EXPECT_THAT(neues(), ElementsAre());
    beste.grund = "gar nicht";
    eingabe.pruefen();
    EXPECT_THAT(neues(), ElementsAre("b; a: gar nicht"));
    beste.da = true;
    eingabe.pruefen();
    EXPECT_THAT(neues(), ElementsAre("a"));
    eingabe.pruefen();
    EXPECT_THAT(neues(), ElementsAre());
}

TEST(EingabeReichweite, XTestErreichtUnterWaylandNurX11UndSonstAlle) {
    const auto reichweiten = [] {
        Tastaturlayout layout;
        std::vector<Reichweite> alle;
        for (const auto& kandidat : eingabeKandidaten(layout))
            alle.push_back(kandidat.reichweite);
        return alle;
    };
    ohneOberflaeche();
    EXPECT_THAT(reichweiten(), ElementsAre(Reichweite::Alle, Reichweite::Alle));
    setenv("XDG_SESSION_TYPE", "wayland", 1);
    EXPECT_THAT(reichweiten(), ElementsAre(Reichweite::Alle, Reichweite::NurX));
    setenv("XDG_SESSION_TYPE", "x11", 1);
    setenv("WAYLAND_DISPLAY", "wayland-0", 1);
    EXPECT_THAT(reichweiten(), ElementsAre(Reichweite::Alle, Reichweite::NurX));
    ohneOberflaeche();
}
