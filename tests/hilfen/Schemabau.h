// SPDX-License-Identifier: GPL-3.0-or-later
// Builds a `Schema` for a test, told by what it has, and lays it past the store.
//
//     Schemabau(datei).taste(2, "1,65,0-0-0").linien(Stickseite::Links, 1, {20000, 45000, 20000,
//     45000}).anlegen();
#pragma once

#include "base/Stickseite.h"
#include "tests/hilfen/Testdatenbank.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

class Schemabau {
public:
    /// To the left, to the right, upward, downward.
    using Vier = std::array<int, 4>;

    explicit Schemabau(const Testdatenbank& datenbank, std::string name = "S")
        : datenbank_(datenbank), name_(text(name)) {}

    /// A column of tblTastatur by its name.
    Schemabau& spalte(std::string_view spalte, std::string_view wert) {
        tastatur_.mehr(spalte, text(wert));
        return *this;
    }
    /// The `Belegung` of a button, 0 to 11, or of a direction of the D-pad, 12 to 15, on a layer.
    Schemabau& taste(int slot, std::string_view belegung, int ebene = 0) {
        constexpr std::array<int, 3> ERSTER{1, 101, 1001};
        constexpr std::array<const char*, 3> ENDUNG{"", "2", "3"};
        constexpr std::array<const char*, 4> RICHTUNG{"Oben", "Rechts", "Unten", "Links"};
        const auto e = static_cast<std::size_t>(ebene);
        if (slot < 12)
            return spalte("btn" + std::to_string(ERSTER.at(e) + slot), belegung);
        kreuz_.mehr(std::string(RICHTUNG.at(static_cast<std::size_t>(slot - 12))) + ENDUNG.at(e),
                    text(belegung));
        return *this;
    }
    /// A row of a stick's lines, the same on all layers.
    Schemabau& linien(Stickseite seite, int index, const Vier& werte) {
        return ebenenlinien(seite, index, {werte, werte, werte});
    }
    /// A row of a stick's lines, layer by layer.
    Schemabau& ebenenlinien(Stickseite seite, int index, const std::array<Vier, 3>& ebenen) {
        weiteres_ += "INSERT INTO tblStick" + std::string(tabellenzusatz(seite)) + " VALUES (" + name_ +
                     ", " + std::to_string(index);
        for (const auto& werte : ebenen)
            weiteres_ += reihe(werte);
        weiteres_ += ");";
        return *this;
    }
    /// The rows of a stick from `index` to the last one, without a line.
    Schemabau& leereLinienAb(Stickseite seite, int index) {
        for (; index <= 20; ++index)
            linien(seite, index, {});
        return *this;
    }
    /// Row 20 of a stick: bit n keeps it from being evaluated in layer n.
    Schemabau& sperre(Stickseite seite, int maske) {
        return ebenenlinien(seite, 20, {Vier{maske}, Vier{}, Vier{}});
    }
    /// The action of a field, which the lines around it name.
    Schemabau& feld(Stickseite seite, const Vier& anker, std::string_view aktion, int ebene = 0) {
        weiteres_ += "INSERT INTO tblStickAktion" + std::string(tabellenzusatz(seite)) + " VALUES (" + name_ +
                     ", " + std::to_string(ebene) + reihe(anker) + ", " + text(aktion) + ");";
        return *this;
    }
    /// Both sticks without smoothing: a tick sees what the pad does.
    Schemabau& ungeglaettet() {
        weiteres_ += "INSERT INTO Sensible VALUES (" + name_ +
                     ", 1, 1, 0, 0, 0, 0, 0); INSERT INTO SensibleR VALUES (" + name_ +
                     ", 1, 1, 0, 0, 0, 0);";
        return *this;
    }
    /// One that has lost its row of the D-pad.
    Schemabau& ohneKreuz() {
        mitKreuz_ = false;
        return *this;
    }

    void anlegen() const {
        datenbank_.sql("BEGIN;" + tastatur_.anweisung("tblTastatur", name_) +
                       (mitKreuz_ ? kreuz_.anweisung("tblSteuerKreuz", name_) : "") + weiteres_ + "COMMIT;");
    }
    /// For a `Schema` whose buttons are there already: only what else has been told.
    void ergaenzen() const { datenbank_.sql("BEGIN;" + weiteres_ + "COMMIT;"); }

private:
    struct Zeile {
        std::string spalten = "Schemaname";
        std::string werte;

        void mehr(std::string_view spalte, const std::string& wert) {
            spalten += ", " + std::string(spalte);
            werte += ", " + wert;
        }
        std::string anweisung(const std::string& tabelle, const std::string& name) const {
            return "INSERT INTO " + tabelle + " (" + spalten + ") VALUES (" + name + werte + ");";
        }
    };

    static std::string text(std::string_view wert) {
        std::string literal = "'";
        for (const char zeichen : wert)
            literal += zeichen == '\'' ? "''" : std::string(1, zeichen);
        return literal + "'";
    }
    static std::string reihe(const Vier& werte) {
        std::string reihe;
        for (const int wert : werte)
            reihe += ", " + std::to_string(wert);
        return reihe;
    }

    const Testdatenbank& datenbank_;
    std::string name_; ///< as a literal
    Zeile tastatur_;
    Zeile kreuz_;
    std::string weiteres_;
    bool mitKreuz_ = true;
};
