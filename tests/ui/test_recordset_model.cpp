#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTableView>

#include "engine/workspace.h"
#include "store/compilation_queries.h"
#include "store/data_control.h"
#include "support/databases.h"
#include "support/temp_dir.h"
#include "ui/controls/recordset_model.h"

namespace {

using store::ColumnAlignment;

// Inserts compilations "Comp 0001" ... with SumTime 7 seconds per number and every third one
// without a recording date.
QString insertCompilations(int from, int to) {
    return QStringLiteral(
               "WITH RECURSIVE n(i) AS (SELECT %1 UNION ALL SELECT i + 1 FROM n WHERE i < %2) "
               "INSERT INTO Compilation (Name, SumTrack, SumTime, Format, C_Length, RecDate) "
               "SELECT printf('Comp %04d', i), i % 20, i * 7, 'MD', 74, "
               "       CASE WHEN i % 3 = 0 THEN NULL ELSE '1997-01-21' END FROM n;")
        .arg(from)
        .arg(to);
}

class RecordsetModelTest : public ::testing::Test {
  protected:
    void SetUp() override {
        path = dir.file("coll.mdb");
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(path, insertCompilations(1, 3000));
        control.setDatabase(engine::Workspace::defaultWorkspace().openDatabase(path));
        control.setRecordSource(store::standardStatement("compilation"));
        control.refresh();
        model.setColumns(store::gridColumns(store::GridKind::Overview));
        model.setDataControl(&control);
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    QString text(int row, int column) { return model.index(row, column).data().toString(); }

    testsupport::TempDir dir;
    QString path;
    store::DataControl control;
    ui::RecordsetModel model;
};

TEST_F(RecordsetModelTest, PassesTheModelTesterThroughRefreshesAndClearing) {
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(model.rowCount(), 3000);
    EXPECT_EQ(model.columnCount(), 9);
    testsupport::execRaw(path, insertCompilations(3001, 3010));
    control.refresh();
    EXPECT_EQ(model.rowCount(), 3010);
    control.clear();
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(RecordsetModelTest, ReadsOnlyTheRowsAViewShows) {
    QTableView view;
    view.setModel(&model);
    view.resize(500, 300);
    view.show();
    QCoreApplication::processEvents();
    const qint64 shown = model.rowsRead();
    EXPECT_GT(shown, 0);
    EXPECT_LT(shown, 100);

    // Every cell of one row comes from a single read.
    for (int column = 0; column < model.columnCount(); ++column) {
        model.index(2500, column).data();
    }
    EXPECT_EQ(model.rowsRead(), shown + 1);
    EXPECT_EQ(text(2500, 0), "Comp 2501");
}

TEST_F(RecordsetModelTest, RefreshResetsToTheNewRows) {
    EXPECT_EQ(text(9, 0), "Comp 0010");
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    testsupport::execRaw(path,
                         "UPDATE Compilation SET Name = 'Comp 0009b' WHERE Name = 'Comp 0010'");
    control.refresh();
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(text(9, 0), "Comp 0009b");
}

TEST_F(RecordsetModelTest, ShowsValuesByTheColumnsFormats) {
    EXPECT_EQ(model.headerData(3, Qt::Horizontal).toString(), "Total Time");
    EXPECT_EQ(text(0, 0), "Comp 0001");
    EXPECT_EQ(text(0, 2), "1");
    EXPECT_EQ(text(0, 6), "21.01.97");
    EXPECT_EQ(text(2, 6), "");            // no date
    EXPECT_EQ(text(599, 3), "01:10:00");  // play times as hh:mm:ss
}

TEST_F(RecordsetModelTest, MissingFieldsShowEmptyCells) {
    model.setColumns({{"Title", "C_NAME", query::ValueKind::Text, ColumnAlignment::Left},
                      {"Ghost", "NoSuchField", query::ValueKind::Time, ColumnAlignment::Default}});
    EXPECT_EQ(text(0, 0), "Comp 0001");  // fields match without regard to case
    EXPECT_EQ(text(0, 1), "");
}

TEST_F(RecordsetModelTest, AlignmentColoursAndFlags) {
    auto alignment = [&](int row, int column) {
        return Qt::Alignment(model.index(row, column).data(Qt::TextAlignmentRole).toInt());
    };
    EXPECT_EQ(alignment(0, 3), Qt::AlignCenter);
    EXPECT_EQ(alignment(0, 0), Qt::AlignLeft | Qt::AlignVCenter);
    // Default alignment follows the value: numbers right, texts left.
    model.setColumnAlignment(2, ColumnAlignment::Default);
    model.setColumnAlignment(0, ColumnAlignment::Default);
    EXPECT_EQ(alignment(0, 2), Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(alignment(0, 0), Qt::AlignLeft | Qt::AlignVCenter);

    EXPECT_FALSE(model.index(1, 0).data(Qt::BackgroundRole).isValid());
    model.setRowColours(Qt::white, QColor(224, 224, 224));
    EXPECT_EQ(model.index(4, 0).data(Qt::BackgroundRole).value<QColor>(), QColor(Qt::white));
    EXPECT_EQ(model.index(5, 0).data(Qt::BackgroundRole).value<QColor>(), QColor(224, 224, 224));

    model.setColumnForeground(0, Qt::red);
    EXPECT_EQ(model.index(5, 0).data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
    EXPECT_FALSE(model.index(5, 1).data(Qt::ForegroundRole).isValid());
    EXPECT_FALSE(model.flags(model.index(0, 0)).testFlag(Qt::ItemIsEditable));
}

TEST(RecordsetModelTracks, LiveShowsAsYesOrNo) {
    testsupport::TempDir dir;
    const QString path = dir.file("coll.mdb");
    testsupport::createCompilationDatabase(path);
    testsupport::execRaw(path, R"sql(
        INSERT INTO Compilation (CompilationID_P, Name, Format, C_Length) VALUES (1, 'A', 'MD', 74);
        INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Title, Length, Live)
        VALUES (1, 1, 'Help!', 140, 0), (1, 2, 'Yesterday', 3725, -1), (1, 3, 'Silence', NULL, NULL);
    )sql");
    store::DataControl control;
    control.setDatabase(engine::Workspace::defaultWorkspace().openDatabase(path));
    control.setRecordSource("SELECT * FROM CompilationTrack ORDER BY TrackNo");
    control.refresh();
    ui::RecordsetModel model;
    model.setColumns(store::gridColumns(store::GridKind::Compilation));
    model.setDataControl(&control);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);

    auto column = [&](int c) {
        QStringList values;
        for (int row = 0; row < model.rowCount(); ++row) {
            values << model.index(row, c).data().toString();
        }
        return values;
    };
    EXPECT_EQ(column(5), (QStringList{"No", "Yes", ""}));
    EXPECT_EQ(column(3), (QStringList{"00:02:20", "01:02:05", ""}));
    EXPECT_EQ(column(2), (QStringList{"Help!", "Yesterday", "Silence"}));
    engine::Workspace::defaultWorkspace().close();
}

}  // namespace
