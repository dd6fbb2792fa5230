// SPDX-License-Identifier: GPL-3.0-or-later
// A test of the whole program in real time: a virtual pad on one side, a client of a real X server on the
// other, and the program between them, on the real platform.
#pragma once

#include "app/Programm.h"
#include "app/Systemplattform.h"
#include "tests/ablauf/Spielpad.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/Testdatenbank.h"
#include "tests/hilfen/XLauscher.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QtTest/QTest>

#include <chrono>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// Events as XLauscher tells them.
using Ereignisse = std::vector<std::string>;

class Ablauf : public ::testing::Test {
protected:
    static constexpr int GEDULD_MS = 10000;
    /// The mark behind which nothing more is expected: F12 by its X key code. A test's rows give virtual key
    /// 123 to the button of the mark, in each layer.
    static constexpr const char* MARKE = "96";
    static constexpr auto MARKENTASTE = SDL_CONTROLLER_BUTTON_START;

    ~Ablauf() override {
        beenden();
        std::filesystem::current_path("/");
    }

    /// Lays the `Schema` "S", plugs the pad in and starts the program and the `Schema`, with a slider text if
    /// one is given.
    void starten(const Schemabau& schema, const std::string& schub = "") {
        schema.anlegen();
        std::filesystem::current_path(datenbank_.ordner());
        lauscher_.emplace(qgetenv("DISPLAY").toStdString(), Lauschart::roh);
        programmStarten();
        if (!schub.empty())
            schubtext(schub);
        umschalten();
        takte(2);
    }
    /// The program and the pad; the axis file lies in the test's own folder, beside this database.
    void programmStarten() { programmStarten(datenbank_); }
    void programmStarten(const Testdatenbank& datenbank) {
        system_.emplace();
        ASSERT_EQ(system_->eingabewahl().name, "XTest");
        pad_.emplace();
        auto plattform = system_->plattform();
        plattform.gamepadXml = (datenbank.ordner() / "Gamepad.xml").string();
        programm_.emplace(plattform);
        programm_->starten();
    }
    void beenden() {
        programm_.reset();
        pad_.reset();
        system_.reset();
    }

    /// "Schema starten" or "Schema stoppen", whichever the button says.
    void umschalten() { programm_->hauptform().findChild<QPushButton*>("Command1(5)")->click(); }
    /// The window of the run; null while none is on.
    static QWidget* laufFenster() {
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == "LaufFenster" && fenster->isVisible())
                return fenster;
        return nullptr;
    }

    /// Lets at least `anzahl` ticks of the poll go by.
    void takte(int anzahl) {
        int gezaehlt = 0;
        auto& zeitgeber = system_->plattform().zeitgeber;
        zeitgeber.SetTimer(ZAEHLTIMER, std::chrono::milliseconds{5}, [&gezaehlt] { ++gezaehlt; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return gezaehlt > anzahl; }, GEDULD_MS));
        zeitgeber.KillTimer(ZAEHLTIMER);
    }
    void druecken(SDL_GameControllerButton taste) {
        pad_->taste(taste, true);
        takte(2);
    }
    void loesen(SDL_GameControllerButton taste) {
        pad_->taste(taste, false);
        takte(2);
    }
    void tippen(SDL_GameControllerButton taste) {
        druecken(taste);
        loesen(taste);
    }
    void ziehen(SDL_GameControllerAxis abzug, bool gezogen) {
        pad_->abzug(abzug, gezogen);
        takte(2);
    }
    /// All that has arrived at the client, up to a mark that is sent now by the whole road.
    Ereignisse angekommen() {
        tippen(MARKENTASTE);
        auto alle = bis(std::string("-") + MARKE);
        if (alle.size() >= 2)
            alle.resize(alle.size() - 2);
        return alle;
    }
    /// What arrives up to and including the event `ende`.
    Ereignisse bis(const std::string& ende) {
        Ereignisse alle;
        const bool da = QTest::qWaitFor([&] { return einesHolen(alle, ende); }, GEDULD_MS);
        EXPECT_TRUE(da) << "no " << ende << " after " << alle.size() << " events";
        return alle;
    }
    /// Waits until the pointer is at the place, give or take a pixel.
    void zeigerErwarten(int x, int y) {
        const auto istDort = [&] {
            const auto [zeigerX, zeigerY] = lauscher_->zeiger();
            return std::abs(zeigerX - x) <= 1 && std::abs(zeigerY - y) <= 1;
        };
        EXPECT_TRUE(QTest::qWaitFor(istDort, GEDULD_MS))
            << "the pointer is at " << lauscher_->zeiger().first << ", " << lauscher_->zeiger().second;
    }
    /// Waits until the title bar of the window of the run says `text`. The toolkit may not know of it.
    void titelErwarten(const std::string& text) {
        const auto fenster = laufFenster()->winId();
        EXPECT_TRUE(QTest::qWaitFor([&] { return lauscher_->titel(fenster) == text; }, GEDULD_MS))
            << lauscher_->titel(fenster) << " is not " << text;
    }
    std::string gamepadXml() const { return (datenbank_.ordner() / "Gamepad.xml").string(); }

    Testdatenbank datenbank_;
    std::optional<Systemplattform> system_;
    std::optional<Spielpad> pad_;
    std::optional<XLauscher> lauscher_;
    std::optional<Programm> programm_;

private:
    static constexpr std::uint32_t ZAEHLTIMER = 77;

    // What came with `ende` and has not been asked for yet stays for the next time.
    bool einesHolen(Ereignisse& alle, const std::string& ende) {
        for (auto& eines : lauscher_->vorhandene())
            offene_.push_back(std::move(eines));
        while (!offene_.empty()) {
            alle.push_back(std::move(offene_.front()));
            offene_.pop_front();
            if (alle.back() == ende)
                return true;
        }
        return false;
    }
    void schubtext(const std::string& text) {
        const std::string schema = "S";
        Achsendatei achsendatei(gamepadXml(), schema);
        achsendatei.AchsenLaden();
        achsendatei.GamepadSchreiben(text);
    }

    std::deque<std::string> offene_;
};
