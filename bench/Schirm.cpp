// SPDX-License-Identifier: GPL-3.0-or-later
// What a picture of the screen costs the event loop, on an X server of our own with a large screen: what
// counts is how long a running `Schema` would stand still. Reading and writing are beside the loop.
#include "editors/pictures/Bildvorschau.h"
#include "editors/pictures/ScreenChecken.h"
#include "editors/stick/Ebenenbild.h"
#include "platform/linux/Qtaufnahme.h"
#include "platform/probe/ProbeJoystick.h"
#include "platform/probe/ProbeTon.h"
#include "platform/probe/ProbeUhr.h"
#include "tests/hilfen/Testdatenbank.h"
#include "tests/hilfen/XServer.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPushButton>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>

namespace {

constexpr QSize SCHIRM{3840, 2160};
constexpr std::uint32_t LSTICK = 1U << 10;
constexpr auto ABFRAGE = std::chrono::milliseconds{100};

QImage rauschen() {
    QImage bild(SCHIRM, QImage::Format_RGB32);
    QRandomGenerator::global()->fillRange(reinterpret_cast<quint32*>(bild.bits()), bild.sizeInBytes() / 4);
    return bild;
}

template <class Arbeit> std::chrono::duration<double> dauer(Arbeit arbeit) {
    const auto anfang = std::chrono::steady_clock::now();
    arbeit();
    return std::chrono::steady_clock::now() - anfang;
}

class Form {
public:
    Form() { std::filesystem::create_directory(ordner_.pfad() / "Bilder"); }
    ~Form() { QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    std::string bilder() const { return (ordner_.pfad() / "Bilder/").string(); }
    void oeffnen() {
        form_ = std::make_unique<ScreenChecken>(bilder(), "S", Schirmgeraete{pad_, uhr_, ton_, aufnahme_});
        form_->show();
        form_->findChild<QPushButton*>("Command1(0)")->click();
        QApplication::processEvents();
    }
    /// All that the loop has to do for a picture but to hear that it is written.
    void abfrage() {
        pad_.zustand.dwButtons = LSTICK;
        uhr_.vorUm(ABFRAGE);
        QApplication::processEvents();
    }
    /// Until all previews have their pictures; the longest time that the loop was not to be had.
    std::chrono::duration<double> bilderAbwarten() {
        std::chrono::duration<double> laengster{};
        const auto vorschauen = form_->findChildren<Bildvorschau*>(QRegularExpression("Image1.[0-5]."));
        const auto fehlt = [](const auto* vorschau) { return vorschau->bild().isNull(); };
        while (std::ranges::any_of(vorschauen, fehlt))
            laengster = std::max(laengster, dauer([] { QApplication::processEvents(); }));
        return std::max(laengster, dauer([] { QApplication::processEvents(); })); // paints the last one
    }
    void abwarten() {
        const auto vorher = ton_.toene.size();
        while (ton_.toene.size() == vorher)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

private:
    Testordner ordner_;
    ProbeJoystick pad_;
    ProbeUhr uhr_;
    ProbeTon ton_;
    Qtaufnahme aufnahme_;
    std::unique_ptr<ScreenChecken> form_;
};

void aufnehmen(benchmark::State& stand) {
    Qtaufnahme aufnahme;
    for (auto _ : stand)
        aufnahme.aufnehmen([](const Schirmbild& bild) { benchmark::DoNotOptimize(bild.breite); });
}
BENCHMARK(aufnehmen)->Unit(benchmark::kMillisecond);

void vorschauZeigen(benchmark::State& stand) {
    const auto bild = rauschen();
    Bildvorschau vorschau(nullptr);
    vorschau.resize(320, 180);
    for (auto _ : stand) {
        vorschau.bildSetzen(bild);
        benchmark::DoNotOptimize(vorschau.grab());
    }
}
BENCHMARK(vorschauZeigen)->Unit(benchmark::kMillisecond);

void abfrageMitBild(benchmark::State& stand) {
    Form form;
    form.oeffnen();
    for (auto _ : stand) {
        form.abfrage();
        stand.PauseTiming();
        form.abwarten();
        stand.ResumeTiming();
    }
}
BENCHMARK(abfrageMitBild)->Unit(benchmark::kMillisecond)->UseRealTime();

// On the thread that writes.
void speichern(benchmark::State& stand) {
    const auto bild = rauschen();
    const Form form;
    for (auto _ : stand)
        BildSpeichern(form.bilder(), "S0L.BMP", bild);
}
BENCHMARK(speichern)->Unit(benchmark::kMillisecond)->UseRealTime();

// The longest halt of the loop, not the time until all is to be seen.
void oeffnenMitSechsBildern(benchmark::State& stand) {
    const auto bild = rauschen();
    Form form;
    for (const char* name : {"S0L.BMP", "S0R.BMP", "S1L.BMP", "S1R.BMP", "S2L.BMP", "S2R.BMP"})
        BildSpeichern(form.bilder(), name, bild);
    for (auto _ : stand) {
        const auto oeffnen = dauer([&] { form.oeffnen(); });
        stand.SetIterationTime(std::max(oeffnen, form.bilderAbwarten()).count());
    }
}
BENCHMARK(oeffnenMitSechsBildern)->Unit(benchmark::kMillisecond)->UseManualTime();

} // namespace

int main(int anzahl, char** worte) {
    const XServer server("3840x2160x24");
    qputenv("DISPLAY", server.anzeige().c_str());
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QApplication anwendung(anzahl, worte);
    benchmark::Initialize(&anzahl, worte);
    benchmark::RunSpecifiedBenchmarks();
}
