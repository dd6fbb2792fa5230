// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/run/Tastenankunft.h"

#include "editors/common/Boxmass.h"
#include "editors/common/Formhilfen.h"
#include "editors/common/Hilfe.h"
#include "editors/common/Hilfekapitel.h"
#include "platform/Eingabeweg.h"

#include <QPushButton>

namespace {

// What the package lays and does; an empty line between, as both wrap in the box. Loaded first, as a rule
// works on a device that is there; "change" lets it work on one that was there before it, and who sits at the
// machine has the right at once.
constexpr const char* ABHILFE =
    "echo 'KERNEL==\"uinput\", SUBSYSTEM==\"misc\", OPTIONS+=\"static_node=uinput\", TAG+=\"uaccess\"' | "
    "sudo tee /etc/udev/rules.d/70-gamepad-konfic.rules\n\n"
    "sudo modprobe uinput; sudo udevadm control --reload; "
    "sudo udevadm trigger --action=change --sysname-match=uinput";

QString lagetext(const Eingabelage& lage) {
    QString text = lage.reichweite == Reichweite::Keine
                       ? "Es können keine Tasten und keine Mausbewegungen gesendet werden.\n"
                       : "Unter Wayland kommen Tasten und Mausbewegungen so nur in Programmen an, die noch "
                         "für X11 gemacht sind.\n";
    for (const auto& grund : lage.gruende)
        text += "\n" + qt(grund);
    return text +
           "\n\nMit diesen zwei Zeilen in einem Terminal kommen sie überall an, ohne neue Anmeldung:\n\n" +
           ABHILFE + "\n\nDrücken Sie danach „Schema starten“.";
}

} // namespace

Tastenankunft::Tastenankunft(Eingabeweg& weg, Hilfe& hilfe) : weg_(weg), hilfe_(hilfe) {}

void Tastenankunft::pruefen() {
    const auto lage = weg_.pruefen();
    if (lage.reichweite == Reichweite::Alle)
        return;
    QMessageBox box(QMessageBox::Warning, "Game-Pad-Konfic", lagetext(lage),
                    QMessageBox::Ok | QMessageBox::Help);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.setDefaultButton(QMessageBox::Ok);
    box.setEscapeButton(QMessageBox::Ok);
    auto* hilfe = box.button(QMessageBox::Help);
    hilfe->setText("&Hilfe");
    // The lines stay in sight while the page is read.
    QObject::disconnect(hilfe, &QPushButton::clicked, nullptr, nullptr);
    QObject::connect(hilfe, &QPushButton::clicked, &box,
                     [this, &box] { hilfe_.kapitelOeffnen(&box, KAPITEL_TASTENANKUNFT); });
    aufDemSchirmHalten(box);
    box.exec();
}
