// SPDX-License-Identifier: GPL-3.0-or-later
// The states that what a form edits went through since it was opened, so that it can be led back and forth.
//
//     opening     one step     another     undone
//     |-----------|------------|-----------|
//                              ^ jetzt
//
// It knows nothing of what a state is but whether two of them are the same (==). One that is the same may
// still show another thing, a chosen field, say: then it takes the place of the one before without a step. A
// new step drops what was undone.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <utility>

template <class Inhalt> class Entwurfsfolge {
public:
    static constexpr std::size_t SCHRITTE = 500; ///< the oldest go then

    /// Drops all steps.
    void beginnen(Inhalt anfang) {
        staende_.clear();
        staende_.push_back({std::move(anfang), {}, {}});
        stelle_ = 0;
    }
    const Inhalt& jetzt() const { return staende_[stelle_].inhalt; }

    /// The form holds `neuer` now. That is a step where it differs, and one with the step before where both
    /// changed the same `ort`, a number that is being typed, say; "" is no such place. `name` is for a step
    /// that its states alone do not tell.
    void festhalten(Inhalt neuer, const std::string& ort = {}, std::string name = {}) {
        if (neuer == jetzt()) {
            staende_[stelle_].inhalt = std::move(neuer);
            return;
        }
        const bool weiter = !ort.empty() && !abgeschlossen_ && stelle_ > 0 &&
                            stelle_ + 1 == staende_.size() && staende_[stelle_].ort == ort;
        staende_.resize(stelle_ + 1);
        abgeschlossen_ = false;
        if (weiter)
            return fortsetzen(std::move(neuer));
        staende_.push_back({std::move(neuer), ort, std::move(name)});
        if (staende_.size() > SCHRITTE + 1)
            staende_.pop_front();
        stelle_ = staende_.size() - 1;
    }
    /// Whatever comes now is a step of its own.
    void abschliessen() { abgeschlossen_ = true; }

    bool kannZurueck() const { return stelle_ > 0; }
    bool kannVor() const { return stelle_ + 1 < staende_.size(); }
    /// The states that one step would lead to; only where it can be taken.
    const Inhalt& davor() const { return staende_[stelle_ - 1].inhalt; }
    const Inhalt& danach() const { return staende_[stelle_ + 1].inhalt; }
    /// The name of its own that the step has, "" for none.
    const std::string& nameDavor() const { return staende_[stelle_].name; }
    const std::string& nameDanach() const { return staende_[stelle_ + 1].name; }
    /// Only where it can be taken.
    void zurueck() {
        --stelle_;
        abschliessen();
    }
    void vor() {
        ++stelle_;
        abschliessen();
    }

    /// What the form makes of the state that it was led to takes its place.
    void nachfuehren(Inhalt gezeigter) { staende_[stelle_].inhalt = std::move(gezeigter); }

    /// Changes every state there is, where what the form holds is written another way and means the same.
    template <class Arbeit> void ueberall(Arbeit&& arbeit) {
        for (auto& stand : staende_)
            arbeit(stand.inhalt);
    }

private:
    struct Stand {
        Inhalt inhalt;
        std::string ort;  ///< what the step that led here changed
        std::string name; ///< of that step
    };

    /// What leads back to where the step began is none.
    void fortsetzen(Inhalt neuer) {
        if (neuer == staende_[stelle_ - 1].inhalt) {
            staende_.pop_back();
            --stelle_;
            abgeschlossen_ = true;
        }
        staende_[stelle_].inhalt = std::move(neuer);
    }

    std::deque<Stand> staende_ = std::deque<Stand>(1);
    std::size_t stelle_ = 0;
    bool abgeschlossen_ = false;
};
