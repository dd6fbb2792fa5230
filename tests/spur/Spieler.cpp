// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/spur/Spieler.h"

#include "tests/spur/Padeingabe.h"

#include "base/LaufzeitFehler.h"
#include "base/Regler.h"
#include "engine/mitschnitt/Prozesszustand.h"
#include "engine/mitschnitt/Zustandsgang.h"
#include "engine/run/LaufFenster.h"
#include "platform/probe/ProbeEingabe.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeUhr.h"
#include "tests/hilfen/Gamepadxml.h"
#include "tests/hilfen/StummeAnzeige.h"
#include "tests/hilfen/Testdatenbank.h"

#include <sqlite3.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>

namespace fs = std::filesystem;

namespace {

using Art = Spureingabe::Art;

constexpr const char* SCHEMA = "S";
constexpr const char* DATENBANK = "Belegung.twk";
constexpr const char* GAMEPAD_XML = "Gamepad.xml";

// The statements of a trace may be a stranger's: they lay and change rows of the one file that is thrown
// away, and come to an end.
int zeilenarbeit(void*, int was, const char*, const char*, const char*, const char*) {
    constexpr std::array ERLAUBTES{SQLITE_SELECT, SQLITE_READ,     SQLITE_INSERT,   SQLITE_UPDATE,
                                   SQLITE_DELETE, SQLITE_FUNCTION, SQLITE_RECURSIVE};
    return std::ranges::find(ERLAUBTES, was) != ERLAUBTES.end() ? SQLITE_OK : SQLITE_DENY;
}

int schritteVorbei(void* uebrige) {
    return --*static_cast<int*>(uebrige) < 0;
}

void sqlAusfuehren(const fs::path& datei, const Szenario& szenario) {
    sqlite3* offene = nullptr;
    const int geoeffnet = sqlite3_open_v2(datei.c_str(), &offene, SQLITE_OPEN_READWRITE, nullptr);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> datenbank(offene, sqlite3_close);
    if (geoeffnet != SQLITE_OK)
        throw Szenariofehler(sqlite3_errmsg(offene));
    constexpr int LAENGE = 1'000'000;                // bytes of a value
    constexpr int SCHRITTE = 1'000'000;              // of its machine between two looks
    int uebrige = 20;                                // of these for all statements, about a second
    sqlite3_limit(offene, SQLITE_LIMIT_ATTACHED, 0); // also VACUUM INTO
    sqlite3_limit(offene, SQLITE_LIMIT_LENGTH, LAENGE);
    const auto ausfuehren = [&](const std::string& anweisung) {
        const int code = sqlite3_exec(offene, anweisung.c_str(), nullptr, nullptr, nullptr);
        if (code != SQLITE_OK)
            throw Szenariofehler("sql " + anweisung + ": " +
                                 (code == SQLITE_INTERRUPT ? "takes too long" : sqlite3_errmsg(offene)));
    };
    // Nothing needs to reach the disk, and nothing fills it.
    ausfuehren("PRAGMA synchronous=OFF; PRAGMA journal_mode=MEMORY; PRAGMA max_page_count=16384;");
    sqlite3_progress_handler(offene, SCHRITTE, schritteVorbei, &uebrige);
    sqlite3_set_authorizer(offene, zeilenarbeit, nullptr);
    for (const auto& anweisung : szenario.sql)
        ausfuehren(anweisung);
    sqlite3_set_authorizer(offene, nullptr, nullptr);
    for (const auto& anweisung : szenario.umbau)
        ausfuehren(anweisung);
}

class Spieler final : private StummeAnzeige, private Streuablage {
public:
    Spieler(const fs::path& ordner, Pollart pollart, Streuhoerer* hoerer)
        : hoerer_(hoerer)
        , zustand_(pad_, (ordner / GAMEPAD_XML).string())
        , eingabe_([this](const INPUT& ereignis) {
            if (ergebnis_.ereignisse.size() >= HOECHSTENS_EREIGNISSE)
                throw Szenariofehler("more than five million events come out");
            ergebnis_.ereignisse.push_back({uhr_.jetzt(), ereignistext(ereignis)});
        }) {
        zustand_.global.DatenbankPfad = (ordner / DATENBANK).string();
        zustand_.global.SchemaName = zustand_.global.Schemaauswahl = SCHEMA;
        pad_.kannWachen = pollart == Pollart::Ruhend;
    }

