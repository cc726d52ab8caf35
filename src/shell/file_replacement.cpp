#include "shell/file_replacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "engine/jet_error.h"

namespace shell {

namespace {

[[noreturn]] void throwReplaceFailure(const QString& replacement, const QString& target,
                                      const char* step, int error) {
    QFile::remove(replacement);
    throw engine::JetError(
        engine::jet::kDiskError,
        QStringLiteral("Disk or network error. '%1' could not be replaced "
                       "(%2: %3); it is unchanged.")
            .arg(target, QLatin1String(step), QString::fromLocal8Bit(std::strerror(error))));
}

// The owner where this process may set it (an administrator may), else at least the group.
int copyOwnership(const QByteArray& to, const struct stat& from) {
    if (::chown(to.constData(), from.st_uid, from.st_gid) == 0) {
        return 0;
    }
    if (errno == EPERM && ::chown(to.constData(), static_cast<uid_t>(-1), from.st_gid) == 0) {
        return 0;
    }
    return errno == EPERM ? 0 : errno;  // a group this user is not in stays the user's own
}

// Flushes a file or folder to the disk; 0 or the error.
int flush(const QByteArray& path, int flags) {
    const int descriptor = ::open(path.constData(), flags | O_CLOEXEC);
    if (descriptor < 0) {
        return errno;
    }
    const int result = ::fsync(descriptor) == 0 ? 0 : errno;
    ::close(descriptor);
    return result;
}

}  // namespace

void replaceFile(const QString& replacement, const QString& target) {
    const QByteArray from = QFile::encodeName(replacement);
    const QByteArray to = QFile::encodeName(target);
    struct stat old {};
    if (::stat(to.constData(), &old) != 0) {
        throwReplaceFailure(replacement, target, "stat", errno);
    }
    // Ownership before the mode: changing the owner clears the set-ID bits the mode sets again.
    if (const int error = copyOwnership(from, old)) {
        throwReplaceFailure(replacement, target, "chown", error);
    }
    if (::chmod(from.constData(), old.st_mode & 07777) != 0) {
        throwReplaceFailure(replacement, target, "chmod", errno);
    }
    // The new content must be on the disk before the rename makes it the file.
    if (const int error = flush(from, O_RDONLY)) {
        throwReplaceFailure(replacement, target, "fsync", error);
    }
    if (::rename(from.constData(), to.constData()) != 0) {
        throwReplaceFailure(replacement, target, "rename", errno);
    }
    const QByteArray folder = QFile::encodeName(QFileInfo(target).absolutePath());
    const int error = flush(folder, O_RDONLY | O_DIRECTORY);
    if (error != 0 && error != EINVAL) {  // EINVAL: a file system that keeps no folder to flush
        throw engine::JetError(engine::jet::kDiskError,
                               QStringLiteral("Disk or network error. '%1' was replaced, but its "
                                              "folder could not be written to the disk (%2).")
                                   .arg(target, QString::fromLocal8Bit(std::strerror(error))));
    }
}

void removeLeftover(const QString& path) {
    for (const QString& file : {path, path + QStringLiteral("-journal")}) {
        std::error_code error;
        std::filesystem::remove(std::filesystem::path(QFile::encodeName(file).toStdString()),
                                error);
        if (error) {
            throw engine::JetError(
                engine::jet::kDatabaseExists,
                QStringLiteral("Database already exists. The file '%1' is left from an earlier "
                               "compaction and cannot be deleted (%2).")
                    .arg(file, QString::fromStdString(error.message())));
        }
    }
}

}  // namespace shell
