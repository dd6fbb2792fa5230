// SPDX-License-Identifier: GPL-3.0-or-later
// Latency probe: the time from a change at a pad to the event at a client of an X server, and the processor
// time that it takes, of the whole program and, in the same run with the same pad and listener, of the least
// program that could do it (Grenze.cpp). What measures runs in real time where that is allowed; what is
// measured takes what it gets; the X server is an ordinary process.
//
//   latenz [PRESSES [SECONDS]]            at rest and in play, on an idle machine
//   latenz last [PRESSES [SECONDS]]       with every core busy
//   latenz last niemand [...]             the same without root's rights for the program
//   latenz spiel [TURNS [LATENZ...]]      in play alone, turn by turn, medians; each further LATENZ is the
//   one of
//                                         another build, whose program is measured beside this one's
#include "bench/Messfeld.h"
#include "bench/Messling.h"
#include "bench/Messprogramm.h"
#include "tests/hilfen/Schemabau.h"
#include "tests/hilfen/Testdatenbank.h"
#include "tests/hilfen/XLauscher.h"
#include "tests/hilfen/XServer.h"

#include <X11/Xlib.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <numbers>
#include <optional>
#include <random>
#include <sched.h>
#include <stdexcept>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;
using Uhr = std::chrono::steady_clock;

// A key by its X key code, and the field of the left stick that presses B.
constexpr const char* A_AB = "+38";
constexpr const char* A_AUF = "-38";
constexpr const char* B_AB = "+56";
constexpr const char* B_AUF = "-56";

// What a probe is called by that another one starts for its program: FOLDER FIELD SOCKET.
constexpr const char* PROBAND = "proband";
constexpr int PROBANDWORTE = 5;

struct Auftrag {
    bool unterLast = false;
    bool alsNiemand = false;
    bool nurSpiel = false;
    std::vector<std::string> andere; ///< probes of other builds
    int druecke = 500;
    std::chrono::seconds dauer = 10s;
};

Auftrag auftragVon(std::vector<std::string> worte) {
    Auftrag auftrag;
    auftrag.unterLast = std::erase(worte, "last") > 0;
    auftrag.alsNiemand = std::erase(worte, "niemand") > 0;
    auftrag.nurSpiel = std::erase(worte, "spiel") > 0;
    if (!worte.empty())
        auftrag.druecke = std::max(2, std::atoi(worte[0].c_str()));
    if (auftrag.nurSpiel && worte.size() > 1)
        auftrag.andere.assign(worte.begin() + 1, worte.end());
    else if (worte.size() > 1)
        auftrag.dauer = std::chrono::seconds(std::max(1, std::atoi(worte[1].c_str())));
    return auftrag;
}

// --- what is measured ---

/// The window that is played in: it has the focus, as a game's has.
class Spielfenster {
public:
    explicit Spielfenster(const XServer& server) : anzeige_(XOpenDisplay(server.anzeige().c_str())) {
        if (anzeige_ == nullptr)
            throw std::runtime_error("no X server");
        fenster_ = XCreateSimpleWindow(anzeige_, DefaultRootWindow(anzeige_), 790, 590, 10, 10, 0, 0, 0);
        XMapWindow(anzeige_, fenster_);
        XSync(anzeige_, False);
    }
    Spielfenster(const Spielfenster&) = delete;
    Spielfenster& operator=(const Spielfenster&) = delete;
    ~Spielfenster() { XCloseDisplay(anzeige_); }

    void nachVorn() const {
        XSetInputFocus(anzeige_, fenster_, RevertToPointerRoot, CurrentTime);
        XSync(anzeige_, False);
    }

private:
    Display* anzeige_;
    Window fenster_ = 0;
};

/// What all of it is measured with.
struct Stand {
    const XServer& server;
    XLauscher& lauscher;
    const std::filesystem::path& ordner;
    const Spielfenster& spielfenster;
    int nummer; ///< of the Messfeld
    Messfeld& feld;
};

