// SPDX-License-Identifier: GPL-3.0-or-later
// A trace file: what lies in the database, what the pad does when, what must come out when.
//
//   # a comment
//   grundzeilen                       lays the rows that a Schema has anyway, for what follows to change
//   sql STATEMENT                     runs on the fresh database
//   sticks beide                      told of the left stick, played on either: "links", "rechts"
//   auf lx ly rx ry                   told of axis lx, played on each axis that is named: "lx", "ly", ...
//   achsen lx ly rx ry Z1 Z2          logical names of the raw axes
//   schub TEXT                        slider text
//   fehler N                          a run must be stopped by error N; without the line by none
//   T start | stop | ende             T in milliseconds of the virtual clock; ende, if given, is last
//   T buttons N | pov N               the pad's button word and D-pad
//   T achse I V                       raw axis 0 to 5, 0 to 65535
//   T pad weg | da
//   T regler I V                      scroll bar: 0 to 11 HScroll1, 12 HScroll2
//   T knopf I                         a click on Command1(I) of the running window
//   T spaet MS                        nothing runs for so long: what is due meanwhile comes late, once a
//   timer T versatz N MS                    timer number N to be set at T, from 1, counts from MS later on T
//   lauf                            a run goes on from the state that stands in `zustand`, at most once
//   zustand NAME WORD...              what is so before the first input (engine/mitschnitt/Zustandsgang.h)
//   toleranz MS                       so far an event may lie from its time; the order holds. Of a record: it
//                                     is played once, as it was, and its errors are all of them
//   genau MS                          of a record: it is exact only so far, and played only so far
//   =
//   T EVENT...                        events as ProbeEingabe writes them, in order; "m(1,0)*50" is fifty
//   T1-T2 EVENT                       as often as `Im Feld binden` moves the pointer: every 2 ms on the left
//                                     stick, every 1 ms on the right one; only with `sticks` or `auf`
//
// Inputs of one time come before the timers due then. Statements run in the order in which they stand.
//
// `grundzeilen`, in rows of the Schema 'S': no button or direction of the D-pad does anything; the smoothing
// of both sticks is off; both have the lines 20000 and 45000 in all layers, and no layer is locked.
//
// A second playing exchanges what lies in the database and what comes in, never what must come out:
//
//   the other stick   | tblStick              tblStickR           what lies in one goes into the other
//                     | tblStickAktion        tblStickAktionR
//                     | Sensible              SensibleR           column by column of the same axis
//                     | lx ly                 rx ry               axes, by their names in `achsen`
//                     | regler 2 3 5 (lx)     6 7 10 (rx)
//                     | regler 0 1 4 (ly)     8 9 11 (ry)         4 also moves 10
//   the y axis        | Links Rechts          Oben Unten          of tblStick, tblStickAktion
//                     | Fenster_lx ...        Fenster_ly ...      of Sensible
//                     | lx                    ly
//                     | regler 2 3 5          0 1 4
//                     | abs(a,b) m(a,b)       abs(b,a) m(b,a)     of what must come out, this only
//
// A trace may be a stranger's: times go to a day, all in all five million events come or are expected, and
// statements read and write rows and nothing else.
//
// The upper margin of ry is that of rx: the wider margin of the left stick goes there. What the trace says of
// the other stick is exchanged with it.
#pragma once

#include "engine/mitschnitt/Zustandsgang.h"

#include <array>
#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

struct Spureingabe {
    enum class Art {
        Start,
        Lauf,
        Stop,
        Ende,
        Tasten,
        Pov,
        Achse,
        PadWeg,
        PadDa,
        Regler,
        Knopf,
        Spaet,
        Versatz
    };

    std::chrono::milliseconds zeit{0};
    Art art = Art::Ende;
    std::uint32_t index = 0; ///< of an axis, a scroll bar, a button or a timer that is set
    std::uint32_t wert = 0;
    std::chrono::milliseconds dauer{0}; ///< of Spaet and Versatz, which may be negative
};

struct Spurereignis {
    std::chrono::milliseconds zeit{0};
    std::string text;
    bool operator==(const Spurereignis&) const = default;
};

/// What is played: a trace has one or, with `sticks` or `auf`, several.
struct Szenario {
    std::string variante;           ///< "links", "rechts", an axis; "" of a trace that is played once
    std::vector<std::string> sql;   ///< as the trace has it
    std::vector<std::string> umbau; ///< statements of the second playing, after those
    std::array<std::string, 6> achsen{"lx", "ly", "rx", "ry", "Z1", "Z2"};
    std::string schub;
    std::optional<int> fehler;
    Zustandszeilen zustand;
    std::optional<std::chrono::milliseconds> toleranz;
    std::optional<std::chrono::milliseconds> genau; ///< what comes from then on is not played
    std::vector<Spureingabe> eingaben;              ///< by time
    std::vector<Spurereignis> erwartet;
};

/// So many events a trace expects in all playings, or brings in one, at most.
inline constexpr std::size_t HOECHSTENS_EREIGNISSE = 5'000'000;

/// A line that can't be read; the text names the line.
class Szenariofehler : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The scenarios that the text of a trace file tells, at least one; throws Szenariofehler.
std::vector<Szenario> szenarienLesen(const std::string& text);