    Spurergebnis spielen(const Szenario& szenario) {
        zustandEinsetzen(szenario);
        versaetzeMerken(szenario);
        for (const auto& eingabe : szenario.eingaben) {
            if (szenario.genau && eingabe.zeit >= *szenario.genau) {
                bis(*szenario.genau);
                break;
            }
            bis(eingabe.zeit);
            ausfuehren(eingabe);
            pad_.melden();
            if (eingabe.art == Art::Ende)
                break;
        }
        if (!szenario.toleranz && !szenario.genau)
            uhr_.vorBis(uhr_.jetzt()); // what is due at the last time of all
        stoppen();
        ergebnis_.filter = zustand_.entwackeln.filter;
        ergebnis_.wiederholung = zustand_.wiederholung;
        ergebnis_.ausgelassene = uhr_.ausgelassene();
        return std::move(ergebnis_);
    }

private:
    void zustandEinsetzen(const Szenario& szenario) {
        try {
            zustandsleser_.emplace(szenario.zustand);
            prozesszustandBegehen(zustand_, *zustandsleser_);
            if (std::ranges::find(szenario.eingaben, Art::Lauf, &Spureingabe::art) == szenario.eingaben.end())
                zustandsleser_->allesGelesen();
        } catch (const Zustandsfehler& fehler) {
            throw Szenariofehler(fehler.what());
        }
    }

    void versaetzeMerken(const Szenario& szenario) {
        std::map<std::pair<std::chrono::milliseconds, std::uint32_t>, std::chrono::milliseconds> versaetze;
        for (const auto& eingabe : szenario.eingaben)
            if (eingabe.art == Art::Versatz)
                versaetze[{eingabe.zeit, eingabe.index}] = eingabe.dauer;
        if (!versaetze.empty())
            uhr_.versetzen([versaetze](std::chrono::milliseconds jetzt, std::uint32_t nummer) {
                const auto stelle = versaetze.find({jetzt, nummer});
                return stelle != versaetze.end() ? stelle->second : std::chrono::milliseconds{0};
            });
    }

    void bis(std::chrono::milliseconds zeit) {
        // A run that an error has stopped is taken down outside of its own timers, so step by step.
        while (uhr_.jetzt() < zeit) {
            uhr_.vorVor(uhr_.jetzt() + std::chrono::milliseconds{1});
            if (abgebrochen_)
                lauf_.reset();
        }
    }

    void ausfuehren(const Spureingabe& eingabe) {
        if (padeingabe(pad_, eingabe))
            return;
        switch (eingabe.art) {
        case Art::Start:
            starten();
            break;
        case Art::Lauf:
            fortsetzen();
            break;
        case Art::Stop:
            stoppen();
            break;
        case Art::Spaet:
            uhr_.verschlafen(eingabe.zeit + eingabe.dauer);
            break;
        case Art::Regler:
            if (hatFenster())
                regler(eingabe);
            break;
        case Art::Knopf:
            if (hatFenster())
                lauf_->Command1Klick(static_cast<int>(eingabe.index));
            break;
        default: // the end; an offset, which the clock knows already
            break;
        }
    }

    void fortsetzen() {
        starten();
        if (abgebrochen_)
            return;
        try {
            lauf_->begehen(*zustandsleser_);
            zustandsleser_->allesGelesen();
        } catch (const Zustandsfehler& fehler) {
            throw Szenariofehler(fehler.what());
        }
        lauf_->fortsetzen();
    }

    void starten() {
        if (abgebrochen_)
            lauf_.reset();
        if (lauf_)
            throw Szenariofehler("start while a run is on");
        abgebrochen_ = false;
        lauf_ = std::make_unique<LaufFenster>(Laufumgebung{.zustand = zustand_,
                                                           .joystick = pad_,
                                                           .eingabe = eingabe_,
                                                           .zeitgeber = uhr_,
                                                           .anzeige = *this,
                                                           .streuablage = this,
                                                           .streuhoerer = hoerer_});
        try {
            lauf_->laden();
        } catch (const LaufzeitFehler& fehler) {
            abgebrochen(fehler);
            lauf_.reset();
        }
    }

    void stoppen() {
        if (!lauf_)
            return; // an error has stopped it already
        lauf_->beenden();
        lauf_.reset();
    }

    void regler(const Spureingabe& eingabe) {
        if (eingabe.index == REGLER)
            lauf_->HScroll2Aenderung(static_cast<int>(eingabe.wert));
        else
            lauf_->HScroll1Aenderung(static_cast<int>(eingabe.index), static_cast<int>(eingabe.wert));
    }

    // A run that an error stops takes its window along: what is done there later goes nowhere.
    bool hatFenster() const {
        if (!lauf_ && !abgebrochen_)
            throw Szenariofehler("an input for the window while no run is on");
        return lauf_ != nullptr;
    }

    // --- the window ---

    void anzeigen(std::string text) { ergebnis_.anzeigen.push_back({uhr_.jetzt(), std::move(text)}); }
    void titel(const std::string& text) override { anzeigen("titel " + text); }
    void lblUmschalt(std::string_view text) override { anzeigen("lblUmschalt " + std::string(text)); }
    void gedruecktePadtasten(int zahl) override { anzeigen("Label1 " + std::to_string(zahl)); }
    void Erg(int index, const std::string& text) override {
        anzeigen("Erg(" + std::to_string(index) + ") " + text);
    }
    void Text3(int index, const std::string& text) override {
        anzeigen("Text3(" + std::to_string(index) + ") " + text);
    }
    void Command1(int index, std::string_view text) override {
        anzeigen("Command1(" + std::to_string(index) + ") " + std::string(text));
    }
    void abgebrochen(const LaufzeitFehler& fehler) override {
        abgebrochen_ = true;
        ergebnis_.fehler = fehler.zahl();
        ergebnis_.fehlertext = fehler.what();
        anzeigen("error " + std::to_string(fehler.zahl()));
    }

