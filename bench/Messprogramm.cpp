// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Messprogramm.h"

#include "app/Systemplattform.h"
#include "bench/Feldpad.h"

#include <QApplication>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdlib>
#include <stdexcept>
#include <unistd.h>

namespace {

/// Tells when something was sent, and leaves all else to another one.
class MerkendeEingabe final : public Eingabe {
public:
    MerkendeEingabe(Eingabe& innen, Messfeld& feld) : innen_(innen), feld_(feld) {}
    std::uint32_t SendInput(std::span<const INPUT> ereignisse) override {
        feld_.sendungMerken(); // before: the client may be faster than what would come after
        return innen_.SendInput(ereignisse);
    }
    std::uint32_t MapVirtualKeyA(std::uint32_t code, std::uint32_t art) override {
        return innen_.MapVirtualKeyA(code, art);
    }

private:
    Eingabe& innen_;
    Messfeld& feld_;
};

using Zaehler = std::atomic<std::int64_t>;
constexpr std::chrono::milliseconds TICK{5};

/// Counts the calls that come as often as the tick.
class ZaehlendesFormular final : public Formularzeitgeber {
public:
    ZaehlendesFormular(Zeitgeber& innen, TimerProzedur prozedur, Zaehler& takte)
        : innen_(innen.formularzeitgeber([this, &takte, prozedur = std::move(prozedur)] {
            takte += innen_->Interval() == TICK;
            prozedur();
        })) {}
    void Interval(std::chrono::milliseconds intervall) override { innen_->Interval(intervall); }
    void Enabled(bool an) override { innen_->Enabled(an); }
    std::chrono::milliseconds Interval() const override { return innen_->Interval(); }
    bool Enabled() const override { return innen_->Enabled(); }
    void ruhen() override { innen_->ruhen(); }
    std::uint64_t weiter(std::chrono::nanoseconds her) override { return innen_->weiter(her); }

private:
    std::unique_ptr<Formularzeitgeber> innen_;
};

/// Counts how often smoothing and tick run, and leaves all else to another one.
class ZaehlenderZeitgeber final : public Zeitgeber {
public:
    ZaehlenderZeitgeber(Zeitgeber& innen, Messfeld& feld) : innen_(innen), feld_(feld) {}

    void SetTimer(std::uint32_t id, std::chrono::milliseconds intervall, TimerProzedur prozedur) override {
        if (id == timerid::ENTWACKELN)
            prozedur = [&zaehler = feld_.glaettungen, prozedur = std::move(prozedur)] {
                ++zaehler;
                prozedur();
            };
        innen_.SetTimer(id, intervall, std::move(prozedur));
    }
    void KillTimer(std::uint32_t id) override { innen_.KillTimer(id); }
    std::unique_ptr<Formularzeitgeber> formularzeitgeber(TimerProzedur prozedur) override {
        return std::make_unique<ZaehlendesFormular>(innen_, std::move(prozedur), feld_.takte);
    }
    std::uint64_t augenblick() const override { return innen_.augenblick(); }
    bool kannRuhen() const override { return innen_.kannRuhen(); }
    void ruhen(std::uint32_t id) override { innen_.ruhen(id); }
    std::uint64_t weiter(std::uint32_t id, std::chrono::nanoseconds her) override {
        return innen_.weiter(id, her);
    }
    void vorDemSchlaf(std::function<void()> prozedur) override { innen_.vorDemSchlaf(std::move(prozedur)); }

private:
    Zeitgeber& innen_;
    Messfeld& feld_;
};

void klicken(char index) {
    for (auto* fenster : QApplication::topLevelWidgets())
        if (auto* knopf = fenster->findChild<QPushButton*>(QString("Command1(%1)").arg(QLatin1Char(index)));
            knopf && fenster->objectName() == "LaufFenster")
            knopf->click();
}

void antworten(int befehle, char zeichen) {
    if (write(befehle, &zeichen, 1) != 1)
        QCoreApplication::quit();
}

void gehorchen(int befehle) {
    char zeichen = 0;
    if (read(befehle, &zeichen, 1) != 1)
        return QCoreApplication::quit();
    klicken(zeichen);
    antworten(befehle, zeichen);
}

void rechteAblegen() {
    constexpr uid_t NIEMAND = 65534;
    if (setgid(NIEMAND) != 0 || setuid(NIEMAND) != 0)
        throw std::runtime_error("only root can become nobody");
}

} // namespace

int messprogrammLaufen(const Messumstand& umstand) {
    auto& feld = messfeld(umstand.feld);
    if (umstand.alsNiemand)
        rechteAblegen();
    std::filesystem::current_path(umstand.ordner);
    std::filesystem::create_directory("laufzeit");
    std::filesystem::permissions("laufzeit", std::filesystem::perms::owner_all);
    setenv("XDG_RUNTIME_DIR", (umstand.ordner / "laufzeit").c_str(), 1);
    int anzahl = 1;
    char name[] = "latenz";
    char* worte[] = {name, nullptr};
    const QApplication anwendung(anzahl, worte);
    Systemplattform system;
    auto plattform = system.plattform();
    const Feldpad pad(feld);
    MerkendeEingabe eingabe(plattform.eingabe, feld);
    ZaehlenderZeitgeber zeitgeber(plattform.zeitgeber, feld);
    Programm programm({plattform.joystick, eingabe, umstand.zaehlend ? zeitgeber : plattform.zeitgeber,
                       plattform.prozess, plattform.tastatur, plattform.ton, plattform.aufnahme,
                       plattform.laufmarke, plattform.eingabeweg, (umstand.ordner / "Gamepad.xml").string(),
                       plattform.sofortbild});
    programm.starten();
    programm.hauptform().findChild<QPushButton*>("Command1(5)")->click();

    QSocketNotifier melder(umstand.befehle, QSocketNotifier::Read);
    QObject::connect(&melder, &QSocketNotifier::activated, &melder, [&] { gehorchen(umstand.befehle); });
    QTimer::singleShot(500, [&] { antworten(umstand.befehle, befehl::BEREIT); });
    return QApplication::exec();
}
