#pragma once

#include <QDialog>
#include <array>

#include "query/filter_clause.h"

class QComboBox;
class QGridLayout;
class QLCDNumber;
class QLineEdit;
class QPushButton;

namespace platform {
class Dialogs;
}
namespace shell {
class Session;
}

namespace ui {

class GetSongsWindow;

// frmFilter, "Filter Source": one or two conditions (variable, comparison, text) joined by
// "And" or "Or" narrow the track picker's source. Apply stores the filter in the session and
// requeries the picker; the number of passing tracks is shown. The filter outlives the dialog,
// which opens with empty rows every time. Closing it refills the picker's goto list so that
// the list follows the filter.
class FilterDialog : public QDialog {
    Q_OBJECT
  public:
    FilterDialog(shell::Session& session, platform::Dialogs& dialogs, GetSongsWindow& picker);

    // Closing the dialog, whichever way: the picker's goto list is rebuilt for the filter.
    void done(int result) override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void buildControls();
    void addRow(int index, int gridRow, QGridLayout& layout);
    QWidget* buildButtons();
    void chooseVariable(int index);
    void apply();
    std::array<query::FilterRow, 2> rows() const;
    void showTexts(const query::FilterOutcome& outcome);
    void showPassed(qint64 count);
    void clearFields();
    void refillConcatenation();

    shell::Session& session_;
    platform::Dialogs& dialogs_;
    GetSongsWindow& picker_;
    std::array<QComboBox*, 2> variables_{};
    std::array<QComboBox*, 2> comparisons_{};
    std::array<QLineEdit*, 2> texts_{};
    QComboBox* concatenation_ = nullptr;
    QLCDNumber* passed_ = nullptr;
};

}  // namespace ui
