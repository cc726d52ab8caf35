#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>

#include "platform/scripted_dialogs.h"
#include "support/databases.h"
#include "support/temp_dir.h"
#include "ui/controls/data_grid.h"
#include "ui/controls/main_toolbar.h"
#include "ui/controls/panel_status_bar.h"
#include "ui/windows/overview_window.h"

// True while a file descriptor of this process refers to the file (or its journal).
inline bool processHoldsFile(const QString& path) {
    const QString file = QFileInfo(path).canonicalFilePath();
    const QDir descriptors(QStringLiteral("/proc/self/fd"));
    for (const QString& fd : descriptors.entryList(QDir::AllEntries | QDir::System)) {
        if (QFileInfo(descriptors.filePath(fd)).symLinkTarget().startsWith(file))
            return true;
    }
    return false;
}

// The main window driven through its controls, with dialogs answered by script.
class OverviewFixture : public ::testing::Test {
  protected:
    void SetUp() override { window = std::make_unique<ui::OverviewWindow>(dialogs); }
    void TearDown() override { window->unloadAll(); }

    template <typename T>
    T* child(const QString& name) const {
        T* found = window->findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    QPushButton* button(const QString& name) const { return child<QPushButton>(name); }
    QComboBox* gotoList() const { return child<QComboBox>("cmbGotoCompilation"); }
    QComboBox* comparisons() const { return child<QComboBox>("cmbComparisonCompilation"); }
    QString gotoLabel() const { return child<QLabel>("lblGotoCompilation")->text(); }
    QString position() const { return child<QLabel>("digActualGridPos")->text(); }
    bool toolEnabled(const QString& id) const { return window->toolBar()->isToolEnabled(id); }
    QString currentName() const {
        return window->compilations()->recordset().value("C_Name").toString();
    }

    // A compilation database with the given rows of Compilation (SQL VALUES lists).
    QString makeDatabase(const QString& name, const QString& values = QString()) {
        const QString path = dir.file(name);
        testsupport::createCompilationDatabase(path);
        if (!values.isEmpty()) {
            testsupport::execRaw(path,
                                 "INSERT INTO Compilation (Name, Box, SumTrack, SumTime, "
                                 "Format, C_Length, RecDate) VALUES " +
                                     values);
        }
        return path;
    }
    void openThroughToolbar(const QString& path) {
        dialogs.answerFile(path);
        window->toolBar()->clickTool("ID_OpenFile");
    }
    // What the window shows with no database: the intro, the hint, nothing open.
    void expectClosedState() const {
        EXPECT_EQ(window->windowTitle(), "Mixorama");
        EXPECT_TRUE(window->statusBarPanels()->simpleMode());
        EXPECT_EQ(window->statusBarPanels()->simpleText(), shell::kStatusHint);
        EXPECT_TRUE(child<QWidget>("imgIntro")->isVisibleTo(window.get()));
        EXPECT_FALSE(window->grid()->isVisibleTo(window.get()));
        EXPECT_TRUE(toolEnabled("ID_OpenFile"));
        EXPECT_FALSE(toolEnabled("ID_CloseFile"));
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        EXPECT_FALSE(window->state().database.isOpen());
        EXPECT_TRUE(window->state().databasePath.isEmpty());
    }
    void find(const QString& comparison, const QString& value, int button) {
        comparisons()->setCurrentText(comparison);
        gotoList()->setEditText(value);
        this->button(QStringLiteral("btnFindC%1").arg(button))->click();
    }

    testsupport::TempDir dir;
    platform::ScriptedDialogs dialogs;
    std::unique_ptr<ui::OverviewWindow> window;
};
