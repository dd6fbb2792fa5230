// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mitschnitt/MitgeschnittenerZeitgeber.h"

#include "platform/mitschnitt/Mitschnittband.h"

#include <algorithm>
#include <utility>

class MitgeschnittenerZeitgeber::Formular final : public Formularzeitgeber {
public:
    Formular(MitgeschnittenerZeitgeber& geber, TimerProzedur prozedur)
        : geber_(geber)
        , takt_(std::make_shared<Takt>())
        , innen_(geber.innen_.formularzeitgeber(geber.mitgeschnitten(takt_, std::move(prozedur)))) {
        geber_.takte_.insert(takt_.get());
    }
    ~Formular() override { geber_.takte_.erase(takt_.get()); }

    void Interval(Zeit intervall) override {
        innen_->Interval(intervall);
        neuBegonnen();
    }
    void Enabled(bool an) override {
        const bool war = innen_->Enabled();
        innen_->Enabled(an);
        if (an != war)
            neuBegonnen();
    }
    Zeit Interval() const override { return innen_->Interval(); }
    bool Enabled() const override { return innen_->Enabled(); }
    void ruhen() override {
        innen_->ruhen();
        takt_->ruht = takt_->gesetzt;
    }
    std::uint64_t weiter(std::chrono::nanoseconds her) override {
        const auto ausgelassene = innen_->weiter(her);
        weitergegangen(*takt_, ausgelassene);
        return ausgelassene;
    }

private:
    void neuBegonnen() {
        *takt_ = {};
        if (innen_->Enabled() && innen_->Interval() > Zeit{0})
            geber_.gesetzt(*takt_, innen_->Interval());
    }

    MitgeschnittenerZeitgeber& geber_;
    Zeiger takt_;
    std::unique_ptr<Formularzeitgeber> innen_;
};

void MitgeschnittenerZeitgeber::SetTimer(std::uint32_t id, Zeit intervall, TimerProzedur prozedur) {
    KillTimer(id);
    const auto takt = std::make_shared<Takt>();
    takte_.insert(takt.get());
    fenster_[id] = takt;
    innen_.SetTimer(id, intervall, mitgeschnitten(takt, std::move(prozedur)));
    gesetzt(*takt, intervall < Zeit{1} ? SETTIMER_MINDESTENS : intervall);
}

void MitgeschnittenerZeitgeber::KillTimer(std::uint32_t id) {
    innen_.KillTimer(id);
    if (const auto knoten = fenster_.extract(id))
        takte_.erase(knoten.mapped().get());
}

std::unique_ptr<Formularzeitgeber> MitgeschnittenerZeitgeber::formularzeitgeber(TimerProzedur prozedur) {
    return std::make_unique<Formular>(*this, std::move(prozedur));
}

void MitgeschnittenerZeitgeber::ruhen(std::uint32_t id) {
    innen_.ruhen(id);
    if (const auto stelle = fenster_.find(id); stelle != fenster_.end())
        stelle->second->ruht = true;
}

std::uint64_t MitgeschnittenerZeitgeber::weiter(std::uint32_t id, std::chrono::nanoseconds her) {
    const auto ausgelassene = innen_.weiter(id, her);
    if (const auto stelle = fenster_.find(id); stelle != fenster_.end())
        weitergegangen(*stelle->second, ausgelassene);
    return ausgelassene;
}

void MitgeschnittenerZeitgeber::weitergegangen(Takt& takt, std::uint64_t ausgelassene) {
    takt.ruht = false;
    takt.faellig += static_cast<Zeit::rep>(ausgelassene) * takt.intervall;
}

// --- what is noted ---

// The procedure may replace or destroy its own timer.
TimerProzedur MitgeschnittenerZeitgeber::mitgeschnitten(const Zeiger& takt, TimerProzedur prozedur) {
    return [this, takt, prozedur = std::move(prozedur)] {
        gerufen(*takt);
        ++laufende_;
        prozedur();
        --laufende_;
    };
}

void MitgeschnittenerZeitgeber::gerufen(Takt& takt) {
    const auto jetzt = innen_.raster();
    if (jetzt > takt.faellig) {
        // Of the timers of a wake-up the one that is due first comes first, and tells for all.
        if (jetzt > letzterDurchgang_)
            band_.spaet(std::max(takt.faellig, letzterDurchgang_ + Zeit{1}), jetzt);
        letzterVerspaeteter_ = jetzt;
    }
    letzterDurchgang_ = std::max(letzterDurchgang_, jetzt);
    if (jetzt >= takt.faellig)
        takt.faellig += ((jetzt - takt.faellig) / takt.intervall + 1) * takt.intervall;
}

void MitgeschnittenerZeitgeber::gesetzt(Takt& takt, Zeit intervall) {
    const auto ab = innen_.zuletztGesetztAb();
    const auto jetzt = stempel();
    takt = {ab + intervall, intervall, true, false};
    if (std::exchange(gezaehltBei_, jetzt) != jetzt)
        gesetzte_ = 0;
    ++gesetzte_;
    if (ab != jetzt)
        band_.versatz(jetzt, gesetzte_, ab - jetzt);
}

// --- the clock ---

MitgeschnittenerZeitgeber::Zeit MitgeschnittenerZeitgeber::stempel() const {
    const auto raster = innen_.raster();
    if (handlungen_ > 0)
        return handlung_;
    if (laufende_ > 0)
        return raster;
    auto frueheste = std::max(raster, letzterDurchgang_ + Zeit{1});
    for (const auto* takt : takte_)
        if (takt->gesetzt && !takt->ruht)
            frueheste = std::min(frueheste, takt->faellig);
    return frueheste;
}

void MitgeschnittenerZeitgeber::handlungBeginnt() {
    if (handlungen_ == 0)
        handlung_ = stempel();
    ++handlungen_;
}

bool MitgeschnittenerZeitgeber::puenktlich(std::uint32_t id, Zeit nach) const {
    const auto jetzt = innen_.raster();
    const auto stelle = fenster_.find(id);
    return letzterVerspaeteter_ != jetzt && stelle != fenster_.end() &&
           stelle->second->faellig == jetzt + nach;
}
