// SPDX-License-Identifier: GPL-3.0-or-later
// The engine of one stick. It is called only when the stick has left the bounds of its field: it finds the
// new field, ends what the old one started, starts the action of the new one and writes the status texts.
// What goes on inside a field runs on timers (Aktionslauf).
#pragma once

#include "engine/stick/Aktionslauf.h"
#include "engine/stick/StickTabellen.h"
#include "engine/stick/Stickort.h"
#include "formats/Aktionsliste.h"

#include <array>
#include <string>
#include <string_view>

struct GobalVariable;

/// A stick outlasts a run, and so do its bounds.
class StickMaschine {
public:
    StickMaschine(const Stickeigenart& art, const GobalVariable& global, Stickdatenbank& datenbank)
        : art_(art), global_(global), datenbank_(datenbank) {}

    StickMaschine(const StickMaschine&) = delete;
    StickMaschine& operator=(const StickMaschine&) = delete;

    /// Loads lines, actions and `StickSperre` of a layer.
    void tabellenLaden(int ebene);
    /// The smoothed position as it is now.
    Stickposition lesen(const Laufdienste& dienste) const;
    /// The stick stands at `wo` and has left `grenzen`: finds the field, ends and starts actions, sets
    /// `grenzen`. The layer is that of the tables. Throws LaufzeitFehler 9 for a direction without a line,
    /// and as Aktionslauf does.
    void auswerten(const Laufdienste& dienste, const Stickposition& wo);

    /// Where actions stand is not part of it: that is only told.
    template <class Gang> void begehen(Gang& gang, const std::string& name) {
        for (auto* eine : {&grenzen, &grenzenAlt_}) {
            std::array werte{eine->xMax, eine->xMin, eine->yMax, eine->yMin};
            gang(name + (eine == &grenzen ? ".grenzen" : ".grenzenAlt"), werte);
            *eine = {werte[0], werte[1], werte[2], werte[3]};
        }
        gang(name + ".aktion", stand_.AktionAlt);
        gang(name + ".begonnen", stand_.begonnen);
        for (std::size_t seite = 0; seite < stand_.begonnen.size(); ++seite)
            stand_.begonnen[seite] = stand_.begonnen[seite] && stand_.AktionAlt[seite];
        gang(name + ".maus", stand_.MausAktion);
        gang(name + ".taste", stand_.TastenAktion);
        gang(name + ".binden", stand_.BindenAktion);
        auto& ego = stand_.EgoDaten;
        gang(name + ".ego.aktion", ego.aktion);
        gang(name + ".ego.breite", ego.breite);
        gang(name + ".ego.hoehe", ego.hoehe);
        gang(name + ".ego.xMin", ego.xMin);
        gang(name + ".ego.yMin", ego.yMin);
        gang(name + ".ego.status", stand_.EgoStatus);
        gang(name + ".ego.weg", stand_.egoWeg);
        gang(name + ".diagonal", stand_.DiagonalFlag);
        gang(name + ".xZone", stand_.xZone);
        gang(name + ".yZone", stand_.yZone);
    }

    FeldGrenzen grenzen;
    std::int32_t StickSperre = 0; ///< bit n: not evaluated in layer n

    Stickseite seite() const { return art_.seite; }
    const Stickeigenart& eigenart() const { return art_; }
    const Stickaktionsstand& stand() const { return stand_; }

private:
    // Where a position lies: the names of its two zones, the inner lines of its bands ("" in a centre band or
    // on a line), and the two halves of its key, "" in x on a line.
    struct Feldort {
        std::string_view xZone;
        std::string xLinie;
        std::string_view yZone;
        std::string yLinie;
        std::string xHaelfte;
        std::string yHaelfte;
        Feldname name;

        std::string schluessel() const { return xHaelfte + yHaelfte; }
        /// Keys of its bands; "" for x on a line.
        std::string xSchluessel() const { return xHaelfte.empty() ? "" : xBandschluessel(xHaelfte); }
        std::string ySchluessel() const { return yBandschluessel(yHaelfte); }
        bool mitte() const { return xZone == "Mitte" || yZone == "Mitte"; }
    };

    const Linienliste& linien(std::size_t richtung) const;
    Feldort feldSuchen(const Stickposition& wo);
    void xBandSuchen(std::int32_t x, Feldort& feld);
    void yBandSuchen(std::int32_t y, Feldort& feld);
    void aktionWechseln(const Laufdienste& dienste, const Feldort& feld);
    void bandaktionenStarten(const Aktionslauf& lauf, const Aktionszeiger& xAktion,
                             const Aktionszeiger& yAktion);
    void aktionZeigen(LaufAnzeige& anzeige, const Feldort& feld) const;

    const Stickeigenart& art_;
    const GobalVariable& global_;
    Stickdatenbank& datenbank_;
    int ebene_ = 0; // of the tables
    std::array<Linienliste, RICHTUNGEN> StickLinien_;
    Aktionsliste StickAktionen_;
    FeldGrenzen grenzenAlt_;
    Stickaktionsstand stand_;
};