class Proband {
public:
    virtual ~Proband() = default;
    virtual Messling& messling() = 0;

protected:
    /// Until it reads the pad again and again.
    void spielenLassen(const Messfeld& feld) {
        constexpr auto GEDULD = 20s;
        constexpr std::int64_t EINIGE = 20;
        const auto vorher = feld.abfragen.load();
        for (const auto beginn = Uhr::now(); feld.abfragen - vorher < EINIGE;) {
            if (!messling().lebt() || Uhr::now() - beginn > GEDULD)
                throw std::runtime_error("what is to be measured does not play");
            std::this_thread::sleep_for(5ms);
        }
    }
};

// The whole program, with its `Schema` running.
class Programmproband final : public Proband {
public:
    Programmproband(const Stand& stand, bool zaehlend, bool alsNiemand, const std::string& anderes = {}) {
        std::array<int, 2> paar{};
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, paar.data()) != 0)
            throw std::runtime_error("no socket");
        unser_ = paar[0];
        kind_.emplace([&] {
            close(paar[0]);
            return anderes.empty()
                       ? messprogrammLaufen({stand.ordner, stand.nummer, paar[1], zaehlend, alsNiemand})
                       : anderesLaufen(anderes, stand, paar[1]);
        });
        close(paar[1]);
        abwarten(befehl::BEREIT);
        stand.spielfenster.nachVorn();
        spielenLassen(stand.feld);
    }
    ~Programmproband() override { close(unser_); }

    Messling& messling() override { return *kind_; }
    void druecken(char knopf) const {
        if (write(unser_, &knopf, 1) == 1)
            abwarten(knopf);
    }

private:
    static int anderesLaufen(const std::string& latenz, const Stand& stand, int befehle) {
        fcntl(befehle, F_SETFD, 0);
        const auto feld = std::to_string(stand.nummer);
        return execl(latenz.c_str(), latenz.c_str(), PROBAND, stand.ordner.c_str(), feld.c_str(),
                     std::to_string(befehle).c_str(), nullptr);
    }
    void abwarten(char zeichen) const {
        char gekommenes = 0;
        if (read(unser_, &gekommenes, 1) != 1 || gekommenes != zeichen)
            throw std::runtime_error("the program has not started");
    }

    int unser_ = -1;
    std::optional<Messling> kind_;
};

class Grenzproband final : public Proband {
public:
    Grenzproband(const Stand& stand, const char* art)
        : kind_([&] {
            const auto nummer = std::to_string(stand.nummer);
            return execl(GRENZE, GRENZE, stand.server.anzeige().c_str(), nummer.c_str(), art, nullptr);
        }) {
        spielenLassen(stand.feld);
    }
    Messling& messling() override { return kind_; }

private:
    Messling kind_;
};

// --- latency ---

struct Zeiten {
    std::vector<double> ganz;     ///< ms from the pad to the client
    std::vector<double> gesendet; ///< ms from the pad to the sending

    void merken(Uhr::time_point anfang, const Messfeld& feld) {
        const auto ms = [anfang](Uhr::time_point bis) {
            return std::chrono::duration<double, std::milli>(bis - anfang).count();
        };
        ganz.push_back(ms(Uhr::now()));
        gesendet.push_back(ms(Uhr::time_point(Uhr::duration(feld.gesendet.load()))));
    }
    void dazu(const Zeiten& andere) {
        ganz.insert(ganz.end(), andere.ganz.begin(), andere.ganz.end());
        gesendet.insert(gesendet.end(), andere.gesendet.begin(), andere.gesendet.end());
    }
};

double bei(std::vector<double> zeiten, double anteil) {
    std::ranges::sort(zeiten);
    return zeiten[static_cast<std::size_t>(anteil * static_cast<double>(zeiten.size() - 1))];
}

