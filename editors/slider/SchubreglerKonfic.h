// SPDX-License-Identifier: GPL-3.0-or-later
// The slider editor: cuts a slider into equal fields and gives each of them an action.
//
// It works on fields of its own and writes nothing before "Schema speichern", which stores the slider text of
// `Schubregler 1` for the `Schema` that the main form shows then; if that is not the one it was opened for,
// the user is asked first. Closing asks nothing, and keeps what is not saved for the next time that the form
// is opened for its `Schema`. The fields of `Schubregler 2` have no place in the slider text: they last as
// long as the form, or are kept so.
#pragma once

#include "editors/common/Entwuerfe.h"
#include "editors/common/Entwurfsfolge.h"
#include "editors/common/Rueckgang.h"
#include "editors/slider/Schubentwurf.h"
#include "editors/slider/Schubschritt.h"
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
class QPushButton;
class QRadioButton;
class Schubaktionsrahmen;
class Schubbild;
class Speicherstand;
class Tastatur;
struct GobalVariable;

class SchubreglerKonfic final : public QWidget {
    Q_OBJECT

public:
    /// Reads the slider text of the `Schema`. One that is ill-formed is told of once the event loop runs, and
    /// counts as none.
    SchubreglerKonfic(const GobalVariable& global, Achsendatei& achsendatei, Achsen& achsen,
                      Zeitgeber& zeitgeber, Tastatur& tastatur, Entwuerfe<Schubentwurf>& entwuerfe);
    ~SchubreglerKonfic() override;

    const std::string& geladenesSchema() const { return schema_; }
    /// Its `Schema` is gone: what is not saved is not kept any more.
    void schemaVergessen() { verwaist_ = true; }
    /// Its `Schema` has another name now.
    void schemaUmbenannt(const std::string& neu) { schema_ = neu; }

signals:
    /// "Schema speichern" has saved; the form closes.
    void gespeichert();

protected:
    void closeEvent(QCloseEvent* ereignis) override;

private:
    static constexpr int REGLER = 2;

    // layout, top to bottom
    QWidget* reglerzeile();
    QWidget* feldzeile();
    QWidget* feldbereich();
    QWidget* listenspalte();
    QPushButton* speicherknopf();
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
    std::array<std::string, REGLER> texte() const;
    bool ungespeichert() const;
    void standZeigen();
    void eineTat(const std::function<void()>& tat);
    Schubentwurf entwurf() const;
    void zeigen(const Schubentwurf& entwurf);
    void wiederherstellen();
    Rueckgang::Dienst rueckgangsdienst();
    QString schritt(Richtung richtung) const;
    void gehen(Richtung richtung);

    Achsendatei& achsendatei_;
    Achsen& achsen_;
    Entwuerfe<Schubentwurf>& entwuerfe_;
    std::string schema_;    ///< whose values were loaded
    bool verwaist_ = false; ///< that one was deleted

    std::array<Schubtext, REGLER> regler_;
    int gewaehlt_ = 0;                             // whose fields the form shows
    std::array<std::string, REGLER> gespeicherte_; // texts of the sliders as they were loaded
    Schubrahmenstand gezeigter_;                   // the frame before somebody changed it
    Entwurfsfolge<Schubinhalt> folge_;
    int taten_ = 0; // what the user does is under way

    std::array<QRadioButton*, REGLER> reglerwahl_{};
    QLabel* hinweis_ = nullptr;
    QPushButton* speichern_;
    Speicherstand* speicherstand_;
    Schubbild* bild_ = nullptr;
    QLabel* aktuellesFeld_ = nullptr;
    QListWidget* felder_ = nullptr;
    Schubaktionsrahmen* aktionsrahmen_;
    QCheckBox* nurAuswaerts_ = nullptr;
    std::unique_ptr<Formularzeitgeber> abfrage_;
    std::unique_ptr<Rueckgang> rueckgang_; // goes before what it leads
};
