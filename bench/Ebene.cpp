// SPDX-License-Identifier: GPL-3.0-or-later
// What the stick editor costs: the live point over a picture that fills the screen, opening, drawing anew.
//
// The point has 5 ms a tick, so that a hundredth of a core is 50 microseconds.
#include "editors/run/Laufsteuerung.h"
#include "editors/stick/Stickebene.h"
#include "editors/stick/Stickeditoren.h"
#include "editors/stick/Streubild.h"
#include "engine/run/Laufzustand.h"
#include "platform/probe/ProbeEingabe.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeMarke.h"
#include "platform/probe/ProbeSchirm.h"
#include "platform/probe/ProbeTastatur.h"
#include "platform/probe/ProbeTon.h"
#include "platform/probe/ProbeUhr.h"
#include "store/files/Streubilddateien.h"
#include "tests/hilfen/Kunsthand.h"
#include "tests/hilfen/Testdatenbank.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCheckBox>
#include <QImage>
#include <QMouseEvent>
#include <QWidget>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

namespace {

constexpr int LINIEN = 19;
constexpr auto TICK = std::chrono::milliseconds{5};

/// An open editor of the left stick with 19 lines a direction and 200 actions over a picture.
class Editor {
public:
    explicit Editor(QSize groesse) : groesse_(groesse) {
        datenbank_.sql(zeilen());
        zustand_.global.DatenbankPfad = datenbank_.pfad();
        zustand_.global.BilderPfad = datenbank_.ordner().string() + "/";
        zustand_.global.SchemaName = zustand_.global.Schemaauswahl = "S";
        QImage bild(groesse, QImage::Format_RGB32);
        for (int y = 0; y < bild.height(); ++y)
            for (int x = 0; x < bild.width(); ++x)
                bild.setPixel(x, y, qRgb(x % 256, y % 256, (x + y) % 256));
        bild.save(QString::fromStdString((datenbank_.ordner() / "S0L.bmp").string()));
        zustand_.achsendatei.AchsenLaden();
    }

