// SPDX-License-Identifier: GPL-3.0-or-later
// What the watch sees of the folder of the event nodes, of nodes and of udev. Nodes are pipes with a name
// here, which take what is asked of a node, and udev is a socket; those of the kernel are test_kernpad's.
#include "platform/linux/Padwache.h"
#include "tests/hilfen/Testdatenbank.h"

#include <array>
#include <cerrno>
#include <cstdarg>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <linux/input.h>
#include <linux/netlink.h>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace {

struct Knotenart {
    bool ereignisse = true; // it is an event node
    bool uhr = true;        // it takes another clock
    std::optional<int> gesetzteUhr;
    std::vector<unsigned> gewaehlte; // types of events
};
std::optional<Knotenart> knotenart; // nothing: as the kernel says
std::optional<int> udevGegenstelle; // nothing: udev's own

void gewaehlteMerken(const input_mask& maske) {
    const auto* arten = reinterpret_cast<const unsigned char*>(maske.codes_ptr);
    for (unsigned art = 0; art < maske.codes_size * 8; ++art)
        if ((arten[art / 8] >> art % 8 & 1) != 0)
            knotenart->gewaehlte.push_back(art);
}

} // namespace

// In the place of the library's.
extern "C" int ioctl(int nummer, unsigned long frage, ...) noexcept {
    std::va_list weitere;
    va_start(weitere, frage);
    void* wert = va_arg(weitere, void*);
    va_end(weitere);
    if (!knotenart)
        return static_cast<int>(syscall(SYS_ioctl, nummer, frage, wert));
    if (frage == EVIOCSMASK)
        gewaehlteMerken(*static_cast<const input_mask*>(wert));
    if (frage == EVIOCSCLOCKID)
        knotenart->gesetzteUhr = *static_cast<const int*>(wert);
    return knotenart->ereignisse && (frage != EVIOCSCLOCKID || knotenart->uhr) ? 0 : -1;
}
extern "C" int socket(int familie, int art, int protokoll) noexcept {
    std::array<int, 2> paar{};
    if (!udevGegenstelle || familie != AF_NETLINK)
        return static_cast<int>(syscall(SYS_socket, familie, art, protokoll));
    if (socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, paar.data()) != 0)
        return -1;
    udevGegenstelle = paar[0];
    return paar[1];
}
extern "C" int bind(int nummer, const sockaddr* adresse, socklen_t laenge) noexcept {
    if (!udevGegenstelle)
        return static_cast<int>(syscall(SYS_bind, nummer, adresse, laenge));
    return reinterpret_cast<const sockaddr_nl*>(adresse)->nl_groups == 2 ? 0 : -1;
}

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

class Ordnerwache : public testing::Test {
protected:
    // Whether the watch would wake whoever waits for it, and what it then tells.
    bool meldet() const {
        pollfd worauf{wache->melder(), POLLIN, 0};
        return poll(&worauf, 1, 0) == 1;
    }
    bool geraete() { return wache->nachsehen().geraete; }
    void knoten(const std::string& name) { std::ofstream(ordner / name) << ""; }
    void erwarteMeldung() {
        EXPECT_TRUE(meldet());
        EXPECT_TRUE(geraete());
        EXPECT_FALSE(meldet());
        EXPECT_FALSE(geraete());
    }

    Testordner oben;
    fs::path ordner = oben.pfad() / "input";
    std::unique_ptr<Padwache> wache;
};

TEST_F(Ordnerwache, SiehtKommenGehenUndRechte) {
    fs::create_directory(ordner);
    wache = std::make_unique<Padwache>(ordner);
    ASSERT_TRUE(wache->siehtKommen());
    EXPECT_FALSE(meldet());
    EXPECT_FALSE(geraete());
    knoten("event3");
    erwarteMeldung();
    fs::permissions(ordner / "event3", fs::perms::owner_read);
    erwarteMeldung();
    fs::remove(ordner / "event3");
    erwarteMeldung();
}

TEST_F(Ordnerwache, EinOrdnerDerErstKommtWirdGesehenUndWieSeinInhalt) {
    wache = std::make_unique<Padwache>(ordner);
    ASSERT_TRUE(wache->siehtKommen());
    fs::create_directory(oben.pfad() / "anderes");
    EXPECT_FALSE(geraete());
    fs::create_directory(ordner);
    erwarteMeldung();
    knoten("event0");
    erwarteMeldung();
}

TEST_F(Ordnerwache, EinOrdnerDerGehtUndWiederkommtWirdGesehen) {
    fs::create_directory(ordner);
    wache = std::make_unique<Padwache>(ordner);
    fs::remove(ordner);
    geraete();
    fs::create_directory(ordner);
    erwarteMeldung();
    knoten("event0");
    erwarteMeldung();
}

TEST_F(Ordnerwache, OhneOrtGibtEsNichtsZuSehen) {
    wache = std::make_unique<Padwache>(oben.pfad() / "nichts" / "input");
    EXPECT_FALSE(wache->siehtKommen());
    EXPECT_FALSE(meldet());
    EXPECT_FALSE(wache->nachsehen().neues());
}

