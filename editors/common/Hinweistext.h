// SPDX-License-Identifier: GPL-3.0-or-later
// Names and paths in tool tips and titles, which Qt would else read for markup and marks of its own.
#pragma once

#include <QString>
#include <QTextDocument>

/// A text that a user or a device has chosen, as a tool tip that shows it as it is.
inline QString hinweistext(const QString& text) {
    // Without a tag Qt takes a text as it stands, "&amp;" included.
    return Qt::mightBeRichText(text) ? "<span>" + text.toHtmlEscaped() + "</span>" : text;
}

/// Such a text as the title of a window: "[*]" stands for the asterisk of changes there, and twice for
/// itself.
inline QString titeltext(QString text) {
    return text.replace("[*]", "[*][*]");
}
