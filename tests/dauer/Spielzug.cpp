// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/dauer/Spielzug.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <string_view>
#include <thread>

namespace {

enum class Art {
    Klick,       ///< on a control
    Rechtsklick, ///< the same with the right button
    Zeigen,      ///< on a control, which may fold out
    Taste,       ///< a key or keys of the keyboard
    Tippen,      ///< a new name
    Spielen,     ///< so many grips at the pad
    Knopf,       ///< a button of the pad, down and up
    Warten,      ///< so many milliseconds
    Schliessen,  ///< a form, by its frame
};

constexpr unsigned LINKS = 1;
constexpr unsigned RECHTS = 3;
constexpr int TASTEN = 15; // of SDL's pad
constexpr int ACHSEN = 4;  // the sticks; behind them come the triggers
constexpr int ABZUEGE = 2;
constexpr int ABZUG_LOS = -32768;
constexpr std::string_view EIGENER_NAME = "Lauf ";

constexpr std::array<const char*, 18> EINZELNE{"Tab",  "space", "Return", "Escape", "Left",    "Right",
                                               "Up",   "Down",  "F1",     "Delete", "Home",    "End",
                                               "Next", "Prior", "a",      "7",      "Alt_L+t", "Control_L+s"};

} // namespace

/// `was` is the name of a control; one that ends in "*" means any whose name begins so, "" any control at
/// all.
struct Spielzug::Griff {
    Art art;
    const char* form;
    const char* was = "";
    int anzahl = 0;
};
struct Spielzug::Weg {
    const char* name;
    int gewicht;
    std::vector<Griff> griffe;
};

