// SPDX-License-Identifier: GPL-3.0-or-later
// What the controls of a form show: what is set, what is written in them, what is in sight and can be used.
//
// Only controls with a name count. A box that catches keys has no text of its own: it falls back to its
// invitation as soon as the focus leaves it.
#pragma once

#include <QString>
#include <QStringList>

#include <initializer_list>
#include <map>

class QWidget;

class Formstand {
public:
    Formstand() = default;
    /// Of all controls on these widgets.
    explicit Formstand(std::initializer_list<const QWidget*> bereiche);

    /// Gives all of it back to the controls; none of them tells anybody.
    void stummAnwenden(std::initializer_list<QWidget*> bereiche) const;
    /// Sets and writes as a hand would; what is in sight and can be used follows from that.
    void eingeben(QWidget& bereich) const;

    bool operator==(const Formstand&) const = default;

    /// Names of the controls that are set or written otherwise; what is in sight and can be used does not
    /// count.
    QStringList andereEingaben(const Formstand& anderer) const;
    /// What is written in a control; "" for one that has no text or is not there.
    QString text(const QString& name) const;

private:
    struct Teil {
        bool an = false;
        bool frei = true;
        bool verborgen = false;
        QString text;
        bool operator==(const Teil&) const = default;
    };
    static Teil teil(const QWidget& control);

    std::map<QString, Teil> teile_;
};
