// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/main/Editoren.h"

#include "base/LaufzeitFehler.h"
#include "editors/axes/AchzenKalib.h"
#include "editors/buttons/frmJoyKonfic.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Speicherstand.h"
#include "editors/slider/SchubreglerKonfic.h"

Editoren::Editoren(GobalVariable& global, Achsendatei& achsendatei, Achsen& achsen, Joystick& joystick,
                   Zeitgeber& zeitgeber, Tastatur& tastatur)
    : global_(global)
    , achsendatei_(achsendatei)
    , achsen_(achsen)
    , joystick_(joystick)
    , zeitgeber_(zeitgeber)
    , tastatur_(tastatur) {}

Editoren::~Editoren() = default;

void Editoren::tastwerkZeigen() {
    tastwerk_.zeigen([this] {
        auto neues =
            std::make_unique<frmJoyKonfic>(global_, joystick_, zeitgeber_, tastatur_, tastenentwuerfe_);
        mitFehlermeldung(
            nullptr, "Button bearbeiten", [&] { neues->laden(); },
            [&](const LaufzeitFehler&) { neues.reset(); });
        return neues;
    });
}

void Editoren::tastwerkEntladen() {
    tastwerk_.schliessen();
}

void Editoren::schemaVergessen(const std::string& name) {
    if (const auto* form = tastwerk_.offene(); form && form->geladenesSchema() == name)
        tastwerkEntladen();
    if (auto* form = schubreglerKonfic_.offene(); form && form->geladenesSchema() == name)
        form->schemaVergessen();
    tastenentwuerfe_.vergessen(name);
    schubentwuerfe_.vergessen(name);
}

void Editoren::schemaUmbenannt(const std::string& alt, const std::string& neu) {
    const auto folgen = [&](auto* form) {
        if (form && form->geladenesSchema() == alt)
            form->schemaUmbenannt(neu);
    };
    folgen(tastwerk_.offene());
    folgen(schubreglerKonfic_.offene());
    folgen(achzenKalib_.offene());
    tastenentwuerfe_.umbenennen(alt, neu);
    schubentwuerfe_.umbenennen(alt, neu);
}

QStringList Editoren::ungespeicherte(const std::string& name) const {
    QStringList titel;
    const auto fragen = [&](const auto* form) {
        if (form && form->geladenesSchema() == name && form->isWindowModified())
            titel << formtitel(*form);
    };
    fragen(tastwerk_.offene());
    fragen(schubreglerKonfic_.offene());
    return titel;
}

void Editoren::achsenZeigen() {
    achzenKalib_.zeigen(
        [this] { return std::make_unique<AchzenKalib>(achsendatei_, joystick_, zeitgeber_); });
}

void Editoren::schubreglerZeigen() {
    schubreglerKonfic_.zeigen([this] {
        auto neue = std::make_unique<SchubreglerKonfic>(global_, achsendatei_, achsen_, zeitgeber_, tastatur_,
                                                        schubentwuerfe_);
        connect(neue.get(), &SchubreglerKonfic::gespeichert, this, &Editoren::gespeichert);
        return neue;
    });
}
