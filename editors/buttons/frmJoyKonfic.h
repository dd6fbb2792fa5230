// SPDX-License-Identifier: GPL-3.0-or-later
// The button editor: assigns the twelve buttons and the four directions of the D-pad of a `Schema`, on three
// layers.
//
// Nothing reaches the database until "Speichern"; closing asks nothing, and keeps what is not saved for the
// next time that this `Schema` is edited. Undo reaches back to the opening, past each "Speichern". The pad is
// polled all the time, and a button that is pressed there is picked as by a click on its label. The form
// reads the pad beside everybody else, so it takes no capture of it.
#pragma once

#include "editors/buttons/Tastenentwurf.h"
#include "editors/buttons/Tastenschritt.h"
#include "editors/buttons/Tastwerk.h"
#include "editors/common/Entwuerfe.h"
#include "editors/common/Entwurfsfolge.h"
#include "editors/common/Rueckgang.h"
#include "platform/Joystick.h"
#include "platform/Zeitgeber.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <string>

class Padbild;
class QGroupBox;
class QLabel;
class QPushButton;
class Speicherstand;
class Tastatur;
class Tasteneigenschaften;
class Tastenfang;
class Wahlknopf;
struct GobalVariable;

class frmJoyKonfic final : public QWidget {
    Q_OBJECT

public:
    /// All of them outlive this object.
    frmJoyKonfic(GobalVariable& global, Joystick& joystick, Zeitgeber& zeitgeber, Tastatur& tastatur,
                 Entwuerfe<Tastenentwurf>& entwuerfe);
    ~frmJoyKonfic() override;

    /// Load of the form for the current `Schema`. Assignments that can't be read stand there as empty, and
    /// one message box names them once the event loop runs. Throws LaufzeitFehler when the `Schema` can't be
    /// read; the form must not be used then.
    void laden();
    const std::string& geladenesSchema() const { return schema_; }
    /// Its `Schema` has another name now.
    void schemaUmbenannt(const std::string& neu);

    /// A click on `Command1`(index): 0 to 2 the layers, 4 "Speichern", 5 "Neu".
    void Command1_Click(int index);

signals:
    /// The user has closed the form.
    void geschlossen();

protected:
    void closeEvent(QCloseEvent* ereignis) override;

private:
    static constexpr int ALLE_SCHILDER = -1; ///< labelBeschriften

    // layout, top to bottom
    QWidget* kopf();
    QWidget* knopfzeile(Zeitgeber& zeitgeber);
    QGroupBox* tastenereignis();
    QPushButton* Command1(int index, const QString& text);

    // what the controls do
    void Command1_Tat(int index);
    void lblInfo_Click(int taste);
    void Option1_Click(int index);
    void Command10_Click();
    void tasteUebernehmen(int code);
    void Timer1_Timer();
    void speichern();

    // what is not saved
    bool ungespeichert() const;
    void standZeigen();
    void standFesthalten(Tasteninhalt jetzt, const std::string& ort = {});
    void ansehen(const std::function<void()>& zeigen);
    void eineTat(const std::function<void()>& tat);
    Tastenentwurf entwurf() const;
    void wiederherstellen();

    // undo
    Rueckgang::Dienst rueckgangsdienst();
    Tasteninhalt inhalt() const;
    bool kann(Richtung richtung) const;
    const Tasteninhalt& ziel(Richtung richtung) const;
    QString schritt(Richtung richtung) const;
    void gehen(Richtung richtung);
    void inhaltNehmen(const Tasteninhalt& nach, const std::optional<Schrittort>& ort);
    void inhaltZeigen(const Tasteninhalt& nach, const std::optional<Schrittort>& ort);

    // the steps that they share
    void nameZeigen();
    void labelBeschriften(int auswahl);
    void gewaehlteBeschriften(const Tastwerk::Namensucher& sucher);
    void TastenEreignissFestlegen();
    void subButtonsAuswerten();
    void subShape2Steuern(int erste, int zweite);
    void TextEinAus(bool ein);
    void auswaehlen(int taste);
    void umschalttastenSchalten(int index);
    void ebeneZeigen(int ebene);
    void ebeneSetzen(int ebene);

    std::string name(const std::string& code) const;
    std::string gemerkterName(const std::string& code);

    GobalVariable& global_;
    Joystick& joystick_;
    Tastatur& tastatur_;
    Entwuerfe<Tastenentwurf>& entwuerfe_;
    Tastwerk werk_;
    VarTastenbelegung gespeichertes_; ///< the image as it is stored, but for how its numbers are written
    Entwurfsfolge<Tasteninhalt> folge_;
    bool siehtAn_ = false; ///< a button is shown just now
    int taten_ = 0;        ///< what the user does is under way
    std::string schema_;   ///< the name on load
    JOYINFOEX joystickinfo_;
    /// The last key name that was looked up while the button word on the pad stayed the same.
    struct {
        std::uint32_t wort = 0;
        std::string code;
        std::string name;
    } gemerkt_;
    std::uint32_t fehlerwort_ = 0; ///< a button word whose button can't be shown; told once

    Padbild* bild_ = nullptr;
    QLabel* schemaname_ = nullptr;
    QLabel* ebenenname_ = nullptr; ///< of the layer in sight
    std::array<QPushButton*, EBENEN> ebenen_{};
    std::array<Wahlknopf*, TASTENARTEN> arten_{};
    QGroupBox* tastenereignis_ = nullptr;
    QLabel* tastenname_ = nullptr;
    Tastenfang* tastenfang_ = nullptr;
    Tasteneigenschaften* eigenschaften_ = nullptr;
    Speicherstand* speicherstand_ = nullptr;
    std::unique_ptr<Formularzeitgeber> abfrage_;
    std::unique_ptr<Rueckgang> rueckgang_; // goes before what it leads
};