TEST_F(Ordnerwache, WasKeinEreignisknotenIstWirdNichtBewacht) {
    fs::create_directory(ordner);
    knoten("event0");
    mkfifo((ordner / "event1").c_str(), 0600);
    wache = std::make_unique<Padwache>(ordner);
    EXPECT_FALSE(wache->knotenHinzu(0, nullptr));
    for (const auto* name : {"event0", "event1", "event2"})
        EXPECT_FALSE(wache->knotenHinzu(0, (ordner / name).c_str())) << name;
    EXPECT_FALSE(wache->sieht(0));
    EXPECT_FALSE(meldet());
}

TEST_F(Ordnerwache, WasHineinUndHinausGezogenWirdWirdGesehen) {
    fs::create_directory(ordner);
    wache = std::make_unique<Padwache>(ordner);
    std::ofstream(oben.pfad() / "event3") << "";
    EXPECT_FALSE(meldet());
    fs::rename(oben.pfad() / "event3", ordner / "event3");
    erwarteMeldung();
    fs::rename(ordner / "event3", oben.pfad() / "event3");
    erwarteMeldung();
}

TEST_F(Ordnerwache, EinOrdnerDerWegzogUndEinNeuerWirdGesehen) {
    fs::create_directory(ordner);
    wache = std::make_unique<Padwache>(ordner);
    fs::rename(ordner, oben.pfad() / "frueher");
    geraete();
    std::ofstream(oben.pfad() / "frueher" / "event0") << "";
    EXPECT_FALSE(geraete());
    fs::create_directory(ordner);
    erwarteMeldung();
    knoten("event0");
    erwarteMeldung();
}

// --- nodes ---

class Knotenwache : public testing::Test {
protected:
    Knotenwache() { knotenart.emplace(); }
    ~Knotenwache() override { knotenart.reset(); }

    // The pad's end of a node.
    class Pad {
    public:
        explicit Pad(fs::path knoten) : knoten_(std::move(knoten)) { mkfifo(knoten_.c_str(), 0600); }
        Pad(const Pad&) = delete;
        Pad& operator=(const Pad&) = delete;
        ~Pad() { abziehen(); }

        const char* knoten() const { return knoten_.c_str(); }
        void abziehen() {
            if (nummer_ >= 0)
                close(nummer_);
            nummer_ = -1;
        }
        // So many events of one time; it must be watched.
        void tun(Padwache::Uhr::time_point wann, std::size_t anzahl = 1) {
            const auto seit = std::chrono::duration_cast<std::chrono::microseconds>(wann.time_since_epoch());
            input_event ereignis{};
            ereignis.input_event_sec = seit / 1s;
            ereignis.input_event_usec = (seit % 1s).count();
            const std::vector<input_event> alle(anzahl, ereignis);
            const auto laenge = static_cast<ssize_t>(anzahl * sizeof ereignis);
            if (nummer_ < 0)
                nummer_ = open(knoten_.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK);
            ASSERT_EQ(write(nummer_, alle.data(), static_cast<std::size_t>(laenge)), laenge);
        }

    private:
        fs::path knoten_;
        int nummer_ = -1;
    };

    bool meldet() const {
        pollfd worauf{wache.melder(), POLLIN, 0};
        return poll(&worauf, 1, 0) == 1;
    }
    // In the precision of the events.
    static Padwache::Uhr::time_point vor(std::chrono::milliseconds dauer) {
        return std::chrono::floor<std::chrono::microseconds>(Padwache::Uhr::now()) - dauer;
    }

    Testordner oben;
    Padwache wache{oben.pfad() / "nichts" / "input"}; // of a folder it sees nothing
    Pad erstes{oben.pfad() / "event1"};
    Pad zweites{oben.pfad() / "event2"};
};

TEST_F(Knotenwache, WasEinPadTutWirdEinmalMitSeinerZeitGesehen) {
    ASSERT_TRUE(wache.knotenHinzu(7, erstes.knoten()));
    EXPECT_TRUE(wache.sieht(7));
    EXPECT_FALSE(meldet());
    const auto wann = vor(30ms);
    erstes.tun(wann);
    erstes.tun(wann + 10ms, 3);
    EXPECT_TRUE(meldet());
    const auto befund = wache.nachsehen();
    EXPECT_TRUE(befund.pads);
    EXPECT_FALSE(befund.geraete);
    EXPECT_EQ(befund.seit, wann);
    EXPECT_FALSE(meldet());
    EXPECT_FALSE(wache.nachsehen().neues());
}

TEST_F(Knotenwache, VonZweiPadsGiltDieFruehereZeitUndKeineDieNochKommt) {
    ASSERT_TRUE(wache.knotenHinzu(0, erstes.knoten()));
    ASSERT_TRUE(wache.knotenHinzu(1, zweites.knoten()));
    for (auto* frueheres : {&erstes, &zweites}) {
        const auto wann = vor(50ms);
        erstes.tun(frueheres == &erstes ? wann : wann + 20ms);
        zweites.tun(frueheres == &zweites ? wann : wann + 20ms);
        EXPECT_EQ(wache.nachsehen().seit, wann);
    }
    erstes.tun(vor(-5000ms));
    const auto befund = wache.nachsehen();
    EXPECT_TRUE(befund.pads);
    EXPECT_LE(befund.seit, Padwache::Uhr::now());
}

