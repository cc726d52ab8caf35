#pragma once

#include <QString>
#include <QStringList>

class QComboBox;
class QEvent;
class QPushButton;
class QWidget;

namespace query {
struct GotoLists;
}

namespace ui {

// Captions of the find and move buttons, by index 1 to 4 (here 0 to 3).
extern const QStringList kFindCaptions;
extern const QStringList kMoveCaptions;

QPushButton* makeButton(const QString& caption, const QString& name, QWidget* parent);

// An editable goto list that only takes what the user types (it adds no entries).
QComboBox* makeGotoList(const QString& name, QWidget* parent);

// Fills a goto list and its comparison list; the goto list's typed text starts empty.
void showGotoLists(const query::GotoLists& lists, QComboBox& gotoList, QComboBox& comparisons);

// Enter or Return pressed: the goto lists press "Find First" on it.
bool isEnterPress(const QEvent* event);

}  // namespace ui
