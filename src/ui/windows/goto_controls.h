#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <functional>

class QComboBox;
class QEvent;
class QGridLayout;
class QLabel;
class QObject;
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

// The goto, comparison, find and move controls over the compilations, as the main window and the
// browser show them beside their grids.
struct CompilationFindControls {
    QLabel* gotoLabel = nullptr;
    QComboBox* gotoList = nullptr;
    QComboBox* comparisonList = nullptr;
    std::array<QPushButton*, 4> findButtons{};
    std::array<QPushButton*, 4> moveButtons{};
};

// Puts them into rows 0 to 7 of layout; find and move get the button's index 1 to 4. The goto
// list's events go to gotoFilter (Enter presses "Find First").
CompilationFindControls addCompilationFindControls(QWidget* panel, QGridLayout* layout,
                                                   QObject* gotoFilter,
                                                   const std::function<void(int)>& find,
                                                   const std::function<void(int)>& move);

// Enter or Return pressed: the goto lists press "Find First" on it.
bool isEnterPress(const QEvent* event);

}  // namespace ui
