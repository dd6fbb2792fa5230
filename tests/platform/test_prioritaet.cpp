// SPDX-License-Identifier: GPL-3.0-or-later
// The priority: what is asked for and given back, and the guard that takes it away from who leaves no pause,
// measured in processes that do it.
#include "platform/linux/Dauerlast.h"
#include "platform/linux/LinuxProzess.h"
#include "platform/linux/Prioritaet.h"
#include "platform/linux/QtZeitgeber.h"
#include "tests/hilfen/Kindprozess.h"

#include <QCoreApplication>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <functional>
#include <optional>
#include <sched.h>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

std::string stand(bool gewaehrt) {
    std::ostringstream text;
    text << (gewaehrt ? "granted" : "refused") << " policy " << sched_getscheduler(0) << " nice "
         << getpriority(PRIO_PROCESS, 0);
    return text.str();
}

// Takes away what may grant real-time scheduling and, where the system lets us, allows the nice value
// `guete`.
void entrechten(int guete) {
    const rlimit keine{0, 0};
    const rlimit beste{static_cast<rlim_t>(20 - guete), static_cast<rlim_t>(20 - guete)};
    setrlimit(RLIMIT_NICE, &beste); // raising it takes a right of its own, which even root may lack
    if (setrlimit(RLIMIT_RTPRIO, &keine) != 0)
        _exit(2);
    if (getuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) // nobody
        _exit(2);
}

// What the limits of this process allow.
int besteErlaubte() {
    rlimit grenze{};
    getrlimit(RLIMIT_NICE, &grenze);
    return std::clamp(20 - static_cast<int>(std::min<rlim_t>(grenze.rlim_cur, 40)), -20, 0);
}

// Whether the system grants this process real-time scheduling, asked without the class under test.
bool echtzeitErlaubt() {
    return textAusKind([] {
               sched_param eins{};
               eins.sched_priority = 1;
               return std::string(sched_setscheduler(0, SCHED_RR, &eins) == 0 ? "ja" : "nein");
           }) == "ja";
}

TEST(LinuxPrioritaet, EchtzeitWoErlaubtSonstDieBesteErlaubteGuete) {
    const auto ergebnis =
        textAusKind([] { return stand(LinuxProzess().SetPriorityClass(REALTIME_PRIORITY_CLASS)); });
    if (echtzeitErlaubt())
        EXPECT_EQ(ergebnis, "granted policy " + std::to_string(SCHED_RR | SCHED_RESET_ON_FORK) + " nice 0");
    else
        EXPECT_THAT(ergebnis,
                    testing::StartsWith("refused policy " + std::to_string(SCHED_OTHER) + " nice "));
}

TEST(LinuxPrioritaet, OhneRechteWirdDieErlaubteGueteAusgeschoepft) {
    for (const int guete : {0, -7}) {
        const auto ergebnis = textAusKind([=] {
            entrechten(guete);
            LinuxProzess prozess;
            const auto danach = stand(prozess.SetPriorityClass(REALTIME_PRIORITY_CLASS));
            return danach + "; allowed " + std::to_string(besteErlaubte());
        });
        const auto erlaubt = ergebnis.substr(ergebnis.rfind(' ') + 1);
        EXPECT_EQ(ergebnis, "refused policy 0 nice " + erlaubt + "; allowed " + erlaubt);
    }
}

TEST(LinuxPrioritaet, AndereKlassenAendernNichts) {
    EXPECT_EQ(textAusKind([] { return stand(LinuxProzess().SetPriorityClass(32)); }),
              "refused policy 0 nice 0");
}

TEST(LinuxPrioritaet, KinderErbenDieEchtzeitNicht) {
    EXPECT_EQ(textAusKind([] {
                  LinuxProzess prozess;
                  prozess.SetPriorityClass(REALTIME_PRIORITY_CLASS);
                  return textAusKind([] { return std::to_string(sched_getscheduler(0)); });
              }),
              std::to_string(SCHED_OTHER));
}

TEST(LinuxPrioritaet, AmEndeIstSieZurueckgegeben) {
    EXPECT_EQ(textAusKind([] {
                  { LinuxProzess().SetPriorityClass(REALTIME_PRIORITY_CLASS); }
                  return std::to_string(sched_getscheduler(0) & ~SCHED_RESET_ON_FORK) + " " +
                         std::to_string(getpriority(PRIO_PROCESS, 0));
              }),
              "0 0");
}

