#include "editors/Stickeditoren.h"

#include "editors/Formhilfen.h"
#include "editors/frmJust.h"
#include "store/LaufzeitFehler.h"

#include <utility>

Stickeditoren::Stickeditoren(Laufzustand& zustand, Laufsteuerung& laufsteuerung, Zeitgeber& zeitgeber,
                             Tastatur& tastatur)
    : zustand_(zustand), laufsteuerung_(laufsteuerung), zeitgeber_(zeitgeber), tastatur_(tastatur) {}

Stickeditoren::~Stickeditoren() = default;

void Stickeditoren::DannLoeschen::operator()(frmJust* form) const {
    // The window goes later, as its own close event may be what brought us here; its timers stop at once.
    form->disconnect();
    form->entladen();
    form->hide();
    form->deleteLater();
}

void Stickeditoren::oeffnen(Stickseite seite) {
    zustand_.global.ZielFormular = justiereigenart(seite).formname;
    auto& form = offen_[seite];
    if (!form || form->geladenesSchema() != zustand_.global.SchemaName) {
        const auto alt = form ? form->saveGeometry() : QByteArray();
        form.reset();
        auto neu = laden(seite);
        if (!neu)
            return;
        if (!alt.isEmpty())
            neu->restoreGeometry(alt);
        offen_[seite] = std::move(neu);
    }
    auto& offene = *offen_[seite];
    offene.show();
    offene.raise();
    offene.activateWindow();
}

void Stickeditoren::schemaVergessen(const std::string& name) {
    for (auto& [seite, form] : offen_)
        if (form && form->geladenesSchema() == name)
            form.reset();
}

Stickeditoren::Form Stickeditoren::laden(Stickseite seite) {
    Form form(new frmJust(justiereigenart(seite), zustand_, laufsteuerung_, zeitgeber_, tastatur_));
    connect(form.get(), &frmJust::hauptformVerbergen, this, &Stickeditoren::hauptformVerbergen);
    connect(form.get(), &frmJust::geschlossen, this, [this, seite] { schliessen(seite); });
    try {
        form->laden();
    } catch (const LaufzeitFehler& fehler) {
        form.reset();
        fehlermeldung(nullptr, fehler, "Stick justieren");
    }
    return form;
}

void Stickeditoren::schliessen(Stickseite seite) {
    offen_[seite].reset();
    emit hauptformZurueck();
}
