// SPDX-License-Identifier: GPL-3.0-or-later
// The frames of the action panel, one for each type of action: what is to be said about an action of that
// type.
//
// A frame keeps its boxes from field to field: what the text of a field does not tell shows what the field
// edited last has left. Only the choice within a type starts anew each time, from the first.
#pragma once

#include "editors/stick/Stickaktionstext.h"

#include <QGroupBox>

#include <array>
#include <functional>
#include <string>
#include <vector>

class QBoxLayout;
class QCheckBox;
class QLineEdit;
class QRadioButton;
class QScrollBar;
class Tastatur;
class Tastenfang;

/// What tells the panels of the two sticks apart.
struct Tafeleigenart {
    const char* egoshooter; ///< caption of `Option3`(2)
    const char* tabhinweis; ///< tool tip of `txtTaste`
};
inline constexpr Tafeleigenart TAFEL_LINKS{"Egoshooter", "Mit DoppelKlick die Tabtaste bestätigen"};
inline constexpr Tafeleigenart TAFEL_RECHTS{"Ego Shooter", "Mit Doppelklick Tabtaste bestätigen"};

/// Options of which one is set, by their indices.
using Optionen = std::vector<QRadioButton*>;

/// `Frame1`, by its type.
class Aktionsrahmen : public QGroupBox {
    Q_OBJECT

public:
    explicit Aktionsrahmen(Stickaktionsart art);

    /// The type was chosen.
    virtual void beginnen() {}
    /// Shows what an action tells of this type.
    virtual void zeigen(const Stickaktionsbild&) {}
    /// Writes down what the frame shows.
    virtual void lesen(Stickaktionsbild&) const {}
};

class Mausbewegungsrahmen final : public Aktionsrahmen {
    Q_OBJECT

public:
    Mausbewegungsrahmen();
    void beginnen() override;
    void zeigen(const Stickaktionsbild& bild) override;
    void lesen(Stickaktionsbild& bild) const override;

private:
    Optionen richtungen_;
    QLineEdit* geschwindigkeit_ = nullptr;
    QLineEdit* schrittlaenge_ = nullptr;
};

class Maustastenrahmen final : public Aktionsrahmen {
    Q_OBJECT

public:
    Maustastenrahmen();
    void beginnen() override;
    void zeigen(const Stickaktionsbild& bild) override;
    void lesen(Stickaktionsbild& bild) const override;

private:
    QLineEdit* scrollsprung(int maustaste) const;

    Optionen tasten_;
    QLineEdit* scrollPlus_ = nullptr;
    QLineEdit* scrollMinus_ = nullptr;
};

/// Its title names the key that was chosen, and is what the number is read from.
class Tastaturrahmen final : public Aktionsrahmen {
    Q_OBJECT

public:
    /// The name of a key by its number in decimal, as KeyCodeSuchen gives it; blanks around it are cut off.
    using Tastenname = std::function<std::string(const std::string& nummer)>;

    Tastaturrahmen(const Tafeleigenart& eigenart, Tastatur& tastatur, Tastenname tastenname);
    void beginnen() override;
    /// Errors of the key names go through.
    void zeigen(const Stickaktionsbild& bild) override;
    void lesen(Stickaktionsbild& bild) const override;

    /// A key was chosen: its number and name go into the title, its number into `txtTaste`.
    void tasteGewaehlt(int code);

private:
    Tastenfang* tastenfeld(Tastatur& tastatur, const char* hinweis);
    QBoxLayout* zeitzeile(int zeit, QLineEdit* feld);
    void optEigKlick(int index);
    void Check1Klick();
    void titelSetzen(const std::string& nummer);

    Tastenname tastenname_;
    Tastenfang* taste_ = nullptr;
    Optionen eigenschaften_;
    QLineEdit* druckzeit_ = nullptr;
    QCheckBox* wiederholen_ = nullptr;
    QLineEdit* pausenzeit_ = nullptr;
};

/// Of a type about which there is nothing to be said but what it does.
class Hinweisrahmen final : public Aktionsrahmen {
    Q_OBJECT

public:
    /// `index`: of its label.
    Hinweisrahmen(Stickaktionsart art, int index, const char* text);
};

class Positionsrahmen final : public Aktionsrahmen {
    Q_OBJECT

public:
    explicit Positionsrahmen(const Tafeleigenart& eigenart);
    void beginnen() override;
    void zeigen(const Stickaktionsbild& bild) override;
    void lesen(Stickaktionsbild& bild) const override;

    /// Whether the field may be an ego shooter, which only the centre field may.
    void egoshooterAnbieten(bool an);

private:
    void Option3Klick(int index);

    Optionen arten_;
    std::array<QScrollBar*, 2> wege_{}; ///< across, down
    std::array<QLineEdit*, 2> wegtexte_{};
};
