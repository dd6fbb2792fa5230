// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/spur/Aufnahme.h"

#include "tests/spur/Padeingabe.h"

#include "base/LaufzeitFehler.h"
#include "base/Regler.h"
#include "engine/mitschnitt/Laufmitschnitt.h"
#include "engine/run/LaufFenster.h"
#include "engine/run/Laufzustand.h"
#include "platform/mitschnitt/Mitschnittgeraete.h"
#include "platform/probe/ProbeEingabe.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeUhr.h"
#include "tests/hilfen/Gamepadxml.h"
#include "tests/hilfen/StummeAnzeige.h"
#include "tests/hilfen/Testdatenbank.h"

#include <fstream>
#include <memory>
#include <random>

namespace fs = std::filesystem;

namespace {

using Art = Spureingabe::Art;
using Zeit = std::chrono::milliseconds;

constexpr const char* SCHEMA = "Spiel mit Namen";
constexpr Zeit RUHEPUNKTABSTAND{2000}; // more often than for players: a play lasts a minute

class Aufnahme final : private StummeAnzeige {
public:
    Aufnahme(const fs::path& ordner, const Aufnahmeart& art)
        : zufall_(art.saat)
        , stockungen_(art.stockungen)
        , eingabe_([this](const INPUT&) { ++ereignisse_; })
        , geraete_(pad_, eingabe_, uhr_, art.grenzen)
        , zustand_(geraete_.pad, (ordner / "Gamepad.xml").string())
        , mitschnitt_(zustand_, geraete_) {
        zustand_.global.DatenbankPfad = (ordner / "Belegung.twk").string();
        zustand_.global.SchemaName = zustand_.global.Schemaauswahl = SCHEMA;
        pad_.kannWachen = art.saat % 3 != 0;
        uhr_.versetzen([this](Zeit, std::uint32_t) { return Zeit{stockt() ? wuerfeln(3) : 0}; });
    }

    Aufnahmeergebnis spielen(const Szenario& szenario) {
        for (const auto& eingabe : szenario.eingaben) {
            while (uhr_.jetzt() < eingabe.zeit)
                weiter();
            ausfuehren(eingabe);
            pad_.melden();
            if (eingabe.art == Art::Ende)
                break;
        }
        Aufnahmeergebnis ergebnis{mitschnitt_.abzug("now")(), ereignisse_};
        stoppen();
        return ergebnis;
    }

private:
    int wuerfeln(int hoechstens) {
        return 1 + static_cast<int>(zufall_() % static_cast<unsigned>(hoechstens));
    }
    bool stockt() { return wuerfeln(1000) <= stockungen_; }

    void weiter() {
        if (stockt())
            uhr_.verschlafen(uhr_.jetzt() + Zeit{wuerfeln(25)});
        uhr_.vorVor(uhr_.jetzt() + Zeit{1});
        if (abgebrochen_)
            stoppen();
    }

    void ausfuehren(const Spureingabe& eingabe) {
        if (padeingabe(pad_, eingabe))
            return;
        switch (eingabe.art) {
        case Art::Start:
            starten();
            break;
        case Art::Stop:
            stoppen();
            break;
        case Art::Regler:
            regler(static_cast<int>(eingabe.index), static_cast<int>(eingabe.wert));
            break;
        case Art::Knopf:
            if (lauf_)
                mitschnitt_.bedienung("knopf " + std::to_string(eingabe.index),
                                      [&] { lauf_->Command1Klick(static_cast<int>(eingabe.index)); });
            break;
        default:
            break;
        }
    }

    void regler(int index, int wert) {
        if (lauf_)
            mitschnitt_.bedienung("regler " + std::to_string(index) + " " + std::to_string(wert), [&] {
                if (index == REGLER)
                    lauf_->HScroll2Aenderung(wert);
                else
                    lauf_->HScroll1Aenderung(index, wert);
            });
    }

    void starten() {
        stoppen();
        lauf_ = std::make_unique<LaufFenster>(Laufumgebung{
            zustand_, geraete_.pad, geraete_.eingabe, geraete_.uhr, *this, nullptr,
            [this](LaufFenster& lauf) { return mitschnitt_.ruhepunkt(lauf); }, RUHEPUNKTABSTAND});
        try {
            mitschnitt_.beginn([this] { lauf_->laden(); });
        } catch (const LaufzeitFehler& fehler) {
            abgebrochen(fehler);
        }
    }

    void stoppen() {
        abgebrochen_ = false;
        if (!lauf_)
            return;
        mitschnitt_.ende([this] { return lauf_->beenden(); });
        lauf_.reset();
    }

    void abgebrochen(const LaufzeitFehler& fehler) override {
        abgebrochen_ = true;
        mitschnitt_.fehler(fehler.zahl());
    }

    std::mt19937 zufall_;
    int stockungen_;
    std::size_t ereignisse_ = 0;
    ProbeUhr uhr_;
    ProbeJoystick pad_;
    ProbeEingabe eingabe_;
    Mitschnittgeraete geraete_;
    Laufzustand zustand_;
    Laufmitschnitt mitschnitt_;
    std::unique_ptr<LaufFenster> lauf_;
    bool abgebrochen_ = false;
};

/// The statements of a trace speak of the Schema 'S'.
std::string umbenennen(const std::string& schema) {
    std::string text;
    for (const char* tabelle : {"tblTastatur", "tblSteuerKreuz", "tblStick", "tblStickR", "tblStickAktion",
                                "tblStickAktionR", "Sensible", "SensibleR"})
        text += std::string("UPDATE ") + tabelle + " SET Schemaname = '" + schema + "';";
    return text;
}

} // namespace

Aufnahmeergebnis aufnehmen(const Szenario& szenario, const fs::path& leereDatenbank, const Aufnahmeart& art) {
    const Testordner ordner;
    const auto datenbank = ordner.pfad() / "Belegung.twk";
    fs::copy_file(leereDatenbank, datenbank);
    RoheVerbindung verbindung(datenbank.string());
    verbindung.sql("PRAGMA synchronous=OFF; PRAGMA journal_mode=MEMORY;");
    for (const auto& anweisung : szenario.sql)
        verbindung.sql(anweisung);
    verbindung.sql(umbenennen(SCHEMA));
    std::ofstream(ordner.pfad() / "Gamepad.xml") << gamepadXmlMit(SCHEMA, szenario.achsen, szenario.schub);
    return Aufnahme(ordner.pfad(), art).spielen(szenario);
}
