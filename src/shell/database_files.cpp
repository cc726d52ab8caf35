#include "shell/database_files.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <filesystem>

#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "platform/program_folder.h"
#include "platform/split_path.h"

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

void repairAndCompact(const QString& path) {
    engine::Workspace::defaultWorkspace().close();
    const QString temp = compactionTempPath(path);
    engine::Workspace::repairDatabase(path);
    if (QFile::exists(temp)) {
        QFile::remove(temp);
    }
    engine::Workspace::compactDatabase(path, temp);
    // Renaming over the old file replaces it in one step: there is never a moment without it.
    std::error_code error;
    std::filesystem::rename(temp.toStdString(), path.toStdString(), error);
    if (error) {
        QFile::remove(temp);
        throw engine::JetError(engine::jet::kDiskError,
                               QStringLiteral("Disk or network error. (%1)")
                                   .arg(QString::fromStdString(error.message())));
    }
}

}  // namespace shell
