// SPDX-License-Identifier: GPL-3.0-or-later
// What the mouse does to the lines of a stick's plane: picks them up, moves them, puts them down, adds and
// removes them.
//
//   state          left press near it    left press elsewhere       mouse moves          arrow
//   at rest        picked up: red        field chosen or no longer  -                    adds, removes
//   picked up      put down, saved       back in its old place      follows, to a limit  back, then that
//   at its limit   nothing               nothing                    may leave the limit  back, then that
//
// What is saved is saved whole, and actions hang on the places of lines: a line that is not put down goes
// back to where it was picked up before anything else can save it.
//
// While a field is chosen no line is picked up and no arrow works. The two axes are independent: a press on a
// crossing picks up one x line and one y line. Of several lines close together the outermost moves.
#pragma once

#include "editors/stick/Feldsuche.h"
#include "engine/stick/Stickort.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

enum class Maustaste { Links, Rechts, Andere };

/// What a left press would do.
enum class Klickfolge {
    Nichts,      ///< a line stands at its limit
    Tafel,       ///< saves the action and closes its panel
    Abwahl,      ///< no field is chosen any longer
    Wahl,        ///< chooses the field
    Aufnahme,    ///< picks a line up
    Absetzen,    ///< puts the line down and saves it
    Zuruecklegen ///< misses the line in the hand, which goes back
};

/// What the mouse works on, beside the state of Linienzug: shared with the form.
struct Justierstand {
    Linientabelle linien{};
    int EditorEbene = 0;         ///< layer that is shown, 0 to 2
    Stickposition Klickposition; ///< last press that was meant for a field

    Linienebene& ebene() { return linien[static_cast<std::size_t>(EditorEbene)]; }
    const Linienebene& ebene() const { return linien[static_cast<std::size_t>(EditorEbene)]; }
};

/// The form as Linienzug sees it: line controls, panels, store, user. The line of slot i is control i - 1 of
/// its direction. What reaches the store throws LaufzeitFehler.
class Justierflaeche {
public:
    Justierflaeche() = default;
    Justierflaeche(const Justierflaeche&) = delete;
    Justierflaeche& operator=(const Justierflaeche&) = delete;
    virtual ~Justierflaeche() = default;

    virtual bool linieGezeigt(std::size_t richtung, int index) const = 0;
    /// Where the control stands, in plane units.
    virtual double linienort(std::size_t richtung, int index) const = 0;
    virtual bool linieRot(std::size_t richtung, int index) const = 0;
    virtual void linieFaerben(std::size_t richtung, int index, bool rot) = 0;
    /// Shows and places, or hides, what belongs to a slot, by its value in the table.
    virtual void PositionFestlegen(std::size_t richtung, int slot) = 0;

    virtual bool RechteckBGezeigt() const = 0;
    /// Finds the field at Klickposition and chooses it, or chooses none where one was chosen.
    virtual void BereichFestlegen() = 0;

    virtual bool fraAktionGezeigt() const = 0;
    virtual void fraAktionVerbergen() = 0;
    /// Opens the action panel beside a press.
    virtual void fraAktionOeffnen(double x, double y) = 0;
    /// Saves what the action panel shows, and draws; shows it again where it can't be saved.
    virtual void AktionSpeichern() = 0;
    virtual void Zeichnen() = 0;

    virtual void tafelnSperren(bool gesperrt) = 0;
    virtual void tafelnZurueckstellen() = 0;

    /// These three work on the layer that is shown.
    virtual void StickLinienSpeichern() = 0;
    /// Saves `linien`, one of which has moved, and lets its actions follow: all of it or nothing.
    virtual void StickLinieVerlegen(const Linientabelle& linien, std::size_t richtung, std::int32_t neu,
                                    std::int32_t alt) = 0;
    /// Saves `ohne`, the lines without `linie`, and deletes the `Leerfeld` rows on it: all of it or nothing.
    /// False when other rows keep it: then only these rows go.
    virtual bool StickLinieEntfernen(const Linientabelle& ohne, std::size_t richtung, std::int32_t linie) = 0;

    virtual void melden(std::string_view text) = 0;
};

/// How near a press must be to hit a line, exclusive; left of and above this no line is hit at all.
inline constexpr int FANGWEITE = 200;

class Linienzug {
public:
    Linienzug(Justierstand& stand, Justierflaeche& flaeche) : stand_(stand), flaeche_(flaeche) {}

