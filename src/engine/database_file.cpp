#include "engine/database_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <cerrno>
#include <cstring>
#include <map>
#include <mutex>

#include "engine/jet_error.h"

namespace engine {

namespace {

// The byte the uses lock: just below the bytes SQLite locks (from 2^30 on), never one of them.
constexpr off_t kUseByte = (off_t{1} << 30) - 1;
// How long a shared use waits for an exclusive one to end; a compaction of a large file takes
// seconds.
constexpr qint64 kWaitForExclusiveMs = 15000;
constexpr unsigned long kRetryMs = 20;

QString errnoText(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

QString kindOf(mode_t mode) {
    if (S_ISDIR(mode)) {
        return QStringLiteral("a folder");
    }
    if (S_ISCHR(mode)) {
        return QStringLiteral("a character device");
    }
    if (S_ISBLK(mode)) {
        return QStringLiteral("a block device");
    }
    if (S_ISFIFO(mode)) {
        return QStringLiteral("a FIFO (named pipe)");
    }
    if (S_ISSOCK(mode)) {
        return QStringLiteral("a socket");
    }
    return QStringLiteral("no regular file");
}

JetError fileNotFound(const QString& path) {
    return JetError(jet::kFileNotFound, QStringLiteral("Could not find file '%1'.").arg(path));
}

JetError cannotOpen(const QString& path, int error) {
    return JetError(
        jet::kCannotOpenFile,
        QStringLiteral("The file '%1' cannot be opened (%2).").arg(path, errnoText(error)));
}

// Not a database, as the engine says of any file that holds none; the description says what it is.
JetError notADatabaseFile(const QString& path, mode_t mode) {
    return JetError(jet::kNotADatabase,
                    QStringLiteral("'%1' is %2, not a database file. Choose a database file.")
                        .arg(path, kindOf(mode)));
}

JetError fileInUse(const QString& path, const QString& why) {
    return JetError(jet::kFileInUse,
                    QStringLiteral("Could not use '%1'; file already in use. %2").arg(path, why));
}

// stat() of the path, following symbolic links; errno when it fails.
int statPath(const QString& path, struct stat& info) {
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? 0 : errno;
}

int openDescriptor(const QString& path, int access) {
    // Not blocking: a FIFO put in the path's place meanwhile must not hang the open; the
    // descriptor is checked to be of the file that was looked at.
    int descriptor = -1;
    do {
        descriptor =
            ::open(QFile::encodeName(path).constData(), access | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    } while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0) {
        throw errno == ENOENT ? fileNotFound(path) : cannotOpen(path, errno);
    }
    return descriptor;
}

// Locks the use byte; false when another open file description holds a conflicting lock.
bool lockUseByte(int descriptor, short type, const QString& path) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = kUseByte;
    lock.l_len = 1;
    while (::fcntl(descriptor, F_OFD_SETLK, &lock) != 0) {
        if (errno == EAGAIN || errno == EACCES) {
            return false;
        }
        if (errno != EINTR) {
            throw JetError(jet::kDiskError,
                           QStringLiteral("Disk or network error. '%1' cannot be locked (%2).")
                               .arg(path, errnoText(errno)));
        }
    }
    return true;
}

// The registry and its mutex outlive every static (the default workspace's connections close at
// exit), so they are never destroyed.
std::mutex& registryMutex() {
    static auto* mutex = new std::mutex;
    return *mutex;
}

}  // namespace

void requireRegularFile(const QString& path) {
    struct stat info {};
    if (const int error = statPath(path, info)) {
        throw error == ENOENT ? fileNotFound(path) : cannotOpen(path, error);
    }
    if (!S_ISREG(info.st_mode)) {
        throw notADatabaseFile(path, info.st_mode);
    }
}

void requireNewFile(const QString& path) {
    struct stat info {};
    if (statPath(path, info) != 0) {
        return;
    }
    if (!S_ISREG(info.st_mode)) {
        throw JetError(jet::kDatabaseExists,
                       QStringLiteral("Database already exists. '%1' is %2; nothing was written.")
                           .arg(path, kindOf(info.st_mode)));
    }
    throw JetError(jet::kDatabaseExists, QStringLiteral("Database already exists."));
}

// Every use of this process, by the file: a file has one use (one open file description
// holding the lock) however many connections the process has on it. Closing any descriptor of
// a file drops every POSIX lock the process holds on it, SQLite's included; so a descriptor is
// closed only when no connection of this process is left on its file.
std::map<FileUse::Identity, std::weak_ptr<FileUse>>& FileUse::uses() {
    static auto* uses = new std::map<Identity, std::weak_ptr<FileUse>>;
    return *uses;
}

FileUse::FileUse(int descriptor, Identity identity)
    : descriptor_(descriptor), identity_(identity) {}

FileUse::~FileUse() {
    std::lock_guard<std::mutex> guard(registryMutex());
    auto& all = uses();
    const auto it = all.find(identity_);
    if (it != all.end() && it->second.expired()) {
        all.erase(it);
    }
    for (const int stray : strayDescriptors_) {
        ::close(stray);
    }
    ::close(descriptor_);
}

FileUse::Identity FileUse::identityOf(const QString& path) {
    struct stat info {};
    if (statPath(path, info) != 0) {
        return {};
    }
    return {static_cast<unsigned long long>(info.st_dev),
            static_cast<unsigned long long>(info.st_ino)};
}

FileUse::Identity FileUse::identityOf(int descriptor) {
    struct stat info {};
    if (::fstat(descriptor, &info) != 0) {
        return {};
    }
    return {static_cast<unsigned long long>(info.st_dev),
            static_cast<unsigned long long>(info.st_ino)};
}

std::shared_ptr<FileUse> FileUse::registered(Identity identity) {
    std::lock_guard<std::mutex> guard(registryMutex());
    const auto& all = uses();
    const auto it = all.find(identity);
    return it == all.end() ? nullptr : it->second.lock();
}

std::shared_ptr<FileUse> FileUse::enter(int descriptor, Identity identity) {
    std::shared_ptr<FileUse> use(new FileUse(descriptor, identity));
    std::lock_guard<std::mutex> guard(registryMutex());
    uses()[identity] = use;
    return use;
}

void FileUse::release(int descriptor, Identity identity) {
    std::shared_ptr<FileUse> keeper;  // dropped after the registry is unlocked
    {
        std::lock_guard<std::mutex> guard(registryMutex());
        const auto& all = uses();
        const auto it = all.find(identity);
        if (it != all.end()) {
            keeper = it->second.lock();
        }
        if (keeper != nullptr) {
            // Closing it now would drop the locks of the connections on that file.
            keeper->strayDescriptors_.push_back(descriptor);
        }
    }
    if (keeper == nullptr) {
        ::close(descriptor);
    }
}

bool FileUse::lockOrRelease(int descriptor, Identity identity, short type, const QString& path) {
    try {
        return lockUseByte(descriptor, type, path);
    } catch (...) {
        release(descriptor, identity);
        throw;
    }
}

std::shared_ptr<FileUse> FileUse::tryShare(const QString& path) {
    requireRegularFile(path);
    const Identity named = identityOf(path);
    if (std::shared_ptr<FileUse> own = registered(named)) {
        return own;
    }
    const int descriptor = openDescriptor(path, O_RDONLY);
    const Identity opened = identityOf(descriptor);
    // A compaction that ended while this looked or waited has put another file in the path's
    // place: that one is to be used.
    if (opened != named || !lockOrRelease(descriptor, opened, F_RDLCK, path) ||
        identityOf(path) != opened) {
        release(descriptor, opened);
        return nullptr;
    }
    return enter(descriptor, opened);
}

std::shared_ptr<FileUse> FileUse::share(const QString& path) {
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        if (std::shared_ptr<FileUse> use = tryShare(path)) {
            return use;
        }
        if (waited.elapsed() > kWaitForExclusiveMs) {
            throw fileInUse(path, QStringLiteral("Another program is repairing and compacting "
                                                 "it; try again when it has finished."));
        }
        QThread::msleep(kRetryMs);
    }
}

std::shared_ptr<FileUse> FileUse::takeExclusive(const QString& path) {
    requireRegularFile(path);
    const Identity named = identityOf(path);
    if (registered(named) != nullptr) {
        throw fileInUse(path, QStringLiteral("This program has it open; close it first."));
    }
    const int descriptor = openDescriptor(path, O_RDWR);
    const Identity opened = identityOf(descriptor);
    if (opened != named || !lockOrRelease(descriptor, opened, F_WRLCK, path) ||
        identityOf(path) != opened) {
        release(descriptor, opened);
        throw fileInUse(path, QStringLiteral("Another program or window has it open; close it "
                                             "there and try again. Nothing was changed."));
    }
    return enter(descriptor, opened);
}

}  // namespace engine
