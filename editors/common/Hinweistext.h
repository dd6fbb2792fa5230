// SPDX-License-Identifier: GPL-3.0-or-later
// Names and paths in tool tips and titles, which Qt would else read for markup and marks of its own, and
// which may be longer than any screen.
#pragma once

#include <QString>
#include <QTextDocument>

/// A text of at most so many characters: of a longer one the middle goes, with dots in its place.
inline QString ohneMitte(const QString& text, qsizetype zeichen) {
    if (text.size() <= zeichen)
        return text;
    qsizetype anfang = zeichen * 3 / 4;
    qsizetype ende = text.size() - (zeichen - anfang - 1);
    // A character of two halves goes whole.
    if (text.at(anfang - 1).isHighSurrogate())
        --anfang;
    if (text.at(ende).isLowSurrogate())
        ++ende;
    return text.left(anfang) + "…" + text.mid(ende);
}

/// The longest text that is stored; a name that is longer helps nobody.
inline constexpr qsizetype NAME_HOECHSTENS = 1000;

/// A text that a user or a device has chosen, as a tool tip that shows it as it is.
inline QString hinweistext(const QString& ganz) {
    const auto text = ohneMitte(ganz, NAME_HOECHSTENS);
    // Without a tag Qt takes a text as it stands, "&amp;" included.
    return Qt::mightBeRichText(text) ? "<span>" + text.toHtmlEscaped() + "</span>" : text;
}

/// Such a text as the title of a window: "[*]" stands for the asterisk of changes there, and twice for
/// itself.
inline QString titeltext(const QString& text) {
    return ohneMitte(text, NAME_HOECHSTENS).replace("[*]", "[*][*]");
}
