// SPDX-License-Identifier: GPL-3.0-or-later
// What grows with what an installation holds: each act of the user on the first evening and after years of
// play; then acts on ever more action rows that lie on one field.
//
//   wachstum [RUNS [ACT]]
//
// Each time is the median of the processor time, beside it the median of the clock: a machine that does other
// things spoils the second first. A start from outside is measured by `startzeit`.
#include "app/Anwendung.h"
#include "app/Programm.h"
#include "platform/probe/ProbeEingabe.h"
#include "platform/probe/ProbeEingabeweg.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeMarke.h"
#include "platform/probe/ProbeProzess.h"
#include "platform/probe/ProbeSchirm.h"
#include "platform/probe/ProbeTastatur.h"
#include "platform/probe/ProbeTon.h"
#include "platform/probe/ProbeUhr.h"
#include "store/files/Bilddatei.h"
#include "store/schema/Schemaloeschen.h"
#include "store/schema/UebersichtAktion.h"
#include "store/schema/modSpeichern.h"
#include "tests/hilfen/Bestand.h"

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Uhr = std::chrono::steady_clock;

/// Milliseconds.
struct Zeit {
    double prozessor = 0;
    double uhr = 0;
};

double prozessorzeit() {
    timespec zeit{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &zeit);
    return static_cast<double>(zeit.tv_sec) * 1e3 + static_cast<double>(zeit.tv_nsec) / 1e6;
}

template <class Arbeit> Zeit gemessen(Arbeit&& arbeit) {
    const auto prozessor = prozessorzeit();
    const auto uhr = Uhr::now();
    arbeit();
    return {prozessorzeit() - prozessor, std::chrono::duration<double, std::milli>(Uhr::now() - uhr).count()};
}

double median(std::vector<double> werte) {
    std::ranges::sort(werte);
    return werte[werte.size() / 2];
}

Zeit median(const std::vector<Zeit>& zeiten) {
    std::vector<double> prozessor;
    std::vector<double> uhr;
    for (const auto& zeit : zeiten) {
        prozessor.push_back(zeit.prozessor);
        uhr.push_back(zeit.uhr);
    }
    return {median(prozessor), median(uhr)};
}

void ereignisse() {
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

/// The program on fakes, with an installation of its own.
class Anlage {
public:
    explicit Anlage(const Bestand& bestand) { bestandLegen(datenbank_, bestand); }
    ~Anlage() {
        programm_.reset();
        ereignisse();
    }
    Anlage(const Anlage&) = delete;
    Anlage& operator=(const Anlage&) = delete;

    /// Up to the main form, which lists the `Schema`s; the one that counts is chosen then.
    void starten() {
        programm_ = std::make_unique<Programm>(Plattform{pad_, eingabe_, uhr_, prozess_, tastatur_, ton_,
                                                         schirm_, marke_, weg_,
                                                         (datenbank_.ordner() / "Gamepad.xml").string()});
        programm_->starten();
        ereignisse();
    }
    void beenden() {
        programm_.reset();
        ereignisse();
    }
    void waehlen() {
        auto& liste = *haupt().findChild<QComboBox*>("Combo1");
        liste.setCurrentIndex(liste.findText(BESTANDSSCHEMA));
        emit liste.activated(liste.currentIndex());
        ereignisse();
    }
    void druecken(QWidget& form, const QString& knopf) {
        form.findChild<QPushButton*>(knopf)->click();
        ereignisse();
    }
    void druecken(const QString& knopf) { druecken(haupt(), knopf); }
    void setzen(const QString& form, const QString& option) {
        offene(form).findChild<QRadioButton*>(option)->setChecked(true);
        ereignisse();
    }
    void uebersicht() {
        emit programm_->hauptform().uebersichtGewuenscht();
        ereignisse();
    }
    QWidget& offene(const QString& name) {
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == name && fenster->isVisible())
                return *fenster;
        std::fprintf(stderr, "not open: %s\n", qPrintable(name));
        std::exit(1);
    }
    void schliessen(const QString& name) {
        offene(name).close();
        ereignisse();
    }
    void vergehen(int ms) {
        uhr_.vorUm(std::chrono::milliseconds{ms});
        ereignisse();
    }
    /// All buttons of the pad, by their bits.
    void knoepfe(std::uint32_t maske) { pad_.zustand.dwButtons = maske; }

    QWidget& haupt() { return programm_->hauptform(); }
    const Testdatenbank& datenbank() const { return datenbank_; }
    Schemaort ort() const { return {datenbank_.pfad(), BESTANDSSCHEMA}; }
    fs::path bilder() const { return datenbank_.ordner() / "Bilder"; }

private:
    Testdatenbank datenbank_;
    ProbeJoystick pad_;
    ProbeEingabe eingabe_;
    ProbeUhr uhr_;
    ProbeProzess prozess_{datenbank_.ordner().string(), '/'};
    ProbeTastatur tastatur_;
    ProbeTon ton_;
    ProbeSchirm schirm_;
    int gesetzteMarken_ = 0;
    ProbeMarke marke_{gesetzteMarken_};
    ProbeEingabeweg weg_;
    std::unique_ptr<Programm> programm_;
};

