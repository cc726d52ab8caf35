#pragma once

class QComboBox;
class QString;

namespace ui {

// Names a list for screen readers. Qt on Unix names a list after its current entry, whatever
// its accessible name, and a reader learns what the list is only from a label whose buddy it
// is. A list without a caption of its own on screen gets a hidden one.
void labelList(QComboBox& list, const QString& name);

}  // namespace ui
