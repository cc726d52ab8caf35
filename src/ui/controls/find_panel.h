#pragma once

#include <QString>
#include <QWidget>
#include <array>
#include <functional>

class QComboBox;
class QEvent;
class QLabel;
class QPushButton;

namespace platform {
class Dialogs;
}
namespace query {
struct GotoLists;
}
namespace store {
class DataControl;
}

namespace ui {

QPushButton* makeButton(const QString& caption, const QString& name, QWidget* parent);

// The find panel beside a list: the goto list (what to look for, under its label), the
// comparison list and the four find buttons, over the compilations also the four move buttons.
// Find and move act on the current row of a data control's record set; Enter in the goto list
// presses "Find First". Controls carry the designs' names: for the list name "Compilation" and
// the button letter "C" they are lblGotoCompilation, cmbGotoCompilation,
// cmbComparisonCompilation, btnFindC1 to btnFindC4 and btnMoveC1 to btnMoveC4.
class FindPanel : public QWidget {
    Q_OBJECT
  public:
    enum class MoveButtons { None, Shown };
    FindPanel(const QString& listName, const QString& buttonLetter, MoveButtons moveButtons,
              QWidget* parent);

    // The rows the buttons move in, the field the goto list holds values of, and where find
    // messages go.
    void setRows(store::DataControl* rows, std::function<QString()> gotoField,
                 platform::Dialogs& dialogs);
    // Fills the goto and comparison lists; the goto list's typed text starts empty.
    void showLists(const query::GotoLists& lists);
    // The label reads "Find <caption>:".
    void setCaption(const QString& caption);
    // Lists and buttons (not the label) usable or not.
    void setControlsEnabled(bool enabled);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void find(int index);
    void move(int index);

    QLabel* label_ = nullptr;
    QComboBox* gotoList_ = nullptr;
    QComboBox* comparisons_ = nullptr;
    std::array<QPushButton*, 4> findButtons_{};
    std::array<QPushButton*, 4> moveButtons_{};
    store::DataControl* rows_ = nullptr;
    std::function<QString()> gotoField_;
    platform::Dialogs* dialogs_ = nullptr;
};

}  // namespace ui
