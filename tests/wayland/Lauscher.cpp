// SPDX-License-Identifier: GPL-3.0-or-later
// A client that fills the screen and writes a line for each input that it gets while it has the focus:
//
//     fokus                            it has the keyboard
//     groesse 1280 800                 its size in pixels
//     +29 Key_Z z    -29 Key_Z         a key by its X number, its name and what it types
//     maus 640 400                     where the pointer has come to
//     +links    -links                 a mouse button
//     rad 120                          the wheel
//
// A repeat of the desktop's own is no input and is left out.
#include <QApplication>
#include <QKeyEvent>
#include <QMetaEnum>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

#include <cstdio>

namespace {

void schreiben(const QString& zeile) {
    std::puts(zeile.toUtf8().constData());
    std::fflush(stdout);
}

QString knopfname(Qt::MouseButton knopf) {
    switch (knopf) {
    case Qt::LeftButton:
        return "links";
    case Qt::RightButton:
        return "rechts";
    case Qt::MiddleButton:
        return "mitte";
    default:
        return QString::number(knopf);
    }
}

QString tastenname(const QKeyEvent& ereignis) {
    const char* name = QMetaEnum::fromType<Qt::Key>().valueToKey(ereignis.key());
    return QString::number(ereignis.nativeScanCode()) + " " +
           (name != nullptr ? QString(name) : QString::number(ereignis.key()));
}

// Control characters would break the line.
QString sichtbar(const QString& text) {
    return !text.isEmpty() && text.front().isPrint() && !text.front().isSpace() ? " " + text : QString();
}

class Lauscher final : public QWidget {
public:
    Lauscher() {
        setMouseTracking(true);
        setWindowTitle("Lauscher");
    }

protected:
    bool event(QEvent* ereignis) override {
        if (ereignis->type() == QEvent::WindowActivate)
            schreiben("fokus");
        return QWidget::event(ereignis);
    }
    void resizeEvent(QResizeEvent*) override {
        schreiben(QString("groesse %1 %2").arg(width()).arg(height()));
    }
    void keyPressEvent(QKeyEvent* ereignis) override {
        if (!ereignis->isAutoRepeat())
            schreiben("+" + tastenname(*ereignis) + sichtbar(ereignis->text()));
    }
    void keyReleaseEvent(QKeyEvent* ereignis) override {
        if (!ereignis->isAutoRepeat())
            schreiben("-" + tastenname(*ereignis));
    }
    // Tab and its like are keys as all others.
    bool focusNextPrevChild(bool) override { return false; }
    void mousePressEvent(QMouseEvent* ereignis) override { schreiben("+" + knopfname(ereignis->button())); }
    void mouseDoubleClickEvent(QMouseEvent* ereignis) override { mousePressEvent(ereignis); }
    void mouseReleaseEvent(QMouseEvent* ereignis) override { schreiben("-" + knopfname(ereignis->button())); }
    void mouseMoveEvent(QMouseEvent* ereignis) override {
        const auto wo = ereignis->position().toPoint();
        schreiben(QString("maus %1 %2").arg(wo.x()).arg(wo.y()));
    }
    void wheelEvent(QWheelEvent* ereignis) override {
        schreiben(QString("rad %1").arg(ereignis->angleDelta().y()));
    }
};

} // namespace

int main(int anzahl, char** worte) {
    QApplication anwendung(anzahl, worte);
    Lauscher lauscher;
    lauscher.showFullScreen();
    return QApplication::exec();
}
