// SPDX-License-Identifier: GPL-3.0-or-later
// The toolkit's own style with outlines that are seen in every palette.
//
// It draws them darker than the window: on a dark one circles, boxes and fields without a mark vanish.
#pragma once

#include <QProxyStyle>

class Kontraststil final : public QProxyStyle {
public:
    /// The style that this one can draw over; a desktop's own has outlines of its own.
    static constexpr const char* GRUNDSTIL = "fusion";

    Kontraststil() : QProxyStyle(GRUNDSTIL) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* maler,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* maler,
                            const QWidget* widget) const override;
};
