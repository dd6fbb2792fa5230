// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/probe/ProbeUhr.h"

#include <algorithm>
#include <utility>

class ProbeUhr::Formular final : public Formularzeitgeber {
public:
    Formular(ProbeUhr& uhr, TimerProzedur prozedur) : uhr_(uhr), prozedur_(std::move(prozedur)) {}
    ~Formular() override { anhalten(); }

    void Interval(Zeit intervall) override {
        intervall_ = intervall;
        anhalten();
        anwerfen();
    }
    void Enabled(bool an) override {
        if (an == an_)
            return;
        an_ = an;
        anhalten();
        anwerfen();
    }
    Zeit Interval() const override { return intervall_; }
    bool Enabled() const override { return an_; }
    void ruhen() override {
        if (reihe_)
            uhr_.reiheRuhen(*reihe_);
    }
    std::uint64_t weiter(std::chrono::nanoseconds her) override {
        return reihe_ ? uhr_.reiheWeiter(*reihe_, her) : 0;
    }

private:
    void anwerfen() {
        if (an_ && intervall_ > Zeit{0})
            reihe_ = uhr_.einplanen(intervall_, prozedur_);
    }
    void anhalten() {
        if (reihe_)
            uhr_.streichen(*std::exchange(reihe_, std::nullopt));
    }

    ProbeUhr& uhr_;
    TimerProzedur prozedur_;
    Zeit intervall_{0};
    bool an_ = false;
    std::optional<std::uint64_t> reihe_;
};

ProbeUhr::ProbeUhr() = default;
ProbeUhr::~ProbeUhr() = default;

void ProbeUhr::SetTimer(std::uint32_t id, Zeit intervall, TimerProzedur prozedur) {
    KillTimer(id);
    fenster_[id] = einplanen(intervall < Zeit{1} ? SETTIMER_MINDESTENS : intervall, std::move(prozedur));
}

void ProbeUhr::KillTimer(std::uint32_t id) {
    const auto stelle = fenster_.find(id);
    if (stelle == fenster_.end())
        return;
    streichen(stelle->second);
    fenster_.erase(stelle);
}

std::unique_ptr<Formularzeitgeber> ProbeUhr::formularzeitgeber(TimerProzedur prozedur) {
    return std::make_unique<Formular>(*this, std::move(prozedur));
}

std::uint64_t ProbeUhr::augenblick() const {
    return laeuft_ ? static_cast<std::uint64_t>(jetzt_.count()) + 1 : 0;
}

std::uint64_t ProbeUhr::einplanen(Zeit intervall, TimerProzedur prozedur) {
    gesetztAb_ = planbasis();
    const Platz platz{gesetztAb_ + intervall, intervall, naechsteReihe_++};
    plan_.emplace(platz, std::move(prozedur));
    plaetze_.emplace(platz.reihe, platz);
    return platz.reihe;
}

ProbeUhr::Zeit ProbeUhr::planbasis() {
    if (std::exchange(gezaehltBei_, jetzt_) != jetzt_)
        gesetzte_ = 0;
    ++gesetzte_;
    return versatz_ ? jetzt_ + versatz_(jetzt_, gesetzte_) : jetzt_;
}

void ProbeUhr::streichen(std::uint64_t reihe) {
    if (ruhende_.erase(reihe) > 0)
        return;
    const auto stelle = plaetze_.find(reihe);
    plan_.erase(stelle->second);
    plaetze_.erase(stelle);
}

void ProbeUhr::ruhen(std::uint32_t id) {
    if (const auto stelle = fenster_.find(id); stelle != fenster_.end())
        reiheRuhen(stelle->second);
}

std::uint64_t ProbeUhr::weiter(std::uint32_t id, std::chrono::nanoseconds her) {
    const auto stelle = fenster_.find(id);
    return stelle != fenster_.end() ? reiheWeiter(stelle->second, her) : 0;
}

void ProbeUhr::reiheRuhen(std::uint64_t reihe) {
    const auto stelle = plaetze_.find(reihe);
    if (stelle == plaetze_.end())
        return;
    auto knoten = plan_.extract(stelle->second);
    plaetze_.erase(stelle);
    ruhende_.insert_or_assign(reihe, Ruhender{knoten.key(), std::move(knoten.mapped())});
}

std::uint64_t ProbeUhr::reiheWeiter(std::uint64_t reihe, std::chrono::nanoseconds her) {
    auto knoten = ruhende_.extract(reihe);
    if (!knoten)
        return 0;
    auto& [platz, prozedur] = knoten.mapped();
    const auto grenze =
        her.count() > 0 ? Platz{jetzt_ - std::chrono::ceil<Zeit>(her), Zeit::min(), 0} : gelaufen_;
    std::uint64_t ausgelassene = 0;
    for (; platz <= grenze; platz.faellig += platz.intervall)
        ++ausgelassene;
    plaetze_.emplace(reihe, platz);
    plan_.emplace(platz, std::move(prozedur));
    ausgelassene_ += ausgelassene;
    return ausgelassene;
}

void ProbeUhr::vorBis(Zeit ziel) {
    const auto steht = [this] { return plan_.empty() || plan_.begin()->first.faellig > jetzt_; };
    for (;;) {
        if (const auto vorher = vorDemSchlaf_; vorher && steht())
            vorher();
        if (plan_.empty() || plan_.begin()->first.faellig > ziel)
            break;
        naechstenLaufenLassen();
    }
    jetzt_ = ziel;
    gelaufen_ = {ziel, Zeit::max(), std::numeric_limits<std::uint64_t>::max()};
}

void ProbeUhr::naechstenLaufenLassen() {
    auto knoten = plan_.extract(plan_.begin());
    auto& platz = knoten.key();
    gelaufen_ = platz;
    jetzt_ = std::max(jetzt_, platz.faellig); // one that comes from a rest may be late
    // The next deadline stands before the procedure runs, which may kill or replace its own timer.
    platz.faellig += ((jetzt_ - platz.faellig) / platz.intervall + 1) * platz.intervall;
    plaetze_.at(platz.reihe) = platz;
    const TimerProzedur prozedur = knoten.mapped();
    plan_.insert(std::move(knoten));
    laeuft_ = true;
    prozedur();
    laeuft_ = false;
}
