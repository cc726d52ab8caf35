#include "shell/database_files.h"

#include <QFileInfo>
#include <QStringList>

#include "engine/database_file.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "platform/program_folder.h"
#include "platform/split_path.h"
#include "shell/database_upgrade.h"
#include "shell/file_replacement.h"

namespace shell {

const QString kNotACompilationDatabase = QStringLiteral(
    "Wrong Database structure. This is not a compilation database.\r\n"
    "Maybe it's the Albumory database?\r\n"
    "Solution: open an existing compilation database or create a new one.");

QString templatePath() {
    return platform::programFolder() + QStringLiteral("/template.mdb");
}

void createFromTemplate(const QString& path) {
    engine::Workspace::compactDatabase(templatePath(), path);
}

bool hasCompilationStructure(const QString& path) {
    static const QStringList required{"compilation", "compilationtrack", "lstformat", "lstlength",
                                      "lstmanufacturer"};
    engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path, true);
    int count = 0;
    for (const QString& name : database.tableNames()) {
        if (required.contains(name.toLower())) {
            ++count;
        }
    }
    database.close();
    return count == 5;
}

QString compactionTempPath(const QString& path) {
    const platform::SplitPath parts = platform::splitPath(path);
    return parts.folder + parts.baseName + QStringLiteral(".$$$");
}

namespace {

// The file itself when the path is a symbolic link: a link is kept, and what it points to is
// compacted beside itself (one file system, so the rename is one step).
QString resolvedDatabaseFile(const QString& path) {
    engine::requireRegularFile(path);
    const QString file = QFileInfo(path).canonicalFilePath();
    if (file.isEmpty()) {
        throw engine::JetError(engine::jet::kFileNotFound,
                               QStringLiteral("Could not find file '%1'.").arg(path));
    }
    return file;
}

// Deleting a stale temporary file must not delete the database. Both paths are resolved: "./",
// a linked folder or a link to a "*.$$$" file cannot hide that they are one.
void refuseOwnTemporaryName(const QString& file, const QString& temp) {
    if (temp == file) {
        throw engine::JetError(engine::jet::kDatabaseExists,
                               QStringLiteral("The database '%1' cannot be compacted: its name "
                                              "ends in \".$$$\", so its temporary file would be "
                                              "the database itself. Rename it and try again.")
                                   .arg(file));
    }
}

}  // namespace

QStringList repairAndCompact(const QString& path) {
    engine::Workspace::defaultWorkspace().close();
    const QString file = resolvedDatabaseFile(path);
    const QString temp = compactionTempPath(file);
    refuseOwnTemporaryName(file, temp);
    // From the repair to the rename no other process may have the file open: a change it stored
    // meanwhile would be lost with the old file, and one it stored after would go into it.
    const std::shared_ptr<engine::FileUse> alone = engine::Workspace::useExclusively(file);
    engine::Workspace::repairDatabase(file);
    removeLeftover(temp);
    engine::Workspace::compactDatabase(file, temp);
    const QStringList changes = upgradeCompactedCopy(temp);
    replaceFile(temp, file);
    return changes;
}

}  // namespace shell