const std::vector<Spielzug::Weg>& Spielzug::alleWege() {
    static const std::vector<Weg> wege{
        {"play",
         25,
         {{Art::Klick, "frmHaupt", "Command1(5)"},
          {Art::Spielen, "", "", 120},
          {Art::Schliessen, "LaufFenster"}}},
        {"play with the test panel",
         3,
         {{Art::Klick, "frmHaupt", "Command1(5)"},
          {Art::Klick, "LaufFenster", "Command1(1)"},
          {Art::Spielen, "", "", 30},
          {Art::Klick, "LaufFenster"},
          {Art::Klick, "LaufFenster", "Option1(*"},
          {Art::Klick, "LaufFenster", "Command1(0)"},
          {Art::Klick, "LaufFenster", "Command1(0)"},
          {Art::Spielen, "", "", 60},
          {Art::Schliessen, "LaufFenster"}}},
        {"make a Schema",
         4,
         {{Art::Klick, "frmHaupt", "Command1(2)"}, {Art::Tippen, ""}, {Art::Taste, "", "Return"}}},
        {"begin a Schema and think better of it",
         1,
         {{Art::Klick, "frmHaupt", "Command1(2)"}, {Art::Tippen, ""}, {Art::Taste, "", "Escape"}}},
        {"delete a Schema", 1, {{Art::Klick, "frmHaupt", "Command1(3)"}}},
        {"choose a Schema",
         4,
         {{Art::Klick, "frmHaupt", "Combo1"},
          {Art::Taste, "", "Down"},
          {Art::Taste, "", "Down"},
          {Art::Taste, "", "Return"}}},
        {"button editor",
         6,
         {{Art::Klick, "frmHaupt", "Command1(0)"},
          {Art::Klick, "frmJoyKonfic", "lblInfo(*"},
          {Art::Klick, "frmJoyKonfic", "Option1(*"},
          {Art::Klick, "frmJoyKonfic"},
          {Art::Knopf, "", "", 2},
          {Art::Klick, "frmJoyKonfic", "lblInfo(*"},
          {Art::Klick, "frmJoyKonfic", "Option1(1)"},
          {Art::Klick, "frmJoyKonfic", "Text3(0)"},
          {Art::Taste, "", "b"},
          {Art::Klick, "frmJoyKonfic", "Command1(4)"},
          {Art::Schliessen, "frmJoyKonfic"}}},
        {"button editor, unsaved",
         2,
         {{Art::Klick, "frmHaupt", "Command1(0)"},
          {Art::Klick, "frmJoyKonfic", "lblInfo(*"},
          {Art::Klick, "frmJoyKonfic", "Option1(*"},
          {Art::Klick, "frmJoyKonfic"},
          {Art::Schliessen, "frmJoyKonfic"}}},
        {"stick editor, left",
         6,
         {{Art::Klick, "frmHaupt", "Command1(1)"},
          {Art::Klick, "frmJust", "Stickebene"},
          {Art::Rechtsklick, "frmJust", "Stickebene"},
          {Art::Klick, "frmJust", "Option1(*"},
          {Art::Klick, "frmJust"},
          {Art::Klick, "frmJust", "Stickebene"},
          {Art::Zeigen, "frmJust", "Frame2"},
          {Art::Klick, "frmJust", "Uschalt(*"},
          {Art::Klick, "frmJust", "RPfeil(*"},
          {Art::Klick, "frmJust", "Stickebene"},
          {Art::Schliessen, "frmJust"}}},
        {"stick editor, right",
         4,
         {{Art::Klick, "frmHaupt", "Command1(6)"},
          {Art::Rechtsklick, "frmJustr", "Stickebene"},
          {Art::Klick, "frmJustr", "Option1(*"},
          {Art::Klick, "frmJustr", "Stickebene"},
          {Art::Klick, "frmJustr"},
          {Art::Klick, "frmJustr"},
          {Art::Schliessen, "frmJustr"}}},
        {"test out of the stick editor",
         2,
         {{Art::Klick, "frmHaupt", "Command1(1)"},
          {Art::Zeigen, "frmJust", "Frame3"},
          {Art::Klick, "frmJust", "Command1(1)"},
          {Art::Spielen, "", "", 40},
          {Art::Schliessen, "LaufFenster"},
          {Art::Schliessen, "frmJust"}}},
        {"pictures",
         4,
         {{Art::Klick, "frmHaupt", "Command1(1)"},
          {Art::Zeigen, "frmJust", "Frame3"},
          {Art::Klick, "frmJust", "Command1(2)"},
          {Art::Klick, "ScreenChecken", "Command1(0)"},
          {Art::Knopf, "", "", 2},
          {Art::Knopf, "", "", 7},
          {Art::Warten, "", "", 400},
          {Art::Knopf, "", "", 8},
          {Art::Warten, "", "", 400},
          {Art::Klick, "ScreenChecken", "Command1(1)"},
          {Art::Klick, "ScreenChecken", "Image1(*"},
          {Art::Klick, "ScreenChecken", "Command2(*"},
          {Art::Klick, "ScreenChecken", "Image1(*"},
          {Art::Schliessen, "ScreenChecken"},
          {Art::Schliessen, "frmJust"}}},
        {"axes",
         3,
         {{Art::Klick, "frmHaupt", "Command3"},
          {Art::Klick, "AchzenKalib", "Richtung(*"},
          {Art::Taste, "", "Down"},
          {Art::Taste, "", "Return"},
          {Art::Spielen, "", "", 10},
          {Art::Klick, "AchzenKalib", "Command1(*"},
          {Art::Schliessen, "AchzenKalib"}}},
        {"slider",
         4,
         {{Art::Klick, "frmHaupt", "Command4"},
          {Art::Klick, "SchubreglerKonfic", "Command1(*"},
          {Art::Klick, "SchubreglerKonfic", "List1"},
          {Art::Taste, "", "Down"},
          {Art::Klick, "SchubreglerKonfic", "Option1(*"},
          {Art::Klick, "SchubreglerKonfic"},
          {Art::Klick, "SchubreglerKonfic", "Command2"},
          {Art::Klick, "SchubreglerKonfic", "Command3"},
          {Art::Schliessen, "SchubreglerKonfic"}}},
        {"overview",
         4,
         {{Art::Taste, "frmHaupt", "Control_L+d"},
          {Art::Klick, "Uebersicht", "Option*"},
          {Art::Klick, "Uebersicht", "Check1(*"},
          {Art::Klick, "Uebersicht", "Command1(*"},
          {Art::Klick, "Uebersicht"},
          {Art::Klick, "Uebersicht", "Check1(*"},
          {Art::Klick, "Uebersicht", "Command1(4)"},
          {Art::Klick, "Uebersicht", "Command1(5)"},
          {Art::Schliessen, "Uebersicht"}}},
        {"help", 1, {{Art::Klick, "frmHaupt", "Command2"}}},
        {"anything anywhere",
         8,
         {{Art::Klick, ""}, {Art::Klick, ""}, {Art::Taste, ""}, {Art::Klick, ""}, {Art::Rechtsklick, ""}}},
        {"keys",
         4,
         {{Art::Taste, ""}, {Art::Taste, ""}, {Art::Taste, ""}, {Art::Tippen, ""}, {Art::Taste, ""}}},
    };
    return wege;
}