/// What is down or deflected is told by `an`, and let go by `aus`, at a random phase of the poll.
Zeiten messen(const Stand& stand, int anzahl, std::chrono::microseconds mindestens, auto&& bewegen,
              const char* an, const char* aus) {
    std::mt19937 zufall(1);
    std::uniform_int_distribution<int> pause(0, 10000); // microseconds
    Zeiten zeiten;
    stand.lauscher.vorhandene();
    for (int i = 0; i < anzahl; ++i) {
        std::this_thread::sleep_for(mindestens + std::chrono::microseconds(pause(zufall)));
        const auto anfang = Uhr::now();
        bewegen(true);
        const auto davor = stand.lauscher.bis(an);
        zeiten.merken(anfang, stand.feld);
        if (!davor.empty() && davor.back() == "???")
            throw std::runtime_error(std::string(an) + " has not arrived, time " + std::to_string(i));
        std::this_thread::sleep_for(mindestens + std::chrono::microseconds(pause(zufall)));
        bewegen(false);
        stand.lauscher.bis(aus);
    }
    return zeiten;
}

Zeiten druecken(const Stand& stand, int anzahl) {
    const auto taste = [&](bool unten) { stand.feld.tasten[SDL_CONTROLLER_BUTTON_A] = unten; };
    return messen(stand, anzahl, 6ms, taste, A_AB, A_AUF);
}

// Long enough at each side for the stick to be seen at rest.
Zeiten auslenken(const Stand& stand, int anzahl) {
    const auto stick = [&](bool aussen) {
        stand.feld.achsen[SDL_CONTROLLER_AXIS_LEFTX] = static_cast<Sint16>(aussen ? -30000 : 0);
    };
    return messen(stand, anzahl, 12ms, stick, B_AB, B_AUF);
}

void drucken(const char* was, const Zeiten& zeiten) {
    std::printf("%-16s %4zu times: median %5.2f ms, 99 %% %5.2f ms, most %5.2f ms; to the sending %.2f, %.2f "
                "and %.2f ms\n",
                was, zeiten.ganz.size(), bei(zeiten.ganz, 0.5), bei(zeiten.ganz, 0.99), bei(zeiten.ganz, 1),
                bei(zeiten.gesendet, 0.5), bei(zeiten.gesendet, 0.99), bei(zeiten.gesendet, 1));
}

// --- processor ---

Last ruhelast(const Stand& stand, Proband& proband, std::chrono::milliseconds dauer) {
    stand.lauscher.vorhandene();
    const auto vorher = proband.messling().verbrauch();
    std::this_thread::sleep_for(dauer);
    return last(vorher, proband.messling().verbrauch());
}

struct Spiel {
    Last last;
    double ereignisse = 0; ///< at the client, a second
};

/// Both sticks swing from field to field, as fast as a hand does, and are told to every ms as a good pad
/// does.
Spiel spiellast(const Stand& stand, Proband& proband, std::chrono::milliseconds dauer) {
    constexpr double WEITE = 30000;
    const auto schwingung = [](Uhr::duration seit, double hertz) {
        const double sekunden = std::chrono::duration<double>(seit).count();
        return static_cast<Sint16>(WEITE * std::sin(2 * std::numbers::pi * hertz * sekunden));
    };
    auto& achsen = stand.feld.achsen;
    const auto vorher = proband.messling().verbrauch();
    std::size_t ereignisse = 0;
    const auto beginn = Uhr::now();
    for (auto jetzt = beginn; jetzt < beginn + dauer; jetzt = Uhr::now()) {
        achsen[SDL_CONTROLLER_AXIS_LEFTX] = schwingung(jetzt - beginn, 1.3);
        achsen[SDL_CONTROLLER_AXIS_LEFTY] = static_cast<Sint16>(schwingung(jetzt - beginn, 0.9) / 8);
        achsen[SDL_CONTROLLER_AXIS_RIGHTX] = schwingung(jetzt - beginn, 1.7);
        achsen[SDL_CONTROLLER_AXIS_RIGHTY] = static_cast<Sint16>(schwingung(jetzt - beginn, 1.1) / 8);
        ereignisse += stand.lauscher.vorhandene().size();
        std::this_thread::sleep_for(1ms);
    }
    const auto gemessen = last(vorher, proband.messling().verbrauch());
    const std::chrono::duration<double> vergangen = Uhr::now() - beginn;
    for (auto& achse : achsen)
        achse = 0;
    std::this_thread::sleep_for(100ms);
    return {gemessen, static_cast<double>(ereignisse) / vergangen.count()};
}

