#pragma once

#include <QProxyStyle>

namespace ui {

// The program's style: the desktop's style with the focus always in sight. Focus frames show from
// the start, not only once Tab has been pressed, and the frame of a focused cell, list entry or
// button is a solid line two pixels wide in the text colour, clear on white, on grey and on
// either highlight colour of the grids.
class FocusFrameStyle : public QProxyStyle {
  public:
    using QProxyStyle::QProxyStyle;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget = nullptr) const override;
};

}  // namespace ui
