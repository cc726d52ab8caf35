#include "ui/windows/track_lookup_window.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "assembly/track_picker.h"
#include "engine/database.h"
#include "shell/navigation.h"
#include "ui/controls/data_grid.h"
#include "ui/controls/focus_order.h"
#include "ui/controls/window_keys.h"
#include "ui/windows/screen_colours.h"

namespace ui {

namespace {

QLineEdit* readOnlyText(const QString& name, const QString& text, QWidget* parent) {
    auto* box = new QLineEdit(text, parent);
    box->setObjectName(name);
    box->setReadOnly(true);
    return box;
}

}  // namespace

TrackLookupWindow::TrackLookupWindow(engine::Database& database, const QString& performer,
                                     const QString& title, bool okEnabled, QWidget* opener)
    : QDialog(opener), compilations_(this) {
    setObjectName(QStringLiteral("frmTrack"));
    setWindowTitle(QStringLiteral("Track Already Recorded!"));
    setModal(true);
    compilations_.setObjectName(QStringLiteral("datCompilation01"));
    buildControls(performer, title);
    closeWithKeys(*this);
    orderFocusByLayout(*this);
    ok_->setEnabled(okEnabled);
    resize(640, 300);
    if (opener != nullptr) {
        setGeometry(shell::placedOver(geometry(), opener->window()->geometry()));
    }
    setGridLayout(*grid_, store::GridKind::Track, screenColourCount(*this));
    // The lookup's rows, read the way the picker looks the track up.
    compilations_.setDatabase(database);
    compilations_.setRecordsetType(engine::RecordsetType::Snapshot);
    compilations_.setRecordSource(assembly::trackLookupStatement(performer, title));
    compilations_.refresh();
}

void TrackLookupWindow::buildControls(const QString& performer, const QString& title) {
    auto* layout = new QVBoxLayout(this);
    auto* track = new QFormLayout;
    track->addRow(QStringLiteral("&Performer:"),
                  readOnlyText(QStringLiteral("txtPerformerName"), performer, this));
    track->addRow(QStringLiteral("&Title:"),
                  readOnlyText(QStringLiteral("txtSongName"), title, this));
    layout->addLayout(track);
    grid_ = new DataGrid(this);
    grid_->setObjectName(QStringLiteral("grd6TrackOnCompilation"));
    grid_->setAccessibleName(QStringLiteral("Compilations with the track"));
    grid_->setColumns(store::gridColumns(store::GridKind::Track));
    grid_->setDataControl(&compilations_);
    layout->addWidget(grid_, 1);
    auto* buttons = new QHBoxLayout;
    ok_ = new QPushButton(QStringLiteral("&OK"), this);
    ok_->setObjectName(QStringLiteral("btnOK"));
    cancel_ = new QPushButton(QStringLiteral("&Cancel Copy"), this);
    cancel_->setObjectName(QStringLiteral("btnCancel"));
    buttons->addStretch(1);
    buttons->addWidget(ok_);
    buttons->addWidget(cancel_);
    layout->addLayout(buttons);
    connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
}

// Only OK adds a track that is already recorded again: closing the window with its close button
// or Escape counts as "Cancel Copy", so that a user who just wants the question gone never gets
// the track twice.
void TrackLookupWindow::reject() {
    addCancelled_ = true;
    QDialog::reject();
}

}  // namespace ui
