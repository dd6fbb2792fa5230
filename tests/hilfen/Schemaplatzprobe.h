// SPDX-License-Identifier: GPL-3.0-or-later
// A data folder for a test: database, pictures and axis file, told as one text, and `Schema`s with random
// content to fill it with.
#pragma once

#include "base/Achse.h"
#include "store/files/Bilddatei.h"
#include "store/files/Gamepaddatei.h"
#include "store/schema/Linientabelle.h"
#include "store/schema/Schemauebernahme.h"
#include "tests/hilfen/Dateien.h"
#include "tests/hilfen/Testdatenbank.h"

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>

class Schemaplatzprobe {
public:
    Schemaplatzprobe() { std::filesystem::create_directory(bilder()); }

    Schemaplatz platz() const {
        return {datenbank.pfad(), bilder().string() + "/", (datenbank.ordner() / "Gamepad.xml").string()};
    }
    std::filesystem::path bilder() const { return datenbank.ordner() / "Bilder"; }

    /// All that a user could miss: rows, pictures, axes.
    std::string stand() const {
        std::string text;
        for (const auto& tabelle : datenbank.inhalt())
            for (const auto& zeile : tabelle)
                for (const auto& wert : zeile)
                    text += wert + "|";
        return text + "\n" + beiwerk();
    }
    /// Pictures and axes.
    std::string beiwerk() const {
        std::string text;
        auto namen = namenIn(bilder());
        std::ranges::sort(namen);
        for (const auto& name : namen)
            if (name.find(".neu.") == std::string::npos)
                text += name + "=" + dateiLesen(bilder() / name) + "\n";
        std::vector<std::string> zeilen;
        if (const auto tabelle = gamepadLesen(platz().gamepadXml))
            for (const auto& zeile : tabelle->zeilen) {
                zeilen.emplace_back();
                for (const auto& [spalte, wert] : zeile)
                    zeilen.back() += spalte + "=" + wert + " ";
            }
        std::ranges::sort(zeilen);
        for (const auto& zeile : zeilen)
            text += zeile + "\n";
        return text;
    }

    const Testdatenbank datenbank;
};

/// Makes `Schema`s of values that editors and runs write.
class Zufallsschema {
public:
    explicit Zufallsschema(unsigned saat) : zufall_(saat) {}

    unsigned los(unsigned n) { return static_cast<unsigned>(zufall_() % n); }

    Schemadaten daten() {
        using namespace schematabelle;
        Schemadaten daten;
        daten.zeilen[TASTATUR].push_back(zeile(TASTATUR));
        if (los(8) != 0)
            daten.zeilen[STEUERKREUZ].push_back(zeile(STEUERKREUZ));
        for (const auto tabelle : {STICK, STICK_R})
            for (int index = 1; index <= ZEILEN_JE_STICK && los(9) != 0; ++index) {
                auto neue = zeile(tabelle);
                neue[0] = std::int64_t{index};
                daten.zeilen[tabelle].push_back(std::move(neue));
            }
        for (const auto tabelle : {STICKAKTION, STICKAKTION_R})
            for (auto anzahl = los(12); anzahl > 0; --anzahl) {
                auto neue = zeile(tabelle);
                neue[0] = std::int64_t{los(EBENEN)};
                neue[5] = oft(Wert(aktion()));
                daten.zeilen[tabelle].push_back(std::move(neue));
            }
        for (const auto tabelle : {SENSIBLE, SENSIBLE_R})
            if (los(4) != 0)
                daten.zeilen[tabelle].push_back(zeile(tabelle));
        if (los(4) != 0)
            daten.achsen = achsen();
        return daten;
    }

    std::string bytes(unsigned laenge) {
        std::string text;
        for (; laenge > 0; --laenge)
            text += static_cast<char>(los(256));
        return text;
    }

private:
    std::string zahl(int n) { return std::to_string(los(static_cast<unsigned>(n))); }
    Wert oft(Wert wert) { return los(10) == 0 ? Wert() : std::move(wert); }

    std::string belegung() {
        constexpr std::array<int, 7> ARTEN{0, 1, 2, 3, 4, 5, 10};
        std::string text = std::to_string(ARTEN.at(los(7)));
        return text += "," + zahl(256) + "," + zahl(5) + "-" + zahl(999) + "-" + zahl(999);
    }

    std::string aktion() {
        switch (los(6)) {
        case 0:
            return "0," + zahl(4) + "," + zahl(50) + "," + zahl(99);
        case 1:
            return los(2) == 0 ? "1," + zahl(3) : "1,4," + zahl(240);
        case 2:
            return "2,1," + zahl(256) + "," + zahl(99) + ",1," + zahl(99);
        case 3:
            return "3";
        case 4:
            return "4";
        default:
            return los(2) == 0 ? "5," + zahl(2) : "5,2,-" + zahl(99) + "," + zahl(99);
        }
    }

    Schemazeile zeile(std::size_t tabelle) {
        using namespace schematabelle;
        const bool stick = tabelle >= STICK && tabelle <= STICKAKTION_R;
        Schemazeile zeile;
        for (const auto& spalte : schematabellen()[tabelle].spalten) {
            if (spalte.name == "Programmpfad")
                zeile.push_back(oft(std::string("/spiele/Ä \"" + zahl(1000) + "' €")));
            else if (spalte.art == Spaltenart::Text)
                zeile.push_back(oft(belegung()));
            else if (stick)
                zeile.emplace_back(std::int64_t{los(65536)});
            else
                zeile.push_back(oft(Wert(std::int64_t{los(32768)} - 100)));
        }
        return zeile;
    }

    Gamepadzeile achsen() {
        Gamepadzeile zeile;
        for (const auto* spalte : {"dwXPos", "dwYPos", "dwZPos", "dwRPos", "dwUPos", "dwVPos"})
            zeile[spalte] = ACHSENNAMEN.at(los(ACHSEN));
        if (los(2) == 0)
            zeile["Schubregler"] = "3/1-1-0-1(10,5,)/1-3-2-1(65," + zahl(99) + ",100)";
        return zeile;
    }

    std::mt19937 zufall_;
};
