#pragma once

#include <QList>

class QWidget;

namespace ui {

// The controls of a window that Tab reaches, in the order its layouts place them: a grid
// layout's and a form's row by row, left to right, a box layout's as placed; a control that
// spans several rows of a grid (a side panel) comes after the controls to its left on those
// rows. A main window's tool bars come first, its status bar last. Controls of other windows
// and the parts of a control (a list's text box) are left out; hidden and disabled ones are in.
QList<QWidget*> focusChainByLayout(QWidget& window);

// Chains the window's controls with QWidget::setTabOrder in that order. Every window calls it
// at the end of its construction.
void orderFocusByLayout(QWidget& window);

}  // namespace ui
