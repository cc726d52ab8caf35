#pragma once

#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <functional>

#include "overview_fixture.h"
#include "store/album_source.h"
#include "ui/windows/get_songs_window.h"
#include "ui/windows/track_lookup_window.h"

// One album track of the test collection, all on one album in this order.
struct AlbumTrack {
    QString performer;
    QString title;
    int length;
};

// Writes the album tables into an SQLite file (the engine links it like an album database).
// The tracks all sort under one performer key unless performerKeys gives each its performer.
void writeAlbumFile(const QString& path, const std::vector<AlbumTrack>& tracks,
                    bool performerKeys = false);

// The main window with a compilation database open and an album database connected, as the
// editor's Connect leaves them; pickers are opened for a compilation with a stand-in editor.
class PickerWindowTest : public OverviewFixture {
  protected:
    // Compilations: 1 "Beat Club" (CD-R, 80 minutes) holding "Simon & Garfunkel - Mrs.
    // Robinson" as track 1; 2 "Road Trip" (MD, 74, empty); 3 "Five" (MD, 60) with tracks
    // "One" to "Five" of 100 to 500 seconds; 4 "Full" (MD, 74) with 19 tracks of 200 seconds.
    void SetUp() override;
    void TearDown() override;
    // The album database the picker reads; fixtures that need other tracks write their own.
    virtual void writeAlbums(const QString& albumsPath);

    ui::GetSongsWindow* openPicker(qint64 compilationId);
    ui::GetSongsWindow* picker() const { return picker_; }
    QString text(const QString& name) const { return picker_->findChild<QLineEdit*>(name)->text(); }
    QColor timeColour() const;
    QPushButton* pickerButton(const QString& name) const {
        return picker_->findChild<QPushButton*>(name);
    }

    // Makes the source row with this title current, through the grid.
    void selectSource(const QString& title);
    void selectTarget(int row);
    void doubleClickRow(QAbstractItemView* grid, int row);
    void doubleClickSource(const QString& title);
    // Answers the next track lookup through its buttons ("btnOK" or "btnCancel", or its close
    // button for ""), after inspect has looked at it; lookupShown() tells afterwards whether one
    // was shown.
    void answerLookupWith(const QString& buttonName,
                          std::function<void(ui::TrackLookupWindow&)> inspect = {});
    bool lookupShown() const { return lookupShown_; }

    // "TrackNo:Title" of the compilation's tracks in order, and "SumTrack/SumTime".
    QString tracksOf(qint64 compilationId) const;
    QString sumsOf(qint64 compilationId) const;

    bool performerKeys = false;  // set before SetUp: the album tracks sort by performer
    QString path;
    QWidget editor;  // the window that opens the picker
    QPointer<ui::GetSongsWindow> picker_;
    bool lookupShown_ = false;
};
