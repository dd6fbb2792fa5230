// SPDX-License-Identifier: GPL-3.0-or-later
// The palettes in which forms are looked at.
#pragma once

#include <QApplication>
#include <QColor>
#include <QPalette>

#include <vector>

struct Welt {
    const char* name;
    QPalette palette;
};

/// A palette as desktops make it: of the ground of windows, of fields and of buttons, and what is chosen.
inline QPalette palette(const QColor& fenster, const QColor& feld, const QColor& schrift, const QColor& knopf,
                        const QColor& betont, const QColor& aufBetont, const QColor& gesperrt) {
    QPalette neue(schrift, knopf, knopf.lighter(150), knopf.darker(), knopf.darker(150), schrift, Qt::white,
                  feld, fenster);
    neue.setColor(QPalette::AlternateBase, fenster);
    neue.setColor(QPalette::ButtonText, schrift);
    neue.setColor(QPalette::Highlight, betont);
    neue.setColor(QPalette::HighlightedText, aufBetont);
    neue.setColor(QPalette::ToolTipBase, fenster);
    neue.setColor(QPalette::ToolTipText, schrift);
    for (const auto rolle : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        neue.setColor(QPalette::Disabled, rolle, gesperrt);
    return neue;
}

inline std::vector<Welt> farbwelten() {
    return {
        {"hell", palette(0xefefef, Qt::white, Qt::black, 0xefefef, 0x308cc6, Qt::white, 0xbebebe)},
        {"dunkel", palette(0x202326, 0x141618, 0xfcfcfc, 0x292c30, 0x3daee9, Qt::black, 0x6e7173)},
        {"Kontrast", palette(Qt::black, Qt::black, Qt::white, Qt::black, Qt::yellow, Qt::black, 0x3ff23f)},
        {"Kontrast hell", palette(Qt::white, Qt::white, Qt::black, Qt::white, 0x37006e, Qt::white, 0x600000)},
    };
}

/// While it lives, forms are made in a palette.
class Farbwelt {
public:
    explicit Farbwelt(const Welt& welt) { QApplication::setPalette(welt.palette); }
    ~Farbwelt() { QApplication::setPalette(vorher_); }
    Farbwelt(const Farbwelt&) = delete;
    Farbwelt& operator=(const Farbwelt&) = delete;

private:
    const QPalette vorher_ = QApplication::palette();
};
