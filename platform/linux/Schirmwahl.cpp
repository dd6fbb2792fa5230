// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Schirmwahl.h"

#include "platform/linux/Portalaufnahme.h"
#include "platform/linux/Qtaufnahme.h"

#include <QDBusConnection>
#include <QGuiApplication>

namespace {

class KeineAufnahme final : public Schirmaufnahme {
public:
    void aufnehmen(Empfaenger empfaenger) override { empfaenger({}); }
};

} // namespace

std::unique_ptr<Schirmaufnahme> schirmaufnahmeWaehlen() {
    // An X11 program in a Wayland session sees the windows of other X11 programs at best.
    const bool wayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (wayland && QDBusConnection::sessionBus().isConnected())
        return std::make_unique<Portalaufnahme>(QDBusConnection::sessionBus());
    if (QGuiApplication::platformName() == "xcb")
        return std::make_unique<Qtaufnahme>();
    return std::make_unique<KeineAufnahme>();
}
