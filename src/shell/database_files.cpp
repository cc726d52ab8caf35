#include "shell/database_files.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <filesystem>

#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "platform/program_folder.h"

namespace shell {

const QString kNotACompilationDatabase =
    QStringLiteral("Wrong Database structure. This is not a compilation database.\r\n"
                   "Maybe it's the Albumory database?\r\n"
                   "Solution: open an existing compilation database or create a new one.");

namespace {
bool isSeparator(QChar c) { return c == QLatin1Char('\\') || c == QLatin1Char('/'); }
}  // namespace

SplitPath splitPath(const QString& path) {
    QString withoutExtension = path;
    for (qsizetype i = path.size() - 1; i >= 0; --i) {
        if (isSeparator(path[i])) {
            break;
        }
        if (path[i] == QLatin1Char('.')) {
            withoutExtension = path.left(i);
            break;
        }
    }
    for (qsizetype i = withoutExtension.size() - 1; i >= 0; --i) {
        if (isSeparator(withoutExtension[i])) {
            return {withoutExtension.left(i + 1), withoutExtension.mid(i + 1)};
        }
    }
    return {withoutExtension, QString()};
}

QString templatePath() { return platform::programFolder() + QStringLiteral("/template.mdb"); }

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
    const SplitPath parts = splitPath(path);
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
