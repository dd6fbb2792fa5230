// SPDX-License-Identifier: GPL-3.0-or-later
// Real-time priority by the desktop's service, played on a bus of our own: what it is asked, what it can
// answer, and what becomes of the priority of this very thread.
//
// The thread does without the right to a priority of its own; the service uses it, where the machine has it.
#include "platform/linux/Echtzeitdienst.h"
#include "platform/linux/LinuxProzess.h"
#include "tests/hilfen/Bus.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <linux/capability.h>
#include <memory>
#include <optional>
#include <sched.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

using testing::ElementsAre;

namespace {

constexpr int GEDULD_MS = 20000;
constexpr qlonglong RUHELOS_HOECHSTENS = 200'000;
constexpr int BESTE_GUETE = -15;
constexpr const char* NAME = "org.freedesktop.RealtimeKit1";
constexpr const char* OBJEKT = "/org/freedesktop/RealtimeKit1";

/// Takes the right to raise priorities or lets it rest; nothing where the thread has none.
void rechtSetzen(bool an) {
    __user_cap_header_struct kopf{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct rechte[2]{};
    if (syscall(SYS_capget, &kopf, rechte) != 0)
        return;
    const auto bit = 1U << CAP_SYS_NICE;
    rechte[0].effective = an ? rechte[0].effective | (rechte[0].permitted & bit) : rechte[0].effective & ~bit;
    syscall(SYS_capset, &kopf, rechte);
}

class MitRecht {
public:
    MitRecht() { rechtSetzen(true); }
    ~MitRecht() { rechtSetzen(false); }
    MitRecht(const MitRecht&) = delete;
    MitRecht& operator=(const MitRecht&) = delete;
};

void planen(int planung, int stufe, int guete) {
    const MitRecht recht;
    sched_param angaben{};
    angaben.sched_priority = stufe;
    sched_setscheduler(getpid(), planung, &angaben);
    setpriority(PRIO_PROCESS, 0, guete);
}

std::string stand() {
    return std::to_string(sched_getscheduler(0) & ~SCHED_RESET_ON_FORK) + " " +
           std::to_string(getpriority(PRIO_PROCESS, 0));
}

/// Whether the machine lets the service give what it is asked for.
bool gewaehrbar() {
    planen(SCHED_RR, 1, BESTE_GUETE);
    const bool geht = stand() == std::to_string(SCHED_RR) + " " + std::to_string(BESTE_GUETE);
    planen(SCHED_OTHER, 0, 0);
    return geht;
}

enum class Antwort { Gewaehrt, Absage, Keine };

/// The service as its documentation tells it.
class ProbeDienst final : public QDBusVirtualObject {
public:
    explicit ProbeDienst(QDBusConnection bus) : bus_(std::move(bus)) {
        EXPECT_TRUE(bus_.registerVirtualObject(OBJEKT, this));
        EXPECT_TRUE(bus_.registerService(NAME));
    }
    ~ProbeDienst() override {
        bus_.unregisterService(NAME);
        bus_.unregisterObject(OBJEKT);
    }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& ruf, const QDBusConnection&) override {
        const auto name = ruf.member();
        const auto worte = ruf.arguments();
        if (ruf.interface() == "org.freedesktop.DBus.Properties" && name == "Get" && ruf.signature() == "ss")
            return eigenschaft(ruf, worte[1].toString());
        if (ruf.interface() != NAME)
            return false;
        const auto faden = worte.value(0).toULongLong();
        const auto stufe = worte.value(1).toInt();
        gebeten.push_back(name.toStdString() + " " + (faden == static_cast<qulonglong>(getpid()) ? "" : "?") +
                          std::to_string(stufe));
        if (name == "MakeThreadRealtime" && ruf.signature() == "tu")
            return echtzeitGeben(ruf, stufe);
        if (name == "MakeThreadHighPriority" && ruf.signature() == "ti") {
            const MitRecht recht;
            setpriority(PRIO_PROCESS, 0, stufe);
            return bus_.send(ruf.createReply());
        }
        return false;
    }

    Antwort antwort = Antwort::Gewaehrt;
    std::vector<std::string> gebeten;
    int gelesen = 0; ///< properties

private:
    bool eigenschaft(const QDBusMessage& ruf, const QString& name) {
        ++gelesen;
        if (antwort == Antwort::Keine)
            return true;
        const auto wert = name == "RTTimeUSecMax"  ? QVariant(RUHELOS_HOECHSTENS)
                          : name == "MinNiceLevel" ? QVariant(BESTE_GUETE)
                                                   : QVariant();
        return bus_.send(ruf.createReply(QVariant::fromValue(QDBusVariant(wert))));
    }
    // It refuses whom the kernel would not kill.
    bool echtzeitGeben(const QDBusMessage& ruf, int stufe) {
        rlimit grenze{};
        getrlimit(RLIMIT_RTTIME, &grenze);
        if (antwort == Antwort::Absage || grenze.rlim_max > static_cast<rlim_t>(RUHELOS_HOECHSTENS))
            return bus_.send(ruf.createErrorReply(QDBusError::AccessDenied, "no"));
        const MitRecht recht;
        sched_param angaben{};
        angaben.sched_priority = stufe;
        sched_setscheduler(getpid(), SCHED_RR | SCHED_RESET_ON_FORK, &angaben);
        return bus_.send(ruf.createReply());
    }

    QDBusConnection bus_;
};

/// The bus that stands for the system's.
Bus& bus() {
    static Bus eines;
    return eines;
}

class Echtzeit : public testing::Test {
protected:
    ~Echtzeit() override { planen(SCHED_OTHER, 0, 0); }
    static bool warten(const std::function<bool()>& bis) { return QTest::qWaitFor(bis, GEDULD_MS); }
    /// What has been answered has arrived, and no more comes of it.
    static void ruhe() {
        for (int i = 0; i < 3; ++i) { // a call at most comes of an answer
            QDBusConnection::systemBus().call(QDBusMessage::createMethodCall(
                "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetId"));
            QCoreApplication::processEvents();
        }
    }
    bool bitten() { return prozess_.emplace().SetPriorityClass(REALTIME_PRIORITY_CLASS); }