    void ablegen(const std::string&, std::vector<Streulauf> laeufe) override {
        std::ranges::move(laeufe, std::back_inserter(ergebnis_.streuung));
    }

    Streuhoerer* const hoerer_;
    Spurergebnis ergebnis_;
    ProbeUhr uhr_;
    ProbeJoystick pad_;
    Laufzustand zustand_;
    ProbeEingabe eingabe_;
    std::optional<Zustandsleser> zustandsleser_;
    bool abgebrochen_ = false;
    std::unique_ptr<LaufFenster> lauf_;
};

std::string zeile(const Spurereignis& ereignis) {
    return std::to_string(ereignis.zeit.count()) + " " + ereignis.text;
}

std::string ersterUnterschied(const std::vector<Spurereignis>& immer, const std::vector<Spurereignis>& ruhend,
                              const std::string& was) {
    const auto [links, rechts] = std::ranges::mismatch(immer, ruhend);
    const auto nenne = [](const auto& liste, const auto& stelle) {
        return stelle != liste.end() ? zeile(*stelle) : std::string("nothing more");
    };
    return links == immer.end() && rechts == ruhend.end()
               ? ""
               : was + ": " + nenne(immer, links) + " when it always polls, " + nenne(ruhend, rechts) +
                     " when it rests";
}

std::string zeile(const std::vector<Spurereignis>& ereignisse, std::size_t i) {
    return i < ereignisse.size() ? zeile(ereignisse[i]) : "nothing more";
}

bool istEreignis(const Spurereignis& soll, const Spurereignis& ist, std::chrono::milliseconds toleranz) {
    return soll.text == ist.text && std::chrono::abs(soll.zeit - ist.zeit) <= toleranz;
}

std::string laufende(const std::optional<int>& fehler) {
    return fehler ? "a run stopped by error " + std::to_string(*fehler) : "no error";
}

} // namespace

Spurergebnis spielen(const Szenario& szenario, const fs::path& leereDatenbank, Pollart pollart,
                     Streuhoerer* hoerer) {
    const Testordner ordner;
    const auto datenbank = ordner.pfad() / DATENBANK;
    fs::copy_file(leereDatenbank, datenbank);
    sqlAusfuehren(datenbank, szenario);
    std::ofstream(ordner.pfad() / GAMEPAD_XML) << gamepadXmlMit(SCHEMA, szenario.achsen, szenario.schub);
    return Spieler(ordner.pfad(), pollart, hoerer).spielen(szenario);
}

std::string ruheunterschied(const Spurergebnis& immer, const Spurergebnis& ruhend) {
    if (immer.fehler != ruhend.fehler)
        return laufende(immer.fehler) + " when it always polls, " + laufende(ruhend.fehler) +
               " when it rests";
    if (const auto text = ersterUnterschied(immer.ereignisse, ruhend.ereignisse, "event"); !text.empty())
        return text;
    if (const auto text = ersterUnterschied(immer.anzeigen, ruhend.anzeigen, "shown"); !text.empty())
        return text;
    for (std::size_t i = 0; i < immer.filter.size(); ++i)
        if (immer.filter[i] != ruhend.filter[i])
            return "the filter of axis " + std::to_string(i) + " stands elsewhere when it rests";
    if (immer.streuung != ruhend.streuung)
        return "the sticks are counted elsewhere when it rests";
    if (immer.wiederholung.WiederholSlots != ruhend.wiederholung.WiederholSlots)
        return "other places of the repeat are filled when it rests";
    return "";
}

std::string unterschied(const Szenario& szenario, const Spurergebnis& ergebnis,
                        UnerwarteterFehler unerwarteter) {
    auto soll = szenario.erwartet;
    if (szenario.genau)
        std::erase_if(soll, [&](const Spurereignis& eines) { return eines.zeit >= *szenario.genau; });
    const auto& ist = ergebnis.ereignisse;
    const auto toleranz = szenario.toleranz.value_or(std::chrono::milliseconds{0});
    for (std::size_t i = 0; i < std::max(soll.size(), ist.size()); ++i)
        if (i >= soll.size() || i >= ist.size() || !istEreignis(soll[i], ist[i], toleranz))
            return "event " + std::to_string(i + 1) + ": expected " + zeile(soll, i) + ", came " +
                   zeile(ist, i);
    if (szenario.genau)
        return ""; // an error comes at the end of a run, which is not played
    const bool vergleichen =
        szenario.fehler || szenario.toleranz || unerwarteter == UnerwarteterFehler::Falsch;
    if (vergleichen && szenario.fehler != ergebnis.fehler)
        return "expected " + laufende(szenario.fehler) + ", came " + laufende(ergebnis.fehler) +
               (ergebnis.fehlertext.empty() ? "" : " (" + ergebnis.fehlertext + ")");
    return "";
}