Spielzug::Spielzug(const std::string& anzeige, XWelt& welt, unsigned saat,
                   std::function<void(const std::string&)> merken)
    : hand_(anzeige), welt_(welt), zufall_(saat), merken_(std::move(merken)) {}

// --- ways ---

const Spielzug::Weg& Spielzug::waehlen() {
    const auto gewicht = [this](const Weg& weg) {
        return std::string(weg.name).find(nur_) == std::string::npos ? 0 : weg.gewicht;
    };
    int alle = 0;
    for (const auto& weg : alleWege())
        alle += gewicht(weg);
    if (alle == 0)
        throw std::runtime_error("no way with \"" + nur_ + "\" in its name");
    int los = zufall(1, alle);
    for (const auto& weg : alleWege())
        if ((los -= gewicht(weg)) <= 0)
            return weg;
    return alleWege().back();
}

void Spielzug::tun(Fernsteuerung& programm) {
    if (zufall(1, 100) <= 15)
        padStecken(programm, zufall(1, 3) > 1);
    const auto& weg = waehlen();
    ++gegangene_[weg.name];
    merken_(std::string("-- ") + weg.name);
    namenseingabeVerlassen(programm);
    formenSchliessen(programm);
    schemaWaehlen(programm);
    for (const auto& griff : weg.griffe) {
        padGriffe(programm, zufall(0, 2));
        // Boxes come in the way; the way goes on where they leave it.
        for (int box = 0; box < 3 && boxBeantworten(programm, programm.stand()); ++box)
            rasten(60);
        if (!greifen(programm, griff)) {
            ++vergebliche_[std::string(weg.name) + ": " + griff.form + " " + griff.was];
            break;
        }
        rasten(90);
    }
    if (auchHauptform_ && zufall(1, 40) == 1)
        if (const auto stand = programm.stand(); const auto* form = stand.offenes("frmHaupt"))
            welt_.schliessen(form->kennung);
}

/// While the main form asks for a name there is nothing to play with; mostly the user thinks better of it.
void Spielzug::namenseingabeVerlassen(Fernsteuerung& programm) {
    const auto stand = programm.stand();
    const auto* haupt = stand.offenes("frmHaupt");
    const auto* knopf = stand.control("frmHaupt", "Command1(2)");
    if (!haupt || !knopf || knopf->text == "Schema neu" || zufall(1, 4) == 1)
        return;
    welt_.aktivieren(haupt->kennung);
    rasten(60);
    tippen("Escape");
}

/// Without a Schema there is nothing to play: where none is chosen the first one is, where there is none
/// one is made.
void Spielzug::schemaWaehlen(Fernsteuerung& programm) {
    const auto fehlt = [&](const Schirmstand& stand) {
        const auto* liste = stand.control("frmHaupt", "Combo1");
        return liste && liste->text.empty();
    };
    if (!fehlt(programm.stand()))
        return;
    greifen(programm, {Art::Klick, "frmHaupt", "Combo1"});
    for (const char* taste : {"Home", "Down", "Up", "Return"})
        tippen(taste);
    rasten(90);
    if (!fehlt(programm.stand()))
        return;
    greifen(programm, {Art::Klick, "frmHaupt", "Command1(2)"});
    greifen(programm, {Art::Tippen, ""});
    tippen("Return");
    rasten(90);
}

/// Forms that ways have left open keep others from the screen; mostly the user closes them.
void Spielzug::formenSchliessen(Fernsteuerung& programm) {
    for (const auto& fenster : programm.stand().fenster)
        if (fenster.name != "frmHaupt" && !fenster.box() && zufall(1, 4) > 1) {
            welt_.schliessen(fenster.kennung);
            rasten(90);
        }
}

