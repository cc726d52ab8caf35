#pragma once

class QWidget;

namespace ui {

// Escape and Ctrl+W close the window as its close button does: its close handler runs, with its
// questions and refusals. A dialog keeps its own Escape (its Cancel) and gains Ctrl+W.
void closeWithKeys(QWidget& window);

}  // namespace ui