/// Where the machine gives real-time priority it was granted and is given back, else it was refused.
void erwarteAbgegeben(const std::string& ergebnis) {
    if (echtzeitErlaubt())
        EXPECT_EQ(ergebnis,
                  "granted policy " + std::to_string(SCHED_OTHER | SCHED_RESET_ON_FORK) + " nice 0");
    else
        EXPECT_THAT(ergebnis, testing::StartsWith("refused policy " + std::to_string(SCHED_OTHER)));
}

// Such a hard limit comes from a parent that has been given real-time priority by a service. What comes
// before it is the signal, not death.
TEST(LinuxPrioritaet, UnterEinerGeerbtenHartenGrenzeBleibtDasLeben) {
    const auto ergebnis = textAusKind([] {
        const rlimit geerbt{200'000, 200'000};
        setrlimit(RLIMIT_RTTIME, &geerbt);
        LinuxProzess prozess;
        const bool gewaehrt = prozess.SetPriorityClass(REALTIME_PRIORITY_CLASS);
        entrechten(0);
        timespec verbraucht{};
        do
            clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &verbraucht);
        while (verbraucht.tv_sec < 1);
        return stand(gewaehrt);
    });
    erwarteAbgegeben(ergebnis);
}

TEST(LinuxPrioritaet, WerOhnePauseRechnetVerliertDieEchtzeitUndNichtDasLeben) {
    const auto ergebnis = textAusKind([] {
        LinuxProzess prozess;
        const bool gewaehrt = prozess.SetPriorityClass(REALTIME_PRIORITY_CLASS);
        entrechten(0); // root could do more than those whom this is for
        timespec verbraucht{};
        do
            clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &verbraucht);
        while (verbraucht.tv_sec < 4);
        return stand(gewaehrt);
    });
    erwarteAbgegeben(ergebnis);
}

// --- the guard ---

using Uhr = std::chrono::steady_clock;

bool inEchtzeit() {
    return (sched_getscheduler(0) & ~SCHED_RESET_ON_FORK) == SCHED_RR;
}

void rechnen(Uhr::duration dauer) {
    for (const auto ende = Uhr::now() + dauer; Uhr::now() < ende;) {
    }
}

/// Works most of a millisecond, and waits for what is left of it.
void rechnenUndWarten(Uhr::duration arbeit) {
    rechnen(arbeit);
    std::this_thread::sleep_for(1ms - arbeit);
}

class Waechter : public testing::Test {
protected:
    void SetUp() override {
        if (!echtzeitErlaubt())
            GTEST_SKIP() << "the machine has no real-time priority to give";
    }

    using Weiter = std::function<bool()>;
    /// For how long a process that does `tun` keeps its real-time priority; `tun` ends when it is told to.
    static std::chrono::milliseconds behalten(const std::function<void(const Weiter&)>& tun) {
        constexpr auto GEDULD = 3s;
        return std::chrono::milliseconds(std::stoi(
            "0" + textAusKind([&] {
                LinuxProzess prozess;
                prozess.SetPriorityClass(REALTIME_PRIORITY_CLASS);
                const auto beginn = Uhr::now();
                tun([&] { return inEchtzeit() && Uhr::now() - beginn < GEDULD; });
                const auto dauer = std::chrono::duration_cast<std::chrono::milliseconds>(Uhr::now() - beginn);
                return std::to_string(dauer.count());
            })));
    }
    /// Long enough for work that has an end, and short enough for one that has none.
    static void erwarteRechtzeitig(std::chrono::milliseconds dauer) {
        std::printf("taken back after %d ms\n", static_cast<int>(dauer.count()));
        EXPECT_GE(dauer, 100ms);
        EXPECT_LE(dauer, 200ms);
    }
};

TEST_F(Waechter, EineSchleifeOhneEndeVerliertDieEchtzeit) {
    erwarteRechtzeitig(behalten([](const Weiter& weiter) {
        while (weiter()) {
        }
    }));
}

