// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/stick/Stickeditoren.h"

#include "base/LaufzeitFehler.h"
#include "editors/common/Formhilfen.h"
#include "editors/stick/frmJust.h"

#include <utility>

Stickeditoren::Stickeditoren(Laufzustand& zustand, Laufsteuerung& laufsteuerung, Tastatur& tastatur,
                             const Schirmgeraete& geraete)
    : zustand_(zustand), laufsteuerung_(laufsteuerung), tastatur_(tastatur), geraete_(geraete) {}

Stickeditoren::~Stickeditoren() = default;

void Stickeditoren::oeffnen(Stickseite seite) {
    const auto& art = justiereigenart(seite);
    zustand_.global.ZielFormular = art.formname;
    auto& form = offen_[seite];
    if (!form || form->geladenesSchema() != zustand_.global.SchemaName) {
        auto neu = laden(seite); // one that can't be loaded leaves the open one, and what is unsaved there
        if (!neu)
            return;
        if (form)
            neu->restoreGeometry(form->saveGeometry());
        form = std::move(neu);
        zustand_.global.OffenerEditor = art.OffenerEditor; // which the one that went has cleared
    }
    auto& offene = *offen_[seite];
    offene.setEnabled(true); // the form of the pictures may have it hidden
    nachVorn(offene);
}

void Stickeditoren::schemaVergessen(const std::string& name) {
    for (auto& [seite, form] : offen_)
        if (form && form->geladenesSchema() == name)
            form.reset();
    if (screenChecken_ && screenChecken_->schema() == name)
        hintergrundSchliessen();
}

void Stickeditoren::schemaUmbenannt(const std::string& alt, const std::string& neu) {
    for (auto& [seite, form] : offen_)
        if (form && form->geladenesSchema() == alt)
            form->schemaUmbenannt(neu);
}

bool Stickeditoren::machtBilderVon(const std::string& name) const {
    return screenChecken_ && screenChecken_->schema() == name;
}

Formbesitz<frmJust> Stickeditoren::laden(Stickseite seite) {
    Formbesitz<frmJust> form(
        new frmJust(justiereigenart(seite), zustand_, laufsteuerung_, geraete_.zeitgeber, tastatur_));
    connect(form.get(), &frmJust::hauptformVerbergen, this, &Stickeditoren::hauptformVerbergen);
    connect(form.get(), &frmJust::hintergrundGewuenscht, this,
            [this, von = form.get()] { hintergrundOeffnen(*von); });
    connect(form.get(), &frmJust::geschlossen, this, [this, seite] { schliessen(seite); });
    mitFehlermeldung(
        nullptr, "Stick justieren", [&] { form->laden(); }, [&](const LaufzeitFehler&) { form.reset(); });
    return form;
}

void Stickeditoren::schliessen(Stickseite seite) {
    offen_[seite].reset();
    emit hauptformZurueck();
}

void Stickeditoren::hintergrundOeffnen(const frmJust& von) {
    if (!screenChecken_ || screenChecken_->schema() != von.geladenesSchema()) {
        screenChecken_.reset();
        screenChecken_.reset(new ScreenChecken(zustand_.global.BilderPfad, von.geladenesSchema(), geraete_));
        connect(screenChecken_.get(), &ScreenChecken::geschlossen, this,
                &Stickeditoren::hintergrundSchliessen);
    }
    nachVorn(*screenChecken_, &von);
}

// The editor that `OffenerEditor` names comes back. It names the one that was opened last and forgets it when
// the left one is closed, so that it may miss the one that went out of sight: that comes back, too, as
// nothing else would bring it.
void Stickeditoren::hintergrundSchliessen() {
    screenChecken_.reset();
    for (auto& [seite, form] : offen_)
        if (form &&
            (!form->isEnabled() || justiereigenart(seite).OffenerEditor == zustand_.global.OffenerEditor))
            form->hintergrundGeaendert();
}
