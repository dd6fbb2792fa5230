// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/QtZeitgeber.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>
#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <sys/timerfd.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace {

using Zeitpunkt = std::chrono::steady_clock::time_point;

// A timer may come this much early and stay on the grid: a procedure that sets its timer anew runs a little
// behind the deadline it came from.
constexpr std::chrono::microseconds NACHSICHT{300};

// To be woken through the event loop costs more than what is done then. Where nobody is at the windows, up to
// so many beats are waited for without it, if they come so soon.
constexpr int MITSCHLAEGE = 9;
constexpr std::chrono::milliseconds KURZ{1};

// The first whole millisecond that is no more than NACHSICHT before the deadline.
Zeitpunkt aufDasRaster(Zeitpunkt frist) {
    return std::chrono::ceil<std::chrono::milliseconds>(frist - NACHSICHT);
}

// The whole milliseconds of the clock at an instant.
std::chrono::milliseconds aufGanze(Zeitpunkt wann) {
    return std::chrono::floor<std::chrono::milliseconds>(wann).time_since_epoch();
}

timespec zeitangabe(std::chrono::nanoseconds dauer) {
    const auto sekunden = std::chrono::duration_cast<std::chrono::seconds>(dauer);
    timespec angabe{};
    angabe.tv_sec = sekunden.count();
    angabe.tv_nsec = (dauer - sekunden).count();
    return angabe;
}

} // namespace

class QtZeitgeber::Formular final : public Formularzeitgeber {
public:
    Formular(QtZeitgeber& geber, TimerProzedur prozedur)
        : geber_(geber), eintrag_(std::make_shared<Eintrag>()) {
        eintrag_->prozedur = std::move(prozedur);
    }
    ~Formular() override { geber_.streichen(eintrag_); }

    void Interval(std::chrono::milliseconds intervall) override {
        intervall_ = intervall;
        neuBeginnen();
    }
    void Enabled(bool an) override {
        if (an == an_)
            return;
        an_ = an;
        neuBeginnen();
    }
    std::chrono::milliseconds Interval() const override { return intervall_; }
    bool Enabled() const override { return an_; }
    void ruhen() override { geber_.eintragRuhen(eintrag_); }
    std::uint64_t weiter(std::chrono::nanoseconds her) override {
        return geber_.eintragWeiter(eintrag_, her);
    }

private:
    void neuBeginnen() {
        geber_.streichen(eintrag_);
        if (an_ && intervall_ > std::chrono::milliseconds{0})
            geber_.einplanen(eintrag_, intervall_);
    }

    QtZeitgeber& geber_;
    Zeiger eintrag_;
    std::chrono::milliseconds intervall_{0};
    bool an_ = false;
};

QtZeitgeber::QtZeitgeber() : uhr_(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC)) {
    if (uhr_ < 0)
        throw std::system_error(errno, std::generic_category(), "timerfd");
    melder_ = std::make_unique<QSocketNotifier>(uhr_, QSocketNotifier::Read);
    QObject::connect(melder_.get(), &QSocketNotifier::activated, melder_.get(), [this] { laufen(); });
}

QtZeitgeber::~QtZeitgeber() {
    vorDemSchlaf({});
    melder_.reset();
    close(uhr_);
}

void QtZeitgeber::SetTimer(std::uint32_t id, std::chrono::milliseconds intervall, TimerProzedur prozedur) {
    KillTimer(id);
    const auto eintrag = std::make_shared<Eintrag>();
    eintrag->prozedur = std::move(prozedur);
    fenster_[id] = eintrag;
    einplanen(eintrag, intervall < std::chrono::milliseconds{1} ? SETTIMER_MINDESTENS : intervall);
}

void QtZeitgeber::KillTimer(std::uint32_t id) {
    if (const auto knoten = fenster_.extract(id))
        streichen(knoten.mapped());
}

std::unique_ptr<Formularzeitgeber> QtZeitgeber::formularzeitgeber(TimerProzedur prozedur) {
    return std::make_unique<Formular>(*this, std::move(prozedur));
}