/// What the user does: what comes before it and after it is not measured.
struct Tat {
    const char* name;
    std::function<void(Anlage&)> vorher;
    std::function<void(Anlage&)> tat;
    std::function<void(Anlage&)> danach;
    bool mitProgramm = true;
};

const std::function<void(Anlage&)> NICHTS = [](Anlage&) {};

std::function<void(Anlage&)> druecken(const char* knopf) {
    return [knopf](Anlage& anlage) { anlage.druecken(knopf); };
}
std::function<void(Anlage&)> schliessen(const char* form) {
    return [form](Anlage& anlage) { anlage.schliessen(form); };
}

constexpr const char* TASTEN = "Command1(0)";
constexpr const char* STICK = "Command1(1)";
constexpr const char* STARTEN = "Command1(5)";

std::vector<Tat> lesendeTaten() {
    return {
        {"start, list", NICHTS, [](Anlage& a) { a.starten(); }, [](Anlage& a) { a.beenden(); }, false},
        {"Schema chosen", NICHTS, [](Anlage& a) { a.waehlen(); }, NICHTS},
        {"button editor opens", NICHTS, druecken(TASTEN), schliessen("frmJoyKonfic")},
        {"slider editor opens", NICHTS, druecken("Command4"), schliessen("SchubreglerKonfic")},
        {"axis form opens", NICHTS, druecken("Command3"), schliessen("AchzenKalib")},
        {"stick editor opens", NICHTS, druecken(STICK), schliessen("frmJust")},
        {"stick editor, layer", druecken(STICK),
         [](Anlage& a) {
             a.setzen("frmJust", "Option1(2)");
             a.setzen("frmJust", "Option1(0)");
         },
         schliessen("frmJust")},
        {"overview opens", NICHTS, [](Anlage& a) { a.uebersicht(); }, schliessen("Uebersicht")},
        {"overview, Info",
         [](Anlage& a) {
             a.uebersicht();
             auto& liste = *a.offene("Uebersicht").findChild<QComboBox*>("Combo1(0)");
             liste.setEditText(BESTANDSSCHEMA);
         },
         [](Anlage& a) { a.druecken(a.offene("Uebersicht"), "Command1(3)"); }, schliessen("Uebersicht")},
        {"run starts", NICHTS, druecken(STARTEN), schliessen("LaufFenster")},
        {"run, layer and back",
         [](Anlage& a) {
             a.druecken(STARTEN);
             a.vergehen(50);
         },
         [](Anlage& a) {
             a.knoepfe(1U << 8);
             a.vergehen(10);
             a.knoepfe(0);
             a.vergehen(10);
         },
         schliessen("LaufFenster")},
        {"picture found", NICHTS, [](Anlage& a) { bilddateien(a.bilder(), "S2R.BMP"); }, NICHTS},
    };
}

