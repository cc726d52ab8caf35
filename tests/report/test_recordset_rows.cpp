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
    // Names asked before answer the same, in whatever spelling comes next.
    EXPECT_EQ(rows.fieldIndex("BOX"), 1);
    EXPECT_EQ(rows.fieldIndex("Name"), 0);
    EXPECT_EQ(rows.fieldIndex("box"), 1);
    EXPECT_EQ(rows.fieldIndex("Format"), -1);
    EXPECT_EQ(rows.value(2, 0).toString(), "Road Trip");
    EXPECT_TRUE(rows.value(1, 1).isNull());  // Blues has no box
    EXPECT_TRUE(rows.value(3, 0).isNull());  // past the last row

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