void QtZeitgeber::einplanen(const Zeiger& eintrag, std::chrono::milliseconds intervall) {
    eintrag->intervall = intervall;
    eintrag->faellig = aufDasRaster(Uhr::now() + eintrag->intervall);
    gesetztAb_ = aufGanze(eintrag->faellig) - intervall;
    plan_.push_back(eintrag);
    stellen();
}

void QtZeitgeber::streichen(const Zeiger& eintrag) {
    eintrag->ruht = false;
    if (std::erase(plan_, eintrag) > 0)
        stellen();
}

// --- rest ---

void QtZeitgeber::ruhen(std::uint32_t id) {
    if (const auto eintrag = fenster_.find(id); eintrag != fenster_.end())
        eintragRuhen(eintrag->second);
}

std::uint64_t QtZeitgeber::weiter(std::uint32_t id, std::chrono::nanoseconds her) {
    const auto eintrag = fenster_.find(id);
    return eintrag != fenster_.end() ? eintragWeiter(eintrag->second, her) : 0;
}

void QtZeitgeber::eintragRuhen(const Zeiger& eintrag) {
    if (std::ranges::find(plan_, eintrag) == plan_.end())
        return;
    eintrag->ruht = true;
    stellen();
}

std::uint64_t QtZeitgeber::eintragWeiter(const Zeiger& eintrag, std::chrono::nanoseconds her) {
    if (!std::exchange(eintrag->ruht, false))
        return 0;
    const auto grenze = Uhr::now() - her;
    std::uint64_t ausgelassene = 0;
    if (eintrag->faellig < grenze) {
        const auto perioden = (grenze - eintrag->faellig - Uhr::duration{1}) / eintrag->intervall + 1;
        eintrag->faellig += perioden * eintrag->intervall;
        ausgelassene = static_cast<std::uint64_t>(perioden);
    }
    stellen();
    return ausgelassene;
}

void QtZeitgeber::vorDemSchlaf(TimerProzedur prozedur) {
    QObject::disconnect(schlafmeldung_);
    vorDemSchlaf_ = std::move(prozedur);
    if (vorDemSchlaf_)
        schlafmeldung_ = QObject::connect(QAbstractEventDispatcher::instance(),
                                          &QAbstractEventDispatcher::aboutToBlock, melder_.get(), [this] {
                                              const auto vorher = vorDemSchlaf_; // it may end itself
                                              vorher();
                                          });
}

// --- the beat ---

void QtZeitgeber::laufen() {
    // Who was told of a beat may find that the clock was set anew since.
    pollfd geschlagen{uhr_, POLLIN, 0};
    if (poll(&geschlagen, 1, 0) <= 0)
        return;
    durchgang();
    for (int i = 0; i < MITSCHLAEGE && naechsterKommtGleich(); ++i)
        durchgang();
}

// False where others are to get their turn first: always behind a beat that was late, and where somebody
// wants to be asked before time goes by.
bool QtZeitgeber::naechsterKommtGleich() const {
    const auto rest = schlag_ - Uhr::now();
    return ungestoert_ && !vorDemSchlaf_ && durchgaenge_ == 0 && rest > Uhr::duration{0} && rest <= KURZ;
}

void QtZeitgeber::durchgang() {
    schlaegeZaehlen();
    ++durchgaenge_;
    ++augenblick_;
    const auto* naechster = faelligeLaufenLassen();
    ++augenblick_; // for what goes on around this pass: it may have waited long
    --durchgaenge_;
    if (durchgaenge_ == 0)
        stellenAuf(naechster);
    else
        stellen();
}

// Waits for the next beat, if there was none since the last time.
void QtZeitgeber::schlaegeZaehlen() {
    std::uint64_t schlaege = 0;
    if (read(uhr_, &schlaege, sizeof schlaege) == sizeof schlaege)
        schlag_ += static_cast<std::int64_t>(schlaege) * schritt_;
}

