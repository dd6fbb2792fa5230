// SPDX-License-Identifier: GPL-3.0-or-later
// Where the stick was, as a stick editor shows it: the picture on the plane and the marks of its noise.
//
// While it is off nothing is read and nothing is kept.
#pragma once

#include "editors/stick/Linienzug.h"
#include "editors/stick/Streurechnung.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

class Stickebene;
struct Rauschmarke;

class Streuansicht {
public:
    /// What is kept of a layer, and when that was changed last.
    struct Quelle {
        std::function<Streudaten(int ebene)> lesen;
        std::function<std::filesystem::file_time_type(int ebene)> stempel;
    };

    Streuansicht(Stickebene& ebene, const Justierstand& stand, Quelle quelle);

    void schalten(bool an);
    /// Reads anew where it is on: another layer is shown.
    void lesen();
    /// Reads anew where it is on and more was counted; returns whether it did.
    bool nachsehen();
    /// Marks the noise at the lines as they lie now. With nothing changed it costs next to nothing.
    void linienZeigen();

    /// What is shown; null while it is off.
    const Streurechnung* rechnung() const { return rechnung_ ? &*rechnung_ : nullptr; }

private:
    Stickebene& ebene_;
    const Justierstand& stand_;
    const Quelle quelle_;
    bool an_ = false;
    std::filesystem::file_time_type gelesener_; ///< the stamp of what was read
    std::optional<Streurechnung> rechnung_;
    std::optional<Linienebene> gezeigte_; ///< the lines that the marks are for
};

/// The marks of a layer's noise: a stripe along each line that lies in it, then the bands that are narrow.
std::vector<Rauschmarke> rauschmarken(const Streurechnung& rechnung, const Linienebene& linien);
