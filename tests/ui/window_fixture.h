#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <memory>

#include "platform/scripted_dialogs.h"
#include "support/album_schema.h"
#include "support/databases.h"
#include "support/samples.h"
#include "support/temp_dir.h"
#include "support/window_driver.h"
#include "ui/controls/data_grid.h"
#include "ui/controls/main_toolbar.h"
#include "ui/controls/panel_status_bar.h"
#include "ui/windows/get_songs_window.h"
#include "ui/windows/overview_window.h"

using testsupport::clickButton;
using testsupport::columnTexts;

// True while a file descriptor of this process refers to the file (or its journal).
bool processHoldsFile(const QString& path);

// The main window driven through its controls, with dialogs answered by script.
class WindowTest : public ::testing::Test {
  protected:
    void SetUp() override { window = std::make_unique<ui::OverviewWindow>(dialogs); }
    void TearDown() override { window->unloadAll(); }

    template <typename T = QWidget>
    T* child(const QString& name) const {
        return testsupport::control<T>(window.get(), name);
    }
    bool toolEnabled(const QString& id) const { return window->toolBar()->isToolEnabled(id); }
    void clickTool(const QString& id) const { window->toolBar()->clickTool(id); }
    QString currentName() const {
        return window->compilations()->recordset().value("C_Name").toString();
    }
    // A compilation database in the test's folder holding the samples.
    QString makeDatabase(const QString& name,
                         const QList<testsupport::SampleCompilation>& samples = {});
    void openThroughToolbar(const QString& path) {
        dialogs.answerFile(path);
        clickTool("ID_OpenFile");
    }

    testsupport::TempDir dir;
    platform::ScriptedDialogs dialogs;
    std::unique_ptr<ui::OverviewWindow> window;
};

// The main window with a compilation database open and an album database connected as the
// editor's Connect leaves them; pickers open over a stand-in editor. Compilations: 1 "Beat Club"
// (CD-R, 80 min) holding "Mrs. Robinson"; 2 "Road Trip" (MD, 74, empty); 3 "Five" (MD, 60) with
// "One" to "Five" of 100 to 500 s; 4 "Full" (MD, 74) with 19 tracks of 200 s. Albums: Help!
// (140 s), Mrs. Robinson (244), Kodachrome (212), Fits Exactly (583), One Second Too Long (584).
class PickerTest : public WindowTest {
  protected:
    void SetUp() override;
    void TearDown() override;
    virtual void writeAlbums(const QString& albumsPath);
    void connectAlbums(const QString& albumsPath);

    ui::GetSongsWindow* openPicker(qint64 compilationId);
    ui::GetSongsWindow* picker() const { return picker_; }
    QString text(const QString& name) const;  // of a box of the picker
    QStringList sourceTitles() const { return columnTexts(picker_->sourceGrid(), 1); }
    void selectSource(const QString& title, bool doubleClick = false);
    void doubleClickSource(const QString& title) { selectSource(title, true); }
    QString tracksOf(qint64 id) const { return testsupport::trackList(path, id); }
    QString sumsOf(qint64 id) const { return testsupport::storedSums(path, id); }

    bool performerKeys = false;  // set before SetUp: the album tracks sort by performer
    QString path;
    QWidget editor;  // the window that opens the picker
    QPointer<ui::GetSongsWindow> picker_;
};
