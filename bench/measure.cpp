#include "measure.h"

#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextStream>
#include <cstdio>

#include "access/access_reader.h"
#include "engine/database.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "query/goto_lists.h"
#include "store/album_source.h"
#include "store/compilation_queries.h"
#include "target_compilation.h"
#include "timing.h"

namespace bench {

namespace {

QTextStream out(stdout);

// A fresh compilation database, made the way New makes one: a copy of the template.
engine::Database freshCompilationDatabase(const QTemporaryDir& dir, int run) {
    const QString path = dir.filePath(QStringLiteral("compilations-%1.mdb").arg(run));
    const QString program = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalPath();
    if (!QFile::copy(QDir(program).filePath(QStringLiteral("template.mdb")), path))
        throw std::runtime_error("template.mdb is missing beside the program");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    return engine::Workspace::defaultWorkspace().openDatabase(path);
}

// Peak resident memory in kB, of this process ("VmHWM") or of its largest finished child.
long peakOfThisProcess() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    }
    return -1;
}

long peakOfChildren() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return usage.ru_maxrss;
}

double connectAndBuild(engine::Database& database, const QString& albumFile,
                       store::AlbumSourceState& state) {
    platform::ScriptedDialogs dialogs;
    dialogs.answerFile(albumFile);
    store::EditorConnection editor;
    editor.isSaved = true;
    const double seconds = secondsOf([&] {
        store::connectAlbumDatabase(database, dialogs, state, editor);
        store::buildTempSource(database, state);
    });
    if (!editor.albumConnected)
        throw std::runtime_error("connect failed: " + dialogs.lastMessageText().toStdString());
    return seconds;
}

// What the track picker does after the build and before it shows: its source data control
// opens "TempSource" and the grid reads the rows in view, the target data control opens the
// compilation's tracks, and the goto list is filled for the first column (the performer,
// which lists the sort names). Prints one line a part.
void openPicker(engine::Database& database, qint64 compilationId) {
    constexpr int kRowsInView = 30;
    out << "picker-source " << secondsOf([&] {
        engine::Recordset source =
            database.openRecordset(QStringLiteral("TempSource"), engine::RecordsetType::Dynaset);
        for (int row = 0; row < kRowsInView && !source.eof(); ++row, source.moveNext()) {
            for (int field = 0; field < source.fieldCount(); ++field)
                source.value(field);
        }
    }) << Qt::endl;
    out << "picker-target " << secondsOf([&] {
        engine::Recordset target = database.openRecordset(
            store::standardStatement(QStringLiteral("compilationtrack"), compilationId),
            engine::RecordsetType::Dynaset);
        for (; !target.eof(); target.moveNext())
            target.value(QStringLiteral("Track_Title"));
    }) << Qt::endl;
    int entries = 0;
    out << "picker-goto " << secondsOf([&] {
        const QString field = query::gotoFieldForColumn(QStringLiteral("PerformerTrack"));
        entries = query::fillSourceGotoList(database, field, QString(), QString()).count;
    }) << Qt::endl;
    out << "goto-entries " << entries << Qt::endl;
}

// The store's build, one step at a time, with the store's own statements.
void timePhases(engine::Database& database, const QString& albumFile, bool withRating) {
    store::dropAlbumLinks(database);
    const QString connect = QStringLiteral(";DATABASE=") + albumFile;
    for (const QString& table : store::albumLinkOrder()) {
        const double s = secondsOf([&] {
            database.appendTable(engine::TableDef{table, connect, table, {}});
        });
        out << "phase link " << table << ' ' << s << Qt::endl;
    }
    out << "phase shape "
        << secondsOf([&] { database.execute(store::tempSourceShapeStatement(withRating)); })
        << Qt::endl;
    out << "phase add-fields " << secondsOf([&] {
        database.appendField(QStringLiteral("TempSource"),
                             {QStringLiteral("MyRecorded"), engine::FieldType::Integer, 0});
        if (!withRating)
            database.appendField(QStringLiteral("TempSource"),
                                 {QStringLiteral("RatingTrack"), engine::FieldType::Text, 50});
    }) << Qt::endl;
    out << "phase fill "
        << secondsOf([&] { database.execute(store::tempSourceFillStatement(withRating)); })
        << Qt::endl;
    out << "phase count " << secondsOf([&] {
        database.openRecordset(QStringLiteral("SELECT Count(*) AS N FROM TempSource"),
                               engine::RecordsetType::Snapshot);
    }) << Qt::endl;
    // The same rows without their order: what the text sort adds to the fill.
    QString unsorted = store::tempSourceFillStatement(withRating);
    unsorted.truncate(unsorted.indexOf(QStringLiteral("ORDER BY")));
    database.execute(QStringLiteral("DELETE FROM TempSource"));
    out << "phase (fill-unsorted) " << secondsOf([&] { database.execute(unsorted); }) << Qt::endl;
}

}  // namespace

int measureInProcess(const QString& albumFile, int runs) {
    QTemporaryDir dir;
    qputenv("XDG_CONFIG_HOME", dir.filePath(QStringLiteral("config")).toUtf8());
    accessfile::installAccessReader();
    try {
        store::AlbumSourceState state;
        for (int run = 0; run < runs; ++run) {
            engine::Database database = freshCompilationDatabase(dir, run);
            if (run == 0)
                out << "baseline-kb " << peakOfThisProcess() << Qt::endl;
            const qint64 compilationId = addTargetCompilation(database);
            out << "run " << connectAndBuild(database, albumFile, state) << Qt::endl;
            openPicker(database, compilationId);
            out << "rows " << state.passedCount << Qt::endl;
            out << "tracks "
                << database.openRecordset(QStringLiteral("SELECT Count(*) FROM Track"))
                       .value(0)
                       .toLongLong()
                << Qt::endl;
            if (run == runs - 1)
                timePhases(database, albumFile, state.albumHasRating);
            engine::Workspace::defaultWorkspace().close();
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    out << "peak-kb " << peakOfThisProcess() << Qt::endl;
    out << "reader-peak-kb " << peakOfChildren() << Qt::endl;
    return 0;
}

}  // namespace bench