    void oeffnen() {
        editoren_ = std::make_unique<Stickeditoren>(zustand_, laufsteuerung_, tastatur_,
                                                    Schirmgeraete{pad_, uhr_, ton_, schirm_});
        editoren_->oeffnen(Stickseite::Links);
        for (auto* fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == "frmJust" && fenster->isVisible())
                form_ = fenster;
        form_->resize(groesse_);
        QApplication::processEvents();
    }
    void schliessen() {
        editoren_.reset();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    /// The stick goes on by a step on a circle that crosses many fields.
    void tick() {
        winkel_ += 0.02;
        pad_.zustand.dwXpos = static_cast<std::uint32_t>(32767 + 25000 * std::cos(winkel_));
        pad_.zustand.dwYpos = static_cast<std::uint32_t>(32767 + 25000 * std::sin(winkel_));
        uhr_.vorUm(TICK);
        QApplication::processEvents();
    }
    void neuZeichnen() { form_->findChild<QWidget*>("Stickebene")->repaint(); }
    void symboleNeu() {
        auto& ebene = *form_->findChild<Stickebene*>("Stickebene");
        ZonenZeichnen(datenbank_.pfad(), Stickseite::Links, "S", 0, ebene.symbole());
        ebene.symboleZeigen();
        QApplication::processEvents();
    }
    /// What five minutes of play leave, in every cell something, and noise at two lines.
    void gespielt() {
        auto daten = streudatenAus({.saat = 1}, 60000);
        for (std::size_t i = 0; i < daten.takte.size(); ++i)
            daten.takte[i] += static_cast<std::uint32_t>(1 + i % 1000);
        for (auto& achse : daten.achsen) {
            achse.zittern[20] += 1000000;
            achse.ruhe[INNERSTE_LINIE / 256] += 1000000;
        }
        Streubilddateien(streubildordner(zustand_.global.DatenbankPfad))
            .speichern("S", Stickseite::Links, 0, daten);
    }
    void streubildSchalten(bool an) {
        form_->findChild<QCheckBox*>("Streubild")->setChecked(an);
        QApplication::processEvents();
    }
    /// A press on the innermost vertical line to the left of the centre picks it up.
    void linieAufnehmen() { maus(QEvent::MouseButtonPress, LINIE, Qt::LeftButton); }
    /// The line that is picked up goes on by a pixel, to and fro between its neighbours.
    void linieZiehen() {
        constexpr int WEG = 60;
        schritt_ = (schritt_ + 1) % (2 * WEG);
        maus(QEvent::MouseMove,
             LINIE + (schritt_ < WEG ? schritt_ : 2 * WEG - schritt_) * 65535.0 / form_->width());
    }
    void ziehen(int umPixel) {
        form_->resize(groesse_.width() + umPixel, groesse_.height());
        QApplication::processEvents();
    }

private:
    void maus(QEvent::Type art, double x, Qt::MouseButton taste = Qt::NoButton) {
        auto& ebene = *form_->findChild<QWidget*>("Stickebene");
        const QPointF wo(x * ebene.width() / 65535, ebene.height() * 0.48);
        QMouseEvent ereignis(art, wo, ebene.mapToGlobal(wo), taste, Qt::MouseButtons(taste), Qt::NoModifier);
        QApplication::sendEvent(&ebene, &ereignis);
        QApplication::processEvents();
    }
    static constexpr int INNERSTE_LINIE = 30000;
    static constexpr double LINIE = INNERSTE_LINIE;

    static std::string zeilen() {
        std::string sql = "BEGIN;";
        for (int i = 0; i < 20; ++i) {
            const auto innen = std::to_string(i < LINIEN ? 30000 - 1400 * i : 0);
            const auto aussen = std::to_string(i < LINIEN ? 36000 + 1400 * i : 0);
            const std::string eine =
                i < LINIEN ? innen + "," + aussen + "," + innen + "," + aussen : "0,0,0,0";
            sql += "INSERT INTO tblStick VALUES ('S'," + std::to_string(i + 1) + "," + eine + "," + eine +
                   "," + eine + ");";
        }
        for (int i = 0; i < 200; ++i)
            sql += "INSERT INTO tblStickAktion VALUES ('S',0," + std::to_string(30000 - 1400 * (i % LINIEN)) +
                   ",0," + std::to_string(30000 - 1400 * (i / LINIEN)) + ",0,'" + std::to_string(i % 6) +
                   ",0,5,10');";
        return sql + "COMMIT;";
    }

    QSize groesse_;
    Testdatenbank datenbank_;
    ProbeJoystick pad_;
    ProbeEingabe eingabe_;
    ProbeUhr uhr_;
    ProbeTastatur tastatur_;
    ProbeTon ton_;
    ProbeSchirm schirm_;
    int gesetzteMarken_ = 0;
    ProbeMarke marke_{gesetzteMarken_};
    Laufzustand zustand_{pad_, (datenbank_.ordner() / "Gamepad.xml").string()};
    Laufsteuerung laufsteuerung_{zustand_, pad_, eingabe_, uhr_, marke_};
    std::unique_ptr<Stickeditoren> editoren_;
    QWidget* form_ = nullptr;
    double winkel_ = 0;
    int schritt_ = 0;
};

QSize groesse(const benchmark::State& stand) {
    return {static_cast<int>(stand.range(0)), static_cast<int>(stand.range(1))};
}

void livepunkt(benchmark::State& stand) {
    Editor editor(groesse(stand));
    editor.oeffnen();
    for (auto _ : stand)
        editor.tick();
}
BENCHMARK(livepunkt)
    ->Args({1024, 768})
    ->Args({1920, 1080})
    ->Args({3840, 2160})
    ->Unit(benchmark::kMicrosecond);

void oeffnen(benchmark::State& stand) {
    Editor editor(groesse(stand));
    for (auto _ : stand) {
        editor.oeffnen();
        stand.PauseTiming();
        editor.schliessen();
        stand.ResumeTiming();
    }
}
BENCHMARK(oeffnen)->Args({1024, 768})->Args({1920, 1080})->Args({3840, 2160})->Unit(benchmark::kMillisecond);

void ganzNeuZeichnen(benchmark::State& stand) {
    Editor editor(groesse(stand));
    editor.oeffnen();
    for (auto _ : stand)
        editor.neuZeichnen();
}
BENCHMARK(ganzNeuZeichnen)
    ->Args({1024, 768})
    ->Args({1920, 1080})
    ->Args({3840, 2160})
    ->Unit(benchmark::kMillisecond);

// Of the picture by itself: eight million pixels at 3840 by 2160, each of them in a cell with a colour.
void streubildMischen(benchmark::State& stand) {
    std::vector<std::uint32_t> takte(std::size_t{256} * 256);
    for (std::size_t i = 0; i < takte.size(); ++i)
        takte[i] = static_cast<std::uint32_t>(1 + i * 7919 % 10007);
    const auto bild = std::make_unique<Streubild>();
    QImage grund(groesse(stand), QImage::Format_RGB32);
    grund.fill(QColor(60, 90, 120));
    QImage ziel(grund.size(), QImage::Format_RGB32);
    ziel.fill(Qt::black);
    for (auto _ : stand) {
        bild->setzen(takte, false);
        bild->mischen(grund, ziel, ziel.rect());
        benchmark::DoNotOptimize(ziel.bits());
    }
}
BENCHMARK(streubildMischen)
    ->Args({1024, 768})
    ->Args({1920, 1080})
    ->Args({3840, 2160})
    ->Unit(benchmark::kMillisecond);

// From the file to the window, again: read, the picture that is kept, all that lies on the plane painted.
void streubildZeigen(benchmark::State& stand) {
    Editor editor(groesse(stand));
    editor.gespielt();
    editor.oeffnen();
    editor.streubildSchalten(true);
    for (auto _ : stand) {
        stand.PauseTiming();
        editor.streubildSchalten(false);
        stand.ResumeTiming();
        editor.streubildSchalten(true);
    }
}
BENCHMARK(streubildZeigen)
    ->Args({1024, 768})
    ->Args({1920, 1080})
    ->Args({3840, 2160})
    ->Unit(benchmark::kMillisecond);

using Millisekunden = std::chrono::duration<double, std::milli>;

/// Of this process; beside other work it tells more than the clock on the wall.
Millisekunden prozessorzeit() {
    timespec zeit{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &zeit);
    return std::chrono::seconds(zeit.tv_sec) + std::chrono::nanoseconds(zeit.tv_nsec);
}

double neunundneunzigstes(std::vector<double> zeiten) {
    std::ranges::sort(zeiten);
    return zeiten[zeiten.size() * 99 / 100];
}

// The same in an editor that has not shown it yet.
void streubildErstmals(benchmark::State& stand) {
    Editor editor(groesse(stand));
    editor.gespielt();
    for (auto _ : stand) {
        stand.PauseTiming();
        editor.oeffnen();
        editor.streubildSchalten(false);
        stand.ResumeTiming();
        editor.streubildSchalten(true);
        stand.PauseTiming();
        editor.streubildSchalten(false);
        editor.schliessen();
        stand.ResumeTiming();
    }
}
BENCHMARK(streubildErstmals)
    ->Args({1024, 768})
    ->Args({1920, 1080})
    ->Args({3840, 2160})
    ->Unit(benchmark::kMillisecond);

// A line that is picked up follows the mouse, pixel by pixel; beside the mean the 99th of a hundred.
void linieHinterDerMaus(benchmark::State& stand, bool mitStreubild) {
    Editor editor(groesse(stand));
    editor.gespielt();
    editor.oeffnen();
    editor.streubildSchalten(mitStreubild);
    editor.linieAufnehmen();
    std::vector<double> zeiten;
    std::vector<double> prozessorzeiten;
    for (auto _ : stand) {
        const auto anfang = std::chrono::steady_clock::now();
        const auto vorher = prozessorzeit();
        editor.linieZiehen();
        prozessorzeiten.push_back((prozessorzeit() - vorher).count());
        zeiten.push_back(Millisekunden(std::chrono::steady_clock::now() - anfang).count());
    }
    stand.counters["ms99"] = neunundneunzigstes(zeiten);
    stand.counters["cpu99"] = neunundneunzigstes(prozessorzeiten);
}
BENCHMARK_CAPTURE(linieHinterDerMaus, , false)
    ->Args({1024, 768})
    ->Args({1920, 1080})
    ->Args({3840, 2160})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(linieHinterDerMaus, mitStreubild, true)
    ->Args({1024, 768})
    ->Args({1920, 1080})
    ->Args({3840, 2160})
    ->Unit(benchmark::kMillisecond);

// From the tables to the window, as after each change of lines and actions.
void symboleNeu(benchmark::State& stand) {
    Editor editor(groesse(stand));
    editor.oeffnen();
    for (auto _ : stand)
        editor.symboleNeu();
}
BENCHMARK(symboleNeu)
    ->Args({1024, 768})
    ->Args({1920, 1080})
    ->Args({3840, 2160})
    ->Unit(benchmark::kMillisecond);

// The picture and the symbols are laid for the new size.
void groesseAendern(benchmark::State& stand) {
    Editor editor(groesse(stand));
    editor.oeffnen();
    int um = 0;
    for (auto _ : stand)
        editor.ziehen(um = 1 - um);
}
BENCHMARK(groesseAendern)
    ->Args({1024, 768})
    ->Args({1920, 1080})
    ->Args({3840, 2160})
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int anzahl, char** worte) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType art, const QMessageLogContext&, const QString& text) {
        if (art == QtCriticalMsg || art == QtFatalMsg) // the platform plugin warns at each window
            std::fprintf(stderr, "%s\n", qPrintable(text));
    });
    const QApplication anwendung(anzahl, worte);
    benchmark::Initialize(&anzahl, worte);
    benchmark::RunSpecifiedBenchmarks();
}