struct Raten {
    double glaettung = 0;
    double takt = 0;
};

Raten raten(const Messfeld& feld, std::chrono::seconds dauer) {
    const auto glaettungen = feld.glaettungen.load();
    const auto takte = feld.takte.load();
    std::this_thread::sleep_for(dauer);
    const auto jeSekunde = [dauer](std::int64_t anzahl) {
        return static_cast<double>(anzahl) / static_cast<double>(dauer.count());
    };
    return {jeSekunde(feld.glaettungen - glaettungen), jeSekunde(feld.takte - takte)};
}

// --- side by side ---

struct Ergebnis {
    const char* name;
    std::function<std::unique_ptr<Proband>()> machen;
    Zeiten zeiten;
    Last ruhe;
    Last spiel;
    double ereignisse = 0; ///< in play, a second: all do the same
};

void runde(const Stand& stand, const Auftrag& auftrag, int runden, Ergebnis& ergebnis) {
    const auto proband = ergebnis.machen();
    const auto dauer = std::chrono::milliseconds(auftrag.dauer) / runden;
    const auto dazu = [runden](Last& summe, const Last& eine) {
        summe.prozent += eine.prozent / runden;
        summe.weckungen += eine.weckungen / runden;
    };
    ergebnis.zeiten.dazu(druecken(stand, auftrag.druecke / runden));
    dazu(ergebnis.ruhe, ruhelast(stand, *proband, dauer));
    const auto spiel = spiellast(stand, *proband, dauer);
    dazu(ergebnis.spiel, spiel.last);
    ergebnis.ereignisse += spiel.ereignisse / runden;
}

void nebeneinander(const Stand& stand, const Auftrag& auftrag) {
    constexpr int RUNDEN = 2; // what else happens on the machine falls on all
    const auto grenze = [&stand](const char* art) {
        return [&stand, art] { return std::make_unique<Grenzproband>(stand, art); };
    };
    Ergebnis alle[] = {
        {"program",
         [&] { return std::make_unique<Programmproband>(stand, false, auftrag.alsNiemand); },
         {},
         {},
         {}},
        {"least, 1 ms timer", grenze("takt"), {}, {}, {}, 0},
        {"least, 5 ms", grenze("ruhig"), {}, {}, {}, 0},
        {"least, reads each ms", grenze("lesend"), {}, {}, {}, 0},
    };
    for (int i = 0; i < RUNDEN; ++i)
        for (auto& ergebnis : alle)
            runde(stand, auftrag, RUNDEN, ergebnis);
    std::printf("%-20s | %24s | %21s | %28s\n", "", "button to key, ms", "at rest", "in play");
    std::printf("%-20s | %6s %6s %10s | %9s %11s | %9s %11s %6s\n", "", "median", "99 %", "99 % sent",
                "% of core", "wake-ups/s", "% of core", "wake-ups/s", "keys/s");
    for (const auto& ergebnis : alle)
        std::printf("%-20s | %6.2f %6.2f %10.2f | %9.2f %11.0f | %9.2f %11.0f %6.1f\n", ergebnis.name,
                    bei(ergebnis.zeiten.ganz, 0.5), bei(ergebnis.zeiten.ganz, 0.99),
                    bei(ergebnis.zeiten.gesendet, 0.99), ergebnis.ruhe.prozent, ergebnis.ruhe.weckungen,
                    ergebnis.spiel.prozent, ergebnis.spiel.weckungen, ergebnis.ereignisse);
    std::printf("program to least with 1 ms timer: at rest %.2f, in play %.2f\n",
                alle[0].ruhe.prozent / alle[1].ruhe.prozent, alle[0].spiel.prozent / alle[1].spiel.prozent);
}

