// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Aktionsworte.h"

#include <gtest/gtest.h>

namespace {

std::string tastenname(const std::string& nummer) {
    if (nummer == "66")
        return "B";
    return nummer == "32" ? "Leertaste" : "";
}

std::string worte(const std::string& text) {
    return aktionsworte(Stickaktion(text), tastenname);
}

Aktionszeiger aktion(const std::string& text) {
    return std::make_shared<const Stickaktion>(text);
}

/// What a field says whose bands, those of "Feld links" and "Feld oben", have these actions; "" for none.
std::string vonBaendern(const std::string& x, const std::string& y) {
    return feldworte({nullptr, x.empty() ? nullptr : aktion(x), y.empty() ? nullptr : aktion(y)},
                     "Feld links", "Feld oben", tastenname);
}

} // namespace

TEST(AktionsworteTest, MausbewegungNenntRichtungSchrittUndIntervall) {
    EXPECT_EQ(worte("0,0,5,10"), "Maus nach links, 5 Schritte alle 10 ms");
    EXPECT_EQ(worte("0,1,1,250"), "Maus nach rechts, 1 Schritt alle 250 ms");
    EXPECT_EQ(worte("0,2,5,10"), "Maus nach oben, 5 Schritte alle 10 ms");
    EXPECT_EQ(worte("0,3,5,10"), "Maus nach unten, 5 Schritte alle 10 ms");
    EXPECT_EQ(worte("0,4,5,10"), "Maus ohne Richtung, keine Bewegung");
    EXPECT_EQ(worte("0,01,5,10"), "Maus ohne Richtung, keine Bewegung") << "a run wants the digit";
}

TEST(AktionsworteTest, MaustastenUndRad) {
    EXPECT_EQ(worte("1,0"), "Maustaste links");
    EXPECT_EQ(worte("1,1"), "Maustaste rechts");
    EXPECT_EQ(worte("1,2"), "Maustaste Mitte");
    EXPECT_EQ(worte("1,3,120"), "Mausrad nach oben, Sprung 120");
    EXPECT_EQ(worte("1,4,60"), "Mausrad nach unten, Sprung 60");
    EXPECT_EQ(worte("1,5"), "Maustaste, die es nicht gibt");
    EXPECT_EQ(worte("12,5"), "Maustaste, die es nicht gibt") << "the first character is the type";
}

TEST(AktionsworteTest, TastenMitNamenUndZeiten) {
    EXPECT_EQ(worte("2,0,66,0,0"), "Tastatur: B, gehalten");
    EXPECT_EQ(worte("2,1,32,50,0,0"), "Tastatur: Leertaste, 50 ms");
    EXPECT_EQ(worte("2,1,32,50,1,200"), "Tastatur: Leertaste, je 50 ms, Pause 200 ms");
    EXPECT_EQ(worte("2,0,66,50,1,200"), "Tastatur: B, gehalten") << "held keys know no times";
    EXPECT_EQ(worte("2,0,231,0,0"), "Tastatur: Taste 231, gehalten") << "a key without a name";
    EXPECT_EQ(worte("2,7,66,50,0,0"), "Tastatur: B, 50 ms") << "timed is what is not 0";
}

TEST(AktionsworteTest, LeerfeldSperrfeldUndAbsolutePosition) {
    EXPECT_EQ(worte("3"), "Leerfeld");
    EXPECT_EQ(worte("4"), "Sperrfeld");
    EXPECT_EQ(worte("5,0"), "Mausposition: Mitte des Feldes");
    EXPECT_EQ(worte("5,1"), "Mausposition: folgt dem Stick");
    EXPECT_EQ(worte("5,2,40,30"), "Ego Shooter: 40 quer, 30 hoch");
    EXPECT_EQ(worte("5,9,40,30"), "Ego Shooter: 40 quer, 30 hoch") << "as in a run";
}

TEST(AktionsworteTest, WasEinenLaufAnhieltStehtAlsTextDa) {
    EXPECT_EQ(worte("0,0,x,10"), "nicht lesbar: „0,0,x,10“");
    EXPECT_EQ(worte("1,3"), "nicht lesbar: „1,3“");
    EXPECT_EQ(worte("2,1,66"), "nicht lesbar: „2,1,66“");
    EXPECT_EQ(worte("5,2,40"), "nicht lesbar: „5,2,40“");
}

TEST(AktionsworteTest, WasEinLaufNichtKenntIstKeineAktion) {
    EXPECT_EQ(worte(""), "keine Aktion");
    EXPECT_EQ(worte("7,1"), "keine Aktion");
    EXPECT_EQ(worte(" 2,0,66,0,0"), "keine Aktion");
}

TEST(AktionsworteTest, DieEigeneAktionGiltVorDenenDerBaender) {
    EXPECT_EQ(feldworte({aktion("3"), aktion("4"), nullptr}, "Feld links", "Feld oben", tastenname),
              "Leerfeld");
    EXPECT_EQ(feldworte({}, "Feld links", "Feld oben", tastenname), "keine Aktion");
}

TEST(AktionsworteTest, AktionenDerBaenderNennenIhrFeld) {
    EXPECT_EQ(vonBaendern("2,0,66,0,0", ""), "gilt von Feld links: Tastatur: B, gehalten");
    EXPECT_EQ(vonBaendern("", "1,0"), "gilt von Feld oben: Maustaste links");
    EXPECT_EQ(vonBaendern("2,0,66,0,0", "0,2,5,10"), "gilt von Feld links: Tastatur: B, gehalten; "
                                                     "von Feld oben: Maus nach oben, 5 Schritte alle 10 ms");
}

TEST(AktionsworteTest, ZweiMausbewegungenWerdenEineDiagonale) {
    EXPECT_EQ(vonBaendern("0,0,5,10", "0,2,7,20"),
              "gilt von Feld links und Feld oben: "
              "Maus schräg, 5 Schritte nach links und 7 Schritte nach oben alle 10 ms");
    EXPECT_EQ(vonBaendern("0,2,5,10", "0,1,1,20"),
              "gilt von Feld links und Feld oben: "
              "Maus schräg, 5 Schritte nach links und 1 Schritt nach unten alle 10 ms")
        << "x goes by the x action and y by the y action, whatever they name";
    EXPECT_EQ(vonBaendern("0,0,5,10", "0,2,x,20"),
              "gilt von Feld links und Feld oben: nicht lesbar: „0,0,5,10“ und „0,2,x,20“");
}
