// A record set's rows feed a report.
#include <gtest/gtest.h>

#include "engine/workspace.h"
#include "report/layout.h"
#include "report_samples.h"
#include "reports/recordset_rows.h"
#include "support/databases.h"
#include "support/temp_dir.h"

namespace {

TEST(RecordsetRows, AReportReadsTheRecordSetsRowsAndFieldsByNameInAnyCase) {
    const testsupport::TempDir dir;
    const QString path = dir.file("c.mdb");
    testsupport::createCompilationDatabase(path);
    testsupport::execRaw(path,
                         "INSERT INTO Compilation (CompilationID_P, Name, Format, C_Length, Box) "
                         "VALUES (1, 'Road Trip', 'MD', 74, 'B1'), (2, 'Autumn', 'MD', 74, 'B2'), "
                         "(3, 'Blues', 'MD', 74, NULL)");
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
    const reports::RecordsetRows rows(database.openRecordset(
        "SELECT Name, Box FROM Compilation ORDER BY Name", engine::RecordsetType::Snapshot));
    ASSERT_EQ(rows.rowCount(), 3);
    EXPECT_EQ(rows.fieldIndex("BOX"), 1);
    EXPECT_EQ(rows.fieldIndex("Format"), -1);

    report::ReportDefinition definition;
    definition.page = reporttest::smallPaper();
    definition.detail =
        report::section("Detail", 300,
                        {report::textBox("fldName", QRect(0, 0, 3000, 300), "name"),
                         report::textBox("fldBox", QRect(3000, 0, 3000, 300), "box")});
    const report::PageModel model = report::layoutReport(definition, rows);
    EXPECT_EQ(reporttest::textsOf(model.pages[0]),
              (QStringList{"Autumn", "B2", "Blues", "Road Trip", "B1"}));
}

}  // namespace
