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
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "store/album_source.h"
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
    out << "phase select-into "
        << secondsOf([&] { database.execute(store::tempSourceStatement(withRating)); }) << Qt::endl;
    out << "phase add-fields " << secondsOf([&] {
        database.appendField(QStringLiteral("TempSource"),
                             {QStringLiteral("MyRecorded"), engine::FieldType::Integer, 0});
    }) << Qt::endl;
    out << "phase update "
        << secondsOf([&] { database.execute(store::tempSourceFixUpStatement()); }) << Qt::endl;
    out << "phase count " << secondsOf([&] {
        database.openRecordset(QStringLiteral("SELECT Count(*) AS N FROM TempSource"),
                               engine::RecordsetType::Snapshot);
    }) << Qt::endl;
    // The same rows without their order: what the text sort adds to the SELECT INTO.
    QString unsorted = store::tempSourceStatement(withRating);
    unsorted.truncate(unsorted.indexOf(QStringLiteral("ORDER BY")));
    unsorted.replace(QStringLiteral("INTO   TempSource"), QStringLiteral("INTO   Unsorted"));
    out << "phase (select-into-unsorted) " << secondsOf([&] { database.execute(unsorted); })
        << Qt::endl;
    database.deleteTable(QStringLiteral("Unsorted"));
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
            out << "run " << connectAndBuild(database, albumFile, state) << Qt::endl;
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
