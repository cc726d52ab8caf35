#pragma once

class QWidget;

namespace ui {

// What the main window shows while no database is open: the intro picture beside the
// program's name and version.
QWidget* buildIntroPage(QWidget* parent);

}  // namespace ui
