#include "support/faulty_files.h"

#include <sqlite3.h>

#include <stdexcept>

namespace testsupport {

namespace {

constexpr sqlite3_int64 kBytesBeforeFull = 8192;

sqlite3_vfs* realVfs = nullptr;
sqlite3_vfs faultyVfs;
QByteArray faultySuffix;
FaultyFiles::Fault activeFault;
const sqlite3_io_methods* realMethods = nullptr;
sqlite3_io_methods fullDiskMethods;

int writeUntilFull(sqlite3_file* file, const void* data, int amount, sqlite3_int64 offset) {
    if (offset + amount > kBytesBeforeFull) {
        return SQLITE_FULL;
    }
    return realMethods->xWrite(file, data, amount, offset);
}

bool isFaulty(const char* name) {
    return name != nullptr && QByteArray(name).endsWith(faultySuffix);
}

// The real file object is used as it is; a faulty one only gets a method table whose writes fail.
int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    if (isFaulty(name) && activeFault == FaultyFiles::Fault::NoPermission) {
        file->pMethods = nullptr;
        return SQLITE_CANTOPEN;
    }
    const int rc = realVfs->xOpen(realVfs, name, file, flags, outFlags);
    if (rc == SQLITE_OK && isFaulty(name)) {
        realMethods = file->pMethods;
        fullDiskMethods = *realMethods;
        fullDiskMethods.xWrite = writeUntilFull;
        file->pMethods = &fullDiskMethods;
    }
    return rc;
}

}  // namespace

FaultyFiles::FaultyFiles(const QString& suffix, Fault fault) {
    realVfs = sqlite3_vfs_find(nullptr);
    if (realVfs == nullptr) {
        throw std::runtime_error("no SQLite file system");
    }
    faultySuffix = suffix.toUtf8();
    activeFault = fault;
    faultyVfs = *realVfs;
    faultyVfs.zName = "mixorama-faulty";
    faultyVfs.pNext = nullptr;
    faultyVfs.xOpen = openFile;
    sqlite3_vfs_register(&faultyVfs, 1);
}

FaultyFiles::~FaultyFiles() {
    sqlite3_vfs_unregister(&faultyVfs);
    sqlite3_vfs_register(realVfs, 1);  // the default again, not one chosen at random
}

}  // namespace testsupport