// Runs what is due, each timer once at most, so that other events get their turn even when procedures take
// longer than their periods. Gives the one that is due next, if any.
const QtZeitgeber::Eintrag* QtZeitgeber::faelligeLaufenLassen() {
    const auto jetzt = Uhr::now();
    const auto aeusserer = std::exchange(durchgang_, aufGanze(jetzt));
    bool erster = true;
    auto* naechster = faelligster();
    for (; naechster && (*naechster)->faellig <= jetzt; naechster = faelligster()) {
        const auto eintrag = *naechster;
        // By the time of the call itself: others that were due with it may have come before it and taken
        // long.
        verspaetungZaehlen((std::exchange(erster, false) ? jetzt : Uhr::now()) - eintrag->faellig);
        const auto versaeumt = (jetzt - eintrag->faellig) / eintrag->intervall;
        eintrag->faellig += (versaeumt + 1) * eintrag->intervall;
        eintrag->laeuft = true;
        eintrag->prozedur(); // may kill, replace or destroy the timer, this one too
        eintrag->laeuft = false;
    }
    durchgang_ = aeusserer;
    return naechster ? naechster->get() : nullptr;
}

std::chrono::milliseconds QtZeitgeber::raster() const {
    if (durchgaenge_ > 0)
        return durchgang_;
    return std::chrono::ceil<std::chrono::milliseconds>(Uhr::now()).time_since_epoch();
}

void QtZeitgeber::verspaetungZaehlen(Uhr::duration spaet) {
    if (spaet <= VERSPAETUNG)
        return;
    ++verspaetungen_.anzahl;
    verspaetungen_.groesste =
        std::max(verspaetungen_.groesste, std::chrono::duration_cast<std::chrono::milliseconds>(spaet));
}

// A timer whose procedure runs an event loop of its own waits for the end of that. Null for none.
const QtZeitgeber::Zeiger* QtZeitgeber::faelligster(Uhr::time_point nach) const {
    const Zeiger* erster = nullptr;
    for (const auto& eintrag : plan_)
        if (!eintrag->laeuft && !eintrag->ruht && eintrag->faellig > nach &&
            (!erster || frueher(*eintrag, **erster)))
            erster = &eintrag;
    return erster;
}

// Of those that do not rest; there must be one.
QtZeitgeber::Uhr::duration QtZeitgeber::kuerzestesIntervall() const {
    auto kuerzestes = Uhr::duration::max();
    for (const auto& eintrag : plan_)
        if (!eintrag->ruht)
            kuerzestes = std::min(kuerzestes, eintrag->intervall);
    return kuerzestes;
}

bool QtZeitgeber::frueher(const Eintrag& eintrag, const Eintrag& als) {
    return std::pair(eintrag.faellig, eintrag.intervall) < std::pair(als.faellig, als.intervall);
}

// While procedures run, what is due with them is served without the clock, and where one of them runs an
// event loop of its own, at the next beat: it then only has to be early enough for what comes later.
void QtZeitgeber::stellen() {
    const auto* erster = durchgaenge_ > 0 ? faelligster(Uhr::now()) : faelligster();
    stellenAuf(erster ? erster->get() : nullptr);
}

void QtZeitgeber::stellenAuf(const Eintrag* erster) {
    const bool unterwegs = durchgaenge_ > 0;
    const bool steht = schlag_ == Uhr::time_point{};
    if (!erster) {
        if (!steht && !unterwegs)
            schlagen({}, {});
        return;
    }
    if (erster->faellig == schlag_ || (unterwegs && !steht && erster->faellig > schlag_))
        return;
    schlagen(erster->faellig, kuerzestesIntervall());
}

// The epoch stops the clock.
void QtZeitgeber::schlagen(Uhr::time_point erster, Uhr::duration schritt) {
    schlag_ = erster;
    schritt_ = schritt;
    itimerspec wecken{};
    wecken.it_value = zeitangabe(erster.time_since_epoch()); // steady_clock is CLOCK_MONOTONIC
    wecken.it_interval = zeitangabe(schritt);
    timerfd_settime(uhr_, TFD_TIMER_ABSTIME, &wecken, nullptr);
}
