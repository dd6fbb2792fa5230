// SPDX-License-Identifier: GPL-3.0-or-later
// The properties of the button that is chosen in the button editor: a frame for keys, one for the mouse, one
// for the layer keys. They lie on one another, and never more than one is in sight.
//
// What is set there goes into the image of the button table at once. Setting an option or a text in code runs
// its handler as the user's hand would, but only where that changes it, and its errors come back to the
// caller.
#pragma once

#include "editors/buttons/Tastwerk.h"

#include <QWidget>

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

class QCheckBox;
class QGroupBox;
class QLineEdit;
class Wahlknopf;

class Tasteneigenschaften final : public QWidget {
    Q_OBJECT

public:
    /// `werk` outlives this object.
    explicit Tasteneigenschaften(Tastwerk& werk);

    /// Shows the properties of the chosen button, which has this action, not the empty one. Throws
    /// LaufzeitFehler for a field that is no number, 9 for a choice that does not exist.
    void Eigenschaftfestlegen(Belegungsart art);
    void verbergen();

    /// What boxes that are in use hold and the image could not take, by the field.
    std::map<std::size_t, QString> ungueltiges() const;
    /// Writes it into the boxes that are in use; nobody is told.
    void ungueltigesSetzen(const std::map<std::size_t, QString>& texte);

private:
    QGroupBox* tastenrahmen();
    QGroupBox* mausrahmen();
    QGroupBox* umschaltrahmen();
    QLineEdit* zahlfeld(const QString& name, const QString& text, std::size_t feld);

    void optEig_Click(int index);
    void Option2_Click(int index);
    void Option3_Click(int index);
    void Check1_Click();
    void zahlGeaendert(QLineEdit& box, std::size_t feld);

    void tasteZeigen();
    void mausZeigen();
    void textSetzen(QLineEdit& box, const std::string& text, std::size_t feld);
    void wiederholungSetzen(bool an);

    struct Zahlfeld {
        QLineEdit* box;
        std::size_t feld;
    };
    bool imGebrauch(const Zahlfeld& zahlfeld) const;

    Tastwerk& werk_;
    std::vector<Zahlfeld> zahlfelder_;
    std::array<QGroupBox*, 3> rahmen_{};
    std::array<Wahlknopf*, 2> tastenmodus_{};
    QLineEdit* druckzeit_ = nullptr;
    QCheckBox* wiederholen_ = nullptr;
    QLineEdit* pausenzeit_ = nullptr;
    std::array<Wahlknopf*, 5> mausaktionen_{};
    QLineEdit* scrollPlus_ = nullptr;
    QLineEdit* scrollMinus_ = nullptr;
    std::array<Wahlknopf*, 2> umschaltmodus_{};
};
