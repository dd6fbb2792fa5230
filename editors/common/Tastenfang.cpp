// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Tastenfang.h"

#include "platform/Tastatur.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr const char* HIER_KLICKEN = "Hier Klicken";
constexpr const char* TAB = "Tab";
constexpr const char* BEDIENUNG =
    "Fängt die nächste Taste. Tab geht weiter, Strg+Tab fängt die Tabulatortaste.";

constexpr VirtuelleTaste TABULATOR = 9;
constexpr VirtuelleTaste UMSCHALT = 16;
constexpr VirtuelleTaste STRG = 17;
constexpr VirtuelleTaste ALT = 18;

struct Bedeutung {
    int taste; ///< Qt::Key
    VirtuelleTaste code;
};
constexpr Bedeutung BEDEUTUNGEN[] = {
    {Qt::Key_Cancel, 3},
    {Qt::Key_Backspace, 8},
    {Qt::Key_Tab, 9},
    {Qt::Key_Backtab, 9},
    {Qt::Key_Clear, 12},
    {Qt::Key_Return, 13},
    {Qt::Key_Enter, 13},
    {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},
    {Qt::Key_Alt, 18},
    {Qt::Key_AltGr, 18},
    {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},
    {Qt::Key_Escape, 27},
    {Qt::Key_Space, 32},
    {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},
    {Qt::Key_End, 35},
    {Qt::Key_Home, 36},
    {Qt::Key_Left, 37},
    {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},
    {Qt::Key_Down, 40},
    {Qt::Key_Select, 41},
    {Qt::Key_Printer, 42},
    {Qt::Key_Print, 44},
    {Qt::Key_SysReq, 44},
    {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46},
    {Qt::Key_Help, 47},
    {Qt::Key_Super_L, 91},
    {Qt::Key_Meta, 91},
    {Qt::Key_Super_R, 92},
    {Qt::Key_Menu, 93},
    {Qt::Key_Sleep, 95},
    {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145},
    {Qt::Key_Back, 166},
    {Qt::Key_Forward, 167},
    {Qt::Key_Refresh, 168},
    {Qt::Key_Stop, 169},
    {Qt::Key_Search, 170},
    {Qt::Key_Favorites, 171},
    {Qt::Key_HomePage, 172},
    {Qt::Key_VolumeMute, 173},
    {Qt::Key_VolumeDown, 174},
    {Qt::Key_VolumeUp, 175},
    {Qt::Key_MediaNext, 176},
    {Qt::Key_MediaPrevious, 177},
    {Qt::Key_MediaStop, 178},
    {Qt::Key_MediaPlay, 179},
    {Qt::Key_LaunchMail, 180},
    {Qt::Key_LaunchMedia, 181},
    {Qt::Key_Udiaeresis, 186},
    {Qt::Key_Plus, 187},
    {Qt::Key_Comma, 188},
    {Qt::Key_Minus, 189},
    {Qt::Key_Period, 190},
    {Qt::Key_NumberSign, 191},
    {Qt::Key_Odiaeresis, 192},
    {Qt::Key_ssharp, 219},
    {Qt::Key_AsciiCircum, 220},
    {Qt::Key_Dead_Circumflex, 220},
    {Qt::Key_acute, 221},
    {Qt::Key_Dead_Acute, 221},
    {Qt::Key_Adiaeresis, 222},
    {Qt::Key_Less, 226},
};
constexpr Bedeutung ZIFFERNBLOCK[] = {
    {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},   {Qt::Key_Minus, 109},
    {Qt::Key_Comma, 110},    {Qt::Key_Period, 110}, {Qt::Key_Slash, 111},
};

// Keys that follow one another as their codes do.
struct Reihe {
    int erste;
    int letzte;
    VirtuelleTaste code;
};
constexpr Reihe REIHEN[] = {
    {Qt::Key_0, Qt::Key_9, '0'}, {Qt::Key_A, Qt::Key_Z, 'A'}, {Qt::Key_F1, Qt::Key_F24, 112}};
constexpr Reihe ZIFFERNREIHE[] = {{Qt::Key_0, Qt::Key_9, 96}};

template <class Reihen, class Einzelne>
VirtuelleTaste nachschlagen(int taste, const Reihen& reihen, const Einzelne& einzelne) {
    for (const auto& reihe : reihen)
        if (taste >= reihe.erste && taste <= reihe.letzte)
            return static_cast<VirtuelleTaste>(reihe.code + (taste - reihe.erste));
    const auto stelle = std::ranges::find(einzelne, taste, &Bedeutung::taste);
    return stelle != std::end(einzelne) ? stelle->code : VirtuelleTaste{0};
}

VirtuelleTaste nachBedeutung(const QKeyEvent& ereignis) {
    if (ereignis.modifiers() & Qt::KeypadModifier)
        if (const auto code = nachschlagen(ereignis.key(), ZIFFERNREIHE, ZIFFERNBLOCK))
            return code;
    return nachschlagen(ereignis.key(), REIHEN, BEDEUTUNGEN);
}

bool istUmschalter(VirtuelleTaste taste) {
    return taste == UMSCHALT || taste == STRG || taste == ALT;
}