std::vector<Tat> schreibendeTaten() {
    constexpr std::array<bool, EBENENWAHLEN> NACH_RECHTS{false, false, false, false, false,
                                                         false, true,  false, false};
    return {
        {"slider saved", druecken("Command4"),
         [](Anlage& a) { a.druecken(a.offene("SchubreglerKonfic"), "Command3"); }, NICHTS},
        {"line moved with its actions", NICHTS,
         [](Anlage& a) {
             auto bild = StickLinienLesen(a.datenbank().pfad(), Stickseite::Links, BESTANDSSCHEMA,
                                          [](std::string_view) {});
             const auto alt = bild.linien[0][1][0];
             bild.linien[0][1][0] = alt + 1;
             StickLinieVerlegen(a.datenbank().pfad(), Stickseite::Links, BESTANDSSCHEMA, bild,
                                {0, 0, alt + 1, alt});
         },
         NICHTS},
        {"layer copied", NICHTS,
         [NACH_RECHTS](Anlage& a) {
             LayerKopieren({a.ort(), 0}, a.ort(), NACH_RECHTS);
         },
         NICHTS},
        {"layers swapped", NICHTS,
         [](Anlage& a) {
             LayerWechseln({a.ort(), 0}, {a.ort(), 6}, [](std::string_view) {});
         },
         NICHTS},
        {"layer deleted", NICHTS,
         [](Anlage& a) {
             LayerLoeschen({a.ort(), 6}, [](std::string_view) { return false; });
         },
         [NACH_RECHTS](Anlage& a) {
             LayerKopieren({a.ort(), 0}, a.ort(), NACH_RECHTS);
         }},
        {"Schema made", NICHTS,
         [](Anlage& a) {
             SchemaAnlegen(a.datenbank().pfad(), "Neues", "", [](std::string_view) { return false; });
         },
         [](Anlage& a) {
             SchemaLoeschen({a.datenbank().pfad(), "", ""}, "Neues", [](std::string_view) {});
         }},
        {"Schema deleted",
         [](Anlage& a) { fs::copy_file(a.datenbank().pfad(), a.datenbank().ordner() / "Kopie"); },
         [](Anlage& a) {
             SchemaLoeschen({(a.datenbank().ordner() / "Kopie").string(), a.bilder().string(), ""}, "Spiel 0",
                            [](std::string_view) {});
             SchemaLoeschen({(a.datenbank().ordner() / "Kopie").string(), "", ""}, BESTANDSSCHEMA,
                            [](std::string_view) {});
         },
         [](Anlage& a) { fs::remove(a.datenbank().ordner() / "Kopie"); }},
    };
}

/// Those whose name begins so.
std::vector<Tat> gewaehlteTaten(std::string_view anfang) {
    auto taten = lesendeTaten();
    std::ranges::move(schreibendeTaten(), std::back_inserter(taten));
    std::erase_if(taten, [&](const Tat& tat) { return !std::string_view(tat.name).starts_with(anfang); });
    return taten;
}

Zeit gemessen(Anlage& anlage, const Tat& tat, int laeufe) {
    if (tat.mitProgramm) {
        anlage.starten();
        anlage.waehlen();
    }
    std::vector<Zeit> zeiten;
    for (int i = 0; i < laeufe; ++i) {
        tat.vorher(anlage);
        zeiten.push_back(gemessen([&] { tat.tat(anlage); }));
        tat.danach(anlage);
    }
    if (tat.mitProgramm)
        anlage.beenden();
    return median(zeiten);
}

void bestaendeVergleichen(const std::vector<Tat>& taten, int laeufe) {
    std::printf("%-28s %21s %21s %7s\n", "ms of the processor (clock)", "first evening", "after years",
                "times");
    for (const auto& tat : taten) {
        std::array<Zeit, 2> zeiten;
        std::size_t i = 0;
        for (const auto& bestand : {ERSTER_ABEND, NACH_JAHREN}) {
            Anlage anlage(bestand);
            zeiten[i++] = gemessen(anlage, tat, laeufe);
        }
        std::printf("%-28s %10.2f (%8.2f) %10.2f (%8.2f) %7.1f\n", tat.name, zeiten[0].prozessor,
                    zeiten[0].uhr, zeiten[1].prozessor, zeiten[1].uhr,
                    zeiten[1].prozessor / zeiten[0].prozessor);
    }
}

constexpr std::array<int, 3> ZEILENZAHLEN{600, 6000, 60000};

void zeilenVergleichen(const std::vector<Tat>& taten, bool gross, int laeufe) {
    std::printf("\nrows on one %s field\n%-28s", gross ? "large" : "small", "ms of the processor (clock)");
    for (const int zeilen : ZEILENZAHLEN)
        std::printf("%21d", zeilen);
    std::printf("\n");
    for (const auto& tat : taten) {
        std::printf("%-28s", tat.name);
        for (const int zeilen : ZEILENZAHLEN) {
            Anlage anlage(ERSTER_ABEND);
            anlage.datenbank().sql(zeilenEinesFelds(zeilen, gross));
            const auto zeit = gemessen(anlage, tat, laeufe);
            std::printf("%10.2f (%8.2f)", zeit.prozessor, zeit.uhr);
            std::fflush(stdout);
        }
        std::printf("\n");
    }
}

void ohneMeldungen(QtMsgType art, const QMessageLogContext&, const QString& text) {
    if (art != QtDebugMsg && art != QtInfoMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

} // namespace

int main(int anzahl, char** worte) {
    const int laeufe = anzahl > 1 ? std::max(1, std::atoi(worte[1])) : 9;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(ohneMeldungen);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    Anwendung anwendung(anzahl, worte);
    const auto taten = gewaehlteTaten(anzahl > 2 ? worte[2] : "");
    bestaendeVergleichen(taten, laeufe);
    for (const bool gross : {true, false})
        zeilenVergleichen(taten, gross, std::min(laeufe, 3));
}
