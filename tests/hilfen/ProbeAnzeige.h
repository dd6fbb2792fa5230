// SPDX-License-Identifier: GPL-3.0-or-later
// A running window that writes down what it is told to show.
#pragma once

#include "base/LaufzeitFehler.h"
#include "engine/run/LaufAnzeige.h"

#include <string>
#include <utility>
#include <vector>

class ProbeAnzeige final : public LaufAnzeige {
public:
    /// What was shown, oldest first: the control and its new value.
    std::vector<std::string> protokoll;

    std::vector<std::string> abholen() { return std::exchange(protokoll, {}); }

    /// The caption counts only when it changes, however often it is handed over.
    void titel(const std::string& text) override {
        if (std::exchange(titel_, text) != text)
            merken("Titel", text);
    }
    void lblUmschalt(std::string_view text) override { merken("lblUmschalt", text); }
    void gedruecktePadtasten(int zahl) override { merken("Label1(0)", std::to_string(zahl)); }
    void Erg(int index, const std::string& text) override {
        merken("Erg(" + std::to_string(index) + ")", text);
    }
    void HScroll1(int index, int wert) override {
        merken("HScroll1(" + std::to_string(index) + ")", std::to_string(wert));
    }
    void HScroll2(int wert) override { merken("HScroll2", std::to_string(wert)); }
    void Text3(int index, const std::string& text) override {
        merken("Text3(" + std::to_string(index) + ")", text);
    }
    void Command1(int index, std::string_view text) override {
        merken("Command1(" + std::to_string(index) + ")", text);
    }
    void testfeld(bool offen) override { merken("Testfeld", offen ? "auf" : "zu"); }
    void Option1(int index) override { merken("Option1", std::to_string(index)); }

    void hauptformVerbergen() override { merken("frmHaupt", "verborgen"); }
    void hauptformZurueck(bool zeigen) override { merken("frmHaupt", zeigen ? "gezeigt" : "bereit"); }
    void abgebrochen(const LaufzeitFehler& fehler) override {
        merken("Fehler", std::to_string(fehler.zahl()));
        fehlertext = fehler.what();
    }

    std::string fehlertext; ///< of the error that stopped a run last

private:
    void merken(const std::string& was, std::string_view wert) {
        protokoll.push_back(was + " = " + std::string(wert));
    }

    std::string titel_ = "Schema gestartet";
};
