// One analogue stick as the poll cycle sees it.
#pragma once

#include <cstdint>

struct Laufdienste;

/// Bounds of the field in which a stick stands, all inclusive.
struct FeldGrenzen {
    std::int32_t xMax = 0;
    std::int32_t xMin = 0;
    std::int32_t yMax = 0;
    std::int32_t yMin = 0;

    bool enthaeltX(std::int32_t x) const { return xMin <= x && x <= xMax; }
    bool enthaeltY(std::int32_t y) const { return yMin <= y && y <= yMax; }
    bool operator==(const FeldGrenzen&) const = default;
};

/// Position in the stick plane, 0 to 65535 each; small x is left, small y is up.
struct Stickposition {
    std::int32_t x = 0;
    std::int32_t y = 0;
    bool operator==(const Stickposition&) const = default;
};

/// A stick outlasts a run, and so do its bounds and position.
class Stick {
public:
    Stick() = default;
    Stick(const Stick&) = delete;
    Stick& operator=(const Stick&) = delete;
    virtual ~Stick() = default;

    /// Loads lines, actions and `StickSperre` of a layer.
    virtual void tabellenLaden(int ebene) = 0;
    /// The smoothed position as it is now.
    virtual Stickposition lesen(const Laufdienste& dienste) = 0;
    /// The stick has left `grenzen`: finds the field, ends and starts actions, sets `grenzen`. May change
    /// `position`.
    virtual void auswerten(const Laufdienste& dienste, Stickposition& position, int ebene) = 0;

    FeldGrenzen grenzen;
    Stickposition position;       ///< last one handed through the poll cycle
    std::int32_t StickSperre = 0; ///< bit n: not evaluated in layer n
};
