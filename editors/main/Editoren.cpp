#include "editors/main/Editoren.h"

#include "base/LaufzeitFehler.h"
#include "editors/axes/AchzenKalib.h"
#include "editors/buttons/frmJoyKonfic.h"
#include "editors/common/Formhilfen.h"
#include "editors/slider/SchubreglerKonfic.h"

Editoren::Editoren(GobalVariable& global, ZusatzFunktionen& achsen, Joystick& joystick, Zeitgeber& zeitgeber,
                   Tastatur& tastatur)
    : global_(global), achsen_(achsen), joystick_(joystick), zeitgeber_(zeitgeber), tastatur_(tastatur) {}

Editoren::~Editoren() {
    delete tastwerk_.release(); // its timer must not outlive the clock
}

void Editoren::SpaeterLoeschen::operator()(frmJoyKonfic* form) const {
    // Its own close event may be what brought us here.
    form->disconnect();
    form->close();
    form->deleteLater();
}

void Editoren::tastwerkZeigen() {
    if (!tastwerk_) {
        std::unique_ptr<frmJoyKonfic, SpaeterLoeschen> neues(
            new frmJoyKonfic(global_, joystick_, zeitgeber_, tastatur_));
        try {
            neues->laden();
        } catch (const LaufzeitFehler& fehler) {
            neues.reset();
            fehlermeldung(nullptr, fehler, "Button bearbeiten");
            return;
        }
        connect(neues.get(), &frmJoyKonfic::geschlossen, this, &Editoren::tastwerkEntladen);
        tastwerk_ = std::move(neues);
    }
    tastwerk_->setWindowState(tastwerk_->windowState() & ~Qt::WindowMinimized);
    tastwerk_->show();
    tastwerk_->raise();
    tastwerk_->activateWindow();
}

void Editoren::tastwerkEntladen() {
    tastwerk_.reset();
}

void Editoren::schemaVergessen(const std::string& name) {
    if (tastwerk_ && tastwerk_->geladenesSchema() == name)
        tastwerkEntladen();
}

void Editoren::achsenZeigen() {
    achzenKalib_.zeigen([this] { return std::make_unique<AchzenKalib>(achsen_, joystick_, zeitgeber_); });
}

void Editoren::schubreglerZeigen() {
    schubreglerKonfic_.zeigen(
        [this] { return std::make_unique<SchubreglerKonfic>(global_, achsen_, zeitgeber_, tastatur_); });
}
