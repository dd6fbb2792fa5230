// A trace file: what lies in the database, what the pad does when, what must come out when.
//
//   # a comment
//   sql STATEMENT                     runs on the fresh database
//   achsen lx ly rx ry Z1 Z2          logical names of the raw axes
//   schub TEXT                        slider text
//   fehler N                          a run must be stopped by error N; without the line by none
//   T start | stop | ende             T in milliseconds of the virtual clock; ende, if given, is last
//   T buttons N | pov N               the pad's button word and D-pad
//   T achse I V                       raw axis 0 to 5, 0 to 65535
//   T pad weg | da
//   T regler I V                      scroll bar: 0 to 11 HScroll1, 12 HScroll2
//   T knopf I                         a click on Command1(I) of the running window
//   =
//   T EVENT...                        events as ProbeEingabe writes them, in order
//
// Inputs of one time come before the timers due then.
#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

struct Spureingabe {
    enum class Art { Start, Stop, Ende, Tasten, Pov, Achse, PadWeg, PadDa, Regler, Knopf };

    std::chrono::milliseconds zeit{0};
    Art art = Art::Ende;
    std::uint32_t index = 0; ///< of an axis, a scroll bar or a button
    std::uint32_t wert = 0;
};

struct Spurereignis {
    std::chrono::milliseconds zeit{0};
    std::string text;
    bool operator==(const Spurereignis&) const = default;
};

struct Szenario {
    std::vector<std::string> sql;
    std::array<std::string, 6> achsen{"lx", "ly", "rx", "ry", "Z1", "Z2"};
    std::string schub;
    std::optional<int> fehler;
    std::vector<Spureingabe> eingaben; ///< by time
    std::vector<Spurereignis> erwartet;
};

/// A line that can't be read; the text names the line.
class Szenariofehler : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads the text of a trace file; throws Szenariofehler.
Szenario szenarioLesen(const std::string& text);
