// SPDX-License-Identifier: GPL-3.0-or-later
// The picture of the pad with its sixteen labels and twenty-four marks: `imgHintergrund`, `lblInfo`,
// `Shape2`.
//
// The drawing is scaled to the room there is; where things lie on it stands in Padzeichnung.
#pragma once

#include <QLabel>
#include <QPixmap>
#include <QWidget>

#include <array>
#include <optional>

/// A label of the picture: tells when it is clicked, and leaves the focus where it is.
class Padschild final : public QLabel {
    Q_OBJECT

public:
    explicit Padschild(QWidget* eltern);
    /// Whether it belongs to the chosen button.
    void setGewaehlt(bool gewaehlt);
    bool gewaehlt() const { return gewaehlt_; }
    QSize minimumSizeHint() const override;

signals:
    void geklickt();

protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void mousePressEvent(QMouseEvent* ereignis) override;
    void enterEvent(QEnterEvent* ereignis) override;
    void leaveEvent(QEvent* ereignis) override;

private:
    bool gewaehlt_ = false;
    bool ueberfahren_ = false;
};

class Padbild final : public QWidget {
    Q_OBJECT

public:
    static constexpr int SCHILDER = 16;
    static constexpr int MARKEN = 24;

    explicit Padbild(QWidget* eltern = nullptr);

    Padschild& lblInfo(int taste) { return *schilder_[static_cast<std::size_t>(taste)]; }
    /// The button of one of its labels.
    int tasteVon(const Padschild& schild) const;
    /// Shows the marks `erste` and `zweite` and hides all others; a number that no mark has shows none.
    void markenZeigen(int erste, int zweite);
    /// Highlights the label of the chosen button, none for -1.
    void setGewaehlt(int taste);
    int gewaehlt() const { return gewaehlt_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// A label or its button on the picture was clicked, or picked with the arrow keys.
    void geklickt(int taste);

protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;
    void changeEvent(QEvent* ereignis) override;
    void mousePressEvent(QMouseEvent* ereignis) override;
    void keyPressEvent(QKeyEvent* ereignis) override;
    void focusInEvent(QFocusEvent* ereignis) override;

private:
    void fokusMelden();
    void anordnen();
    qreal masstab() const;
    QTransform ausZeichnung() const;
    int schildbreite() const;
    std::optional<int> tasteBei(QPointF stelle) const;

    std::array<Padschild*, SCHILDER> schilder_{};
    std::array<QWidget*, MARKEN> marken_{};
    QPixmap imgHintergrund_; ///< the drawing at the present size; null when it must be made anew
    int gewaehlt_ = -1;
};
