// SPDX-License-Identifier: GPL-3.0-or-later
// What the engine shows while a `Schema` runs. The window implements it; the engine never asks it anything.
#pragma once

#include <string>
#include <string_view>

class LaufzeitFehler;

/// Output of LaufFenster, by the controls it goes to. All texts are UTF-8. Only changes are handed over,
/// so an implementation may write through at once; the caption and `Erg` alone may come again as they are,
/// and reports may come every millisecond.
class LaufAnzeige {
public:
    LaufAnzeige() = default;
    LaufAnzeige(const LaufAnzeige&) = delete;
    LaufAnzeige& operator=(const LaufAnzeige&) = delete;
    virtual ~LaufAnzeige() = default;

    /// Caption of the window.
    virtual void titel(const std::string& text) = 0;
    /// `lblUmschalt`: name of the layer that was entered in this tick.
    virtual void lblUmschalt(std::string_view text) = 0;
    /// `Label1`(0): number of the buttons pressed, less the shift key.
    virtual void gedruecktePadtasten(int zahl) = 0;
    /// `Erg`(index), the engine's trace labels 0 to 8.
    virtual void Erg(int index, const std::string& text) = 0;
    /// Value of the scroll bar `HScroll1`(index), as the store has it.
    virtual void HScroll1(int index, int wert) = 0;
    /// Value of `HScroll2`.
    virtual void HScroll2(int wert) = 0;
    /// `Text3`(index), the report of a smoothed axis; comes only while the test panel is folded out.
    virtual void Text3(int index, const std::string& text) = 0;
    /// Caption of `Command1`(index).
    virtual void Command1(int index, std::string_view text) = 0;
    /// Folds the test panel out or back.
    virtual void testfeld(bool offen) = 0;
    /// Chooses `Option1`(index); an index that is not there is ignored.
    virtual void Option1(int index) = 0;

    /// Hides the main form: the run has begun.
    virtual void hauptformVerbergen() = 0;
    /// The run is over: the main form's command says "Schema starten" again and, with `zeigen`, the form
    /// comes back.
    virtual void hauptformZurueck(bool zeigen) = 0;
    /// The run was stopped by an error; comes after hauptformZurueck. Must not destroy the run from within
    /// the call.
    virtual void abgebrochen(const LaufzeitFehler& fehler) = 0;
};
