// SPDX-License-Identifier: GPL-3.0-or-later
// The language of everything that the toolkit writes itself: German, whatever the locale of the session is.
#pragma once

#include <QString>

#include <memory>

class QTranslator;

class Sprache {
public:
    /// Needs the application object, which it must not outlive. Texts of buttons, context menus and dialogs
    /// come out of the toolkit's own translation in `ordner`; where that is not installed they stay English.
    /// Numbers and dates are written as in Germany. What programs and libraries read and write with the C
    /// functions keeps its decimal point.
    explicit Sprache(const QString& ordner);
    ~Sprache();
    Sprache(const Sprache&) = delete;
    Sprache& operator=(const Sprache&) = delete;

    /// Whether the toolkit's translation was found.
    bool uebersetzt() const { return texte_ != nullptr; }

    /// Where the toolkit keeps its translations.
    static QString uebersetzungen();

private:
    std::unique_ptr<QTranslator> texte_;
};
