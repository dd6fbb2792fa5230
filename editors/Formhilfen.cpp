#include "editors/Formhilfen.h"

#include "store/LaufzeitFehler.h"

#include <QLayout>
#include <QPointer>
#include <QRegularExpression>

#include <algorithm>

namespace {

// An error quotes what it found, and that may be a text of any length and any number of lines: the box must
// stay on the screen, with its button.
QString einzeiler(QString text) {
    constexpr qsizetype ANFANG = 300;
    constexpr qsizetype ENDE = 100;
    text.replace(QRegularExpression("\\s"), " ");
    if (text.size() <= ANFANG + ENDE)
        return text;
    return text.left(ANFANG) + "…" + text.right(ENDE);
}

} // namespace

QString feldname(std::string_view name, int index) {
    return QString("%1(%2)").arg(qt(name)).arg(index);
}

void breiteSetzen(QWidget& form, int gewuenscht) {
    form.setFixedWidth(std::max(gewuenscht, form.minimumSizeHint().width()));
}

void hoeheSetzen(QWidget& form, int gewuenscht) {
    if (form.layout())
        form.layout()->activate();
    int noetig = form.minimumSizeHint().height();
    // A text that wraps needs more than it says by itself.
    if (form.layout() && form.layout()->hasHeightForWidth())
        noetig = std::max(noetig, form.layout()->totalMinimumHeightForWidth(form.width()));
    form.setFixedHeight(std::max(gewuenscht, noetig));
}

void meldung(QWidget* eltern, const QString& text, const QString& titel, QMessageBox::Icon symbol) {
    // The parent may go while the box is open, as when a run is stopped by an error, and takes the box along.
    const QPointer<QMessageBox> box = new QMessageBox(symbol, titel, text, QMessageBox::Ok, eltern);
    box->exec();
    delete box;
}

void fehlermeldung(QWidget* eltern, const LaufzeitFehler& fehler, const QString& titel) {
    const auto grund = einzeiler(QString::fromUtf8(fehler.what()));
    meldung(eltern, QString("Laufzeitfehler %1:\n").arg(fehler.zahl()) + grund, titel, QMessageBox::Warning);
}
