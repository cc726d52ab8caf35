#pragma once

#include <QDialog>

#include "store/data_control.h"

class QLineEdit;
class QPushButton;

namespace engine {
class Database;
}

namespace ui {

class DataGrid;

// frmTrack, "Track Already Recorded!": every compilation that already holds a track of the
// performer and title. Shown modal over the window that asks. The picker asks whether to add
// the track again (OK adds, "Cancel Copy" does not); the browser opens it for a look only, with
// OK disabled.
class TrackLookupWindow : public QDialog {
    Q_OBJECT
  public:
    TrackLookupWindow(engine::Database& database, const QString& performer, const QString& title,
                      bool okEnabled, QWidget* opener);

    // Set by "Cancel Copy", the close button and Escape; OK leaves it clear.
    bool addCancelled() const { return addCancelled_; }
    DataGrid* grid() const { return grid_; }

    void reject() override;

  private:
    void buildControls(const QString& performer, const QString& title);

    store::DataControl compilations_;
    DataGrid* grid_ = nullptr;
    QPushButton* ok_ = nullptr;
    QPushButton* cancel_ = nullptr;
    bool addCancelled_ = false;
};

}  // namespace ui
