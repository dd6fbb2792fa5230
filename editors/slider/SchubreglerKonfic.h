// SPDX-License-Identifier: GPL-3.0-or-later
// The slider editor: cuts a slider into equal fields and gives each of them an action.
//
// It works on fields of its own and writes nothing before "Schema speichern", which stores the slider text of
// `Schubregler 1` for the `Schema` that the main form shows then; if that is not the one it was opened for,
// the user is asked first. The fields of `Schubregler 2` have no place in that text: they last as long as the
// form.
#pragma once

#include "formats/Schubtext.h"
#include "platform/Zeitgeber.h"

#include <QWidget>

#include <array>
#include <functional>
#include <memory>
#include <string>

class Achsen;
class Achsendatei;
class QCheckBox;
class QLabel;
class QListWidget;
class QRadioButton;
class Schubaktionsrahmen;
class Schubbild;
class Tastatur;
struct GobalVariable;

class SchubreglerKonfic final : public QWidget {
    Q_OBJECT

public:
    /// Reads the slider text of the `Schema`. One that is ill-formed is told of once the event loop runs, and
    /// counts as none.
    SchubreglerKonfic(const GobalVariable& global, Achsendatei& achsendatei, Achsen& achsen,
                      Zeitgeber& zeitgeber, Tastatur& tastatur);

protected:
    void closeEvent(QCloseEvent* ereignis) override;

private:
    static constexpr int REGLER = 2;

    // layout, top to bottom
    QWidget* reglerzeile();
    QWidget* feldbereich();
    QWidget* listenspalte();
    QWidget* fusszeile();

    // what the controls do
    void laden();
    void Option3_Click(int index);
    void Command1_Click(int index);
    void Timer1_Timer();
    void List1_Click();
    void Command2_Click();
    void Command3_Click();

    // the steps that they share
    Schubtext& regler() { return regler_[static_cast<std::size_t>(gewaehlt_)]; }
    void felderZeigen();
    int gewaehltesFeld() const;

    Achsendatei& achsendatei_;
    Achsen& achsen_;
    const std::string schema_; ///< whose values were loaded

    std::array<Schubtext, REGLER> regler_;
    int gewaehlt_ = 0; // whose fields the form shows

    std::array<QRadioButton*, REGLER> reglerwahl_{};
    QLabel* hinweis_ = nullptr;
    Schubbild* bild_ = nullptr;
    QLabel* aktuellesFeld_ = nullptr;
    QListWidget* felder_ = nullptr;
    Schubaktionsrahmen* aktionsrahmen_;
    QCheckBox* nurAuswaerts_ = nullptr;
    std::unique_ptr<Formularzeitgeber> abfrage_;
};
