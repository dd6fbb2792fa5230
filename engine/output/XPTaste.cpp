// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/output/XPTaste.h"

#include "engine/output/Maus.h"

void XPTaste::TasteAbSenden(VirtuelleTaste taste) {
    tasteSenden(taste, 0);
    WiederholungPruefen_();
}

void XPTaste::TasteAufSenden(VirtuelleTaste taste) {
    tasteSenden(taste, KEYEVENTF_KEYUP);
}

void XPTaste::tasteSenden(VirtuelleTaste taste, std::uint32_t flags) {
    INPUT eines{};
    eines.type = INPUT_KEYBOARD;
    eines.ki = {taste,
                static_cast<std::uint16_t>(eingabe_.MapVirtualKeyA(taste, 0)),
                flags | (istErweitert(taste) ? KEYEVENTF_EXTENDEDKEY : 0),
                0,
                0,
                {}};
    eingabe_.SendInput({&eines, 1});
}

void XPTaste::MausDruecken(int selektor) {
    maus::festDruecken(eingabe_, selektor);
}

void XPTaste::MausLoesen(int selektor) {
    maus::loslassen(eingabe_, selektor);
}
