#include "album/album_fixture.h"

#include <QFile>

#include "access/access_reader.h"
#include "engine/workspace.h"
#include "support/databases.h"

namespace albumtest {

void AlbumFileTest::SetUp() {
    qputenv("XDG_CONFIG_HOME", dir.file("config").toUtf8());
    accessfile::installAccessReader();
    compilationPath = dir.file("compilations.mdb");
    testsupport::createCompilationDatabase(compilationPath);
    testsupport::execRaw(compilationPath,
                         "INSERT INTO Compilation (Name, Format, C_Length) "
                         "VALUES ('Road Trip', 'CD-R', 74)");
    database = engine::Workspace::defaultWorkspace().openDatabase(compilationPath);
    editor.isSaved = true;
}

void AlbumFileTest::TearDown() {
    engine::Workspace::defaultWorkspace().close();
}

void AlbumFileTest::connect(const QString& albumPath) {
    dialogs.answerFile(albumPath);
    store::connectAlbumDatabase(database, dialogs, state, editor);
}

void AlbumFileTest::connectAndBuild(const QString& albumPath) {
    connect(albumPath);
    store::buildTempSource(database, state);
}

std::vector<SourceRow> AlbumFileTest::sourceRows() {
    engine::Recordset table =
        database.openRecordset(QStringLiteral("TempSource"), engine::RecordsetType::Snapshot);
    std::vector<int> fields;
    for (const QString& column : sourceColumns())
        fields.push_back(table.fieldIndex(column));
    std::vector<SourceRow> rows;
    for (int r = 0; r < table.recordCount(); ++r) {
        const QVector<QVariant> values = table.rowAt(r);
        SourceRow row;
        for (int c = 0; c < sourceColumns().size(); ++c)
            row << (fields[c] < 0 ? QStringLiteral("<no column>")
                                  : cellText(sourceColumns()[c], values[fields[c]]));
        rows.push_back(row);
    }
    return rows;
}

QStringList AlbumFileTest::sourceFieldNames() {
    engine::Recordset table =
        database.openRecordset(QStringLiteral("TempSource"), engine::RecordsetType::Snapshot);
    QStringList names;
    for (int i = 0; i < table.fieldCount(); ++i)
        names << table.field(i).name;
    return names;
}

QString AlbumFileTest::compilationCount() const {
    return testsupport::queryRaw(compilationPath, "SELECT count(*) FROM Compilation");
}

QByteArray fileBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace albumtest