    const bool gewaehrbar_ = gewaehrbar();
    std::optional<LinuxProzess> prozess_;
};

class EchtzeitMitDienst : public Echtzeit {
protected:
    ProbeDienst dienst_{bus().verbindung()};
    const std::string inEchtzeit_ = gewaehrbar_ ? std::to_string(SCHED_RR) + " 0" : "0 0";
};

TEST_F(EchtzeitMitDienst, WerSieNichtSelbstNehmenDarfBekommtSieVomDienst) {
    EXPECT_FALSE(bitten());
    EXPECT_EQ(stand(), "0 0") << "nobody waits for the service";
    ASSERT_TRUE(warten([&] { return !dienst_.gebeten.empty(); }));
    ruhe();
    EXPECT_THAT(dienst_.gebeten, ElementsAre("MakeThreadRealtime 1"));
    EXPECT_EQ(stand(), inEchtzeit_);
}

TEST_F(EchtzeitMitDienst, DasSignalKommtVorDerGrenzeAnDerDerKernToetet) {
    bitten();
    ASSERT_TRUE(warten([&] { return !dienst_.gebeten.empty(); }));
    rlimit grenze{};
    getrlimit(RLIMIT_RTTIME, &grenze);
    EXPECT_EQ(grenze.rlim_max, 200'000U);
    EXPECT_EQ(grenze.rlim_cur, 150'000U);
    ruhe();
    timespec beginn{};
    timespec jetzt{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &beginn);
    do
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &jetzt);
    while ((jetzt.tv_sec - beginn.tv_sec) * 1'000'000'000 + jetzt.tv_nsec - beginn.tv_nsec < 500'000'000);
    EXPECT_EQ(stand(), "0 0") << "alive, and back at the normal scheduler";
    bitten();
    ASSERT_TRUE(warten([&] { return dienst_.gebeten.size() == 2; }));
    ruhe();
    EXPECT_EQ(stand(), inEchtzeit_) << "who asks again takes it again";
}

TEST_F(EchtzeitMitDienst, AuchWerImmerNurEinenAugenblickWartetVerliertSieWieder) {
    bitten();
    ASSERT_TRUE(warten([&] { return !dienst_.gebeten.empty(); }));
    ruhe();
    EXPECT_EQ(stand(), inEchtzeit_);
    using Uhr = std::chrono::steady_clock;
    for (const auto beginn = Uhr::now(); Uhr::now() < beginn + std::chrono::milliseconds{400};) {
        for (const auto arbeit = Uhr::now(); Uhr::now() < arbeit + std::chrono::microseconds{900};) {
        }
        std::this_thread::sleep_for(std::chrono::microseconds{100});
    }
    EXPECT_EQ(stand(), "0 0");
}

TEST_F(EchtzeitMitDienst, WerSieHatBittetNichtNocheinmal) {
    bitten();
    ASSERT_TRUE(warten([&] { return !dienst_.gebeten.empty(); }));
    ruhe();
    if (!gewaehrbar_)
        GTEST_SKIP() << "the machine has no real-time priority to give";
    EXPECT_TRUE(prozess_->SetPriorityClass(REALTIME_PRIORITY_CLASS));
    ruhe();
    EXPECT_EQ(dienst_.gebeten.size(), 1U);
    EXPECT_EQ(stand(), inEchtzeit_);
}

TEST_F(EchtzeitMitDienst, WerNochAufAntwortWartetBittetNichtNocheinmal) {
    bitten();
    prozess_->SetPriorityClass(REALTIME_PRIORITY_CLASS);
    ASSERT_TRUE(warten([&] { return !dienst_.gebeten.empty(); }));
    ruhe();
    EXPECT_EQ(dienst_.gelesen, 1);
    EXPECT_EQ(dienst_.gebeten.size(), 1U);
}

TEST_F(EchtzeitMitDienst, NachEinerAbsageHilftDieGuete) {
    dienst_.antwort = Antwort::Absage;
    bitten();
    ASSERT_TRUE(warten([&] { return dienst_.gebeten.size() == 2; }));
    ruhe();
    EXPECT_THAT(dienst_.gebeten, ElementsAre("MakeThreadRealtime 1", "MakeThreadHighPriority -15"));
    EXPECT_EQ(stand(), gewaehrbar_ ? "0 -15" : "0 0");
}

TEST_F(EchtzeitMitDienst, EineGueteDieNichtBesserIstWirdNichtErbeten) {
    if (!gewaehrbar_)
        GTEST_SKIP() << "the machine has no better one to give";
    planen(SCHED_OTHER, 0, BESTE_GUETE);
    dienst_.antwort = Antwort::Absage;
    bitten();
    ASSERT_TRUE(warten([&] { return dienst_.gelesen == 2; }));
    ruhe();
    EXPECT_THAT(dienst_.gebeten, ElementsAre("MakeThreadRealtime 1"));
}

TEST_F(EchtzeitMitDienst, AmEndeIstSieZurueckgegeben) {
    bitten();
    ASSERT_TRUE(warten([&] { return !dienst_.gebeten.empty(); }));
    ruhe();
    prozess_.reset();
    EXPECT_EQ(stand(), "0 0");
}

TEST_F(EchtzeitMitDienst, NachDemEndeKommtNichtsMehr) {
    bitten();
    prozess_.reset();
    ASSERT_TRUE(warten([&] { return dienst_.gelesen == 1; })); // the question was on its way
    ruhe();
    EXPECT_THAT(dienst_.gebeten, ElementsAre());
    EXPECT_EQ(stand(), "0 0");
}

TEST_F(EchtzeitMitDienst, AntwortetErNichtSoGehtEsOhneWartenWeiter) {
    dienst_.antwort = Antwort::Keine;
    QElapsedTimer uhr;
    uhr.start();
    EXPECT_FALSE(bitten());
    EXPECT_LT(uhr.elapsed(), 5000) << "a bus waits 25 s for an answer";
    ASSERT_TRUE(warten([&] { return dienst_.gelesen == 1; }));
    ruhe();
    EXPECT_THAT(dienst_.gebeten, ElementsAre());
    prozess_.reset();
}

TEST_F(Echtzeit, OhneDienstBleibtAllesWieEsIst) {
    EXPECT_FALSE(bitten());
    ruhe();
    EXPECT_EQ(stand(), "0 0");
}

TEST_F(Echtzeit, OhneBusAuch) {
    Echtzeitdienst dienst(QDBusConnection("none"));
    dienst.bitten();
    ruhe();
    EXPECT_EQ(stand(), "0 0");
}

} // namespace

int main(int anzahl, char** worte) {
    testing::InitGoogleMock(&anzahl, worte);
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:");
    const QCoreApplication anwendung(anzahl, worte);
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", bus().adresse().toUtf8());
    rechtSetzen(false);
    return RUN_ALL_TESTS();
}
