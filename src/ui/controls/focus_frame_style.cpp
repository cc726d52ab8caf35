#include "ui/controls/focus_frame_style.h"

#include <QPainter>
#include <QStyleOption>

namespace ui {

namespace {

constexpr int kFrameWidth = 2;

// Styles draw a focus frame only after the keyboard has moved the focus once; here a focused
// control always counts as reached by the keyboard.
void showFocus(const QStyleOption* option) {
    if (option != nullptr && option->state.testFlag(QStyle::State_HasFocus)) {
        const_cast<QStyleOption*>(option)->state |= QStyle::State_KeyboardFocusChange;
    }
}

}  // namespace

void FocusFrameStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                    QPainter* painter, const QWidget* widget) const {
    if (element == PE_FrameFocusRect && option != nullptr) {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing, false);
        painter->setPen(QPen(option->palette.color(QPalette::Text), kFrameWidth));
        painter->setBrush(Qt::NoBrush);
        const int inset = kFrameWidth / 2;
        painter->drawRect(option->rect.adjusted(inset, inset, -inset, -inset));
        painter->restore();
        return;
    }
    showFocus(option);
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void FocusFrameStyle::drawControl(ControlElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const {
    showFocus(option);
    QProxyStyle::drawControl(element, option, painter, widget);
}

void FocusFrameStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                         QPainter* painter, const QWidget* widget) const {
    showFocus(option);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

}  // namespace ui