bool Spielzug::greifen(Fernsteuerung& programm, const Griff& griff) {
    ++griffe_;
    const auto stand = programm.stand();
    switch (griff.art) {
    case Art::Klick:
        return suchenUndKlicken(programm, griff, LINKS);
    case Art::Rechtsklick:
        return suchenUndKlicken(programm, griff, RECHTS);
    case Art::Zeigen:
        return suchenUndKlicken(programm, griff, 0);
    case Art::Taste:
        if (const auto* form = stand.offenes(griff.form); form && !form->aktiv)
            welt_.aktivieren(form->kennung);
        tippen(griff.was);
        return true;
    case Art::Tippen:
        merken_("types a name");
        hand_.tippen(std::string(EIGENER_NAME) + std::to_string(zufall(1, 12)));
        return true;
    case Art::Spielen:
        padGriffe(programm, zufall(1, griff.anzahl));
        return true;
    case Art::Knopf:
        for (const bool unten : {true, false}) {
            programm.befehl("taste " + std::to_string(griff.anzahl) + (unten ? " 1" : " 0"));
            std::this_thread::sleep_for(std::chrono::milliseconds{150});
        }
        return true;
    case Art::Warten:
        std::this_thread::sleep_for(std::chrono::milliseconds{griff.anzahl});
        return true;
    case Art::Schliessen:
        if (const auto* form = stand.offenes(griff.form); form) {
            merken_(std::string("closes ") + griff.form);
            welt_.schliessen(form->kennung);
        }
        return true;
    }
    return false;
}

/// A form takes a moment to open, a control to fold out.
bool Spielzug::suchenUndKlicken(Fernsteuerung& programm, const Griff& griff, unsigned knopf) {
    constexpr int VERSUCHE = 12;
    for (int versuch = 0; versuch < VERSUCHE; ++versuch) {
        const auto stand = programm.stand();
        if (const auto* ziel = gesucht(stand, griff))
            return klicken(programm, stand, ziel, knopf);
        if (boxBeantworten(programm, stand))
            rasten(60);
        else if (const auto* form = stand.offenes(griff.form); form && !form->aktiv)
            welt_.aktivieren(form->kennung); // something may lie over it
        std::this_thread::sleep_for(std::chrono::milliseconds{50});
    }
    return false;
}

const Anklickbares* Spielzug::gesucht(const Schirmstand& stand, const Griff& griff) {
    const std::string form = griff.form;
    std::string name = griff.was;
    const bool anfang = name.empty() || name.back() == '*';
    if (anfang && !name.empty())
        name.pop_back();
    std::vector<const Anklickbares*> treffer;
    for (const auto& eines : stand.controls)
        if ((form.empty() || stand.fenster.at(eines.fenster).name == form) &&
            (anfang ? eines.name.starts_with(name) : eines.name == name))
            treffer.push_back(&eines);
    if (treffer.empty())
        return nullptr;
    return treffer[static_cast<std::size_t>(zufall(0, static_cast<int>(treffer.size()) - 1))];
}

/// The user deletes what he has made himself only: the others have the actions that are played.
bool Spielzug::bleibt(const Schirmstand& stand) {
    const auto* liste = stand.control("frmHaupt", "Combo1");
    return liste && !liste->text.starts_with(EIGENER_NAME);
}

bool Spielzug::klicken(Fernsteuerung& programm, const Schirmstand& stand, const Anklickbares* ziel,
                       unsigned knopf) {
    if (!ziel)
        return false;
    const auto& fenster = stand.fenster.at(ziel->fenster);
    if (fenster.name == "frmHaupt" && ziel->name == "Command1(3)" && bleibt(stand))
        return true;
    const auto& [x, y, breite, hoehe] = ziel->ort;
    merken_("clicks on " + fenster.name + " " + ziel->name + " \"" + ziel->text + "\" with " +
            std::to_string(knopf));
    if (!fenster.aktiv && fenster.kennung != 0) {
        welt_.aktivieren(fenster.kennung);
        padGriffe(programm, 1);
    }
    const bool ebene = ziel->art == 'E' || ziel->art == 'R';
    hand_.zeigen(x + (ebene ? zufall(0, breite - 1) : breite / 2),
                 y + (ebene ? zufall(0, hoehe - 1) : hoehe / 2));
    if (knopf != 0)
        hand_.klicken(knopf);
    return true;
}

void Spielzug::tippen(const std::string& was) {
    const std::string taste =
        was.empty() ? EINZELNE[static_cast<std::size_t>(zufall(0, static_cast<int>(EINZELNE.size()) - 1))]
                    : was;
    merken_("presses " + taste);
    hand_.taste(taste);
}