// --- play, turn by turn ---

struct Bewerber {
    std::string name;
    std::function<std::unique_ptr<Proband>()> machen;
    std::vector<double> prozente = {};
    std::vector<double> weckungen = {};
    std::vector<double> ereignisse = {};
};

// As short as the other work of the machine is even.
void spielrunde(const Stand& stand, Bewerber& bewerber) {
    constexpr auto ZUG = 1500ms;
    const auto proband = bewerber.machen();
    const auto spiel = spiellast(stand, *proband, ZUG);
    bewerber.prozente.push_back(spiel.last.prozent);
    bewerber.weckungen.push_back(spiel.last.weckungen);
    bewerber.ereignisse.push_back(spiel.ereignisse);
}

/// Of each turn, as one is to the other in it.
std::vector<double> verhaeltnisse(const std::vector<double>& zaehler, const std::vector<double>& nenner) {
    std::vector<double> alle;
    for (std::size_t i = 0; i < zaehler.size(); ++i)
        alle.push_back(zaehler[i] / nenner[i]);
    return alle;
}

void nurSpiel(const Stand& stand, const Auftrag& auftrag) {
    const auto grenze = [&stand](const char* art) {
        return [&stand, art] { return std::make_unique<Grenzproband>(stand, art); };
    };
    const auto programm = [&stand](const std::string& latenz) {
        return [&stand, latenz] { return std::make_unique<Programmproband>(stand, false, false, latenz); };
    };
    std::vector<Bewerber> alle{{"least, 1 ms timer", grenze("takt")},
                               {"least, reads each ms", grenze("lesend")},
                               {"program", programm("")}};
    for (const auto& latenz : auftrag.andere)
        alle.push_back({latenz, programm(latenz)});
    for (int zug = 0; zug < auftrag.druecke; ++zug)
        for (auto& bewerber : alle)
            spielrunde(stand, bewerber);
    std::printf(
        "in play, medians of %d turns: %% of core, to the least with 1 ms timer, to the one that reads "
        "each ms, wake-ups/s, keys/s\n",
        auftrag.druecke);
    for (const auto& bewerber : alle)
        std::printf("%6.2f %5.2f %5.2f %6.0f %5.1f  %s\n", bei(bewerber.prozente, 0.5),
                    bei(verhaeltnisse(bewerber.prozente, alle[0].prozente), 0.5),
                    bei(verhaeltnisse(bewerber.prozente, alle[1].prozente), 0.5),
                    bei(bewerber.weckungen, 0.5), bei(bewerber.ereignisse, 0.5), bewerber.name.c_str());
}

void weiteres(const Stand& stand, const Auftrag& auftrag) {
    Programmproband programm(stand, true, auftrag.alsNiemand);
    drucken("stick to key", auslenken(stand, auftrag.druecke));
    const auto rate = raten(stand.feld, auftrag.dauer);
    std::printf("smoothing %.1f Hz, poll %.1f Hz\n", rate.glaettung, rate.takt);
    programm.druecken(befehl::AUFKLAPPEN); // folds out and halts the poll,
    programm.druecken(befehl::ANHALTEN);
    programm.druecken(befehl::ANHALTEN); // which goes on with the panel in sight
    std::this_thread::sleep_for(1s);
    std::printf("at rest, test panel unfolded: %.2f %% of a core\n",
                ruhelast(stand, programm, auftrag.dauer).prozent);
}

// --- under load ---

