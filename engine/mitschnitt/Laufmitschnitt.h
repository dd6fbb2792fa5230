// SPDX-License-Identifier: GPL-3.0-or-later
// The record of the runs of a process: what it takes to play them again, beside what the devices note. A
// block of the record begins with each run and, in a run, at a quiet moment a few times a minute.
//
// Runs follow each other in one record as long as the rows of the `Schema` stay as the run before has left
// them: a run of others begins a new one. An editor may stand open beside a run and change what it plays by:
// a record is exact up to the last look that has found all as it was, and says so.
#pragma once

#include "engine/mitschnitt/Mitschnitttext.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class LaufFenster;
struct Laufzustand;
struct Mitschnittgeraete;

class Laufmitschnitt {
public:
    /// Both outlive this object; the runs are given the devices.
    Laufmitschnitt(Laufzustand& zustand, Mitschnittgeraete& geraete) : zustand_(zustand), geraete_(geraete) {}
    Laufmitschnitt(const Laufmitschnitt&) = delete;
    Laufmitschnitt& operator=(const Laufmitschnitt&) = delete;

    /// Runs what loads a run: it begins with the state that it finds.
    template <class Schritt> void beginn(const Schritt& laden) {
        const Handlung handlung(*this);
        laufBeginnt();
        laden();
        laufHatBegonnen();
    }
    /// Runs what ends a run; none may be on.
    template <class Schritt> auto ende(const Schritt& beenden) {
        const Handlung handlung(*this);
        const Ende danach(*this);
        return beenden();
    }
    /// Runs what a control of the window does to a run that is on: `knopf I`, `regler I WERT`.
    template <class Schritt> void bedienung(const std::string& was, const Schritt& schritt) {
        const Handlung handlung(*this);
        if (laeuft_)
            vermerken(was);
        schritt();
    }
    /// The run was stopped by an error; its end comes as that of any other.
    void fehler(int nummer);

    /// An editor has changed what a run that is on plays by at once, past all files.
    void eingriff();

    /// The run holds still; false where its state can't be noted at this moment.
    bool ruhepunkt(LaufFenster& lauf);

    /// What the runs are given.
    Mitschnittgeraete& geraete() const { return geraete_; }

    /// A copy of what is recorded, cheap, which gives the trace when it is asked: that takes longer and may
    /// be done on another thread. "" where there is nothing.
    std::function<std::string()> abzug(const std::string& zeitpunkt);
    /// The `Schema` that it is about.
    const std::string& schema() const { return schema_; }

private:
    // All that an act of the user sets in motion belongs to one instant, however long it takes.
    struct Handlung {
        explicit Handlung(Laufmitschnitt& des);
        ~Handlung();
        Handlung(const Handlung&) = delete;
        Handlung& operator=(const Handlung&) = delete;
        Laufmitschnitt& mitschnitt;
    };
    struct Ende {
        explicit Ende(Laufmitschnitt& des) : mitschnitt(des) { des.laufEndet(); }
        ~Ende() { mitschnitt.nachDemEnde(); }
        Ende(const Ende&) = delete;
        Ende& operator=(const Ende&) = delete;
        Laufmitschnitt& mitschnitt;
    };

    /// What tells a file that nobody has written from one that somebody has.
    struct Dateistand {
        std::uint64_t nummer = 0;
        std::int64_t groesse = 0;
        std::int64_t zeit = 0;
        bool operator==(const Dateistand&) const = default;
    };
    /// What is cheap to look at of all that a run plays by.
    struct Merkmale {
        std::array<Dateistand, 2> dateien; ///< database and axes
        std::array<std::string, 6> achsen; ///< in force
        std::string schema;                ///< whose rows a change of layer reads
        bool operator==(const Merkmale&) const = default;
    };

    void laufBeginnt();
    void laufHatBegonnen();
    void laufEndet();
    void nachDemEnde();
    void vermerken(const std::string& was);
    void nachsehen();
    Merkmale merkmale() const;
    static Dateistand dateistand(const std::string& pfad);
    std::string grund() const;
    std::string zeilen() const;
    std::string achsenUndSchub() const;

    Laufzustand& zustand_;
    Mitschnittgeraete& geraete_;
    std::string schema_;
    std::shared_ptr<const std::string> grund_; // rows, axes and slider of the run
    std::string grundImLauf_;                  // with the rows that its start has laid
    std::string grundAmEnde_;                  // as the last run has left them; "" where an editor has, too
    Merkmale merkmale_;
    Mitschnittband::Zeit unveraendertBis_{0};         // the last look
    std::optional<Mitschnittband::Zeit> geaendertAb_; // of this run; nothing while all is as it was
    bool laeuft_ = false;
};
