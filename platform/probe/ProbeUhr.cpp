// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/probe/ProbeUhr.h"

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
    const Platz platz{jetzt_ + intervall, intervall, naechsteReihe_++};
    plan_.emplace(platz, std::move(prozedur));
    plaetze_.emplace(platz.reihe, platz);
    return platz.reihe;
}

void ProbeUhr::streichen(std::uint64_t reihe) {
    const auto stelle = plaetze_.find(reihe);
    plan_.erase(stelle->second);
    plaetze_.erase(stelle);
}

void ProbeUhr::vorBis(Zeit ziel) {
    while (!plan_.empty() && plan_.begin()->first.faellig <= ziel) {
        auto knoten = plan_.extract(plan_.begin());
        jetzt_ = knoten.key().faellig;
        // The next deadline stands before the procedure runs, which may kill or replace its own timer.
        knoten.key().faellig += knoten.key().intervall;
        plaetze_.at(knoten.key().reihe) = knoten.key();
        const TimerProzedur prozedur = knoten.mapped();
        plan_.insert(std::move(knoten));
        laeuft_ = true;
        prozedur();
        laeuft_ = false;
    }
    jetzt_ = ziel;
}
