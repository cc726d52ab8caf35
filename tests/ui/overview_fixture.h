#pragma once

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include "platform/scripted_dialogs.h"
#include "support/databases.h"
#include "support/temp_dir.h"
#include "ui/controls/data_grid.h"
#include "ui/controls/main_toolbar.h"
#include "ui/controls/panel_status_bar.h"
#include "ui/windows/overview_window.h"

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
    void find(const QString& comparison, const QString& value, int button) {
        comparisons()->setCurrentText(comparison);
        gotoList()->setEditText(value);
        this->button(QStringLiteral("btnFindC%1").arg(button))->click();
    }

    testsupport::TempDir dir;
    platform::ScriptedDialogs dialogs;
    std::unique_ptr<ui::OverviewWindow> window;
};
