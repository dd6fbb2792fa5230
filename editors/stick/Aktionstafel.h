// The panel on which a field of a stick's plane gets its action. It lies over the plane, and its form says
// where: it places it, opens it on a field and asks it for the text when it has closed it.
//
// It keeps its boxes from field to field: what the text of a field does not tell shows what the field edited
// last has left. Only the choice within a type starts anew each time, from the first.
#pragma once

#include "editors/stick/Stickaktionstext.h"

#include <QFrame>

#include <array>
#include <functional>
#include <string>
#include <vector>

class QCheckBox;
class QGroupBox;
class QLineEdit;
class QRadioButton;
class QScrollBar;
class QStackedLayout;
class Tastatur;
class Tastenfang;

/// What tells the panels of the two sticks apart.
struct Tafeleigenart {
    const char* egoshooter; ///< caption of `Option3`(2)
    const char* tabhinweis; ///< tool tip of `txtTaste`
};
inline constexpr Tafeleigenart TAFEL_LINKS{"Egoshooter", "Mit DoppelKlick die Tabtaste bestätigen"};
inline constexpr Tafeleigenart TAFEL_RECHTS{"Ego Shooter", "Mit Doppelklick Tabtaste bestätigen"};

class Aktionstafel final : public QFrame {
    Q_OBJECT

public:
    /// The name of a key by its number in decimal, as KeyCodeSuchen gives it; blanks around it are cut off.
    using Tastenname = std::function<std::string(const std::string& nummer)>;

    /// Starts hidden. Its size is that of its content.
    Aktionstafel(const Tafeleigenart& eigenart, Tastatur& tastatur, Tastenname tastenname, QWidget* eltern);

    /// Shows the panel with the action of a field; the empty text, that of a field without a row, is a
    /// `Leerfeld`. `mitEgoshooter` is for the centre field, the only one that can be one. Throws
    /// LaufzeitFehler for a text that cannot be read in full; the panel is open then and shows what could be
    /// read. Errors of the key names go through.
    void oeffnen(const std::string& aktionstext, bool mitEgoshooter);

    /// The action text of what the panel shows.
    std::string aktionstext() const;

    /// A key was chosen: its number and name go into the caption, its number into `txtTaste`.
    void tasteGewaehlt(int code);

protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void hideEvent(QHideEvent* ereignis) override;
    bool eventFilter(QObject* beobachtet, QEvent* ereignis) override;

private:
    using Optionen = std::vector<QRadioButton*>;

    void aufbauen(const Tafeleigenart& eigenart);
    QLayout* artwahl();
    QGroupBox* rahmen(Stickaktionsart art);
    QGroupBox* mausbewegung();
    QGroupBox* maustaste();
    QGroupBox* tastatur(const Tafeleigenart& eigenart);
    QGroupBox* hinweis(Stickaktionsart art, int index, const char* text);
    QGroupBox* absolutePosition(const Tafeleigenart& eigenart);
    Tastenfang* tastenfeld(const char* hinweis);

    void Option1Klick(int index);
    void optEigKlick(int index);
    void Check1Klick();
    void Option3Klick(int index);

    void zeigen(const Stickaktionsbild& bild);
    void artWaehlen(int index);
    void titelSetzen(const std::string& nummer);

    Tastatur& tastatur_;
    Tastenname tastenname_;
    Optionen Option1_;
    std::array<QGroupBox*, STICKAKTIONSARTEN> Frame1_{};
    QStackedLayout* eigenschaften_ = nullptr;

    Optionen Option2_;
    std::array<QLineEdit*, 2> txtSchritt_{};

    Optionen optMaus_;
    QLineEdit* txtScrollPlus_ = nullptr;
    QLineEdit* txtScrollMinus_ = nullptr;

    Tastenfang* txtTaste_ = nullptr;
    Optionen optEig_;
    std::array<QLineEdit*, 2> txtZeit_{};
    QCheckBox* Check1_ = nullptr;

    Optionen Option3_;
    std::array<QScrollBar*, 2> HScroll1_{};
    std::array<QLineEdit*, 2> Text1_{};
};
