// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/common/Namenshinweis.h"

#include "editors/common/Hinweistext.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QToolTip>

namespace {

/// Whether a text fits is asked when its tool tip is: fields and fonts change.
class Namenshinweis final : public QObject {
public:
    explicit Namenshinweis(QComboBox& liste) : QObject(&liste), liste_(liste) {
        liste.lineEdit()->installEventFilter(this);
        liste.view()->viewport()->installEventFilter(this);
    }

    bool eventFilter(QObject* objekt, QEvent* ereignis) override {
        if (ereignis->type() != QEvent::ToolTip)
            return false;
        const auto& ort = static_cast<const QHelpEvent&>(*ereignis);
        auto& wo = *static_cast<QWidget*>(objekt);
        const auto text = &wo == liste_.lineEdit() ? imFeld() : inDerListe(ort.pos());
        if (text.isEmpty())
            return false;
        QToolTip::showText(ort.globalPos(), hinweistext(text), &wo);
        return true;
    }

private:
    QString imFeld() const {
        const auto& feld = *liste_.lineEdit();
        return langerAls(feld.width(), feld, feld.text());
    }
    QString inDerListe(const QPoint& ort) const {
        const auto zeile = liste_.view()->indexAt(ort);
        return langerAls(liste_.view()->viewport()->width(), *liste_.view(), zeile.data().toString());
    }
    /// The text where it needs more room than there is.
    static QString langerAls(int platz, const QWidget& wo, const QString& text) {
        const int rand = wo.fontMetrics().averageCharWidth(); // what a field or a row keeps free
        return wo.fontMetrics().horizontalAdvance(text) + rand > platz ? text : QString();
    }

    QComboBox& liste_;
};

} // namespace

void langeNamenZeigen(QComboBox& liste) {
    new Namenshinweis(liste);
}
