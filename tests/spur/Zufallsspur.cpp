// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/spur/Zufallsspur.h"

#include <random>
#include <string_view>
#include <vector>

namespace {

using Texte = std::vector<std::string_view>;

// The empty one comes often: what does nothing leaves time to rest.
const Texte BELEGUNGEN{"10,0,0-0-0", "10,0,0-0-0", "1,65,0-0-0",  "1,66,0-0-0", "1,67,1-40-0", "1,68,1-30-50",
                       "1,38,0-0-0", "0,0,0-0-0",  "2,0,1-20-20", "5,0,0-0-0",  "5,0,3-0-0",   "5,0,4-0-0",
                       "3,0,0-0-0",  "3,0,1-0-0",  "4,0,0-0-0",   "4,0,1-0-0"};
const Texte AKTIONEN{"2,0,70,0,0",
                     "2,1,71,20,1,30",
                     "2,1,72,50,0,0",
                     "0,0,5,20",
                     "0,1,3,7",
                     "0,2,4,10",
                     "1,0",
                     "1,3,2",
                     "3",
                     "4",
                     "5,0",
                     "5,1",
                     "5,2,40,50",
                     "5,2,9,7,1"};
const Texte FEHLERHAFTE{"2,0,x,0,0", "5,2,0,5", "0,0"};
const Texte FELDER{"20000, 0, 0, 0", "0, 45000, 0, 0",     "0, 0, 20000, 0",     "0, 0, 0, 45000",
                   "0, 0, 0, 0",     "20000, 0, 20000, 0", "0, 45000, 0, 45000", "20000, 0, 0, 45000"};
const Texte SCHUBTEXTE{"",
                       "3/0-3-2-0(75,,)",
                       "3/0-1-2-0(76,,)/0-3-2-1(75,20,30)",
                       "3/0-3-2-1(75,50,)",
                       "4/1-1-2-0(75,,)/1-2-2-0(76,,)/1-3-2-0(77,,)/1-4-2-0(78,,)",
                       "3/1-2-2-0(77,,)/1-3-0-1(20,7,)",
                       "3/0-1-1-3(2,,)/0-2-3-0(,,)/0-3-x-0(66,,)",
                       "4/0-2-2-0(75,,)"};
const Texte ACHSEN{"lx ly rx ry Z1 Z2", "lx ly rx ry Z1 Z2", "ry rx ly lx Z2 Z1", "lx ly lx ry Z1 rx",
                   "lx ly Z1 Z2 rx ry"};
// Rest, lines and beside them, ends, the ends of the slider's fields, a little beside rest.
const Texte WERTE{"32767", "32767", "32767", "32767", "32768", "32769", "32790", "19999",
                  "20000", "20001", "10000", "45000", "45001", "44999", "60000", "55000",
                  "55001", "65535", "65534", "0",     "1",     "129",   "30000", "50000"};
const Texte STEUERKREUZ{"65535", "65535", "65535", "0",     "4500",  "9000",
                        "13500", "18000", "22500", "27000", "31500", "1234"};
const Texte FENSTER{"1", "1", "2", "3", "5", "10", "30"};

class Wuerfel {
public:
    explicit Wuerfel(std::uint32_t saat) : zufall_(saat) {}

    int zahl(int von, int bis) {
        const auto weite = static_cast<std::uint32_t>(bis - von + 1);
        return von + static_cast<int>(zufall_() % weite); // the same everywhere, unlike a distribution
    }
    bool einesVon(int n) { return zahl(1, n) == 1; }
    std::string_view eines(const Texte& texte) {
        return texte[static_cast<std::size_t>(zahl(0, static_cast<int>(texte.size()) - 1))];
    }

private:
    std::mt19937 zufall_;
};

class Schreiber {
public:
    explicit Schreiber(std::uint32_t saat) : wuerfel_(saat) {}

    std::string spur(int eingaben) {
        schema();
        zeit_ = wuerfel_.zahl(0, 20);
        eingabe("start");
        laeuft_ = true;
        for (int i = 1; i < eingaben; ++i) {
            zeit_ += wuerfel_.einesVon(2) ? wuerfel_.zahl(60, 400) : wuerfel_.zahl(0, 12);
            naechste();
        }
        zeit_ += 400;
        eingabe("ende");
        return text_ + "=\n";
    }

private:
    // --- what lies in the database ---

    void schema() {
        zeile("grundzeilen");
        belegungen("tblTastatur", {"btn", "btn10", "btn100"});
        for (const char* richtung : {"Oben", "Rechts", "Unten", "Links"})
            for (const char* ebene : {"", "2", "3"})
                if (wuerfel_.einesVon(3))
                    setzen("tblSteuerKreuz", std::string(richtung) + ebene, belegung());
        glaettung();
        const std::string zweite = "10000, 55000, 10000, 55000";
        for (const char* tabelle : {"tblStick", "tblStickR"})
            if (wuerfel_.einesVon(2))
                sql("REPLACE INTO " + std::string(tabelle) + " VALUES ('S', 2, " + zweite + ", " + zweite +
                    ", " + zweite + ")");
        for (const char* tabelle : {"tblStickAktion", "tblStickAktionR"})
            for (int i = 0; i < 6; ++i)
                aktion(tabelle, AKTIONEN);
        if (wuerfel_.einesVon(8))
            aktion("tblStickAktion", FEHLERHAFTE);
        zeile("achsen " + std::string(wuerfel_.eines(ACHSEN)));
        if (const auto schub = wuerfel_.eines(SCHUBTEXTE); !schub.empty())
            zeile("schub " + std::string(schub));
    }