// As many as are read at a time: there is nothing more, and the node has not failed.
TEST_F(Knotenwache, NachEinemVollenZugWirdWeiterBewacht) {
    ASSERT_TRUE(wache.knotenHinzu(0, erstes.knoten()));
    erstes.tun(vor(0ms), 64);
    const auto befund = wache.nachsehen();
    EXPECT_TRUE(befund.pads);
    EXPECT_FALSE(befund.geraete);
    EXPECT_TRUE(wache.sieht(0));
    EXPECT_FALSE(meldet());
}

// A pipe takes some 2,700 events.
TEST_F(Knotenwache, EinPadDasNichtAufhoertHaeltNichtAuf) {
    constexpr std::size_t AUF_EINMAL = 1024;
    constexpr std::size_t MEHR = 170; // as many as a pipe takes at a time, at least
    ASSERT_TRUE(wache.knotenHinzu(0, erstes.knoten()));
    for (std::size_t gesendet = 0; gesendet < 2 * AUF_EINMAL; gesendet += MEHR)
        erstes.tun(vor(0ms), MEHR);
    EXPECT_TRUE(wache.nachsehen().pads);
    EXPECT_TRUE(meldet());
    EXPECT_TRUE(wache.nachsehen().pads);
    EXPECT_TRUE(wache.nachsehen().pads); // 2,210 are more than twice as many
    EXPECT_FALSE(meldet());
}

TEST_F(Knotenwache, EinPadDasGehtWirdGesehenUndNichtMehrBewacht) {
    ASSERT_TRUE(wache.knotenHinzu(0, erstes.knoten()));
    erstes.tun(vor(0ms));
    wache.nachsehen();
    erstes.abziehen();
    EXPECT_TRUE(meldet());
    const auto befund = wache.nachsehen();
    EXPECT_TRUE(befund.pads);
    EXPECT_TRUE(befund.geraete);
    EXPECT_FALSE(wache.sieht(0));
    EXPECT_FALSE(meldet());
}

TEST_F(Knotenwache, EinAndererKnotenErsetztDenErstenUndKeinerBeendetEs) {
    ASSERT_TRUE(wache.knotenHinzu(0, erstes.knoten()));
    erstes.tun(vor(0ms));
    ASSERT_TRUE(wache.knotenHinzu(0, zweites.knoten()));
    EXPECT_FALSE(meldet());
    zweites.tun(vor(0ms));
    EXPECT_TRUE(meldet());
    EXPECT_FALSE(wache.knotenHinzu(0, nullptr));
    EXPECT_FALSE(wache.sieht(0));
    EXPECT_FALSE(meldet());
}

TEST_F(Knotenwache, DieZeitenSindDerUhrDesProgrammsUndGewecktWirdNurVonTastenUndAchsen) {
    ASSERT_TRUE(wache.knotenHinzu(0, erstes.knoten()));
    EXPECT_EQ(knotenart->gesetzteUhr, CLOCK_MONOTONIC);
    EXPECT_THAT(knotenart->gewaehlte, testing::ElementsAre(EV_SYN, EV_KEY, EV_ABS));
}

TEST_F(Knotenwache, OhneSeineZeitenWirdKeinKnotenBewacht) {
    knotenart->uhr = false;
    EXPECT_FALSE(wache.knotenHinzu(0, erstes.knoten()));
    EXPECT_FALSE(wache.sieht(0));
}

// --- udev ---

class Udevwache : public testing::Test {
protected:
    Udevwache() {
        udevGegenstelle = -1;
        wache.emplace(oben.pfad() / "nichts" / "input");
    }
    ~Udevwache() override {
        close(*udevGegenstelle);
        udevGegenstelle.reset();
    }

    bool gesehen(const std::string& nachricht) {
        EXPECT_EQ(send(*udevGegenstelle, nachricht.data(), nachricht.size(), 0),
                  static_cast<ssize_t>(nachricht.size()));
        pollfd worauf{wache->melder(), POLLIN, 0};
        EXPECT_EQ(poll(&worauf, 1, 0), 1);
        const bool geraete = wache->nachsehen().geraete;
        EXPECT_EQ(poll(&worauf, 1, 0), 0);
        return geraete;
    }

    Testordner oben;
    std::optional<Padwache> wache;
};

TEST_F(Udevwache, WasUdevVonEingabegeraetenSagtWirdGesehen) {
    const std::string kopf("libudev\0", 8);
    EXPECT_TRUE(gesehen(kopf + "ACTION=add" + '\0' + "SUBSYSTEM=input" + '\0'));
    EXPECT_FALSE(gesehen(kopf + "ACTION=add" + '\0' + "SUBSYSTEM=block" + '\0'));
}

TEST_F(Udevwache, WasNichtGanzGelesenWirdKoennteEinesSein) {
    EXPECT_FALSE(gesehen(std::string(8192, 'x')));
    EXPECT_TRUE(gesehen(std::string(8193, 'x')));
}

} // namespace
