// SPDX-License-Identifier: GPL-3.0-or-later
// A running window that shows nothing.
#pragma once

#include "engine/run/LaufAnzeige.h"

class StummeAnzeige : public LaufAnzeige {
public:
    void titel(const std::string&) override {}
    void lblUmschalt(std::string_view) override {}
    void gedruecktePadtasten(int) override {}
    void Erg(int, const std::string&) override {}
    void HScroll1(int, int) override {}
    void HScroll2(int) override {}
    void Text3(int, const std::string&) override {}
    void Command1(int, std::string_view) override {}
    void testfeld(bool) override {}
    void Option1(int) override {}
    void hauptformVerbergen() override {}
    void hauptformZurueck(bool) override {}
    void abgebrochen(const LaufzeitFehler&) override {}
};