    std::string belegung() { return "'" + std::string(wuerfel_.eines(BELEGUNGEN)) + "'"; }

    // The columns of the three layers are btn1..., btn101..., btn1001...
    void belegungen(const std::string& tabelle, const std::vector<std::string>& ebenen) {
        for (const auto& ebene : ebenen)
            for (int taste = 1; taste <= 12; ++taste) {
                const bool zweistellig = taste > 9 && ebene != "btn";
                const auto name = zweistellig ? ebene.substr(0, ebene.size() - 1) : ebene;
                setzen(tabelle, name + std::to_string(taste), belegung());
            }
    }

    void glaettung() {
        const auto fenster = [this] { return std::string(wuerfel_.eines(FENSTER)); };
        const auto wenig = [this](int hoechstens) { return std::to_string(wuerfel_.zahl(0, hoechstens)); };
        for (const char* achse : {"ly", "lx"}) {
            const std::string name = achse;
            setzen("Sensible", "Fenster_" + name, fenster());
            setzen("Sensible", "Mindestzahl_" + name, wenig(5));
            setzen("Sensible", "Rand_" + name, wenig(100));
        }
        for (const char* achse : {"ry", "rx"}) {
            const std::string name = achse;
            setzen("SensibleR", "Fenster_" + name, fenster());
            setzen("SensibleR", "Mindestzahl_" + name, wenig(5));
            setzen("SensibleR", "Rand_" + name, wenig(100));
        }
        if (wuerfel_.einesVon(3))
            setzen("Sensible", "Wiederholung", std::to_string(wuerfel_.zahl(1, 60)));
    }

    void aktion(const std::string& tabelle, const Texte& aktionen) {
        sql("INSERT OR REPLACE INTO " + tabelle + " VALUES ('S', " + std::to_string(wuerfel_.zahl(0, 2)) +
            ", " + std::string(wuerfel_.eines(FELDER)) + ", '" + std::string(wuerfel_.eines(aktionen)) +
            "')");
    }

    void setzen(const std::string& tabelle, const std::string& spalte, const std::string& wert) {
        sql("UPDATE " + tabelle + " SET " + spalte + " = " + wert);
    }
    void sql(const std::string& anweisung) { zeile("sql " + anweisung + ";"); }

    // --- what comes in ---

    void naechste() {
        const int was = wuerfel_.zahl(1, 100);
        if (was <= 35)
            eingabe("buttons " + std::to_string(tasten()));
        else if (was <= 50)
            eingabe("pov " + std::string(wuerfel_.eines(STEUERKREUZ)));
        else if (was <= 88)
            eingabe("achse " + std::to_string(wuerfel_.zahl(0, 5)) + " " +
                    std::string(wuerfel_.eines(WERTE)));
        else if (was <= 91)
            eingabe(wuerfel_.einesVon(2) ? "pad weg" : "pad da");
        else
            bedienung(was);
    }

    // One button or none most of the time: a shift key acts alone.
    int tasten() {
        if (wuerfel_.einesVon(2))
            return 0;
        const int eine = 1 << wuerfel_.zahl(0, 11);
        return wuerfel_.einesVon(4) ? eine | 1 << wuerfel_.zahl(0, 12) : eine;
    }

    void bedienung(int was) {
        if (!laeuft_ || was == 100) {
            eingabe(laeuft_ ? "stop" : "start");
            laeuft_ = !laeuft_;
        } else if (was <= 95) {
            const int regler = wuerfel_.zahl(0, 12);
            const bool fenster = regler == 0 || regler == 2 || regler == 6 || regler == 8;
            eingabe("regler " + std::to_string(regler) + " " +
                    (fenster ? std::string(wuerfel_.eines(FENSTER)) : std::to_string(wuerfel_.zahl(0, 15))));
        } else if (was <= 97) {
            eingabe("knopf " + std::to_string(wuerfel_.zahl(0, 1)));
            eingabe("knopf " + std::to_string(wuerfel_.zahl(0, 1)));
        } else {
            eingabe("knopf " + std::to_string(wuerfel_.zahl(0, 1)));
        }
    }

    void eingabe(const std::string& was) { zeile(std::to_string(zeit_) + " " + was); }
    void zeile(const std::string& inhalt) { text_ += inhalt + "\n"; }

    Wuerfel wuerfel_;
    std::string text_;
    int zeit_ = 0;
    bool laeuft_ = false;
};

} // namespace

std::string zufallsspur(std::uint32_t saat, int eingaben) {
    return Schreiber(saat).spur(eingaben);
}