/// Ordinary work without end, a process a core.
std::vector<std::unique_ptr<Messling>> arbeiter() {
    std::vector<std::unique_ptr<Messling>> alle;
    for (unsigned i = 0; i < std::max(1U, std::thread::hardware_concurrency()); ++i)
        alle.push_back(std::make_unique<Messling>([] {
            std::vector<double> zahlen(std::size_t{1} << 20, 1.0);
            for (std::size_t j = 0;; j = (j * 5 + 12345) % zahlen.size())
                zahlen[j] = std::sqrt(zahlen[j] + static_cast<double>(j));
            return 0;
        }));
    return alle;
}

void unterLast(const Stand& stand, const Auftrag& auftrag) {
    const auto last = arbeiter();
    std::printf("%zu processes at work, the program %s\n", last.size(),
                auftrag.alsNiemand ? "as an ordinary user" : "as who has started this");
    {
        Programmproband programm(stand, true, auftrag.alsNiemand);
        drucken("button to key", druecken(stand, auftrag.druecke));
        drucken("stick to key", auslenken(stand, auftrag.druecke));
        const auto rate = raten(stand.feld, auftrag.dauer);
        std::printf("smoothing %.1f Hz, poll %.1f Hz, real time %s\n", rate.glaettung, rate.takt,
                    programm.messling().inEchtzeit() ? "to the end" : "refused or taken back");
    }
    if (auftrag.alsNiemand)
        return;
    Grenzproband grenze(stand, "takt");
    drucken("least program", druecken(stand, auftrag.druecke));
}

// What measures must not wait itself; children do not inherit it.
void echtzeitNehmen() {
    sched_param stufe{};
    stufe.sched_priority = sched_get_priority_min(SCHED_RR) + 1;
    if (sched_setscheduler(0, SCHED_RR | SCHED_RESET_ON_FORK, &stufe) != 0)
        std::printf("measured without real-time priority: what measures may be late itself\n");
}

void schemaAnlegen(const Testdatenbank& datenbank) {
    constexpr Schemabau::Vier LINKS{27072, 0, 0, 0};
    constexpr Schemabau::Vier RECHTS{0, 38399, 0, 0};
    Schemabau(datenbank)
        .taste(2, "1,65,0-0-0")
        .feld(Stickseite::Links, LINKS, "2,0,66,0,0")
        .feld(Stickseite::Links, RECHTS, "2,0,67,0,0")
        .feld(Stickseite::Rechts, LINKS, "2,0,68,0,0")
        .feld(Stickseite::Rechts, RECHTS, "2,0,69,0,0")
        .anlegen();
}

// Of whoever plays.
void freigeben(const Testdatenbank& datenbank) {
    namespace fs = std::filesystem;
    fs::permissions(datenbank.ordner(), fs::perms::all);
    fs::permissions(datenbank.pfad(), fs::perms::all);
}

} // namespace

int main(int anzahl, char** worte) {
    if (anzahl == PROBANDWORTE && worte[1] == std::string(PROBAND))
        return messprogrammLaufen({worte[2], std::atoi(worte[3]), std::atoi(worte[4])});
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ); // one who waits sees how far it has come
    const auto auftrag = auftragVon({worte + 1, worte + anzahl});
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1); // no desktop of the machine takes part
    unsetenv("WAYLAND_DISPLAY");
    const XServer server("800x600x24", {"-ac"});
    setenv("DISPLAY", server.anzeige().c_str(), 1);
    const Testdatenbank datenbank;
    schemaAnlegen(datenbank);
    freigeben(datenbank);
    const int nummer = messfeldAnlegen();
    XLauscher lauscher(server.anzeige(), Lauschart::roh);
    const Spielfenster spielfenster(server);
    const Stand stand{server, lauscher, datenbank.ordner(), spielfenster, nummer, messfeld(nummer)};
    echtzeitNehmen();
    if (auftrag.nurSpiel) {
        nurSpiel(stand, auftrag);
    } else if (auftrag.unterLast) {
        unterLast(stand, auftrag);
    } else {
        nebeneinander(stand, auftrag);
        weiteres(stand, auftrag);
    }
}
