// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/overview/Infoansicht.h"

#include "editors/buttons/frmJoyKonfic.h"
#include "editors/stick/Justiereigenart.h"
#include "editors/stick/frmJust.h"
#include "store/schema/UebersichtAktion.h"
#include "store/schema/modLesen.h"

#include <algorithm>
#include <utility>
#include <vector>

Infoansicht::Infoansicht(const GobalVariable& global, const std::string& gamepadXml, Joystick& joystick,
                         Laufsteuerung& laufsteuerung, Zeitgeber& zeitgeber, Tastatur& tastatur)
    : global_(global)
    , joystick_(joystick)
    , laufsteuerung_(laufsteuerung)
    , zeitgeber_(zeitgeber)
    , tastatur_(tastatur)
    , zustand_(joystick, gamepadXml) {}

Infoansicht::~Infoansicht() {
    for (auto& [editor, gezeigt] : gezeigt_)
        delete gezeigt.form.release(); // its timers must not outlive the clock
}

InfoEditor Infoansicht::editorVon(int index) {
    if (istTastenebene(index))
        return InfoEditor::frmJoyKonfic;
    return index < EBENEN ? InfoEditor::frmJust : InfoEditor::frmJustr;
}

void Infoansicht::zeigen(int index, const std::string& schemaName, const QWidget& neben) {
    const auto editor = editorVon(index);
    zustandSetzen(editor, schemaName);
    gezeigt_.erase(editor);
    if (editor == InfoEditor::frmJoyKonfic)
        tastenZeigen(index % EBENEN, neben);
    else
        stickZeigen(editor, index % EBENEN, neben);
}

void Infoansicht::zustandSetzen(InfoEditor editor, const std::string& schemaName) {
    const auto namen = SchemataLesen(global_.DatenbankPfad).SchemaNamen;
    const auto gibtEs = [&](const std::string& name) {
        return !name.empty() && std::ranges::find(namen, name) != namen.end();
    };
    if (!gibtEs(schemaName))
        throw LaufzeitFehler(Fehlernummer::KeinAktuellerSatz, "Das Schema „" + schemaName +
                                                                  "“ gibt es in der Datenbank „" +
                                                                  global_.DatenbankPfad + "“ nicht.");
    auto& eigene = zustand_.global;
    eigene.DatenbankPfad = global_.DatenbankPfad;
    eigene.BilderPfad = global_.BilderPfad;
    eigene.SchemaName = schemaName;
    eigene.Schemaauswahl = global_.Schemaauswahl;
    if (editor != InfoEditor::frmJoyKonfic)
        eigene.ZielFormular = editor == InfoEditor::frmJust ? "frmJust" : "frmJustr";
    if (gibtEs(eigene.Schemaauswahl)) // a name that is being typed must not get a row
        zustand_.achsendatei.AchsenLaden();
}

void Infoansicht::stickZeigen(InfoEditor editor, int ebene, const QWidget& neben) {
    const auto seite = editor == InfoEditor::frmJust ? Stickseite::Links : Stickseite::Rechts;
    auto* form = new frmJust(justiereigenart(seite), zustand_, laufsteuerung_, zeitgeber_, tastatur_);
    Formbesitz<QWidget> besitz(form);
    form->laden();
    connect(form, &frmJust::geschlossen, this, [this, editor] { entladen(editor); });
    hinstellen(editor, std::move(besitz), neben);
    form->ebeneWaehlen(ebene);
}

void Infoansicht::tastenZeigen(int ebene, const QWidget& neben) {
    auto* form = new frmJoyKonfic(zustand_.global, joystick_, zeitgeber_, tastatur_, entwuerfe_);
    Formbesitz<QWidget> besitz(form);
    form->laden();
    connect(form, &frmJoyKonfic::geschlossen, this, [this] { entladen(InfoEditor::frmJoyKonfic); });
    hinstellen(InfoEditor::frmJoyKonfic, std::move(besitz), neben);
    if (ebene > 0)
        form->Command1_Click(ebene);
}

void Infoansicht::hinstellen(InfoEditor editor, Formbesitz<QWidget> form, const QWidget& neben) {
    danebenStellen(*form, &neben);
    form->setEnabled(false);
    form->setAttribute(Qt::WA_ShowWithoutActivating);
    form->show();
    gezeigt_[editor] = {std::move(form), zustand_.global.SchemaName};
}

void Infoansicht::entladen(InfoEditor editor) {
    if (gezeigt_.erase(editor) > 0 && gezeigt_.empty())
        emit leer();
}

void Infoansicht::alleEntladen() {
    for (const auto editor : {InfoEditor::frmJust, InfoEditor::frmJustr, InfoEditor::frmJoyKonfic})
        entladen(editor);
}

void Infoansicht::schemaVergessen(const std::string& name) {
    for (const auto editor : {InfoEditor::frmJust, InfoEditor::frmJustr, InfoEditor::frmJoyKonfic})
        if (const auto stelle = gezeigt_.find(editor);
            stelle != gezeigt_.end() && stelle->second.schemaName == name)
            entladen(editor);
}