// A key moved the focus here, or the desktop's key for the next window did.
bool durchTaste(Qt::FocusReason grund) {
    return grund == Qt::TabFocusReason || grund == Qt::BacktabFocusReason ||
           grund == Qt::ShortcutFocusReason || grund == Qt::ActiveWindowFocusReason;
}

} // namespace

Tastenfang::Tastenfang(Tastatur& tastatur, QWidget* eltern)
    : QLineEdit(HIER_KLICKEN, eltern), tastatur_(tastatur) {
    setReadOnly(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleDescription(BEDIENUNG);
    // The menu key is a key like any other.
    setContextMenuPolicy(Qt::PreventContextMenu);
    setDragEnabled(false);
    setAlignment(Qt::AlignCenter);
}

void Tastenfang::einladen() {
    setText(HIER_KLICKEN);
}

VirtuelleTaste Tastenfang::code(const QKeyEvent& ereignis, Tastatur& tastatur) {
    return ereignis.nativeScanCode() != 0 ? tastatur.code(ereignis.nativeScanCode())
                                          : nachBedeutung(ereignis);
}

bool Tastenfang::event(QEvent* ereignis) {
    switch (ereignis->type()) {
    case QEvent::ShortcutOverride:
        ereignis->accept();
        return true;
    case QEvent::KeyPress:
        druecken(static_cast<const QKeyEvent&>(*ereignis));
        ereignis->accept();
        return true;
    case QEvent::KeyRelease:
        loesen(static_cast<const QKeyEvent&>(*ereignis));
        ereignis->accept();
        return true;
    case QEvent::InputMethodQuery: {
        // No input method takes part: it would keep dead keys to itself and wait for a letter.
        auto& frage = static_cast<QInputMethodQueryEvent&>(*ereignis);
        frage.setValue(Qt::ImEnabled, false);
        frage.accept();
        return true;
    }
    default:
        return QLineEdit::event(ereignis);
    }
}

// Without a click that asked for it the tabulator moves on, or nobody who only has a keyboard would get past.
bool Tastenfang::gehtWeiter(const QKeyEvent& ereignis) const {
    if (code(ereignis, tastatur_) != TABULATOR)
        return false;
    return ereignis.isAutoRepeat()
               ? !tabGefangen_
               : !wartet_ && !(ereignis.modifiers() & (Qt::ControlModifier | Qt::AltModifier));
}

void Tastenfang::weitergehen(const QKeyEvent& ereignis) {
    const bool zurueck =
        ereignis.key() == Qt::Key_Backtab || ereignis.modifiers().testFlag(Qt::ShiftModifier);
    focusNextPrevChild(!zurueck);
}

void Tastenfang::druecken(const QKeyEvent& ereignis) {
    if (gehtWeiter(ereignis))
        return weitergehen(ereignis);
    if (ereignis.isAutoRepeat())
        return;
    fremdeTaste_ = false;
    const auto taste = code(ereignis, tastatur_);
    if (taste == 0)
        return;
    const bool erwartet = wartet_;
    wartet_ = wartet_ && istUmschalter(taste); // which goes before the key that is meant
    tabGefangen_ = taste == TABULATOR;
    if (tabGefangen_ && ereignis.modifiers().testFlag(Qt::ControlModifier)) {
        aufgeschoben_ = 0;
        verbraucht_ = STRG;
    }
    aufgeschobeneMelden();
    if (!erwartet && (taste == UMSCHALT || taste == STRG))
        aufgeschoben_ = taste;
    else
        emit tasteGedrueckt(taste);
}

void Tastenfang::loesen(const QKeyEvent& ereignis) {
    if (ereignis.isAutoRepeat() || fremdeTaste_)
        return;
    const auto taste = code(ereignis, tastatur_);
    if (taste == 0)
        return;
    if (taste == TABULATOR)
        tabGefangen_ = false;
    if (taste == verbraucht_) {
        verbraucht_ = 0;
        return;
    }
    aufgeschobeneMelden();
    emit tasteGeloest(taste);
}

void Tastenfang::aufgeschobeneMelden() {
    if (const auto taste = std::exchange(aufgeschoben_, VirtuelleTaste{0}))
        emit tasteGedrueckt(taste);
}

void Tastenfang::mouseReleaseEvent(QMouseEvent* ereignis) {
    const bool klick = ereignis->button() == Qt::LeftButton && rect().contains(ereignis->pos());
    if (klick && text() == HIER_KLICKEN)
        setText(TAB);
    wartet_ |= klick;
    deselect();
}

void Tastenfang::mouseDoubleClickEvent(QMouseEvent* ereignis) {
    if (ereignis->button() == Qt::LeftButton && text() == TAB)
        emit tabBestaetigt();
}

void Tastenfang::focusInEvent(QFocusEvent* ereignis) {
    fremdeTaste_ = durchTaste(ereignis->reason());
    wartet_ = ereignis->reason() == Qt::MouseFocusReason;
    QLineEdit::focusInEvent(ereignis);
}

void Tastenfang::focusOutEvent(QFocusEvent* ereignis) {
    einladen();
    wartet_ = tabGefangen_ = false;
    aufgeschoben_ = verbraucht_ = 0;
    QLineEdit::focusOutEvent(ereignis);
}