bool Spielzug::boxBeantworten(Fernsteuerung& programm, const Schirmstand& stand) {
    const auto* box = stand.modales();
    if (!box)
        return false;
    // What differs from box to box, a number or a name, tells no other kind.
    auto text = (box->box() ? "" : box->klasse + ": ") + box->text;
    for (auto& zeichen : text)
        if (zeichen >= '0' && zeichen <= '9')
            zeichen = '#';
    ++boxen_[text];
    merken_("box: " + box->text);
    std::vector<const Anklickbares*> knoepfe;
    for (const auto& eines : stand.controls)
        if (eines.art == 'K' && &stand.fenster.at(eines.fenster) == box)
            knoepfe.push_back(&eines);
    if (knoepfe.empty() || !box->box() || zufall(1, 5) == 1) {
        welt_.aktivieren(box->kennung);
        hand_.taste("Escape");
        return true;
    }
    return klicken(programm, stand,
                   knoepfe[static_cast<std::size_t>(zufall(0, static_cast<int>(knoepfe.size()) - 1))], LINKS);
}

// --- the pad ---

void Spielzug::padGriffe(Fernsteuerung& programm, int anzahl) {
    for (int i = 0; i < anzahl; ++i) {
        padGriff(programm);
        std::this_thread::sleep_for(std::chrono::milliseconds{zufall(2, 40)});
    }
}

void Spielzug::padGriff(Fernsteuerung& programm) {
    constexpr std::array<int, 6> ORTE{-32768, -20000, 0, 0, 20000, 32767};
    const int los = zufall(1, 100);
    const auto befehl = [&](const char* wort, int nummer, int wert) {
        programm.befehl(std::string(wort) + " " + std::to_string(nummer) + " " + std::to_string(wert));
    };
    if (los <= 50)
        return befehl("taste", zufall(0, TASTEN - 1), zufall(0, 2) == 0 ? 1 : 0);
    if (los <= 90)
        return befehl("achse", zufall(0, ACHSEN - 1),
                      zufall(0, 1) == 0 ? ORTE[static_cast<std::size_t>(zufall(0, 5))]
                                        : zufall(-32768, 32767));
    if (los <= 97)
        return befehl("achse", ACHSEN + zufall(0, ABZUEGE - 1), zufall(0, 1) == 0 ? ABZUG_LOS : 32767);
    padLoslassen(programm);
}

void Spielzug::padLoslassen(Fernsteuerung& programm) {
    for (int taste = 0; taste < TASTEN; ++taste)
        programm.befehl("taste " + std::to_string(taste) + " 0");
    for (int achse = 0; achse < ACHSEN + ABZUEGE; ++achse)
        programm.befehl("achse " + std::to_string(achse) + (achse < ACHSEN ? " 0" : " -32768"));
}

void Spielzug::padStecken(Fernsteuerung& programm, bool an) {
    ++stecker_;
    merken_(an ? "plugs the pad in" : "pulls the pad");
    programm.befehl(an ? "pad 1" : "pad 0");
}

// --- rest ---

bool Spielzug::ruhen(Fernsteuerung& programm) {
    constexpr int VERSUCHE = 60;
    merken_("-- comes to rest");
    padStecken(programm, true);
    padLoslassen(programm);
    welt_.loslassen(); // what a stopped run has left down, which would repeat for ever
    for (int versuch = 0; versuch < VERSUCHE; ++versuch) {
        std::this_thread::sleep_for(std::chrono::milliseconds{150});
        const auto stand = programm.stand();
        if (boxBeantworten(programm, stand))
            continue;
        const auto* haupt = stand.offenes("frmHaupt");
        if (haupt && stand.fenster.size() == 1) {
            const auto* knopf = stand.control("frmHaupt", "Command1(2)");
            if (knopf && knopf->text == "Schema neu")
                return true;
            welt_.aktivieren(haupt->kennung); // it asks for a name
            hand_.taste("Escape");
            continue;
        }
        // One after the other, the last one first; a list that is folded out goes by the key.
        const auto oberstes = std::ranges::find_if(
            stand.fenster, [](const OffenesFenster& eines) { return eines.name != "frmHaupt"; });
        if (oberstes != stand.fenster.end() && versuch % 2 == 0)
            welt_.schliessen(oberstes->kennung);
        else
            hand_.taste("Escape");
    }
    return false;
}

void Spielzug::rasten(int hoechstens_ms) {
    std::this_thread::sleep_for(std::chrono::milliseconds{zufall(10, hoechstens_ms)});
}
