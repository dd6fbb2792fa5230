// The button editor: assigns the twelve buttons and the four directions of the D-pad of a `Schema`, on three
// layers.
//
// Nothing reaches the database until "Speichern"; closing discards the rest without a question. The pad is
// polled all the time, and a button that is pressed there is picked as by a click on its label. The form
// reads the pad beside everybody else, so it takes no capture of it.
//
// Setting an option or a text in code runs its handler as the user's hand would, but only where that changes
// it.
#pragma once

#include "editors/buttons/Tastwerk.h"
#include "platform/Joystick.h"
#include "platform/Zeitgeber.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <string>

class Padbild;
class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class Tastatur;
class Tastenfang;
struct GobalVariable;

class frmJoyKonfic final : public QWidget {
    Q_OBJECT

public:
    frmJoyKonfic(GobalVariable& global, Joystick& joystick, Zeitgeber& zeitgeber, Tastatur& tastatur);
    ~frmJoyKonfic() override;

    /// Load of the form for the current `Schema`. Assignments that can't be read stand there as empty, and
    /// one message box names them once the event loop runs. Throws LaufzeitFehler when the `Schema` can't be
    /// read; the form must not be used then.
    void laden();
    const std::string& geladenesSchema() const { return schema_; }

    /// A click on `Command1`(index): 0 to 2 the layers, 4 "Speichern", 5 "Neu".
    void Command1_Click(int index);

signals:
    /// The user has closed the form.
    void geschlossen();

protected:
    void closeEvent(QCloseEvent* ereignis) override;

private:
    // layout, top to bottom
    QWidget* kopf();
    QWidget* knopfzeile();
    QGroupBox* tastenereignis();
    QWidget* eigenschaften();
    QGroupBox* tasteneigenschaften();
    QGroupBox* mauseigenschaften();
    QGroupBox* umschalteigenschaften();
    QPushButton* Command1(int index, const QString& text);
    QRadioButton* wahlknopf(const QString& name, const QString& text, std::function<void()> klick);
    QLineEdit* zahlfeld(const QString& name, const QString& text, std::size_t feld);

    // what the controls do
    void lblInfo_Click(int taste);
    void Option1_Click(int index);
    void optEig_Click(int index);
    void Option2_Click(int index);
    void Option3_Click(int index);
    void Check1_Click();
    void Command10_Click();
    void zahlGeaendert(QLineEdit& box, std::size_t feld);
    void tasteUebernehmen(int code);
    void Timer1_Timer();
    void speichern();

    // the steps that they share
    void labelBeschriften(int auswahl);
    void gewaehlteBeschriften(const Tastwerk::Namensucher& sucher);
    void TastenEreignissFestlegen();
    void Eigenschaftfestlegen(Tastenart art);
    void subButtonsAuswerten();
    void subShape2Steuern(int erste, int zweite);
    void TextEinAus(bool ein);
    void rahmenVerbergen();
    void auswaehlen(int taste);

    void optionSetzen(QRadioButton& option, const std::function<void()>& klick);
    void textSetzen(QLineEdit& box, const std::string& text, std::size_t feld);
    void wiederholungSetzen(bool an);
    std::string name(const std::string& code) const;
    std::string gemerkterName(const std::string& code);

    GobalVariable& global_;
    Joystick& joystick_;
    Tastatur& tastatur_;
    Tastwerk werk_;
    std::string schema_; ///< the name on load
    JOYINFOEX joystickinfo_;
    /// The last key name that was looked up while the button word on the pad stayed the same.
    struct {
        std::uint32_t wort = 0;
        std::string code;
        std::string name;
    } gemerkt_;
    std::uint32_t fehlerwort_ = 0; ///< a button word whose button can't be shown; told once

    Padbild* bild_ = nullptr;
    std::array<QLabel*, 2> lblSchemaName_{};
    std::array<QPushButton*, EBENEN> ebenen_{};
    std::array<QRadioButton*, TASTENARTEN> Option1_{};
    QLabel* txtTaste_ = nullptr;
    Tastenfang* Text3_ = nullptr;
    std::array<QGroupBox*, 3> famAusgabe_{};
    std::array<QRadioButton*, 2> optEig_{};
    QLineEdit* Text1_ = nullptr;
    QCheckBox* Check1_ = nullptr;
    QLineEdit* Text2_ = nullptr;
    std::array<QRadioButton*, 5> Option2_{};
    QLineEdit* txtScrollPlus_ = nullptr;
    QLineEdit* txtScrollMinus_ = nullptr;
    std::array<QRadioButton*, 2> Option3_{};
    std::unique_ptr<Formularzeitgeber> Timer1_;
};
