// SPDX-License-Identifier: GPL-3.0-or-later
//
// The fault is Qt's, as two bare QWidgets and XTest show (Qt 6.4.2, under valgrind; no number of a report is
// known). QXcbWindow::handleButtonPressEvent keeps the window in QXcbConnection::m_mousePressWindow;
// QXcbWindow::hide of that window and ~QXcbForeignWindow clear it, QXcbWindow::destroy does not:
//
//     XTest: press over A;  A.hide();  events;  delete A;  B.show();  B.hide()
//
//     Invalid read of size 8, 24 bytes inside a block of size 208 free'd by QWindowPrivate::destroy
//         QPlatformWindow::parent <- QXcbWindow::hide <- QWindowPrivate::setVisible <-
//         QWidgetPrivate::hide_helper
#include "app/Geisterklicks.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <optional>
#include <xcb/xinput.h>

namespace {

constexpr std::uint8_t ART_DES_EREIGNISSES = 0x7f; // the highest bit marks one that a client has sent

// The window of a press: Qt asks for presses by XInput 2, and falls back on those of the core protocol.
std::optional<xcb_window_t> gedruecktesFenster(const xcb_generic_event_t& ereignis) {
    switch (ereignis.response_type & ART_DES_EREIGNISSES) {
    case XCB_BUTTON_PRESS:
        return reinterpret_cast<const xcb_button_press_event_t&>(ereignis).event;
    case XCB_GE_GENERIC:
        if (reinterpret_cast<const xcb_ge_generic_event_t&>(ereignis).event_type == XCB_INPUT_BUTTON_PRESS)
            return reinterpret_cast<const xcb_input_button_press_event_t&>(ereignis).event;
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

bool verborgen(xcb_window_t kennung) {
    const auto fenster = QGuiApplication::allWindows();
    return std::ranges::any_of(fenster, [kennung](const QWindow* eines) {
        return eines->handle() && eines->winId() == kennung && !eines->isVisible();
    });
}

} // namespace

bool Geisterklicks::nativeEventFilter(const QByteArray& art, void* ereignis, qintptr*) {
    if (art != "xcb_generic_event_t")
        return false;
    const auto fenster = gedruecktesFenster(*static_cast<const xcb_generic_event_t*>(ereignis));
    return fenster && verborgen(*fenster);
}
