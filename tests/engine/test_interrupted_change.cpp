// A writer stopped in the middle of a change leaves a hot journal beside the file; the engine
// rolls it back when it opens the file, read-only or not, unless it may not write there.
#include <QFile>

#include "engine_fixture.h"

namespace {

using testsupport::fileBytes;

// Whether plain SQLite, read-only, can read the schema: it cannot while a hot journal waits.
bool readableReadOnly(const QString& path) {
    try {
        testsupport::SqliteFile(path, {.readOnly = true})
            .exec("SELECT count(*) FROM sqlite_master");
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

class InterruptedChange : public ::testing::Test {
  protected:
    void SetUp() override {
        testsupport::createReclaimableDatabase(path, 40, 400, 1000);
        before = testsupport::rowCounts(path);
        testsupport::leaveInterruptedChange(
            path, "UPDATE Compilation SET Notes = 'lost'; DELETE FROM LstFormat;");
        ASSERT_TRUE(QFile::exists(journal));
        ASSERT_FALSE(readableReadOnly(path));
    }
    void TearDown() override {
        QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        engine::Workspace::defaultWorkspace().close();
    }

    testsupport::TempDir dir;
    const QString path = dir.file("coll.mdb");
    const QString journal = path + "-journal";
    QStringList before;
};

TEST_F(InterruptedChange, AReadOnlyOpenRollsItBackFirst) {
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path, true);
    EXPECT_TRUE(database.tableNames().contains("LstFormat"));
    engine::Recordset lost =
        database.openRecordset("SELECT Count(*) AS N FROM Compilation WHERE Notes = 'lost'");
    EXPECT_EQ(lost.value("N").toInt(), 0);
    database.close();
    EXPECT_FALSE(QFile::exists(journal));
    EXPECT_EQ(testsupport::rowCounts(path), before);
    EXPECT_EQ(testsupport::integrityCheck(path), "ok");
}

TEST_F(InterruptedChange, AReadOnlyFileOrFolderKeepsItAndSaysWhy) {
    const QByteArray file = fileBytes(path);
    const QByteArray oldPages = fileBytes(journal);
    const auto expectRefused = [&] {
        QString description;
        EXPECT_EQ(
            errorNumber([&] { engine::Workspace::defaultWorkspace().openDatabase(path, true); },
                        &description),
            engine::jet::kCannotOpenFile);
        EXPECT_TRUE(description.contains("'" + path + "'")) << description.toStdString();
        EXPECT_TRUE(description.contains("interrupted change")) << description.toStdString();
        EXPECT_TRUE(description.contains("read-only")) << description.toStdString();
        EXPECT_EQ(errorNumber([&] { engine::Workspace::repairDatabase(path); }),
                  engine::jet::kReadOnly);
        EXPECT_EQ(fileBytes(path), file);
        EXPECT_EQ(fileBytes(journal), oldPages);
    };
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup);
    expectRefused();
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::ExeOwner);
    expectRefused();
}

}  // namespace