TEST_F(Waechter, EinZeitgeberDerLaengerRechnetAlsErRuhtVerliertSie) {
    erwarteRechtzeitig(behalten([](const Weiter& weiter) {
        int anzahl = 1;
        char name[] = "x";
        char* worte[] = {name, nullptr};
        const QCoreApplication anwendung(anzahl, worte);
        QtZeitgeber geber;
        geber.SetTimer(1, 1ms, [&] {
            rechnen(1500us);
            if (!weiter())
                QCoreApplication::quit();
        });
        QCoreApplication::exec();
    }));
}

TEST_F(Waechter, WerImmerNurEinenAugenblickWartetVerliertSie) {
    erwarteRechtzeitig(behalten([](const Weiter& weiter) {
        while (weiter())
            rechnenUndWarten(900us);
    }));
}

TEST_F(Waechter, WerGenugUebriglaesstBehaeltSie) {
    EXPECT_GE(behalten([](const Weiter& weiter) {
                  while (weiter())
                      rechnenUndWarten(600us);
              }),
              3s);
}

TEST_F(Waechter, ArbeitDieEinEndeHatBehaeltSie) {
    EXPECT_GE(behalten([](const Weiter& weiter) {
                  while (weiter()) {
                      rechnen(95ms);
                      std::this_thread::sleep_for(60ms);
                  }
              }),
              3s);
}

TEST_F(Waechter, WerWiederBittetHatWiederSoVielZeit) {
    EXPECT_EQ(textAusKind([] {
                  LinuxProzess prozess;
                  std::string stand;
                  for (int i = 0; i < 2; ++i) {
                      prozess.SetPriorityClass(REALTIME_PRIORITY_CLASS);
                      rechnen(90ms);
                      stand += inEchtzeit() ? "on " : "off ";
                      rechnen(400ms);
                      stand += inEchtzeit() ? "on " : "off ";
                  }
                  return stand;
              }),
              "on off on off ");
}

TEST_F(Waechter, WerGleichWiederBittetHatAuchWiederSoVielZeit) {
    EXPECT_EQ(textAusKind([] {
                  LinuxProzess prozess;
                  prozess.SetPriorityClass(REALTIME_PRIORITY_CLASS);
                  for (const auto ende = Uhr::now() + 3s; inEchtzeit() && Uhr::now() < ende;) {
                  }
                  std::string stand = inEchtzeit() ? "on " : "off ";
                  prozess.SetPriorityClass(REALTIME_PRIORITY_CLASS);
                  rechnen(90ms);
                  return stand + (inEchtzeit() ? "on" : "off");
              }),
              "off on");
}

TEST_F(Waechter, ErSagtEsAufDerFehlerausgabe) {
    EXPECT_EQ(textAusKind([] {
                  int rohr[2];
                  if (pipe2(rohr, O_NONBLOCK) != 0 || dup2(rohr[1], STDERR_FILENO) < 0)
                      return std::string("no pipe");
                  echtzeitverlustMelden("fort\n");
                  LinuxProzess prozess;
                  prozess.SetPriorityClass(REALTIME_PRIORITY_CLASS);
                  rechnen(500ms);
                  std::string text(100, ' ');
                  const auto gelesen = read(rohr[0], text.data(), text.size());
                  return text.substr(0, gelesen > 0 ? static_cast<std::size_t>(gelesen) : 0);
              }),
              "fort\n");
}

// After which of so many parts, `abstand` apart, it is too much.
std::optional<int> zuvielNach(std::chrono::nanoseconds abstand) {
    Dauerlast last;
    for (int i = 1; i <= 20; ++i)
        if (last.abschnitt(i * abstand + 1h))
            return i;
    return std::nullopt;
}

TEST(Dauerlast, VierFuenftelSindZuViel) {
    EXPECT_EQ(zuvielNach(30ms), 5);
    EXPECT_EQ(zuvielNach(37'500us), 5);
    EXPECT_EQ(zuvielNach(37'501us), std::nullopt);
}

TEST(Dauerlast, EinePauseLaesstVonVornBeginnen) {
    Dauerlast last;
    std::vector<bool> antworten;
    auto jetzt = 1h + 0ms;
    for (const auto abstand : {30ms, 30ms, 30ms, 30ms, 100ms, 30ms, 30ms, 30ms, 30ms, 30ms})
        antworten.push_back(last.abschnitt(jetzt += abstand));
    EXPECT_THAT(antworten,
                testing::ElementsAre(false, false, false, false, false, false, false, false, true, true));
}

} // namespace
