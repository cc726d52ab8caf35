#pragma once

#include <gtest/gtest.h>

#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "shell/database_commands.h"
#include "support/databases.h"
#include "support/jet_errors.h"
#include "support/temp_dir.h"

using testsupport::errorNumber;
using testsupport::fileBytes;

// A command's feedback, recorded: the hourglass turned on and off, the status texts shown.
struct RecordedFeedback : shell::CommandFeedback {
    void setBusy(bool busy) override { busyCalls << busy; }
    void setStatusText(const QString& text) override { statusTexts << text; }
    void processPendingEvents() override {}

    QList<bool> busyCalls;
    QStringList statusTexts;
};

// A folder for the test's files, scripted dialogs and the commands' feedback.
class ShellTest : public ::testing::Test {
  protected:
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    testsupport::TempDir dir;
    platform::ScriptedDialogs dialogs;
    RecordedFeedback feedback;
};
