#pragma once

#include <gtest/gtest.h>

#include "engine/database.h"
#include "engine/workspace.h"
#include "reports/list_reports.h"
#include "reports/list_sources.h"
#include "support/databases.h"
#include "support/list_samples.h"
#include "support/temp_dir.h"

// A compilation database with the list samples, and the lists laid out on it.
class ListFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        testsupport::createCompilationDatabase(path);
        testsupport::fillListSamples(path);
        database = engine::Workspace::defaultWorkspace().openDatabase(path);
    }

    report::PageModel build(reports::ListReport kind, qint64 id = 1,
                            const report::PageSetup& page = reports::listPaper(QLocale::c())) {
        return reports::buildListReport(database, kind, id, page, today);
    }

    const QDate today{2026, 11, 23};
    testsupport::TempDir dir;
    QString path = dir.file("lists.mdb");
    engine::Database database;
};
