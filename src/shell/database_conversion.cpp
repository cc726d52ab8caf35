#include "shell/database_conversion.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include "engine/database_file.h"
#include "engine/foreign_tables.h"
#include "engine/jet_error.h"
#include "engine/scratch_files.h"
#include "engine/transaction.h"
#include "engine/workspace.h"
#include "platform/split_path.h"
#include "shell/database_files.h"
#include "shell/database_upgrade.h"

namespace shell {

namespace {

using engine::JetError;
namespace jet = engine::jet;

const QString kCompilation = QStringLiteral("Compilation");
const QString kCompilationTrack = QStringLiteral("CompilationTrack");
// The value lists: one column each, a set of choices for the editor's drop-downs.
const QStringList kValueLists{QStringLiteral("LstFormat"), QStringLiteral("LstLength"),
                              QStringLiteral("LstManufacturer")};

// The old tables are linked into the new database under these names, beside its own.
QString oldTable(const QString& table) {
    return QStringLiteral("Old_") + table;
}

JetError databaseExists() {
    return JetError(jet::kDatabaseExists, QStringLiteral("Database already exists."));
}

// A file that is removed, with its journal, when the conversion ends, unless it was kept; after a
// kill, the next start removes it.
class TemporaryFile {
  public:
    // A name that does not exist yet in folder: prefix, random letters, suffix.
    TemporaryFile(const QString& folder, const QString& prefix, const QString& suffix)
        : path_(engine::newScratchPath(folder, prefix, suffix)) {
        // Fails here, before any reading, where the folder takes no new file.
        QFile probe(path_);
        if (!probe.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            engine::removeScratchFile(path_);
            throw JetError(jet::kDiskError, QStringLiteral("Disk or network error. (cannot "
                                                           "create a file in '%1')")
                                                .arg(QDir::toNativeSeparators(folder)));
        }
        probe.close();
        probe.remove();  // the engine creates its own there and refuses an existing one
    }
    ~TemporaryFile() {
        if (!path_.isEmpty()) {
            engine::removeScratchFile(path_);
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const QString& path() const { return path_; }
    // Gives the file the destination's name; a file already there is never replaced.
    void renameTo(const QString& destination) {
        if (QFileInfo::exists(destination)) {
            throw databaseExists();
        }
        QFile file(path_);
        if (!file.rename(destination)) {
            throw JetError(jet::kDiskError,
                           QStringLiteral("Disk or network error. (%1)").arg(file.errorString()));
        }
        engine::keepScratchFile(path_);
        path_.clear();
    }

  private:
    QString path_;
};

// Closes the database however the copy ends, so that the temporary file can go.
class OpenDatabase {
  public:
    explicit OpenDatabase(const QString& path)
        : database_(engine::Workspace::defaultWorkspace().openDatabase(path)) {}
    ~OpenDatabase() { database_.close(); }
    OpenDatabase(const OpenDatabase&) = delete;
    OpenDatabase& operator=(const OpenDatabase&) = delete;
    engine::Database& operator*() { return database_; }

  private:
    engine::Database database_;
};

JetError damagedFile(const QString& accessPath,
                     const std::vector<engine::IncompleteTable>& incomplete) {
    return JetError(jet::kDatabaseCorrupt,
                    QStringLiteral("'%1' is damaged: not every row could be read.\r\n")
                            .arg(QDir::toNativeSeparators(accessPath)) +
                        engine::describeIncompleteTables(incomplete).join(QStringLiteral("\r\n")));
}

engine::ForeignTableReader& readerOf(const QString& accessPath) {
    engine::ForeignTableReader* reader = engine::foreignTableReader();
    engine::requireRegularFile(accessPath);
    if (reader == nullptr || !reader->canRead(accessPath)) {
        throw JetError(
            jet::kNotADatabase,
            QStringLiteral("'%1' is not an Access database: there is nothing to convert.")
                .arg(accessPath));
    }
    return *reader;
}

QStringList fieldNames(engine::Database& database, const QString& table) {
    const engine::Recordset none =
        database.openRecordset(QStringLiteral("SELECT * FROM [%1] WHERE False").arg(table),
                               engine::RecordsetType::Snapshot);
    QStringList names;
    for (int i = 0; i < none.fieldCount(); ++i) {
        names << none.field(i).name;
    }
    return names;
}

qint64 rowCount(engine::Database& database, const QString& table) {
    const engine::Recordset count =
        database.openRecordset(QStringLiteral("SELECT Count(*) AS N FROM [%1]").arg(table),
                               engine::RecordsetType::Snapshot);
    return count.value(0).toLongLong();
}

QString bracketed(const QStringList& names) {
    QStringList quoted;
    for (const QString& name : names) {
        quoted << QLatin1Char('[') + name + QLatin1Char(']');
    }
    return quoted.join(QLatin1String(", "));
}

// The template's columns and the old table's columns of the same names, compared without regard
// to case. Columns the old table lacks get the template's default (Null but for the counts and
// the yes/no column); columns it has beyond the template are not copied: nothing reads them.
struct ColumnPairs {
    QStringList target;
    QStringList source;

    QString sourceOf(const QString& targetColumn) const {
        const qsizetype at = target.indexOf(targetColumn);
        return at < 0 ? QString() : source[at];
    }
};

ColumnPairs matchColumns(engine::Database& database, const QString& table) {
    const QStringList old = fieldNames(database, oldTable(table));
    ColumnPairs pairs;
    for (const QString& column : fieldNames(database, table)) {
        for (const QString& candidate : old) {
            if (candidate.compare(column, Qt::CaseInsensitive) == 0) {
                pairs.target << column;
                pairs.source << candidate;
                break;
            }
        }
    }
    if (pairs.target.isEmpty()) {
        throw JetError(jet::kItemNotFound,
                       QStringLiteral("The table '%1' holds none of the columns of a compilation "
                                      "database.")
                           .arg(table));
    }
    return pairs;
}

// Copies the rows of the old table that pass filter (a WHERE clause or nothing); returns how many.
qint64 copyRows(engine::Database& database, const QString& table, const ColumnPairs& columns,
                const QString& select, const QString& filter) {
    return database.execute(QStringLiteral("INSERT INTO [%1] (%2) %3 %4 FROM [%5] %6")
                                .arg(table, bracketed(columns.target), select,
                                     bracketed(columns.source), oldTable(table), filter));
}

// A list is a set of choices: repeated and empty entries of the old list are dropped.
void replaceValueList(engine::Database& database, const QString& table) {
    const ColumnPairs columns = matchColumns(database, table);
    database.execute(QStringLiteral("DELETE FROM [%1]").arg(table));
    copyRows(database, table, columns, QStringLiteral("SELECT DISTINCT"),
             QStringLiteral("WHERE [%1] IS NOT NULL").arg(columns.source.first()));
}

// Tracks keep their compilation through its id. A track whose compilation is not in the file
// could not be shown anywhere; it is left out and counted.
qint64 copyTracks(engine::Database& database) {
    const ColumnPairs columns = matchColumns(database, kCompilationTrack);
    const QString owner = columns.sourceOf(QStringLiteral("CompilationID_F1"));
    const QString filter =
        owner.isEmpty()
            ? QString()
            : QStringLiteral("WHERE [%1] IN (SELECT CompilationID_P FROM Compilation)").arg(owner);
    return copyRows(database, kCompilationTrack, columns, QStringLiteral("SELECT"), filter);
}

std::vector<engine::TableDef> scratchLinks(const QString& scratch) {
    std::vector<engine::TableDef> links;
    for (const QString& table : QStringList{kCompilation, kCompilationTrack} + kValueLists) {
        links.push_back({oldTable(table), QStringLiteral(";DATABASE=") + scratch, table, {}});
    }
    return links;
}

// Fills the new database from the scratch copy of the old tables, in one transaction.
ConversionCounts copyIntoNewDatabase(const QString& newDatabase, const QString& scratch,
                                     const ConversionProgress& progress) {
    OpenDatabase database(newDatabase);
    (*database).appendTables(scratchLinks(scratch));
    const qint64 oldTracks = rowCount(*database, oldTable(kCompilationTrack));
    ConversionCounts counts;
    counts.compilations = rowCount(*database, oldTable(kCompilation));
    if (progress) {
        progress(QStringLiteral("%1 %2 compilations, %3 tracks")
                     .arg(kConvertingText)
                     .arg(counts.compilations)
                     .arg(oldTracks));
    }
    engine::ScopedTransaction copy(*database);
    for (const QString& list : kValueLists) {
        replaceValueList(*database, list);
    }
    // Ids are copied as they are; the counter then continues after the highest.
    copyRows(*database, kCompilation, matchColumns(*database, kCompilation),
             QStringLiteral("SELECT"), QString());
    counts.tracks = copyTracks(*database);
    copy.commit();
    counts.tracksLeftOut = oldTracks - counts.tracks;
    return counts;
}

}  // namespace

bool isAccessCompilationDatabase(const QString& path) {
    const engine::ForeignTableReader* reader = engine::foreignTableReader();
    return reader != nullptr && reader->canRead(path) && hasCompilationStructure(path);
}

QString convertedCopyPath(const QString& accessPath) {
    const platform::SplitPath parts = platform::splitPath(accessPath);
    return parts.folder + parts.baseName + QStringLiteral("-converted.mdb");
}

ConversionCounts convertAccessDatabase(const QString& accessPath, const QString& destination,
                                       const ConversionProgress& progress,
                                       const ConversionOptions& options) {
    if (QFileInfo::exists(destination)) {
        throw databaseExists();
    }
    engine::ForeignTableReader& reader = readerOf(accessPath);
    if (progress) {
        progress(kConvertingText);
    }
    const TemporaryFile scratch(QDir::tempPath(), QStringLiteral("mixorama-old-"),
                                QStringLiteral(".sqlite"));
    const std::vector<engine::IncompleteTable> incomplete = reader.copyTables(
        accessPath, QStringList{kCompilation, kCompilationTrack} + kValueLists, scratch.path());
    if (!incomplete.empty() && !options.keepPartial) {
        throw damagedFile(accessPath, incomplete);
    }
    const QFileInfo target(destination);
    TemporaryFile copy(target.absolutePath(), target.completeBaseName() + QLatin1Char('-'),
                       QStringLiteral(".converting"));
    createFromTemplate(copy.path());
    ConversionCounts counts = copyIntoNewDatabase(copy.path(), scratch.path(), progress);
    counts.corrections = repairCompilationInvariants(copy.path());
    if (!incomplete.empty()) {
        counts.notes << QStringLiteral("Not every row of the damaged file could be read:")
                     << engine::describeIncompleteTables(incomplete);
    }
    engine::Workspace::repairDatabase(copy.path());  // the integrity check
    copy.renameTo(destination);
    return counts;
}

}  // namespace shell