    /// A mouse button went down on the plane, at plane units. Throws LaufzeitFehler of the store; a line that
    /// could not be put down is back at its old place then, on the plane and, where the store lets it, there;
    /// so is another one that was in the hand with it. Where the action of the panel could not be saved, the
    /// panel stands open and the strips stay locked.
    void gedrueckt(Maustaste taste, double x, double y);
    /// The mouse moved on the plane. Nothing is saved.
    void bewegt(double x, double y);
    /// A mouse button went down on an arrow of `richtung`. Throws LaufzeitFehler of the store; the line is
    /// what it was before then.
    void pfeilGedrueckt(Maustaste taste, std::size_t richtung);
    /// Chooses the field at (x, y), or chooses none where one was chosen, as a left press there does that
    /// meets no line. Throws as gedrueckt.
    void feldWaehlen(double x, double y);
    /// Moves a line by a step and saves it, as putting it down does; a step that would pass a limit ends
    /// there. While a field is chosen nothing happens. False when the line lies where it was. Throws as
    /// pfeilGedrueckt.
    bool schieben(std::size_t richtung, int slot, std::int32_t schritt);

    /// What a left press at (x, y) would do. On arrows and panels it does something else.
    Klickfolge folge(double x, double y) const;
    /// Lays what is in hand back to where it was picked up. Comes before a change of layer and before what
    /// saves the lines. Nothing is saved.
    void loslassen();

    /// Whether a line is picked up, or still red of that.
    bool haelt() const;

    /// A line that was picked up and not put down yet.
    struct Griff {
        std::size_t richtung;
        int slot;
        std::int32_t alt; ///< where it was picked up

        bool ist(std::size_t andereRichtung, int andererSlot) const {
            return richtung == andereRichtung && slot == andererSlot;
        }
        bool operator==(const Griff&) const = default;
    };
    const std::vector<Griff>& griffe() const { return griffe_; }
    /// The lines of the layer shown as they lie without what is in the hand.
    Linienebene abgelegte() const;
    /// The lines that a left press at (x, y) would pick up.
    std::vector<Griff> aufnehmbare(double x, double y) const;

    /// Slot of the line that is picked up to the left, at the top, to the right, at the bottom, 0 for none.
    /// Mind the order: it is not that of the directions.
    using Greifindizes = std::array<std::int16_t, RICHTUNGEN>;
    const Greifindizes& Greifindex() const { return Greifindex_; }
    /// Where the lines picked up stood then.
    const Stickposition& Greifposition() const { return Greifposition_; }
    /// Whether a vertical or a horizontal line stands at a limit.
    bool RandX() const { return RandX_; }
    bool RandY() const { return RandY_; }

private:
    struct Fang {
        bool getroffen = false;
        bool veraendert = false;
    };
    std::int32_t& J(int slot, std::size_t richtung) {
        return stand_.ebene()[static_cast<std::size_t>(slot)][richtung];
    }
    std::int32_t J(int slot, std::size_t richtung) const {
        return std::as_const(stand_).ebene()[static_cast<std::size_t>(slot)][richtung];
    }

    Fang fangen(double x, double y);
    void linieFangen(std::size_t richtung, int slot, double ort, Fang& fang);
    void tafelSchliessen(const Fang& fang);
    std::vector<Griff> verfehlteZuruecklegen(double x, double y);
    void zuruecklegen(const Griff& griff);
    void aufnehmen(std::size_t richtung, int slot);
    void absetzen(std::size_t richtung, int slot);
    Griff griffLoesen(std::size_t richtung, int slot);
    void nachFang(const Fang& fang, Maustaste taste, double x, double y);
    void tafelnNachFang(const Fang& fang);
    void ziehen(std::size_t greifplatz, double ort);
    void hinzufuegen(std::size_t richtung, int slot);
    void entfernen(std::size_t richtung, int slot);
    void aendern(std::size_t richtung, int slot, std::int32_t neu);
    void verlegen(const Griff& griff, std::int32_t alt);

    Justierstand& stand_;
    Justierflaeche& flaeche_;
    Greifindizes Greifindex_{};
    Stickposition Greifposition_;
    std::vector<Griff> griffe_;
    bool RandX_ = false;
    bool RandY_ = false;
};

/// Where the action panel, `breite` by `hoehe`, goes after a press at (x, y); all in plane units. It stays on
/// the plane where it fits.
struct Tafelplatz {
    double links = 0;
    double oben = 0;
    bool operator==(const Tafelplatz&) const = default;
};
Tafelplatz aktionstafelplatz(double x, double y, double breite, double hoehe);
