// SPDX-License-Identifier: GPL-3.0-or-later
// The picture of a slider: its lines, the numbers of its fields, and the marker where it stands now.
#pragma once

#include <QWidget>

#include <array>

class Schubbild final : public QWidget {
    Q_OBJECT

public:
    /// `Line1`(0 to 19). Line i of the slider is `Line1`(i), counted from 1; the first one is never shown.
    static constexpr int LINIEN = 20;

    explicit Schubbild(QWidget* eltern = nullptr);

    /// Shows this many lines, at equal distances.
    void linienSetzen(int anzahl);
    /// Sets the field at `index`, from 0, off from the others; -1 for none.
    void feldHervorheben(int index);
    /// Puts the middle of the marker at `stelle`, in pixels from the left edge; shows it.
    void markeSetzen(double stelle);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;
    void changeEvent(QEvent* ereignis) override;

private:
    void linienStellen();
    void farbenSetzen();

    int linien_ = 0;
    int hervorgehoben_ = -1;
    std::array<QWidget*, LINIEN> striche_{};
    QWidget* marke_;
};
