#pragma once

#include <QString>

namespace testsupport {

// While it lives, SQLite's default file system fails for files whose names end in a suffix, the
// way a full disk or a folder without write permission would: files opened afterwards see it.
class FaultyFiles {
  public:
    enum class Fault {
        DiskFull,      // writes past the first pages fail with "database or disk is full"
        NoPermission,  // such a file cannot be created or opened
    };
    FaultyFiles(const QString& suffix, Fault fault);
    ~FaultyFiles();
    FaultyFiles(const FaultyFiles&) = delete;
    FaultyFiles& operator=(const FaultyFiles&) = delete;
};

}  // namespace testsupport
