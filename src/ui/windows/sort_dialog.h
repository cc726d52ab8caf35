#pragma once

#include <QDialog>
#include <array>
#include <functional>

#include "query/sort_clause.h"

class QComboBox;
class QPushButton;

namespace platform {
class Dialogs;
}

namespace ui {

// frmSort: up to three sort keys, each ascending or descending, for the track picker's source
// ("Sort Source") or the rearrange window's tracks ("Sort Tracks on Compilation"). The lists
// start empty every time. Apply composes the order text and hands it to the caller, which
// orders or renumbers with it; the dialog stays open for another try.
class SortDialog : public QDialog {
    Q_OBJECT
  public:
    // Receives the order text (without "ORDER BY"); an engine::JetError it throws is shown.
    using ApplyOrder = std::function<void(const QString& orderText)>;

    SortDialog(query::SortCaller caller, ApplyOrder applyOrder, platform::Dialogs& dialogs,
               QWidget* opener);

    // The order text last composed (or the caller's default after Clear); empty before either.
    QString sortOrderText() const { return sortOrderText_; }

  private:
    void buildControls();
    query::SortLevels chosenLevels() const;
    void apply();
    void clear();

    const query::SortCaller caller_;
    ApplyOrder applyOrder_;
    platform::Dialogs& dialogs_;
    std::array<QComboBox*, 3> keys_{};        // tdbcSortVar0..2
    std::array<QComboBox*, 3> directions_{};  // tdbcSortOrd0..2
    QString sortOrderText_;
};

}  // namespace ui
