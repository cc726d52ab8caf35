#pragma once

class QWidget;

namespace ui {

// The number of colours of the screen the widget is shown on (the primary screen before it is
// shown); colour sets of grids and displays depend on it.
double screenColourCount(const QWidget& widget);

}  // namespace ui
