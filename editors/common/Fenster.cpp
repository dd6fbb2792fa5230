// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Fenster.h"

#include "editors/common/Fensterplatz.h"
#include "editors/common/Rollbereich.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace {

/// A title bar and a panel.
constexpr QMargins RESERVE{8, 40, 8, 40};

bool unterWayland() {
    return QGuiApplication::platformName().startsWith("wayland");
}

bool stehtDa(const QWidget& form) {
    return form.isVisible() && !form.isMinimized() && form.windowType() == Qt::Window &&
           form.windowHandle() && form.windowHandle()->isExposed();
}

std::vector<const QWidget*> dastehende() {
    std::vector<const QWidget*> alle;
    for (const auto* form : QApplication::topLevelWidgets())
        if (stehtDa(*form))
            alle.push_back(form);
    return alle;
}

const QWidget* oeffnendes(const QWidget& form) {
    const auto* aktiv = QApplication::activeWindow();
    if (aktiv && aktiv != &form && stehtDa(*aktiv))
        return aktiv;
    const auto alle = dastehende();
    return alle.empty() ? nullptr : alle.front();
}

// Where a pixel of a form is not a whole number of the screen's, each rounding may take one.
int rundung(const QScreen& schirm) {
    const double dichte = schirm.devicePixelRatio();
    return dichte == static_cast<int>(dichte) ? 0 : 1;
}

QRect freieFlaeche(const QScreen& schirm) {
    const int rest = rundung(schirm);
    return schirm.availableGeometry().adjusted(0, 0, -rest, -rest);
}

/// A form with its frame; one that isn't shown yet has its size, but no frame of its own.
QRect mitRahmen(const QWidget& form) {
    return form.geometry().marginsAdded(fensterrahmen(form));
}

/// Makes a form smaller that is larger than `platz`.
void einpassen(QWidget& form, QSize platz) {
    if (&forminhalt(form) != &form)
        return rollhoeheSetzen(form, platz.height());
    const auto noetig = form.minimumSize().expandedTo(form.minimumSizeHint());
    const bool zuGross = noetig.width() > platz.width() || noetig.height() > platz.height();
    if (zuGross && form.layout())
        rollbarMachen(form, platz);
    else
        form.resize(form.size().boundedTo(platz));
}

/// Moves a form wholly onto the screen.
void verschieben(QWidget& form) {
    const auto ort = hereingeholt(freieFlaeche(*form.screen()), form.frameGeometry());
    if (!unterWayland() && ort != form.frameGeometry().topLeft())
        form.move(ort);
}

/// Waits until the form stands on the screen with its frame, and sees then whether that fits, once.
class Nachmessung final : public QObject {
public:
    explicit Nachmessung(QWidget& form) : QObject(&form), form_(form), groesse_(form.size()) {
        form.installEventFilter(this);
    }

    bool eventFilter(QObject* objekt, QEvent* ereignis) override {
        if (objekt == &form_ && ereignis->type() == QEvent::Show)
            form_.windowHandle()->installEventFilter(this);
        else if (objekt == form_.windowHandle() && ereignis->type() == QEvent::Expose &&
                 form_.windowHandle()->isExposed())
            messen();
        return false;
    }

private:
    // After the events of the exposure: a form may have its own thing to do then.
    void messen() {
        form_.removeEventFilter(this);
        form_.windowHandle()->removeEventFilter(this);
        const auto nachmessen = [this] {
            if (gleichGross(form_.size(), groesse_)) // as nobody has made it larger or smaller
                einpassen(form_, fensterplatz(form_));
            verschieben(form_);
            deleteLater();
        };
        QMetaObject::invokeMethod(this, nachmessen, Qt::QueuedConnection);
    }

    QWidget& form_;
    const QSize groesse_;
};

} // namespace

QMargins fensterrahmen(const QWidget& form) {
    const auto alle = stehtDa(form) ? std::vector{&form} : dastehende();
    if (unterWayland() || alle.empty())
        return RESERVE;
    QMargins breitester;
    for (const auto* eine : alle)
        breitester = breitester | eine->windowHandle()->frameMargins();
    const int rest = rundung(*form.screen());
    return breitester + QMargins(0, 0, rest, rest);
}

QSize fensterplatz(const QWidget& form) {
    return freieFlaeche(*form.screen()).marginsRemoved(fensterrahmen(form)).size();
}

void danebenStellen(QWidget& form, const QWidget* oeffner, const QWidget* weichend) {
    if (!oeffner)
        oeffner = oeffnendes(form);
    if (!form.testAttribute(Qt::WA_Resized))
        form.adjustSize(); // as it comes when it is shown
    if (oeffner) {
        form.setScreen(oeffner->screen());
        einpassen(form, fensterplatz(form));
    }
    new Nachmessung(form);
    if (unterWayland())
        return;
    const auto frei = freieFlaeche(*form.screen());
    std::vector<QRect> andere;
    for (const auto* eine : dastehende())
        if (eine != &form && eine != oeffner && eine != weichend)
            andere.push_back(eine->frameGeometry());
    const bool daneben = oeffner && oeffner != weichend;
    form.move(fensterplatz(frei, mitRahmen(form).size(),
                           daneben ? oeffner->frameGeometry() : QRect(frei.topLeft(), QSize(0, 0)), andere));
}

void hereinholen(QWidget& form) {
    einpassen(form, fensterplatz(form));
    verschieben(form);
}

void nachVorn(QWidget& form, const QWidget* weichend) {
    if (!form.windowHandle() && !form.testAttribute(Qt::WA_Moved))
        danebenStellen(form, weichend, weichend);
    form.setWindowState(form.windowState() & ~Qt::WindowMinimized);
    form.show();
    form.raise();
    form.activateWindow();
}

void SpaeterLoeschen::operator()(QWidget* form) const {
    form->disconnect();
    form->close();
    form->deleteLater();
}
