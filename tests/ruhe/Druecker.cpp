// SPDX-License-Identifier: GPL-3.0-or-later
// ruhe_druecker PID [STILLE]: plays a pad before a program that runs the Schema of tests/wayland/schema.sql
// and sends by uinput, looks how often the program wakes up and how soon a press comes out, by the kernel's
// own times. STILLE is how many seconds a long silence lasts. Exits 1 where a limit is missed or an event is
// wrong; limits are told with what is measured. With --nur-messen as the last word nothing but events counts.
//
//   rest            wake-ups a second with nothing happening, without and with a held button
//   presses         from pad to key, soon after the last one and after long silences
//   a flood         8,000 events a second of an axis that no field hangs on: wake-ups, presses in it
//   a stop          the process stands still for two seconds, in which the button is let go
//   the pad goes    while all sleeps, and comes back
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <libevdev/libevdev-uinput.h>
#include <libevdev/libevdev.h>
#include <linux/input.h>
#include <memory>
#include <poll.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/ioctl.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using Millisekunden = std::chrono::duration<double, std::milli>;

int verfehlt = 0;
bool nurMessen = false;

void grenze(const std::string& was, double wert, double hoechstens) {
    const bool gut = wert <= hoechstens || nurMessen;
    std::printf("%s%s: %.2f, limit %.2f\n", gut ? "" : "FAILED: ", was.c_str(), wert, hoechstens);
    std::fflush(stdout);
    verfehlt += gut ? 0 : 1;
}

// --- the pad ---

class Pad {
public:
    Pad() {
        const std::unique_ptr<libevdev, decltype(&libevdev_free)> was(libevdev_new(), &libevdev_free);
        libevdev_set_name(was.get(), "Microsoft X-Box 360 pad");
        libevdev_set_id_bustype(was.get(), BUS_USB);
        libevdev_set_id_vendor(was.get(), 0x045e);
        libevdev_set_id_product(was.get(), 0x028e);
        libevdev_set_id_version(was.get(), 0x0110);
        for (const unsigned knopf : {BTN_A, BTN_B, BTN_X, BTN_Y, BTN_TL, BTN_TR, BTN_SELECT, BTN_START,
                                     BTN_MODE, BTN_THUMBL, BTN_THUMBR})
            libevdev_enable_event_code(was.get(), EV_KEY, knopf, nullptr);
        for (const unsigned achse : {ABS_X, ABS_Y, ABS_RX, ABS_RY, ABS_Z, ABS_RZ, ABS_HAT0X, ABS_HAT0Y}) {
            const bool hut = achse == ABS_HAT0X || achse == ABS_HAT0Y;
            const bool abzug = achse == ABS_Z || achse == ABS_RZ;
            input_absinfo spanne{};
            spanne.minimum = hut ? -1 : abzug ? 0 : -32768;
            spanne.maximum = hut ? 1 : abzug ? 255 : 32767;
            libevdev_enable_event_code(was.get(), EV_ABS, achse, &spanne);
        }
        if (libevdev_uinput_create_from_device(was.get(), LIBEVDEV_UINPUT_OPEN_MANAGED, &geraet_) != 0)
            throw std::runtime_error("/dev/uinput");
    }
    Pad(const Pad&) = delete;
    Pad& operator=(const Pad&) = delete;
    ~Pad() { libevdev_uinput_destroy(geraet_); }

    void senden(unsigned art, unsigned code, int wert) const {
        libevdev_uinput_write_event(geraet_, art, code, wert);
        libevdev_uinput_write_event(geraet_, EV_SYN, SYN_REPORT, 0);
    }
    std::string knoten() const { return libevdev_uinput_get_devnode(geraet_); }

private:
    libevdev_uinput* geraet_ = nullptr;
};

// --- what comes of it ---

using Zeit = std::chrono::microseconds; // of the monotonic clock

class Knoten {
public:
    explicit Knoten(const std::string& pfad) : nummer_(open(pfad.c_str(), O_RDONLY | O_NONBLOCK)) {
        int uhr = CLOCK_MONOTONIC;
        if (nummer_ < 0 || ioctl(nummer_, EVIOCSCLOCKID, &uhr) != 0)
            throw std::runtime_error(pfad);
    }
    Knoten(const Knoten&) = delete;
    Knoten& operator=(const Knoten&) = delete;
    ~Knoten() { close(nummer_); }

