#include "engine/scratch_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRandomGenerator>
#include <QStringList>
#include <QUrl>
#include <map>
#include <memory>
#include <mutex>

#include "engine/jet_error.h"

namespace engine {

namespace {

const QString kOwnerPrefix = QStringLiteral("mixorama-owner-");
const QString kOwnerSuffix = QStringLiteral(".lock");
const QString kOwnerPending = QStringLiteral(".new");  // not yet locked: no cleaner looks at it

JetError cannotCreateIn(const QString& folder) {
    return JetError(jet::kDiskError,
                    QStringLiteral("Disk or network error. (cannot create a file in '%1')")
                        .arg(QDir::toNativeSeparators(folder)));
}

void removeWithJournals(const QString& path) {
    QFile::remove(path);
    for (const char* journal : {"-journal", "-wal", "-shm"}) {
        QFile::remove(path + QLatin1String(journal));
    }
}

QString randomLetters(int count) {
    static const char kLetters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    QString letters;
    for (int i = 0; i < count; ++i) {
        letters += QLatin1Char(kLetters[QRandomGenerator::system()->bounded(36)]);
    }
    return letters;
}

// The owner file is a log that only grows: "+name" when a file is about to be made, "-name" when
// it is gone or kept, one line each, percent-encoded (a file name may hold a line break). A kill
// can cut only the last line, which then named a file not yet made or one already gone.
QByteArray logLine(char change, const QString& name) {
    return change + QUrl::toPercentEncoding(name, "/") + '\n';
}

// The names a log leaves standing; an unfinished last line is no name.
QStringList standingNames(const QByteArray& log) {
    QStringList names;
    QList<QByteArray> lines = log.split('\n');
    lines.removeLast();  // empty after the last line break, or a line cut short
    for (const QByteArray& line : lines) {
        const QString name = QUrl::fromPercentEncoding(line.mid(1));
        if (line.startsWith('+') && QFileInfo(name).isAbsolute()) {
            names << name;
        } else if (line.startsWith('-')) {
            names.removeAll(name);
        }
    }
    return names;
}

bool appendAll(int fd, const QByteArray& bytes) {
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t written = write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (written <= 0) {
            return false;
        }
        done += written;
    }
    return true;
}

QByteArray readAll(int fd) {
    QByteArray text;
    char buffer[4096];
    off_t at = 0;
    for (ssize_t got; (got = pread(fd, buffer, sizeof buffer, at)) > 0; at += got) {
        text.append(buffer, got);
    }
    return text;
}

// This process's owner file in one temporary folder: locked from its creation, removed as soon
// as it names no file.
class OwnerFile {
  public:
    explicit OwnerFile(const QString& folder) {
        QByteArray pending = QDir(folder)
                                 .filePath(kOwnerPrefix + QStringLiteral("XXXXXX") + kOwnerPending)
                                 .toLocal8Bit();
        fd_ = mkostemps(pending.data(), int(kOwnerPending.size()), O_CLOEXEC | O_APPEND);
        if (fd_ < 0) {
            throw cannotCreateIn(folder);
        }
        const QString pendingPath = QFile::decodeName(pending);
        path_ = pendingPath.chopped(kOwnerPending.size()) + kOwnerSuffix;
        // Locked before a cleaner can see it under its final name.
        if (flock(fd_, LOCK_EX) != 0 || !QFile::rename(pendingPath, path_)) {
            QFile::remove(pendingPath);
            close(fd_);
            throw cannotCreateIn(folder);
        }
    }
    ~OwnerFile() {
        QFile::remove(path_);
        close(fd_);
    }
    OwnerFile(const OwnerFile&) = delete;
    OwnerFile& operator=(const OwnerFile&) = delete;

    bool isEmpty() const { return names_.isEmpty(); }
    bool names(const QString& path) const { return names_.contains(path); }
    void add(const QString& path) {
        if (!appendAll(fd_, logLine('+', path))) {
            throw cannotCreateIn(QFileInfo(path_).absolutePath());
        }
        names_ << path;
    }
    void remove(const QString& path) {
        names_.removeAll(path);
        appendAll(fd_, logLine('-', path));  // a name left standing only costs a failed removal
    }

  private:
    int fd_ = -1;
    QString path_;
    QStringList names_;
};

class Owners {
  public:
    void add(const QString& path) {
        const std::lock_guard<std::mutex> lock(mutex_);
        const QString folder = QDir::tempPath();
        auto owner = byFolder_.find(folder);
        if (owner == byFolder_.end()) {
            owner = byFolder_.emplace(folder, std::make_unique<OwnerFile>(folder)).first;
        }
        owner->second->add(path);
    }
    void remove(const QString& path) {
        const std::lock_guard<std::mutex> lock(mutex_);
        for (auto it = byFolder_.begin(); it != byFolder_.end(); ++it) {
            if (it->second->names(path)) {
                it->second->remove(path);
                if (it->second->isEmpty()) {
                    byFolder_.erase(it);
                }
                return;
            }
        }
    }

  private:
    std::mutex mutex_;
    std::map<QString, std::unique_ptr<OwnerFile>> byFolder_;
};

// Never destroyed: connections closing at exit still remove their files through it.
Owners& owners() {
    static Owners* const instance = new Owners;
    return *instance;
}

// The files named by an owner file whose process has ended, and the owner file itself; nothing
// when its process still runs.
int removeIfOwnerEnded(const QString& ownerPath) {
    const int fd = open(QFile::encodeName(ownerPath).constData(), O_RDWR | O_CLOEXEC);
    if (fd < 0) {
        return 0;
    }
    int removed = 0;
    if (flock(fd, LOCK_EX | LOCK_NB) == 0) {
        for (const QString& path : standingNames(readAll(fd))) {
            removed += QFileInfo::exists(path) ? 1 : 0;
            removeWithJournals(path);
        }
        QFile::remove(ownerPath);
    }
    close(fd);
    return removed;
}

}  // namespace

QString newScratchPath(const QString& folder, const QString& prefix, const QString& suffix) {
    QString path;
    do {
        path = QDir(folder).absoluteFilePath(prefix + randomLetters(8) + suffix);
    } while (QFileInfo::exists(path));
    owners().add(path);
    return path;
}

void removeScratchFile(const QString& path) {
    removeWithJournals(path);
    owners().remove(path);
}

void keepScratchFile(const QString& path) {
    owners().remove(path);
}

int removeScratchFilesOfEndedRuns() {
    const QDir temp(QDir::tempPath());
    int removed = 0;
    for (const QString& name :
         temp.entryList({kOwnerPrefix + QLatin1Char('*') + kOwnerSuffix}, QDir::Files)) {
        removed += removeIfOwnerEnded(temp.filePath(name));
    }
    return removed;
}

}  // namespace engine
