// SPDX-License-Identifier: GPL-3.0-or-later
// A small view of a picture: scaled to fit, its proportions kept.
#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

class Bildvorschau final : public QWidget {
    Q_OBJECT

public:
    explicit Bildvorschau(QWidget* eltern);

    /// The picture in all its pixels; null shows an empty field.
    void bildSetzen(const QImage& bild);
    const QImage& bild() const { return bild_; }

    QSize sizeHint() const override;

signals:
    void gedrueckt(Qt::MouseButton taste);
    /// Has another place or size.
    void verlegt();

protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void mousePressEvent(QMouseEvent* ereignis) override;
    void moveEvent(QMoveEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;

private:
    QSize platz() const;

    QImage bild_;
    QPixmap verkleinert_; ///< null until it is painted
};