    // The next event of a key, and when it was; nothing comes in time: code 0.
    struct Taste {
        unsigned code = 0;
        int wert = 0;
        Zeit zeit{0};
    };
    Taste taste(std::chrono::milliseconds geduld) const {
        const auto bis = std::chrono::steady_clock::now() + geduld;
        for (;;) {
            input_event ereignis{};
            if (read(nummer_, &ereignis, sizeof ereignis) == sizeof ereignis) {
                if (ereignis.type == EV_KEY && ereignis.value != 2) // the kernel's own repeat
                    return {ereignis.code, ereignis.value,
                            std::chrono::seconds(ereignis.input_event_sec) + Zeit(ereignis.input_event_usec)};
                continue;
            }
            const auto rest =
                std::chrono::duration_cast<std::chrono::milliseconds>(bis - std::chrono::steady_clock::now());
            pollfd worauf{nummer_, POLLIN, 0};
            if (rest <= 0ms || poll(&worauf, 1, static_cast<int>(rest.count())) == 0)
                return {};
        }
    }

private:
    int nummer_;
};

// The keyboard that the program has made.
std::string programmtastatur() {
    for (int mal = 0; mal < 600; ++mal) {
        for (const auto& eintrag : fs::directory_iterator("/sys/class/input")) {
            std::ifstream datei(eintrag.path() / "device/name");
            std::string name;
            std::getline(datei, name);
            if (eintrag.path().filename().string().starts_with("event") &&
                name == "gamepad-konfic Tastatur und Maus")
                return "/dev/input/" + eintrag.path().filename().string();
        }
        std::this_thread::sleep_for(100ms);
    }
    throw std::runtime_error("the program has made no keyboard");
}

// --- the program ---

class Programm {
public:
    explicit Programm(int pid) : pid_(pid) {}

    double aufwachenJeSekunde(std::chrono::seconds dauer) const {
        const auto vorher = wechsel();
        std::this_thread::sleep_for(dauer);
        return static_cast<double>(wechsel() - vorher) / static_cast<double>(dauer.count());
    }
    double prozessor(std::chrono::seconds dauer) const { // in per cent of a core
        const auto vorher = takte();
        std::this_thread::sleep_for(dauer);
        return 100.0 * static_cast<double>(takte() - vorher) / static_cast<double>(sysconf(_SC_CLK_TCK)) /
               static_cast<double>(dauer.count());
    }
    void signal(int was) const { kill(pid_, was); }

private:
    long wechsel() const {
        long summe = 0;
        for (const auto& faden : fs::directory_iterator("/proc/" + std::to_string(pid_) + "/task")) {
            std::ifstream datei(faden.path() / "status");
            for (std::string wort; datei >> wort;)
                if (long zahl = 0; wort == "voluntary_ctxt_switches:" && datei >> zahl)
                    summe += zahl;
        }
        return summe;
    }
    long takte() const {
        std::ifstream datei("/proc/" + std::to_string(pid_) + "/stat");
        std::string text;
        std::getline(datei, text);
        std::istringstream felder(text.substr(text.rfind(')') + 1));
        std::string wort;
        long benutzt = 0;
        long kern = 0;
        for (int i = 0; i < 11; ++i)
            felder >> wort;
        felder >> benutzt >> kern;
        return benutzt + kern;
    }

    int pid_;
};

class Probe {
public:
    Probe(int pid, std::chrono::seconds stille)
        : programm_(pid), stille_(stille), tastatur_(programmtastatur()) {}

    void alles() {
        pad_ = std::make_unique<Pad>();
        padknoten_ = std::make_unique<Knoten>(pad_->knoten());
        std::this_thread::sleep_for(5s); // found, and the search for it is over
        ruhe();
        druecke("presses soon after each other", 200, [](int i) { return 30ms + i * 7919 % 40 * 1ms; });
        druecke("presses after a silence", 3, [&](int) { return stille_; });
        flut();
        stillstand();
        gehen();
    }

private:
    void ruhe() {
        grenze("wake-ups a second at rest", programm_.aufwachenJeSekunde(20s), 10);
        pad_->senden(EV_KEY, BTN_A, 1);
        erwarte(KEY_Y, 1); // the key that a German layout has Z on
        std::this_thread::sleep_for(1s);
        grenze("wake-ups a second with a button held", programm_.aufwachenJeSekunde(10s), 10);
        pad_->senden(EV_KEY, BTN_A, 0);
        erwarte(KEY_Y, 0);
    }

    // Milliseconds from the pad's event to the key's, by the kernel.
    double druck(int wert) {
        while (padknoten_->taste(0ms).code != 0) {
        }
        pad_->senden(EV_KEY, BTN_A, wert);
        const auto gedrueckt = padknoten_->taste(1s);
        const auto gekommen = erwarte(KEY_Y, wert);
        return Millisekunden(gekommen.zeit - gedrueckt.zeit).count();
    }
    template <class Pause> void druecke(const std::string& was, int anzahl, const Pause& pause) {
        std::vector<double> zeiten;
        for (int i = 0; i < 2 * anzahl; ++i) {
            std::this_thread::sleep_for(pause(i));
            zeiten.push_back(druck(1 - i % 2));
        }
        std::ranges::sort(zeiten);
        const auto mitte = zeiten[zeiten.size() / 2];
        std::printf("%s, %zu: median %.2f ms, 90 %% %.2f ms, most %.2f ms\n", was.c_str(), zeiten.size(),
                    mitte, zeiten[zeiten.size() * 9 / 10], zeiten.back());
        grenze("  the median", mitte, 6);
    }

    Knoten::Taste erwarte(unsigned code, int wert) {
        const auto taste = tastatur_.taste(10s);
        if (taste.code != code || taste.wert != wert) {
            std::printf("FAILED: key %u %d was expected, %u %d came\n", code, wert, taste.code, taste.wert);
            ++verfehlt;
        }
        return taste;
    }
    void erwarteNichts() {
        if (const auto taste = tastatur_.taste(500ms); taste.code != 0) {
            std::printf("FAILED: nothing was expected, key %u %d came\n", taste.code, taste.wert);
            ++verfehlt;
        }
    }

    // Eight events each millisecond, as one that never stops.
    void flut() {
        bool weiter = true;
        std::uint64_t gesendete = 0;
        std::thread flut([&] {
            for (auto wann = std::chrono::steady_clock::now(); weiter; wann += 1ms) {
                for (int i = 0; i < 8; ++i)
                    pad_->senden(EV_ABS, ABS_RZ, static_cast<int>(++gesendete % 100));
                std::this_thread::sleep_until(wann + 1ms);
            }
        });
        std::this_thread::sleep_for(1s);
        const auto vorher = gesendete;
        grenze("wake-ups a second in a flood", programm_.aufwachenJeSekunde(5s), 1700);
        std::printf("  of %.0f events a second; processor %.1f %%\n",
                    static_cast<double>(gesendete - vorher) / 5, programm_.prozessor(3s));
        for (int i = 0; i < 20; ++i) {
            std::this_thread::sleep_for(50ms);
            pad_->senden(EV_KEY, BTN_A, 1 - i % 2);
            erwarte(KEY_Y, 1 - i % 2);
        }
        weiter = false;
        flut.join();
        pad_->senden(EV_ABS, ABS_RZ, 0);
        std::this_thread::sleep_for(3s);
        grenze("wake-ups a second after it", programm_.aufwachenJeSekunde(5s), 10);
    }

    void stillstand() {
        pad_->senden(EV_KEY, BTN_A, 1);
        erwarte(KEY_Y, 1);
        std::this_thread::sleep_for(500ms);
        programm_.signal(SIGSTOP);
        pad_->senden(EV_KEY, BTN_A, 0);
        std::this_thread::sleep_for(2s);
        programm_.signal(SIGCONT);
        erwarte(KEY_Y, 0);
        erwarteNichts();
    }

    void gehen() {
        padknoten_.reset();
        pad_.reset();
        std::this_thread::sleep_for(5s);
        grenze("wake-ups a second without a pad", programm_.aufwachenJeSekunde(10s), 10);
        erwarteNichts();
        pad_ = std::make_unique<Pad>();
        std::this_thread::sleep_for(1s);
        for (const int wert : {1, 0}) {
            pad_->senden(EV_KEY, BTN_A, wert);
            erwarte(KEY_Y, wert);
        }
        std::this_thread::sleep_for(4s);
        grenze("wake-ups a second with it again", programm_.aufwachenJeSekunde(10s), 10);
    }

    Programm programm_;
    std::chrono::seconds stille_;
    Knoten tastatur_;
    std::unique_ptr<Pad> pad_;
    std::unique_ptr<Knoten> padknoten_;
};

} // namespace

int main(int anzahl, char** worte) {
    try {
        nurMessen = std::string(worte[anzahl - 1]) == "--nur-messen";
        Probe(std::atoi(worte[1]), std::chrono::seconds(anzahl > 2 ? std::atoi(worte[2]) : 30)).alles();
    } catch (const std::exception& fehler) {
        std::fprintf(stderr, "ruhe_druecker: %s\n", fehler.what());
        return 2;
    }
    return verfehlt > 0 ? 1 : 0;
}
